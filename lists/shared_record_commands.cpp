#include "lists/shared_record_commands.h"

#include <QApplication>
#include <QDateTime>
#include <QProgressDialog>
#include <memory>

#include "lists/affected_preview.h"
#include "lists/frm_tg_list.h"
#include "lists/list_setup.h"
#include "lists/lists_log.h"
#include "platform/db/connection.h"
#include "platform/prompts.h"

namespace orvo::lists {
namespace {

const QString kCrLf = QStringLiteral("\r\n");

enum ThreeButton { kReplace = 1, kDelete = 2, kCancel = 3 };

LookUpListTypes ListTypeOf(SharedRecord kind) {
    switch (kind) {
        case SharedRecord::GroupPlan:
            return lulGroupPlan;
        case SharedRecord::Carrier:
            return lulInsuranceCo;
        case SharedRecord::Employer:
            return lulEmployer;
        case SharedRecord::Pharmacy:
            break;
    }
    return lulPharmacy;
}

// The wait banner, the busy pointer and a progress dialog with counts for as long as an engine
// runs; all gone again however the engine ends.
class EngineProgressView {
public:
    EngineProgressView(const QString& banner, const QString& title, QWidget* parent)
        : banner_(banner), title_(title), parent_(parent) {
        if (!banner_.isEmpty())
            prompts().ShowBanner(banner_);
        QApplication::setOverrideCursor(Qt::WaitCursor);
    }
    ~EngineProgressView() {
        dialog_.reset();
        QApplication::restoreOverrideCursor();
        if (!banner_.isEmpty())
            prompts().HideBanner();
    }
    EngineProgressView(const EngineProgressView&) = delete;
    EngineProgressView& operator=(const EngineProgressView&) = delete;

    EngineProgress Callback() {
        return [this](int done, int total) { Show(done, total); };
    }

private:
    void Show(int done, int total) {
        if (total <= 0)
            return;
        if (!dialog_) {
            // No Cancel: the work is one transaction that is either done or not.
            dialog_ = std::make_unique<QProgressDialog>(QString(), QString(), 0, total, parent_);
            dialog_->setObjectName(QStringLiteral("EngineProgress"));
            dialog_->setWindowTitle(title_);
            dialog_->setMinimumDuration(500);
            dialog_->setWindowModality(Qt::WindowModal);
        }
        dialog_->setLabelText(QObject::tr("%1 of %2 persons moved").arg(done).arg(total));
        dialog_->setValue(done);
    }

    QString banner_;
    QString title_;
    QWidget* parent_;
    std::unique_ptr<QProgressDialog> dialog_;
};

}  // namespace

SharedRecordCommands::SharedRecordCommands(GIC& gic, frmTGList& window, ListOwner& owner)
    : gic_(gic), window_(window), owner_(owner) {}

const SharedRecordCommands::Texts& SharedRecordCommands::TextsOf(SharedRecord kind) {
    static const QString kReplacement =
        QStringLiteral("you can select a replacement for all patients that will be affected.");
    static const Texts kGroupPlan{
        SharedRecord::GroupPlan,
        QStringLiteral("Delete Group Plan"),
        QStringLiteral("Group Plan"),
        QStringLiteral(" employer"),
        QStringLiteral("patients covered under this group."),
        kReplacement,
        QStringLiteral("This Group Plan is not connected to any patients."),
        QStringLiteral("You have selected the Group Plan that is being replaced. Click OK to "
                       "select a different plan or click Cancel to exit without making any "
                       "changes."),
        QStringLiteral("  Replacing Group Plan - Please Wait  ")};
    static const Texts kCarrier{
        SharedRecord::Carrier,
        QStringLiteral("Delete Insurance Company"),
        QStringLiteral("Insurance Company"),
        QStringLiteral(" employer"),
        QStringLiteral("patients covered by this Insurance Company."),
        kReplacement,
        QStringLiteral("This Insurance Company is not connected to any employers."),
        QStringLiteral("You have selected the Insurance Company that is being replaced. Click OK "
                       "to select a different Insurance Company or click Cancel to exit without "
                       "making any changes."),
        QStringLiteral("  Replacing Insurance Company - Please Wait  ")};
    static const Texts kEmployer{
        SharedRecord::Employer,
        QStringLiteral("Delete Employer"),
        QStringLiteral("Employer"),
        QStringLiteral(" patient"),
        QStringLiteral("patients covered through this Employer."),
        QStringLiteral("you can select a new Employer to take its place."),
        QStringLiteral("This Employer is not connected to any patients."),
        QStringLiteral("You have selected the Employer that is being replaced. Click OK to select "
                       "a different Employer or click Cancel to exit without making any "
                       "changes."),
        QStringLiteral("  Replacing Employer - Please Wait  ")};
    static const Texts kPharmacy{
        SharedRecord::Pharmacy,
        QStringLiteral("Delete Pharmacy"),
        QStringLiteral("Pharmacy"),
        QStringLiteral(" patient"),
        QString(),
        QStringLiteral("you can select a new Pharmacy to take its place."),
        QStringLiteral("This Pharmacy is not connected to any patients."),
        QStringLiteral("You have selected the Pharmacy that is being replaced. Click OK to select "
                       "a different Pharmacy or click Cancel to exit without making any "
                       "changes."),
        QString()};
    switch (kind) {
        case SharedRecord::GroupPlan:
            return kGroupPlan;
        case SharedRecord::Carrier:
            return kCarrier;
        case SharedRecord::Employer:
            return kEmployer;
        case SharedRecord::Pharmacy:
            break;
    }
    return kPharmacy;
}

QString SharedRecordCommands::Warning(const Texts& texts, int n) {
    QString text = QStringLiteral("This ") + texts.noun + QStringLiteral(" is connected to ") +
                   QString::number(n) + texts.countNoun +
                   (n >= 2 ? QStringLiteral("s") : QString()) + QStringLiteral(".");
    if (!texts.coveredLine.isEmpty()) {
        text += QStringLiteral(" Deleting it will remove insurance coverage from all") + kCrLf +
                texts.coveredLine;
    }
    return text + kCrLf + kCrLf + QStringLiteral("Before deleting this ") + texts.noun +
           QStringLiteral(", ") + texts.before + kCrLf + kCrLf +
           QStringLiteral("Click 'Replace' to select a replacement ") + texts.noun +
           QStringLiteral(" from the list.") + kCrLf +
           QStringLiteral("Click 'Delete' to delete the ") + texts.noun +
           QStringLiteral(" without replacing.");
}

QString SharedRecordCommands::AuditText(GIC& gic, const QString& button, const QString& warning,
                                        const QString& name, int id) {
    const QDateTime when(gic.GetToday(), QTime::currentTime());
    return when.toString(QStringLiteral("MM/dd/yyyy HH:mm:ss")) + kCrLf + gic.GetLoginName() +
           QStringLiteral(" selected [ ") + button +
           QStringLiteral(" ] to the following Warning : ") + kCrLf + warning + kCrLf +
           QStringLiteral(" for : ") + name + QStringLiteral(" [") + QString::number(id) +
           QStringLiteral("]");
}

void SharedRecordCommands::Delete_GroupPlan() {
    DeleteShared(SharedRecord::GroupPlan);
}
void SharedRecordCommands::Delete_Carrier() {
    DeleteShared(SharedRecord::Carrier);
}
void SharedRecordCommands::Delete_Employer() {
    DeleteShared(SharedRecord::Employer);
}
void SharedRecordCommands::Delete_Pharmacy() {
    DeleteShared(SharedRecord::Pharmacy);
}

bool SharedRecordCommands::Replace_GroupPlan(int oldId, QWidget* listOwner, int& newId) {
    return ReplaceShared(SharedRecord::GroupPlan, oldId,
                         window_.LookupColumn(oldId, window_.NameField()), listOwner, newId, {});
}
bool SharedRecordCommands::Replace_Carrier(int oldId, QWidget* listOwner, int& newId) {
    return ReplaceShared(SharedRecord::Carrier, oldId,
                         window_.LookupColumn(oldId, window_.NameField()), listOwner, newId, {});
}
bool SharedRecordCommands::Replace_Employer(int oldId, QWidget* listOwner, int& newId) {
    return ReplaceShared(SharedRecord::Employer, oldId,
                         window_.LookupColumn(oldId, window_.NameField()), listOwner, newId, {});
}
bool SharedRecordCommands::Replace_Pharmacy(int oldId, QWidget* listOwner) {
    int newId = 0;
    return ReplaceShared(SharedRecord::Pharmacy, oldId,
                         window_.LookupColumn(oldId, window_.NameField()), listOwner, newId, {});
}

// The loop of the command: a replace is followed by a fresh count, so that a record with
// nothing connected any more is deleted at once; a Delete is confirmed once more unless a
// replace came first.
void SharedRecordCommands::DeleteShared(SharedRecord kind) {
    const Texts& texts = TextsOf(kind);
    const int id = window_.CurrentID;
    const QString name = window_.LookupColumn(id, window_.NameField());
    bool replaced = false;
    QStringList audits;  // the Delete answers, written with the delete itself
    int count = 0;
    for (;;) {
        if (!CountRecordPatients(gic_, kind, id, count))
            count = 0;
        if (count <= 0 || !audits.isEmpty())
            break;
        const QString warning = Warning(texts, count);
        const int answer = prompts().Choose(
            warning, texts.title,
            {QStringLiteral("Replace"), QStringLiteral("Delete"), QStringLiteral("Cancel")},
            kCancel, Icon::Warning);
        if (answer == kReplace) {
            int newId = 0;
            if (!ReplaceShared(kind, id, name, &window_, newId,
                               AuditText(gic_, QStringLiteral("Replace"), warning, name, id))) {
                return;
            }
            replaced = true;
            continue;
        }
        if (answer != kDelete)
            return;
        audits << AuditText(gic_, QStringLiteral("Delete"), warning, name, id);
    }
    if (!replaced) {
        const QString warning = count <= 0
                                    ? texts.notConnected + kCrLf + kCrLf + name +
                                          QStringLiteral(
                                              " is not connected to any patients and will now be "
                                              "deleted from the database.")
                                    : QStringLiteral("This action will remove ") + name +
                                          QStringLiteral(" from the database.") + kCrLf + kCrLf +
                                          QStringLiteral("Are you sure you want to delete ?");
        if (prompts().Message(warning, Buttons::OkCancel, Icon::Warning, texts.title, 2) !=
            AnswerOk) {
            return;
        }
        audits << AuditText(gic_, QStringLiteral("OK"), warning, name, id);
    }

    const QList<AffectedPerson> persons = AffectedPersons(gic_, kind, id);
    const QString action = kind == SharedRecord::Pharmacy
                               ? QObject::tr("left naming a pharmacy that no longer exists")
                           : kind == SharedRecord::Employer
                               ? QObject::tr("taken off this employer")
                               : QObject::tr("moved to their employer's No Insurance Coverage");
    if (!ReadyToMove(texts, persons, action, kind != SharedRecord::Pharmacy))
        return;
    {
        EngineProgressView view(QString(), texts.title, &window_);
        db::Transaction transaction(gic_.GetConnection(), db::Transaction::Write);
        for (const QString& audit : audits)
            gic_.WriteAuditLog(QStringLiteral("INS_LOG"), QStringLiteral("DELETE"), audit);
        DeleteRecord(gic_, kind, id, view.Callback());
        transaction.Commit();
    }
    qCInfo(lcLists).noquote() << texts.title << name << id << "done";
    window_.CurrentID = 0;
    window_.SetSQL(window_.SQL());
    window_.RefreshRowCount();
    gic_.NotifyPlanListChanged(0);
}

bool SharedRecordCommands::PickReplacement(const Texts& texts, int oldId, const QString& name,
                                           QWidget* listOwner, int& newId, QString& newName) {
    for (;;) {
        ListRequest request;
        request.ListType = ListTypeOf(texts.kind);
        request.ShowMode = 1;
        request.bSelectMode = true;
        request.InitField = QStringLiteral("ALL");
        request.ListTitle = QStringLiteral("Select Replacement for ") + name;
        request.GroupPlanCompanyID = window_.GroupPlanCompanyID;
        request.frmOwner = listOwner;
        {
            auto picker = std::make_unique<frmTGList>(gic_, owner_, listOwner);
            RunListSetup(gic_, request, *picker);
        }
        if (request.SelectedID == 0)
            return false;
        if (request.SelectedID != oldId) {
            newId = request.SelectedID;
            newName = request.Select_String.trimmed();
            return true;
        }
        if (prompts().Message(texts.sameRecord, Buttons::OkCancel, Icon::Information,
                              texts.title) != AnswerOk) {
            return false;
        }
    }
}

bool SharedRecordCommands::ReadyToMove(const Texts& texts, const QList<AffectedPerson>& persons,
                                       const QString& action, bool writesPersons) {
    return ConfirmAffected(gic_, &window_, texts.title, persons, action, writesPersons);
}

bool SharedRecordCommands::ReplaceShared(SharedRecord kind, int oldId, const QString& name,
                                         QWidget* listOwner, int& newId, const QString& auditText) {
    const Texts& texts = TextsOf(kind);
    QString newName;
    if (!PickReplacement(texts, oldId, name, listOwner, newId, newName))
        return false;
    if (!ReadyToMove(texts, AffectedPersons(gic_, kind, oldId),
                     QObject::tr("moved to %1").arg(newName), true)) {
        return false;
    }
    {
        EngineProgressView view(texts.banner, texts.title, &window_);
        db::Transaction transaction(gic_.GetConnection(), db::Transaction::Write);
        ReplaceRecord(gic_, kind, oldId, newId, view.Callback());
        if (!auditText.isEmpty())
            gic_.WriteAuditLog(QStringLiteral("INS_LOG"), QStringLiteral("REPLACE"), auditText);
        transaction.Commit();
    }
    qCInfo(lcLists).noquote() << texts.title << "replaced" << oldId << "by" << newId;
    return true;
}

}  // namespace orvo::lists
