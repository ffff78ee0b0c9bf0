// Sources other than a text file that was chosen: data-set files, sheets, drops, and back to points by hand.
#include "dialog/source/source_page_fixture.h"

#include "graph/file/graph_file.h"
#include "graph/model/holder.h"
#include "support/errors.h"

#include <QDropEvent>
#include <QMimeData>

namespace lumoplot {
namespace {

TEST_F(TDataSourcePageTest, ADataSetFileBringsItsPointsAndSettings) {
    ShowPage();
    Current().SetLineColor(kFuchsia);
    SaveSeriesToFile(Current(), PathOf("saved.lds").toStdString());
    Click("btnNew");
    AnswerFileDialog(PathOf("saved.lds"));
    Choose("cbx_SourceKind", 2);
    Click("btnBrowse");
    EXPECT_EQ(Source().Kind(), TSourceKind::DataFile);
    EXPECT_EQ(Ys(), (std::vector<double>{10, 20}));
    EXPECT_EQ(Current().LineColor(), kFuchsia);
}

TEST_F(TDataSourcePageTest, ASheetIsReadWhereTheHostOffersOne) {
    ShowPage();
    ChooseKind(TSourceKind::LumoSheet);
    EXPECT_EQ(Shown("lblNotes"), "No sheet is offered by the application that has opened this editor.");
    EXPECT_FALSE(Find<QComboBox>("cbx_Sheet").isVisible());
    Choose("cbx_SourceKind", 0);
    std::string cells = "time\tvolt\n1\t1.5\n2\t\"2.5\"\n3\tbad\n";
    Graph.Holder()->OfferSheets({[] {
                                     return std::vector<std::string>{"Table1", "Table2"};
                                 },
                                 [&cells](const std::string& name) {
                                     return name == "Table2" ? cells : throw ELumoError("no " + name);
                                 }});
    ChooseKind(TSourceKind::LumoSheet);
    auto& sheets = Find<QComboBox>("cbx_Sheet");
    ASSERT_TRUE(sheets.isVisible());
    EXPECT_EQ(sheets.currentIndex(), -1);
    EXPECT_EQ(Messages(), std::vector<std::string>{"Choose a sheet."});
    EXPECT_TRUE(Sink.Texts.empty());
    QTest::keyClick(&sheets, Qt::Key_Down);
    EXPECT_EQ(Sink.Only(), "no Table1");
    EXPECT_EQ(Ys(), (std::vector<double>{10, 20}));
    QTest::keyClick(&sheets, Qt::Key_Down);
    EXPECT_EQ(Source().SourceName(), "Table2");
    EXPECT_EQ(Ys(), (std::vector<double>{1.5, 2.5}));
    EXPECT_EQ(Messages().size(), 1u);
    cells = "1\t7\n2\t8\n3\t9\n";
    Click("btnReload");
    EXPECT_EQ(Ys(), (std::vector<double>{7, 8, 9}));
}

TEST_F(TDataSourcePageTest, ADroppedFileIsTheSource) {
    ShowPage();
    QMimeData mime;
    mime.setUrls({QUrl::fromLocalFile(TextFile("replicates.csv"))});
    const auto dropAt = [&](const QPoint& place) {
        QDragEnterEvent enter(place, Qt::CopyAction, &mime, Qt::LeftButton, {});
        QApplication::sendEvent(&Wizard, &enter);
        EXPECT_TRUE(enter.isAccepted());
        QDropEvent drop(place, Qt::CopyAction, &mime, Qt::LeftButton, {});
        QApplication::sendEvent(&Wizard, &drop);
    };
    dropAt(Find<QWidget>("stack").mapTo(&Wizard, QPoint(20, 20)));
    EXPECT_EQ(Names(), (std::vector<std::string>{"replicates"}));
    EXPECT_EQ(Source().SourceName(), TextFile("replicates.csv").toStdString());
    dropAt(Find<QWidget>("cbx_DataSets").mapTo(&Wizard, QPoint(5, 5)));
    EXPECT_EQ(Names(), (std::vector<std::string>{"replicates", "replicates"}));
}

TEST_F(TDataSourcePageTest, WhatBecomesManualHasEveryRowOfItsSource) {
    const QString file = WriteRows(2000, "\t");
    ShowForTheEye(file);
    ASSERT_EQ(Current().Count(), 500);
    QFile::rename(file, file + QStringLiteral(".away"));
    TRecordingSink sink(false);
    QTest::keyClick(&Find<QComboBox>("cbx_SourceKind"), Qt::Key_Home);
    EXPECT_NE(sink.Only().find("Only the 500 points that are shown can be kept."), std::string::npos);
    EXPECT_EQ(Source().Kind(), TSourceKind::TextFile);
    EXPECT_EQ(Find<QComboBox>("cbx_SourceKind").currentIndex(), 1);
    QFile::rename(file + QStringLiteral(".away"), file);
    Choose("cbx_SourceKind", 0);
    EXPECT_EQ(Source().Kind(), TSourceKind::Manual);
    EXPECT_EQ(Current().Count(), 2000);
    EXPECT_FALSE(Current().IsThinned());
    Wizard.AttachSource(TextFile("replicates.csv").toStdString());
    EXPECT_EQ(sink.Texts.back(), "Data from Current DataSet Will be lost, Continue?");
    EXPECT_EQ(Current().Count(), 2000);
}

} // namespace
} // namespace lumoplot
