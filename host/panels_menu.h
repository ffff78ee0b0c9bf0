// The Panels menu: insets that are dragged open, data sets in panels of their own, frames that line up.
#pragma once

#include "graph/mouse/mouse_mode.h"

#include <QObject>
#include <QRectF>
#include <functional>
#include <optional>
#include <utility>

class QMenu;

namespace lumoplot {

class TGraphSession;
class TxyGraph;

/// Draws a rectangle with the mouse: where it is let go, `drawn` gets it in pixels of the graph.
class TRectangleMode : public TMouseMode {
public:
    TRectangleMode(TxyGraph& graph, std::function<void(std::optional<QRectF>)> drawn)
        : m_graph(graph), m_drawn(std::move(drawn)) {}

    QCursor CursorAt(const TPlotMap&, QPointF, bool) const override { return Qt::CrossCursor; }
    bool Press(const TPlotMap& map, const TMouseMoment& moment) override;
    void Drag(const TMouseMoment& moment) override;
    void Release(const TMouseMoment& moment) override;
    void Cancel() override;
    bool PressKey(const QKeyEvent& event) override;
    void Paint(QPainter& painter) const override;

private:
    QRectF Rectangle() const;

    TxyGraph& m_graph;
    std::function<void(std::optional<QRectF>)> m_drawn;
    std::optional<QPointF> m_start;
    QPointF m_place;
};

class TPanelsMenu : public QObject {
    Q_OBJECT

public:
    /// Fills the menu; both outlive it.
    TPanelsMenu(TxyGraph& graph, TGraphSession& session, QMenu& menu);

    /// Panels may have been added or have come back.
    void Refresh();

Q_SIGNALS:
    /// To be told in the status bar.
    void Told(const QString& text);
    /// The user asks for the settings of a panel.
    void SettingsWanted(lumoplot::TxyGraph* panel);

private:
    void DragInset();
    void PutInset(std::optional<QRectF> place);
    void Stack();
    void Align();
    void Remove(int place);
    void ListPanels();
    void ShareRange();

    TxyGraph& m_graph;
    TGraphSession& m_session;
    QMenu& m_menu;
    std::pair<double, double> m_sharedRange; ///< of the X axes of the stack
    QMenu* m_remove = nullptr;
    QAction* m_stack = nullptr;
    QAction* m_align = nullptr;
    QAction* m_inset = nullptr;
};

} // namespace lumoplot
