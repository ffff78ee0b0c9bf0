// The pictures of docs/gallery are what the graphs of examples/gallery look like.
#include "common/places.h"
#include "graph/drawing/picture/drawing.h"
#include "graph/model/graph.h"

#include <QDir>
#include <QImage>
#include <QTemporaryDir>
#include <cstdlib>
#include <gtest/gtest.h>

namespace lumoplot {
namespace {

constexpr QSize kCells{100, 75}; // of 8 x 8 pixels, so that the shapes of letters do not count
constexpr int kNoticed = 40;     // of 255
constexpr double kLargestPart = 0.01;

const QString kNames[] = {QStringLiteral("lines"),       QStringLiteral("shapes"),
                          QStringLiteral("two-axes"),    QStringLiteral("regressions"),
                          QStringLiteral("fit"),         QStringLiteral("dates"),
                          QStringLiteral("logarithmic"), QStringLiteral("crossing")};

QImage Cells(const QString& picture) {
    return QImage(picture)
        .convertToFormat(QImage::Format_RGB32)
        .scaled(kCells, Qt::IgnoreAspectRatio, Qt::SmoothTransformation);
}

/// The part of the cells in which two pictures are noticeably different.
double DifferentPart(const QImage& a, const QImage& b) {
    int different = 0;
    for (int y = 0; y < kCells.height(); ++y)
        for (int x = 0; x < kCells.width(); ++x) {
            const QRgb p = a.pixel(x, y);
            const QRgb q = b.pixel(x, y);
            const int most = std::max({std::abs(qRed(p) - qRed(q)), std::abs(qGreen(p) - qGreen(q)),
                                       std::abs(qBlue(p) - qBlue(q))});
            different += most > kNoticed;
        }
    return double(different) / (kCells.width() * kCells.height());
}

TEST(Gallery, PicturesAreWhatTheGraphsLookLike) {
    const QTemporaryDir folder;
    const QString root = QString::fromStdString(SourceFile(""));
    QImage before(kCells, QImage::Format_RGB32);
    before.fill(Qt::white);
    for (const QString& name : kNames) {
        TxyGraph graph;
        graph.LoadFromFile((root + QStringLiteral("/examples/gallery/") + name + ".ltp").toStdString());
        const QString drawn = folder.filePath(name + QStringLiteral(".png"));
        SaveGraphPicture(graph, drawn.toStdString(), {800, 600});
        const QImage kept = Cells(root + QStringLiteral("/docs/gallery/") + name + ".png");
        EXPECT_LT(DifferentPart(Cells(drawn), kept), kLargestPart) << name.toStdString();
        EXPECT_GT(DifferentPart(before, kept), 2 * kLargestPart) << name.toStdString();
        before = kept;
    }
}

} // namespace
} // namespace lumoplot
