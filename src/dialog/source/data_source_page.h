// The Data Source page: where the points of the current data set come from. Data that are entered by hand are
// edited in a grid; a text file is shown with its options and its first rows; a data-set file is only named.
// The source description is written at once, points are loaded when the page is left, by Reload and when a
// file is chosen.
#pragma once

#include "data/series/ds_info.h"
#include "dialog/common/wizard_page.h"

#include <memory>

namespace Ui {
class TDataSourcePage;
}

namespace lumoplot {

class TManualPanel;
class TxyGetDataSource;
class TTextOptionsPanel;
class TTextPreviewPane;
struct TTextReport;

class TDataSourcePage : public TWizardPage {
    Q_OBJECT

public:
    explicit TDataSourcePage(TWizardContext& context, QWidget* parent = nullptr);
    ~TDataSourcePage() override;

    void FillFrom(TSeries& series) override;
    void ShowNothing() override;
    /// Commits the manual grid, or loads from a source whose description has changed. What could not be
    /// loaded is told once; after that the data set keeps the points that it has.
    void Commit(TSeries& series) override;
    void Leave(TSeries& series) override;
    void RefreshAfterPreview(TSeries& series) override;

    /// Makes a file the source of the current data set, names the data set after it and loads it. What goes
    /// wrong is shown.
    void AttachFile(const std::string& fileName);

    /// Puts rows into the grid that a session has left there.
    void RestoreRows(std::span<const std::uint8_t> rows);
    /// Makes points of the grid's rows where nothing is to be asked or told.
    void CommitRowsQuietly();

protected:
    void keyPressEvent(QKeyEvent* event) override;

private:
    void AddPanels();
    void ConnectControls();
    void ConnectTextPanels();

    bool MayReplacePoints(const TSeries& series) const;
    bool TakeEveryRow(TSeries& series);
    void PickKind(TSeries& series, TSourceKind kind);
    void ChangeKind(TSeries& series, TSourceKind kind);
    void Browse();
    void ChooseSource();
    void ChooseDatabase(TSeries& series, const QString& connection);
    void ChooseLink(TSeries& series);
    void ShowLink(const TSeries& series);
    void TakeChoice(TSeries& series, const TxyGetDataSource& chooser);
    bool AddDataSet(const TSeries& like, const std::string& yColumn, const TYErrorRule& errors);
    void TakeSourceName(TSeries& series);
    void TakeDirectory(TSeries& series);
    void TakePendingTexts(TSeries& series);
    void CheckDirectory();
    void ShowNameControls(TSourceKind kind);
    void ShowPart(QWidget& shown);
    void ShowKind(TSeries& series);
    void ShowNotes(const TSeries& series);
    void FillSheets(const TSeries& series);
    void FillSheetsOfFile(const TSeries& series);
    void ChooseSheet(const std::string& name);
    void ShowSheetList(bool isShown);
    void TakeSheet(TSeries& series);
    static bool IsFile(TSourceKind kind);
    bool IsSheetOffered() const;
    bool IsText(const TSeries& series) const;
    static bool IsDatabase(const TSeries& series);
    void ShowDatabase(const TSeries& series);
    void ShowText(const TSeries& series);
    void DescriptionChanged();
    void Forget();

    bool CanLoad(const TSeries& series) const;
    bool IsLoadNeeded(const TSeries& series) const;
    void Load(TSeries& series);
    bool LoadShowingErrors(TSeries& series);
    void LoadAsStep(TSeries& series);

    std::unique_ptr<Ui::TDataSourcePage> m_ui;
    TManualPanel* m_manual = nullptr;
    TTextOptionsPanel* m_options = nullptr;
    TTextPreviewPane* m_preview = nullptr;
    const TSeries* m_shown = nullptr;      ///< the data set that the next two are about, only compared
    std::unique_ptr<TTextReport> m_report; ///< of the last loading of a text, null after a failure
    std::string m_listedFile;              ///< whose sheets are being listed
    std::string m_chosenSheet;             ///< of that file
    bool m_failureTold = false; ///< the present description could not be loaded, and the user knows
};

} // namespace lumoplot
