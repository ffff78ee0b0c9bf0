// All that a user can see of a graph, whether files hold it or not, in pieces with names, so that two states
// can be compared and the first piece that differs be named. Numbers are compared by their bits.
#pragma once

#include "common/random_graph.h"
#include "data/analysis/least_squares.h"
#include "data/analysis/statistics.h"
#include "data/series/ds_info.h"
#include "fit/definition/cur_fit.h"
#include "fit/definition/fit_run_text.h"
#include "graph/model/child_graph.h"

#include <any>
#include <bit>
#include <string>
#include <vector>

namespace lumoplot {

/// The points as they stand, Ids and results of regressions included.
inline std::vector<std::uint64_t> PointBitsOf(const TDataSeries& series, bool withDerived = true) {
    std::vector<std::uint64_t> bits;
    for (TPointCursor point = series.First(); point; point = point.Next()) {
        bits.push_back(static_cast<std::uint64_t>(point.Id()));
        for (const double value : {point.X(), point.Y(), withDerived ? point.Derived() : 0.0})
            bits.push_back(std::bit_cast<std::uint64_t>(value));
    }
    return bits;
}

class TGraphState {
public:
    explicit TGraphState(const TxyGraph& graph) {
        const TAppearance& appearance = *graph.Appearance();
        Put("file", FileOf(graph));
        Put("X data set", appearance.XAxisSerIndex());
        Put("error caption", appearance.ErrorCaption());
        Put("data directory", appearance.DataDirectory());
        Put("current mark", graph.Marks().CurrentID());
        for (const auto& series : graph.Series()) PutSeries(*series);
        for (const auto& child : graph.ChildGraphs()) m_children.emplace_back(*child);
    }

    /// Empty for equal states.
    static std::string Difference(const TGraphState& a, const TGraphState& b) {
        if (a.m_pieces.size() != b.m_pieces.size() || a.m_children.size() != b.m_children.size())
            return "number of parts";
        for (std::size_t i = 0; i < a.m_pieces.size(); ++i)
            if (!a.m_pieces[i].Equals(a.m_pieces[i].Value, b.m_pieces[i].Value)) return a.m_pieces[i].Name;
        for (std::size_t i = 0; i < a.m_children.size(); ++i)
            if (const auto inside = Difference(a.m_children[i], b.m_children[i]); !inside.empty())
                return inside + " of a child graph";
        return {};
    }

private:
    struct TPiece {
        std::string Name;
        std::any Value;
        bool (*Equals)(const std::any&, const std::any&);
    };

    template <class T>
    void Put(const std::string& name, T value) {
        m_pieces.push_back({name, std::move(value), [](const std::any& a, const std::any& b) {
                                return a.type() == b.type() &&
                                       std::any_cast<const T&>(a) == std::any_cast<const T&>(b);
                            }});
    }
    void PutNumbers(const std::string& name, const std::vector<double>& values) {
        std::vector<std::uint64_t> bits;
        for (const double value : values) bits.push_back(std::bit_cast<std::uint64_t>(value));
        Put(name, bits);
    }

    void PutSeries(const TSeries& series) {
        const std::string of = " of data set " + std::to_string(series.SeriesIndex());
        const TSeriesExtents e = series.Extents();
        const TSeriesSource source = series.SourceState();
        const bool isStale = series.RegressionStale();
        Put("number" + of, series.SeriesIndex());
        Put("points" + of, PointBitsOf(series, !isStale));
        PutNumbers("extents" + of, {e.MinX, e.MaxX, e.MinY, e.MaxY, e.ZeroValue, e.BaseLineSlope});
        Put("state of extents" + of, std::vector<bool>{e.Stale, e.AwaitsFiniteY});
        Put("source" + of, source);
        Put("use of the X data set" + of, series.UseXAxisSeries());
        Put("fit" + of, FitRunText(series.CurveFit().RunState()));
        Put("changes of the fit" + of, series.CurveFit().Modified());
        PutNumbers("statistics" + of, {series.XStatistics().Mean, series.YStatistics().Mean});
        Put("state of the regression" + of, isStale);
        if (!isStale) PutRegression(of, series);
    }
    void PutRegression(const std::string& of, const TSeries& series) {
        std::vector<double> values;
        if (const TFittedCurve* line = series.RegressionLine())
            values = {line->Coefficients().C0, line->Coefficients().C1, line->Coefficients().C2};
        for (const TCurveSample& sample : series.RegressionCurve()) {
            values.push_back(sample.X);
            values.push_back(sample.Derived);
        }
        PutNumbers("regression" + of, values);
        Put("error of the regression" + of, series.RegressionError());
    }

    std::vector<TPiece> m_pieces;
    std::vector<TGraphState> m_children;
};

} // namespace lumoplot
