// A file that grows. It is opened for each look and closed again, so that who writes it can replace it, and
// it is known by what was read of it: one that begins and goes on as that did is the same file, whoever wrote
// it.
#include "sources/link/byte_pipe.h"
#include "sources/link/link_stream.h"
#include "support/errors.h"

#include <QDateTime>
#include <QFile>
#include <QFileInfo>
#include <algorithm>

namespace lumoplot {
namespace {

constexpr qint64 kKnownBytes = 256; // at the front, and in front of the place where reading goes on

constexpr qint64 kClockStepMs = 100; // of the times that file systems keep

class TFileStream final : public TLinkStream {
public:
    explicit TFileStream(const std::string& name) : m_name(name) {}

    TLinkEvent Read(std::string& bytes, std::size_t most) override {
        QFile file(QString::fromStdString(m_name));
        const QFileInfo info(file);
        const QDateTime written = info.lastModified();
        if (info.exists() && info.size() == m_position && written == m_written) return TLinkEvent::Nothing;
        if (!file.open(QIODevice::ReadOnly | QIODevice::Unbuffered))
            throw EFileError("Can not open file " + m_name + ": " + file.errorString().toStdString());
        if (!GoesOn(file)) {
            m_position = 0;
            m_front.clear();
            m_last.clear();
            return TLinkEvent::StartsAnew;
        }
        const QByteArray more = ReadAt(file, m_position, static_cast<qint64>(most));
        // One that was written just now may be written again without a later time.
        const bool isOld = written.msecsTo(QDateTime::currentDateTime()) > kClockStepMs;
        if (m_position + more.size() == file.size() && isOld) m_written = written;
        if (more.isEmpty()) return TLinkEvent::Nothing;
        Note(more);
        bytes.append(more.constData(), static_cast<std::size_t>(more.size()));
        return TLinkEvent::Bytes;
    }

private:
    QByteArray ReadAt(QFile& file, qint64 position, qint64 most) const {
        if (!file.seek(position)) throw EFileError("Can not read file " + m_name);
        const QByteArray bytes = file.read(most);
        if (bytes.isEmpty() && file.error() != QFileDevice::NoError)
            throw EFileError("Can not read file " + m_name + ": " + file.errorString().toStdString());
        return bytes;
    }

    bool GoesOn(QFile& file) const {
        return file.size() >= m_position && ReadAt(file, 0, m_front.size()) == m_front &&
               ReadAt(file, m_position - m_last.size(), m_last.size()) == m_last;
    }

    void Note(const QByteArray& more) {
        m_position += more.size();
        if (m_front.size() < kKnownBytes) m_front += more.left(kKnownBytes - m_front.size());
        m_last = (m_last + more.right(kKnownBytes)).right(kKnownBytes);
    }

    std::string m_name;
    qint64 m_position = 0;
    QDateTime m_written; ///< when all had been read
    QByteArray m_front;
    QByteArray m_last;
};

} // namespace

std::unique_ptr<TLinkStream> MakeFileStream(const TLinkPlace& place) {
    if (IsPipe(place.name)) return MakePipeStream({TLinkKind::Pipe, place.name, 0});
    return std::make_unique<TFileStream>(place.name);
}

} // namespace lumoplot
