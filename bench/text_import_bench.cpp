// Loading 1,000,000 rows of two columns into a data series, against a bare loop of correctly rounded
// conversions over the mapped file. "ratio" is the shortest time of the load divided by that of the loop; the
// aims are 0.8 on two cores and 1.2 on one (taskset -c 0). Against pandas.read_csv, where python3-pandas is
// installed, "times" says how much faster the load is; the aim is at least 3.
#include "sources/text/loading/series_supplier.h"
#include "support/number_text.h"

#if __has_include(<fast_float/fast_float.h>)
#include <fast_float/fast_float.h>
#define LUMOPLOT_FAST_FLOAT 1
#else
#include <charconv>
#endif

#include <QFile>
#include <QProcess>
#include <QTemporaryDir>
#include <benchmark/benchmark.h>
#include <chrono>
#include <cstdio>
#include <limits>
#include <optional>
#include <random>
#include <vector>
#include <zlib.h>

namespace lumoplot {
namespace {

constexpr int kRows = 1000000;

enum TDigits { Short, Long };

/// One file a kind of numbers: a measurement's "12.345,0.001234", or doubles in full length.
class TBenchFile {
public:
    explicit TBenchFile(TDigits digits) : m_file(m_directory.filePath(QStringLiteral("data.csv"))) {
        std::mt19937_64 random(1);
        std::normal_distribution<double> noise;
        std::string text = "time,voltage\n";
        char row[96];
        for (int i = 0; i < kRows; ++i) {
            if (digits == Short)
                std::snprintf(row, sizeof row, "%.3f,%.6g\n", i * 0.001, noise(random));
            else
                std::snprintf(row, sizeof row, "%.17g,%.17g\n", i * 0.001, noise(random));
            text += row;
        }
        if (!m_file.open(QIODevice::ReadWrite)) std::abort();
        m_file.write(text.data(), static_cast<qint64>(text.size()));
        m_file.flush();
    }
    std::string Name() const { return m_file.fileName().toStdString(); }
    std::string_view Map() {
        return {reinterpret_cast<const char*>(m_file.map(0, m_file.size())),
                static_cast<std::size_t>(m_file.size())};
    }

private:
    QTemporaryDir m_directory;
    QFile m_file;
};

TBenchFile& FileOf(TDigits digits) {
    static TBenchFile files[] = {TBenchFile(Short), TBenchFile(Long)};
    return files[digits];
}

const char* Convert(const char* text, const char* end, double& value) {
#if defined(LUMOPLOT_FAST_FLOAT)
    return fast_float::from_chars(text, end, value).ptr;
#else
    return std::from_chars(text, end, value).ptr;
#endif
}

double ConvertAll(std::string_view text) {
    const char* at = text.data() + text.find('\n') + 1;
    const char* end = text.data() + text.size();
    double sum = 0;
    while (at < end) {
        double x = 0;
        double y = 0;
        at = Convert(at, end, x) + 1;
        at = Convert(at, end, y) + 1;
        sum += x + y;
    }
    return sum;
}

double Seconds(auto&& action) {
    const auto start = std::chrono::steady_clock::now();
    action();
    return std::chrono::duration<double>(std::chrono::steady_clock::now() - start).count();
}

void LoadOnce(const std::string& fileName) {
    TDataSeries series;
    TSilentProgress progress;
    benchmark::DoNotOptimize(LoadTextSeries(series, fileName, {}, progress).rowsUsed);
}

void BM_LoadTextSeries(benchmark::State& state) {
    TBenchFile& file = FileOf(static_cast<TDigits>(state.range(0)));
    const std::string_view text = file.Map();
    double loop = std::numeric_limits<double>::infinity();
    double load = loop;
    for (auto _ : state) {
        loop = std::min(loop, Seconds([&] { benchmark::DoNotOptimize(ConvertAll(text)); }));
        load = std::min(load, Seconds([&] { LoadOnce(file.Name()); }));
    }
    state.counters["loop_ms"] = loop * 1e3;
    state.counters["load_ms"] = load * 1e3;
    state.counters["ratio"] = load / loop;
}
BENCHMARK(BM_LoadTextSeries)->Arg(Short)->Arg(Long)->Unit(benchmark::kMillisecond);

void BM_ReadWithoutSeries(benchmark::State& state) {
    TBenchFile& file = FileOf(static_cast<TDigits>(state.range(0)));
    for (auto _ : state) {
        TSilentProgress progress;
        benchmark::DoNotOptimize(LoadText(
                                     file.Name(), {}, {}, [](auto, auto, auto) {}, progress)
                                     .rowsUsed);
    }
}
BENCHMARK(BM_ReadWithoutSeries)->Arg(Short)->Arg(Long)->Unit(benchmark::kMillisecond);

/// An ordinary file: most of the time goes into finding how it is written.
void BM_LoadFewRows(benchmark::State& state) {
    constexpr std::size_t kBytes = 85000; // 5,000 rows
    QTemporaryDir directory;
    QFile few(directory.filePath(QStringLiteral("few.csv")));
    if (!few.open(QIODevice::WriteOnly)) std::abort();
    const std::string_view text = FileOf(Short).Map().substr(0, kBytes);
    const std::size_t whole = text.rfind('\n') + 1;
    few.write(text.data(), static_cast<qint64>(whole));
    few.close();
    for (auto _ : state) LoadOnce(few.fileName().toStdString());
}
BENCHMARK(BM_LoadFewRows)->Unit(benchmark::kMillisecond);

/// "ratio" is the shortest time divided by that of the decompression alone.
void BM_LoadGzip(benchmark::State& state) {
    QTemporaryDir directory;
    const std::string name = directory.filePath(QStringLiteral("data.csv.gz")).toStdString();
    const std::string_view text = FileOf(Short).Map();
    const gzFile packed = gzopen(name.c_str(), "wb");
    gzwrite(packed, text.data(), static_cast<unsigned>(text.size()));
    gzclose(packed);
    std::vector<char> piece(262144);
    double unpack = std::numeric_limits<double>::infinity();
    double load = unpack;
    for (auto _ : state) {
        unpack = std::min(unpack, Seconds([&] {
                              const gzFile file = gzopen(name.c_str(), "rb");
                              while (gzread(file, piece.data(), static_cast<unsigned>(piece.size())) > 0) {
                              }
                              gzclose(file);
                          }));
        load = std::min(load, Seconds([&] { LoadOnce(name); }));
    }
    state.counters["unpack_ms"] = unpack * 1e3;
    state.counters["load_ms"] = load * 1e3;
    state.counters["ratio"] = load / unpack;
}
BENCHMARK(BM_LoadGzip)->Unit(benchmark::kMillisecond);

constexpr int kPandasRounds = 5;

/// What the script prints when that interpreter runs it on the file; nothing when it can not.
std::optional<double> RunPython(const QString& interpreter, const QString& script,
                                const std::string& fileName) {
    QProcess python;
    python.start(interpreter, {QStringLiteral("-c"), script, QString::fromStdString(fileName),
                               QString::number(kPandasRounds)});
    if (!python.waitForFinished(120000) || python.exitCode() != 0) return std::nullopt;
    bool isNumber = false;
    const double value = python.readAllStandardOutput().trimmed().toDouble(&isNumber);
    return isNumber ? std::optional(value) : std::nullopt;
}

/// Milliseconds that the best of some runs of pandas.read_csv takes in a running interpreter; nothing when it
/// can not be had.
std::optional<double> PandasMilliseconds(const std::string& fileName) {
    const QString script = QStringLiteral("import sys, time, pandas\n"
                                          "def run():\n"
                                          "    start = time.perf_counter()\n"
                                          "    pandas.read_csv(sys.argv[1])\n"
                                          "    return time.perf_counter() - start\n"
                                          "print(min(run() for _ in range(int(sys.argv[2]))) * 1e3)\n");
    // The package belongs to the system's interpreter, which need not be the first.
    const auto found = RunPython(QStringLiteral("python3"), script, fileName);
    return found ? found : RunPython(QStringLiteral("/usr/bin/python3"), script, fileName);
}

void BM_LoadAgainstPandas(benchmark::State& state) {
    TBenchFile& file = FileOf(static_cast<TDigits>(state.range(0)));
    const auto pandas = PandasMilliseconds(file.Name());
    if (!pandas) return state.SkipWithError("python3-pandas is not installed");
    double best = std::numeric_limits<double>::infinity();
    for (auto _ : state) {
        best = std::min(best, Seconds([&] { LoadOnce(file.Name()); }));
    }
    state.counters["pandas_ms"] = *pandas;
    state.counters["load_ms"] = best * 1e3;
    state.counters["times"] = *pandas / (best * 1e3);
}
BENCHMARK(BM_LoadAgainstPandas)
    ->Arg(Short)
    ->Arg(Long)
    ->Iterations(kPandasRounds)
    ->Unit(benchmark::kMillisecond);

/// One formula that reads one value, one that reads two.
void BM_LoadWithFormulas(benchmark::State& state) {
    TBenchFile& file = FileOf(Short);
    TSilentProgress progress;
    for (auto _ : state) {
        TDataSeries series;
        series.SetXColExpr("X/60");
        series.SetYColExpr(state.range(0) == 1 ? "ln(abs(Y)+1)" : "Y/(X+1)");
        benchmark::DoNotOptimize(LoadTextSeries(series, file.Name(), {}, progress).rowsUsed);
    }
}
BENCHMARK(BM_LoadWithFormulas)->Arg(1)->Arg(2)->Unit(benchmark::kMillisecond);

/// With a budget the rows are counted first and most are only passed over.
void BM_LoadThinned(benchmark::State& state) {
    TBenchFile& file = FileOf(Short);
    for (auto _ : state) {
        TDataSeries series;
        TSilentProgress progress;
        TTextLoadOptions options;
        options.budget = 5000;
        benchmark::DoNotOptimize(LoadTextSeries(series, file.Name(), options, progress).rowsUsed);
    }
}
BENCHMARK(BM_LoadThinned)->Unit(benchmark::kMillisecond);

} // namespace
} // namespace lumoplot

BENCHMARK_MAIN();
