// The curve of a data set's fit as the plot shows it.
#include "graph/model/series.h"

#include "data/analysis/spline.h"
#include "fit/definition/cur_fit.h"
#include "graph/plotted/drawn_extent.h"
#include "support/errors.h"

#include <algorithm>
#include <cmath>

namespace lumoplot {

// Even steps of X, or of its logarithm, between the margins in use or else the ends of the data.
void TSeries::UpdateFittedCurve(bool logX) {
    TCurFit& fit = CurveFit();
    const TRange range = PlottedXRange(*this);
    double from = fit.UseLeftMargin() ? fit.LeftMargin() : range.Min;
    double to = fit.UseRightMargin() ? fit.RightMargin() : range.Max;
    if (logX && from <= 0) from = SmallestPlottedX(*this);
    const TCurveState state{fit.Revision(), from, to, logX};
    if (state == m_curveState) return;
    m_curveState = state;
    m_fittedCurve.clear();
    if (!fit.IsEnabled() || !fit.ShowCurve() || Count() == 0) return;
    if (logX) {
        if (from <= 0) return;
        from = std::log(from);
        to = std::log(to);
    }
    const int steps = std::clamp(fit.NPoints() - 1, 1, kMostCurveSamples);
    try {
        fit.Compile();
    } catch (const ELumoError&) {
        return; // there is no curve to show
    }
    if (!fit.Selected()) return;
    for (const double place : CurveGrid(from, to, steps)) {
        const double x = logX ? std::exp(place) : place;
        m_fittedCurve.push_back({x, fit.EvaluateAt(x)});
    }
}

} // namespace lumoplot
