#include "graph/drawing/axes/label_text.h"

#include <algorithm>
#include <array>
#include <charconv>
#include <cmath>

namespace lumoplot {
namespace {

constexpr int kMostDecimals = 15;
constexpr double kFixedLimit = 1e6;       // from here on, Auto labels are powers of ten
constexpr double kSmallLimit = 1e-3;      // so they are when everything is below this
constexpr double kUnreadableFixed = 1e16; // no format writes out more digits than a double holds
constexpr double kNoise = 1e-6;           // part of a step that is rounding noise

const QChar kMinus(0x2212);
const QChar kTimes(0x00D7);

// 10^exponent without the errors of pow for negative exponents.
double ScaledByTen(double value, int exponent) {
    constexpr int kHalf = 150;
    if (exponent > kHalf) return ScaledByTen(value * 1e150, exponent - kHalf);
    if (exponent < -kHalf) return ScaledByTen(value / 1e150, exponent + kHalf);
    return exponent >= 0 ? value * std::pow(10.0, exponent) : value / std::pow(10.0, -exponent);
}

int ExponentOf(double value) {
    return value == 0 ? 0 : static_cast<int>(std::floor(std::log10(std::abs(value)) + 1e-12));
}

QString WithRealMinus(QString text) {
    return text.replace(QLatin1Char('-'), kMinus);
}

QString FixedText(double value, int decimals) {
    std::array<char, 400> buffer;
    const auto result = std::to_chars(buffer.data(), buffer.data() + buffer.size(), value,
                                      std::chars_format::fixed, decimals);
    const QString text = QString::fromLatin1(buffer.data(), static_cast<int>(result.ptr - buffer.data()));
    const bool isZero = text.startsWith(QLatin1Char('-')) &&
                        std::ranges::none_of(text, [](QChar c) { return c >= u'1' && c <= u'9'; });
    return WithRealMinus(isZero ? text.mid(1) : text);
}

} // namespace

int DecimalsOf(double step) {
    step = std::abs(step);
    if (!(step > 0) || !std::isfinite(step)) return 0;
    for (int decimals = 0; decimals <= kMostDecimals; ++decimals) {
        const double scaled = ScaledByTen(step, decimals);
        if (scaled > 0.5 && std::abs(scaled - std::round(scaled)) < kNoise * scaled) return decimals;
    }
    return std::clamp(3 - ExponentOf(step), 0, kMostDecimals);
}

TLabelText PlainLabel(double value, int decimals) {
    return {FixedText(value, decimals), {}};
}

TLabelText PowerLabel(double mantissa, int exponent) {
    const QString power = WithRealMinus(QString::number(exponent));
    if (mantissa == 1) return {QStringLiteral("10"), power};
    return {FixedText(mantissa, DecimalsOf(mantissa)) + kTimes + QStringLiteral("10"), power};
}

TNumberLabels::TNumberLabels(const TNumberFormat& format, double step, double largest, double origin)
    : m_step(step) {
    using enum TAxis::TLabelFormat;
    const bool outOfRange = largest >= kFixedLimit || largest < kSmallLimit;
    m_usesPowers =
        format.Format == lfExp || (format.Format == lfAuto && outOfRange) || largest >= kUnreadableFixed;
    int needed = std::max(DecimalsOf(step), origin == 0 ? 0 : DecimalsOf(origin));
    if (m_usesPowers) {
        const int exponent = ExponentOf(largest);
        needed = std::max(0, DecimalsOf(ScaledByTen(step, -exponent)));
        if (origin != 0) needed = std::max(needed, DecimalsOf(ScaledByTen(origin, -exponent)));
    }
    const int wanted = std::clamp(format.Decimals, 0, kMostDecimals);
    m_decimals = format.AutoDecimals ? needed : format.Format == lfAuto ? std::max(wanted, needed) : wanted;
}

TLabelText TNumberLabels::Text(double value) const {
    if (std::abs(value) < kNoise * m_step) value = 0;
    if (!m_usesPowers || value == 0) return PlainLabel(value, m_usesPowers ? 0 : m_decimals);
    int exponent = ExponentOf(value);
    double mantissa = ScaledByTen(value, -exponent);
    const double unit = std::pow(10.0, -m_decimals);
    if (std::abs(mantissa) + unit / 2 >= 10) mantissa = ScaledByTen(value, -++exponent);
    return {FixedText(mantissa, m_decimals) + kTimes + QStringLiteral("10"),
            WithRealMinus(QString::number(exponent))};
}

} // namespace lumoplot
