#pragma once

#include <QPointer>
#include <QWidget>

#include "component/public/gic.h"

namespace orvo::test {

// A host object that keeps only the main window, and counts how often it was handed one. Any
// other operation is a call the code under test must not make: it throws NotImplemented.
class MainFormGIC : public GIC {
public:
    QWidget* GetMainForm() override { return mainForm_; }
    void SetMainForm(QWidget* form) override {
        mainForm_ = form;
        ++setMainFormCalls_;
    }
    int setMainFormCalls() const { return setMainFormCalls_; }

    void AddBoundRow(const QString& table, const QStringList& columns,
                     const QVariantList& values) override {
        Unused("AddBoundRow");
    }
    int AskSaveChanges(const QString& title, const QString& extraText,
                       const QString& promptKey) override {
        Unused("AskSaveChanges");
    }
    bool AskYesNo(bool defaultYes, const QString& title, const QString& text) override {
        Unused("AskYesNo");
    }
    QString CalculateAge(const QString& birthDate) override { Unused("CalculateAge"); }
    bool CheckRight(const QString& rightKey, const QString& message, bool& flag) override {
        Unused("CheckRight");
    }
    QString ConvertPassword(const QString& text) override { Unused("ConvertPassword"); }
    void CoverageAdded(int personId) override { Unused("CoverageAdded"); }
    void CoverageChanged(int personId) override { Unused("CoverageChanged"); }
    void DeletePersonRow(int personId, const QString& roleColumn) override {
        Unused("DeletePersonRow");
    }
    void EnsureStoredProcedure(const QString& name, const QString& body,
                               const QString& parameters) override {
        Unused("EnsureStoredProcedure");
    }
    bool FileExists(const QString& path) override { Unused("FileExists"); }
    void FillClaimFormList(QComboBox* combo) override { Unused("FillClaimFormList"); }
    bool FindInitials(const QString& initials, int& holderPersonId) override {
        Unused("FindInitials");
    }
    void FlushConnection(db::Connection& connection, int mode) override {
        Unused("FlushConnection");
    }
    QString FormatPhone(const QString& text) override { Unused("FormatPhone"); }
    QString FormatSqlDate(const QDate& date) override { Unused("FormatSqlDate"); }
    QString FormatSsn(const QString& text) override { Unused("FormatSsn"); }
    bool GetBudgetPlanOwner(int personId, Currency& amount) override {
        Unused("GetBudgetPlanOwner");
    }
    void GetBudgetPlanTotals(int personId, Currency& planTotal, Currency& balance) override {
        Unused("GetBudgetPlanTotals");
    }
    QString GetCarrierName(int carrierId) override { Unused("GetCarrierName"); }
    QString GetComputerName() override { Unused("GetComputerName"); }
    db::Connection& GetConnection() override { Unused("GetConnection"); }
    CoverageYearToDate GetCoverageYearToDate(int personId, bool isPrimary) override {
        Unused("GetCoverageYearToDate");
    }
    int GetEditResultID() override { Unused("GetEditResultID"); }
    short GetDatabaseKind() override { Unused("GetDatabaseKind"); }
    QString GetDataPath() override { Unused("GetDataPath"); }
    int GetDefaultProviderID() override { Unused("GetDefaultProviderID"); }
    QString GetDelimitedField(const QString& text, const QString& separator,
                              int fieldNumber) override {
        Unused("GetDelimitedField");
    }
    QString GetEmployerName(int employerId) override { Unused("GetEmployerName"); }
    int GetFamilyID(int personId) override { Unused("GetFamilyID"); }
    QList<int> GetFamilyLinks(int personId) override { Unused("GetFamilyLinks"); }
    short GetFamilyMemberCount(int familyHeadId) override { Unused("GetFamilyMemberCount"); }
    bool GetFamilyMembers(int familyHeadId, QList<int>& links) override {
        Unused("GetFamilyMembers");
    }
    bool GetGoToQuickAppoint() override { Unused("GetGoToQuickAppoint"); }
    QString GetGroupNumber(int groupPlanId) override { Unused("GetGroupNumber"); }
    QString GetLoginName() override { Unused("GetLoginName"); }
    int GetOfficeLocationCount() override { Unused("GetOfficeLocationCount"); }
    int GetOfficeLocationID() override { Unused("GetOfficeLocationID"); }
    int GetPatientID() override { Unused("GetPatientID"); }
    std::shared_ptr<PayerListWindow> GetPayerListWindow(const QString& login) override {
        Unused("GetPayerListWindow");
    }
    QString GetPersonField(int personId, int fieldNumber) override { Unused("GetPersonField"); }
    QString GetPersonName(int personId, const QString& separator,
                          const QString& extraField) override {
        Unused("GetPersonName");
    }
    QString GetPersonTypeField() override { Unused("GetPersonTypeField"); }
    QString GetPlanTypeCode(int listIndex) override { Unused("GetPlanTypeCode"); }
    QString GetPlanTypeName(int index) override { Unused("GetPlanTypeName"); }
    QString GetProgramPath() override { Unused("GetProgramPath"); }
    short GetProviderFeeSchedule(int providerId) override { Unused("GetProviderFeeSchedule"); }
    int GetRecallContactMethod(int recallEntryId) override { Unused("GetRecallContactMethod"); }
    int GetRecallStage(int recallEntryId) override { Unused("GetRecallStage"); }
    int GetReminderLinkType(int reminderType, bool linkedToMaster) override {
        Unused("GetReminderLinkType");
    }
    int GetSavedRecordID() override { Unused("GetSavedRecordID"); }
    short GetScreenVariant() override { Unused("GetScreenVariant"); }
    db::Connection& GetSecondConnection() override { Unused("GetSecondConnection"); }
    QString GetStationID() override { Unused("GetStationID"); }
    db::Connection& GetTimeConnection() override { Unused("GetTimeConnection"); }
    QDate GetToday() override { Unused("GetToday"); }
    bool GroupPlanExists(const QString& groupNumber, const QString& text,
                         int groupPlanId) override {
        Unused("GroupPlanExists");
    }
    bool HasFamilyBudgetPlan(int personId) override { Unused("HasFamilyBudgetPlan"); }
    std::optional<QString> InputDialog(const QString& prompt, const QString& title,
                                       const QString& defaultText, int flags) override {
        Unused("InputDialog");
    }
    bool IsFamilyHead(int personId) override { Unused("IsFamilyHead"); }
    bool IsRestrictedMode() override { Unused("IsRestrictedMode"); }
    bool IsScreenLocked() override { Unused("IsScreenLocked"); }
    bool IsSupervisor(const QString& login, QVariant& value) override { Unused("IsSupervisor"); }
    bool IsValidFeeSchedule(short schedule) override { Unused("IsValidFeeSchedule"); }
    QString MakeDefaultInitials(int personId, const QString& lastName,
                                const QString& firstName) override {
        Unused("MakeDefaultInitials");
    }
    QString MapTaxonomyCode(const QString& value) override { Unused("MapTaxonomyCode"); }
    QString NormalizeDate(const QString& text, const QString& formatName) override {
        Unused("NormalizeDate");
    }
    void RefreshHost(const QString& message) override { Unused("RefreshHost"); }
    void NotifyPersonChanged(int personId) override { Unused("NotifyPersonChanged"); }
    void NotifyPlanListChanged(int reserved) override { Unused("NotifyPlanListChanged"); }
    void SplitPersonName(const QString& text, QString& lastName, QString& firstName) override {
        Unused("SplitPersonName");
    }
    void PauseMilliseconds(int milliseconds) override { Unused("PauseMilliseconds"); }
    bool PlanHasFixedFees(int groupPlanId) override { Unused("PlanHasFixedFees"); }
    bool PlanIsPercentile(int groupPlanId) override { Unused("PlanIsPercentile"); }
    bool PlanIsPPO(int groupPlanId) override { Unused("PlanIsPPO"); }
    void PlanPaymentTypeChanged(int planId, int newPaymentType) override {
        Unused("PlanPaymentTypeChanged");
    }
    void PlanRenewalDateChanged(int planId, const QString& text) override {
        Unused("PlanRenewalDateChanged");
    }
    QVariant ProperCase(const QVariant& text) override { Unused("ProperCase"); }
    void ProviderFeeScheduleChanged(int providerId, short schedule) override {
        Unused("ProviderFeeScheduleChanged");
    }
    void PutCarrierSearchText(const QString& text) override { Unused("PutCarrierSearchText"); }
    void PutEditResultID(int id) override { Unused("PutEditResultID"); }
    void PutGroupSearchText(const QString& text) override { Unused("PutGroupSearchText"); }
    void PutHelpContext(int context) override { Unused("PutHelpContext"); }
    void PutPatientID(int id) override { Unused("PutPatientID"); }
    void PutPersonScreenKind(int kind) override { Unused("PutPersonScreenKind"); }
    void PutPersonTypeField(const QString& field) override { Unused("PutPersonTypeField"); }
    void PutPlanCarrierID(int id) override { Unused("PutPlanCarrierID"); }
    void PutPlanEmployerID(int id) override { Unused("PutPlanEmployerID"); }
    void PutPlanGroupText(const QString& text) override { Unused("PutPlanGroupText"); }
    void PutPlanTitle(const QString& title) override { Unused("PutPlanTitle"); }
    void PutRecallSearchText(const QString& text) override { Unused("PutRecallSearchText"); }
    void PutSavedRecordID(int id) override { Unused("PutSavedRecordID"); }
    void ReadBoundRecord(const QVariant& recordId, const QString& keyColumn, const QString& table,
                         const FieldHolders& holders) override {
        Unused("ReadBoundRecord");
    }
    QVariant ReadSetting(const QString& section, const QString& key, int scope,
                         const QVariant& defaultValue) override {
        Unused("ReadSetting");
    }
    QVariant ReadStationSetting(const QString& key, const QVariant& defaultValue) override {
        Unused("ReadStationSetting");
    }
    void RecallTitleChanged(int recallId, const QString& title) override {
        Unused("RecallTitleChanged");
    }
    void ReplaceInText(QString& text, const QString& find, const QString& replacement) override {
        Unused("ReplaceInText");
    }
    int RunProgramAndWait(const QString& commandLine, int windowOptions) override {
        Unused("RunProgramAndWait");
    }
    void SaveBoundFields(const FieldHolders& holders) override { Unused("SaveBoundFields"); }
    void SetActiveRecord(int id, const QString& kind) override { Unused("SetActiveRecord"); }
    void SetBookAppointmentRequest(bool request) override { Unused("SetBookAppointmentRequest"); }
    void SetBusyCursor(bool busy) override { Unused("SetBusyCursor"); }
    void SetCoverageInsCoPatID(int coverageId, const QString& text) override {
        Unused("SetCoverageInsCoPatID");
    }
    void SetCoverageYearToDate(int personId, bool isPrimary,
                               const CoverageYearToDate& figures) override {
        Unused("SetCoverageYearToDate");
    }
    void SetOfficeSchedule(const QVariant& schedule) override { Unused("SetOfficeSchedule"); }
    void SetPasswordKey(const QString& key) override { Unused("SetPasswordKey"); }
    void SetPatientStatus(int personId, const QString& status) override {
        Unused("SetPatientStatus");
    }
    void SetPersonCoverageLink(int personId, int linkId, bool isPrimary,
                               bool afterRemoval) override {
        Unused("SetPersonCoverageLink");
    }
    void SetPersonPrimaryEmployer(int personId, int employerId, int groupPlanId,
                                  bool flag) override {
        Unused("SetPersonPrimaryEmployer");
    }
    void SetPlanClaimForm(int planId, bool first, bool second,
                          const QVariant& formItemData) override {
        Unused("SetPlanClaimForm");
    }
    void SetSessionLogin(const QString& name) override { Unused("SetSessionLogin"); }
    void SetSessionRight(bool flag) override { Unused("SetSessionRight"); }
    QString SqlQuoteText(const QString& text) override { Unused("SqlQuoteText"); }
    void SubscriberLinksChanged(int personId) override { Unused("SubscriberLinksChanged"); }
    QString TranslateSql(const QString& sql) override { Unused("TranslateSql"); }
    void UpdateFamilyMembers(int personId) override { Unused("UpdateFamilyMembers"); }
    bool UsesLetteredCodes() override { Unused("UsesLetteredCodes"); }
    void WriteAuditLog(const QString& key, const QString& action, const QString& text) override {
        Unused("WriteAuditLog");
    }
    void WriteBoundRecord(int& recordId, const QString& keyColumn, const QString& table,
                          const FieldHolders& holders) override {
        Unused("WriteBoundRecord");
    }
    void WriteLogLine(int recordId, const QString& type, const QString& sourceKey,
                      const QString& field, const QString& text) override {
        Unused("WriteLogLine");
    }
    void WriteSetting(const QString& section, const QString& key, int scope,
                      const QVariant& value) override {
        Unused("WriteSetting");
    }
    void WriteStationSetting(const QString& key, const QVariant& value) override {
        Unused("WriteStationSetting");
    }

private:
    [[noreturn]] static void Unused(const char* operation) {
        throw NotImplemented(QString::fromLatin1(operation));
    }

    QPointer<QWidget> mainForm_;
    int setMainFormCalls_ = 0;
};

}  // namespace orvo::test
