#pragma once

#include <QList>
#include <QString>
#include <functional>
#include <memory>
#include <optional>

#include "platform/vcard.h"

class QWidget;

namespace orvo {

// The operator's own address book, from which a screen takes an e-mail address: a session is
// signed on, the book is shown with one list of recipients, and the address of the first
// recipient chosen comes back. A session that cannot sign on is the one failure the screens
// tell about.
class AddressBook {
public:
    virtual ~AddressBook() = default;

    // Opens the book; false when it cannot be reached.
    virtual bool SignOn() = 0;
    // Shows the book under owner; the address of the first recipient chosen, or none when the
    // person chose nobody or closed it.
    virtual std::optional<QString> ChooseAddress(QWidget* owner) = 0;
    virtual void SignOff() = 0;
};

// The address book kept as a vCard file (what every mail and contacts program exports). The
// file is read at sign-on: a file that is not there or cannot be read does not sign on; a file
// with no card in it is an empty book.
class VCardAddressBook : public AddressBook {
public:
    explicit VCardAddressBook(QString file) : file_(std::move(file)) {}

    bool SignOn() override;
    std::optional<QString> ChooseAddress(QWidget* owner) override;
    void SignOff() override { cards_.clear(); }

    const QList<vcard::Card>& cards() const { return cards_; }

private:
    QString file_;
    QList<vcard::Card> cards_;
};

// The window of recipients that VCardAddressBook shows: one line per address of every card
// ("Name <address>", a card's preferred address first), with the cards in name order. Its
// object name is "frmAddressBook", the list's "lstRecipients", the buttons "cmdOK" and
// "cmdCancel"; OK and a double click take the selection.
std::optional<QString> ShowRecipientList(const QList<vcard::Card>& cards, QWidget* owner);

// Makes the session for the book that `source` names (for the vCard book, its file).
using AddressBookFactory = std::function<std::unique_ptr<AddressBook>(const QString& source)>;

// A session for the book in force: the vCard book unless SetAddressBookFactory installed
// another.
std::unique_ptr<AddressBook> OpenAddressBook(const QString& source);
// Installs a factory (tests, another kind of book); an empty one goes back to the vCard book.
void SetAddressBookFactory(AddressBookFactory factory);

}  // namespace orvo
