// The mark editor: lists the marks of a graph and edits one at a time. What is edited goes into the graph at
// once, or when its edit is left, so there is nothing to apply and nothing to cancel.
#pragma once

#include "graph/model/graph.h"

#include <QDialog>
#include <array>
#include <memory>

class QLabel;
class QLineEdit;

namespace Ui {
class TxyMark;
}

namespace lumoplot {

class TxyMark : public QDialog {
    Q_OBJECT

public:
    TxyMark(TxyGraph& graph, QWidget* parent);
    ~TxyMark() override;

    void done(int result) override;

protected:
    bool eventFilter(QObject* watched, QEvent* event) override;

private:
    struct TField {
        QLineEdit* Edit;
        QLabel* Label;
        double TGraphMark::*Value;
    };

    void ConnectList();
    void ConnectFields();

    /// One entry a mark; selects the mark with that ID, none for -1.
    void FillList(int id);
    void ShowSelection();
    void ShowFields();
    void ShowValue(const TField& field);
    void ShowColor();
    /// Nothing is being filled and a mark is selected: a change of a control is the user's.
    bool IsEditing() const { return !m_filling && m_selected; }

    void TakeValue(const TField& field);
    void TakeText();
    void TakeType(int item);
    void TakeStatus(int item);
    void PickColor();
    void AddMark();
    void DeleteMark();
    void ClearAll();
    /// Puts what was edited since the last time into the graph.
    void WriteBack();

    TxyGraph& m_graph;
    std::unique_ptr<Ui::TxyMark> m_ui;
    std::array<TField, 4> m_fields;
    TGraphMark m_mark; ///< the selected one, as it is edited
    bool m_selected = false;
    bool m_pending = false; ///< m_mark is not yet in the graph
    bool m_filling = false;
};

/// Shows the mark editor on the graph, with the icon of `ownerForm` (which may be null), until it is closed.
/// True when it was closed by OK; the marks are edited in any case.
bool EditMarks(QWidget* ownerForm, TxyGraph& graph);

} // namespace lumoplot
