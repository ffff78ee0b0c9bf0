#include "graph/model/legend.h"

#include "graph/model/graph.h"

namespace lumoplot {

void TLegend::ResetToDefaults() {
    m_visible = false;
    m_color = Graph().Appearance()->BackgroundColor();
    m_borderStyle = bsNone;
    m_layout = lsAcross;
    m_top = 10;
    m_left = 10;
    m_width = Graph().width() - 20;
    m_height = 20;
    m_font = Graph().Font();
    m_symbolSpace = 20;
    m_xMargin = 10;
    m_yMargin = 5;
    Redraw();
}

} // namespace lumoplot
