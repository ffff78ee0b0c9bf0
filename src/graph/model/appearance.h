// Colours, fonts and flags of a graph, its title, and which data set is current and which one serves as X.
// Owned by its graph.
#pragma once

#include "graph/model/settings.h"

namespace lumoplot {

/// Which bands about fitted curves are drawn: where the curve lies, where a new point would lie, or both.
enum class TFitBands { None = 0, Confidence = 1, Prediction = 2, Both = 3 };

class TAppearance : public TGraphSettings {
    Q_OBJECT

public:
    explicit TAppearance(TxyGraph& graph) : TGraphSettings(graph) {}

    bool AllowDuplicates() const { return m_allowDuplicates; }
    int XAxisSerIndex() const { return m_xAxisSerIndex; }
    int CurrSerIndex() const { return m_currSerIndex; }
    TColor AxesColor() const { return m_axesColor; }
    TColor BackgroundColor() const { return m_backgroundColor; }
    TColor MarginColor() const { return m_marginColor; }
    bool PrintBkgndColor() const { return m_printBkgndColor; }
    const std::string& bkgdImageFile() const { return m_bkgdImageFile; }
    bool StretchBkgd() const { return m_stretchBkgd; }
    /// Drawn in place of the plot when scaling fails.
    const std::string& ErrorCaption() const { return m_errorCaption; }
    TColor GridColor() const { return m_gridColor; }
    TPenStyle GridStyle() const { return m_gridStyle; }
    bool ShowGraphLabels() const { return m_showGraphLabels; }
    /// Points beyond the axes' ranges are drawn too, outside the plot area.
    bool PlotOffGraph() const { return m_plotOffGraph; }
    bool ShowMarks() const { return m_showMarks; }
    bool ShowTicks() const { return m_showTicks; }
    /// A line round the plot, on the sides without an axis, too.
    bool ShowFrame() const { return m_showFrame; }
    /// Ticks point into the plot, away from the labels.
    bool TicksInside() const { return m_ticksInside; }
    TFitBands FitBands() const { return m_fitBands; }
    /// What fitted curves leave of the points stands in a panel above the plot.
    bool ShowResiduals() const { return m_showResiduals; }
    const std::string& GraphTitle() const { return m_graphTitle; }
    int MinSteps() const { return m_minSteps; }
    int MaxSteps() const { return m_maxSteps; }
    /// Font of the axes' titles.
    const TFontSpec& TitleFont() const { return m_titleFont; }
    /// Font of the graph's title.
    const TFontSpec& CaptionFont() const { return m_captionFont; }
    const TFontSpec& LabelFont() const { return m_labelFont; }
    bool CrossAtZero() const { return m_crossAtZero; }
    TColor CrossColor() const { return m_crossColor; }
    int Crosslength() const { return m_crossLength; }
    /// Lines are printed in their styles.
    bool PrintLineStyle() const { return m_printLineStyle; }
    /// Folder that relative source names are looked up in. Filed with the points only.
    const std::string& DataDirectory() const { return m_dataDirectory; }

    /// Also sets the duplicates flag of every data set.
    XYGRAPH_EXPORT void SetAllowDuplicates(bool value);
    /// Number of the data set whose Y values serve as X of the others; 0 for none. A number without a data
    /// set, or of one that holds duplicates, becomes 0.
    XYGRAPH_EXPORT void SetXAxisSerIndex(int value);
    /// Number of the current data set: clamped to the series count; 0 and below become 1 where there is a
    /// data set.
    XYGRAPH_EXPORT void SetCurrSerIndex(int value);
    /// Values of a graph file, applied by ApplyHeldIndices when the data sets exist.
    void SetHoldXAxisSerIndex(int value) { m_holdXAxisSerIndex = value; }
    void SetHoldCurrSerIndex(int value) { m_holdCurrSerIndex = value; }
    void ApplyHeldIndices();
    /// Stores the number that the X data set has been given; nothing else changes.
    void FollowXAxisSeries(int number) { m_xAxisSerIndex = number; }
    /// Ends the role of an X data set that holds duplicates by now, and tells the message sink.
    void DropUnusableXSeries();
    /// Puts back which data sets were X and current in a graph with the same data sets; 0 stays 0.
    void RestoreIndices(int xAxisSerIndex, int currSerIndex);
    void SetAxesColor(TColor value) { Store(m_axesColor, value); }
    void SetBackgroundColor(TColor value) { Store(m_backgroundColor, value); }
    void SetMarginColor(TColor value) { Store(m_marginColor, value); }
    void SetPrintBkgndColor(bool value) { m_printBkgndColor = value; }
    void SetbkgdImageFile(const std::string& value) { Store(m_bkgdImageFile, value); }
    void SetStretchBkgd(bool value) { Store(m_stretchBkgd, value); }
    void SetErrorCaption(const std::string& value) { Store(m_errorCaption, value); }
    void SetGridColor(TColor value) { Store(m_gridColor, value); }
    void SetGridStyle(TPenStyle value) { StoreEnum(m_gridStyle, value, TPenStyle::DashDotDot); }
    void SetShowGraphLabels(bool value) { Store(m_showGraphLabels, value); }
    void SetPlotOffGraph(bool value) { Store(m_plotOffGraph, value); }
    void SetShowMarks(bool value) { Store(m_showMarks, value); }
    void SetShowTicks(bool value) { Store(m_showTicks, value); }
    void SetShowFrame(bool value) { Store(m_showFrame, value); }
    void SetTicksInside(bool value) { Store(m_ticksInside, value); }
    void SetShowResiduals(bool value) { Store(m_showResiduals, value); }
    void SetFitBands(TFitBands value) { StoreEnum(m_fitBands, value, TFitBands::Both); }
    /// The holder's ID follows as the title + " DATA" unless it was given another text.
    XYGRAPH_EXPORT void SetGraphTitle(const std::string& value);
    /// Accepted when it is above 0 and below MaxSteps / 2.5.
    XYGRAPH_EXPORT void SetMinSteps(int value);
    /// Accepted when it is above MinSteps x 2.5 and at most 90.
    XYGRAPH_EXPORT void SetMaxSteps(int value);
    void SetTitleFont(const TFontSpec& value) { Store(m_titleFont, value); }
    void SetCaptionFont(const TFontSpec& value) { Store(m_captionFont, value); }
    void SetLabelFont(const TFontSpec& value) { Store(m_labelFont, value); }
    void SetCrossAtZero(bool value) { Store(m_crossAtZero, value); }
    void SetCrossColor(TColor value) { Store(m_crossColor, value); }
    void SetCrosslength(int value) { StoreWord(m_crossLength, value); }
    void SetPrintLineStyle(bool value) { m_printLineStyle = value; }
    void SetDataDirectory(const std::string& value) { m_dataDirectory = value; }

    // Reading a file's pair through the setters in file order would lose legal pairs, so MinSteps is kept and
    // applied once more behind MaxSteps, and the other way round.
    void SetFiledMinSteps(int value);
    void SetFiledMaxSteps(int value);

    /// Gives everything its default but CurrSerIndex, which the graph resets.
    XYGRAPH_EXPORT void ResetToDefaults();

private:
    bool StoreXAxisSerIndex(int value);

    friend std::span<const TSectionRow<TAppearance>> AppearanceRows();

    bool m_allowDuplicates{};
    int m_xAxisSerIndex = 0;
    int m_currSerIndex = 0;
    int m_holdXAxisSerIndex = 0;
    int m_holdCurrSerIndex = 0;
    int m_filedMinSteps = 0;
    int m_filedMaxSteps = 0;
    TColor m_axesColor{};
    TColor m_backgroundColor{};
    TColor m_marginColor{};
    bool m_printBkgndColor{};
    std::string m_bkgdImageFile;
    bool m_stretchBkgd{};
    std::string m_errorCaption;
    TColor m_gridColor{};
    TPenStyle m_gridStyle{};
    bool m_showGraphLabels{};
    bool m_plotOffGraph{};
    bool m_showMarks{};
    bool m_showTicks{};
    bool m_showFrame{};
    bool m_ticksInside{};
    TFitBands m_fitBands{};
    bool m_showResiduals{};
    std::string m_graphTitle;
    int m_minSteps{};
    int m_maxSteps{};
    TFontSpec m_titleFont;
    TFontSpec m_captionFont;
    TFontSpec m_labelFont;
    bool m_crossAtZero{};
    TColor m_crossColor{};
    int m_crossLength{};
    bool m_printLineStyle{};
    std::string m_dataDirectory;
};

} // namespace lumoplot
