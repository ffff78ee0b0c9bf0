// The controls for the settings of a fitting run, in whatever form they lie.
#pragma once

#include "controls/widgets_export.h"
#include "fit/equation_editor/fit_access.h"

#include <QObject>

class QComboBox;
class QLineEdit;

namespace lumoplot {

class TValueEdit;

/// The controls of a form, which owns them.
struct TFitSettingsControls {
    TValueEdit* NPoints;
    TValueEdit* Tolerance;
    QComboBox* Status;
    QLineEdit* LeftMargin;
    QLineEdit* RightMargin;
    TValueEdit* IterMax;
    QComboBox* Procedure;
};

/// Margins are taken when their edit is left, and are then in use; "None" takes one out of use.
class TFitSettingsGroup : public QObject {
    Q_OBJECT

public:
    XYWIDGETS_EXPORT TFitSettingsGroup(TFitAccess& access, const TFitSettingsControls& controls,
                                       QObject* parent);

    XYWIDGETS_EXPORT void Fill();
    /// Takes the margins that are still being typed.
    XYWIDGETS_EXPORT void TakeMargins();

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
    void TakeMargin(const TMargin& margin);
    void ShowNothing();
    static void ShowMargin(const TCurFit& fit, const TMargin& margin);

    TFitAccess& m_access;
    TFitSettingsControls m_controls;
    TMargin m_left;
    TMargin m_right;
};

} // namespace lumoplot
