#include "dialogs/messages/progress_bar.h"

#include "dialogs/messages/window_place.h"
#include "ui_progress_bar.h"

#include <QShowEvent>

namespace lumoplot {

TfrmPrBar::TfrmPrBar(QWidget* owner) : TStepWindow(owner), m_ui(std::make_unique<Ui::TfrmPrBar>()) {
    m_ui->setupUi(this);
    SetControls(m_ui->progressBar, m_ui->btnCancel);
}

TfrmPrBar::~TfrmPrBar() = default;

void TfrmPrBar::SetReason(const QString& text) {
    m_ui->lblReason->setText(text);
}

void TfrmPrBar::SetProgressText(const QString& text) {
    m_ui->lblProgress->setText(text);
}

void TfrmPrBar::SetExtraReason(const QString& text) {
    m_ui->lblExtraReason->setText(text);
    m_ui->lblExtraReason->setVisible(!text.isEmpty());
}

void TfrmPrBar::showEvent(QShowEvent* event) {
    if (!event->spontaneous()) {
        adjustSize();
        CentreOnScreen(*this);
    }
    TStepWindow::showEvent(event);
}

} // namespace lumoplot
