// Fits the equation of one data set to several: a table of the parameters against the data sets, which can
// become data sets themselves. It works on copies until what was found is kept.
#pragma once

#include "data/series/plotted_values.h"
#include "fit/many/fit_batch.h"
#include "graph/model/graph.h"

#include <QDialog>
#include <memory>
#include <vector>

namespace Ui {
class TFitAllWindow;
}

namespace lumoplot {

class TFitAllWindow : public QDialog {
    Q_OBJECT

public:
    /// What the user wants to become of the fits when the window is closed.
    enum class TWish { Nothing, KeepFits, MakeDataSets };

    /// The definition is that of `pattern`, a data set of the graph; both must outlive the window.
    TFitAllWindow(TxyGraph& graph, TSeries& pattern, QWidget* parent = nullptr);
    ~TFitAllWindow() override;

    TWish Wish() const { return m_wish; }
    /// Puts each fit that was possible into its data set.
    void KeepFits();
    /// Adds a data set for each varied parameter: its values and their errors by the number of the fit.
    void MakeDataSets();

private:
    /// A data set of the list, with what it is fitted to.
    struct TListedSet {
        TSeries* Series = nullptr;
        bool IsChecked = false;
        TPlottedValues Values = {};
        TBatchFit Found = {}; ///< its fit is null before it was run

        bool HasFit() const { return Found.Fit && Found.Error.empty(); }
    };

    void CheckAll(Qt::CheckState state);
    void Run();
    void TakeValues();
    void FitOneByOne(TProgress& progress, std::int64_t& done);
    void FitInCommon(const std::vector<std::string>& shared, const TFitRun& run);
    std::vector<std::string> SharedNames() const;
    void ShowResults();
    void ShowAgreements();
    std::vector<std::string> RowOf(const TListedSet& set) const;

    TxyGraph& m_graph;
    std::unique_ptr<Ui::TFitAllWindow> m_ui;
    TCurFit m_pattern;
    std::vector<TListedSet> m_sets;
    TWish m_wish = TWish::Nothing;
    bool m_areInCommon = false; ///< parameters of the last run
    QString m_agreeing;         ///< names of parameters that agree
};

} // namespace lumoplot
