// The Data Source page of an editor with one data set.
#pragma once

#include "common/places.h"
#include "common/values_of.h"
#include "data/series/ds_info.h"
#include "dialog/wizard_fixture.h"

#include <QLabel>
#include <QListWidget>
#include <QTableView>

namespace lumoplot {

class TDataSourcePageTest : public TWizardTest {
protected:
    static QString TextFile(const char* name) {
        return QString::fromStdString(SourceFile("tests/data_files/text/")) + QLatin1String(name);
    }
    void ShowPage() {
        Wizard.SetStartPage(TxyDataWizard::kDataSourcePage);
        Show({"Run"});
    }
    void ShowFile(const QString& file) {
        ShowPage();
        Attach(file);
    }
    /// Few rows, as the editor shows them while "Auto" is on.
    void ShowForTheEye(const QString& file) {
        Graph.SetEditorMode(true);
        ShowFile(file);
        Click("cb_AutoFrequency");
        Click("btnReload");
    }
    /// With Yes to the question whether the points that are there may go.
    void Attach(const QString& file) {
        Wizard.AttachSource(file.toStdString());
        ForgetQuestion();
    }
    void ChooseKind(TSourceKind kind) {
        Choose("cbx_SourceKind", static_cast<int>(kind));
        ForgetQuestion();
    }
    void ForgetQuestion() { std::erase(Sink.Texts, "Data from Current DataSet Will be lost, Continue?"); }
    void Press(Qt::Key key) {
        QTest::keyClick(QApplication::focusWidget(), key);
        QCoreApplication::processEvents();
    }
    TDSInfo& Source() { return Current().DataSourceInfo(); }
    std::vector<double> Ys() { return YsOf(Current()); }
    std::string Shown(const char* label) { return Find<QLabel>(label).text().toStdString(); }
    std::string PreviewCell(int row, int column) {
        return Find<QTableView>("t_Preview").model()->index(row, column).data().toString().toStdString();
    }
    std::vector<std::string> Messages() {
        std::vector<std::string> texts;
        auto& list = Find<QListWidget>("l_Messages");
        for (int i = 0; i < list.count() && list.isVisible(); ++i)
            texts.push_back(list.item(i)->text().toStdString());
        return texts;
    }
};

} // namespace lumoplot
