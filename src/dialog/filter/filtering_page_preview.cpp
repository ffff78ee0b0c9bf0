#include "dialog/filter/filtering_page_preview.h"

#include "controls/texts.h"
#include "graph/drawing/picture/graph_layout.h"

#include <QEvent>
#include <QPainter>
#include <algorithm>
#include <cmath>

namespace lumoplot {
namespace {

/// Smaller amplitudes than this part of the largest one are rounding and not worth a place.
constexpr double kSmallestShown = 1e-6;
/// So many decades are shown in any case.
constexpr double kLeastRange = 1e-2;
/// The part of the amplitudes that may lie below the axis.
constexpr double kPartBelow = 0.02;
constexpr double kLeastGainShown = 1.2;
constexpr int kBandOpacity = 48;

// Readable on light and on dark paper.
constexpr TColor kSpectrumColor = MakeColor(58, 134, 200);
constexpr TColor kGainColor = MakeColor(222, 126, 30);

QColor Between(const QColor& a, const QColor& b, double part) {
    const auto mix = [part](int from, int to) {
        return from + static_cast<int>(std::lround((to - from) * part));
    };
    return {mix(a.red(), b.red()), mix(a.green(), b.green()), mix(a.blue(), b.blue())};
}

TPointChain PointsOf(const TSpectrum& spectrum) {
    std::vector<double> frequencies(spectrum.Values.size());
    for (std::size_t i = 0; i < frequencies.size(); ++i)
        frequencies[i] = static_cast<double>(i) * spectrum.Step;
    TPointChain points;
    points.AddAll(frequencies, spectrum.Values, {});
    return points;
}

} // namespace

TFilterPreview::TFilterPreview(QWidget* parent)
    : TxyGraph(parent), m_amplitudes(AddCurve(TTexts::tr("Amplitude").toStdString(), YAxis())),
      m_gains(AddCurve(TTexts::tr("Gain").toStdString(), YAxis_Second())) {
    m_amplitudes.SetLineColor(kSpectrumColor);
    m_amplitudes.SetLineWidth(1);
    m_gains.SetLineColor(kGainColor);
    m_gains.SetLineWidth(2);
    XAxis()->SetTitle(TTexts::tr("Frequency").toStdString());
    YAxis()->SetTitle(TTexts::tr("Amplitude").toStdString());
    YAxis_Second()->SetTitle(TTexts::tr("Gain").toStdString());
    YAxis()->SetLogScale(true);
    YAxis_Second()->SetGridlines(false);
    Appearance()->SetGraphTitle({});
    YAxis_Second()->SetShowAxis(true);
    Legend()->Setvisible(true);
    Legend()->Settop(2);
    Legend()->Setwidth(0); // as wide as its entries
    TakeThemeColors();
    connect(this, &TxyGraph::OnPaintEnd, this, [this](QPainter* painter) { PaintBand(*painter); });
    ShowNothing();
}

TSeries& TFilterPreview::AddCurve(const std::string& name, TAxis* axis) {
    TSeries& curve = *FindSeries(AddSeries());
    curve.SetSeriesName(name);
    curve.SetYAxisOfSeries(axis);
    curve.SetShowInLegend(true);
    return curve;
}

void TFilterPreview::TakeThemeColors() {
    const QColor paper = palette().color(QPalette::Base);
    const QColor ink = palette().color(QPalette::Text);
    TFontSpec font;
    font.Name = QFontInfo(this->font()).family().toStdString();
    font.Size = QFontInfo(this->font()).pixelSize();
    font.Color = ToColor(ink);
    TAppearance& appearance = *Appearance();
    appearance.SetBackgroundColor(ToColor(paper));
    appearance.SetMarginColor(ToColor(paper));
    appearance.SetAxesColor(ToColor(Between(paper, ink, 0.6)));
    appearance.SetGridColor(ToColor(Between(paper, ink, 0.12)));
    appearance.SetLabelFont(font);
    appearance.SetTitleFont(font);
    Legend()->Setfont(font);
    Legend()->Setcolor(ToColor(paper));
    Legend()->Setheight(font.Size + 6);
    Dimensions()->SetTopMargin(2 * font.Size + 12);
}

void TFilterPreview::changeEvent(QEvent* event) {
    TxyGraph::changeEvent(event);
    if (event->type() == QEvent::PaletteChange || event->type() == QEvent::FontChange) TakeThemeColors();
}

void TFilterPreview::ShowSpectrum(const TSpectrum& amplitudes) {
    m_amplitudes.SwapPoints(PointsOf(amplitudes));
    FitAmplitudes(amplitudes);
}

/// The noise floor and all that rises above it.
void TFilterPreview::FitAmplitudes(const TSpectrum& amplitudes) {
    std::vector<double> values = amplitudes.Values;
    std::erase_if(values, [](double value) { return !(value > 0) || !std::isfinite(value); });
    if (values.empty()) return;
    const auto low =
        values.begin() + static_cast<std::ptrdiff_t>(static_cast<double>(values.size() - 1) * kPartBelow);
    std::nth_element(values.begin(), low, values.end());
    const double largest = *std::max_element(low, values.end());
    const double smallest = std::clamp(*low, largest * kSmallestShown, largest * kLeastRange);
    YAxis()->SetMax(std::pow(10, std::ceil(std::log10(largest))));
    YAxis()->SetMin(std::pow(10, std::floor(std::log10(smallest))));
}

void TFilterPreview::ShowResponse(const TSpectrum& gains, const TBandFilterSettings& settings) {
    m_gains.SwapPoints(PointsOf(gains));
    m_low = std::min(settings.LowFreq, settings.HighFreq);
    m_high = std::max(settings.LowFreq, settings.HighFreq);
    const double largest = *std::max_element(gains.Values.begin(), gains.Values.end());
    if (std::isfinite(largest)) {
        YAxis_Second()->SetMin(0);
        YAxis_Second()->SetMax(std::max(kLeastGainShown, 1.05 * largest));
    }
    XAxis()->SetMin(0);
    XAxis()->SetMax(gains.Step * static_cast<double>(gains.Values.size() - 1));
}

void TFilterPreview::ShowNothing() {
    m_amplitudes.Clear();
    m_gains.Clear();
    m_low = m_high = 0;
}

/// Frequencies below 0 are those above it, mirrored.
void TFilterPreview::PaintBand(QPainter& painter) const {
    if (ScaleFailed() || m_gains.Count() == 0) return;
    const TGraphLayout layout(TCanvas(painter, TDrawPurpose::Show), *this, rect());
    if (!layout.HasPlot()) return;
    QColor tint = ToQColor(kGainColor);
    tint.setAlpha(kBandOpacity);
    const TScaleMap& map = layout.Axes().X.Map();
    for (const auto& [low, high] : {std::pair{m_low, m_high}, {-m_high, -m_low}}) {
        const double from = std::max(low, map.Min());
        const double to = std::min(high, map.Max());
        if (!(from < to)) continue;
        const QRectF& plot = layout.Plot();
        painter.fillRect(
            QRectF(map.Position(from), plot.top(), map.Position(to) - map.Position(from), plot.height()),
            tint);
    }
}

} // namespace lumoplot
