// The X/Y grid for data that are entered by hand: a table view with a spreadsheet's keys. Enter goes down, a
// block copied from a spreadsheet is pasted, rows are inserted and deleted.
#pragma once

#include "dialog/manual/manual_points_model.h"

#include <QTableView>
#include <optional>

class QLineEdit;

namespace lumoplot {

/// The cells of a block of text as spreadsheets copy it: rows of cells between tabs. Without a tab,
/// semicolons, commas behind numbers with a decimal point, or blanks divide the cells.
QList<QStringList> SplitBlock(const QString& text);

class TManualGrid : public QTableView {
    Q_OBJECT

public:
    explicit TManualGrid(QWidget* parent = nullptr);

    TManualPointsModel& Points() { return *m_points; }
    const TManualPointsModel& Points() const { return *m_points; }

    /// Takes over the text of a cell that is being edited.
    void FinishEditing();
    /// What has been typed into the cell that is being edited, if anything.
    std::optional<QString> TypedText() const;
    /// Makes the cell current and visible.
    void GoTo(int row, int column);

    // The rows that the selection touches, or the current one.
    void InsertRowsAtSelection();
    void DeleteSelectedRows();
    void CopySelection();
    /// At the current cell. A block of two columns always fills X and Y; a wider one is refused with a
    /// message.
    void PasteClipboard();

Q_SIGNALS:
    /// TypedText is another one, perhaps.
    void Typed();

protected:
    void keyPressEvent(QKeyEvent* event) override;
    void closeEditor(QWidget* editor, QAbstractItemDelegate::EndEditHint hint) override;
    void contextMenuEvent(QContextMenuEvent* event) override;

private:
    struct TRowRange {
        int First = 0;
        int Count = 0;
    };

    TRowRange SelectedRows() const;
    bool RunShortcut(const QKeyEvent& event);
    void ClearSelection();
    QLineEdit* OpenEdit() const;

    TManualPointsModel* m_points;
};

} // namespace lumoplot
