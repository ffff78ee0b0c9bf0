
#include "common/cancelling_progress.h"
#include "common/recording_sink.h"
#include "common/thrown_text.h"
#include "graph/drawing/picture/drawing.h"
#include "graph/model/appearance.h"
#include "graph/model/axis.h"
#include "support/progress_maker.h"
#include "support/replace_file.h"

#include <QFile>
#include <QImage>
#if defined(QT_SVG_LIB)
#include <QSvgRenderer>
#endif
#include <QTemporaryDir>
#include <cmath>
#include <gtest/gtest.h>

namespace lumoplot {
namespace {

class TPictureFile : public testing::Test {
protected:
    TPictureFile() {
        TSeries& series = *m_graph.FindSeries(m_graph.AddSeries());
        for (int i = 0; i < 50; ++i) series.AddPoint(i, i % 7);
    }
    std::string NameOf(const char* file) {
        return m_folder.filePath(QString::fromLatin1(file)).toStdString();
    }
    QImage Saved(const char* file, double scale = 1) {
        SaveGraphPicture(m_graph, NameOf(file), {300, 200}, {.PixelsPerUnit = scale});
        return QImage(QString::fromStdString(NameOf(file)));
    }

    QTemporaryDir m_folder;
    TxyGraph m_graph;
};

TEST_F(TPictureFile, APngHasThePixelsOfItsScale) {
    EXPECT_EQ(Saved("a.png").size(), QSize(300, 200));
    const QImage large = Saved("b.PNG", 2.5);
    EXPECT_EQ(large.size(), QSize(750, 500));
    EXPECT_NEAR(large.dotsPerMeterX() * 0.0254, 240, 1);
}

TEST_F(TPictureFile, VectorFilesAreWhatTheirEndingSays) {
#if defined(QT_SVG_LIB)
    SaveGraphPicture(m_graph, NameOf("a.svg"), {300, 200});
    QSvgRenderer svg(QString::fromStdString(NameOf("a.svg")));
    ASSERT_TRUE(svg.isValid());
    EXPECT_EQ(svg.viewBox(), QRect(0, 0, 300, 200));
#else
    EXPECT_THROW(SaveGraphPicture(m_graph, NameOf("a.svg"), {300, 200}), EFileError);
#endif
    SaveGraphPicture(m_graph, NameOf("a.pdf"), {300, 200});
    const auto pdf = ReadWholeFile(NameOf("a.pdf"));
    const std::string content(pdf.begin(), pdf.end());
    EXPECT_TRUE(content.starts_with("%PDF"));
    EXPECT_NE(content.find("/MediaBox [0 0 225"), std::string::npos); // 300/96 inch in points
}

// A panel somewhere inside a window, on a screen with any number of pixels, shows what it shows alone.
TEST_F(TPictureFile, APanelInsideAWindowLooksTheSame) {
    QWidget window;
    window.resize(500, 400);
    auto* panel = new TxyGraph(&window);
    panel->setGeometry(70, 50, 300, 200);
    m_graph.FirstSeries()->SetPointsShown(true);
    panel->CopyFrom(m_graph);
    const auto seen = [](QWidget& widget, const QRect& place, double ratio) {
        QImage image(place.size() * ratio, QImage::Format_ARGB32_Premultiplied);
        image.setDevicePixelRatio(ratio);
        widget.render(&image, QPoint(), QRegion(place));
        return image;
    };
    for (const double ratio : {1.0, 2.0}) {
        const QImage alone = seen(*panel, panel->rect(), ratio);
        EXPECT_EQ(seen(window, panel->geometry(), ratio), alone) << ratio;
        EXPECT_EQ(alone.pixel(5, 5), qRgb(255, 255, 255));
        EXPECT_NE(alone, QImage(alone).scaled(1, 1).scaled(alone.size()));
    }
}

// Whatever the picture's scale, the axis line and that of a mark are as sharp as the pixels are.
TEST_F(TPictureFile, UprightLinesAreCrispAtEveryScale) {
    m_graph.Appearance()->SetAxesColor(kRed);
    m_graph.Appearance()->SetShowMarks(true);
    m_graph.AddMark({.X1 = 0.123, .Color = kBlue, .TypeOfMark = TMarkType::VerticalLine});
    for (const double scale : {1.0, 1.25, 1.5, 2.0, 3.0}) {
        const QImage image = Saved("crisp.png", scale);
        const int y = image.height() / 2;
        int full = 0, partial = 0, blue = 0, bluish = 0;
        for (int x = 0; x < image.width(); ++x) {
            const QRgb pixel = image.pixel(x, y + 1);
            const bool isBluish = qBlue(pixel) > qRed(pixel) + 10;
            if (isBluish) ++(pixel == qRgb(0, 0, 255) ? blue : bluish);
        }
        EXPECT_EQ(blue, std::lround(scale)) << scale;
        EXPECT_EQ(bluish, 0) << scale;
        for (int x = 0; x < image.width() / 4; ++x) {
            const QRgb pixel = image.pixel(x, y + 1);
            if (pixel == qRgb(255, 0, 0))
                ++full;
            else if (qRed(pixel) > qBlue(pixel) + 10)
                ++partial;
        }
        EXPECT_GE(full, static_cast<int>(scale)) << scale;
        EXPECT_EQ(partial, 0) << scale;
    }
}

TEST_F(TPictureFile, WhatCanNotBeSavedIsNamed) {
    SaveGraphPicture(m_graph, NameOf("old.png"), {50, 50});
    const auto old = ReadWholeFile(NameOf("old.png"));
    struct TCase {
        std::string name;
        QSize size;
        double scale;
        const char* why;
    };
    const TCase cases[] = {{NameOf("old.bmp"), {10, 10}, 1, "none of .png, .svg and .pdf"},
                           {NameOf("missing/a.png"), {10, 10}, 1, "folder"},
                           {NameOf("old.png"), {0, 10}, 1, "no size"},
                           {NameOf("old.png"), {10, 10}, 0, "smaller than a pixel"},
                           {NameOf("old.png"), {10, 10}, std::nan(""), "smaller than a pixel"},
                           {NameOf("old.png"), {30000, 20000}, 1, "30000 x 20000 pixels"},
                           {NameOf("old.svg"), {40000, 10}, 1, "32767"},
                           {NameOf("old.png"), {1000, 1000}, 1e9, "32767 on a side"}};
    for (const TCase& c : cases) {
        const std::string text = ThrownText<EFileError>(
            [&] { SaveGraphPicture(m_graph, c.name, c.size, {.PixelsPerUnit = c.scale}); });
        EXPECT_TRUE(text.starts_with("Can not save to file " + c.name + ": ")) << text;
        EXPECT_NE(text.find(c.why), std::string::npos) << text;
    }
    EXPECT_EQ(ReadWholeFile(NameOf("old.png")), old);
}

TEST_F(TPictureFile, ACancelledPictureLeavesTheOldFile) {
    for (const char* file : {"old.png", "old.svg", "old.pdf"}) {
        ASSERT_TRUE(SaveGraphPicture(m_graph, NameOf(file), {300, 200}));
        const auto old = ReadWholeFile(NameOf(file));
        const TProgressMakerScope cancelling([] { return std::make_unique<TCancellingProgress>(0); });
        EXPECT_FALSE(SaveGraphPicture(m_graph, NameOf(file), {100, 100})) << file;
        EXPECT_EQ(ReadWholeFile(NameOf(file)), old) << file;
    }
}

TEST_F(TPictureFile, ABackgroundPictureFillsTheGraphWhenStretched) {
    QImage picture(20, 20, QImage::Format_RGB32);
    picture.fill(qRgb(10, 200, 30));
    for (const char* file : {"back.jpg", "back.png"}) {
        ASSERT_TRUE(picture.save(QString::fromStdString(NameOf(file))));
        m_graph.Appearance()->SetbkgdImageFile(NameOf(file));
        m_graph.Appearance()->SetStretchBkgd(true);
        EXPECT_GT(qGreen(Saved("a.png").pixel(297, 197)), 180);
        EXPECT_LT(qBlue(Saved("a.png").pixel(297, 197)), 60);
        m_graph.Appearance()->SetStretchBkgd(false);
        EXPECT_EQ(Saved("a.png").pixel(297, 197), qRgb(255, 255, 255));
        EXPECT_LT(qBlue(Saved("a.png").pixel(3, 3)), 60);
    }
}

TEST_F(TPictureFile, ABrokenBackgroundPictureIsReportedOnce) {
    TRecordingSink sink;
    ReplaceFile(NameOf("broken.jpg"), std::vector<std::uint8_t>{0xFF, 0xD8, 1, 2, 3});
    for (const char* file : {"broken.jpg", "missing.png"}) {
        m_graph.Appearance()->SetbkgdImageFile(NameOf(file));
        QImage image(300, 200, QImage::Format_RGB32);
        for (int frame = 0; frame < 3; ++frame) {
            QPainter painter(&image);
            DrawGraph(painter, m_graph, image.rect());
        }
        Saved("a.png");
    }
    ASSERT_EQ(sink.Texts.size(), 2u);
    EXPECT_EQ(sink.Texts[0], "Can not read picture " + NameOf("broken.jpg"));
}

} // namespace
} // namespace lumoplot
