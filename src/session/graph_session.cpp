#include "session/graph_session.h"

#include "session/undo_history.h"
#include "support/message_text.h"

#include <utility>

namespace lumoplot {
namespace {

constexpr std::size_t kLongestStepName = 60; // characters that a menu shows

std::string ShownStepName(const std::string& name) {
    return ShownLine(QString::fromStdString(name).simplified().toStdString(), kLongestStepName);
}

} // namespace

TGraphSession::TGraphSession(TxyGraph& graph, QObject* parent)
    : TGraphSession(graph, TUndoHistory::kMemoryLimit, parent) {
}

TGraphSession::TGraphSession(TxyGraph& graph, std::size_t memoryLimit, QObject* parent)
    : QObject(parent), m_graph(graph), m_history(std::make_unique<TUndoHistory>(graph, memoryLimit)) {
    m_graph.SetChangeHook([this](const TUserChange& change, const std::function<void()>& action) {
        const TMergeKey drag{&m_graph, change.Gesture};
        Change(change.Name, change.Gesture != 0 ? drag : TMergeKey{}, action);
    });
}

TGraphSession::~TGraphSession() {
    m_graph.SetChangeHook({});
}

void TGraphSession::SetSide(TSideAccess side) {
    m_history->SetSide(std::move(side));
}

void TGraphSession::Start() {
    m_history->Start();
    MarkClean();
}

void TGraphSession::Stop() {
    m_history->Stop();
    Q_EMIT Changed();
}

bool TGraphSession::Change(const std::string& name, TMergeKey key, const std::function<void()>& action) {
    TOpenStep step(*this, name, key);
    action();
    return step.Keep();
}

void TGraphSession::FollowUp(const std::function<void()>& action) {
    ++m_followUps;
    const auto leave = [this](TGraphSession*) { --m_followUps; };
    const std::unique_ptr<TGraphSession, decltype(leave)> guard(this, leave);
    action();
}

void TGraphSession::Fed(TFedRows rows) {
    m_history->NoteFed();
    const bool isGone = rows == TFedRows::GoneUnlessSaved;
    const bool isNew = isGone && !std::exchange(m_hasUnrecorded, true);
    if (isNew) Q_EMIT Changed();
    Q_EMIT Grown();
}

void TGraphSession::EndMerging() {
    if (!IsStepOpen()) m_history->EndMerging();
}

/// What has changed since the last step follows from that.
bool TGraphSession::Open(const std::string& name) {
    if (m_followUps > 0) return false;
    if (m_openSteps++ > 0) return true;
    m_stepName = name;
    m_history->Absorb();
    return true;
}

bool TGraphSession::Close(TMergeKey key) {
    if (--m_openSteps > 0) return false;
    const bool wasRecording = m_history->IsRecording();
    const bool isStep = m_history->Note(ShownStepName(m_stepName), key);
    m_hasUnrecorded |= !m_history->IsRecording() && (isStep || !wasRecording);
    if (isStep || !wasRecording) Q_EMIT Changed();
    return isStep;
}

/// Inside another step the exception goes on to that, or its action knows what to do.
void TGraphSession::GiveUp() {
    if (--m_openSteps > 0 || !m_history->IsRecording()) return;
    m_history->PutBack();
    Q_EMIT PutBack();
}

TSessionState TGraphSession::State() const {
    TSessionState state;
    state.CanUndo = !IsStepOpen() && m_history->CanUndo();
    state.CanRedo = !IsStepOpen() && m_history->CanRedo();
    if (state.CanUndo) {
        state.StepsBack = m_history->StepsBack();
        state.UndoName = m_history->UndoName();
    }
    if (state.CanRedo) state.RedoName = m_history->RedoName();
    state.IsClean = !m_hasUnrecorded && m_history->PresentId() == m_cleanId;
    return state;
}

std::string TGraphSession::LastStepName() const {
    return m_history->UndoName();
}

void TGraphSession::Undo() {
    if (!CanUndo()) return;
    m_history->Undo();
    Q_EMIT PutBack();
    Q_EMIT Changed();
}

void TGraphSession::Redo() {
    if (!CanRedo()) return;
    m_history->Redo();
    Q_EMIT PutBack();
    Q_EMIT Changed();
}

// A step that has been saved must be reached again by undo.
void TGraphSession::MarkClean() {
    m_history->EndMerging();
    m_cleanId = m_history->PresentId();
    m_hasUnrecorded = false;
    Q_EMIT Changed();
}

int TGraphSession::UnsavedSteps() const {
    return m_history->StepsFrom(m_cleanId);
}

std::shared_ptr<const TGraphSnapshot> TGraphSession::Snapshot() const {
    if (!IsStepOpen()) m_history->AbsorbFed();
    if (const TGraphSnapshot* present = m_history->Present())
        return std::make_shared<const TGraphSnapshot>(*present);
    return std::make_shared<const TGraphSnapshot>(m_graph, nullptr, std::make_shared<TMemoryMeter>());
}

TSideStatePtr TGraphSession::Side() const {
    return IsTyping() ? m_history->TypedSide() : m_history->PresentSide();
}

bool TGraphSession::IsTyping() const {
    return m_history->IsRecording() && m_history->IsTyping();
}

TOpenStep::TOpenStep(TGraphSession& session, const std::string& name, TMergeKey key)
    : m_session(session), m_key(key), m_isOpen(session.Open(name)) {
}

TOpenStep::~TOpenStep() {
    if (m_isOpen) m_session.GiveUp();
}

bool TOpenStep::Keep() {
    return std::exchange(m_isOpen, false) && m_session.Close(m_key);
}

} // namespace lumoplot
