// A session on a graph: whoever changes the graph by hand does it through this object, which makes each
// change a named step that can be undone and redone. It does not own the graph. What changes the graph
// outside of a Change (a pending fit that a picture runs, axes that follow the data, another current data
// set) follows from the step before it: it is undone and redone with that, and nothing that can be redone is
// lost by it.
#pragma once

#include "session/merge_key.h"
#include "session/side_state.h"
#include "support/export.h"

#include <QObject>
#include <functional>
#include <memory>
#include <string>

namespace lumoplot {

class TGraphSnapshot;
class TOpenStep;
class TUndoHistory;
class TxyGraph;

/// What is lost of rows that a link has fed when nobody saves them.
enum class TFedRows { CanBeReadAgain, GoneUnlessSaved };

/// Where a session stands.
struct TSessionState {
    int StepsBack = 0;    ///< that can be undone
    std::string UndoName; ///< of the step that Undo takes back; empty when there is none
    std::string RedoName; ///< of the one that Redo does again; the same
    bool CanUndo = false;
    bool CanRedo = false;
    /// The graph is as it was at Start or at the last MarkClean (it was saved), or by undo and redo again.
    bool IsClean = false;
};

class XYGRAPH_EXPORT TGraphSession : public QObject {
    Q_OBJECT

public:
    /// All states together take at most `memoryLimit` bytes; the oldest steps are dropped then. The graph
    /// must outlive the session, which is its change hook: what the mouse and the keys change there is a
    /// step. Nothing is recorded before Start.
    explicit TGraphSession(TxyGraph& graph, QObject* parent = nullptr);
    XYGRAPH_LOCAL TGraphSession(TxyGraph& graph, std::size_t memoryLimit, QObject* parent = nullptr);
    ~TGraphSession() override;

    TxyGraph& Graph() const { return m_graph; }
    /// What belongs to the steps beside the graph. Set before Start; both functions live as long as steps do.
    void SetSide(TSideAccess side);

    /// Forgets all steps and starts, clean, with the graph as it is: it was opened, loaded or made anew.
    void Start();
    /// Forgets all steps and records no more; changes are then made, but none can be undone.
    void Stop();

    /// Runs `action`; what it changes is one step of that name ("fit Run 1"), unless it changes nothing. Data
    /// sets and marks count, and settings, but not which data set or mark is current. A Change inside a
    /// Change belongs to the outer one. When `action` throws, the graph is put back to what it was before,
    /// and the exception goes on (a session that
    /// records nothing leaves it as it is then). True when there is a step.
    bool Change(const std::string& name, const std::function<void()>& action) {
        return Change(name, {}, action);
    }
    /// The same for what is done little by little: it joins the step before it when that has the same key and
    /// nothing was undone or done between. A step that ends where it began disappears.
    bool Change(const std::string& name, TMergeKey key, const std::function<void()>& action);
    /// Runs `action`, which follows from the last step or only shows something: a Change inside is no step.
    void FollowUp(const std::function<void()>& action);
    /// A link has fed points to data sets of the graph (those with a FeedId). That is no step, undo and redo
    /// leave these points in, and a snapshot has them.
    XYGRAPH_LOCAL void Fed(TFedRows rows);
    /// The open step gets another name, as only its action knew it. Without an open step nothing happens.
    void NameStep(const std::string& name) { m_stepName = name; }
    /// The next Change joins no step before it: the edit was left.
    void EndMerging();
    bool IsStepOpen() const { return m_openSteps > 0; }

    /// While a step is open there is none that can be undone or redone.
    TSessionState State() const;
    bool CanUndo() const { return State().CanUndo; }
    bool CanRedo() const { return State().CanRedo; }
    int StepsBack() const { return State().StepsBack; }
    std::string UndoName() const { return State().UndoName; }
    std::string RedoName() const { return State().RedoName; }
    bool IsClean() const { return State().IsClean; }

    /// Puts back the state that the graph had before the last step, filed or not, with the data set current
    /// that the step was made on. Data sets may be other objects afterwards. Nothing while a step is open.
    void Undo();
    void Redo();

    void MarkClean();
    /// The steps that lead from the clean state to the present one; at least 0.
    XYGRAPH_LOCAL int UnsavedSteps() const;
    /// The name of the last step, while another is open, too; empty without one.
    XYGRAPH_LOCAL std::string LastStepName() const;
    /// The graph after the last step, to be read in any thread; shared with the steps, where they are
    /// recorded.
    XYGRAPH_LOCAL std::shared_ptr<const TGraphSnapshot> Snapshot() const;
    /// What belongs to that beside the graph, with what is being typed; null while nothing is recorded.
    XYGRAPH_LOCAL TSideStatePtr Side() const;
    /// Something is being typed that will be a step when its edit is left.
    XYGRAPH_LOCAL bool IsTyping() const;

Q_SIGNALS:
    /// There may be other steps now, or another IsClean.
    void Changed();
    /// Links have fed points.
    void Grown();
    /// IsTyping is another, or what is typed: emitted by who types.
    void Typed();
    /// A former state has been put back, by Undo, Redo or an exception: what shows the graph's content must
    /// be filled anew.
    void PutBack();

private:
    friend class TOpenStep;

    XYGRAPH_LOCAL bool Open(const std::string& name);
    XYGRAPH_LOCAL bool Close(TMergeKey key);
    XYGRAPH_LOCAL void GiveUp();

    TxyGraph& m_graph;
    std::unique_ptr<TUndoHistory> m_history;
    std::string m_stepName; ///< of the open step
    int m_openSteps = 0;    ///< one in another
    int m_followUps = 0;
    bool m_hasUnrecorded = false; ///< changes since MarkClean while nothing was recorded
    std::uint64_t m_cleanId = 0;
};

/// A step that is open over several events, a drag or the time that a window is shown: what changes until
/// Keep is one step. Without Keep its end puts the graph back, as Esc in a drag does.
class TOpenStep {
public:
    TOpenStep(TGraphSession& session, const std::string& name, TMergeKey key = {});
    ~TOpenStep();
    TOpenStep(const TOpenStep&) = delete;
    TOpenStep& operator=(const TOpenStep&) = delete;

    /// True when there is a step.
    bool Keep();

private:
    TGraphSession& m_session;
    TMergeKey m_key;
    bool m_isOpen; ///< not within a FollowUp
};

} // namespace lumoplot
