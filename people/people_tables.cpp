#include "people/people_tables.h"

namespace orvo::people {
namespace {

using schema::Column;
using schema::ColumnType;

Column Key(const QString& name) {
    return {name, ColumnType::Long, 0, true, true, {}};
}
Column Long(const QString& name) {
    return {name, ColumnType::Long};
}
Column Short(const QString& name) {
    return {name, ColumnType::Short};
}
Column Text(const QString& name, int width) {
    return {name, ColumnType::Text, width};
}
Column Money(const QString& name) {
    return {name, ColumnType::Currency};
}

QList<Column> PersonColumns() {
    QList<Column> c;
    c << Key(QStringLiteral("pID"));
    // Roles: one character each, "1" active, "Z" ended with the row kept.
    for (const char* role :
         {"pTypPat", "pTypDoc", "pTypRef", "pTypPhy", "pTypEmp", "pTypX1", "pTypX2"}) {
        c << Text(QLatin1String(role), 1);
    }
    // Name group.
    c << Text(QStringLiteral("pLASNAM"), 30) << Text(QStringLiteral("pFIRNAM"), 30)
      << Text(QStringLiteral("pSeaNam"), 30) << Text(QStringLiteral("pNICNAM"), 30)
      << Text(QStringLiteral("pTTL"), 15) << Text(QStringLiteral("pSEX"), 1)
      << Text(QStringLiteral("pBILTTL"), 15) << Text(QStringLiteral("pProTTL"), 15)
      << Text(QStringLiteral("pBIRDAT"), 10) << Text(QStringLiteral("pSSN"), 12)
      << Text(QStringLiteral("pDRILIC"), 20) << Text(QStringLiteral("pChaNum"), 12);
    // Address and the one phone of each block that the lists show.
    c << Text(QStringLiteral("pADD1"), 30) << Text(QStringLiteral("pADD2"), 30)
      << Text(QStringLiteral("pCIT"), 30) << Text(QStringLiteral("pSTA"), 2)
      << Text(QStringLiteral("pZIP"), 10) << Text(QStringLiteral("pHOMPHO"), 40)
      << Text(QStringLiteral("pBUSPHO"), 40);
    // Contact blocks.
    for (const char* prefix : {"pHom", "pBus"}) {
        const QString p = QLatin1String(prefix);
        c << Text(p + QStringLiteral("Pho1"), 30) << Text(p + QStringLiteral("Pho2"), 30)
          << Text(p + QStringLiteral("Fax"), 30) << Text(p + QStringLiteral("Ema"), 40)
          << Text(p + QStringLiteral("Cell"), 30) << Text(p + QStringLiteral("Pag"), 30)
          << Text(p + QStringLiteral("Con"), 10);
    }
    // Family and account.
    c << Long(QStringLiteral("pFAMHEAIND")) << Text(QStringLiteral("pACCTYP"), 10)
      << Text(QStringLiteral("pNEXSTADAT"), 10) << Text(QStringLiteral("pCRECARTYP"), 4)
      << Text(QStringLiteral("pCRECARNUM"), 22) << Text(QStringLiteral("pSrtFlg"), 5)
      << Short(QStringLiteral("pCLITYP1")) << Text(QStringLiteral("pRECTYP"), 1);
    // Clinical and referral.
    c << Long(QStringLiteral("pPROIND")) << Long(QStringLiteral("pREFIND"))
      << Long(QStringLiteral("pPHY1")) << Long(QStringLiteral("pPHY2"))
      << Long(QStringLiteral("pPhaID"))  // the person's pharmacy (PhaTable)
      << Text(QStringLiteral("pMEDALE"), 100) << Text(QStringLiteral("pMEDALEUPD"), 10)
      << Text(QStringLiteral("pEMECON"), 30) << Text(QStringLiteral("pSCHNAM"), 30)
      << Text(QStringLiteral("pSCHCIT"), 30) << Text(QStringLiteral("pCASNUM"), 18)
      << Text(QStringLiteral("pFIRVISDAT"), 10) << Text(QStringLiteral("pLASVISDAT"), 10)
      << Text(QStringLiteral("pSERSTADAT"), 10) << Short(QStringLiteral("pImaFla"))
      << Column{QStringLiteral("pIntAppDat"), ColumnType::Date}
      << Money(QStringLiteral("pIntAppAmt")) << Long(QStringLiteral("OffLocID"));
    // Employment and the older single-coverage layout.
    c << Long(QStringLiteral("pEmpID1")) << Long(QStringLiteral("pEmpID2"))
      << Long(QStringLiteral("pEmpID3")) << Long(QStringLiteral("pEmpID4"));
    for (const char* position : {"PRI", "SEC"}) {
        const QString p = QLatin1String(position);
        c << Long(QStringLiteral("p") + p + QStringLiteral("INSHOL"))
          << Long(QStringLiteral("p") + p + QStringLiteral("INSID"));
    }
    c << Text(QStringLiteral("pREL2PRI"), 1) << Text(QStringLiteral("pREL2SEC"), 1)
      << Short(QStringLiteral("pPRIRENFLA")) << Short(QStringLiteral("pSECRENFLA"))
      << Money(QStringLiteral("pPRIDED")) << Money(QStringLiteral("pPRIBAL"))
      << Money(QStringLiteral("pPRIYTD")) << Money(QStringLiteral("pSECDED"))
      << Money(QStringLiteral("pSECBAL")) << Money(QStringLiteral("pSECYTD"))
      << Column{QStringLiteral("pInsPct"), ColumnType::Double};
    // Fees and billing.
    for (const char* kind : {"Den", "Med"}) {
        const QString k = QStringLiteral("pGP") + QLatin1String(kind);
        c << Short(k + QStringLiteral("FeeTyp")) << Short(k + QStringLiteral("FeeTypPerm"))
          << Short(k + QStringLiteral("ForTyp")) << Short(k + QStringLiteral("PayTyp"));
    }
    c << Short(QStringLiteral("pDOCFeeTyp"));
    // Provider and employee.
    c << Text(QStringLiteral("pDOCLIC"), 15) << Text(QStringLiteral("pDOCEIN"), 13)
      << Text(QStringLiteral("pDOCSPE"), 20) << Text(QStringLiteral("pDOCLET"), 20)
      << Text(QStringLiteral("pDOCREM1"), 60) << Text(QStringLiteral("pDOCREM2"), 60)
      << Text(QStringLiteral("pDOCREM3"), 60) << Text(QStringLiteral("pDocDatEmp"), 10)
      << Text(QStringLiteral("pDocMedNum"), 14) << Text(QStringLiteral("pDocIni"), 3)
      << Text(QStringLiteral("pDatRel"), 10);
    return c;
}

}  // namespace

void DeclarePeopleTables(schema::Catalog& catalog) {
    schema::Table persons{QStringLiteral("PATable"), PersonColumns(), {}};
    // The name lists and searches, the family-head list, and each role's own list.
    persons.indexes << QStringList{QStringLiteral("pLASNAM"), QStringLiteral("pFIRNAM")}
                    << QStringList{QStringLiteral("pSeaNam")}
                    << QStringList{QStringLiteral("pFAMHEAIND")}
                    << QStringList{QStringLiteral("pPROIND")}
                    << QStringList{QStringLiteral("pChaNum")};
    for (const char* role : {"pTypPat", "pTypDoc", "pTypRef", "pTypPhy", "pTypEmp"})
        persons.indexes << QStringList{QLatin1String(role)};
    catalog.Add(persons);

    // One row per person placed in a family; a head's row names itself.
    catalog.Add({QStringLiteral("FamTable"),
                 {{QStringLiteral("fMEMID"), ColumnType::Long, 0, false, true, {}},
                  Long(QStringLiteral("fRSPID"))},
                 {{QStringLiteral("fRSPID")}}});

    // The family heads by name, joined by the list of heads. The host keeps it current.
    catalog.Add({QStringLiteral("FMIndTable"),
                 {Text(QStringLiteral("FMIndLASNAM"), 30), Text(QStringLiteral("FMIndFirNAM"), 30),
                  Long(QStringLiteral("FMIndPatTabID"))},
                 {{QStringLiteral("FMIndPatTabID")},
                  {QStringLiteral("FMIndLASNAM"), QStringLiteral("FMIndFirNAM")}}});

    // The offices of a practice that runs several from one database; 0 is no location.
    catalog.Add({QStringLiteral("OffLocTable"),
                 {schema::Identity(QStringLiteral("OffLocID")),
                  schema::Text(QStringLiteral("OffLocNam"), 50),
                  schema::Text(QStringLiteral("OffLocAd1"), 50),
                  schema::Text(QStringLiteral("OffLocAd2"), 50),
                  schema::Text(QStringLiteral("OffLocCit"), 30),
                  schema::Text(QStringLiteral("OffLocSta"), 10),
                  schema::Text(QStringLiteral("OffLocZip"), 15),
                  schema::Text(QStringLiteral("OffLocPho"), 30),
                  schema::Text(QStringLiteral("OffLocPho2"), 30),
                  schema::Text(QStringLiteral("OffLocFax"), 30),
                  schema::Text(QStringLiteral("OffLocEma"), 60),
                  schema::Text(QStringLiteral("OffLocFacID"), 30),
                  schema::Text(QStringLiteral("OffLocTIN"), 20),
                  schema::Text(QStringLiteral("OffLocNPI"), 20),
                  schema::Text(QStringLiteral("OffLocBanAccNum"), 30),
                  schema::Long(QStringLiteral("OffLocBacClr")),
                  schema::Long(QStringLiteral("OffLocForClr"))},
                 {}});
    // The practice's own lists that person screens fill fields from: pairs of sex and courtesy
    // title written "F/Mrs." (a row without "/" is a title alone), and medical alert texts.
    catalog.Add({kSexTitleTable,
                 {schema::Identity(QStringLiteral("stID")), schema::Text(kSexTitleColumn, 20)},
                 {}});
    catalog.Add({kMedicalAlertTable,
                 {schema::Identity(QStringLiteral("maID")), schema::Text(kMedicalAlertColumn, 100)},
                 {}});
    // Where a patient is shown besides the primary location (PATable.OffLocID).
    catalog.Add(
        {QStringLiteral("pdlTable"),
         {schema::Identity(QStringLiteral("pdlID")), schema::Long(QStringLiteral("pdlPID")),
          schema::Long(QStringLiteral("pdlOffLocID")), schema::Flag(QStringLiteral("pdlShoInLoc"))},
         {{QStringLiteral("pdlPID")}, {QStringLiteral("pdlOffLocID")}}});
}

}  // namespace orvo::people
