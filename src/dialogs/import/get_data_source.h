// The chooser of data sources: lists what can be one (what the graph's data sets have, the sheets that the
// host offers, the data files beside them), shows how the chosen one is read, and lets the user pick its X
// and any number of Y columns. It chooses only; who shows it loads the points.
#pragma once

#include "controls/widgets_export.h"
#include "graph/model/graph.h"
#include "sources/text/text_format.h"

#include <QDialog>
#include <memory>
#include <optional>
#include <string>
#include <vector>

namespace Ui {
class TxyGetDataSource;
}

class QListWidgetItem;

namespace lumoplot {

class TReadingOptions;
class TTextPreviewPane;

class TxyGetDataSource : public QDialog {
    Q_OBJECT

public:
    /// Starts with the source of `current`, whose graph and its holder are asked for what else there is.
    XYWIDGETS_EXPORT explicit TxyGetDataSource(const TSeries& current, QWidget* parent = nullptr);
    /// Starts with a source that is to give the graph new data sets.
    XYWIDGETS_EXPORT TxyGetDataSource(const TxyGraph& graph, const TDSInfo& source,
                                      QWidget* parent = nullptr);
    XYWIDGETS_EXPORT ~TxyGetDataSource() override;

    /// The description of the chosen source, with the first of the Y columns.
    XYWIDGETS_EXPORT const TDSInfo& Source() const;
    XYWIDGETS_EXPORT const TTextWishes& Wishes() const;
    /// The Y columns as descriptions keep them, in the order of the file; none for a data-set file, else at
    /// least one.
    XYWIDGETS_EXPORT std::vector<std::string> YColumns() const;
    /// Where the errors of each of them come from.
    XYWIDGETS_EXPORT std::vector<TYErrorRule> YErrorRules() const;

protected:
    void dragEnterEvent(QDragEnterEvent* event) override;
    void dropEvent(QDropEvent* event) override;

private:
    TxyGetDataSource(const TxyGraph& graph, const TDSInfo& given, const TTextWishes& wishes, QWidget* parent);
    void OrderTabs();
    void ConnectControls();
    void ConnectReading();
    void ListSources(const TxyGraph& graph);
    void ListUsed(const TxyGraph& graph);
    void ListSheets();
    void ListFiles();
    void AddCaption(const QString& caption);
    QListWidgetItem* AddSource(TSourceKind kind, const QString& name);
    QListWidgetItem* FindSource(TSourceKind kind, const QString& name) const;
    void SelectSource(TSourceKind kind, const QString& name);

    void SourcePicked(const QListWidgetItem* item);
    void Browse();
    void PickSheet();
    void ShowSource();
    void ShowText();
    std::optional<TTextFormat> ShowPreview();
    void ShowDataFile();
    void ShowColumns(const TTextFormat* found);
    void FillYColumns(const TTextFormat* found);
    void FillYErrors();
    TYErrorRule YErrorRuleOf(int yColumn) const;
    std::vector<int> CheckedColumns() const;
    void TakeYErrors();
    void XColumnPicked();
    void YColumnsPicked();
    void CheckAllYColumns();
    void EnableOk();

    std::unique_ptr<Ui::TxyGetDataSource> m_ui;
    TReadingOptions* m_reading = nullptr;
    TTextPreviewPane* m_preview = nullptr;
    std::unique_ptr<TxyGraph> m_graph; ///< holds the data set whose source is being chosen, and no points
    TSeries* m_series = nullptr;
    TDSInfo m_given; ///< the present description of the data set that a source is chosen for
    TTextWishes m_givenWishes;
    std::optional<TTextFormat> m_found; ///< how the source is read, where it can be
    QString m_yErrors; ///< the choice of the column with the errors of Y, as the list keeps it
    bool m_canBeRead = false;
};

} // namespace lumoplot
