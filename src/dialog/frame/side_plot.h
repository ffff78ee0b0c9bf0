// The graph beside the settings, where the window has room for both. It only shows: points and marks are
// edited on the Preview page.
#pragma once

#include <QImage>
#include <QTimer>
#include <QWidget>

namespace lumoplot {

class TGraphSession;

class TSidePlot : public QWidget {
    Q_OBJECT

public:
    explicit TSidePlot(QWidget* parent = nullptr);

    /// Shows the session's graph from now on, and again after each step. Borrowed; null for none.
    void SetSession(TGraphSession* session);
    /// Draws soon, when nothing more comes.
    void DrawSoon();

    QSize sizeHint() const override { return {420, 320}; }
    QSize minimumSizeHint() const override { return {0, 0}; }

protected:
    void paintEvent(QPaintEvent* event) override;
    void resizeEvent(QResizeEvent* event) override;
    void showEvent(QShowEvent* event) override;

private:
    void Draw();

    TGraphSession* m_session = nullptr;
    QTimer m_timer;
    QImage m_picture;
};

} // namespace lumoplot
