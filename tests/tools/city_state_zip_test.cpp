// The city, state and zip fields of an address screen tied to the list, driven by keys and clicks
// on the offscreen platform: the panel under the field while typing, choosing into the three
// fields with the question when the record had another address, the lookup key and buttons,
// leaving a field with a new place or a known zip, and the panel's commands.
#include <QApplication>
#include <QDialog>
#include <QListWidget>
#include <QPushButton>
#include <QSignalSpy>
#include <QTest>
#include <QToolButton>
#include <QVBoxLayout>

#include "tests/tools/zip_test_fixture.h"
#include "tools/city_state_zip.h"
#include "tools/zip_code_panel.h"

namespace orvo::tools::test {
namespace {

// The least of a screen: the fields' leave steps and checks are its own.
class AddressForm : public component::EditingDialog {
public:
    explicit AddressForm(GIC& gic) : EditingDialog(gic) {}
    void Save_Record() override {}
};

class CityStateZipTest : public ZipDatabaseTest {
protected:
    void SetUp() override {
        ZipDatabaseTest::SetUp();
        if (IsSkipped())
            return;
        AddRow("Springfield", "IL", "62704");
        AddRow("Springfield", "IL", "62701");
        AddRow("Springfield", "MA", "01103");
        AddRow("Springdale", "AR", "72762");
        AddRow("Peoria", "IL", "61602");

        form_ = std::make_unique<AddressForm>(gic());
        auto* layout = new QVBoxLayout(form_.get());
        for (QLineEdit** field : {&city_, &state_, &zip_, &phone_}) {
            *field = new QLineEdit(form_.get());
            layout->addWidget(*field);
        }
        cityButton_ = new QToolButton(form_.get());
        zipButton_ = new QPushButton(form_.get());
        layout->addWidget(cityButton_);
        layout->addWidget(zipButton_);
        layout->addStretch();
        helper_ = new CityStateZip(gic(), *form_);
        helper_->SetVisibleRows(3);
        helper_->Attach(city_, state_, zip_, cityButton_, zipButton_);
        form_->resize(400, 420);
        form_->show();
        QApplication::setActiveWindow(form_.get());
        ASSERT_TRUE(QTest::qWaitForWindowActive(form_.get()));
    }
    void TearDown() override {
        form_.reset();
        ZipDatabaseTest::TearDown();
    }

    ZipCode_Panel* Panel() const { return form_->findChild<ZipCode_Panel*>("ZipCode_Panel"); }
    bool PanelShown() const { return Panel() && Panel()->isVisible(); }
    QListWidget* List() const { return Panel()->findChild<QListWidget*>("lstZip"); }
    QStringList Lines() const {
        QStringList lines;
        for (int i = 0; i < List()->count(); ++i)
            lines << List()->item(i)->text();
        return lines;
    }
    QString Selected() const {
        return List()->currentItem() ? List()->currentItem()->text() : QString();
    }
    ZipParts Fields() const { return {city_->text(), state_->text(), zip_->text()}; }
    void SetFields(const ZipParts& parts) {
        city_->setText(parts.city);
        state_->setText(parts.state);
        zip_->setText(parts.zip);
    }
    // Into the field, over what it holds, as after tabbing into it.
    static void Type(QLineEdit* field, const QString& text) {
        field->setFocus();
        field->selectAll();
        QTest::keyClicks(field, text);
    }
    // Tab out of the field, and let what follows a leave run.
    static void Leave(QLineEdit* field) {
        QTest::keyClick(field, Qt::Key_Tab);
        for (int i = 0; i < 3; ++i)
            QApplication::processEvents();
    }
    void ClickRow(int row) {
        QTest::mouseClick(List()->viewport(), Qt::LeftButton, {},
                          List()->visualItemRect(List()->item(row)).center());
    }

    std::unique_ptr<AddressForm> form_;
    QLineEdit* city_ = nullptr;
    QLineEdit* state_ = nullptr;
    QLineEdit* zip_ = nullptr;
    QLineEdit* phone_ = nullptr;
    QToolButton* cityButton_ = nullptr;
    QPushButton* zipButton_ = nullptr;
    CityStateZip* helper_ = nullptr;
};

TEST_P(CityStateZipTest, TypingListsTheCityUnderTheFieldAndEnterChoosesIntoAllThree) {
    QSignalSpy chosen(helper_, &CityStateZip::addressChosen);
    Type(city_, "spr");
    ASSERT_TRUE(PanelShown());
    EXPECT_EQ(Panel()->y(), city_->mapTo(form_.get(), QPoint(0, city_->height())).y());
    EXPECT_EQ(Panel()->visibleRows(), 3);
    EXPECT_EQ(Lines(), (QStringList{"Springdale, AR 72762", "Springfield, MA 01103",
                                    "Springfield, IL 62701"}));
    EXPECT_EQ(Selected(), "Springdale, AR 72762");

    QTest::keyClicks(city_, "ingf");
    EXPECT_EQ(Selected(), "Springfield, MA 01103");
    QTest::keyClick(city_, Qt::Key_Down);
    EXPECT_EQ(Selected(), "Springfield, IL 62701");
    QTest::keyClick(city_, Qt::Key_Return);

    EXPECT_FALSE(PanelShown());
    EXPECT_TRUE(form_->isVisible());
    EXPECT_EQ(Fields(), (ZipParts{"Springfield", "IL", "62701"}));
    EXPECT_EQ(chosen.count(), 1);
}

TEST_P(CityStateZipTest, ChoosingOverAnotherAddressAsksAndNoKeepsTheRecords) {
    SetFields({"Peoria", "IL", "61602"});
    Type(city_, "springf");
    city_->setText("Springf");  // the screen tidies what was typed: still not the record's
    prompts_.Expect(kUpdateTitle, kUpdateQuestion, AnswerNo);
    QTest::keyClick(city_, Qt::Key_Enter, Qt::KeypadModifier);
    EXPECT_EQ(Fields(), (ZipParts{"Peoria", "IL", "61602"}));

    Type(city_, "s");
    ASSERT_TRUE(PanelShown());
    prompts_.Expect(kUpdateTitle, kUpdateQuestion, AnswerYes);
    ClickRow(2);
    EXPECT_FALSE(PanelShown());
    EXPECT_EQ(Fields(), (ZipParts{"Springfield", "IL", "62701"}));

    // A screen that says its record holds no address is not asked.
    helper_->SetRecordHasAddress([] { return false; });
    Type(zip_, "6");
    QTest::keyClick(zip_, Qt::Key_Return);
    EXPECT_EQ(Fields(), (ZipParts{"Peoria", "IL", "61602"}));
}

TEST_P(CityStateZipTest, LookupKeyAndButtonsOpenTheListOnTheFieldsTextAndEscapeClosesIt) {
    zip_->setText("627");
    zip_->setFocus();
    QTest::keyClick(zip_, Qt::Key_F9);
    ASSERT_TRUE(PanelShown());
    EXPECT_EQ(Panel()->tag(), ZipMode::Zip);
    EXPECT_EQ(Lines(), (QStringList{"62701 Springfield, IL", "62704 Springfield, IL",
                                    "72762 Springdale, AR"}));
    EXPECT_EQ(Selected(), "62701 Springfield, IL");

    QTest::keyClick(zip_, Qt::Key_Escape);
    EXPECT_FALSE(PanelShown());
    EXPECT_TRUE(form_->isVisible());

    city_->setText("Peo");
    cityButton_->click();
    ASSERT_TRUE(PanelShown());
    EXPECT_EQ(Panel()->tag(), ZipMode::City);
    EXPECT_EQ(Selected(), "Peoria, IL 61602");
    zipButton_->click();
    EXPECT_EQ(Panel()->tag(), ZipMode::Zip);

    // A read-only field (a record locked elsewhere) opens no list.
    QTest::keyClick(zip_, Qt::Key_Escape);
    city_->setReadOnly(true);
    cityButton_->click();
    EXPECT_FALSE(PanelShown());
}

TEST_P(CityStateZipTest, LeavingWithANewPlaceOffersToAddItAndFillsTheFields) {
    Type(city_, "Smallville, KS 66002");
    prompts_.Expect(kZipTitle, "Add [ Smallville, KS 66002 ] to database", AnswerYes);
    Leave(city_);
    EXPECT_EQ(Fields(), (ZipParts{"Smallville", "KS", "66002"}));
    EXPECT_GT(FindZipCodeID(gic(), "Smallville", "KS", "66002"), 0);

    // Declined: the typed text stays as the address's own.
    Type(city_, "Gotham");
    prompts_.Expect(kZipTitle, "Add [ Gotham ] to database", AnswerNo);
    Leave(city_);
    EXPECT_EQ(city_->text(), "Gotham");
    EXPECT_EQ(RowCount(), 6);
}

TEST_P(CityStateZipTest, LeavingWithAKnownZipFillsTheCityAndAPartialKeyAsksNothing) {
    Type(zip_, "62704");
    Leave(zip_);
    EXPECT_EQ(Fields(), (ZipParts{"Springfield", "IL", "62704"}));

    Type(city_, "Spr");
    Leave(city_);
    EXPECT_EQ(city_->text(), "Spr");
    EXPECT_FALSE(PanelShown());
}

TEST_P(CityStateZipTest, PanelCommandsEditAndDeleteTheSelectedRow) {
    Type(city_, "Springd");
    auto* edit = Panel()->findChild<QPushButton*>("cmdZipEdit");
    auto* remove = Panel()->findChild<QPushButton*>("cmdZipDelete");
    ASSERT_TRUE(edit && remove && Panel()->findChild<QPushButton*>("cmdZipAdd"));

    prompts_.Expect(kZipTitle, "Edit [ Springdale, AR 72762 ] ?", AnswerYes)
        .ExpectInput(kZipTitle, "City, State Zip", "Springdale, AR 72764");
    edit->click();
    EXPECT_EQ(Selected(), "Springdale, AR 72764");

    prompts_.Expect(kZipTitle, "Delete [ Springdale, AR 72764 ] ?", AnswerYes);
    remove->click();
    EXPECT_TRUE(PanelShown());
    EXPECT_EQ(Lines().value(0), "Springfield, MA 01103");
    EXPECT_EQ(RowCount(), 4);
    EXPECT_EQ(city_->text(), "Springd");
}

INSTANTIATE_TEST_SUITE_P(Engines, CityStateZipTest, testing::ValuesIn(orvo::test::AllEngines()),
                         orvo::test::EngineParamName());

}  // namespace
}  // namespace orvo::tools::test
