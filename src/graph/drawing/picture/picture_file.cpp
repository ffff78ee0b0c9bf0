#include "graph/drawing/picture/picture_file.h"

#include "graph/drawing/picture/background_picture.h"
#include "graph/drawing/picture/drawing.h"
#include "graph/model/appearance.h"
#include "support/errors.h"
#include "support/progress_maker.h"
#include "support/replace_file.h"

#include <QBuffer>
#include <QImage>
#include <QPageSize>
#include <QPdfWriter>
#include <QSvgGenerator>
#include <cmath>

namespace lumoplot {
namespace {

constexpr int kUnitsPerInch = 96;
constexpr int kPdfDotsPerInch = 1200;
constexpr double kPointsPerInch = 72;
constexpr int kLargestSide = 32767; // pixels; what the painter's coordinates reach
constexpr double kLargestArea = 4e8;

// The user has cancelled.
struct TCancelled {};

void DrawAll(QPaintDevice& device, const TxyGraph& graph, QSize size, double scale) {
    const auto progress = MakeProgress();
    QPainter painter(&device);
    painter.scale(scale, scale);
    const TDrawOptions options{.Progress = progress.get(), .Caption = "Saving picture"};
    if (!DrawGraph(painter, graph, QRectF(QPointF(), QSizeF(size)), options)) throw TCancelled();
}

bool SavePng(QBuffer& buffer, const TxyGraph& graph, QSize size, double scale) {
    const double width = std::round(size.width() * scale);
    const double height = std::round(size.height() * scale);
    const bool fits = width >= 1 && height >= 1 && width <= kLargestSide && height <= kLargestSide &&
                      width * height <= kLargestArea;
    if (!fits) return false;
    QImage image(static_cast<int>(width), static_cast<int>(height), QImage::Format_ARGB32_Premultiplied);
    if (image.isNull()) return false;
    image.fill(Qt::white);
    DrawAll(image, graph, size, scale);
    const int dotsPerMeter = static_cast<int>(std::lround(kUnitsPerInch * scale / 0.0254));
    image.setDotsPerMeterX(dotsPerMeter);
    image.setDotsPerMeterY(dotsPerMeter);
    return image.convertToFormat(QImage::Format_RGB32).save(&buffer, "PNG");
}

bool SaveSvg(QBuffer& buffer, const TxyGraph& graph, QSize size) {
    QSvgGenerator generator;
    generator.setOutputDevice(&buffer);
    generator.setResolution(kUnitsPerInch);
    generator.setSize(size);
    generator.setViewBox(QRect(QPoint(), size));
    generator.setTitle(QString::fromStdString(graph.Appearance()->GraphTitle()));
    DrawAll(generator, graph, size, 1);
    return true;
}

bool SavePdf(QBuffer& buffer, const TxyGraph& graph, QSize size) {
    QPdfWriter writer(&buffer);
    writer.setResolution(kPdfDotsPerInch);
    writer.setTitle(QString::fromStdString(graph.Appearance()->GraphTitle()));
    const QSizeF points = QSizeF(size) * (kPointsPerInch / kUnitsPerInch);
    writer.setPageSize(QPageSize(points, QPageSize::Point, QString(), QPageSize::ExactMatch));
    writer.setPageMargins(QMarginsF());
    DrawAll(writer, graph, size, static_cast<double>(kPdfDotsPerInch) / kUnitsPerInch);
    return true;
}

bool SaveAs(const QString& name, QBuffer& buffer, const TxyGraph& graph, QSize size, double scale) {
    const bool isDrawable = !size.isEmpty() && size.width() <= kLargestSide && size.height() <= kLargestSide;
    if (!isDrawable) return false;
    const auto endsWith = [&name](const char* ending) {
        return name.endsWith(QLatin1String(ending), Qt::CaseInsensitive);
    };
    if (endsWith(".png")) return SavePng(buffer, graph, size, scale);
    if (endsWith(".svg")) return SaveSvg(buffer, graph, size);
    return endsWith(".pdf") && SavePdf(buffer, graph, size);
}

} // namespace

bool SaveGraphPicture(TxyGraph& graph, const std::string& fileName, QSize size, double scale) {
    PrepareWithChildGraphs(graph);
    QBuffer buffer;
    buffer.open(QIODevice::WriteOnly);
    try {
        if (!SaveAs(QString::fromStdString(fileName), buffer, graph, size, scale))
            throw EFileError("Can not save to file " + fileName);
    } catch (const TCancelled&) {
        return false;
    }
    const QByteArray& bytes = buffer.data();
    ReplaceFile(fileName, {reinterpret_cast<const std::uint8_t*>(bytes.constData()),
                           static_cast<std::size_t>(bytes.size())});
    ReportBrokenPictures();
    return true;
}

} // namespace lumoplot
