// What a filter will do, drawn as a plot before it is applied: the amplitude spectrum of the data over the
// left axis, the gain of the filter over the right one, and the band between them. It follows the colours of
// the theme.
#pragma once

#include "data/filter/band_filter_spectrum.h"
#include "graph/model/graph.h"

namespace lumoplot {

class TFilterPreview : public TxyGraph {
    Q_OBJECT

public:
    explicit TFilterPreview(QWidget* parent = nullptr);

    void ShowSpectrum(const TSpectrum& amplitudes);
    /// The gains up to the highest frequency, which is where the plot ends, and the band of the settings.
    void ShowResponse(const TSpectrum& gains, const TBandFilterSettings& settings);
    /// Empties the plot.
    void ShowNothing();

protected:
    void changeEvent(QEvent* event) override;

private:
    TSeries& AddCurve(const std::string& name, TAxis* axis);
    void TakeThemeColors();
    void FitAmplitudes(const TSpectrum& amplitudes);
    void PaintBand(QPainter& painter) const;

    TSeries& m_amplitudes;
    TSeries& m_gains;
    double m_low = 0;
    double m_high = 0;
};

} // namespace lumoplot
