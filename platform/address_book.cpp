#include "platform/address_book.h"

#include <QCollator>
#include <QDialog>
#include <QDialogButtonBox>
#include <QFile>
#include <QListWidget>
#include <QPushButton>
#include <QVBoxLayout>
#include <algorithm>

#include "platform/prompts.h"

namespace orvo {
namespace {

AddressBookFactory& factory() {
    static AddressBookFactory installed;
    return installed;
}

}  // namespace

bool VCardAddressBook::SignOn() {
    cards_.clear();
    if (file_.trimmed().isEmpty())
        return false;
    QFile file(file_);
    if (!file.open(QIODevice::ReadOnly))
        return false;
    cards_ = vcard::ParseCards(file.readAll());
    return file.error() == QFileDevice::NoError;
}

std::optional<QString> VCardAddressBook::ChooseAddress(QWidget* owner) {
    return ShowRecipientList(cards_, owner);
}

std::optional<QString> ShowRecipientList(const QList<vcard::Card>& cards, QWidget* owner) {
    QList<vcard::Card> sorted = cards;
    QCollator collator;
    collator.setCaseSensitivity(Qt::CaseInsensitive);
    std::stable_sort(sorted.begin(), sorted.end(), [&](const vcard::Card& a, const vcard::Card& b) {
        return collator.compare(a.name, b.name) < 0;
    });

    QDialog dialog(owner ? owner : PromptParent());
    dialog.setObjectName(QStringLiteral("frmAddressBook"));
    dialog.setWindowTitle(QObject::tr("Address Book"));
    auto* layout = new QVBoxLayout(&dialog);
    auto* list = new QListWidget;
    list->setObjectName(QStringLiteral("lstRecipients"));
    list->setSelectionMode(QAbstractItemView::ExtendedSelection);
    list->setMinimumSize(360, 240);
    for (const vcard::Card& card : sorted) {
        const QString preferred = card.PreferredEmail();
        QStringList addresses{preferred};
        for (const vcard::Email& email : card.emails) {
            if (!addresses.contains(email.address, Qt::CaseInsensitive))
                addresses << email.address;
        }
        for (const QString& address : addresses) {
            if (address.isEmpty())
                continue;
            const QString line =
                card.name.isEmpty() ? address : QStringLiteral("%1 <%2>").arg(card.name, address);
            auto* item = new QListWidgetItem(line, list);
            item->setData(Qt::UserRole, address);
        }
    }
    if (list->count() > 0)
        list->setCurrentRow(0);
    layout->addWidget(list);
    auto* buttons = new QDialogButtonBox(QDialogButtonBox::Ok | QDialogButtonBox::Cancel);
    buttons->button(QDialogButtonBox::Ok)->setObjectName(QStringLiteral("cmdOK"));
    buttons->button(QDialogButtonBox::Cancel)->setObjectName(QStringLiteral("cmdCancel"));
    layout->addWidget(buttons);
    QObject::connect(buttons, &QDialogButtonBox::accepted, &dialog, &QDialog::accept);
    QObject::connect(buttons, &QDialogButtonBox::rejected, &dialog, &QDialog::reject);
    QObject::connect(list, &QListWidget::itemDoubleClicked, &dialog, &QDialog::accept);

    if (dialog.exec() != QDialog::Accepted)
        return std::nullopt;
    // The first recipient chosen is the first selected in the list's order.
    for (int row = 0; row < list->count(); ++row) {
        if (list->item(row)->isSelected())
            return list->item(row)->data(Qt::UserRole).toString();
    }
    return std::nullopt;
}

std::unique_ptr<AddressBook> OpenAddressBook(const QString& source) {
    if (factory())
        return factory()(source);
    return std::make_unique<VCardAddressBook>(source);
}

void SetAddressBookFactory(AddressBookFactory installed) {
    factory() = std::move(installed);
}

}  // namespace orvo
