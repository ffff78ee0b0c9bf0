#include "cli/program.h"

#include <QJsonArray>

namespace lumoplot {
namespace {

using Transform = TFolderTest;

TEST_F(Transform, ATextFileIsWorkedOutAndItsPeaksAreFound) {
    const std::string file = WithText("curve.csv", "0,1\n1,3\n2,7\n3,3\n4,1\n");
    const QJsonObject slope = RunForJson({"transform", file, "--by", "derivative"});
    EXPECT_EQ(slope["y"].toArray(), QJsonArray({1, 3, 0, -3, -1}));
    const QJsonObject area =
        RunForJson({"transform", file, "--by", "integral", "--first", "1", "--second", "3"});
    EXPECT_EQ(area["y"].toArray(), QJsonArray({0, 5, 10}));
    const QJsonObject peaks = RunForJson({"peaks", file});
    EXPECT_EQ(peaks["x"].toArray(), QJsonArray({2}));
    EXPECT_EQ(peaks["height"].toArray(), QJsonArray({7}));
    const TRunResult wrong = RunProgram({"transform", file, "--by", "median", "--first", "4"});
    EXPECT_EQ(wrong.status, 1);
    EXPECT_NE(wrong.error.find("must be odd"), std::string::npos) << wrong.error;
}

// Whatever goes wrong, or finds nothing, is said with the file that it was about.
TEST_F(Transform, MessagesNameTheData) {
    const std::string upright = WithText("upright.csv", "2,1\n2,3\n2,7\n");
    const std::string flat = WithText("flat.csv", "0,1\n1,1\n2,1\n3,1\n");
    const std::vector<std::pair<int, TArguments>> cases = {
        {1, {"transform", upright, "--by", "derivative"}},
        {1, {"transform", flat, "--by", "normalise"}},
        {1, {"filter", upright, "--low", "1", "--high", "2"}},
        {1, {"fit", flat, "--equation", "1/(a-a)", "--param", "a=1"}},
        {1, {"regress", upright, "--type", "4"}},
        {1, {"convert", flat, NameOf("fit.lfn")}},
        {0, {"peaks", flat}},
    };
    for (const auto& [status, arguments] : cases) {
        const TRunResult result = RunProgram(arguments);
        EXPECT_EQ(result.status, status) << arguments[0] << result.out;
        EXPECT_TRUE(IsOneMessage(result.error)) << arguments[0] << ": " << result.error;
        EXPECT_NE(result.error.find(arguments[1]), std::string::npos) << result.error;
    }
    const TRunResult typed = RunProgram({"axis", "0", "1,234"});
    EXPECT_EQ(typed.status, 2) << typed.out;
    EXPECT_NE(typed.error.find("'1,234' can be 1234 or 1.234"), std::string::npos) << typed.error;
}

} // namespace
} // namespace lumoplot
