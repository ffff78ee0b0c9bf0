// The picture of a curve fit: the data as they are, the curve with its confidence and prediction band, and
// the residuals in a panel of their own below. It takes over what it draws and keeps no reference to the data
// set.
#pragma once

#include "graph/drawing/axes/ticks.h"
#include "graph/model/series.h"
#include "support/ranges.h"

#include <QImage>
#include <QPen>
#include <algorithm>
#include <cstdint>

class QPainter;

namespace lumoplot {

class TScaleMap;

/// Where the curve is drawn and points are taken of it: from the left to the right margin; in the place of
/// one that is not in use, the end of the data set, and without points of the X axis.
XYGRAPH_EXPORT TXRange CurveRange(const TSeries& series);

enum class TResidualsBelow { Hidden, Shown };

/// What belongs to the window that shows the picture; on paper black on white.
struct TFitPictureOptions {
    TResidualsBelow Residuals = TResidualsBelow::Shown; ///< where there is room
    QString Note;                                       ///< over the plot
    QColor Text = Qt::black;
    QColor Frame = Qt::gray;
    QColor NoteBase = Qt::white;
    QColor NoteText = Qt::black;
};

class TFitPicture {
public:
    /// The data, with their baseline taken away, and the curve of `model`, a compiled fit; null for no curve.
    /// The bands are those of the last run of the data set's fit, while nothing has changed since.
    XYGRAPH_EXPORT void Take(const TSeries& series, TCurFit* model);
    void Clear() { *this = {}; }
    /// The curve is in sight, at least a part of it.
    bool ShowsCurve() const {
        return std::ranges::any_of(m_curve, [&](const QPointF& place) {
            return place.y() >= m_yRules.Min && place.y() <= m_yRules.Max;
        });
    }
    /// Paints with the painter's font.
    XYGRAPH_EXPORT void Paint(QPainter& painter, const QRectF& place,
                              const TFitPictureOptions& options) const;

private:
    struct TLook {
        QColor Background;
        QColor Grid;
        QColor Points;
        QPen Curve;
    };
    struct TBand {
        double Confidence;
        double Prediction;
    };
    struct TPanel {
        QRectF Plot;
        TTickRules Rules; ///< of Y
        QRectF Whole;     ///< the picture
        bool IsAboveAnother;
    };

    void TakeData(const TSeries& series);
    void ChooseRanges(const TSeries& series);
    void TakeCurve(const TSeries& series, TCurFit& model);
    void TakeResiduals(TCurFit& model);
    void TakeBands(const TSeries& series);
    void TakeOutliers(const TSeries& series);
    void TakeLook(const TSeries& series);
    TTickRules ResidualRules() const;
    void PaintPanel(QPainter& painter, const TPanel& panel, const TFitPictureOptions& options) const;
    void PaintPoints(QPainter& painter, const std::vector<QPointF>& points, const TScaleMap& x,
                     const TScaleMap& y) const;
    void PaintOutliers(QPainter& painter, const TScaleMap& x, const TScaleMap& y) const;
    void PaintBands(QPainter& painter, const TScaleMap& x, const TScaleMap& y) const;
    void PaintCurve(QPainter& painter, const TScaleMap& x, const TScaleMap& y) const;
    void PaintNote(QPainter& painter, const QRectF& plot, const TFitPictureOptions& options) const;

    bool m_isEmpty = true;
    std::pair<std::uint64_t, std::uint64_t> m_dataStamps; ///< of the data set, and of the one that is its X
    std::vector<QPointF> m_points;
    std::vector<QPointF> m_curve; ///< not-a-number in Y where it has a gap
    std::vector<TBand> m_bands;   ///< half their widths at the places of the curve; may be empty
    std::vector<QPointF> m_residuals;
    std::vector<QPointF> m_outliers;
    TTickRules m_xRules;
    TTickRules m_yRules;
    TLook m_look;
};

/// The picture of the data set's fit, whose equation compiles, black on white; `size` in logical pixels.
XYGRAPH_EXPORT QImage FitPictureOf(const TSeries& series, QSize size, double pixelRatio);

} // namespace lumoplot
