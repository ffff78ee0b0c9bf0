// Base of the settings objects of a graph (axes, dimensions, appearance, legend). A settings object belongs
// to its graph for the graph's whole life; a setter that changes something visible asks the graph to redraw.
#pragma once

#include "support/export.h"
#include "support/look.h"

#include <QObject>
#include <algorithm>
#include <span>
#include <string>

namespace lumoplot {

class TxyGraph;
template <class T>
struct TSectionRow;

class TGraphSettings : public QObject {
    Q_OBJECT

public:
    TxyGraph& Graph() { return m_graph; }
    const TxyGraph& Graph() const { return m_graph; }

protected:
    explicit TGraphSettings(TxyGraph& graph) : m_graph(graph) {}

    XYGRAPH_EXPORT void Redraw();
    /// The axes of the graph are scaled anew before the next drawing.
    XYGRAPH_EXPORT void AskForScaling();

    /// Stores a value and redraws; does nothing for an equal one. True when it was stored.
    template <class TField, class TValue>
    bool Store(TField& field, const TValue& value) {
        if (field == value) return false;
        field = value;
        Redraw();
        return true;
    }
    /// As Store for a 16-bit unsigned setting: values outside 0 to 65535 take the nearest end.
    bool StoreWord(int& field, int value) { return Store(field, std::clamp(value, 0, 65535)); }
    /// As Store for an enumeration that ends with `last`; other values are ignored.
    template <class TEnum>
    bool StoreEnum(TEnum& field, TEnum value, TEnum last) {
        return static_cast<int>(value) >= 0 && value <= last && Store(field, value);
    }

private:
    TxyGraph& m_graph;
};

enum class TPenStyle { Solid = 0, Dash = 1, Dot = 2, DashDot = 3, DashDotDot = 4 };

/// Whether a picture is shown or goes to paper.
enum class TDrawPurpose { Show, Print };

/// Margins and distances of a graph in pixels of 1/96 inch, its placement on paper, and (for a child graph)
/// its place in the parent as fractions of the parent's size. Owned by its graph.
class TDimensions : public TGraphSettings {
    Q_OBJECT

public:
    explicit TDimensions(TxyGraph& graph) : TGraphSettings(graph) {}

    int BottomMargin() const { return m_bottomMargin; }
    int LeftMargin() const { return m_leftMargin; }
    int RightMargin() const { return m_rightMargin; }
    int TopMargin() const { return m_topMargin; }
    int TickLength() const { return m_tickLength; }
    int XAxisTitleOffset() const { return m_xAxisTitleOffset; }
    int XAxisLabelOffset() const { return m_xAxisLabelOffset; }
    int YAxisTitleOffset() const { return m_yAxisTitleOffset; }
    int YAxisLabelOffset() const { return m_yAxisLabelOffset; }
    int GraphTitleOffset() const { return m_graphTitleOffset; }
    int PrintXOffsetPct() const { return m_printXOffsetPct; }
    int PrintYOffsetPct() const { return m_printYOffsetPct; }
    int PrintScalePct() const { return m_printScalePct; }
    double HorPosition() const { return m_horPosition; }
    double VerPosition() const { return m_verPosition; }
    double HorSize() const { return m_horSize; }
    double VerSize() const { return m_verSize; }

    void SetBottomMargin(int value) { StoreWord(m_bottomMargin, value); }
    void SetLeftMargin(int value) { StoreWord(m_leftMargin, value); }
    void SetRightMargin(int value) { StoreWord(m_rightMargin, value); }
    void SetTopMargin(int value) { StoreWord(m_topMargin, value); }
    void SetTickLength(int value) { StoreWord(m_tickLength, value); }
    void SetXAxisTitleOffset(int value) { Store(m_xAxisTitleOffset, value); }
    void SetXAxisLabelOffset(int value) { Store(m_xAxisLabelOffset, value); }
    void SetYAxisTitleOffset(int value) { Store(m_yAxisTitleOffset, value); }
    void SetYAxisLabelOffset(int value) { Store(m_yAxisLabelOffset, value); }
    void SetGraphTitleOffset(int value) { Store(m_graphTitleOffset, value); }
    void SetPrintXOffsetPct(int value) { StoreWord(m_printXOffsetPct, value); }
    void SetPrintYOffsetPct(int value) { StoreWord(m_printYOffsetPct, value); }
    void SetPrintScalePct(int value) { StoreWord(m_printScalePct, value); }
    void SetHorPosition(double value) { StorePlace(m_horPosition, value); }
    void SetVerPosition(double value) { StorePlace(m_verPosition, value); }
    void SetHorSize(double value) { StorePlace(m_horSize, value); }
    void SetVerSize(double value) { StorePlace(m_verSize, value); }

    /// Gives everything its default but the place in the parent, which belongs to the child graph's life.
    XYGRAPH_EXPORT void ResetToDefaults();

private:
    friend std::span<const TSectionRow<TDimensions>> DimensionsRows();

    XYGRAPH_EXPORT void StorePlace(double& field, double value);

    int m_bottomMargin{};
    int m_leftMargin{};
    int m_rightMargin{};
    int m_topMargin{};
    int m_tickLength{};
    int m_xAxisTitleOffset{};
    int m_xAxisLabelOffset{};
    int m_yAxisTitleOffset{};
    int m_yAxisLabelOffset{};
    int m_graphTitleOffset{};
    int m_printXOffsetPct{};
    int m_printYOffsetPct{};
    int m_printScalePct{};
    double m_horPosition = 0;
    double m_verPosition = 0;
    double m_horSize = 1;
    double m_verSize = 1;
};

/// The legend box of a graph. Places and sizes are pixels of 1/96 inch from the graph's top left corner.
class TLegend : public TGraphSettings {
    Q_OBJECT

public:
    enum TLegendStyle : int { lsAcross, lsDown };
    enum TBorderStyle : int { bsNone, bsSingle };

    explicit TLegend(TxyGraph& graph) : TGraphSettings(graph) {}

    bool visible() const { return m_visible; }
    TColor color() const { return m_color; }
    TBorderStyle borderStyle() const { return m_borderStyle; }
    TLegendStyle Layout() const { return m_layout; }
    /// The legend stands in the corner of the plot where it covers the fewest points, not at its place.
    bool AutoPlace() const { return m_autoPlace; }
    int top() const { return m_top; }
    int left() const { return m_left; }
    int width() const { return m_width; }
    int height() const { return m_height; }
    const TFontSpec& font() const { return m_font; }
    /// Width left for a data set's symbol.
    int SymbolSpace() const { return m_symbolSpace; }
    int XMargin() const { return m_xMargin; }
    int YMargin() const { return m_yMargin; }

    void Setvisible(bool value) { Store(m_visible, value); }
    void Setcolor(TColor value) { Store(m_color, value); }
    void SetborderStyle(TBorderStyle value) { StoreEnum(m_borderStyle, value, bsSingle); }
    void SetLayout(TLegendStyle value) { StoreEnum(m_layout, value, lsDown); }
    void SetAutoPlace(bool value) { Store(m_autoPlace, value); }
    void Settop(int value) { Store(m_top, value); }
    void Setleft(int value) { Store(m_left, value); }
    void Setwidth(int value) { Store(m_width, value); }
    void Setheight(int value) { Store(m_height, value); }
    void Setfont(const TFontSpec& value) { Store(m_font, value); }
    void SetSymbolSpace(int value) { Store(m_symbolSpace, value); }
    void SetXMargin(int value) { Store(m_xMargin, value); }
    void SetYMargin(int value) { Store(m_yMargin, value); }

    XYGRAPH_EXPORT void ResetToDefaults();

private:
    friend std::span<const TSectionRow<TLegend>> LegendRows();

    bool m_visible{};
    bool m_autoPlace{};
    TColor m_color{};
    TBorderStyle m_borderStyle{};
    TLegendStyle m_layout{};
    int m_top{};
    int m_left{};
    int m_width{};
    int m_height{};
    TFontSpec m_font;
    int m_symbolSpace{};
    int m_xMargin{};
    int m_yMargin{};
};

} // namespace lumoplot
