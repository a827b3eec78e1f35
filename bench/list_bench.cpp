// The list window's table model on the family heads of a practice of 500,000 persons and on
// 50,000 carriers, on each engine, each figure beside its floor in the same run:
//  - Open: the list's SQL read into the model, sorted, and its first rows painted, against the
//    bare query of the same statement fetched through Qt SQL with every value taken, the two
//    run in turns (the counters "ratio" and "floor_ms");
//  - Keystroke: one filter key typed into the name column, against a plain case-folding scan of
//    the same strings;
//  - memory of the loaded list against the raw size of its text (counters of Open).
// PostgreSQL runs when ORVO_TEST_PG names a server. ORVO_BENCH_PERSONS changes the size.
#include <benchmark/benchmark.h>

#include <QSqlQuery>
#include <QSqlRecord>
#include <QTableView>
#include <QTemporaryDir>
#include <cstdio>
#include <map>

#include "bench/gen/bench_support.h"
#include "bench/gen/person_gen.h"
#include "insurance/insurance_tables.h"
#include "lists/grid_source.h"
#include "lists/list_definitions.h"
#include "lists/list_table_model.h"
#include "platform/db/translate_sql.h"
#include "platform/schema/schema.h"

namespace {

using namespace orvo;

constexpr int kCarriers = 50000;

struct ListData {
    std::shared_ptr<db::Connection> connection;
    QString listSql;  // as the list window puts it
    QString sql;      // as the engine takes it
    lists::GridSource source;
    std::unique_ptr<QTemporaryDir> dir;
};

const char* const kWords[] = {"Dental", "Mutual", "Benefit", "Smile",  "Assurance", "Plan",
                              "Trust",  "Union",  "Health",  "Müller", "Peña",      "Søren"};

// 50,000 carriers with names and addresses, made once per run.
std::shared_ptr<db::Connection> MakeCarriers(db::Engine engine, QTemporaryDir& dir) {
    auto c = db::Connection::Open(bench::BenchDatabase(engine, dir, QStringLiteral("bench_list")));
    schema::Catalog catalog;
    insurance::DeclareInsuranceTables(catalog);
    schema::Apply(*c, catalog);
    db::Transaction transaction(*c);
    for (int i = 0; i < kCarriers; i += 500) {
        QStringList rows;
        for (int k = i; k < i + 500; ++k) {
            rows << QStringLiteral(
                        "('%1 %2 %3', '%4 Main Street', 'Columbus', 'OH', '43%5', "
                        "'(614) 555-%6')")
                        .arg(QString::fromUtf8(kWords[k % 12]),
                             QString::fromUtf8(kWords[(k / 12) % 12]))
                        .arg(k)
                        .arg(k % 9000)
                        .arg(k % 1000, 3, 10, QLatin1Char('0'))
                        .arg(k % 10000, 4, 10, QLatin1Char('0'));
        }
        c->Execute(
            QStringLiteral("INSERT INTO InsCoTable (InsCoNam, InsCoAdd1, InsCoCit, InsCoSta, "
                           "InsCoZip, InsCoTel) VALUES ") +
            rows.join(QStringLiteral(", ")));
    }
    transaction.Commit();
    return c;
}

std::map<std::pair<int, int>, ListData> data;

ListData& Data(db::Engine engine, LookUpListTypes type) {
    ListData& d = data[{static_cast<int>(engine), static_cast<int>(type)}];
    if (d.connection)
        return d;
    if (type == lulFamilyHead) {
        d.connection =
            db::Connection::Open(bench::KeptPersonPractice(engine, bench::KeptPracticePersons()));
    } else {
        d.dir = std::make_unique<QTemporaryDir>();
        d.connection = MakeCarriers(engine, *d.dir);
    }
    const lists::ListDefinition definition = lists::DefineList(type, {});
    d.listSql = lists::ListSqlForKind(definition.SQL, engine == db::Engine::Sqlite ? 1 : 2);
    d.sql = d.connection->Translate(d.listSql);
    d.source = lists::BuildGridSource(definition.SQL, definition.SortBy);
    return d;
}

QList<lists::SortKey> SortKeys(const lists::ListTableModel& model, const QStringList& sort) {
    QList<lists::SortKey> keys;
    for (const QString& column : sort)
        keys << lists::SortKey{model.ColumnOf(lists::StripBrackets(column))};
    return keys;
}

void Open(benchmark::State& state, db::Engine engine, LookUpListTypes type) {
    if (bench::SkipWithoutEngine(state, engine))
        return;
    ListData& d = Data(engine, type);
    size_t memory = 0;
    bench::RunPaired(
        state, benchmark::kMillisecond,
        [&](size_t) {
            lists::ListTableModel model;
            model.Load(*d.connection, d.listSql, d.source.captions);
            model.SortBy(SortKeys(model, d.source.sort));
            QTableView view;
            view.resize(900, 500);
            view.setModel(&model);
            benchmark::DoNotOptimize(view.grab());
            memory = model.MemoryBytes();
        },
        [&](size_t) {
            QSqlQuery query(d.connection->database());
            query.setForwardOnly(true);
            query.exec(d.sql);
            const int fields = query.record().count();
            while (query.next()) {
                for (int c = 0; c < fields; ++c)
                    benchmark::DoNotOptimize(query.value(c));
            }
        });
    // The size of the text read, counted on a list loaded once more outside the timing.
    size_t raw = 0;
    lists::ListTableModel model;
    model.Load(*d.connection, d.listSql, d.source.captions);
    for (int r = 0; r < model.TotalRows(); ++r) {
        for (int c = 0; c < model.columnCount(); ++c)
            raw += model.RecordText(r, c).size() * sizeof(QChar);
    }
    state.counters["rows"] = model.TotalRows();
    state.counters["memory_MB"] = memory / 1e6;
    state.counters["raw_text_MB"] = raw / 1e6;
    state.counters["memory_per_raw"] = raw ? double(memory) / double(raw) : 0;
}

// The keys a person types into the name column: a few letters, then back to nothing.
const QStringList kKeys{"s",  "sm",  "smi", "sm", "s",  "",    "m",
                        "mü", "mül", "",    "p",  "pe", "peñ", ""};

struct Loaded {
    std::unique_ptr<lists::ListTableModel> model;
    QStringList names;
    int column = 0;
};

std::map<std::pair<int, int>, Loaded> loaded;

Loaded& LoadedList(db::Engine engine, LookUpListTypes type) {
    Loaded& l = loaded[{static_cast<int>(engine), static_cast<int>(type)}];
    if (l.model)
        return l;
    ListData& d = Data(engine, type);
    l.model = std::make_unique<lists::ListTableModel>();
    l.model->Load(*d.connection, d.listSql, d.source.captions);
    l.model->SortBy(SortKeys(*l.model, d.source.sort));
    l.column = type == lulFamilyHead ? l.model->ColumnOf(QStringLiteral("Last Name"))
                                     : l.model->ColumnOf(QStringLiteral("Insurance Company"));
    for (int r = 0; r < l.model->TotalRows(); ++r)
        l.names << l.model->RecordText(r, l.column);
    return l;
}

void Keystroke(benchmark::State& state, db::Engine engine, LookUpListTypes type) {
    if (bench::SkipWithoutEngine(state, engine))
        return;
    Loaded& l = LoadedList(engine, type);
    for (auto _ : state) {
        for (const QString& key : kKeys)
            l.model->SetFilter(l.column, key);
    }
    state.SetItemsProcessed(state.iterations() * kKeys.size());
}

void KeystrokeFloor(benchmark::State& state, db::Engine engine, LookUpListTypes type) {
    if (bench::SkipWithoutEngine(state, engine))
        return;
    Loaded& l = LoadedList(engine, type);
    for (auto _ : state) {
        for (const QString& key : kKeys) {
            const QString needle = key.toCaseFolded();
            int shown = 0;
            for (const QString& name : l.names)
                shown += name.toCaseFolded().startsWith(needle);
            benchmark::DoNotOptimize(shown);
        }
    }
    state.SetItemsProcessed(state.iterations() * kKeys.size());
}

void Register() {
    for (const db::Engine engine : {db::Engine::Sqlite, db::Engine::Postgres}) {
        const char* e = engine == db::Engine::Sqlite ? "Sqlite" : "Postgres";
        for (const LookUpListTypes type : {lulFamilyHead, lulInsuranceCo}) {
            const std::string t = type == lulFamilyHead ? "FamilyHeads" : "Carriers";
            const auto name = [&](const char* what) {
                return std::string(what) + "/" + t + "/" + e;
            };
            benchmark::RegisterBenchmark(name("Open").c_str(), Open, engine, type)
                ->Unit(benchmark::kMillisecond)
                ->UseManualTime()
                ->Iterations(6);
            benchmark::RegisterBenchmark(name("Keystroke").c_str(), Keystroke, engine, type)
                ->Unit(benchmark::kMillisecond);
            benchmark::RegisterBenchmark(name("KeystrokeFloor").c_str(), KeystrokeFloor, engine,
                                         type)
                ->Unit(benchmark::kMillisecond);
        }
    }
}

}  // namespace

int main(int argc, char** argv) {
    Register();
    return bench::RunBenchmarks(argc, argv, [] {
        loaded.clear();
        // The carriers' schema on the server goes with the run; the kept practice stays.
        for (auto& [key, d] : data) {
            if (d.dir)
                bench::DropBenchDatabase(d.connection);
        }
        data.clear();
    });
}
