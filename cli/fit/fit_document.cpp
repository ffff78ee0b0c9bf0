#include "cli/fit/fit_document.h"

#include "fit/run/fit_statistics.h"

#include <cmath>

namespace lumoplot {
namespace {

constexpr double kConfidence = 0.95;

TDocument ListOf(const std::vector<std::string>& texts) {
    TDocument list = TDocument::array();
    for (const std::string& text : texts) list.push_back(text);
    return list;
}

void AddParameters(TDocument& document, const TCurFit& fit, const TFitResult& result) {
    TDocument values = TDocument::object();
    TDocument errors = TDocument::object();
    TDocument relative = TDocument::object();
    TDocument t = TDocument::object();
    TDocument probability = TDocument::object();
    TDocument intervals = TDocument::object();
    TDocument onBound = TDocument::array();
    const std::vector<TInterval> asymptotic = AsymptoticIntervals(fit, kConfidence);
    for (int i = 1; i <= fit.NParams(); ++i) values[fit.Parameter(i)->Name()] = fit.Parameter(i)->Value();
    for (std::size_t i = 0; i < result.Varied.size(); ++i) {
        const TDBLParameter& parameter = *fit.Parameter(result.Varied[i]);
        const double error = result.StandardError(i);
        errors[parameter.Name()] = error;
        relative[parameter.Name()] = std::abs(error / parameter.Value());
        t[parameter.Name()] = parameter.Value() / error;
        probability[parameter.Name()] = StudentProbability(parameter.Value() / error, FreedomOfErrors(fit));
        intervals[parameter.Name()] = {asymptotic[i].Low, asymptotic[i].High};
        if (parameter.IsOnBound()) onBound.push_back(parameter.Name());
    }
    document["parameters"] = values;
    document["on_bound"] = onBound;
    for (int i = 1; i <= fit.NParams(); ++i)
        if (fit.Parameter(i)->IsTied()) errors[fit.Parameter(i)->Name()] = fit.Parameter(i)->FinalDeviation;
    document["errors"] = errors;
    document["relative_errors"] = relative;
    document["t"] = t;
    document["probability"] = probability;
    document["intervals"] = intervals;
}

// The rows in the order of the errors.
TDocument CorrelationRows(const TFitResult& result) {
    TDocument rows = TDocument::array();
    const TMatrix& correlations = result.Correlations;
    for (int i = 0; i < correlations.Size(); ++i) {
        TDocument row = TDocument::array();
        for (int j = 0; j < correlations.Size(); ++j) row.push_back(correlations(i, j));
        rows.push_back(row);
    }
    return rows;
}

void AddQuality(TDocument& document, const TFitResult& result) {
    const TFitQuality& quality = result.Quality;
    document["rss"] = result.Rss;
    document["residual_sd"] = result.ResidualSD;
    document["r_squared"] = result.RSquared;
    document["adjusted_r_squared"] = quality.AdjustedRSquared;
    document["aic"] = quality.Aic;
    document["aicc"] = quality.Aicc;
    document["bic"] = quality.Bic;
    document["runs_deviation"] = quality.RunsDeviation;
    document["runs_probability"] = quality.RunsProbability;
    document["durbin_watson"] = quality.DurbinWatson;
    document["degrees_of_freedom"] = quality.Freedom;
    document["residuals_say"] = ListOf(ResidualWords(result));
    if (std::isnan(quality.ChiSquareProbability)) return;
    document["chi_square"] = result.Rss;
    document["reduced_chi_square"] = result.Rss / quality.Freedom;
    document["chi_square_probability"] = quality.ChiSquareProbability;
}

} // namespace

TDocument FitDocument(const TCurFit& fit) {
    const TFitResult& result = *fit.Result();
    TDocument document;
    AddParameters(document, fit, result);
    document["correlation"] = CorrelationRows(result);
    AddQuality(document, result);
    document["points"] = result.PointsUsed;
    document["points_left_out"] = result.PointsLeftOut;
    document["outliers"] = result.Outliers;
    document["iterations"] = result.Iterations;
    document["evaluations"] = result.Evaluations;
    document["converged"] = result.End == TFitEnd::Converged;
    document["end"] = TextOf(result.End);
    document["remarks"] = ListOf(result.Remarks);
    if (fit.UsesYErrors())
        document["errors_are"] =
            fit.Weighting().Errors == TErrorSource::Points ? "absolute" : "scaled by the residual deviation";
    return document;
}

void AddOutliers(TDocument& document, const TFittedData& data) {
    if (data.Run.Robust == TRobust::None) return;
    TDocument points = TDocument::array();
    for (const std::size_t place : OutliersOf(data)) points.push_back({data.X[place], data.Y[place]});
    document["outlier_points"] = points;
}

TDocument BootstrapDocument(const TCurFit& fit, const TBootstrap& bootstrap) {
    TDocument document = TDocument::object();
    const auto& varied = fit.Result()->Varied;
    for (std::size_t i = 0; i < varied.size(); ++i)
        document[fit.Parameter(varied[i])->Name()] = {{"error", bootstrap.StandardErrors[i]},
                                                      {"low", bootstrap.Intervals[i].Low},
                                                      {"high", bootstrap.Intervals[i].High}};
    document["resamples"] = bootstrap.Values.empty() ? 0 : bootstrap.Values.front().size();
    document["failed"] = bootstrap.Failed;
    return document;
}

TDocument ProfileDocument(const TCurFit& fit, std::span<const TProfile> profiles) {
    TDocument document = TDocument::object();
    for (std::size_t i = 0; i < profiles.size(); ++i) {
        const TProfile& profile = profiles[i];
        TDocument values = TDocument::array();
        TDocument sums = TDocument::array();
        for (const TProfilePoint& point : profile.Points) {
            values.push_back(point.Value);
            sums.push_back(point.Rss);
        }
        document[fit.Parameter(fit.Result()->Varied[i])->Name()] = {{"low", profile.Interval.Low},
                                                                    {"high", profile.Interval.High},
                                                                    {"values", values},
                                                                    {"rss", sums}};
    }
    return document;
}

} // namespace lumoplot
