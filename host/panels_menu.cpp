#include "host/panels_menu.h"

#include "dialogs/editing/panels.h"
#include "graph/mouse/graph_mouse.h"
#include "session/graph_session.h"
#include "support/guard.h"

#include <QKeyEvent>
#include <QMenu>
#include <QPainter>
#include <QTimer>
#include <algorithm>

namespace lumoplot {
namespace {

constexpr QSizeF kSmallestInset(60, 45);              // pixels
constexpr QRectF kUsualInset(0.56, 0.14, 0.38, 0.36); // of the graph, where it is not dragged
constexpr const char* kIsFollowed = "panelIsFollowed";

QRectF FractionsOf(const QRectF& place, const QSizeF& graph) {
    return {place.left() / graph.width(), place.top() / graph.height(), place.width() / graph.width(),
            place.height() / graph.height()};
}

std::pair<double, double> RangeOf(const TxyGraph& graph) {
    return {graph.XAxis()->Min(), graph.XAxis()->Max()};
}

} // namespace

bool TRectangleMode::Press(const TPlotMap&, const TMouseMoment& moment) {
    if (moment.Button != Qt::LeftButton) return false;
    m_start = m_place = moment.Place;
    return true;
}

void TRectangleMode::Drag(const TMouseMoment& moment) {
    m_place = moment.Place;
    m_graph.update();
}

void TRectangleMode::Release(const TMouseMoment& moment) {
    m_place = moment.Place;
    const QRectF drawn = Rectangle();
    m_start.reset();
    m_drawn(drawn);
}

void TRectangleMode::Cancel() {
    m_start.reset();
    m_graph.update();
}

/// Return puts the usual rectangle, Esc none.
bool TRectangleMode::PressKey(const QKeyEvent& event) {
    const bool isReturn = event.key() == Qt::Key_Return || event.key() == Qt::Key_Enter;
    if (!isReturn && event.key() != Qt::Key_Escape) return false;
    const QSizeF size = m_graph.size();
    const QRectF usual(kUsualInset.left() * size.width(), kUsualInset.top() * size.height(),
                       kUsualInset.width() * size.width(), kUsualInset.height() * size.height());
    m_drawn(isReturn ? std::optional(usual) : std::nullopt);
    return true;
}

QRectF TRectangleMode::Rectangle() const {
    return QRectF(*m_start, m_place).normalized() & QRectF(m_graph.rect());
}

void TRectangleMode::Paint(QPainter& painter) const {
    if (!m_start) return;
    const QColor color = m_graph.palette().color(QPalette::Highlight);
    QColor tint = color;
    tint.setAlpha(40);
    painter.setPen(QPen(color, 1));
    painter.setBrush(tint);
    painter.drawRect(Rectangle());
}

TPanelsMenu::TPanelsMenu(TxyGraph& graph, TGraphSession& session, QMenu& menu)
    : QObject(&menu), m_graph(graph), m_session(session), m_menu(menu) {
    const auto add = [this](const QString& caption, const QString& tip, auto action) {
        QAction* entry = m_menu.addAction(caption);
        entry->setStatusTip(tip);
        connect(entry, &QAction::triggered, this, [this, action] { Guarded([&] { (this->*action)(); }); });
        return entry;
    };
    m_inset = add(tr("Add &Inset"), tr("Drag a rectangle for a small graph of the same data"),
                  &TPanelsMenu::DragInset);
    m_inset->setObjectName(QStringLiteral("a_AddInset"));
    m_stack =
        add(tr("&Stack Current Data Set Below"),
            tr("Give the current data set a panel of its own with the same X axis"), &TPanelsMenu::Stack);
    m_stack->setObjectName(QStringLiteral("a_StackBelow"));
    m_align = add(tr("&Align Frames"), tr("Let the plots of stacked panels begin and end below one another"),
                  &TPanelsMenu::Align);
    m_align->setObjectName(QStringLiteral("a_AlignFrames"));
    m_remove = m_menu.addMenu(tr("&Remove Panel"));
    connect(&m_menu, &QMenu::aboutToShow, this, &TPanelsMenu::ListPanels);
    connect(&graph, &TxyGraph::OnUserChange, this, &TPanelsMenu::ShareRange);
    ListPanels();
}

void TPanelsMenu::DragInset() {
    m_graph.setFocus();
    Q_EMIT Told(tr("Drag a rectangle for the inset; Return puts it into the upper right corner"));
    m_graph.Mouse().SetMode(std::make_unique<TRectangleMode>(m_graph, [this](std::optional<QRectF> place) {
        // The mode that tells this goes.
        QTimer::singleShot(0, this, [this, place] { Guarded([&] { PutInset(place); }); });
    }));
}

void TPanelsMenu::PutInset(std::optional<QRectF> place) {
    m_graph.Mouse().SetMode(nullptr);
    Q_EMIT Told({});
    if (!place || place->width() < kSmallestInset.width() || place->height() < kSmallestInset.height())
        return;
    m_session.Change(tr("add inset").toStdString(),
                     [&] { AddInset(m_graph, FractionsOf(*place, m_graph.size())); });
}

void TPanelsMenu::Stack() {
    TSeries* series = m_graph.FindSeries(m_graph.Appearance()->CurrSerIndex());
    if (!series) return;
    const QString name = QString::fromStdString(series->SeriesName());
    m_session.Change(tr("panel for %1").arg(name).toStdString(), [&] { StackBelow(m_graph, *series); });
    // How wide the labels are is known when it has been painted.
    for (TxyGraph* member : StackOf(m_graph)) member->repaint();
    m_session.FollowUp([this] { AlignFrames(m_graph); });
}

void TPanelsMenu::Align() {
    m_session.Change(tr("align frames").toStdString(), [this] { AlignFrames(m_graph); });
}

void TPanelsMenu::Remove(int place) {
    m_session.Change(tr("remove panel").toStdString(), [&] { RemovePanel(m_graph, place); });
}

void TPanelsMenu::ListPanels() {
    m_remove->clear();
    int place = 0;
    for (const TxyChildGr* child : m_graph.ChildGraphs()) {
        const TSeries* first = child->FirstSeries();
        QString name = first ? QString::fromStdString(first->SeriesName()) : QString();
        m_remove->addAction(tr("&%1: %2").arg(place + 1).arg(name.replace(u'&', QStringLiteral("&&"))), this,
                            [this, place] { Guarded([&] { Remove(place); }); });
        ++place;
    }
    m_remove->setEnabled(place > 0);
    m_inset->setEnabled(m_graph.HasContent());
    m_stack->setEnabled(m_graph.Series().size() > 1);
    m_align->setEnabled(StackOf(m_graph).size() > 1);
}

/// A panel's double click asks for its own settings.
void TPanelsMenu::Refresh() {
    m_sharedRange = RangeOf(m_graph);
    for (TxyChildGr* child : m_graph.ChildGraphs()) {
        if (child->property(kIsFollowed).toBool()) continue;
        child->setProperty(kIsFollowed, true);
        connect(child, &TxyGraph::OnWantDesigner, this, [this, child] { Q_EMIT SettingsWanted(child); });
    }
}

/// The panel whose range is not that of the others has been zoomed.
void TPanelsMenu::ShareRange() {
    const std::vector<TxyGraph*> stack = StackOf(m_graph);
    if (stack.size() < 2) return;
    const auto changed = std::ranges::find_if(
        stack, [this](const TxyGraph* member) { return RangeOf(*member) != m_sharedRange; });
    if (changed == stack.end()) return;
    m_sharedRange = RangeOf(**changed);
    m_session.FollowUp([&] { ShareXRange(m_graph, **changed); });
}

} // namespace lumoplot
