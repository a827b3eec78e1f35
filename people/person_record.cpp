#include "people/person_record.h"

#include <QSqlError>
#include <QSqlQuery>
#include <QSqlRecord>
#include <array>
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
    Layout For(const QSqlRecord& shape) {
        std::lock_guard lock(mutex_);
        if (!Matches(shape))
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
        layout_.places.assign(shape.count(), -1);
        layout_.present.assign(kFieldCount, false);
        for (int i = 0; i < shape.count(); ++i) {
            names_.push_back(shape.fieldName(i));
            for (int f = 0; f < kFieldCount; ++f) {
                if (names_.back().compare(QLatin1String(kFields[f].column), Qt::CaseInsensitive) ==
                    0) {
                    layout_.places[i] = f;
                    layout_.present[f] = true;
                    break;
                }
            }
        }
    }

    std::mutex mutex_;
    std::vector<QString> names_;
    Layout layout_;
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

}  // namespace

void ReadPersonRecord(GIC& gic, int pID, PersonRecord& record) {
    record = PersonRecord();
    db::Connection& connection = gic.GetConnection();
    QSqlQuery query(connection.database());
    query.setForwardOnly(true);
    const QString sql =
        connection.Translate(QStringLiteral("Select * from PaTable where pID=%1;").arg(pID));
    if (!query.exec(sql))
        throw db::DatabaseError(query.lastError().text(), sql);
    if (!query.next())
        return;
    // A column the table lacks has no place and its field simply stays empty.
    const Layout layout = columnMap().For(query.record());
    for (int i = 0; i < static_cast<int>(layout.places.size()); ++i) {
        if (layout.places[i] < 0)
            continue;
        const QVariant value = query.value(i);
        if (!value.isNull())
            Assign(record, kFields[layout.places[i]], value);
    }
    query.finish();

    // The repairs write only what an older table has.
    QStringList repairs;
    if (record.pPROIND == 0 && layout.Has("pPROIND")) {
        const int provider = gic.GetDefaultProviderID();
        if (provider != 0) {
            record.pPROIND = provider;
            repairs << QStringLiteral("pPROIND=%1").arg(provider);
        }
    }
    if (record.pGPDenFeeTypPerm == 0 && layout.Has("pGPDenFeeTypPerm")) {
        short schedule = 0;
        if (layout.Has("pDOCFeeTyp")) {
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
        if (!gic.IsValidFeeSchedule(record.pGPDenFeeTyp) && layout.Has("pGPDenFeeTyp")) {
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

    // The columns the consequences depend on, and the role's value before.
    const db::Recordset row(
        connection, QStringLiteral("Select %1, pTypX1, pTypEmp, pAccTyp, pSrtFlg, pDocIni, "
                                   "pLASNAM, pFIRNAM, pFAMHEAIND from PATABLE WHERE pID = %2")
                        .arg(role)
                        .arg(pID));
    if (row.IsEmpty())
        return;
    const QString previous = row.Text(0);
    const bool toPatient = role == QLatin1String("PTYPPAT");
    const bool toProvider = role == QLatin1String("PTYPDOC");

    bool restoreReminders = false;
    bool restoreAccount = false;
    if (toPatient && value == QLatin1String("1") &&
        row.Text(QStringLiteral("pTypX1")).trimmed() == QLatin1String("1")) {
        gic.AskRestoreArchived(restoreReminders, restoreAccount, false, 2);
    }

    QString sql = QStringLiteral("UPDATE PATABLE SET ") + role + QStringLiteral(" = ") +
                  gic.SqlQuoteText(value);
    if (toProvider && value == QLatin1String("1")) {
        const QString employee = row.Text(QStringLiteral("pTypEmp")).trimmed();
        if (employee != QLatin1String("1") && employee != QLatin1String("2"))
            sql += QStringLiteral(", pTypEmp='1'");
    }
    if (restoreAccount) {
        QString accountType = row.Text(QStringLiteral("pAccTyp"));
        gic.ReplaceInText(accountType, QStringLiteral("N"), QString());
        if (accountType.contains(QLatin1Char('S')) && !gic.IsFamilyHead(pID)) {
            if (prompts().Message(kSeparateStatementQuestion, Buttons::YesNo, Icon::Question,
                                  kSeparateStatementTitle) == AnswerYes) {
                gic.ReplaceInText(accountType, QStringLiteral("S"), QString());
            }
        }
        sql += QStringLiteral(", pAccTyp=") + gic.SqlQuoteText(accountType);
    }
    if (toPatient && (value == QLatin1String("1") || value == QLatin1String("Z"))) {
        QString sortFlags = row.Text(QStringLiteral("pSrtFlg"));
        gic.ReplaceInText(sortFlags, QStringLiteral("!"), QString());
        sql += QStringLiteral(", pSrtFlg=") + gic.SqlQuoteText(sortFlags) +
               QStringLiteral(", pTypX1='0'");
    }
    if (toProvider && value == QLatin1String("Z"))
        sql += QStringLiteral(", pTypEmp='1'");
    if (value == QLatin1String("1") && (toProvider || role == QLatin1String("PTYPEMP")) &&
        row.Text(QStringLiteral("pDocIni")).trimmed().isEmpty()) {
        const QString initials =
            gic.MakeDefaultInitials(pID, row.Text(QStringLiteral("pLASNAM")).trimmed(),
                                    row.Text(QStringLiteral("pFIRNAM")).trimmed());
        sql += QStringLiteral(", pDocIni=") + gic.SqlQuoteText(initials);
    }
    if (row.Long(QStringLiteral("pFAMHEAIND")) == 0)
        sql += QStringLiteral(", pFAMHEAIND=%1").arg(pID);
    sql += QStringLiteral(" WHERE pID = %1;").arg(pID);
    connection.ExecuteOneRow(sql);

    if (extraID != 0)
        gic.PersonRoleAdded(pID, extraID);
    if (restoreReminders)
        gic.RestorePersonRecalls(pID);
    if (toPatient && value == QLatin1String("1") && previous.trimmed() != QLatin1String("1"))
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
