#pragma once

#include <QDate>
#include <QList>
#include <QString>

#include "component/public/gic.h"
#include "lists/engines/shared_record_engines.h"

namespace orvo::lists {

// Taking a provider off the provider list: the provider's appointment templates go, the
// appointments from today on and the patients and recalls assigned to the provider pass to
// another provider, and the provider role ends (the row stays, an employee stays an employee).
// One transaction on the session connection, joining the caller's: a failure anywhere leaves
// the provider, the book and every patient as they were.

// The patients assigned to the provider, for the preview and the record-lock check.
QList<AffectedPerson> PatientsOfProvider(GIC& gic, int providerId);

// The provider's field in a day's template, emptied: the template holds one field of
// kTemplateFieldWidth characters per provider column, the provider's id, and three blanks mark
// an empty one. Other columns keep their place.
inline constexpr int kTemplateFieldWidth = 3;
QString RemoveProviderFromTemplate(const QString& templateText, int providerId);

// The templates of the old provider deleted, the old provider's fields of the days from today
// on emptied, and those days' appointments given to the new provider. The banner says which
// day it is at.
void Delete_Provider_Templates(GIC& gic, int oldId, int newId, const QDate& today);

// The whole move: Delete_Provider_Templates, the patients and recalls to the new provider, and
// the provider role of the old one ended.
void Delete_Provider(GIC& gic, int oldId, int newId);

}  // namespace orvo::lists
