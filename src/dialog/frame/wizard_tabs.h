// The page control of the data editor: tabs at the left with a picture above the caption.
#pragma once

#include <QTabBar>
#include <QTabWidget>

namespace lumoplot {

class TWizardTabBar : public QTabBar {
    Q_OBJECT

public:
    explicit TWizardTabBar(QWidget* parent = nullptr);

    QSize tabSizeHint(int index) const override;
    QSize minimumTabSizeHint(int index) const override { return tabSizeHint(index); }

protected:
    void paintEvent(QPaintEvent* event) override;

private:
    int PictureSize() const;
    void PaintTab(QPainter& painter, int index) const;
};

class TWizardTabs : public QTabWidget {
    Q_OBJECT

public:
    explicit TWizardTabs(QWidget* parent = nullptr);
};

} // namespace lumoplot
