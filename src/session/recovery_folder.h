// Where the recovery files of a user lie, and the sessions that ended there without a word: by a crash, a
// kill or a power cut. Each session has a file of its own beside a lock that its process holds, so that
// sessions of several running programs never meet: what a living process owns is not seen.
#pragma once

#include "session/recovery_file.h"

#include <QStringList>
#include <memory>
#include <vector>

class QLockFile;

namespace lumoplot {

/// The folder for all programs of the user: $XDG_STATE_HOME/lumoplot/recovery where that is set; else below
/// ~/.local/state, or below the local application data on Windows. It need not exist.
XYGRAPH_EXPORT QString RecoveryFolder();

/// A session whose process is gone. While the object lives nobody else is offered it.
class TLeftSession {
public:
    XYGRAPH_EXPORT ~TLeftSession();
    TLeftSession(const TLeftSession&) = delete;
    TLeftSession& operator=(const TLeftSession&) = delete;

    /// Of the recovery file.
    const QString& FileName() const { return m_fileName; }
    /// "host", "editor_…".
    QString Kind() const;
    XYGRAPH_EXPORT QDateTime LastWritten() const;
    /// The file's content is put into the graph. Throws what ReadRecovery and reading a file throw.
    XYGRAPH_EXPORT TRecoveryInfo Read(TxyGraph& graph) const;
    /// Removes the file for good.
    XYGRAPH_EXPORT void Discard();
    /// The file becomes one that sessions of that kind have left, and this object ends. False when it can
    /// not.
    XYGRAPH_EXPORT bool GiveTo(const QString& kind);
    /// The file gets a name by which it is not offered again, in the same folder; that name. Empty when it
    /// can not be renamed.
    XYGRAPH_EXPORT QString SetAside();

private:
    friend class TRecoveryPlace;
    TLeftSession(QString fileName, std::unique_ptr<QLockFile> lock);

    QString m_fileName;
    std::unique_ptr<QLockFile> m_lock;
};

using TLeftSessions = std::vector<std::unique_ptr<TLeftSession>>;

/// The left sessions of those kinds ("host", "editor_…"; "*" stands for any text), the latest first. What
/// killed processes have left beside them is tidied up: locks, files that were not complete, and those that
/// were but had not got their name yet, which is done here.
XYGRAPH_EXPORT TLeftSessions FindLeftSessions(const QString& folder, const QStringList& kinds);

/// A session's own place in the folder, held until the object ends.
class TRecoveryPlace {
public:
    /// Makes the folder, which only its user may read. Throws EFileError when it can not be used.
    TRecoveryPlace(const QString& folder, const QString& kind);
    ~TRecoveryPlace();
    TRecoveryPlace(const TRecoveryPlace&) = delete;
    TRecoveryPlace& operator=(const TRecoveryPlace&) = delete;

    const QString& FileName() const { return m_fileName; }

    static TLeftSessions Left(const QString& folder, const QStringList& kinds);

private:
    QString m_fileName;
    std::unique_ptr<QLockFile> m_lock;
};

} // namespace lumoplot
