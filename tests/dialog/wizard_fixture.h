// A data editor on a working graph, shown and driven by input events.
#pragma once

#include "common/recording_sink.h"
#include "common/window_driver.h"
#include "dialog/frame/data_wizard.h"

#include <QTemporaryDir>

namespace lumoplot {

class TWizardTest : public testing::Test {
protected:
    /// Shows the dialog on data sets of these names with two points each.
    void Show(std::initializer_list<const char*> names) {
        for (const char* name : names) {
            TSeries& series = *Graph.FindSeries(Graph.AddSeries());
            series.SetSeriesName(name);
            series.AddPoint(1, 10);
            series.AddPoint(2, 20);
        }
        Graph.Appearance()->SetCurrSerIndex(1);
        Wizard.show();
        Wizard.activateWindow();
        ASSERT_TRUE(QTest::qWaitForWindowActive(&Wizard));
    }
    void Click(const char* name) { lumoplot::Click(Wizard, name); }
    void Type(const char* name, const QString& text) { lumoplot::Type(Wizard, name, text); }
    void Choose(const char* name, int item) { lumoplot::Choose(Wizard, name, item); }
    template <class TControl>
    TControl& Find(const char* name) {
        return Control<TControl>(Wizard, name);
    }
    std::string Selected() { return Find<QComboBox>("cbx_DataSets").currentText().toStdString(); }
    std::vector<std::string> Names() {
        std::vector<std::string> names;
        for (const auto& series : Graph.Series()) names.push_back(series->SeriesName());
        return names;
    }
    TSeries& Current() { return *Wizard.CurrSeries(); }
    QString PathOf(const char* name) { return Folder.filePath(QString::fromUtf8(name)); }
    QString Write(const char* name, const QByteArray& text) {
        QFile file(PathOf(name));
        EXPECT_TRUE(file.open(QIODevice::WriteOnly));
        file.write(text);
        return file.fileName();
    }
    /// Writes so many rows of X, the divider and X mod 7.
    QString WriteRows(int count, const char* divider) {
        QByteArray text;
        for (int i = 0; i < count; ++i)
            text += QByteArray::number(i) + divider + QByteArray::number(i % 7) + '\n';
        return Write("long.txt", text);
    }

    TRecordingSink Sink;
    TxyDataWizard Wizard;
    TxyChildGr& Graph = Wizard.WorkGraph();
    QTemporaryDir Folder;
};

} // namespace lumoplot
