#include "insurance/carrier_change.h"

#include <QFile>

namespace orvo::insurance {
namespace {

const QString kCrLf = QStringLiteral("\r\n");

// The identity as lines of an address block, the empty parts left out.
QStringList AddressLines(const CarrierIdentity& identity) {
    QStringList lines;
    for (const QString& part : identity) {
        if (!part.isEmpty())
            lines << part;
    }
    return lines;
}

}  // namespace

const QStringList& CarrierIdentityColumns() {
    static const QStringList columns{QStringLiteral("InsCoNam"),  QStringLiteral("InsCoAdd1"),
                                     QStringLiteral("InsCoAdd2"), QStringLiteral("InsCoCit"),
                                     QStringLiteral("InsCoSta"),  QStringLiteral("InsCoZip"),
                                     QStringLiteral("InsCoTel"),  QStringLiteral("InsCoTel2")};
    return columns;
}

bool IsGlobalChange(const CarrierIdentity& stored, const CarrierIdentity& typed) {
    for (std::size_t i = 0; i < stored.size(); ++i) {
        if (stored[i].compare(typed[i], Qt::CaseInsensitive) == 0)
            continue;
        if (i == 0 || !stored[i].isEmpty())
            return true;
    }
    return false;
}

QString GlobalChangeWarning(const CarrierIdentity& stored, const CarrierIdentity& typed,
                            int patientCount) {
    QStringList parts{QStringLiteral("Warning!"), QString(),
                      QStringLiteral("Changing this Insurance Information will affect ALL "
                                     "patients with insurance company:"),
                      QString()};
    parts << AddressLines(stored);
    parts << QString() << QStringLiteral("and will change their coverage to insurance company:")
          << QString();
    parts << AddressLines(typed);
    parts << QString()
          << QStringLiteral("and will affect ") + QString::number(patientCount) +
                 QStringLiteral(" patients. ")
          << QString() << QStringLiteral("Are you sure you want to continue?");
    return parts.join(kCrLf);
}

QString CarrierChangeLogEntry(int carrierId, const QString& login, const QDate& today,
                              const CarrierIdentity& stored, const CarrierIdentity& typed) {
    QStringList lines{QString(60, QLatin1Char('-')),
                      QStringLiteral("Insurance Co. Entry ID ") + QString::number(carrierId) +
                          QStringLiteral(" was changed by ") + login + QStringLiteral(" on ") +
                          today.toString(QStringLiteral("MM/dd/yyyy")),
                      QStringLiteral("From:")};
    for (const QString& value : stored)
        lines << value;
    lines << QStringLiteral("To:");
    for (const QString& value : typed)
        lines << value;
    return lines.join(kCrLf) + kCrLf;
}

bool AppendCarrierChangeLog(const QString& path, const QString& entry) {
    QFile file(path);
    if (!file.open(QIODevice::WriteOnly | QIODevice::Append))
        return false;
    const QByteArray bytes = entry.toUtf8();
    return file.write(bytes) == bytes.size();
}

}  // namespace orvo::insurance
