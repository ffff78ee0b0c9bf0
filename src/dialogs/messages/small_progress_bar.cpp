#include "dialogs/messages/small_progress_bar.h"

#include "dialogs/messages/window_place.h"
#include "ui_small_progress_bar.h"

#include <QGuiApplication>
#include <QScreen>

namespace lumoplot {
namespace {

constexpr QSize kBusySize(140, 100);
constexpr int kSpaceBelowReason = 16;
constexpr int kBarWidthWithoutCancel = 390;
constexpr int kDistanceFromRight = 15;

} // namespace

TfrmSmallPrBar::TfrmSmallPrBar(QWidget* owner)
    : TStepWindow(owner), m_ui(std::make_unique<Ui::TfrmSmallPrBar>()) {
    m_ui->setupUi(this);
    SetControls(m_ui->progressBar, m_ui->btnCancel);
}

TfrmSmallPrBar::~TfrmSmallPrBar() = default;

void TfrmSmallPrBar::BecomeBusy(const QString& reason) {
    setWindowTitle(QGuiApplication::applicationDisplayName());
    m_ui->progressBar->hide();
    m_ui->lblReason->setText(reason);
    m_ui->lblReason->show();
    m_ui->barLayout->setAlignment(m_ui->btnCancel, Qt::AlignHCenter);
    QVBoxLayout& layout = *m_ui->windowLayout;
    layout.setSpacing(kSpaceBelowReason);
    // A reason of some lines makes the window higher.
    const int height = layout.hasHeightForWidth() ? layout.heightForWidth(kBusySize.width()) : 0;
    setFixedSize(kBusySize.expandedTo(QSize(layout.minimumSize().width(), height)));
    CentreOnScreen(*this);
    StartTimer();
}

void TfrmSmallPrBar::BecomeProgress(const QString& caption, int count, bool withCancel, bool showNow) {
    SetNoAutoShow(!showNow);
    ResetProgress(caption, count);
    if (!withCancel) {
        m_ui->btnCancel->hide();
        m_ui->progressBar->setFixedWidth(kBarWidthWithoutCancel);
        setWindowFlags(Qt::Dialog | Qt::WindowStaysOnTopHint | Qt::CustomizeWindowHint | Qt::WindowTitleHint);
    }
    StartTimer();
    adjustSize();
    PlaceAtTopRight();
}

void TfrmSmallPrBar::PlaceAtTopRight() {
    const QWidget& anchor = parentWidget() ? *parentWidget()->window() : *this;
    const QRect room = anchor.screen()->availableGeometry();
    const int right = std::min(anchor.frameGeometry().right() + 1, room.right() + 1) - kDistanceFromRight;
    move(std::max(room.left(), right - width()), room.top());
}

TfrmSmallPrBar* ShowBusy(const QString& reason) {
    auto* window = new TfrmSmallPrBar(MainWindow());
    window->BecomeBusy(reason);
    return window;
}

TfrmSmallPrBar* ShowProgress(const QString& caption, int count, bool withCancel, bool showNow) {
    auto* window = new TfrmSmallPrBar(MainWindow());
    window->BecomeProgress(caption, count, withCancel, showNow);
    return window;
}

} // namespace lumoplot
