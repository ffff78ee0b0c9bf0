// How a text source is read, for the user to judge: what was found and what else fits, the first rows, what
// can not be read, and what became of the rows when the points were loaded.
#pragma once

#include "controls/widgets_export.h"
#include "graph/model/series.h"
#include "sources/text/loading/text_loader.h"
#include "sources/text/loading/text_preview.h"

#include <QWidget>
#include <memory>

namespace Ui {
class TTextPreviewPane;
}

namespace lumoplot {

class TTextPreviewModel;

class XYWIDGETS_EXPORT TTextPreviewPane : public QWidget {
    Q_OBJECT

public:
    explicit TTextPreviewPane(QWidget* parent = nullptr);
    XYWIDGETS_LOCAL ~TTextPreviewPane() override;

    /// Its wrapped texts take their height from the table, never from what stands above the pane.
    bool hasHeightForWidth() const override { return false; }

    /// `isChosen`: the user has fixed something of the reading, which "Find Again" takes back.
    void ShowPreview(TTextPreview preview, bool isChosen);
    /// Marks the Y columns of other data sets in the preview that is shown.
    void ShowMoreY(std::vector<int> columns) const;
    /// Other rows of the same preview, for a message about one of them, which is selected.
    void ShowRowsAround(TTextPreview preview, std::int64_t row);
    /// What the last loading with the present description came to.
    void ShowReport(const TTextReport& report);
    /// The description has changed since the points were loaded.
    void ShowNotLoaded();
    /// The source can not be read: nothing but the reason is shown.
    void ShowProblem(const QString& reason);
    void Clear();

Q_SIGNALS:
    /// The user takes the runner-up's reading.
    void ReadingPicked(const lumoplot::TTextFormat& format);
    void FindAgainPicked();
    void KeepAllPicked();
    /// The user looks for a row that is not among those that are shown.
    void RowWanted(qlonglong row);

private:
    XYWIDGETS_LOCAL void ShowReadings(const TTextReadings& readings, bool isChosen);
    XYWIDGETS_LOCAL void FitColumns();
    XYWIDGETS_LOCAL void GoToRow(const QString& message);
    XYWIDGETS_LOCAL void SelectRow(int index);
    XYWIDGETS_LOCAL void ShowResult(const QString& text);
    XYWIDGETS_LOCAL void ShowMessages(const std::vector<std::string>& messages, std::int64_t skipped);

    std::unique_ptr<Ui::TTextPreviewPane> m_ui;
    TTextPreviewModel* m_model;
    TTextFormat m_runnerUp;
    std::vector<std::string> m_previewMessages;
};

} // namespace lumoplot
