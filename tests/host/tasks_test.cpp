// What a person does from a file to a figure, by events alone.
#include "host/window_fixture.h"

namespace lumoplot {
namespace {

using TTasks = TWindowTest;

TEST_F(TTasks, ADataSetPastedBesideItselfIsAnotherOne) {
    Open(Example("enso.csv"));
    Press(Qt::Key_C, Qt::ControlModifier | Qt::ShiftModifier);
    Press(Qt::Key_V);
    ASSERT_EQ(Graph().Series().size(), 2u);
    const TSeries& pasted = *Graph().FindSeries(2);
    EXPECT_EQ(pasted.SeriesName(), First().SeriesName() + " 2");
    EXPECT_NE(pasted.LineColor(), First().LineColor());
}

} // namespace
} // namespace lumoplot
