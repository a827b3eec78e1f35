#include "component/find_record.h"

#include <vector>

#include "platform/db/recordset.h"
#include "platform/db/sql_text.h"
#include "platform/prompts.h"

namespace orvo {

namespace {

const QString kTitle = QStringLiteral("Database Search");

struct Found {
    QString id;
    QString text;
};

}  // namespace

QString NamePrompt(bool AllowID) {
    const QString cr = QStringLiteral("\r");
    QString text = (AllowID ? QStringLiteral("Enter name or ID number below.")
                            : QStringLiteral("Enter name below.")) +
                   cr + cr + QStringLiteral("Example:") + cr +
                   QStringLiteral("      John Smith  (First-Name Last-Name)") + cr +
                   QStringLiteral("or Smith, John  (Last-Name, First-Name)");
    if (AllowID)
        text += cr + QStringLiteral("or 3412  (ID for existing patient)");
    return text;
}

void Find_Record(GIC& gic, QString& Result, const QString& Table, const QString& NameColumn,
                 const QString& IDColumn, const DisplayFields& fields, QString& Text,
                 const QString& Question) {
    QString idColumn = IDColumn;
    const bool listOffer = idColumn.startsWith(kFindMark);
    if (listOffer)
        idColumn.remove(0, 1);
    const QString question =
        Question.isEmpty() ? QStringLiteral("Is this the correct entry?") : Question;

    QString search;
    if (Text.startsWith(kFindMark)) {
        search = Text.mid(1);
    } else {
        const std::optional<QString> typed =
            gic.InputDialog(QStringLiteral("Enter name below.\r\rExample:      ORVO Inc."),
                            QStringLiteral("Search Window"), Text, 0);
        search = typed.value_or(QString()).trimmed();
        if (search.isEmpty()) {
            Result = kFindCancel;
            return;
        }
    }

    // The rows are read whole before the first question: a box waits on a person, and the
    // connection must not stay in the middle of a read meanwhile.
    std::vector<Found> rows;
    {
        db::Recordset rs(gic.GetConnection(), QStringLiteral("Select * from ") + Table +
                                                  QStringLiteral(" where ") + NameColumn +
                                                  QStringLiteral(" LIKE ") +
                                                  db::QuoteText(search + QLatin1Char('%')));
        for (; !rs.Eof(); rs.MoveNext()) {
            QString text = rs.Text(NameColumn);
            for (const auto& [label, column] : fields) {
                const QString value = rs.Text(column).trimmed();
                if (!value.isEmpty())
                    text += QStringLiteral("\r") + label + QStringLiteral(": ") + value;
            }
            rows.push_back({rs.Text(idColumn), text});
        }
    }
    if (listOffer && rows.size() > 1) {
        Result = kFindList + rows.front().id;
        return;
    }
    for (std::size_t i = 0; i < rows.size(); ++i) {
        const int answer = prompts().Message(
            rows[i].text + QStringLiteral("\r\r ...was found in the database. ") + question,
            Buttons::YesNoCancel, Icon::Question, kTitle, 2);
        if (answer == AnswerNo)
            continue;
        if (answer != AnswerYes) {
            Result = kFindCancel;
            return;
        }
        Result = rows[i].id;
        if (listOffer && i + 1 < rows.size()) {
            const int more = prompts().Message(
                QStringLiteral("There are more matches in your database that you have not "
                               "viewed. Would you like to select from a list instead ?"),
                Buttons::YesNoCancel, Icon::Question, kTitle, 2);
            if (more == AnswerYes)
                Result = kFindList + rows[i].id;
            else if (more != AnswerNo)
                Result = kFindCancel;
        }
        return;
    }
    if (gic.AskYesNo(true, kTitle,
                     QStringLiteral("[ ") + search + QStringLiteral(" ]") +
                         QStringLiteral(" was not found in the database.") +
                         QStringLiteral(" Add as new ?"))) {
        Result = kFindNew;
        Text = search;
    } else {
        Result = kFindCancel;
    }
}

}  // namespace orvo
