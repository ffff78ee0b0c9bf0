// The controls that list and edit the templates of a curve fit: texts that an equation may use for longer
// ones.
#pragma once

#include "fit/equation_editor/fit_access.h"

#include <QObject>

class QAbstractButton;
class QLineEdit;
class QListWidget;

namespace lumoplot {

class TFormulaEdit;

class TTemplateGroup : public QObject {
    Q_OBJECT

public:
    /// Finds its controls in the form by their names.
    TTemplateGroup(TFitAccess& access, QWidget& form, QObject* parent);

    /// Fills the list and the fields from the fit, selecting the template of that number (or the nearest).
    void Fill(int number = 1);
    /// Fills them anew and keeps the selection.
    void Refill() { Fill(SelectedNumber()); }

private:
    void ConnectList();
    void ConnectFields();
    TDBLFunction* Selected() const;
    int SelectedNumber() const;
    void Add();
    void Rename(const QString& text);
    void ShowFields();

    /// Runs an action on the fit with the selected number, then selects the template at the number it
    /// returns.
    template <class TAction>
    void Rearrange(const char* what, TAction&& action);
    template <class TAction>
    void EditSelected(const char* what, TAction&& action);

    TFitAccess& m_access;
    QListWidget* m_list;
    QAbstractButton* m_new;
    QAbstractButton* m_delete;
    QAbstractButton* m_first;
    QAbstractButton* m_up;
    QAbstractButton* m_down;
    QLineEdit* m_name;
    QLineEdit* m_description;
    TFormulaEdit* m_text;
};

} // namespace lumoplot
