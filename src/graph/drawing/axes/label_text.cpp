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
constexpr double kNarrow = 1e-3;          // part of the values up to which a range is narrow
constexpr double kLongLabel = 6;          // digits before the last one that tells ticks apart

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
    if (value == 0 || !std::isfinite(value)) return 0;
    return static_cast<int>(std::floor(std::log10(std::abs(value)) + 1e-12));
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

double DecimalStep(double step) {
    if (!(step > 0) || !std::isfinite(step)) return step;
    const int exponent = ExponentOf(step * (1 + kNoise)) - 2;
    const double digits = std::round(ScaledByTen(step, -exponent));
    const double decimal = ScaledByTen(digits, exponent);
    return std::abs(decimal - step) < kNoise * step ? decimal : step;
}

TNumberLabels::TNumberLabels(const TNumberFormat& format, const TLabelledRange& range) : m_step(range.Step) {
    using enum TAxis::TLabelFormat;
    const double largest = std::max(std::abs(range.Min), std::abs(range.Max));
    const bool sharesPart = format.Format == lfAuto && format.CommonPart == TCommonPart::Once;
    const bool outOfRange = largest >= kFixedLimit || largest < kSmallLimit;
    if (sharesPart)
        SplitOff(range);
    else
        m_usesPowers =
            format.Format == lfExp || (format.Format == lfAuto && outOfRange) || largest >= kUnreadableFixed;
    ChooseDecimals(format, range);
}

// A narrow range far from 0 has digits that all its labels begin with.
void TNumberLabels::SplitOff(const TLabelledRange& range) {
    const double span = range.Max - range.Min;
    double largest = std::max(std::abs(range.Min), std::abs(range.Max));
    const bool isOneSided = range.Min > 0 || range.Max < 0;
    const double digits = std::floor(std::log10(largest)) - std::floor(std::log10(range.Step));
    if (isOneSided && std::isfinite(span) && span < kNarrow * largest && digits >= kLongLabel) {
        m_offsetUnit = ExponentOf(span) + 1;
        const double nearest = range.Min > 0 ? range.Min : range.Max;
        const double units = std::trunc(ScaledByTen(nearest, -m_offsetUnit));
        const double next = ScaledByTen(units + (nearest > 0 ? 1 : -1), m_offsetUnit);
        m_offset = next >= range.Min && next <= range.Max ? next : ScaledByTen(units, m_offsetUnit);
        largest = std::max(std::abs(range.Min - m_offset), std::abs(range.Max - m_offset));
    }
    if (largest >= kFixedLimit || largest < kSmallLimit) m_exponent = ExponentOf(largest * (1 + kNoise));
}

void TNumberLabels::ChooseDecimals(const TNumberFormat& format, const TLabelledRange& range) {
    using enum TAxis::TLabelFormat;
    const double largest = std::max(std::abs(range.Min), std::abs(range.Max));
    const int exponent = m_usesPowers ? ExponentOf(largest) : m_exponent;
    int needed = std::max(0, DecimalsOf(ScaledByTen(range.Step, -exponent)));
    if (range.Origin != 0)
        needed = std::max(needed, DecimalsOf(ScaledByTen(range.Origin - m_offset, -exponent)));
    const int wanted = std::clamp(format.Decimals, 0, kMostDecimals);
    const bool asWanted = !format.AutoDecimals && format.Format != lfAuto;
    m_decimals = format.AutoDecimals ? needed : std::max(wanted, asWanted ? 0 : needed);
    // Whatever is wanted: two ticks do not share a label.
    const double step = ScaledByTen(range.Step, -exponent);
    while (m_decimals < needed && std::pow(10.0, -m_decimals) > step * (1 + kNoise)) ++m_decimals;
}

QString TNumberLabels::Common() const {
    QString text;
    const auto power = [](int exponent) {
        return kTimes + QStringLiteral("10^{%1}").arg(WithRealMinus(QString::number(exponent)));
    };
    if (m_exponent != 0) text = power(m_exponent);
    if (m_offset == 0) return text;
    text += m_offset > 0 ? QStringLiteral("+") : QString(kMinus);
    const double offset = std::abs(m_offset);
    const int exponent = ExponentOf(offset);
    const double mantissa = std::round(ScaledByTen(offset, 3 - exponent)) / 1000;
    const bool isShort = exponent >= kLongLabel && ScaledByTen(mantissa, exponent) == offset;
    if (isShort) return text + FixedText(mantissa, DecimalsOf(mantissa)) + power(exponent);
    int decimals = std::max(0, -m_offsetUnit);
    QString digits = FixedText(offset, decimals);
    for (; decimals > 0 && digits.endsWith(u'0'); --decimals) digits.chop(1);
    if (digits.endsWith(u'.')) digits.chop(1);
    return text + digits;
}

TLabelText TNumberLabels::Text(double value) const {
    value -= m_offset;
    if (std::abs(value) < kNoise * m_step) value = 0;
    if (!m_usesPowers) return PlainLabel(ScaledByTen(value, -m_exponent), m_decimals);
    if (value == 0) return PlainLabel(value, 0);
    int exponent = ExponentOf(value);
    double mantissa = ScaledByTen(value, -exponent);
    const double unit = std::pow(10.0, -m_decimals);
    if (std::abs(mantissa) + unit / 2 >= 10) mantissa = ScaledByTen(value, -++exponent);
    return {FixedText(mantissa, m_decimals) + kTimes + QStringLiteral("10"),
            WithRealMinus(QString::number(exponent))};
}

} // namespace lumoplot
