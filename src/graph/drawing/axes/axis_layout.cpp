#include "graph/drawing/axes/axis_layout.h"

#include "graph/model/appearance.h"
#include "graph/model/dimensions.h"
#include "graph/model/graph.h"

#include <algorithm>
#include <cmath>

namespace lumoplot {
namespace {

constexpr double kLabelGapX = 0.7; // between neighbouring labels, in ems
constexpr double kLabelGapY = 0.25;

double CrossingPlace(const TAxis& axis, const TScaleMap& crossing) {
    const double span = crossing.Position(crossing.Max()) - crossing.Position(crossing.Min());
    double fraction = 0;
    switch (axis.OffsetType()) {
    case TAxis::ao_Minimum: break;
    case TAxis::ao_Maximum: fraction = 1; break;
    case TAxis::ao_percentage: fraction = axis.Offset() / 100; break;
    case TAxis::ao_absolute: fraction = crossing.Fraction(axis.Offset()); break;
    }
    fraction = std::isnan(fraction) ? 0 : std::clamp(fraction, 0.0, 1.0);
    return crossing.Position(crossing.Min()) + fraction * span;
}

bool IsDefaultName(const QString& name) {
    return name.startsWith(QLatin1String("DataSet ")) || name == QLatin1String("UnNamed Series");
}

bool IsDefaultTitle(const std::string& title) {
    return title.empty() || title == "X axis" || title == "Y axis" || title == "Y2 axis";
}

const TSeries* NamingSeries(const TAxis& axis) {
    const TxyGraph& graph = axis.Graph();
    if (axis.Role() == TAxisRole::X) return graph.FindSeries(graph.Appearance()->XAxisSerIndex());
    const TSeries* only = nullptr;
    for (const auto& series : graph.Series()) {
        if (!series->Active() || series->Count() == 0 || series->YAxisOfSeries() != &axis) continue;
        if (only) return nullptr;
        only = series.get();
    }
    return only;
}

} // namespace

TAxisFonts::TAxisFonts(const TxyGraph& graph)
    : Labels(graph.Appearance()->LabelFont()), Titles(graph.Appearance()->TitleFont()) {
}

TScaleMap MapOf(const TAxis& axis, const QRectF& plot) {
    const bool isX = axis.Role() == TAxisRole::X;
    double from = isX ? plot.left() : plot.bottom();
    double to = isX ? plot.right() : plot.top();
    // The second Y axis always rises; its flag says on which side its labels are.
    if (axis.Reversed() && !axis.IsSecondY()) std::swap(from, to);
    return {axis.Min(), axis.Max(), from, to, axis.LogScale() ? TScaleKind::Log : TScaleKind::Linear};
}

QString TitleOf(const TAxis& axis) {
    const QString title = QString::fromStdString(axis.Title());
    if (!axis.EnableAutoTitle() || !IsDefaultTitle(axis.Title())) return title;
    const TSeries* series = NamingSeries(axis);
    const QString name = series ? QString::fromStdString(series->SeriesName()) : QString();
    return name.isEmpty() || IsDefaultName(name) ? title : name;
}

TAxisLayout::TAxisLayout(const TAxis& axis, const QRectF& bounds, const QRectF& plot,
                         const TScaleMap& crossing, const TAxisFonts& fonts)
    : m_axis(&axis), m_map(MapOf(axis, plot)) {
    const TAppearance& appearance = *axis.Graph().Appearance();
    const TDimensions& dimensions = *axis.Graph().Dimensions();
    ChooseSide(plot, crossing);
    m_tickLength = appearance.ShowTicks() ? dimensions.TickLength() : 0;
    m_labelOffset = IsHorizontal() ? dimensions.XAxisLabelOffset() : dimensions.YAxisLabelOffset();
    m_showsLabels = axis.ShowAxis() && appearance.ShowGraphLabels();
    if (m_showsLabels) m_title = TitleOf(axis);
    FitTicks(IsHorizontal() ? plot.width() : plot.height(), fonts);
    DropLabelsOnLines(plot);
    PlaceTexts(bounds, plot, fonts);
}

void TAxisLayout::ChooseSide(const QRectF& plot, const TScaleMap& crossing) {
    m_line = CrossingPlace(*m_axis, crossing);
    constexpr double kAtEdge = 0.5;
    if (IsHorizontal())
        m_side = m_line < plot.top() + kAtEdge ? TAxisSide::Above : TAxisSide::Below;
    else if (m_axis->IsSecondY())
        m_side = m_axis->Reversed() ? TAxisSide::Right : TAxisSide::Left;
    else
        m_side = m_line > plot.right() - kAtEdge ? TAxisSide::Right : TAxisSide::Left;
}

void TAxisLayout::FitTicks(double length, const TAxisFonts& fonts) {
    const TTickRules rules = TickRulesOf(*m_axis);
    for (int coarseness = 0; coarseness <= kCoarsest; ++coarseness) {
        m_ticks = ChooseTicks(rules, length, coarseness);
        if (!m_showsLabels || !LabelsOverlap(fonts)) return;
    }
}

bool TAxisLayout::LabelsOverlap(const TAxisFonts& fonts) const {
    const TTextStyle& style = fonts.Labels;
    const double gap = style.Em() * (IsHorizontal() ? kLabelGapX : kLabelGapY);
    double previousEnd = -HUGE_VAL;
    double previousStart = HUGE_VAL;
    for (const TTick& tick : m_ticks) {
        if (tick.Label.IsEmpty()) continue;
        const double half = (IsHorizontal() ? style.Width(tick.Label) : style.CapHeight()) / 2;
        const double place = m_map.Position(tick.Value);
        const bool overlaps = place - half < previousEnd + gap && place + half > previousStart - gap;
        if (overlaps) return true;
        previousEnd = place + half;
        previousStart = place - half;
    }
    return false;
}

QRectF TAxisLayout::LabelPlace(const TTick& tick, const TAxisFonts& fonts) const {
    const double width = fonts.Labels.Width(tick.Label);
    const double height = fonts.Labels.Height();
    const double place = m_map.Position(tick.Value);
    const double distance = m_tickLength + m_labelOffset;
    switch (m_side) {
    case TAxisSide::Below: return {place - width / 2, m_line + distance, width, height};
    case TAxisSide::Above: return {place - width / 2, m_line - distance - height, width, height};
    case TAxisSide::Left: return {m_line - distance - width, place - height / 2, width, height};
    case TAxisSide::Right: break;
    }
    return {m_line + distance, place - height / 2, width, height};
}

// Beside an axis that runs through the plot, the labels at its two ends would lie on the lines of other axes.
void TAxisLayout::DropLabelsOnLines(const QRectF& plot) {
    const bool isInside = IsHorizontal() ? m_line > plot.top() + 1 && m_line < plot.bottom() - 1
                                         : m_line > plot.left() + 1 && m_line < plot.right() - 1;
    if (!isInside) return;
    const double reach = 1 / (IsHorizontal() ? plot.width() : plot.height());
    for (TTick& tick : m_ticks) {
        const double fraction = m_map.Fraction(tick.Value);
        if (fraction < reach || fraction > 1 - reach) tick.Label = {};
    }
}

void TAxisLayout::PlaceTexts(const QRectF& bounds, const QRectF& plot, const TAxisFonts& fonts) {
    if (!m_showsLabels) return;
    QRectF labels;
    for (const TTick& tick : m_ticks)
        if (!tick.Label.IsEmpty()) labels |= LabelPlace(tick, fonts);
    m_textPlace = labels;
    if (m_title.isEmpty()) return;
    const TDimensions& dimensions = *m_axis->Graph().Dimensions();
    const double offset = IsHorizontal() ? dimensions.XAxisTitleOffset() : dimensions.YAxisTitleOffset();
    const double height = fonts.Titles.Height();
    // A title lies behind the labels and never inside the plot.
    const QRectF inner = labels.isNull() ? plot : labels | plot;
    // It is centred on the plot; one that is longer may go on to the right and downwards, where no title of
    // another kind stands.
    const double width = fonts.Titles.Width(m_title);
    const double right = width > plot.width() ? bounds.right() : plot.right();
    const double bottom = width > plot.height() ? bounds.bottom() : plot.bottom();
    const QRectF along(plot.topLeft(), QPointF(right, bottom));
    switch (m_side) {
    case TAxisSide::Below:
        m_titlePlace = {along.left(), inner.bottom() + offset, along.width(), height};
        break;
    case TAxisSide::Above:
        m_titlePlace = {along.left(), inner.top() - offset - height, along.width(), height};
        break;
    case TAxisSide::Left:
        m_titlePlace = {inner.left() - offset - height, along.top(), height, along.height()};
        break;
    case TAxisSide::Right:
        m_titlePlace = {inner.right() + offset, along.top(), height, along.height()};
        break;
    }
    m_textPlace |= m_titlePlace;
}

void TAxisLayout::MoveOutwards(double distance) {
    const bool towardsZero = m_side == TAxisSide::Left || m_side == TAxisSide::Above;
    const double move = towardsZero ? -distance : distance;
    m_line += move;
    const QPointF shift = IsHorizontal() ? QPointF(0, move) : QPointF(move, 0);
    m_titlePlace.translate(shift);
    m_textPlace.translate(shift);
}

} // namespace lumoplot
