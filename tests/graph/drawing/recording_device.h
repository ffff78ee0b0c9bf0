// A paint device that keeps what is painted on it: lines, texts and filled shapes, in the painter's outermost
// coordinates. It has no pixels, so nothing is aligned to any.
#pragma once

#include <QBrush>
#include <QPaintDevice>
#include <QPaintEngine>
#include <QPainterPath>
#include <QPen>
#include <vector>

namespace lumoplot {

struct TRecordedText {
    QString Text;
    QPointF Place; ///< left end of the base line
    double Width;
    double Height;
    bool IsUpright;
};

struct TRecordedLine {
    std::vector<QPointF> Points;
    QPen Pen;
};

struct TRecordedShape {
    QRectF Bounds;
    QPen Pen;
    QBrush Brush;
};

class TRecordingEngine : public QPaintEngine {
public:
    TRecordingEngine() : QPaintEngine(AllFeatures) {}
    bool begin(QPaintDevice*) override { return true; }
    bool end() override { return true; }
    Type type() const override { return User; }
    void updateState(const QPaintEngineState& changed) override {
        if (changed.state() & DirtyTransform) m_transform = changed.transform();
        if (changed.state() & DirtyPen) m_pen = changed.pen();
        if (changed.state() & DirtyBrush) m_brush = changed.brush();
    }
    void drawPoints(const QPointF* points, int count) override {
        for (int i = 0; i < count; ++i) Lines.push_back({{m_transform.map(points[i])}, m_pen});
    }
    void drawPolygon(const QPointF* points, int count, PolygonDrawMode mode) override {
        std::vector<QPointF> mapped;
        for (int i = 0; i < count; ++i) mapped.push_back(m_transform.map(points[i]));
        if (mode == PolylineMode)
            Lines.push_back({mapped, m_pen});
        else
            Shapes.push_back(
                {QPolygonF(QList<QPointF>(mapped.begin(), mapped.end())).boundingRect(), m_pen, m_brush});
    }
    void drawLines(const QLineF* lines, int count) override {
        for (int i = 0; i < count; ++i)
            Lines.push_back({{m_transform.map(lines[i].p1()), m_transform.map(lines[i].p2())}, m_pen});
    }
    void drawPath(const QPainterPath& path) override {
        Shapes.push_back({m_transform.map(path).boundingRect(), m_pen, m_brush});
    }
    void drawRects(const QRectF* rects, int count) override {
        for (int i = 0; i < count; ++i) Shapes.push_back({m_transform.mapRect(rects[i]), m_pen, m_brush});
    }
    void drawEllipse(const QRectF& rectangle) override {
        Shapes.push_back({m_transform.mapRect(rectangle), m_pen, m_brush});
    }
    void drawTextItem(const QPointF& place, const QTextItem& item) override {
        Texts.push_back({item.text(), m_transform.map(place), item.width(), item.ascent(),
                         m_transform.type() <= QTransform::TxScale});
    }
    void drawPixmap(const QRectF& rectangle, const QPixmap&, const QRectF&) override {
        TakePicture(rectangle);
    }
    void drawImage(const QRectF& rectangle, const QImage&, const QRectF&, Qt::ImageConversionFlags) override {
        TakePicture(rectangle);
    }

    std::vector<TRecordedText> Texts;
    std::vector<TRecordedLine> Lines;
    std::vector<TRecordedShape> Shapes;
    std::vector<QRectF> Pictures;

private:
    void TakePicture(const QRectF& rectangle) { Pictures.push_back(m_transform.mapRect(rectangle)); }

    QTransform m_transform;
    QPen m_pen;
    QBrush m_brush;
};

class TRecordingDevice : public QPaintDevice {
public:
    TRecordingEngine* paintEngine() const override { return &m_engine; }
    const TRecordingEngine& Record() const { return m_engine; }

    const TRecordedText* FindText(const QString& text) const {
        for (const TRecordedText& recorded : m_engine.Texts)
            if (recorded.Text == text) return &recorded;
        return nullptr;
    }
    /// The lines that were drawn in that colour.
    std::vector<TRecordedLine> LinesIn(const QColor& color) const {
        std::vector<TRecordedLine> found;
        for (const TRecordedLine& line : m_engine.Lines)
            if (line.Pen.color() == color) found.push_back(line);
        return found;
    }
    /// The shapes that were filled with, or outlined in, that colour.
    std::vector<TRecordedShape> ShapesIn(const QColor& color) const {
        std::vector<TRecordedShape> found;
        for (const TRecordedShape& shape : m_engine.Shapes) {
            const bool filled = shape.Brush.style() != Qt::NoBrush && shape.Brush.color() == color;
            const bool outlined = shape.Pen.style() != Qt::NoPen && shape.Pen.color() == color;
            if (filled || outlined) found.push_back(shape);
        }
        return found;
    }

protected:
    int metric(PaintDeviceMetric metric) const override {
        switch (metric) {
        case PdmWidth:
        case PdmHeight: return 2000;
        case PdmWidthMM:
        case PdmHeightMM: return 529;
        case PdmNumColors: return 1 << 24;
        case PdmDepth: return 24;
        case PdmDevicePixelRatio: return 1;
        case PdmDevicePixelRatioScaled: return static_cast<int>(devicePixelRatioFScale());
        default: return 96;
        }
    }

private:
    mutable TRecordingEngine m_engine;
};

} // namespace lumoplot
