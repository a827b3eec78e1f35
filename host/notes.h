#pragma once

#include <QDate>
#include <QString>

#include "platform/db/connection.h"

namespace orvo::host {

// Who wrote a note or an audit line, and when.
struct NoteAuthor {
    QString login;
    QString station;
    QDate date;
};

// A line of a person's or record's history in the notes table.
void WriteNoteLine(db::Connection& connection, const NoteAuthor& author, int recordId,
                   const QString& type, const QString& sourceKey, const QString& field,
                   const QString& text);

// A line of the audit log, stamped with the current time.
void WriteAuditLine(db::Connection& connection, const NoteAuthor& author, const QString& key,
                    const QString& action, const QString& text);

}  // namespace orvo::host
