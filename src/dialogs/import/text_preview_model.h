// The first rows of a text file in a table: how they divide into cells, which columns are X and Y, and which
// cells can not be read. What formulas make of X and Y stands in front of the cells.
#pragma once

#include "sources/text/loading/text_preview.h"

#include <QAbstractTableModel>

namespace lumoplot {

class TTextPreviewModel : public QAbstractTableModel {
    Q_OBJECT

public:
    explicit TTextPreviewModel(QObject* parent = nullptr) : QAbstractTableModel(parent) {}

    /// Shows these rows; an empty preview shows nothing.
    void Show(TTextPreview preview);

    /// Columns that are Y of other data sets, until the next Show.
    void ShowMoreY(std::vector<int> columns);

    /// Where the row with that number in the file is; -1 where it is not shown.
    int IndexOf(std::int64_t row) const;

    int rowCount(const QModelIndex& parent = {}) const override;
    int columnCount(const QModelIndex& parent = {}) const override;
    QVariant data(const QModelIndex& index, int role) const override;
    QVariant headerData(int section, Qt::Orientation orientation, int role) const override;

private:
    const TTextFormat& Format() const { return m_preview.readings.best.format; }
    const TPreviewRow& RowAt(const QModelIndex& index) const;
    const TPreviewCell* CellAt(const QModelIndex& index) const;
    QVariant BackgroundOf(const TPreviewCell* cell, int column) const;
    QVariant CellData(const QModelIndex& index, int role) const;
    QVariant ResultData(const QModelIndex& index, int role) const;
    QString ColumnCaption(int section) const;
    QString CaptionWithKind(int section) const;
    QString ColumnHint(int section) const;
    QString ReasonAt(const QModelIndex& index) const;
    bool IsY(int column) const;
    bool IsResult(int section) const { return section < static_cast<int>(m_results.size()); }
    int ColumnOf(int section) const { return section - static_cast<int>(m_results.size()); }

    enum class TResult { X, Y };

    TTextPreview m_preview;
    std::vector<int> m_moreY;
    std::vector<TResult> m_results; ///< what formulas make, in the first columns of the table
    int m_columns = 0;              ///< of the file
};

} // namespace lumoplot
