#include "host/settings_store.h"

#include <QDate>
#include <QDateTime>
#include <QLoggingCategory>
#include <optional>

#include "host/host_gic.h"
#include "host/host_tables.h"
#include "host/log_file.h"
#include "platform/db/recordset.h"
#include "platform/db/sql_text.h"

namespace orvo::host {

const QString SettingsStore::kStationSection = QStringLiteral("STATION_SETUP");

namespace {

// The text a setting is stored as. Booleans keep the suite's "True"/"False".
QString SettingText(const QVariant& value) {
    switch (value.typeId()) {
        case QMetaType::Bool:
            return value.toBool() ? QStringLiteral("True") : QStringLiteral("False");
        case QMetaType::QDate:
            return value.toDate().toString(Qt::ISODate);
        case QMetaType::QDateTime:
            return value.toDateTime().toString(Qt::ISODate);
        default:
            return value.toString();
    }
}

// Boolean settings come as "True"/"False" from this host, and as "1"/"0" or "-1" from older
// stores and hand edits.
std::optional<bool> ParseBool(const QString& text) {
    const QString word = text.trimmed().toLower();
    if (word == QLatin1String("true") || word == QLatin1String("yes"))
        return true;
    if (word == QLatin1String("false") || word == QLatin1String("no") || word.isEmpty()) {
        return false;
    }
    bool ok = false;
    const double number = word.toDouble(&ok);
    if (ok)
        return number != 0;
    return std::nullopt;
}

bool IsInteger(QMetaType type) {
    switch (type.id()) {
        case QMetaType::Int:
        case QMetaType::UInt:
        case QMetaType::Long:
        case QMetaType::ULong:
        case QMetaType::LongLong:
        case QMetaType::ULongLong:
        case QMetaType::Short:
        case QMetaType::UShort:
            return true;
        default:
            return false;
    }
}

std::optional<QVariant> ConvertSetting(const QString& text, QMetaType target) {
    if (target.id() == QMetaType::QString)
        return QVariant(text);
    if (target.id() == QMetaType::Bool) {
        const auto flag = ParseBool(text);
        return flag ? std::optional<QVariant>(QVariant(*flag)) : std::nullopt;
    }
    if (IsInteger(target) || target.id() == QMetaType::Double || target.id() == QMetaType::Float) {
        bool ok = false;
        double number = text.trimmed().toDouble(&ok);
        if (!ok) {
            const auto flag = ParseBool(text);
            if (!flag)
                return std::nullopt;
            number = *flag ? 1 : 0;
        }
        QVariant value = IsInteger(target) ? QVariant(qRound64(number)) : QVariant(number);
        if (!value.convert(target))
            return std::nullopt;
        return value;
    }
    QVariant value(text);
    if (!value.convert(target))
        return std::nullopt;
    return value;
}

}  // namespace

QVariant SettingsStore::Read(const QString& section, const QString& key, int scope,
                             const QVariant& defaultValue) const {
    const db::Recordset rs(
        connection_(),
        QStringLiteral("SELECT SetVal, SetValTyp FROM %1 WHERE SetSec=%2 AND SetKey=%3 AND "
                       "SetSco=%4 ORDER BY SetID DESC")
            .arg(kSettingsTable, db::QuoteText(section), db::QuoteText(key),
                 QString::number(scope)));
    if (rs.IsEmpty())
        return defaultValue;
    const QString stored = rs.Text(0);
    const QMetaType target =
        defaultValue.isValid() ? defaultValue.metaType() : QMetaType::fromName(rs.Text(1).toUtf8());
    if (!target.isValid())
        return stored;
    if (const auto value = ConvertSetting(stored, target))
        return *value;
    qCWarning(lcHost).noquote()
        << QStringLiteral("Setting %1/%2 holds \"%3\", which reads as no %4; the default is used")
               .arg(section, key, stored, QString::fromLatin1(target.name()));
    return defaultValue.isValid() ? defaultValue : QVariant(stored);
}

void SettingsStore::Write(const QString& section, const QString& key, int scope,
                          const QVariant& value) const {
    db::Connection& connection = connection_();
    const QString where =
        QStringLiteral("SetSec=%1 AND SetKey=%2 AND SetSco=%3")
            .arg(db::QuoteText(section), db::QuoteText(key), QString::number(scope));
    if (!value.isValid()) {
        connection.Execute(QStringLiteral("DELETE FROM %1 WHERE %2").arg(kSettingsTable, where));
        return;
    }
    const QString text = db::QuoteText(SettingText(value));
    const QString type = db::QuoteText(QString::fromLatin1(value.metaType().name()));
    const QVariant id = db::ReadScalar(
        connection, QStringLiteral("SELECT SetID FROM %1 WHERE %2").arg(kSettingsTable, where));
    if (id.isValid()) {
        connection.Execute(QStringLiteral("UPDATE %1 SET SetVal=%2, SetValTyp=%3 WHERE SetID=%4")
                               .arg(kSettingsTable, text, type, id.toString()));
        return;
    }
    connection.Execute(
        QStringLiteral("INSERT INTO %1 (SetSec, SetKey, SetSco, SetVal, SetValTyp) VALUES (%2, "
                       "%3, %4, %5, %6)")
            .arg(kSettingsTable, db::QuoteText(section), db::QuoteText(key), QString::number(scope),
                 text, type));
}

}  // namespace orvo::host
