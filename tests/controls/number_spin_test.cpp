#include "controls/number_spin.h"

#include <QTest>
#include <gtest/gtest.h>

namespace lumoplot {
namespace {

// A comma that may divide groups is not taken, and never left out.
TEST(NumberSpin, ReadsWhatIsTypedAsEveryOtherEdit) {
    QWidget window;
    QLineEdit other(&window);
    TNumberSpin spin(&window);
    spin.setRange(0, 5000);
    spin.setDecimals(3);
    spin.setSuffix(QStringLiteral(" mm"));
    window.show();
    window.activateWindow();
    ASSERT_TRUE(QTest::qWaitForWindowActive(&window));
    const std::pair<const char*, double> kCases[] = {{"12,5", 12.5}, {"1.234", 1.234}, {"1,234", 7},
                                                     {"1,2,3", 7},   {"6000", 7},      {"", 7}};
    for (const auto& [text, expected] : kCases) {
        spin.setValue(7);
        spin.setFocus();
        spin.selectAll();
        QTest::keyClick(&spin, Qt::Key_Delete);
        QTest::keyClicks(&spin, QString::fromLatin1(text));
        const bool isMarked = !spin.findChild<QLineEdit*>()->toolTip().isEmpty();
        EXPECT_EQ(isMarked, expected == 7 && QByteArray(text).contains(',')) << text;
        other.setFocus();
        EXPECT_EQ(spin.value(), expected) << text;
        EXPECT_EQ(spin.text().toStdString(), spin.textFromValue(expected).toStdString() + " mm") << text;
        EXPECT_EQ(spin.findChild<QLineEdit*>()->toolTip(), "") << text;
    }
}

} // namespace
} // namespace lumoplot
