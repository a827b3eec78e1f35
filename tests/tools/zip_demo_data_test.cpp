// The demo practice's city, state and zip list: seeded once, every state present, and each zip
// within its state's range of zip prefixes, so that a place typed in under the wrong state or
// with a mistyped zip is caught here and not by a person at the front desk.
#include <QRegularExpression>
#include <QSet>

#include "host/zip_demo_data.h"
#include "tests/tools/zip_test_fixture.h"

namespace orvo::tools::test {
namespace {

struct PrefixRange {
    int first;
    int last;
};

// The first three digits of each state's zips.
const QHash<QString, QList<PrefixRange>>& StatePrefixes() {
    static const QHash<QString, QList<PrefixRange>> prefixes{
        {"AK", {{995, 999}}},
        {"AL", {{350, 369}}},
        {"AR", {{716, 729}}},
        {"AZ", {{850, 865}}},
        {"CA", {{900, 961}}},
        {"CO", {{800, 816}}},
        {"CT", {{60, 69}}},
        {"DC", {{200, 205}}},
        {"DE", {{197, 199}}},
        {"FL", {{320, 349}}},
        {"GA", {{300, 319}, {398, 399}}},
        {"HI", {{967, 968}}},
        {"IA", {{500, 528}}},
        {"ID", {{832, 838}}},
        {"IL", {{600, 629}}},
        {"IN", {{460, 479}}},
        {"KS", {{660, 679}}},
        {"KY", {{400, 427}}},
        {"LA", {{700, 714}}},
        {"MA", {{10, 27}}},
        {"MD", {{206, 219}}},
        {"ME", {{39, 49}}},
        {"MI", {{480, 499}}},
        {"MN", {{550, 567}}},
        {"MO", {{630, 658}}},
        {"MS", {{386, 397}}},
        {"MT", {{590, 599}}},
        {"NC", {{270, 289}}},
        {"ND", {{580, 588}}},
        {"NE", {{680, 693}}},
        {"NH", {{30, 38}}},
        {"NJ", {{70, 89}}},
        {"NM", {{870, 884}}},
        {"NV", {{889, 898}}},
        {"NY", {{100, 149}}},
        {"OH", {{430, 459}}},
        {"OK", {{730, 749}}},
        {"OR", {{970, 979}}},
        {"PA", {{150, 196}}},
        {"RI", {{28, 29}}},
        {"SC", {{290, 299}}},
        {"SD", {{570, 577}}},
        {"TN", {{370, 385}}},
        {"TX", {{750, 799}}},
        {"UT", {{840, 847}}},
        {"VA", {{201, 201}, {220, 246}}},
        {"VT", {{50, 59}}},
        {"WA", {{980, 994}}},
        {"WI", {{530, 549}}},
        {"WV", {{247, 268}}},
        {"WY", {{820, 831}}},
    };
    return prefixes;
}

class ZipDemoDataTest : public ZipDatabaseTest {};

TEST_P(ZipDemoDataTest, SeedsEveryStateOnceWithZipsInTheirStatesRanges) {
    const int seeded = host::SeedDemoZipCodes(Db());
    EXPECT_GE(seeded, 1500);
    EXPECT_LE(seeded, 3000);
    EXPECT_EQ(RowCount(), seeded);
    EXPECT_EQ(host::SeedDemoZipCodes(Db()), 0) << "a list that has rows is left alone";

    const QRegularExpression fiveDigits(QStringLiteral("^\\d{5}$"));
    QSet<QString> states;
    QSet<QString> triples;
    for (db::Recordset rs(Db(), "SELECT ZipCodCit, ZipCodSta, ZipCodZip FROM ZipCodTable");
         !rs.Eof(); rs.MoveNext()) {
        const QString city = rs.Text(0), state = rs.Text(1), zip = rs.Text(2);
        const std::string place = (city + ", " + state + " " + zip).toStdString();
        EXPECT_FALSE(city.isEmpty()) << place;
        EXPECT_LE(city.size(), kZipCityWidth) << place;
        EXPECT_EQ(city, city.trimmed()) << place;
        ASSERT_TRUE(fiveDigits.match(zip).hasMatch()) << place;
        const int prefix = zip.left(3).toInt();
        const QList<PrefixRange> ranges = StatePrefixes().value(state);
        EXPECT_TRUE(std::any_of(ranges.begin(), ranges.end(), [prefix](const PrefixRange& r) {
            return prefix >= r.first && prefix <= r.last;
        })) << place;
        EXPECT_FALSE(triples.contains(city + state + zip)) << "twice: " << place;
        triples.insert(city + state + zip);
        states.insert(state);
    }
    EXPECT_EQ(states.size(), 51);
}

INSTANTIATE_TEST_SUITE_P(Engines, ZipDemoDataTest, testing::ValuesIn(orvo::test::AllEngines()),
                         orvo::test::EngineParamName());

}  // namespace
}  // namespace orvo::tools::test
