// What the buttons of the data-set list do.
#include "controls/file_filter.h"
#include "dialog/frame/data_wizard.h"
#include "dialogs/hand_edit.h"
#include "graph/file/graph_file.h"
#include "graph/model/series_palette.h"
#include "graph/plotted/series_text.h"
#include "support/message_sink.h"
#include "support/message_text.h"
#include "ui_data_wizard.h"

#include <QFileDialog>
#include <QFileInfo>

namespace lumoplot {
namespace {

/// Of columns of numbers; other files hold the whole data set.
bool IsNameOfText(const QString& file) {
    static const QStringList kSuffixes = {QStringLiteral("dat"), QStringLiteral("csv"),
                                          QStringLiteral("txt")};
    return kSuffixes.contains(QFileInfo(file).suffix(), Qt::CaseInsensitive);
}

} // namespace

void TxyDataWizard::NewSeries() {
    CommitManualData();
    m_session->Change("add data set", [this] {
        const int number = m_workGraph->AddSeries();
        TSeries& series = *m_workGraph->FindSeries(number);
        series.SetSeriesName("DataSet " + std::to_string(number));
        TakeNextStyle(series);
        FillList(number);
    });
}

void TxyDataWizard::DeleteSeries() {
    const int item = m_ui->cbx_DataSets->currentIndex();
    if (item < 0) return ShowMessage("There is no DataSet selected", TMessageKind::Error);
    const std::string name = m_ui->cbx_DataSets->currentText().toStdString();
    if (!AskYesNo("Delete DataSet  \"" + name + "\"  permanently?")) return;
    m_session->Change("delete data set " + name, [&] {
        m_workGraph->DeleteSeries(NumberOfItem(item));
        if (m_previewMode) m_workGraph->RequestRepaint(true);
        FillList(m_workGraph->Appearance()->CurrSerIndex());
    });
}

void TxyDataWizard::ImportSeries() {
    CommitManualData();
    const QString filter = ToolkitFilter(QStringLiteral("DataSet Files (*.lds)|*.lds; *.LDS"));
    const QString file =
        QFileDialog::getOpenFileName(this, QStringLiteral("Load DataSet from File"), {}, filter);
    if (file.isEmpty()) return;
    m_session->Change("load " + QFileInfo(file).fileName().toStdString(), [&] {
        const int number = m_workGraph->AddSeries();
        LoadSeriesFromFile(*m_workGraph->FindSeries(number), file.toStdString());
        FillList(number);
    });
}

QString TxyDataWizard::AskExportFile(const TSeries& series) {
    QString proposed = QString::fromStdString(series.SeriesName()).trimmed();
    for (const QChar c : QStringLiteral(R"(/\*:?"<>|)"))
        proposed.replace(c, u'_'); // what Windows takes in no name
    QFileDialog dialog(this, QStringLiteral("Save DataSet to File"));
    dialog.setAcceptMode(QFileDialog::AcceptSave);
    dialog.setOption(QFileDialog::DontConfirmOverwrite); // asked by Export itself
    dialog.setNameFilter(ToolkitFilter(
        QStringLiteral("LumoPlot DataSet (*.lds)|*.lds;*.LDS|ASCII Data File (*.dat)|*.dat;*.DAT")));
    dialog.setDefaultSuffix(QStringLiteral("lds"));
    connect(&dialog, &QFileDialog::filterSelected, &dialog, [&dialog](const QString& filter) {
        dialog.setDefaultSuffix(filter.contains(QStringLiteral(".dat")) ? QStringLiteral("dat")
                                                                        : QStringLiteral("lds"));
    });
    dialog.selectFile(proposed);
    return dialog.exec() == QDialog::Accepted ? dialog.selectedFiles().value(0) : QString();
}

void TxyDataWizard::ExportSeries() {
    if (!m_currSeries) return;
    const QString file = AskExportFile(*m_currSeries);
    if (file.isEmpty()) return;
    CommitManualData();
    if (QFileInfo::exists(file) &&
        !AskYesNo("File \"" + file.toStdString() + "\" exists. Overwrite?", TMessageKind::Warning))
        return;
    if (!ReadEveryRowOfCurrent()) return;
    if (!IsNameOfText(file)) return SaveSeriesToFile(*m_currSeries, file.toStdString());
    const std::string lost = SaveSeriesAsText(*m_currSeries, file.toStdString());
    if (!lost.empty())
        ShowMessage("\"" + ShownLine(m_currSeries->SeriesName(), 60) + "\": " + lost, TMessageKind::Warning);
}

/// What leaves the program comes from every row of the source. False when the user cancelled the reading.
bool TxyDataWizard::ReadEveryRowOfCurrent() {
    bool isWhole = true;
    m_session->FollowUp([&] { isWhole = ReadEveryRow(*m_currSeries, this); });
    RefillPages();
    return isWhole;
}

void TxyDataWizard::DuplicateSeries() {
    if (!m_currSeries) return;
    CommitManualData();
    const TSeries& original = *m_currSeries;
    m_session->Change("duplicate " + original.SeriesName(), [&] {
        const int number = m_workGraph->AddSeries();
        TSeries& copy = *m_workGraph->FindSeries(number);
        copy.CopyFrom(original);
        TakeNextStyle(copy);
        copy.SetSeriesName(original.SeriesName() + " DPL " + std::to_string(number));
        m_workGraph->PrepareForDrawing();
        FillList(number);
    });
}

void TxyDataWizard::MoveToFirst() {
    if (!m_currSeries || m_currSeries->SeriesIndex() == 1) return;
    CommitManualData();
    m_session->Change("move " + m_currSeries->SeriesName() + " to the front", [this] {
        m_workGraph->MoveSeriesToFirst(m_currSeries->SeriesIndex());
        FillList(1);
    });
}

void TxyDataWizard::SortSeries() {
    if (!m_currSeries) return;
    CommitManualData();
    m_session->Change("sort data sets", [this] {
        m_workGraph->SortSeriesByName();
        FillList(1);
    });
}

void TxyDataWizard::ReverseSeries() {
    if (!m_currSeries) return;
    CommitManualData();
    m_session->Change("reverse data sets", [this] {
        m_workGraph->ReverseSeries();
        FillList(1);
    });
}

} // namespace lumoplot
