// The main window: the graph, the menus and the document behind them. Every action runs through the guard, so
// that what goes wrong is told and leaves the graph as it was.
#pragma once

#include "host/editor_library.h"
#include "host/files/data_files.h"
#include "host/files/graph_document.h"

#include <QMainWindow>
#include <memory>

class QLabel;
class QPrinter;
class QToolButton;

namespace Ui {
class MainWindow;
}

namespace lumoplot {

class TGraphEditBar;
class TPanelsMenu;
class TLiveLinks;
class TRecentFiles;
class TSheetBook;
class TSheetWindow;
class TStartPage;

/// Whether there is somebody to choose a table of a database; without, the only one is taken.
enum class TAsking { Allowed, Never };

/// What the data sets of the kind Link follow.
std::vector<std::string> LinksOf(const TxyGraph& graph);

class TMainWindow : public QMainWindow {
    Q_OBJECT

public:
    /// Shows a new graph. `templateFolder` is where templates are saved; it need not exist.
    explicit TMainWindow(const QString& templateFolder, QWidget* parent = nullptr);
    ~TMainWindow() override;

    TxyGraph& Graph() const;
    TGraphDocument& Document() const { return *m_document; }

    /// Opens the graph files among them and adds the data files to the graph, in their order. Tells the user
    /// what can not be opened.
    void OpenFiles(const QStringList& files, TAsking asking = TAsking::Allowed);
    /// Offers what was left in the folder without having been saved, and keeps unsaved changes there from now
    /// on. True when the user goes on with what was left.
    bool StartRecovery(const QString& folder, int intervalMs = kRecoveryIntervalMs);
    /// Puts the window where it was when the program was left last.
    void RestorePlace();

public Q_SLOTS:
    void EditData();

protected:
    bool eventFilter(QObject* watched, QEvent* event) override;
    void closeEvent(QCloseEvent* event) override;
    void dragEnterEvent(QDragEnterEvent* event) override;
    void dropEvent(QDropEvent* event) override;

private:
    void ConnectActions();
    void ConnectGraph();
    void AddEditBar();
    void ShowState();
    /// True when the changes are saved or need not be; false when the user wants to stay.
    bool MayLeaveGraph();
    bool Save();
    bool SaveAs();
    bool SaveTo(const QString& fileName);
    void OpenGraph(const QString& fileName);
    void OpenData(const QString& fileName);
    void OpenDatabase(const QString& connection, TAsking asking);
    void AddLinks();
    void AddSheets();
    void ShowLinks();
    void Follow(const TDSInfo& source);
    void FollowText(const std::string& link);
    /// Starts the links that the graph has and had not before.
    void FollowNew(const std::vector<std::string>& before);
    void AddData(const TDataChoice& choice);
    /// Shows how the file is read and lets the user choose its columns; `before` runs when it is taken.
    void ImportData(const QString& fileName, const std::function<void()>& before = {});
    /// Says how the file was read, and offers to read it otherwise where that is possible.
    void TellReading(const QString& fileName);
    void OnReadOtherwise();
    /// Reads the data sets from their sources again; false when the user cancelled.
    bool ReloadData();
    /// Asks for the data of a graph that came from a template with sources: other files, the same, or none.
    void AskForTemplateData();
    /// A name for a file that is proposed from the graph's title; empty where that can be none.
    QString TitleAsFileName() const;
    QString PictureName() const;
    void RunEditor(const QString& sourceFile);
    /// Opens the editor on the data set whose curve lies there; false where there is none.
    bool EditCurveAt(QPointF place);
    void ShowExample();
    void AddTransformMenu();
    void AddPanelsMenu();
    void AddLanguageMenu();
    /// Runs what changes the current data set as one step of that name; tells when there is none with points.
    void WithCurrentSeries(const QString& step, const std::function<void(TSeries&)>& action);
    void MergeInto(TSeries& series);
    QString WindowTitle() const;
    /// Makes a change of the graph one step; true when there is one.
    bool Change(const QString& name, const std::function<void()>& action);
    void ShowSteps();
    void ShowNotice();
    void ShowNoticeSoon();

    void OnNew();
    void OnNewFromTemplate();
    void OnOpenGraph();
    void OnOpenData();
    void OnOpenDatabase() { OpenDatabase({}, TAsking::Allowed); }
    void OnSheets();
    void OnFollow();
    void OnPauseLinks();
    void OnStopLinks();
    void OnSave() { Save(); }
    void OnSaveAs() { SaveAs(); }
    void OnSaveAsTemplate();
    void OnExportPicture();
    void OnPrintPreview();
    void OnPrint();
    void Print(QPrinter& printer);
    void OnQuit() { close(); }
    void OnUndo();
    void OnRedo();
    void OnEditData() { RunEditor({}); }
    void OnOpenWithEditor();
    void OnGraphSettings();
    void EditSettingsOf(TxyGraph& graph);
    void ListStyles();
    void ApplyStyleFrom(const QString& fileName);
    void OnCopyPicture();
    void OnCopyDataSet();
    void OnPasteDataSet();
    void OnLoadEveryRow();
    void OnShowLegend();
    void OnResetScale();
    void OnManual();
    void OnAbout();

    std::unique_ptr<Ui::MainWindow> m_ui;
    std::unique_ptr<TGraphDocument> m_document;
    std::unique_ptr<TDataFiles> m_dataFiles;
    std::unique_ptr<TLiveLinks> m_links;
    std::unique_ptr<TSheetBook> m_sheets;
    TSheetWindow* m_sheetWindow = nullptr;
    std::unique_ptr<TRecentFiles> m_recentFiles;
    TEditorLibrary m_editor;
    QLabel* m_rows = nullptr;
    QToolButton* m_readOtherwise = nullptr; ///< shown while the last step has read m_openFile
    QString m_openFile;
    QLabel* m_notice = nullptr; ///< what the user should know of the graph as it is
    bool m_noticeIsDue = false;
    TGraphEditBar* m_editBar = nullptr;
    TPanelsMenu* m_panels = nullptr;
    TStartPage* m_startPage = nullptr;
    bool m_keepsChanges = false;
};

} // namespace lumoplot
