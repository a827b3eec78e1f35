#include "platform/vcard.h"

#include <QStringDecoder>
#include <algorithm>

namespace orvo::vcard {
namespace {

struct Parameter {
    QByteArray name;  // upper case
    QList<QByteArray> values;
};

struct Property {
    QByteArray name;  // upper case, group removed
    QList<Parameter> parameters;
    QByteArray value;  // raw bytes after the colon

    QList<QByteArray> Values(const char* parameter) const {
        QList<QByteArray> out;
        for (const Parameter& p : parameters) {
            if (p.name == parameter)
                out += p.values;
        }
        return out;
    }
    bool Has(const char* parameter, const char* value) const {
        const QList<QByteArray> values = Values(parameter);
        return std::any_of(values.begin(), values.end(), [value](const QByteArray& v) {
            return v.compare(value, Qt::CaseInsensitive) == 0;
        });
    }
};

bool IsQuotedPrintable(const Property& property) {
    return property.Has("ENCODING", "QUOTED-PRINTABLE") || property.Has("ENCODING", "Q");
}

// Splits at `separator` outside double quotes.
QList<QByteArray> SplitOutsideQuotes(const QByteArray& text, char separator) {
    QList<QByteArray> parts;
    QByteArray current;
    bool quoted = false;
    for (const char c : text) {
        if (c == '"')
            quoted = !quoted;
        if (c == separator && !quoted) {
            parts << current;
            current.clear();
            continue;
        }
        current += c;
    }
    parts << current;
    return parts;
}

QByteArray Unquoted(QByteArray value) {
    value = value.trimmed();
    if (value.size() >= 2 && value.startsWith('"') && value.endsWith('"'))
        return value.mid(1, value.size() - 2);
    return value;
}

Parameter ReadParameter(const QByteArray& text) {
    Parameter parameter;
    const qsizetype equals = text.indexOf('=');
    if (equals < 0) {
        // The 2.1 form names the value alone: ";WORK", ";PREF", ";QUOTED-PRINTABLE".
        const QByteArray value = text.trimmed().toUpper();
        if (value == "QUOTED-PRINTABLE" || value == "BASE64" || value == "8BIT")
            parameter.name = "ENCODING";
        else
            parameter.name = "TYPE";
        parameter.values << value;
        return parameter;
    }
    parameter.name = text.left(equals).trimmed().toUpper();
    // "TYPE=work,home" and "TYPE=\"work,home\"" both name two values.
    for (const QByteArray& value : SplitOutsideQuotes(text.mid(equals + 1), ',')) {
        for (const QByteArray& each : Unquoted(value).split(','))
            parameter.values << each.trimmed();
    }
    return parameter;
}

// A logical line as a property; false for a line that is none.
bool ReadProperty(const QByteArray& line, Property& property) {
    qsizetype colon = -1;
    bool quoted = false;
    for (qsizetype i = 0; i < line.size(); ++i) {
        if (line[i] == '"')
            quoted = !quoted;
        else if (line[i] == ':' && !quoted) {
            colon = i;
            break;
        }
    }
    if (colon <= 0)
        return false;
    const QList<QByteArray> head = SplitOutsideQuotes(line.left(colon), ';');
    QByteArray name = head.first().trimmed();
    if (const qsizetype dot = name.lastIndexOf('.'); dot >= 0)
        name = name.mid(dot + 1);  // "item1.EMAIL"
    property.name = name.toUpper();
    property.parameters.clear();
    for (qsizetype i = 1; i < head.size(); ++i) {
        if (!head[i].trimmed().isEmpty())
            property.parameters << ReadParameter(head[i]);
    }
    property.value = line.mid(colon + 1);
    return !property.name.isEmpty();
}

int HexDigit(char c) {
    if (c >= '0' && c <= '9')
        return c - '0';
    if (c >= 'A' && c <= 'F')
        return c - 'A' + 10;
    if (c >= 'a' && c <= 'f')
        return c - 'a' + 10;
    return -1;
}

QByteArray DecodeQuotedPrintable(const QByteArray& value) {
    QByteArray out;
    for (qsizetype i = 0; i < value.size(); ++i) {
        if (value[i] == '=' && i + 2 < value.size()) {
            const int high = HexDigit(value[i + 1]);
            const int low = HexDigit(value[i + 2]);
            if (high >= 0 && low >= 0) {
                out += static_cast<char>(high * 16 + low);
                i += 2;
                continue;
            }
        }
        out += value[i];
    }
    return out;
}

// The property's value as text, before any unescaping.
QString DecodedValue(const Property& property) {
    QByteArray bytes = property.value;
    if (IsQuotedPrintable(property))
        bytes = DecodeQuotedPrintable(bytes);
    const QList<QByteArray> charset = property.Values("CHARSET");
    if (!charset.isEmpty() && charset.first().compare("UTF-8", Qt::CaseInsensitive) != 0) {
        QStringDecoder decoder(charset.first().constData());
        if (decoder.isValid())
            return decoder.decode(bytes);
    }
    return QString::fromUtf8(bytes);
}

// Splits at unescaped `separator` and unescapes each part.
QStringList SplitText(const QString& value, QChar separator) {
    QStringList parts;
    QString current;
    for (qsizetype i = 0; i < value.size(); ++i) {
        const QChar c = value[i];
        if (c == QLatin1Char('\\') && i + 1 < value.size()) {
            const QChar next = value[++i];
            if (next == QLatin1Char('n') || next == QLatin1Char('N'))
                current += QLatin1Char('\n');
            else
                current += next;  // "\,", "\;", "\\" and any other escaped character
            continue;
        }
        if (c == separator) {
            parts << current;
            current.clear();
            continue;
        }
        current += c;
    }
    parts << current;
    return parts;
}

QString UnescapedText(const QString& value) {
    return SplitText(value, QChar()).join(QString());
}

Email ReadEmail(const Property& property) {
    Email email;
    email.address = UnescapedText(DecodedValue(property)).trimmed();
    if (email.address.startsWith(QLatin1String("mailto:"), Qt::CaseInsensitive))
        email.address = email.address.mid(7).trimmed();
    for (const QByteArray& type : property.Values("TYPE")) {
        const QString word = QString::fromUtf8(type).toLower();
        if (word == QLatin1String("pref"))
            email.preference = 1;
        else if (!word.isEmpty())
            email.types << word;
    }
    const QList<QByteArray> pref = property.Values("PREF");
    bool ok = false;
    const int rank = pref.isEmpty() ? 0 : pref.first().toInt(&ok);
    if (ok && rank >= 1 && rank <= 100)
        email.preference = rank;
    return email;
}

// "Last;First;Middle;Prefix;Suffix" as the name people read.
QString StructuredName(const QString& value) {
    const QStringList parts = SplitText(value, QLatin1Char(';'));
    QStringList words;
    for (const int index : {3, 1, 2, 0, 4}) {
        const QString part = parts.value(index).simplified();
        if (!part.isEmpty())
            words << part;
    }
    return words.join(QLatin1Char(' '));
}

// The logical lines of the data: folded lines joined, and a quoted-printable value that ends
// with a soft line break joined with the line after it.
QList<QByteArray> LogicalLines(QByteArray data) {
    if (data.startsWith("\xEF\xBB\xBF"))
        data.remove(0, 3);
    QList<QByteArray> lines;
    bool softBreak = false;
    for (QByteArray line : data.split('\n')) {
        if (line.endsWith('\r'))
            line.chop(1);
        if (softBreak && !lines.isEmpty()) {
            lines.last().chop(1);  // the "=" of the soft break; the next line goes on as it is
            lines.last() += line;
        } else if ((line.startsWith(' ') || line.startsWith('\t')) && !lines.isEmpty()) {
            lines.last() += line.mid(1);
        } else {
            lines << line;
        }
        const QByteArray& last = lines.last();
        const qsizetype colon = last.indexOf(':');
        softBreak = last.endsWith('=') && colon > 0 &&
                    last.left(colon).toUpper().contains("QUOTED-PRINTABLE");
    }
    return lines;
}

}  // namespace

QString Card::PreferredEmail() const {
    const Email* best = nullptr;
    for (const Email& email : emails) {
        if (!email.address.isEmpty() && (!best || email.preference < best->preference))
            best = &email;
    }
    return best ? best->address : QString();
}

QList<Card> ParseCards(const QByteArray& data) {
    QList<Card> cards;
    Card card;
    QString structuredName;
    int depth = 0;  // a card may hold another (a 2.1 AGENT), whose lines are not this card's
    for (const QByteArray& line : LogicalLines(data)) {
        Property property;
        if (!ReadProperty(line, property))
            continue;
        const QByteArray word = property.value.trimmed().toUpper();
        if (property.name == "BEGIN" && word == "VCARD") {
            if (++depth == 1) {
                card = Card();
                structuredName.clear();
            }
            continue;
        }
        if (property.name == "END" && word == "VCARD") {
            if (depth > 0 && --depth == 0) {
                if (card.name.isEmpty())
                    card.name = structuredName;
                cards << card;
            }
            continue;
        }
        if (depth != 1)
            continue;
        if (property.name == "FN") {
            card.name = UnescapedText(DecodedValue(property)).simplified();
        } else if (property.name == "N") {
            structuredName = StructuredName(DecodedValue(property));
        } else if (property.name == "EMAIL") {
            const Email email = ReadEmail(property);
            if (!email.address.isEmpty())
                card.emails << email;
        }
    }
    return cards;
}

}  // namespace orvo::vcard
