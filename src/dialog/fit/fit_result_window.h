// All that is known of a fit that has run: its figures, how uncertain its parameters are in three ways, and
// the report to save or print. It works on a copy of the fit.
#pragma once

#include "dialog/fit/fitted_series.h"
#include "fit/many/fit_report.h"

#include <QDialog>
#include <QImage>
#include <memory>

namespace Ui {
class TFitResultWindow;
}

namespace lumoplot {

class TFitResultWindow : public QDialog {
    Q_OBJECT

public:
    enum class TPage { Figures, Uncertainty, Report };

    /// The fit of the data set has run and was possible.
    explicit TFitResultWindow(const TSeries& series, QWidget* parent = nullptr);
    ~TFitResultWindow() override;

    void ShowPage(TPage page);

private:
    void ShowFigures();
    void ShowReport();
    void ShowIntervals();
    void ShowPlot();
    void RunProfiles();
    void RunBootstrap();
    void CopyTables();
    void SaveReport();
    void PrintReport();
    const TFitReportSection* Section(const char* heading) const;
    std::vector<TFitReportSection> ReportSections() const;
    std::size_t ChosenParameter() const;

    std::unique_ptr<Ui::TFitResultWindow> m_ui;
    TFittedSeries m_fitted;
    QString m_dataName;
    QImage m_picture;
    std::vector<TFitReportSection> m_sections;
    TKnownUncertainty m_known;
};

} // namespace lumoplot
