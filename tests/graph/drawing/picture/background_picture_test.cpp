#include "graph/drawing/picture/background_picture.h"

#include "common/recording_sink.h"

#include <QDateTime>
#include <QFile>
#include <QImage>
#include <QTemporaryDir>
#include <gtest/gtest.h>

namespace lumoplot {
namespace {

class BackgroundPictures : public testing::Test {
protected:
    /// Writes a picture that is all of one colour and was last written `hour` hours ago.
    void Save(QSize size, QColor color, int hour) {
        QImage picture(size, QImage::Format_RGB32);
        picture.fill(color);
        ASSERT_TRUE(picture.save(Name, "BMP")); // as many bytes for every colour
        QFile file(Name);
        ASSERT_TRUE(file.open(QIODevice::ReadWrite));
        file.setFileTime(Now.addSecs(-3600 * hour), QFileDevice::FileModificationTime);
    }
    QColor Shown() { return BackgroundPicture(Name.toStdString()).pixelColor(0, 0); }

    TRecordingSink Sink;
    QTemporaryDir Folder;
    QString Name = Folder.filePath(QStringLiteral("picture.bmp"));
    QDateTime Now = QDateTime::currentDateTime();
};

TEST_F(BackgroundPictures, AFileThatHasChangedIsReadAgain) {
    Save({8, 8}, Qt::red, 3);
    EXPECT_EQ(Shown(), QColor(Qt::red));
    Save({8, 8}, Qt::blue, 2);
    EXPECT_EQ(Shown(), QColor(Qt::blue)) << "only its time is another";
    Save({9, 9}, Qt::green, 2);
    EXPECT_EQ(Shown(), QColor(Qt::green)) << "only its size is another";
}

} // namespace
} // namespace lumoplot
