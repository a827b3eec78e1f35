#pragma once

// The contract between the editing component and its host. The component asks the one shared
// host object for its database session, settings, rights, identity, dialogs, text helpers and
// the mailbox slots through which results pass between the host, the lists and the screens.
//
// Conventions: a value the operation answers is its return value; an argument the operation
// changes for the caller is a non-const reference. A 32-bit "long" of the suite is an int here.
// Any operation may throw: a failed database call throws orvo::db::DatabaseError, an operation
// the host has not built throws orvo::NotImplemented.

#include <QDate>
#include <QList>
#include <QString>
#include <QStringList>
#include <QVariant>
#include <memory>
#include <stdexcept>

#include "component/public/component_error.h"
#include "platform/currency.h"

class QComboBox;
class QWidget;

namespace orvo {

namespace db {
class Connection;
}

// The fields a screen binds to one row: widgets that carry the column name in their "DataField"
// property. The value read or written is the widget's user property (a line edit's text, a
// check box's state, a combo box's current text).
using FieldHolders = QList<QWidget*>;

// Year-to-date coverage figures of a person's primary or secondary position.
struct CoverageYearToDate {
    Currency used;
    Currency deductibleMet;
    Currency annualMaximum;
    Currency remaining;
};

// The host's window of electronic payers, from which a carrier is linked to a payer.
class PayerListWindow {
public:
    virtual ~PayerListWindow() = default;
    // Shows the list modal under owner, positioned on currentPayerId. True with payerId set
    // when a payer was chosen; false when the list was closed without a choice.
    virtual bool ChoosePayer(QWidget* owner, const QString& currentPayerId, QString& payerId) = 0;
};

class GIC {
public:
    virtual ~GIC() = default;

    virtual void AddBoundRow(const QString& table, const QStringList& columns,
                             const QVariantList& values) = 0;
    // Answers 6 (Yes), 7 (No) or 2 (Cancel).
    virtual int AskSaveChanges(const QString& title, const QString& extraText,
                               const QString& promptKey) = 0;
    virtual bool AskYesNo(bool defaultYes, const QString& title, const QString& text) = 0;
    virtual QString CalculateAge(const QString& birthDate) = 0;
    virtual bool CheckRight(const QString& rightKey, const QString& message, bool& flag) = 0;
    virtual QString ConvertPassword(const QString& text) = 0;
    virtual void CoverageAdded(int personId) = 0;
    virtual void CoverageChanged(int personId) = 0;
    virtual void DeletePersonRow(int personId, const QString& roleColumn) = 0;
    virtual void EnsureStoredProcedure(const QString& name, const QString& body,
                                       const QString& parameters) = 0;
    virtual bool FileExists(const QString& path) = 0;
    virtual void FillClaimFormList(QComboBox* combo) = 0;
    virtual bool FindInitials(const QString& initials, int& holderPersonId) = 0;
    virtual void FlushConnection(db::Connection& connection, int mode) = 0;
    virtual QString FormatPhone(const QString& text) = 0;
    virtual QString FormatSqlDate(const QDate& date) = 0;
    virtual QString FormatSsn(const QString& text) = 0;
    virtual bool GetBudgetPlanOwner(int personId, Currency& amount) = 0;
    virtual void GetBudgetPlanTotals(int personId, Currency& planTotal, Currency& balance) = 0;
    virtual QString GetCarrierName(int carrierId) = 0;
    virtual QString GetComputerName() = 0;
    virtual db::Connection& GetConnection() = 0;
    virtual CoverageYearToDate GetCoverageYearToDate(int personId, bool isPrimary) = 0;
    virtual int GetEditResultID() = 0;
    // 1 for the Access-dialect engine, 2 for the server engine.
    virtual short GetDatabaseKind() = 0;
    // Ends with a path separator.
    virtual QString GetDataPath() = 0;
    virtual int GetDefaultProviderID() = 0;
    virtual QString GetDelimitedField(const QString& text, const QString& separator,
                                      int fieldNumber) = 0;
    virtual QString GetEmployerName(int employerId) = 0;
    virtual int GetFamilyID(int personId) = 0;
    virtual QList<int> GetFamilyLinks(int personId) = 0;
    virtual short GetFamilyMemberCount(int familyHeadId) = 0;
    virtual bool GetFamilyMembers(int familyHeadId, QList<int>& links) = 0;
    virtual bool GetGoToQuickAppoint() = 0;
    virtual QString GetGroupNumber(int groupPlanId) = 0;
    virtual QString GetLoginName() = 0;
    virtual QWidget* GetMainForm() = 0;
    virtual int GetOfficeLocationCount() = 0;
    virtual int GetOfficeLocationID() = 0;
    virtual int GetPatientID() = 0;
    virtual std::shared_ptr<PayerListWindow> GetPayerListWindow(const QString& login) = 0;
    // Field numbers: 18 pHOMPHO, 20 pADD1, 21 pADD2, 22 pCIT, 23 pSTA, 24 pZIP.
    virtual QString GetPersonField(int personId, int fieldNumber) = 0;
    virtual QString GetPersonName(int personId, const QString& separator,
                                  const QString& extraField) = 0;
    virtual QString GetPersonTypeField() = 0;
    virtual QString GetPlanTypeCode(int listIndex) = 0;
    virtual QString GetPlanTypeName(int index) = 0;
    // Ends with a path separator.
    virtual QString GetProgramPath() = 0;
    virtual short GetProviderFeeSchedule(int providerId) = 0;
    virtual int GetRecallContactMethod(int recallEntryId) = 0;
    virtual int GetRecallStage(int recallEntryId) = 0;
    virtual int GetReminderLinkType(int reminderType, bool linkedToMaster) = 0;
    virtual int GetSavedRecordID() = 0;
    virtual short GetScreenVariant() = 0;
    virtual db::Connection& GetSecondConnection() = 0;
    virtual QString GetStationID() = 0;
    virtual db::Connection& GetTimeConnection() = 0;
    virtual QDate GetToday() = 0;
    virtual bool GroupPlanExists(const QString& groupNumber, const QString& text,
                                 int groupPlanId) = 0;
    virtual bool HasFamilyBudgetPlan(int personId) = 0;
    // No value when the person cancelled.
    virtual std::optional<QString> InputDialog(const QString& prompt, const QString& title,
                                               const QString& defaultText, int flags) = 0;
    virtual bool IsFamilyHead(int personId) = 0;
    virtual bool IsRestrictedMode() = 0;
    virtual bool IsScreenLocked() = 0;
    virtual bool IsSupervisor(const QString& login, QVariant& value) = 0;
    virtual bool IsValidFeeSchedule(short schedule) = 0;
    virtual QString MakeDefaultInitials(int personId, const QString& lastName,
                                        const QString& firstName) = 0;
    virtual QString MapTaxonomyCode(const QString& value) = 0;
    virtual QString NormalizeDate(const QString& text, const QString& formatName) = 0;
    virtual void RefreshHost(const QString& message) = 0;
    virtual void NotifyPersonChanged(int personId) = 0;
    virtual void NotifyPlanListChanged(int reserved) = 0;
    virtual void SplitPersonName(const QString& text, QString& lastName, QString& firstName) = 0;
    // Waits while window messages go on being handled.
    virtual void PauseMilliseconds(int milliseconds) = 0;
    virtual bool PlanHasFixedFees(int groupPlanId) = 0;
    virtual bool PlanIsPercentile(int groupPlanId) = 0;
    virtual bool PlanIsPPO(int groupPlanId) = 0;
    virtual void PlanPaymentTypeChanged(int planId, int newPaymentType) = 0;
    virtual void PlanRenewalDateChanged(int planId, const QString& text) = 0;
    virtual QVariant ProperCase(const QVariant& text) = 0;
    virtual void ProviderFeeScheduleChanged(int providerId, short schedule) = 0;
    virtual void PutCarrierSearchText(const QString& text) = 0;
    virtual void PutEditResultID(int id) = 0;
    virtual void PutGroupSearchText(const QString& text) = 0;
    virtual void PutHelpContext(int context) = 0;
    virtual void PutPatientID(int id) = 0;
    virtual void PutPersonScreenKind(int kind) = 0;
    virtual void PutPersonTypeField(const QString& field) = 0;
    virtual void PutPlanCarrierID(int id) = 0;
    virtual void PutPlanEmployerID(int id) = 0;
    virtual void PutPlanGroupText(const QString& text) = 0;
    virtual void PutPlanTitle(const QString& title) = 0;
    virtual void PutRecallSearchText(const QString& text) = 0;
    virtual void PutSavedRecordID(int id) = 0;
    // Fills each holder from the row whose keyColumn equals recordId; with no such row (a new
    // record) the holders are left as they are.
    virtual void ReadBoundRecord(const QVariant& recordId, const QString& keyColumn,
                                 const QString& table, const FieldHolders& holders) = 0;
    // The stored value, or defaultValue as it came, with its type, when nothing is stored.
    virtual QVariant ReadSetting(const QString& section, const QString& key, int scope,
                                 const QVariant& defaultValue) = 0;
    virtual QVariant ReadStationSetting(const QString& key, const QVariant& defaultValue) = 0;
    virtual void RecallTitleChanged(int recallId, const QString& title) = 0;
    virtual void ReplaceInText(QString& text, const QString& find, const QString& replacement) = 0;
    virtual int RunProgramAndWait(const QString& commandLine, int windowOptions) = 0;
    virtual void SaveBoundFields(const FieldHolders& holders) = 0;
    virtual void SetActiveRecord(int id, const QString& kind) = 0;
    virtual void SetBookAppointmentRequest(bool request) = 0;
    virtual void SetBusyCursor(bool busy) = 0;
    virtual void SetCoverageInsCoPatID(int coverageId, const QString& text) = 0;
    virtual void SetCoverageYearToDate(int personId, bool isPrimary,
                                       const CoverageYearToDate& figures) = 0;
    virtual void SetMainForm(QWidget* form) = 0;
    virtual void SetOfficeSchedule(const QVariant& schedule) = 0;
    virtual void SetPasswordKey(const QString& key) = 0;
    virtual void SetPatientStatus(int personId, const QString& status) = 0;
    virtual void SetPersonCoverageLink(int personId, int linkId, bool isPrimary,
                                       bool afterRemoval) = 0;
    virtual void SetPersonPrimaryEmployer(int personId, int employerId, int groupPlanId,
                                          bool flag) = 0;
    virtual void SetPlanClaimForm(int planId, bool first, bool second,
                                  const QVariant& formItemData) = 0;
    virtual void SetSessionLogin(const QString& name) = 0;
    virtual void SetSessionRight(bool flag) = 0;
    // The text as a quoted SQL string literal, embedded quotes doubled.
    virtual QString SqlQuoteText(const QString& text) = 0;
    virtual void SubscriberLinksChanged(int personId) = 0;
    virtual QString TranslateSql(const QString& sql) = 0;
    virtual void UpdateFamilyMembers(int personId) = 0;
    virtual bool UsesLetteredCodes() = 0;
    virtual void WriteAuditLog(const QString& key, const QString& action, const QString& text) = 0;
    // Writes the holders to the row; when recordId is 0 a row is inserted and recordId set to
    // its new key. An update that finds no row (deleted by another station, or never there)
    // throws db::RowNotFoundError.
    virtual void WriteBoundRecord(int& recordId, const QString& keyColumn, const QString& table,
                                  const FieldHolders& holders) = 0;
    // Appends a note line to the notes table for a person or record.
    virtual void WriteLogLine(int recordId, const QString& type, const QString& sourceKey,
                              const QString& field, const QString& text) = 0;
    virtual void WriteSetting(const QString& section, const QString& key, int scope,
                              const QVariant& value) = 0;
    virtual void WriteStationSetting(const QString& key, const QVariant& value) = 0;

    // Services of the suite that the role change of a person calls.

    // Asked when an archived person comes back as a patient: which of the person's recall
    // reminders and account the suite should restore. The flags come in as they stand (false)
    // and go out as answered; initial and kind are the caller's (false and 2 for a returning
    // patient).
    virtual void AskRestoreArchived(bool& restoreReminders, bool& restoreAccount, bool initial,
                                    int kind) = 0;
    // A role was given to a person on behalf of another record (extraId, for a new employee the
    // login the employee is bound to).
    virtual void PersonRoleAdded(int personId, int extraId) = 0;
    // Puts back the recall reminders of a person who returns from the archive.
    virtual void RestorePersonRecalls(int personId) = 0;
};

}  // namespace orvo
