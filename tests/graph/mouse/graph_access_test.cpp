// What a screen reader is told of a graph.
#include "graph/mouse/shown_graph.h"

#include <QAccessible>

namespace lumoplot {
namespace {

class GraphAccess : public TShownGraph {
protected:
    void SetUp() override {
        First.SetSeriesName("Squares");
        First.SetLinesShown(true);
        Graph.Appearance()->SetGraphTitle("Test");
        Show();
    }
    QAccessibleInterface& Access() { return *QAccessible::queryAccessibleInterface(&Graph); }
};

TEST_F(GraphAccess, DataSetsAndPointsHaveNamesAndValues) {
    ASSERT_EQ(Access().text(QAccessible::Name), "Test");
    ASSERT_EQ(Access().childCount(), 1);
    QAccessibleInterface* series = Access().child(0);
    ASSERT_TRUE(series && series->isValid());
    EXPECT_EQ(series->text(QAccessible::Name), "Squares");
    EXPECT_EQ(series->text(QAccessible::Value), "11 points, X from 0 to 10");
    ASSERT_EQ(series->childCount(), 11);
    EXPECT_EQ(series->child(3)->text(QAccessible::Name), "X 3, Y 9");
    EXPECT_EQ(series->child(3), series->child(3));
    EXPECT_EQ(series->indexOfChild(series->child(3)), 3);
    EXPECT_EQ(Access().indexOfChild(series), 0);
    Graph.DeleteSeries(1);
    EXPECT_FALSE(series->isValid());
    EXPECT_EQ(Access().childCount(), 0);
}

TEST_F(GraphAccess, TheKeysWalkAndTheValueIsThatOfThePoint) {
    const std::pair<int, const char*> steps[] = {{Qt::Key_Right, "X = 0"},     {Qt::Key_Right, "X = 1"},
                                                 {Qt::Key_End, "X = 10"},      {Qt::Key_PageUp, "X = 0"},
                                                 {Qt::Key_PageDown, "X = 10"}, {Qt::Key_Left, "X = 9"},
                                                 {Qt::Key_Home, "X = 0"}};
    for (const auto& [key, expected] : steps) {
        Press(key, Qt::ControlModifier);
        const QString value = Access().text(QAccessible::Value).replace(QChar::Nbsp, u' ');
        EXPECT_TRUE(value.contains(QString::fromLatin1(expected))) << value.toStdString() << expected;
    }
}

} // namespace
} // namespace lumoplot
