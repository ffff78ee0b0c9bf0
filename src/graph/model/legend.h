// The legend box of a graph. Places and sizes are pixels of 1/96 inch from the graph's top left corner. Owned
// by its graph.
#pragma once

#include "graph/model/settings.h"

namespace lumoplot {

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
