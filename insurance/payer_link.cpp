#include "insurance/payer_link.h"

#include "platform/prompts.h"

namespace orvo::insurance {
namespace {

const QString kCrLf = QStringLiteral("\r\n");

// The title of changing one payer for another is that of unlinking: the old link goes.
const QString kUnlinkTitle = QStringLiteral("Un-Link Electronic Payer");
const QString kLinkTitle = QStringLiteral("Link Electronic Payer");

int AskChange() {
    const QString text =
        QStringLiteral(
            "Are you sure you want to change the Electronic Payer for this Insurance Company?") +
        kCrLf +
        QStringLiteral(
            "Please note: This change will be affect ALL patients with coverage "
            "through this insurance company.");
    return prompts().Message(text, Buttons::YesNo, Icon::Warning, kUnlinkTitle, 2);
}

int AskLink() {
    const QString text =
        QStringLiteral(
            "Linking an Electronic Payer allows you to submit claims and verify "
            "coverage for your patients electronically.") +
        kCrLf +
        QStringLiteral(
            "Please make sure that the selected Electronic Payer matches the current "
            "Insurance Company.") +
        kCrLf +
        QStringLiteral(
            "Please note: Use of this feature requires an Electronic Claims account "
            "with Emdeon Business Services and internet access.");
    return prompts().Message(text, Buttons::OkCancel, Icon::Information, kLinkTitle, 1);
}

int AskUnlink() {
    const QString text =
        QStringLiteral("Are you sure you want to remove the link to this Electronic Payer?") +
        kCrLf +
        QStringLiteral(
            "Please note: Online Eligibility and Electronic Claims WILL NOT BE "
            "AVAILABLE for any patients with coverage through this insurance company "
            "if you select [Yes].");
    return prompts().Message(text, Buttons::YesNo, Icon::Warning, kUnlinkTitle, 2);
}

}  // namespace

bool Confirm_Payer_Link_Change(QString& OldID, QString& NewID) {
    OldID = OldID.trimmed().toUpper();
    NewID = NewID.trimmed().toUpper();
    if (OldID == NewID)
        return false;
    if (OldID.isEmpty())
        return AskLink() == AnswerOk;
    if (NewID.isEmpty())
        return AskUnlink() == AnswerYes;
    return AskChange() == AnswerYes;
}

}  // namespace orvo::insurance
