// The texts of axis labels for numbers: as many decimals as tell the ticks apart, never the noise of binary
// fractions, powers of ten with a raised exponent.
#pragma once

#include "graph/model/axis.h"

#include <QString>

namespace lumoplot {

/// A label: its text and, for a power of ten, the exponent that is drawn raised behind it.
struct TLabelText {
    QString Base;
    QString Exponent;

    bool IsEmpty() const { return Base.isEmpty(); }
    bool operator==(const TLabelText&) const = default;
};

struct TNumberFormat {
    TAxis::TLabelFormat Format = TAxis::lfAuto;
    int Decimals = 1;
    bool AutoDecimals = true;
};

/// How many decimals `step` has (0.25: 2), at most 15. A step that is no short decimal fraction gets four
/// significant digits.
int DecimalsOf(double step);

/// Labels of one axis whose ticks lie `step` apart and reach up to `largest` in magnitude.
class TNumberLabels {
public:
    /// Fixed and Exp show the format's decimals unless AutoDecimals is set; Auto shows at least those that
    /// tell the ticks apart and turns to powers of ten from 1 million on and below 1 thousandth. `origin` is
    /// where ticks are counted from; its decimals count as well.
    TNumberLabels(const TNumberFormat& format, double step, double largest, double origin = 0);

    TLabelText Text(double value) const;

private:
    double m_step;
    int m_decimals;
    bool m_usesPowers;
};

/// The label of 10^exponent times `mantissa` (1 to 9.99): plain, or as a power of ten.
TLabelText PowerLabel(double mantissa, int exponent);
TLabelText PlainLabel(double value, int decimals);

} // namespace lumoplot
