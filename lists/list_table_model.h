#pragma once

#include <QAbstractTableModel>
#include <QList>
#include <QString>
#include <QStringList>
#include <QVariant>
#include <algorithm>
#include <cstdint>
#include <cstring>
#include <memory>
#include <vector>

namespace orvo::db {
class Connection;
struct Cell;
}  // namespace orvo::db

namespace orvo::lists {

// A growing array of characters whose new room is written by the caller, not filled first: a
// list appends a few characters per cell, millions of times.
template <class Char>
class CharBuffer {
public:
    const Char* data() const { return data_.get(); }
    size_t size() const { return size_; }
    size_t capacity() const { return capacity_; }
    // Room for n more characters at the end, to be written at the place answered.
    Char* Extend(size_t n) {
        if (capacity_ - size_ < n)
            Reallocate(std::max(size_ + n, capacity_ * 2));
        Char* at = data_.get() + size_;
        size_ += n;
        return at;
    }
    void Truncate(size_t n) { size_ = std::min(size_, n); }
    void Reserve(size_t n) {
        if (n > capacity_)
            Reallocate(n);
    }
    void Squeeze() {
        if (capacity_ != size_)
            Reallocate(size_);
    }
    void Release() {
        data_.reset();
        size_ = capacity_ = 0;
    }

private:
    void Reallocate(size_t capacity) {
        std::unique_ptr<Char[]> data(capacity ? new Char[capacity] : nullptr);
        if (size_ != 0)
            std::memcpy(data.get(), data_.get(), size_ * sizeof(Char));
        data_ = std::move(data);
        capacity_ = capacity;
    }

    std::unique_ptr<Char[]> data_;
    size_t size_ = 0;
    size_t capacity_ = 0;
};

// The texts of one column of a list, all rows in one buffer. A buffer holds one byte per
// character while every character is Latin-1 (most of a practice's names and addresses), and
// widens to UTF-16 once a character needs it. Rows are found through one table of offsets, in
// characters, shared by the text and its case-folded twin: folding keeps the length.
class TextPool {
public:
    void Append(const QChar* text, qsizetype length);
    void AppendLatin1(const char* text, qsizetype length);
    // Appends a text given in UTF-8.
    void AppendUtf8(const char* text, qsizetype length);
    // Characters of rows [0, n): offsets are taken by the caller.
    qsizetype size() const {
        return wide_ ? static_cast<qsizetype>(utf16_.size())
                     : static_cast<qsizetype>(latin1_.size());
    }
    bool wide() const { return wide_; }
    const char* latin1() const { return latin1_.data(); }
    const char16_t* utf16() const { return utf16_.data(); }
    QString Text(uint32_t begin, uint32_t end) const;
    // Puts text in place of the characters [begin, end).
    void Replace(uint32_t begin, uint32_t end, const QChar* text, qsizetype length);
    void Squeeze();
    size_t Bytes() const { return latin1_.capacity() + utf16_.capacity() * sizeof(char16_t); }

private:
    void Widen();

    bool wide_ = false;
    CharBuffer<char> latin1_;
    CharBuffer<char16_t> utf16_;
};

// One column: its caption, its texts and folded texts, and for a column of numbers the values
// it sorts by. The folded texts are made when the column is first filtered on: most columns of
// a list never are, and a list opens without folding a cell of them (a sort folds only the
// column's distinct texts, and keeps none of them).
struct ListColumn {
    QString caption;
    bool numeric = false;  // every value that is not null is a number
    TextPool text;
    bool foldReady = false;  // folded and foldsToItself hold for every row
    TextPool folded;         // empty while folding changes nothing in the column
    bool foldsToItself = true;
    std::vector<uint32_t> offsets{0};  // row r is [offsets[r], offsets[r + 1])
    std::vector<double> numbers;       // numeric columns only; null sorts first as -inf
};

// A sort key of the list: a column and its direction.
struct SortKey {
    int column = 0;
    Qt::SortOrder order = Qt::AscendingOrder;
};

// The rows of a list window, read once from the recordset and kept compactly by column. It
// sorts and filters itself: a filter is a text per column, matched from the start of the
// column's text or anywhere in it, with case folded for all of Unicode. A column's texts are
// folded once, when it is first filtered on, so a keystroke is a scan over folded text; a
// filter that narrows the one before scans only the rows that matched it.
//
// Rows are named two ways: a shown row is a row of the model as the view sees it (sorted and
// filtered); a record is a row as it was read, which stays put while sort and filter change.
class ListTableModel : public QAbstractTableModel {
    Q_OBJECT
public:
    explicit ListTableModel(QObject* parent = nullptr);

    // Replaces everything with the rows of a statement, read whole from the engine, under the
    // given captions (one per column of the statement).
    void Load(db::Connection& connection, const QString& sql, const QStringList& captions);
    // Replaces everything with rows given as texts; for a list made without a recordset.
    void LoadRows(const QStringList& captions, const QList<QStringList>& rows);
    void Clear();

    int rowCount(const QModelIndex& parent = QModelIndex()) const override;
    int columnCount(const QModelIndex& parent = QModelIndex()) const override;
    QVariant data(const QModelIndex& index, int role = Qt::DisplayRole) const override;
    QVariant headerData(int section, Qt::Orientation orientation,
                        int role = Qt::DisplayRole) const override;
    Qt::ItemFlags flags(const QModelIndex& index) const override;
    void sort(int column, Qt::SortOrder order = Qt::AscendingOrder) override;

    // The column of a caption in any letter case; -1 when there is none.
    int ColumnOf(const QString& caption) const;
    QString Caption(int column) const;
    QStringList Captions() const;

    // Sorts by several columns, the first deciding; rows equal on all keep the order read.
    void SortBy(const QList<SortKey>& keys);
    const QList<SortKey>& sortKeys() const { return sortKeys_; }

    // The filter of a column; an empty text takes the column's filter off.
    void SetFilter(int column, const QString& text);
    QString Filter(int column) const;
    // Takes every filter off.
    void ClearFilters();
    bool HasFilter() const;
    // Match a filter anywhere in the text rather than at its start.
    void SetMatchAnywhere(bool anywhere);
    bool matchAnywhere() const { return matchAnywhere_; }

    // All records read, and those the filters leave.
    int TotalRows() const { return static_cast<int>(records_); }
    int ShownRows() const { return static_cast<int>(shown_.size()); }

    int RecordOfRow(int row) const;
    // The shown row of a record; -1 when the filter hides it or there is no such record.
    int RowOfRecord(int record) const;
    // The first record whose column holds the number id; -1 when none does.
    int FindRecord(int column, qint64 id) const;
    QString RecordText(int record, int column) const;
    bool RecordIsNull(int record, int column) const;

    // Puts new values into a record (after an edit): the row keeps its place in the sort and
    // in the rows shown until the list is sorted or filtered again.
    void UpdateRecord(int record, const QVariantList& values);
    // Adds a record at the end of the shown rows; answers its number.
    int AppendRecord(const QVariantList& values);

    // What the list holds in memory: its buffers and tables.
    size_t MemoryBytes() const;

private:
    void StartColumns(const QStringList& captions);
    void AppendValue(ListColumn& column, const QVariant& value);
    void AppendCell(ListColumn& column, const db::Cell& cell);
    // Makes the folded texts of a column that has none yet.
    void Fold(ListColumn& column);
    void FinishColumns();
    void Refilter(bool narrowing);
    void ApplySort();
    // A rank per record for a column: equal values (texts once folded) share a rank, and ranks
    // order as the values do. count is the number of ranks.
    std::vector<uint32_t> TextRanks(const ListColumn& column, uint32_t& count) const;
    std::vector<uint32_t> NumberRanks(const ListColumn& column, uint32_t& count) const;

    std::vector<ListColumn> columns_;
    std::vector<uint8_t> nulls_;  // a bit per cell, record-major
    uint32_t records_ = 0;
    std::vector<uint32_t> order_;  // every record, sorted
    std::vector<uint32_t> shown_;  // the records the filter leaves, in sort order
    QList<SortKey> sortKeys_;
    QStringList filters_;        // as typed, per column
    QStringList foldedFilters_;  // folded, per column
    bool matchAnywhere_ = false;
};

// The text folded for comparison, as the list folds its cells.
QString FoldForList(const QString& text);

}  // namespace orvo::lists
