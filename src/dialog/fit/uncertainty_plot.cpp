#include "dialog/fit/uncertainty_plot.h"

#include "controls/texts.h"
#include "support/number_text.h"

#include <QPainter>
#include <algorithm>
#include <cmath>

namespace lumoplot {
namespace {

constexpr int kFewestBars = 8;
constexpr int kMostBars = 60;
constexpr int kLabelDigits = 4;
constexpr double kFarOutside = 100;  // times what is drawn: no number for a painter beyond that
constexpr double kTailShare = 0.002; // of the resamples, beyond each end of what is drawn

} // namespace

void TUncertaintyPlot::SetName(const QString& name) {
    m_name = name;
    update();
}

void TUncertaintyPlot::ShowProfile(const TProfile& profile) {
    m_profile = profile;
    update();
}

void TUncertaintyPlot::ShowSample(const std::vector<double>& values, TInterval interval) {
    m_sample = values;
    std::ranges::sort(m_sample);
    m_interval = interval;
    update();
}

void TUncertaintyPlot::Clear() {
    m_profile.reset();
    m_sample.clear();
    update();
}

void TUncertaintyPlot::paintEvent(QPaintEvent*) {
    QPainter painter(this);
    painter.setRenderHint(QPainter::Antialiasing);
    const QRectF all = QRectF(rect()).adjusted(2, 2, -2, -2);
    const double half = all.width() / 2;
    PaintProfile(painter, all.adjusted(0, 0, -half - 4, 0));
    PaintSample(painter, all.adjusted(half + 4, 0, 0, 0));
}

// The title above, the range of values below; returns the place between.
QRectF TUncertaintyPlot::PaintFrame(QPainter& painter, const QRectF& room, const QString& title, double low,
                                    double high) const {
    const double text = fontMetrics().height();
    const QRectF plot = room.adjusted(4, text + 2, -4, -text - 2);
    painter.fillRect(plot, palette().color(QPalette::Base));
    painter.setPen(palette().color(QPalette::Mid));
    painter.setBrush(Qt::NoBrush);
    painter.drawRect(plot);
    painter.setPen(palette().color(QPalette::WindowText));
    painter.drawText(QRectF(room.left(), room.top(), room.width(), text), Qt::AlignCenter, title);
    const QRectF below(plot.left(), plot.bottom() + 1, plot.width(), text);
    if (std::isfinite(low) && std::isfinite(high)) {
        painter.drawText(below, Qt::AlignLeft, QString::fromStdString(FormatGeneral(low, kLabelDigits)));
        painter.drawText(below, Qt::AlignRight, QString::fromStdString(FormatGeneral(high, kLabelDigits)));
        painter.drawText(below, Qt::AlignCenter, m_name);
    }
    return plot;
}

void TUncertaintyPlot::PaintHint(QPainter& painter, const QRectF& room, const QString& hint) const {
    painter.setPen(palette().color(QPalette::PlaceholderText));
    painter.drawText(room, Qt::AlignCenter | Qt::TextWordWrap, hint);
}

void TUncertaintyPlot::PaintProfile(QPainter& painter, const QRectF& room) const {
    const QString title = TTexts::tr("Profile: deviation by value");
    if (!m_profile || m_profile->Points.size() < 2) {
        const QRectF plot = PaintFrame(painter, room, title, NAN, NAN);
        return PaintHint(painter, plot, TTexts::tr("Press Profiles"));
    }
    const double low = m_profile->Points.front().Value;
    const double high = m_profile->Points.back().Value;
    const QRectF plot = PaintFrame(painter, room, title, low, high);
    const double reach = 1.4 * m_profile->Limit;
    const auto at = [&](double value, double deviation) {
        return QPointF(plot.left() + plot.width() * (value - low) / (high - low),
                       plot.center().y() -
                           plot.height() / 2 * std::clamp(deviation / reach, -kFarOutside, kFarOutside));
    };
    painter.setPen(QPen(palette().color(QPalette::Mid), 1, Qt::DashLine));
    for (const double level : {-m_profile->Limit, 0.0, m_profile->Limit})
        painter.drawLine(at(low, level), at(high, level));
    painter.setPen(QPen(palette().color(QPalette::WindowText), 1, Qt::DotLine));
    for (const double end : {m_profile->Interval.Low, m_profile->Interval.High})
        if (std::isfinite(end) && end >= low && end <= high)
            painter.drawLine(QPointF(at(end, 0).x(), plot.top()), QPointF(at(end, 0).x(), plot.bottom()));
    QPolygonF line;
    for (const TProfilePoint& point : m_profile->Points)
        if (std::isfinite(point.Deviation)) line << at(point.Value, point.Deviation);
    painter.setPen(QPen(palette().color(QPalette::Highlight), 2));
    painter.save();
    painter.setClipRect(plot);
    painter.drawPolyline(line);
    painter.restore();
}

void TUncertaintyPlot::PaintSample(QPainter& painter, const QRectF& room) const {
    const QString title = m_sample.empty()
                              ? TTexts::tr("Bootstrap: resamples by value")
                              : TTexts::tr("Bootstrap: %1 resamples by value").arg(m_sample.size());
    if (m_sample.size() < 2) {
        const QRectF plot = PaintFrame(painter, room, title, NAN, NAN);
        return PaintHint(painter, plot, TTexts::tr("Press Bootstrap"));
    }
    const auto last = static_cast<double>(m_sample.size() - 1);
    double low = m_sample[static_cast<std::size_t>(last * kTailShare)];
    double high = m_sample[static_cast<std::size_t>(last * (1 - kTailShare))];
    if (!(low < high)) {
        low -= 0.5;
        high += 0.5;
    }
    const QRectF plot = PaintFrame(painter, room, title, low, high);
    const int bars = std::clamp(static_cast<int>(std::sqrt(last)), kFewestBars, kMostBars);
    std::vector<int> counts(static_cast<std::size_t>(bars));
    for (const double value : m_sample) {
        const double place = (value - low) / (high - low) * bars;
        if (place >= 0 && place < bars) ++counts[static_cast<std::size_t>(place)];
    }
    const double most = std::max(1, std::ranges::max(counts));
    painter.setPen(Qt::NoPen);
    painter.setBrush(palette().color(QPalette::Highlight));
    for (int i = 0; i < bars; ++i) {
        const double height = (plot.height() - 4) * counts[static_cast<std::size_t>(i)] / most;
        painter.drawRect(QRectF(plot.left() + plot.width() * i / bars, plot.bottom() - height,
                                plot.width() / bars - (bars < 40 ? 1 : 0), height));
    }
    painter.setPen(QPen(palette().color(QPalette::WindowText), 1, Qt::DotLine));
    for (const double end : {m_interval.Low, m_interval.High}) {
        const double x = plot.left() + plot.width() * (end - low) / (high - low);
        if (x >= plot.left() && x <= plot.right())
            painter.drawLine(QPointF(x, plot.top()), QPointF(x, plot.bottom()));
    }
}

} // namespace lumoplot
