#include "data/points/point_chain.h"

#include "common/special_values.h"
#include "data/points/walked_chain.h"

#include <gtest/gtest.h>
#include <limits>
#include <random>
#include <stdexcept>

namespace lumoplot {
namespace {

enum class TArrival { Anywhere, OnAGrid, NearlyAscending, NearlyDescending, AfterRuns };

struct TWalkCase {
    const char* name;
    TArrival arrival;
    TMergeRule rule;
    double erased; ///< share of the steps that delete
};

// About 4000 points lie between 0 and 1000, so a tolerance of 1 reaches over several neighbours.
const TWalkCase kWalkCases[] = {
    {"all kept, no tolerance", TArrival::Anywhere, {0, true}, 0.2},
    {"equal X side by side", TArrival::OnAGrid, {0, true}, 0.3},
    {"equal X merged", TArrival::OnAGrid, {0, false}, 0.3},
    {"merged within a tolerance", TArrival::Anywhere, {0.2, false}, 0.1},
    {"merged over several neighbours", TArrival::NearlyAscending, {1, false}, 0.2},
    {"placed in front of near points", TArrival::Anywhere, {1, true}, 0.2},
    {"placed in front of most points", TArrival::Anywhere, {400, true}, 0.3},
    {"ascending", TArrival::NearlyAscending, {0, true}, 0.0},
    {"descending", TArrival::NearlyDescending, {0, false}, 0.0},
    {"more deleted than added in the end", TArrival::Anywhere, {0, true}, 0.45},
    {"negative tolerance", TArrival::Anywhere, {-2, true}, 0.1},
    {"tolerance that is no number", TArrival::OnAGrid, {kNaN, false}, 0.1},
    {"among runs that are out of order", TArrival::AfterRuns, {0, true}, 0.2},
    {"endless tolerance", TArrival::Anywhere, {kInfinity, true}, 0.1},
};

class TWalkComparison {
public:
    TWalkComparison(const TWalkCase& walkCase, unsigned seed) : m_case(walkCase), m_random(seed) {}

    /// Grows, shrinks until blocks are merged, grows again, and empties the chain.
    void Run(int steps) {
        if (m_case.arrival == TArrival::AfterRuns) AddRuns();
        for (int step = 1; step <= steps; ++step) {
            const bool isShrinking = step > steps / 3 && step <= steps / 2;
            if (Chance() < (isShrinking ? 0.95 : m_case.erased))
                EraseOne(isShrinking);
            else
                AddOne(step, steps);
            if (step % 200 == 0 || step == steps) Compare();
            if (step % 1500 == 0) SetDerivedOfAll();
            if (step % 1100 == 0) Rebuild();
            if (step == steps / 4 * 3) EraseNeighbours();
            if (testing::Test::HasFatalFailure()) return;
        }
        while (!m_walked.Points.empty()) EraseOne(true);
        Compare();
        EXPECT_EQ(m_chain.BlockCount(), 0u);
    }

private:
    double Chance() { return std::uniform_real_distribution<>(0, 1)(m_random); }

    double NextX(int step, int steps) {
        const double done = static_cast<double>(step) / steps;
        switch (m_case.arrival) {
        case TArrival::OnAGrid: return std::floor(Chance() * 1500);
        case TArrival::NearlyAscending: return 1000 * done + 5 * Chance();
        case TArrival::NearlyDescending: return 1000 * (1 - done) + (Chance() < 0.1 ? 20 * Chance() : 0);
        default: return 1000 * Chance();
        }
    }

    /// Ascending runs one behind the other, each as long as a block or so, that know nothing of each other.
    /// They are added from the last point to the first, with a tolerance that puts each in front of all.
    void AddRuns() {
        Add(1e6, 0, {});
        for (int run = 0; run < 12; ++run) {
            const double start = 1000 * Chance();
            for (int left = 150 + static_cast<int>(200 * Chance()); left > 0; --left)
                Add(start + left / 10.0, left, {kInfinity, true});
        }
        Compare();
    }

    void Add(double x, double y, const TMergeRule& rule) {
        // Errors come and go in long runs, so that blocks with them meet blocks without.
        const double error = m_walked.LastId / 700 % 2 == 1 && Chance() < 0.7 ? Chance() : 0;
        EXPECT_TRUE(m_chain.Add(x, y, rule, error));
        m_walked.Add(x, y, rule, error);
    }

    void AddOne(int step, int steps) {
        // Now and then another rule, as when the user changes it: merging then meets points out of order.
        TMergeRule rule = m_case.rule;
        if (Chance() < 0.02) rule = {3 * Chance(), Chance() < 0.5};
        Add(NextX(step, steps), step, rule);
    }

    /// Any Id, there or not; one that is there when one must go.
    void EraseOne(bool mustGo) {
        auto id = static_cast<std::int32_t>(Chance() * (m_walked.LastId + 2));
        const auto count = static_cast<double>(m_walked.Points.size());
        if (mustGo && count > 0)
            id = std::next(m_walked.Points.begin(), static_cast<int>(Chance() * count))->Id;
        EXPECT_EQ(m_chain.Erase(id).has_value(), m_walked.Erase(id));
    }

    void EraseNeighbours() {
        EXPECT_EQ(m_chain.EraseNeighbours(0.3), m_walked.EraseNeighbours(0.3));
        Compare();
    }

    void SetDerivedOfAll() {
        std::vector<double> values;
        for (TSeriesPoint& point : m_walked.Points) values.push_back(point.Derived = Chance());
        m_chain.SetDerived(values);
    }

    /// As a state that is put back does.
    void Rebuild() {
        std::vector<TPointSpans> runs;
        for (std::size_t i = 0; i < m_chain.BlockCount(); ++i) runs.push_back(m_chain.Block(i));
        TPointChain rebuilt(runs, m_chain.LastId());
        m_chain.Swap(rebuilt);
        for (TSeriesPoint& point : m_walked.Points) point.Derived = 0;
    }

    void Compare() {
        ASSERT_EQ(m_chain.Count(), static_cast<int>(m_walked.Points.size()));
        ASSERT_EQ(m_chain.LastId(), m_walked.LastId);
        TPointCursor cursor = m_chain.First();
        for (const TSeriesPoint& point : m_walked.Points) {
            ASSERT_TRUE(cursor);
            ASSERT_EQ(cursor.Id(), point.Id);
            ASSERT_EQ(cursor.X(), point.X);
            ASSERT_EQ(cursor.Y(), point.Y);
            ASSERT_EQ(cursor.Derived(), point.Derived);
            ASSERT_EQ(cursor.YError(), point.YError);
            const auto found = m_chain.Find(point.Id);
            ASSERT_TRUE(found && found->X == point.X && found->Y == point.Y) << point.Id;
            cursor = cursor.Next();
        }
        ASSERT_FALSE(cursor);
    }

    TWalkCase m_case;
    std::mt19937 m_random;
    TPointChain m_chain;
    TWalkedChain m_walked;
};

TEST(PointChain, AgreesWithAWalkAlongTheChain) {
    for (const TWalkCase& walkCase : kWalkCases) {
        for (unsigned seed = 1; seed <= 4; ++seed) {
            SCOPED_TRACE(walkCase.name);
            TWalkComparison(walkCase, seed).Run(6000);
            if (testing::Test::HasFatalFailure()) return;
        }
    }
}

TPointChain Counted(int count) {
    TPointChain chain;
    for (int i = 0; i < count; ++i) chain.Add(i, 10 * i, {});
    return chain;
}

TEST(PointChain, AnOverwriteAtTheEndOfABlockIsSeenByTheSearch) {
    constexpr int kEnd = TPointBlock::kCapacity;
    for (int k = kEnd - 3; k < kEnd + 3; ++k) {
        TPointChain chain = Counted(2 * kEnd + 10);
        chain.Add(k - 0.4, -1, {0.5, false});  // takes the place of k, below it
        chain.Add(k + 0.35, -2, {0.7, false}); // k would be near enough, what it has become is not
        EXPECT_EQ(chain.Find(k + 1)->X, k - 0.4);
        EXPECT_EQ(chain.Find(k + 2)->X, k + 0.35);
        EXPECT_EQ(chain.Count(), 2 * kEnd + 10);
    }
}

TEST(PointChain, RefusesAnXThatIsNoPlace) {
    TPointChain chain;
    for (const double x : {kNaN, kInfinity, -kInfinity}) EXPECT_FALSE(chain.Add(x, 1, {}));
    EXPECT_TRUE(chain.IsEmpty());
    EXPECT_EQ(chain.LastId(), 0);
}

TEST(PointChain, CopiesShareNothing) {
    TPointChain original = Counted(2000);
    original.Erase(700);
    TPointChain copy = original;
    copy.Erase(1);
    copy.SetY(1500, -1);
    copy.Add(3.5, 0, {0, true});
    EXPECT_EQ(original.Count(), 1999);
    EXPECT_EQ(original.Find(1500)->Y, 14990);
    EXPECT_TRUE(original.Find(1));
    EXPECT_EQ(copy.Find(2001)->X, 3.5);
    EXPECT_FALSE(copy.Find(700));

    TPointChain moved = std::move(original);
    EXPECT_EQ(moved.Count(), 1999);
    EXPECT_TRUE(original.IsEmpty()); // NOLINT: a chain that was moved from is empty
    EXPECT_TRUE(original.Add(1, 1, {}));
    EXPECT_EQ(original.LastId(), 1);
}

TEST(PointChain, BlocksAreFilledByWhatComesInOrder) {
    for (const bool ascending : {true, false}) {
        TPointChain chain;
        for (int i = 0; i < 5000; ++i) chain.Add(ascending ? i : -i, i, {});
        EXPECT_LE(chain.BlockCount(), 5000 / TPointBlock::kCapacity + 2);
    }
}

TEST(PointChain, DerivedIsOneValueAPointOrNone) {
    TPointChain chain = Counted(1200);
    const std::vector<double> ones(1200, 1.0);
    chain.SetDerived(ones);
    chain.Add(600.5, 0, {});
    EXPECT_EQ(chain.Find(1200)->Derived, 1);
    EXPECT_EQ(chain.Find(1201)->Derived, 0) << "a new point has none";
    EXPECT_THROW(chain.SetDerived(ones), std::invalid_argument);
    EXPECT_EQ(chain.Find(1)->Derived, 1) << "and nothing has changed then";
    chain.SetDerived({});
    EXPECT_EQ(chain.Find(1)->Derived, 0);
    EXPECT_TRUE(chain.Block(0).Derived.empty());
}

TEST(PointChain, YErrorsAreNumbersAbove0AndCostNothingUntilThereIsOne) {
    TPointChain chain = Counted(1200);
    for (const double error : {0.0, -1.0, kNaN, kInfinity}) EXPECT_TRUE(chain.SetYError(600, error));
    EXPECT_FALSE(chain.HasYErrors());
    for (std::size_t i = 0; i < chain.BlockCount(); ++i) EXPECT_TRUE(chain.Block(i).YErrors.empty());

    EXPECT_TRUE(chain.SetYError(600, 0.5));
    EXPECT_FALSE(chain.SetYError(5000, 0.5));
    EXPECT_TRUE(chain.HasYErrors());
    EXPECT_TRUE(chain.Block(0).YErrors.empty()) << "other blocks stay as they are";
    chain.SetY(600, -1);
    EXPECT_EQ(chain.Find(600)->YError, 0.5) << "another Y keeps its error";
    chain.Erase(600);
    EXPECT_FALSE(chain.HasYErrors());

    std::vector<double> errors(1199, 2);
    errors[3] = -2;
    chain.SetYErrors(errors);
    EXPECT_EQ(chain.Find(4)->YError, 0);
    EXPECT_EQ(chain.Find(1200)->YError, 2);
    EXPECT_THROW(chain.SetYErrors(std::span(errors).first(7)), std::invalid_argument);
    chain.SetYErrors({});
    EXPECT_FALSE(chain.HasYErrors());
}

TEST(PointChain, AddingAllAtOnceIsAddingOneByOne) {
    std::mt19937 random(5);
    for (const TMergeRule rule :
         {TMergeRule{0, true}, {0, false}, {1.5, false}, {1.5, true}, {-2, false}, {kNaN, false}}) {
        TPointChain single;
        TPointChain bulk;
        double x = 0;
        for (int block = 0; block < 40; ++block) {
            std::vector<double> xs;
            for (unsigned i = random() % 700; i > 0; --i) {
                x += random() % 50 == 0 ? -3 : random() % 4;
                xs.push_back(x);
            }
            const double error = block % 3 == 0 ? 0 : 0.25;
            for (const double value : xs) single.Add(value, value / 2, rule, error);
            std::vector<double> ys(xs);
            for (double& y : ys) y /= 2;
            const std::vector<double> errors(error > 0 ? xs.size() : 0, error);
            ASSERT_TRUE(bulk.AddAll(xs, ys, rule, errors));
            ASSERT_EQ(bulk.Count(), single.Count());
            if (const auto id = static_cast<std::int32_t>(random() % 500); single.Erase(id)) bulk.Erase(id);
        }
        auto other = single.First();
        for (auto point = bulk.First(); point; point = point.Next(), other = other.Next()) {
            ASSERT_EQ(point.X(), other.X());
            ASSERT_EQ(point.Y(), other.Y());
            ASSERT_EQ(point.YError(), other.YError());
            ASSERT_EQ(point.Id(), other.Id());
            ASSERT_EQ(bulk.Find(point.Id())->X, point.X());
        }
    }
    TPointChain chain;
    const std::vector<double> values = {1, 2, kInfinity, 3};
    EXPECT_FALSE(chain.AddAll(values, values, {}));
    EXPECT_EQ(chain.Count(), 2);
}

} // namespace
} // namespace lumoplot
