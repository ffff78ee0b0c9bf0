// Keeps the recovery file of a session while it has steps that are not saved. The interface thread only hands
// over the session's own snapshot; bytes are made and written in another thread, about once in an interval
// and early enough to be there at its end. A third one waits for the disk: a process that is killed loses
// nothing by that, as the next start takes what is whole beside the file. The file goes when the session is
// clean again, and when this object ends: that is the normal end. A crash ends nothing, so the file stays.
//
// A window that edits needs two lines:
//     if (auto left = OfferRecovery(folder, kind, window)) …take over left->Graph…      (dialogs/)
//     TRecoveryWriter recovery(session, {.Kind = kind, .DocumentName = name});
#pragma once

#include "session/graph_session.h"
#include "session/recovery_folder.h"

#include <QElapsedTimer>
#include <QThreadPool>
#include <QTimer>

namespace lumoplot {

inline constexpr int kRecoveryIntervalMs = 5000;

struct TRecoveryOptions {
    QString Kind;         ///< "host", or what RecoveryKind gives: letters, digits and "_"
    QString DocumentName; ///< of the graph's file; empty when it was never saved
    QString Folder = RecoveryFolder();
    int IntervalMs = kRecoveryIntervalMs; ///< between two writings, in which the last steps can be lost
};

/// The kind of sessions that edit a copy of a program's graph. "The same graph" is known by what it goes by:
/// the name that the program gave with it, its title, and the names and sources of its data sets. Edits of
/// points and styles do not make it another one.
XYGRAPH_EXPORT QString RecoveryKind(const TxyGraph& graph, const std::string& name);
/// Stands for every kind that RecoveryKind gives in this program.
XYGRAPH_EXPORT QString EditorKinds();
/// It edited a copy of a program's graph.
XYGRAPH_EXPORT bool IsOfEditor(const TLeftSession& session);

class XYGRAPH_EXPORT TRecoveryWriter : public QObject {
    Q_OBJECT

public:
    /// The session must outlive it. What can not be written is told by Failed, once; the session goes on.
    TRecoveryWriter(TGraphSession& session, TRecoveryOptions options, QObject* parent = nullptr);
    ~TRecoveryWriter() override;

    /// Another file; for the writings that follow.
    void SetDocumentName(const QString& name) { m_options.DocumentName = name; }
    /// The session goes on from what was left: its file is removed when this one has written its own, or is
    /// clean or ends.
    void Continue(std::unique_ptr<TLeftSession> left);
    /// Waits until all that was handed over is on the disk; for tests and measurements.
    void Flush();

Q_SIGNALS:
    /// A state of the session is on the disk.
    void Written();
    /// The text names the file.
    void Failed(const QString& text);

private:
    class TOnTheWay;

    XYGRAPH_LOCAL void OnChanged();
    XYGRAPH_LOCAL void Write();
    XYGRAPH_LOCAL void WritingEnded(qint64 tookMs);
    XYGRAPH_LOCAL void Remove();
    XYGRAPH_LOCAL qint64 PauseMs() const;
    XYGRAPH_LOCAL TRecoveryInfo Info(const TGraphSnapshot& graph) const;
    XYGRAPH_LOCAL void Attempt(const std::function<void()>& work);
    XYGRAPH_LOCAL void TellFailure(const QString& text);

    TGraphSession& m_session;
    TRecoveryOptions m_options;
    std::unique_ptr<TRecoveryPlace> m_place; ///< from the first writing on
    std::shared_ptr<TLeftSession> m_left;
    std::shared_ptr<TOnTheWay> m_onTheWay; ///< from the first writing on
    // One thread each: jobs follow each other.
    QThreadPool m_writing;
    QThreadPool m_disk;
    QTimer m_timer;
    QElapsedTimer m_sinceWriting;
    qint64 m_writingMs = 0; ///< that the last one took
    bool m_isDue = false;   ///< again, when the present one has ended
    bool m_hasFile = false;
    bool m_hasFailed = false;
};

} // namespace lumoplot
