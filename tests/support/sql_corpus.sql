-- Statements as the component and the reminder code send them, in the Access dialect with the
-- SQL Server forms sent on the server engine, values filled in. The translation tests run each
-- one on both engines against the tables in sql_corpus_tables.txt; the benchmark translates them.
-- One statement a paragraph: statements are separated by blank lines; lines starting with -- are
-- headings.

-- Find-or-add person search
SELECT PWMUseNam FROM PWMTable WHERE PWMID=3

Select * from PATABLE where pLASNAM LIKE 'Smi%'

Select * from Patable where ((pFAMHEAIND = pID or pFAMHEAIND is Null or pFAMHEAIND = 0) and pTypPat >= '1') and pLASNAM Like 'O''Br%' and pFIRNAM Like 'J%' order by pLasNam, pFirNam

SELECT pID, pLASNAM, pFIRNAM, pTypPat, pTypDoc, pTypRef, pTypPhy, pTypEmp, pTypX1, pTypX2, OffLocID FROM PATABLE WHERE pLASNAM Like 'Smith%' and pFIRNAM Like 'John%' and (pTypDoc = '1')  

SELECT count(*) FROM PATABLE LEFT JOIN pdlTable on PATABLE.pID=pdlTable.pdlPID WHERE ((PATABLE.OffLocID<>1) or ((pdlTable.pdlOffLocID=1) AND (pdlTable.pdlShoInLoc=TRUE))) and (PATABLE.pID<>12)

-- List windows
SELECT DISTINCTROW PATABLE.pLASNAM+', '+PATABLE.pFIRNAM AS Name, PATABLE.pLASNAM AS [Last Name], PATABLE.pFIRNAM AS [First Name], PATABLE.pProTTL AS Title, PATABLE.pDOCSPE AS Specialty, PATABLE.pBUSPHO AS [Business Phone], PATABLE.pHOMPHO AS [Home Phone], PATABLE.pADD1 AS [Home Address 1], PATABLE.pADD2 AS [Home Address 2], PATABLE.pCIT AS [H-City], PATABLE.pSTA AS [H-State], PATABLE.pZIP AS Zip, PATABLE.pID AS [ID Num], EmpTable.EmpAdd1 AS [Business Address 1], EmpTable.EmpAdd2 AS [Business Address 2], EmpTable.EmpCIT AS [B-City], EmpTable.EmpSTA AS [B-State], EmpTable.EmpZip AS [B-Zip] FROM (PATABLE LEFT JOIN ELTable ON PATABLE.pEmpID1 = ELTable.elID) LEFT JOIN EmpTable ON ELTable.elEmpID = EmpTable.EmpInd WHERE PATABLE.pTypDoc='1' 

SELECT DISTINCTROW PATABLE.pDOCSPE AS Specialty, PATABLE.pLASNAM+', '+PATABLE.pFIRNAM AS Name, PATABLE.pLASNAM AS [Last Name], PATABLE.pFIRNAM AS [First Name], PATABLE.pProTTL AS Title, PATABLE.pBUSPHO AS [Business Phone], PATABLE.pZIP AS [H-Zip], PATABLE.pID AS [ID Num], EmpTable.EmpZip AS [B-Zip] FROM (PATABLE LEFT JOIN ELTable ON PATABLE.pEmpID1 = ELTable.elID) LEFT JOIN EmpTable ON ELTable.elEmpID = EmpTable.EmpInd WHERE PATABLE.pTypPhy='1'

SELECT DISTINCT trim(PATABLE.pDOCSPE) as Specialty FROM PATABLE WHERE PATABLE.pTypPhy='1' ORDER BY trim(PATABLE.pDOCSPE) asc;

SELECT DISTINCT ltrim(rtrim(PATABLE.pDOCSPE)) as Specialty FROM PATABLE WHERE PATABLE.pTypPhy='1' ORDER BY ltrim(rtrim(PATABLE.pDOCSPE)) asc;

SELECT FMIndTable.FMIndLASNAM+', '+FMIndTable.FMIndFirNAM AS Name, FMIndTable.FMIndLASNAM AS [Last Name], FMIndTable.FMIndFirNAM AS [First Name], PATABLE.pTTL AS Title, PATABLE.pCIT AS City, PATABLE.pSTA AS State, PATABLE.pZIP AS Zip, PATABLE.pID AS [ID Num], PATABLE.OffLocID AS Location FROM FMIndTable left join PaTable on FMIndTable.FmIndPatTabID = PaTable.pID; 

SELECT PATABLE.pLASNAM+', '+PATABLE.pFirNAM AS Name, PATABLE.pLASNAM AS [Last Name], PATABLE.pFirNAM AS [First Name], PATABLE.pTTL AS Title, PATABLE.pID AS [ID Num], PATABLE.OffLocID AS Location FROM FMIndTable Right join PaTable on FMIndTable.FmIndPatTabID = PaTable.pID WHERE (NOT (FMIndTable.FMIndPatTabID IS Null)) or (PATABLE.pID=12)

SELECT DISTINCTROW InsCoTable.InsCoNam AS [Insurance Company], InsCoTable.InsCoAdd1 AS [Address 1], InsCoTable.InsCoAdd2 AS [Address 2], InsCoTable.InsCoCIT AS City, InsCoTable.InsCoSTA AS State, InsCoTable.InsCoZIP AS Zip, InsCoTable.InsCoTEL AS [Phone Number 1], InsCoTable.InsCoTEL2 AS [Phone Number 2], InsCoTable.InsCoFax AS [Fax Number], InsCoTable.InsCoEma as [E-Mail], InsCoTable.InsCoInd as [Ins ID] , InsCoTable.InsCoAccID as [Payer ID] FROM InsCoTable ;

SELECT DISTINCTROW PhaTable.PhaNam AS Pharmacy, PhaTable.PhaAdd1 AS [Address 1], PhaTable.PhaCIT AS City, PhaTable.PhaTEL AS [Phone Number 1], PhaTable.PhaFax AS [Fax Number], PhaTable.PhaEma as [E-Mail], PhaTable.PhaID as [Pha ID] FROM PhaTable 

SELECT DISTINCTROW EmpTable.EmpNam AS [Employer Name], EmpTable.EmpAdd1 AS [Address 1], EmpTable.EmpCIT AS City, EmpTable.EmpSTA AS State, EmpTable.EmpZIP AS Zip, EmpTable.EmpFax AS [Fax Number], EmpTable.EmpTEL AS [Phone Number], EmpTable.EmpInd as [Emp ID] FROM EmpTable 

SELECT DISTINCTROW GroPlaTable.GroPlaGroNum as [Group Number], GroPlaTable.GroPlaNam as [Plan Name], InsCoTable.InsCoNam as [Insurance Company], GroPlaTable.GroPlaEffDat as Effective, GroPlaTable.GroPlaDed1 as Deductible, GroPlaTable.GroPlaMax1 as [Max], GroPlaTable.GroPlaInd as [Grp ID] FROM (GroPlaTable LEFT JOIN InsCoTable ON GroPlaTable.GroPlaInsID=InsCoTable.InsCoInd) WHERE GroPlaTable.GroPlaInsID=4

SELECT DISTINCTROW EmpTable.EmpNam as [Employer Name], InsCoTable.InsCoNam as [Insurance Company], GroPlaTable.GroPlaGroNum as [Group Number], GroPlaTable.GroPlaNam as [Plan Name], GroPlaTable.GroPlaInd as [Plan ID], EmpTable.EmpInd as [Emp ID], ELTable.elID as [Link ID] FROM ((ELTable INNER JOIN EmpTable ON ELTable.elEmpID = EmpTable.EmpInd) INNER JOIN InsCoTable ON ELTable.elInsID = InsCoTable.InsCoInd) INNER JOIN GroPlaTable ON ELTable.elGroID = GroPlaTable.GroPlaInd WHERE (((ELTable.elFla)=0));

SELECT DISTINCT InsCoTable.InsCoNam as [Insurance Company], GroPlaTable.GroPlaGroNum as [Group Number], GroPlaTable.GroPlaNam as [Plan Name], GroPlaTable.GroPlaInd as [Plan ID], InsCoTable.InsCoInd as [Ins ID], ELTable.elID as [Link ID] FROM ((ELTable INNER JOIN EmpTable ON ELTable.elEmpID = EmpTable.EmpInd) INNER JOIN InsCoTable ON ELTable.elInsID = InsCoTable.InsCoInd) INNER JOIN GroPlaTable ON ELTable.elGroID = GroPlaTable.GroPlaInd WHERE (((ELTable.elFla)=0)) AND ((GroPlaTable.GroPlaCat)='CAPITATION');

SELECT DISTINCT RSTable.RCRecNum as [ID #],  RSTable.RCTtl as Title, RSTable.RCRecPer as Period,  RSTable.RCDuePer as Due, RSTable.RCDuePerLet as [Due Letter], RSTable.RCCod as [Recall Codes] FROM RSTable WHERE RCRecNum <> 0;

update insCoTable set InsCoAccID='60054' where insCoInd =4

-- Delete and replace engines
SELECT Count(PatEmpTable.PatEmpPatID) FROM PatEmpTable INNER JOIN ELTable ON PatEmpTable.PatEmpElID = ELTable.elID WHERE (((ELTable.elGroID)=5) AND ((PatEmpTable.PatEmpFla)=0) AND ((ELTable.elFla)=0));

SELECT DISTINCT Count(pID) FROM PATable WHERE (pPhaID=3);

SELECT Count([CovTable].[CovID]) FROM ELTable INNER JOIN (PatEmpTable INNER JOIN CovTable ON PatEmpTable.PatEmpID = CovTable.CovSubPatEmpID) ON ELTable.elID = PatEmpTable.PatEmpElID WHERE ((CovTable.CovFla)=0) AND ((ELTable.elInsID)=4) AND ((ELTable.elFla)=0);

SELECT ELTable.elID, ELTable.elEmpID, ELTable.elInsID, ELTable.elGroID, ELTable.elStaDat FROM ELTable WHERE (((ELTable.elGroID)=5) AND ((ELTable.elFla)=0));

INSERT INTO ELTable (elEmpID, elInsID, elGroID, elStaDat, elFla) VALUES (1, 4, 6, #01/31/2024#, 0)

UPDATE elTable SET elTable.elEndDat=#01/31/2024#, elTable.elEndWho='ADMIN', elTable.elFla=1 WHERE ((elTable.elGroID)=5);

UPDATE GroPlaTable SET GroPlaTable.GroPlaInsID=7 WHERE ((GroPlaTable.GroPlaInsID)=4);

DELETE * FROM EmpTable WHERE EmpInd=3;

DELETE * FROM IPTable WHERE (((IPTable.IPInsCoID)=4) AND ((IPTable.IPGroNum)='G-100'));

Select ABKID, ABKDat, ABKTemPla from ABKTable where ABKDat>=#01/31/2024# order by ABKDat;

Update ApTable Set APTable.APDrID=5 where APTable.APDrID=6 and APDat>=#01/31/2024#

-- People, families, providers, employees
SELECT Distinct FAMTABLE.fMEMID, FAMTABLE.fRSPID FROM FAMTABLE INNER JOIN FAMTABLE AS MemTB ON FAMTABLE.fRSPID = MemTB.fRSPID WHERE ((MemTB.fMEMID)=3)

Select top 1 traID from DTTable where TrapID=3 and ((traTyp=1) or (traTyp=2));

UPDATE IDTypTable SET IDTypTable.IDTypDes='National Provider ID' WHERE IDTypTable.IDTypID = 2

SELECT IDTypTable.IDTypAutoID, IDTypTable.IDTypDes, IDTypTable.IDTypID, DrIDTable.DrIDTypID, DrIDTable.DrIDVal, DrIDTable.DrIDID, DrIDTable.DrIDpID FROM IDTypTable LEFT OUTER JOIN DrIDTable ON IDTypTable.IDTypAutoID = DrIDTable.DrIDTypID WHERE (DrIDTable.DrIDpID = 3)ORDER BY IDTypTable.IDTypAutoID

SELECT EBTable.*, ESTable.* from (EBTable LEFT JOIN ESTable ON EBTable.EBID = ESTable.EBID) WHERE ESTable.OffLocID=1 AND EBTable.EBID=2

SELECT EBID as [ID], EBPid as [PID], EBAPPDAT as [Effective Date], EBDatMod as [Modify], EBWhoMod as [Modify by], EBDep as [Department], EBAnnSalAmt as [Salary], EBAnnVacHou as [Vacation], EBAnnSicHou as [Sick], EBAnnPerHou as [Personal], EBFulTimFla as [FT] FROM EBTable Where EBPid=3 Order by EBID Desc;

Select top 1 TimInDat from TimTable where (TimPid=3) and (Not (TimInDat is Null)) order by TimInDat ASC;

INSERT INTO EBTable (EBPid, EBWhoCre, EBDatCre) VALUES (3, 'ADMIN', #01/31/2024#)

UPDATE EBTable SET EBWhoMod='ADMIN', EBDatMod=#01/31/2024#, EBAPPDAT=Null, EBFulTimFla=TRUE WHERE EBID=2

DELETE AbsTable.* FROM TimTable LEFT JOIN AbsTable ON TimTable.TimID = AbsTable.AbsTimID WHERE (((TimTable.TimPid)=3) AND ((TimTable.TimTyp) In (1,2,3,4)) AND ((TimTable.TimInDat)>#03/15/2024#))

DELETE TimTable.* From TimTable WHERE (((TimTable.TimPid)=3) AND ((TimTable.TimTyp) In (1,2,3,4)))

DELETE FROM AbsTable FROM TimTable LEFT JOIN AbsTable ON TimTable.TimID = AbsTable.AbsTimID WHERE (TimTable.TimPid=3 AND TimTable.TimTyp In (1,2,3,4))

DELETE AbsTable FROM TimTable LEFT JOIN AbsTable ON TimTable.TimID = AbsTable.AbsTimID WHERE (((TimTable.TimPid)=3))

Delete * from PWMTable where  PWMUSENAM='BOB'

INSERT INTO PWMTable (PWMUseNam, PWMPASWOR) VALUES ('SUPERVISOR', '')

SELECT * FROM PWATable WHERE ((OffLocID) = 1) AND PWAUseNam='BOB'

-- Locations and cards
SELECT  OffLocID, OffLocNam, OffLocForClr, OffLocBacClr, pdlShoInLoc, pdlID FROM (OffLocTable LEFT JOIN pdlTable on OffLocTable.OffLocID=pdlTable.pdlOffLocID) WHERE ((pdlTable.pdlPID=3) OR (pdlTable.pdlPID IS NULL)) OR (pdlTable.pdlID IS NULL)ORDER BY OffLocID

INSERT INTO pdlTable ( pdlShoInLoc, pdlOffLocID, pdlPID ) SELECT (PATABLE.OffLocID=OffLocTable.OffLocID) AS PriLoc, OffLocTable.OffLocID, PATABLE.pID FROM PATABLE, OffLocTable WHERE PATABLE.Pid=3

INSERT INTO pdlTable ( pdlShoInLoc, pdlOffLocID, pdlPID ) SELECT CASE PATable.OffLocID WHEN OffLocTable.OffLocID THEN 1 ELSE 0 END AS PriLoc, OffLocTable.OffLocID, PATable.pID FROM PATABLE, OffLocTable WHERE PATABLE.Pid=3

SELECT * From ccTABLE WHERE (((ccTABLE.ccpID)=3) AND ((ccTABLE.ccnum)='4111111111111111'));

UPDATE ccTable SET ccLasUseDat = '2024-01-31', ccLasUseAmt = 12.5 , ccTotUseAmt = [ccTable].[ccTotUseAmt] + 12.5 WHERE (((ccTABLE.ccpID)=3) AND ((ccTABLE.ccnum)= '4111111111111111'))

-- Coverage linking
INSERT INTO CovTable (CovPatID, CovRel, CovSubPatEmpID, CovOrd, CovStaDat, CovFla) VALUES (3, 1, 4, 1, #1/31/2024#, 0)

UPDATE CovTable SET CovTable.CovOrd = [CovTable].[CovOrd]-1 WHERE (((CovTable.CovFla)=0) AND ((CovTable.CovOrd)>1) AND ((CovTable.CovPatID)=3));

SELECT CovTable.CovID, CovTable.CovPatID, CovTable.CovOrd, CovTable.CovRel, CovTable.CovInsCoPatID, PATable.pLASNAM, PATable.pFIRNAM, PATable.pID, EmpTable.EmpNam, InsCoTable.InsCoNam, GroPlaTable.GroPlaGroNum, GroPlaTable.GroPlaNam, ELTable.elEmpID, ELTable.elStaDat, ELTable.elID, PatEmpTable.PatEmpID FROM ((CovTable INNER JOIN PatEmpTable ON CovTable.CovSubPatEmpID = PatEmpTable.PatEmpID) INNER JOIN (((ELTable INNER JOIN EmpTable ON ELTable.elEmpID = EmpTable.EmpInd) INNER JOIN InsCoTable ON ELTable.elInsID = InsCoTable.InsCoInd) INNER JOIN GroPlaTable ON ELTable.elGroID = GroPlaTable.GroPlaInd) ON PatEmpTable.PatEmpElID = ELTable.elID) INNER JOIN PATable ON PatEmpTable.PatEmpPatID = PATable.pID WHERE (((CovTable.CovPatID) = 3) And ((CovTable.CovFla) = 0)) ORDER BY CovTable.CovOrd;

-- Employer telephone push, in both forms
UPDATE PATABLE SET PATABLE.pBusPho1='(555) 010-2030' FROM PATABLE INNER JOIN PatEmpTable ON PATABLE.pID = PatEmpTable.PatEmpPatID INNER JOIN ELTable ON PatEmpTable.PatEmpElID = ELTable.elID WHERE (((PatEmpTable.PatEmpOrd)=1) AND ((PatEmpTable.PatEmpFla)=0) AND ((ELTable.elEmpID)=2) AND ((ELTable.elFla)=0));

UPDATE (PATABLE INNER JOIN PatEmpTable ON PATABLE.pID = PatEmpTable.PatEmpPatID) INNER JOIN ELTable ON PatEmpTable.PatEmpElID = ELTable.elID SET PATABLE.pBusPho='(555) 010-2030' WHERE (((PatEmpTable.PatEmpOrd)=1) AND ((PatEmpTable.PatEmpFla)=0) AND ((ELTable.elEmpID)=2) AND ((PATABLE.pBusCon)='pBusPho1') AND ((ELTable.elFla)=0));

-- Plan details and copy
UPDATE IPTable SET IPTable.IPPFee=IPFrom.IPPFee, IPTable.IPSFee=IPFrom.IPSFee FROM IPTable INNER JOIN IPTable as IPFrom on IPTable.IPCod=IPFrom.IPCod WHERE (IPTable.IPInsCoID=4 AND IPTable.IPGroNum='G-100') AND (IPFrom.IPInsCoID=0 AND IPFrom.IPGroNum='GLOBAL')

SELECT * FROM IPTABLE WHERE 1=0

SELECT TOP 1 * FROM IPTABLE

Delete * from IPTABLE where IPInsCoID = 0 and IPGroNum = 'GLOBAL'

-- Service codes and the city, state and zip panel
Select * from SevCodTable WHERE (IsNull(sevcodDocID) = TRUE OR sevcodDocID = 0) AND Ucase(sevcodCod) = 'D1110' AND Ucase(sevcodOffCod) = 'PROPHY'

SELECT sevcodTable.sevcodCod AS [Service Code], sevcodTable.sevcodOffCod AS [Office Code], sevcodTable.sevcodDes AS Description, sevcodTable.sevcodFee1 AS [Fee 1], sevcodTable.sevcodTyp AS Type, sevcodTable.sevcodID AS ID FROM sevcodTable WHERE ((sevcodTable.sevcodCod like '%pro%') or (sevcodTable.sevcodOffCod like '%pro%') or (sevcodTable.sevcodDes like '%pro%'));

Select Top 8 * from ZipCodTable where ZipCodCit>='SPR' order by ZipCodCit;

DELETE * FROM ZipCodTable WHERE ZipCodID=3;

-- Reminder schedule store
select emmID from emmTable where emmEna=1 and offLocID=-1 and emmAppDefTyp=1

Insert into emmTable (emmDes,emmHasCutOff,emmEna,emmAppDefTyp,OffLocID) values ('Recall Reminder', 0, 1, 1, -1)

Select ORVOWIN.dbo.rstable.rcRecNum, emmTable.*, emsTable.*, ReminderMessageTable.* from ORVOWIN.dbo.rstable left join emmtable on emmAppDefTyp=1 left join emsTable on emsLinTyp=2 and emsLinID=ORVOWIN.dbo.rstable.rcRecNum left join ReminderMessageTable on rmtemmid=emmid and rmtLinID=emsID where ORVOWIN.dbo.rstable.rcRecNum=4 and EMSPID=0 and emmTable.OffLocID=-1 and emmEna=1 and rsTable.OffLocID=1 order by emsSeq

SET NOCOUNT ON; Insert into emsTable (emsLinTyp, emsLinID, emsSeq, emsPer, emsPerTyp, emsPID) values (2, 4, 0, 6, 'M', 0); SELECT @@IDENTITY

UPdate emsTable Set emsLinTyp=2, emsLinID=4, emsSeq=0, emsPer=6, emsPerTyp='M', emsPID=0 Where emsID=1

Update ReminderMessageTable Set rmtTexAutRetMes = 1, rmtEmaAutRetMes = 0, rmtemmID = 1, rmtLinID =2 Where rmtID=3

Select count(ebcID) from ORVOWIN.dbo.rsTable Left Join eBusContactSequence on ORVOWIN.dbo.rsTable.RCRecNum=ebcLinID and ebcLinTyp=2 where ORVOWIN.dbo.rsTable.RCRecNum=4 and ORVOWIN.dbo.rsTable.OffLocID=1 and ebcPer=0 and ebcpID=0

Select ebcConMet from emmTable Left Join eBusContactSequence on emmID=ebcLinID and ebcLinTyp=1 where emmEna=1 and OffLocID=-1 and emmAppDefTyp=1 and ebcpID=0 order by ebcSeq

insert into eBusContactSequence (ebcLinID,ebcLinTyp,ebcpID,ebcSeq,ebcPer,ebcConMet) values (4,2,0,1,0,1)

-- Message templates and recall setup
Select top 1 emsSeq from emmTable Left Join emsTable on emmID=emsLinID and emsLinTyp=3 where emmAppDefTyp=2 and emsSeq< 2147483647 and OffLocID=-1 and emmEna=1 order by emsSeq desc

Select rmtTexAutRetMes, rmtTexMes from emmTable Left Join emsTable on emmID=emsLinID and emsLinTyp=3 Left Join ReminderMessageTable on rmtEmmID=emmID and rmtLinID=emsID where emmAppDefTyp=2 and OffLocID=-1 and emmEna=1 and emsSeq=1

if not exists (select * from INFORMATION_SCHEMA.TABLES where TABLE_NAME='RSTableBackup') begin exec (' CREATE TABLE RSTableBackup( RCRecNum int NOT NULL, RCTtl nvarchar(50) NULL, RCDuePer nvarchar(10) NULL, RCCod ntext NULL) ') Insert into  RSTableBackup ( RCRecNum, RCTtl, RCDuePer, RCCod ) (Select RCRecNum, RCTtl, RCDuePer, RCCod from RSTABLE) End

Update RSTable set RCCutOff='', RCDuePer='', RCDuePerLet='', RCDuePerMsg='' where RCRecNum=4

update ORVOWIN.DBO.rsTable set rcDuePer=tbl.Period, rcDuePerMsg=tbl.rmtCarMes, rcDuePerLet=tbl.rmtLetFil From (select emsLinID, cast(emsPer as nvarchar) + emsPerTyp as Period, emsSeq,rmtLetFil, rmtCarMes From emmTable left join emsTable on emsLinTyp=2 and emsLinID = 4 left join ReminderMessageTable  on rmtLinID=emsID and rmtEmmID=emmID Where emmAppDefTyp=1 and emsSeq=0 and emsLinID = 4) as TBL Where RCRecNum = 4

Delete from eBusContactSequence where ebcID in (Select ebcID from ORVOWIN.dbo.rsTable Left Join eBusContactSequence on ORVOWIN.dbo.rsTable.RCRecNum=ebcLinID and ebcLinTyp=2 where ORVOWIN.dbo.rsTable.RCRecNum=4 and ORVOWIN.dbo.rsTable.OffLocID=1)

-- Personal eReminder setup
update paTable set pHomCell='5550101', pHomEma='pat@example.com', pBusCell='', pBUSEma='' where pID=3
