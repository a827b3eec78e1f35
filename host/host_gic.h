#pragma once

#include <QPointer>
#include <QSet>
#include <QWidget>
#include <optional>
#include <utility>

#include "component/public/gic.h"
#include "host/host_session.h"
#include "host/notes.h"
#include "host/password_cipher.h"
#include "host/reminder_host.h"
#include "host/settings_store.h"

namespace orvo::host {

// The host object handed to the component: GIC over the session's practice database. It keeps
// a reference to the session, so identity (login, station, paths) is read fresh on each call.
// It holds the mailbox slots and the session's identity itself, and forwards the rest to the
// host's parts: settings (settings_store), bound records (bound_records), text helpers
// (text_format), the password cipher, rights, notes. The operations not built yet throw
// NotImplemented (host_gic_pending.cpp).
class HostGIC : public GIC {
public:
    explicit HostGIC(HostSession& session);

    void AddBoundRow(const QString& table, const QStringList& columns,
                     const QVariantList& values) override;
    int AskSaveChanges(const QString& title, const QString& extraText,
                       const QString& promptKey) override;
    bool AskYesNo(bool defaultYes, const QString& title, const QString& text) override;
    QString CalculateAge(const QString& birthDate) override;
    bool CheckRight(const QString& rightKey, const QString& message, bool& flag) override;
    QString ConvertPassword(const QString& text) override;
    void CoverageAdded(int personId) override;
    void CoverageChanged(int personId) override;
    void DeletePersonRow(int personId, const QString& roleColumn) override;
    void EnsureStoredProcedure(const QString& name, const QString& body,
                               const QString& parameters) override;
    bool FileExists(const QString& path) override;
    void FillClaimFormList(QComboBox* combo) override;
    bool FindInitials(const QString& initials, int& holderPersonId) override;
    void FlushConnection(db::Connection& connection, int mode) override;
    QString FormatPhone(const QString& text) override;
    QString FormatSqlDate(const QDate& date) override;
    QString FormatSsn(const QString& text) override;
    bool GetBudgetPlanOwner(int personId, Currency& amount) override;
    void GetBudgetPlanTotals(int personId, Currency& planTotal, Currency& balance) override;
    QString GetCarrierName(int carrierId) override;
    QString GetComputerName() override;
    db::Connection& GetConnection() override;
    CoverageYearToDate GetCoverageYearToDate(int personId, bool isPrimary) override;
    int GetEditResultID() override;
    short GetDatabaseKind() override;
    QString GetDataPath() override;
    int GetDefaultProviderID() override;
    QString GetDelimitedField(const QString& text, const QString& separator,
                              int fieldNumber) override;
    QString GetEmployerName(int employerId) override;
    int GetFamilyID(int personId) override;
    QList<int> GetFamilyLinks(int personId) override;
    short GetFamilyMemberCount(int familyHeadId) override;
    bool GetFamilyMembers(int familyHeadId, QList<int>& links) override;
    bool GetGoToQuickAppoint() override;
    QString GetGroupNumber(int groupPlanId) override;
    QString GetLoginName() override;
    QWidget* GetMainForm() override;
    int GetOfficeLocationCount() override;
    int GetOfficeLocationID() override;
    int GetPatientID() override;
    std::shared_ptr<PayerListWindow> GetPayerListWindow(const QString& login) override;
    QString GetPersonField(int personId, int fieldNumber) override;
    QString GetPersonName(int personId, const QString& separator,
                          const QString& extraField) override;
    QString GetPersonTypeField() override;
    QString GetPlanTypeCode(int listIndex) override;
    QString GetPlanTypeName(int index) override;
    QString GetProgramPath() override;
    short GetProviderFeeSchedule(int providerId) override;
    int GetRecallContactMethod(int recallEntryId) override;
    int GetRecallStage(int recallEntryId) override;
    int GetReminderLinkType(int reminderType, bool linkedToMaster) override;
    int GetSavedRecordID() override;
    short GetScreenVariant() override;
    db::Connection& GetSecondConnection() override;
    QString GetStationID() override;
    db::Connection& GetTimeConnection() override;
    QDate GetToday() override;
    bool GroupPlanExists(const QString& groupNumber, const QString& text, int groupPlanId) override;
    bool HasFamilyBudgetPlan(int personId) override;
    std::optional<QString> InputDialog(const QString& prompt, const QString& title,
                                       const QString& defaultText, int flags) override;
    bool IsFamilyHead(int personId) override;
    bool IsRestrictedMode() override;
    bool IsScreenLocked() override;
    bool IsSupervisor(const QString& login, QVariant& value) override;
    bool IsValidFeeSchedule(short schedule) override;
    QString MakeDefaultInitials(int personId, const QString& lastName,
                                const QString& firstName) override;
    QString MapTaxonomyCode(const QString& value) override;
    QString NormalizeDate(const QString& text, const QString& formatName) override;
    void RefreshHost(const QString& message) override;
    void NotifyPersonChanged(int personId) override;
    void NotifyPlanListChanged(int reserved) override;
    void SplitPersonName(const QString& text, QString& lastName, QString& firstName) override;
    void PauseMilliseconds(int milliseconds) override;
    bool PlanHasFixedFees(int groupPlanId) override;
    bool PlanIsPercentile(int groupPlanId) override;
    bool PlanIsPPO(int groupPlanId) override;
    void PlanPaymentTypeChanged(int planId, int newPaymentType) override;
    void PlanRenewalDateChanged(int planId, const QString& text) override;
    QVariant ProperCase(const QVariant& text) override;
    void ProviderFeeScheduleChanged(int providerId, short schedule) override;
    void PutCarrierSearchText(const QString& text) override;
    void PutEditResultID(int id) override;
    void PutGroupSearchText(const QString& text) override;
    void PutHelpContext(int context) override;
    void PutPatientID(int id) override;
    void PutPersonScreenKind(int kind) override;
    void PutPersonTypeField(const QString& field) override;
    void PutPlanCarrierID(int id) override;
    void PutPlanEmployerID(int id) override;
    void PutPlanGroupText(const QString& text) override;
    void PutPlanTitle(const QString& title) override;
    void PutRecallSearchText(const QString& text) override;
    void PutSavedRecordID(int id) override;
    void ReadBoundRecord(const QVariant& recordId, const QString& keyColumn, const QString& table,
                         const FieldHolders& holders) override;
    QVariant ReadSetting(const QString& section, const QString& key, int scope,
                         const QVariant& defaultValue) override;
    QVariant ReadStationSetting(const QString& key, const QVariant& defaultValue) override;
    void RecallTitleChanged(int recallId, const QString& title) override;
    void ReplaceInText(QString& text, const QString& find, const QString& replacement) override;
    int RunProgramAndWait(const QString& commandLine, int windowOptions) override;
    void SaveBoundFields(const FieldHolders& holders) override;
    void SetActiveRecord(int id, const QString& kind) override;
    void SetBookAppointmentRequest(bool request) override;
    void SetBusyCursor(bool busy) override;
    void SetCoverageInsCoPatID(int coverageId, const QString& text) override;
    void SetCoverageYearToDate(int personId, bool isPrimary,
                               const CoverageYearToDate& figures) override;
    void SetMainForm(QWidget* form) override;
    void SetOfficeSchedule(const QVariant& schedule) override;
    void SetPasswordKey(const QString& key) override;
    void SetPatientStatus(int personId, const QString& status) override;
    void SetPersonCoverageLink(int personId, int linkId, bool isPrimary,
                               bool afterRemoval) override;
    void SetPersonPrimaryEmployer(int personId, int employerId, int groupPlanId,
                                  bool flag) override;
    void SetPlanClaimForm(int planId, bool first, bool second,
                          const QVariant& formItemData) override;
    void SetSessionLogin(const QString& name) override;
    void SetSessionRight(bool flag) override;
    QString SqlQuoteText(const QString& text) override;
    void SubscriberLinksChanged(int personId) override;
    QString TranslateSql(const QString& sql) override;
    void UpdateFamilyMembers(int personId) override;
    bool UsesLetteredCodes() override;
    void WriteAuditLog(const QString& key, const QString& action, const QString& text) override;
    void WriteBoundRecord(int& recordId, const QString& keyColumn, const QString& table,
                          const FieldHolders& holders) override;
    void WriteLogLine(int recordId, const QString& type, const QString& sourceKey,
                      const QString& field, const QString& text) override;
    void WriteSetting(const QString& section, const QString& key, int scope,
                      const QVariant& value) override;
    void WriteStationSetting(const QString& key, const QVariant& value) override;
    void AskRestoreArchived(bool& restoreReminders, bool& restoreAccount, bool initial,
                            int kind) override;
    void PersonRoleAdded(int personId, int extraId) override;
    void RestorePersonRecalls(int personId) override;

    // The mailbox slots that the component only puts, read by the host.
    QString carrierSearchText() const { return carrierSearchText_; }
    QString groupSearchText() const { return groupSearchText_; }
    QString recallSearchText() const { return recallSearchText_; }
    int helpContext() const { return helpContext_; }
    int personScreenKind() const { return personScreenKind_; }
    int planCarrierId() const { return planCarrierId_; }
    int planEmployerId() const { return planEmployerId_; }
    QString planGroupText() const { return planGroupText_; }
    QString planTitle() const { return planTitle_; }
    // The persons NotifyPersonChanged and the coverage notices have named since the last
    // TakeChangedPersons, in order: what the host has to show anew once the component returns.
    QList<int> TakeChangedPersons() {
        changedSeen_.clear();
        return std::exchange(changedPersons_, {});
    }
    // The record a screen last ended on (SetActiveRecord): its id and kind ("PAT").
    std::pair<int, QString> activeRecord() const { return activeRecord_; }
    // How often the component said the plans changed (NotifyPlanListChanged).
    int PlanListChanges() const { return planListChanges_; }
    // The host's side of GetGoToQuickAppoint.
    void SetGoToQuickAppoint(bool value) { goToQuickAppoint_ = value; }

private:
    NoteAuthor Author();
    void NoteChangedPerson(int personId);
    int planListChanges_ = 0;

    HostSession& session_;
    SettingsStore settings_;
    PasswordCipher cipher_;
    ReminderHost reminders_;
    QPointer<QWidget> mainForm_;

    int editResultId_ = 0;
    int savedRecordId_ = 0;
    int patientId_ = 0;
    QString personTypeField_;
    QString carrierSearchText_;
    QString groupSearchText_;
    QString recallSearchText_;
    int helpContext_ = 0;
    int personScreenKind_ = 0;
    int planCarrierId_ = 0;
    int planEmployerId_ = 0;
    QString planGroupText_;
    QString planTitle_;
    bool goToQuickAppoint_ = false;
    std::pair<int, QString> activeRecord_;
    QList<int> changedPersons_;  // in the order noted
    QSet<int> changedSeen_;
};

}  // namespace orvo::host
