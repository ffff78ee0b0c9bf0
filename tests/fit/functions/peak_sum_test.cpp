#include "fit/functions/peak_sum.h"

#include "common/thrown_text.h"
#include "data/transform/peaks.h"
#include "fit/run/curve_fitter.h"

#include <cmath>
#include <gtest/gtest.h>

namespace lumoplot {
namespace {

// Peaks that are read off a curve lead a fit of their sum to what the curve was made of.
TEST(PeakSum, PeaksOfACurveAreStartValues) {
    for (const TPeakShape shape : {TPeakShape::Gaussian, TPeakShape::Lorentzian}) {
        const double made[] = {5, 20, 2, 9,   31, 3,
                               4, 60, 5, 1.5, 0.2}; // height, position, width; …; baseline and its slope
        TCurveValues curve;
        for (int i = 0; i <= 400; ++i) {
            const double x = 0.25 * i;
            double y = made[9] + made[10] * x + 0.01 * std::cos(37.0 * i);
            for (int k = 0; k < 9; k += 3) {
                const double from = (x - made[k + 1]) / made[k + 2];
                y += made[k] *
                     (shape == TPeakShape::Gaussian ? std::exp(-from * from / 2) : 1 / (1 + from * from));
            }
            curve.X.push_back(x);
            curve.Y.push_back(y);
        }
        std::vector<TPeakStart> starts;
        for (const TPeak& peak : FindPeaks(curve, 0.05))
            starts.push_back({peak.Position, peak.Height, peak.Width});
        ASSERT_EQ(starts.size(), 3u);
        TCurFit fit;
        UsePeakSum(starts, shape, fit, "nm", "V");
        TFitRun run;
        run.Starts = TFitStarts::Given;
        EXPECT_EQ(RunFit(fit, curve.X, curve.Y, run).End, TFitEnd::Converged);
        for (int i = 0; i < 11; ++i)
            EXPECT_NEAR(std::abs(fit.Parameter(i + 1)->Value()), made[i], 0.02)
                << fit.Parameter(i + 1)->Name();
        EXPECT_EQ(fit.Parameter(2)->Units, "nm");
        EXPECT_EQ(fit.Parameter(10)->Units, "V");
    }
}

TEST(PeakSum, NoPeakAndTooManyAreRefused) {
    TCurFit fit;
    EXPECT_EQ(ThrownText<EFitError>([&] { UsePeakSum({}, TPeakShape::Gaussian, fit); }),
              "There is no peak to fit");
    const std::vector<TPeakStart> many(kMostSummedPeaks + 1, {1, 1, 1});
    EXPECT_EQ(ThrownText<EFitError>([&] { UsePeakSum(many, TPeakShape::Gaussian, fit); }),
              "At most 16 peaks can be fitted together");
}

} // namespace
} // namespace lumoplot
