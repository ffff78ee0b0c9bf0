// The equation editor on a fit of its own, shown and driven by input events.
#pragma once

#include "common/fit_parameters.h"
#include "common/recording_sink.h"
#include "common/window_driver.h"
#include "controls/value_edit.h"
#include "fit/equation_editor/formula_edit.h"
#include "fit/equation_editor/frm_calc.h"

#include <QLabel>
#include <QListWidget>
#include <QTabWidget>
#include <QTableView>
#include <QTemporaryDir>

namespace lumoplot {

class TEditorTest : public testing::Test {
protected:
    void Show() {
        Editor = std::make_unique<TfrmCalc>(Fit);
        Editor->show();
        Editor->activateWindow();
        ASSERT_TRUE(QTest::qWaitForWindowActive(Editor.get()));
    }
    void Click(const char* name) { lumoplot::Click(*Editor, name); }
    void Type(const char* name, const QString& text) { lumoplot::Type(*Editor, name, text); }
    void Choose(const char* name, int item) { lumoplot::Choose(*Editor, name, item); }
    template <class TControl>
    TControl& Find(const char* name) {
        return Control<TControl>(*Editor, name);
    }
    std::string TextOf(const char* edit) { return Find<QLineEdit>(edit).text().toStdString(); }
    std::string Fault() { return Find<QLabel>("lblFault").text().toStdString(); }
    void ShowPage(int page) { Find<QTabWidget>("tabs").setCurrentIndex(page); }
    QString PathOf(const char* name) { return Folder.filePath(QString::fromUtf8(name)); }

    TRecordingSink Sink;
    QTemporaryDir Folder;
    TCurFit Fit;
    std::unique_ptr<TfrmCalc> Editor;
};

} // namespace lumoplot
