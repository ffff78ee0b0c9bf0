// How many rows of its source a data set shows, as every window says it.
#pragma once

#include "data/series/ds_info.h"
#include "graph/model/series.h"

#include <cstdint>
#include <string>

namespace lumoplot {

struct TShownRows {
    std::int64_t Shown = 0;
    std::int64_t InSource = 0;
    bool IsEstimated = false; ///< a graph file says how rows were sampled, not how many there were

    TShownRows& operator+=(const TShownRows& other) {
        Shown += other.Shown;
        InSource += other.InSource;
        IsEstimated |= other.IsEstimated;
        return *this;
    }
};

/// Those of a data set. Points that no source gave count as rows that are all there.
XYGRAPH_EXPORT TShownRows RowsOf(const TSeries& series);

/// Says of a data set with a source that its points are none of the source's rows but worked out, until they
/// are loaded again.
XYGRAPH_EXPORT void NotePointsAreMade(TSeries& series);

/// The points were typed, drawn or worked out.
inline bool ArePointsMade(const TSeries& series) {
    constexpr TSourceRows kMade{-1, 0}; // as NotePointsAreMade has it
    return series.DataSourceInfo().Kind() == TSourceKind::Manual || series.SourceRows() == kMade;
}

/// "all 2,000 rows", "drawn from 500 of 2,000 rows", "drawn from 500 of about 2,000 rows"; digits in groups
/// as the locale has them.
XYGRAPH_EXPORT std::string RowsText(const TShownRows& rows);

/// A number with its digits in groups: "5,000,000".
XYGRAPH_EXPORT std::string Grouped(std::int64_t number);

} // namespace lumoplot
