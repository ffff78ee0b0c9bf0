// The legend box of a graph. Places and sizes are pixels of 1/96 inch from the graph's top left corner. Owned
// by its graph.
#pragma once

#include "graph/model/settings.h"

namespace lumoplot {

class XYGRAPH_EXPORT TLegend : public TGraphSettings {
    Q_OBJECT
    Q_PROPERTY(bool visible READ visible WRITE Setvisible)
    Q_PROPERTY(int color READ color WRITE Setcolor)
    Q_PROPERTY(TBorderStyle borderStyle READ borderStyle WRITE SetborderStyle)
    Q_PROPERTY(TLegendStyle Layout READ Layout WRITE SetLayout)
    Q_PROPERTY(int top READ top WRITE Settop)
    Q_PROPERTY(int left READ left WRITE Setleft)
    Q_PROPERTY(int width READ width WRITE Setwidth)
    Q_PROPERTY(int height READ height WRITE Setheight)
    Q_PROPERTY(TFontSpec font READ font WRITE Setfont)
    Q_PROPERTY(int SymbolSpace READ SymbolSpace WRITE SetSymbolSpace)
    Q_PROPERTY(int XMargin READ XMargin WRITE SetXMargin)
    Q_PROPERTY(int YMargin READ YMargin WRITE SetYMargin)

public:
    enum TLegendStyle : int { lsAcross, lsDown };
    Q_ENUM(TLegendStyle)
    enum TBorderStyle : int { bsNone, bsSingle };
    Q_ENUM(TBorderStyle)

    explicit TLegend(TxyGraph& graph) : TGraphSettings(graph) {}

    bool visible() const { return m_visible; }
    TColor color() const { return m_color; }
    TBorderStyle borderStyle() const { return m_borderStyle; }
    TLegendStyle Layout() const { return m_layout; }
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
    void Settop(int value) { Store(m_top, value); }
    void Setleft(int value) { Store(m_left, value); }
    void Setwidth(int value) { Store(m_width, value); }
    void Setheight(int value) { Store(m_height, value); }
    void Setfont(const TFontSpec& value) { Store(m_font, value); }
    void SetSymbolSpace(int value) { Store(m_symbolSpace, value); }
    void SetXMargin(int value) { Store(m_xMargin, value); }
    void SetYMargin(int value) { Store(m_yMargin, value); }

    void ResetToDefaults();

private:
    bool m_visible = false;
    TColor m_color = kWhite;
    TBorderStyle m_borderStyle = bsNone;
    TLegendStyle m_layout = lsAcross;
    int m_top = 10;
    int m_left = 10;
    int m_width = 0;
    int m_height = 20;
    TFontSpec m_font;
    int m_symbolSpace = 20;
    int m_xMargin = 10;
    int m_yMargin = 5;
};

} // namespace lumoplot
