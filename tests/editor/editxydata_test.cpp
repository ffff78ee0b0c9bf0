// The exported functions, called as a host calls them: by their names in the shared library.
#include "common/fit_parameters.h"
#include "common/random_graph.h"
#include "common/recording_sink.h"
#include "common/window_driver.h"
#include "fit/definition/cur_fit.h"
#include "graph/model/child_graph.h"
#include "graph/model/holder.h"
#include "session/recovery_folder.h"
#include "support/errors.h"
#include "support/short_string.h"

#include <QDialog>
#include <QDir>
#include <QLabel>
#include <QLibrary>
#include <QPlainTextEdit>
#include <QTabWidget>
#include <QTableView>
#include <QTemporaryDir>
#include <algorithm>

namespace lumoplot {
namespace {

using TEdit = bool (*)(TxyGraph&, TShortString&, int, TShortString, bool, int);
using TDelete = void (*)();

class EditData : public testing::Test {
protected:
    EditData() {
        const QLibrary library(QStringLiteral(LUMOPLOT_EDITOR_LIBRARY));
        Edit = reinterpret_cast<TEdit>(const_cast<QLibrary&>(library).resolve("editxyData"));
        Delete = reinterpret_cast<TDelete>(const_cast<QLibrary&>(library).resolve("deleteDataEditor"));
        TSeries& series = *Graph.FindSeries(Graph.AddSeries());
        series.AddPoint(1, 2);
        series.AddPoint(3, 4);
    }
    ~EditData() override { Delete(); }

    /// Runs the editor and `inside` while it is shown.
    bool Run(std::function<void(QDialog&)> inside, bool openWithSource = false, int templateNameMax = 255) {
        WhenModal<QDialog>([inside](QDialog& dialog) { inside(dialog); });
        return Edit(Graph, Template, templateNameMax, ToShortString(Source), openWithSource, 0);
    }

    void WriteSource(const char* name, const QByteArray& text) {
        QFile file(Folder.filePath(QString::fromUtf8(name)));
        ASSERT_TRUE(file.open(QIODevice::WriteOnly));
        file.write(text);
        Source = file.fileName().toStdString();
    }

    TEdit Edit = nullptr;
    TDelete Delete = nullptr;
    TRecordingSink Sink;
    TxyGraph Graph;
    TShortString Template = ToShortString("spectrum.ltp");
    std::string Source;
    QTemporaryDir Folder;
};

void Rename(QDialog& dialog, const char* button) {
    Type(dialog, "e_SeriesName", QStringLiteral("renamed"));
    Click(dialog, button);
}

TEST_F(EditData, OkWritesTheWorkingGraphBack) {
    QString caption;
    EXPECT_TRUE(Run([&](QDialog& dialog) {
        caption = dialog.windowTitle();
        Rename(dialog, "btnOk");
    }));
    EXPECT_EQ(caption, "Data Template Editor : spectrum.ltp");
    EXPECT_EQ(Graph.FindSeries(1)->SeriesName(), "renamed");
    EXPECT_EQ(Graph.FindSeries(1)->Count(), 2);
    EXPECT_FALSE(Graph.EditorMode());
}

TEST_F(EditData, TheSheetsOfTheHostAreReadInTheEditor) {
    Graph.Holder()->OfferSheets(
        {[] { return std::vector<std::string>{"Table1"}; },
         [](const std::string&) -> std::string { return "t\tv\n1\t5\n2\t6\n3\t8\n"; }});
    EXPECT_TRUE(Run([](QDialog& dialog) {
        Control<QTabWidget>(dialog, "tabs").setCurrentIndex(1);
        Choose(dialog, "cbx_SourceKind", static_cast<int>(TSourceKind::LumoSheet));
        Choose(dialog, "cbx_Sheet", 0);
        Click(dialog, "btnOk");
    }));
    EXPECT_EQ(Graph.FindSeries(1)->Count(), 3);
}

TEST_F(EditData, CancelLeavesEverythingAsItWas) {
    const TBytes before = FileOf(Graph);
    Source = "/nowhere/data.txt";
    EXPECT_FALSE(Run(
        [](QDialog& dialog) {
            Click(dialog, "btnNew");
            Rename(dialog, "btnCancel");
        },
        true));
    EXPECT_EQ(FileOf(Graph), before);
    EXPECT_EQ(FromShortString(Template), "spectrum.ltp");
    EXPECT_TRUE(Run([](QDialog& dialog) { Click(dialog, "btnOk"); }, false, 4));
    EXPECT_EQ(FromShortString(Template), "spec") << "as long as the host's buffer";
}

TEST_F(EditData, WhatACrashLeftIsOfferedForTheSameGraph) {
    const QDir state(RecoveryFolder());
    const auto files = [&state] { return state.entryList({QStringLiteral("*.recovery")}, QDir::Files); };
    Run([&](QDialog& dialog) {
        Type(dialog, "e_SeriesName", QStringLiteral("renamed"));
        ASSERT_TRUE(QTest::qWaitFor([&] { return !files().isEmpty(); }));
        const QString own = files()[0];
        ASSERT_TRUE(
            QFile::copy(state.filePath(own), state.filePath(own.section(u'-', 0, 0) + "-1-left.recovery")));
        Click(dialog, "btnCancel");
    });
    ASSERT_EQ(files().size(), 1) << "the normal end removes its own";
    const auto runAfterOffer = [&](const char* answer, std::function<void(QDialog&)> inside) {
        WhenModal<QDialog>([=, this](QDialog& offer) {
            WhenModal<QDialog>([=, this, &offer](QDialog& dialog) {
                ASSERT_NE(&dialog, &offer);
                inside(dialog);
            });
            Click(offer, answer);
        });
        return Edit(Graph, Template, 255, ToShortString(""), false, 0);
    };
    const auto nameIn = [](QDialog& dialog) { return Control<QLineEdit>(dialog, "e_SeriesName").text(); };
    EXPECT_FALSE(runAfterOffer("btnLater", [&](QDialog& dialog) {
        EXPECT_NE(nameIn(dialog), "renamed");
        Click(dialog, "btnCancel");
    }));
    EXPECT_EQ(files().size(), 1);
    EXPECT_TRUE(runAfterOffer("btnRecover", [&](QDialog& dialog) {
        EXPECT_TRUE(QTest::qWaitFor([&] { return nameIn(dialog) == "renamed"; }));
        Click(dialog, "btnOk");
    }));
    EXPECT_EQ(Graph.FindSeries(1)->SeriesName(), "renamed");
    EXPECT_EQ(files(), QStringList());
}

// Rows that are no points yet are kept, too, and come back as rows.
TEST_F(EditData, RowsOfTheGridThatACrashLeftComeBack) {
    const QDir state(RecoveryFolder());
    const auto files = [&state] { return state.entryList({QStringLiteral("*.recovery")}, QDir::Files); };
    const auto type = [](QDialog& dialog, int row, int column, const char* text, Qt::Key end) {
        auto& grid = Control<QTableView>(dialog, "grid");
        grid.setFocus();
        grid.setCurrentIndex(grid.model()->index(row, column));
        for (const char* key = text; *key; ++key) QTest::keyClick(QApplication::focusWidget(), *key);
        QTest::keyClick(QApplication::focusWidget(), end);
    };
    const auto cell = [](QDialog& dialog, int row, int column) {
        return Control<QTableView>(dialog, "grid").model()->index(row, column).data().toString();
    };
    Run([&](QDialog& dialog) {
        Control<QTabWidget>(dialog, "tabs").setCurrentIndex(1);
        type(dialog, 2, 0, "5", Qt::Key_Return);
        type(dialog, 2, 1, "6x", Qt::Key_Shift); // goes on
        ASSERT_TRUE(QTest::qWaitFor([&] { return !files().isEmpty(); }, 20000));
        QTest::qWait(6000); // both are on the disk
        const QString own = files()[0];
        ASSERT_TRUE(
            QFile::copy(state.filePath(own), state.filePath(own.section(u'-', 0, 0) + "-1-left.recovery")));
        Click(dialog, "btnCancel");
    });
    WhenModal<QDialog>([&](QDialog& offer) {
        EXPECT_TRUE(Control<QPlainTextEdit>(offer, "m_Details")
                        .toPlainText()
                        .contains(QStringLiteral("rows of the grid that are no points yet")));
        EXPECT_LE(offer.minimumSizeHint().height(), 340) << "a small screen has no more";
        WhenModal<QDialog>([&](QDialog& dialog) {
            ASSERT_TRUE(QTest::qWaitFor([&] { return cell(dialog, 2, 1) == "6x"; }));
            EXPECT_EQ(cell(dialog, 2, 0), "5");
            type(dialog, 2, 1, "6", Qt::Key_Return);
            Click(dialog, "btnOk");
        });
        Click(offer, "btnRecover");
    });
    EXPECT_TRUE(Edit(Graph, Template, 255, ToShortString(""), false, 1));
    EXPECT_EQ(Graph.FindSeries(1)->Count(), 3);
    EXPECT_EQ(files(), QStringList());
}

TEST_F(EditData, AFitIsThereWithItsErrorsWhenTheEditorIsOpenedAgain) {
    TSeries& series = *Graph.FindSeries(1);
    for (int i = 5; i < 30; ++i) series.AddPoint(i, 2 * i + i % 3);
    TCurFit& fit = series.CurveFit();
    AddVaried(fit, {"a", "b"});
    fit.SetExpression("a*x+b");
    QString found;
    const auto shown = [](QDialog& dialog) {
        Control<QTabWidget>(dialog, "tabs").setCurrentIndex(3);
        return Control<QPlainTextEdit>(dialog, "m_FitResult").toPlainText();
    };
    EXPECT_TRUE(Run([&](QDialog& dialog) {
        Control<QTabWidget>(dialog, "tabs").setCurrentIndex(3);
        Choose(dialog, "cbx_Status", 2);
        Click(dialog, "btnFit");
        found = shown(dialog);
        Click(dialog, "btnOk");
    }));
    EXPECT_TRUE(found.contains(QChar(0xB1))) << found.toStdString();
    // The editor hands its data sets over: those from before are gone.
    const auto state = [this] { return Graph.FindSeries(1)->CurveFit().RunState(); };
    const TFitRunState run = state();
    ASSERT_TRUE(run.Result);
    for (const char* button : {"btnOk", "btnCancel"}) {
        Run([&](QDialog& dialog) {
            EXPECT_EQ(shown(dialog), found);
            Click(dialog, "btnPreview");
            QTest::qWait(50);
            Click(dialog, "btnPreview");
            EXPECT_EQ(shown(dialog), found);
            Click(dialog, button);
        });
        Graph.PrepareForDrawing();
        EXPECT_EQ(state(), run) << button << ": nothing was run again";
    }
}

TEST_F(EditData, SetAsDefaultSavesTheTemplateOnYes) {
    const std::string name = Folder.filePath(QStringLiteral(" plot.ltp ")).toStdString();
    Template = ToShortString(name);
    EXPECT_TRUE(Run([](QDialog& dialog) { Rename(dialog, "btnSetDefault"); }));
    EXPECT_EQ(Sink.Only(),
              "Save graph to template \"" + name.substr(0, name.size() - 1) + "\"  permanently?");
    TxyGraph saved;
    saved.LoadFromFile(name);
    EXPECT_EQ(saved.FindSeries(1)->SeriesName(), "renamed");
    EXPECT_EQ(saved.FindSeries(1)->Count(), 0);
}

TEST_F(EditData, ATemplateThatCannotBeSavedIsToldToTheHost) {
    Template = ToShortString("/nowhere/plot.ltp");
    EXPECT_THROW(Run([](QDialog& dialog) { Rename(dialog, "btnSetDefault"); }), EFileError);
    EXPECT_EQ(Graph.FindSeries(1)->SeriesName(), "renamed");
}

TEST_F(EditData, OpenWithSourceAddsADataSetNamedAfterTheFile) {
    WriteSource("probe.a.txt", "t\tU\n1\t10\n2\t20\n3\t30\n");
    EXPECT_TRUE(Run(
        [&](QDialog& dialog) {
            EXPECT_EQ(Control<QComboBox>(dialog, "cbx_SourceKind").currentText(), "Text File");
            EXPECT_EQ(Control<QLineEdit>(dialog, "e_SourceName").text().toStdString(), Source);
            EXPECT_EQ(Control<QLineEdit>(dialog, "e_SourceName").toolTip().toStdString(), Source);
            Click(dialog, "btnOk");
        },
        true));
    ASSERT_EQ(Graph.Series().size(), 2u);
    EXPECT_EQ(Graph.FindSeries(2)->SeriesName(), "probe.a");
    EXPECT_EQ(Graph.FindSeries(2)->Count(), 3);
}

TEST_F(EditData, TheHostsBudgetIsKnownInTheEditor) {
    Graph.SetPointBudget(1234);
    EXPECT_FALSE(Run([](QDialog& dialog) {
        const auto graphs = dialog.findChildren<TxyGraph*>();
        const auto work = std::ranges::find_if(graphs, &TxyGraph::EditorMode);
        ASSERT_NE(work, graphs.end());
        EXPECT_EQ((*work)->PlotBudget(), 1234);
        EXPECT_EQ((*work)->PointBudget(), TxyGraph::kEditorPointBudget + 0);
        Click(dialog, "btnCancel");
    }));
    EXPECT_EQ(Graph.PointBudget(), 1234);
}

TEST_F(EditData, TheDialogIsKeptUnderTheApplicationsNameUntilItIsDeleted) {
    qApp->setObjectName(QStringLiteral("App"));
    const auto holder = [] {
        return qApp->findChild<QObject*>(QStringLiteral("AppdataEdit"), Qt::FindDirectChildrenOnly);
    };
    EXPECT_EQ(holder(), nullptr);
    Run([](QDialog& dialog) { Click(dialog, "btnOk"); });
    const QObject* first = holder();
    ASSERT_NE(first, nullptr);
    Run([](QDialog& dialog) { Click(dialog, "btnOk"); });
    EXPECT_EQ(holder(), first);
    Delete();
    EXPECT_EQ(holder(), nullptr);
    Delete();
}

// The keys of the closing bar reach the dialog above a host's window and without one, in the first run and in
// later ones. A button that is pressed by its key shows that for a moment before it acts.
TEST_F(EditData, PreviewAndCancelHaveTheirKeys) {
    QWidget host;
    for (const bool hasHost : {false, true, true}) {
        if (hasHost) {
            host.show();
            host.activateWindow();
            ASSERT_TRUE(QTest::qWaitForWindowActive(&host));
        }
        EXPECT_FALSE(Run([&](QDialog& dialog) {
            auto& button = Control<QPushButton>(dialog, "btnPreview");
            const auto press = [&](Qt::Key key, const QString& caption) {
                QTest::keyClick(dialog.windowHandle(), key, Qt::AltModifier);
                EXPECT_TRUE(QTest::qWaitFor([&] { return button.text() == caption; }, 2000))
                    << caption.toStdString() << " with a host: " << hasHost;
            };
            EXPECT_TRUE(QTest::qWaitForWindowActive(&dialog));
            press(Qt::Key_V, QStringLiteral("&Edit"));
            press(Qt::Key_E, QStringLiteral("Pre&view"));
            press(Qt::Key_V, QStringLiteral("&Edit"));
            QTest::keyClick(dialog.windowHandle(), Qt::Key_C, Qt::AltModifier);
        }));
    }
}

TEST_F(EditData, ACallWhileTheEditorIsShownIsRefused) {
    TxyGraph other;
    other.AddSeries();
    const TBytes before = FileOf(other);
    EXPECT_TRUE(Run([&](QDialog& dialog) {
        Type(dialog, "e_SeriesName", QStringLiteral("renamed"));
        EXPECT_FALSE(Edit(other, Template, 255, {}, false, 0));
        Click(dialog, "btnOk");
    }));
    EXPECT_EQ(Graph.FindSeries(1)->SeriesName(), "renamed");
    EXPECT_EQ(Graph.FindSeries(1)->Count(), 2);
    EXPECT_EQ(FileOf(other), before);
}

TEST_F(EditData, DeletingTheEditorWhileItIsShownCancelsIt) {
    const TBytes before = FileOf(Graph);
    EXPECT_FALSE(Run([&](QDialog& dialog) {
        Type(dialog, "e_SeriesName", QStringLiteral("renamed"));
        Delete();
    }));
    EXPECT_EQ(FileOf(Graph), before);
    EXPECT_TRUE(Run([](QDialog& dialog) { Click(dialog, "btnOk"); }));
}

TEST_F(EditData, WhatTheFilteringPageReadsIsEveryRow) {
    QByteArray text;
    for (int i = 0; i < 4000; ++i) text += QByteArray::number(i) + ";1\n";
    WriteSource("long.txt", text);
    Graph.SetPointBudget(1000);
    EXPECT_TRUE(Run(
        [](QDialog& dialog) {
            auto& tabs = Control<QTabWidget>(dialog, "tabs");
            tabs.setCurrentIndex(0);
            Click(dialog, "cb_AutoFrequency");
            Click(dialog, "btnReload");
            for (int i = 0; i < tabs.count(); ++i)
                if (tabs.tabText(i).contains(QStringLiteral("Filtering"))) tabs.setCurrentIndex(i);
            const auto& state = Control<QLabel>(dialog, "lblFilterState");
            EXPECT_TRUE(QTest::qWaitFor([&] { return state.text().contains(QStringLiteral("samples")); }));
            Click(dialog, "btnOk");
        },
        true));
    EXPECT_EQ(Graph.FindSeries(2)->Count(), 4000);
}

TEST_F(EditData, AThinnedFileKeepsTheNameThatItWasGiven) {
    QByteArray text = "Time;Volt\n";
    for (int i = 0; i < 2000; ++i) text += QByteArray::number(i) + ";1\n";
    WriteSource("long.txt", text);
    EXPECT_TRUE(Run(
        [](QDialog& dialog) {
            Control<QTabWidget>(dialog, "tabs").setCurrentIndex(0);
            Click(dialog, "cb_AutoFrequency");
            Click(dialog, "btnReload");
            Rename(dialog, "btnOk");
        },
        true));
    EXPECT_EQ(Graph.FindSeries(2)->Count(), 2000);
    EXPECT_EQ(Graph.FindSeries(2)->SeriesName(), "renamed");
}

} // namespace
} // namespace lumoplot
