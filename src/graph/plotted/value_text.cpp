#include "graph/plotted/value_text.h"

#include "graph/plotted/date_text.h"

#include <algorithm>
#include <cmath>

namespace lumoplot {
namespace {

constexpr int kMostDigits = 12;
constexpr double kMinute = 1.0 / 1440;
constexpr double kSecond = kMinute / 60;

// A reader of dates sees the time of day where it can tell times apart.
QString DateTextOf(double value, double resolution) {
    const bool isWholeDay = value == std::floor(value);
    if (resolution >= 1 || (resolution == 0 && isWholeDay)) return DateText(value, "yyyy-mm-dd");
    if (resolution >= kMinute) return DateText(value, "yyyy-mm-dd hh:nn");
    return DateText(value, resolution >= kSecond || resolution == 0 ? "yyyy-mm-dd hh:nn:ss"
                                                                    : "yyyy-mm-dd hh:nn:ss.zzz");
}

int DigitsFor(double value, double resolution) {
    if (!(resolution > 0)) return kMostDigits;
    const double digits = std::ceil(std::log10(std::abs(value) / resolution)) + 1;
    return static_cast<int>(std::clamp<double>(digits, 1, kMostDigits));
}

// To a multiple of 1/parts.
double RoundedToPart(double value, double parts) {
    const double rounded = std::round(value * parts) / parts;
    return std::isfinite(rounded) ? rounded : value;
}

double PartsOfADay(double resolution) {
    for (const double parts : {1.0, 24.0, 1440.0, 86400.0})
        if (resolution * parts >= 1) return parts;
    return 86400e3;
}

} // namespace

double RoundedTo(const TAxis& axis, double value, double resolution) {
    if (!(resolution > 0) || !std::isfinite(resolution) || !std::isfinite(value)) return value;
    if (axis.ShowAsTime()) return RoundedToPart(value, PartsOfADay(resolution));
    // Powers of ten are exact, and so is a quotient by them to the nearest double.
    const double digits = -std::floor(std::log10(resolution));
    const double power = std::pow(10.0, std::abs(digits));
    if (digits >= 0) return RoundedToPart(value, power);
    return std::round(value / power) * power;
}

QString ValueText(const TAxis& axis, double value, double resolution) {
    if (!std::isfinite(value)) return QStringLiteral("–");
    if (axis.ShowAsTime())
        if (const QString date = DateTextOf(value, resolution); !date.isEmpty()) return date;
    if (std::abs(value) < resolution / 2 || value == 0) return QStringLiteral("0");
    return QString::number(value, 'g', DigitsFor(value, resolution)).replace(u'-', QChar(0x2212));
}

} // namespace lumoplot
