#include "dialogs/import/text_preview_model.h"

#include "controls/mark_color.h"
#include "controls/texts.h"
#include "support/number_text.h"

#include <QFont>
#include <algorithm>

namespace lumoplot {
namespace {

// A cell may hold megabytes; a view shows this much of it.
constexpr qsizetype kShownCharacters = 200;
constexpr int kResultDigits = 10;

QString KindText(TCellKind kind) {
    switch (kind) {
    case TCellKind::Number: return TTexts::tr("number");
    case TCellKind::Date: return TTexts::tr("date");
    case TCellKind::TimeOfDay: return TTexts::tr("time");
    case TCellKind::Text: return TTexts::tr("text");
    case TCellKind::Empty: break;
    }
    return TTexts::tr("empty");
}

const QColor kXTint(64, 128, 255);
const QColor kYTint(64, 192, 96);

} // namespace

void TTextPreviewModel::Show(TTextPreview preview) {
    beginResetModel();
    m_preview = std::move(preview);
    m_results.clear();
    m_moreY.clear();
    if (!m_preview.formulas.x.empty()) m_results.push_back(TResult::X);
    if (!m_preview.formulas.y.empty()) m_results.push_back(TResult::Y);
    std::size_t columns = m_preview.rows.empty() ? 0 : Format().columns.size();
    for (const TPreviewRow& row : m_preview.rows)
        if (row.kind == TRowKind::Data) columns = std::max(columns, row.cells.size());
    m_columns = static_cast<int>(columns);
    endResetModel();
}

void TTextPreviewModel::ShowMoreY(std::vector<int> columns) {
    beginResetModel();
    m_moreY = std::move(columns);
    endResetModel();
}

bool TTextPreviewModel::IsY(int column) const {
    return column == Format().yColumn || std::ranges::find(m_moreY, column) != m_moreY.end();
}

int TTextPreviewModel::IndexOf(std::int64_t row) const {
    const auto& rows = m_preview.rows;
    if (rows.empty() || row < rows.front().number || row > rows.back().number) return -1;
    return static_cast<int>(row - rows.front().number);
}

int TTextPreviewModel::rowCount(const QModelIndex& parent) const {
    return parent.isValid() ? 0 : static_cast<int>(m_preview.rows.size());
}

int TTextPreviewModel::columnCount(const QModelIndex& parent) const {
    return parent.isValid() || m_columns == 0 ? 0 : static_cast<int>(m_results.size()) + m_columns;
}

const TPreviewRow& TTextPreviewModel::RowAt(const QModelIndex& index) const {
    return m_preview.rows[static_cast<std::size_t>(index.row())];
}

const TPreviewCell* TTextPreviewModel::CellAt(const QModelIndex& index) const {
    const auto& cells = RowAt(index).cells;
    const auto column = static_cast<std::size_t>(ColumnOf(index.column()));
    return column < cells.size() ? &cells[column] : nullptr;
}

// The columns that X and Y come from are tinted; where a formula makes them, its own is.
QVariant TTextPreviewModel::BackgroundOf(const TPreviewCell* cell, int column) const {
    if (cell && cell->state == TCellState::Rejected) return QBrush(FaultyBase());
    if (cell && cell->state == TCellState::Header)
        return QBrush(QGuiApplication::palette().color(QPalette::AlternateBase));
    if (!cell || cell->state == TCellState::Skipped) return {};
    const bool isX = column == Format().xColumn || column == Format().timeColumn;
    if (isX && m_preview.formulas.x.empty()) return QBrush(TintedBase(kXTint));
    const bool isY = IsY(column) && m_preview.formulas.y.empty();
    return isY ? QVariant(QBrush(TintedBase(kYTint))) : QVariant();
}

QString TTextPreviewModel::ReasonAt(const QModelIndex& index) const {
    const std::string start = "row " + std::to_string(RowAt(index).number) + ": ";
    for (const std::string& message : m_preview.messages)
        if (message.starts_with(start)) return QString::fromStdString(message);
    return {};
}

QVariant TTextPreviewModel::data(const QModelIndex& index, int role) const {
    if (!index.isValid()) return {};
    return IsResult(index.column()) ? ResultData(index, role) : CellData(index, role);
}

QVariant TTextPreviewModel::CellData(const QModelIndex& index, int role) const {
    const TPreviewCell* cell = CellAt(index);
    switch (role) {
    case Qt::DisplayRole: return cell ? QString::fromStdString(cell->text).left(kShownCharacters) : QString();
    case Qt::BackgroundRole: return BackgroundOf(cell, ColumnOf(index.column()));
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

// A row that gives no point has an empty, highlighted result.
QVariant TTextPreviewModel::ResultData(const QModelIndex& index, int role) const {
    const bool isX = m_results[static_cast<std::size_t>(index.column())] == TResult::X;
    const std::optional<double>& value = isX ? RowAt(index).x : RowAt(index).y;
    switch (role) {
    case Qt::DisplayRole:
        return value ? QString::fromStdString(FormatGeneral(*value, kResultDigits)) : QString();
    case Qt::BackgroundRole:
        if (value) return QBrush(TintedBase(isX ? kXTint : kYTint));
        return ReasonAt(index).isEmpty() ? QVariant() : QBrush(FaultyBase());
    case Qt::ToolTipRole: return value ? QString() : ReasonAt(index);
    default: return {};
    }
}

QString TTextPreviewModel::ColumnCaption(int section) const {
    if (IsResult(section)) {
        const bool isX = m_results[static_cast<std::size_t>(section)] == TResult::X;
        const std::string text = isX ? "X = " + m_preview.formulas.x : "Y = " + m_preview.formulas.y;
        return QString::fromStdString(text);
    }
    const int column = ColumnOf(section);
    const QString equals = QStringLiteral(" = ") + QString::number(column + 1);
    const QString asRead = TTexts::tr(" as read");
    const QString x = QStringLiteral("X") + (m_preview.formulas.x.empty() ? QString() : asRead);
    if (column == Format().xColumn) return x + equals;
    if (column == Format().timeColumn) return x + QStringLiteral(" (time)") + equals;
    if (!IsY(column)) return QString::number(column + 1);
    return QStringLiteral("Y") + (m_preview.formulas.y.empty() ? QString() : asRead) + equals;
}

/// With the kind of its cells below, for who judges how the file is read.
QString TTextPreviewModel::CaptionWithKind(int section) const {
    const auto column = static_cast<std::size_t>(std::max(ColumnOf(section), 0));
    const QString caption = ColumnCaption(section);
    if (IsResult(section) || column >= Format().columns.size()) return caption;
    return caption + QLatin1Char('\n') + KindText(Format().columns[column].kind);
}

/// The name and the kind of the column.
QString TTextPreviewModel::ColumnHint(int section) const {
    if (IsResult(section)) return ColumnCaption(section);
    const auto column = static_cast<std::size_t>(ColumnOf(section));
    if (column >= Format().columns.size()) return TTexts::tr("beyond the columns of the table");
    const TTextColumn& described = Format().columns[column];
    const QString kind = KindText(described.kind);
    const QString name = QString::fromStdString(described.name);
    const QString unit = QString::fromStdString(described.unit);
    QStringList parts;
    for (const QString& part : {name, unit, kind})
        if (!part.isEmpty()) parts << part;
    return parts.join(QStringLiteral(", "));
}

QVariant TTextPreviewModel::headerData(int section, Qt::Orientation orientation, int role) const {
    const bool isColumn = orientation == Qt::Horizontal;
    if (role == Qt::DisplayRole)
        return isColumn
                   ? QVariant(CaptionWithKind(section))
                   : QVariant::fromValue<qlonglong>(m_preview.rows[static_cast<std::size_t>(section)].number);
    if (role == Qt::ToolTipRole && isColumn) return ColumnHint(section);
    const int column = ColumnOf(section);
    const bool isUsed =
        IsResult(section) || column == Format().xColumn || IsY(column) || column == Format().timeColumn;
    if (role != Qt::FontRole || !isColumn || !isUsed) return {};
    QFont font;
    font.setBold(true);
    return font;
}

} // namespace lumoplot
