#include "cli/fit_report_file.h"

#include "cli/arguments.h"
#include "fit/definition/cur_fit.h"
#include "fit/run/fit_report.h"
#include "graph/drawing/picture/picture_file.h"
#include "support/replace_file.h"

#include <QByteArray>
#include <QFileInfo>
#include <QTemporaryDir>

namespace lumoplot {
namespace {

constexpr QSize kPictureSize(800, 500);

// The points with the curve, as the address of a picture.
std::string PictureOf(const TCurFit& fit, const TDataOptions& data) {
    const auto document = LoadGraph(data);
    TSeries& chosen = ChosenSeries(document->Graph(), data);
    for (const auto& series : document->Graph().Series()) series->SetActive(series == &chosen);
    if (chosen.PointsShown()) chosen.SetLinesShown(false);
    chosen.CurveFit().Assign(&fit);
    chosen.CurveFit().SetShowCurve(true);
    chosen.CurveFit().SetStatus(TFitStatus::Function);
    const QTemporaryDir folder;
    const std::string file = folder.filePath(QStringLiteral("fit.png")).toStdString();
    SaveGraphPicture(document->Graph(), file, kPictureSize);
    const TBytes bytes = ReadWholeFile(file);
    const QByteArray encoded =
        QByteArray(reinterpret_cast<const char*>(bytes.data()), static_cast<qsizetype>(bytes.size()))
            .toBase64();
    return "data:image/png;base64," + encoded.toStdString();
}

} // namespace

void CheckReportName(const std::string& name) {
    const std::string extension = Extension(name);
    if (extension != ".html" && extension != ".htm" && extension != ".txt")
        throw EUsage("--report: '" + name + "' does not end with .html or .txt");
}

void WriteFitReport(const std::string& name, const TCurFit& fit, const TDataOptions& data) {
    CheckReportName(name);
    const std::string dataName = QFileInfo(QString::fromStdString(data.file)).fileName().toStdString();
    const auto sections = FitReport(fit, dataName);
    const std::string text = Extension(name) == ".txt"
                                 ? ReportText(sections)
                                 : ReportHtml("Curve fit of " + dataName, sections, PictureOf(fit, data));
    ReplaceFile(name, std::span(reinterpret_cast<const std::uint8_t*>(text.data()), text.size()));
}

} // namespace lumoplot
