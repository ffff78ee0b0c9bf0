#include "cli/program.h"

#include <QJsonArray>

namespace lumoplot {
namespace {

class Filter : public TFolderTest {
protected:
    /// Y = 3, 5, 3, 5, … at X = 0, 1, 2, …: a level of 4 and a wave of frequency 0.5.
    std::string Waves(int count) const {
        std::string text;
        for (int i = 0; i < count; ++i) text += std::to_string(i) + (i % 2 == 0 ? ",3\n" : ",5\n");
        return WithText("waves.csv", text);
    }
};

// Below a band from 0 to 0.25 lies the level alone. With M = 1 the response is 0.5 at the centre and
// sin(π/2)/π beside it.
TEST_F(Filter, PassesAndStopsABand) {
    const TArguments common = {"filter",  Waves(5), "--low",   "-.25", "--high",        "0.25",
                               "--every", "1",      "--width", "1",    "--no-normalize"};
    const double side = 0.31830988618379067;
    TArguments pass = common;
    pass.push_back("--pass");
    const QJsonObject passed = RunForJson(pass);
    EXPECT_EQ(passed["x"].toArray(), QJsonArray({1, 2}));
    EXPECT_NEAR(passed["y"].toArray()[0].toDouble(), 2 * (0.5 * 5 + side * 6), 1e-12);
    EXPECT_NEAR(passed["y"].toArray()[1].toDouble(), 2 * (0.5 * 3 + side * 10), 1e-12);
    const QJsonObject stopped = RunForJson(common);
    EXPECT_NEAR(stopped["y"].toArray()[0].toDouble(), 5 - 2 * (0.5 * 5 + side * 6), 1e-12);
}

TEST_F(Filter, TellsWhyThereIsNothing) {
    const TRunResult refused = RunProgram({"filter", Waves(4), "--low", "1", "--high", "2"});
    EXPECT_EQ(refused.status, 1);
    EXPECT_TRUE(IsOneMessage(refused.error)) << refused.error;
    EXPECT_NE(refused.error.find("Fail to Apply Filter"), std::string::npos) << refused.error;
    const TRunResult empty = RunProgram({"filter", Waves(20), "--low", "1", "--high", "2"});
    EXPECT_EQ(empty.status, 0);
    EXPECT_EQ(empty.out, "");
    EXPECT_TRUE(IsOneMessage(empty.error)) << empty.error;
}

} // namespace
} // namespace lumoplot
