// The window of a graph's sheets: a tab a sheet, and its table. Undo and redo are those of the graph's
// session.
#pragma once

#include "host/sheet/sheet.h"

#include <QMainWindow>
#include <memory>
#include <vector>

namespace Ui {
class SheetWindow;
}

namespace lumoplot {

class TGraphSession;
class TSheetBook;
class TSheetModel;

class TSheetWindow : public QMainWindow {
    Q_OBJECT

public:
    /// Both are borrowed.
    TSheetWindow(TSheetBook& book, TGraphSession& session, QWidget* parent);
    ~TSheetWindow() override;

    /// Shows the window, with a new sheet where there is none.
    void Open();

Q_SIGNALS:
    /// Data sets of these columns (from 1) are to be plotted; 0 as X counts the rows.
    void PlotWanted(const QString& sheet, int xColumn, const std::vector<int>& yColumns);

private:
    void ConnectActions();
    void ListSheets();
    void ShowState();
    void Change(const QString& step, const std::function<void(TSheet&)>& action);
    QRect Chosen() const;
    void NewSheet();
    void RenameSheet();
    void DeleteSheet();
    void ImportCsv();
    void ExportCsv();
    void Plot();
    void Copy();
    void Cut();
    void Paste();
    void ClearCells();

    std::unique_ptr<Ui::SheetWindow> m_ui;
    TSheetBook& m_book;
    TGraphSession& m_session;
    TSheetModel* m_model;
};

} // namespace lumoplot
