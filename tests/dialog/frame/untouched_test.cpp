// Who opens a graph in the editor, looks at everything and closes it by OK has changed nothing.
#include "common/graph_state.h"
#include "common/seeds.h"
#include "common/special_values.h"
#include "dialog/wizard_fixture.h"
#include "graph/loading/source_loading.h"

#include <QTabWidget>

namespace lumoplot {
namespace {

/// Regressions that only wait to be worked out are worked out, and rows that were left out for the eye are
/// read, as the page of the filter does.
std::string Difference(TxyGraph& a, TxyGraph& b) {
    TSilentProgress progress;
    for (TxyGraph* graph : {&a, &b}) {
        for (TSeries* series : graph->Series()) LoadEveryRow(*series, progress);
        for (TSeries* series : graph->Series()) series->UpdateRegression(); // X may be another's
    }
    return TGraphState::Difference(TGraphState(a), TGraphState(b));
}

class Untouched : public TWizardTest {
protected:
    static constexpr int kBudget = 100;

    /// Rows that repeat an X, some with an error of Y or without a finite Y.
    void LoadFile(TSeries& series, int count) {
        QByteArray rows = "t,U,s\n1,2,0.5\n2,3,\n2,4,0.25\n3,inf,1\n";
        for (int i = 4; i < count; ++i)
            rows += QByteArray::number(i) + "," + QByteArray::number(i * i % 7) + ",1\n";
        const QString file = Write(count > kBudget ? "many.csv" : "rows.csv", rows);
        series.DataSourceInfo() = TDSInfo();
        series.SetTextWishes({});
        series.SetXColExpr("");
        series.SetYColExpr("");
        series.DataSourceInfo().SetKind(TSourceKind::TextFile);
        series.DataSourceInfo().SetSourceName(file.toStdString());
        series.DataSourceInfo().SetYErrorRule({TYErrorKind::Column, 0, "s"});
        series.DataSourceInfo().SetAutoRowHitFreq(count > kBudget);
        TSilentProgress progress;
        ASSERT_TRUE(LoadFromSource(series, progress));
    }
    /// As the editor's caller does; `edit` on the first page when all has been looked at.
    void EditCopyOf(TxyGraph& host, const std::function<void()>& edit) {
        Graph.CopyFrom(host);
        Graph.SetEditorMode(true);
        Wizard.show();
        auto& tabs = Find<QTabWidget>("tabs");
        for (int number = 1; number <= Graph.SeriesCount(); ++number) {
            Wizard.FillList(number);
            for (int page = tabs.count() - 1; page >= 0; --page) {
                tabs.setCurrentIndex(page);
                QCoreApplication::processEvents();
            }
        }
        Wizard.FillList(host.Appearance()->CurrSerIndex());
        edit();
        Click("btnOk");
        ASSERT_FALSE(Wizard.isVisible()) << Sink.Only();
        host.CopyFrom(Graph);
    }
};

TEST_F(Untouched, StaysAsItIs) {
    for (unsigned seed = 0; seed < Seeds(60) && !HasFailure(); ++seed) {
        SCOPED_TRACE(seed);
        TRandom random(seed);
        TxyGraph host, before;
        host.SetPointBudget(kBudget);
        before.SetPointBudget(kBudget);
        Graph.SetPointBudget(kBudget);
        FillRandomly(host, random);
        for (const auto& series : host.Series()) {
            if (random() % 2 == 0) series->SetDuplicatesAllowed(true);
            if (random() % 2 == 0) {
                LoadFile(*series, random() % 2 == 0 ? 4 : 3 * kBudget);
                continue;
            }
            series->DataSourceInfo().SetKind(TSourceKind::Manual);
            for (const double y : {kNaN, kInfinity, 1.5, -kInfinity})
                series->AddPoint(random() % 9, y, random() % 3);
        }
        if (host.Series().empty()) continue;
        host.PrepareForDrawing();
        before.CopyFrom(host);
        EditCopyOf(host, [] {});
        EXPECT_EQ(Difference(host, before), "");
        TSeries* current = before.FindSeries(std::max(1, before.Appearance()->CurrSerIndex()));
        EditCopyOf(host, [&] {
            Type("e_SeriesName", QStringLiteral("another"));
            current->SetSeriesName("another");
            current->SetSeriesFlag(Graph.FindSeries(current->SeriesIndex())->SeriesFlag());
        });
        EXPECT_EQ(Difference(host, before), "");
    }
}

} // namespace
} // namespace lumoplot
