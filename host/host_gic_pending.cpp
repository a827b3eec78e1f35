// The host operations not built yet. Each throws NotImplemented with its name, so a screen that
// reaches one fails plainly instead of working on a made-up answer. An operation moves to
// host_gic.cpp when it is built for real.

#include "host/host_gic.h"

namespace orvo::host {

#define ORVO_PENDING(Operation) throw NotImplemented(QStringLiteral("Host operation " #Operation))

// clang-format off
void HostGIC::AddBoundRow(const QString&, const QStringList&, const QVariantList&) { ORVO_PENDING(AddBoundRow); }
int HostGIC::AskSaveChanges(const QString&, const QString&, const QString&) { ORVO_PENDING(AskSaveChanges); }
void HostGIC::DeletePersonRow(int, const QString&) { ORVO_PENDING(DeletePersonRow); }
void HostGIC::FillClaimFormList(QComboBox*) { ORVO_PENDING(FillClaimFormList); }
QString HostGIC::FormatSqlDate(const QDate&) { ORVO_PENDING(FormatSqlDate); }
bool HostGIC::GetBudgetPlanOwner(int, Currency&) { ORVO_PENDING(GetBudgetPlanOwner); }
void HostGIC::GetBudgetPlanTotals(int, Currency&, Currency&) { ORVO_PENDING(GetBudgetPlanTotals); }
QList<int> HostGIC::GetFamilyLinks(int) { ORVO_PENDING(GetFamilyLinks); }
short HostGIC::GetFamilyMemberCount(int) { ORVO_PENDING(GetFamilyMemberCount); }
bool HostGIC::GetFamilyMembers(int, QList<int>&) { ORVO_PENDING(GetFamilyMembers); }
QString HostGIC::GetPlanTypeCode(int) { ORVO_PENDING(GetPlanTypeCode); }
QString HostGIC::GetPlanTypeName(int) { ORVO_PENDING(GetPlanTypeName); }
db::Connection& HostGIC::GetTimeConnection() { ORVO_PENDING(GetTimeConnection); }
bool HostGIC::GroupPlanExists(const QString&, const QString&, int) { ORVO_PENDING(GroupPlanExists); }
bool HostGIC::HasFamilyBudgetPlan(int) { ORVO_PENDING(HasFamilyBudgetPlan); }
bool HostGIC::IsRestrictedMode() { ORVO_PENDING(IsRestrictedMode); }
bool HostGIC::IsScreenLocked() { ORVO_PENDING(IsScreenLocked); }
bool HostGIC::IsSupervisor(const QString&, QVariant&) { ORVO_PENDING(IsSupervisor); }
QString HostGIC::MapTaxonomyCode(const QString&) { ORVO_PENDING(MapTaxonomyCode); }
void HostGIC::RefreshHost(const QString&) { ORVO_PENDING(RefreshHost); }
bool HostGIC::PlanHasFixedFees(int) { ORVO_PENDING(PlanHasFixedFees); }
bool HostGIC::PlanIsPercentile(int) { ORVO_PENDING(PlanIsPercentile); }
bool HostGIC::PlanIsPPO(int) { ORVO_PENDING(PlanIsPPO); }
void HostGIC::PlanPaymentTypeChanged(int, int) { ORVO_PENDING(PlanPaymentTypeChanged); }
void HostGIC::PlanRenewalDateChanged(int, const QString&) { ORVO_PENDING(PlanRenewalDateChanged); }
void HostGIC::ProviderFeeScheduleChanged(int, short) { ORVO_PENDING(ProviderFeeScheduleChanged); }
void HostGIC::RecallTitleChanged(int, const QString&) { ORVO_PENDING(RecallTitleChanged); }
int HostGIC::RunProgramAndWait(const QString&, int) { ORVO_PENDING(RunProgramAndWait); }
void HostGIC::SetBusyCursor(bool) { ORVO_PENDING(SetBusyCursor); }
void HostGIC::SetCoverageInsCoPatID(int, const QString&) { ORVO_PENDING(SetCoverageInsCoPatID); }
void HostGIC::SetOfficeSchedule(const QVariant&) { ORVO_PENDING(SetOfficeSchedule); }
void HostGIC::SetPlanClaimForm(int, bool, bool, const QVariant&) { ORVO_PENDING(SetPlanClaimForm); }
void HostGIC::SetSessionLogin(const QString&) { ORVO_PENDING(SetSessionLogin); }
void HostGIC::SetSessionRight(bool) { ORVO_PENDING(SetSessionRight); }
void HostGIC::UpdateFamilyMembers(int) { ORVO_PENDING(UpdateFamilyMembers); }
bool HostGIC::UsesLetteredCodes() { ORVO_PENDING(UsesLetteredCodes); }
// clang-format on

#undef ORVO_PENDING

}  // namespace orvo::host
