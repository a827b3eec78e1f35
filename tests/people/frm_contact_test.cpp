// The contact information screen over the reference host on both engines: both blocks edited
// and the shown numbers kept in step, the refusal of an empty entry as the shown one, the save
// question and its Cancel, a close with a field's leave step pending, a person deleted under the
// open screen, and the address book.
#include <gtest/gtest.h>

#include <QApplication>
#include <QCheckBox>
#include <QDir>
#include <QFile>
#include <QLabel>
#include <QLineEdit>
#include <QListWidget>
#include <QPushButton>
#include <QTabWidget>

#include "people/frm_contact.h"
#include "platform/address_book.h"
#include "tests/people/people_fixture.h"
#include "tests/support/modal_driver.h"

namespace orvo::people::test {
namespace {

const QString kSaveTitle = QStringLiteral("Save Changes");
const QString kSaveText = QStringLiteral("Do you want to save you changes?");
const QString kNoInbox =
    QStringLiteral("ORVO Windows was not able to connect to your Windows inbox.");

class FrmContactTest : public PeopleTest {
protected:
    void SetUp() override {
        PeopleTest::SetUp();
        if (!database_)
            return;
        session_.dataPath = database_->folder() + QLatin1Char('/');
        QDir(database_->folder()).mkpath(QStringLiteral("TEMP"));
        person_ = AddPerson({"pTTL", "pFIRNAM", "pLASNAM", "pHOMPHO", "pHomPho1", "pHomCon",
                             "pHomCell", "pBusPho1", "pBusCon", "pBUSPHO"},
                            {"'Sr.'", "'José'", "'Peña'", "'(614) 555-0101'", "'(614) 555-0101'",
                             "'PHOMPHO1'", "'(614) 555-0177'", "'(614) 555-0300'", "''", "''"});
    }
    std::unique_ptr<frmContact> Open(int person, int tab = 0) {
        auto screen = std::make_unique<frmContact>(Host());
        screen->PatientID = person;
        screen->SetupTab = tab;
        screen->Setup_Screen();
        screen->show();
        return screen;
    }
    int Notified() {
        return static_cast<int>(Host().calls.filter(QStringLiteral("notify")).size());
    }
    int person_ = 0;
};

TEST_P(FrmContactTest, LoadsBothBlocksWithTheChosenEntriesTicked) {
    auto screen = Open(person_);
    EXPECT_EQ(screen->windowTitle(), "Contact Information for Sr. José Peña");
    EXPECT_EQ(screen->txtHome[0]->text(), "(614) 555-0101");
    EXPECT_EQ(screen->txtHome[4]->text(), "(614) 555-0177");
    EXPECT_TRUE(screen->chkHome[0]->isChecked());
    EXPECT_FALSE(screen->chkHome[4]->isChecked());
    // The work block had no choice: it is settled on the first phone, which the lists now show.
    EXPECT_EQ(screen->lblWork->text(), "pBusPho1");
    EXPECT_TRUE(screen->chkWork[0]->isChecked());
    EXPECT_EQ(Column(person_, "pBUSPHO"), "(614) 555-0300");
    EXPECT_EQ(screen->findChild<QLabel*>("lblWorkShown")->text(), "Work Phone");
    EXPECT_EQ(screen->findChild<QTabWidget*>("tabContact")->currentIndex(), 0);
    EXPECT_FALSE(screen->Modified);
    EXPECT_FALSE(screen->cmdApply->isEnabled());
    EXPECT_EQ(screen->txtHome[3]->maxLength(), 40);
    EXPECT_EQ(screen->txtWork[1]->maxLength(), 30);
    screen->cmdCancel->click();  // nothing changed: no question
    EXPECT_FALSE(screen->isVisible());
    EXPECT_EQ(Notified(), 0);

    auto work = Open(person_, 1);
    EXPECT_EQ(work->findChild<QTabWidget*>("tabContact")->currentIndex(), 1);
    work->cmdCancel->click();
}

TEST_P(FrmContactTest, EditsBothBlocksAndKeepsTheShownNumbersInStep) {
    auto screen = Open(person_);
    screen->txtHome[4]->setText("614 555 0199");
    screen->chkHome[4]->click();
    EXPECT_TRUE(screen->chkHome[4]->isChecked());
    EXPECT_FALSE(screen->chkHome[0]->isChecked());
    EXPECT_EQ(screen->lblHome->text(), "pHomCell");
    EXPECT_EQ(screen->findChild<QLabel*>("lblHomeShown")->text(), "Home Cell");
    EXPECT_TRUE(screen->cmdApply->isEnabled());
    screen->txtWork[3]->setText("  jose@peña.example  ");
    screen->txtWork[4]->setText("6145550400");
    screen->chkWork[4]->click();
    // OK straight from a phone field: its leave step runs before the save.
    screen->cmdOK->click();
    EXPECT_FALSE(screen->isVisible());

    EXPECT_EQ(Column(person_, "pHomCon"), "pHomCell");
    EXPECT_EQ(Column(person_, "pHomCell"), "(614) 555-0199");
    EXPECT_EQ(Column(person_, "pHOMPHO"), "(614) 555-0199");
    EXPECT_EQ(Column(person_, "pHomPho1"), "(614) 555-0101");
    EXPECT_EQ(Column(person_, "pBusEma"), "jose@peña.example");
    EXPECT_EQ(Column(person_, "pBusCon"), "pBusCell");
    EXPECT_EQ(Column(person_, "pBusCell"), "(614) 555-0400");
    EXPECT_EQ(Column(person_, "pBUSPHO"), "(614) 555-0400");
    EXPECT_TRUE(screen->ChangeMade);
    EXPECT_EQ(Notified(), 1);
}

TEST_P(FrmContactTest, AnEmptyEntryCannotBeTheShownOne) {
    auto screen = Open(person_);
    screen->chkHome[2]->click();  // the fax is empty
    EXPECT_FALSE(screen->chkHome[2]->isChecked());
    EXPECT_TRUE(screen->chkHome[0]->isChecked());
    EXPECT_EQ(screen->lblHome->text(), "PHOMPHO1");
    EXPECT_EQ(screen->focusWidget(), screen->txtHome[2]);
    EXPECT_EQ(prompts_.beeps(), 1);
    // Nor an entry of blanks; and the chosen box can't be unticked to leave none.
    screen->txtHome[5]->setText("   ");
    screen->chkHome[5]->click();
    EXPECT_FALSE(screen->chkHome[5]->isChecked());
    screen->chkHome[0]->click();
    EXPECT_TRUE(screen->chkHome[0]->isChecked());
    EXPECT_EQ(screen->lblHome->text(), "PHOMPHO1");
    screen->txtHome[5]->clear();

    // Emptying the chosen entry afterwards empties the shown number with it.
    screen->txtHome[0]->clear();
    prompts_.Expect(kSaveTitle, kSaveText, AnswerYes);
    screen->cmdCancel->click();
    EXPECT_FALSE(screen->isVisible());
    EXPECT_EQ(Column(person_, "pHOMPHO"), "");
    EXPECT_EQ(Column(person_, "pHomCon"), "pHomPho1");
}

TEST_P(FrmContactTest, CancelAtTheSaveQuestionKeepsTheWindowAndNoDropsTheChanges) {
    auto screen = Open(person_);
    const QStringList before = Row(person_);  // as the opening settled it
    screen->txtHome[1]->setText("555 0111");
    prompts_.Expect(kSaveTitle, kSaveText, AnswerCancel);
    screen->reject();  // Escape, the window's close and Cancel all come here
    EXPECT_TRUE(screen->isVisible());
    EXPECT_EQ(screen->txtHome[1]->text(), "555-0111");  // its leave step ran
    EXPECT_EQ(Row(person_), before);

    prompts_.Expect(kSaveTitle, kSaveText, AnswerNo);
    screen->cmdCancel->click();
    EXPECT_FALSE(screen->isVisible());
    EXPECT_EQ(Row(person_), before);
    EXPECT_FALSE(screen->ChangeMade);
    EXPECT_EQ(Notified(), 0);
}

TEST_P(FrmContactTest, ApplySavesAndStays) {
    auto screen = Open(person_);
    screen->txtHome[3]->setText("zoe.mueller@example.de");
    screen->cmdApply->click();
    EXPECT_TRUE(screen->isVisible());
    EXPECT_FALSE(screen->cmdApply->isEnabled());
    EXPECT_FALSE(screen->Modified);
    EXPECT_EQ(Column(person_, "pHomEma"), "zoe.mueller@example.de");
    EXPECT_EQ(Notified(), 0);  // the host hears of it when the screen closes
    screen->cmdCancel->click();
    EXPECT_FALSE(screen->isVisible());
    EXPECT_EQ(Notified(), 1);
}

TEST_P(FrmContactTest, APersonDeletedUnderTheScreenIsToldAndNothingIsMadeUp) {
    auto screen = Open(person_);
    screen->txtWork[2]->setText("555 0999");
    Db().Execute(QStringLiteral("DELETE FROM PATable WHERE pID=%1").arg(person_));
    prompts_.ExpectContaining("Contact Information for Sr. José Peña",
                              "The record is no longer in the database", AnswerOk);
    screen->cmdOK->click();
    EXPECT_TRUE(screen->isVisible());
    EXPECT_EQ(Column(person_, "pID"), "<no row>");
    prompts_.Expect(kSaveTitle, kSaveText, AnswerNo);
    screen->cmdCancel->click();
    EXPECT_FALSE(screen->isVisible());
    EXPECT_EQ(static_cast<int>(db::ReadScalar(Db(), "SELECT count(*) FROM PATable").toInt()), 0);

    // Opening on a person who is not there refuses.
    auto gone = std::make_unique<frmContact>(Host());
    gone->PatientID = person_;
    EXPECT_THROW(gone->Setup_Screen(), db::RowNotFoundError);
}

TEST_P(FrmContactTest, AddressBookFillsTheEmailOfTheTabInFront) {
    const QString book = database_->folder() + QStringLiteral("/Contacts.vcf");
    QFile file(book);
    ASSERT_TRUE(file.open(QIODevice::WriteOnly));
    file.write(
        "BEGIN:VCARD\r\nVERSION:3.0\r\nFN:Zoë Müller\r\n"
        "EMAIL;TYPE=home:zoe@home.example\r\nEMAIL;TYPE=work,pref:zoe@praxis.example\r\n"
        "END:VCARD\r\nBEGIN:VCARD\r\nVERSION:4.0\r\nFN:Ana Peña\r\n"
        "EMAIL:ana@example.org\r\nEND:VCARD\r\n");
    file.close();
    Host().WriteStationSetting("ADDRESS_BOOK", book);

    orvo::test::ModalDriver driver;
    QStringList lines;
    driver.On("frmAddressBook", [&lines](QDialog& dialog) {
        auto* list = dialog.findChild<QListWidget*>("lstRecipients");
        for (int i = 0; i < list->count(); ++i)
            lines << list->item(i)->text();
        list->clearSelection();
        list->item(1)->setSelected(true);
        list->item(2)->setSelected(true);  // several chosen: the first counts
        dialog.findChild<QPushButton*>("cmdOK")->click();
    });
    auto screen = Open(person_, 1);
    screen->cmdAddressBook->click();
    EXPECT_EQ(lines, QStringList({"Ana Peña <ana@example.org>", "Zoë Müller <zoe@praxis.example>",
                                  "Zoë Müller <zoe@home.example>"}));
    EXPECT_EQ(screen->txtWork[3]->text(), "zoe@praxis.example");
    EXPECT_EQ(screen->txtHome[3]->text(), "");
    EXPECT_TRUE(screen->Modified);

    // Closed without a choice: nothing changes.
    driver.On("frmAddressBook", [](QDialog& dialog) { dialog.reject(); });
    screen->findChild<QTabWidget*>("tabContact")->setCurrentIndex(0);
    screen->cmdAddressBook->click();
    EXPECT_EQ(screen->txtHome[3]->text(), "");

    // A book that cannot be opened is the one failure told.
    Host().WriteStationSetting("ADDRESS_BOOK", book + ".gone");
    prompts_.Expect("Contact Information for Sr. José Peña", kNoInbox, AnswerOk);
    screen->cmdAddressBook->click();
    EXPECT_EQ(driver.handled("frmAddressBook"), 2);

    screen->cmdOK->click();
    EXPECT_EQ(Column(person_, "pBusEma"), "zoe@praxis.example");
}

TEST_P(FrmContactTest, ReadOnlyWhileAnotherScreenHoldsTheRowAndFreeUnderItsOwner) {
    auto first = Open(person_);
    // A second open of the row in this process is refused its lock, as another station would be.
    prompts_.ExpectContaining("ORVO Windows", "This entry is locked for editing by user [JDOE]",
                              AnswerOk);
    auto second = std::make_unique<frmContact>(Host());
    second->PatientID = person_;
    second->Setup_Screen();
    EXPECT_EQ(second->RecordLock, 0);
    EXPECT_TRUE(second->txtHome[0]->isReadOnly());
    EXPECT_FALSE(second->chkWork[1]->isEnabled());
    EXPECT_FALSE(second->cmdOK->isEnabled());
    EXPECT_FALSE(second->cmdAddressBook->isEnabled());

    // Under the person's own screen, which holds the lock, the entries are free to edit.
    auto nested = std::make_unique<frmContact>(Host());
    nested->OwnerForm = first.get();
    nested->PatientID = person_;
    nested->Setup_Screen();
    EXPECT_FALSE(nested->txtHome[0]->isReadOnly());
    first->cmdCancel->click();
}

INSTANTIATE_TEST_SUITE_P(Engines, FrmContactTest, testing::ValuesIn(orvo::test::AllEngines()),
                         orvo::test::EngineParamName());

}  // namespace
}  // namespace orvo::people::test
