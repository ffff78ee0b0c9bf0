#include "controls/value_edit.h"

#include <QApplication>
#include <QTest>
#include <QWheelEvent>
#include <gtest/gtest.h>

namespace lumoplot {
namespace {

class ValueEdit : public testing::Test {
protected:
    void SetUp() override {
        Window.show();
        Window.activateWindow();
        ASSERT_TRUE(QTest::qWaitForWindowActive(&Window));
        Edit.setFocus();
        QObject::connect(&Edit, &TValueEdit::ValueEdited, &Edit, [this](double v) { Values.push_back(v); });
    }
    void Press(Qt::Key key, int times = 1, Qt::KeyboardModifiers modifiers = {}) {
        for (int i = 0; i < times; ++i) QTest::keyClick(&Edit, key, modifiers);
    }
    void Turn(int degrees) {
        QWheelEvent event({4, 4}, Edit.mapToGlobal(QPointF(4, 4)), {}, {0, degrees * 8}, Qt::NoButton, {},
                          Qt::NoScrollPhase, false);
        QApplication::sendEvent(&Edit, &event);
    }
    std::string Text() { return Edit.text().toStdString(); }

    QWidget Window;
    TValueEdit Edit{&Window};
    QLineEdit Other{&Window};
    std::vector<double> Values;
};

TEST_F(ValueEdit, ArrowKeysChangeTheSecondDigit) {
    struct TCase {
        double value;
        Qt::Key key;
        Qt::KeyboardModifiers modifiers;
        double expected;
    };
    const TCase cases[] = {
        {1.2, Qt::Key_Up, {}, 1.3},       {1.2, Qt::Key_Down, {}, 1.1},
        {1.2, Qt::Key_PageUp, {}, 2.2},   {1.2, Qt::Key_Up, Qt::ShiftModifier, 1.21},
        {-450, Qt::Key_Up, {}, -440},     {0, Qt::Key_Down, {}, -0.1},
        {2.5e-7, Qt::Key_Up, {}, 2.6e-7}, {123456.5, Qt::Key_Up, {}, 133456.5},
    };
    for (const TCase& c : cases) {
        SCOPED_TRACE(c.value);
        Edit.ShowNothing();
        Edit.ShowValue(c.value);
        Values.clear();
        Press(c.key, 1, c.modifiers);
        EXPECT_EQ(Values, std::vector{c.expected});
    }
    EXPECT_EQ(Text(), "133456.5");
    Other.setFocus();
    EXPECT_EQ(Text(), "133456");
}

TEST_F(ValueEdit, AValueIsLedThroughZero) {
    Edit.ShowValue(0.3);
    Press(Qt::Key_Down, 35); // a hundredth each
    EXPECT_EQ(Text(), "-0.05");
    EXPECT_EQ(Values.at(29), 0);
    Press(Qt::Key_Up, 5);
    EXPECT_EQ(Values.back(), 0);
}

TEST_F(ValueEdit, WhatMustBePositiveStaysSo) {
    Edit.setProperty("positive", true);
    Edit.ShowValue(1);
    Press(Qt::Key_Down, 40);
    ASSERT_EQ(Values.size(), 40u);
    EXPECT_GT(Values.back(), 0);
    EXPECT_LT(Values.back(), 0.001);
    Edit.setProperty("integers", true);
    Edit.ShowValue(3);
    Press(Qt::Key_PageDown, 5);
    Press(Qt::Key_Down, 5);
    EXPECT_EQ(Values.back(), 1);
    Press(Qt::Key_PageUp);
    EXPECT_EQ(Values.back(), 11);
    for (const char* text : {"0", "-2"}) {
        Values.clear();
        Edit.selectAll();
        QTest::keyClicks(&Edit, QLatin1String(text));
        EXPECT_TRUE(Values.empty()) << text;
        EXPECT_EQ(Edit.toolTip(), "The number must be above 0");
    }
    Other.setFocus();
    EXPECT_EQ(Text(), "11");
}

TEST_F(ValueEdit, TheWheelCountsOnlyWithTheFocus) {
    Edit.ShowValue(5);
    Turn(15);
    EXPECT_EQ(Values, std::vector{5.1});
    Turn(5); // a third of a notch
    Turn(5);
    EXPECT_EQ(Values.size(), 1u);
    Turn(5);
    EXPECT_EQ(Values.back(), 5.2);
    Other.setFocus();
    Turn(15);
    EXPECT_EQ(Values.back(), 5.2);
}

TEST_F(ValueEdit, WhatIsNoNumberIsMarkedAndNotNudged) {
    Edit.ShowValue(5);
    for (const char* text : {"x", "1e999", "nan"}) {
        Edit.selectAll();
        QTest::keyClicks(&Edit, QLatin1String(text));
        EXPECT_FALSE(Edit.toolTip().isEmpty()) << text;
        Values.clear();
        Press(Qt::Key_Up);
        EXPECT_TRUE(Values.empty()) << text;
        EXPECT_EQ(Text(), text);
    }
    Edit.selectAll();
    QTest::keyClicks(&Edit, QStringLiteral("."));
    EXPECT_TRUE(Edit.toolTip().isEmpty());
    EXPECT_TRUE(Values.empty());
}

// An edit is filled anew while it is typed in, with the value that it has just given.
TEST_F(ValueEdit, FillingKeepsATextThatStandsForTheValue) {
    Edit.selectAll();
    QTest::keyClicks(&Edit, QStringLiteral("1.50"));
    Edit.ShowValue(1.5);
    EXPECT_EQ(Text(), "1.50");
    Edit.ShowValue(1.6);
    EXPECT_EQ(Text(), "1.6");
}

} // namespace
} // namespace lumoplot
