#include "graph/model/dimensions.h"

namespace lumoplot {

void TDimensions::ResetToDefaults() {
    m_bottomMargin = 40;
    m_leftMargin = 40;
    m_rightMargin = 15;
    m_topMargin = 30;
    m_tickLength = 4;
    m_xAxisTitleOffset = 4;
    m_xAxisLabelOffset = 2;
    m_yAxisTitleOffset = 4;
    m_yAxisLabelOffset = 2;
    m_graphTitleOffset = 7;
    m_printXOffsetPct = 5;
    m_printYOffsetPct = 20;
    m_printScalePct = 90;
    Redraw();
}

} // namespace lumoplot
