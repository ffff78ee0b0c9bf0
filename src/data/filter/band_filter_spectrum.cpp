#include "data/filter/band_filter_spectrum.h"

#include <cmath>
#include <kissfft/kissfft.hh>
#include <numbers>
#include <numeric>

namespace lumoplot {
namespace {

using std::numbers::pi;

/// The smallest number from `least` on that has no prime factors but 2, 3 and 5.
std::size_t FastLength(std::size_t least) {
    for (std::size_t length = least;; ++length) {
        std::size_t rest = length;
        for (const std::size_t factor : {2, 3, 5})
            while (rest % factor == 0) rest /= factor;
        if (rest == 1) return length;
    }
}

/// The samples about their mean under a Hann window, padded to `length`.
std::vector<double> Windowed(std::span<const double> samples, double mean, std::size_t length) {
    std::vector<double> windowed(length, 0.0);
    const double turn = 2 * pi / static_cast<double>(samples.size());
    for (std::size_t i = 0; i < samples.size(); ++i) {
        const double window = 0.5 - 0.5 * std::cos(turn * (static_cast<double>(i) + 0.5));
        windowed[i] = (samples[i] - mean) * window;
    }
    return windowed;
}

} // namespace

TSpectrum AmplitudeSpectrum(std::span<const double> samples, double step) {
    if (samples.size() < 2 || !(step > 0)) return {};
    const auto count = static_cast<double>(samples.size());
    const double mean = std::accumulate(samples.begin(), samples.end(), 0.0) / count;
    const std::size_t half = FastLength((samples.size() + 1) / 2);
    const std::vector<double> windowed = Windowed(samples, mean, 2 * half);
    std::vector<std::complex<double>> transformed(half);
    kissfft<double>(half, false).transform_real(windowed.data(), transformed.data());

    TSpectrum spectrum;
    spectrum.Step = 1 / (step * 2 * static_cast<double>(half));
    spectrum.Values.resize(half + 1);
    // Half of an amplitude lies at the negative frequency, and the window lets half of it through.
    for (std::size_t i = 1; i < half; ++i) spectrum.Values[i] = std::abs(transformed[i]) * 4 / count;
    // The transform keeps the value at half the sampling frequency, which has no negative twin, beside that
    // at 0.
    spectrum.Values[half] = std::abs(transformed[0].imag()) * 2 / count;
    spectrum.Values[0] = std::abs(mean);
    return spectrum;
}

TSpectrum FrequencyResponse(const TBandFilterSettings& settings, double step, int count) {
    const std::vector<double> response = ImpulseResponse(settings, step);
    TSpectrum gain;
    gain.Step = 0.5 / step / (count - 1);
    gain.Values.resize(static_cast<std::size_t>(count));
    for (std::size_t i = 0; i < gain.Values.size(); ++i) {
        // Clenshaw's recurrence for a sum of cosines.
        const double twiceCosine = 2 * std::cos(pi * static_cast<double>(i) / (count - 1));
        double sum = 0;
        double sumBefore = 0;
        for (std::size_t m = response.size() - 1; m > 0; --m)
            sumBefore = std::exchange(sum, 2 * response[m] + twiceCosine * sum - sumBefore);
        gain.Values[i] = std::abs(step * (response[0] + 0.5 * twiceCosine * sum - sumBefore));
    }
    return gain;
}

} // namespace lumoplot
