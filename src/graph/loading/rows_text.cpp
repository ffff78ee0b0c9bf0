#include "graph/loading/rows_text.h"

#include <QLocale>
#include <algorithm>

namespace lumoplot {
namespace {

std::string CountText(std::int64_t count) {
    return Grouped(count) + (count == 1 ? " row" : " rows");
}

} // namespace

TShownRows RowsOf(const TSeries& series) {
    const TSourceRows& rows = series.SourceRows();
    const bool isManual = series.DataSourceInfo().Kind() == TSourceKind::Manual;
    const std::int64_t count = series.Count(); // fewer than were read when points were deleted or merged
    if (!isManual && rows.Chosen > 0) return {std::min(rows.Used, count), rows.Chosen};
    const int every = isManual ? 1 : series.DataSourceInfo().RowSamplingFrequency();
    return {count, count * every, every > 1};
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
