#include "component/grid_layout.h"

#include <QFile>
#include <QHeaderView>
#include <QTableView>

#include "platform/file_error.h"
#include "platform/lock_files.h"
#include "platform/shared_files.h"

namespace orvo {

namespace {

const QString kRowHeight = QStringLiteral("ROWHEIGHT=");

QString FieldOf(const QTableView& view, int column) {
    return view.model()
               ? view.model()->headerData(column, Qt::Horizontal, kGridFieldRole).toString()
               : QString();
}

// The column a stored key names in a split: by field name, else by number, else (empty key) by
// the position it was stored at.
int ColumnOf(const QTableView& view, const GridColumnLayout& entry, int gridType) {
    const int count = view.model() ? view.model()->columnCount() : 0;
    QString key = entry.key;
    const auto byName = [&](const QString& name) {
        for (int c = 0; c < count; ++c)
            if (!name.isEmpty() && FieldOf(view, c).compare(name, Qt::CaseInsensitive) == 0)
                return c;
        return -1;
    };
    if (key.isEmpty())
        return entry.position < count ? entry.position : -1;
    if (const int c = byName(key); c >= 0)
        return c;
    bool number = false;
    const int c = key.toInt(&number);
    if (number && c >= 0 && c < count)
        return c;
    static const QString kCommentsKeys = QStringLiteral("//CCO//CCN//CCL//CCC//CCQ//CCT//");
    if (gridType == 12 && key.size() >= 3 &&
        kCommentsKeys.contains(key.left(3), Qt::CaseInsensitive))
        return byName(QStringLiteral("Comments"));
    return -1;
}

}  // namespace

QString GridLayoutPath(const QString& dataPath, const QString& key) {
    return dataPath + QStringLiteral("STP/TG") + lockfiles::SafeFileName(key) +
           QStringLiteral(".STP");
}

std::optional<GridLayoutFile> ReadGridLayoutFile(const QString& path, bool readRowHeight) {
    QFile file(path);
    if (!file.open(QIODevice::ReadOnly | QIODevice::Text))
        return std::nullopt;
    GridLayoutFile layout;
    bool first = true;
    while (!file.atEnd()) {
        const QString line = QString::fromUtf8(file.readLine()).trimmed();
        if (line.startsWith(kRowHeight)) {
            bool ok = false;
            const double height = line.mid(kRowHeight.size()).toDouble(&ok);
            if (first && readRowHeight && ok && height > 0)
                layout.rowHeight = height;
            first = false;
            continue;
        }
        first = false;
        const QStringList fields = line.split(QLatin1Char(','));
        if (fields.size() != 4)
            continue;
        bool positionOk = false, widthOk = false, splitOk = false;
        GridColumnLayout column{fields[0].trimmed(), fields[1].trimmed().toInt(&positionOk),
                                fields[2].trimmed().toDouble(&widthOk),
                                fields[3].trimmed().toInt(&splitOk)};
        if (positionOk && widthOk && splitOk && column.position >= 0 && column.width >= 0 &&
            column.split >= 0)
            layout.columns.append(column);
    }
    return layout;
}

void WriteGridLayoutFile(const QString& path, const GridLayoutFile& layout) {
    QByteArray text;
    if (layout.rowHeight)
        text += (kRowHeight + QString::number(*layout.rowHeight) + QLatin1Char('\n')).toUtf8();
    for (const GridColumnLayout& c : layout.columns)
        text += QStringLiteral("%1,%2,%3,%4\n")
                    .arg(c.key)
                    .arg(c.position)
                    .arg(QString::number(c.width))
                    .arg(c.split)
                    .toUtf8();
    const QString folder = path.left(path.lastIndexOf(QLatin1Char('/')));
    const QString dataFolder = folder.left(folder.lastIndexOf(QLatin1Char('/')));
    const shared::Sharing sharing = shared::Sharing::Of(dataFolder);
    int error = shared::MakeSharedFolder(folder, sharing);
    if (error == 0)
        error = shared::WriteSharedFile(path, text, sharing);
    if (error != 0)
        throw FileError(QStringLiteral("Cannot save the grid layout"), path, error);
}

bool Load_Grid_Layout(const QList<QTableView*>& grid, const QString& dataPath, const QString& key,
                      bool ApplyRowHeight, bool ApplyWidths, int gridType) {
    return LoadGridLayoutFrom(grid, GridLayoutPath(dataPath, key), ApplyRowHeight, ApplyWidths,
                              gridType);
}

void Save_Grid_Layout(const QList<QTableView*>& grid, const QString& dataPath, const QString& key,
                      bool SaveRowHeight, bool UseNumbers) {
    SaveGridLayoutTo(grid, GridLayoutPath(dataPath, key), SaveRowHeight, UseNumbers);
}

bool LoadGridLayoutFrom(const QList<QTableView*>& grid, const QString& path, bool ApplyRowHeight,
                        bool ApplyWidths, int gridType) {
    const std::optional<GridLayoutFile> layout = ReadGridLayoutFile(path, ApplyRowHeight);
    if (!layout || grid.isEmpty())
        return false;
    if (layout->rowHeight)
        for (QTableView* view : grid)
            view->verticalHeader()->setDefaultSectionSize(qRound(*layout->rowHeight));
    // Positions are applied from the left, so that moving one column does not shift another
    // already placed.
    QList<GridColumnLayout> entries = layout->columns;
    std::stable_sort(entries.begin(), entries.end(),
                     [](const auto& a, const auto& b) { return a.position < b.position; });
    bool applied = false;
    for (const GridColumnLayout& entry : entries) {
        if (entry.split >= grid.size())
            continue;
        QTableView& view = *grid[entry.split];
        const int column = ColumnOf(view, entry, gridType);
        if (column < 0)
            continue;
        QHeaderView& header = *view.horizontalHeader();
        const int to = std::min(entry.position, header.count() - 1);
        header.moveSection(header.visualIndex(column), to);
        if (entry.width == 0) {
            header.setSectionHidden(column, true);
        } else {
            header.setSectionHidden(column, false);
            if (ApplyWidths)
                header.resizeSection(column, qRound(entry.width));
        }
        applied = true;
    }
    return applied;
}

void SaveGridLayoutTo(const QList<QTableView*>& grid, const QString& path, bool SaveRowHeight,
                      bool UseNumbers) {
    GridLayoutFile layout;
    if (SaveRowHeight && !grid.isEmpty())
        layout.rowHeight = grid.front()->verticalHeader()->defaultSectionSize();
    for (int split = 0; split < grid.size(); ++split) {
        const QTableView& view = *grid[split];
        const QHeaderView& header = *view.horizontalHeader();
        for (int visual = 0; visual < header.count(); ++visual) {
            const int column = header.logicalIndex(visual);
            const QString field = FieldOf(view, column);
            layout.columns.append(
                {UseNumbers || field.isEmpty() ? QString::number(column) : field, visual,
                 header.isSectionHidden(column) ? 0.0 : double(header.sectionSize(column)), split});
        }
    }
    WriteGridLayoutFile(path, layout);
}

}  // namespace orvo
