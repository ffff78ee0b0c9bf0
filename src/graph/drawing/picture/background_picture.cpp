#include "graph/drawing/picture/background_picture.h"

#include "support/message_sink.h"

#include <QCoreApplication>
#include <QDateTime>
#include <QFileInfo>
#include <QImageReader>
#include <QStringList>
#include <QTimer>
#include <map>
#include <utility>

namespace lumoplot {
namespace {

constexpr std::size_t kMostPictures = 16;

struct TPictureEntry {
    QDateTime Modified;
    qint64 Size = -1;
    QImage Picture;
};

struct TPictureStore {
    std::map<std::string, TPictureEntry> Entries;
    QStringList Broken; ///< not yet reported
};

TPictureStore& Store() {
    static TPictureStore store;
    return store;
}

void NoteBroken(const QString& name) {
    Store().Broken.append(name);
    if (QCoreApplication::instance())
        QTimer::singleShot(0, QCoreApplication::instance(), [] { ReportBrokenPictures(); });
}

} // namespace

QImage BackgroundPicture(const std::string& fileName) {
    if (fileName.empty()) return {};
    const QString name = QString::fromStdString(fileName);
    const QFileInfo info(name);
    auto& entries = Store().Entries;
    const auto found = entries.find(fileName);
    const bool isKnown = found != entries.end() && found->second.Modified == info.lastModified() &&
                         found->second.Size == info.size();
    if (isKnown) return found->second.Picture;
    if (entries.size() >= kMostPictures) entries.clear();
    QImageReader reader(name);
    reader.setDecideFormatFromContent(true);
    const QImage picture = info.isFile() ? reader.read() : QImage();
    entries[fileName] = {info.lastModified(), info.size(), picture};
    if (picture.isNull()) NoteBroken(name);
    return picture;
}

void ReportBrokenPictures() {
    for (const QString& name : std::exchange(Store().Broken, {}))
        ShowMessage("Can not read picture " + name.toStdString(), TMessageKind::Warning);
}

} // namespace lumoplot
