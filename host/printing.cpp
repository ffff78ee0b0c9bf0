#include "host/printing.h"

#include "graph/drawing/picture/drawing.h"
#include "support/errors.h"

#include <QPainter>
#include <QPrinter>

namespace lumoplot {

QRectF PlaceOnPage(const TxyGraph& graph, QSizeF page) {
    const TDimensions& dimensions = *graph.Dimensions();
    const auto part = [](double length, int percent) { return length * std::min(percent, 100) / 100; };
    const QPointF corner(part(page.width(), dimensions.PrintXOffsetPct()),
                         part(page.height(), dimensions.PrintYOffsetPct()));
    const QSizeF room(std::min(part(page.width(), dimensions.PrintScalePct()), page.width() - corner.x()),
                      page.height() - corner.y());
    return {corner, QSizeF(graph.size()).scaled(room, Qt::KeepAspectRatio)};
}

void PrintGraph(QPrinter& printer, TxyGraph& graph, TProgress& progress) {
    PrepareWithChildGraphs(graph);
    QPainter painter;
    if (!painter.begin(&printer)) throw EFileError("The printer can not be used");
    const double scale = printer.resolution() / kUnitsInInch;
    painter.scale(scale, scale);
    const QSizeF page = printer.pageRect(QPrinter::DevicePixel).size() / scale;
    const TDrawOptions options{.Purpose = TDrawPurpose::Print, .Progress = &progress, .Caption = "Printing"};
    if (!DrawGraph(painter, graph, PlaceOnPage(graph, page), options)) printer.abort();
}

QImage PictureOf(TxyGraph& graph, double scale) {
    PrepareWithChildGraphs(graph);
    QImage picture((QSizeF(graph.size()) * scale).toSize(), QImage::Format_RGB32);
    picture.fill(Qt::white);
    QPainter painter(&picture);
    painter.scale(scale, scale);
    DrawGraph(painter, graph, QRectF(QPointF(), QSizeF(graph.size())));
    painter.end();
    return picture;
}

} // namespace lumoplot
