#include "people/find_person.h"

#include <QRegularExpression>
#include <array>
#include <iterator>
#include <vector>

#include "component/find_record.h"
#include "people/person_record.h"
#include "platform/db/recordset.h"
#include "platform/db/sql_text.h"
#include "platform/prompts.h"

namespace orvo::people {

namespace {

const QString kTitle = QStringLiteral("Database Search");
const QString kCrLf = QStringLiteral("\r\n");

// The columns an offer shows, as far as the query read them.
constexpr const char* kShown[] = {"pHOMPHO", "pBUSPHO", "pSSN", "pADD1",
                                  "pADD2",   "pCIT",    "pSTA", "pZIP"};
constexpr int kShownCount = int(std::size(kShown));

// One row as the offers show it, read whole before the first question so that no read stays
// open while a box waits on a person. The text of the offer is made only for the rows shown.
struct Match {
    int pID = 0;
    QString first, last, pTypPat, roleValue;
    int location = 0;
    std::array<QString, kShownCount> shown;

    QString name() const { return first + QLatin1Char(' ') + last; }
    QString card() const {
        QString card = QStringLiteral("Name: ") + name() + QStringLiteral(" [ ") +
                       QString::number(pID) + QStringLiteral(" ]");
        const auto line = [&](const QString& label, const QString& value) {
            if (!value.trimmed().isEmpty())
                card += kCrLf + label + QStringLiteral(": ") + value.trimmed();
        };
        line(QStringLiteral("Home"), shown[0]);
        line(QStringLiteral("Work"), shown[1]);
        line(QStringLiteral("SSN"), shown[2]);
        line(QStringLiteral("Addr."), shown[3] + QLatin1Char(' ') + shown[4]);
        const QString place =
            shown[5] + QStringLiteral(", ") + shown[6] + QLatin1Char(' ') + shown[7];
        if (place.trimmed() != QLatin1String(","))
            card += kCrLf + place.trimmed();
        return card;
    }
};

std::vector<Match> ReadMatches(GIC& gic, const QString& sql, const PersonRole& role) {
    std::vector<Match> matches;
    db::Recordset rs(gic.GetConnection(), sql);
    // Columns by index, resolved once: a search may read thousands of rows.
    const int id = rs.IndexOf(QStringLiteral("pID"));
    const int first = rs.IndexOf(QStringLiteral("pFIRNAM"));
    const int last = rs.IndexOf(QStringLiteral("pLASNAM"));
    const int patient = rs.IndexOf(QStringLiteral("pTypPat"));
    const int roleColumn = role.column.isEmpty() ? -1 : rs.IndexOf(role.column);
    const int location = rs.IndexOf(QStringLiteral("OffLocID"));
    std::array<int, kShownCount> shown;
    for (int c = 0; c < kShownCount; ++c)
        shown[c] = rs.IndexOf(QLatin1String(kShown[c]));
    const auto text = [&rs](int index) { return index < 0 ? QString() : rs.Text(index).trimmed(); };
    for (; !rs.Eof(); rs.MoveNext()) {
        Match m;
        m.pID = int(rs.Long(id));
        m.first = text(first);
        m.last = text(last);
        m.pTypPat = text(patient);
        m.roleValue = text(roleColumn);
        m.location = location < 0 ? 0 : int(rs.Long(location));
        for (int c = 0; c < kShownCount; ++c)
            m.shown[c] = text(shown[c]);
        matches.push_back(std::move(m));
    }
    return matches;
}

QString Offer(const PersonRole& role, bool forList) {
    return forList ? QStringLiteral("Add to the list?")
                   : QStringLiteral("Add as this patient's ") + role.word + QLatin1Char('?');
}

bool HasRole(const Match& m, const PersonRole& role) {
    if (role.familyHead())
        return m.pTypPat >= QLatin1String("1");
    return !role.column.isEmpty() && m.roleValue == QLatin1String("1");
}

QString LocationName(GIC& gic, int location) {
    const QVariant name = db::ReadScalar(
        gic.GetConnection(), QStringLiteral("SELECT OffLocNam FROM OffLocTable WHERE OffLocID=") +
                                 QString::number(location));
    const QString text = name.toString().trimmed();
    return text.isEmpty() ? QStringLiteral("Location #") + QString::number(location) : text;
}

// Whether a person is shown at a location: as the primary one, or through a display row with
// its flag set (tested as "=TRUE" in the embedded dialect and "<>0" on the server).
bool ShownAt(GIC& gic, const Match& m, int here) {
    const QString shown = gic.GetDatabaseKind() == 2
                              ? QStringLiteral("(pdlTable.pdlShoInLoc<>0)")
                              : QStringLiteral("(pdlTable.pdlShoInLoc=TRUE)");
    const QString location = QString::number(here);
    const QVariant count = db::ReadScalar(
        gic.GetConnection(),
        QStringLiteral("SELECT count(*) FROM PATABLE LEFT JOIN pdlTable on "
                       "PATABLE.pID=pdlTable.pdlPID WHERE ((PATABLE.OffLocID=") +
            location + QStringLiteral(") or ((pdlTable.pdlOffLocID=") + location +
            QStringLiteral(") AND ") + shown + QStringLiteral(")) and (PATABLE.pID=") +
            QString::number(m.pID) + QLatin1Char(')'));
    return count.toLongLong() > 0;
}

enum class LocationChoice { Use, NextMatch };

// The offer to edit where a person is shown. Until the patient location screen is built the
// edit says so, and the person decides again.
LocationChoice EditLocation(GIC& gic, const Match& m, const QString& locationName) {
    const QString title = QStringLiteral("Edit Patient Display Locations");
    for (;;) {
        const int choice =
            prompts().Choose(QStringLiteral("Do you want to edit the location information for ") +
                                 m.name() + QStringLiteral(", "),
                             title,
                             {QStringLiteral("&Yes"), QStringLiteral("&No"),
                              QStringLiteral("Don't edit location information")});
        if (choice == 3)
            return LocationChoice::Use;
        if (choice != 1)
            return LocationChoice::NextMatch;
        prompts().Message(QStringLiteral("The patient location setup is not available in this "
                                         "version yet: the display locations were not changed."),
                          Buttons::Ok, Icon::Information, title);
        const int again = prompts().Message(
            QStringLiteral("You did not set ") + m.name() + QStringLiteral(" to display in your ") +
                locationName +
                QStringLiteral(". Do you want to edit the location information again?") + kCrLf +
                kCrLf +
                QStringLiteral("If you select no, this search will move on to the next match."),
            Buttons::YesNo, Icon::Question, kTitle);
        if (again != AnswerYes)
            return LocationChoice::NextMatch;
    }
}

}  // namespace

PersonRole PersonRole::Of(const QString& field) {
    const QString key = field.trimmed().toUpper();
    if (key == QLatin1String("PTYPDOC"))
        return {key, QStringLiteral("Provider"), QStringLiteral("pTypDoc")};
    if (key == QLatin1String("PTYPPAT"))
        return {key, QStringLiteral("Family Head"), QStringLiteral("pTypPat")};
    if (key == QLatin1String("PTYPPHY1") || key == QLatin1String("PTYPPHY2"))
        return {key, QStringLiteral("Physician"), QStringLiteral("pTypPhy")};
    if (key == QLatin1String("PTYPREF"))
        return {key, QStringLiteral("Referral"), QStringLiteral("pTypRef")};
    return {key, QString(), QString()};
}

QString PersonNameCriteria(GIC& gic, const QString& textIn, bool allowID) {
    const QString text = textIn.trimmed();
    static const QRegularExpression id(QStringLiteral("^\\d{1,9}$"));
    if (allowID && id.match(text).hasMatch())
        return QStringLiteral("pID = ") + QString::number(text.toInt());
    QString last, first;
    gic.SplitPersonName(text, last, first);
    return QStringLiteral("pLASNAM Like ") + db::QuoteText(last.trimmed() + QLatin1Char('%')) +
           QStringLiteral(" and pFIRNAM Like ") + db::QuoteText(first.trimmed() + QLatin1Char('%'));
}

QString PersonRoleCriteria(const PersonRole& role) {
    if (role.familyHead())
        return QStringLiteral(
            "((pFAMHEAIND = pID or pFAMHEAIND is Null or pFAMHEAIND = 0) and "
            "pTypPat >= '1') and ");
    if (role.column.isEmpty())
        return QString();
    return QLatin1Char('(') + role.column + QStringLiteral(" = '1')  and ");
}

int Match_Person(GIC& gic, const QString& criteria, const PersonRole& role, bool forList, int& pID,
                 const QList<int>& offered) {
    const std::vector<Match> matches = ReadMatches(
        gic,
        QStringLiteral("SELECT pID, pLASNAM, pFIRNAM, pTypPat, pTypDoc, pTypRef, pTypPhy, pTypEmp, "
                       "pTypX1, pTypX2, OffLocID FROM PATABLE WHERE ") +
            criteria,
        role);
    const int here = gic.GetOfficeLocationID();
    const bool locations = gic.GetOfficeLocationCount() >= 2;
    for (const Match& m : matches) {
        if (offered.contains(m.pID))
            continue;
        const QString name =
            m.name() + QStringLiteral(" [ ") + QString::number(m.pID) + QStringLiteral(" ]");
        if (role.familyHead() && m.pTypPat >= QLatin1String("1")) {
            prompts().Message(
                name + QStringLiteral(" was found in the database ") +
                    QStringLiteral(" but cannot be added as a ") + QStringLiteral("Family Head") +
                    QStringLiteral(", because this patient is a family member.") + kCrLf + kCrLf +
                    QStringLiteral("You must detach this patient from the family first in order "
                                   "to assign as a family head."),
                Buttons::Ok, Icon::Information, kTitle);
            continue;
        }
        QString where = QStringLiteral("in the database ");
        if (locations && m.location != 0) {
            where = QStringLiteral("in your ") + LocationName(gic, m.location);
            if (here != 0 && !ShownAt(gic, m, here) &&
                EditLocation(gic, m, LocationName(gic, here)) == LocationChoice::NextMatch)
                continue;
        }
        const QString found = m.card() + kCrLf + kCrLf + QStringLiteral(" ...was found ") + where;
        if (HasRole(m, role)) {
            const int choice = prompts().Choose(
                found + QStringLiteral(" Go to this person?"), kTitle,
                {QStringLiteral("&Yes"), QStringLiteral("&No"), QStringLiteral("&Cancel"),
                 QStringLiteral("Trans."), QStringLiteral("Family")});
            if (choice == 2)
                continue;
            if (choice == 1 || choice == 4 || choice == 5) {
                pID = m.pID;
                return kMatchTaken + (choice == 4 ? 1 : choice == 5 ? 2 : 0);
            }
            return -1;
        }
        const int answer = prompts().Message(found + QLatin1Char(' ') + Offer(role, forList),
                                             Buttons::YesNoCancel, Icon::Question, kTitle, 1);
        if (answer == AnswerNo)
            continue;
        if (answer != AnswerYes)
            return -1;
        // Taken in a role the person did not have: the role is given, with all it brings.
        if (!role.column.isEmpty())
            SetPersonType(gic, m.pID, role.column, QStringLiteral("1"));
        pID = m.pID;
        return kMatchTaken;
    }
    return 0;
}

FoundPerson Find_Person(GIC& gic, const QString& Field, const QString& defaultText, bool readOnly,
                        bool forList, bool allowID) {
    FoundPerson found;
    found.answer = kFindCancel;
    if (readOnly) {
        prompts().Message(QStringLiteral("Read only, cannot modify."), Buttons::Ok,
                          Icon::Information, kTitle);
        return found;
    }
    const QString text =
        gic.InputDialog(NamePrompt(allowID), QStringLiteral("Search Window"), defaultText, 0)
            .value_or(QString())
            .trimmed();
    if (text.isEmpty())
        return found;
    const PersonRole role = PersonRole::Of(Field);
    const QString criteria = PersonNameCriteria(gic, text, allowID);
    const std::vector<Match> matches =
        ReadMatches(gic,
                    QStringLiteral("Select * from Patable where ") + PersonRoleCriteria(role) +
                        criteria + QStringLiteral(" order by pLasNam, pFirNam"),
                    role);
    QList<int> offered;
    for (const Match& m : matches) {
        offered << m.pID;
        const int answer = prompts().Message(m.card() + kCrLf + kCrLf +
                                                 QStringLiteral(" ...was found in the database. ") +
                                                 Offer(role, forList),
                                             Buttons::YesNoCancel, Icon::Question, kTitle, 1);
        if (answer == AnswerNo)
            continue;
        if (answer == AnswerYes) {
            found.answer = QString::number(m.pID);
            found.pID = m.pID;
        }
        return found;
    }
    int pID = 0;
    const int matched = Match_Person(gic, criteria, role, forList, pID, offered);
    if (matched < 0)
        return found;
    if (matched >= kMatchTaken) {
        found.answer = QString::number(pID);
        found.pID = pID;
        found.command = matched == kMatchTaken + 1   ? QStringLiteral("Trans.")
                        : matched == kMatchTaken + 2 ? QStringLiteral("Family")
                                                     : QString();
        return found;
    }
    const int add = prompts().Message(QStringLiteral("[ ") + text + QStringLiteral(" ] ") +
                                          QStringLiteral(" was not found in the database.") +
                                          QStringLiteral(" Add as new?"),
                                      Buttons::YesNo, Icon::Question, kTitle, 1);
    if (add == AnswerYes) {
        found.answer = QStringLiteral("NEW");
        gic.SplitPersonName(text, found.lastName, found.firstName);
    }
    return found;
}

}  // namespace orvo::people
