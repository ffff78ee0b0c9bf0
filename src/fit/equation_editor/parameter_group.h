// The controls that list and edit the parameters of a curve fit, in whatever form they lie: a table that is
// edited in place, and edits for the parameter that is selected in it.
#pragma once

#include "fit/equation_editor/fit_access.h"

#include <QObject>

class QAbstractButton;
class QCheckBox;
class QLineEdit;
class QTableView;

namespace lumoplot {

class TParameterModel;
class TValueEdit;

class TParameterGroup : public QObject {
    Q_OBJECT

public:
    /// Finds its controls in the form by their names. A form need not have those for the deviations.
    TParameterGroup(TFitAccess& access, QWidget& form, QObject* parent);

    /// Fills the table and the fields from the fit, selecting the parameter of that number (or the nearest).
    void Fill(int number = 1);
    /// Fills them anew and keeps the selection.
    void Refill() { Fill(SelectedNumber()); }
    /// The fit was edited: shows that in the table, and leaves the fields as they are typed.
    void ShowTable();
    /// The selected parameter, or null.
    TDBLParameter* Selected() const;
    /// Its number, or 0.
    int SelectedNumber() const;
    /// Adds a varied parameter for each of the names; the last one is selected.
    void AddVaried(const std::vector<std::string>& names);

private:
    void ConnectTable();
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
    TParameterModel* m_model;
    QTableView* m_table;
    QAbstractButton* m_new;
    QAbstractButton* m_delete;
    QLineEdit* m_name;
    TValueEdit* m_value;
    QLineEdit* m_units;
    QLineEdit* m_description;
    QCheckBox* m_vary;
    QCheckBox* m_inLegend;
    TValueEdit* m_startDeviation; ///< null where the form has none
    TValueEdit* m_finalDeviation;
};

} // namespace lumoplot
