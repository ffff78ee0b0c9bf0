#include "dialog/frame/undo_fixture.h"

#include "common/fit_parameters.h"

namespace lumoplot {

void DataWizardUndo::PrepareGraph() {
    TSeries& series = *Graph.FindSeries(1);
    for (int i = 3; i <= 40; ++i) series.AddPoint(i, 10 * i + i % 3);
    series.SetPointsShown(true);
    series.SetRegressionType(TRegressionType::Linear);
    TCurFit& fit = series.CurveFit();
    AddVaried(fit, {"a", "b"});
    fit.SetExpression("a*x+b");
    fit.SetNPoints(150);
    fit.SetStatus(TFitStatus::FinalResult);
    TGraphMark mark;
    mark.TypeOfMark = TMarkType::Line;
    mark.Y1 = 2;
    mark.X2 = 5;
    mark.Y2 = 3;
    Graph.SelectMark(Graph.AddMark(mark));
    Wizard.ShowSeries(2);
    Sink.Answer = true;
    Wizard.AttachSource(Write("enso.csv", "t,U,I\n1,2,3\n2,3,4\n2,4,4\n3,4,5\n").toStdString());
    Graph.FindSeries(2)->SetSeriesName("Run 2");
    Graph.FindSeries(2)->SetSeriesFlag(false);
    Graph.Appearance()->SetCurrSerIndex(1);
    Restart();
    Sink.Texts.clear();
}

void DataWizardUndo::EditCellAtRandom(TRandom& random) {
    ToPage(TxyDataWizard::kDataSourcePage);
    static constexpr const char* kTexts[] = {"1", "2.5", "-3e2", "4", "nan", "inf"}; // an X is finite
    const auto pick = [&random](int count) { return std::uniform_int_distribution(0, count - 1)(random); };
    const int rows = Find<QTableView>("grid").model()->rowCount() - 1;
    const int column = pick(2);
    if (rows > 0) TypeCell(pick(rows), column, kTexts[pick(column == 0 ? 4 : 6)]);
    ToPage(TxyDataWizard::kGeneralPage);
}

} // namespace lumoplot
