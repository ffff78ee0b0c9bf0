#include "graph/loading/rows_text.h"

#include "data/series/ds_info.h"

#include <QLocale>
#include <algorithm>

namespace lumoplot {
namespace {

constexpr TSourceRows kMade{-1, 0};

std::string CountText(std::int64_t count) {
    return Grouped(count) + (count == 1 ? " row" : " rows");
}

} // namespace

TShownRows RowsOf(const TSeries& series) {
    const TSourceRows& rows = series.SourceRows();
    const std::int64_t count = series.Count(); // fewer than were read when points were deleted or merged
    if (ArePointsMade(series)) return {count, count};
    if (rows.Chosen > 0) return {std::min(rows.Used, count), rows.Chosen};
    const int every = series.DataSourceInfo().RowSamplingFrequency();
    return {count, count * every, every > 1};
}

void NotePointsAreMade(TSeries& series) {
    series.SetSourceRows(kMade);
    series.SetThinned(false);
    TDSInfo& source = series.DataSourceInfo();
    if (source.AutoRowHitFreq()) source.NoteRowSamplingFrequency(1); // there are no more rows to read
}

std::string RowsText(const TShownRows& rows) {
    if (rows.Shown == rows.InSource) return "all " + CountText(rows.InSource);
    return "drawn from " + Grouped(rows.Shown) + (rows.IsEstimated ? " of about " : " of ") +
           CountText(rows.InSource);
}

std::string Grouped(std::int64_t number) {
    return QLocale().toString(static_cast<qint64>(number)).toStdString();
}

} // namespace lumoplot
