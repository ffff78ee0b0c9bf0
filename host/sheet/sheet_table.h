// The table of a sheet. Enter goes to the cell below, as in a spreadsheet, Shift+Enter to that above.
#pragma once

#include <QTableView>

namespace lumoplot {

class TSheetTable : public QTableView {
    Q_OBJECT

public:
    using QTableView::QTableView;

protected:
    void closeEditor(QWidget* editor, QAbstractItemDelegate::EndEditHint hint) override;
    void keyPressEvent(QKeyEvent* event) override;

private:
    void GoDown(int rows);
};

} // namespace lumoplot
