// Fits the equation of one data set to several: a table of the parameters against the data sets, which can
// become data sets themselves. It works on copies until what was found is kept.
#pragma once

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
    /// Adds a data set for each varied parameter: its values by the number of the data set.
    void MakeDataSets();

private:
    struct TFitOfSet {
        TSeries* Series = nullptr;
        std::unique_ptr<TCurFit> Fit; ///< null before it was run
        std::string Trouble;

        bool IsPossible() const { return Fit && Trouble.empty(); }
    };

    void CheckAll(Qt::CheckState state);
    void Run();
    void RunOne(TFitOfSet& one, class TProgress& progress);
    void ShowResults();
    std::vector<std::string> RowOf(const TFitOfSet& one) const;
    bool IsChecked(std::size_t row) const;

    TxyGraph& m_graph;
    std::unique_ptr<Ui::TFitAllWindow> m_ui;
    TCurFit m_pattern;
    std::vector<TFitOfSet> m_sets;
    std::vector<Qt::CheckState> m_checks;
    TWish m_wish = TWish::Nothing;
};

} // namespace lumoplot
