#include "cli/fit/fit_report_file.h"

#include "cli/arguments.h"
#include "fit/definition/cur_fit.h"
#include "graph/drawing/picture/fit_picture.h"
#include "support/replace_file.h"

#include <QBuffer>
#include <QFileInfo>

namespace lumoplot {
namespace {

constexpr QSize kPictureSize(700, 460);
constexpr double kPicturePixels = 2; // for each logical one

// The points with the curve, its bands and the residuals, as the address of a picture.
std::string PictureOf(const TCurFit& fit, const TDataOptions& data) {
    const auto document = LoadGraph(data);
    TSeries& chosen = ChosenSeries(document->Graph(), data);
    chosen.CurveFit().Assign(&fit);
    chosen.CurveFit().RestoreRunState(fit.RunState());
    if (chosen.ExtentsStale()) chosen.RecalcExtents();
    QByteArray bytes;
    QBuffer buffer(&bytes);
    FitPictureOf(chosen, kPictureSize, kPicturePixels).save(&buffer, "PNG");
    return "data:image/png;base64," + bytes.toBase64().toStdString();
}

} // namespace

void CheckReportName(const std::string& name) {
    const std::string extension = Extension(name);
    if (extension != ".html" && extension != ".htm" && extension != ".txt")
        throw EUsage("--report: '" + name + "' does not end with .html or .txt");
}

void WriteFitReport(const std::string& name, const TCurFit& fit, const TDataOptions& data,
                    const TKnownUncertainty& known) {
    CheckReportName(name);
    const std::string dataName = QFileInfo(QString::fromStdString(data.file)).fileName().toStdString();
    const auto sections = FitReport(fit, dataName, known);
    const std::string text = Extension(name) == ".txt"
                                 ? ReportText(sections)
                                 : ReportHtml("Curve fit of " + dataName, sections, PictureOf(fit, data));
    ReplaceFile(name, std::span(reinterpret_cast<const std::uint8_t*>(text.data()), text.size()));
}

} // namespace lumoplot
