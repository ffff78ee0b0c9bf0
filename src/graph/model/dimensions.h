// Margins and distances of a graph in pixels of 1/96 inch, its placement on paper, and (for a child graph)
// its place in the parent as fractions of the parent's size.
#pragma once

#include "graph/model/settings.h"

namespace lumoplot {

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

} // namespace lumoplot
