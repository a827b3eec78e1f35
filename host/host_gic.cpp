#include "host/host_gic.h"

#include <QCoreApplication>
#include <QDeadlineTimer>
#include <QFileInfo>
#include <QThread>

#include "host/bound_records.h"
#include "host/host_coverage.h"
#include "host/host_persons.h"
#include "host/payer_list_window.h"
#include "host/rights.h"
#include "host/text_format.h"
#include "platform/db/recordset.h"
#include "platform/db/sql_text.h"
#include "platform/db/translate_sql.h"
#include "platform/prompts.h"

namespace orvo::host {

HostGIC::HostGIC(HostSession& session)
    : session_(session),
      settings_([this]() -> db::Connection& { return GetConnection(); }),
      reminders_([this]() -> db::Connection& { return GetConnection(); }) {}

void HostGIC::EnsureStoredProcedure(const QString& name, const QString& body,
                                    const QString& parameters) {
    reminders_.EnsureStoredProcedure(name, body, parameters);
}

int HostGIC::GetRecallContactMethod(int recallEntryId) {
    return reminders_.RecallContactMethod(recallEntryId);
}

int HostGIC::GetRecallStage(int recallEntryId) {
    return reminders_.RecallStage(recallEntryId);
}

int HostGIC::GetReminderLinkType(int reminderType, bool linkedToMaster) {
    return ReminderHost::LinkType(reminderType, linkedToMaster);
}

db::Connection& HostGIC::GetSecondConnection() {
    return reminders_.SecondConnection();
}

bool HostGIC::AskYesNo(bool defaultYes, const QString& title, const QString& text) {
    return prompts().Message(text, Buttons::YesNo, Icon::Question, title, defaultYes ? 1 : 2) ==
           AnswerYes;
}

bool HostGIC::CheckRight(const QString& rightKey, const QString& message, bool& /*flag*/) {
    return CheckLoginRight(GetConnection(), GetLoginName(), GetOfficeLocationID(), rightKey,
                           message);
}

QString HostGIC::ConvertPassword(const QString& text) {
    return cipher_.Convert(text);
}

bool HostGIC::FileExists(const QString& path) {
    return QFileInfo::exists(path);
}

QString HostGIC::FormatPhone(const QString& text) {
    return FormatPhoneText(text);
}

QString HostGIC::FormatSsn(const QString& text) {
    return FormatSsnText(text);
}

QString HostGIC::NormalizeDate(const QString& text, const QString& formatName) {
    return NormalizeDateText(text, formatName, GetToday());
}

QString HostGIC::CalculateAge(const QString& birthDate) {
    return AgeText(birthDate, GetToday());
}

void HostGIC::SetActiveRecord(int id, const QString& kind) {
    activeRecord_ = {id, kind};
}

// The request is what GetGoToQuickAppoint answers next.
void HostGIC::SetBookAppointmentRequest(bool request) {
    goToQuickAppoint_ = request;
}

QString HostGIC::GetComputerName() {
    return session_.computerName;
}

db::Connection& HostGIC::GetConnection() {
    if (!session_.connection) {
        throw db::DatabaseError(QStringLiteral("No practice database is open."), QString());
    }
    return *session_.connection;
}

int HostGIC::GetEditResultID() {
    return editResultId_;
}

short HostGIC::GetDatabaseKind() {
    return static_cast<short>(GetConnection().engine());
}

QString HostGIC::GetDataPath() {
    return session_.dataPath;
}

QString HostGIC::GetDelimitedField(const QString& text, const QString& separator, int fieldNumber) {
    return DelimitedField(text, separator, fieldNumber);
}

bool HostGIC::GetGoToQuickAppoint() {
    return goToQuickAppoint_;
}

std::shared_ptr<PayerListWindow> HostGIC::GetPayerListWindow(const QString&) {
    return std::make_shared<HostPayerList>(GetConnection());
}

QString HostGIC::GetLoginName() {
    return session_.loginName;
}

QWidget* HostGIC::GetMainForm() {
    return mainForm_.data();
}

// The offices of the practice (OffLocTable); a practice of one office may have no row at all.
int HostGIC::GetOfficeLocationCount() {
    return int(db::ReadScalar(GetConnection(), QStringLiteral("SELECT count(*) FROM OffLocTable"))
                   .toLongLong());
}

int HostGIC::GetOfficeLocationID() {
    return session_.officeLocationId;
}

int HostGIC::GetPatientID() {
    return patientId_;
}

QString HostGIC::GetPersonTypeField() {
    return personTypeField_;
}

QString HostGIC::GetProgramPath() {
    return session_.programPath;
}

int HostGIC::GetSavedRecordID() {
    return savedRecordId_;
}

short HostGIC::GetScreenVariant() {
    return static_cast<short>(personScreenKind_);
}

QString HostGIC::GetStationID() {
    return session_.stationId;
}

QDate HostGIC::GetToday() {
    return session_.today.isValid() ? session_.today : QDate::currentDate();
}

std::optional<QString> HostGIC::InputDialog(const QString& prompt, const QString& title,
                                            const QString& defaultText, int /*flags*/) {
    return prompts().Input(prompt, title, defaultText);
}

void HostGIC::SplitPersonName(const QString& text, QString& lastName, QString& firstName) {
    SplitPersonNameText(text, lastName, firstName);
}

void HostGIC::PauseMilliseconds(int milliseconds) {
    if (milliseconds <= 0) {
        QCoreApplication::processEvents();
        return;
    }
    const QDeadlineTimer deadline(milliseconds);
    while (!deadline.hasExpired()) {
        QCoreApplication::processEvents(QEventLoop::AllEvents,
                                        static_cast<int>(deadline.remainingTime()));
        // processEvents returns at once when nothing is pending; do not spin on it.
        const qint64 left = deadline.remainingTime();
        if (left > 0)
            QThread::msleep(static_cast<unsigned long>(qMin<qint64>(left, 5)));
    }
}

NoteAuthor HostGIC::Author() {
    return {GetLoginName(), GetStationID(), GetToday()};
}

QVariant HostGIC::ProperCase(const QVariant& text) {
    if (text.typeId() != QMetaType::QString)
        return text;
    return ProperCaseText(text.toString());
}

void HostGIC::PutCarrierSearchText(const QString& text) {
    carrierSearchText_ = text;
}
void HostGIC::PutEditResultID(int id) {
    editResultId_ = id;
}
void HostGIC::PutGroupSearchText(const QString& text) {
    groupSearchText_ = text;
}
void HostGIC::PutHelpContext(int context) {
    helpContext_ = context;
}
void HostGIC::PutPatientID(int id) {
    patientId_ = id;
}
void HostGIC::PutPersonScreenKind(int kind) {
    personScreenKind_ = kind;
}
void HostGIC::PutPersonTypeField(const QString& field) {
    personTypeField_ = field;
}
void HostGIC::PutPlanCarrierID(int id) {
    planCarrierId_ = id;
}
void HostGIC::PutPlanEmployerID(int id) {
    planEmployerId_ = id;
}
void HostGIC::PutPlanGroupText(const QString& text) {
    planGroupText_ = text;
}
void HostGIC::PutPlanTitle(const QString& title) {
    planTitle_ = title;
}
void HostGIC::PutRecallSearchText(const QString& text) {
    recallSearchText_ = text;
}
void HostGIC::PutSavedRecordID(int id) {
    savedRecordId_ = id;
}

void HostGIC::ReadBoundRecord(const QVariant& recordId, const QString& keyColumn,
                              const QString& table, const FieldHolders& holders) {
    host::ReadBoundRecord(GetConnection(), recordId, keyColumn, table, holders);
}

QVariant HostGIC::ReadSetting(const QString& section, const QString& key, int scope,
                              const QVariant& defaultValue) {
    return settings_.Read(section, key, scope, defaultValue);
}

QVariant HostGIC::ReadStationSetting(const QString& key, const QVariant& defaultValue) {
    return settings_.Read(SettingsStore::kStationSection, GetStationID() + key, 0, defaultValue);
}

void HostGIC::SetMainForm(QWidget* form) {
    mainForm_ = form;
}

void HostGIC::SetPasswordKey(const QString& key) {
    cipher_.SetKey(key);
}

QString HostGIC::SqlQuoteText(const QString& text) {
    return db::QuoteText(text);
}

QString HostGIC::TranslateSql(const QString& sql) {
    return db::TranslateSql(sql, GetConnection().engine());
}

void HostGIC::WriteAuditLog(const QString& key, const QString& action, const QString& text) {
    WriteAuditLine(GetConnection(), Author(), key, action, text);
}

void HostGIC::WriteBoundRecord(int& recordId, const QString& keyColumn, const QString& table,
                               const FieldHolders& holders) {
    host::WriteBoundRecord(GetConnection(), recordId, keyColumn, table, holders);
}

void HostGIC::WriteLogLine(int recordId, const QString& type, const QString& sourceKey,
                           const QString& field, const QString& text) {
    WriteNoteLine(GetConnection(), Author(), recordId, type, sourceKey, field, text);
}

void HostGIC::WriteSetting(const QString& section, const QString& key, int scope,
                           const QVariant& value) {
    settings_.Write(section, key, scope, value);
}

void HostGIC::WriteStationSetting(const QString& key, const QVariant& value) {
    settings_.Write(SettingsStore::kStationSection, GetStationID() + key, 0, value);
}

// --- persons (host_persons.cpp) ----------------------------------------------------------

int HostGIC::GetDefaultProviderID() {
    return DefaultProviderId(*this);
}
short HostGIC::GetProviderFeeSchedule(int providerId) {
    return ProviderFeeSchedule(*this, providerId);
}
bool HostGIC::IsValidFeeSchedule(short schedule) {
    return FeeScheduleInUse(*this, schedule);
}
bool HostGIC::IsFamilyHead(int personId) {
    return PersonIsFamilyHead(GetConnection(), personId);
}
bool HostGIC::FindInitials(const QString& initials, int& holderPersonId) {
    return InitialsHolder(GetConnection(), initials, holderPersonId);
}
QString HostGIC::MakeDefaultInitials(int personId, const QString& lastName,
                                     const QString& firstName) {
    return ProposeInitials(GetConnection(), personId, lastName, firstName);
}
void HostGIC::SetPatientStatus(int personId, const QString& status) {
    RecordPatientStatus(GetConnection(), Author(), personId, status);
}
// The family-head list needs nothing here: the database keeps it (FamilyHeadUpkeepStatements).
void HostGIC::NotifyPersonChanged(int personId) {
    NoteChangedPerson(personId);
}
void HostGIC::NoteChangedPerson(int personId) {
    if (!changedSeen_.contains(personId)) {
        changedSeen_.insert(personId);
        changedPersons_ << personId;
    }
}
QString HostGIC::GetPersonName(int personId, const QString& separator, const QString& extraField) {
    return PersonDisplayName(GetConnection(), personId, separator, extraField);
}
QString HostGIC::GetPersonField(int personId, int fieldNumber) {
    return PersonField(GetConnection(), personId, fieldNumber);
}
void HostGIC::ReplaceInText(QString& text, const QString& find, const QString& replacement) {
    if (!find.isEmpty())
        text.replace(find, replacement, Qt::CaseSensitive);
}
void HostGIC::SaveBoundFields(const FieldHolders& holders) {
    host::SaveBoundFields(GetConnection(), holders);
}
void HostGIC::AskRestoreArchived(bool& restoreReminders, bool& restoreAccount, bool initial,
                                 int /*kind*/) {
    AskWhatToRestore(restoreReminders, restoreAccount, initial);
}
void HostGIC::PersonRoleAdded(int personId, int extraId) {
    BindRoleToRecord(*this, personId, extraId);
}
void HostGIC::RestorePersonRecalls(int personId) {
    RestoreRecallsOnReturn(*this, personId);
}

// --- the coverage chain (host_coverage.cpp) -------------------------------------------------

void HostGIC::CoverageAdded(int personId) {
    NoteChangedPerson(personId);
}
void HostGIC::CoverageChanged(int personId) {
    NoteChangedPerson(personId);
}
void HostGIC::NotifyPlanListChanged(int) {
    // The host keeps no list of plans of its own: it counts the changes, so that what shows
    // plans can tell it must read them again.
    ++planListChanges_;
}
void HostGIC::SubscriberLinksChanged(int personId) {
    NoteChangedPerson(personId);
}
void HostGIC::FlushConnection(db::Connection&, int) {
    // Both engines show a connection its own statements at once: nothing waits to be flushed.
}
void HostGIC::SetPersonCoverageLink(int personId, int linkId, bool isPrimary, bool afterRemoval) {
    host::SetPersonCoverageLink(GetConnection(), personId, linkId, isPrimary, afterRemoval);
}
void HostGIC::SetPersonPrimaryEmployer(int personId, int employerId, int groupPlanId,
                                       bool /*flag*/) {
    host::SetPersonPrimaryEmployer(GetConnection(), personId, employerId, groupPlanId);
}
CoverageYearToDate HostGIC::GetCoverageYearToDate(int personId, bool isPrimary) {
    return PersonCoverageYearToDate(*this, personId, isPrimary);
}
void HostGIC::SetCoverageYearToDate(int personId, bool isPrimary,
                                    const CoverageYearToDate& figures) {
    SetPersonCoverageYearToDate(GetConnection(), personId, isPrimary, figures);
}
int HostGIC::GetFamilyID(int personId) {
    return PersonFamilyId(GetConnection(), personId);
}
QString HostGIC::GetEmployerName(int employerId) {
    return EmployerName(GetConnection(), employerId);
}
QString HostGIC::GetCarrierName(int carrierId) {
    return CarrierName(GetConnection(), carrierId);
}
QString HostGIC::GetGroupNumber(int groupPlanId) {
    return GroupNumber(GetConnection(), groupPlanId);
}

}  // namespace orvo::host
