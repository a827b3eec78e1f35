#include "insurance/insurance_tables.h"

namespace orvo::insurance {
namespace {

using schema::Column;
using schema::Date;
using schema::Flag;
using schema::Identity;
using schema::Long;
using schema::Text;

Column Short(const QString& name) {
    return {name, schema::ColumnType::Short};
}

// The carrier and the pharmacy share one layout of name, address, phones and remarks.
QList<Column> AddressBook(const QString& prefix) {
    return {Text(prefix + "Nam", 50),  Text(prefix + "Add1", 50), Text(prefix + "Add2", 50),
            Text(prefix + "Cit", 30),  Text(prefix + "Sta", 2),   Text(prefix + "Zip", 10),
            Text(prefix + "Tel", 20),  Text(prefix + "Tel2", 20), Text(prefix + "Fax", 20),
            Text(prefix + "Rem1", 60), Text(prefix + "Rem2", 60), Text(prefix + "Ema", 60)};
}

}  // namespace

void DeclareInsuranceTables(schema::Catalog& catalog) {
    schema::Table carriers{
        QStringLiteral("InsCoTable"), {Identity(QStringLiteral("InsCoInd"))}, {}};
    carriers.columns << AddressBook(QStringLiteral("InsCo"))
                     << Text(QStringLiteral("InsCoPreFix"), 10)
                     << Text(QStringLiteral("InsCoAccID"), 20)
                     << Text(QStringLiteral("InsCoSWChr"), 10);
    carriers.indexes << QStringList{QStringLiteral("InsCoNam")};
    catalog.Add(carriers);

    schema::Table pharmacies{QStringLiteral("PhaTable"), {Identity(QStringLiteral("PhaID"))}, {}};
    pharmacies.columns << AddressBook(QStringLiteral("Pha"));
    pharmacies.indexes << QStringList{QStringLiteral("PhaNam")};
    catalog.Add(pharmacies);

    catalog.Add(
        {QStringLiteral("ELTable"),
         {Identity(QStringLiteral("elID")), Long(QStringLiteral("elEmpID")),
          Long(QStringLiteral("elInsID")), Long(QStringLiteral("elGroID")),
          Date(QStringLiteral("elStaDat")), Date(QStringLiteral("elEndDat")),
          Text(QStringLiteral("elEndWho"), 25), Flag(QStringLiteral("elFla"))},
         {{QStringLiteral("elEmpID")}, {QStringLiteral("elInsID")}, {QStringLiteral("elGroID")}}});

    catalog.Add({QStringLiteral("PatEmpTable"),
                 {Identity(QStringLiteral("PatEmpID")), Long(QStringLiteral("PatEmpPatID")),
                  Long(QStringLiteral("PatEmpElID")), Long(QStringLiteral("PatEmpOrd")),
                  Date(QStringLiteral("PatEmpStaDat")), Date(QStringLiteral("PatEmpEndDat")),
                  Text(QStringLiteral("PatEmpEndWho"), 25), Flag(QStringLiteral("PatEmpFla"))},
                 {{QStringLiteral("PatEmpPatID")}, {QStringLiteral("PatEmpElID")}}});

    catalog.Add({QStringLiteral("CovTable"),
                 {Identity(QStringLiteral("CovID")), Long(QStringLiteral("CovPatID")),
                  Long(QStringLiteral("CovRel")), Long(QStringLiteral("CovSubPatEmpID")),
                  Long(QStringLiteral("CovOrd")), Date(QStringLiteral("CovStaDat")),
                  Date(QStringLiteral("CovEndDat")), Text(QStringLiteral("CovEndWho"), 25),
                  Flag(QStringLiteral("CovFla")), Text(QStringLiteral("CovInsCoPatID"), 30)},
                 {{QStringLiteral("CovPatID")}, {QStringLiteral("CovSubPatEmpID")}}});

    // The employer, with the facility ids a claim may give for it.
    schema::Table employers{QStringLiteral("EmpTable"), {Identity(QStringLiteral("EmpInd"))}, {}};
    employers.columns << Text(QStringLiteral("EmpNam"), 50) << Text(QStringLiteral("EmpAdd1"), 50)
                      << Text(QStringLiteral("EmpAdd2"), 50) << Text(QStringLiteral("EmpCIT"), 30)
                      << Text(QStringLiteral("EmpSTA"), 2) << Text(QStringLiteral("EmpZIP"), 10)
                      << Text(QStringLiteral("EmpTEL"), 20) << Text(QStringLiteral("EmpTEL2"), 20)
                      << Text(QStringLiteral("EmpFax"), 20) << Text(QStringLiteral("EmpRem1"), 60)
                      << Text(QStringLiteral("EmpRem2"), 60) << Text(QStringLiteral("EmpNPI"), 10)
                      << Text(QStringLiteral("EmpFacEin"), 15);
    employers.indexes << QStringList{QStringLiteral("EmpNam")};
    catalog.Add(employers);

    // A group plan of one carrier: its yearly amounts, claim form and payment, and how its
    // benefits are figured.
    schema::Table plans{QStringLiteral("GroPlaTable"), {Identity(QStringLiteral("GroPlaInd"))}, {}};
    plans.columns << Long(QStringLiteral("GroPlaInsID")) << Text(QStringLiteral("GroPlaGroNum"), 30)
                  << Text(QStringLiteral("GroPlaNam"), 50)
                  << Text(QStringLiteral("GroPlaEffDat"), 5)
                  << schema::Currency(QStringLiteral("GroPlaMax1"))
                  << schema::Currency(QStringLiteral("GroPlaDed1"))
                  << schema::Currency(QStringLiteral("GroPlaMax2"))
                  << schema::Currency(QStringLiteral("GroPlaDed2"))
                  << Short(QStringLiteral("GroPlaForTyp")) << Short(QStringLiteral("GroPlaPayTyp"))
                  << Text(QStringLiteral("GroPlaPreAutReq"), 1)
                  << Short(QStringLiteral("GroPlaChiCovTil"))
                  << Short(QStringLiteral("GroPlaStuCovTil"))
                  << schema::Currency(QStringLiteral("GroPlaMax3"))
                  << schema::Currency(QStringLiteral("GroPlaMax4"))
                  << Text(QStringLiteral("GroPlaRem1"), 60)
                  << Text(QStringLiteral("GroPlaRem2"), 60) << Text(QStringLiteral("GroPlaCat"), 20)
                  << Flag(QStringLiteral("GroPlaDedPct")) << Flag(QStringLiteral("GroPlaAppDedLas"))
                  << Flag(QStringLiteral("GroPlaUseOffFee"))
                  << Short(QStringLiteral("GroPlaSubOffFee")) << Short(QStringLiteral("GroPlaCOB"));
    plans.indexes << QStringList{QStringLiteral("GroPlaInsID")}
                  << QStringList{QStringLiteral("GroPlaGroNum")};
    catalog.Add(plans);

    // The per-code details of a plan, keyed by carrier and group number: only what differs
    // from the Global plan (carrier 0, number 'GLOBAL').
    schema::Table details{QStringLiteral("IPTable"), {Identity(QStringLiteral("IPRecNum"))}, {}};
    details.columns << Long(QStringLiteral("IPInsCoID")) << Text(QStringLiteral("IPGroNum"), 30)
                    << Text(QStringLiteral("IPPlaNam"), 50) << Text(QStringLiteral("IPCod"), 10)
                    << Text(QStringLiteral("IPCodMod"), 5) << Text(QStringLiteral("IPCodCat"), 10)
                    << Text(QStringLiteral("IPDes"), 60)
                    << schema::Currency(QStringLiteral("IPPFee"))
                    << schema::Currency(QStringLiteral("IPSFee")) << Long(QStringLiteral("IPPCov"))
                    << Long(QStringLiteral("IPSCov")) << schema::Currency(QStringLiteral("IPPMax"))
                    << schema::Currency(QStringLiteral("IPSMax"))
                    << Text(QStringLiteral("IPPDedApp"), 1) << Text(QStringLiteral("IPSDedApp"), 1)
                    << Long(QStringLiteral("IPPUCR")) << Long(QStringLiteral("IPSUCR"))
                    << Text(QStringLiteral("IPPPer"), 10) << Text(QStringLiteral("IPSPer"), 10)
                    << Long(QStringLiteral("IPPPerNumTim")) << Long(QStringLiteral("IPSPerNumTim"))
                    << Date(QStringLiteral("IPStaDat"));
    details.indexes << QStringList{QStringLiteral("IPInsCoID"), QStringLiteral("IPGroNum")};
    catalog.Add(details);
}

}  // namespace orvo::insurance
