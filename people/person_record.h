#pragma once

#include <QDate>
#include <QString>

#include "component/public/gic.h"
#include "platform/currency.h"

namespace orvo::people {

// One row of PATable in memory, in the order the record read fills it. Text is cut to the
// column's width; a null reads as empty text or 0. The role columns pTypEmp, pTypX1 and pTypX2
// are not carried: the screens bind them directly.
struct PersonRecord {
    int pID = 0;
    QString pTypPat, pTypDoc, pTypRef, pTypPhy;
    short pCLITYP1 = 0;
    QString pLASNAM, pFIRNAM, pSeaNam, pNICNAM;
    int pPROIND = 0, pREFIND = 0;
    QString pSEX, pTTL, pBIRDAT, pHOMPHO, pBUSPHO;
    QString pADD1, pADD2, pCIT, pSTA, pZIP;
    QString pSSN, pDRILIC, pCRECARTYP, pCRECARNUM;
    int pFAMHEAIND = 0;
    QString pBILTTL, pNEXSTADAT, pACCTYP, pFIRVISDAT, pLASVISDAT, pCASNUM;
    QString pMEDALE, pMEDALEUPD, pEMECON;
    int pPHY1 = 0, pPHY2 = 0;
    QString pSCHNAM, pSCHCIT;
    int pEmpID1 = 0, pEmpID2 = 0, pEmpID3 = 0, pEmpID4 = 0;
    // Primary insurance.
    int pPRIINSHOL = 0, pPRIINSID = 0;
    QString pREL2PRI;
    short pPRIRENFLA = 0;
    Currency pPRIDED, pPRIBAL, pPRIYTD;
    // Secondary insurance.
    int pSECINSHOL = 0, pSECINSID = 0;
    QString pREL2SEC;
    short pSECRENFLA = 0;
    Currency pSECDED, pSECBAL, pSECYTD;
    QString pRECTYP, pSERSTADAT;
    // Provider.
    QString pDOCLIC, pDOCEIN, pDOCSPE, pDOCLET, pDOCREM1, pDOCREM2, pDOCREM3;
    QString pDocDatEmp, pDocMedNum, pDocIni;
    // Fee schedules, form and payment types.
    short pGPDenFeeTyp = 0, pGPDenFeeTypPerm = 0, pGPDenForTyp = 0, pGPDenPayTyp = 0;
    short pGPMedFeeTyp = 0, pGPMedFeeTypPerm = 0, pGPMedForTyp = 0, pGPMedPayTyp = 0;
    short pDOCFeeTyp = 0;
    QString pSrtFlg;
    short pImaFla = 0;
    QDate pIntAppDat;
    Currency pIntAppAmt;
    // Home block.
    QString pHomPho1, pHomPho2, pHomFax, pHomEma, pHomCell, pHomPag, pHomCon;
    // Business block.
    QString pBusPho1, pBusPho2, pBusFax, pBusEma, pBusCell, pBusPag, pBusCon;
    float pInsPct = 0;
    QString pChaNum;
    int OffLocID = 0;

    bool operator==(const PersonRecord&) const = default;
};

// The condition that makes a row a family head; every list of heads uses this text.
extern const QString FamilyHeadFilter;

// Fills record from the person's row. An unknown id gives an empty record with pID 0. A column
// the database lacks (an older practice) leaves its field empty. The read heals the row: a
// missing provider becomes the practice's default provider, and a missing permanent fee
// schedule the provider's own (1 when that is no schedule in use), both written back.
void ReadPersonRecord(GIC& gic, int pID, PersonRecord& record);

// Gives a person a role or takes it away: column is a role column in any case (pTypPat ...
// pTypX2), value its new one-character value ("1", "0", "Z"). Every consequence on the row goes
// in the same single UPDATE, so that a role change is all or nothing in the store: a returning
// archived patient loses the archive marks, a new provider becomes an employee, a provider or
// employee gets initials, a person outside any family heads one of their own. The host hears
// of the change after it was written. A blank column or value, or pID 0, does nothing; a
// person who is not in the table does nothing either.
void SetPersonType(GIC& gic, int pID, const QString& column, const QString& value, int extraID = 0);

// The nick name argument that asks for the default: the first word of the first name.
extern const QString kUseDefaultNickName;

// Writes pNICNAM: nickName as it is, or with kUseDefaultNickName the first word of firstName.
void SetDefaultNickName(GIC& gic, int pID, const QString& firstName, const QString& nickName);

}  // namespace orvo::people
