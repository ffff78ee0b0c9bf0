#include "editor/editxydata.h"

#include "dialog/frame/data_set_list.h"
#include "dialog/frame/data_wizard.h"
#include "dialogs/messages/message_box_sink.h"
#include "dialogs/messages/password_question.h"
#include "dialogs/messages/progress_window.h"
#include "dialogs/messages/window_place.h"
#include "dialogs/recovery/recovery_dialog.h"
#include "graph/loading/source_loading.h"
#include "graph/model/holder.h"
#include "session/recovery_writer.h"
#include "sources/database/connection/password_asker.h"
#include "support/errors.h"
#include "support/guard.h"
#include "support/number_text.h"
#include "support/progress_maker.h"

#include <QApplication>
#include <QScreen>
#include <QTimer>
#include <QWindow>

namespace lumoplot {
namespace {

// Lives among the application object's children under the editor's name and owns the dialog, which is a
// window of its own and can have no parent that is no widget.
class TEditorHolder : public QObject {
public:
    explicit TEditorHolder(QObject* application) : QObject(application) { qAddPostRoutine(&DeleteAll); }
    ~TEditorHolder() override { qRemovePostRoutine(&DeleteAll); }

    TxyDataWizard Wizard;
    bool IsInUse = false;
    bool DeleteAfterUse = false;

private:
    // The application object deletes its children when its own windows' part is gone: too late for a window.
    static void DeleteAll() {
        for (QObject* child : QObjectList(qApp->children()))
            if (dynamic_cast<TEditorHolder*>(child)) delete child;
    }
};

// One call's use of the editor. Hosts run timers while the dialog is shown or reads a file: a second call
// would put its graph in the place of the one that is being edited, and the dialog must not go under the
// first.
class TEditorUse {
public:
    explicit TEditorUse(TEditorHolder& holder) : m_holder(holder) { holder.IsInUse = true; }
    ~TEditorUse() {
        m_holder.IsInUse = false;
        if (m_holder.DeleteAfterUse) delete &m_holder;
    }
    TEditorUse(const TEditorUse&) = delete;
    TEditorUse& operator=(const TEditorUse&) = delete;

private:
    TEditorHolder& m_holder;
};

QString HolderName() {
    return qApp->objectName() + QStringLiteral("dataEdit");
}

TEditorHolder* FindHolder() {
    if (!QCoreApplication::instance()) return nullptr;
    return dynamic_cast<TEditorHolder*>(qApp->findChild<QObject*>(HolderName(), Qt::FindDirectChildrenOnly));
}

TEditorHolder& FindOrCreateHolder() {
    if (!qobject_cast<QApplication*>(QCoreApplication::instance()))
        throw ELumoError("The data editor needs an application object");
    TEditorHolder* holder = FindHolder();
    if (!holder) {
        holder = new TEditorHolder(qApp);
        holder->setObjectName(HolderName());
        holder->Wizard.setObjectName(HolderName());
        holder->Wizard.setWindowIcon(QApplication::windowIcon());
        holder->Wizard.setModal(true);
    }
    return *holder;
}

void DeleteHolder() {
    TEditorHolder* holder = FindHolder();
    if (!holder || !holder->IsInUse) return delete holder;
    holder->DeleteAfterUse = true;
    holder->setObjectName({}); // nobody finds it any more
    holder->Wizard.Drop();
}

void CopyIn(TxyChildGr& workGraph, const TxyGraph& host) {
    workGraph.CopyFrom(host);
    workGraph.Holder()->OfferSheets(host.Holder()->Sheets());
    workGraph.SetPointBudget(host.PointBudget());
    workGraph.SetEditorMode(true);
    workGraph.SetHolderID({});
    for (const auto& child : workGraph.ChildGraphs()) child->SetHolderID({});
}

void PlaceInTheMiddle(QWidget& window) {
    const QRect screen = QGuiApplication::primaryScreen()->availableGeometry();
    window.resize(window.size().boundedTo(RoomOnScreen(window)));
    window.move(screen.center() - QRect(QPoint(0, 0), window.size()).center());
}

// Keeps the dialog, which has no parent, above the window that it blocks while it is shown.
class TStayAbove {
public:
    TStayAbove(QWidget& window, const QWidget* host) : m_window(window) {
        if (!host || host == &window || !host->windowHandle()) return;
        window.winId();
        window.windowHandle()->setTransientParent(host->windowHandle());
    }
    ~TStayAbove() {
        if (m_window.windowHandle()) m_window.windowHandle()->setTransientParent(nullptr);
    }
    TStayAbove(const TStayAbove&) = delete;
    TStayAbove& operator=(const TStayAbove&) = delete;

private:
    QWidget& m_window;
};

int ShowModal(TxyDataWizard& wizard) {
    const TStayAbove above(wizard, QApplication::activeWindow());
    const int result = wizard.exec();
    wizard.hide(); // the application may have ended the loop instead of the user
    return result;
}

// Keeps the steps of one use of the editor, and goes on with those of a use that a crash ended.
class TKeptEditing {
public:
    TKeptEditing(TxyDataWizard& wizard, const TxyGraph& graph, const std::string& name)
        : m_wizard(wizard), m_kind(RecoveryKind(graph, name)),
          m_left(OfferRecovery(RecoveryFolder(), {m_kind}, QApplication::activeWindow())),
          m_writer(wizard.Session(), {.Kind = m_kind, .DocumentName = QString::fromStdString(name)}) {}

    /// To be called before the dialog is shown, whose steps begin with that.
    void GoOnWhenShown() {
        if (!m_left) return;
        QTimer::singleShot(0, &m_context, [this] {
            Guarded([this] {
                m_wizard.Recover(*m_left->Graph, m_left->Info.Beside);
                m_writer.Continue(std::move(m_left->File));
            });
        });
    }

private:
    TxyDataWizard& m_wizard;
    QString m_kind;
    std::optional<TRecoveredSession> m_left;
    TRecoveryWriter m_writer;
    QObject m_context;
};

void OfferTemplate(TxyChildGr& workGraph, const std::string& name) {
    if (name.empty()) return;
    const std::string shown(Trimmed(name));
    if (AskYesNo("Save graph to template \"" + shown + "\"  permanently?"))
        workGraph.SaveTemplate(name, TPoints::LeaveOut);
}

bool EditData(TxyGraph& graph, TShortString& templateName, int templateNameMax,
              const TShortString& sourceFile, bool openWithSource, int startPage) {
    TEditorHolder& holder = FindOrCreateHolder();
    if (holder.IsInUse) return false;
    const TEditorUse use(holder);
    TxyDataWizard& wizard = holder.Wizard;
    const TMessageBoxScope messages;
    const TProgressMakerScope progressMaker([] { return std::make_unique<TProgressWindow>(); });
    const TPasswordAskerScope passwords(AskPassword);
    TKeptEditing kept(wizard, graph, FromShortString(templateName));
    wizard.SetStartPage(startPage);
    CopyIn(wizard.WorkGraph(), graph);
    wizard.SetTemplateName(FromShortString(templateName));
    wizard.SetDocumentName(graph.windowTitle());
    PlaceInTheMiddle(wizard);
    if (openWithSource) {
        wizard.DataSets().New();
        wizard.AttachSource(FromShortString(sourceFile));
    }
    kept.GoOnWhenShown();
    const int result = ShowModal(wizard);
    if (result == TxyDataWizard::kCancel) return false;
    templateName = ToShortString(wizard.TemplateName(), templateNameMax);
    graph.CopyFrom(wizard.WorkGraph());
    {
        TProgressWindow progress;
        LoadThinnedAgain(graph, wizard.WorkGraph(), progress);
    }
    if (result == TxyDataWizard::kSetDefault) OfferTemplate(wizard.WorkGraph(), wizard.TemplateName());
    return true;
}

} // namespace
} // namespace lumoplot

bool editxyData(lumoplot::TxyGraph& Graph, lumoplot::TShortString& TemplateName, int TemplateNameMax,
                lumoplot::TShortString SourceFile, bool OpenWithSource, int StartPage) {
    return lumoplot::EditData(Graph, TemplateName, TemplateNameMax, SourceFile, OpenWithSource, StartPage);
}

void deleteDataEditor() {
    lumoplot::DeleteHolder();
}
