#include "controls/number_edit.h"

#include <QTest>
#include <gtest/gtest.h>

namespace lumoplot {
namespace {

class NumberEdit : public testing::Test {
protected:
    void SetUp() override {
        Window.show();
        Window.activateWindow();
        ASSERT_TRUE(QTest::qWaitForWindowActive(&Window));
        Other.setFocus();
        QObject::connect(&Edit, &QLineEdit::textChanged, &Edit, [this] {
            if (const auto value = NumberIn(Edit)) Stored = *value;
        });
    }
    std::string Text() { return Edit.text().toStdString(); }
    void Type(const char* text) {
        Edit.setFocus();
        Edit.selectAll();
        QTest::keyClick(&Edit, Qt::Key_Delete);
        QTest::keyClicks(&Edit, QString::fromLatin1(text));
    }

    QWidget Window;
    QLineEdit Other{&Window};
    QLineEdit Edit{&Window};
    double Stored = 0;
};

TEST_F(NumberEdit, AllDigitsAreShownOnlyWhileItIsEdited) {
    const double value = -864197.53086419753;
    ShowNumber(Edit, value);
    EXPECT_EQ(Text(), "-864198");
    EXPECT_EQ(Edit.cursorPosition(), 0);
    EXPECT_EQ(ExactNumberIn(Edit), value);
    Edit.setFocus();
    EXPECT_EQ(Text(), "-864197.5308641975");
    Other.setFocus();
    EXPECT_EQ(Text(), "-864198");
    EXPECT_EQ(Stored, value) << "looking at a number does not round it";
    Type("2.00000001");
    Other.setFocus();
    EXPECT_EQ(Text(), "2");
    EXPECT_EQ(Stored, 2.00000001);
}

TEST_F(NumberEdit, WhatIsNoNumberGivesWayToTheNumberWhenItIsLeft) {
    ShowNumber(Edit, 1.23456789);
    for (const char* text : {"", ".", "abc", "1e"}) {
        Type(text);
        Other.setFocus();
        EXPECT_EQ(Text(), "1.23457") << text;
        EXPECT_EQ(Edit.toolTip(), "") << text;
        EXPECT_EQ(Stored, 1.23456789) << text;
    }
}

TEST_F(NumberEdit, ANumberThatIsShownAgainLeavesTheTextThatStandsForIt) {
    ShowNumber(Edit, 1);
    Type("2.50");
    ShowNumber(Edit, 2.5);
    EXPECT_EQ(Text(), "2.50");
    ShowNumber(Edit, 3.5);
    EXPECT_EQ(Text(), "3.5");
}

} // namespace
} // namespace lumoplot
