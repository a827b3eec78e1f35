#pragma once

#include <QByteArray>
#include <QList>
#include <QString>
#include <QStringList>

namespace orvo::vcard {

// One e-mail address of a card, with what its parameters say of it.
struct Email {
    QString address;
    QStringList types;  // lower case: "work", "home", "internet", ...
    // 1 is the most preferred, 100 the least; a card's address without a preference is 101.
    int preference = 101;
};

// One card of an address book: the name to show and its e-mail addresses in the order written.
struct Card {
    QString name;  // the formatted name, else "First Last" from the structured name
    QList<Email> emails;

    // The address to take when the card is chosen: the most preferred, the first written among
    // equals; empty when the card has none.
    QString PreferredEmail() const;
};

// Reads the cards of an address book file: vCard 2.1, 3.0 and 4.0, as address books export
// them. Folded lines are unfolded (a continuation may split a character's bytes), property
// groups ("item1.EMAIL") are ignored, parameters are read in the 2.1 form (";WORK;PREF") and
// the later ones (";TYPE=work,pref", ";TYPE=\"work,home\"", ";PREF=1"), values are unescaped
// ("\,", "\;", "\n") and quoted-printable values decoded in their character set (UTF-8 unless
// the card names another). Text is UTF-8; a byte-order mark is skipped. Lines that are no
// property, and cards never ended, are passed over: a damaged book gives what it can.
QList<Card> ParseCards(const QByteArray& data);

}  // namespace orvo::vcard
