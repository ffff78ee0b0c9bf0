// A sheet as a table view shows it: the titles in the first row, the cells below, and always some empty rows
// and columns more than there are. What is typed goes to the book.
#pragma once

#include "host/sheet/sheet_values.h"

#include <QAbstractTableModel>

namespace lumoplot {

class TSheetBook;

class TSheetModel : public QAbstractTableModel {
    Q_OBJECT

public:
    explicit TSheetModel(TSheetBook& book, QObject* parent = nullptr);

    /// None for a number below 0.
    void ShowSheet(int number);
    int Number() const { return m_number; }
    const TSheet* Sheet() const;

    int rowCount(const QModelIndex& parent = {}) const override;
    int columnCount(const QModelIndex& parent = {}) const override;
    QVariant data(const QModelIndex& index, int role) const override;
    QVariant headerData(int section, Qt::Orientation orientation, int role) const override;
    Qt::ItemFlags flags(const QModelIndex& index) const override;
    bool setData(const QModelIndex& index, const QVariant& value, int role) override;

    /// What is shown of the cells in the rectangle, titles included.
    TSheetCells Shown(const QModelIndex& first, const QModelIndex& last) const;

private:
    void Refresh();
    const TSheetResult* ResultOf(int column) const;
    QString Text(int row, int column) const;

    TSheetBook& m_book;
    int m_number = -1;
    std::vector<std::optional<TSheetResult>> m_results;
    int m_rows = 0;
    int m_columns = 0;
};

} // namespace lumoplot
