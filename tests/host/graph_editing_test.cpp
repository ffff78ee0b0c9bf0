#include "window_fixture.h"

#include "data/series/ds_info.h"
#include "graph/mouse/graph_mouse.h"

namespace lumoplot {
namespace {

class GraphEditing : public TWindowTest {
protected:
    QPoint PlaceOf(const TSeriesPoint& point) {
        Graph().grab();
        const TPlotMap& map = *Graph().Mouse().Map();
        return QPointF(map.X.Position(point.X), map.Y.Position(point.Y)).toPoint();
    }
};

TEST_F(GraphEditing, PointsOfTheGraphAreEditedWithTheMouse) {
    Open(Write("run.csv", "1,10\n2,20\n3,5\n4,12\n"));
    Window->Document().SaveTo(PathOf("run.ltp"));
    ASSERT_EQ(First().Count(), 4);
    Click(*Window, "btnDeletePoint");
    const TSeriesPoint point = First().Points().First().Next().Point();
    QTest::mouseClick(&Graph(), Qt::LeftButton, {}, PlaceOf(point)); // asks, as the points come from a file
    EXPECT_EQ(First().DataSourceInfo().Kind(), TSourceKind::Manual);
    EXPECT_TRUE(Window->Document().IsModified());
    QTest::mouseClick(&Graph(), Qt::LeftButton, {}, PlaceOf(point));
    EXPECT_EQ(First().Count(), 3);
}

TEST_F(GraphEditing, MarksAreEditedFromTheMenu) {
    WhenModal<QDialog>([](QDialog& editor) {
        Click(editor, "btnNew");
        Click(editor, "btnOk");
    });
    Press(Qt::Key_M);
    EXPECT_EQ(Graph().Marks().Count(), 1);
    EXPECT_TRUE(Window->Document().IsModified());
}

} // namespace
} // namespace lumoplot
