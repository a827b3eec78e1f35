#include "component/identity_insert.h"

#include "platform/db/connection.h"

namespace orvo {

int InsertWithNewKey(GIC& gic, const QString& insert) {
    db::Connection& connection = gic.GetConnection();
    if (gic.GetDatabaseKind() == 2) {
        return static_cast<int>(connection.InsertWithIdentity(
            QStringLiteral("SET NOCOUNT ON; ") + insert + QStringLiteral("; SELECT @@IDENTITY")));
    }
    return static_cast<int>(connection.InsertWithIdentity(insert));
}

}  // namespace orvo
