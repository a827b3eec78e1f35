#include "platform/db/translate_sql.h"
#include "platform/db/one_statement.h"
#include "platform/db/translation_cache.h"

#include <gtest/gtest.h>
#include <QLoggingCategory>
#include <QSqlError>
#include <QSqlQuery>

#include "tests/support/sql_corpus.h"
#include "tests/support/test_database.h"

namespace orvo::db {
namespace {

using namespace Qt::StringLiterals;

std::string Sqlite(const QString& sql) {
    return TranslateSql(sql, Engine::Sqlite).toStdString();
}
std::string Pg(const QString& sql) {
    return TranslateSql(sql, Engine::Postgres).toStdString();
}

#define EXPECT_BOTH(in, out)                          \
    do {                                              \
        EXPECT_EQ(Sqlite(QStringLiteral(in)), (out)); \
        EXPECT_EQ(Pg(QStringLiteral(in)), (out));     \
    } while (0)

// Collects what the translator logs, so a test can tell a statement was reported.
class SqlWarnings {
public:
    SqlWarnings() {
        messages().clear();
        previous_ = qInstallMessageHandler(
            [](QtMsgType type, const QMessageLogContext& context, const QString& text) {
                if (type == QtWarningMsg && qstrcmp(context.category, "orvo.sql") == 0)
                    messages() << text;
            });
    }
    ~SqlWarnings() { qInstallMessageHandler(previous_); }
    static QStringList& messages() {
        static QStringList list;
        return list;
    }

private:
    QtMessageHandler previous_;
};

TEST(TranslateSql, DateLiteralsBecomeIsoText) {
    EXPECT_BOTH("SELECT * FROM t WHERE d>=#01/31/2024# AND e<#2/5/2024#",
                "SELECT * FROM t WHERE d>='2024-01-31' AND e<'2024-02-05'");
    EXPECT_BOTH("UPDATE t SET d=#12/31/1999 23:59:07#", "UPDATE t SET d='1999-12-31 23:59:07'");
    EXPECT_BOTH("SELECT #1/2/2024 2:05 PM#, #1/2/2024 12:00:00 AM#, #3/4/29#, #2024-03-04#",
                "SELECT '2024-01-02 14:05:00', '2024-01-02 00:00:00', '2029-03-04', '2024-03-04'");
    // Not a date: the sign stays what it was.
    EXPECT_BOTH("SELECT a # b, #13/45/2024# FROM t", "SELECT a # b, #13/45/2024# FROM t");
}

TEST(TranslateSql, DistinctRowAndDeleteStar) {
    EXPECT_BOTH("SELECT DISTINCTROW a FROM t", "SELECT DISTINCT a FROM t");
    EXPECT_BOTH("select distinctrow a from t", "select DISTINCT a from t");
    EXPECT_BOTH("DELETE * FROM EmpTable WHERE EmpInd=3;", "DELETE FROM EmpTable WHERE EmpInd=3;");
    EXPECT_BOTH("Delete * from PWMTable where  PWMUSENAM='BOB'",
                "Delete from PWMTable where  PWMUSENAM='BOB'");
}

TEST(TranslateSql, TopBecomesLimitAtTheEndOfItsOwnSelect) {
    EXPECT_BOTH("Select top 1 traID from DTTable where TrapID=3 order by traID desc;",
                "Select traID from DTTable where TrapID=3 order by traID desc LIMIT 1;");
    EXPECT_BOTH("SELECT TOP 1 * FROM IPTABLE", "SELECT * FROM IPTABLE LIMIT 1");
    EXPECT_BOTH("SELECT DISTINCT TOP (5) a FROM t -- first five\n",
                "SELECT DISTINCT a FROM t LIMIT 5 -- first five\n");
    EXPECT_BOTH("SELECT a FROM t WHERE a IN (SELECT TOP 2 b FROM u ORDER BY b) ORDER BY a",
                "SELECT a FROM t WHERE a IN (SELECT b FROM u ORDER BY b LIMIT 2) ORDER BY a");
    EXPECT_BOTH("SELECT TOP 3 a, (SELECT TOP 1 b FROM u) AS c FROM t",
                "SELECT a, (SELECT b FROM u LIMIT 1) AS c FROM t LIMIT 3");
    // A column called top is not the keyword.
    EXPECT_BOTH("SELECT top FROM t", "SELECT top FROM t");
}

TEST(TranslateSql, TopWithoutALimitCounterpartIsSentAsItCameAndReported) {
    SqlWarnings warnings;
    EXPECT_BOTH("SELECT TOP 10 PERCENT a FROM t", "SELECT TOP 10 PERCENT a FROM t");
    EXPECT_BOTH("SELECT TOP 1 a FROM t UNION SELECT b FROM u",
                "SELECT TOP 1 a FROM t UNION SELECT b FROM u");
    EXPECT_EQ(warnings.messages().size(), 4);
}

TEST(TranslateSql, FunctionsOfTheAccessDialect) {
    EXPECT_BOTH("SELECT Ucase(a), lcase(b), Len(c), Mid(d, 2, 3), trim(e), ltrim(rtrim(f)) FROM t",
                "SELECT UPPER(a), LOWER(b), LENGTH(c), SUBSTR(d, 2, 3), trim(e), ltrim(rtrim(f)) "
                "FROM t");
    // Only calls: a column named like a function keeps its name.
    EXPECT_BOTH("SELECT t.Len, Len FROM t", "SELECT t.Len, Len FROM t");
}

TEST(TranslateSql, IsNullBecomesANullTest) {
    EXPECT_BOTH("SELECT * FROM s WHERE (IsNull(sevcodDocID) = TRUE OR sevcodDocID = 0)",
                "SELECT * FROM s WHERE ((sevcodDocID) IS NULL OR sevcodDocID = 0)");
    EXPECT_BOTH("SELECT * FROM s WHERE IsNull(a) = False AND ISNULL(b)<>TRUE",
                "SELECT * FROM s WHERE (a) IS NOT NULL AND (b) IS NOT NULL");
    EXPECT_BOTH("SELECT * FROM s WHERE IsNull(a) AND NOT IsNull (b + 1)",
                "SELECT * FROM s WHERE (a) IS NULL AND NOT (b + 1) IS NULL");
    EXPECT_BOTH("SELECT ISNULL(rmtTexMes, '') FROM r", "SELECT COALESCE(rmtTexMes, '') FROM r");
}

// A call inside the argument of another is rewritten as well, whatever the pair, and a second
// translation finds nothing left to change.
TEST(TranslateSql, NestedCallsTranslateInOnePass) {
    const std::pair<const char*, const char*> cases[] = {
        {"SELECT * FROM s WHERE IsNull(IsNull(a))", "SELECT * FROM s WHERE ((a) IS NULL) IS NULL"},
        {"SELECT * FROM s WHERE IsNull(IsNull(a) = TRUE) = FALSE",
         "SELECT * FROM s WHERE ((a) IS NULL) IS NOT NULL"},
        {"SELECT ISNULL(ISNULL(a, b), IsNull(c, '')) FROM s",
         "SELECT COALESCE(COALESCE(a, b), COALESCE(c, '')) FROM s"},
        {"SELECT Ucase(Trim(pLasNam)), Mid(Ucase(pFirNam), 1, 1), Lcase(Mid(Len(x), 2)) FROM p",
         "SELECT UPPER(Trim(pLasNam)), SUBSTR(UPPER(pFirNam), 1, 1), LOWER(SUBSTR(LENGTH(x), 2)) "
         "FROM p"},
        {"SELECT * FROM p WHERE IsNull(Ucase(Mid(a, 1, 2))) = TRUE",
         "SELECT * FROM p WHERE (UPPER(SUBSTR(a, 1, 2))) IS NULL"},
    };
    for (const auto& [in, out] : cases) {
        for (const Engine engine : {Engine::Sqlite, Engine::Postgres}) {
            const QString once = TranslateSql(QString::fromUtf8(in), engine);
            EXPECT_EQ(once.toStdString(), out) << in;
            EXPECT_EQ(TranslateSql(once, engine), once) << in;
        }
    }
}

TEST(TranslateSql, BracketedNames) {
    EXPECT_BOTH("SELECT Count([CovTable].[CovID]) FROM [CovTable]",
                "SELECT Count(CovTable.CovID) FROM CovTable");
    EXPECT_BOTH("SELECT a AS [Insurance Company], b AS [ID #], c AS [E-Mail], d AS [x]]y\"z]",
                "SELECT a AS \"Insurance Company\", b AS \"ID #\", c AS \"E-Mail\", "
                "d AS \"x]y\"\"z\"");
    // A keyword in brackets stays quoted; the server engine folds bare names to lower case.
    EXPECT_EQ(Sqlite(QStringLiteral("SELECT [Order] FROM t")), "SELECT \"Order\" FROM t");
    EXPECT_EQ(Pg(QStringLiteral("SELECT [Order] FROM t")), "SELECT \"order\" FROM t");
}

TEST(TranslateSql, LikeIsCaseInsensitiveOnEveryEngine) {
    const QString sql =
        QStringLiteral("SELECT * FROM t WHERE b NOT LIKE '%x*' AND c = 'LIKE' AND d LIKE 'a_b%'");
    EXPECT_EQ(Sqlite(sql), sql.toStdString());
    EXPECT_EQ(Pg(sql), "SELECT * FROM t WHERE b NOT ILIKE '%x*' AND c = 'LIKE' AND d ILIKE 'a_b%'");
}

// A typed prefix is also a range of the column, which an index can answer; the LIKE stays to
// keep the answer exact. Anything but a plain column against a plain prefix is left alone.
TEST(TranslateSql, PrefixLikeIsAlsoARange) {
    const QString top = QString(QChar(0xdbff)) + QChar(0xdfff);
    const QString sql = QStringLiteral(
        "SELECT * FROM p WHERE p.pLasNam Like 'O''Br%' AND NOT [First Name] LIKE 'Jo%' ORDER BY 1");
    const QString sqlite =
        u"SELECT * FROM p WHERE (p.pLasNam >= 'O''Br' AND p.pLasNam < 'O''Br"_s + top +
        u"' AND p.pLasNam Like 'O''Br%') AND NOT (\"First Name\" >= 'Jo' AND \"First Name\" < 'Jo"_s +
        top + u"' AND \"First Name\" LIKE 'Jo%') ORDER BY 1"_s;
    EXPECT_EQ(TranslateSql(sql, Engine::Sqlite), sqlite);
    QString pg = sqlite;
    pg.replace(u" Like "_s, u" ILIKE "_s).replace(u" LIKE "_s, u" ILIKE "_s);
    EXPECT_EQ(TranslateSql(sql, Engine::Postgres), pg);
    for (const Engine engine : {Engine::Sqlite, Engine::Postgres}) {
        EXPECT_EQ(TranslateSql(TranslateSql(sql, engine), engine), TranslateSql(sql, engine));
    }
    const QStringList untouched = {
        u"SELECT * FROM p WHERE a || b LIKE 'x%'"_s,
        u"SELECT * FROM p WHERE Ucase(a) LIKE 'X%'"_s,
        u"SELECT * FROM p WHERE a LIKE 'x%' ESCAPE '!'"_s,
        u"SELECT * FROM p WHERE a LIKE 'x%' || 'y'"_s,
        u"SELECT * FROM p WHERE a LIKE '%'"_s,
        u"SELECT * FROM p WHERE a LIKE 'x\\%'"_s,
    };
    for (const QString& statement : untouched)
        EXPECT_FALSE(TranslateSql(statement, Engine::Sqlite).contains(u">="_s))
            << statement.toStdString();
}

TEST(TranslateSql, PlusJoinsStringsButStillAddsNumbers) {
    EXPECT_BOTH("SELECT PATABLE.pLASNAM+', '+PATABLE.pFIRNAM AS Name FROM PATABLE",
                "SELECT PATABLE.pLASNAM||', '||PATABLE.pFIRNAM AS Name FROM PATABLE");
    EXPECT_BOTH("SELECT Ucase(a) + b + c, trim(d) + e, x + Left(y, 2) FROM t",
                "SELECT UPPER(a) || b || c, trim(d) || e, x || Left(y, 2) FROM t");
    EXPECT_BOTH("SELECT (a + ' ') + b, cast(n as nvarchar) + u FROM t",
                "SELECT (a || ' ') || b, cast(n as TEXT) || u FROM t");
    EXPECT_BOTH("SELECT a + 1, x.col + y.col, [t].[n] + 12.5, (a + b) * 2, f(a) + 1 FROM t",
                "SELECT a + 1, x.col + y.col, t.n + 12.5, (a + b) * 2, f(a) + 1 FROM t");
    EXPECT_BOTH("SELECT a + 1, 'x' + b FROM t", "SELECT a + 1, 'x' || b FROM t");
    EXPECT_BOTH("SELECT #1/31/2024# + 1, a & ', ' & b FROM t",
                "SELECT '2024-01-31' + 1, a || ', ' || b FROM t");
}

TEST(TranslateSql, TruthAgainstIntegerFlags) {
    EXPECT_BOTH("SELECT * FROM p WHERE (p.a=TRUE) AND b <> FALSE AND c = false AND d<>True",
                "SELECT * FROM p WHERE (p.a<>0) AND b <> 0 AND c = 0 AND d=0");
    EXPECT_BOTH("SELECT * FROM p JOIN q ON TRUE = q.f AND FALSE<>q.g",
                "SELECT * FROM p JOIN q ON 0 <> q.f AND 0<>q.g");
    // In a SET list the '=' assigns: the flag takes 1 or 0; the WHERE still compares.
    EXPECT_BOTH("UPDATE t SET t.a = TRUE, b=False WHERE c = TRUE",
                "UPDATE t SET a = 1, b=0 WHERE c <> 0");
    EXPECT_BOTH("INSERT INTO t (a, b) VALUES (TRUE, FALSE)", "INSERT INTO t (a, b) VALUES (1, 0)");
}

TEST(TranslateSql, IdentityQuery) {
    EXPECT_EQ(Sqlite(QStringLiteral("SELECT @@IDENTITY")), "SELECT last_insert_rowid()");
    EXPECT_EQ(Pg(QStringLiteral("select @@identity")), "select lastval()");
}

TEST(TranslateSql, NamesInTheReminderDatabaseLoseDatabaseAndOwner) {
    EXPECT_BOTH(
        "Select ORVOWIN.dbo.rsTable.RCRecNum from ORVOWIN.DBO.rsTable Left Join "
        "dbo.eBusContactSequence on ORVOWIN..rsTable.RCRecNum=ebcLinID",
        "Select rsTable.RCRecNum from rsTable Left Join eBusContactSequence on "
        "rsTable.RCRecNum=ebcLinID");
    EXPECT_BOTH("SELECT [ORVOWIN].[dbo].[rsTable].[RCTtl] FROM t", "SELECT rsTable.RCTtl FROM t");
}

// Text the fuzzer made out of real statements: whatever one pass makes of it, a second pass
// leaves alone. A prefix counts only where a name begins, and what follows a prefix taken out
// is read as the name it now begins.
TEST(TranslateSql, MalformedTextTranslatesInOnePass) {
    struct Case {
        QString in;
        std::string sqlite;
        std::string pg;
    };
    const Case cases[] = {
        // Prefixes one after the other, or glued into another name.
        {u"where ORVOWIN.dbo.rsTablORVOWIN.dbo.e.RCRecNum=4"_s, "where e.RCRecNum=4",
         "where e.RCRecNum=4"},
        {u"on ORORVOWIN.dbo.VOWIN.dbo.rsTable.RCRecNum=1"_s, "on rsTable.RCRecNum=1",
         "on rsTable.RCRecNum=1"},
        {u"where ORVOWIN.dbo.rsTable.dbo.rsTable.RCRecNum=4"_s, "where rsTable.RCRecNum=4",
         "where rsTable.RCRecNum=4"},
        {u"from ORVOWIN..dbo.rstable"_s, "from rstable", "from rstable"},
        // What a prefix qualified is translated as soon as the prefix goes.
        {u"SELECT dbo.GetDate(), ORVOWIN.dbo.DISTINCTROW a"_s,
         "SELECT datetime('now','localtime'), DISTINCT a", "SELECT LOCALTIMESTAMP, DISTINCT a"},
        {u"s IS NULLORVOWIN.dbo.@@IDENTITY FROM t"_s, "s IS last_insert_rowid() FROM t",
         "s IS lastval() FROM t"},
        // A prefix glued to a number is no prefix.
        {u"WHERE 5ORVOWIN.dbo.DISTINCTROW x"_s, "WHERE 5ORVOWIN.dbo.DISTINCTROW x",
         "WHERE 5ORVOWIN.dbo.DISTINCTROW x"},
        // Taking dbo. out of a number sign's reach would make a date of it.
        {u"WHERE a>=#01dbo./31/2024#"_s, "WHERE a>=#01dbo./31/2024#", "WHERE a>=#01dbo./31/2024#"},
        {u"WHERE a=#1/2/2024 3:04 dbo.PM#"_s, "WHERE a=#1/2/2024 3:04 dbo.PM#",
         "WHERE a=#1/2/2024 3:04 dbo.PM#"},
        {u"SET a=N#01/31/2024#"_s, "SET a='2024-01-31'", "SET a='2024-01-31'"},
        // A date between strings stays apart from them; a prefix before a clause word is none.
        {u"WHERE a Like 'O'#01/02/2024#'Br'"_s, "WHERE a Like 'O' '2024-01-02' 'Br'",
         "WHERE a ILIKE 'O' '2024-01-02' 'Br'"},
        {u"dbo.SET NOCOUNT ON"_s, "dbo.SET NOCOUNT ON", "dbo.SET NOCOUNT ON"},
        {u"SET ORVOWIN.dbo.NOCOUNT ON"_s, "SET ORVOWIN.dbo.NOCOUNT ON",
         "SET ORVOWIN.dbo.NOCOUNT ON"},
        // A call translated to a value word before two dots is no database.
        {u"SELECT GetDate()..x"_s, "SELECT datetime('now','localtime')..x",
         "SELECT LOCALTIMESTAMP..x"},
        // A call made a word keeps apart from the word glued to it.
        {u"SELECT Now()RCDuePer FROM t"_s, "SELECT datetime('now','localtime')RCDuePer FROM t",
         "SELECT LOCALTIMESTAMP RCDuePer FROM t"},
        {u"Set APTabTrim(le.APDrID=5 where a)t>=#01/31/2024#"_s,
         "Set APTabTrim(le.APDrID=5 where a)t>='2024-01-31'",
         "Set APTabTrim(le.APDrID=5 where a)t>='2024-01-31'"},
        // A joined UPDATE whose table is named like the owner is left joined: its row key
        // would read as a prefix on the next pass.
        {u"update ORVOWIN.DBO INNER JOIN b ON a.x = b.y SET a = b.c"_s,
         "update ORVOWIN.DBO INNER JOIN b ON a.x = b.y SET a = b.c",
         "update ORVOWIN.DBO INNER JOIN b ON a.x = b.y SET a = b.c"},
        {u"UPDATE (dbo INNER JOIN b ON dbo.x = b.y) SET dbo.x = b.z"_s,
         "UPDATE (dbo INNER JOIN b ON x = b.y) SET x = b.z",
         "UPDATE (dbo INNER JOIN b ON x = b.y) SET x = b.z"},
        {u"Select top 1ORVOWIN.dbo.rsTable from t"_s, "Select top 1ORVOWIN.dbo.rsTable from t",
         "Select top 1ORVOWIN.dbo.rsTable from t"},
        // A TOP with nothing to select stays, also once a joined DELETE brackets it.
        {u"DELETE AbsTable FROM TimTable LEFT JOIN AbsTable ON TimTable.TimID = AbsTable.AbsTimID "
         "WHERE TimTable.TimPid=3 SELECT TOP 3"_s,
         "DELETE FROM AbsTable WHERE rowid IN (SELECT AbsTable.rowid FROM TimTable LEFT JOIN "
         "AbsTable ON TimTable.TimID = AbsTable.AbsTimID WHERE TimTable.TimPid=3 SELECT TOP 3)",
         "DELETE FROM AbsTable WHERE ctid IN (SELECT AbsTable.ctid FROM TimTable LEFT JOIN "
         "AbsTable ON TimTable.TimID = AbsTable.AbsTimID WHERE TimTable.TimPid=3 SELECT TOP 3)"},
        {u"DELETE t.* From t From t WHERE a=3"_s, "DELETE From t WHERE a=3",
         "DELETE From t WHERE a=3"},
        {u"DELETE * FROM ZipCodTable FROM ZipCodTable WHERE ZipCodID=3"_s,
         "DELETE FROM ZipCodTable WHERE ZipCodID=3", "DELETE FROM ZipCodTable WHERE ZipCodID=3"},
        {u"Select top 1 tra LIKE 'a%' from t"_s,
         ("Select (tra >= 'a' AND tra < 'a" + QString(QChar(0xdbff)) + QChar(0xdfff) +
          "' AND tra LIKE 'a%') from t LIMIT 1")
             .toStdString(),
         ("Select CAST((tra >= 'a' AND tra < 'a" + QString(QChar(0xdbff)) + QChar(0xdfff) +
          "' AND tra ILIKE 'a%') AS INTEGER) from t LIMIT 1")
             .toStdString()},
    };
    for (const Case& c : cases) {
        SCOPED_TRACE(c.in.toStdString());
        EXPECT_EQ(Sqlite(c.in), c.sqlite);
        EXPECT_EQ(Pg(c.in), c.pg);
        EXPECT_EQ(Sqlite(QString::fromStdString(c.sqlite)), c.sqlite);
        EXPECT_EQ(Pg(QString::fromStdString(c.pg)), c.pg);
    }
    // A condition assigned as a value, which a joined UPDATE moves into the list of a SELECT.
    const QString moved =
        u"UPDATE IPTable SET IPTable.IPSFee=IPFr LIKE 'a%' FROM IPTable INNER JOIN IPTable as "
        "IPFrom on IPTable.IPCod=IPFrom.IPCod WHERE IPFrom.IPInsCoID=0"_s;
    for (const Engine engine : {Engine::Sqlite, Engine::Postgres}) {
        const QString once = TranslateSql(moved, engine);
        EXPECT_EQ(TranslateSql(once, engine).toStdString(), once.toStdString());
        EXPECT_EQ(TranslateSql(u"UPDATE t SET a = b LIKE 'x%', c = 1"_s, engine),
                  engine == Engine::Sqlite
                      ? u"UPDATE t SET a = (b >= 'x' AND b < 'x"_s + QChar(0xdbff) + QChar(0xdfff) +
                            u"' AND b LIKE 'x%'), c = 1"_s
                      : u"UPDATE t SET a = CAST((b >= 'x' AND b < 'x"_s + QChar(0xdbff) +
                            QChar(0xdfff) + u"' AND b ILIKE 'x%') AS INTEGER), c = 1"_s);
    }
}

TEST(TranslateSql, ServerFormsOfTheReminderCode) {
    EXPECT_BOTH("SET NOCOUNT ON", "");
    EXPECT_EQ(Sqlite(QStringLiteral("SET NOCOUNT ON; Insert into e (a) values (N'M'); "
                                    "SELECT @@IDENTITY")),
              "Insert into e (a) values ('M'); SELECT last_insert_rowid()");
    EXPECT_EQ(Sqlite(QStringLiteral("SELECT GETDATE(), Now(), Date(), date(d) FROM t")),
              "SELECT datetime('now','localtime'), datetime('now','localtime'), "
              "date('now','localtime'), date(d) FROM t");
    EXPECT_EQ(Pg(QStringLiteral("SELECT GETDATE(), Now(), Date() FROM t")),
              "SELECT LOCALTIMESTAMP, LOCALTIMESTAMP, CURRENT_DATE FROM t");
    EXPECT_BOTH(
        "SELECT CAST(a AS varchar(20)), cast(b as nvarchar), CAST(c AS INTEGER), "
        "CONVERT(varchar(10), d) FROM t",
        "SELECT CAST(a AS TEXT), cast(b as TEXT), CAST(c AS INTEGER), "
        "CONVERT(varchar(10), d) FROM t");
}

TEST(TranslateSql, UpdatesAndDeletesOverJoinsGoThroughTheRowKey) {
    const QString access = QStringLiteral(
        "UPDATE (P INNER JOIN E ON P.pID = E.pid) INNER JOIN L ON E.el = L.elID "
        "SET P.pBusPho1='555' WHERE L.emp=2");
    EXPECT_EQ(Sqlite(access),
              "UPDATE P SET pBusPho1 = '555' FROM (SELECT P.rowid AS row_key FROM (P INNER JOIN "
              "E ON P.pID = E.pid) INNER JOIN L ON E.el = L.elID WHERE L.emp=2) AS joined WHERE "
              "P.rowid = joined.row_key");
    const QString server = QStringLiteral(
        "UPDATE I SET I.fee=F.fee, I.n=7 FROM I INNER JOIN I as F on I.cod=F.cod WHERE F.g='X'");
    EXPECT_EQ(Pg(server),
              "UPDATE I SET fee = joined.value1, n = 7 FROM (SELECT I.ctid AS row_key, F.fee AS "
              "value1 FROM I INNER JOIN I as F on I.cod=F.cod WHERE F.g='X') AS joined WHERE "
              "I.ctid = joined.row_key");
    const QString deleteForm =
        QStringLiteral(" FROM T LEFT JOIN A ON T.id = A.tid WHERE (T.pid=3)");
    const std::string sqliteDelete =
        "DELETE FROM A WHERE rowid IN (SELECT A.rowid FROM T LEFT JOIN A ON T.id = A.tid WHERE "
        "(T.pid=3))";
    EXPECT_EQ(Sqlite(u"DELETE A.*"_s + deleteForm), sqliteDelete);
    EXPECT_EQ(Sqlite(u"DELETE A"_s + deleteForm), sqliteDelete);
    EXPECT_EQ(Sqlite(u"DELETE FROM A"_s + deleteForm), sqliteDelete);
    EXPECT_BOTH("DELETE T.* From T WHERE T.pid=3", "DELETE From T WHERE T.pid=3");
    // The forms both engines already take are left as they are.
    EXPECT_BOTH("update rs set a=tbl.p From (select p from e) as TBL Where n = 4",
                "update rs set a=tbl.p From (select p from e) as TBL Where n = 4");
    EXPECT_BOTH("UPDATE t SET a = 1 FROM u WHERE t.id = u.id",
                "UPDATE t SET a = 1 FROM u WHERE t.id = u.id");
    EXPECT_BOTH("INSERT INTO b (x) (SELECT x FROM a)", "INSERT INTO b (x) SELECT x FROM a");
}

TEST(TranslateSql, ConditionSelectedAsAValueIsANumberOnTheServer) {
    const QString sql = QStringLiteral("SELECT (a.x=b.y) AS f, (a.x) AS g, (a.x < 2) h FROM a, b");
    EXPECT_EQ(Sqlite(sql), sql.toStdString());
    EXPECT_EQ(Pg(sql),
              "SELECT CAST((a.x=b.y) AS INTEGER) AS f, (a.x) AS g, "
              "CAST((a.x < 2) AS INTEGER) h FROM a, b");
}

TEST(TranslateSql, OneTimeBackupBlockBecomesTwoGuardedStatements) {
    EXPECT_BOTH(
        "if not exists (select * from INFORMATION_SCHEMA.TABLES where TABLE_NAME='B') begin exec "
        "(' CREATE TABLE B( n int NOT NULL, t nvarchar(50) NULL, m ntext NULL, c nvarchar(max)) ') "
        "Insert into B ( n, t ) (Select n, t from [S]) End",
        "CREATE TABLE IF NOT EXISTS B( n int NOT NULL, t VARCHAR(50) NULL, m TEXT NULL, c TEXT); "
        "Insert into B ( n, t ) SELECT * FROM (Select n, t from S) AS backup_source WHERE NOT "
        "EXISTS (SELECT 1 FROM B)");
    SqlWarnings warnings;
    EXPECT_BOTH("IF EXISTS (SELECT 1) BEGIN SELECT 1 END",
                "IF EXISTS (SELECT 1) BEGIN SELECT 1 END");
    EXPECT_EQ(warnings.messages().size(), 2);
}

TEST(TranslateSql, BackslashesGoToTheServerInTheEscapeForm) {
    // Read with or without backslash escapes, the server must find one statement.
    const QString sql = u"SELECT * FROM t WHERE a = 'x\\''; y' AND b = 'plain'"_qs;
    const QString pg = TranslateSql(sql, Engine::Postgres);
    EXPECT_EQ(pg, u"SELECT * FROM t WHERE a = E'x\\\\''; y' AND b = 'plain'"_qs);
    EXPECT_TRUE(HoldsOneStatement(pg, Engine::Postgres));
    EXPECT_EQ(TranslateSql(pg, Engine::Postgres), pg);
    EXPECT_EQ(TranslateSql(sql, Engine::Sqlite), sql);
    // A string glued to a word keeps the word as it was.
    const QString glued = TranslateSql(u"SELECT x'a\\b'"_qs, Engine::Postgres);
    EXPECT_EQ(glued, u"SELECT x E'a\\\\b'"_qs);
    EXPECT_EQ(TranslateSql(glued, Engine::Postgres), glued);
}

TEST(TranslateSql, AnEmbeddedTriggerIsOneStatementUpToItsEnd) {
    const auto one = [](const char* sql, Engine engine = Engine::Sqlite) {
        return HoldsOneStatement(QString::fromUtf8(sql), engine);
    };
    EXPECT_TRUE(
        one("CREATE TRIGGER t AFTER DELETE ON a BEGIN DELETE FROM b WHERE x = OLD.x; "
            "INSERT INTO c VALUES ('end;'); END;"));
    EXPECT_TRUE(one("create temp trigger t after delete on a begin delete from b; end"));
    EXPECT_FALSE(one("CREATE TRIGGER t AFTER DELETE ON a BEGIN DELETE FROM b; END; DROP TABLE a"));
    EXPECT_FALSE(one("CREATE TABLE trigger (x); DROP TABLE a"));
    EXPECT_FALSE(one("SELECT 1 AS trigger; DROP TABLE a"));
    // The server has no such bodies: there every ';' outside quotes ends a statement.
    EXPECT_FALSE(
        one("CREATE TRIGGER t AFTER DELETE ON a BEGIN DELETE FROM b; END", Engine::Postgres));
}

TEST(TranslateSql, TextInsideLiteralsAndQuotedNamesIsNeverRewritten) {
    EXPECT_BOTH(
        "SELECT 'O''Brien', ' #1/1/2020# [x] TOP 5 + TRUE dbo.t Ucase(a) ', \"[a] + 'b'\" "
        "FROM t WHERE n = 'a' + 'b''c' -- TOP 5 [x] + 'y\n",
        "SELECT 'O''Brien', ' #1/1/2020# [x] TOP 5 + TRUE dbo.t Ucase(a) ', \"[a] + 'b'\" "
        "FROM t WHERE n = 'a' || 'b''c' -- TOP 5 [x] + 'y\n");
    EXPECT_BOTH("SELECT a /* [b] ' */ FROM t", "SELECT a /* [b] ' */ FROM t");
}

TEST(TranslateSql, MalformedStatementsComeBackUnchangedAndAreReported) {
    SqlWarnings warnings;
    const QStringList malformed = {
        QStringLiteral("SELECT 'O''Brien FROM [t]"), QStringLiteral("SELECT (a FROM [t]"),
        QStringLiteral("SELECT a) FROM [t]"),        QStringLiteral("SELECT [a FROM t"),
        QStringLiteral("SELECT a] FROM [t]"),        QStringLiteral("SELECT \"a FROM [t]"),
        QStringLiteral("SELECT a /* FROM [t]"),
    };
    for (const QString& sql : malformed) {
        EXPECT_EQ(Sqlite(sql), sql.toStdString());
        EXPECT_EQ(Pg(sql), sql.toStdString());
    }
    EXPECT_EQ(warnings.messages().size(), 2 * malformed.size());
}

TEST(TranslateSql, StatementsAlreadyInTheEngineDialectComeBackUnchanged) {
    const QStringList native = {
        QStringLiteral("SELECT a || ', ' || b AS \"Last Name\" FROM t WHERE c ILIKE 'x%' LIMIT 5"),
        QStringLiteral("SELECT CAST(a AS TEXT), b::text, $1, :name, ? FROM t WHERE d <> 0"),
        QStringLiteral("DO $$ BEGIN UPDATE t SET a = 'it''s'; END $$"),
        QStringLiteral("  INSERT INTO t (a) VALUES (1) RETURNING a;  "),
        QStringLiteral("UPDATE t SET a = b.c FROM (SELECT t.rowid AS k, c FROM t) AS b WHERE "
                       "t.rowid = b.k"),
    };
    for (const QString& sql : native) {
        EXPECT_EQ(Sqlite(sql), sql.toStdString());
        EXPECT_EQ(Pg(sql), sql.toStdString());
    }
}

TEST(SplitSqlStatements, CutsOnlyAtSemicolonsThatEndAStatement) {
    const QStringList pieces = SplitSqlStatements(QStringLiteral(
        " SET NOCOUNT ON; INSERT INTO t VALUES ('a;b', \"c;d\", [e;f]) -- g;h\n;; SELECT 1 ;"));
    EXPECT_EQ(pieces.join(u'|').toStdString(),
              "SET NOCOUNT ON|INSERT INTO t VALUES ('a;b', \"c;d\", [e;f]) -- g;h|SELECT 1");
    EXPECT_EQ(SplitSqlStatements(QStringLiteral("BEGIN; CREATE TRIGGER x AFTER INSERT ON t BEGIN "
                                                "UPDATE u SET n = CASE WHEN 1 THEN 2 END; END; "
                                                "COMMIT"))
                  .size(),
              3);
    EXPECT_TRUE(SplitSqlStatements(QStringLiteral(" ; ;\n")).isEmpty());
    EXPECT_EQ(SplitSqlStatements(QStringLiteral("SELECT 'a;b")).join(u'|').toStdString(),
              "SELECT 'a;b");
}

// What is cut out of a statement is only what could as well be bound as a parameter and what
// the translation never looks into.
TEST(CutLiterals, CutsValuesAndLeavesWhatTheStatementReadsOtherwise) {
    const auto shape = [](const QString& sql) {
        const std::optional<LiteralShape> cut = CutLiterals(sql);
        if (!cut)
            return std::string("(not cut)");
        QString text = cut->shape;
        for (qsizetype i = 0; i < cut->literals.size(); ++i)
            text.replace(cut->literals[i].startsWith(u'\'') ? StringStandIn(i) : NumberStandIn(i),
                         u"<"_s + cut->literals[i] + u">"_s);
        return text.toStdString();
    };
    EXPECT_EQ(shape(u"UPDATE PATable SET pLASNAM = 'Peña', pAge = 4.5 WHERE pID = 6;"_s),
              "UPDATE PATable SET pLASNAM = <'Peña'>, pAge = <4.5> WHERE pID = <6>;");
    EXPECT_EQ(shape(u"SELECT TOP 5 'k', 1, (SELECT 2 FROM t WHERE a = 3) FROM PATable "
                    "WHERE pID = 4 GROUP BY pID HAVING count(*) > 5 ORDER BY 1"_s),
              "SELECT TOP 5 'k', 1, (SELECT 2 FROM t WHERE a = 3) FROM PATable "
              "WHERE pID = <4> GROUP BY pID HAVING count(*) > 5 ORDER BY 1");
    EXPECT_EQ(shape(uR"(DELETE FROM t WHERE a LIKE 'x%' AND b = 'a\b' AND c = '2024-01-02' )"
                    uR"(AND d = #1/2/2024# AND e = '#' AND f = 'ok' AND g IN (1, 2))"_s),
              R"(DELETE FROM t WHERE a LIKE 'x%' AND b = 'a\b' AND c = '2024-01-02' )"
              R"(AND d = #1/2/2024# AND e = '#' AND f = <'ok'> AND g IN (<1>, <2>))");
    EXPECT_EQ(shape(u"INSERT INTO t (a) VALUES (?)"_s), "(not cut)");
    EXPECT_EQ(shape(u"SELECT 1; SELECT 2"_s), "(not cut)");
    EXPECT_EQ(shape(u"CREATE TABLE t (a INTEGER DEFAULT 0)"_s), "(not cut)");
    EXPECT_EQ(shape(u"SELECT a FROM t WHERE b = 'open"_s), "(not cut)");
    EXPECT_EQ(shape(u"SELECT a FROM t WHERE b = 7070700000001"_s), "(not cut)");
}

class TranslatedCorpus : public testing::TestWithParam<Engine> {};

TEST_P(TranslatedCorpus, TranslatingTwiceGivesWhatTranslatingOnceGave) {
    for (const QString& sql : test::SqlCorpus()) {
        const QString once = TranslateSql(sql, GetParam());
        EXPECT_EQ(TranslateSql(once, GetParam()).toStdString(), once.toStdString())
            << sql.toStdString();
    }
}

// Statements that differ only in their values share a shape. Whatever values a statement of a
// shape carries (accents, quotes, semicolons, marks, and values that a shape must not take: an
// ISO date, a backslash, a number sign), what the shape gives is what translating it whole gives.
TEST_P(TranslatedCorpus, ShapesFilledWithOtherValuesTranslateAsTheirStatementsWhole) {
    const QStringList strings = {u"'Peña'"_s,       u"'O''Brien'"_s,   u"''"_s,
                                 u"'a;b -- c ?'"_s, u"'2024-01-02'"_s, uR"('back\slash')"_s,
                                 u"'#1/2/2024#'"_s, u"'Zoë \"Q\"'"_s,  u"'12'"_s};
    const QStringList numbers = {u"0"_s, u"12345678901234567890"_s, u"3.25"_s, u"1e3"_s, u"7"_s};
    int cut = 0;
    for (const QString& sql : test::SqlCorpus()) {
        const std::optional<LiteralShape> original = CutLiterals(sql);
        if (!original)
            continue;
        ++cut;
        TranslationCache cache(GetParam(), false);
        EXPECT_EQ(cache.Translate(sql).toStdString(), TranslateSql(sql, GetParam()).toStdString());
        for (qsizetype round = 0; round < strings.size(); ++round) {
            QString other = original->shape;
            for (qsizetype i = 0; i < original->literals.size(); ++i) {
                if (original->literals[i].startsWith(u'\''))
                    other.replace(StringStandIn(i), strings[(i + round) % strings.size()]);
                else
                    other.replace(NumberStandIn(i), numbers[(i + round) % numbers.size()]);
            }
            EXPECT_EQ(cache.Translate(other).toStdString(),
                      TranslateSql(other, GetParam()).toStdString())
                << sql.toStdString();
        }
    }
    EXPECT_GT(cut, 60);
}

INSTANTIATE_TEST_SUITE_P(Engines, TranslatedCorpus, testing::ValuesIn(test::AllEngines()),
                         test::EngineParamName());

// The translated statements against real tables of the agreed types.
class TranslatedOnEngine : public testing::TestWithParam<Engine> {
protected:
    void SetUp() override {
        ORVO_SKIP_WITHOUT_ENGINE(GetParam());
        database_ = std::make_unique<test::TestDatabase>(GetParam());
        for (const QString& table : test::SqlCorpusTables())
            ASSERT_EQ(Run(CreateTable(table)), "");
    }

    QString CreateTable(const QString& description) const {
        const bool sqlite = GetParam() == Engine::Sqlite;
        const QString name = description.section(u':', 0, 0);
        QStringList columns;
        for (const QString& column : description.section(u':', 1).split(u',')) {
            const QString type = column.trimmed().section(u' ', 1);
            QString sqlType = type == u"int"     ? u"INTEGER"_s
                              : type == u"flag"  ? u"SMALLINT DEFAULT 0"_s
                              : type == u"money" ? u"NUMERIC(19,4)"_s
                              : type == u"date"  ? (sqlite ? u"TEXT"_s : u"DATE"_s)
                              : type == u"text" ? (sqlite ? u"TEXT COLLATE UNICASE"_s : u"CITEXT"_s)
                              : sqlite          ? u"INTEGER PRIMARY KEY AUTOINCREMENT"_s
                                       : u"INTEGER GENERATED BY DEFAULT AS IDENTITY PRIMARY KEY"_s;
            columns << column.trimmed().section(u' ', 0, 0) + u' ' + sqlType;
        }
        return u"CREATE TABLE "_s + name + u" ("_s + columns.join(u", "_s) + u')';
    }

    // Translates and runs each statement of the text in order; answers the first error.
    std::string Run(const QString& sql, QSqlQuery* last = nullptr) {
        const QString translated = TranslateSql(sql, GetParam());
        for (const QString& statement : SplitSqlStatements(translated)) {
            QSqlQuery query(database_->connection().database());
            if (!query.exec(statement)) {
                return (query.lastError().text() + u"\n  sent: "_s + statement).toStdString();
            }
            if (last)
                *last = std::move(query);
        }
        return {};
    }

    // The first column of what the statement reads, as "a|b|c" (a null reads as empty).
    std::string Column(const QString& sql) {
        QSqlQuery query;
        EXPECT_EQ(Run(sql, &query), "") << sql.toStdString();
        QStringList values;
        while (query.next())
            values << query.value(0).toString();
        return values.join(u'|').toStdString();
    }

    std::unique_ptr<test::TestDatabase> database_;
};

TEST_P(TranslatedOnEngine, EveryCorpusStatementRuns) {
    for (const QString& sql : test::SqlCorpus())
        EXPECT_EQ(Run(sql), "") << sql.toStdString();
}

TEST_P(TranslatedOnEngine, JoinedUpdatesChangeOnlyTheRowsTheJoinFinds) {
    ASSERT_EQ(Run(u"INSERT INTO PATABLE (pLASNAM, pBusCon) VALUES ('A', 'pBusPho1'), "
                  "('B', 'pBusPho1'), ('C', 'pBusPho2')"_s),
              "");
    ASSERT_EQ(Run(u"INSERT INTO ELTable (elEmpID, elFla) VALUES (2, 0), (9, 0)"_s), "");
    ASSERT_EQ(Run(u"INSERT INTO PatEmpTable (PatEmpPatID, PatEmpElID, PatEmpOrd, PatEmpFla) "
                  "VALUES (1, 1, 1, 0), (2, 2, 1, 0), (3, 1, 1, 0)"_s),
              "");
    const QStringList corpus = test::SqlCorpus();
    for (const QString& sql : corpus) {
        if (sql.contains(u"pBusPho") && sql.startsWith(u"UPDATE")) {
            EXPECT_EQ(Run(sql), "");
        }
    }
    EXPECT_EQ(Column(u"SELECT pBusPho1 FROM PATABLE ORDER BY pID"_s),
              "(555) 010-2030||(555) 010-2030");

    ASSERT_EQ(Run(u"INSERT INTO IPTable (IPInsCoID, IPGroNum, IPCod, IPPFee) VALUES "
                  "(4, 'G-100', 'D1110', 10), (4, 'G-100', 'D0120', 20), "
                  "(0, 'GLOBAL', 'D1110', 55), (0, 'Other', 'D0120', 99)"_s),
              "");
    for (const QString& sql : corpus) {
        if (sql.contains(u"IPFrom")) {
            EXPECT_EQ(Run(sql), "");
        }
    }
    EXPECT_EQ(Column(u"SELECT CAST(IPPFee AS INTEGER) FROM IPTable ORDER BY IPRecNum"_s),
              "55|20|55|99");
}

TEST_P(TranslatedOnEngine, JoinedDeletesRemoveOnlyTheRowsTheJoinFinds) {
    ASSERT_EQ(Run(u"INSERT INTO TimTable (TimPid, TimTyp, TimInDat) VALUES "
                  "(3, 1, #3/20/2024#), (3, 1, #3/1/2024#), (4, 1, #3/20/2024#)"_s),
              "");
    ASSERT_EQ(Run(u"INSERT INTO AbsTable (AbsTimID) VALUES (1), (2), (3), (1)"_s), "");
    ASSERT_EQ(Run(test::SqlCorpus().filter(u"DELETE AbsTable.*"_s).value(0)), "");
    EXPECT_EQ(Column(u"SELECT AbsTimID FROM AbsTable ORDER BY AbsID"_s), "2|3");
    ASSERT_EQ(Run(u"DELETE FROM AbsTable FROM TimTable LEFT JOIN AbsTable ON TimTable.TimID = "
                  "AbsTable.AbsTimID WHERE TimTable.TimPid=4"_s),
              "");
    EXPECT_EQ(Column(u"SELECT AbsTimID FROM AbsTable"_s), "2");
}

TEST_P(TranslatedOnEngine, ReadsMeanWhatTheyMeantInTheAccessDialect) {
    ASSERT_EQ(Run(u"INSERT INTO PATABLE (pLASNAM, pFIRNAM, pTypDoc) VALUES ('Smith', 'John', "
                  "'1'), ('smithers', 'Amy', '1'), ('Jones', 'Al', '0')"_s),
              "");
    ASSERT_EQ(Run(u"INSERT INTO ELTable (elEmpID, elStaDat, elFla) VALUES (1, #12/31/2023#, TRUE),"
                  " (2, #1/15/2024#, FALSE), (3, #2/1/2024#, TRUE)"_s),
              "");
    // Text compares without regard to case on both engines, LIKE included.
    EXPECT_EQ(Column(u"SELECT TOP 5 PATABLE.pLASNAM+', '+PATABLE.pFIRNAM FROM PATABLE WHERE "
                     "pLASNAM LIKE 'SMI%' AND Ucase(pTypDoc) = '1' ORDER BY pLASNAM"_s),
              "Smith, John|smithers, Amy");
    EXPECT_EQ(
        Column(u"SELECT elEmpID FROM ELTable WHERE elFla = TRUE AND elStaDat >= #1/1/2024#"_s),
        "3");
    EXPECT_EQ(Column(u"SELECT elEmpID FROM ELTable WHERE elFla <> TRUE"_s), "2");
    EXPECT_EQ(Column(u"SELECT elEmpID FROM ELTable WHERE elEmpID IN (SELECT TOP 2 elEmpID FROM "
                     "ELTable ORDER BY elEmpID DESC) ORDER BY elEmpID"_s),
              "2|3");
    EXPECT_EQ(Column(u"SELECT elEmpID FROM ELTable WHERE IsNull(elEndDat) = TRUE AND "
                     "IsNull(elStaDat) = FALSE AND elEmpID = 1"_s),
              "1");
}

TEST_P(TranslatedOnEngine, IdentityBatchAnswersTheNewKey) {
    const QString batch = test::SqlCorpus().filter(u"Insert into emsTable"_s).value(0);
    QSqlQuery query;
    ASSERT_EQ(Run(batch, &query), "");
    ASSERT_EQ(Run(batch, &query), "");
    ASSERT_TRUE(query.next());
    EXPECT_EQ(query.value(0).toLongLong(), 2);
}

TEST_P(TranslatedOnEngine, BackupOfTheRecallTableIsTakenOnce) {
    const QString backup = test::SqlCorpus().filter(u"RSTableBackup"_s).value(0);
    ASSERT_EQ(Run(u"INSERT INTO RSTable (RCTtl) VALUES ('Prophy')"_s), "");
    ASSERT_EQ(Run(backup), "");
    ASSERT_EQ(Run(u"UPDATE RSTable SET RCTtl = 'Perio'"_s), "");
    ASSERT_EQ(Run(backup), "");
    EXPECT_EQ(Column(u"SELECT RCTtl FROM RSTableBackup"_s), "Prophy");
}

INSTANTIATE_TEST_SUITE_P(Engines, TranslatedOnEngine, testing::ValuesIn(test::AllEngines()),
                         test::EngineParamName());

}  // namespace
}  // namespace orvo::db
