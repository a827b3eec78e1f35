#include "people/person_record.h"

#include <QSqlError>
#include <QSqlQuery>
#include <QSqlRecord>
#include <array>
#include <memory>
#include <mutex>
#include <stdexcept>
#include <variant>
#include <vector>

#include "component/public/person_roles.h"
#include "platform/db/recordset.h"
#include "platform/prompts.h"

namespace orvo::people {

const QString FamilyHeadFilter = kFamilyHeadFilter;
const QString kUseDefaultNickName = QStringLiteral("USE DEFAULT");

namespace {

const QString kSeparateStatementQuestion = QStringLiteral(
    "This patient has been flagged to receive a separate statement. Would you like to remove "
    "that flag now?");
const QString kSeparateStatementTitle = QStringLiteral("Separate Statement");

using Member = std::variant<QString PersonRecord::*, int PersonRecord::*, short PersonRecord::*,
                            float PersonRecord::*, Currency PersonRecord::*, QDate PersonRecord::*>;

struct Field {
    const char* column;
    Member member;
    int width = 0;  // text only
};

#define TEXT(name, width)                 \
    Field {                               \
#name, &PersonRecord::name, width \
    }
#define NUM(name)                  \
    Field {                        \
#name, &PersonRecord::name \
    }

// Every field of the record with its column, in the record's order.
const Field kFields[] = {
    NUM(pID),
    TEXT(pTypPat, 1),
    TEXT(pTypDoc, 1),
    TEXT(pTypRef, 1),
    TEXT(pTypPhy, 1),
    NUM(pCLITYP1),
    TEXT(pLASNAM, 30),
    TEXT(pFIRNAM, 30),
    TEXT(pSeaNam, 30),
    TEXT(pNICNAM, 30),
    NUM(pPROIND),
    NUM(pREFIND),
    TEXT(pSEX, 1),
    TEXT(pTTL, 15),
    TEXT(pBIRDAT, 10),
    TEXT(pHOMPHO, 40),
    TEXT(pBUSPHO, 40),
    TEXT(pADD1, 30),
    TEXT(pADD2, 30),
    TEXT(pCIT, 30),
    TEXT(pSTA, 2),
    TEXT(pZIP, 10),
    TEXT(pSSN, 12),
    TEXT(pDRILIC, 20),
    TEXT(pCRECARTYP, 4),
    TEXT(pCRECARNUM, 22),
    NUM(pFAMHEAIND),
    TEXT(pBILTTL, 15),
    TEXT(pNEXSTADAT, 10),
    TEXT(pACCTYP, 10),
    TEXT(pFIRVISDAT, 10),
    TEXT(pLASVISDAT, 10),
    TEXT(pCASNUM, 18),
    TEXT(pMEDALE, 100),
    TEXT(pMEDALEUPD, 10),
    TEXT(pEMECON, 30),
    NUM(pPHY1),
    NUM(pPHY2),
    TEXT(pSCHNAM, 30),
    TEXT(pSCHCIT, 30),
    NUM(pEmpID1),
    NUM(pEmpID2),
    NUM(pEmpID3),
    NUM(pEmpID4),
    NUM(pPRIINSHOL),
    NUM(pPRIINSID),
    TEXT(pREL2PRI, 1),
    NUM(pPRIRENFLA),
    NUM(pPRIDED),
    NUM(pPRIBAL),
    NUM(pPRIYTD),
    NUM(pSECINSHOL),
    NUM(pSECINSID),
    TEXT(pREL2SEC, 1),
    NUM(pSECRENFLA),
    NUM(pSECDED),
    NUM(pSECBAL),
    NUM(pSECYTD),
    TEXT(pRECTYP, 1),
    TEXT(pSERSTADAT, 10),
    TEXT(pDOCLIC, 15),
    TEXT(pDOCEIN, 13),
    TEXT(pDOCSPE, 20),
    TEXT(pDOCLET, 20),
    TEXT(pDOCREM1, 60),
    TEXT(pDOCREM2, 60),
    TEXT(pDOCREM3, 60),
    TEXT(pDocDatEmp, 10),
    TEXT(pDocMedNum, 14),
    TEXT(pDocIni, 3),
    NUM(pGPDenFeeTyp),
    NUM(pGPDenFeeTypPerm),
    NUM(pGPDenForTyp),
    NUM(pGPDenPayTyp),
    NUM(pGPMedFeeTyp),
    NUM(pGPMedFeeTypPerm),
    NUM(pGPMedForTyp),
    NUM(pGPMedPayTyp),
    NUM(pDOCFeeTyp),
    TEXT(pSrtFlg, 5),
    NUM(pImaFla),
    NUM(pIntAppDat),
    NUM(pIntAppAmt),
    TEXT(pHomPho1, 30),
    TEXT(pHomPho2, 30),
    TEXT(pHomFax, 30),
    TEXT(pHomEma, 40),
    TEXT(pHomCell, 30),
    TEXT(pHomPag, 30),
    TEXT(pHomCon, 10),
    TEXT(pBusPho1, 30),
    TEXT(pBusPho2, 30),
    TEXT(pBusFax, 30),
    TEXT(pBusEma, 40),
    TEXT(pBusCell, 30),
    TEXT(pBusPag, 30),
    TEXT(pBusCon, 10),
    NUM(pInsPct),
    TEXT(pChaNum, 12),
    NUM(OffLocID),
};

#undef TEXT
#undef NUM

constexpr int kFieldCount = static_cast<int>(std::size(kFields));

void Assign(PersonRecord& record, const Field& field, const QVariant& value) {
    std::visit(
        [&](auto member) {
            using T = std::remove_reference_t<decltype(record.*member)>;
            if constexpr (std::is_same_v<T, QString>) {
                QString text = value.toString();
                if (text.size() > field.width)
                    text.truncate(field.width);
                record.*member = std::move(text);
            } else if constexpr (std::is_same_v<T, Currency>) {
                record.*member = Currency::Parse(value.toString());
            } else if constexpr (std::is_same_v<T, QDate>) {
                record.*member = value.toDate();
            } else if constexpr (std::is_same_v<T, float>) {
                record.*member = value.toFloat();
            } else {
                record.*member = static_cast<T>(value.toLongLong());
            }
        },
        field.member);
}

// Where each column of a SELECT * lands in the record, and which fields the table has at all.
struct Layout {
    std::vector<int> places;    // by result column: the field, or -1
    std::vector<bool> present;  // by field
    bool Has(const char* column) const {
        for (int f = 0; f < kFieldCount; ++f) {
            if (qstrcmp(kFields[f].column, column) == 0)
                return present[f];
        }
        return false;
    }
};

// The layout of the table hardly ever changes on a connection, so the last one is kept and
// only checked against the result's names: resolving a hundred names on every read would cost
// as much as the read itself.
class ColumnMap {
public:
    std::shared_ptr<const Layout> For(const QSqlRecord& shape) {
        std::lock_guard lock(mutex_);
        if (!layout_ || !Matches(shape))
            Build(shape);
        return layout_;
    }

private:
    bool Matches(const QSqlRecord& shape) const {
        if (shape.count() != static_cast<int>(names_.size()))
            return false;
        for (int i = 0; i < shape.count(); ++i) {
            if (shape.fieldName(i) != names_[i])
                return false;
        }
        return true;
    }
    void Build(const QSqlRecord& shape) {
        names_.clear();
        auto layout = std::make_shared<Layout>();
        layout->places.assign(shape.count(), -1);
        layout->present.assign(kFieldCount, false);
        for (int i = 0; i < shape.count(); ++i) {
            names_.push_back(shape.fieldName(i));
            for (int f = 0; f < kFieldCount; ++f) {
                if (names_.back().compare(QLatin1String(kFields[f].column), Qt::CaseInsensitive) ==
                    0) {
                    layout->places[i] = f;
                    layout->present[f] = true;
                    break;
                }
            }
        }
        layout_ = std::move(layout);
    }

    std::mutex mutex_;
    std::vector<QString> names_;
    std::shared_ptr<const Layout> layout_;
};

ColumnMap& columnMap() {
    static ColumnMap map;
    return map;
}

const QString& RoleColumn(const QString& column) {
    static const std::array<QString, 7> kRoles = {
        QStringLiteral("PTYPPAT"), QStringLiteral("PTYPDOC"), QStringLiteral("PTYPREF"),
        QStringLiteral("PTYPPHY"), QStringLiteral("PTYPEMP"), QStringLiteral("PTYPX1"),
        QStringLiteral("PTYPX2")};
    const QString upper = column.trimmed().toUpper();
    for (const QString& role : kRoles) {
        if (role == upper)
            return role;
    }
    throw std::invalid_argument(
        QStringLiteral("%1 is not a role column of a person").arg(column).toStdString());
}

// Finishes a kept statement however its reading ends, so that it holds nothing between runs.
class Finished {
public:
    explicit Finished(QSqlQuery& query) : query_(query) {}
    ~Finished() { query_.finish(); }
    Finished(const Finished&) = delete;
    Finished& operator=(const Finished&) = delete;

private:
    QSqlQuery& query_;
};

}  // namespace

void ReadPersonRecord(GIC& gic, int pID, PersonRecord& record) {
    record = PersonRecord();
    db::Connection& connection = gic.GetConnection();
    // Every screen and the family code read persons through here: the statement is kept
    // prepared on the connection.
    QSqlQuery& query = connection.Prepared(QStringLiteral("Select * from PaTable where pID=?;"));
    std::shared_ptr<const Layout> layout;
    {
        const Finished finished(query);
        connection.RunPrepared(query, {pID});
        if (!query.next())
            return;
        // A column the table lacks has no place and its field simply stays empty.
        layout = columnMap().For(query.record());
        for (int i = 0; i < static_cast<int>(layout->places.size()); ++i) {
            if (layout->places[i] < 0)
                continue;
            const QVariant value = query.value(i);
            if (!value.isNull())
                Assign(record, kFields[layout->places[i]], value);
        }
    }

    // The repairs write only what an older table has.
    QStringList repairs;
    if (record.pPROIND == 0 && layout->Has("pPROIND")) {
        const int provider = gic.GetDefaultProviderID();
        if (provider != 0) {
            record.pPROIND = provider;
            repairs << QStringLiteral("pPROIND=%1").arg(provider);
        }
    }
    if (record.pGPDenFeeTypPerm == 0 && layout->Has("pGPDenFeeTypPerm")) {
        short schedule = 0;
        if (layout->Has("pDOCFeeTyp")) {
            schedule = static_cast<short>(
                db::ReadScalar(connection, QStringLiteral("select pDOCFeeTyp from paTable where "
                                                          "pID=%1")
                                               .arg(record.pPROIND))
                    .toInt());
        }
        if (!gic.IsValidFeeSchedule(schedule))
            schedule = 1;
        record.pGPDenFeeTypPerm = schedule;
        repairs << QStringLiteral("pGPDenFeeTypPerm=%1").arg(schedule);
        if (!gic.IsValidFeeSchedule(record.pGPDenFeeTyp) && layout->Has("pGPDenFeeTyp")) {
            record.pGPDenFeeTyp = schedule;
            repairs << QStringLiteral("pGPDenFeeTyp=%1").arg(schedule);
        }
    }
    if (!repairs.isEmpty()) {
        connection.ExecuteOneRow(QStringLiteral("UPDATE PATable SET %1 WHERE pID=%2;")
                                     .arg(repairs.join(QStringLiteral(", ")))
                                     .arg(pID));
    }
}

void SetPersonType(GIC& gic, int pID, const QString& column, const QString& value, int extraID) {
    if (column.trimmed().isEmpty() || value.trimmed().isEmpty() || pID == 0)
        return;
    const QString& role = RoleColumn(column);
    db::Connection& connection = gic.GetConnection();
    const bool toPatient = role == QLatin1String("PTYPPAT");
    const bool toProvider = role == QLatin1String("PTYPDOC");
    const bool toEmployee = role == QLatin1String("PTYPEMP");
    const bool one = value == QLatin1String("1");

    // The statement, with a `?` for each value. Its shape depends only on the role, the value
    // and which consequences apply, so each shape is prepared once and kept.
    QStringList sets{role + QStringLiteral(" = ?")};
    QVariantList values{value};

    // The row is read first, through a kept statement, when the consequences depend on it (the
    // archive marks and the status of a returning patient, the employee role and the initials
    // of a new provider or employee), and always on the embedded engine: there an UPDATE that
    // names pFAMHEAIND rewrites its index entry even when the value stays, so a person already
    // placed keeps it out of the statement. On the server any such update gives every index a
    // new entry anyway, and a read is one more round trip: the statement decides it alone.
    const bool readRow = toPatient || (one && (toProvider || toEmployee)) ||
                         connection.engine() == db::Engine::Sqlite;
    QString previous;
    bool restoreReminders = false;
    bool unplaced = !readRow;
    if (readRow) {
        QSqlQuery& row = connection.Prepared(
            QStringLiteral("Select %1, pTypX1, pTypEmp, pAccTyp, pSrtFlg, pDocIni, pLASNAM, "
                           "pFIRNAM, pFAMHEAIND from PATABLE WHERE pID = ?")
                .arg(role));
        QStringList read;
        {
            const Finished finished(row);
            connection.RunPrepared(row, {pID});
            if (!row.next())
                return;  // nobody to change
            for (int i = 0; i < 8; ++i)
                read << row.value(i).toString();
            unplaced = row.value(8).toLongLong() == 0;  // 0 or null
        }
        previous = read[0];
        bool restoreAccount = false;
        if (toPatient && one && read[1].trimmed() == QLatin1String("1"))
            gic.AskRestoreArchived(restoreReminders, restoreAccount, false, 2);
        if (toProvider && one) {
            const QString employee = read[2].trimmed();
            if (employee != QLatin1String("1") && employee != QLatin1String("2"))
                sets << QStringLiteral("pTypEmp='1'");
        }
        if (restoreAccount) {
            QString accountType = read[3];
            gic.ReplaceInText(accountType, QStringLiteral("N"), QString());
            if (accountType.contains(QLatin1Char('S')) && !gic.IsFamilyHead(pID)) {
                if (prompts().Message(kSeparateStatementQuestion, Buttons::YesNo, Icon::Question,
                                      kSeparateStatementTitle) == AnswerYes) {
                    gic.ReplaceInText(accountType, QStringLiteral("S"), QString());
                }
            }
            sets << QStringLiteral("pAccTyp = ?");
            values << accountType;
        }
        if (toPatient && (one || value == QLatin1String("Z"))) {
            QString sortFlags = read[4];
            gic.ReplaceInText(sortFlags, QStringLiteral("!"), QString());
            sets << QStringLiteral("pSrtFlg = ?") << QStringLiteral("pTypX1='0'");
            values << sortFlags;
        }
        if (one && (toProvider || toEmployee) && read[5].trimmed().isEmpty()) {
            sets << QStringLiteral("pDocIni = ?");
            values << gic.MakeDefaultInitials(pID, read[6].trimmed(), read[7].trimmed());
        }
    }
    if (toProvider && value == QLatin1String("Z"))
        sets << QStringLiteral("pTypEmp='1'");
    // Whoever receives a role is head of a family of one unless already placed; the statement
    // decides it again from the row as it stands when it runs.
    if (unplaced) {
        sets << QStringLiteral(
            "pFAMHEAIND = CASE WHEN pFAMHEAIND IS NULL OR pFAMHEAIND = 0 THEN pID ELSE "
            "pFAMHEAIND END");
    }
    values << pID;
    QSqlQuery& update =
        connection.Prepared(QStringLiteral("UPDATE PATABLE SET ") +
                            sets.join(QStringLiteral(", ")) + QStringLiteral(" WHERE pID = ?;"));
    int changed = 0;
    {
        const Finished finished(update);
        changed = connection.RunPrepared(update, values);
    }
    if (changed == 0) {
        // A row read a moment ago and gone now was deleted by another station; a person never
        // there is simply nobody to change.
        if (readRow)
            throw db::RowNotFoundError(update.lastQuery());
        return;
    }

    if (extraID != 0)
        gic.PersonRoleAdded(pID, extraID);
    if (restoreReminders)
        gic.RestorePersonRecalls(pID);
    if (toPatient && one && previous.trimmed() != QLatin1String("1"))
        gic.SetPatientStatus(pID, QStringLiteral("A"));
    gic.NotifyPersonChanged(pID);
}

void SetDefaultNickName(GIC& gic, int pID, const QString& firstName, const QString& nickName) {
    if (pID == 0)
        return;
    QString nick = nickName;
    if (nickName == kUseDefaultNickName) {
        const QString padded = firstName + QLatin1Char(' ');
        const qsizetype blank = padded.indexOf(QLatin1Char(' '));
        nick = blank > 0 ? padded.left(blank) : QString();
    }
    gic.GetConnection().ExecuteOneRow(QStringLiteral("UPDATE PATABLE SET pNICNAM=%1 WHERE pID=%2;")
                                          .arg(gic.SqlQuoteText(nick))
                                          .arg(pID));
}

}  // namespace orvo::people
