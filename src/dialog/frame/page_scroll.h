// Where a page of the data editor lies: as large as the window has room for, and scrolled below the size that
// the page needs, so that no page makes the window larger than the screen or changes its size.
#pragma once

#include <QScrollArea>

namespace lumoplot {

class TPageScroll : public QScrollArea {
    Q_OBJECT

public:
    /// Owns the page from now on.
    explicit TPageScroll(QWidget& page, QWidget* parent = nullptr);

    QSize sizeHint() const override;
    QSize minimumSizeHint() const override;

protected:
    void resizeEvent(QResizeEvent* event) override;
    bool eventFilter(QObject* watched, QEvent* event) override;

private:
    void FitPage();
};

} // namespace lumoplot
