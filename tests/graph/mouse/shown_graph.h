// A graph on the screen, driven by input events.
#pragma once

#include "common/recording_sink.h"
#include "graph/model/graph.h"
#include "graph/mouse/graph_mouse.h"

#include <QApplication>
#include <QTest>
#include <QWheelEvent>
#include <gtest/gtest.h>

namespace lumoplot {

class TShownGraph : public testing::Test {
protected:
    TShownGraph() {
        Graph.resize(500, 400);
        for (int i = 0; i <= 10; ++i) First.AddPoint(i, i * i);
    }

    void Show() {
        Graph.show();
        ASSERT_TRUE(QTest::qWaitForWindowActive(&Graph));
        Graph.setFocus();
        Repaint();
    }
    void Repaint() { Graph.grab(); }
    const TPlotMap& Map() const {
        const TPlotMap* map = Graph.Mouse().Map();
        if (!map) throw std::runtime_error("no plot is shown");
        return *map;
    }
    QPoint PlaceOf(double x, double y) const {
        return QPointF(Map().X.Position(x), Map().Y.Position(y)).toPoint();
    }
    QPoint LabelsOf(TAxisRole role) const {
        return Map().AxisPlaces[static_cast<std::size_t>(role)].center().toPoint();
    }

    /// A drag in three steps, with the button still down at the end.
    void Drag(QPoint from, QPoint to, Qt::MouseButton button = Qt::LeftButton,
              Qt::KeyboardModifiers modifiers = {}) {
        QTest::mousePress(&Graph, button, modifiers, from);
        for (const QPoint place : {(from + to) / 2, to}) Send(QEvent::MouseMove, place, Qt::NoButton, button);
    }
    void DragAndDrop(QPoint from, QPoint to, Qt::MouseButton button = Qt::LeftButton,
                     Qt::KeyboardModifiers modifiers = {}) {
        Drag(from, to, button, modifiers);
        QTest::mouseRelease(&Graph, button, modifiers, to);
        Repaint();
    }
    void MoveTo(QPoint place) { Send(QEvent::MouseMove, place, Qt::NoButton, Qt::NoButton); }
    void Wheel(QPoint place, int notches) {
        QWheelEvent event(place, Graph.mapToGlobal(QPointF(place)), {}, {0, 120 * notches}, Qt::NoButton, {},
                          Qt::NoScrollPhase, false);
        QApplication::sendEvent(&Graph, &event);
        Repaint();
    }
    void Press(int key, Qt::KeyboardModifiers modifiers = {}) {
        QTest::keyClick(&Graph, static_cast<Qt::Key>(key), modifiers);
        Repaint();
    }

    TRecordingSink Sink;
    TxyGraph Graph;
    TSeries& First = *Graph.FindSeries(Graph.AddSeries());

private:
    void Send(QEvent::Type type, QPoint place, Qt::MouseButton button, Qt::MouseButtons buttons) {
        QMouseEvent event(type, place, Graph.mapToGlobal(QPointF(place)), button, buttons, {});
        QApplication::sendEvent(&Graph, &event);
    }
};

} // namespace lumoplot
