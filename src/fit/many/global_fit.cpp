// A fit to several data sets at once, by a damped least-squares method with the scaling of J. J. Moré
// (Lecture Notes in Mathematics 630 (1978) 105-116) and the damping of H. B. Nielsen (IMM-REP-1999-05).
// Parameters that are at a bound and would leave it are held for the step.
#include "fit/many/fit_batch.h"
#include "fit/procedures/fit_passes.h"
#include "fit/procedures/fit_problem.h"
#include "fit/procedures/row_qr.h"
#include "fit/procedures/small_solve.h"
#include "fit/run/fit_check.h"
#include "fit/run/fit_judgement.h"
#include "fit/run/fit_points.h"
#include "fit/run/fit_statistics.h"

#include <algorithm>
#include <cmath>
#include <limits>
#include <optional>

namespace lumoplot {
namespace {

constexpr std::size_t kMostParameters = 400;
constexpr double kFirstDamping = 1e-3;
constexpr double kMostDamping = 1e20;
constexpr double kSameSum = 1e-14;  // relative change of the sum of squares that ends it
constexpr double kSmallStep = 1e-9; // relative change of every parameter

/// A data set with a copy of the fit of its own.
struct TMember {
    TMember(const TCurFit& definition, const TBatchData& data) : Name(data.Name) {
        Fit->Assign(&definition);
        Varied = CheckedParameters(*Fit);
        TFitRun run;
        TakeWeighting(run, *Fit, data.YErrors);
        Points = PointsBetweenMargins(*Fit, data.X, data.Y, run.Errors);
        Rows.emplace(*Fit, Varied, 0, Points);
        Passes = std::make_unique<TFitPasses>(*Fit, *Rows);
    }

    std::string Name;
    std::unique_ptr<TCurFit> Fit = std::make_unique<TCurFit>();
    std::vector<TDBLParameter*> Varied;
    TFitPoints Points;
    std::optional<TFitRows> Rows;
    std::unique_ptr<TFitPasses> Passes;
    std::vector<std::size_t> Places; ///< of the varied parameters among all
};

/// Residuals are multiplied by the scale of the fitter.
struct TGlobalModel {
    double Rss = 0;
    TMatrix Triangle;
    TVector Projected;
    TVector Gradient;
};

/// Where a descent ended.
struct TDescent {
    TVector Values;
    double Rss = std::numeric_limits<double>::infinity();
    TFitEnd End = TFitEnd::NoProgress;
};

class TGlobalFitter {
public:
    TGlobalFitter(const TCurFit& definition, std::span<const TBatchData> data,
                  std::span<const std::string> shared, const TFitRun& run)
        : m_definition(definition), m_data(data), m_run(run),
          m_progress(run.Progress ? *run.Progress : m_silent) {
        for (const TBatchData& one : data) AddMember(one);
        CheckShared(shared);
        NumberParameters(shared);
        if (m_names.size() > kMostParameters)
            throw EFitError("There are " + std::to_string(m_names.size()) + " parameters, more than " +
                            std::to_string(kMostParameters));
        std::size_t points = 0;
        for (const auto& member : m_members) {
            points += member->Points.X.size();
            m_scale = std::min(m_scale, member->Rows->ResidualScale());
        }
        if (points < m_names.size()) throw EFitError("There are fewer points than varied parameters");
    }

    TGlobalFit Fit() {
        m_progress.Begin("Fitting Data....", 0, m_definition.IterMax());
        std::optional<TDescent> best;
        try {
            for (const TVector& start : {StartFromEach(), StartFromDefinition()}) {
                TDescent descent = DescentFrom(start);
                if (!best || descent.Rss < best->Rss) best = std::move(descent);
            }
            if (!std::isfinite(best->Rss)) throw EFitError("The equation has no value at some of the points");
            return Summary(best->Values, best->End);
        } catch (const TFitCancelled&) {
            TGlobalFit cancelled;
            cancelled.Names = m_names;
            cancelled.Result.End = TFitEnd::Cancelled;
            return cancelled;
        }
    }

private:
    void AddMember(const TBatchData& data) {
        try {
            m_members.push_back(std::make_unique<TMember>(m_definition, data));
        } catch (const ELumoError& error) {
            throw EFitError(data.Name + ": " + error.what());
        }
    }

    void CheckShared(std::span<const std::string> shared) const {
        if (m_members.empty()) throw EFitError("There are no data sets to fit");
        for (const std::string& name : shared)
            if (std::ranges::none_of(m_members.front()->Varied,
                                     [&](auto* p) { return LowerCased(p->Name()) == LowerCased(name); }))
                throw EFitError("There is no varied parameter \"" + name + "\" to share");
    }

    void NumberParameters(std::span<const std::string> shared) {
        const auto isShared = [&](const TDBLParameter& parameter) {
            return std::ranges::any_of(shared, [&](const std::string& name) {
                return LowerCased(name) == LowerCased(parameter.Name());
            });
        };
        const auto add = [&](const TDBLParameter& parameter, const std::string& name) {
            m_names.push_back(name);
            m_min.push_back(parameter.Min());
            m_max.push_back(parameter.Max());
            return m_names.size() - 1;
        };
        std::vector<std::size_t> common;
        for (const TDBLParameter* parameter : m_members.front()->Varied)
            common.push_back(isShared(*parameter) ? add(*parameter, parameter->Name()) : kMostParameters);
        for (const auto& member : m_members)
            for (std::size_t i = 0; i < common.size(); ++i) {
                const TDBLParameter& parameter = *member->Varied[i];
                member->Places.push_back(common[i] < kMostParameters
                                             ? common[i]
                                             : add(parameter, parameter.Name() + " [" + member->Name + "]"));
            }
    }

    TVector StartFromDefinition() const {
        TVector start(m_names.size());
        for (const auto& member : m_members)
            for (std::size_t i = 0; i < member->Varied.size(); ++i)
                start[member->Places[i]] = member->Varied[i]->Value();
        return Clamped(start);
    }

    /// The parameters of each data set fitted by itself; of shared ones the median.
    TVector StartFromEach() {
        TFitRun run;
        run.Starts = m_run.Starts;
        run.Progress = m_run.Progress;
        const std::vector<TBatchFit> fits = FitEach(m_definition, m_data, run);
        std::vector<std::vector<double>> found(m_names.size());
        for (std::size_t k = 0; k < m_members.size(); ++k) {
            const bool isFitted = k < fits.size() && fits[k].Error.empty();
            const TCurFit& source = isFitted ? *fits[k].Fit : *m_members[k]->Fit;
            std::size_t place = 0;
            for (int i = 1; i <= source.NParams(); ++i)
                if (source.Parameter(i)->Vary())
                    found[m_members[k]->Places[place++]].push_back(source.Parameter(i)->Value());
        }
        TVector start;
        for (auto& values : found) {
            const auto middle = values.begin() + static_cast<std::ptrdiff_t>(values.size() / 2);
            std::ranges::nth_element(values, middle);
            start.push_back(*middle);
        }
        return Clamped(start);
    }

    TVector Clamped(TVector values) const {
        for (std::size_t i = 0; i < values.size(); ++i) values[i] = std::clamp(values[i], m_min[i], m_max[i]);
        return values;
    }

    void Store(const TVector& values) {
        for (const auto& member : m_members)
            for (std::size_t i = 0; i < member->Varied.size(); ++i)
                *member->Varied[i]->ValueRef() = values[member->Places[i]];
    }

    void CheckCancelled() {
        if (!m_progress.StepTo(m_iterations)) throw TFitCancelled();
    }

    /// What residuals of the member are multiplied by, to be in the scale of all.
    double FactorOf(const TMember& member) const { return m_scale / member.Rows->ResidualScale(); }

    double RssAt(const TVector& values) {
        ++m_evaluations;
        Store(values);
        double rss = 0;
        for (const auto& member : m_members) {
            std::vector<double> sums(member->Passes->PartCount());
            member->Passes->ForEachChunk(
                0, [this] { CheckCancelled(); },
                [&](TFitChunk& chunk) {
                    sums[chunk.Part] += chunk.Rows.Residuals(chunk.Start, chunk.Residuals);
                });
            for (const double sum : sums) rss += sum * FactorOf(*member) * FactorOf(*member);
        }
        return std::isfinite(rss) ? rss : std::numeric_limits<double>::infinity();
    }

    // Each data set is reduced to the triangle of its own parameters before it is put together with the
    // others.
    TGlobalModel ModelAt(const TVector& values) {
        ++m_evaluations;
        Store(values);
        TGlobalModel model;
        TRowQr qr(static_cast<int>(m_names.size()));
        for (const auto& member : m_members) AddReduced(*member, qr, model);
        model.Triangle = qr.Triangle();
        model.Projected = qr.Projected();
        model.Gradient = TransposedTimes(model.Triangle, model.Projected);
        return model;
    }

    void AddReduced(TMember& member, TRowQr& qr, TGlobalModel& model) {
        const std::size_t width = member.Varied.size();
        const double factor = FactorOf(member);
        std::vector<double> sums(member.Passes->PartCount());
        std::vector<TRowQr> parts(sums.size(), TRowQr(static_cast<int>(width)));
        member.Passes->ForEachChunk(
            width, [this] { CheckCancelled(); },
            [&](TFitChunk& chunk) {
                sums[chunk.Part] += chunk.Rows.AllRows(chunk.Start, chunk.Residuals, chunk.Columns);
                parts[chunk.Part].AddRows(chunk.Columns, chunk.Residuals);
            });
        for (std::size_t i = 1; i < parts.size(); ++i) parts.front().Add(parts[i]);
        for (const double sum : sums) model.Rss += sum * factor * factor;
        TVector right = parts.front().Projected();
        for (double& element : right) element *= factor;
        std::vector<double> columns(width * m_names.size());
        for (std::size_t j = 0; j < width; ++j)
            for (std::size_t i = 0; i <= j; ++i)
                columns[member.Places[j] * width + i] =
                    parts.front().Triangle()(static_cast<int>(i), static_cast<int>(j)) * factor /
                    member.Rows->ScaleOf(j);
        qr.AddRows(columns, right);
    }

    bool IsHeld(const TVector& values, const TVector& gradient, std::size_t i) const {
        return (values[i] <= m_min[i] && gradient[i] >= 0) || (values[i] >= m_max[i] && gradient[i] <= 0);
    }

    TVector StepOf(const TGlobalModel& model, const TVector& values, const TVector& lengths,
                   double damping) const {
        const std::size_t size = values.size();
        std::vector<double> columns(2 * size * size);
        for (std::size_t j = 0; j < size; ++j) {
            const bool isHeld = IsHeld(values, model.Gradient, j);
            if (!isHeld)
                std::ranges::copy(model.Triangle.Column(static_cast<int>(j)),
                                  columns.begin() + static_cast<std::ptrdiff_t>(2 * size * j));
            columns[2 * size * j + size + j] = std::sqrt(damping) * (lengths[j] > 0 ? lengths[j] : 1);
        }
        std::vector<double> right(2 * size);
        std::ranges::copy(model.Projected, right.begin());
        TRowQr qr(static_cast<int>(size));
        qr.AddRows(columns, right);
        TVector step = SolveTriangle(qr.Triangle(), qr.Projected()).X;
        for (double& part : step) part = -part;
        return step;
    }

    static bool IsSmall(const TVector& from, const TVector& to) {
        for (std::size_t i = 0; i < from.size(); ++i)
            if (std::abs(to[i] - from[i]) > kSmallStep * std::max(std::abs(to[i]), std::abs(from[i])))
                return false;
        return true;
    }

    TDescent DescentFrom(const TVector& start) {
        TDescent at{start};
        TGlobalModel model = ModelAt(at.Values);
        if (!std::isfinite(model.Rss) || !std::isfinite(Norm(model.Gradient))) return at;
        at.Rss = model.Rss;
        at.End = TFitEnd::IterationLimit;
        TVector lengths(start.size());
        double damping = kFirstDamping;
        double growth = 2;
        for (int iteration = 0; iteration < m_definition.IterMax(); ++iteration) {
            CheckCancelled();
            ++m_iterations;
            for (std::size_t j = 0; j < lengths.size(); ++j)
                lengths[j] = std::max(lengths[j], Norm(model.Triangle.Column(static_cast<int>(j))));
            TVector next = Clamped(Sum(at.Values, StepOf(model, at.Values, lengths, damping)));
            const double rss = RssAt(next);
            const bool isDone =
                IsSmall(at.Values, next) || (rss <= at.Rss && at.Rss - rss <= kSameSum * at.Rss);
            if (rss <= at.Rss) {
                at.Values = std::move(next);
                at.Rss = rss;
            }
            if (isDone) at.End = TFitEnd::Converged;
            if (isDone) return at;
            if (at.Rss == rss) {
                model = ModelAt(at.Values);
                if (!std::isfinite(Norm(model.Gradient))) at.End = TFitEnd::NoProgress;
                damping = std::max(damping / 3, 1e-15);
                growth = 2;
            } else {
                damping *= growth;
                growth *= 2;
                if (!(damping < kMostDamping)) at.End = TFitEnd::NoProgress;
            }
            if (at.End == TFitEnd::NoProgress) return at;
        }
        return at;
    }

    static TVector Sum(TVector a, const TVector& b) {
        AddTimes(a, 1, b);
        return a;
    }

    // R⁻¹R⁻ᵀ of the parameters that no bound holds; not-a-number for the others.
    TMatrix InverseOf(const TGlobalModel& model, const TVector& values, bool& isDetermined) const {
        std::vector<int> free;
        for (std::size_t j = 0; j < values.size(); ++j)
            if (!IsHeld(values, model.Gradient, j)) free.push_back(static_cast<int>(j));
        TMatrix inverse(static_cast<int>(values.size()));
        for (int j = 0; j < inverse.Size(); ++j)
            std::ranges::fill(inverse.Column(j), std::numeric_limits<double>::quiet_NaN());
        std::vector<double> columns;
        for (const int j : free)
            columns.insert(columns.end(), model.Triangle.Column(j).begin(), model.Triangle.Column(j).end());
        TVector right(values.size());
        TRowQr qr(static_cast<int>(free.size()));
        qr.AddRows(columns, right);
        isDetermined = HasIndependentColumns(qr.Triangle());
        if (!isDetermined) return inverse;
        std::vector<TVector> rows;
        for (std::size_t k = 0; k < free.size(); ++k) {
            TVector unit(free.size());
            unit[k] = 1;
            rows.push_back(BackSolved(qr.Triangle(), ForwardSolved(qr.Triangle(), std::move(unit))));
        }
        for (std::size_t i = 0; i < free.size(); ++i)
            for (std::size_t j = 0; j < free.size(); ++j) inverse(free[i], free[j]) = rows[i][j];
        return inverse;
    }

    static void TakeErrors(const TMatrix& inverse, double deviation, TFitResult& result) {
        result.Correlations = TMatrix(inverse.Size());
        for (int j = 0; j < inverse.Size(); ++j) {
            result.Varied.push_back(j + 1);
            result.Errors.push_back(std::sqrt(inverse(j, j)) * deviation);
            for (int i = 0; i < inverse.Size(); ++i)
                result.Correlations(i, j) = inverse(i, j) / std::sqrt(inverse(i, i) * inverse(j, j));
        }
    }

    TGlobalFit Summary(const TVector& values, TFitEnd end) {
        TGlobalFit global;
        global.Names = m_names;
        TFitResult& result = global.Result;
        const TGlobalModel model = ModelAt(values);
        bool isDetermined = false;
        const TMatrix inverse = InverseOf(model, values, isDetermined);
        result.End = end == TFitEnd::Converged && !isDetermined ? TFitEnd::NotDetermined : end;
        result.Iterations = m_iterations;
        result.Evaluations = m_evaluations;
        result.Rss = model.Rss / m_scale / m_scale;
        double about = 0;
        std::vector<double> residuals;
        for (const auto& member : m_members) {
            const std::vector<double> own = ResidualsByX(*member->Fit, member->Points);
            residuals.insert(residuals.end(), own.begin(), own.end());
            about += SumAboutLine(member->Points, m_scale);
        }
        result.PointsUsed = residuals.size();
        const double freedom = static_cast<double>(residuals.size()) - static_cast<double>(values.size());
        result.ResidualSD =
            freedom > 0 ? std::sqrt(model.Rss / freedom) / m_scale : std::numeric_limits<double>::quiet_NaN();
        result.RSquared = about > 0 ? 1 - model.Rss / about : std::numeric_limits<double>::quiet_NaN();
        result.Quality = QualityOf(residuals, result.Rss, result.RSquared, static_cast<int>(values.size()));
        const TFitWeighting& weighting = m_definition.Weighting();
        if (!weighting.ByYErrors)
            result.Quality.ChiSquareProbability = std::numeric_limits<double>::quiet_NaN();
        const bool isAbsolute = weighting.ByYErrors && weighting.Errors == TErrorSource::Points;
        TakeErrors(inverse, m_scale * (isAbsolute ? 1 : result.ResidualSD), result);
        for (const auto& member : m_members) global.Fits.push_back(FitOf(*member, values, result));
        return global;
    }

    TBatchFit FitOf(TMember& member, const TVector& values, const TFitResult& global) {
        TFitResult own;
        own.End = global.End;
        own.Iterations = global.Iterations;
        own.Evaluations = global.Evaluations;
        const std::vector<double> residuals = ResidualsByX(*member.Fit, member.Points);
        own.PointsUsed = residuals.size();
        own.Rss = Dot(residuals, residuals);
        const double about = SumAboutLine(member.Points, 1);
        own.RSquared = about > 0 ? 1 - own.Rss / about : std::numeric_limits<double>::quiet_NaN();
        const auto freedom = static_cast<double>(own.PointsUsed) - static_cast<double>(member.Varied.size());
        own.ResidualSD =
            freedom > 0 ? std::sqrt(own.Rss / freedom) : std::numeric_limits<double>::quiet_NaN();
        own.Quality = QualityOf(residuals, own.Rss, own.RSquared, static_cast<int>(member.Varied.size()));
        own.Correlations = TMatrix(static_cast<int>(member.Varied.size()));
        for (std::size_t i = 0; i < member.Varied.size(); ++i) {
            *member.Varied[i]->ValueRef() = values[member.Places[i]];
            own.Errors.push_back(global.Errors[member.Places[i]]);
            for (std::size_t j = 0; j < member.Varied.size(); ++j)
                own.Correlations(static_cast<int>(i), static_cast<int>(j)) = global.Correlations(
                    static_cast<int>(member.Places[i]), static_cast<int>(member.Places[j]));
        }
        for (int i = 1; i <= member.Fit->NParams(); ++i)
            if (member.Fit->Parameter(i)->Vary()) own.Varied.push_back(i);
        for (std::size_t i = 0; i < member.Varied.size(); ++i) {
            const double error = own.StandardError(i);
            member.Varied[i]->FinalDeviation = std::isfinite(error) ? error : 0;
        }
        if (!m_definition.UsesYErrors())
            own.Quality.ChiSquareProbability = std::numeric_limits<double>::quiet_NaN();
        if (m_definition.Weighting().Robust != TRobust::None)
            own.Remarks.push_back(
                "Outliers took part: a fit of several data sets at once does not hold them off.");
        member.Fit->FitDone(std::move(own));
        return {member.Name, std::move(member.Fit), {}};
    }

    const TCurFit& m_definition;
    std::span<const TBatchData> m_data;
    const TFitRun& m_run;
    TSilentProgress m_silent;
    TProgress& m_progress;
    std::vector<std::unique_ptr<TMember>> m_members;
    std::vector<std::string> m_names;
    TVector m_min;
    TVector m_max;
    double m_scale = std::numeric_limits<double>::infinity(); ///< of residuals: that of the largest Y
    int m_iterations = 0;
    int m_evaluations = 0;
};

} // namespace

TGlobalFit FitTogether(const TCurFit& definition, std::span<const TBatchData> data,
                       std::span<const std::string> shared, const TFitRun& run) {
    return TGlobalFitter(definition, data, shared, run).Fit();
}

} // namespace lumoplot
