#include "session/recovery_file.h"

#include "data/series/ds_info.h"
#include "fit/definition/fit_run_text.h"
#include "graph/file/graph_file.h"
#include "graph/model/child_graph.h"
#include "session/recovery_points.h"
#include "session/settings_sections.h"
#include "support/errors.h"
#include "support/update_hold.h"

#include <QCryptographicHash>
#include <algorithm>
#include <array>
#include <cmath>

namespace lumoplot {
namespace {

constexpr std::string_view kMagic = "lumoplot-recovery-";
constexpr std::string_view kVersion = "03";
constexpr std::size_t kHashSize = 32;
constexpr std::size_t kHeaderSize = kMagic.size() + kVersion.size() + kHashSize;
constexpr std::size_t kMostSeries = 65535;
constexpr std::size_t kSmallestSeries = 40; // bytes

QByteArray HashOf(std::span<const std::uint8_t> bytes) {
    const QByteArray view = QByteArray::fromRawData(reinterpret_cast<const char*>(bytes.data()),
                                                    static_cast<qsizetype>(bytes.size()));
    return QCryptographicHash::hash(view, QCryptographicHash::Sha256);
}

void WriteInfo(TRecoveryBytesWriter& writer, const TRecoveryInfo& info) {
    for (const QString& text : {info.Program, info.DocumentName, info.LastStep}) writer.Text(text);
    writer.Number<std::int64_t>(info.Written.toMSecsSinceEpoch());
    writer.Number<std::int32_t>(info.StepCount);
    writer.Count(static_cast<std::size_t>(info.DataSets.size()));
    for (const QString& name : info.DataSets) writer.Text(name);
}

TRecoveryInfo ReadInfo(TRecoveryBytesReader& reader) {
    TRecoveryInfo info;
    for (QString* text : {&info.Program, &info.DocumentName, &info.LastStep}) *text = reader.ShownText();
    info.Written = QDateTime::fromMSecsSinceEpoch(reader.Number<std::int64_t>());
    info.StepCount = reader.Number<std::int32_t>();
    for (std::size_t count = reader.Count(sizeof(std::int32_t)); count > 0; --count)
        info.DataSets.append(reader.ShownText());
    return info;
}

// What is not known is -1.
template <class T>
void WriteWish(TRecoveryBytesWriter& writer, const std::optional<T>& wish) {
    writer.Number<std::int32_t>(wish ? static_cast<std::int32_t>(*wish) : -1);
}

template <class T>
void ReadWish(TRecoveryBytesReader& reader, T last, std::optional<T>& wish) {
    const auto value = reader.Number<std::int32_t>();
    if (value > static_cast<std::int32_t>(last)) TRecoveryBytesReader::Refuse();
    if (value >= 0) wish = static_cast<T>(value);
}

void WriteWishes(TRecoveryBytesWriter& writer, const TTextWishes& wishes) {
    WriteWish(writer, wishes.encoding);
    WriteWish(writer, wishes.decimalSign);
    WriteWish(writer, wishes.dateOrder);
    WriteWish(writer, wishes.shortTimes);
    WriteWish(writer, wishes.midnight);
    WriteWish(writer, wishes.columns);
    writer.Flag(wishes.quotes.has_value());
    writer.Text(wishes.quotes.value_or(""));
}

TTextWishes ReadWishes(TRecoveryBytesReader& reader) {
    TTextWishes wishes;
    ReadWish(reader, TTextEncoding::CodePage, wishes.encoding);
    ReadWish(reader, '\x7f', wishes.decimalSign);
    ReadWish(reader, TDateOrder::MonthDayYear, wishes.dateOrder);
    ReadWish(reader, TShortTimes::MinutesAndSeconds, wishes.shortTimes);
    ReadWish(reader, TMidnight::RunsOn, wishes.midnight);
    ReadWish(reader, TColumnLayout::Aligned, wishes.columns);
    const bool hasQuotes = reader.Flag();
    const std::string quotes = reader.Text();
    if (hasQuotes) wishes.quotes = quotes;
    return wishes;
}

} // namespace

void WritePoints(TRecoveryBytesWriter& writer, std::span<const TPointSpans> runs, std::int32_t lastId) {
    std::size_t count = 0;
    for (const TPointSpans& run : runs) count += run.X.size();
    writer.Number(lastId);
    writer.Count(count);
    for (const TPointSpans& run : runs) writer.Numbers(run.Ids);
    for (const TPointSpans& run : runs) writer.Numbers(run.X);
    for (const TPointSpans& run : runs) writer.Numbers(run.Y);
    const bool hasYErrors = std::ranges::any_of(runs, [](const auto& run) { return !run.YErrors.empty(); });
    writer.Flag(hasYErrors);
    if (!hasYErrors) return;
    for (const TPointSpans& run : runs) {
        const std::vector<double> none(run.YErrors.empty() ? run.X.size() : 0);
        writer.Numbers(none.empty() ? run.YErrors : std::span<const double>(none));
    }
}

namespace {

bool AreIds(std::vector<std::int32_t> ids, std::int32_t lastId) {
    std::ranges::sort(ids);
    const bool fit = ids.empty() || (ids.front() > 0 && ids.back() <= lastId);
    return lastId >= 0 && fit && std::ranges::adjacent_find(ids) == ids.end();
}

} // namespace

TPointChain ReadPoints(TRecoveryBytesReader& reader) {
    const auto lastId = reader.Number<std::int32_t>();
    const std::size_t count = reader.Count(sizeof(std::int32_t) + 2 * sizeof(double));
    const auto ids = reader.Numbers<std::int32_t>(count);
    const auto x = reader.Numbers<double>(count);
    const auto y = reader.Numbers<double>(count);
    const auto yErrors = reader.Numbers<double>(reader.Flag() ? count : 0);
    const bool finite = std::ranges::all_of(x, [](double value) { return std::isfinite(value); });
    if (!finite || !AreIds(ids, lastId)) TRecoveryBytesReader::Refuse();
    std::vector<TPointSpans> runs;
    for (std::size_t start = 0; start < count; start += TPointBlock::kCapacity) {
        const std::size_t length = std::min(TPointBlock::kCapacity, count - start);
        runs.push_back(
            {std::span(ids).subspan(start, length),
             std::span(x).subspan(start, length),
             std::span(y).subspan(start, length),
             {},
             yErrors.empty() ? std::span<const double>() : std::span(yErrors).subspan(start, length)});
    }
    return {runs, lastId};
}

namespace {

void WriteSeriesState(TRecoveryBytesWriter& writer, const TSeriesState& state) {
    writer.Bytes(state.Record->Bytes());
    WritePoints(writer, state.Points->Runs(), state.Points->LastId());
    writer.Number(state.SourceRows.Chosen);
    writer.Number(state.SourceRows.Used);
    WriteWishes(writer, state.TextWishes);
    const TSeriesExtents& e = state.Extents;
    writer.Numbers<double>(std::array{e.MinX, e.MaxX, e.MinY, e.MaxY, e.ZeroValue, e.BaseLineSlope});
    for (const bool flag : {state.IsThinned, state.NeedsReload, state.IsSamplingChosen, state.UsesXAxisSeries,
                            e.Stale, e.AwaitsFiniteY, state.RegressionStale, state.FitRun.Modified})
        writer.Flag(flag);
    writer.Text(FitRunText(state.FitRun));
}

/// What was worked out from the points of a data set, and from those that are its X.
struct TSeriesResults {
    TSeriesExtents Extents;
    bool UsesXAxisSeries;
    bool IsRegressionStale;
    TFitRunState FitRun;
};

/// Such as no points have are worked out anew.
TSeriesExtents ReadExtents(TRecoveryBytesReader& reader) {
    const std::vector<double> e = reader.Numbers<double>(6);
    const auto isFinite = [](double value) { return std::isfinite(value); };
    const bool isLegal = std::all_of(e.begin(), e.begin() + 4, isFinite) && e[0] <= e[1] && e[2] <= e[3];
    return {e[0], e[1], e[2], e[3], e[4], e[5], !isLegal, false};
}

TSeriesResults ReadSeriesState(TRecoveryBytesReader& reader, TSeries& series) {
    const TUpdateHold hold(series);
    TByteSource source(reader.Bytes());
    TxyReader record(source);
    ReadSeries(record, series);
    series.SwapPoints(ReadPoints(reader));
    TSeriesSource known;
    known.Rows.Chosen = reader.Number<std::int64_t>();
    known.Rows.Used = reader.Number<std::int64_t>();
    known.Wishes = ReadWishes(reader);
    TSeriesResults results = {ReadExtents(reader), false, false, {}};
    known.IsThinned = reader.Flag();
    known.NeedsReload = reader.Flag();
    known.IsSamplingChosen = reader.Flag();
    results.UsesXAxisSeries = reader.Flag();
    results.Extents.Stale |= reader.Flag();
    results.Extents.AwaitsFiniteY = reader.Flag();
    results.IsRegressionStale = reader.Flag();
    const bool isFitModified = reader.Flag();
    results.FitRun = FitRunOf(reader.Text());
    results.FitRun.Modified = isFitModified;
    series.SetSourceState(known);
    return results;
}

/// When all data sets are there, and the one that is X is known.
void PutResults(TSeries& series, const TSeriesResults& results) {
    const TUpdateHold hold(series);
    series.RestoreExtents(results.Extents);
    if (!results.IsRegressionStale) series.UpdateRegression();
    series.RestoreExtents(results.Extents); // sampling the curve of a fit has brought them up to date
    series.CurveFit().RestoreRunState(results.FitRun);
}

/// The data sets are numbered anew where they are read; 0 for none.
int PlaceOf(const TGraphSnapshot& graph, int number) {
    const auto series = std::ranges::find(graph.Series(), number, &TSeriesState::Number);
    return series == graph.Series().end() ? 0 : static_cast<int>(series - graph.Series().begin()) + 1;
}

void WriteGraphState(TRecoveryBytesWriter& writer, const TGraphSnapshot& graph) {
    for (const auto& section : graph.Settings()) writer.Bytes(section->Bytes());
    writer.Text(graph.DataDirectory());
    writer.Count(graph.Series().size());
    for (const TSeriesState& series : graph.Series()) WriteSeriesState(writer, series);
    writer.Count(graph.Marks().size());
    for (const auto& [id, mark] : graph.Marks()) {
        TBytes section;
        TxyWriter entries(section, TEncoding::Compact);
        WriteEntries(entries, MarkRows(), mark);
        writer.Bytes(section);
    }
    writer.Number<std::int32_t>(graph.CurrentMark());
    writer.Number<std::int32_t>(PlaceOf(graph, graph.XAxisSerIndex()));
    writer.Number<std::int32_t>(PlaceOf(graph, graph.CurrSerIndex()));
    writer.Count(graph.Children().size());
    for (const TGraphSnapshot& child : graph.Children()) WriteGraphState(writer, child);
}

class TGraphStateReader {
public:
    explicit TGraphStateReader(TRecoveryBytesReader& reader) : m_reader(reader) {}

    void Read(TxyGraph& graph, int depth) {
        const TUpdateHold hold(graph);
        VisitSections(graph, [&](auto rows, auto& object) { ReadSection(rows, m_reader.Bytes(), object); });
        graph.Appearance()->SetDataDirectory(m_reader.Text());
        const auto seriesCount = static_cast<int>(std::min(kMostSeries, m_reader.Count(kSmallestSeries)));
        std::vector<TSeriesResults> results;
        for (int number = 1; number <= seriesCount; ++number)
            results.push_back(ReadSeriesState(m_reader, *graph.AddSeriesNumbered(number)));
        ReadMarks(graph);
        const auto xAxisSerIndex = ReadIndex(seriesCount);
        const auto currSerIndex = ReadIndex(seriesCount);
        graph.Appearance()->RestoreIndices(xAxisSerIndex, currSerIndex);
        for (std::size_t i = 0; i < results.size(); ++i)
            graph.Series()[i]->RestoreUseXAxisSeries(results[i].UsesXAxisSeries);
        for (std::size_t i = 0; i < results.size(); ++i) PutResults(*graph.Series()[i], results[i]);
        ReadChildren(graph, depth);
        graph.NeedRescale();
    }

private:
    int ReadIndex(int seriesCount) {
        const auto index = m_reader.Number<std::int32_t>();
        if (index < 0 || index > seriesCount) TRecoveryBytesReader::Refuse();
        return index;
    }

    void ReadMarks(TxyGraph& graph) {
        TMarkChain marks;
        for (std::size_t count = m_reader.Count(sizeof(std::int32_t)); count > 0; --count) {
            TGraphMark mark;
            ReadSection(MarkRows(), m_reader.Bytes(), mark);
            marks.Set(mark);
        }
        const auto current = m_reader.Number<std::int32_t>();
        if (current != 0) marks.Select(current);
        graph.SetMarks(marks);
    }

    void ReadChildren(TxyGraph& graph, int depth) {
        const std::size_t count = m_reader.Count(kSmallestSeries);
        m_children += count;
        const bool possible = m_children <= std::size_t{TxyGraph::kMaxChildGraphs};
        if (!possible || (count > 0 && depth >= TxyGraph::kMaxNesting)) TRecoveryBytesReader::Refuse();
        for (std::size_t i = 0; i < count; ++i) {
            TxyChildGr* child = graph.AddChildGraph();
            Read(*child, depth + 1);
            child->FollowParent();
        }
    }

    TRecoveryBytesReader& m_reader;
    std::size_t m_children = 0;
};

/// The bytes behind the header, which are as they were written.
std::span<const std::uint8_t> CheckedBody(std::span<const std::uint8_t> bytes) {
    const std::string_view text(reinterpret_cast<const char*>(bytes.data()), bytes.size());
    if (!text.starts_with(kMagic)) throw EGraphFileError("This is not a recovery file");
    if (bytes.size() >= kHeaderSize && text.substr(kMagic.size(), kVersion.size()) != kVersion)
        throw EGraphFileError("This recovery file is of another version");
    if (bytes.size() < kHeaderSize) throw EGraphFileError("The recovery file is damaged");
    const auto body = bytes.subspan(kHeaderSize);
    const QByteArray hash = HashOf(body);
    const auto written = bytes.subspan(kHeaderSize - kHashSize, kHashSize);
    const bool same = std::memcmp(hash.constData(), written.data(), kHashSize) == 0;
    if (!same) throw EGraphFileError("The recovery file is damaged");
    return body;
}

} // namespace

TBytes RecoveryBytes(const TRecoveryInfo& info, const TGraphSnapshot& graph, const TSideStatePtr& beside) {
    TBytes bytes(kHeaderSize);
    std::ranges::copy(kVersion, std::ranges::copy(kMagic, bytes.begin()).out);
    TRecoveryBytesWriter writer(bytes);
    WriteInfo(writer, info);
    WriteGraphState(writer, graph);
    writer.Bytes(beside ? beside->ToBytes(graph) : TBytes());
    const QByteArray hash = HashOf(std::span(bytes).subspan(kHeaderSize));
    std::ranges::copy(hash, bytes.begin() + (kHeaderSize - kHashSize));
    return bytes;
}

bool IsWholeRecovery(std::span<const std::uint8_t> bytes) {
    try {
        CheckedBody(bytes);
        return true;
    } catch (const EGraphFileError&) {
        return false;
    }
}

TRecoveryInfo ReadRecovery(std::span<const std::uint8_t> bytes, TxyGraph& graph) {
    TRecoveryBytesReader reader(CheckedBody(bytes));
    TxyGraph loaded;
    loaded.resize(graph.size()); // which defaults depend on
    TRecoveryInfo info;
    try {
        info = ReadInfo(reader);
        TGraphStateReader(reader).Read(loaded, 0);
        const auto beside = reader.Bytes();
        info.Beside.assign(beside.begin(), beside.end());
    } catch (const ELumoError&) {
        throw EGraphFileError("The recovery file is damaged");
    }
    graph.CopyFrom(loaded);
    return info;
}

} // namespace lumoplot
