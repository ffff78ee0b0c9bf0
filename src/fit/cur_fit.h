// The curve fit of a data set: the model formula in one variable, its named parameters, the text templates
// that expand inside it, and the settings of the fitting run. This is the definition and its record in the
// stream; it knows neither the data nor a window. Owned by its data series.
#pragma once

#include "data/stream/reader.h"
#include "data/stream/section.h"
#include "data/stream/writer.h"
#include "support/color.h"

#include <functional>
#include <memory>
#include <string>
#include <string_view>
#include <vector>

namespace lumoplot {

class TCurFit;

/// One parameter of the model.
class XYGRAPH_EXPORT TDBLParameter {
public:
    double StartDeviation = 0.01;
    double FinalDeviation = 1e-05;
    bool ShowInLegend = false;
    std::string Description = "Parameter P";
    std::string Units;

    const std::string& Name() const { return m_name; }
    double Value() const { return m_value; }
    bool Vary() const { return m_vary; }
    /// Ignores an empty text. A name that the owner already has is refused with a message.
    void SetName(const std::string& name);
    void SetValue(double value);
    void SetVary(bool vary);

private:
    friend class TCurFit;

    TCurFit* m_owner = nullptr;
    std::string m_name = "P";
    double m_value = 0;
    bool m_vary = false;
};

/// One template: wherever `Name` occurs in the model it is replaced by `Text`.
struct TDBLFunction {
    std::string Name;
    std::string Text;
    std::string Description;
};

class XYGRAPH_EXPORT TCurFit {
public:
    enum : int { kPowell = 0, kSimplex = 1, kConjugateGradient = 2, kNewton = 3 };
    enum : int { kNone = 0, kFunction = 1, kFinalResult = 2, kEveryStep = 3 };

    TCurFit() = default;
    TCurFit(const TCurFit&) = delete;
    TCurFit& operator=(const TCurFit&) = delete;

    /// Called after every change that `Changed(true)` or a display setter announces.
    std::function<void(TCurFit&)> OnChange;

    /// Stores `modified` and, when it is true, calls OnChange.
    void Changed(bool modified);
    bool Modified() const { return m_modified; }
    /// The data or the definition has changed since the last fit.
    bool IsStale() const { return m_stale; }
    void MarkStale() { m_stale = true; }

    const std::string& XVarName() const { return m_xVarName; }
    const std::string& Expression() const { return m_expression; }
    int Status() const { return m_status; }
    bool UseLeftMargin() const { return m_useLeftMargin; }
    bool UseRightMargin() const { return m_useRightMargin; }
    double LeftMargin() const { return m_leftMargin; }
    double RightMargin() const { return m_rightMargin; }
    int NPoints() const { return m_nPoints; }
    bool ShowCurve() const { return m_showCurve; }
    TColor CurveColor() const { return m_curveColor; }
    int CurveStyle() const { return m_curveStyle; }
    int CurveWidth() const { return m_curveWidth; }
    double Tolerance() const { return m_tolerance; }
    int IterMax() const { return m_iterMax; }
    int ProcType() const { return m_procType; }

    // Each does nothing for an equal value. Empty texts, and a Tolerance or IterMax that is not above 0, are
    // ignored.
    void SetXVarName(const std::string& value);
    void SetExpression(const std::string& value);
    void SetTolerance(double value);
    void SetIterMax(int value);
    void SetProcType(int value);
    void SetUseLeftMargin(bool value);
    void SetUseRightMargin(bool value);
    /// A margin that is not in use is stored without a notification.
    void SetLeftMargin(double value);
    void SetRightMargin(double value);
    // These call OnChange and leave Modified as it is.
    void SetStatus(int value);
    void SetNPoints(int value);
    void SetShowCurve(bool value);
    void SetCurveColor(TColor value);
    void SetCurveStyle(int value);
    void SetCurveWidth(int value);

    // Parameters are numbered from 1; numbers outside are ignored or give null.
    int NParams() const { return static_cast<int>(m_parameters.size()); }
    TDBLParameter* Parameter(int number) const;
    bool IsParameter(std::string_view name) const;
    /// Takes the parameter; one whose name is already defined (letter case ignored) is refused with a
    /// message.
    void AddParameter(std::unique_ptr<TDBLParameter> parameter);
    void DeleteParameter(int number);
    void ClearParameters();
    /// Copies the values by position when both have the same number of parameters.
    void CopyParameterValues(const TCurFit& other);

    // Templates are numbered from 1 in their order; numbers outside are ignored or give null.
    int NTemplates() const { return static_cast<int>(m_templates.size()); }
    TDBLFunction* Template(int number) const;
    void AddTemplate(std::unique_ptr<TDBLFunction> function);
    void DeleteTemplate(int number);
    void TemplateToTop(int number);
    void TemplateUp(int number);
    void TemplateDown(int number);
    void ClearTemplates();

    /// Gives every setting its default; parameters and templates stay.
    void ResetSettings();

    // The three composite records of a data set's and a function file's stream, each a fixed order of items.
    void WriteDefinition(TxyWriter& writer) const;
    void ReadDefinition(TxyReader& reader);
    void WriteSettings(TxyWriter& writer) const;
    void ReadSettings(TxyReader& reader);
    void WriteTemplates(TxyWriter& writer) const;
    void ReadTemplates(TxyReader& reader);

    /// The whole function file: the three records and the end mark.
    void SaveToStream(TxyWriter& writer) const;
    /// Replaces parameters, templates and settings by what the stream holds up to its end mark.
    void LoadFromStream(TxyReader& reader);
    void Assign(const TCurFit* other);

private:
    template <class TField, class TValue>
    bool Store(TField& field, const TValue& value);
    void NotifyDisplay();
    bool IsTemplate(int number) const { return number >= 1 && number <= NTemplates(); }

    std::string m_xVarName = "x";
    std::string m_expression;
    int m_status = kNone;
    bool m_useLeftMargin = false;
    bool m_useRightMargin = false;
    double m_leftMargin = 0;
    double m_rightMargin = 0;
    int m_nPoints = 150;
    bool m_showCurve = true;
    TColor m_curveColor = 255;
    int m_curveStyle = 0;
    int m_curveWidth = 1;
    double m_tolerance = 3e-08;
    int m_iterMax = 200;
    int m_procType = kPowell;
    bool m_modified = false;
    bool m_stale = false;
    std::vector<std::unique_ptr<TDBLParameter>> m_parameters;
    std::vector<std::unique_ptr<TDBLFunction>> m_templates;
};

/// The function file's section: entries 39, 43 and 45.
XYGRAPH_EXPORT std::span<const TSectionRow<TCurFit>> CurFitRows();

} // namespace lumoplot
