#include <gtest/gtest.h>

#include <QDir>
#include <QFile>
#include <QHeaderView>
#include <QStandardItemModel>
#include <QTableView>
#include <QTemporaryDir>

#include "component/grid_layout.h"
#include "platform/file_error.h"
#include "tests/support/qt_print.h"

namespace orvo {
namespace {

class GridLayoutTest : public ::testing::Test {
protected:
    // A grid of four columns; the last one has no field.
    std::unique_ptr<QTableView> Grid(QStandardItemModel& model) {
        model.setColumnCount(4);
        const QStringList fields = {"pLasNam", "pFirNam", "Comments", ""};
        for (int c = 0; c < 4; ++c) {
            model.setHeaderData(c, Qt::Horizontal, fields[c], kGridFieldRole);
            model.setHeaderData(c, Qt::Horizontal, QStringLiteral("Column %1").arg(c));
        }
        auto view = std::make_unique<QTableView>();
        view->setModel(&model);
        for (int c = 0; c < 4; ++c)
            view->horizontalHeader()->resizeSection(c, 100);
        return view;
    }
    QString Write(const QString& key, const QByteArray& text) {
        QDir(data).mkpath(QStringLiteral("STP"));
        QFile file(GridLayoutPath(data, key));
        EXPECT_TRUE(file.open(QIODevice::WriteOnly));
        file.write(text);
        return file.fileName();
    }
    QByteArray Read(const QString& key) {
        QFile file(GridLayoutPath(data, key));
        return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray("<none>");
    }
    static QStringList Order(const QTableView& view) {
        QStringList order;
        const QHeaderView& header = *view.horizontalHeader();
        for (int v = 0; v < header.count(); ++v) {
            const int c = header.logicalIndex(v);
            order << (header.isSectionHidden(c)
                          ? QStringLiteral("(%1)").arg(c)
                          : QStringLiteral("%1:%2").arg(c).arg(header.sectionSize(c)));
        }
        return order;
    }

    QTemporaryDir folder;
    QString data = folder.path() + QLatin1Char('/');
    QStandardItemModel model, model2;
};

TEST_F(GridLayoutTest, OrderWidthsAndHiddenColumnsRoundTrip) {
    auto grid = Grid(model);
    QHeaderView& header = *grid->horizontalHeader();
    header.moveSection(2, 0);  // Comments first
    header.resizeSection(1, 140);
    header.setSectionHidden(0, true);
    grid->verticalHeader()->setDefaultSectionSize(31);
    Save_Grid_Layout({grid.get()}, data, QStringLiteral("SRSC"), true, false);
    EXPECT_EQ(Read("SRSC"),
              "ROWHEIGHT=31\nComments,0,100,0\npLasNam,1,0,0\npFirNam,2,140,0\n3,3,100,0\n");

    auto restored = Grid(model2);
    EXPECT_TRUE(Load_Grid_Layout({restored.get()}, data, QStringLiteral("SRSC"), true, true));
    EXPECT_EQ(Order(*restored), Order(*grid));
    EXPECT_EQ(restored->verticalHeader()->defaultSectionSize(), 31);

    // UseNumbers keys every column by its number, and loads back the same.
    Save_Grid_Layout({grid.get()}, data, QStringLiteral("FlSr"), false, true);
    EXPECT_EQ(Read("FlSr"), "2,0,100,0\n0,1,0,0\n1,2,140,0\n3,3,100,0\n");
    auto numbered = Grid(model2);
    EXPECT_TRUE(Load_Grid_Layout({numbered.get()}, data, QStringLiteral("FlSr"), false, true));
    EXPECT_EQ(Order(*numbered), Order(*grid));
}

TEST_F(GridLayoutTest, ReadingSkipsWhatIsNotAColumnLine) {
    Write(QStringLiteral("FlSr"),
          "ROWHEIGHT=240\r\npFirNam,0,150,0\r\npLasNam,1,90\r\nnoise\r\npLasNam,x,90,0\r\n"
          "ROWHEIGHT=12\r\n");
    auto grid = Grid(model);
    grid->verticalHeader()->setDefaultSectionSize(25);
    // The row height is not asked for: its line is skipped and the columns still apply.
    EXPECT_TRUE(Load_Grid_Layout({grid.get()}, data, QStringLiteral("FlSr"), false, true));
    EXPECT_EQ(grid->verticalHeader()->defaultSectionSize(), 25);
    EXPECT_EQ(Order(*grid), QStringList({"1:150", "0:100", "2:100", "3:100"}));

    auto asked = Grid(model2);
    EXPECT_TRUE(Load_Grid_Layout({asked.get()}, data, QStringLiteral("FlSr"), true, false));
    EXPECT_EQ(asked->verticalHeader()->defaultSectionSize(), 240);
    // Widths left alone when not asked for.
    EXPECT_EQ(Order(*asked), QStringList({"1:100", "0:100", "2:100", "3:100"}));
}

TEST_F(GridLayoutTest, UnknownKeysAndTheCommentsColumnsOldNames) {
    Write(QStringLiteral("K12"), "CCNotes,0,0,0\nNoSuchField,1,55,0\n");
    auto other = Grid(model);
    EXPECT_FALSE(Load_Grid_Layout({other.get()}, data, QStringLiteral("K12"), false, true));
    EXPECT_EQ(Order(*other), QStringList({"0:100", "1:100", "2:100", "3:100"}));
    auto comments = Grid(model2);
    EXPECT_TRUE(Load_Grid_Layout({comments.get()}, data, QStringLiteral("K12"), false, true, 12));
    EXPECT_EQ(Order(*comments), QStringList({"(2)", "0:100", "1:100", "3:100"}));
}

TEST_F(GridLayoutTest, SplitsKeepTheirOwnColumns) {
    auto left = Grid(model);
    auto right = Grid(model);
    right->horizontalHeader()->setSectionHidden(0, true);
    right->horizontalHeader()->resizeSection(3, 60);
    Save_Grid_Layout({left.get(), right.get()}, data, QStringLiteral("SRSC"), false, false);
    auto left2 = Grid(model2);
    auto right2 = Grid(model2);
    EXPECT_TRUE(
        Load_Grid_Layout({left2.get(), right2.get()}, data, QStringLiteral("SRSC"), false, true));
    EXPECT_EQ(Order(*left2), Order(*left));
    EXPECT_EQ(Order(*right2), Order(*right));
}

TEST_F(GridLayoutTest, MissingFileAndUnwritableFolder) {
    auto grid = Grid(model);
    EXPECT_FALSE(Load_Grid_Layout({grid.get()}, data, QStringLiteral("None"), true, true));
    // Keys become file names inside STP/ and nowhere else.
    EXPECT_TRUE(GridLayoutPath(data, QStringLiteral("../x")).startsWith(data + "STP/TG"));
    EXPECT_FALSE(GridLayoutPath(data, QStringLiteral("../x")).contains(QLatin1String("/../")));
    // A file where the STP folder should be: the save says so instead of losing the layout.
    QFile blocker(data + "STP");
    ASSERT_TRUE(blocker.open(QIODevice::WriteOnly));
    blocker.close();
    EXPECT_THROW(Save_Grid_Layout({grid.get()}, data, QStringLiteral("SRSC"), false, false),
                 FileError);
}

}  // namespace
}  // namespace orvo
