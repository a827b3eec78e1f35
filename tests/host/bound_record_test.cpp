#include <QCheckBox>
#include <QComboBox>
#include <QLabel>
#include <QLineEdit>

#include "platform/db/recordset.h"
#include "tests/host/host_test_fixture.h"

namespace orvo::host::test {
namespace {

// A screen's worth of bound controls over a table of the test's own.
class BoundRecordTest : public HostDatabaseTest {
protected:
    void SetUp() override {
        HostDatabaseTest::SetUp();
        if (IsSkipped())
            return;
        schema::Catalog catalog;
        schema::Table table{QStringLiteral("BndTable"), {}, {}};
        const auto add = [&table](const char* name, schema::ColumnType type,
                                  bool identity = false) {
            schema::Column column;
            column.name = QString::fromLatin1(name);
            column.type = type;
            column.identity = column.key = identity;
            table.columns << column;
        };
        add("BndID", schema::ColumnType::Long, true);
        add("BndNam", schema::ColumnType::Text);
        add("BndCit", schema::ColumnType::Text);
        add("BndAct", schema::ColumnType::Short);
        add("BndCou", schema::ColumnType::Long);
        add("BndDat", schema::ColumnType::Date);
        add("BndKin", schema::ColumnType::Text);
        catalog.Add(table);
        schema::Apply(connection(), catalog);
    }

    struct Screen {
        QLineEdit name, city, count, date, unknown;
        QCheckBox active;
        QComboBox kind;
        QLabel caption;
        Screen() {
            name.setProperty("DataField", "bndNAM");  // bound names are in any letter case
            city.setProperty("DataField", "BndCit");
            count.setProperty("DataField", "BndCou");
            date.setProperty("DataField", "BndDat");
            unknown.setProperty("DataField", "NoSuchColumn");
            active.setProperty("DataField", "BndAct");
            kind.setProperty("DataField", "BndKin");
            kind.addItems({"A", "B", "C"});
            caption.setText("not bound");
        }
        FieldHolders holders() {
            return {&name, &city, &count, &date, &unknown, &active, &kind, &caption};
        }
    };

    QString Column(int id, const QString& column) {
        return db::ReadScalar(
                   connection(),
                   QStringLiteral("SELECT %1 FROM BndTable WHERE BndID=%2").arg(column).arg(id))
            .toString();
    }
    bool IsNull(int id, const QString& column) {
        return db::ReadScalar(
                   connection(),
                   QStringLiteral("SELECT Count(*) FROM BndTable WHERE BndID=%2 AND %1 IS NULL")
                       .arg(column)
                       .arg(id))
                   .toInt() == 1;
    }
};

TEST_P(BoundRecordTest, NewRecordIsInsertedAndReadsBack) {
    Screen screen;
    screen.name.setText("O'Brien");
    screen.count.setText("42");
    screen.date.setText("2024-03-15");
    screen.unknown.setText("ignored");
    screen.active.setChecked(true);
    screen.kind.setCurrentText("B");
    int id = 0;
    gic().WriteBoundRecord(id, "BndID", "BndTable", screen.holders());
    ASSERT_GT(id, 0);
    EXPECT_EQ(Column(id, "BndNam"), "O'Brien");
    EXPECT_TRUE(IsNull(id, "BndCit"));  // an empty field is stored as null
    EXPECT_EQ(Column(id, "BndAct"), "1");
    EXPECT_EQ(Column(id, "BndCou"), "42");
    EXPECT_EQ(Column(id, "BndKin"), "B");

    int second = 0;
    Screen other;
    gic().WriteBoundRecord(second, "BndID", "BndTable", other.holders());
    EXPECT_GT(second, id);

    Screen read;
    read.city.setText("left over");
    gic().ReadBoundRecord(id, "BndID", "BndTable", read.holders());
    EXPECT_EQ(read.name.text(), "O'Brien");
    EXPECT_EQ(read.city.text(), "");
    EXPECT_EQ(read.count.text(), "42");
    EXPECT_EQ(read.date.text(), "2024-03-15");
    EXPECT_TRUE(read.active.isChecked());
    EXPECT_EQ(read.kind.currentText(), "B");
    EXPECT_EQ(read.unknown.text(), "");
    EXPECT_EQ(read.caption.text(), "not bound");
}

TEST_P(BoundRecordTest, ExistingRecordIsUpdatedInPlace) {
    Screen screen;
    screen.name.setText("Smith");
    screen.count.setText("7");
    screen.active.setChecked(true);
    int id = 0;
    gic().WriteBoundRecord(id, "BndID", "BndTable", screen.holders());
    const int key = id;
    screen.name.setText("D'Angelo");
    screen.count.clear();
    screen.active.setChecked(false);
    gic().WriteBoundRecord(id, "BndID", "BndTable", screen.holders());
    EXPECT_EQ(id, key);
    EXPECT_EQ(db::ReadScalar(connection(), "SELECT Count(*) FROM BndTable").toInt(), 1);
    EXPECT_EQ(Column(id, "BndNam"), "D'Angelo");
    EXPECT_TRUE(IsNull(id, "BndCou"));
    EXPECT_EQ(Column(id, "BndAct"), "0");

    Screen read;
    read.active.setChecked(true);
    read.count.setText("stale");
    gic().ReadBoundRecord(QVariant(id), "BndID", "BndTable", read.holders());
    EXPECT_EQ(read.name.text(), "D'Angelo");
    EXPECT_EQ(read.count.text(), "");  // null reads as empty text and a clear box
    EXPECT_FALSE(read.active.isChecked());
}

// A write to a row that another station deleted (or that never was) is no save.
TEST_P(BoundRecordTest, WritingARowThatIsGoneThrowsAndInsertsNothing) {
    Screen screen;
    screen.name.setText("Smith");
    int id = 999;
    EXPECT_THROW(gic().WriteBoundRecord(id, "BndID", "BndTable", screen.holders()),
                 db::RowNotFoundError);
    EXPECT_EQ(id, 999);
    EXPECT_EQ(db::ReadScalar(connection(), "SELECT Count(*) FROM BndTable").toInt(), 0);
}

TEST_P(BoundRecordTest, MissingRowLeavesHoldersAlone) {
    Screen read;
    read.name.setText("typed");
    read.active.setChecked(true);
    gic().ReadBoundRecord(999, "BndID", "BndTable", read.holders());
    gic().ReadBoundRecord(QVariant(), "BndID", "BndTable", read.holders());
    EXPECT_EQ(read.name.text(), "typed");
    EXPECT_TRUE(read.active.isChecked());
}

TEST_P(BoundRecordTest, PayerIsReadByItsTextKey) {
    connection().Execute(
        "INSERT INTO ePayerTable (epPayID, epNam, epAddInf) VALUES ('00123', 'Payer''s Name', "
        "'Claims only')");
    connection().Execute("INSERT INTO ePayerTable (epPayID, epNam) VALUES ('123', 'Other')");
    QLineEdit line0, line1, line2;
    line0.setProperty("DataField", "epPayID");
    line1.setProperty("DataField", "epNam");
    line2.setProperty("DataField", "epAddInf");
    gic().ReadBoundRecord(QStringLiteral("00123"), "epPayID", "ePayerTable",
                          {&line0, &line1, &line2});
    EXPECT_EQ(line0.text(), "00123");
    EXPECT_EQ(line1.text(), "Payer's Name");
    EXPECT_EQ(line2.text(), "Claims only");
}

INSTANTIATE_TEST_SUITE_P(Engines, BoundRecordTest, testing::ValuesIn(orvo::test::AllEngines()),
                         orvo::test::EngineParamName());

}  // namespace
}  // namespace orvo::host::test
