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

} // namespace
} // namespace lumoplot
