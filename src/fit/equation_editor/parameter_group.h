// The controls that list and edit the parameters of a curve fit, in whatever form they lie.
#pragma once

#include "controls/widgets_export.h"
#include "fit/equation_editor/fit_access.h"

#include <QObject>

class QAbstractButton;
class QCheckBox;
class QLineEdit;
class QListWidget;

namespace lumoplot {

class TValueEdit;

/// The controls of a form, which owns them. A form need not have those for the deviations.
struct TParameterControls {
    QListWidget* List;
    QAbstractButton* New;
    QAbstractButton* Delete;
    QLineEdit* Name;
    TValueEdit* Value;
    QLineEdit* Units;
    QLineEdit* Description;
    QCheckBox* Vary;
    QCheckBox* ShowInLegend;
    TValueEdit* StartDeviation = nullptr;
    TValueEdit* FinalDeviation = nullptr;
};

class TParameterGroup : public QObject {
    Q_OBJECT

public:
    XYWIDGETS_EXPORT TParameterGroup(TFitAccess& access, const TParameterControls& controls, QObject* parent);

    /// Fills the list and the fields from the fit, selecting the parameter of that number (or the nearest).
    XYWIDGETS_EXPORT void Fill(int number = 1);
    /// Fills them anew and keeps the selection.
    void Refill() { Fill(SelectedNumber()); }
    /// The selected parameter, or null.
    TDBLParameter* Selected() const;
    /// Its number, or 0.
    XYWIDGETS_EXPORT int SelectedNumber() const;
    /// Adds a varied parameter for each of the names; the last one is selected.
    void AddVaried(const std::vector<std::string>& names);

private:
    void ConnectList();
    void ConnectTexts();
    void ConnectValues();
    void ConnectFlags();
    void AddNumbered();
    /// Adds a parameter of that name with value 1.2 and the description "Parameter NAME", and selects it.
    void Add(TCurFit& fit, const std::string& name, bool vary);
    void DeleteSelected();
    void Rename(const QString& text);
    void ShowFields();
    void EnableFields(bool enable);

    template <class TAction>
    void EditSelected(const char* what, TAction&& action);

    TFitAccess& m_access;
    TParameterControls m_controls;
};

} // namespace lumoplot
