#include "host/notes.h"

#include <QDateTime>

#include "host/host_gic.h"
#include "host/host_tables.h"
#include "platform/db/sql_text.h"

namespace orvo::host {

void WriteNoteLine(db::Connection& connection, const NoteAuthor& author, int recordId,
                   const QString& type, const QString& sourceKey, const QString& field,
                   const QString& text) {
    connection.Execute(
        QStringLiteral("INSERT INTO %1 (cmPID, cmNotTyp, cmSouKey, cmFie, cmUseNam, cmDat, cmDoc) "
                       "VALUES (%2, %3, %4, %5, %6, %7, %8)")
            .arg(kNotesTable, QString::number(recordId), db::QuoteText(type),
                 db::QuoteText(sourceKey), db::QuoteText(field), db::QuoteText(author.login),
                 db::QuoteText(author.date.toString(Qt::ISODate)), db::QuoteText(text)));
}

void WriteAuditLine(db::Connection& connection, const NoteAuthor& author, const QString& key,
                    const QString& action, const QString& text) {
    const QString now =
        QDateTime::currentDateTime().toString(QStringLiteral("yyyy-MM-dd HH:mm:ss"));
    connection.Execute(
        QStringLiteral("INSERT INTO %1 (AudKey, AudAct, AudTex, AudUseNam, AudStaID, AudDatTim) "
                       "VALUES (%2, %3, %4, %5, %6, %7)")
            .arg(kAuditTable, db::QuoteText(key), db::QuoteText(action), db::QuoteText(text),
                 db::QuoteText(author.login), db::QuoteText(author.station), db::QuoteText(now)));
}

}  // namespace orvo::host
