// The text pieces of the carrier and pharmacy screen that need no database: the new-record
// command as built and as read back, and the rule that tells a change reaching every patient.
#include <gtest/gtest.h>

#include "insurance/build_new_command.h"
#include "insurance/carrier_change.h"
#include "insurance/ins_command.h"

namespace orvo::insurance {
namespace {

const QChar kMark(1);

TEST(BuildNewCommand, LabelledTextKeepsItsLinesAndPlainTextIsTheName) {
    const QString labelled = QStringLiteral("NEW\nCITY") + kMark + QStringLiteral("Boston");
    EXPECT_EQ(BuildNewCommand(labelled), QStringLiteral("-1\nCITY") + kMark + "Boston\n");
    EXPECT_EQ(BuildNewCommand("NEWSummit Dental"), QStringLiteral("0\nSummit Dental\n"));
    EXPECT_EQ(BuildNewCommand("NEW"), QStringLiteral("0\n\n"));
}

TEST(ParseCarrierCommand, LabelsChooseFieldsInAnyCaseAndUnknownOnesAreSkipped) {
    const QString text = QStringLiteral("NEW\n") + "Insurance Company" + kMark + "Acme Dental\n" +
                         "address 1" + kMark + "1 Main St\n" + "ZIP" + kMark + "02108\n" +
                         "PHONE NUMBER" + kMark + "6175550101\n" + "Phone Number 2" + kMark +
                         "6175550102\n" + "e-mail" + kMark + "a@b.example\n" + "GROUP" + kMark +
                         "ignored\n" + "REMARK 2" + kMark + "x" + kMark + "y";
    const CarrierCommandFields fields = ParseCarrierCommand(BuildNewCommand(text));
    EXPECT_TRUE(fields.modified);
    const QMap<int, QString> expected{{1, "Acme Dental"},
                                      {2, "1 Main St"},
                                      {6, "02108"},
                                      {7, "6175550101"},
                                      {8, "6175550102"},
                                      {12, "a@b.example"},
                                      {11, QStringLiteral("x") + kMark + "y"}};
    EXPECT_EQ(fields.text, expected);
}

TEST(ParseCarrierCommand, PlainNameIsNoChangeYet) {
    const CarrierCommandFields fields = ParseCarrierCommand("0\nCorner Drug\n");
    EXPECT_FALSE(fields.modified);
    EXPECT_EQ(fields.text, (QMap<int, QString>{{1, "Corner Drug"}}));
    EXPECT_TRUE(ParseCarrierCommand("0\n\n").text.isEmpty());
    EXPECT_TRUE(ParseCarrierCommand(QString()).text.isEmpty());
}

TEST(IsGlobalChange, CountsTheNameAndLostOrChangedValuesButNotFilledGapsOrCase) {
    const CarrierIdentity stored{"Keystone", "1200 Market St", "", "Harrisburg", "PA",
                                 "17101",    "(717) 555-0112", ""};
    CarrierIdentity typed = stored;
    EXPECT_FALSE(IsGlobalChange(stored, typed));
    typed[0] = "KEYSTONE";
    typed[3] = "harrisburg";
    EXPECT_FALSE(IsGlobalChange(stored, typed));
    typed[2] = "Suite 200";
    typed[7] = "(717) 555-0113";
    EXPECT_FALSE(IsGlobalChange(stored, typed));

    for (std::size_t i = 1; i < stored.size(); ++i) {
        if (stored[i].isEmpty())
            continue;
        CarrierIdentity changed = stored;
        changed[i].clear();
        EXPECT_TRUE(IsGlobalChange(stored, changed)) << "field " << i;
    }
    CarrierIdentity unnamed = stored;
    unnamed[0].clear();
    CarrierIdentity named = unnamed;
    named[0] = "Keystone";
    EXPECT_TRUE(IsGlobalChange(unnamed, named));
}

}  // namespace
}  // namespace orvo::insurance
