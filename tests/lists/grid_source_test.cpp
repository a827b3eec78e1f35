// Reading a list's SELECT: its columns, its sort, the kind-2 rule and the one-record lookup.
#include <gtest/gtest.h>

#include "lists/grid_source.h"
#include "lists/list_definitions.h"

namespace orvo::lists {
namespace {

TEST(GridSourceTest, CaptionsComeFromTheAliasesOfEveryDefinition) {
    const ListDefinition heads = DefineList(lulFamilyHead, {});
    const GridSource source = BuildGridSource(heads.SQL, heads.SortBy);
    EXPECT_EQ(source.captions,
              (QStringList{"Name", "Last Name", "First Name", "Title", "Business Phone",
                           "Home Phone", "Home Address 1", "Home Address 2", "City", "State", "Zip",
                           "ID Num", "Location"}));
    EXPECT_EQ(source.sort, (QStringList{"[Last Name]", "[First Name]"}));
    EXPECT_FALSE(source.sortFromOrderBy);
    // Each definition's key, name and sort columns are among its captions.
    for (int type = lulProvider; type <= lulCapPlans; ++type) {
        const ListDefinition d = DefineList(static_cast<LookUpListTypes>(type), {});
        const GridSource s = BuildGridSource(d.SQL, d.SortBy);
        EXPECT_TRUE(s.captions.contains(d.IDField)) << type;
        EXPECT_TRUE(s.captions.contains(d.NameField)) << type;
        for (const QString& column : s.sort)
            EXPECT_TRUE(s.captions.contains(StripBrackets(column))) << type;
        for (const QString& field : SplitSearchFields(d.SearchFields))
            EXPECT_TRUE(s.captions.contains(StripBrackets(field))) << type;
    }
}

TEST(GridSourceTest, AnOrderByWinsOverTheSortAndQuotedCommasDoNotSplit) {
    const GridSource source = BuildGridSource(
        "SELECT DISTINCT a.x+', '+a.y AS [Full, Name], trim(b.z) as Spec\r\nFROM a ORDER BY "
        "trim(b.z) asc, a.x DESC;",
        "[Full, Name]");
    EXPECT_EQ(source.captions, (QStringList{"Full, Name", "Spec"}));
    EXPECT_TRUE(source.sortFromOrderBy);
    EXPECT_EQ(source.sort, (QStringList{"trim(b.z) asc", "a.x DESC"}));
}

TEST(GridSourceTest, DistinctRowBecomesDistinctOnEveryKindButTheFirst) {
    const QString sql = DefineList(lulInsuranceCo, {}).SQL;
    EXPECT_EQ(ListSqlForKind(sql, 1), sql);
    const QString server = ListSqlForKind(sql, 2);
    EXPECT_FALSE(server.contains(QStringLiteral("DISTINCTROW"), Qt::CaseInsensitive));
    EXPECT_TRUE(server.startsWith(QStringLiteral("SELECT DISTINCT InsCoTable.InsCoNam")));
}

TEST(GridSourceTest, LookupNarrowsToTheKeyKeepingTheListsOwnCondition) {
    const QString heads = DefineList(lulFamilyHead, {.FamHeadIncPatID = 7}).SQL;
    EXPECT_TRUE(LookupSql(heads, QStringLiteral("ID Num"), 12)
                    .endsWith(QStringLiteral("WHERE ((NOT (FMIndTable.FMIndPatTabID IS Null)) or "
                                             "(PATABLE.pID=7)) and PATABLE.pID=12")));
    const QString carriers = DefineList(lulInsuranceCo, {}).SQL;
    EXPECT_TRUE(LookupSql(carriers, QStringLiteral("Ins ID"), 3)
                    .endsWith(QStringLiteral("FROM InsCoTable Where InsCoTable.InsCoInd=3")));
    const QString recalls = DefineList(lulRecallMaster, {}).SQL;
    EXPECT_TRUE(LookupSql(recalls, QStringLiteral("ID #"), 2)
                    .endsWith(QStringLiteral("WHERE (RCRecNum <> 0) and RSTable.RCRecNum=2")));
}

TEST(ListDefinitionsTest, TitlesAndBannersFollowTheHostAndTheCarrier) {
    EXPECT_EQ(DefineList(lulGroupPlan, {}).Caption, QStringLiteral("Insurance Plan List"));
    ListOptions forCarrier;
    forCarrier.GroupPlanCompanyID = 4;
    forCarrier.CarrierName = QStringLiteral("Bluewater");
    const ListDefinition plans = DefineList(lulGroupPlan, forCarrier);
    EXPECT_EQ(plans.Caption, QStringLiteral("Insurance Plan List for Bluewater"));
    EXPECT_TRUE(plans.SQL.endsWith(QStringLiteral("WHERE GroPlaTable.GroPlaInsID=4")));
    EXPECT_EQ(DefineList(lulFamilyHead, {.ListTitle = "Patients"}).Banner,
              QStringLiteral("  Loading Patients - Please Wait  "));
    EXPECT_EQ(DefineList(lulReferral, {}).Banner,
              QStringLiteral("  Loading Referred By List - Please Wait  "));
    EXPECT_TRUE(DefineList(lulCapPlans, {}).Banner.isEmpty());
    EXPECT_EQ(DefineList(lulInsuranceCo, {.bSelectMode = true}).LayoutKey,
              QStringLiteral("frmTGList_INSS"));
    EXPECT_EQ(DefineList(lulRecallMaster, {.bSelectMode = true}).LayoutKey,
              QStringLiteral("frmTGList_RCMA"));
}

}  // namespace
}  // namespace orvo::lists
