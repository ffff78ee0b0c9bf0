#include "dialogs/text_printing.h"

#include "support/errors.h"

#include <QFontMetricsF>
#include <QImage>
#include <QPrinter>
#include <QTemporaryDir>
#include <gtest/gtest.h>

namespace lumoplot {
namespace {

class TextPages : public testing::Test {
protected:
    TTextPages Break(const QStringList& lines, double width, double height) const {
        return {lines, Font, Paper, QSizeF(width, height)};
    }
    static QString TextOf(const QStringList& lines, const TTextPages::TPart& part) {
        return lines[part.Line].mid(part.From, part.Length);
    }
    /// The height of so many lines and a little more.
    double HeightOf(int lines) const { return QFontMetricsF(Font, &Paper).lineSpacing() * (lines + 0.5); }
    double WidthOf(const char* text) const {
        return QFontMetricsF(Font, &Paper).horizontalAdvance(QString::fromLatin1(text)) + 1;
    }

    QImage Paper{400, 400, QImage::Format_RGB32};
    QFont Font{"Liberation Mono", 10};
};

TEST_F(TextPages, HoldAsManyLinesAsFit) {
    QStringList lines;
    for (int i = 0; i < 23; ++i) lines << QString::number(i);
    const TTextPages text = Break(lines, 300, HeightOf(10));
    ASSERT_EQ(text.Pages().size(), 3u);
    EXPECT_EQ(text.Pages()[0].size(), 10u);
    EXPECT_EQ(text.Pages()[2].size(), 3u);
    EXPECT_EQ(TextOf(lines, text.Pages()[1].front()), "10");
}

TEST_F(TextPages, LongLinesContinueAndLoseNothing) {
    const QStringList lines = {"alpha beta gamma", "", "unbreakableword", "end"};
    const TTextPages text = Break(lines, WidthOf("alpha beta"), HeightOf(4));
    QStringList parts;
    QStringList rejoined(lines.size(), QString());
    for (const auto& page : text.Pages()) {
        EXPECT_LE(page.size(), 4u);
        for (const auto& part : page) {
            parts << TextOf(lines, part).trimmed();
            rejoined[part.Line] += TextOf(lines, part);
        }
    }
    EXPECT_EQ(parts, (QStringList{"alpha beta", "gamma", "", "unbreakabl", "eword", "end"}));
    EXPECT_EQ(rejoined, lines);
}

TEST(TextPrinting, AnUnusablePlaceIsAnError) {
    const QTemporaryDir folder;
    QPrinter printer;
    printer.setOutputFormat(QPrinter::PdfFormat);
    printer.setOutputFileName(folder.filePath("missing/text.pdf"));
    EXPECT_THROW(PrintLines(printer, "", {"a"}, QFont()), EFileError);
}

} // namespace
} // namespace lumoplot
