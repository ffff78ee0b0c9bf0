#include "dialog/source/source_page_fixture.h"

#include "graph/loading/source_loading.h"
#include "graph/model/holder.h"
#include "support/errors.h"

#include <QSpinBox>
#include <QTabWidget>

namespace lumoplot {
namespace {

TEST_F(TDataSourcePageTest, AFileIsAttachedNamedAndExplained) {
    ShowFile(TextFile("semicolon_decimal_comma.csv"));
    EXPECT_EQ(Source().Kind(), TSourceKind::TextFile);
    EXPECT_EQ(Selected(), "semicolon_decimal_comma");
    EXPECT_EQ(Ys(), (std::vector<double>{1.25, 1.31, 1.38, 1.44}));
    EXPECT_EQ(Shown("lblFound"),
              "Read as semicolon, decimal comma, 1 header row, UTF-8. X is column 1 (Zeit [s]), Y is "
              "column 2 (Spannung [V]).");
    EXPECT_EQ(Shown("lblResult"), "4 points from all 4 rows.");
    EXPECT_EQ(PreviewCell(1, 2), "10,1");
    EXPECT_TRUE(Find<QAbstractButton>("cb_Semicolon").isChecked());
    EXPECT_FALSE(Find<QAbstractButton>("cb_Semicolon").isEnabled()) << "found, not chosen";
    EXPECT_EQ(Find<QComboBox>("cbx_YColumn").currentText(), "Auto (2: Spannung [V])");
}

TEST_F(TDataSourcePageTest, OptionsAreWrittenAtOnceAndLoadedWhenThePageIsLeft) {
    ShowFile(TextFile("semicolon_decimal_comma.csv"));
    Choose("cbx_YColumn", 3);
    EXPECT_EQ(Source().YDataColumn(), "Strom [mA]");
    EXPECT_EQ(Ys().front(), 1.25) << "not loaded yet";
    Click("btnPreview");
    EXPECT_EQ(Ys(), (std::vector<double>{10.1, 10.4, 10.2, 10.9}));
    EXPECT_EQ(Selected(), "Strom [mA]") << "Autoupdate follows the column";
    Click("btnPreview");
    Type("cbx_YColumn", QStringLiteral("2"));
    Find<QTabWidget>("tabs").setCurrentIndex(0);
    EXPECT_EQ(Ys().front(), 1.25);
    Find<QTabWidget>("tabs").setCurrentIndex(1);
    Type("cbx_YColumn", QStringLiteral("strom [ma]"));
    Click("btnReload");
    EXPECT_EQ(Ys().front(), 10.1);
    EXPECT_TRUE(Sink.Texts.empty());
}

TEST_F(TDataSourcePageTest, ADataSetThatLoadsWhenAnotherIsPickedKeepsItsPlaceInTheList) {
    Wizard.SetStartPage(TxyDataWizard::kDataSourcePage);
    Show({"Run", "Other"});
    Wizard.AttachSource(Write("run.csv", "t,U,I\n1,2,3\n2,3,4\n3,4,5\n").toStdString());
    Choose("cbx_YColumn", 3);
    Choose("cbx_DataSets", 1);
    EXPECT_EQ(Names(), (std::vector<std::string>{"I", "Other"}));
    EXPECT_EQ(Selected(), "Other");
    EXPECT_EQ(Find<QComboBox>("cbx_DataSets").itemText(0), "I");
}

TEST_F(TDataSourcePageTest, PointsThatWereEditedByHandAreNotLostWithoutAQuestion) {
    ShowFile(Write("run.csv", "1,2\n2,3\n"));
    Choose("cbx_SourceKind", static_cast<int>(TSourceKind::Manual));
    Current().AddPoint(3, 33);
    const std::vector<double> edited = Ys();
    Sink.Answer = false;
    QTest::keyClick(&Find<QComboBox>("cbx_SourceKind"), Qt::Key_Down);
    EXPECT_EQ(Sink.Texts.size(), 1u);
    EXPECT_EQ(Source().Kind(), TSourceKind::Manual);
    EXPECT_EQ(Find<QComboBox>("cbx_SourceKind").currentIndex(), static_cast<int>(TSourceKind::Manual));
    Find<QTabWidget>("tabs").setCurrentIndex(0);
    EXPECT_EQ(Ys(), edited);
    Find<QTabWidget>("tabs").setCurrentIndex(1);
    Sink.Answer = true;
    Choose("cbx_SourceKind", static_cast<int>(TSourceKind::TextFile));
    Click("btnReload");
    EXPECT_EQ(Ys(), (std::vector<double>{2, 3}));
}

TEST_F(TDataSourcePageTest, EveryOptionReachesTheDescription) {
    ShowFile(TextFile("semicolon_decimal_comma.csv"));
    const std::pair<std::function<void()>, std::function<bool(const TDSInfo&)>> cases[] = {
        {[&] { Click("cb_FindSeparators"); }, [](auto& s) { return s.TextSeparators() == ";"; }},
        {[&] { Click("cb_Tab"); }, [](auto& s) { return s.TextSeparators() == "\t;"; }},
        {[&] { Click("cb_Comma"); }, [](auto& s) { return s.TextSeparators() == "\t,;"; }},
        {[&] { Click("cb_Semicolon"); }, [](auto& s) { return s.TextSeparators() == "\t,"; }},
        {[&] { Click("cb_Semicolon"); }, [](auto& s) { return s.TextSeparators() == "\t,;"; }},
        {[&] { Click("cb_Blank"); }, [](auto& s) { return s.TextSeparators() == "\t,; "; }},
        {[&] { Click("cb_Other"); }, [](auto& s) { return s.TextSeparators() == "\t,; "; }},
        {[&] { Type("e_Other", QStringLiteral("|/")); },
         [](auto& s) { return s.TextSeparators() == "\t,; |/"; }},
        {[&] { Click("cb_FindSeparators"); }, [](auto& s) { return s.TextSeparators().empty(); }},
        {[&] { Type("e_TextMarkers", QStringLiteral("'")); }, [](auto& s) { return s.TextMarkers() == "'"; }},
        {[&] { Click("cb_FindHeaders"); }, [](auto& s) { return s.FileHasHeaders() == 1; }},
        {[&] { Type("se_HeaderRows", QStringLiteral("2")); },
         [](auto& s) { return s.FileHasHeaders() == 2; }},
        {[&] { Click("cb_FindHeaders"); },
         [](auto& s) { return s.FileHasHeaders() == TDSInfo::kFindHeaders; }},
        {[&] { Click("cb_FixedWidth"); }, [](auto& s) { return s.DivideTextByWidth(); }},
        {[&] { Type("se_ColumnWidth", QStringLiteral("7")); }, [](auto& s) { return s.ColumnWidth() == 7; }},
        {[&] { Click("cb_FixedWidth"); }, [](auto& s) { return !s.DivideTextByWidth(); }},
        {[&] { Choose("cbx_XColumn", 1); }, [](auto& s) { return s.XDataColumn() == "0"; }},
        {[&] {
             Type("cbx_XColumn", QStringLiteral("1: Zeit [s]"));
             Press(Qt::Key_Return);
         },
         [](auto& s) { return s.XDataColumn() == "Zeit [s]"; }},
        {[&] { Choose("cbx_XFormat", 1); }, [](auto& s) { return s.XFormat() == TColumnFormat::DateTime; }},
        {[&] { Choose("cbx_XFormat", 0); }, [](auto& s) { return s.XFormat() == TColumnFormat::Number; }},
        {[&] { Choose("cbx_YFormat", 1); }, [](auto& s) { return s.YFormat() == TColumnFormat::DateTime; }},
        {[&] { Type("e_XExpression", QStringLiteral("X/60")); },
         [&](auto&) { return Current().XColExpr() == "X/60"; }},
        {[&] { Type("e_YExpression", QStringLiteral("2*Y")); },
         [&](auto&) { return Current().YColExpr() == "2*Y"; }},
        {[&] { Choose("cbx_RowChoice", 1); },
         [](auto& s) { return s.RowChoiceMode() == TRowChoice::ByNumber; }},
        {[&] { Type("e_From", QStringLiteral("3")); }, [](auto& s) { return s.RowChoiceValue1() == 3; }},
        {[&] { Type("e_To", QStringLiteral("4")); }, [](auto& s) { return s.RowChoiceValue2() == 4; }},
        {[&] { Type("e_To", QStringLiteral("4x")); }, [](auto& s) { return s.RowChoiceValue2() == 4; }},
        {[&] { Choose("cbx_RowChoice", 2); }, [](auto& s) { return s.RowChoiceMode() == TRowChoice::ByX; }},
        {[&] { Type("e_From", QStringLiteral("-0,5")); },
         [](auto& s) { return s.RowChoiceValue1() == -0.5; }},
        {[&] { Click("cb_AutoFrequency"); }, [](auto& s) { return s.AutoRowHitFreq(); }},
        {[&] { Click("cb_AutoFrequency"); }, [](auto& s) { return !s.AutoRowHitFreq(); }},
        {[&] { Type("se_RowFrequency", QStringLiteral("3")); },
         [](auto& s) { return s.RowSamplingFrequency() == 3; }},
        {[&] { Choose("cbx_DecimalSign", 1); },
         [&](auto&) { return Current().TextWishes().decimalSign == '.'; }},
        {[&] { Choose("cbx_DateOrder", 2); },
         [&](auto&) { return Current().TextWishes().dateOrder == TDateOrder::DayMonthYear; }},
        {[&] { Choose("cbx_Encoding", 4); },
         [&](auto&) { return Current().TextWishes().encoding == TTextEncoding::CodePage; }},
        {[&] { Click("btnFindAgain"); }, [&](auto&) { return Current().TextWishes() == TTextWishes{}; }},
    };
    int number = 0;
    for (const auto& [act, holds] : cases) {
        act();
        EXPECT_TRUE(holds(Source())) << "case " << number;
        ++number;
    }
}

TEST_F(TDataSourcePageTest, ExpressionsAreShownInThePreviewAndMarkedWhenTheyAreNone) {
    ShowFile(Write("run.csv", "s,volt\n60,1\n120,2\n180,x\n240,0\n"));
    auto& edit = Find<QLineEdit>("e_YExpression");
    const QColor plain = edit.palette().color(QPalette::Base);
    Type("e_XExpression", QStringLiteral("s/60"));
    Type("e_YExpression", QStringLiteral("1/volt"));
    const auto& preview = *Find<QTableView>("t_Preview").model();
    EXPECT_EQ(preview.headerData(0, Qt::Horizontal).toString(), "X = s/60");
    EXPECT_EQ(preview.headerData(3, Qt::Horizontal).toString(), "Y as read = 2\nnumber");
    EXPECT_EQ(PreviewCell(2, 0), "2");
    EXPECT_EQ(PreviewCell(2, 1), "0.5");
    EXPECT_EQ(PreviewCell(2, 3), "2");
    EXPECT_EQ(preview.index(4, 1).data(Qt::ToolTipRole).toString(),
              "row 5: the expression for Y gives no value");
    Click("btnReload");
    EXPECT_EQ(Ys(), (std::vector<double>{1, 0.5}));
    EXPECT_EQ(Current().First().X(), 1);
    EXPECT_EQ(Messages().size(), 2u);

    for (const auto& [text, reason] :
         {std::pair("1/(volt", "Unequal brackets"),
          std::pair("amp", "no column is named 'amp' (its columns are s, volt)")}) {
        Type("e_YExpression", QString::fromLatin1(text));
        EXPECT_EQ(edit.toolTip(), reason);
        EXPECT_NE(edit.palette().color(QPalette::Base), plain);
        EXPECT_EQ(PreviewCell(2, 0), "120") << "nothing is made while one of them can not be used";
        Sink.Texts.clear();
        Click("btnReload");
        EXPECT_EQ(Sink.Only(), std::string("The expression for Y can not be used: ") + reason);
        EXPECT_EQ(Ys(), (std::vector<double>{1, 0.5}));
    }
    Type("e_YExpression", QString());
    EXPECT_EQ(edit.palette().color(QPalette::Base), plain);
    Click("btnReload");
    EXPECT_EQ(Ys(), (std::vector<double>{1, 2, 0}));
}

TEST_F(TDataSourcePageTest, RejectedRowsAreMarkedNamedAndCounted) {
    ShowFile(TextFile("bad_rows.csv"));
    const auto messages = Messages();
    ASSERT_GE(messages.size(), 3u);
    EXPECT_NE(messages.front().find("more cells than there are columns"), std::string::npos);
    EXPECT_EQ(messages[1].substr(0, 6), "row 3:");
    EXPECT_NE(Shown("lblResult").find("rows skipped"), std::string::npos) << Shown("lblResult");
    const QModelIndex oops = Find<QTableView>("t_Preview").model()->index(3, 1);
    EXPECT_EQ(oops.data().toString(), "oops");
    EXPECT_TRUE(oops.data(Qt::ToolTipRole).toString().startsWith(QStringLiteral("row 4: 'oops'")));
    auto& list = Find<QListWidget>("l_Messages");
    QTest::mouseClick(list.viewport(), Qt::LeftButton, {}, list.visualItemRect(list.item(2)).center());
    EXPECT_TRUE(Find<QTableView>("t_Preview").selectionModel()->isRowSelected(3))
        << "a message leads to its row";
}

TEST_F(TDataSourcePageTest, ALoadingThatIsCancelledKeepsThePoints) {
    constexpr int kManyRows = 300000;
    Wizard.SetStartPage(TxyDataWizard::kDataSourcePage);
    Show({"a"});
    const QString file = WriteRows(kManyRows, ";");
    CancelNextWork();
    Wizard.AttachSource(file.toStdString());
    EXPECT_EQ(Current().Count(), 2);
    for (const int page : {TxyDataWizard::kGeneralPage, TxyDataWizard::kDataSourcePage}) {
        Find<QTabWidget>("tabs").setCurrentIndex(page);
        EXPECT_EQ(Current().Count(), 2) << "asked once";
    }
    Click("btnReload");
    EXPECT_EQ(Current().Count(), kManyRows);
    CancelNextWork();
    Click("btnReload");
    EXPECT_EQ(Current().Count(), kManyRows);
}

TEST_F(TDataSourcePageTest, MergedReplicatesAreToldAndKeptByOneClick) {
    ShowFile(TextFile("replicates.csv"));
    const int merged = Current().Count();
    EXPECT_NE(Shown("lblResult").find("merged into others with the same X"), std::string::npos);
    EXPECT_TRUE(Shown("lblResult").starts_with(std::to_string(merged) + " points from all "))
        << "those that are there: " << Shown("lblResult");
    EXPECT_FALSE(Current().DuplicatesAllowed());
    Click("btnKeepAll");
    EXPECT_TRUE(Current().DuplicatesAllowed());
    EXPECT_GT(Current().Count(), merged);
    EXPECT_FALSE(Find<QAbstractButton>("btnKeepAll").isVisible());
    EXPECT_EQ(Shown("lblResult").find("merged"), std::string::npos);
}

TEST_F(TDataSourcePageTest, TheRunnerUpIsTakenByOneClickAndForgottenByAnother) {
    QByteArray text = "day,load\n";
    for (int day = 1; day <= 12; ++day)
        text += QByteArray::number(day) + "/" + QByteArray::number(13 - day) + "/2024," +
                QByteArray::number(day) + "\n";
    ShowFile(Write("days.csv", text));
    const std::string found = Shown("lblFound");
    const double first = Current().First().X();
    auto& runnerUp = Find<QAbstractButton>("btnRunnerUp");
    ASSERT_TRUE(runnerUp.isVisible());
    EXPECT_TRUE(runnerUp.text().startsWith(QStringLiteral("Also fits: dates ")))
        << runnerUp.text().toStdString();
    Click("btnRunnerUp");
    EXPECT_NE(Shown("lblFound"), found);
    EXPECT_TRUE(Current().TextWishes().dateOrder.has_value());
    EXPECT_EQ(Current().Count(), 12);
    Click("btnFindAgain");
    EXPECT_EQ(Shown("lblFound"), found);
    EXPECT_EQ(Current().First().X(), first);
}

TEST_F(TDataSourcePageTest, AMessageShowsItsRowFromAnyPlaceOfTheFile) {
    QByteArray rows = "t,v\n";
    for (int i = 1; i < 3000; ++i) rows += QByteArray::number(i) + (i == 2500 ? ",broken\n" : ",1\n");
    ShowFile(Write("long.csv", rows));
    ASSERT_EQ(Messages(), std::vector<std::string>{"row 2501: 'broken' in column 2 (v) is not a number"});
    Find<QListWidget>("l_Messages").setCurrentRow(0);
    auto& table = Find<QTableView>("t_Preview");
    const QModelIndex current = table.currentIndex();
    EXPECT_EQ(current.siblingAtColumn(1).data().toString(), "broken");
    EXPECT_TRUE(table.viewport()->rect().intersects(table.visualRect(current)));
    EXPECT_EQ(table.model()->headerData(current.row(), Qt::Vertical).toInt(), 2501);
}

TEST_F(TDataSourcePageTest, WithoutAnySeparatorARowIsOneCellUntilAutoIsChosen) {
    ShowFile(Write("pairs.csv", "1;5\n2;6\n3;7\n"));
    Click("cb_FindSeparators");
    Click("cb_Semicolon");
    EXPECT_FALSE(Find<QAbstractButton>("cb_FindSeparators").isChecked());
    EXPECT_FALSE(Find<QAbstractButton>("cb_Other").isChecked());
    EXPECT_EQ(PreviewCell(0, 0), "1;5");
    Click("cb_Semicolon");
    EXPECT_EQ(PreviewCell(0, 1), "5");
}

TEST_F(TDataSourcePageTest, DatesMakeADateAxisUntilTheUserWantsNumbers) {
    ShowFile(Write("years.csv", "day,v\n2020-01-31,1\n2022-01-31,2\n2024-01-31,3\n"));
    EXPECT_TRUE(Graph.XAxis()->ShowAsTime());
    EXPECT_EQ(Graph.XAxis()->DateTimeFormat(), "mmm yyyy");
    Graph.XAxis()->SetShowAsTime(false);
    Click("btnReload");
    EXPECT_FALSE(Graph.XAxis()->ShowAsTime());
}

TEST_F(TDataSourcePageTest, NumbersBesideDatesAreTold) {
    Wizard.SetStartPage(TxyDataWizard::kDataSourcePage);
    Show({"Run", "Numbers"});
    Attach(Write("days.csv", "day,v\n2024-01-29,1\n2024-01-30,2\n2024-01-31,3\n"));
    EXPECT_FALSE(Graph.XAxis()->ShowAsTime());
    ASSERT_EQ(Messages().size(), 1u);
    EXPECT_TRUE(Messages().front().starts_with("these X are dates, but the X axis shows numbers"));
    Graph.XAxis()->SetShowAsTime(true);
    Attach(Write("values.csv", "t,v\n1,5\n2,6\n3,7\n"));
    ASSERT_EQ(Messages().size(), 1u);
    EXPECT_TRUE(Messages().front().starts_with("the X axis shows dates, but these X are numbers"));
    Click("btnReload");
    EXPECT_TRUE(Messages().empty()) << "told once";
}

TEST_F(TDataSourcePageTest, ANameThatIsTypedStaysWhenTheFileHasNoSuchColumn) {
    ShowFile(Write("run.csv", "t,U,I\n1,2,3\n2,3,4\n3,4,5\n"));
    Type("cbx_YColumn", QStringLiteral("Ohm"));
    Click("btnReload");
    EXPECT_EQ(Sink.Texts.size(), 1u);
    EXPECT_EQ(Find<QComboBox>("cbx_YColumn").currentText(), "Ohm");
    EXPECT_EQ(Ys(), (std::vector<double>{2, 3, 4}));
    Sink.Texts.clear();
    Write("run.csv", "t,U,Ohm\n1,2,7\n2,3,8\n3,4,9\n");
    Click("btnReload");
    EXPECT_EQ(Ys(), (std::vector<double>{7, 8, 9}));
}

TEST_F(TDataSourcePageTest, AColumnOfErrorsIsSuggestedMarkedAndTakenBack) {
    ShowFile(Write("run.csv", "t,U,err_U\n1,2,0.5\n2,3,0.25\n3,4,0\n"));
    EXPECT_EQ(Shown("lblYErrorsHint"), "Suggested: 3: err_U");
    EXPECT_EQ(Find<QComboBox>("cbx_YErrorColumn").currentText(), "None");
    Choose("cbx_YErrorColumn", 3);
    EXPECT_EQ(Shown("lblYErrorsHint"), "");
    Click("btnReload");
    EXPECT_EQ(Current().YErrors(), (std::vector<double>{0.5, 0.25, 0}));
    EXPECT_EQ(Messages(), std::vector<std::string>{
                              "1 rows have no number above 0 in column 3 (err_U) and no error of Y"});
    Type("cbx_YErrorColumn", QStringLiteral("2"));
    Click("btnReload");
    EXPECT_EQ(Current().YErrors(), (std::vector<double>{2, 3, 4}));
    Click("btnUndoStep");
    EXPECT_EQ(Current().YErrors(), (std::vector<double>{0.5, 0.25, 0}));
    for (int i = 0; i < 2; ++i) QTest::keyClick(&Find<QComboBox>("cbx_YErrorColumn"), Qt::Key_Up);
    EXPECT_EQ(Find<QComboBox>("cbx_YErrorColumn").currentIndex(), 0);
    Click("btnReload");
    EXPECT_FALSE(Current().HasYErrors());
    EXPECT_EQ(Ys(), (std::vector<double>{2, 3, 4}));
}

TEST_F(TDataSourcePageTest, TheEditorsBudgetIsUsedAndItsFrequencyShown) {
    ShowForTheEye(WriteRows(2000, "\t"));
    EXPECT_EQ(Current().Count(), 500);
    EXPECT_EQ(Find<QSpinBox>("se_RowFrequency").value(), 4);
    EXPECT_TRUE(Current().IsThinned());
    EXPECT_EQ(Current().SourceRows().Chosen, 2000);
    Source().NoteRowSamplingFrequency(9);
    Click("btnPreview");
    Click("btnPreview");
    EXPECT_EQ(Find<QSpinBox>("se_RowFrequency").value(), 9) << "what the data set has now";
    Click("cb_AutoFrequency");
    Type("se_RowFrequency", QStringLiteral("2"));
    Click("btnReload");
    EXPECT_EQ(Current().Count(), 1000) << "without a budget";
    EXPECT_FALSE(Current().IsThinned());
}

TEST_F(TDataSourcePageTest, ASheetThatHasGoneDoesNotKeepTheHostFromReadingTheRest) {
    ShowForTheEye(WriteRows(2000, ","));
    Click("btnDuplicate");
    TxyGraph host;
    host.CopyFrom(Graph);
    host.Holder()->OfferSheets({[] { return std::vector<std::string>(); },
                                [](auto&) -> std::string { throw std::runtime_error("The sheet is gone"); }});
    host.FirstSeries()->DataSourceInfo().SetKind(TSourceKind::LumoSheet);
    TSilentProgress progress;
    LoadThinnedAgain(host, Graph, progress);
    EXPECT_EQ(Sink.Only(), "The sheet is gone");
    EXPECT_EQ(host.FindSeries(1)->Count(), 500);
    EXPECT_EQ(host.FindSeries(2)->Count(), 2000);
}

TEST_F(TDataSourcePageTest, WhatCannotBeReadIsToldAndChangesNothing) {
    const std::pair<QString, const char*> cases[] = {
        {Write("empty.txt", ""), "is empty"},
        {Write("binary.txt", QByteArray(4000, '\0') + QByteArray("\x7f\x45\x4c\x46\x01\x02", 6)),
         "binary.txt"},
        {Write("words.txt", "just some\nwords here\nand there\n"), "holds no column of numbers"},
        {Folder.path(), ""},
        {PathOf("missing.txt"), "missing.txt"},
    };
    ShowPage();
    for (const auto& [file, text] : cases) {
        Sink.Texts.clear();
        Attach(file);
        EXPECT_NE(Sink.Only().find(text), std::string::npos) << Sink.Only();
        EXPECT_EQ(Ys(), (std::vector<double>{10, 20})) << text;
        EXPECT_EQ(Source().SourceName(), file.toStdString());
    }
    Sink.Texts.clear();
    Click("btnPreview");
    EXPECT_TRUE(Wizard.PreviewMode()) << "told once, it does not stop everything else";
    EXPECT_TRUE(Sink.Texts.empty());
}

TEST_F(TDataSourcePageTest, SettingsSurviveAFailureAndAFileThatComesBack) {
    const QString file = Write("run.csv", "a;b;c\n1;2;3\n2;3;4\n");
    ShowFile(file);
    Choose("cbx_YColumn", 3);
    Click("btnReload");
    EXPECT_EQ(Ys(), (std::vector<double>{3, 4}));
    QFile::remove(file);
    Click("btnReload");
    EXPECT_EQ(Sink.Texts.size(), 1u);
    EXPECT_EQ(Ys(), (std::vector<double>{3, 4}));
    EXPECT_EQ(Source().YDataColumn(), "c");
    Write("run.csv", "a;b;c\n1;2;30\n2;3;40\n");
    Click("btnReload");
    EXPECT_EQ(Ys(), (std::vector<double>{30, 40}));
}

TEST_F(TDataSourcePageTest, AFailureIsToldBeforeTheDialogCloses) {
    ShowFile(TextFile("semicolon_decimal_comma.csv"));
    Type("cbx_YColumn", QStringLiteral("17"));
    Click("btnOk");
    EXPECT_NE(Sink.Only().find("has no column 17"), std::string::npos) << Sink.Only();
    EXPECT_TRUE(Wizard.isVisible());
    Click("btnOk");
    EXPECT_FALSE(Wizard.isVisible());
    EXPECT_EQ(Sink.Texts.size(), 1u);
}

TEST_F(TDataSourcePageTest, ARelativeNameIsLookedUpInTheDataDirectory) {
    Write("near.csv", "1,2\n2,3\n");
    Graph.Appearance()->SetDataDirectory("/nowhere");
    ShowPage();
    ChooseKind(TSourceKind::TextFile);
    Type("e_SourceName", QStringLiteral("near.csv"));
    Press(Qt::Key_Return);
    EXPECT_TRUE(Wizard.isVisible()) << "Enter takes the name and no more";
    EXPECT_EQ(Sink.Texts.size(), 1u);
    auto& directory = Find<QLineEdit>("e_Directory");
    ASSERT_TRUE(directory.isVisible());
    EXPECT_EQ(directory.text(), "/nowhere");
    Type("e_Directory", Folder.path());
    Press(Qt::Key_Return);
    EXPECT_EQ(Graph.Appearance()->DataDirectory(), Folder.path().toStdString());
    EXPECT_EQ(Ys(), (std::vector<double>{2, 3}));
    EXPECT_EQ(Find<QLineEdit>("e_SourceName").toolTip(), "near.csv");
}

} // namespace
} // namespace lumoplot
