#include "bench/gen/zip_gen.h"

#include <QString>
#include <QStringList>
#include <algorithm>
#include <random>
#include "platform/db/sql_text.h"

namespace orvo::bench {
namespace {

constexpr int kRowsPerInsert = 500;

// Each state with the first three digits of its zips.
struct State {
    const char* code;
    int firstPrefix;
    int lastPrefix;
};

const State kStates[] = {
    {"AL", 350, 369}, {"AK", 995, 999}, {"AZ", 850, 865}, {"AR", 716, 729}, {"CA", 900, 961},
    {"CO", 800, 816}, {"CT", 60, 69},   {"DE", 197, 199}, {"DC", 200, 205}, {"FL", 320, 349},
    {"GA", 300, 319}, {"HI", 967, 968}, {"ID", 832, 838}, {"IL", 600, 629}, {"IN", 460, 479},
    {"IA", 500, 528}, {"KS", 660, 679}, {"KY", 400, 427}, {"LA", 700, 714}, {"ME", 39, 49},
    {"MD", 206, 219}, {"MA", 10, 27},   {"MI", 480, 499}, {"MN", 550, 567}, {"MS", 386, 397},
    {"MO", 630, 658}, {"MT", 590, 599}, {"NE", 680, 693}, {"NV", 889, 898}, {"NH", 30, 38},
    {"NJ", 70, 89},   {"NM", 870, 884}, {"NY", 100, 149}, {"NC", 270, 289}, {"ND", 580, 588},
    {"OH", 430, 458}, {"OK", 730, 749}, {"OR", 970, 979}, {"PA", 150, 196}, {"RI", 28, 29},
    {"SC", 290, 299}, {"SD", 570, 577}, {"TN", 370, 385}, {"TX", 750, 799}, {"UT", 840, 847},
    {"VT", 50, 59},   {"VA", 220, 246}, {"WA", 980, 994}, {"WV", 247, 268}, {"WI", 530, 549},
    {"WY", 820, 831},
};

const char* const kStems[] = {
    "Spring", "Oak",     "Maple",  "Cedar", "Pine",    "Elm",     "Ash",   "Birch",  "Clear",
    "Fair",   "Green",   "Red",    "White", "Black",   "Silver",  "Gold",  "Stone",  "Rock",
    "Sand",   "Lake",    "River",  "Brook", "Mill",    "Bridge",  "Glen",  "Wood",   "Elk",
    "Deer",   "Fox",     "Bear",   "Eagle", "Hawk",    "Crane",   "Marsh", "Meadow", "Plain",
    "Sunny",  "Harbor",  "Bay",    "Port",  "North",   "South",   "East",  "West",   "Center",
    "Union",  "Liberty", "Marion", "Salem", "Dover",   "Belle",   "Grand", "Mount",  "High",
    "Long",   "Round",   "Blue",   "Hunt",  "Chester", "Bristol", "Wal",   "Rich",   "Ken",
};

// Names that many states share.
const char* const kCommonNames[] = {
    "Springfield", "Franklin", "Clinton", "Madison",   "Washington",  "Georgetown", "Greenville",
    "Salem",       "Fairview", "Jackson", "Marion",    "Arlington",   "Ashland",    "Burlington",
    "Manchester",  "Milton",   "Oakland", "Riverside", "Centerville", "Lebanon",    "Kingston",
};

const char* const kEndings[] = {
    "field",  "ville",    "ton",   "town",   "burg",   "port",    "wood",   "dale",      "view",
    "land",   "ford",     "brook", "mont",   "haven",  "side",    "crest",  " City",     " Springs",
    " Falls", " Heights", " Park", " Grove", " Hills", " Valley", " Creek", " Junction", " Center",
};

const char* const kPrefixes[] = {"North ", "South ", "East ", "West ", "New ",
                                 "Fort ",  "Mount ", "Lake ", "Port ", "Saint "};

template <class T, std::size_t N>
const T& Pick(const T (&items)[N], std::mt19937& random) {
    return items[std::uniform_int_distribution<std::size_t>(0, N - 1)(random)];
}

}  // namespace

int GenerateZipCodes(db::Connection& connection, int rows, unsigned seed) {
    std::mt19937 random(seed);
    std::uniform_int_distribution<int> percent(0, 99);
    std::uniform_int_distribution<int> zipsPerPlace(1, 9);
    db::Transaction transaction(connection);
    QStringList values;
    int inserted = 0;
    while (inserted < rows) {
        // One place: a shared name, or a stem and an ending, now and then behind a direction or
        // a "Fort".
        QString city = percent(random) < 10
                           ? QString::fromLatin1(Pick(kCommonNames, random))
                           : QString::fromLatin1(Pick(kStems, random)) + Pick(kEndings, random);
        if (percent(random) < 15)
            city = QString::fromLatin1(Pick(kPrefixes, random)) + city;
        const State& state = Pick(kStates, random);
        const int prefix =
            std::uniform_int_distribution<int>(state.firstPrefix, state.lastPrefix)(random);
        int zip = prefix * 100 + std::uniform_int_distribution<int>(1, 90)(random);
        for (int n = std::min(zipsPerPlace(random), rows - inserted); n > 0; --n, ++inserted) {
            values << QStringLiteral("(%1, '%2', '%3')")
                          .arg(db::QuoteText(city.left(30)), QLatin1String(state.code))
                          .arg(zip++, 5, 10, QLatin1Char('0'));
            if (values.size() == kRowsPerInsert) {
                connection.Execute(
                    QStringLiteral(
                        "INSERT INTO ZipCodTable (ZipCodCit, ZipCodSta, ZipCodZip) VALUES ") +
                    values.join(QStringLiteral(", ")));
                values.clear();
            }
        }
    }
    if (!values.isEmpty()) {
        connection.Execute(
            QStringLiteral("INSERT INTO ZipCodTable (ZipCodCit, ZipCodSta, ZipCodZip) VALUES ") +
            values.join(QStringLiteral(", ")));
    }
    transaction.Commit();
    return inserted;
}

}  // namespace orvo::bench
