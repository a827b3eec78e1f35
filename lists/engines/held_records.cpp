#include "lists/engines/held_records.h"

#include <QFileInfo>

#include "component/record_lock.h"
#include "platform/file_lock.h"
#include "platform/lock_files.h"

namespace orvo::lists {

QList<HeldPerson> HeldPatientRecords(GIC& gic, const QList<AffectedPerson>& persons) {
    QList<HeldPerson> held;
    for (const AffectedPerson& person : persons) {
        const QString path = component::RecordLockPath(gic, QStringLiteral("PATABLE"), person.pID);
        if (!QFileInfo::exists(path) || !FileLock::IsHeldElsewhere(path))
            continue;
        const lockfiles::RecordHolder holder =
            lockfiles::ReadRecordHolder(lockfiles::HolderPath(path));
        held << HeldPerson{person, holder.user, holder.computer};
    }
    return held;
}

QString HeldRecordsText(const QList<HeldPerson>& held) {
    QString text = QStringLiteral(
        "Nothing was changed: the records of these persons are open for editing, and each must "
        "be closed before they can be moved:\r\n");
    for (const HeldPerson& h : held) {
        text += QStringLiteral("\r\n") + h.person.name;
        if (!h.user.isEmpty()) {
            text += QStringLiteral(" (user ") + h.user + QStringLiteral(" on computer ") +
                    h.computer + QLatin1Char(')');
        }
    }
    return text;
}

}  // namespace orvo::lists
