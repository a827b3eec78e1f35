// Address book files as mail and contacts programs export them, and the vCard book's session.
#include <gtest/gtest.h>

#include <QDir>
#include <QFile>
#include <QTemporaryDir>

#include "platform/address_book.h"
#include "platform/vcard.h"

namespace orvo::vcard {
namespace {

QStringList Addresses(const Card& card) {
    QStringList out;
    for (const Email& email : card.emails)
        out << email.address;
    return out;
}

// A 3.0 export of a desktop contacts program: CRLF, a byte-order mark, grouped properties,
// TYPE lists with "pref" among them, escaped commas and folded lines.
const QByteArray kDesktopExport =
    "\xEF\xBB\xBF"
    "BEGIN:VCARD\r\n"
    "VERSION:3.0\r\n"
    "PRODID:-//Contacts//EN\r\n"
    "N:Peña;José;Luis;Dr.;\r\n"
    "FN:José Luis Peña\r\n"
    "ORG:Peña\\, Ruiz & Asociados;\r\n"
    "item1.EMAIL;type=INTERNET;type=HOME:jose.pena@example.net\r\n"
    "item1.X-ABLabel:_$!<Home>!$_\r\n"
    "item2.EMAIL;type=INTERNET;type=WORK;type=pref:jl.pena@pena-ruiz.example.co\r\n"
    " m\r\n"
    "TEL;type=CELL:+1 614 555 0142\r\n"
    "NOTE:Prefers e-mail\\, never calls\\nafter 6pm\r\n"
    "END:VCARD\r\n"
    "BEGIN:VCARD\r\n"
    "VERSION:3.0\r\n"
    "N:Müller;Zoë;;;\r\n"
    "EMAIL;TYPE=\"internet,work\":zoe.mueller@example.de\r\n"
    "END:VCARD\r\n";

TEST(VCardTest, DesktopExportWithGroupsFoldsAndPreferences) {
    const QList<Card> cards = ParseCards(kDesktopExport);
    ASSERT_EQ(cards.size(), 2);
    EXPECT_EQ(cards[0].name, "José Luis Peña");
    EXPECT_EQ(Addresses(cards[0]),
              QStringList({"jose.pena@example.net", "jl.pena@pena-ruiz.example.com"}));
    EXPECT_EQ(cards[0].emails[1].types, QStringList({"internet", "work"}));
    EXPECT_EQ(cards[0].PreferredEmail(), "jl.pena@pena-ruiz.example.com");
    // No FN: the structured name, first name first; a quoted TYPE list is two types.
    EXPECT_EQ(cards[1].name, "Zoë Müller");
    EXPECT_EQ(cards[1].emails[0].types, QStringList({"internet", "work"}));
    EXPECT_EQ(cards[1].PreferredEmail(), "zoe.mueller@example.de");
}

TEST(VCardTest, Version4WithPrefRanksUrisAndASplitCharacter) {
    // "Ø" is C3 98 in UTF-8; the fold falls between its two bytes, as 4.0 allows.
    QByteArray data =
        "BEGIN:VCARD\n"
        "VERSION:4.0\n"
        "FN:S\xC3\n"
        " \x98ren Kj\xC3\xA6r\n"
        "EMAIL;TYPE=home;PREF=2:soren@example.dk\n"
        "EMAIL;TYPE=work;PREF=1;VALUE=uri:mailto:skj@firma.example\n"
        "EMAIL;PREF=1:later.equal@example.dk\n"
        "EMAIL;PREF=0:out-of-range@example.dk\n"
        "END:VCARD\n";
    const QList<Card> cards = ParseCards(data);
    ASSERT_EQ(cards.size(), 1);
    EXPECT_EQ(cards[0].name, QString::fromUtf8("S\xC3\x98ren Kj\xC3\xA6r"));
    EXPECT_EQ(cards[0].emails[1].address, "skj@firma.example");
    // The first of the most preferred; a rank outside 1 to 100 counts as none.
    EXPECT_EQ(cards[0].PreferredEmail(), "skj@firma.example");
    EXPECT_EQ(cards[0].emails[3].preference, 101);
}

TEST(VCardTest, Version21QuotedPrintableInItsCharsetWithSoftBreaks) {
    // A phone's export: bare parameters, Latin-1 quoted-printable with a soft line break.
    const QByteArray data =
        "BEGIN:VCARD\r\n"
        "VERSION:2.1\r\n"
        "N;CHARSET=ISO-8859-1;ENCODING=QUOTED-PRINTABLE:M=FCller;J=FCrgen\r\n"
        "FN;CHARSET=ISO-8859-1;ENCODING=QUOTED-PRINTABLE:J=FCrgen M=FCller-Oberl=E4nder=\r\n"
        " Sr.\r\n"
        "EMAIL;INTERNET:juergen@example.at\r\n"
        "EMAIL;PREF;INTERNET;WORK:j.mueller@kanzlei.example\r\n"
        "AGENT:\r\n"
        "BEGIN:VCARD\r\n"
        "FN:Assistant\r\n"
        "EMAIL:assistant@kanzlei.example\r\n"
        "END:VCARD\r\n"
        "END:VCARD\r\n";
    const QList<Card> cards = ParseCards(data);
    ASSERT_EQ(cards.size(), 1);
    EXPECT_EQ(cards[0].name, QString::fromUtf8("Jürgen Müller-Oberländer Sr."));
    // The card inside (its agent) is no card of the book and lends it no address.
    EXPECT_EQ(Addresses(cards[0]),
              QStringList({"juergen@example.at", "j.mueller@kanzlei.example"}));
    EXPECT_EQ(cards[0].PreferredEmail(), "j.mueller@kanzlei.example");
}

TEST(VCardTest, DamagedBooksGiveWhatTheyCan) {
    EXPECT_TRUE(ParseCards("").isEmpty());
    EXPECT_TRUE(ParseCards("not a vcard at all\njust text\n").isEmpty());
    const QList<Card> cards = ParseCards(
        "BEGIN:VCARD\nFN:No Address\nTEL:555\nEND:VCARD\n"
        "garbage line without colon\n"
        "BEGIN:VCARD\nFN:Escaped\\;Name\nEMAIL:  \nEMAIL:ok@example.org\nEND:VCARD\n"
        "BEGIN:VCARD\nFN:Never Ended\nEMAIL:lost@example.org\n");
    ASSERT_EQ(cards.size(), 2);
    EXPECT_EQ(cards[0].PreferredEmail(), "");
    EXPECT_EQ(cards[1].name, "Escaped;Name");
    EXPECT_EQ(Addresses(cards[1]), QStringList({"ok@example.org"}));
}

TEST(VCardAddressBookTest, SignsOnOnlyToAFileItCanRead) {
    QTemporaryDir folder;
    ASSERT_TRUE(folder.isValid());
    EXPECT_FALSE(VCardAddressBook(QString()).SignOn());
    EXPECT_FALSE(VCardAddressBook(folder.filePath("missing.vcf")).SignOn());
    EXPECT_FALSE(VCardAddressBook(folder.path()).SignOn());  // a folder is no book

    const QString empty = folder.filePath("empty.vcf");
    QFile(empty).open(QIODevice::WriteOnly);
    VCardAddressBook emptyBook(empty);
    EXPECT_TRUE(emptyBook.SignOn());
    EXPECT_TRUE(emptyBook.cards().isEmpty());

    const QString path = folder.filePath("Contacts.vcf");
    QFile file(path);
    ASSERT_TRUE(file.open(QIODevice::WriteOnly));
    file.write(kDesktopExport);
    file.close();
    VCardAddressBook book(path);
    ASSERT_TRUE(book.SignOn());
    EXPECT_EQ(book.cards().size(), 2);
    book.SignOff();
    EXPECT_TRUE(book.cards().isEmpty());
}

}  // namespace
}  // namespace orvo::vcard
