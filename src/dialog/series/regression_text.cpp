#include "dialog/series/regression_text.h"

#include "controls/texts.h"
#include "data/analysis/least_squares.h"
#include "data/analysis/regression.h"
#include "data/analysis/smoothing.h"
#include "data/analysis/spline.h"
#include "data/analysis/statistics.h"
#include "graph/loading/rows_text.h"
#include "graph/model/series.h"
#include "support/number_text.h"

#include <cmath>

namespace lumoplot {
namespace {

QString NumberText(double value, TDigits digits) {
    return QString::fromStdString(digits == TDigits::All ? FormatShortest(value) : FormatGeneral(value, 4));
}

// A term behind the first one, with its sign: " + 1.002 X".
QString Term(double coefficient, TDigits digits, const char* power) {
    const QString sign = std::signbit(coefficient) ? QStringLiteral(" - ") : QStringLiteral(" + ");
    return sign + NumberText(std::abs(coefficient), digits) + QLatin1Char(' ') + QString::fromUtf8(power);
}

QString Formula(const TRegressionCoefficients& coefficients, bool quadratic, TDigits digits) {
    QString text = QStringLiteral("Y = ") + NumberText(coefficients.C0, digits);
    text += Term(coefficients.C1, digits, "X");
    if (quadratic) text += Term(coefficients.C2, digits, "X²");
    return text;
}

bool IsSampled(TRegressionType type) {
    return type == TRegressionType::Spline || type == TRegressionType::SampledCurve;
}

QString NoCurveText(const TSeries& series, TRegressionType type) {
    const int samples = series.RegressionControlValue1();
    if (samples < 1 || samples > kMostCurveSamples)
        return TTexts::tr("The number of points must lie between 1 and %1").arg(kMostCurveSamples);
    if (type == TRegressionType::SampledCurve)
        return TTexts::tr("The curve fit of this data set gives no curve");
    if (series.DuplicatesAllowed()) return TTexts::tr("There is no spline while points may share their X");
    return TTexts::tr("A spline needs two points");
}

} // namespace

QString RegressionResultText(const TSeries& series, TDigits digits) {
    const TRegressionType type = series.RegressionType();
    if (const TFittedCurve* line = series.RegressionLine()) {
        const bool hasBaseline =
            !series.XSource() && (series.ZeroValue() != 0 || series.BaseLineSlope() != 0);
        return Formula(line->Coefficients(), type == TRegressionType::Quadratic, digits) +
               (hasBaseline ? TTexts::tr("  (before the baseline is subtracted)") : QString());
    }
    if (type == TRegressionType::RunningAverage && series.RegressionError().empty())
        return TTexts::tr("Running average of %1 points")
            .arg(RunningAverageWindow(series.RegressionControlValue2()));
    return {};
}

QString RegressionErrorText(const TSeries& series) {
    const TRegressionType type = series.RegressionType();
    if (series.RegressionError().empty() && IsSampled(type) && series.RegressionCurve().empty())
        return NoCurveText(series, type);
    return QString::fromStdString(series.RegressionError());
}

QString YStatisticsText(const TSeries& series, TDigits digits) {
    const TStatistics statistics = series.YStatistics();
    if (statistics.Failed) return QString::fromStdString(statistics.Message);
    const QString text =
        TTexts::tr("Mean of Y: %1, SD: %2, points: %3")
            .arg(NumberText(statistics.Mean, digits), NumberText(std::sqrt(statistics.Variance), digits))
            .arg(statistics.Count);
    if (!series.HoldsSomeRows()) return text;
    return text + QStringLiteral(" (%1)").arg(QString::fromStdString(RowsText(RowsOf(series))));
}

} // namespace lumoplot
