// The controls for the settings of a fitting run, in whatever form they lie.
#pragma once

#include "fit/equation_editor/fit_access.h"

#include <QObject>

class QCheckBox;
class QComboBox;
class QLineEdit;

namespace lumoplot {

class TValueEdit;

/// Margins are taken when their edit is left, and are then in use; "None" takes one out of use.
class TFitSettingsGroup : public QObject {
    Q_OBJECT

public:
    /// Finds its controls in the form by their names. A form need not have those for weights.
    TFitSettingsGroup(TFitAccess& access, QWidget& form, QObject* parent);

    void Fill();
    /// Takes the margins that are still being typed.
    void TakeMargins();

private:
    struct TMargin {
        QLineEdit* Edit;
        double (TCurFit::*Value)() const;
        bool (TCurFit::*IsUsed)() const;
        void (TCurFit::*SetValue)(double);
        void (TCurFit::*SetUsed)(bool);
    };

    void ConnectNumbers();
    void ConnectLists();
    void ConnectWeights();
    void ShowWeights(const TCurFit& fit);
    void TakeMargin(const TMargin& margin);
    void ShowNothing();
    static void ShowMargin(const TCurFit& fit, const TMargin& margin);

    TFitAccess& m_access;
    TValueEdit* m_nPoints;
    TValueEdit* m_tolerance;
    QComboBox* m_status;
    TValueEdit* m_iterMax;
    QComboBox* m_procedure;
    QCheckBox* m_byYErrors; ///< null where the form has none
    QComboBox* m_errorSource;
    QComboBox* m_robust;
    TMargin m_left;
    TMargin m_right;
};

} // namespace lumoplot
