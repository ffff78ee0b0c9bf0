#include "session/recovery_folder.h"

#include "support/errors.h"
#include "support/replace_file.h"

#include <QCoreApplication>
#include <QDir>
#include <QFileInfo>
#include <QLockFile>
#include <QStandardPaths>
#include <QUuid>
#include <algorithm>
#include <utility>

namespace lumoplot {
namespace {

const QString kSuffix = QStringLiteral(".recovery");
const QString kLockSuffix = QStringLiteral(".lock");

/// A lock that is stale only when its process is gone, however old it is.
std::unique_ptr<QLockFile> LockOf(const QString& fileName) {
    auto lock = std::make_unique<QLockFile>(fileName + kLockSuffix);
    lock->setStaleLockTime(0);
    return lock;
}

// "host-1234-9f8e….recovery": no other session has or had that name.
QString NewName(const QString& kind) {
    return QStringLiteral("%1-%2-%3%4")
        .arg(kind)
        .arg(QCoreApplication::applicationPid())
        .arg(QUuid::createUuid().toString(QUuid::Id128).left(12), kSuffix);
}

/// The sessions of which anything lies in the folder, by the names of their recovery files.
QStringList SessionsIn(const QDir& folder, QStringList kinds) {
    QStringList sessions;
    for (QString& kind : kinds) kind += QStringLiteral("-*");
    for (const QString& name : folder.entryList(kinds, QDir::Files)) {
        const qsizetype end = name.indexOf(kSuffix);
        if (end < 0) continue;
        const QString rest = name.mid(end + kSuffix.size());
        const bool isPart = rest.isEmpty() || rest == kLockSuffix || rest.startsWith(QLatin1String(".new"));
        if (isPart) sessions.append(name.left(end + kSuffix.size()));
    }
    sessions.removeDuplicates();
    return sessions;
}

bool IsWhole(const QString& fileName) {
    try {
        return IsWholeRecovery(ReadWholeFile(fileName.toStdString()));
    } catch (const EFileError&) {
        return false;
    }
}

/// The last content that is whole gets the session's name, and the rest goes.
void TidyUp(const QDir& folder, const QString& session) {
    QString last = session;
    const auto written = [&folder](const QString& name) {
        return QFileInfo(folder.filePath(name)).lastModified();
    };
    for (const QString& name : folder.entryList({session + QStringLiteral(".new*")}, QDir::Files)) {
        const bool isLater = !folder.exists(last) || written(name) >= written(last);
        const QString passed = isLater && IsWhole(folder.filePath(name)) ? std::exchange(last, name) : name;
        if (passed != session) QFile::remove(folder.filePath(passed));
    }
    if (last == session) return;
    QFile::remove(folder.filePath(session));
    QFile::rename(folder.filePath(last), folder.filePath(session));
}

} // namespace

QString RecoveryFolder() {
    const QString wanted = qEnvironmentVariable("XDG_STATE_HOME");
#if defined(Q_OS_WIN)
    const QString usual = QStandardPaths::writableLocation(QStandardPaths::GenericDataLocation);
#else
    const QString usual = QDir::homePath() + QStringLiteral("/.local/state");
#endif
    return (QDir::isAbsolutePath(wanted) ? wanted : usual) + QStringLiteral("/lumoplot/recovery");
}

TLeftSession::TLeftSession(QString fileName, std::unique_ptr<QLockFile> lock)
    : m_fileName(std::move(fileName)), m_lock(std::move(lock)) {
}

TLeftSession::~TLeftSession() = default;

QString TLeftSession::Kind() const {
    return QFileInfo(m_fileName).fileName().section(QLatin1Char('-'), 0, 0);
}

QDateTime TLeftSession::LastWritten() const {
    return QFileInfo(m_fileName).lastModified();
}

TRecoveryInfo TLeftSession::Read(TxyGraph& graph) const {
    return ReadRecovery(ReadWholeFile(m_fileName.toStdString()), graph);
}

void TLeftSession::Discard() {
    QFile::remove(m_fileName);
}

bool TLeftSession::GiveTo(const QString& kind) {
    const bool isGiven = QFile::rename(m_fileName, QFileInfo(m_fileName).dir().filePath(NewName(kind)));
    m_lock.reset();
    return isGiven;
}

QString TLeftSession::SetAside() {
    const QString aside = m_fileName + QStringLiteral(".aside");
    return QFile::rename(m_fileName, aside) ? aside : QString();
}

TLeftSessions FindLeftSessions(const QString& folder, const QStringList& kinds) {
    return TRecoveryPlace::Left(folder, kinds);
}

TRecoveryPlace::TRecoveryPlace(const QString& folder, const QString& kind)
    : m_fileName(QDir(folder).filePath(NewName(kind))), m_lock(LockOf(m_fileName)) {
    QDir().mkpath(folder);
    QFile::setPermissions(folder, QFile::ReadOwner | QFile::WriteOwner | QFile::ExeOwner);
    if (!m_lock->tryLock())
        throw EFileError("Can not save to file " + m_fileName.toStdString() +
                         (m_lock->error() == QLockFile::PermissionError ? ": its folder can not be written"
                                                                        : ": the disk may be full"));
}

TRecoveryPlace::~TRecoveryPlace() = default;

TLeftSessions TRecoveryPlace::Left(const QString& folder, const QStringList& kinds) {
    TLeftSessions left;
    const QDir place(folder);
    for (const QString& session : SessionsIn(place, kinds)) {
        const QString fileName = place.filePath(session);
        auto lock = LockOf(fileName);
        if (!lock->tryLock()) continue;
        TidyUp(place, session);
        if (QFileInfo::exists(fileName)) left.emplace_back(new TLeftSession(fileName, std::move(lock)));
    }
    std::ranges::sort(left, std::ranges::greater(), [](const auto& each) { return each->LastWritten(); });
    return left;
}

} // namespace lumoplot
