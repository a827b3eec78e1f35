#include "lists/engines/provider_delete.h"

#include "people/person_record.h"
#include "platform/db/connection.h"
#include "platform/db/recordset.h"
#include "platform/db/sql_text.h"
#include "platform/prompts.h"

namespace orvo::lists {
namespace {

QString Num(qint64 value) {
    return QString::number(value);
}

QString SqlDate(const QDate& date) {
    return QLatin1Char('#') + date.toString(QStringLiteral("MM/dd/yyyy")) + QLatin1Char('#');
}

QString PersonName(GIC& gic, int pID) {
    return gic.GetPersonName(pID, QStringLiteral(" "), QString()).trimmed();
}

struct BookDay {
    int ABKID = 0;
    QDate ABKDat;
    QString ABKTemPla;
};

}  // namespace

QList<AffectedPerson> PatientsOfProvider(GIC& gic, int providerId) {
    db::Recordset rs(gic.GetConnection(),
                     QStringLiteral("SELECT pID, pLASNAM, pFIRNAM FROM PATable WHERE pPROIND = ") +
                         Num(providerId) + QStringLiteral(" ORDER BY pLASNAM, pFIRNAM, pID"));
    QList<AffectedPerson> persons;
    for (; !rs.Eof(); rs.MoveNext()) {
        const QString last = rs.Text(1).trimmed();
        const QString first = rs.Text(2).trimmed();
        persons << AffectedPerson{static_cast<int>(rs.Long(0)),
                                  first.isEmpty() ? last : last + QStringLiteral(", ") + first};
    }
    return persons;
}

QString RemoveProviderFromTemplate(const QString& templateText, int providerId) {
    const QString id = Num(providerId);
    QString text = templateText;
    for (qsizetype at = 0; at < text.size(); at += kTemplateFieldWidth) {
        if (text.mid(at, kTemplateFieldWidth).trimmed() == id)
            text.replace(at, kTemplateFieldWidth, QString(kTemplateFieldWidth, QLatin1Char(' ')));
    }
    return text;
}

void Delete_Provider_Templates(GIC& gic, int oldId, int newId, const QDate& today) {
    db::Connection& c = gic.GetConnection();
    db::Transaction transaction(c, db::Transaction::Write);
    prompts().ShowBanner(QStringLiteral("Deleting Appointment Template Setup for ") +
                         PersonName(gic, oldId) + QStringLiteral(". Please wait..."));
    c.Execute(QStringLiteral("Delete * from ATTable where ATTable.ATDr=") + Num(oldId));
    QList<BookDay> days;
    {
        db::Recordset rs(c, QStringLiteral("Select ABKID, ABKDat, ABKTemPla from ABKTable where "
                                           "ABKDat>=") +
                                SqlDate(today) + QStringLiteral(" order by ABKDat;"));
        for (; !rs.Eof(); rs.MoveNext()) {
            days << BookDay{static_cast<int>(rs.Long(0)), rs.Value(1).toDate(), rs.Text(2)};
        }
    }
    const qsizetype n = days.size();
    for (qsizetype i = 0; i < n; ++i) {
        prompts().ShowBanner(QStringLiteral("Deleting Appointment Template for ") +
                             days[i].ABKDat.toString(QStringLiteral("MM/dd/yyyy")) +
                             QStringLiteral(", ") + Num(i + 1) + QStringLiteral(" of ") + Num(n) +
                             QStringLiteral(". Please wait..."));
        const QString changed = RemoveProviderFromTemplate(days[i].ABKTemPla, oldId);
        if (changed == days[i].ABKTemPla)
            continue;  // the provider had no column that day
        c.Execute(QStringLiteral("Update ABKTable Set ABKTemPla=") + db::QuoteText(changed) +
                  QStringLiteral(" where ABKID=") + Num(days[i].ABKID));
    }
    prompts().ShowBanner(QStringLiteral("Assign Appointments from ") + Num(oldId) +
                         QStringLiteral(" to ") + Num(newId) + QStringLiteral(". Please wait..."));
    c.Execute(QStringLiteral("Update ApTable Set APTable.APDrID=") + Num(newId) +
              QStringLiteral(" where APTable.APDrID=") + Num(oldId) +
              QStringLiteral(" and APDat>=") + SqlDate(today));
    transaction.Commit();
}

void Delete_Provider(GIC& gic, int oldId, int newId) {
    struct BannerDown {
        ~BannerDown() { prompts().HideBanner(); }
    } bannerDown;
    db::Connection& c = gic.GetConnection();
    db::Transaction transaction(c, db::Transaction::Write);
    Delete_Provider_Templates(gic, oldId, newId, gic.GetToday());
    prompts().ShowBanner(QStringLiteral("Updating patient records. Please wait..."));
    c.Execute(QStringLiteral("Update Patable set pPROIND = ") + Num(newId) +
              QStringLiteral(" where pPROIND = ") + Num(oldId));
    const QString initials =
        db::ReadScalar(c, QStringLiteral("SELECT pDocIni FROM PATable WHERE pID = ") + Num(newId))
            .toString()
            .trimmed();
    c.Execute(QStringLiteral("Update RecTable set rRecDoc = ") + db::QuoteText(initials) +
              QStringLiteral(", rRecDocID = ") + Num(newId) +
              QStringLiteral(" where rRecDocID = ") + Num(oldId));
    people::SetPersonType(gic, oldId, QStringLiteral("pTypDoc"), QStringLiteral("Z"));
    transaction.Commit();
}

}  // namespace orvo::lists
