// Compares the procedures from many starts: which of them end where, how often, and how fast; a minimum can
// be taken.
#pragma once

#include "dialog/fit/fitted_series.h"
#include "fit/many/compare_procedures.h"

#include <QDialog>
#include <memory>

namespace Ui {
class TCompareWindow;
}

namespace lumoplot {

class TCompareWindow : public QDialog {
    Q_OBJECT

public:
    explicit TCompareWindow(const TSeries& series, QWidget* parent = nullptr);
    ~TCompareWindow() override;

    /// The run whose values the user has taken, or null.
    const TComparedRun* Taken() const { return m_taken ? &*m_taken : nullptr; }

private:
    void Run();
    void ShowRuns();
    void ShowProcedures();
    void ShowMinima();
    void Take();
    void CopyTables();

    std::unique_ptr<Ui::TCompareWindow> m_ui;
    TFittedSeries m_fitted;
    std::vector<TComparedRun> m_runs;
    std::vector<TComparedRun> m_minima; ///< the best run of each
    std::optional<TComparedRun> m_taken;
};

} // namespace lumoplot
