// The data editor: the one modal dialog of the library. It holds a working graph, lists its data sets and
// edits the selected one on its pages; every change goes straight into the working graph, and whoever shows
// the dialog decides by its result what becomes of that graph.
#pragma once

#include "dialog/common/wizard_page.h"

#include <QDialog>
#include <cstdint>
#include <memory>
#include <span>
#include <string>
#include <vector>

namespace Ui {
class TxyDataWizard;
}

namespace lumoplot {

class TDataSetList;
class TDataSourcePage;
class TGraphEditBar;

class TxyDataWizard : public QDialog, public TWizardContext {
    Q_OBJECT

public:
    // Modal results.
    static constexpr int kOk = 1;
    static constexpr int kCancel = 2;
    static constexpr int kSetDefault = 6;

    // Indices of the pages.
    static constexpr int kGeneralPage = 0;
    static constexpr int kDataSourcePage = 1;
    static constexpr int kRegressionsPage = 2;
    static constexpr int kCurveFittingPage = 3;

    explicit TxyDataWizard(QWidget* parent = nullptr);
    ~TxyDataWizard() override;

    TxyChildGr& WorkGraph() override { return *m_workGraph; }
    TSeries* CurrSeries() override { return m_currSeries; }
    bool Filling() const override { return m_filling; }
    void SetFilling(bool value) override { m_filling = value; }
    bool PreviewMode() const { return m_previewMode; }
    TDataSourcePage& DataSourcePage() { return *m_dataSourcePage; }

    const std::string& TemplateName() const { return m_templateName; }
    /// Also sets the caption, which has the name of a file without its folder.
    void SetTemplateName(const std::string& name);
    /// The caption has this name in place of the template's; an empty one takes none.
    void SetDocumentName(const QString& name);
    /// The page that the next showing brings to front; negative keeps the page that was active.
    void SetStartPage(int page) { m_startPage = page; }

    /// Rebuilds the data-set list and selects the data set with that number.
    void FillList(int number) override;
    /// Makes the data set with that number the current one and fills every page from it; -1 for none. Without
    /// a data set the Filling guard stays set, so that no page can write anywhere.
    void ShowSeries(int number);
    TDataSetList& DataSets() { return *m_dataSets; }
    /// Takes a file as the source of the selected data set, as the page for sources does on its own.
    void AttachSource(const std::string& fileName);

    void CommitPages() override { CommitManualData(); }
    void RefillPages() override;
    void ShowSeriesName(const QString& name) override;
    TGraphSession& Session() override { return *m_session; }
    /// Makes the working graph what an earlier use of the dialog left, as one step, with what it left beside
    /// the graph. The dialog is shown.
    void Recover(const TxyGraph& graph, std::span<const std::uint8_t> beside);

    /// Esc and the frame's X: asks when steps would be lost. The button Cancel and Drop do not.
    void reject() override;
    void Drop() { done(kCancel); }

protected:
    void showEvent(QShowEvent* event) override;
    void hideEvent(QHideEvent* event) override;
    void resizeEvent(QResizeEvent* event) override;
    void dragEnterEvent(QDragEnterEvent* event) override;
    void dropEvent(QDropEvent* event) override;

private:
    void AddPages();
    void AddPage(TWizardPage* page, const QString& caption, const QString& picture);
    void OrderKeys();
    void GiveWayToFrame();
    QString ManualPage() const;
    void ConnectControls();
    void ListChanged();
    void DataSetPicked();
    void TabChanged(int page);
    void CommitManualData();
    void SetPreviewMode(bool preview);
    void CloseWith(int result);
    void FillPages(int number);

    void SetUpPreview();
    void ShowSidePlot();
    void SetUpUndo();
    void TakePendingEdits();
    void ShowSteps();
    void ShowCaption();
    void TellStep(const QString& text);
    void GoTo(void (TGraphSession::*way)(), std::string (TGraphSession::*nameOfStep)() const,
              const char* what);
    void ShowPutBack();
    bool IsTypingUnseen() const;
    bool MayDiscard();

    std::unique_ptr<Ui::TxyDataWizard> m_ui;
    TxyChildGr* m_workGraph;
    TGraphEditBar* m_editBar = nullptr;
    TDataSetList* m_dataSets = nullptr;
    TGraphSession* m_session = nullptr;
    std::vector<TWizardPage*> m_pages;
    TDataSourcePage* m_dataSourcePage = nullptr;
    TSeries* m_currSeries = nullptr;
    bool m_filling = true;
    bool m_previewMode = false;
    int m_startPage = -1;
    int m_shownPage = kGeneralPage;
    std::string m_templateName;
    QString m_documentName;
};

} // namespace lumoplot
