// The curve fit of a data set: the model formula in one variable, its named parameters, the text templates
// that expand inside it, and the settings of the fitting run. It evaluates its model and writes and reads its
// record; it knows neither the data nor a window. Owned by its data series.
#pragma once

#include "expr/expression_parser.h"
#include "fit/definition/fit_weighting.h"
#include "stream/reader.h"
#include "stream/section.h"
#include "stream/writer.h"
#include "support/export.h"
#include "support/look.h"

#include <cstdint>
#include <functional>
#include <limits>
#include <memory>
#include <string>
#include <string_view>
#include <vector>

namespace lumoplot {

class TCurFit;
struct TFitResult;

/// How the graph shows a fit. Files hold the numbers; one that is none of these is kept.
enum class TFitStatus : int { None = 0, Function = 1, FinalResult = 2, EveryStep = 3 };

/// The fitting procedures; another number stands for the last one.
enum class TFitProcedure : int { Powell = 0, Simplex = 1, ConjugateGradient = 2, Newton = 3 };

/// One parameter of the model.
class TDBLParameter {
public:
    /// Relative size of the first steps that a fit takes with the parameter.
    double StartDeviation = 0.01;
    /// Its standard error after a fit.
    double FinalDeviation = 1e-05;
    bool ShowInLegend = false;
    std::string Description = "Parameter P";
    std::string Units;

    const std::string& Name() const { return m_name; }
    double Value() const { return m_value; }
    /// A fit finds the value; never of a tied parameter, which follows the others.
    bool Vary() const { return m_vary && !IsTied(); }
    /// The formula of the other parameters that gives the value ("2*b1"); empty for none.
    const std::string& Tie() const { return m_tie; }
    bool IsTied() const { return !m_tie.empty(); }
    /// A fit keeps the value within these; infinite where there is no bound.
    double Min() const { return m_min; }
    double Max() const { return m_max; }
    bool IsBounded() const;
    /// The value is one of the bounds.
    bool IsOnBound() const { return m_value == m_min || m_value == m_max; }
    /// Ignores an empty text. A name that the owner already has is refused with a message.
    XYGRAPH_EXPORT void SetName(const std::string& name);
    void SetValue(double value) {
        if (value == m_value) return;
        m_value = value;
        TellOwner();
    }
    void SetVary(bool vary) {
        if (vary == m_vary) return;
        m_vary = vary;
        TellOwner();
    }
    /// The value stays as it is; a fit moves it between the bounds when it starts. Ignored unless min < max.
    void SetBounds(double min, double max) {
        if (!(min < max) || (min == m_min && max == m_max)) return;
        m_min = min;
        m_max = max;
        TellOwner();
    }
    /// Any text; without blanks around it. A formula that can not be used is told where it is compiled.
    XYGRAPH_EXPORT void SetTie(const std::string& formula);
    /// Where the value is, for the formulas that are compiled with it.
    double* ValueRef() { return &m_value; }

private:
    friend class TCurFit;

    XYGRAPH_EXPORT void TellOwner();

    TCurFit* m_owner = nullptr;
    std::string m_name = "P";
    double m_value = 0;
    bool m_vary = false;
    std::string m_tie;
    double m_min = -std::numeric_limits<double>::infinity();
    double m_max = std::numeric_limits<double>::infinity();
};

/// One template: wherever `Name` occurs in the model it is replaced by `Text`.
struct TDBLFunction {
    std::string Name;
    std::string Text;
    std::string Description;
};

/// What is known of the last run of a fit.
struct TFitRunState {
    bool Modified = false;
    bool Stale = false;
    bool Held = false; ///< though stale, it is not run before the next change: a run was taken back
    std::shared_ptr<const TFitResult> Result; ///< null when there was none
    std::string Error;

    bool operator==(const TFitRunState&) const = default;
};

/// A definition is one whether or not its formula compiles: loading and copying keep it whole, and the error
/// comes where it is compiled. Whatever frees parameters also forgets what was compiled with them.
class TCurFit : public TExpressionParser {
public:
    XYGRAPH_EXPORT TCurFit();
    XYGRAPH_EXPORT ~TCurFit() override;

    /// Called after every change that `Changed(true)` or a display setter announces.
    std::function<void(TCurFit&)> OnChange;

    /// Stores `modified` and, when it is true, calls OnChange.
    XYGRAPH_EXPORT void Changed(bool modified);
    bool Modified() const { return m_modified; }
    /// The data or the definition has changed since the last fit.
    bool IsStale() const { return m_stale; }
    void MarkStale() { SetStale(true); }
    /// Nothing is to be fitted until the next change.
    void ClearStale() { SetStale(false); }
    /// The graph is to run it by itself.
    bool IsPending() const { return m_stale && !m_held && ShowsResult(); }
    /// Another number after every change that may show in the curve.
    std::uint64_t Revision() const { return m_revision; }

    // What is known of the last run; a function file does not hold it, the file of a data set does.

    /// Null when there was none, or it was not possible.
    const TFitResult* Result() const { return m_result.get(); }
    /// Why the last run was not possible; empty when it was.
    const std::string& FitError() const { return m_fitError; }
    /// A run has put its values into the parameters: Modified is set, the fit is not stale, and OnChange is
    /// called.
    void FitDone(TFitResult result);
    /// Takes values, deviations and result from a copy of this fit that has run, and does as FitDone.
    void TakeRun(const TCurFit& run);
    /// Takes values, deviations and what is known of the last run from a copy of this fit, silently.
    void TakeAllOf(const TCurFit& run);
    /// Takes the values of a copy that is running, silently.
    void TakeValues(const TCurFit& run);
    /// A run was not possible. Only OnChange is called.
    void TakeFailure(const std::string& error);
    /// For those who put a former state back, behind its definition; silently.
    TFitRunState RunState() const { return {m_modified, m_stale, m_held, m_result, m_fitError}; }
    XYGRAPH_EXPORT void RestoreRunState(const TFitRunState& state);

    const std::string& XVarName() const { return m_settings.XVarName; }
    const std::string& Expression() const { return m_settings.Expression; }
    TFitStatus Status() const { return m_settings.Status; }
    /// The graph compiles the fit and draws its curve.
    bool IsEnabled() const { return Status() != TFitStatus::None; }
    /// The graph runs the fit when its data or its definition have changed.
    bool ShowsResult() const { return Status() > TFitStatus::Function; }
    bool UseLeftMargin() const { return m_settings.UseLeftMargin; }
    bool UseRightMargin() const { return m_settings.UseRightMargin; }
    double LeftMargin() const { return m_settings.LeftMargin; }
    double RightMargin() const { return m_settings.RightMargin; }
    /// How many places of the curve are computed for drawing it.
    int NPoints() const { return m_settings.NPoints; }
    bool ShowCurve() const { return m_settings.ShowCurve; }
    TColor CurveColor() const { return m_settings.CurveColor; }
    int CurveStyle() const { return m_settings.CurveStyle; }
    int CurveWidth() const { return m_settings.CurveWidth; }
    /// The relative change of parameters and of the sum of squares at which a fit stops.
    double Tolerance() const { return m_settings.Tolerance; }
    int IterMax() const { return m_settings.IterMax; }
    TFitProcedure ProcType() const { return m_settings.ProcType; }
    /// How points count; off by default.
    const TFitWeighting& Weighting() const { return m_settings.Weighting; }
    bool UsesYErrors() const { return m_settings.Weighting.ByYErrors; }

    // Each does nothing for an equal value. Empty texts, and a Tolerance or IterMax that is not above 0, are
    // ignored.
    void SetXVarName(const std::string& value) {
        if (!value.empty() && Store(m_settings.XVarName, value)) Changed(true);
    }
    void SetExpression(const std::string& value) {
        if (!value.empty() && Store(m_settings.Expression, value)) Changed(true);
    }
    void SetTolerance(double value) {
        if (value > 0 && Store(m_settings.Tolerance, value)) Changed(true);
    }
    void SetIterMax(int value) {
        if (value > 0 && Store(m_settings.IterMax, value)) Changed(true);
    }
    void SetProcType(TFitProcedure value) {
        if (Store(m_settings.ProcType, value)) Changed(true);
    }
    void SetWeighting(const TFitWeighting& value) {
        if (Store(m_settings.Weighting, value)) Changed(true);
    }
    void SetUseLeftMargin(bool value) {
        if (Store(m_settings.UseLeftMargin, value)) Changed(true);
    }
    void SetUseRightMargin(bool value) {
        if (Store(m_settings.UseRightMargin, value)) Changed(true);
    }
    /// A margin that is not in use is stored without a notification.
    void SetLeftMargin(double value) {
        if (Store(m_settings.LeftMargin, value) && m_settings.UseLeftMargin) Changed(true);
    }
    void SetRightMargin(double value) {
        if (Store(m_settings.RightMargin, value) && m_settings.UseRightMargin) Changed(true);
    }
    // These call OnChange and leave Modified as it is.
    void SetStatus(TFitStatus value) {
        if (Store(m_settings.Status, value)) NotifyDisplay();
    }
    void SetNPoints(int value) {
        if (Store(m_settings.NPoints, value)) NotifyDisplay();
    }
    void SetShowCurve(bool value) {
        if (Store(m_settings.ShowCurve, value)) NotifyDisplay();
    }
    void SetCurveColor(TColor value) {
        if (Store(m_settings.CurveColor, value)) NotifyDisplay();
    }
    void SetCurveStyle(int value) {
        if (Store(m_settings.CurveStyle, value)) NotifyDisplay();
    }
    void SetCurveWidth(int value) {
        if (Store(m_settings.CurveWidth, value)) NotifyDisplay();
    }

    // Parameters are numbered from 1; numbers outside are ignored or give null.
    int NParams() const { return static_cast<int>(m_parameters.size()); }
    TDBLParameter* Parameter(int number) const {
        const bool isThere = number >= 1 && number <= NParams();
        return isThere ? m_parameters[static_cast<std::size_t>(number - 1)].get() : nullptr;
    }
    XYGRAPH_EXPORT bool IsParameter(std::string_view name) const;
    /// Takes the parameter; one whose name is already defined (letter case ignored) is refused with a
    /// message.
    XYGRAPH_EXPORT void AddParameter(std::unique_ptr<TDBLParameter> parameter);
    XYGRAPH_EXPORT void DeleteParameter(int number);
    void ClearParameters();
    /// Copies the values by position when both have the same number of parameters.
    void CopyParameterValues(const TCurFit& other);

    // Templates are numbered from 1 in their order; numbers outside are ignored or give null.
    int NTemplates() const { return static_cast<int>(m_templates.size()); }
    TDBLFunction* Template(int number) const {
        return IsTemplate(number) ? m_templates[static_cast<std::size_t>(number - 1)].get() : nullptr;
    }
    /// The fit becomes stale; nothing is announced.
    XYGRAPH_EXPORT void AddTemplate(std::unique_ptr<TDBLFunction> function);
    XYGRAPH_EXPORT void DeleteTemplate(int number);
    XYGRAPH_EXPORT void TemplateToTop(int number);
    XYGRAPH_EXPORT void TemplateUp(int number);
    void TemplateDown(int number) {
        if (IsTemplate(number)) TemplateUp(number + 1);
    }
    /// As AddTemplate.
    void ClearTemplates();

    /// Gives every setting its default; parameters and templates stay.
    void ResetSettings();

    // The model.

    /// The formula with its templates put in, from the last to the first, letter case ignored; a template's
    /// text may use the names of those before it. Then tied parameters become their formulas. Line breaks and
    /// tabs become blanks. Throws EParserException "The equation is too long with its templates: …" beyond
    /// kMaxExpandedLength bytes, and for ties that go round in a circle or use what is no parameter.
    XYGRAPH_EXPORT std::string ExpandedExpression() const;
    /// Binds the variable and the parameters and compiles the formula, which Evaluate then runs; an empty
    /// formula compiles to nothing. Throws what AddExpression throws and leaves nothing compiled.
    XYGRAPH_EXPORT void Compile();
    /// The model at x; kNotANumber while nothing is compiled.
    XYGRAPH_EXPORT double EvaluateAt(double x);
    /// The names that the compiled formula or an earlier one uses without anybody having defined them.
    std::vector<std::string> GeneratedNames();
    /// Where the model reads x.
    double* XRef() { return &m_x; }

    /// The lines of the settings report, with the variables and the formula as compiled, when it can be.
    XYGRAPH_EXPORT std::vector<std::string> SettingsReport();

    /// Gives tied parameters the values of their formulas, silently; those whose formula has none stay.
    void RenewTies();

    // The records of a data set's and a function file's stream: three of a fixed order of items each, the
    // bounds, the weighting and the ties.
    void WriteDefinition(TxyWriter& writer) const;
    void ReadDefinition(TxyReader& reader);
    void WriteSettings(TxyWriter& writer) const;
    void ReadSettings(TxyReader& reader);
    void WriteTemplates(TxyWriter& writer) const;
    void ReadTemplates(TxyReader& reader);
    /// "NUMBER MIN MAX", a line for each bounded parameter; empty where there is none.
    std::string BoundsText() const;
    /// Lines that name no parameter or are no bounds are left out.
    void SetBoundsText(const std::string& text);

    std::string WeightingText() const { return TextOf(m_settings.Weighting); }
    void SetWeightingText(const std::string& text);
    /// "NUMBER FORMULA", a line for each tied parameter; empty where there is none.
    std::string TiesText() const;
    /// Lines that name no parameter are left out.
    void SetTiesText(const std::string& text);

    /// The whole function file: the three records and the end mark.
    void SaveToStream(TxyWriter& writer) const;
    /// Replaces parameters, templates and settings by what the stream holds up to its end mark; an error
    /// leaves all as it was. With `compile` the formula is compiled when it can be, and Modified stays as it
    /// is; without, it is cleared.
    void LoadFromStream(TxyReader& reader, bool compile);
    /// A function file, replaced whole. Throws as ReplaceFile does.
    XYGRAPH_EXPORT void SaveToFile(const std::string& name) const;
    /// Throws EFileError for a file that cannot be read, EStreamError "NAME is not a function file" for
    /// another kind of file and for one that breaks off; all is then as it was, what was compiled included.
    XYGRAPH_EXPORT void LoadFromFile(const std::string& name, bool compile);
    /// Takes over what the other's function file would hold, compiles it when it can be, and calls OnChange.
    /// A null does nothing.
    XYGRAPH_EXPORT void Assign(const TCurFit* other);

    static constexpr std::size_t kMaxExpandedLength = 1 << 16;

private:
    struct TSettings {
        std::string XVarName = "x";
        std::string Expression;
        TFitStatus Status = TFitStatus::None;
        bool UseLeftMargin = false;
        bool UseRightMargin = false;
        double LeftMargin = 0;
        double RightMargin = 0;
        int NPoints = 150;
        bool ShowCurve = true;
        TColor CurveColor = 255;
        int CurveStyle = 0;
        int CurveWidth = 1;
        double Tolerance = 3e-08;
        int IterMax = 200;
        TFitProcedure ProcType = TFitProcedure::Powell;
        TFitWeighting Weighting;
    };

    template <class TField, class TValue>
    bool Store(TField& field, const TValue& value) {
        if (field == value) return false;
        field = value;
        return true;
    }
    void NotifyDisplay() {
        ++m_revision;
        if (OnChange) OnChange(*this);
    }
    bool IsTemplate(int number) const { return number >= 1 && number <= NTemplates(); }

    void SetStale(bool stale) {
        m_stale = stale;
        m_held = false;
    }
    void TakeFound(const TCurFit& run);
    void MarkTemplatesChanged();
    void Forget();
    void TryCompile();

    double m_x = 0;
    TSettings m_settings;
    bool m_modified = false;
    bool m_stale = false;
    bool m_held = false;
    std::uint64_t m_revision = 0;
    std::shared_ptr<const TFitResult> m_result;
    std::string m_fitError;
    std::vector<std::unique_ptr<TDBLParameter>> m_parameters;
    std::vector<std::unique_ptr<TDBLFunction>> m_templates;
};

/// The function file's section: entries 39, 43, 45 and, where there are bounds, a weighting or ties, 71, 74
/// and 75.
std::span<const TSectionRow<TCurFit>> CurFitRows();

} // namespace lumoplot
