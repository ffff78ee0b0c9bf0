// A table of a million rows into a data set, against the plainest loop over the engine's own library.
#include "sources/database/database_loader.h"

#include <QCoreApplication>
#include <QFile>
#include <benchmark/benchmark.h>
#include <cstdlib>
#include <vector>
#ifdef LUMOPLOT_HAVE_SQLITE
#include <sqlite3.h>
#endif
#ifdef LUMOPLOT_HAVE_LIBPQ
#include <libpq-fe.h>
#endif

namespace {

using namespace lumoplot;

constexpr const char* kFile = "database_bench.sqlite";

void Load(benchmark::State& state, const std::string& connection) {
    for (auto _ : state) {
        TDataSeries series;
        series.SetDuplicatesAllowed(true);
        series.DataSourceInfo().SetKind(TSourceKind::Database);
        series.DataSourceInfo().SetSourceName("bench_rows");
        TSilentProgress progress;
        LoadDatabaseSeries(series, connection, {}, progress);
        benchmark::DoNotOptimize(series.Count());
    }
}

#ifdef LUMOPLOT_HAVE_SQLITE

void MakeTable() {
    QFile::remove(kFile);
    sqlite3* database = nullptr;
    sqlite3_open(kFile, &database);
    sqlite3_exec(database,
                 "create table bench_rows(x real, y real);"
                 "with recursive n(i) as (values(0) union all select i+1 from n where i<999999)"
                 "insert into bench_rows select i/10.0, sin(i/1000.0) from n;",
                 nullptr, nullptr, nullptr);
    sqlite3_close(database);
}

void SqlitePlainLoop(benchmark::State& state) {
    MakeTable();
    for (auto _ : state) {
        sqlite3* database = nullptr;
        sqlite3_stmt* rows = nullptr;
        sqlite3_open(kFile, &database);
        sqlite3_prepare_v2(database, "select x, y from bench_rows", -1, &rows, nullptr);
        std::vector<double> x, y;
        while (sqlite3_step(rows) == SQLITE_ROW) {
            x.push_back(sqlite3_column_double(rows, 0));
            y.push_back(sqlite3_column_double(rows, 1));
        }
        benchmark::DoNotOptimize(x.data());
        benchmark::DoNotOptimize(y.data());
        sqlite3_finalize(rows);
        sqlite3_close(database);
    }
}
BENCHMARK(SqlitePlainLoop)->Unit(benchmark::kMillisecond)->MeasureProcessCPUTime()->UseRealTime();

void SqliteLoad(benchmark::State& state) {
    Load(state, kFile);
}
BENCHMARK(SqliteLoad)->Unit(benchmark::kMillisecond)->MeasureProcessCPUTime()->UseRealTime();

#endif

#ifdef LUMOPLOT_HAVE_LIBPQ

// LUMOPLOT_BENCH_POSTGRES is the address of a database in which tables can be made.
const char* Address() {
    return std::getenv("LUMOPLOT_BENCH_POSTGRES");
}

void PostgresPlainLoop(benchmark::State& state) {
    if (!Address()) return state.SkipWithError("LUMOPLOT_BENCH_POSTGRES is not set");
    PGconn* connection = PQconnectdb(Address());
    PQclear(PQexec(connection,
                   "drop table if exists bench_rows; create table bench_rows as select i/10.0::float8 x, "
                   "sin(i/1000.0::float8) y from generate_series(0,999999) i"));
    for (auto _ : state) {
        PQclear(PQexec(connection, "begin"));
        PQclear(PQexec(connection, "declare c no scroll cursor for select x, y from bench_rows"));
        std::vector<double> x, y;
        for (;;) {
            PGresult* rows = PQexec(connection, "fetch 10000 from c");
            const int count = PQntuples(rows);
            for (int i = 0; i < count; ++i) {
                x.push_back(std::strtod(PQgetvalue(rows, i, 0), nullptr));
                y.push_back(std::strtod(PQgetvalue(rows, i, 1), nullptr));
            }
            PQclear(rows);
            if (count == 0) break;
        }
        PQclear(PQexec(connection, "commit"));
        benchmark::DoNotOptimize(x.data());
    }
    PQfinish(connection);
}
BENCHMARK(PostgresPlainLoop)->Unit(benchmark::kMillisecond)->MeasureProcessCPUTime()->UseRealTime();

void PostgresLoad(benchmark::State& state) {
    if (!Address()) return state.SkipWithError("LUMOPLOT_BENCH_POSTGRES is not set");
    Load(state, Address());
}
BENCHMARK(PostgresLoad)->Unit(benchmark::kMillisecond)->MeasureProcessCPUTime()->UseRealTime();

#endif

} // namespace

int main(int argc, char** argv) {
    const QCoreApplication application(argc, argv);
    benchmark::Initialize(&argc, argv);
    benchmark::RunSpecifiedBenchmarks();
    QFile::remove(kFile);
    return 0;
}
