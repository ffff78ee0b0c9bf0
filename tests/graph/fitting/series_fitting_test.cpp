#include "common/cancelling_progress.h"
#include "common/fit_parameters.h"
#include "data/analysis/regression.h"
#include "fit/run/curve_fitter.h"
#include "graph/fitting/series_fitting.h"
#include "graph/model/graph.h"
#include "support/number_text.h"
#include "support/progress_maker.h"

#include <QPainter>
#include <QTest>
#include <cmath>
#include <gtest/gtest.h>

namespace lumoplot {
namespace {

constexpr int kStepsOfACancelledRun = 3;

class SeriesFitting : public testing::Test {
protected:
    SeriesFitting() : m_series(*m_graph->FindSeries(m_graph->AddSeries())) {
        for (int i = 0; i < 20; ++i) m_series.AddPoint(i, 3 * std::exp(-0.2 * i) + 1);
        Fit().SetExpression("a*exp(-b*x)");
        AddParameter(Fit(), "a", 1).SetVary(true);
        AddParameter(Fit(), "b", 0.1).SetVary(true);
        Fit().SetProcType(TFitProcedure::Newton);
        m_series.SetZeroValue(1);
    }

    TCurFit& Fit() { return m_series.CurveFit(); }
    double Value(int number) { return Fit().Parameter(number)->Value(); }

    std::unique_ptr<TxyGraph> m_graph = std::make_unique<TxyGraph>();
    TSeries& m_series;
};

TEST_F(SeriesFitting, PreparingFitsTheCorrectedYOnce) {
    for (const TFitStatus status : {TFitStatus::None, TFitStatus::Function}) {
        Fit().SetStatus(status);
        m_graph->PrepareForDrawing();
        EXPECT_EQ(Value(1), 1) << static_cast<int>(status);
        EXPECT_EQ(m_series.FittedCurve().empty(), status == TFitStatus::None);
    }
    Fit().SetStatus(TFitStatus::FinalResult);
    m_graph->PrepareForDrawing();
    EXPECT_NEAR(Value(1), 3, 1e-10);
    EXPECT_NEAR(Value(2), 0.2, 1e-10);
    EXPECT_FALSE(Fit().IsStale());
    ASSERT_TRUE(Fit().Result());
    EXPECT_EQ(Fit().Result()->End, TFitEnd::Converged);
    EXPECT_NEAR(m_series.FittedCurve().front().Derived, 3, 1e-9);
    EXPECT_EQ(m_series.FittedCurve().size(), 150u);

    const TFitResult* before = Fit().Result();
    m_graph->PrepareForDrawing();
    EXPECT_EQ(Fit().Result(), before);
}

TEST_F(SeriesFitting, LongRegressionsFollowThePicture) {
    Fit().SetStatus(TFitStatus::None);
    m_series.SetRegressionType(TRegressionType::RobustLine);
    m_graph->grab();
    EXPECT_FALSE(m_series.RegressionStale()) << "a short one is there at once";
    m_series.SetDuplicatesAllowed(true);
    for (int i = 0; i < 30000; ++i) m_series.AddPoint(20 + i, i);
    m_graph->grab();
    EXPECT_TRUE(m_series.RegressionStale());
    EXPECT_TRUE(QTest::qWaitFor([this] { return !m_series.RegressionStale(); }));
    EXPECT_TRUE(m_graph->RepaintRequested());
    EXPECT_NE(m_series.RegressionLine(), nullptr);
    m_series.AddPoint(40000, 0);
    m_graph->PrepareForDrawing(); // for a file or paper
    EXPECT_FALSE(m_series.RegressionStale());
}

// Shown once it takes long, and cancelled then.
TEST_F(SeriesFitting, ALongRegressionCanBeCancelled) {
    std::shared_ptr<TCancellingProgress> shown;
    struct TForwarding : TProgress {
        std::shared_ptr<TCancellingProgress> To;
        void Begin(const std::string& caption, std::int64_t from, std::int64_t to) override {
            To->Begin(caption, from, to);
        }
        bool StepTo(std::int64_t position) override { return To->StepTo(position); }
    };
    const TProgressMakerScope scope([&shown] {
        auto progress = std::make_unique<TForwarding>();
        shown = progress->To = std::make_shared<TCancellingProgress>(1);
        return progress;
    });
    TPointChain points;
    for (int i = 0; i < 500000; ++i) points.Add(i, std::sin(i * 1e-3) + i % 17, {});
    m_series.SwapPoints(std::move(points));
    m_series.SetRegressionType(TRegressionType::RobustLine);
    m_graph->PrepareForDrawing();
    ASSERT_TRUE(shown) << "this machine is very fast";
    EXPECT_EQ(shown->Steps, 2);
    EXPECT_FALSE(m_series.RegressionStale());
    EXPECT_EQ(m_series.RegressionLine(), nullptr);
    EXPECT_EQ(m_series.RegressionError(), "The regression was cancelled");
}

TEST_F(SeriesFitting, EveryChangeOfPointsBaselineOrDefinitionIsFitted) {
    Fit().SetStatus(TFitStatus::FinalResult);
    const std::function<void()> changes[] = {
        [this] { m_series.SetZeroValue(1.5); },
        [this] { m_series.SetBaseLineSlope(0.01); },
        [this] { m_series.AddPoint(21, 1); },
        [this] { Fit().SetRightMargin(9.5), Fit().SetUseRightMargin(true); },
        [this] { Fit().Parameter(2)->SetVary(false); },
        [this] { Fit().SetExpression("a*exp(-b*x)+0*x"); },
    };
    for (const auto& change : changes) {
        m_graph->PrepareForDrawing();
        ASSERT_FALSE(Fit().IsStale());
        const TFitResult* before = Fit().Result();
        change();
        EXPECT_TRUE(Fit().IsStale());
        m_graph->PrepareForDrawing();
        EXPECT_FALSE(Fit().IsStale());
        EXPECT_NE(Fit().Result(), before);
    }
}

TEST_F(SeriesFitting, TheCurveRunsBetweenTheMargins) {
    Fit().SetStatus(TFitStatus::Function);
    Fit().SetNPoints(11);
    Fit().SetLeftMargin(2);
    Fit().SetRightMargin(200);
    Fit().SetUseRightMargin(true);
    m_graph->PrepareForDrawing();
    ASSERT_EQ(m_series.FittedCurve().size(), 11u);
    EXPECT_EQ(m_series.FittedCurve().front().X, 0);
    EXPECT_EQ(m_series.FittedCurve()[1].X, 20);
    EXPECT_EQ(m_series.FittedCurve().back().X, 200);
    Fit().SetShowCurve(false);
    m_graph->PrepareForDrawing();
    EXPECT_TRUE(m_series.FittedCurve().empty());
}

TEST_F(SeriesFitting, ABrokenEquationShowsItsErrorAndNothingElse) {
    Fit().SetStatus(TFitStatus::FinalResult);
    Fit().SetExpression("a*(x");
    m_graph->PrepareForDrawing();
    EXPECT_EQ(Fit().FitError(), "Unequal brackets");
    EXPECT_FALSE(Fit().IsStale());
    EXPECT_FALSE(Fit().Result());
    EXPECT_TRUE(m_series.FittedCurve().empty());
    EXPECT_EQ(Value(1), 1);
    Fit().SetExpression("a*exp(-b*x)");
    m_graph->PrepareForDrawing();
    EXPECT_EQ(Fit().FitError(), "");
    EXPECT_NEAR(Value(1), 3, 1e-10);
}

TEST_F(SeriesFitting, APaintEventOnlyPaints) {
    Fit().SetStatus(TFitStatus::FinalResult);
    bool fittedWhilePainting = false;
    QObject::connect(m_graph.get(), &TxyGraph::OnPaintEnd, m_graph.get(),
                     [&] { fittedWhilePainting |= Value(1) != 1 && Fit().IsStale(); });
    int paints = 0;
    QObject::connect(m_graph.get(), &TxyGraph::OnPaintEnd, m_graph.get(), [&] {
        if (++paints == 1) {
            EXPECT_EQ(Value(1), 1);
        }
    });
    m_graph->show();
    ASSERT_TRUE(QTest::qWaitForWindowExposed(m_graph.get()));
    ASSERT_TRUE(QTest::qWaitFor([this] { return !Fit().IsStale(); }));
    EXPECT_NEAR(Value(1), 3, 1e-10);
    EXPECT_FALSE(fittedWhilePainting);
    ASSERT_TRUE(QTest::qWaitFor([&] { return paints >= 2; }));
}

TEST_F(SeriesFitting, EveryStepIsPainted) {
    Fit().SetStatus(TFitStatus::EveryStep);
    m_graph->show();
    ASSERT_TRUE(QTest::qWaitForWindowExposed(m_graph.get()));
    m_graph->PrepareForDrawing();
    Fit().Parameter(1)->SetValue(0.5);
    Fit().Parameter(2)->SetValue(2);
    std::vector<double> shown;
    QObject::connect(m_graph.get(), &TxyGraph::OnPaintEnd, m_graph.get(),
                     [&] { shown.push_back(m_series.FittedCurve().front().Derived); });
    m_graph->PrepareForDrawing();
    EXPECT_GE(static_cast<int>(shown.size()), Fit().Result()->Iterations - 1);
    EXPECT_GE(shown.size(), 3u);
    EXPECT_NE(shown.front(), shown.back());
}

void RunAndCancel(TxyGraph& graph, TCurFit& fit) {
    const TProgressMakerScope scope(
        [] { return std::make_unique<TCancellingProgress>(kStepsOfACancelledRun - 1); });
    fit.SetExpression("a*exp(-b*x)+0.01*random"); // never comes to an end
    fit.SetIterMax(1000000000);
    fit.SetTolerance(1e-300);
    fit.SetProcType(TFitProcedure::Simplex);
    fit.SetStatus(TFitStatus::FinalResult);
    graph.PrepareForDrawing();
}

TEST_F(SeriesFitting, ACancelledFitIsNotPendingUntilTheNextChange) {
    RunAndCancel(*m_graph, Fit());
    ASSERT_TRUE(Fit().Result());
    EXPECT_EQ(Fit().Result()->End, TFitEnd::Cancelled);
    EXPECT_FALSE(Fit().IsStale());
    EXPECT_NE(Value(1), 1);
    EXPECT_TRUE(std::isnan(Fit().Result()->StandardError(0)));
}

void ExpectSameRun(const TCurFit& expected, TSeries& copy) {
    TCurFit& fit = copy.CurveFit();
    EXPECT_EQ(fit.FitError(), expected.FitError());
    EXPECT_FALSE(HasPendingFit(copy));
    ASSERT_EQ(!fit.Result(), !expected.Result());
    if (!fit.Result()) return;
    const TFitResult& result = *fit.Result();
    EXPECT_EQ(result.End, expected.Result()->End);
    EXPECT_EQ(result.PointsUsed, expected.Result()->PointsUsed);
    EXPECT_EQ(result.RSquared, expected.Result()->RSquared);
    EXPECT_EQ(result.Varied, expected.Result()->Varied);
    EXPECT_EQ(result.Quality.Freedom, expected.Result()->Quality.Freedom);
    EXPECT_EQ(FormatShortest(result.Quality.DurbinWatson),
              FormatShortest(expected.Result()->Quality.DurbinWatson));
    EXPECT_EQ(result.Remarks, expected.Result()->Remarks);
    if (result.End != TFitEnd::Cancelled) {
        EXPECT_EQ(result.Covariance(0, 1), expected.Result()->Covariance(0, 1));
        EXPECT_EQ(result.StandardError(1), expected.Result()->StandardError(1));
    }
}

TEST_F(SeriesFitting, AFitThatHasEndedIsUpToDateInEveryFileAndCopy) {
    const std::function<void()> ends[] = {
        [this] { m_graph->PrepareForDrawing(); }, [this] { RunAndCancel(*m_graph, Fit()); },
        [this] { Fit().SetExpression("a*(x"), m_graph->PrepareForDrawing(); },
        [this] { Fit().RestoreRunState({}); }, // taken back
    };
    Fit().SetStatus(TFitStatus::FinalResult);
    for (const auto& end : ends) {
        end();
        ASSERT_FALSE(HasPendingFit(m_series));
        for (const bool compact : {true, false}) {
            SetCompactStreams(compact);
            TBytes bytes;
            m_graph->SaveToStream(bytes, TPoints::Include);
            SetCompactStreams(true);
            TByteSource source(bytes);
            TxyGraph read;
            read.LoadFromStream(source);
            ExpectSameRun(Fit(), *read.FindSeries(1));
        }
        TxyGraph copy;
        TSeries& series = *copy.FindSeries(copy.AddSeries());
        series.CopyFrom(m_series);
        ExpectSameRun(Fit(), series);
        series.AddPoint(21, 1);
        EXPECT_TRUE(HasPendingFit(series));
        copy.CopyFrom(*m_graph);
        ExpectSameRun(Fit(), *copy.FindSeries(1));
    }
}

TEST_F(SeriesFitting, WeightsTiesAndBoundsAreInEveryFileAndCopy) {
    m_series.SetYErrors(std::vector<double>(static_cast<std::size_t>(m_series.Count()), 0.25));
    Fit().SetWeighting({.ByYErrors = true, .Errors = TErrorSource::Points, .Robust = TRobust::Huber});
    Fit().Parameter(1)->SetBounds(-2, 1e300);
    Fit().Parameter(2)->SetTie("2*a");
    const auto expectSame = [this](const TSeries& other) {
        const TCurFit& fit = other.CurveFit();
        EXPECT_EQ(fit.Weighting(), Fit().Weighting());
        EXPECT_EQ(fit.Parameter(1)->Min(), -2);
        EXPECT_EQ(fit.Parameter(1)->Max(), 1e300);
        EXPECT_EQ(fit.Parameter(2)->Tie(), "2*a");
        EXPECT_EQ(other.YErrors(), m_series.YErrors());
    };
    for (const bool compact : {true, false}) {
        SetCompactStreams(compact);
        TBytes bytes;
        m_graph->SaveToStream(bytes, TPoints::Include);
        SetCompactStreams(true);
        TByteSource source(bytes);
        TxyGraph read;
        read.LoadFromStream(source);
        expectSame(*read.FindSeries(1));
    }
    TxyGraph copy;
    copy.CopyFrom(*m_graph);
    expectSame(*copy.FindSeries(1));
}

TEST_F(SeriesFitting, AResultIsFiledBesideItsPointsOnly) {
    Fit().SetStatus(TFitStatus::FinalResult);
    m_graph->PrepareForDrawing();
    TBytes bytes;
    m_graph->SaveToStream(bytes, TPoints::LeaveOut);
    TByteSource source(bytes);
    TxyGraph read;
    read.LoadFromStream(source);
    EXPECT_FALSE(read.FindSeries(1)->CurveFit().Result());
    EXPECT_TRUE(read.FindSeries(1)->CurveFit().IsStale());
}

TEST_F(SeriesFitting, WhoeverDestroysTheGraphMeanwhileEndsTheRun) {
    Fit().SetStatus(TFitStatus::EveryStep);
    m_graph->show();
    ASSERT_TRUE(QTest::qWaitForWindowExposed(m_graph.get()));
    ASSERT_TRUE(QTest::qWaitFor([this] { return !Fit().IsStale(); }));
    Fit().Parameter(2)->SetValue(2);
    QObject::connect(m_graph.get(), &TxyGraph::OnPaintEnd, m_graph.get(),
                     [this] { m_graph->FreeAllSeries(); });
    m_graph->PrepareForDrawing();
    EXPECT_EQ(m_graph->SeriesCount(), 0);
}

TEST_F(SeriesFitting, OnALogarithmicAxisTheCurveBeginsWhereXIsPositive) {
    Fit().SetStatus(TFitStatus::Function);
    Fit().SetNPoints(3);
    Fit().SetLeftMargin(-3);
    m_graph->XAxis()->SetLogScale(true);
    for (const bool hasMargin : {false, true}) {
        Fit().SetUseLeftMargin(hasMargin);
        m_graph->PrepareForDrawing();
        ASSERT_EQ(m_series.FittedCurve().size(), 3u);
        const double expected[] = {1, std::sqrt(19), 19};
        for (std::size_t i = 0; i < 3; ++i) EXPECT_NEAR(m_series.FittedCurve()[i].X, expected[i], 1e-9) << i;
    }
}

} // namespace
} // namespace lumoplot
