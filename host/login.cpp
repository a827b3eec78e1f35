#include "host/login.h"

#include "host/host_gic.h"
#include "platform/db/recordset.h"
#include "platform/db/sql_text.h"

namespace orvo::host {

void EnsureSupervisor(db::Connection& connection) {
    const qint64 count =
        db::ReadScalar(connection, QStringLiteral("SELECT Count(*) FROM PWMTable WHERE "
                                                  "PWMUseNam='SUPERVISOR'"))
            .toLongLong();
    if (count > 0)
        return;
    connection.Execute(
        QStringLiteral("INSERT INTO PWMTable (PWMUseNam, PWMPASWOR) VALUES ('SUPERVISOR', '')"));
}

bool LoginExists(db::Connection& connection, const QString& name) {
    return db::ReadScalar(connection,
                          QStringLiteral("SELECT count(*) FROM PWMTable WHERE PWMUseNam=%1")
                              .arg(db::QuoteText(name.trimmed())))
               .toInt() > 0;
}

bool VerifyLogin(db::Connection& connection, HostGIC& gic, const QString& name,
                 const QString& password) {
    const QString login = name.trimmed();
    if (login.isEmpty())
        return false;
    gic.SetPasswordKey(PasswordCipher::kDefaultKey);
    const QString stored = gic.ConvertPassword(password);
    // The name column compares without regard to letter case on both engines.
    db::Recordset rs(connection, QStringLiteral("SELECT PWMPasWor FROM PWMTable WHERE PWMUseNam=%1")
                                     .arg(db::QuoteText(login)));
    for (; !rs.Eof(); rs.MoveNext()) {
        if (rs.Text(0) == stored)
            return true;
    }
    return false;
}

void GrantRight(db::Connection& connection, const QString& login, int location,
                const QString& key) {
    const QString name = login.trimmed().toUpper();
    const QString quotedName = db::QuoteText(name);
    const qint64 loginId =
        db::ReadScalar(
            connection,
            QStringLiteral("SELECT PWMID FROM PWMTable WHERE PWMUseNam=%1").arg(quotedName))
            .toLongLong();
    connection.Execute(
        QStringLiteral(
            "INSERT INTO PWATable (PWAPWMID, PWAUseNam, OffLocID, PWAAreOfPro, "
            "PWAWriFla, PWAReaFla, PWAFla1, PWAFla2) VALUES (%1, %2, %3, %4, 1, 0, 0, 0)")
            .arg(QString::number(loginId), quotedName, QString::number(location),
                 db::QuoteText(key.trimmed())));
}

}  // namespace orvo::host
