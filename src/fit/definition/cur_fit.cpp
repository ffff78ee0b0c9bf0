#include "fit/definition/cur_fit.h"

#include "fit/definition/fit_result.h"
#include "fit/definition/fit_ties.h"
#include "support/message_sink.h"
#include "support/number_text.h"

#include <algorithm>
#include <cmath>

namespace lumoplot {
namespace {

bool EqualNames(std::string_view a, std::string_view b) {
    return a.size() == b.size() && LowerCased(a) == LowerCased(b);
}

void TellAlreadyDefined(const std::string& name) {
    ShowMessage("Parameter \"" + name + "\" Already Defined!", TMessageKind::Error);
}

} // namespace

void TDBLParameter::SetName(const std::string& name) {
    if (name.empty() || name == m_name) return;
    if (m_owner && m_owner->IsParameter(name)) return TellAlreadyDefined(name);
    m_name = name;
    TellOwner();
}

void TDBLParameter::SetTie(const std::string& formula) {
    const std::string tie(Trimmed(formula));
    if (tie == m_tie) return;
    m_tie = tie;
    TellOwner();
}

bool TDBLParameter::IsBounded() const {
    return std::isfinite(m_min) || std::isfinite(m_max);
}

void TDBLParameter::TellOwner() {
    if (m_owner) m_owner->Changed(true);
}

TCurFit::TCurFit() = default;
TCurFit::~TCurFit() = default;

void TCurFit::Changed(bool modified) {
    ++m_revision;
    m_modified = modified;
    RenewTies();
    if (!modified) return;
    SetStale(true);
    if (OnChange) OnChange(*this);
}

void TCurFit::RenewTies() {
    for (const auto& parameter : m_parameters) {
        const double value = parameter->IsTied() ? TiedValue(*this, *parameter) : kNotANumber;
        if (std::isfinite(value)) parameter->m_value = value;
    }
}

void TCurFit::FitDone(TFitResult result) {
    RenewTies();
    PropagateErrors(*this, result);
    m_result = std::make_shared<const TFitResult>(std::move(result));
    m_fitError.clear();
    m_modified = true;
    SetStale(false);
    NotifyDisplay();
}

void TCurFit::TakeRun(const TCurFit& run) {
    TakeFound(run);
    if (run.Result()) FitDone(*run.Result());
}

void TCurFit::TakeAllOf(const TCurFit& run) {
    TakeFound(run);
    RestoreRunState(run.RunState());
}

void TCurFit::TakeFound(const TCurFit& run) {
    TakeValues(run);
    for (int i = 1; i <= std::min(NParams(), run.NParams()); ++i)
        Parameter(i)->FinalDeviation = run.Parameter(i)->FinalDeviation;
}

void TCurFit::TakeValues(const TCurFit& run) {
    ++m_revision;
    for (int i = 1; i <= std::min(NParams(), run.NParams()); ++i)
        Parameter(i)->m_value = run.Parameter(i)->m_value;
    RenewTies();
}

void TCurFit::TakeFailure(const std::string& error) {
    m_result.reset();
    m_fitError = error;
    NotifyDisplay();
}

void TCurFit::RestoreRunState(const TFitRunState& state) {
    if (RunState() == state) return;
    ++m_revision;
    m_modified = state.Modified;
    m_stale = state.Stale;
    m_held = state.Held;
    m_result = state.Result;
    m_fitError = state.Error;
}

bool TCurFit::IsParameter(std::string_view name) const {
    return std::ranges::any_of(m_parameters, [&](const auto& p) { return EqualNames(p->Name(), name); });
}

void TCurFit::AddParameter(std::unique_ptr<TDBLParameter> parameter) {
    if (IsParameter(parameter->Name())) return TellAlreadyDefined(parameter->Name());
    parameter->m_owner = this;
    m_parameters.push_back(std::move(parameter));
    Changed(true);
}

void TCurFit::DeleteParameter(int number) {
    if (!Parameter(number)) return;
    RemoveVariable(Parameter(number)->Name());
    ClearExpressions();
    m_parameters.erase(m_parameters.begin() + (number - 1));
    Changed(true);
}

void TCurFit::ClearParameters() {
    Forget();
    m_parameters.clear();
    Changed(true);
}

void TCurFit::CopyParameterValues(const TCurFit& other) {
    if (NParams() != other.NParams()) return;
    for (int i = 1; i <= NParams(); ++i) Parameter(i)->m_value = other.Parameter(i)->m_value;
    Changed(true);
}

void TCurFit::AddTemplate(std::unique_ptr<TDBLFunction> function) {
    m_templates.push_back(std::move(function));
    MarkTemplatesChanged();
}

void TCurFit::DeleteTemplate(int number) {
    if (!IsTemplate(number)) return;
    m_templates.erase(m_templates.begin() + (number - 1));
    Changed(true);
}

void TCurFit::TemplateToTop(int number) {
    if (number < 2 || !IsTemplate(number)) return;
    std::rotate(m_templates.begin(), m_templates.begin() + (number - 1), m_templates.begin() + number);
    Changed(true);
}

void TCurFit::TemplateUp(int number) {
    if (number < 2 || !IsTemplate(number)) return;
    std::swap(m_templates[static_cast<std::size_t>(number - 2)],
              m_templates[static_cast<std::size_t>(number - 1)]);
    Changed(true);
}

void TCurFit::ClearTemplates() {
    if (m_templates.empty()) return;
    m_templates.clear();
    MarkTemplatesChanged();
}

void TCurFit::MarkTemplatesChanged() {
    ++m_revision;
    SetStale(true);
}

void TCurFit::ResetSettings() {
    m_settings = {};
    m_modified = false;
}

} // namespace lumoplot
