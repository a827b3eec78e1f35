// The carrier and pharmacy screen over the reference host on both engines: new records from
// the start commands, the edit rights, the close flow with its questions, the warning before a
// change that reaches every patient of a carrier, the change log, and the electronic payer link.
#include <gtest/gtest.h>

#include <QApplication>
#include <QDir>
#include <QFile>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QStackedWidget>
#include <QTest>
#include <QToolButton>

#include "host/host_gic.h"
#include "host/host_tables.h"
#include "host/login.h"
#include "insurance/build_new_command.h"
#include "insurance/coverage_counts.h"
#include "insurance/ins_screen.h"
#include "insurance/insurance_tables.h"
#include "insurance/payer_link.h"
#include "platform/db/recordset.h"
#include "platform/db/sql_text.h"
#include "platform/schema/schema.h"
#include "tests/support/practice_fixture.h"
#include "tools/tools_tables.h"

namespace orvo::insurance {
namespace {

using db::Engine;

const QString kCarrierTitle = QStringLiteral("Insurance Information");
const QString kSaveQuestion = QStringLiteral("Save current changes?");
const QString kUnlinkTitle = QStringLiteral("Un-Link Electronic Payer");
const QString kLinkTitle = QStringLiteral("Link Electronic Payer");
const QString kConfirmPrompt =
    QStringLiteral("SUPERVISOR, to accept this change, type [Yes] below and click OK.");

// The host's payer list, answering as the test says.
class FakePayerList : public PayerListWindow {
public:
    bool ChoosePayer(QWidget*, const QString& currentPayerId, QString& payerId) override {
        shownOn = currentPayerId;
        if (!choice)
            return false;
        payerId = *choice;
        return true;
    }
    std::optional<QString> choice;
    QString shownOn;
};

class TestHost : public host::HostGIC {
public:
    using HostGIC::HostGIC;
    std::shared_ptr<PayerListWindow> GetPayerListWindow(const QString& login) override {
        payerLogin = login;
        return payers;
    }
    std::shared_ptr<FakePayerList> payers = std::make_shared<FakePayerList>();
    QString payerLogin;
};

// A screen whose record lock is refused, as when another station has the row.
class LockedScreen : public insScreen {
public:
    using insScreen::insScreen;

protected:
    int TakeRecordLock(const QString&, int) override { return 0; }
};

struct Carrier {
    QString name, add1, add2, city, state, zip, tel, tel2, payer;
};

// A practice with the insurance and zip tables, logged in as SUPERVISOR, over a host whose
// payer list answers as the test says.
class InsScreenTest : public test::PracticeTest {
protected:
    void SetUp() override {
        test::PracticeTest::SetUp();
        if (IsSkipped() || HasFatalFailure())
            return;
        QDir(database_->folder()).mkpath(QStringLiteral("STP"));
        session_.loginName = QStringLiteral("SUPERVISOR");
        session_.today = QDate(2025, 3, 7);
        host_ = static_cast<TestHost*>(gic_.get());
        Db().Execute(
            "INSERT INTO ePayerTable (epPayID, epNam, epAddInf) VALUES ('BWD01', "
            "'Bluewater Dental Claims', 'PO Box 4410 Columbus OH')");
        Db().Execute(
            "INSERT INTO ePayerTable (epPayID, epNam, epAddInf) VALUES ('KBP22', "
            "'Keystone Claims', 'Harrisburg PA')");
    }
    void DeclareTables(schema::Catalog& catalog) override {
        DeclareInsuranceTables(catalog);
        tools::DeclareToolsTables(catalog);
    }
    std::unique_ptr<host::HostGIC> MakeHost(host::HostSession& session) override {
        return std::make_unique<TestHost>(session);
    }

    db::Connection& Db() { return *session_.connection; }
    QString LogPath() const { return session_.dataPath + QStringLiteral("STP/InsCo.LOG"); }

    int AddCarrier(const Carrier& c) {
        const QStringList values{c.name, c.add1, c.add2, c.city, c.state,
                                 c.zip,  c.tel,  c.tel2, c.payer};
        QStringList literals;
        for (const QString& v : values)
            literals << db::TextOrNull(v);
        return static_cast<int>(Db().InsertWithIdentity(
            "INSERT INTO InsCoTable (InsCoNam, InsCoAdd1, InsCoAdd2, InsCoCit, InsCoSta, InsCoZip, "
            "InsCoTel, InsCoTel2, InsCoAccID) VALUES (" +
            literals.join(", ") + ")"));
    }
    int AddKeystone(const QString& add2 = QString()) {
        return AddCarrier({"Keystone Benefit Plans", "1200 Market Street", add2, "Harrisburg", "PA",
                           "17101", "(717) 555-0112", "", ""});
    }
    // A link of the carrier with one subscriber and `covered` coverages on it.
    void AddCoverages(int carrierId, int covered, int linkFlag = 0, int coverageFlag = 0) {
        const qint64 link = Db().InsertWithIdentity(
            QStringLiteral(
                "INSERT INTO ELTable (elEmpID, elInsID, elGroID, elFla) VALUES (1, %1, 1, %2)")
                .arg(carrierId)
                .arg(linkFlag));
        const qint64 subscriber = Db().InsertWithIdentity(
            QStringLiteral(
                "INSERT INTO PatEmpTable (PatEmpPatID, PatEmpElID, PatEmpOrd, PatEmpFla) "
                "VALUES (7, %1, 1, 0)")
                .arg(link));
        for (int i = 0; i < covered; ++i) {
            Db().Execute(QStringLiteral("INSERT INTO CovTable (CovPatID, CovSubPatEmpID, CovOrd, "
                                        "CovFla) VALUES (%1, %2, 1, %3)")
                             .arg(100 + i)
                             .arg(subscriber)
                             .arg(coverageFlag));
        }
    }
    QString Stored(const QString& column, int id, const QString& table = "InsCoTable",
                   const QString& key = "InsCoInd") {
        const db::Recordset rs(
            Db(), QStringLiteral("SELECT %1 FROM %2 WHERE %3=%4").arg(column, table, key).arg(id));
        return rs.IsEmpty() ? QStringLiteral("<no row>") : rs.Text(0);
    }
    template <class Screen = insScreen>
    std::unique_ptr<Screen> Open(bool pharmacy, const QString& command, int id) {
        auto screen = std::make_unique<Screen>(*host_);
        screen->Setup_Screen(pharmacy, command, id);
        screen->show();
        return screen;
    }
    void ExpectWarningAnswered(int answer, const std::optional<QString>& typed = std::nullopt) {
        prompts_.ExpectContaining(kCarrierTitle, "Warning!", answer);
        if (answer == AnswerYes)
            prompts_.ExpectInput(kCarrierTitle, kConfirmPrompt, typed);
    }
    static void ClickOk(insScreen& screen) { screen.Command3D2[2]->click(); }

    TestHost* host_ = nullptr;
};

TEST_P(InsScreenTest, NewPharmacyFromPlainNameIsNoChangeUntilTyped) {
    auto screen = Open(true, BuildNewCommand("NEWCorner Drug"), 0);
    EXPECT_EQ(screen->windowTitle(), "Pharmacy Information");
    EXPECT_EQ(screen->findChild<QLabel*>("lblName")->text(), "Pharmacy Name");
    EXPECT_TRUE(screen->findChild<QWidget*>("fraPayer")->isHidden());
    EXPECT_EQ(screen->Text1[1]->text(), "Corner Drug");
    EXPECT_FALSE(screen->Modified);

    screen->Text1[9]->setText("614 555 0191");
    screen->Text1[5]->setText("oh");
    ClickOk(*screen);
    EXPECT_FALSE(screen->isVisible());
    const int id = host_->GetSavedRecordID();
    ASSERT_GT(id, 0);
    EXPECT_EQ(Stored("PhaNam", id, "PhaTable", "PhaID"), "Corner Drug");
    EXPECT_EQ(Stored("PhaFax", id, "PhaTable", "PhaID"), "(614) 555-0191");
    EXPECT_EQ(Stored("PhaSta", id, "PhaTable", "PhaID"), "OH");
}

TEST_P(InsScreenTest, LoadCleansFieldsWithoutMarkingAChange) {
    const int id = AddCarrier(
        {"HARBORLINE HEALTH", "po box 907", "", "portland", "me", "04101", "2075550164", "", ""});
    auto screen = Open(false, QString(), id);
    EXPECT_EQ(screen->Text1[1]->text(), "Harborline Health");
    EXPECT_EQ(screen->Text1[4]->text(), "Portland");
    EXPECT_EQ(screen->Text1[7]->text(), "(207) 555-0164");
    EXPECT_EQ(screen->Text1[5]->text(), "ME");
    EXPECT_FALSE(screen->Modified);
    EXPECT_TRUE(screen->findChild<QStackedWidget*>("stkPayer")->currentWidget() ==
                screen->findChild<QWidget*>("pnlNoPayer"));
    screen->Command3D2[1]->click();
    EXPECT_FALSE(screen->isVisible());
    EXPECT_EQ(host_->GetSavedRecordID(), id);
    EXPECT_EQ(Stored("InsCoNam", id), "HARBORLINE HEALTH");
}

TEST_P(InsScreenTest, EmptyingAFilledValueWarnsWithBothAddresses) {
    const int id = AddKeystone("Suite 200");
    AddCoverages(id, 2);
    AddCoverages(id, 1, /*linkFlag=*/1);
    AddCoverages(id, 1, 0, /*coverageFlag=*/1);
    auto screen = Open(false, QString(), id);
    screen->Text1[3]->clear();
    const QString warning = QStringLiteral(
        "Warning!\r\n\r\nChanging this Insurance Information will affect ALL patients with "
        "insurance company:\r\n\r\nKeystone Benefit Plans\r\n1200 Market Street\r\nSuite "
        "200\r\nHarrisburg\r\nPA\r\n17101\r\n(717) 555-0112\r\n\r\nand will change their coverage "
        "to insurance company:\r\n\r\nKeystone Benefit Plans\r\n1200 Market "
        "Street\r\nHarrisburg\r\nPA\r\n17101\r\n(717) 555-0112\r\n\r\nand will affect 2 patients. "
        "\r\n\r\nAre you sure you want to continue?");
    prompts_.Expect(kCarrierTitle, warning, AnswerNo);
    ClickOk(*screen);
    // No at the warning closes without saving.
    EXPECT_FALSE(screen->isVisible());
    EXPECT_EQ(Stored("InsCoAdd2", id), "Suite 200");
    const auto& shown = prompts_.shown().back();
    EXPECT_EQ(shown.buttons, (QStringList{"Yes", "No", "Cancel"}));
    EXPECT_EQ(shown.defaultButton, 3);
}

// Only active coverages on active links of this carrier count; with none, nothing warns.
TEST_P(InsScreenTest, CarrierWithoutActivePatientsNeverWarns) {
    const int id = AddKeystone();
    AddCoverages(id, 2);
    AddCoverages(id, 3);
    AddCoverages(id, 5, /*linkFlag=*/1);
    AddCoverages(id, 7, 0, /*coverageFlag=*/1);
    AddCoverages(AddKeystone(), 11);
    int count = -1;
    ASSERT_TRUE(CountCarrierCoverages(Db(), id, count));
    EXPECT_EQ(count, 5);
    const int unused = AddCarrier({"Summit Dental Trust", "Po Box 1", "", "", "", "", "", "", ""});
    AddCoverages(unused, 2, /*linkFlag=*/1);
    AddCoverages(unused, 2, 0, /*coverageFlag=*/1);
    ASSERT_TRUE(CountCarrierCoverages(Db(), unused, count));
    EXPECT_EQ(count, 0);
    auto screen = Open(false, QString(), unused);
    screen->Text1[1]->setText("Another Name");
    screen->Text1[2]->clear();
    ClickOk(*screen);
    EXPECT_FALSE(screen->isVisible());
    EXPECT_EQ(Stored("InsCoNam", unused), "Another Name");
}

TEST_P(InsScreenTest, ConfirmedChangeIsAppendedToTheLog) {
    const int id = AddKeystone();
    AddCoverages(id, 1);
    for (const QString& name : {QStringLiteral("Keystone West"), QStringLiteral("Keystone East")}) {
        auto screen = Open(false, QString(), id);
        screen->Text1[1]->setText(name);
        screen->Text1[8]->setText("7175550113");
        ExpectWarningAnswered(AnswerYes, QStringLiteral("yes"));
        ClickOk(*screen);
        EXPECT_FALSE(screen->isVisible());
    }
    QFile log(LogPath());
    ASSERT_TRUE(log.open(QIODevice::ReadOnly));
    const QString entry =
        QString(60, '-') + "\r\nInsurance Co. Entry ID " + QString::number(id) +
        " was changed by SUPERVISOR on 03/07/2025\r\nFrom:\r\n%1\r\n1200 Market Street\r\n\r\n"
        "Harrisburg\r\nPA\r\n17101\r\n(717) 555-0112\r\n%2\r\nTo:\r\n%3\r\n1200 Market "
        "Street\r\n\r\nHarrisburg\r\nPA\r\n17101\r\n(717) 555-0112\r\n(717) 555-0113\r\n";
    EXPECT_EQ(QString::fromUtf8(log.readAll()),
              entry.arg("Keystone Benefit Plans", "", "Keystone West") +
                  entry.arg("Keystone West", "(717) 555-0113", "Keystone East"));

    // A log that cannot be written does not stop the change.
    QDir(session_.dataPath + "STP").removeRecursively();
    auto screen = Open(false, QString(), id);
    screen->Text1[1]->setText("Keystone North");
    ExpectWarningAnswered(AnswerYes, QStringLiteral("YES"));
    ClickOk(*screen);
    EXPECT_EQ(Stored("InsCoNam", id), "Keystone North");
}

TEST_P(InsScreenTest, WhoMayEditWhat) {
    session_.loginName = QStringLiteral("CLERK");
    const int carrier = AddKeystone();
    Db().Execute("INSERT INTO PhaTable (PhaNam) VALUES ('Main Street Pharmacy')");
    const int pharmacy = db::ReadScalar(Db(), "SELECT PhaID FROM PhaTable").toInt();

    auto shared = Open(false, QString(), carrier);
    EXPECT_FALSE(shared->CanEdit);
    EXPECT_TRUE(shared->Text1[1]->isReadOnly());
    EXPECT_TRUE(shared->txtNEA->isReadOnly());
    EXPECT_FALSE(shared->Command3D2[2]->isEnabled());
    EXPECT_FALSE(shared->cmdLin[0]->isEnabled());

    std::vector<std::unique_ptr<insScreen>> always;
    always.push_back(Open(true, QString(), pharmacy));
    always.push_back(Open(false, BuildNewCommand("NEWX"), 0));
    for (const auto& screen : always) {
        EXPECT_TRUE(screen->CanEdit);
        EXPECT_FALSE(screen->Text1[1]->isReadOnly());
        EXPECT_TRUE(screen->Command3D2[2]->isEnabled());
    }

    // Each screen holds the carrier's lock while it lives; the next one opens after it.
    shared.reset();
    host::GrantRight(Db(), "clerk", session_.officeLocationId, "EDIT-EMP-INS");
    auto granted = Open(false, QString(), carrier);
    EXPECT_TRUE(granted->CanEdit);
    EXPECT_TRUE(granted->Command3D2[2]->isEnabled());
    EXPECT_TRUE(granted->cmdLin[1]->isEnabled());
    EXPECT_TRUE(granted->Command3D1[0]->isEnabled());

    granted.reset();
    host_->WriteSetting("DEFAULT_OFFICE_SETUP", "ELECTRONIC_CLAIMS", 0, false);
    auto noClaims = Open(false, QString(), carrier);
    EXPECT_TRUE(noClaims->Command3D2[2]->isEnabled());
    EXPECT_FALSE(noClaims->cmdLin[0]->isEnabled());

    noClaims.reset();
    // A row locked by another station shows read only and never asks to save.
    auto locked = Open<LockedScreen>(false, QString(), carrier);
    EXPECT_TRUE(locked->Text1[2]->isReadOnly());
    EXPECT_FALSE(locked->Command3D2[2]->isEnabled());
    locked->Modified = true;
    EXPECT_EQ(locked->CheckSave(), AnswerYes);
}

TEST_P(InsScreenTest, EmptyNameAndCancelKeepTheScreenOpen) {
    const int id = AddKeystone();
    auto screen = Open(false, QString(), id);
    screen->Text1[1]->setText("   ");
    prompts_.Expect(kCarrierTitle,
                    "You must enter a company name before you can save these changes.", AnswerOk);
    ClickOk(*screen);
    EXPECT_TRUE(screen->isVisible());

    prompts_.Expect(kCarrierTitle, kSaveQuestion, AnswerCancel);
    QTest::keyClick(screen.get(), Qt::Key_Escape);
    EXPECT_TRUE(screen->isVisible());
    EXPECT_EQ(prompts_.shown().back().buttons, (QStringList{"Yes", "No", "Cancel"}));

    screen->Text1[1]->setText("Keystone Dental");
    prompts_.Expect(kCarrierTitle, kSaveQuestion, AnswerYes);
    screen->close();
    EXPECT_FALSE(screen->isVisible());
    EXPECT_EQ(Stored("InsCoNam", id), "Keystone Dental");
}

TEST_P(InsScreenTest, LinkingAPayerAsksWithItsOwnWords) {
    const int id = AddKeystone();
    auto screen = Open(false, QString(), id);
    host_->payers->choice = QStringLiteral(" bwd01 ");
    const QString linkText = QStringLiteral(
        "Linking an Electronic Payer allows you to submit claims and verify coverage for your "
        "patients electronically.\r\nPlease make sure that the selected Electronic Payer matches "
        "the current Insurance Company.\r\nPlease note: Use of this feature requires an Electronic "
        "Claims account with Emdeon Business Services and internet access.");
    prompts_.Expect(kLinkTitle, linkText, AnswerCancel);
    screen->cmdLin[0]->click();
    EXPECT_EQ(screen->txtRemID->text(), "");
    EXPECT_FALSE(screen->Modified);

    prompts_.Expect(kLinkTitle, linkText, AnswerOk);
    screen->cmdLin[0]->click();
    EXPECT_EQ(host_->payerLogin, "SUPERVISOR");
    EXPECT_EQ(screen->txtRemID->text(), "BWD01");
    EXPECT_EQ(screen->txtLin[1]->text(), "Bluewater Dental Claims");
    EXPECT_EQ(screen->txtLin[2]->text(), "PO Box 4410 Columbus OH");
    EXPECT_TRUE(screen->Modified);
    EXPECT_EQ(prompts_.shown().back().buttons, (QStringList{"OK", "Cancel"}));
    EXPECT_EQ(prompts_.shown().back().defaultButton, 1);
    EXPECT_EQ(prompts_.messageIcons().back(), Icon::Information);

    // The same payer again is no change at all.
    host_->payers->choice = QStringLiteral("BWD01");
    screen->cmdLin[0]->click();
    EXPECT_EQ(host_->payers->shownOn, "BWD01");

    ClickOk(*screen);
    EXPECT_EQ(Stored("InsCoAccID", id), "BWD01");
}

TEST_P(InsScreenTest, ChangingAndRemovingAPayerAskWithNoAsDefault) {
    const int id = AddCarrier({"Bluewater Dental Mutual", "", "", "", "", "", "", "", "BWD01"});
    Db().Execute(QStringLiteral("UPDATE InsCoTable SET InsCoSWChr='XY' WHERE InsCoInd=%1").arg(id));
    auto screen = Open(false, QString(), id);
    EXPECT_EQ(screen->txtLin[1]->text(), "Bluewater Dental Claims");

    const QString changeText = QStringLiteral(
        "Are you sure you want to change the Electronic Payer for this Insurance "
        "Company?\r\nPlease "
        "note: This change will be affect ALL patients with coverage through this insurance "
        "company.");
    host_->payers->choice = QStringLiteral("KBP22");
    prompts_.Expect(kUnlinkTitle, changeText, AnswerNo);
    screen->cmdLin[0]->click();
    EXPECT_EQ(screen->txtRemID->text(), "BWD01");
    prompts_.Expect(kUnlinkTitle, changeText, AnswerYes);
    screen->cmdLin[0]->click();
    EXPECT_EQ(screen->txtRemID->text(), "KBP22");
    EXPECT_EQ(screen->txtLin[1]->text(), "Keystone Claims");
    EXPECT_EQ(screen->txtNEA->text(), "XY");

    const QString removeText = QStringLiteral(
        "Are you sure you want to remove the link to this Electronic Payer?\r\nPlease note: Online "
        "Eligibility and Electronic Claims WILL NOT BE AVAILABLE for any patients with coverage "
        "through this insurance company if you select [Yes].");
    prompts_.Expect(kUnlinkTitle, removeText, AnswerYes);
    screen->cmdLin[1]->click();
    EXPECT_EQ(screen->txtRemID->text(), "");
    EXPECT_EQ(screen->txtNEA->text(), "");
    EXPECT_EQ(screen->txtLin[1]->text(), "");
    EXPECT_TRUE(screen->findChild<QStackedWidget*>("stkPayer")->currentWidget() ==
                screen->findChild<QWidget*>("pnlNoPayer"));
    for (const auto& shown : prompts_.shown()) {
        EXPECT_EQ(shown.buttons, (QStringList{"Yes", "No"}));
        EXPECT_EQ(shown.defaultButton, 2);
    }
    EXPECT_EQ(prompts_.messageIcons(), std::vector<Icon>(3, Icon::Warning));

    ClickOk(*screen);
    EXPECT_EQ(Stored("InsCoAccID", id), "");
    EXPECT_EQ(Stored("InsCoSWChr", id), "");
}

TEST_P(InsScreenTest, DatabaseErrorOnOkIsShownAndTheScreenStays) {
    const int id = AddKeystone();
    auto screen = Open(false, QString(), id);
    Db().Execute("DROP TABLE CovTable");
    screen->Text1[1]->setText("Keystone Dental");
    prompts_.ExpectContaining(kCarrierTitle, "CovTable", AnswerOk);
    ClickOk(*screen);
    EXPECT_TRUE(screen->isVisible());
    EXPECT_EQ(prompts_.messageIcons().back(), Icon::Critical);
    prompts_.Expect(kCarrierTitle, kSaveQuestion, AnswerNo);
    screen->Command3D2[1]->click();
    EXPECT_FALSE(screen->isVisible());
}

TEST_P(InsScreenTest, KeysMoveBetweenFieldsAndLeavingAFieldCleansIt) {
    auto screen = Open(false, BuildNewCommand("NEW"), 0);
    QApplication::setActiveWindow(screen.get());
    ASSERT_TRUE(QTest::qWaitForWindowActive(screen.get()));
    screen->Text1[1]->setFocus();
    QTest::keyClicks(screen->Text1[1], "lakeshore union benefits");
    QTest::keyClick(screen->Text1[1], Qt::Key_Return);
    EXPECT_TRUE(screen->Text1[2]->hasFocus());
    // The field is tidied once the focus has settled.
    QApplication::processEvents();
    EXPECT_EQ(screen->Text1[1]->text(), "Lakeshore Union Benefits");
    QTest::keyClick(screen->Text1[2], Qt::Key_Up);
    EXPECT_TRUE(screen->Text1[1]->hasFocus());
    EXPECT_TRUE(screen->isVisible());

    screen->Text1[5]->setFocus();
    QTest::keyClicks(screen->Text1[5], "wi");
    QTest::keyClick(screen->Text1[5], Qt::Key_Down);
    QApplication::processEvents();
    EXPECT_EQ(screen->Text1[5]->text(), "WI");
    screen->Text1[7]->setFocus();
    QTest::keyClicks(screen->Text1[7], "4145550198");
    QTest::keyClick(screen->Text1[7], Qt::Key_Enter, Qt::KeypadModifier);
    QApplication::processEvents();
    EXPECT_EQ(screen->Text1[7]->text(), "(414) 555-0198");
}

// The window's close does what leaving the field would have done, before it asks to save; a
// screen that goes while a field's step waits for the focus to settle takes the step with it.
TEST_P(InsScreenTest, LeaveStepsRunAtAnyCloseAndNeverAfterTheScreen) {
    const int id = AddKeystone();
    auto screen = Open(false, QString(), id);
    QApplication::setActiveWindow(screen.get());
    ASSERT_TRUE(QTest::qWaitForWindowActive(screen.get()));
    screen->Text1[4]->setFocus();
    screen->Text1[4]->selectAll();
    QTest::keyClicks(screen->Text1[4], "Springfield IL 62704");
    prompts_.Expect("City State, Zip Code", "Add [ Springfield IL 62704 ] to database", AnswerYes)
        .Expect("City, State, and Zipcode", "Update City, State, and Zipcode?", AnswerYes)
        .Expect(kCarrierTitle, kSaveQuestion, AnswerYes);
    screen->close();
    EXPECT_FALSE(screen->isVisible());
    EXPECT_EQ(Stored("InsCoCit", id) + Stored("InsCoSta", id) + Stored("InsCoZip", id),
              "SpringfieldIL62704");

    auto gone = Open(false, BuildNewCommand("NEW"), 0);
    QApplication::setActiveWindow(gone.get());
    ASSERT_TRUE(QTest::qWaitForWindowActive(gone.get()));
    gone->Text1[4]->setFocus();
    QTest::keyClicks(gone->Text1[4], "Gotham");
    gone->Text1[7]->setFocus();
    gone.reset();
    // An Add question now would be unexpected, and a step on the gone fields a fault.
    QApplication::processEvents();
}

// At its own size, with the suite's fixed font, every label and field shows whole. The pictures
// go to the build folder for a look by eye.
TEST_P(InsScreenTest, DefaultSizeCutsNothingOff) {
    QApplication::setStyle(QStringLiteral("Fusion"));
    QFont font(QStringLiteral("DejaVu Sans"));
    font.setPixelSize(12);
    QApplication::setFont(font);
    const int linked =
        AddCarrier({"Bluewater Dental Mutual", "PO Box 4410", "Claims Department", "Columbus", "OH",
                    "43216", "(614) 555-0140", "(614) 555-0141", "BWD01"});
    const int pharmacy = static_cast<int>(
        Db().InsertWithIdentity("INSERT INTO PhaTable (PhaNam, PhaCit) VALUES ('Corner Drug & "
                                "Health', 'Columbus')"));
    const std::pair<const char*, std::unique_ptr<insScreen>> shots[] = {
        {"carrier", Open(false, QString(), AddKeystone())},
        {"carrier_linked", Open(false, QString(), linked)},
        {"pharmacy", Open(true, QString(), pharmacy)}};
    const QString folder =
        qEnvironmentVariable("ORVO_BUILD_DIR", QDir::tempPath()) + "/screenshots";
    QDir().mkpath(folder);
    for (const auto& [name, screen] : shots) {
        QApplication::processEvents();
        for (const QWidget* child : screen->findChildren<QWidget*>()) {
            if (!child->isVisibleTo(screen.get()) || child->isWindow())
                continue;
            const QRect shown(child->mapTo(screen.get(), QPoint(0, 0)), child->size());
            EXPECT_TRUE(screen->rect().contains(shown))
                << name << " " << child->objectName().toStdString();
            if (qobject_cast<const QLabel*>(child) || qobject_cast<const QAbstractButton*>(child)) {
                EXPECT_GE(child->width(), child->minimumSizeHint().width())
                    << name << " " << child->objectName().toStdString();
                EXPECT_GE(child->height(), child->minimumSizeHint().height())
                    << name << " " << child->objectName().toStdString();
            }
        }
        const QString path =
            QStringLiteral("%1/ins_screen_%2_%3.png")
                .arg(folder, name, QString::fromStdString(test::EngineName(GetParam())));
        EXPECT_TRUE(screen->grab().save(path)) << path.toStdString();
    }
}

INSTANTIATE_TEST_SUITE_P(Engines, InsScreenTest, testing::ValuesIn(test::AllEngines()),
                         test::EngineParamName());

}  // namespace
}  // namespace orvo::insurance
