#include "host/files/graph_document.h"

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

} // namespace

TGraphDocument::TGraphDocument(TxyGraph& graph, const QString& templateFolder)
    : m_graph(graph), m_session(graph), m_templateFolder(templateFolder) {
    connect(&m_session, &TGraphSession::Changed, this, &TGraphDocument::StateChanged);
}

QString TGraphDocument::DisplayName() const {
    return m_fileName.isEmpty() ? tr("Untitled") : QFileInfo(m_fileName).fileName();
}

QString TGraphDocument::DefaultTemplate() const {
    return QDir(m_templateFolder).filePath(QStringLiteral("default.ltp"));
}

void TGraphDocument::SetUnmodified() {
    m_session.MarkClean();
}

void TGraphDocument::Become(const QString& fileName, const QString& templateName) {
    m_fileName = fileName;
    m_fileState = {};
    m_templateName = templateName;
    if (m_recovery) m_recovery->SetDocumentName(m_fileName);
    m_session.Start();
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
            const QString text = tr("The template is not used: %1").arg(QString::fromUtf8(error.what()));
            ShowMessage(text.toStdString(), TMessageKind::Warning);
            graph.ResetToDefaults();
            ApplyDefaultLook(graph);
        }
    }
    TakeOver(graph);
    Become({}, defaultTemplate);
}

void TGraphDocument::NewFromTemplate(const QString& fileName) {
    TxyGraph graph;
    graph.LoadFromFile(fileName.toStdString());
    TakeOver(graph);
    Become({}, QFileInfo(fileName).absoluteFilePath());
}

TGraphDocument::TFileState TGraphDocument::StateOf(const QString& fileName) {
    const QFileInfo file(fileName);
    return file.exists() ? TFileState(file.lastModified(), file.size()) : TFileState();
}

bool TGraphDocument::IsFileOfOthers() const {
    return QFileInfo(m_fileName).isFile() && StateOf(m_fileName) != m_fileState;
}

void TGraphDocument::Open(const QString& fileName) {
    const TFileState state = StateOf(fileName); // of what is read, if not of an older one
    TxyGraph graph;
    graph.LoadFromFile(fileName.toStdString());
    TakeOver(graph);
    Become(QFileInfo(fileName).absoluteFilePath(), DefaultTemplate());
    m_fileState = state;
}

void TGraphDocument::SaveTo(const QString& fileName) {
    m_graph.SaveTemplate(fileName.toStdString(), TPoints::Include);
    m_fileName = QFileInfo(fileName).absoluteFilePath();
    m_fileState = StateOf(m_fileName);
    if (m_recovery) m_recovery->SetDocumentName(m_fileName);
    m_session.MarkClean();
    Q_EMIT StateChanged();
}

void TGraphDocument::SaveAsTemplate(const QString& fileName) {
    m_graph.SaveTemplate(fileName.toStdString(), TPoints::LeaveOut);
    SetTemplateName(QFileInfo(fileName).absoluteFilePath());
}

void TGraphDocument::KeepChanges(const QString& folder, int intervalMs) {
    m_recovery = std::make_unique<TRecoveryWriter>(m_session, TRecoveryOptions{.Kind = QString(kRecoveryKind),
                                                                               .DocumentName = m_fileName,
                                                                               .Folder = folder,
                                                                               .IntervalMs = intervalMs});
    connect(m_recovery.get(), &TRecoveryWriter::Failed, this, &TGraphDocument::SetKeepingProblem);
    connect(m_recovery.get(), &TRecoveryWriter::Written, this, [this] { SetKeepingProblem({}); });
}

void TGraphDocument::SetKeepingProblem(const QString& problem) {
    if (m_keepingProblem == problem) return;
    m_keepingProblem = problem;
    Q_EMIT StateChanged();
}

// Undoing the step leads to what is in the file. A file that is gone is written again by saving.
void TGraphDocument::BecomeFileOf(const TRecoveryInfo& session) {
    if (!session.DocumentName.isEmpty() && QFileInfo::exists(session.DocumentName)) {
        try {
            return Open(session.DocumentName);
        } catch (const ELumoError& error) {
            ShowMessage(error.what(), TMessageKind::Warning);
        }
    }
    New();
    if (!session.DocumentName.isEmpty()) Become(session.DocumentName, DefaultTemplate());
}

void TGraphDocument::Recover(TRecoveredSession session,
                             const std::function<void(const TBytes&)>& restoreBeside) {
    const bool isOfEditor = IsOfEditor(*session.File); // its document is a template
    isOfEditor ? New() : BecomeFileOf(session.Info);
    m_session.Change(tr("recover").toStdString(), [&] {
        m_graph.CopyFrom(*session.Graph);
        if (!isOfEditor && restoreBeside) restoreBeside(session.Info.Beside);
    });
    if (isOfEditor && !session.Info.Beside.empty()) return LeaveToEditor(*session.File);
    if (m_recovery) m_recovery->Continue(std::move(session.File));
}

/// The graph is the window's now; the rows that are no points yet are the editor's matter.
void TGraphDocument::LeaveToEditor(TLeftSession& session) {
    const std::string name = m_templateName.toStdString();
    if (!session.GiveTo(RecoveryKind(m_graph, name))) return;
    ShowMessage(tr("Rows of the grid are no points yet. Edit > Data offers them.").toStdString(),
                TMessageKind::Information);
}

} // namespace lumoplot
