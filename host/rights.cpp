#include "host/rights.h"

#include "host/host_gic.h"
#include "platform/db/recordset.h"
#include "platform/db/sql_text.h"
#include "platform/prompts.h"

namespace orvo::host {
namespace {

const QString kSupervisor = QStringLiteral("SUPERVISOR");
const QString kRefusalTitle = QStringLiteral("Access Denied");

// A right of the login at the location: a rights row with the write flag set. The rights
// screen looks a login up with its apostrophes removed, so a row may hold either form.
bool HoldsRight(db::Connection& connection, const QString& login, int location,
                const QString& key) {
    const QString bare = QString(login).remove(QLatin1Char('\''));
    const QString sql =
        QStringLiteral(
            "SELECT Count(*) FROM PWATable WHERE PWAAreOfPro=%1 AND PWAUseNam IN (%2, %3) "
            "AND OffLocID=%4 AND PWAWriFla<>0")
            .arg(db::QuoteText(key.trimmed()), db::QuoteText(login), db::QuoteText(bare),
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

bool CheckLoginRight(db::Connection& connection, const QString& login, int location,
                     const QString& rightKey, const QString& message) {
    const QString name = login.trimmed().toUpper();
    if (name == kSupervisor)
        return true;
    if (!name.isEmpty() && HoldsRight(connection, name, location, rightKey))
        return true;
    if (!message.trimmed().isEmpty()) {
        prompts().Message(RefusalText(message), Buttons::Ok, Icon::Warning, kRefusalTitle);
    }
    return false;
}

}  // namespace orvo::host
