#include "graph/drawing/axes/axis_layout.h"

#include "graph/model/appearance.h"
#include "graph/model/graph.h"
#include "graph/model/settings.h"

#include <algorithm>
#include <cmath>

namespace lumoplot {
namespace {

constexpr double kLabelGapX = 0.7; // between neighbouring labels, in ems
constexpr double kLabelGapY = 0.4;
constexpr double kOffLine = 3;      // units between a label and a line that crosses its axis
constexpr double kBareHeight = 0.2; // of a line of text, above and below its digits
constexpr double kInsideGap = 3;    // units between an axis whose ticks point inside and its labels
constexpr double kBetweenX = 2;     // units between labels of different axes
constexpr double kBetweenY = 1;
constexpr double kRaised = 0.3; // ems by which an exponent stands higher than the digits

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

// What a line of text fills of its place: digits leave its upper and lower part free, exponents do not.
QRectF LettersIn(const QRectF& line, bool hasExponent) {
    const double bare = kBareHeight * line.height();
    return line.adjusted(0, hasExponent ? 0 : bare, 0, -bare);
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
        only = series;
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
    m_ticksInside = appearance.TicksInside();
    m_labelOffset = IsHorizontal() ? dimensions.XAxisLabelOffset() : dimensions.YAxisLabelOffset();
    m_showsLabels = axis.ShowAxis() && appearance.ShowGraphLabels();
    if (m_showsLabels) m_title = TitleOf(axis);
    FitTicks(IsHorizontal() ? plot.width() : plot.height(), fonts);
    DropLabelsOnLines(plot, fonts);
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
    TTickRules rules = TickRulesOf(*m_axis);
    rules.Numbers.CommonPart = TCommonPart::Once;
    for (int coarseness = 0; coarseness <= kCoarsest; ++coarseness) {
        TTicks ticks = ChooseTicks(rules, length, coarseness);
        m_ticks = std::move(ticks.All);
        m_common = std::move(ticks.Common);
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
        const double high = style.CapHeight() + (tick.Label.Exponent.isEmpty() ? 0 : kRaised * style.Em());
        const double half = (IsHorizontal() ? style.Width(tick.Label) : high) / 2;
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
    double place = m_map.Position(tick.Value);
    for (const double line : m_crossings)
        if (std::abs(line - place) < width / 2 + kOffLine) place = line - kOffLine - width / 2;
    const double distance = (m_ticksInside ? kInsideGap : m_tickLength) + m_labelOffset;
    switch (m_side) {
    case TAxisSide::Below: return {place - width / 2, m_line + distance, width, height};
    case TAxisSide::Above: return {place - width / 2, m_line - distance - height, width, height};
    case TAxisSide::Left: return {m_line - distance - width, place - height / 2, width, height};
    case TAxisSide::Right: break;
    }
    return {m_line + distance, place - height / 2, width, height};
}

bool TAxisLayout::IsInside(const QRectF& plot) const {
    return IsHorizontal() ? m_line > plot.top() + 1 && m_line < plot.bottom() - 1
                          : m_line > plot.left() + 1 && m_line < plot.right() - 1;
}

bool TAxisLayout::HasLabelsInside(const QRectF& plot) const {
    if (IsInside(plot)) return true;
    const bool isAtRight = m_line > plot.center().x();
    return (m_side == TAxisSide::Left && isAtRight) || (m_side == TAxisSide::Right && !isAtRight);
}

QRectF TAxisLayout::LinePlace(const QRectF& plot) const {
    const double reach = m_tickLength + 1;
    return IsHorizontal() ? QRectF(plot.left(), m_line - reach, plot.width(), 2 * reach)
                          : QRectF(m_line - reach, plot.top(), 2 * reach, plot.height());
}

void TAxisLayout::KeepLabelsOff(const TAxisLayout& crossing, const QRectF& plot, const TAxisFonts& fonts) {
    if (!m_showsLabels || !crossing.Axis().ShowAxis() || !HasLabelsInside(plot) || !crossing.IsInside(plot))
        return;
    if (IsHorizontal()) return m_crossings.push_back(crossing.Line());
    for (TTick& tick : m_ticks) {
        const QRectF place = LabelPlace(tick, fonts);
        if (place.top() < crossing.Line() && place.bottom() > crossing.Line()) tick.Label = {};
    }
}

// Of labels in the plot those that reach over its edges would lie on the lines of other axes.
void TAxisLayout::DropLabelsOnLines(const QRectF& plot, const TAxisFonts& fonts) {
    if (!HasLabelsInside(plot)) return;
    const double high = fonts.Labels.CapHeight() / 2;
    for (TTick& tick : m_ticks) {
        if (tick.Label.IsEmpty()) continue;
        const QRectF place = LabelPlace(tick, fonts);
        const bool isOver = IsHorizontal() ? place.left() <= plot.left() || place.right() >= plot.right()
                                           : place.center().y() - high <= plot.top() ||
                                                 place.center().y() + high >= plot.bottom();
        if (isOver) tick.Label = {};
    }
}

void TAxisLayout::PlaceTexts(const QRectF& bounds, const QRectF& plot, const TAxisFonts& fonts) {
    if (!m_showsLabels) return;
    QRectF labels;
    for (const TTick& tick : m_ticks)
        if (!tick.Label.IsEmpty()) labels |= LabelPlace(tick, fonts);
    if (!m_common.isEmpty()) PlaceCommon(plot, labels, fonts);
    m_textPlace = labels | m_commonPlace;
    if (m_title.isEmpty()) return;
    const TDimensions& dimensions = *m_axis->Graph().Dimensions();
    const double offset = IsHorizontal() ? dimensions.XAxisTitleOffset() : dimensions.YAxisTitleOffset();
    const double height = fonts.Titles.Height(m_title);
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
        // Labels inside the plot leave the other side of their axis to its title.
        if (m_line > plot.center().x()) {
            m_titlePlace = {plot.right() + offset, along.top(), height, along.height()};
            break;
        }
        m_titlePlace = {inner.left() - offset - height, along.top(), height, along.height()};
        break;
    case TAxisSide::Right:
        if (m_line < plot.center().x()) {
            m_titlePlace = {plot.left() - offset - height, along.top(), height, along.height()};
            break;
        }
        m_titlePlace = {inner.right() + offset, along.top(), height, along.height()};
        break;
    }
    KeepTitleOffCommon(fonts);
    m_textPlace |= m_titlePlace;
}

// Beside the end of a horizontal axis' labels, above those of a vertical one.
void TAxisLayout::PlaceCommon(const QRectF& plot, const QRectF& labels, const TAxisFonts& fonts) {
    const double width = fonts.Labels.Width(m_common);
    const double height = fonts.Labels.Height();
    switch (m_side) {
    case TAxisSide::Below: m_commonPlace = {plot.right() - width, labels.bottom(), width, height}; break;
    case TAxisSide::Above:
        m_commonPlace = {plot.right() - width, labels.top() - height, width, height};
        break;
    case TAxisSide::Left:
        m_commonPlace = {labels.left(), std::min(labels.top(), plot.top()) - height, width, height};
        break;
    case TAxisSide::Right:
        m_commonPlace = {labels.right() - width, std::min(labels.top(), plot.top()) - height, width, height};
        break;
    }
}

void TAxisLayout::KeepCommonAbove(double top) {
    if (m_commonPlace.isNull() || m_commonPlace.bottom() <= top) return;
    m_commonPlace.moveBottom(top);
    m_textPlace |= m_commonPlace;
}

void TAxisLayout::KeepTitleOff(const TAxisLayout& other) {
    if (m_titlePlace.isNull() || !m_titlePlace.intersects(other.TextPlace())) return;
    const double gap = m_titlePlace.width() / 3;
    if (m_titlePlace.left() >= m_line)
        m_titlePlace.moveLeft(other.TextPlace().right() + gap);
    else
        m_titlePlace.moveRight(other.TextPlace().left() - gap);
    m_textPlace |= m_titlePlace;
}

void TAxisLayout::KeepTitleOffCommon(const TAxisFonts& fonts) {
    if (m_common.isEmpty() || !IsHorizontal()) return;
    const double width = fonts.Titles.Width(m_title) + 2 * fonts.Titles.Em();
    const double height = m_titlePlace.height();
    const QRectF text(m_titlePlace.center().x() - width / 2, m_titlePlace.top(), width, height);
    if (!text.intersects(m_commonPlace)) return;
    m_titlePlace.moveTop(m_side == TAxisSide::Below ? m_commonPlace.bottom() : m_commonPlace.top() - height);
}

void TAxisLayout::KeepLabelsOffTexts(std::vector<QRectF>& texts, const TAxisFonts& fonts) {
    if (!m_showsLabels) return;
    for (TTick& tick : m_ticks) {
        if (tick.Label.IsEmpty()) continue;
        const QRectF letters = LettersIn(LabelPlace(tick, fonts), !tick.Label.Exponent.isEmpty());
        const QRectF wide = letters.adjusted(-kBetweenX, -kBetweenY, kBetweenX, kBetweenY);
        if (std::ranges::any_of(texts, [&](const QRectF& text) { return text.intersects(wide); }))
            tick.Label = {};
        else
            texts.push_back(letters);
    }
}

void TAxisLayout::AddOtherTexts(std::vector<QRectF>& texts, const TAxisFonts& fonts) const {
    if (!m_showsLabels) return;
    if (!m_common.isEmpty()) texts.push_back(LettersIn(m_commonPlace, m_common.contains(u'^')));
    if (m_title.isEmpty()) return;
    QRectF title = m_titlePlace;
    const double length = fonts.Titles.Width(m_title);
    if (IsHorizontal())
        title.setWidth(length);
    else
        title.setHeight(length);
    title.moveCenter(m_titlePlace.center());
    texts.push_back(title);
}

void TAxisLayout::MoveOutwards(double distance) {
    const bool towardsZero = m_side == TAxisSide::Left || m_side == TAxisSide::Above;
    const double move = towardsZero ? -distance : distance;
    m_line += move;
    const QPointF shift = IsHorizontal() ? QPointF(0, move) : QPointF(move, 0);
    m_titlePlace.translate(shift);
    m_commonPlace.translate(shift);
    m_textPlace.translate(shift);
}

} // namespace lumoplot
