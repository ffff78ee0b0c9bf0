// One data set: a chain of points in ascending X with the settings that say how they are corrected and
// analysed, the description of their source and their curve fit. It knows no graphics; the graph's data set
// derives from it. Every change ends in one notification, sent when the state is complete.
#pragma once

#include "data/analysis/regression_types.h"
#include "data/points/point_chain.h"
#include "support/export.h"

#include <cstdint>
#include <functional>
#include <memory>
#include <optional>
#include <span>
#include <string>
#include <vector>

namespace lumoplot {

class TCurFit;
class TDSInfo;
class TFittedCurve;
class TxyReader;
class TxyWriter;
struct TSeriesData;
struct TSeriesResults;
struct TRegressionResult;
struct TSpread;
struct TStatistics;

/// The reasons of one notification: a set of the numbers that TDataSeries and TSeries name.
class TChangeReasons {
public:
    constexpr TChangeReasons() = default;
    /// A single reason, from 0 to 31; not explicit, so that one reason can stand for the set of it.
    constexpr TChangeReasons(int reason) : m_bits(std::uint32_t{1} << reason) {}

    constexpr bool Has(int reason) const { return (m_bits >> reason & 1) != 0; }
    constexpr bool HasAnyOf(TChangeReasons reasons) const { return (m_bits & reasons.m_bits) != 0; }
    constexpr bool IsEmpty() const { return m_bits == 0; }
    constexpr TChangeReasons operator|(TChangeReasons other) const { return other |= *this; }
    constexpr TChangeReasons& operator|=(TChangeReasons other) {
        m_bits |= other.m_bits;
        return *this;
    }
    bool operator==(const TChangeReasons&) const = default;

private:
    std::uint32_t m_bits = 0; ///< bit n is reason n
};

/// The extents of a series as they stand, for those who put a former state back.
struct TSeriesExtents {
    double MinX = 0;
    double MaxX = 0;
    double MinY = 0;
    double MaxY = 0;
    double ZeroValue = 0;
    double BaseLineSlope = 0;
    bool Stale = false;
    bool AwaitsFiniteY = false;
};

/// The corrected Y of a point is Y − ZeroValue − BaseLineSlope·X. Points keep the raw Y; extents are of the
/// corrected one.
///
/// A point whose Y, or whose corrected Y, is infinite or not a number is kept but counts neither for the
/// extents nor for the baseline of AutoZero.
class TDataSeries {
public:
    // Reasons of a change.
    static constexpr int kDestroyed = 0;
    static constexpr int kPointChanged = 1; ///< a Y was set, or points were deleted, merged or replaced
    static constexpr int kBaselineChanged = 2;
    static constexpr int kRegressionChanged = 4;
    static constexpr int kCurveFitChanged = 5;
    static constexpr int kPointAdded = 7;

    /// Gets all reasons of one notification; must not throw.
    using TChangeHandler = std::function<void(TDataSeries& series, TChangeReasons reasons)>;

    TDataSeries();
    TDataSeries(const TDataSeries&) = delete;
    TDataSeries& operator=(const TDataSeries&) = delete;
    /// Ends the curve fit first, then calls every handler with kDestroyed while the points are still there. A
    /// handler must not use CurveFit() then.
    virtual ~TDataSeries();

    /// Calls the handlers in the order of their registration, or while an update is held notes the reasons.
    /// Handlers may change the series and the handlers, but not destroy the series.
    virtual void Changed(TChangeReasons reasons);
    /// Between these calls, which may be nested (TUpdateHold), changes are only noted; the last EndUpdate
    /// sends one notification with all their reasons.
    void BeginUpdate() { ++m_holds; }
    XYGRAPH_EXPORT void EndUpdate();
    /// Registers a handler at the end, or replaces the one that has this key, at its place. An empty handler
    /// is kept but not called.
    XYGRAPH_EXPORT void AddChangeHandler(std::intptr_t key, TChangeHandler handler);

    /// Inserts the point or merges it into one that is there already, as TPointChain::Add says with the
    /// tolerance and the duplicate policy of the series, and returns Count. An X that is infinite or not a
    /// number is refused. Extents are widened and never narrowed here, also by an overwrite, unless the point
    /// is the only one. With AutoZero on, a Y below ZeroValue (or the only point's Y) becomes ZeroValue and
    /// the slope 0.
    int AddPoint(double x, double y) { return AddPoint(x, y, 0); }
    /// Also with the standard error of Y, which is none for 0 and for what can be none.
    XYGRAPH_EXPORT int AddPoint(double x, double y, double yError);
    /// Sets the raw Y of a point, whose standard error stays, and widens the extents or lowers the baseline
    /// as AddPoint does. For an unknown Id no point changes, and the rest is done as for a point at 0, 0.
    XYGRAPH_EXPORT void SetPointY(std::int32_t id, double y);
    std::optional<TSeriesPoint> GetPoint(std::int32_t id) const { return m_points.Find(id); }

    // Standard errors of Y. They belong to the points and go with them; a point has one, which is finite and
    // above 0, or none. The correction of Y leaves them as they are.

    /// Some point has one.
    bool HasYErrors() const { return m_points.HasYErrors(); }
    /// 0 for a point that has none and for an unknown Id.
    XYGRAPH_EXPORT double YError(std::int32_t id) const;
    /// 0 takes it away. Throws EYError "The standard error of Y must be a number above 0" for another value
    /// that can be none; nothing is changed then, nor for an unknown Id.
    XYGRAPH_EXPORT void SetYError(std::int32_t id, double error);
    /// One a point, in chain order, or none at all, which drops them; values that can be none become none.
    /// Throws EYError "There are 3 standard errors for 5 points" for another number of them. Returns how many
    /// points have one now.
    XYGRAPH_EXPORT int SetYErrors(std::span<const double> errors);
    /// One a point, in chain order, 0 for those without; empty where there are none.
    XYGRAPH_EXPORT std::vector<double> YErrors() const;

    /// False for an unknown Id. ExtentsStale is set when the point's X or raw Y equals an extent, or when
    /// AutoZero is on and its raw Y is not above ZeroValue; a corrected Y that was an extent is not looked
    /// for.
    XYGRAPH_EXPORT bool DeletePoint(std::int32_t id);
    /// Removes each point whose X is within NumericalTolerance of the point before it that stayed; true when
    /// any was.
    XYGRAPH_EXPORT bool RemoveDuplicates();
    /// Removes all points and the regression curve; Ids start again at 1. Extents are 0 and stale.
    XYGRAPH_EXPORT void Clear();
    /// Puts other points, built beside the series, in the place of all points, with one notification, and
    /// returns the old ones. The new ones keep the Ids of their chain, and their extents are up to date.
    XYGRAPH_EXPORT TPointChain SwapPoints(TPointChain points);
    /// A copy of the points with all that has been worked out from them.
    TSeriesData Data() const;
    /// Puts such a copy in the place of the points and of what was worked out from them, with one
    /// notification. The settings that go with it are those of the series that it comes from.
    void SetData(TSeriesData data);

    int Count() const { return m_points.Count(); }
    std::int32_t LastId() const { return m_points.LastId(); }
    TPointCursor First() const { return m_points.First(); }
    /// The points for those who read many: in order, as runs of contiguous values.
    const TPointChain& Points() const { return m_points; }
    /// How the series merges points; for a chain that is built beside it.
    TMergeRule MergeRule() const { return {m_numericalTolerance, m_duplicatesAllowed}; }
    /// The data set whose corrected Y at the same places are the X of the points in the plot; null where the
    /// points have their own. Regressions, statistics of X and fits are then of the points as they are
    /// plotted: over that X, and of the corrected Y.
    virtual const TDataSeries* XSource() const { return nullptr; }
    /// XSource is another one now, or its values are: the results are worked out anew. No notification.
    void XSourceChanged() { MarkResultsStale(); }
    double CorrectedY(double x, double y) const { return y - m_zeroValue - m_baseLineSlope * x; }

    // The extents as they are; call RecalcExtents before when ExtentsStale is set. 0 without points, and for
    // Y also when no point has a finite Y.
    double MinX() const { return m_minX; }
    double MaxX() const { return m_maxX; }
    double MinY() const { return m_minY; }
    double MaxY() const { return m_maxY; }
    bool ExtentsStale() const { return m_extentsStale; }
    TSeriesExtents Extents() const;
    /// Puts extents and baseline back that the series had with the points that it has. No notification.
    void RestoreExtents(const TSeriesExtents& extents);
    /// Applies AutoZero and works out all extents from the points. Does nothing on an empty series.
    XYGRAPH_EXPORT void RecalcExtents();
    /// With AutoZero on, sets ZeroValue to the lowest finite raw Y and the slope to 0; without such a Y
    /// nothing.
    void ApplyAutoZero();
    /// The minimum when it is above 0, else the largest positive X (corrected Y) in single precision, else
    /// the minimum in single precision. For logarithmic axes.
    double PositiveMinX() const;
    double PositiveMinY() const;

    const std::string& SeriesName() const { return m_seriesName; }
    double NumericalTolerance() const { return m_numericalTolerance; }
    bool DuplicatesAllowed() const { return m_duplicatesAllowed; }
    bool AutoZero() const { return m_autoZero; }
    double ZeroValue() const { return m_zeroValue; }
    double BaseLineSlope() const { return m_baseLineSlope; }
    TRegressionType RegressionType() const { return m_regressionType; }
    int RegressionControlValue1() const { return m_regressionControlValue1; }
    double RegressionControlValue2() const { return m_regressionControlValue2; }
    /// While set, loading from a source names the data set after the source's column.
    bool SeriesFlag() const { return m_seriesFlag; }
    /// The expressions that turn a row of the source into X and Y.
    const std::string& XColExpr() const { return m_xColExpr; }
    const std::string& YColExpr() const { return m_yColExpr; }

    // Stored without a notification; points that are there are not merged anew.
    void SetSeriesName(std::string value) { m_seriesName = std::move(value); }
    XYGRAPH_EXPORT void SetNumericalTolerance(double value);
    void SetSeriesFlag(bool value) { m_seriesFlag = value; }
    void SetXColExpr(std::string value) { m_xColExpr = std::move(value); }
    void SetYColExpr(std::string value) { m_yColExpr = std::move(value); }
    // Each does nothing for an equal value, and otherwise stores, marks what is stale now and notifies once.
    // A baseline that is infinite or not a number is ignored.
    void SetZeroValue(double value) { SetBaseline(value, m_baseLineSlope); }
    XYGRAPH_EXPORT void SetBaseline(double zeroValue, double slope);
    void SetBaseLineSlope(double value) { SetBaseline(m_zeroValue, value); }
    XYGRAPH_EXPORT void SetAutoZero(bool value);
    void SetRegressionType(TRegressionType value) { StoreRegressionSetting(m_regressionType, value); }
    void SetRegressionControlValue1(int value) { StoreRegressionSetting(m_regressionControlValue1, value); }
    void SetRegressionControlValue2(double value) {
        StoreRegressionSetting(m_regressionControlValue2, value);
    }
    /// Switching it off runs RemoveDuplicates; switching it on changes nothing else.
    XYGRAPH_EXPORT void SetDuplicatesAllowed(bool value);

    // Results. Each is worked out on the first request after a change of the points (or of a setting that it
    // depends on) and answered from a cache until the next one. None notifies.

    /// Statistics of X in chain order, taken as ascending, and of the raw Y.
    XYGRAPH_EXPORT TStatistics XStatistics() const;
    XYGRAPH_EXPORT TStatistics YStatistics() const;
    /// Mean and standard deviation of the corrected Y; nothing with fewer than two finite ones.
    std::optional<TSpread> CorrectedSpread() const;

    bool RegressionStale() const { return m_regressionStale; }
    /// The next request works the regression out anew. No notification.
    void MarkRegressionStale();
    /// When RegressionStale is set, clears it and works out the regression of the raw Y (with an XSource of
    /// the points as they are plotted, Derived then being not-a-number beyond its count): the Derived of the
    /// points, RegressionLine or RegressionCurve, as ComputeRegression says for each type. Throws
    /// ERegressionError as that does; all results are then empty, and RegressionError keeps the text.
    XYGRAPH_EXPORT void CalcRegression();
    /// As CalcRegression for those who draw and show: what is thrown is kept as RegressionError, and
    /// RegressionType None gives no results and is no error.
    XYGRAPH_EXPORT void UpdateRegression() noexcept;
    /// What UpdateRegression does with a regression that was worked out beside the data set, from the same
    /// points and settings (TRegressionTask); `error` says why it gave nothing.
    void TakeRegression(TRegressionResult result, const std::string& error);
    /// Why the last calculation gave nothing; empty when it did.
    const std::string& RegressionError() const { return m_regressionError; }
    /// The polynomial of the types 1 to 3, over the raw Y; null for others and while the regression is stale.
    XYGRAPH_EXPORT const TFittedCurve* RegressionLine() const;
    /// A regression sampled on a grid of its own, empty when the type has none. That of a spline is raw; that
    /// of the curve fit stands for corrected Y.
    const std::vector<TCurveSample>& RegressionCurve() const { return m_regressionCurve; }
    /// Takes one Derived value a point, in chain order, or none, which makes them 0. Without a notification.
    void SetDerived(std::span<const double> values) { m_points.SetDerived(values); }

    TDSInfo& DataSourceInfo() { return *m_dataSourceInfo; }
    const TDSInfo& DataSourceInfo() const { return *m_dataSourceInfo; }
    TCurFit& CurveFit() { return *m_curveFit; }
    const TCurFit& CurveFit() const { return *m_curveFit; }
    /// Writes the series record and the point block (docs/stream-format.md), empty without points.
    virtual void WriteToStream(TxyWriter& writer, bool withPoints) const;
    /// Reads what WriteToStream wrote: settings go through the setters, points through AddPoint.
    virtual void ReadFromStream(TxyReader& reader);

    /// The name and the fit's parameters that are shown: "Run 1 (k=0.25 1/s; A=3 V)".
    XYGRAPH_EXPORT std::string LegendText() const;

protected:
    /// Sends a notification.
    virtual void Tell(TChangeReasons reasons);

private:
    struct TChangeEntry {
        std::intptr_t Key;
        std::shared_ptr<const TChangeHandler>
            Handler; ///< shared, so that one replaced while it runs outlives its call
    };

    void MarkResultsStale();
    void ClearRegression();
    void MarkFitStale();
    void CurveFitChanged();
    void SampleCurveFit();
    TRegressionResult ComputeOwnRegression() const;
    template <class TValue>
    void StoreRegressionSetting(TValue& field, TValue value) {
        if (value == field || value != value) return;
        field = value;
        RegressionSettingChanged();
    }
    XYGRAPH_EXPORT void RegressionSettingChanged();
    void TellMerged(int merged, int filed) const;
    void YErrorsChanged();
    void StartExtents(double x, double y);
    void WidenExtents(double x, double y);
    void WidenY(double corrected);
    bool LowerBaseline(double y);

    std::vector<TChangeEntry> m_changeHandlers;
    TChangeReasons m_heldReasons;
    int m_holds = 0;
    std::unique_ptr<TDSInfo> m_dataSourceInfo;
    TPointChain m_points;
    double m_minX = 0;
    double m_maxX = 0;
    double m_minY = 0;
    double m_maxY = 0;
    double m_zeroValue = 0;
    double m_baseLineSlope = 0;
    double m_numericalTolerance = 0;
    bool m_extentsStale = false;
    bool m_awaitsFiniteY = false; ///< no point so far has counted for the extents of Y
    bool m_autoZero = false;
    bool m_duplicatesAllowed = false;
    bool m_regressionStale = false;
    bool m_seriesFlag = true;
    TRegressionType m_regressionType = TRegressionType::None;
    int m_regressionControlValue1 = 100;
    double m_regressionControlValue2 = 0.05;
    std::unique_ptr<TSeriesResults> m_results; ///< what is kept of results, by const functions too
    std::vector<TCurveSample> m_regressionCurve;
    std::string m_regressionError;
    std::string m_seriesName = "UnNamed Series";
    std::string m_xColExpr = "X";
    std::string m_yColExpr = "Y";
    std::unique_ptr<TCurFit> m_curveFit;
};

} // namespace lumoplot
