#include "common/window_driver.h"
#include "dialogs/messages/message_box_sink.h"
#include "dialogs/messages/progress_bar.h"
#include "dialogs/messages/progress_window.h"
#include "dialogs/messages/wait_window.h"
#include "support/message_sink.h"

#include <QElapsedTimer>
#include <QLabel>
#include <QProgressBar>
#include <QScreen>

namespace lumoplot {
namespace {

/// A window that the application's other windows belong to, well inside the screen.
class ProgressWindows : public testing::Test {
protected:
    void SetUp() override {
        Main.setGeometry(20, 60, 500, 300);
        Main.show();
        Main.activateWindow();
        ASSERT_TRUE(QTest::qWaitForWindowActive(&Main));
    }
    static int Position(QWidget& window) { return Control<QProgressBar>(window, "progressBar").value(); }
    /// Steps until the window is visible, and returns after how many steps; 0 when it never is.
    static int StepUntilVisible(TStepWindow& window) {
        QElapsedTimer clock;
        clock.start();
        for (int steps = 1; clock.elapsed() < 10 * TStepWindow::kShowAfterMs; ++steps) {
            window.StepProgress();
            if (window.isVisible()) return steps;
            QTest::qSleep(5);
        }
        return 0;
    }

    QWidget Main;
};

TEST_F(ProgressWindows, ShortWorkShowsNothingAndLongWorkShowsItsSteps) {
    const std::unique_ptr<TfrmSmallPrBar> window(ShowProgress("Loading", 1000, true, true));
    QElapsedTimer clock;
    clock.start();
    window->StepProgress();
    EXPECT_FALSE(window->isVisible());
    EXPECT_EQ(window->HiddenSteps(), 1);
    const int steps = StepUntilVisible(*window) + 1;
    EXPECT_GE(clock.elapsed(), TStepWindow::kShowAfterMs - 50);
    EXPECT_EQ(Position(*window), steps) << "steps made before are reflected";
    window->StepProgress();
    EXPECT_EQ(Position(*window), steps + 1);
    EXPECT_EQ(window->windowTitle(), "Loading");
    EXPECT_TRUE(window->isModal());
    EXPECT_TRUE(window->windowFlags() & Qt::WindowStaysOnTopHint);
    EXPECT_FALSE(Control<QLabel>(*window, "lblReason").isVisible());
    window->hide();
    EXPECT_EQ(window->HiddenSteps(), 0);
    EXPECT_FALSE(window->Cancelled()) << "to hide is not to close";
}

TEST_F(ProgressWindows, EveryWayOfClosingCancels) {
    const std::function<void(TStepWindow&)> ways[] = {
        [](TStepWindow& window) { Click(window, "btnCancel"); },
        [](TStepWindow& window) { QTest::keyClick(&window, Qt::Key_Escape); },
        [](TStepWindow& window) { window.close(); },
    };
    for (const auto& close : ways) {
        const std::unique_ptr<TfrmSmallPrBar> window(ShowProgress("Loading", 100, true, true));
        window->show();
        ASSERT_TRUE(QTest::qWaitForWindowExposed(window.get()));
        window->StepProgress(3);
        close(*window);
        EXPECT_TRUE(window->Cancelled());
        EXPECT_FALSE(window->isVisible());
        window->StepProgress();
        EXPECT_EQ(Position(*window), 3);
        EXPECT_EQ(window->HiddenSteps(), 0);
        QTest::qWait(20);
        EXPECT_FALSE(window->isVisible()) << "a cancelled window stays away";
    }
}

// The button is pressed by an event that waits while the work is running.
TEST_F(ProgressWindows, AStepLetsTheUserPressCancel) {
    const std::unique_ptr<TfrmSmallPrBar> window(ShowProgress("Loading", 100, true, true));
    window->show();
    ASSERT_TRUE(QTest::qWaitForWindowExposed(window.get()));
    QTimer::singleShot(0, [&] { Click(*window, "btnCancel"); });
    QTest::qSleep(TStepWindow::kEventsEveryMs + 5);
    EXPECT_FALSE(window->Cancelled());
    window->StepProgress();
    EXPECT_TRUE(window->Cancelled());
    EXPECT_EQ(Position(*window), 0);
}

TEST_F(ProgressWindows, NoAutoShowKeepsItHidden) {
    const std::unique_ptr<TfrmSmallPrBar> window(ShowProgress("Loading", 100, true, false));
    EXPECT_TRUE(window->NoAutoShow());
    QElapsedTimer clock;
    clock.start();
    while (clock.elapsed() < TStepWindow::kShowAfterMs + 200) {
        window->StepProgress();
        QTest::qSleep(10);
    }
    EXPECT_FALSE(window->isVisible());
    EXPECT_GT(window->HiddenSteps(), 50);
}

TEST_F(ProgressWindows, WhatIsCancelledBeforeItIsSeenNeverComes) {
    const std::unique_ptr<TfrmSmallPrBar> window(ShowProgress("Loading", 100, true, true));
    window->close();
    QTest::qWait(TStepWindow::kShowAfterMs + 200);
    EXPECT_FALSE(window->isVisible());
    EXPECT_TRUE(window->Cancelled());
}

TEST_F(ProgressWindows, ManySmallStepsMoveTheBarAsFewLargeOnes) {
    const std::unique_ptr<TfrmSmallPrBar> window(ShowProgress("Loading", 100000, true, true));
    window->show();
    ASSERT_TRUE(QTest::qWaitForWindowExposed(window.get()));
    for (int i = 0; i < 5000; ++i) window->StepProgress();
    EXPECT_EQ(Position(*window), 5000);
}

TEST_F(ProgressWindows, AQuestionAskedInTheMiddleOfWorkIsNotCovered) {
    const TMessageBoxScope messages;
    const std::unique_ptr<TfrmSmallPrBar> window(ShowProgress("Loading", 100, true, true));
    bool wasCovered = true;
    QTimer::singleShot(TStepWindow::kShowAfterMs + 200, &Main, [&] {
        wasCovered = window->isVisible();
        QTest::keyClick(QApplication::activeModalWidget(), Qt::Key_Y);
    });
    EXPECT_TRUE(AskYesNo("Save?"));
    EXPECT_FALSE(wasCovered);
    EXPECT_GT(StepUntilVisible(*window), 0) << "the work goes on, and its window comes";
}

TEST_F(ProgressWindows, WaitingShowsTheHourglassUntilItIsClosed) {
    {
        TfrmWait window(&Main);
        EXPECT_EQ(QGuiApplication::overrideCursor(), nullptr);
        window.show();
        ASSERT_NE(QGuiApplication::overrideCursor(), nullptr);
        EXPECT_EQ(QGuiApplication::overrideCursor()->shape(), Qt::WaitCursor);
        EXPECT_EQ(window.windowTitle(), "Processing...");
        window.SetPosition(40);
        EXPECT_EQ(Position(window), 40);
        window.close();
        EXPECT_EQ(QGuiApplication::overrideCursor(), nullptr);
        window.show();
    }
    EXPECT_EQ(QGuiApplication::overrideCursor(), nullptr) << "destroyed while it was shown";
}

TEST_F(ProgressWindows, PositionsBeyondAnIntMoveTheBar) {
    TProgressWindow progress;
    progress.Begin("Reading", 1'000'000'000'000, 3'000'000'000'000);
    progress.Window().show();
    EXPECT_TRUE(progress.StepTo(2'000'000'000'000));
    const auto& bar = Control<QProgressBar>(progress.Window(), "progressBar");
    EXPECT_EQ(bar.value() * 2, bar.maximum());
    EXPECT_TRUE(progress.StepTo(9'000'000'000'000));
    EXPECT_EQ(bar.value(), bar.maximum());
    progress.Begin("Again", 5, 5);
    EXPECT_EQ(bar.value(), 0);
    EXPECT_EQ(progress.Window().windowTitle(), "Again");
}

} // namespace
} // namespace lumoplot
