// The list's own table model: what it shows after sorting and filtering, and that it stays a
// well-behaved item model through all of it.
#include <gtest/gtest.h>

#include <QAbstractItemModelTester>
#include <QRandomGenerator>
#include <numeric>

#include "lists/list_table_model.h"

namespace orvo::lists {
namespace {

const QStringList kCaptions{"Name", "City", "ID Num"};

QList<QStringList> People() {
    return {
        {"Müller, Zoë", "Köln", "10"},     {"muller, anna", "Berlin", "2"},
        {"Peña, José", "Málaga", "33"},    {"PEÑA, Inés", "Madrid", "4"},
        {"Straße, Bernd", "Wien", "5"},    {"Σωκράτης, Ξ", "Αθήνα", "6"},
        {"O'Brien, Siobhán", "Cork", "7"}, {"Smith, John", "", "8"},
        {"µ-Labs, Ann", "Zürich", "9"},    {"smithers, Waylon", "Springfield", "1"},
    };
}

QStringList Column(const ListTableModel& model, int column) {
    QStringList values;
    for (int row = 0; row < model.rowCount(); ++row)
        values << model.index(row, column).data().toString();
    return values;
}

QList<QVariantList> AsVariants(const QList<QStringList>& rows) {
    QList<QVariantList> out;
    for (const QStringList& row : rows) {
        QVariantList values;
        for (const QString& text : row)
            values << text;
        out << values;
    }
    return out;
}

TEST(ListTableModelTest, StaysAWellBehavedModelThroughEveryChange) {
    ListTableModel model;
    QAbstractItemModelTester tester(&model, QAbstractItemModelTester::FailureReportingMode::Fatal);
    model.LoadRows(kCaptions, People());
    model.SortBy({{1, Qt::AscendingOrder}, {0, Qt::DescendingOrder}});
    model.SetFilter(0, QStringLiteral("s"));
    model.SetMatchAnywhere(true);
    model.SetFilter(1, QStringLiteral("i"));
    model.sort(2, Qt::DescendingOrder);
    model.UpdateRecord(3, {QStringLiteral("Zed"), QStringLiteral("Ávila"), 44});
    model.AppendRecord({QStringLiteral("New, Person"), QVariant(), 99});
    model.ClearFilters();
    model.LoadRows(kCaptions, {});
    EXPECT_EQ(model.rowCount(), 0);
}

TEST(ListTableModelTest, FiltersFoldCaseForEveryScriptAtTheStartOrAnywhere) {
    ListTableModel model;
    model.LoadRows(kCaptions, People());
    model.SortBy({{0, Qt::AscendingOrder}});

    model.SetFilter(0, QStringLiteral("MÜL"));
    EXPECT_EQ(Column(model, 0), QStringList{"Müller, Zoë"});
    model.SetFilter(0, QStringLiteral("peña"));
    EXPECT_EQ(Column(model, 0), (QStringList{"PEÑA, Inés", "Peña, José"}));
    model.SetFilter(0, QStringLiteral("σωκ"));
    EXPECT_EQ(Column(model, 0), QStringList{"Σωκράτης, Ξ"});
    // The micro sign folds to the Greek mu: both spellings find the row.
    model.SetFilter(0, QStringLiteral("μ-"));
    EXPECT_EQ(Column(model, 0), QStringList{"µ-Labs, Ann"});
    // A column of Latin-1 text cannot hold the needle: nothing, and no error.
    model.SetFilter(0, QString());
    model.SetFilter(1, QStringLiteral("Ω"));
    EXPECT_EQ(model.rowCount(), 0);
    model.SetFilter(1, QString());

    model.SetFilter(0, QStringLiteral("smith"));
    EXPECT_EQ(Column(model, 0), (QStringList{"Smith, John", "smithers, Waylon"}));
    model.SetFilter(0, QStringLiteral("JO"));
    EXPECT_EQ(model.rowCount(), 0);
    model.SetMatchAnywhere(true);
    EXPECT_EQ(Column(model, 0), (QStringList{"Peña, José", "Smith, John"}));
    model.SetMatchAnywhere(false);
    EXPECT_EQ(model.rowCount(), 0);
    EXPECT_TRUE(model.HasFilter());
    model.ClearFilters();
    EXPECT_EQ(model.rowCount(), 10);
    EXPECT_FALSE(model.HasFilter());
}

// Typing a filter a key at a time narrows over the rows shown before; the rows must be the
// same as those of the whole filter set at once, however the keys come (back-spaces too).
TEST(ListTableModelTest, FilterTypedKeyByKeyMatchesTheWholeFilterSetAtOnce) {
    QList<QStringList> rows;
    const QStringList syllables{"ma", "mü", "ße", "ro", "Ña", "li", "Σα", "to", "an"};
    QRandomGenerator random(7);
    for (int i = 0; i < 2000; ++i) {
        QString name;
        for (int s = 0; s < 3; ++s)
            name += syllables[random.bounded(syllables.size())];
        rows << QStringList{name, syllables[random.bounded(syllables.size())], QString::number(i)};
    }
    for (const bool anywhere : {false, true}) {
        ListTableModel typed;
        typed.LoadRows(kCaptions, rows);
        typed.SetMatchAnywhere(anywhere);
        typed.SortBy({{0, Qt::AscendingOrder}});
        ListTableModel direct;
        direct.LoadRows(kCaptions, rows);
        direct.SetMatchAnywhere(anywhere);
        direct.SortBy({{0, Qt::AscendingOrder}});
        for (const QString text : {"M", "MA", "MAR", "MARO", "MAR", "MA", "MAß", "Σ", "ΣΑ", ""}) {
            typed.SetFilter(0, text);
            ListTableModel fresh;
            fresh.LoadRows(kCaptions, rows);
            fresh.SetMatchAnywhere(anywhere);
            fresh.SortBy({{0, Qt::AscendingOrder}});
            fresh.SetFilter(0, text);
            ASSERT_EQ(Column(typed, 2), Column(fresh, 2)) << text.toStdString() << anywhere;
        }
        typed.SetFilter(1, QStringLiteral("ro"));
        typed.SetFilter(0, QStringLiteral("ma"));
        direct.SetFilter(0, QStringLiteral("ma"));
        direct.SetFilter(1, QStringLiteral("ro"));
        EXPECT_EQ(Column(typed, 2), Column(direct, 2));
    }
}

TEST(ListTableModelTest, SortsTextFoldedAndNumbersAsNumbersKeepingTheCurrentRow) {
    ListTableModel model;
    QList<QStringList> rows;
    model.LoadRows(kCaptions, {});
    for (const QVariantList& row : AsVariants(People())) {
        QVariantList values = row;
        values[2] = row[2].toString().toInt();  // ids as the engine gives them: numbers
        model.AppendRecord(values);
    }
    model.sort(2, Qt::AscendingOrder);
    EXPECT_EQ(Column(model, 2), (QStringList{"1", "2", "4", "5", "6", "7", "8", "9", "10", "33"}));
    model.SortBy({{0, Qt::AscendingOrder}});
    EXPECT_EQ(Column(model, 0).mid(0, 4),
              (QStringList{"muller, anna", "Müller, Zoë", "O'Brien, Siobhán", "PEÑA, Inés"}));
    const QPersistentModelIndex current = model.index(0, 0);
    model.SortBy({{0, Qt::DescendingOrder}});
    EXPECT_EQ(current.data().toString(), QStringLiteral("muller, anna"));
    EXPECT_EQ(current.row(), model.rowCount() - 1);
}

// Long shared beginnings, texts that are the beginning of others, empty ones, and a column
// beyond Latin-1: the sort must give what comparing the folded texts in full gives.
TEST(ListTableModelTest, SortsAsComparingTheWholeFoldedTextsWouldInEitherDirection) {
    const QStringList names{"Gonzalez-Ruiz",
                            "GONZALEZ-RUIZA",
                            "Gonzalez",
                            "gonzález",
                            "Gonz",
                            "Ng",
                            "ng",
                            "",
                            "Σωκράτης",
                            "σωκ",
                            "Øster"};
    const QStringList firsts{"Ana", "ana", "Zoë", "Ola", ""};
    QList<QStringList> rows;
    QRandomGenerator random(11);
    for (int i = 0; i < 3000; ++i) {
        rows << QStringList{names[random.bounded(names.size())],
                            firsts[random.bounded(firsts.size())], QString::number(i)};
    }
    for (const bool latinOnly : {true, false}) {
        QList<QStringList> list = rows;
        if (latinOnly)
            list.removeIf([](const QStringList& row) {
                return row[0].startsWith(u'σ', Qt::CaseInsensitive);
            });
        for (const Qt::SortOrder order : {Qt::AscendingOrder, Qt::DescendingOrder}) {
            ListTableModel model;
            model.LoadRows(kCaptions, list);
            model.SortBy({{0, order}, {1, Qt::AscendingOrder}});
            std::vector<int> expected(list.size());
            std::iota(expected.begin(), expected.end(), 0);
            std::stable_sort(expected.begin(), expected.end(), [&](int a, int b) {
                const int first = list[a][0].toCaseFolded().compare(list[b][0].toCaseFolded());
                if (first != 0)
                    return order == Qt::AscendingOrder ? first < 0 : first > 0;
                return list[a][1].toCaseFolded().compare(list[b][1].toCaseFolded()) < 0;
            });
            QStringList ids;
            for (const int row : expected)
                ids << list[row][2];
            EXPECT_EQ(Column(model, 2), ids) << latinOnly << order;
        }
    }
}

// Loads the rows (name, city, number) and sorts them by each list of keys: the records must come
// out as a stable sort comparing folded texts and numbers in full puts them, ties in the order
// read.
void ExpectSortedAsAStableSortWould(const QList<QVariantList>& rows,
                                    const QList<QList<SortKey>>& sorts) {
    ListTableModel model;
    model.LoadRows(kCaptions, {});
    for (const QVariantList& row : rows)
        model.AppendRecord(row);
    for (const QList<SortKey>& keys : sorts) {
        model.SortBy(keys);
        std::vector<int> expected(rows.size());
        std::iota(expected.begin(), expected.end(), 0);
        std::stable_sort(expected.begin(), expected.end(), [&](int a, int b) {
            for (const SortKey& key : keys) {
                const QVariant& x = rows[a][key.column];
                const QVariant& y = rows[b][key.column];
                int result;
                if (key.column == 2) {
                    const double u = x.isNull() ? -1e300 : x.toDouble();
                    const double v = y.isNull() ? -1e300 : y.toDouble();
                    result = u < v ? -1 : (u > v ? 1 : 0);
                } else {
                    result = x.toString().toCaseFolded().compare(y.toString().toCaseFolded());
                }
                if (result != 0)
                    return key.order == Qt::AscendingOrder ? result < 0 : result > 0;
            }
            return false;
        });
        std::vector<int> shown(model.rowCount());
        for (int row = 0; row < model.rowCount(); ++row)
            shown[row] = model.RecordOfRow(row);
        const auto differ = std::mismatch(shown.begin(), shown.end(), expected.begin());
        EXPECT_TRUE(differ.first == shown.end())
            << "first wrong row " << (differ.first - shown.begin()) << " of " << shown.size()
            << " by " << keys.size() << " keys";
    }
}

// Keys of both kinds in any direction, texts that differ only in letter case, beginnings shared
// past the first sixteen characters, the lowest character inside a text, a Latin-1 character
// that folds beyond Latin-1, nulls.
TEST(ListTableModelTest, SortsByEveryKeyAsAStableSortOfFoldedTextsAndNumbersWould) {
    const QStringList names{"Van der Berg-Hoffmann, Ann",
                            "VAN DER BERG-HOFFMANN, ANN",
                            "Van der Berg-Hoffmann, Anna",
                            "van der berg-hoffmann",
                            QStringLiteral("ab") + QChar(0),
                            "ab",
                            "µ-Labs",
                            "Μ-labs",
                            "Straße",
                            "STRASSE",
                            "",
                            "Łukasik",
                            "lukasik"};
    const QStringList cities{"Köln", "KÖLN", "Zürich", "", "Ávila", "avila"};
    QList<QVariantList> rows;
    QRandomGenerator random(23);
    for (int i = 0; i < 4000; ++i) {
        // The text with the lowest character inside comes first, before the one it extends.
        const QString name = i == 0 ? names[4] : names[random.bounded(names.size())];
        const QString city = cities[random.bounded(cities.size())];
        const int number = random.bounded(7) - 3;
        rows << QVariantList{name, city.isEmpty() ? QVariant() : QVariant(city),
                             number == 3 ? QVariant() : QVariant(number)};
    }
    const QList<QList<SortKey>> sorts{
        {{0, Qt::AscendingOrder}, {2, Qt::DescendingOrder}},
        {{1, Qt::DescendingOrder}, {0, Qt::AscendingOrder}},
        {{2, Qt::AscendingOrder}, {1, Qt::AscendingOrder}, {0, Qt::DescendingOrder}}};
    ExpectSortedAsAStableSortWould(rows, sorts);
    // Without the texts beyond Latin-1, the keys are compared eight characters at a time.
    rows.removeIf([](const QVariantList& row) {
        const QString name = row[0].toString();
        return name.startsWith(u'Ł') || name.startsWith(u'Μ') || name.startsWith(u'µ');
    });
    ExpectSortedAsAStableSortWould(rows, sorts);
}

// A list of mostly distinct names (companies) is ordered record by record rather than through
// its distinct texts; some names come again later in another letter case, some are equal.
TEST(ListTableModelTest, SortsMostlyDistinctTextsAsAStableSortWould) {
    const QStringList words{"Dental", "Mutual", "Müller", "Peña", "Søren", "Łódź", "Trust"};
    QList<QVariantList> rows;
    QRandomGenerator random(31);
    for (int i = 0; i < 9000; ++i) {
        QString name =
            QStringLiteral("%1 %2 %3")
                .arg(words[random.bounded(words.size())], words[random.bounded(words.size())])
                .arg(random.bounded(100000));
        if (i > 5000 && i % 7 == 0) {
            const QString earlier = rows[random.bounded(i)][0].toString();
            name = i % 2 ? earlier.toUpper() : earlier;
        }
        rows << QVariantList{name, words[random.bounded(words.size())], random.bounded(50)};
    }
    ExpectSortedAsAStableSortWould(rows, {{{0, Qt::AscendingOrder}},
                                          {{0, Qt::DescendingOrder}, {2, Qt::AscendingOrder}},
                                          {{1, Qt::AscendingOrder}, {0, Qt::AscendingOrder}}});
}

// The server's real numbers include NaN: it sorts after every number, nulls before them all.
TEST(ListTableModelTest, NotANumberSortsAfterEveryNumberAndNullBeforeThem) {
    ListTableModel model;
    model.LoadRows(kCaptions, {});
    std::vector<double> numbers;  // of each record, a null as minus infinity
    QRandomGenerator random(5);
    for (int i = 0; i < 300; ++i) {
        const int pick = random.bounded(10);
        const QVariant value = pick == 0   ? QVariant(qQNaN())
                               : pick == 1 ? QVariant()
                                           : QVariant(random.bounded(100.0) - 50);
        numbers.push_back(value.isNull() ? -qInf() : value.toDouble());
        model.AppendRecord({QString::number(i), QString(), value});
    }
    const auto less = [](double x, double y) { return std::isnan(y) ? !std::isnan(x) : x < y; };
    for (const Qt::SortOrder order : {Qt::AscendingOrder, Qt::DescendingOrder}) {
        model.sort(2, order);
        std::vector<double> shown;
        for (int row = 0; row < model.rowCount(); ++row)
            shown.push_back(numbers[model.RecordOfRow(row)]);
        if (order == Qt::DescendingOrder)
            std::reverse(shown.begin(), shown.end());
        EXPECT_TRUE(std::is_sorted(shown.begin(), shown.end(), less)) << order;
        EXPECT_TRUE(std::isnan(shown.back()));
        EXPECT_EQ(shown.front(), -qInf());
    }
}

TEST(ListTableModelTest, AnEditedRecordIsPutInPlaceAndItsNeighboursStay) {
    ListTableModel model;
    model.LoadRows(kCaptions, People());
    // A record in the middle grows, gains a character beyond Latin-1, and goes null.
    model.UpdateRecord(4, {QStringLiteral("Straße-Łukasz, Bernd Maximilian"), QVariant(), 5});
    for (int r = 0; r < model.TotalRows(); ++r) {
        if (r == 4)
            continue;
        EXPECT_EQ(model.RecordText(r, 0), People()[r][0]);
        EXPECT_EQ(model.RecordText(r, 1), People()[r][1]);
    }
    EXPECT_EQ(model.RecordText(4, 0), QStringLiteral("Straße-Łukasz, Bernd Maximilian"));
    EXPECT_TRUE(model.RecordIsNull(4, 1));
    model.SetFilter(0, QStringLiteral("STRASSE"));
    EXPECT_EQ(model.rowCount(), 0);  // simple folding: ß stays ß
    model.SetFilter(0, QStringLiteral("straße-ł"));
    EXPECT_EQ(model.rowCount(), 1);
    EXPECT_EQ(model.FindRecord(2, 5), 4);
    EXPECT_EQ(model.FindRecord(2, 404), -1);
}

// A column's folded text is made when it is first sorted or filtered on: edits made before that
// and edits made after it must be found alike.
TEST(ListTableModelTest, EditsBeforeAndAfterAColumnIsFirstFoldedAreFoundAlike) {
    const auto edit = [](ListTableModel& model) {
        model.UpdateRecord(1, {QStringLiteral("ÅNGSTRÖM, Öla"), QStringLiteral("ÉVORA"), 2});
        model.UpdateRecord(7, {QStringLiteral("smith, john"), QStringLiteral("Σπάρτη"), 8});
        model.AppendRecord({QStringLiteral("Ørsted, Hans"), QStringLiteral("évora"), 11});
    };
    ListTableModel foldedFirst;
    foldedFirst.LoadRows(kCaptions, People());
    foldedFirst.SortBy({{0, Qt::AscendingOrder}});
    foldedFirst.SetFilter(1, QStringLiteral("k"));
    foldedFirst.ClearFilters();
    edit(foldedFirst);
    ListTableModel editedFirst;
    editedFirst.LoadRows(kCaptions, People());
    edit(editedFirst);
    editedFirst.SortBy({{0, Qt::AscendingOrder}});

    const QList<std::pair<int, QString>> filters{{0, "ång"}, {0, "ØR"}, {0, "smith"},
                                                 {1, "évo"}, {1, "σπ"}, {1, "köln"}};
    const QList<QStringList> expected{{"2"}, {"11"}, {"8", "1"}, {"2", "11"}, {"8"}, {"10"}};
    for (qsizetype i = 0; i < filters.size(); ++i) {
        for (ListTableModel* model : {&foldedFirst, &editedFirst}) {
            model->SetFilter(filters[i].first, filters[i].second);
            QStringList ids = Column(*model, 2);
            ids.sort();
            QStringList want = expected[i];
            want.sort();
            EXPECT_EQ(ids, want) << filters[i].second.toStdString();
            model->ClearFilters();
        }
    }
}

// Names and addresses of a practice are mostly Latin-1: the list keeps them, folded twins
// included, in less than the room their text takes in a QString.
TEST(ListTableModelTest, KeepsLatinTextMoreCompactlyThanTheStringsItCameFrom) {
    QList<QStringList> rows;
    size_t raw = 0;
    for (int i = 0; i < 5000; ++i) {
        const QStringList row{QStringLiteral("Gonçalves-Müller, María %1").arg(i),
                              QStringLiteral("%1 Maple Avenue").arg(i), QString::number(i)};
        for (const QString& text : row)
            raw += text.size() * sizeof(QChar);
        rows << row;
    }
    ListTableModel model;
    model.LoadRows(kCaptions, rows);
    EXPECT_LT(model.MemoryBytes(), raw * 2);
}

// Texts arriving in UTF-8 (as the engines send them) read as Qt decodes them: ASCII in runs
// longer and shorter than a word, Latin-1, characters beyond it that widen the pool part way,
// four-byte characters, and malformed bytes.
TEST(ListTableModelTest, TextsInUtf8ReadAsQtDecodesThem) {
    const QList<QByteArray> texts{"",
                                  "Smith",
                                  "Columbus Dental Benefit Trust 4021",
                                  "Pe\xc3\xb1a, Jos\xc3\xa9 \xc3\x86r\xc3\xb8 \xc2\xb5",
                                  "\xc3",                      // cut short
                                  "ab\xc3(cdefghijkl",         // a lead byte without its follower
                                  "\xc0\xaf overlong",         // an overlong form
                                  "\xff\xfe",                  // never in UTF-8
                                  "abcdefgh\xc3\xa9abcdefgh",  // Latin-1 between two words of ASCII
                                  "\xc5\x81ukasik",  // beyond Latin-1: the pool widens here
                                  "Zo\xc3\xab \xf0\x9f\x98\x80",  // four bytes: two UTF-16 units
                                  "plain again",
                                  "\xc3"};
    for (const bool wideFirst : {false, true}) {
        TextPool pool;
        std::vector<uint32_t> offsets{0};
        if (wideFirst) {
            pool.AppendUtf8("\xce\xa3", 2);
            offsets.push_back(static_cast<uint32_t>(pool.size()));
        }
        for (const QByteArray& text : texts) {
            pool.AppendUtf8(text.constData(), text.size());
            offsets.push_back(static_cast<uint32_t>(pool.size()));
        }
        const size_t first = wideFirst ? 1 : 0;
        for (qsizetype i = 0; i < texts.size(); ++i) {
            EXPECT_EQ(pool.Text(offsets[first + i], offsets[first + i + 1]),
                      QString::fromUtf8(texts[i]))
                << i << " wide first: " << wideFirst;
        }
        EXPECT_TRUE(pool.wide());
    }
}

}  // namespace
}  // namespace orvo::lists
