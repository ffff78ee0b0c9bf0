// The graph that the window shows as a document: which file and which template it belongs to, its session of
// steps that can be undone, and whether it has changes that are not saved. It asks the user nothing.
#pragma once

#include "graph/model/graph.h"
#include "session/graph_session.h"

#include <functional>

namespace lumoplot {

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

Q_SIGNALS:
    /// The file's name or the modified state is another one.
    void StateChanged();

private:
    QString DefaultTemplate() const;
    void Become(const QString& fileName, const QString& templateName);
    void TakeOver(const TxyGraph& graph);

    TxyGraph& m_graph;
    TGraphSession m_session;
    QString m_templateFolder;
    QString m_fileName;
    QString m_templateName;
};

} // namespace lumoplot
