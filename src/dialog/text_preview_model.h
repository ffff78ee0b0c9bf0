// The first rows of a text file in a table: how they divide into cells, which columns are X and Y, and which
// cells can not be read.
#pragma once

#include "sources/text_preview.h"

#include <QAbstractTableModel>

namespace lumoplot {

class TTextPreviewModel : public QAbstractTableModel {
    Q_OBJECT

public:
    explicit TTextPreviewModel(QObject* parent = nullptr) : QAbstractTableModel(parent) {}

    /// Shows these rows; an empty preview shows nothing.
    void Show(TTextPreview preview);

    int rowCount(const QModelIndex& parent = {}) const override;
    int columnCount(const QModelIndex& parent = {}) const override;
    QVariant data(const QModelIndex& index, int role) const override;
    QVariant headerData(int section, Qt::Orientation orientation, int role) const override;

private:
    const TTextFormat& Format() const { return m_preview.readings.best.format; }
    const TPreviewCell* CellAt(const QModelIndex& index) const;
    QVariant BackgroundOf(const TPreviewCell* cell, int column) const;
    QString ColumnCaption(int column) const;
    QString ReasonAt(const QModelIndex& index) const;

    TTextPreview m_preview;
    int m_columns = 0;
};

} // namespace lumoplot
