// A data set as the graph draws it: a data series plus its number, its axis and its drawing style. Owned by
// its graph, in a chain whose order is the drawing order.
#pragma once

#include "data/series/data_series.h"
#include "data/series/ds_info.h"
#include "graph/model/settings.h"
#include "support/look.h"

#include <algorithm>
#include <cstdint>

namespace lumoplot {

class TAxis;
class TGraphScaling;
class TxyGraph;

/// Point shapes by their stored numbers.
enum class TPointShape {
    Square = 0,
    Circle = 1,
    Diamond = 2,
    Cross = 3,
    WidePoint = 4,
    XCross = 5,
    Star = 6,
    UpTriangle = 7,
    DownTriangle = 8
};

/// Which bounds of a regression are drawn: none, the set values, or the mean and 1, 2, 3 or each of these
/// standard deviations.
enum class TBoundsType { None = 0, SetValues = 1, OneSD = 2, TwoSD = 3, ThreeSD = 4, AllSD = 5 };

/// How many rows of its source a data set shows; 0 for none and before it was loaded.
struct TSourceRows {
    std::int64_t Chosen = 0; ///< that the row choice lets through
    std::int64_t Used = 0;   ///< of them, those that became points

    bool operator==(const TSourceRows&) const = default;
};

/// What is known of a data set's source beside its description.
struct TSeriesSource {
    TSourceRows Rows;
    TTextWishes Wishes;
    bool IsThinned = false;
    bool NeedsReload = false;
    bool IsSamplingChosen = false;

    bool operator==(const TSeriesSource&) const = default;
};

class TSeries : public TDataSeries {
public:
    /// Reason of a change of the drawing style, besides those of TDataSeries.
    static constexpr int kStyleChanged = 3;

    /// A new data set with the colours and the shape that its number gives it.
    TSeries(TxyGraph& graph, int number);

    TxyGraph& Graph() { return m_graph; }
    const TxyGraph& Graph() const { return m_graph; }
    /// The next data set of the chain, or null.
    TSeries* Next() { return m_next; }
    const TSeries* Next() const { return m_next; }
    /// The data set's number, from 1.
    int SeriesIndex() const { return m_seriesIndex; }

    TAxis* YAxisOfSeries() { return m_yAxisOfSeries; }
    const TAxis* YAxisOfSeries() const { return m_yAxisOfSeries; }
    XYGRAPH_EXPORT bool IsOnSecondY() const;
    bool Active() const { return m_active; }
    bool LinesShown() const { return m_linesShown; }
    bool PointsShown() const { return m_pointsShown; }
    bool FillPoints() const { return m_fillPoints; }
    TColor LineColor() const { return m_lineColor; }
    TColor PointColor() const { return m_pointColor; }
    TColor BoundsColor() const { return m_boundsColor; }
    TPointShape PointShape() const { return m_pointShape; }
    TPenStyle LineStyle() const { return m_lineStyle; }
    int LineWidth() const { return m_lineWidth; }
    /// Width and height of a symbol, in pixels of 1/96 inch.
    int PointSize() const { return m_pointSize; }
    int PointBorderWidth() const { return m_pointBorderWidth; }
    double UpperBound() const { return m_upperBound; }
    double LowerBound() const { return m_lowerBound; }
    TBoundsType BoundsType() const { return m_boundsType; }
    /// The levels of the Y axis at which bounds are drawn: the set values as they are, or multiples of the
    /// standard deviation of the corrected Y about its mean (none with fewer than two finite Y). All finite.
    std::vector<double> BoundLevels() const;
    TPenStyle BoundsLineStyle() const { return m_boundsLineStyle; }
    bool ShowInLegend() const { return m_showInLegend; }
    TColor RegressionColor() const { return m_regressionColor; }
    TPenStyle RegressionLineStyle() const { return m_regressionLineStyle; }
    int RegressionLineWidth() const { return m_regressionLineWidth; }
    bool UseXAxisSeries() const { return m_useXAxisSeries; }
    /// Points that logarithmic axes had no place for when the graph was prepared last.
    std::int64_t LogErrors() const { return m_logErrors; }
    /// The points were read with the editor's small budget and are fewer than the host would read. Not filed.
    bool IsThinned() const { return m_isThinned; }
    /// The points are some rows of the source, left for the eye by "Auto"; what is worked out is to come from
    /// all of them.
    XYGRAPH_EXPORT bool HoldsSomeRows() const;
    /// Something is worked out from the points whenever they change: a curve fit, a regression, bounds.
    bool ShowsResults() const;
    /// The plot shows a regression or bounds, or is about to run a fit, and the points are only some rows,
    /// which nobody has tried to complete yet.
    bool WaitsForEveryRow() const;
    void NoteEveryRowTried() { m_everyRowTried = m_dataStamp; }
    /// How many rows the last loading found and took. Not filed.
    const TSourceRows& SourceRows() const { return m_sourceRows; }
    /// How the user wants the text of the source to be read beyond what the source description holds. Not
    /// filed.
    const TTextWishes& TextWishes() const { return m_textWishes; }

    // Setters store a changed value and send one change notification; enumerations outside their range are
    // ignored.
    XYGRAPH_EXPORT void SetYAxisOfSeries(TAxis* value);
    void SetActive(bool value) { Store(m_active, value); }
    void SetLinesShown(bool value) { Store(m_linesShown, value); }
    void SetPointsShown(bool value) { Store(m_pointsShown, value); }
    void SetFillPoints(bool value) { Store(m_fillPoints, value); }
    void SetLineColor(TColor value) { Store(m_lineColor, value); }
    void SetPointColor(TColor value) { Store(m_pointColor, value); }
    void SetBoundsColor(TColor value) { Store(m_boundsColor, value); }
    /// The size is made even and at least 2 unless the shape is WidePoint; the same holds for SetPointSize.
    XYGRAPH_EXPORT void SetPointShape(TPointShape value);
    XYGRAPH_EXPORT void SetPointSize(int value);
    void SetLineStyle(TPenStyle value) { StoreEnum(m_lineStyle, value, TPenStyle::DashDotDot); }
    void SetLineWidth(int value) { StoreWord(m_lineWidth, value); }
    void SetPointBorderWidth(int value) { StoreWord(m_pointBorderWidth, value); }
    void SetUpperBound(double value) { Store(m_upperBound, value); }
    void SetLowerBound(double value) { Store(m_lowerBound, value); }
    void SetBoundsType(TBoundsType value) { StoreEnum(m_boundsType, value, TBoundsType::AllSD); }
    void SetBoundsLineStyle(TPenStyle value) { StoreEnum(m_boundsLineStyle, value, TPenStyle::DashDotDot); }
    void SetShowInLegend(bool value) { Store(m_showInLegend, value); }
    void SetRegressionColor(TColor value) { Store(m_regressionColor, value); }
    void SetRegressionLineStyle(TPenStyle value) {
        StoreEnum(m_regressionLineStyle, value, TPenStyle::DashDotDot);
    }
    void SetRegressionLineWidth(int value) { StoreWord(m_regressionLineWidth, value); }
    /// As for any data series; the X data set that is to hold duplicates ceases to be the X data set, which
    /// the message sink is told.
    XYGRAPH_EXPORT void SetDuplicatesAllowed(bool value);
    XYGRAPH_EXPORT void SetUseXAxisSeries(bool value);
    /// Puts the switch back where results are put back as well.
    void RestoreUseXAxisSeries(bool value) { m_useXAxisSeries = value; }
    const TDataSeries* XSource() const override;
    void SetThinned(bool value) { m_isThinned = value; }
    void SetSourceRows(const TSourceRows& value) { m_sourceRows = value; }
    XYGRAPH_EXPORT void SetTextWishes(const TTextWishes& value);
    TSeriesSource SourceState() const;
    void SetSourceState(const TSeriesSource& state);

    /// An update hold as a switch: switching it on begins one, switching it off ends it.
    bool UpdateDepth() const { return m_updateDepth; }
    void SetUpdateDepth(bool value) {
        if (value == m_updateDepth) return;
        m_updateDepth = value;
        value ? BeginUpdate() : EndUpdate();
    }

    void Changed(TChangeReasons reasons) override;
    /// Works out FittedCurve when its fit or the extent of X has changed; extents are up to date.
    void UpdateFittedCurve(bool logX);
    /// The model of an enabled fit at NPoints places between the margins in use or else the ends of the data;
    /// not-a-number where it has no value. Empty when no curve is to be shown or the equation does not
    /// compile.
    const std::vector<TCurveSample>& FittedCurve() const { return m_fittedCurve; }

    /// Another number after every change of points or baseline, never used twice in a process, so that what
    /// is worked out from the points can be kept under it.
    std::uint64_t DataStamp() const { return m_dataStamp; }

    /// Becomes equal to the other data set in every respect but the number, whether files hold it or not.
    XYGRAPH_EXPORT void CopyFrom(const TSeries& other);

protected:
    void Tell(TChangeReasons reasons) override;

private:
    friend class TGraphScaling;
    friend class TxyGraph;
    friend std::span<const TSectionRow<TSeries>> SeriesRows();

    /// What the fitted curve depends on.
    struct TCurveState {
        std::uint64_t Revision = ~std::uint64_t{0};
        double From = 0;
        double To = 0;
        bool LogX = false;
        bool operator==(const TCurveState&) const = default;
    };

    bool ShowsFigures() const;
    void TellPaired();
    template <class TField, class TValue>
    void Store(TField& field, const TValue& value) {
        if (field == value) return;
        field = value;
        Changed(kStyleChanged);
    }
    void StoreWord(int& field, int value) { Store(field, std::clamp(value, 0, 65535)); }
    template <class TEnum>
    void StoreEnum(TEnum& field, TEnum value, TEnum last) {
        if (static_cast<int>(value) >= 0 && value <= last) Store(field, value);
    }
    int FittingSize(int size) const;

    TxyGraph& m_graph;
    TSeries* m_next = nullptr;
    int m_seriesIndex;
    std::uint64_t m_dataStamp;
    std::uint64_t m_everyRowTried = 0; ///< the stamp of the points then
    TAxis* m_yAxisOfSeries;
    bool m_active{};
    bool m_linesShown{};
    bool m_pointsShown{};
    bool m_fillPoints{};
    bool m_updateDepth = false;
    bool m_showInLegend{};
    bool m_useXAxisSeries;
    bool m_isThinned = false;
    // What the graph knows and has told of the data set.
    std::int64_t m_logErrors = 0;
    bool m_toldLogError = false;
    bool m_toldManyPoints = false;
    TSourceRows m_sourceRows;
    TTextWishes m_textWishes;
    TColor m_lineColor{};
    TColor m_pointColor{};
    TColor m_boundsColor{};
    TColor m_regressionColor{};
    TPointShape m_pointShape{};
    TPenStyle m_lineStyle{};
    TPenStyle m_boundsLineStyle{};
    TPenStyle m_regressionLineStyle{};
    TBoundsType m_boundsType{};
    int m_lineWidth{};
    int m_pointSize{};
    int m_pointBorderWidth{};
    int m_regressionLineWidth{};
    double m_upperBound{};
    double m_lowerBound{};
    TCurveState m_curveState;
    std::vector<TCurveSample> m_fittedCurve;
};

} // namespace lumoplot
