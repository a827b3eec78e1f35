#include "host/host_gic.h"

#include <QCoreApplication>
#include <QCryptographicHash>
#include <QDeadlineTimer>
#include <QFileInfo>
#include <QLoggingCategory>
#include <QMetaProperty>
#include <QRegularExpression>
#include <QThread>

#include "host/host_tables.h"
#include "host/payer_list_window.h"
#include "platform/db/recordset.h"
#include "platform/db/translate_sql.h"
#include "platform/prompts.h"

Q_LOGGING_CATEGORY(lcHost, "orvo.host")

namespace orvo::host {

const QString HostGIC::kDefaultPasswordKey = QStringLiteral("5A3C91E07B4D28F6C1A9E352");
const QString HostGIC::kStationSection = QStringLiteral("STATION_SETUP");

QString QuoteSqlText(const QString& text) {
    return QLatin1Char('\'') + QString(text).replace(QLatin1Char('\''), QStringLiteral("''")) +
           QLatin1Char('\'');
}

namespace {

const QString kSupervisor = QStringLiteral("SUPERVISOR");
const QString kRefusalTitle = QStringLiteral("Access Denied");
// Marks the stored form of a password, so that ConvertPassword can tell which way to go.
const QString kCipherMarker = QStringLiteral("ORVO1$");

// --- settings -------------------------------------------------------------------------------

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

// --- bound records --------------------------------------------------------------------------

QString BoundColumn(const QWidget* holder) {
    return holder ? holder->property("DataField").toString().trimmed() : QString();
}

// The property that holds a widget's value: its user property, or the text of a widget that
// has none (a label).
QMetaProperty HolderProperty(const QWidget* holder) {
    const QMetaObject* meta = holder->metaObject();
    const QMetaProperty user = meta->userProperty();
    if (user.isValid())
        return user;
    const int text = meta->indexOfProperty("text");
    return text >= 0 ? meta->property(text) : QMetaProperty();
}

void SetHolderValue(QWidget* holder, const QVariant& stored) {
    const QMetaProperty property = HolderProperty(holder);
    if (!property.isValid() || !property.isWritable())
        return;
    const QMetaType type = property.metaType();
    QVariant value;
    if (type.id() == QMetaType::Bool) {
        value = !stored.isNull() && stored.toBool();
    } else if (type.id() == QMetaType::QString) {
        value = stored.isNull() ? QString() : stored.toString();
    } else {
        value = stored;
        if (stored.isNull() || !value.convert(type))
            value = QVariant(type);
    }
    property.write(holder, value);
}

// The holder's value as an SQL literal. Every value goes as a quoted literal, which both
// engines convert to the column's type; an empty text is a null.
QString HolderLiteral(const QWidget* holder) {
    const QMetaProperty property = HolderProperty(holder);
    if (!property.isValid())
        return QStringLiteral("NULL");
    const QVariant value = property.read(holder);
    if (value.typeId() == QMetaType::Bool) {
        return QuoteSqlText(value.toBool() ? QStringLiteral("1") : QStringLiteral("0"));
    }
    const QString text = value.typeId() == QMetaType::QDate ? value.toDate().toString(Qt::ISODate)
                                                            : value.toString();
    return text.isEmpty() ? QStringLiteral("NULL") : QuoteSqlText(text);
}

QString KeyLiteral(const QVariant& id) {
    if (id.typeId() == QMetaType::QString)
        return QuoteSqlText(id.toString().trimmed());
    return QString::number(id.toLongLong());
}

// --- text helpers ---------------------------------------------------------------------------

bool IsApostrophe(QChar c) {
    return c == QLatin1Char('\'') || c == QChar(0x2019);
}

// Endings after an apostrophe that stay lower case: "JOHN'S" is "John's", "O'NEIL" "O'Neil".
bool IsContractionEnding(const QString& word) {
    static const QStringList endings{
        QStringLiteral("s"),  QStringLiteral("t"),  QStringLiteral("d"), QStringLiteral("ll"),
        QStringLiteral("re"), QStringLiteral("ve"), QStringLiteral("m")};
    return endings.contains(word, Qt::CaseInsensitive);
}

// A run that starts with a digit is a number: an ordinal ("3RD") takes a lower-case suffix,
// anything else ("3B", an apartment) stays as typed.
void CaseNumber(QString& text, qsizetype begin, qsizetype end) {
    static const QRegularExpression ordinal(QStringLiteral("^\\d+(st|nd|rd|th)$"),
                                            QRegularExpression::CaseInsensitiveOption);
    if (!ordinal.match(text.mid(begin, end - begin)).hasMatch())
        return;
    for (qsizetype i = begin; i < end; ++i)
        text[i] = text[i].toLower();
}

// One run of letters and digits. A run typed in mixed case ("McDonald") is left as it is, and
// so is a code of letters and digits ("M5V", a postal code).
void CaseWord(QString& text, qsizetype begin, qsizetype end) {
    if (text[begin].isDigit())
        return CaseNumber(text, begin, end);
    for (qsizetype i = begin; i < end; ++i) {
        if (text[i].isDigit())
            return;
    }
    bool lower = false;
    bool upper = false;
    for (qsizetype i = begin; i < end; ++i) {
        lower = lower || text[i].isLower();
        upper = upper || text[i].isUpper();
    }
    if (lower && upper)
        return;
    const bool contraction = begin > 0 && IsApostrophe(text[begin - 1]) &&
                             IsContractionEnding(text.mid(begin, end - begin));
    for (qsizetype i = begin; i < end; ++i) {
        text[i] = (i == begin && !contraction) ? text[i].toUpper() : text[i].toLower();
    }
}

QString ProperCaseText(QString text) {
    qsizetype i = 0;
    while (i < text.size()) {
        if (!text[i].isLetterOrNumber()) {
            ++i;
            continue;
        }
        qsizetype end = i;
        while (end < text.size() && text[end].isLetterOrNumber())
            ++end;
        CaseWord(text, i, end);
        i = end;
    }
    return text;
}

QString FormatTenDigits(const QString& digits) {
    return QStringLiteral("(%1) %2-%3").arg(digits.left(3), digits.mid(3, 3), digits.mid(6, 4));
}

// --- password cipher ------------------------------------------------------------------------

QByteArray Keystream(const QByteArray& key, qsizetype length) {
    QByteArray stream;
    for (quint32 counter = 0; stream.size() < length; ++counter) {
        QByteArray block = key;
        for (int shift = 24; shift >= 0; shift -= 8)
            block.append(char((counter >> shift) & 0xff));
        stream += QCryptographicHash::hash(block, QCryptographicHash::Sha256);
    }
    stream.truncate(length);
    return stream;
}

QByteArray XorWith(QByteArray data, const QByteArray& key) {
    const QByteArray stream = Keystream(key, data.size());
    for (qsizetype i = 0; i < data.size(); ++i)
        data[i] = char(data[i] ^ stream[i]);
    return data;
}

bool IsStoredPassword(const QString& text) {
    static const QRegularExpression hex(QStringLiteral("^([0-9A-Fa-f]{2})+$"));
    return text.startsWith(kCipherMarker) &&
           hex.match(QStringView(text).mid(kCipherMarker.size())).hasMatch();
}

// A right of the login at the location: a rights row with the write flag set. The rights
// screen looks a login up with its apostrophes removed, so a row may hold either form.
bool HoldsRight(db::Connection& connection, const QString& login, int location,
                const QString& key) {
    const QString bare = QString(login).remove(QLatin1Char('\''));
    const QString sql =
        QStringLiteral(
            "SELECT Count(*) FROM PWATable WHERE PWAAreOfPro=%1 AND PWAUseNam IN (%2, %3) "
            "AND OffLocID=%4 AND PWAWriFla<>0")
            .arg(QuoteSqlText(key.trimmed()), QuoteSqlText(login), QuoteSqlText(bare),
                 QString::number(location));
    return db::ReadScalar(connection, sql).toLongLong() > 0;
}

// A refusal is given either as a sentence or as the words of what is refused.
QString RefusalText(const QString& message) {
    const QString text = message.trimmed();
    if (text.endsWith(QLatin1Char('.')) || text.endsWith(QLatin1Char('!')) ||
        text.endsWith(QLatin1Char('?'))) {
        return text;
    }
    return QStringLiteral("You have no right to %1.").arg(text);
}

}  // namespace

HostGIC::HostGIC(HostSession& session)
    : session_(session), passwordKey_(kDefaultPasswordKey.toUtf8()) {}

bool HostGIC::AskYesNo(bool defaultYes, const QString& title, const QString& text) {
    return prompts().Message(text, Buttons::YesNo, Icon::Question, title, defaultYes ? 1 : 2) ==
           AnswerYes;
}

bool HostGIC::CheckRight(const QString& rightKey, const QString& message, bool& /*flag*/) {
    const QString login = GetLoginName().trimmed().toUpper();
    if (login == kSupervisor)
        return true;
    if (!login.isEmpty() && HoldsRight(GetConnection(), login, GetOfficeLocationID(), rightKey)) {
        return true;
    }
    if (!message.trimmed().isEmpty()) {
        prompts().Message(RefusalText(message), Buttons::Ok, Icon::Warning, kRefusalTitle);
    }
    return false;
}

QString HostGIC::ConvertPassword(const QString& text) {
    if (text.isEmpty())
        return QString();
    if (IsStoredPassword(text)) {
        const QByteArray cipher = QByteArray::fromHex(text.mid(kCipherMarker.size()).toLatin1());
        return QString::fromUtf8(XorWith(cipher, passwordKey_));
    }
    return kCipherMarker + QString::fromLatin1(XorWith(text.toUtf8(), passwordKey_).toHex());
}

bool HostGIC::FileExists(const QString& path) {
    return QFileInfo::exists(path);
}

QString HostGIC::FormatPhone(const QString& text) {
    const QString typed = text.trimmed();
    QString digits;
    for (const QChar c : typed) {
        if (c.isLetter())
            return typed;
        if (c.isDigit())
            digits += c;
    }
    if (digits.size() == 11 && digits.startsWith(QLatin1Char('1')))
        digits.remove(0, 1);
    if (digits.size() == 10)
        return FormatTenDigits(digits);
    if (digits.size() > 10)
        return FormatTenDigits(digits) + QStringLiteral(" x") + digits.mid(10);
    if (digits.size() == 7)
        return digits.left(3) + QLatin1Char('-') + digits.mid(3);
    return typed;
}

QString HostGIC::GetComputerName() {
    return session_.computerName;
}

db::Connection& HostGIC::GetConnection() {
    if (!session_.connection) {
        throw db::DatabaseError(QStringLiteral("No practice database is open."), QString());
    }
    return *session_.connection;
}

int HostGIC::GetEditResultID() {
    return editResultId_;
}

short HostGIC::GetDatabaseKind() {
    return static_cast<short>(GetConnection().engine());
}

QString HostGIC::GetDataPath() {
    return session_.dataPath;
}

QString HostGIC::GetDelimitedField(const QString& text, const QString& separator, int fieldNumber) {
    if (fieldNumber < 1)
        return QString();
    if (separator.isEmpty())
        return fieldNumber == 1 ? text : QString();
    const QStringList fields = text.split(separator);
    return fieldNumber <= fields.size() ? fields[fieldNumber - 1] : QString();
}

bool HostGIC::GetGoToQuickAppoint() {
    return goToQuickAppoint_;
}

std::shared_ptr<PayerListWindow> HostGIC::GetPayerListWindow(const QString&) {
    return std::make_shared<HostPayerList>(GetConnection());
}

QString HostGIC::GetLoginName() {
    return session_.loginName;
}

QWidget* HostGIC::GetMainForm() {
    return mainForm_.data();
}

int HostGIC::GetOfficeLocationID() {
    return session_.officeLocationId;
}

int HostGIC::GetPatientID() {
    return patientId_;
}

QString HostGIC::GetPersonTypeField() {
    return personTypeField_;
}

QString HostGIC::GetProgramPath() {
    return session_.programPath;
}

int HostGIC::GetSavedRecordID() {
    return savedRecordId_;
}

short HostGIC::GetScreenVariant() {
    return static_cast<short>(personScreenKind_);
}

QString HostGIC::GetStationID() {
    return session_.stationId;
}

QDate HostGIC::GetToday() {
    return session_.today.isValid() ? session_.today : QDate::currentDate();
}

std::optional<QString> HostGIC::InputDialog(const QString& prompt, const QString& title,
                                            const QString& defaultText, int /*flags*/) {
    return prompts().Input(prompt, title, defaultText);
}

void HostGIC::SplitPersonName(const QString& text, QString& lastName, QString& firstName) {
    const QString name = text.simplified();
    const qsizetype comma = name.indexOf(QLatin1Char(','));
    if (comma >= 0) {
        lastName = name.left(comma).trimmed();
        firstName = name.mid(comma + 1).trimmed();
        return;
    }
    const qsizetype blank = name.lastIndexOf(QLatin1Char(' '));
    lastName = name.mid(blank + 1);
    firstName = blank < 0 ? QString() : name.left(blank);
}

void HostGIC::PauseMilliseconds(int milliseconds) {
    if (milliseconds <= 0) {
        QCoreApplication::processEvents();
        return;
    }
    const QDeadlineTimer deadline(milliseconds);
    while (!deadline.hasExpired()) {
        QCoreApplication::processEvents(QEventLoop::AllEvents,
                                        static_cast<int>(deadline.remainingTime()));
        // processEvents returns at once when nothing is pending; do not spin on it.
        const qint64 left = deadline.remainingTime();
        if (left > 0)
            QThread::msleep(static_cast<unsigned long>(qMin<qint64>(left, 5)));
    }
}

QVariant HostGIC::ProperCase(const QVariant& text) {
    if (text.typeId() != QMetaType::QString)
        return text;
    return ProperCaseText(text.toString());
}

void HostGIC::PutCarrierSearchText(const QString& text) {
    carrierSearchText_ = text;
}
void HostGIC::PutEditResultID(int id) {
    editResultId_ = id;
}
void HostGIC::PutGroupSearchText(const QString& text) {
    groupSearchText_ = text;
}
void HostGIC::PutHelpContext(int context) {
    helpContext_ = context;
}
void HostGIC::PutPatientID(int id) {
    patientId_ = id;
}
void HostGIC::PutPersonScreenKind(int kind) {
    personScreenKind_ = kind;
}
void HostGIC::PutPersonTypeField(const QString& field) {
    personTypeField_ = field;
}
void HostGIC::PutPlanCarrierID(int id) {
    planCarrierId_ = id;
}
void HostGIC::PutPlanEmployerID(int id) {
    planEmployerId_ = id;
}
void HostGIC::PutPlanGroupText(const QString& text) {
    planGroupText_ = text;
}
void HostGIC::PutPlanTitle(const QString& title) {
    planTitle_ = title;
}
void HostGIC::PutRecallSearchText(const QString& text) {
    recallSearchText_ = text;
}
void HostGIC::PutSavedRecordID(int id) {
    savedRecordId_ = id;
}

void HostGIC::ReadBoundRecord(const QVariant& recordId, const QString& keyColumn,
                              const QString& table, const FieldHolders& holders) {
    if (!recordId.isValid() || recordId.toString().trimmed().isEmpty())
        return;
    const db::Recordset rs(
        GetConnection(),
        QStringLiteral("SELECT * FROM %1 WHERE %2=%3").arg(table, keyColumn, KeyLiteral(recordId)));
    if (rs.IsEmpty())
        return;
    for (QWidget* holder : holders) {
        const int index = rs.IndexOf(BoundColumn(holder));
        if (index < 0)
            continue;
        SetHolderValue(holder, rs.IsNull(index) ? QVariant() : rs.Value(index));
    }
}

QVariant HostGIC::ReadSetting(const QString& section, const QString& key, int scope,
                              const QVariant& defaultValue) {
    const db::Recordset rs(
        GetConnection(),
        QStringLiteral("SELECT SetVal, SetValTyp FROM %1 WHERE SetSec=%2 AND SetKey=%3 AND "
                       "SetSco=%4 ORDER BY SetID DESC")
            .arg(kSettingsTable, QuoteSqlText(section), QuoteSqlText(key), QString::number(scope)));
    if (rs.IsEmpty())
        return defaultValue;
    const QString stored = rs.Text(0);
    const QMetaType target =
        defaultValue.isValid() ? defaultValue.metaType() : QMetaType::fromName(rs.Text(1).toUtf8());
    if (!target.isValid())
        return stored;
    if (const auto value = ConvertSetting(stored, target))
        return *value;
    qCWarning(lcHost).noquote() << QStringLiteral(
                                       "Setting %1/%2 holds \"%3\", which reads as no %4; "
                                       "the default is used")
                                       .arg(section, key, stored,
                                            QString::fromLatin1(target.name()));
    return defaultValue.isValid() ? defaultValue : QVariant(stored);
}

QVariant HostGIC::ReadStationSetting(const QString& key, const QVariant& defaultValue) {
    return ReadSetting(kStationSection, GetStationID() + key, 0, defaultValue);
}

void HostGIC::SetMainForm(QWidget* form) {
    mainForm_ = form;
}

void HostGIC::SetPasswordKey(const QString& key) {
    passwordKey_ = (key.isEmpty() ? kDefaultPasswordKey : key).toUtf8();
}

QString HostGIC::SqlQuoteText(const QString& text) {
    return QuoteSqlText(text);
}

QString HostGIC::TranslateSql(const QString& sql) {
    return db::TranslateSql(sql, GetConnection().engine());
}

void HostGIC::WriteAuditLog(const QString& key, const QString& action, const QString& text) {
    const QString now =
        QDateTime::currentDateTime().toString(QStringLiteral("yyyy-MM-dd HH:mm:ss"));
    GetConnection().Execute(
        QStringLiteral("INSERT INTO %1 (AudKey, AudAct, AudTex, AudUseNam, AudStaID, AudDatTim) "
                       "VALUES (%2, %3, %4, %5, %6, %7)")
            .arg(kAuditTable, QuoteSqlText(key), QuoteSqlText(action), QuoteSqlText(text),
                 QuoteSqlText(GetLoginName()), QuoteSqlText(GetStationID()), QuoteSqlText(now)));
}

void HostGIC::WriteBoundRecord(int& recordId, const QString& keyColumn, const QString& table,
                               const FieldHolders& holders) {
    db::Connection& connection = GetConnection();
    const db::Recordset shape(connection, QStringLiteral("SELECT * FROM %1 WHERE 1=0").arg(table));
    QStringList columns;
    QStringList values;
    for (const QWidget* holder : holders) {
        const QString column = BoundColumn(holder);
        if (column.isEmpty() || column.compare(keyColumn, Qt::CaseInsensitive) == 0)
            continue;
        if (shape.IndexOf(column) < 0 || columns.contains(column, Qt::CaseInsensitive))
            continue;
        columns << column;
        values << HolderLiteral(holder);
    }
    if (recordId == 0) {
        const QString sql = columns.isEmpty()
                                ? QStringLiteral("INSERT INTO %1 DEFAULT VALUES").arg(table)
                                : QStringLiteral("INSERT INTO %1 (%2) VALUES (%3)")
                                      .arg(table, columns.join(QStringLiteral(", ")),
                                           values.join(QStringLiteral(", ")));
        recordId = static_cast<int>(connection.InsertWithIdentity(sql));
        return;
    }
    if (columns.isEmpty())
        return;
    QStringList assignments;
    for (qsizetype i = 0; i < columns.size(); ++i)
        assignments << columns[i] + QLatin1Char('=') + values[i];
    connection.Execute(QStringLiteral("UPDATE %1 SET %2 WHERE %3=%4")
                           .arg(table, assignments.join(QStringLiteral(", ")), keyColumn,
                                QString::number(recordId)));
}

void HostGIC::WriteLogLine(int recordId, const QString& type, const QString& sourceKey,
                           const QString& field, const QString& text) {
    GetConnection().Execute(
        QStringLiteral("INSERT INTO %1 (cmPID, cmNotTyp, cmSouKey, cmFie, cmUseNam, cmDat, cmDoc) "
                       "VALUES (%2, %3, %4, %5, %6, %7, %8)")
            .arg(kNotesTable, QString::number(recordId), QuoteSqlText(type),
                 QuoteSqlText(sourceKey), QuoteSqlText(field), QuoteSqlText(GetLoginName()),
                 QuoteSqlText(GetToday().toString(Qt::ISODate)), QuoteSqlText(text)));
}

void HostGIC::WriteSetting(const QString& section, const QString& key, int scope,
                           const QVariant& value) {
    db::Connection& connection = GetConnection();
    const QString where =
        QStringLiteral("SetSec=%1 AND SetKey=%2 AND SetSco=%3")
            .arg(QuoteSqlText(section), QuoteSqlText(key), QString::number(scope));
    // Writing no value at all clears the setting, so that its readers fall back on their default.
    if (!value.isValid()) {
        connection.Execute(QStringLiteral("DELETE FROM %1 WHERE %2").arg(kSettingsTable, where));
        return;
    }
    const QString text = QuoteSqlText(SettingText(value));
    const QString type = QuoteSqlText(QString::fromLatin1(value.metaType().name()));
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
            .arg(kSettingsTable, QuoteSqlText(section), QuoteSqlText(key), QString::number(scope),
                 text, type));
}

void HostGIC::WriteStationSetting(const QString& key, const QVariant& value) {
    WriteSetting(kStationSection, GetStationID() + key, 0, value);
}

}  // namespace orvo::host
