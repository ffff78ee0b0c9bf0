// How uncertain the parameters of a fit are, in three ways that need less and less to be believed: from the
// covariance, as if the model were linear; from profiles of the sum of squares; from fits to resampled
// points. All work on copies: the fit, which has run and converged, stays as it is.
#pragma once

#include "fit/run/curve_fitter.h"

#include <cstdint>

namespace lumoplot {

struct TInterval {
    double Low = 0;
    double High = 0;
};

/// A fit that has run, with what it ran on.
struct TFittedData {
    const TCurFit& Fit;
    std::span<const double> X;
    std::span<const double> Y; ///< corrected
    const TFitRun& Run;        ///< weights as they were; its progress is reported to
    double Confidence = 0.95;  ///< of the intervals, between 0 and 1
};

/// value ± t · standard error for each varied parameter, in the order of TFitResult::Varied; not-a-number
/// where there is no standard error.
std::vector<TInterval> AsymptoticIntervals(const TCurFit& fit, double confidence);

/// The places in X of the points from which the robust weights have taken most of their influence
/// (TFitResult::Outliers counts them); none for a fit that is not robust. Throws EFitError where the fit has
/// not run.
std::vector<std::size_t> OutliersOf(const TFittedData& data);

/// A place on a profile.
struct TProfilePoint {
    double Value = 0; ///< of the parameter
    double Rss = 0;   ///< with the others fitted again
    /// √((Rss − least Rss) / variance), negative below the best value: a straight line of slope 1/standard
    /// error for a linear model (D. M. Bates, D. G. Watts, Nonlinear Regression Analysis, 1988, chapter 6).
    double Deviation = 0;
};

/// How the sum of squares rises with one parameter, which is what a picture shows.
struct TProfile {
    std::vector<TProfilePoint> Points; ///< by value, the best in the middle
    /// Infinite on a side where no value is excluded; a bound of the parameter ends it.
    TInterval Interval;
    double Limit = 0;          ///< the deviation at the ends of the interval
    bool WasCancelled = false; ///< then the interval means nothing
};

/// The profile of the parameter of that number, which was varied. Throws EFitError where there are no degrees
/// of freedom.
XYGRAPH_EXPORT TProfile ProfileOf(const TFittedData& data, int number);

/// What is drawn again.
enum class TResampling {
    Residuals, ///< the scatter about the curve, at the X as they are
    Points,    ///< whole points, which also holds where the scatter is not the same everywhere
};

struct TBootstrapOptions {
    int Resamples = 1000;
    TResampling Resampling = TResampling::Residuals;
    std::uint64_t Seed = 1; ///< the same numbers for the same seed on every machine
    /// Called in the calling thread about every 0.2 s, at first after 0.1 s, with what there is.
    std::function<void(const struct TBootstrap&)> OnProgress;
};

struct TBootstrap {
    /// The fitted values, one row for each varied parameter; a resample has the same place in all rows.
    std::vector<TVector> Values;
    int Failed = 0; ///< resamples without a fit, which are left out
    bool WasCancelled = false;
    TVector StandardErrors;
    std::vector<TInterval> Intervals; ///< percentiles, a little wider where points are few
};

/// Fits resamples on all cores; a cancelled run has what there was. Throws EFitError where there are no
/// degrees of freedom.
XYGRAPH_EXPORT TBootstrap BootstrapOf(const TFittedData& data, const TBootstrapOptions& options);

/// Half the widths of the bands about the curve, for each x: of the curve itself, and of a new point;
/// not-a-number where there are no errors, and that of a new point also where the fit weighs by the errors of
/// the points, as that of a new one is not known.
struct TBands {
    std::vector<double> Confidence;
    std::vector<double> Prediction;
};
TBands BandsOf(const TCurFit& fit, std::span<const double> x, double confidence);

} // namespace lumoplot
