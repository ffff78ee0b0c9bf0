// Where one axis, its ticks, its labels and its title lie in a graph with a given plot rectangle.
#pragma once

#include "graph/drawing/axes/text.h"
#include "graph/drawing/axes/ticks.h"
#include "graph/plotted/scale_map.h"

#include <QRectF>
#include <vector>

namespace lumoplot {

class TxyGraph;

/// On which side of its line an axis has its ticks, labels and title.
enum class TAxisSide { Below, Above, Left, Right };

/// The fonts of a graph's axes.
struct TAxisFonts {
    explicit TAxisFonts(const TxyGraph& graph);

    TTextStyle Labels;
    TTextStyle Titles;
};

class TAxisLayout {
public:
    /// The map covers the whole side of the plot rectangle inside the graph's `bounds`; `crossing` is that of
    /// the axis at right angles. The axis must have a consistent range.
    TAxisLayout(const TAxis& axis, const QRectF& bounds, const QRectF& plot, const TScaleMap& crossing,
                const TAxisFonts& fonts);

    const TAxis& Axis() const { return *m_axis; }
    bool IsHorizontal() const { return m_axis->Role() == TAxisRole::X; }
    const TScaleMap& Map() const { return m_map; }
    TAxisSide Side() const { return m_side; }
    /// Where the axis line crosses the other axis: y of a horizontal axis, x of a vertical one.
    double Line() const { return m_line; }
    /// The line runs through the plot and not along its edge.
    bool IsInside(const QRectF& plot) const;
    /// The labels lie in the plot.
    bool HasLabelsInside(const QRectF& plot) const;
    /// The line with its ticks.
    QRectF LinePlace(const QRectF& plot) const;
    const std::vector<TTick>& Ticks() const { return m_ticks; }
    double TickLength() const { return m_tickLength; }
    bool TicksInside() const { return m_ticksInside; }
    /// Where the label of a tick lies.
    QRectF LabelPlace(const TTick& tick, const TAxisFonts& fonts) const;
    const QString& Title() const { return m_title; }
    QRectF TitlePlace() const { return m_titlePlace; }
    /// What belongs to all labels ("×10^{6}"), and where it is written: beyond the upper end of the axis.
    const QString& Common() const { return m_common; }
    QRectF CommonPlace() const { return m_commonPlace; }
    /// Everything that the axis covers beside its plot.
    QRectF TextPlace() const { return m_textPlace; }
    /// Keeps the labels off the line of an axis that crosses this one inside the plot: those of a horizontal
    /// axis move to its left, of a vertical one they are left out.
    void KeepLabelsOff(const TAxisLayout& crossing, const QRectF& plot, const TAxisFonts& fonts);
    /// Moves what is common to the labels of a vertical axis up to there.
    void KeepCommonAbove(double top);
    /// Moves the title of a vertical axis outwards, behind the texts of another one.
    void KeepTitleOff(const TAxisLayout& other);
    /// Leaves out labels that would lie on `texts` or on each other, and adds the others to them.
    void KeepLabelsOffTexts(std::vector<QRectF>& texts, const TAxisFonts& fonts);
    /// Where the letters of the title and of what labels share lie.
    void AddOtherTexts(std::vector<QRectF>& texts, const TAxisFonts& fonts) const;
    /// Moves line, labels and title away from the plot, behind an axis that lies at the same place.
    void MoveOutwards(double distance);

private:
    void ChooseSide(const QRectF& plot, const TScaleMap& crossing);
    void FitTicks(double length, const TAxisFonts& fonts);
    bool LabelsOverlap(const TAxisFonts& fonts) const;
    void DropLabelsOnLines(const QRectF& plot, const TAxisFonts& fonts);
    void PlaceCommon(const QRectF& plot, const QRectF& labels, const TAxisFonts& fonts);
    void KeepTitleOffCommon(const TAxisFonts& fonts);
    void PlaceTexts(const QRectF& bounds, const QRectF& plot, const TAxisFonts& fonts);

    const TAxis* m_axis;
    TScaleMap m_map;
    TAxisSide m_side = TAxisSide::Below;
    double m_line = 0;
    double m_tickLength = 0;
    bool m_ticksInside = false;
    double m_labelOffset = 0;
    std::vector<double> m_crossings; ///< lines that labels keep off
    bool m_showsLabels = false;
    std::vector<TTick> m_ticks;
    QString m_title;
    QString m_common;
    QRectF m_commonPlace;
    QRectF m_titlePlace;
    QRectF m_textPlace;
};

/// The scale map of an axis along its side of the plot rectangle.
TScaleMap MapOf(const TAxis& axis, const QRectF& plot);
/// The title that an axis is drawn with: with EnableAutoTitle, the name of the only data set on a Y axis (of
/// the X data set on the X axis) stands in for an empty title or the one of a new graph.
QString TitleOf(const TAxis& axis);

} // namespace lumoplot
