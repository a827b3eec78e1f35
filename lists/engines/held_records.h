#pragma once

#include <QList>
#include <QString>

#include "component/public/gic.h"
#include "lists/engines/shared_record_engines.h"

namespace orvo::lists {

// A person's record that a screen holds open, and who holds it.
struct HeldPerson {
    AffectedPerson person;
    QString user;
    QString computer;
};

// The persons whose patient record ("PATABLE") a screen holds open, at another station or at
// this one. Only looked at, never taken: a lock file nobody holds counts as free.
QList<HeldPerson> HeldPatientRecords(GIC& gic, const QList<AffectedPerson>& persons);

// The refusal that names them: "Name (user USER on computer COMP)" a line each.
QString HeldRecordsText(const QList<HeldPerson>& held);

}  // namespace orvo::lists
