// The city, state and zip engine on both engines: the split of a typed line under both settings
// of NON_US_ZIP_CODE, the exact-row lookup, the search as typed with its prefix selection and its
// STOP key, and the add, edit and delete commands with their questions.
#include "tests/tools/zip_test_fixture.h"

namespace orvo::tools::test {
namespace {

using db::Engine;

struct Case {
    const char* text;
    ZipParts expected;
};

class ZipCodeTest : public ZipDatabaseTest {
protected:
    ZipParts Parse(const QString& text) {
        ZipParts parts;
        ParseCityStateZip(gic(), text, parts.city, parts.state, parts.zip);
        return parts;
    }
    static QStringList Lines(const ZipSearchResult& result) {
        QStringList lines;
        for (const ZipRow& row : result.rows)
            lines << row.line;
        return lines;
    }
    // Abbeville, Nulltown, Peoria, Springdale, Springfield x4, Stoughton, Yuma by city.
    void AddPlaces() {
        AddRow("Springfield", "IL", "62704");
        AddRow("Peoria", "IL", "61602");
        AddRow("Springfield", "MO", "65802");
        AddRow("Springfield", "IL", "62701");
        AddRow("Springdale", "AR", "72762");
        AddRow("Springfield", "MA", "01103");
        AddRow("Stoughton", "WI", "53589");
        AddRow("Nulltown", "", "12345");
        AddRow("Abbeville", "LA", "70510");
        AddRow("Yuma", "AZ", "85364");
    }
};

TEST_P(ZipCodeTest, ParseTakesTheFirstRunOfDigitsAndHyphensWhenZipsAreUs) {
    SetNonUsZip(false);
    const Case cases[] = {
        {"Springfield IL 62704", {"Springfield", "IL", "62704"}},
        {"  Salt Lake City UT 84101-1234 ", {"Salt Lake City", "UT", "84101-1234"}},
        {"Springfield, IL 62704", {"Springfield", "IL", "62704"}},
        {"Springfield 62704 IL", {"Springfield", "IL", "62704"}},
        // A hyphen in a name is no zip.
        {"Winston-Salem NC 27101", {"Winston-Salem", "NC", "27101"}},
        {"Toronto ON M5V 3L9", {"Toronto ON MV 3L9", "", "5"}},
        {"62704", {"", "", "62704"}},
        {"Springfield", {"Springfield", "", ""}},
        {"Rye NY", {"Rye", "NY", ""}},
        // Four characters cannot hold a city and a state.
        {"A IL", {"A IL", "", ""}},
    };
    for (const Case& c : cases)
        EXPECT_EQ(Parse(c.text), c.expected) << c.text;
}

TEST_P(ZipCodeTest, ParseKeepsPostalCodesWholeWhenZipsAreFreeText) {
    SetNonUsZip(true);
    const Case cases[] = {
        {"Springfield IL 62704", {"Springfield", "IL", "62704"}},
        {"Winston-Salem NC 27101-4120", {"Winston-Salem", "NC", "27101-4120"}},
        {"Twentynine Palms CA 92277", {"Twentynine Palms", "CA", "92277"}},
        {"Toronto ON M5V 3L9", {"Toronto ON", "", "M5V 3L9"}},
        {"London SW1A 1AA", {"London", "", "SW1A 1AA"}},
        {"Amsterdam 1012 AB", {"Amsterdam", "", "1012 AB"}},
        // No postal code: the whole line is the city.
        {"New York NY", {"New York NY", "", ""}},
        {"Springfield", {"Springfield", "", ""}},
    };
    for (const Case& c : cases)
        EXPECT_EQ(Parse(c.text), c.expected) << c.text;
}

TEST_P(ZipCodeTest, ParseOfAnEmptyLineWritesNothing) {
    ZipParts parts{"Peoria", "IL", "61602"};
    ParseCityStateZip(gic(), "   ", parts.city, parts.state, parts.zip);
    EXPECT_EQ(parts, (ZipParts{"Peoria", "IL", "61602"}));
}

TEST_P(ZipCodeTest, FindZipCodeIdMatchesAllThreePartsInAnyCase) {
    const int springfield = AddRow("Springfield", "IL", "62704");
    AddRow("Springfield", "MO", "65802");
    const int ofallon = AddRow("O'Fallon", "IL", "62269");
    EXPECT_EQ(FindZipCodeID(gic(), "Springfield", "IL", "62704"), springfield);
    EXPECT_EQ(FindZipCodeID(gic(), "SPRINGFIELD", "il", "62704"), springfield);
    EXPECT_EQ(FindZipCodeID(gic(), "O'Fallon", "IL", "62269"), ofallon);
    EXPECT_EQ(FindZipCodeID(gic(), "Springfield", "IL", "62703"), 0);
    EXPECT_EQ(FindZipCodeID(gic(), "Springfield", "MO", "62704"), 0);
}

TEST_P(ZipCodeTest, CitySearchListsRowsFromTheKeyAndSelectsTheFirstThatBeginsWithIt) {
    AddPlaces();
    // Lower case: the column compares without case, the prefix test upper-cases.
    ZipSearchResult result = SearchZip(gic(), ZipMode::City, "spr", 3);
    EXPECT_FALSE(result.stopped);
    EXPECT_EQ(Lines(result), (QStringList{"Springdale, AR 72762", "Springfield, MA 01103",
                                          "Springfield, IL 62701"}));
    EXPECT_EQ(result.selected, 0);
    EXPECT_EQ(result.rows[1].parts, (ZipParts{"Springfield", "MA", "01103"}));

    result = SearchZip(gic(), ZipMode::City, "Springfield", 3);
    EXPECT_EQ(Lines(result), (QStringList{"Springfield, MA 01103", "Springfield, IL 62701",
                                          "Springfield, IL 62704"}));

    // Nothing begins with the key: the rows after it, none selected.
    result = SearchZip(gic(), ZipMode::City, "Sq", 3);
    EXPECT_EQ(Lines(result), (QStringList{"Stoughton, WI 53589", "Yuma, AZ 85364"}));
    EXPECT_EQ(result.selected, -1);
}

TEST_P(ZipCodeTest, SearchBeforeTheFirstRowShowsTheStartAndPastTheEndNothing) {
    AddPlaces();
    for (const QString key : {"", "A"}) {
        const ZipSearchResult result = SearchZip(gic(), ZipMode::City, key, 3);
        EXPECT_EQ(Lines(result),
                  (QStringList{"Abbeville, LA 70510", "Nulltown, 12345", "Peoria, IL 61602"}))
            << key.toStdString();
    }
    const ZipSearchResult past = SearchZip(gic(), ZipMode::City, "Zz", 3);
    EXPECT_TRUE(past.rows.isEmpty());
    EXPECT_EQ(past.selected, -1);
}

TEST_P(ZipCodeTest, ZipSearchOrdersByZipAndLeadsEachLineWithIt) {
    AddPlaces();
    const ZipSearchResult result = SearchZip(gic(), ZipMode::Zip, "1", 3);
    EXPECT_EQ(Lines(result),
              (QStringList{"12345 Nulltown", "53589 Stoughton, WI", "61602 Peoria, IL"}));
    EXPECT_EQ(result.selected, 0);
    EXPECT_EQ(SearchZip(gic(), ZipMode::Zip, "615", 3).selected, -1);
}

TEST_P(ZipCodeTest, StopKeyEndsThePanelWithoutSearching) {
    AddPlaces();
    // "Stoughton" sorts after "STOP": a search would have listed it.
    for (const QString key : {"STOP", "STOPPED"}) {
        const ZipSearchResult result = SearchZip(gic(), ZipMode::City, key, 3);
        EXPECT_TRUE(result.stopped);
        EXPECT_TRUE(result.rows.isEmpty());
        EXPECT_EQ(result.selected, -1);
    }
}

TEST_P(ZipCodeTest, EntriesSplitByTheFieldTheyWereTypedIn) {
    SetNonUsZip(false);
    const struct {
        ZipMode mode;
        const char* entry;
        ZipParts expected;
    } cases[] = {
        {ZipMode::City, "Smallville, KS 66002", {"Smallville", "KS", "66002"}},
        {ZipMode::City, "Kansas City, Kansas, MO 64105", {"Kansas City, Kansas", "MO", "64105"}},
        {ZipMode::City, "Smallville KS 66002", {"Smallville", "KS", "66002"}},
        {ZipMode::City, "Smallville, 66002", {"Smallville", "", "66002"}},
        {ZipMode::City, "Smallville", {"Smallville", "", ""}},
        {ZipMode::Zip, "66002 Smallville, KS", {"Smallville", "KS", "66002"}},
        {ZipMode::Zip, "66002 Smallville KS", {"Smallville", "KS", "66002"}},
        {ZipMode::Zip, "M5V 3L9 Toronto, ON", {"Toronto", "ON", "M5V 3L9"}},
        {ZipMode::Zip, "66002", {"", "", "66002"}},
    };
    for (const auto& c : cases)
        EXPECT_EQ(SplitZipEntry(gic(), c.mode, c.entry), c.expected) << c.entry;
}

TEST_P(ZipCodeTest, AddAsksAndStoresTheEntrySplitByItsField) {
    prompts_.Expect(kZipTitle, "Add [ Smallville, KS 66002 ] to database", AnswerNo);
    EXPECT_EQ(AddZipCode(gic(), ZipMode::City, " Smallville, KS 66002 "), 0);
    EXPECT_EQ(RowCount(), 0);

    prompts_.Expect(kZipTitle, "Add [ Smallville, ks 66002 ] to database", AnswerYes);
    const int city = AddZipCode(gic(), ZipMode::City, "Smallville, ks 66002");
    ASSERT_GT(city, 0);
    EXPECT_EQ(Stored(city), (ZipParts{"Smallville", "KS", "66002"}));
    EXPECT_EQ(FindZipCodeID(gic(), "Smallville", "KS", "66002"), city);

    SetNonUsZip(true);
    prompts_.Expect(kZipTitle, "Add [ K1A 0B1 Ottawa, ON ] to database", AnswerYes);
    const int zip = AddZipCode(gic(), ZipMode::Zip, "K1A 0B1 Ottawa, ON");
    EXPECT_EQ(Stored(zip), (ZipParts{"Ottawa", "ON", "K1A 0B1"}));

    EXPECT_EQ(AddZipCode(gic(), ZipMode::City, "   "), 0);
    EXPECT_EQ(RowCount(), 2);
}

TEST_P(ZipCodeTest, EditAsksThenStoresTheCorrectedLine) {
    const int id = AddRow("Sprngfield", "IL", "62704");
    const int other = AddRow("Peoria", "IL", "61602");
    const ZipRow row = *ReadZipRow(gic(), ZipMode::City, id);

    prompts_.Expect(kZipTitle, "Edit [ Sprngfield, IL 62704 ] ?", AnswerNo);
    EXPECT_FALSE(EditZipCode(gic(), ZipMode::City, row));

    prompts_.Expect(kZipTitle, "Edit [ Sprngfield, IL 62704 ] ?", AnswerYes)
        .ExpectInput(kZipTitle, "City, State Zip", std::nullopt);
    EXPECT_FALSE(EditZipCode(gic(), ZipMode::City, row));
    EXPECT_EQ(Stored(id), (ZipParts{"Sprngfield", "IL", "62704"}));

    prompts_.Expect(kZipTitle, "Edit [ Sprngfield, IL 62704 ] ?", AnswerYes)
        .ExpectInput(kZipTitle, "City, State Zip", "Springfield, IL 62704");
    EXPECT_TRUE(EditZipCode(gic(), ZipMode::City, row));
    EXPECT_EQ(Stored(id), (ZipParts{"Springfield", "IL", "62704"}));
    EXPECT_EQ(Stored(other), (ZipParts{"Peoria", "IL", "61602"}));

    // Deleted by another station meanwhile: nothing to correct, no second question.
    Db().Execute(QStringLiteral("DELETE FROM ZipCodTable WHERE ZipCodID=%1").arg(id));
    prompts_.Expect(kZipTitle, "Edit [ Sprngfield, IL 62704 ] ?", AnswerYes);
    EXPECT_FALSE(EditZipCode(gic(), ZipMode::City, row));
}

TEST_P(ZipCodeTest, DeleteAsksAndRemovesOnlyThatRow) {
    const int id = AddRow("Springfield", "IL", "62704");
    const int other = AddRow("Springfield", "IL", "62701");
    const ZipRow row = *ReadZipRow(gic(), ZipMode::Zip, id);

    prompts_.Expect(kZipTitle, "Delete [ 62704 Springfield, IL ] ?", AnswerNo);
    EXPECT_FALSE(DeleteZipCode(gic(), row));
    EXPECT_EQ(RowCount(), 2);

    prompts_.Expect(kZipTitle, "Delete [ 62704 Springfield, IL ] ?", AnswerYes);
    EXPECT_TRUE(DeleteZipCode(gic(), row));
    EXPECT_EQ(Stored(id).city, "<no row>");
    EXPECT_EQ(Stored(other).zip, "62701");
}

TEST_P(ZipCodeTest, MatchFindsTheFirstRowAgreeingWithEveryGivenPart) {
    AddPlaces();
    EXPECT_EQ(MatchZipParts(gic(), ZipMode::City, {"springfield", "", ""})->parts.zip, "01103");
    EXPECT_EQ(MatchZipParts(gic(), ZipMode::Zip, {"", "", "62704"})->parts.city, "Springfield");
    EXPECT_EQ(MatchZipParts(gic(), ZipMode::City, {"Springfield", "IL", ""})->parts.zip, "62701");
    EXPECT_FALSE(MatchZipParts(gic(), ZipMode::City, {"Springfield", "AR", ""}));
    EXPECT_FALSE(MatchZipParts(gic(), ZipMode::City, {}));
}

INSTANTIATE_TEST_SUITE_P(Engines, ZipCodeTest, testing::ValuesIn(orvo::test::AllEngines()),
                         orvo::test::EngineParamName());

}  // namespace
}  // namespace orvo::tools::test
