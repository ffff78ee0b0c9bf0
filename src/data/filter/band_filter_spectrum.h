// What the band filter will do to a data set, shown before it is run: the amplitude spectrum of the samples
// that it works on, and the gain of its response at each frequency.
#pragma once

#include "data/filter/band_filter.h"

namespace lumoplot {

/// Values at the frequencies 0, Step, 2·Step, … in periods per unit of X.
struct TSpectrum {
    double Step = 0;
    std::vector<double> Values;
};

/// The amplitudes of samples that are `step` apart, from 0 to half the sampling frequency. A sine of
/// amplitude A gives a peak of A at its frequency; the value at frequency 0 is the size of the mean. The mean
/// is taken out and a Hann window put on before the transform, and the samples are padded with zeros to a
/// length that transforms fast. Empty for fewer than two samples and for a step that is not above 0. Takes
/// O(n log n).
TSpectrum AmplitudeSpectrum(std::span<const double> samples, double step);

/// The size of the filter's gain, before Normalize, at `count` (at least 2) evenly spaced frequencies from 0
/// to half the sampling frequency. 1 leaves a frequency as it is. Needs a step above 0.
TSpectrum FrequencyResponse(const TBandFilterSettings& settings, double step, int count);

} // namespace lumoplot
