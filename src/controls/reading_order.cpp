#include "controls/reading_order.h"

#include <QAbstractScrollArea>
#include <QGridLayout>
#include <QScrollArea>
#include <QSplitter>
#include <QStackedWidget>
#include <QTabBar>
#include <QTabWidget>
#include <algorithm>
#include <tuple>
#include <vector>

namespace lumoplot {
namespace {

class TReading {
public:
    void Read(QWidget& widget) {
        if (auto* tabs = qobject_cast<QTabWidget*>(&widget)) {
            // The tabs have the focus, and not a second time as the proxy of what they belong to.
            tabs->setFocusProxy(nullptr);
            tabs->setFocusPolicy(Qt::NoFocus);
            Add(*tabs->tabBar());
            for (int i = 0; i < tabs->count(); ++i) Read(*tabs->widget(i));
        } else if (auto* stack = qobject_cast<QStackedWidget*>(&widget)) {
            for (int i = 0; i < stack->count(); ++i) Read(*stack->widget(i));
        } else if (auto* splitter = qobject_cast<QSplitter*>(&widget)) {
            for (int i = 0; i < splitter->count(); ++i) Read(*splitter->widget(i));
        } else if (auto* scroll = qobject_cast<QScrollArea*>(&widget); scroll && scroll->widget()) {
            Read(*scroll->widget());
        } else {
            Add(widget);
            const bool isControl = widget.focusPolicy() != Qt::NoFocus && !widget.isWindow();
            if (widget.layout() && !isControl) Read(*widget.layout());
        }
    }

    const std::vector<QWidget*>& Controls() const { return m_controls; }

private:
    void Read(QLayout& layout) {
        std::vector<int> order(static_cast<std::size_t>(layout.count()));
        for (int i = 0; i < layout.count(); ++i) order[static_cast<std::size_t>(i)] = i;
        if (auto* grid = qobject_cast<QGridLayout*>(&layout))
            std::ranges::stable_sort(order, {}, [grid](int i) {
                int row = 0, column = 0, rows = 0, columns = 0;
                grid->getItemPosition(i, &row, &column, &rows, &columns);
                return std::tuple(row, column);
            });
        for (const int i : order) {
            QLayoutItem& item = *layout.itemAt(i);
            if (item.widget()) Read(*item.widget());
            if (item.layout()) Read(*item.layout());
        }
    }
    void Add(QWidget& widget) {
        if (widget.focusPolicy() != Qt::NoFocus) m_controls.push_back(&widget);
    }

    std::vector<QWidget*> m_controls;
};

} // namespace

void OrderKeysAsRead(QWidget& window) {
    TReading reading;
    reading.Read(window);
    for (std::size_t i = 1; i < reading.Controls().size(); ++i)
        QWidget::setTabOrder(reading.Controls()[i - 1], reading.Controls()[i]);
}

} // namespace lumoplot
