#include <QDate>

#include "platform/db/recordset.h"
#include "tests/host/host_test_fixture.h"

namespace orvo::host::test {
namespace {

using SettingsTest = HostDatabaseTest;

const QString kOffice = QStringLiteral("DEFAULT_OFFICE_SETUP");

TEST_P(SettingsTest, NothingStoredAnswersTheDefaultWithItsType) {
    const QVariant money = gic().ReadSetting(kOffice, "INS_ANN_COV", 0, QStringLiteral("1000.00"));
    EXPECT_EQ(money.typeId(), QMetaType::QString);
    EXPECT_EQ(money.toString(), "1000.00");
    const QVariant flag = gic().ReadSetting(kOffice, "SEC_DEL_PAT", 0, true);
    EXPECT_EQ(flag.typeId(), QMetaType::Bool);
    EXPECT_TRUE(flag.toBool());
    EXPECT_FALSE(gic().ReadSetting(kOffice, "NOTHING", 0, QVariant()).isValid());
}

TEST_P(SettingsTest, ValuesComeBackWithTheirTypes) {
    const QList<QVariant> values{
        true, false, 42, 2.5, QStringLiteral("Smith's \"office\" 100%1"), QDate(2023, 12, 31)};
    for (int i = 0; i < values.size(); ++i) {
        const QString key = QStringLiteral("KEY%1").arg(i);
        gic().WriteSetting(kOffice, key, 0, values[i]);
        // With a typed default the default's type decides; without one, the stored type.
        const QVariant typed = gic().ReadSetting(kOffice, key, 0, QVariant(values[i].metaType()));
        const QVariant untyped = gic().ReadSetting(kOffice, key, 0, QVariant());
        for (const QVariant& read : {typed, untyped}) {
            EXPECT_EQ(read.typeId(), values[i].typeId()) << key.toStdString();
            EXPECT_EQ(read, values[i]) << key.toStdString();
        }
    }
}

TEST_P(SettingsTest, FlagsStoredAsTextReadAsBooleans) {
    const QList<std::pair<QString, bool>> stored{{"True", true}, {"False", false}, {"1", true},
                                                 {"0", false},   {"-1", true},     {"TRUE", true}};
    for (const auto& [text, expected] : stored) {
        connection().Execute(QStringLiteral("DELETE FROM SetTable WHERE SetKey='FLAG'"));
        connection().Execute(
            QStringLiteral("INSERT INTO SetTable (SetSec, SetKey, SetSco, SetVal) VALUES "
                           "('DEFAULT_OFFICE_SETUP', 'FLAG', 0, '%1')")
                .arg(text));
        const QVariant read = gic().ReadSetting(kOffice, "FLAG", 0, !expected);
        EXPECT_EQ(read.typeId(), QMetaType::Bool) << text.toStdString();
        EXPECT_EQ(read.toBool(), expected) << text.toStdString();
    }
    // Numbers stored as text read as numbers, and text that is no number gives the default.
    gic().WriteSetting(kOffice, "INS_ANN_COV", 0, QStringLiteral("1000.00"));
    EXPECT_EQ(gic().ReadSetting(kOffice, "INS_ANN_COV", 0, 0.0), QVariant(1000.0));
    EXPECT_EQ(gic().ReadSetting(kOffice, "INS_ANN_COV", 0, 0), QVariant(1000));
    gic().WriteSetting(kOffice, "PAT_AC_TYP", 0, QStringLiteral("Regular"));
    EXPECT_EQ(gic().ReadSetting(kOffice, "PAT_AC_TYP", 0, 7), QVariant(7));
}

TEST_P(SettingsTest, SectionKeyAndScopeIdentifyOneSetting) {
    gic().WriteSetting(kOffice, "SEC_BUS_REP", 0, true);
    gic().WriteSetting(kOffice, "SEC_BUS_REP", 1, false);
    gic().WriteSetting("TKS_OFFICE_SETUP", "SEC_BUS_REP", 0, false);
    gic().WriteSetting(kOffice, "sec_bus_rep", 0, QStringLiteral("0"));  // overwrites, any case
    gic().WriteSetting(kOffice, "SEC_BUS_REP", 0, true);
    EXPECT_TRUE(gic().ReadSetting(kOffice, "SEC_BUS_REP", 0, false).toBool());
    EXPECT_FALSE(gic().ReadSetting(kOffice, "SEC_BUS_REP", 1, true).toBool());
    EXPECT_FALSE(gic().ReadSetting("TKS_OFFICE_SETUP", "SEC_BUS_REP", 0, true).toBool());
    EXPECT_EQ(db::ReadScalar(connection(), "SELECT Count(*) FROM SetTable").toInt(), 3);
    // Writing no value clears the setting.
    gic().WriteSetting(kOffice, "SEC_BUS_REP", 0, QVariant());
    EXPECT_EQ(gic().ReadSetting(kOffice, "SEC_BUS_REP", 0, QStringLiteral("none")), "none");
}

TEST_P(SettingsTest, StationSettingsAreKeptApartPerStation) {
    HostSession back = session_;
    back.stationId = QStringLiteral("BACK2");
    HostGIC backGic(back);
    gic().WriteStationSetting("POPUP_HELP_FLAG", true);
    backGic.WriteStationSetting("POPUP_HELP_FLAG", false);
    EXPECT_TRUE(gic().ReadStationSetting("POPUP_HELP_FLAG", false).toBool());
    EXPECT_FALSE(backGic.ReadStationSetting("POPUP_HELP_FLAG", true).toBool());
    // The per-station form is the station in front of the key, as the list window writes it.
    EXPECT_TRUE(gic()
                    .ReadSetting(SettingsStore::kStationSection, "FRONT1POPUP_HELP_FLAG", 0, false)
                    .toBool());
    back.stationId = QStringLiteral("OTHER");  // identity is read on each call
    EXPECT_EQ(backGic.ReadStationSetting("POPUP_HELP_FLAG", 5), QVariant(5));
}

INSTANTIATE_TEST_SUITE_P(Engines, SettingsTest, testing::ValuesIn(orvo::test::AllEngines()),
                         orvo::test::EngineParamName());

}  // namespace
}  // namespace orvo::host::test
