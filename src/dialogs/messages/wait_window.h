// A plain window for waits that can not be cancelled: a bar from 0 to 100 in the middle of the screen, and
// the hourglass cursor while it is shown.
#pragma once

#include "controls/widgets_export.h"

#include <QDialog>
#include <memory>

namespace Ui {
class TfrmWait;
}

namespace lumoplot {

class TfrmWait : public QDialog {
    Q_OBJECT

public:
    explicit TfrmWait(QWidget* owner);
    ~TfrmWait() override;

    /// 0 to 100.
    void SetPosition(int percent);

protected:
    void showEvent(QShowEvent* event) override;
    void hideEvent(QHideEvent* event) override;

private:
    void RestoreCursor();

    std::unique_ptr<Ui::TfrmWait> m_ui;
    bool m_hasCursor = false;
};

/// Shows the window at once; it is there until it is deleted.
XYWIDGETS_EXPORT std::unique_ptr<QWidget> ShowWait(QWidget* owner, const QString& caption);

} // namespace lumoplot
