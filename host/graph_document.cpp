#include "host/graph_document.h"

#include "graph/loading/default_look.h"
#include "support/errors.h"
#include "support/message_sink.h"

#include <QDir>
#include <QFileInfo>

namespace lumoplot {
namespace {

/// Takes the look of the template into a graph without data.
void LoadLook(TxyGraph& graph, const QString& templateName) {
    graph.LoadFromFile(templateName.toStdString());
    graph.FreeAllSeries();
    graph.ClearMarks();
    graph.ClearChildGraphs();
    graph.Appearance()->SetGraphTitle({});
}

/// The graph as a file would hold it, its axes in step with its data.
TBytes FileBytes(TxyGraph& graph, TPoints points) {
    graph.PrepareForDrawing();
    TBytes bytes;
    graph.SaveToStream(bytes, points);
    return bytes;
}

/// Compares the graph at the end of its life with the one at its beginning.
class TChangeWatch {
public:
    TChangeWatch(TGraphDocument& document, TPoints points)
        : m_document(document), m_points(points), m_before(FileBytes(document.Graph(), points)) {}
    ~TChangeWatch() {
        if (FileBytes(m_document.Graph(), m_points) != m_before) m_document.SetModified(true);
    }
    TChangeWatch(const TChangeWatch&) = delete;
    TChangeWatch& operator=(const TChangeWatch&) = delete;

private:
    TGraphDocument& m_document;
    TPoints m_points;
    TBytes m_before;
};

} // namespace

TGraphDocument::TGraphDocument(TxyGraph& graph, const QString& templateFolder)
    : m_graph(graph), m_templateFolder(templateFolder) {
}

QString TGraphDocument::DisplayName() const {
    return m_fileName.isEmpty() ? tr("Untitled") : QFileInfo(m_fileName).fileName();
}

QString TGraphDocument::DefaultTemplate() const {
    return QDir(m_templateFolder).filePath(QStringLiteral("default.ltp"));
}

void TGraphDocument::SetModified(bool value) {
    if (value == m_isModified) return;
    m_isModified = value;
    Q_EMIT StateChanged();
}

void TGraphDocument::Edit(TPoints points, const std::function<void(TxyGraph&)>& change) {
    const TChangeWatch watch(*this, points);
    change(m_graph);
}

void TGraphDocument::Become(const QString& fileName, const QString& templateName, bool modified) {
    m_fileName = fileName;
    m_templateName = templateName;
    m_isModified = modified;
    Q_EMIT StateChanged();
}

void TGraphDocument::TakeOver(const TxyGraph& graph) {
    m_graph.SetPointBudget(TxyGraph::kHostPointBudget);
    m_graph.CopyFrom(graph);
}

void TGraphDocument::New() {
    const QString defaultTemplate = DefaultTemplate();
    TxyGraph graph;
    ApplyDefaultLook(graph);
    if (QFileInfo::exists(defaultTemplate)) {
        try {
            LoadLook(graph, defaultTemplate);
        } catch (const ELumoError& error) {
            ShowMessage(tr("The template %1 is not used: %2")
                            .arg(QDir::toNativeSeparators(defaultTemplate), QString::fromUtf8(error.what()))
                            .toStdString(),
                        TMessageKind::Warning);
            graph.ResetToDefaults();
            ApplyDefaultLook(graph);
        }
    }
    TakeOver(graph);
    Become({}, defaultTemplate, false);
}

void TGraphDocument::NewFromTemplate(const QString& fileName) {
    TxyGraph graph;
    graph.LoadFromFile(fileName.toStdString());
    TakeOver(graph);
    Become({}, QFileInfo(fileName).absoluteFilePath(), false);
}

void TGraphDocument::Open(const QString& fileName) {
    TxyGraph graph;
    graph.LoadFromFile(fileName.toStdString());
    TakeOver(graph);
    Become(QFileInfo(fileName).absoluteFilePath(), DefaultTemplate(), false);
}

void TGraphDocument::SaveTo(const QString& fileName) {
    m_graph.SaveTemplate(fileName.toStdString(), TPoints::Include);
    Become(QFileInfo(fileName).absoluteFilePath(), m_templateName, false);
}

void TGraphDocument::SaveAsTemplate(const QString& fileName) {
    m_graph.SaveTemplate(fileName.toStdString(), TPoints::LeaveOut);
    SetTemplateName(QFileInfo(fileName).absoluteFilePath());
}

} // namespace lumoplot
