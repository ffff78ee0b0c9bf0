// One axis of a graph: X, Y or the second Y. Holds the displayed range, how it follows the data, and how
// labels, ticks and the axis line look. Owned by its graph.
#pragma once

#include "graph/model/settings.h"

namespace lumoplot {

enum class TAxisRole { X, Y, SecondY };

class TAxis : public TGraphSettings {
    Q_OBJECT

public:
    enum TLabelFormat : int { lfFixed, lfExp, lfAuto };
    enum Dateticks : int {
        dt_minute,
        dt_5minute,
        dt_halfhourly,
        dt_hourly,
        dt_daily,
        dt_weekly,
        dt_monthly,
        dt_2monthly,
        dt_quarterly,
        dt_annually,
        dt_decade,
        dt_century,
        dt_custom
    };
    enum TAxisOffsetType : int { ao_Minimum, ao_Maximum, ao_percentage, ao_absolute };

    TAxis(TxyGraph& graph, TAxisRole role);

    TAxisRole Role() const { return m_role; }
    /// True only for the second Y axis.
    bool IsSecondY() const { return m_role == TAxisRole::SecondY; }

    const std::string& Title() const { return m_title; }
    int LabelDecimals() const { return m_labelDecimals; }
    bool AutoLabelDecimals() const { return m_autoLabelDecimals; }
    int LogCycleDivisions() const { return m_logCycleDivisions; }
    bool LogScale() const { return m_logScale; }
    TLabelFormat LabelFormat() const { return m_labelFormat; }
    double Max() const { return m_max; }
    double Min() const { return m_min; }
    double StepSize() const { return m_stepSize; }
    double MinScaleLength() const { return m_minScaleLength; }
    bool ShowAsTime() const { return m_showAsTime; }
    const std::string& DateTimeFormat() const { return m_dateTimeFormat; }
    Dateticks DateTickType() const { return m_dateTickType; }
    bool EnableAutoTitle() const { return m_enableAutoTitle; }
    bool ShowAxis() const { return m_showAxis; }
    bool Reversed() const { return m_reversed; }
    TAxisOffsetType OffsetType() const { return m_offsetType; }
    double Offset() const { return m_offset; }
    bool Gridlines() const { return m_gridlines; }
    bool AutoSizing() const { return m_autoSizing; }
    bool AutoStepping() const { return m_autoStepping; }
    /// The automatic range ends at the data and not at the ticks around them. Linear axes only.
    bool TightRange() const { return m_tightRange; }

    void SetTitle(const std::string& value) { Store(m_title, value); }
    void SetLabelDecimals(int value) { Store(m_labelDecimals, value); }
    void SetAutoLabelDecimals(bool value) { Store(m_autoLabelDecimals, value); }
    void SetLogCycleDivisions(int value) { StoreWord(m_logCycleDivisions, value); }
    /// Switching on moves a Min that is not positive to 0.001 x Max, after a Max that is not positive
    /// became 10.
    XYGRAPH_EXPORT void SetLogScale(bool value);
    void SetLabelFormat(TLabelFormat value) { StoreEnum(m_labelFormat, value, lfAuto); }
    /// Setting Min or Max turns AutoSizing off, also for an equal value; what is not finite is ignored. No
    /// step can be found for a Min that is not below Max: then AutoSizing and AutoStepping are turned on,
    /// until the other end of the range is set. With a usable step of the user's it stays as it is.
    XYGRAPH_EXPORT void SetMax(double value);
    XYGRAPH_EXPORT void SetMin(double value);
    /// Turns AutoStepping off, also for an equal value; what is not finite is ignored.
    XYGRAPH_EXPORT void SetStepSize(double value);
    XYGRAPH_EXPORT void SetMinScaleLength(double value);
    void SetShowAsTime(bool value) { Store(m_showAsTime, value); }
    void SetDateTimeFormat(const std::string& value) { Store(m_dateTimeFormat, value); }
    void SetDateTickType(Dateticks value) { StoreEnum(m_dateTickType, value, dt_custom); }
    void SetEnableAutoTitle(bool value) { Store(m_enableAutoTitle, value); }
    void SetShowAxis(bool value) { Store(m_showAxis, value); }
    void SetReversed(bool value) { Store(m_reversed, value); }
    void SetOffsetType(TAxisOffsetType value) { StoreEnum(m_offsetType, value, ao_absolute); }
    void SetOffset(double value) { Store(m_offset, value); }
    void SetGridlines(bool value) { Store(m_gridlines, value); }
    void SetAutoSizing(bool value) {
        if (Store(m_autoSizing, value)) AskForScaling();
    }
    void SetAutoStepping(bool value) {
        if (Store(m_autoStepping, value)) AskForScaling();
    }
    void SetTightRange(bool value) {
        if (Store(m_tightRange, value)) AskForScaling();
    }

    XYGRAPH_EXPORT void ResetToDefaults();

    // Scaling, run by the graph before it draws.

    /// Smallest and largest value of the data shown on this axis, as the graph collected them; min > max for
    /// none.
    double DataMin() const { return m_dataMin; }
    double DataMax() const { return m_dataMax; }
    void SetDataExtent(double min, double max);
    void ClearDataExtent();
    bool HasData() const { return m_dataMin <= m_dataMax; }
    /// Brings the range and the step up to date with the data and the settings. Redraws nothing.
    /// Throws EScaleError with the texts of AutoRange, or TITLE + "Axis MIN exceeds axis MAX".
    void Rescale();

private:
    friend std::span<const TSectionRow<TAxis>> AxisRows();

    void CheckRange() const;
    void ApplyAutoRange();
    void ApplyAutoLogRange();
    void ApplyMinScaleLength();
    void UpdateStep();

    TAxisRole m_role;
    std::string m_title;
    int m_labelDecimals{};
    bool m_autoLabelDecimals{};
    int m_logCycleDivisions{};
    bool m_logScale{};
    TLabelFormat m_labelFormat{};
    double m_max{};
    double m_min{};
    double m_stepSize{};
    double m_minScaleLength{};
    bool m_showAsTime{};
    std::string m_dateTimeFormat;
    Dateticks m_dateTickType{};
    bool m_enableAutoTitle{};
    bool m_showAxis{};
    bool m_reversed{};
    TAxisOffsetType m_offsetType{};
    double m_offset{};
    bool m_gridlines{};
    bool m_autoSizing{};
    bool m_autoStepping{};
    bool m_tightRange{};
    double m_dataMin = 0;
    double m_dataMax = -1;
};

} // namespace lumoplot
