#include "dialog/manual/pending_rows.h"

#include "graph/model/graph.h"
#include "session/graph_snapshot.h"
#include "session/recovery_points.h"

#include <algorithm>

namespace lumoplot {
namespace {

constexpr std::size_t kLeastRunSize = 5; // bytes

/// From 0 on; −1 for a data set that has gone.
std::int32_t PlaceIn(const TGraphSnapshot& graph, int number) {
    const auto series = std::ranges::find(graph.Series(), number, &TSeriesState::Number);
    return series == graph.Series().end() ? -1 : static_cast<std::int32_t>(series - graph.Series().begin());
}

std::vector<TPointSpans> RunsOf(const TPointChain& points) {
    std::vector<TPointSpans> runs;
    for (std::size_t block = 0; block < points.BlockCount(); ++block) runs.push_back(points.Block(block));
    return runs;
}

void WriteRows(TRecoveryBytesWriter& writer, const std::vector<TManualRow>& rows) {
    writer.Count(rows.size());
    for (const TManualRow& row : rows) {
        writer.Number(row.Point == TManualRow::kNew ? -1 : static_cast<std::int32_t>(row.Point));
        for (const QString* text : {&row.X, &row.Y, &row.YError}) {
            writer.Flag(!text->isNull());
            writer.Text(*text);
        }
    }
}

std::vector<TManualRow> ReadRows(TRecoveryBytesReader& reader, std::size_t pointCount) {
    std::vector<TManualRow> rows(reader.Count(kLeastRunSize));
    for (TManualRow& row : rows) {
        const auto point = reader.Number<std::int32_t>();
        if (point >= 0) row.Point = static_cast<std::size_t>(point);
        if (point >= 0 && row.Point >= pointCount) TRecoveryBytesReader::Refuse();
        for (QString* text : {&row.X, &row.Y, &row.YError}) {
            const bool isText = reader.Flag();
            const QString typed = reader.ShownText();
            if (isText) *text = typed.isNull() ? QLatin1String("") : typed;
        }
    }
    return rows;
}

void ReadRun(TRecoveryBytesReader& reader, TManualRows& rows) {
    if (reader.Flag()) {
        rows.Replace(rows.Count(), 0, ReadRows(reader, rows.PointCount()));
        return;
    }
    const auto place = reader.Number<std::int32_t>();
    const auto count = reader.Number<std::int32_t>();
    const auto points = static_cast<std::int64_t>(rows.PointCount());
    if (place < 0 || count < 0 || std::int64_t{place} + count > points) TRecoveryBytesReader::Refuse();
    rows.AppendPoints(static_cast<std::size_t>(place), static_cast<std::size_t>(count));
}

} // namespace

std::size_t TPendingRows::BytesBeside(const TSideState* earlier) const {
    const auto* before = dynamic_cast<const TPendingRows*>(earlier);
    return sizeof(*this) + Rows.BytesBeside(before ? &before->Rows : nullptr);
}

TBytes TPendingRows::ToBytes(const TGraphSnapshot& graph) const {
    TBytes bytes;
    const std::int32_t place = PlaceIn(graph, SeriesNumber);
    if (place < 0 || !Rows.OwnPoints()) return bytes;
    TRecoveryBytesWriter writer(bytes);
    writer.Number(place);
    WritePoints(writer, RunsOf(*Rows.OwnPoints()), Rows.OwnPoints()->LastId());
    writer.Count(Rows.RunCount());
    Rows.VisitRuns(
        [&](const std::vector<TManualRow>& rows) {
            writer.Flag(true);
            WriteRows(writer, rows);
        },
        [&](std::size_t start, std::size_t count) {
            writer.Flag(false);
            writer.Number(static_cast<std::int32_t>(start));
            writer.Number(static_cast<std::int32_t>(count));
        });
    return bytes;
}

std::shared_ptr<const TPendingRows> PendingRowsOf(std::span<const std::uint8_t> bytes,
                                                  const TxyGraph& graph) {
    TRecoveryBytesReader reader(bytes);
    auto pending = std::make_shared<TPendingRows>();
    const auto place = reader.Number<std::int32_t>();
    if (place < 0 || place >= static_cast<std::int32_t>(graph.Series().size()))
        TRecoveryBytesReader::Refuse();
    pending->SeriesNumber = graph.Series()[static_cast<std::size_t>(place)]->SeriesIndex();
    pending->Rows.StartWith(ReadPoints(reader));
    for (std::size_t runs = reader.Count(kLeastRunSize); runs > 0; --runs) ReadRun(reader, pending->Rows);
    return pending;
}

} // namespace lumoplot
