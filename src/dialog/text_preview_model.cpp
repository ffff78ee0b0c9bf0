#include "dialog/text_preview_model.h"

#include "controls/mark_color.h"

#include <QFont>
#include <algorithm>

namespace lumoplot {
namespace {

// A cell may hold megabytes; a view shows this much of it.
constexpr qsizetype kShownCharacters = 200;

const QColor kXTint(64, 128, 255);
const QColor kYTint(64, 192, 96);

} // namespace

void TTextPreviewModel::Show(TTextPreview preview) {
    beginResetModel();
    m_preview = std::move(preview);
    std::size_t columns = m_preview.rows.empty() ? 0 : Format().columns.size();
    for (const TPreviewRow& row : m_preview.rows)
        if (row.kind == TRowKind::Data) columns = std::max(columns, row.cells.size());
    m_columns = static_cast<int>(columns);
    endResetModel();
}

int TTextPreviewModel::rowCount(const QModelIndex& parent) const {
    return parent.isValid() ? 0 : static_cast<int>(m_preview.rows.size());
}

int TTextPreviewModel::columnCount(const QModelIndex& parent) const {
    return parent.isValid() ? 0 : m_columns;
}

const TPreviewCell* TTextPreviewModel::CellAt(const QModelIndex& index) const {
    const auto& cells = m_preview.rows[static_cast<std::size_t>(index.row())].cells;
    const auto column = static_cast<std::size_t>(index.column());
    return column < cells.size() ? &cells[column] : nullptr;
}

QVariant TTextPreviewModel::BackgroundOf(const TPreviewCell* cell, int column) const {
    if (cell && cell->state == TCellState::Rejected) return QBrush(FaultyBase());
    if (cell && cell->state == TCellState::Header)
        return QBrush(QGuiApplication::palette().color(QPalette::AlternateBase));
    if (!cell || cell->state == TCellState::Skipped) return {};
    if (column == Format().xColumn || column == Format().timeColumn) return QBrush(TintedBase(kXTint));
    return column == Format().yColumn ? QVariant(QBrush(TintedBase(kYTint))) : QVariant();
}

QString TTextPreviewModel::ReasonAt(const QModelIndex& index) const {
    const std::string start =
        "row " + std::to_string(m_preview.rows[static_cast<std::size_t>(index.row())].number) + ": ";
    for (const std::string& message : m_preview.messages)
        if (message.starts_with(start)) return QString::fromStdString(message);
    return {};
}

QVariant TTextPreviewModel::data(const QModelIndex& index, int role) const {
    if (!index.isValid()) return {};
    const TPreviewCell* cell = CellAt(index);
    switch (role) {
    case Qt::DisplayRole: return cell ? QString::fromStdString(cell->text).left(kShownCharacters) : QString();
    case Qt::BackgroundRole: return BackgroundOf(cell, index.column());
    case Qt::ForegroundRole:
        if (!cell || cell->state != TCellState::Skipped) return {};
        return QBrush(QGuiApplication::palette().color(QPalette::Disabled, QPalette::Text));
    case Qt::FontRole: {
        if (!cell || cell->state != TCellState::Header) return {};
        QFont font;
        font.setBold(true);
        return font;
    }
    case Qt::ToolTipRole: return cell && cell->state == TCellState::Rejected ? ReasonAt(index) : QString();
    default: return {};
    }
}

QString TTextPreviewModel::ColumnCaption(int column) const {
    QString caption = QString::number(column + 1);
    if (column == Format().xColumn) caption = QStringLiteral("X = ") + caption;
    if (column == Format().timeColumn) caption = QStringLiteral("X (time) = ") + caption;
    if (column == Format().yColumn) caption = QStringLiteral("Y = ") + caption;
    return caption;
}

QVariant TTextPreviewModel::headerData(int section, Qt::Orientation orientation, int role) const {
    const bool isColumn = orientation == Qt::Horizontal;
    if (role == Qt::DisplayRole)
        return isColumn
                   ? QVariant(ColumnCaption(section))
                   : QVariant::fromValue<qlonglong>(m_preview.rows[static_cast<std::size_t>(section)].number);
    const bool isUsed =
        section == Format().xColumn || section == Format().yColumn || section == Format().timeColumn;
    if (role != Qt::FontRole || !isColumn || !isUsed) return {};
    QFont font;
    font.setBold(true);
    return font;
}

} // namespace lumoplot
