#include "data/filter/band_filter_spectrum.h"

#include <cmath>
#include <complex>
#include <gtest/gtest.h>
#include <numbers>

namespace lumoplot {
namespace {

using std::numbers::pi;

TEST(AmplitudeSpectrum, SinesGivePeaksOfTheirAmplitude) {
    struct TSine {
        double frequency;
        double amplitude;
    };
    const TSine sines[] = {{0.5, 3}, {2.25, 0.01}, {4.0, 1}};
    const double step = 0.1;
    for (const std::size_t count :
         {400u, 401u, 1000u, 997u}) { // even, odd, a product of small primes, a prime
        std::vector<double> samples;
        for (std::size_t i = 0; i < count; ++i) {
            double value = -20;
            for (const TSine& sine : sines)
                value +=
                    sine.amplitude * std::sin(2 * pi * sine.frequency * step * static_cast<double>(i) + 1);
            samples.push_back(value);
        }
        const TSpectrum spectrum = AmplitudeSpectrum(samples, step);
        EXPECT_NEAR(spectrum.Values.front(), 20, 0.1) << count;
        EXPECT_NEAR(spectrum.Step * static_cast<double>(spectrum.Values.size() - 1), 5, 1e-12) << count;
        for (const TSine& sine : sines) {
            const auto place = static_cast<std::size_t>(std::lround(sine.frequency / spectrum.Step));
            double peak = 0;
            for (std::size_t i = place - 2; i <= place + 2; ++i) peak = std::max(peak, spectrum.Values[i]);
            // Between two frequencies of the transform a Hann window loses up to 15 %.
            EXPECT_GT(peak, 0.84 * sine.amplitude) << count << ' ' << sine.frequency;
            EXPECT_LT(peak, 1.05 * sine.amplitude) << count << ' ' << sine.frequency;
        }
        EXPECT_LT(spectrum.Values[static_cast<std::size_t>(std::lround(3.2 / spectrum.Step))], 1e-4) << count;
    }
}

TEST(AmplitudeSpectrum, NothingComesOfTooLittle) {
    const std::vector<double> one = {1};
    const std::vector<double> two = {1, 2};
    EXPECT_TRUE(AmplitudeSpectrum({}, 1).Values.empty());
    EXPECT_TRUE(AmplitudeSpectrum(one, 1).Values.empty());
    EXPECT_TRUE(AmplitudeSpectrum(two, 0).Values.empty());
    EXPECT_EQ(AmplitudeSpectrum(two, 1).Values.size(), 2u);
}

TEST(FrequencyResponse, IsTheGainThatSinesGet) {
    const double step = 0.02;
    for (const auto type : {TFilterType::BandStop, TFilterType::BandPass})
        for (const int width : {4, 30, 100}) {
            const TBandFilterSettings settings{2, 10, type, false, 0, 1, width};
            const TSpectrum gain = FrequencyResponse(settings, step, 101);
            EXPECT_NEAR(gain.Step * 100, 25, 1e-12);
            for (const std::size_t i : {0u, 3u, 8u, 24u, 40u, 77u, 100u}) {
                const double frequency = gain.Step * static_cast<double>(i);
                TDataSeries series;
                for (int k = 0; k < 800; ++k)
                    series.AddPoint(k * step, std::cos(2 * pi * frequency * step * k));
                TSilentProgress progress;
                const TPointChain points = FilterBand(series, settings, progress).Points;
                for (TPointCursor p = points.First(); p; p = p.Next()) {
                    const double wave = std::cos(2 * pi * frequency * p.X());
                    if (std::abs(wave) < 0.5) continue;
                    ASSERT_NEAR(std::abs(p.Y() / wave), gain.Values[i], 1e-9) << width << ' ' << frequency;
                }
            }
        }
}

} // namespace
} // namespace lumoplot
