
#include "graph/drawing/picture/background_picture.h"
#include "graph/drawing/picture/drawing.h"
#include "graph/model/appearance.h"
#include "support/errors.h"
#include "support/number_text.h"
#include "support/progress_maker.h"
#include "support/replace_file.h"

#include <QBuffer>
#include <QImage>
#include <QPageSize>
#include <QPdfWriter>
#include <cmath>
#if defined(QT_SVG_LIB)
#include <QSvgGenerator>
#endif

namespace lumoplot {
namespace {

constexpr int kUnitsPerInch = 96;
constexpr int kPdfDotsPerInch = 1200;
constexpr int kSvgDotsPerInch = 960; // how fine the size on paper is counted
constexpr double kPointsPerInch = 72;
constexpr int kLargestSide = 32767; // pixels; what the painter's coordinates reach
constexpr double kLargestArea = 4e8;

// The user has cancelled.
struct TCancelled {};

void DrawAll(QPaintDevice& device, const TxyGraph& graph, QSize size, double scale, TBackground background) {
    const auto progress = MakeProgress();
    QPainter painter(&device);
    painter.scale(scale, scale);
    const TDrawOptions options{
        .Background = background, .Progress = progress.get(), .Caption = "Saving picture"};
    if (!DrawGraph(painter, graph, QRectF(QPointF(), QSizeF(size)), options)) throw TCancelled();
}

std::string SizeText(double width, double height) {
    return FormatGeneral(width, 15) + " x " + FormatGeneral(height, 15);
}

// Why no picture can be so large; empty when one can.
std::string FaultOfPixels(double width, double height) {
    if (!(width >= 1 && height >= 1)) return "it would be smaller than a pixel";
    if (width <= kLargestSide && height <= kLargestSide && width * height <= kLargestArea) return {};
    return "it would have " + SizeText(width, height) + " pixels, and a picture can have " +
           std::to_string(kLargestSide) + " on a side and 400 million in all";
}

std::string FaultOfLayout(QSize size) {
    if (size.isEmpty()) return "it has no size";
    if (size.width() <= kLargestSide && size.height() <= kLargestSide) return {};
    return "its layout is " + SizeText(size.width(), size.height()) + ", and it can be " +
           std::to_string(kLargestSide) + " on a side";
}

void Save(QBuffer& buffer, const QImage& image) {
    if (!image.save(&buffer, "PNG")) throw EFileError("there is not enough memory for it");
}

void SavePng(QBuffer& buffer, const TxyGraph& graph, QSize size, const TPictureOptions& options) {
    const double scale = options.PixelsPerUnit;
    const double width = std::round(size.width() * scale);
    const double height = std::round(size.height() * scale);
    if (const std::string fault = FaultOfPixels(width, height); !fault.empty()) throw EFileError(fault);
    QImage image(static_cast<int>(width), static_cast<int>(height), QImage::Format_ARGB32_Premultiplied);
    if (image.isNull())
        throw EFileError("there is not enough memory for " + SizeText(width, height) + " pixels");
    const bool isFilled = options.Background == TBackground::Fill;
    image.fill(isFilled ? Qt::white : Qt::transparent);
    DrawAll(image, graph, size, scale, options.Background);
    const double dotsPerInch = kUnitsPerInch * scale / options.PaperScale;
    const int dotsPerMeter = static_cast<int>(std::lround(dotsPerInch / 0.0254));
    image.setDotsPerMeterX(dotsPerMeter);
    image.setDotsPerMeterY(dotsPerMeter);
    Save(buffer, image.convertToFormat(isFilled ? QImage::Format_RGB32 : QImage::Format_ARGB32));
}

#if defined(QT_SVG_LIB)
void SaveSvg(QBuffer& buffer, const TxyGraph& graph, QSize size, const TPictureOptions& options) {
    QSvgGenerator generator;
    generator.setOutputDevice(&buffer);
    generator.setResolution(kSvgDotsPerInch);
    generator.setSize((QSizeF(size) * options.PaperScale * kSvgDotsPerInch / kUnitsPerInch).toSize());
    generator.setViewBox(QRect(QPoint(), size));
    generator.setTitle(QString::fromStdString(graph.Appearance()->GraphTitle()));
    DrawAll(generator, graph, size, 1, options.Background);
}
#else
void SaveSvg(QBuffer&, const TxyGraph&, QSize, const TPictureOptions&) {
    throw EFileError("This program was built without what saves SVG files. Choose PNG or PDF");
}
#endif

void SavePdf(QBuffer& buffer, const TxyGraph& graph, QSize size, const TPictureOptions& options) {
    QPdfWriter writer(&buffer);
    writer.setResolution(kPdfDotsPerInch);
    writer.setTitle(QString::fromStdString(graph.Appearance()->GraphTitle()));
    const QSizeF points = QSizeF(size) * (options.PaperScale * kPointsPerInch / kUnitsPerInch);
    writer.setPageSize(QPageSize(points, QPageSize::Point, QString(), QPageSize::ExactMatch));
    writer.setPageMargins(QMarginsF());
    const double scale = options.PaperScale * kPdfDotsPerInch / kUnitsPerInch;
    DrawAll(writer, graph, size, scale, options.Background);
}

void SaveAs(const QString& name, QBuffer& buffer, const TxyGraph& graph, QSize size,
            const TPictureOptions& options) {
    if (const std::string fault = FaultOfLayout(size); !fault.empty()) throw EFileError(fault);
    const auto endsWith = [&name](const char* ending) {
        return name.endsWith(QLatin1String(ending), Qt::CaseInsensitive);
    };
    if (endsWith(".png")) return SavePng(buffer, graph, size, options);
    if (endsWith(".svg")) return SaveSvg(buffer, graph, size, options);
    if (endsWith(".pdf")) return SavePdf(buffer, graph, size, options);
    throw EFileError("its name ends with none of .png, .svg and .pdf");
}

} // namespace

bool SaveGraphPicture(TxyGraph& graph, const std::string& fileName, QSize size,
                      const TPictureOptions& options) {
    PrepareWithChildGraphs(graph);
    QBuffer buffer;
    buffer.open(QIODevice::WriteOnly);
    try {
        SaveAs(QString::fromStdString(fileName), buffer, graph, size, options);
    } catch (const TCancelled&) {
        return false;
    } catch (const EFileError& error) {
        throw EFileError("Can not save to file " + fileName + ": " + error.what());
    }
    const QByteArray& bytes = buffer.data();
    ReplaceFile(fileName, {reinterpret_cast<const std::uint8_t*>(bytes.constData()),
                           static_cast<std::size_t>(bytes.size())});
    ReportBrokenPictures();
    return true;
}

} // namespace lumoplot
