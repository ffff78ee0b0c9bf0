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

/// Where a power of ten and leading digits that all labels share are written.
enum class TCommonPart { InEachLabel, Once };

struct TNumberFormat {
    TAxis::TLabelFormat Format = TAxis::lfAuto;
    int Decimals = 1;
    bool AutoDecimals = true;
    TCommonPart CommonPart = TCommonPart::InEachLabel;
};

/// How many decimals `step` has (0.25: 2), at most 15. A step that is no short decimal fraction gets four
/// significant digits.
int DecimalsOf(double step);

/// The decimal number of up to three digits that a computed step stands for (1 for 1.0000000005); a step that
/// is none stays as it is.
double DecimalStep(double step);

/// Which values an axis labels: multiples of Step, counted from Origin, between Min and Max.
struct TLabelledRange {
    double Min;
    double Max;
    double Step;
    double Origin = 0;
};

/// Labels of one axis.
class TNumberLabels {
public:
    /// Fixed and Exp show the format's decimals unless AutoDecimals is set, and more where they would not
    /// tell the ticks apart. Auto shows at least those that do, and turns to powers of ten from 1 million on
    /// and below 1 thousandth. Only Auto has a common part; it is taken out where that makes the labels
    /// shorter.
    TNumberLabels(const TNumberFormat& format, const TLabelledRange& range);

    TLabelText Text(double value) const;
    /// What each label is to be multiplied by and added to, as it is written at the end of the axis
    /// ("×10^{6}", "+12345"); empty for nothing.
    QString Common() const;

private:
    void SplitOff(const TLabelledRange& range);
    void ChooseDecimals(const TNumberFormat& format, const TLabelledRange& range);

    double m_step;
    double m_offset = 0;  ///< taken off each value
    int m_offsetUnit = 0; ///< power of ten that it is a multiple of
    int m_exponent = 0;   ///< power of ten that is taken out of each value
    int m_decimals = 0;
    bool m_usesPowers = false;
};

/// The label of 10^exponent times `mantissa` (1 to 9.99): plain, or as a power of ten.
TLabelText PowerLabel(double mantissa, int exponent);
TLabelText PlainLabel(double value, int decimals);

} // namespace lumoplot
