// The graph that the window shows as a document: which file and which template it belongs to, its session of
// steps that can be undone, whether it has changes that are not saved, and where these are kept in case of a
// crash. It asks the user nothing.
#pragma once

#include "dialogs/recovery/recovery_dialog.h"
#include "graph/model/graph.h"
#include "session/graph_session.h"
#include "session/recovery_writer.h"

#include <QDateTime>
#include <functional>
#include <memory>
#include <utility>

namespace lumoplot {

/// Of the program's recovery files.
inline constexpr QLatin1String kRecoveryKind("host");

class TGraphDocument : public QObject {
    Q_OBJECT

public:
    /// The graph is borrowed. The template that new graphs start from lies in `templateFolder`.
    TGraphDocument(TxyGraph& graph, const QString& templateFolder);

    TxyGraph& Graph() const { return m_graph; }
    /// Whatever changes the graph goes through it.
    TGraphSession& Session() { return m_session; }
    /// The graph file; empty for a graph that was never saved.
    const QString& FileName() const { return m_fileName; }
    /// Somebody else has written the file, or made it, since it was read or written here.
    bool IsFileOfOthers() const;
    /// The name to show: the file's, or "Untitled".
    QString DisplayName() const;
    /// The template that the editor's "Set as Default" writes.
    const QString& TemplateName() const { return m_templateName; }
    const QString& TemplateFolder() const { return m_templateFolder; }
    bool IsModified() const { return !m_session.IsClean(); }

    void SetTemplateName(const QString& name) { m_templateName = name; }
    /// What the graph holds now counts as saved.
    void SetUnmodified();

    /// An empty graph with the look of the default template, or with the built-in one when there is none.
    void New();
    // Each throws what reading or writing throws, and then neither the graph nor the document has changed.
    /// A graph without a file that starts as the template.
    void NewFromTemplate(const QString& fileName);
    void Open(const QString& fileName);
    /// Saves with all points; the document belongs to that file from then on.
    void SaveTo(const QString& fileName);
    /// Saves the graph without points; the document keeps its file.
    void SaveAsTemplate(const QString& fileName);

    /// Changes that are not saved are kept in a file of the folder from now on, at most once in the interval.
    void KeepChanges(const QString& folder, int intervalMs);
    /// Becomes the file that the session belonged to, where it can still be read (one of the data editor
    /// belongs to none), changed by one step into what the session left.
    /// `restoreBeside` takes what belonged to the graph beside it.
    void Recover(TRecoveredSession session, const std::function<void(const TBytes&)>& restoreBeside = {});
    /// Why changes can not be kept; empty while they are.
    const QString& KeepingProblem() const { return m_keepingProblem; }

Q_SIGNALS:
    /// The file's name or the modified state is another one.
    void StateChanged();

private:
    QString DefaultTemplate() const;
    void Become(const QString& fileName, const QString& templateName);
    void TakeOver(const TxyGraph& graph);
    void BecomeFileOf(const TRecoveryInfo& session);
    void LeaveToEditor(TLeftSession& session);
    void SetKeepingProblem(const QString& problem);

    TxyGraph& m_graph;
    TGraphSession m_session;
    QString m_templateFolder;
    /// When the file was written last, and its size.
    using TFileState = std::pair<QDateTime, qint64>;
    static TFileState StateOf(const QString& fileName);

    QString m_fileName;
    TFileState m_fileState; ///< as it was read or written here
    QString m_templateName;
    QString m_keepingProblem;
    std::unique_ptr<TRecoveryWriter> m_recovery; ///< null while nothing is kept
};

} // namespace lumoplot
