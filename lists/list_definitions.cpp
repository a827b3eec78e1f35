#include "lists/list_definitions.h"

namespace orvo::lists {
namespace {

const QChar kFieldEnd(1);

// Person lists: name, home and business addresses, by the person's first employer link.
const QString kPersonFrom = QStringLiteral(
    "FROM (PATABLE LEFT JOIN ELTable ON PATABLE.pEmpID1 = ELTable.elID) LEFT JOIN EmpTable ON "
    "ELTable.elEmpID = EmpTable.EmpInd ");

const QString kBusinessAddress = QStringLiteral(
    "EmpTable.EmpAdd1 AS [Business Address 1], EmpTable.EmpAdd2 AS [Business Address 2], "
    "EmpTable.EmpCIT AS [B-City], EmpTable.EmpSTA AS [B-State], EmpTable.EmpZip AS [B-Zip] ");

QString ProviderSql(bool withSpecialty) {
    return QStringLiteral(
               "SELECT DISTINCTROW PATABLE.pLASNAM+', '+PATABLE.pFIRNAM AS Name, PATABLE.pLASNAM "
               "AS [Last Name], PATABLE.pFIRNAM AS [First Name], PATABLE.pProTTL AS Title, ") +
           (withSpecialty ? QStringLiteral("PATABLE.pDOCSPE AS Specialty, ") : QString()) +
           QStringLiteral(
               "PATABLE.pBUSPHO AS [Business Phone], PATABLE.pHOMPHO AS [Home Phone], "
               "PATABLE.pADD1 AS [Home Address 1], PATABLE.pADD2 AS [Home Address 2], "
               "PATABLE.pCIT AS [H-City], PATABLE.pSTA AS [H-State], PATABLE.pZIP AS Zip, "
               "PATABLE.pID AS [ID Num], ") +
           kBusinessAddress + kPersonFrom;
}

const QString kPhysicianSql =
    QStringLiteral(
        "SELECT DISTINCTROW PATABLE.pDOCSPE AS Specialty, PATABLE.pLASNAM+', '+PATABLE.pFIRNAM "
        "AS Name, PATABLE.pLASNAM AS [Last Name], PATABLE.pFIRNAM AS [First Name], "
        "PATABLE.pProTTL AS Title, PATABLE.pBUSPHO AS [Business Phone], PATABLE.pHOMPHO AS "
        "[Home Phone], PATABLE.pADD1 AS [Home Address 1], PATABLE.pADD2 AS [Home Address 2], "
        "PATABLE.pCIT AS [H-City], PATABLE.pSTA AS [H-State], PATABLE.pZIP AS [H-Zip], "
        "PATABLE.pID AS [ID Num], ") +
    kBusinessAddress + kPersonFrom + QStringLiteral("WHERE PATABLE.pTypPhy='1'");

const QString kFamilyHeadSql = QStringLiteral(
    "SELECT FMIndTable.FMIndLASNAM+', '+FMIndTable.FMIndFirNAM AS Name, FMIndTable.FMIndLASNAM "
    "AS [Last Name], FMIndTable.FMIndFirNAM AS [First Name], PATABLE.pTTL AS Title, "
    "PATABLE.pBUSPHO AS [Business Phone], PATABLE.pHOMPHO AS [Home Phone], PATABLE.pADD1 AS "
    "[Home Address 1], PATABLE.pADD2 AS [Home Address 2], PATABLE.pCIT AS City, PATABLE.pSTA AS "
    "State, PATABLE.pZIP AS Zip, PATABLE.pID AS [ID Num], PATABLE.OffLocID AS Location FROM "
    "FMIndTable left join PaTable on FMIndTable.FmIndPatTabID = PaTable.pID; ");

QString FamilyHeadIncludingSql(int personId) {
    return QStringLiteral(
               "SELECT PATABLE.pLASNAM+', '+PATABLE.pFirNAM AS Name, PATABLE.pLASNAM AS [Last "
               "Name], PATABLE.pFirNAM AS [First Name], PATABLE.pTTL AS Title, PATABLE.pBUSPHO "
               "AS [Business Phone], PATABLE.pHOMPHO AS [Home Phone], PATABLE.pADD1 AS [Home "
               "Address 1], PATABLE.pADD2 AS [Home Address 2], PATABLE.pCIT AS City, "
               "PATABLE.pSTA AS State, PATABLE.pZIP AS Zip, PATABLE.pID AS [ID Num], "
               "PATABLE.OffLocID AS Location FROM FMIndTable Right join PaTable on "
               "FMIndTable.FmIndPatTabID = PaTable.pID WHERE (NOT (FMIndTable.FMIndPatTabID IS "
               "Null)) or (PATABLE.pID=") +
           QString::number(personId) + QStringLiteral(")");
}

const QString kCarrierSql = QStringLiteral(
    "SELECT DISTINCTROW InsCoTable.InsCoNam AS [Insurance Company], InsCoTable.InsCoAdd1 AS "
    "[Address 1], InsCoTable.InsCoAdd2 AS [Address 2], InsCoTable.InsCoCIT AS City, "
    "InsCoTable.InsCoSTA AS State, InsCoTable.InsCoZIP AS Zip, InsCoTable.InsCoTEL AS [Phone "
    "Number 1], InsCoTable.InsCoTEL2 AS [Phone Number 2], InsCoTable.InsCoFax AS [Fax Number], "
    "InsCoTable.InsCoEma as [E-Mail], InsCoTable.InsCoInd as [Ins ID] , InsCoTable.InsCoAccID as "
    "[Payer ID] FROM InsCoTable ;");

const QString kPharmacySql = QStringLiteral(
    "SELECT DISTINCTROW PhaTable.PhaNam AS Pharmacy, PhaTable.PhaAdd1 AS [Address 1], "
    "PhaTable.PhaAdd2 AS [Address 2], PhaTable.PhaCIT AS City, PhaTable.PhaSTA AS State, "
    "PhaTable.PhaZIP AS Zip, PhaTable.PhaTEL AS [Phone Number 1], PhaTable.PhaTEL2 AS [Phone "
    "Number 2], PhaTable.PhaFax AS [Fax Number], PhaTable.PhaEma as [E-Mail], PhaTable.PhaID as "
    "[Pha ID] FROM PhaTable ");

const QString kEmployerSql = QStringLiteral(
    "SELECT DISTINCTROW EmpTable.EmpNam AS [Employer Name], EmpTable.EmpAdd1 AS [Address 1], "
    "EmpTable.EmpAdd2 AS [Address 2], EmpTable.EmpCIT AS City, EmpTable.EmpSTA AS State, "
    "EmpTable.EmpZIP AS Zip, EmpTable.EmpFax AS [Fax Number], EmpTable.EmpTEL AS [Phone Number], "
    "EmpTable.EmpInd as [Emp ID] FROM EmpTable ");

const QString kGroupPlanSql = QStringLiteral(
    "SELECT DISTINCTROW GroPlaTable.GroPlaGroNum as [Group Number], GroPlaTable.GroPlaNam as "
    "[Plan Name], InsCoTable.InsCoNam as [Insurance Company], GroPlaTable.GroPlaEffDat as "
    "Effective, GroPlaTable.GroPlaDed1 as Deductible, GroPlaTable.GroPlaMax1 as [Max], "
    "GroPlaTable.GroPlaInd as [Grp ID] FROM (GroPlaTable LEFT JOIN InsCoTable ON "
    "GroPlaTable.GroPlaInsID=InsCoTable.InsCoInd) ");

const QString kInsGroupSql = QStringLiteral(
    "SELECT DISTINCTROW EmpTable.EmpNam as [Employer Name], InsCoTable.InsCoNam as [Insurance "
    "Company], GroPlaTable.GroPlaGroNum as [Group Number], GroPlaTable.GroPlaNam as [Plan Name], "
    "GroPlaTable.GroPlaInd as [Plan ID], EmpTable.EmpInd as [Emp ID], ELTable.elID as [Link ID] "
    "FROM ((ELTable INNER JOIN EmpTable ON ELTable.elEmpID = EmpTable.EmpInd) INNER JOIN "
    "InsCoTable ON ELTable.elInsID = InsCoTable.InsCoInd) INNER JOIN GroPlaTable ON "
    "ELTable.elGroID = GroPlaTable.GroPlaInd WHERE (((ELTable.elFla)=0));");

const QString kCapPlansSql = QStringLiteral(
    "SELECT DISTINCT InsCoTable.InsCoNam as [Insurance Company], GroPlaTable.GroPlaGroNum as "
    "[Group Number], GroPlaTable.GroPlaNam as [Plan Name], GroPlaTable.GroPlaInd as [Plan ID], "
    "InsCoTable.InsCoInd as [Ins ID], ELTable.elID as [Link ID] FROM ((ELTable INNER JOIN "
    "EmpTable ON ELTable.elEmpID = EmpTable.EmpInd) INNER JOIN InsCoTable ON ELTable.elInsID = "
    "InsCoTable.InsCoInd) INNER JOIN GroPlaTable ON ELTable.elGroID = GroPlaTable.GroPlaInd "
    "WHERE (((ELTable.elFla)=0)) AND ((GroPlaTable.GroPlaCat)='CAPITATION');");

const QString kRecallMasterSql = QStringLiteral(
    "SELECT DISTINCT RSTable.RCRecNum as [ID #],  RSTable.RCTtl as Title, RSTable.RCRecPer as "
    "Period,  RSTable.RCDuePer as Due, RSTable.RCDuePerLet as [Due Letter], RSTable.RCCod as "
    "[Recall Codes] FROM RSTable WHERE RCRecNum <> 0;");

const QStringList kPersonSearch{QStringLiteral("[First Name]"), QStringLiteral("[Last Name]"),
                                QStringLiteral("Title"), QStringLiteral("[ID Num]")};

QString LoadingBanner(const QString& what) {
    return QStringLiteral("  Loading ") + what + QStringLiteral(" - Please Wait  ");
}

}  // namespace

bool IsPersonList(LookUpListTypes type) {
    return type >= lulProvider && type <= lulEmployee;
}

bool IsInsuranceList(LookUpListTypes type) {
    return type == lulInsuranceCo || type == lulEmployer || type == lulGroupPlan;
}

QString JoinSearchFields(const QStringList& fields) {
    QString joined;
    for (const QString& field : fields)
        joined += field + kFieldEnd;
    return joined;
}

QStringList SplitSearchFields(const QString& joined) {
    QStringList fields = joined.split(kFieldEnd, Qt::SkipEmptyParts);
    return fields;
}

QString SpecialtySql(short databaseKind) {
    if (databaseKind == 1) {
        return QStringLiteral(
            "SELECT DISTINCT trim(PATABLE.pDOCSPE) as Specialty FROM PATABLE WHERE "
            "PATABLE.pTypPhy='1' ORDER BY trim(PATABLE.pDOCSPE) asc;");
    }
    return QStringLiteral(
        "SELECT DISTINCT ltrim(rtrim(PATABLE.pDOCSPE)) as Specialty FROM PATABLE WHERE "
        "PATABLE.pTypPhy='1' ORDER BY ltrim(rtrim(PATABLE.pDOCSPE)) asc;");
}

ListDefinition DefineList(LookUpListTypes type, const ListOptions& options) {
    ListDefinition d;
    d.type = type;
    d.Caption = LookUpListTitle(type);
    const auto layout = [&](const char* browse, const char* select) {
        d.LayoutKey = QLatin1String(options.bSelectMode && select ? select : browse);
    };
    switch (type) {
        case lulProvider:
        case lulReferral:
        case lulEmployee: {
            static const char* const keys[] = {"docScreen", "refScreen", "emplScreen"};
            const int which = type == lulProvider ? 0 : (type == lulReferral ? 1 : 2);
            d.ListKey = QLatin1String(keys[which]);
            d.IDField = QStringLiteral("ID Num");
            d.NameField = QStringLiteral("Name");
            d.SearchFields = JoinSearchFields(kPersonSearch);
            d.SortBy = QStringLiteral("Name");
            if (type == lulProvider) {
                d.SQL = ProviderSql(true) + QStringLiteral("WHERE PATABLE.pTypDoc='1' ");
                layout("frmTGList_PROV", nullptr);
            } else if (type == lulReferral) {
                d.SQL = ProviderSql(true) + QStringLiteral("WHERE PATABLE.pTypRef='1' ");
                layout("frmTGList_REF", nullptr);
            } else {
                d.SQL = ProviderSql(false) + QStringLiteral(
                                                 "WHERE (PATABLE.pTypEmp='1') OR "
                                                 "(PATABLE.pTypEmp='2') ");
                layout("frmTGList_EMPL", nullptr);
            }
            break;
        }
        case lulPhysician1:
        case lulPhysician2:
        case lulReferInOut:
            d.ListKey = QStringLiteral("phyScreen");
            d.IDField = QStringLiteral("ID Num");
            d.NameField = QStringLiteral("Name");
            d.SearchFields = JoinSearchFields(kPersonSearch);
            d.SQL = kPhysicianSql;
            d.SortBy = QStringLiteral("Specialty, Name");
            d.InitFilterColumn = QStringLiteral("Specialty");
            layout("frmTGList_PHY", nullptr);
            break;
        case lulFamilyHead:
            d.ListKey = QStringLiteral("FamScreen");
            d.IDField = QStringLiteral("ID Num");
            d.NameField = QStringLiteral("Name");
            d.SearchFields = JoinSearchFields(kPersonSearch);
            d.SQL = options.FamHeadIncPatID != 0 ? FamilyHeadIncludingSql(options.FamHeadIncPatID)
                                                 : kFamilyHeadSql;
            d.SortBy = QStringLiteral("[Last Name],[First Name]");
            layout("frmTGList_HEAD", nullptr);
            break;
        case lulInsuranceCo:
            d.Banner = QStringLiteral("  Loading Insurance Company List - Please Wait  ");
            d.ListKey = QStringLiteral("insScreen");
            d.IDField = QStringLiteral("Ins ID");
            d.NameField = QStringLiteral("Insurance Company");
            d.SearchFields = JoinSearchFields({"[Insurance Company]", "[Ins ID]"});
            d.SQL = kCarrierSql;
            d.SortBy = QStringLiteral("[Insurance Company]");
            layout("frmTGList_INS", "frmTGList_INSS");
            break;
        case lulEmployer:
            d.Banner = QStringLiteral("  Loading Employer List - Please Wait  ");
            d.ListKey = QStringLiteral("empScreen");
            d.IDField = QStringLiteral("Emp ID");
            d.NameField = QStringLiteral("Employer Name");
            d.SearchFields = JoinSearchFields({"[Employer Name]", "[Emp ID]"});
            d.SQL = kEmployerSql;
            d.SortBy = QStringLiteral("[Employer Name]");
            layout("frmTGList_EMP", "frmTGList_EMPS");
            break;
        case lulGroupPlan:
            d.Banner = QStringLiteral("  Loading Insurance Plan List - Please Wait  ");
            d.ListKey = QStringLiteral("GrpPlaScreen");
            d.IDField = QStringLiteral("Grp ID");
            d.NameField = QStringLiteral("Group Number");
            d.SearchFields = JoinSearchFields({"[Group Number]", "[Grp ID]"});
            d.SQL = kGroupPlanSql;
            if (options.GroupPlanCompanyID != 0) {
                d.SQL += QStringLiteral("WHERE GroPlaTable.GroPlaInsID=") +
                         QString::number(options.GroupPlanCompanyID);
            }
            d.SortBy = QStringLiteral("[Group Number], [Plan Name]");
            d.Caption = options.GroupPlanCompanyID != 0
                            ? QStringLiteral("Insurance Plan List for ") + options.CarrierName
                            : QStringLiteral("Insurance Plan List");
            layout("frmTGList_GRP", "frmTGList_GRPS");
            break;
        case lulInsGroup:
            d.ListKey = QStringLiteral("InsGroup");
            d.IDField = QStringLiteral("Link ID");
            d.NameField = QStringLiteral("Group Number");
            d.SearchFields = JoinSearchFields(
                {"[Employer Name]", "[Insurance Company]", "[Group Number]", "[Emp ID]"});
            d.SQL = kInsGroupSql;
            d.SortBy = QStringLiteral("[Insurance Company], [Group Number]");
            d.Caption = QStringLiteral("Copy Insurance Plan From ...");
            d.InitFilterColumn = QStringLiteral("Insurance Company");
            layout("frmTGList_INGR", nullptr);
            break;
        case lulRecallMaster:
            d.ListKey = QStringLiteral("RecallMaster");
            d.IDField = QStringLiteral("ID #");
            d.NameField = QStringLiteral("Title");
            d.SearchFields = JoinSearchFields({"[Title]", "[ID #]"});
            d.SQL = kRecallMasterSql;
            d.SortBy = QStringLiteral("[ID #]");
            layout("frmTGList_RCMA", nullptr);
            break;
        case lulPharmacy:
            d.Banner = QStringLiteral("  Loading Pharmacy List - Please Wait  ");
            d.ListKey = QStringLiteral("PhaScreen");
            d.IDField = QStringLiteral("Pha ID");
            d.NameField = QStringLiteral("Pharmacy");
            d.SearchFields = JoinSearchFields({"[Pharmacy]", "[Pha ID]"});
            d.SQL = kPharmacySql;
            d.SortBy = QStringLiteral("Pharmacy");
            layout("frmTGList_PHA", "frmTGList_PHAS");
            break;
        case lulCapPlans:
            d.ListKey = QStringLiteral("CapPlans");
            d.IDField = QStringLiteral("Plan ID");
            d.NameField = QStringLiteral("Group Number");
            d.SearchFields = JoinSearchFields({"[Group Number]", "[Plan ID]"});
            d.SQL = kCapPlansSql;
            d.SortBy = QStringLiteral("[Insurance Company], [Group Number]");
            d.Caption = QStringLiteral("Select Managed Care Plan ...");
            layout("frmTGList_CAPL", nullptr);
            break;
    }
    if (!options.ListTitle.isEmpty())
        d.Caption = options.ListTitle;
    if (IsPersonList(type))
        d.Banner = LoadingBanner(d.Caption);
    return d;
}

}  // namespace orvo::lists
