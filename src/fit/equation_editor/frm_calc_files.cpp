// Function files in the equation editor.
#include "fit/equation_editor/frm_calc.h"

#include "controls/file_filter.h"
#include "controls/texts.h"
#include "fit/equation_editor/fit_settings_group.h"
#include "fit/equation_editor/function_files.h"
#include "ui_frm_calc.h"

#include <QFileDialog>
#include <QFileInfo>

namespace lumoplot {

void TfrmCalc::PrepareFolder() {
    m_folder = FunctionFolder();
    OfferReadyFunctions(m_folder);
}

void TfrmCalc::ShowFileName(const QString& name) {
    m_fileName = name;
    m_ui->lblFileName->setText(QFileInfo(name).fileName());
    m_ui->lblFileName->setToolTip(name);
}

void TfrmCalc::SaveAs() {
    m_settings->TakeMargins();
    QFileDialog dialog(this, TTexts::tr("Save Current Expression"), m_folder);
    dialog.setAcceptMode(QFileDialog::AcceptSave);
    dialog.setOption(QFileDialog::DontConfirmOverwrite); // asked below, for the name with its extension
    dialog.setNameFilter(ToolkitFilter(TTexts::tr("LumoPlot Function File  (*.lfn)|*.lfn;*.LFN")));
    dialog.setDefaultSuffix(QStringLiteral("lfn"));
    dialog.selectFile(m_fileName);
    if (dialog.exec() != QDialog::Accepted) return;
    const QString name = WithFunctionExtension(dialog.selectedFiles().value(0));
    const std::string question = "File " + name.toStdString() + " exists. Overwrite?";
    if (QFileInfo::exists(name) && !AskYesNo(question, TMessageKind::Warning)) return;
    m_fit.SaveToFile(name.toStdString());
    ShowFileName(name);
}

void TfrmCalc::Open() {
    QFileDialog dialog(this, TTexts::tr("Load Expression"), m_folder);
    dialog.setFileMode(QFileDialog::AnyFile); // the name found may be the typed one in lower case
    dialog.setNameFilter(ToolkitFilter(TTexts::tr("LumoPlot Function Files  (*.lfn)|*.lfn;*.LFN")));
    dialog.setDefaultSuffix(QStringLiteral("lfn"));
    if (dialog.exec() != QDialog::Accepted) return;
    const QString name = FunctionFileToOpen(dialog.selectedFiles().value(0));
    LoadFunction(m_fit, name);
    ShowFileName(name);
    Fill();
}

} // namespace lumoplot
