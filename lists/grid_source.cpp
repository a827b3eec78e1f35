#include "lists/grid_source.h"

#include <QRegularExpression>

namespace orvo::lists {
namespace {

// Splits text at each separator that stands outside quotes, brackets and parentheses.
QStringList SplitTopLevel(const QString& text, QChar separator) {
    QStringList parts;
    QString current;
    int depth = 0;
    QChar quote;
    for (const QChar c : text) {
        if (!quote.isNull()) {
            current += c;
            if (c == quote)
                quote = QChar();
            continue;
        }
        if (c == QLatin1Char('\'') || c == QLatin1Char('"')) {
            quote = c;
        } else if (c == QLatin1Char('[')) {
            quote = QLatin1Char(']');
        } else if (c == QLatin1Char('(')) {
            ++depth;
        } else if (c == QLatin1Char(')')) {
            --depth;
        } else if (c == separator && depth == 0) {
            parts << current;
            current.clear();
            continue;
        }
        current += c;
    }
    parts << current;
    return parts;
}

// Where a word (with a blank on each side) first stands outside quotes and brackets, in any
// letter case; -1 when it does not.
qsizetype FindWord(const QString& text, const QString& word, qsizetype from = 0) {
    QChar quote;
    for (qsizetype i = from; i < text.size(); ++i) {
        const QChar c = text[i];
        if (!quote.isNull()) {
            if (c == quote)
                quote = QChar();
            continue;
        }
        if (c == QLatin1Char('\'') || c == QLatin1Char('"')) {
            quote = c;
            continue;
        }
        if (c == QLatin1Char('[')) {
            quote = QLatin1Char(']');
            continue;
        }
        if (QStringView(text).mid(i, word.size()).compare(word, Qt::CaseInsensitive) == 0)
            return i;
    }
    return -1;
}

// Where the last occurrence of a word outside quotes stands.
qsizetype FindLastWord(const QString& text, const QString& word) {
    qsizetype found = -1;
    for (qsizetype at = FindWord(text, word); at >= 0; at = FindWord(text, word, at + 1))
        found = at;
    return found;
}

QString SelectList(const QString& sql) {
    QString text = sql;
    text.replace(QLatin1Char('\r'), QLatin1Char(' ')).replace(QLatin1Char('\n'), QLatin1Char(' '));
    const qsizetype from = FindWord(text, QStringLiteral(" FROM "));
    QString list = (from < 0 ? text : text.left(from)).trimmed();
    static const QRegularExpression head(
        QStringLiteral("^SELECT\\s+(DISTINCTROW\\s+|DISTINCT\\s+)?(TOP\\s+\\d+\\s+)?"),
        QRegularExpression::CaseInsensitiveOption);
    return list.remove(head);
}

struct SelectItem {
    QString expression;
    QString alias;
};

QList<SelectItem> SelectItems(const QString& sql) {
    QList<SelectItem> items;
    for (const QString& part : SplitTopLevel(SelectList(sql), QLatin1Char(','))) {
        const QString item = part.trimmed();
        if (item.isEmpty())
            continue;
        const qsizetype as = FindLastWord(item, QStringLiteral(" AS "));
        if (as >= 0) {
            items << SelectItem{item.left(as).trimmed(), StripBrackets(item.mid(as + 4).trimmed())};
            continue;
        }
        const QString last = item.section(QLatin1Char('.'), -1);
        items << SelectItem{item, StripBrackets(last.trimmed())};
    }
    return items;
}

QStringList SortColumns(const QString& text) {
    QStringList columns;
    QString sort = text.trimmed();
    if (sort.endsWith(QLatin1Char(';')))
        sort.chop(1);
    for (const QString& part : SplitTopLevel(sort, QLatin1Char(','))) {
        const QString column = part.trimmed();
        if (!column.isEmpty())
            columns << column;
    }
    return columns;
}

}  // namespace

QString StripBrackets(const QString& name) {
    QString text = name.trimmed();
    text.remove(QLatin1Char('[')).remove(QLatin1Char(']'));
    return text.trimmed();
}

QString ListSqlForKind(const QString& sql, short databaseKind) {
    if (databaseKind == 1)
        return sql;
    QString text = sql;
    static const QRegularExpression distinctRow(QStringLiteral("\\bDISTINCTROW\\b"),
                                                QRegularExpression::CaseInsensitiveOption);
    return text.replace(distinctRow, QStringLiteral("DISTINCT"));
}

GridSource BuildGridSource(const QString& sql, const QString& sortBy) {
    GridSource source;
    for (const SelectItem& item : SelectItems(sql))
        source.captions << item.alias;
    QString text = sql;
    text.replace(QLatin1Char('\r'), QLatin1Char(' ')).replace(QLatin1Char('\n'), QLatin1Char(' '));
    const qsizetype orderBy = FindWord(text, QStringLiteral("ORDER BY "));
    if (orderBy >= 0) {
        source.sort = SortColumns(text.mid(orderBy + 9));
        source.sortFromOrderBy = true;
    } else {
        source.sort = SortColumns(sortBy);
    }
    return source;
}

QString LookupSql(const QString& sql, const QString& idField, int id) {
    QString text = sql.trimmed();
    text.replace(QLatin1Char('\r'), QLatin1Char(' ')).replace(QLatin1Char('\n'), QLatin1Char(' '));
    const qsizetype orderBy = FindWord(text, QStringLiteral(" ORDER BY "));
    if (orderBy >= 0)
        text.truncate(orderBy);
    text = text.trimmed();
    while (text.endsWith(QLatin1Char(';')))
        text = text.chopped(1).trimmed();
    // The key is named in the statement by the expression behind its alias.
    QString key = idField;
    for (const SelectItem& item : SelectItems(sql)) {
        if (item.alias.compare(StripBrackets(idField), Qt::CaseInsensitive) == 0) {
            key = item.expression;
            break;
        }
    }
    const QString test = key + QLatin1Char('=') + QString::number(id);
    const qsizetype where = FindWord(text, QStringLiteral(" WHERE "));
    if (where < 0)
        return text + QStringLiteral(" Where ") + test;
    // The condition the list had keeps its own meaning beside the key's.
    return text.left(where) + QStringLiteral(" WHERE (") + text.mid(where + 7).trimmed() +
           QStringLiteral(") and ") + test;
}

}  // namespace orvo::lists
