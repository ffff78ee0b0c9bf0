// Keeps the recovery file of a session while it has steps that are not saved. The interface thread only hands
// over the session's own snapshot; bytes are made and written in another thread, at most once in an interval.
// The file goes when the session is clean again, and when this object ends: that is the normal end. A crash
// ends nothing, so the file stays.
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
    void OnChanged();
    void Write();
    void Remove();
    TRecoveryInfo Info(const TGraphSnapshot& graph) const;
    void TellFailure(const QString& text);

    TGraphSession& m_session;
    TRecoveryOptions m_options;
    std::unique_ptr<TRecoveryPlace> m_place; ///< from the first writing on
    std::shared_ptr<TLeftSession> m_left;
    QThreadPool m_thread; ///< one thread: jobs follow each other
    QTimer m_timer;
    QElapsedTimer m_sinceWriting;
    bool m_hasFile = false;
    bool m_hasFailed = false;
};

} // namespace lumoplot
