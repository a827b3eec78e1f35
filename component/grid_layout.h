#pragma once

#include <QList>
#include <QString>
#include <optional>

class QTableView;

namespace orvo {

// Column layouts that users give the component's grids (order, widths, hidden columns, splits),
// kept per grid in the shared data folder as STP/TG<key>.STP, so that one user's choice holds
// for every station. A grid is one or more table views over one model, its splits; the column
// key is the field name the model gives as kGridFieldRole in its horizontal header data, or,
// for a column without a field, its number.

// The header role by which a model names a column's field.
inline constexpr int kGridFieldRole = 0x0100 + 40;  // Qt::UserRole + 40

// One line of the file.
struct GridColumnLayout {
    QString key;
    int position = 0;
    double width = 0;  // 0: hidden
    int split = 0;
    bool operator==(const GridColumnLayout&) const = default;
};

struct GridLayoutFile {
    std::optional<double> rowHeight;
    QList<GridColumnLayout> columns;
};

// The file's name under a data folder (ending with "/").
QString GridLayoutPath(const QString& dataPath, const QString& key);

// Reads a layout file; nothing when there is none. The row height is read only when asked for;
// a "ROWHEIGHT=" line is never a column, and a line of other than four fields is skipped.
std::optional<GridLayoutFile> ReadGridLayoutFile(const QString& path, bool readRowHeight);
// Writes it aside and renames it into place, shared with the practice's other users. Throws
// FileError when the folder cannot be written.
void WriteGridLayoutFile(const QString& path, const GridLayoutFile& layout);

// The same, from and to a file named by the caller, for grids whose layouts are kept under
// names of their own.
bool LoadGridLayoutFrom(const QList<QTableView*>& grid, const QString& path, bool ApplyRowHeight,
                        bool ApplyWidths, int gridType = 0);
void SaveGridLayoutTo(const QList<QTableView*>& grid, const QString& path, bool SaveRowHeight,
                      bool UseNumbers);

// Restores a grid's layout from its file. True when a layout was applied; a grid with no file
// keeps its defaults. gridType 12 is the grid whose Comments column was stored under six
// field names over the years ("CCO...", "CCN...", ...): those keys name "Comments".
bool Load_Grid_Layout(const QList<QTableView*>& grid, const QString& dataPath, const QString& key,
                      bool ApplyRowHeight, bool ApplyWidths, int gridType = 0);
// Stores the grid's layout: every column of every split, in order, a hidden one with width 0.
// UseNumbers writes the column's number as its key; a column without a field always does.
void Save_Grid_Layout(const QList<QTableView*>& grid, const QString& dataPath, const QString& key,
                      bool SaveRowHeight, bool UseNumbers);

}  // namespace orvo
