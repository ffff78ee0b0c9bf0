// A data editor whose steps are undone and redone by keys, and all that a step may change.
#pragma once

#include "common/random_graph.h"
#include "data/series/ds_info.h"
#include "dialog/wizard_fixture.h"
#include "fit/definition/cur_fit.h"

#include <QTabWidget>
#include <QTableView>
#include <QToolButton>
#include <algorithm>

namespace lumoplot {

inline constexpr int kFilteringPage = 4;

/// What a step may change, filed or not.
struct TWholeState {
    TBytes File; ///< in which no fit is pending
    int CurrentMark = 0;
    std::vector<TFitRunState> Fits;
    std::vector<TSourceRows> Rows;
    std::vector<TTextWishes> Wishes;
    std::vector<bool> Flags;
    QStringList Cells; ///< of the manual grid

    bool operator==(const TWholeState&) const = default;
    auto PendingFits() const {
        return std::ranges::count_if(Fits, [](const TFitRunState& run) { return run.Stale && !run.Held; });
    }
    /// The same, though a fit that was pending may have been taken back and be held.
    TWholeState WithoutPendingFits() const {
        TWholeState state = *this;
        for (TFitRunState& run : state.Fits) run.Stale = run.Held = false;
        return state;
    }
};

class DataWizardUndo : public TWizardTest {
protected:
    void ShowRuns(int page = TxyDataWizard::kGeneralPage) {
        Wizard.SetStartPage(page);
        Show({"Run 1", "Run 2"});
        Restart();
    }
    /// What was set up so far is where the steps begin.
    void Restart() {
        Wizard.FillList(Graph.Appearance()->CurrSerIndex());
        QCoreApplication::processEvents();
        Wizard.Session().Start();
    }
    /// A window in front of it has had the focus.
    void Activate() {
        Wizard.activateWindow();
        ASSERT_TRUE(QTest::qWaitForWindowActive(&Wizard));
    }
    void ToPage(int page) {
        Find<QTabWidget>("tabs").setCurrentIndex(page);
        QCoreApplication::processEvents();
    }
    /// Ctrl+Z as the window system would send it.
    void Undo() { PressOnFocus(Qt::Key_Z, Qt::ControlModifier); }
    void Redo() { PressOnFocus(Qt::Key_Z, Qt::ControlModifier | Qt::ShiftModifier); }
    void PressOnFocus(Qt::Key key, Qt::KeyboardModifiers modifiers = {}) {
        QWidget* focus = QApplication::focusWidget();
        QTest::keyClick(focus ? focus : &Wizard, key, modifiers);
        QCoreApplication::processEvents();
    }
    void Leave() { Find<QWidget>("cbx_DataSets").setFocus(); }
    std::string Tip(const char* button) {
        QCoreApplication::processEvents();
        return Find<QToolButton>(button).toolTip().toStdString();
    }
    bool CanUndo() { return Wizard.Session().CanUndo(); }
    bool CanRedo() { return Wizard.Session().CanRedo(); }

    void TypeCell(int row, int column, const char* text, Qt::Key end = Qt::Key_Return) {
        auto& grid = Find<QTableView>("grid");
        grid.setFocus();
        grid.setCurrentIndex(grid.model()->index(row, column));
        for (const char* key = text; *key; ++key) QTest::keyClick(QApplication::focusWidget(), *key);
        PressOnFocus(end);
    }
    std::string Cell(int row, int column) {
        return Find<QTableView>("grid").model()->index(row, column).data().toString().toStdString();
    }

    TWholeState State() {
        QCoreApplication::processEvents();
        TWholeState state{{}, Graph.Marks().CurrentID(), {}, {}, {}, {}, {}};
        for (const auto& series : Graph.Series()) {
            state.Fits.push_back(series->CurveFit().RunState());
            series->CurveFit().RestoreRunState(state.WithoutPendingFits().Fits.back());
            state.Rows.push_back(series->SourceRows());
            state.Wishes.push_back(series->TextWishes());
            state.Flags.push_back(series->IsThinned());
            state.Flags.push_back(series->DataSourceInfo().NeedsReload());
        }
        state.File = FileOf(Graph);
        for (std::size_t i = 0; i < state.Fits.size(); ++i)
            Graph.Series()[i]->CurveFit().RestoreRunState(state.Fits[i]);
        const QAbstractItemModel& grid = *Find<QTableView>("grid").model();
        for (int i = 0; i < 2 * grid.rowCount(); ++i)
            state.Cells.append(grid.index(i / 2, i % 2).data().toString());
        return state;
    }
    /// Types a value into a cell of the grid, and shows the first page.
    void EditCellAtRandom(TRandom& random);
    /// Something for each kind of step to work on: a fit, a mark, and in the second data set a text file.
    void PrepareGraph();
};

} // namespace lumoplot
