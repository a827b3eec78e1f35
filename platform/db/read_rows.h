#pragma once

#include <QString>
#include <QVariant>
#include <cstdint>
#include <functional>

namespace orvo::db {

// One value of a row handed over by Connection::ReadRows, as the engine holds it. Which member
// holds it depends on the kind; texts and values pointed at live for that one call.
struct Cell {
    enum class Kind : uint8_t {
        Null,
        Integer,  // integer
        Utf8,     // utf8, bytes long: a text as the engine sent it, not terminated
        Text,     // text: a text that came through the driver
        Other,    // other: real numbers, dates, money, bytes, as the driver reads them
    };
    Kind kind = Kind::Null;
    qint64 integer = 0;
    const char* utf8 = nullptr;
    qsizetype bytes = 0;
    const QString* text = nullptr;
    const QVariant* other = nullptr;

    // The cell of a value read through the driver; it points into value.
    static Cell Of(const QVariant& value);
};

// Takes one row of a read: count cells, one per column.
using RowReader = std::function<void(const Cell* cells, int count)>;

}  // namespace orvo::db
