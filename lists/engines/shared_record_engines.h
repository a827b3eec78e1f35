#pragma once

#include <QList>
#include <QString>
#include <functional>

#include "component/public/gic.h"

namespace orvo::lists {

// Employers, carriers, group plans and pharmacies are shared by many persons: through the
// employer-plan links (ELTable), the subscriber links on them (PatEmpTable) and the coverages
// through those (CovTable), or, for a pharmacy, through the person's own row (pPhaID). Deleting
// one must not leave anybody pointing at nothing, and it leaves a trail: a note in the history
// of each person moved, and an audit line for the answer that started it.
//
// Every engine here runs in one transaction on the session connection (joining the caller's
// when one is open), in this order: new links first, then each subscriber moved with its note,
// then the old links ended, then the record's rows deleted. A failure at any statement leaves
// the practice as it was: no link, no note. The notes and the caller's audit lines are written
// inside the same transaction, so that none of them can claim what was rolled back.
//
// Engines ask no questions and show nothing; long runs report through the progress callback.

enum class SharedRecord { GroupPlan, Carrier, Employer, Pharmacy };

// Called as the engine goes: done of total persons moved so far.
using EngineProgress = std::function<void(int done, int total)>;

// The counts, as reads. True when the count could be read; count is 0 otherwise.
bool CountGroupPlanPatients(GIC& gic, int id, int& count);
bool CountEmployerPatients(GIC& gic, int id, int& count);
bool CountCarrierPatients(GIC& gic, int id, int& count);
bool CountLinkPatients(GIC& gic, int elID, int& count);
bool CountPharmacyPatients(GIC& gic, int id, int& count);
bool CountCarrierCoverages(GIC& gic, int id, int& count);
// The count the list command's warning gives for the record.
bool CountRecordPatients(GIC& gic, SharedRecord kind, int id, int& count);

// A person a replace or a delete would touch, for the preview and the record-lock check.
struct AffectedPerson {
    int pID = 0;
    QString name;  // "Last, First"
};
// Everyone an engine on the record writes about: the subscribers of its live links and those
// covered through them; for a pharmacy, the persons whose row names it. Sorted by name.
QList<AffectedPerson> AffectedPersons(GIC& gic, SharedRecord kind, int id);

// The replace engines: every live link of the old record gets a successor on the new one, each
// subscriber moves to it with a note, and the old links end. A carrier's plans go with it. A
// pharmacy replace is one UPDATE of the persons, with no note.
void Replace_GroupPlan_Links(GIC& gic, int oldId, int newId, const EngineProgress& progress = {});
void Replace_Carrier_Links(GIC& gic, int oldId, int newId, const EngineProgress& progress = {});
void Replace_Employer_Links(GIC& gic, int oldId, int newId, const EngineProgress& progress = {});
void Replace_Pharmacy_Patients(GIC& gic, int oldId, int newId);
void ReplaceRecord(GIC& gic, SharedRecord kind, int oldId, int newId,
                   const EngineProgress& progress = {});

// One link of an employer for another of the same employer: each subscriber moves, with a note.
void Replace_Employer_Plan_Links(GIC& gic, int oldElID, int newElID,
                                 const EngineProgress& progress = {});

// The delete engines: subscribers go to their employer's "No Insurance Coverage" link (an
// employer's subscribers lose the link), each with a note; the links end; the record's rows are
// deleted, a carrier's and a plan's per-code details with them. A record another station
// deleted meanwhile throws db::RowNotFoundError, and nothing stays.
void Delete_Employer_Record(GIC& gic, int id, const EngineProgress& progress = {});
void Delete_GroupPlan_Record(GIC& gic, int id, const EngineProgress& progress = {});
void Delete_Carrier_Record(GIC& gic, int id, const EngineProgress& progress = {});
// Persons keep the pharmacy's id unless a replace moved them first.
void Delete_Pharmacy_Record(GIC& gic, int id);
void DeleteRecord(GIC& gic, SharedRecord kind, int id, const EngineProgress& progress = {});

// Ends one link of an employer; its subscribers go to the employer's "No Insurance Coverage"
// link, each with a note. Nothing happens for a "No Insurance Coverage" link.
void Remove_Employer_Plan(GIC& gic, int elID, const EngineProgress& progress = {});

// The per-code details of a carrier's plan; nothing for a blank number or carrier 0.
void Delete_Plan_Details(GIC& gic, const QString& groupNumber, int carrierId);

// The notes' keys.
inline const QString kEngineNoteType = QStringLiteral("CM");
inline const QString kEngineNoteField = QStringLiteral("Comment");
inline const QString kEmployerNoteSource = QStringLiteral("LogEmp");
inline const QString kGroupPlanNoteSource = QStringLiteral("LogIP");
inline const QString kCarrierNoteSource = QStringLiteral("LogInsCo");

}  // namespace orvo::lists
