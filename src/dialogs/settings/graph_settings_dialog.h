// The window behind EditGraphSettings: a list of pages, the rows of the page that is chosen (or those that
// are searched for on all of them), and the picture of the graph as it would become.
#pragma once

#include "dialogs/settings/settings_sheet.h"
#include "graph/model/graph.h"
#include "graph/plotted/graph_part.h"

#include <QDialog>
#include <memory>

namespace Ui {
class GraphSettings;
}

namespace lumoplot {

class TGraphSettingsDialog : public QDialog {
    Q_OBJECT

public:
    /// Opens on the page of that part of the picture. The graph is borrowed and is not changed before Store.
    TGraphSettingsDialog(TxyGraph& graph, TGraphPart part, QWidget* parent);
    ~TGraphSettingsDialog() override;

    void SetStyleFolder(const QString& folder) { m_styleFolder = folder; }
    /// Makes the graph as the copy has become; true when that changes something.
    bool Store();

    void accept() override;

protected:
    bool eventFilter(QObject* watched, QEvent* event) override;

private:
    enum TPage {
        TitlePage,
        AxesPage,
        XPage,
        YPage,
        SecondYPage,
        LegendPage,
        MarginsPage,
        DataPage,
        MarksPage
    };

    void MakeSheets();
    void OrderTabs();
    void AddSheet(TSettingsSheet* sheet);
    TSettingsSheet* MakeAxisSheet(TAxis& axis, const QString& title, const QString& section);
    TSettingsSheet* MakeLegendSheet();
    void ShowPage();
    void Find();
    void ShowChange();
    TAxis* AxisOfPage();
    void ApplyToAllAxes();
    void SaveAsStyle();
    static int PageOf(TGraphPart part);

    TxyGraph& m_graph;
    TxyGraph m_copy;
    QString m_styleFolder;
    std::unique_ptr<Ui::GraphSettings> m_ui;
    std::vector<TSettingsSheet*> m_sheets; ///< in the order of TPage
};

} // namespace lumoplot
