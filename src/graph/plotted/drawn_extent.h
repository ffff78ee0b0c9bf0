// Which ranges of X and Y the points of a data set cover as they are drawn: with the data set that serves as
// X, without places that a logarithmic axis does not have, without values that are not finite.
#pragma once

#include "graph/model/series.h"

#include <cstdint>
#include <vector>

namespace lumoplot {

struct TRange {
    double Min = 0;
    double Max = -1;

    bool IsEmpty() const { return !(Min <= Max); }
    void Take(double value) {
        if (IsEmpty()) {
            Min = Max = value;
        } else if (value < Min) {
            Min = value;
        } else if (value > Max) {
            Max = value;
        }
    }
    bool operator==(const TRange&) const = default;
};

/// From the smallest to the largest X of the points as they are plotted, whatever the axes can show; its own
/// extents are up to date.
TRange PlottedXRange(const TSeries& series);
/// The smallest X above 0 in the plot; 0 when there is none.
double SmallestPlottedX(const TSeries& series);

struct TDrawnExtent {
    TRange X;
    TRange Y; ///< corrected
    /// Points with values that a logarithmic axis can not show.
    std::int64_t LogErrors = 0;
};

/// Works out extents and keeps those that took a walk over the points until the points change. Belongs to a
/// graph.
class TDrawnExtents {
public:
    /// The extent of a data set that is drawn and whose own extents are up to date (as are those of its X
    /// data set).
    TDrawnExtent Of(const TSeries& series);
    /// Forgets what was not asked for since the last call.
    void DropUnused();

private:
    struct TKey {
        std::uint64_t Series;
        std::uint64_t XSeries; ///< 0 for none
        bool LogX;
        bool LogY;

        bool operator==(const TKey&) const = default;
    };
    struct TKept {
        TKey Key;
        TDrawnExtent Extent;
        bool IsUsed;
    };

    std::vector<TKept> m_kept;
};

} // namespace lumoplot
