#include "lists/list_table_model.h"

#include <QHash>
#include <QStringDecoder>

#include <algorithm>
#include <array>
#include <charconv>
#include <cmath>
#include <cstring>
#include <limits>
#include <numeric>
#include <string_view>

#include "platform/db/connection.h"

namespace orvo::lists {
namespace {

// Folds of the first 256 characters, as QChar folds them; the rest fold cell by cell.
const std::array<char16_t, 256>& Latin1Folds() {
    static const std::array<char16_t, 256> folds = [] {
        std::array<char16_t, 256> table{};
        for (char32_t c = 0; c < 256; ++c)
            table[c] = static_cast<char16_t>(QChar::toCaseFolded(c));
        return table;
    }();
    return folds;
}

bool IsNumber(const QVariant& value) {
    switch (value.metaType().id()) {
        case QMetaType::Int:
        case QMetaType::UInt:
        case QMetaType::LongLong:
        case QMetaType::ULongLong:
        case QMetaType::Short:
        case QMetaType::UShort:
        case QMetaType::Double:
        case QMetaType::Float:
            return true;
        default:
            return false;
    }
}

// A filter's text in the form of the pool it is matched against.
struct Needle {
    bool impossible = false;  // holds a character the pool cannot hold
    std::string latin1;
    std::u16string utf16;
};

Needle NeedleFor(const TextPool& pool, const QString& folded) {
    Needle needle;
    if (pool.wide()) {
        needle.utf16.assign(reinterpret_cast<const char16_t*>(folded.utf16()), folded.size());
        return needle;
    }
    needle.latin1.reserve(folded.size());
    for (const QChar c : folded) {
        if (c.unicode() > 0xff) {
            needle.impossible = true;
            break;
        }
        needle.latin1.push_back(static_cast<char>(c.unicode()));
    }
    return needle;
}

template <class Char>
int CompareSpans(const Char* a, size_t na, const Char* b, size_t nb) {
    using Unsigned = std::make_unsigned_t<Char>;
    const size_t n = std::min(na, nb);
    for (size_t i = 0; i < n; ++i) {
        const auto ca = static_cast<Unsigned>(a[i]);
        const auto cb = static_cast<Unsigned>(b[i]);
        if (ca != cb)
            return ca < cb ? -1 : 1;
    }
    return na == nb ? 0 : (na < nb ? -1 : 1);
}

// Folded texts end to end, text d being [at[d], at[d + 1]).
struct FoldedKeys {
    const char16_t* chars;
    const uint32_t* at;
    bool narrow;  // every character is within Latin-1

    uint32_t Length(uint32_t d) const { return at[d + 1] - at[d]; }
    bool Equal(uint32_t x, uint32_t y) const {
        return Length(x) == Length(y) &&
               std::memcmp(chars + at[x], chars + at[y], Length(x) * sizeof(char16_t)) == 0;
    }
    int Compare(uint32_t x, uint32_t y) const {
        return CompareSpans(chars + at[x], Length(x), chars + at[y], Length(y));
    }
    // Characters from `depth` on put into one number that orders as they do: eight while the
    // texts are narrow, four otherwise, a text that ends padded with the lowest character.
    uint64_t Chunk(uint32_t d, uint32_t depth) const {
        const uint32_t shift = narrow ? 8 : 16;
        const uint32_t width = 64 / shift;
        uint64_t chunk = 0;
        for (uint32_t c = at[d] + depth; c < at[d] + depth + width; ++c)
            chunk = (chunk << shift) | (c < at[d + 1] ? chars[c] : 0u);
        return chunk;
    }
};

// Sorts texts by the number of their characters from `depth` on, then each run that shares it by
// the characters after, until the texts of a run end; a run of ended texts is put in order by
// comparing them whole (a text may hold the padding character itself). Integer compares decide
// nearly everything, however long the beginnings the texts share.
void SortByChunks(const FoldedKeys& keys, std::pair<uint64_t, uint32_t>* items, size_t n,
                  uint32_t depth) {
    for (size_t i = 0; i < n; ++i)
        items[i].first = keys.Chunk(items[i].second, depth);
    std::sort(items, items + n, [](const auto& x, const auto& y) { return x.first < y.first; });
    const uint32_t next = depth + (keys.narrow ? 8 : 4);
    for (size_t i = 0; i < n;) {
        size_t j = i + 1;
        bool longer = keys.Length(items[i].second) > next;
        for (; j < n && items[j].first == items[i].first; ++j)
            longer |= keys.Length(items[j].second) > next;
        if (j - i > 1) {
            if (longer) {
                SortByChunks(keys, items + i, j - i, next);
            } else {
                std::sort(items + i, items + j, [&](const auto& x, const auto& y) {
                    return keys.Compare(x.second, y.second) < 0;
                });
            }
        }
        i = j;
    }
}

// Folds cells as the list folds them: the first 256 characters through the table, a cell with
// any other through Qt. The folded text stays valid until the next cell.
class CellFolder {
public:
    QStringView Fold(const QChar* chars, qsizetype length, bool& same) {
        scratch_.resize(length);
        const auto& folds = Latin1Folds();
        same = true;
        for (qsizetype i = 0; i < length; ++i) {
            const char16_t c = chars[i].unicode();
            if (c > 0xff) {
                const QString text(chars, length);
                wide_ = text.toCaseFolded();
                same = wide_ == text;
                return wide_;
            }
            scratch_[i] = QChar(folds[c]);
            same &= folds[c] == c;
        }
        return QStringView(scratch_.data(), length);
    }

private:
    std::vector<QChar> scratch_;
    QString wide_;
};

// Appends the folded text of a column's cell, whose text starts at `begin` of the column's
// text. A column keeps no folded texts while every cell folds to itself.
void AppendFold(ListColumn& column, const QChar* chars, qsizetype length, uint32_t begin) {
    static thread_local CellFolder folder;
    bool same = false;
    const QStringView folded = folder.Fold(chars, length, same);
    if (column.foldsToItself && same)
        return;
    if (column.foldsToItself) {
        // Every earlier cell folded to itself: its folded text is its text.
        column.foldsToItself = false;
        if (column.text.wide()) {
            column.folded.Append(reinterpret_cast<const QChar*>(column.text.utf16()), begin);
        } else {
            for (uint32_t i = 0; i < begin; ++i) {
                const QChar c(static_cast<unsigned char>(column.text.latin1()[i]));
                column.folded.Append(&c, 1);
            }
        }
    }
    column.folded.Append(folded.constData(), folded.size());
}

}  // namespace

QString FoldForList(const QString& text) {
    return text.toCaseFolded();
}

// ---- TextPool ------------------------------------------------------------------------------

// A cell is a few characters: the pool takes them with one check of room and one pass that
// copies them and notes the highest bits seen; a character beyond Latin-1 undoes the copy and
// widens the pool.
void TextPool::Append(const QChar* text, qsizetype length) {
    const auto* chars = reinterpret_cast<const char16_t*>(text);
    if (!wide_) {
        char* out = latin1_.Extend(length);
        char16_t seen = 0;
        for (qsizetype i = 0; i < length; ++i) {
            seen |= chars[i];
            out[i] = static_cast<char>(chars[i]);
        }
        if (seen <= 0xff)
            return;
        latin1_.Truncate(latin1_.size() - length);
        Widen();
    }
    if (length > 0)
        std::memcpy(utf16_.Extend(length), chars, length * sizeof(char16_t));
}

void TextPool::AppendLatin1(const char* text, qsizetype length) {
    if (wide_) {
        char16_t* out = utf16_.Extend(length);
        for (qsizetype i = 0; i < length; ++i)
            out[i] = static_cast<unsigned char>(text[i]);
        return;
    }
    if (length > 0)
        std::memcpy(latin1_.Extend(length), text, length);
}

// Most cells are ASCII: eight bytes at a time are checked and copied as they are. A character of
// Latin-1 beyond ASCII is two bytes to decode; anything else widens the pool.
void TextPool::AppendUtf8(const char* text, qsizetype length) {
    if (!wide_) {
        char* out = latin1_.Extend(length);
        qsizetype i = 0;
        qsizetype n = 0;
        while (i < length) {
            if (length - i >= 8) {
                uint64_t word;
                std::memcpy(&word, text + i, 8);
                if ((word & 0x8080808080808080u) == 0) {
                    std::memcpy(out + n, &word, 8);
                    i += 8;
                    n += 8;
                    continue;
                }
            }
            const auto byte = static_cast<unsigned char>(text[i]);
            if (byte < 0x80) {
                out[n++] = static_cast<char>(byte);
                ++i;
            } else if ((byte == 0xc2 || byte == 0xc3) && i + 1 < length &&
                       (static_cast<unsigned char>(text[i + 1]) & 0xc0) == 0x80) {
                out[n++] = static_cast<char>(((byte & 0x1f) << 6) | (text[i + 1] & 0x3f));
                i += 2;
            } else {
                break;
            }
        }
        if (i == length) {
            latin1_.Truncate(latin1_.size() - length + n);
            return;
        }
        latin1_.Truncate(latin1_.size() - length);
        Widen();
    }
    // UTF-8 never takes fewer bytes than UTF-16 takes characters.
    auto* out = reinterpret_cast<QChar*>(utf16_.Extend(length));
    QStringDecoder decoder(QStringDecoder::Utf8, QStringDecoder::Flag::Stateless);
    const qsizetype n = decoder.appendToBuffer(out, QByteArrayView(text, length)) - out;
    utf16_.Truncate(utf16_.size() - length + n);
}

void TextPool::Replace(uint32_t begin, uint32_t end, const QChar* text, qsizetype length) {
    // The tail moves out and comes back after the new text, which may widen the pool.
    const QString tail = Text(end, static_cast<uint32_t>(size()));
    if (wide_) {
        utf16_.Truncate(begin);
    } else {
        latin1_.Truncate(begin);
    }
    Append(text, length);
    Append(tail.constData(), tail.size());
}

void TextPool::Widen() {
    utf16_.Reserve(latin1_.capacity());
    char16_t* out = utf16_.Extend(latin1_.size());
    for (size_t i = 0; i < latin1_.size(); ++i)
        out[i] = static_cast<unsigned char>(latin1_.data()[i]);
    latin1_.Release();
    wide_ = true;
}

QString TextPool::Text(uint32_t begin, uint32_t end) const {
    if (end <= begin)
        return QString();
    if (wide_) {
        return QString(reinterpret_cast<const QChar*>(utf16_.data() + begin),
                       static_cast<qsizetype>(end - begin));
    }
    return QString::fromLatin1(latin1_.data() + begin, static_cast<qsizetype>(end - begin));
}

void TextPool::Squeeze() {
    latin1_.Squeeze();
    utf16_.Squeeze();
}

// ---- ListTableModel ------------------------------------------------------------------------

ListTableModel::ListTableModel(QObject* parent) : QAbstractTableModel(parent) {}

void ListTableModel::StartColumns(const QStringList& captions) {
    columns_.clear();
    columns_.resize(captions.size());
    for (qsizetype i = 0; i < captions.size(); ++i) {
        columns_[i].caption = captions[i];
        columns_[i].numeric = true;  // until a value says otherwise
    }
    nulls_.clear();
    records_ = 0;
    order_.clear();
    shown_.clear();
    sortKeys_.clear();
    filters_ = QStringList(captions.size(), QString());
    foldedFilters_ = filters_;
}

void ListTableModel::AppendValue(ListColumn& column, const QVariant& value) {
    AppendCell(column, db::Cell::Of(value));
}

// A cell is taken as the engine gave it: a text is appended straight from its bytes or its
// string, a whole number is written as digits, and only other kinds (real numbers, dates,
// numbers of other widths) go through a converted string.
void ListTableModel::AppendCell(ListColumn& column, const db::Cell& cell) {
    using Kind = db::Cell::Kind;
    if (cell.kind == Kind::Null) {
        const size_t bit = static_cast<size_t>(records_) * columns_.size() +
                           static_cast<size_t>(&column - columns_.data());
        if (nulls_.size() <= bit / 8)
            nulls_.resize(std::max(nulls_.size() * 2, bit / 8 + 1), 0);
        nulls_[bit / 8] |= static_cast<uint8_t>(1u << (bit % 8));
        column.offsets.push_back(column.offsets.back());
        if (column.numeric)
            column.numbers.push_back(-std::numeric_limits<double>::infinity());
        return;
    }
    const uint32_t begin = column.offsets.back();
    const auto notNumeric = [&column] {
        if (column.numeric) {
            column.numeric = false;
            std::vector<double>().swap(column.numbers);
        }
    };
    switch (cell.kind) {
        case Kind::Utf8:
            notNumeric();
            column.text.AppendUtf8(cell.utf8, cell.bytes);
            break;
        case Kind::Text:
            notNumeric();
            column.text.Append(cell.text->constData(), cell.text->size());
            break;
        case Kind::Integer: {
            char digits[24];
            const auto [end, error] = std::to_chars(digits, digits + sizeof digits, cell.integer);
            column.text.AppendLatin1(digits, end - digits);
            if (column.numeric)
                column.numbers.push_back(static_cast<double>(cell.integer));
            break;
        }
        default: {
            if (!IsNumber(*cell.other))
                notNumeric();
            else if (column.numeric)
                column.numbers.push_back(cell.other->toDouble());
            const QString text = cell.other->toString();
            column.text.Append(text.constData(), text.size());
            break;
        }
    }
    column.offsets.push_back(static_cast<uint32_t>(column.text.size()));
    if (column.foldReady) {
        const QString text = column.text.Text(begin, column.offsets.back());
        AppendFold(column, text.constData(), text.size(), begin);
    }
}

void ListTableModel::Fold(ListColumn& column) {
    if (column.foldReady)
        return;
    column.foldReady = true;
    column.foldsToItself = true;
    column.folded = TextPool();
    const size_t rows = column.offsets.size() - 1;
    std::vector<QChar> cell;
    for (size_t r = 0; r < rows; ++r) {
        const uint32_t begin = column.offsets[r];
        const uint32_t end = column.offsets[r + 1];
        if (column.text.wide()) {
            AppendFold(column, reinterpret_cast<const QChar*>(column.text.utf16()) + begin,
                       end - begin, begin);
            continue;
        }
        cell.resize(end - begin);
        for (uint32_t i = begin; i < end; ++i)
            cell[i - begin] = QChar(static_cast<unsigned char>(column.text.latin1()[i]));
        AppendFold(column, cell.data(), static_cast<qsizetype>(cell.size()), begin);
    }
    column.folded.Squeeze();
}

void ListTableModel::FinishColumns() {
    for (ListColumn& column : columns_) {
        column.text.Squeeze();
        column.folded.Squeeze();
        column.offsets.shrink_to_fit();
        column.numbers.shrink_to_fit();
    }
    nulls_.resize((static_cast<size_t>(records_) * columns_.size() + 7) / 8, 0);
    nulls_.shrink_to_fit();
    order_.resize(records_);
    for (uint32_t i = 0; i < records_; ++i)
        order_[i] = i;
    shown_ = order_;
}

void ListTableModel::Load(db::Connection& connection, const QString& sql,
                          const QStringList& captions) {
    beginResetModel();
    StartColumns(captions);
    try {
        connection.ReadRows(sql, [this](const db::Cell* cells, int count) {
            const size_t fields = std::min<size_t>(count, columns_.size());
            for (size_t c = 0; c < fields; ++c)
                AppendCell(columns_[c], cells[c]);
            for (size_t c = fields; c < columns_.size(); ++c)
                AppendCell(columns_[c], db::Cell());
            ++records_;
        });
    } catch (...) {
        // A read that fails part way leaves the list empty, not half read.
        StartColumns(captions);
        FinishColumns();
        endResetModel();
        throw;
    }
    FinishColumns();
    endResetModel();
}

void ListTableModel::LoadRows(const QStringList& captions, const QList<QStringList>& rows) {
    beginResetModel();
    StartColumns(captions);
    for (const QStringList& row : rows) {
        for (size_t c = 0; c < columns_.size(); ++c) {
            const QString value = row.value(static_cast<qsizetype>(c));
            AppendValue(columns_[c], value.isNull() ? QVariant() : QVariant(value));
        }
        ++records_;
    }
    FinishColumns();
    endResetModel();
}

void ListTableModel::Clear() {
    LoadRows(Captions(), {});
}

int ListTableModel::rowCount(const QModelIndex& parent) const {
    return parent.isValid() ? 0 : static_cast<int>(shown_.size());
}

int ListTableModel::columnCount(const QModelIndex& parent) const {
    return parent.isValid() ? 0 : static_cast<int>(columns_.size());
}

QVariant ListTableModel::data(const QModelIndex& index, int role) const {
    if (!index.isValid() || index.row() >= ShownRows() || index.column() >= columnCount())
        return QVariant();
    if (role == Qt::DisplayRole || role == Qt::ToolTipRole)
        return RecordText(static_cast<int>(shown_[index.row()]), index.column());
    if (role == Qt::TextAlignmentRole && columns_[index.column()].numeric)
        return QVariant(Qt::AlignRight | Qt::AlignVCenter);
    return QVariant();
}

QVariant ListTableModel::headerData(int section, Qt::Orientation orientation, int role) const {
    if (role != Qt::DisplayRole)
        return QVariant();
    if (orientation == Qt::Vertical)
        return section + 1;
    if (section < 0 || section >= columnCount())
        return QVariant();
    return columns_[section].caption;
}

Qt::ItemFlags ListTableModel::flags(const QModelIndex& index) const {
    if (!index.isValid())
        return Qt::NoItemFlags;
    return Qt::ItemIsEnabled | Qt::ItemIsSelectable | Qt::ItemNeverHasChildren;
}

void ListTableModel::sort(int column, Qt::SortOrder order) {
    if (column < 0 || column >= columnCount())
        return;
    SortBy({SortKey{column, order}});
}

int ListTableModel::ColumnOf(const QString& caption) const {
    for (size_t i = 0; i < columns_.size(); ++i) {
        if (columns_[i].caption.compare(caption, Qt::CaseInsensitive) == 0)
            return static_cast<int>(i);
    }
    return -1;
}

QString ListTableModel::Caption(int column) const {
    return column >= 0 && column < columnCount() ? columns_[column].caption : QString();
}

QStringList ListTableModel::Captions() const {
    QStringList captions;
    for (const ListColumn& column : columns_)
        captions << column.caption;
    return captions;
}

// How many records a text column's ranking reads before it judges whether its texts repeat.
constexpr uint32_t kProbe = 4096;

// A text column is ranked through its distinct texts: each record's text is looked up once in a
// hash of the texts seen, and only the distinct texts are folded and sorted (a practice's
// names repeat a great deal). Texts that differ only in letter case share a rank.
std::vector<uint32_t> ListTableModel::TextRanks(const ListColumn& column, uint32_t& count) const {
    const TextPool& pool = column.text;
    const size_t unit = pool.wide() ? sizeof(char16_t) : 1;
    const char* base = pool.wide() ? reinterpret_cast<const char*>(pool.utf16()) : pool.latin1();
    const uint32_t* offsets = column.offsets.data();
    std::vector<uint32_t> ranks(records_);
    // The records whose texts are folded and ordered: one of each distinct text, in the order
    // first seen, then every record once the column is taken to be distinct.
    std::vector<uint32_t> sample;
    QHash<QByteArrayView, uint32_t> distinct;
    distinct.reserve(std::min<qsizetype>(records_, kProbe));
    uint32_t r = 0;
    for (; r < records_; ++r) {
        // A column whose first records are mostly distinct (names of companies) is taken to
        // be distinct throughout: its records are ordered themselves, without the hash.
        if (r == kProbe && sample.size() > kProbe * 3 / 4)
            break;
        const QByteArrayView cell(base + offsets[r] * unit, (offsets[r + 1] - offsets[r]) * unit);
        auto it = distinct.constFind(cell);
        if (it == distinct.cend()) {
            it = distinct.insert(cell, static_cast<uint32_t>(sample.size()));
            sample.push_back(r);
        }
        ranks[r] = it.value();
    }
    for (; r < records_; ++r) {
        ranks[r] = static_cast<uint32_t>(sample.size());
        sample.push_back(r);
    }
    // The folded distinct texts, end to end. Latin-1 folds through the table, character by
    // character; a wide text folds as the filter folds it.
    std::vector<char16_t> keys;
    std::vector<uint32_t> keyAt(sample.size() + 1, 0);
    char16_t seen = 0;  // every character of the keys or'ed together
    if (pool.wide()) {
        CellFolder folder;
        for (size_t d = 0; d < sample.size(); ++d) {
            const uint32_t record = sample[d];
            bool same = false;
            const QStringView folded =
                folder.Fold(reinterpret_cast<const QChar*>(pool.utf16()) + offsets[record],
                            offsets[record + 1] - offsets[record], same);
            keys.insert(keys.end(), folded.utf16(), folded.utf16() + folded.size());
            keyAt[d + 1] = static_cast<uint32_t>(keys.size());
        }
        for (const char16_t c : keys)
            seen |= c;
    } else {
        for (size_t d = 0; d < sample.size(); ++d)
            keyAt[d + 1] = keyAt[d] + offsets[sample[d] + 1] - offsets[sample[d]];
        keys.resize(keyAt.back());
        const auto& folds = Latin1Folds();
        const auto* text = reinterpret_cast<const unsigned char*>(pool.latin1());
        for (size_t d = 0; d < sample.size(); ++d) {
            char16_t* out = keys.data() + keyAt[d];
            const uint32_t begin = offsets[sample[d]];
            for (uint32_t i = 0; i < keyAt[d + 1] - keyAt[d]; ++i) {
                out[i] = folds[text[begin + i]];
                seen |= out[i];
            }
        }
    }
    const FoldedKeys folded{keys.data(), keyAt.data(), seen <= 0xff};
    std::vector<std::pair<uint64_t, uint32_t>> keyed(sample.size());
    for (uint32_t d = 0; d < sample.size(); ++d)
        keyed[d].second = d;
    SortByChunks(folded, keyed.data(), keyed.size(), 0);
    std::vector<uint32_t> rankOf(sample.size());
    count = 0;
    for (size_t i = 0; i < keyed.size(); ++i) {
        if (i > 0 && !folded.Equal(keyed[i].second, keyed[i - 1].second))
            ++count;
        rankOf[keyed[i].second] = count;
    }
    if (!keyed.empty())
        ++count;
    for (uint32_t& rank : ranks)
        rank = rankOf[rank];
    return ranks;
}

// A number that is not a number (the server's NaN) sorts after every other, as the server
// sorts it; nulls sort first.
std::vector<uint32_t> ListTableModel::NumberRanks(const ListColumn& column, uint32_t& count) const {
    const auto less = [](double x, double y) { return std::isnan(y) ? !std::isnan(x) : x < y; };
    std::vector<std::pair<double, uint32_t>> values(records_);
    for (uint32_t r = 0; r < records_; ++r)
        values[r] = {column.numbers[r], r};
    std::sort(values.begin(), values.end(),
              [&](const auto& x, const auto& y) { return less(x.first, y.first); });
    std::vector<uint32_t> ranks(records_);
    count = 0;
    for (size_t i = 0; i < values.size(); ++i) {
        if (i > 0 && less(values[i - 1].first, values[i].first))
            ++count;
        ranks[values[i].second] = count;
    }
    if (!values.empty())
        ++count;
    return ranks;
}

// Every key is turned into one rank per record, equal for equal values; the records are then
// put in order by a stable counting pass per key, from the last key to the first, starting
// from the order read. Records equal on every key so keep the order they were read in.
void ListTableModel::ApplySort() {
    std::vector<uint32_t> order(records_);
    std::iota(order.begin(), order.end(), 0u);
    std::vector<uint32_t> sorted(records_);
    for (auto key = sortKeys_.crbegin(); key != sortKeys_.crend(); ++key) {
        const ListColumn& column = columns_[key->column];
        uint32_t count = 0;
        std::vector<uint32_t> ranks =
            column.numeric ? NumberRanks(column, count) : TextRanks(column, count);
        if (key->order == Qt::DescendingOrder) {
            for (uint32_t& rank : ranks)
                rank = count - 1 - rank;
        }
        std::vector<uint32_t> next(static_cast<size_t>(count) + 1, 0);
        for (const uint32_t rank : ranks)
            ++next[rank + 1];
        std::partial_sum(next.begin(), next.end(), next.begin());
        for (const uint32_t record : order)
            sorted[next[ranks[record]]++] = record;
        order.swap(sorted);
    }
    order_.swap(order);
}

void ListTableModel::SortBy(const QList<SortKey>& keys) {
    QList<SortKey> valid;
    for (const SortKey& key : keys) {
        if (key.column >= 0 && key.column < columnCount())
            valid << key;
    }
    emit layoutAboutToBeChanged({}, QAbstractItemModel::VerticalSortHint);
    const QModelIndexList before = persistentIndexList();
    std::vector<int> records;
    records.reserve(before.size());
    for (const QModelIndex& index : before)
        records.push_back(index.row() < ShownRows() ? RecordOfRow(index.row()) : -1);
    sortKeys_ = valid;
    ApplySort();
    Refilter(false);
    // The view's current row and selection follow their records to where they now stand.
    std::vector<int> rowOf(records_, -1);
    for (size_t row = 0; row < shown_.size(); ++row)
        rowOf[shown_[row]] = static_cast<int>(row);
    QModelIndexList after;
    after.reserve(before.size());
    for (size_t i = 0; i < records.size(); ++i) {
        const int row = records[i] < 0 ? -1 : rowOf[records[i]];
        after << (row < 0 ? QModelIndex() : index(row, before[i].column()));
    }
    changePersistentIndexList(before, after);
    emit layoutChanged({}, QAbstractItemModel::VerticalSortHint);
}

void ListTableModel::SetFilter(int column, const QString& text) {
    if (column < 0 || column >= columnCount() || filters_[column] == text)
        return;
    const QString folded = FoldForList(text);
    const QString& old = foldedFilters_[column];
    // A filter that only adds to what was typed can only narrow what the list shows.
    const bool narrowing = !old.isEmpty() && folded.size() > old.size() &&
                           (matchAnywhere_ ? folded.contains(old) : folded.startsWith(old));
    beginResetModel();
    filters_[column] = text;
    foldedFilters_[column] = folded;
    Refilter(narrowing || (old.isEmpty() && !folded.isEmpty()));
    endResetModel();
}

QString ListTableModel::Filter(int column) const {
    return filters_.value(column);
}

void ListTableModel::ClearFilters() {
    if (!HasFilter())
        return;
    beginResetModel();
    for (QString& text : filters_)
        text.clear();
    for (QString& text : foldedFilters_)
        text.clear();
    shown_ = order_;
    endResetModel();
}

bool ListTableModel::HasFilter() const {
    return std::any_of(filters_.begin(), filters_.end(),
                       [](const QString& text) { return !text.isEmpty(); });
}

void ListTableModel::SetMatchAnywhere(bool anywhere) {
    if (anywhere == matchAnywhere_)
        return;
    beginResetModel();
    matchAnywhere_ = anywhere;
    // Anywhere finds every row that the start did, and more.
    Refilter(!anywhere);
    endResetModel();
}

// Each column's filter is matched in one pass over the column in the order it was read, with
// the needle put once into the form of the column's buffer; narrowing passes over the rows shown.
void ListTableModel::Refilter(bool narrowing) {
    std::vector<int> active;
    for (size_t c = 0; c < columns_.size(); ++c) {
        if (!foldedFilters_[c].isEmpty())
            active.push_back(static_cast<int>(c));
    }
    if (active.empty()) {
        shown_ = order_;
        return;
    }
    const std::vector<uint32_t>& candidates = narrowing ? shown_ : order_;
    std::vector<uint8_t> keep(records_, 0);
    for (const uint32_t record : candidates)
        keep[record] = 1;
    for (const int c : active) {
        Fold(columns_[c]);
        const ListColumn& column = columns_[c];
        const TextPool& pool = column.foldsToItself ? column.text : column.folded;
        const Needle n = NeedleFor(pool, foldedFilters_[c]);
        const uint32_t* offsets = column.offsets.data();
        if (n.impossible) {
            std::fill(keep.begin(), keep.end(), 0);
            break;
        }
        for (uint32_t r = 0; r < records_; ++r) {
            if (!keep[r])
                continue;
            const uint32_t begin = offsets[r];
            const size_t length = offsets[r + 1] - begin;
            bool match;
            if (pool.wide()) {
                const std::u16string_view cell(pool.utf16() + begin, length);
                match = matchAnywhere_ ? cell.find(n.utf16) != std::u16string_view::npos
                                       : cell.starts_with(n.utf16);
            } else if (matchAnywhere_) {
                match = length >= n.latin1.size() &&
                        memmem(pool.latin1() + begin, length, n.latin1.data(), n.latin1.size()) !=
                            nullptr;
            } else {
                match = length >= n.latin1.size() &&
                        std::memcmp(pool.latin1() + begin, n.latin1.data(), n.latin1.size()) == 0;
            }
            keep[r] = match;
        }
    }
    std::vector<uint32_t> shown;
    shown.reserve(narrowing ? shown_.size() : records_ / 4);
    for (const uint32_t record : candidates) {
        if (keep[record])
            shown.push_back(record);
    }
    shown_.swap(shown);
    shown_.shrink_to_fit();
}

int ListTableModel::RecordOfRow(int row) const {
    return row >= 0 && row < ShownRows() ? static_cast<int>(shown_[row]) : -1;
}

int ListTableModel::RowOfRecord(int record) const {
    if (record < 0 || record >= TotalRows())
        return -1;
    const auto it = std::find(shown_.begin(), shown_.end(), static_cast<uint32_t>(record));
    return it == shown_.end() ? -1 : static_cast<int>(it - shown_.begin());
}

int ListTableModel::FindRecord(int column, qint64 id) const {
    if (column < 0 || column >= columnCount())
        return -1;
    const ListColumn& c = columns_[column];
    for (uint32_t r = 0; r < records_; ++r) {
        if (c.numeric ? c.numbers[r] == static_cast<double>(id)
                      : RecordText(static_cast<int>(r), column).trimmed().toLongLong() == id) {
            if (!RecordIsNull(static_cast<int>(r), column))
                return static_cast<int>(r);
        }
    }
    return -1;
}

QString ListTableModel::RecordText(int record, int column) const {
    if (record < 0 || record >= TotalRows() || column < 0 || column >= columnCount())
        return QString();
    const ListColumn& c = columns_[column];
    return c.text.Text(c.offsets[record], c.offsets[record + 1]);
}

bool ListTableModel::RecordIsNull(int record, int column) const {
    if (record < 0 || record >= TotalRows() || column < 0 || column >= columnCount())
        return true;
    const size_t bit = static_cast<size_t>(record) * columns_.size() + column;
    return (nulls_[bit / 8] >> (bit % 8)) & 1;
}

// A record's new values are spliced into each column's buffers in place; the records after it
// move along. An edit refreshes one row this way instead of reading the list again.
void ListTableModel::UpdateRecord(int record, const QVariantList& values) {
    if (record < 0 || record >= TotalRows())
        return;
    for (size_t c = 0; c < columns_.size(); ++c) {
        ListColumn& column = columns_[c];
        const QVariant value = values.value(static_cast<qsizetype>(c));
        const QString text = value.isNull() ? QString() : value.toString();
        const QString folded = column.foldReady ? FoldForList(text) : text;
        const uint32_t begin = column.offsets[record];
        const uint32_t end = column.offsets[record + 1];
        if (column.foldsToItself && folded != text) {
            column.foldsToItself = false;
            const QString all = column.text.Text(0, static_cast<uint32_t>(column.text.size()));
            column.folded.Append(all.constData(), all.size());
        }
        column.text.Replace(begin, end, text.constData(), text.size());
        if (!column.foldsToItself)
            column.folded.Replace(begin, end, folded.constData(), folded.size());
        const int64_t delta = static_cast<int64_t>(text.size()) - (end - begin);
        for (size_t r = record + 1; r < column.offsets.size(); ++r)
            column.offsets[r] = static_cast<uint32_t>(column.offsets[r] + delta);
        if (column.numeric) {
            if (!value.isNull() && !IsNumber(value)) {
                column.numeric = false;
                std::vector<double>().swap(column.numbers);
            } else {
                column.numbers[record] =
                    value.isNull() ? -std::numeric_limits<double>::infinity() : value.toDouble();
            }
        }
        const size_t bit = static_cast<size_t>(record) * columns_.size() + c;
        if (value.isNull()) {
            nulls_[bit / 8] |= static_cast<uint8_t>(1u << (bit % 8));
        } else {
            nulls_[bit / 8] &= static_cast<uint8_t>(~(1u << (bit % 8)));
        }
    }
    const int row = RowOfRecord(record);
    if (row >= 0)
        emit dataChanged(index(row, 0), index(row, columnCount() - 1));
}

int ListTableModel::AppendRecord(const QVariantList& values) {
    const int row = ShownRows();
    beginInsertRows(QModelIndex(), row, row);
    for (size_t c = 0; c < columns_.size(); ++c)
        AppendValue(columns_[c], values.value(static_cast<qsizetype>(c)));
    nulls_.resize((static_cast<size_t>(records_ + 1) * columns_.size() + 7) / 8, 0);
    const uint32_t record = records_++;
    order_.push_back(record);
    shown_.push_back(record);
    endInsertRows();
    return static_cast<int>(record);
}

size_t ListTableModel::MemoryBytes() const {
    size_t bytes = nulls_.capacity() + (order_.capacity() + shown_.capacity()) * sizeof(uint32_t);
    for (const ListColumn& column : columns_) {
        bytes += column.text.Bytes() + column.folded.Bytes();
        bytes += column.offsets.capacity() * sizeof(uint32_t);
        bytes += column.numbers.capacity() * sizeof(double);
    }
    return bytes;
}

}  // namespace orvo::lists
