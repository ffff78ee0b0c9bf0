// The page of the marks: whether they are shown, and the settings of one at a time.
#pragma once

#include "dialogs/settings/settings_sheet.h"
#include "graph/model/graph.h"

class QComboBox;
class QPushButton;

namespace lumoplot {

class TMarksSheet : public TSettingsSheet {
    Q_OBJECT

public:
    /// The graph is borrowed; its marks are changed at once.
    TMarksSheet(TxyGraph& graph, QWidget* parent);

private:
    void FillList(int id);
    void Select(int item);
    void AddMark();
    void DeleteMark();

    TxyGraph& m_graph;
    TGraphMark m_mark; ///< the selected one, as it is edited; its ID is 0 for none
    QComboBox* m_list;
    QPushButton* m_delete;
};

} // namespace lumoplot
