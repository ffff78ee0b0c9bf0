// The data editor with the keyboard alone, and on small screens.
#include "common/clipping.h"
#include "common/keyboard_walk.h"
#include "dialog/wizard_fixture.h"

#include <QScrollArea>
#include <QScrollBar>
#include <QTabWidget>

namespace lumoplot {
namespace {

constexpr QSize kSmallScreen(675, 360);

TEST_F(TWizardTest, TheKeyboardReachesEveryControlOfEveryPage) {
    Show({"Run", "Other"});
    auto& tabs = Find<QTabWidget>("tabs");
    for (int page = 0; page < tabs.count(); ++page) {
        SCOPED_TRACE(tabs.tabText(page).toStdString());
        tabs.setCurrentIndex(page);
        Find<QWidget>("cbx_DataSets").setFocus();
        ExpectEveryControlReached(Wizard);
        ExpectKeysAreClear(Wizard);
        ExpectEveryControlNamed(Wizard);
    }
    Click("btnPreview");
    SCOPED_TRACE("Preview");
    Find<QWidget>("btnOk").setFocus();
    ExpectEveryControlReached(Wizard);
    ExpectKeysAreClear(Wizard);
    ExpectEveryControlNamed(Wizard);
}

// Its controls are made once, so a page is looked at in a new editor for each dress.
TEST(WizardTexts, NoPageCutsATextInAnyDress) {
    InEveryDress([] {
        TRecordingSink sink;
        TxyDataWizard wizard;
        TSeries& series = *wizard.WorkGraph().FindSeries(wizard.WorkGraph().AddSeries());
        for (int x = 0; x < 20; ++x) series.AddPoint(x, x % 5);
        wizard.show();
        for (const QSize size : {QSize(1240, 760), QSize(800, 560)}) {
            wizard.resize(size);
            auto& tabs = Control<QTabWidget>(wizard, "tabs");
            for (int page = 0; page < tabs.count(); ++page) {
                SCOPED_TRACE(tabs.tabText(page).toStdString() + " " + std::to_string(size.width()));
                tabs.setCurrentIndex(page);
                ExpectNothingClipped(wizard);
                ExpectKeysAreClear(wizard);
            }
        }
    });
}

TEST_F(TWizardTest, TabGoesFromTheListOverThePageToTheButtons) {
    Show({"Run"});
    Find<QWidget>("cbx_DataSets").setFocus();
    const auto round = TabRound(Wizard, Qt::Key_Tab);
    std::vector<std::ptrdiff_t> places;
    for (const char* name : {"cbx_DataSets", "btnReverse", "e_SeriesName", "cb_Active", "cbx_PointShape",
                             "btnPreview", "btnCancel"})
        places.push_back(std::ranges::find(round, &Find<QWidget>(name)) - round.begin());
    EXPECT_TRUE(std::ranges::is_sorted(places));
}

TEST_F(TWizardTest, TheKeyOfATabLeadsToItsPage) {
    Show({"Run"});
    const auto press = [](Qt::Key key, Qt::KeyboardModifiers modifiers = Qt::NoModifier) {
        QTest::keyClick(QApplication::focusWidget(), key, modifiers);
        return QApplication::focusWidget()->objectName().toStdString();
    };
    press(Qt::Key_C, Qt::AltModifier);
    EXPECT_EQ(Find<QTabWidget>("tabs").currentIndex(), TxyDataWizard::kCurveFittingPage);
    EXPECT_EQ(press(Qt::Key_Tab), "cbx_Status");
    press(Qt::Key_W, Qt::AltModifier);
    EXPECT_EQ(press(Qt::Key_Tab), "cb_ByYErrors");
}

TEST_F(TWizardTest, OnASmallScreenThePagesScrollAndTheButtonsStay) {
    Show({"Run"});
    Wizard.resize(kSmallScreen);
    auto& tabs = Find<QTabWidget>("tabs");
    for (int page = 0; page < tabs.count(); ++page) {
        tabs.setCurrentIndex(page);
        QApplication::processEvents();
        EXPECT_EQ(Wizard.size(), kSmallScreen) << tabs.tabText(page).toStdString();
        for (const char* name : {"btnNew", "btnReverse", "btnPreview", "btnOk", "btnCancel"}) {
            const QWidget& button = Find<QWidget>(name);
            EXPECT_TRUE(Wizard.rect().contains(QRect(button.mapTo(&Wizard, QPoint()), button.size())))
                << name;
        }
        // Tab brings what lies below into view.
        Find<QWidget>("btnUndoStep").setFocus();
        Find<QWidget>("btnPreview").setFocus();
        QTest::keyClick(&Find<QWidget>("btnPreview"), Qt::Key_Backtab, Qt::ShiftModifier);
        QWidget* last = Wizard.focusWidget();
        EXPECT_FALSE(last->visibleRegion().isEmpty()) << last->objectName().toStdString();
    }
}

TEST_F(TWizardTest, NoPageScrollsSidewaysWhere800PixelsAreThere) {
    Wizard.SetStartPage(TxyDataWizard::kDataSourcePage);
    Show({"Run"});
    Wizard.AttachSource(
        Write("days.csv", "day of the run,load of the cell\n1/2/2024,1\n2/3/2024,2\n").toStdString());
    Wizard.resize(780, 540);
    auto& tabs = Find<QTabWidget>("tabs");
    for (int page = 0; page < tabs.count(); ++page) {
        tabs.setCurrentIndex(page);
        QApplication::processEvents();
        QList<const QScrollArea*> areas = tabs.currentWidget()->findChildren<const QScrollArea*>();
        areas += qobject_cast<QScrollArea*>(tabs.currentWidget());
        for (const QScrollArea* area : areas) {
            const int hidden = area && area->isVisible() ? area->horizontalScrollBar()->maximum() : 0;
            EXPECT_EQ(hidden, 0) << tabs.tabText(page).toStdString();
        }
    }
}

TEST_F(TWizardTest, ReturnTakesAValueAndCtrlReturnCloses) {
    Show({"Run"});
    Type("e_ZeroValue", "0.123456789");
    QTest::keyClick(&Find<QWidget>("e_ZeroValue"), Qt::Key_Return);
    EXPECT_TRUE(Wizard.isVisible());
    EXPECT_EQ(Current().ZeroValue(), 0.123456789);
    Type("e_SeriesName", "Named");
    QTest::keyClick(&Find<QWidget>("e_SeriesName"), Qt::Key_Return);
    EXPECT_TRUE(Wizard.isVisible());
    QTest::keyClick(&Find<QWidget>("e_SeriesName"), Qt::Key_Return, Qt::ControlModifier);
    EXPECT_FALSE(Wizard.isVisible());
    EXPECT_EQ(Wizard.result(), TxyDataWizard::kOk);
}

} // namespace
} // namespace lumoplot
