// What lies over a graph without data: three ways to begin.
#pragma once

#include <QWidget>

class QAction;

namespace lumoplot {

class TStartPage : public QWidget {
    Q_OBJECT

public:
    /// Lies in the middle of `graph`. The first two ways are those of the actions.
    TStartPage(QWidget& graph, QAction& openData, QAction& openGraph);

Q_SIGNALS:
    void ExampleWanted();

protected:
    bool eventFilter(QObject* watched, QEvent* event) override;

private:
    void MoveToMiddle();
};

} // namespace lumoplot
