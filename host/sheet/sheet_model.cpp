#include "host/sheet/sheet_model.h"

#include "host/sheet/sheet_book.h"
#include "support/guard.h"
#include "support/number_text.h"

#include <QFont>
#include <QGuiApplication>
#include <QPalette>
#include <QTextDocument>
#include <algorithm>
#include <cmath>

namespace lumoplot {
namespace {

constexpr int kLeastRows = 40;
constexpr int kLeastColumns = 6;
constexpr int kMoreRows = 20;

} // namespace

TSheetModel::TSheetModel(TSheetBook& book, QObject* parent) : QAbstractTableModel(parent), m_book(book) {
    connect(&m_book, &TSheetBook::Changed, this, &TSheetModel::Refresh);
}

const TSheet* TSheetModel::Sheet() const {
    const auto& sheets = m_book.Sheets();
    const bool isThere = m_number >= 0 && m_number < static_cast<int>(sheets.size());
    return isThere ? &sheets[static_cast<std::size_t>(m_number)] : nullptr;
}

void TSheetModel::ShowSheet(int number) {
    m_number = number;
    Refresh();
}

// Keeps the place of the user in the view where the table has not become smaller.
void TSheetModel::Refresh() {
    const TSheet* sheet = Sheet();
    const int rows = sheet ? std::max(kLeastRows, sheet->RowCount() + kMoreRows) + 1 : 0;
    const int columns = sheet ? std::max(kLeastColumns, sheet->ColumnCount() + 2) : 0;
    m_results = sheet ? SheetResults(*sheet) : std::vector<std::optional<TSheetResult>>();
    const bool isOther = rows != m_rows || columns != m_columns;
    if (isOther) Q_EMIT layoutAboutToBeChanged();
    m_rows = rows;
    m_columns = columns;
    if (isOther) Q_EMIT layoutChanged();
    if (rows > 0) Q_EMIT dataChanged(index(0, 0), index(rows - 1, columns - 1));
}

int TSheetModel::rowCount(const QModelIndex& parent) const {
    return parent.isValid() ? 0 : m_rows;
}

int TSheetModel::columnCount(const QModelIndex& parent) const {
    return parent.isValid() ? 0 : m_columns;
}

const TSheetResult* TSheetModel::ResultOf(int column) const {
    const auto place = static_cast<std::size_t>(column);
    return place < m_results.size() && m_results[place] ? &*m_results[place] : nullptr;
}

QString TSheetModel::Text(int row, int column) const {
    const TSheet* sheet = Sheet();
    if (!sheet || column >= sheet->ColumnCount()) return {};
    if (row == 0) return QString::fromStdString(sheet->Column(column).title);
    const TSheetResult* result = ResultOf(column);
    if (!result) return QString::fromStdString(sheet->Cell(row - 1, column));
    const auto place = static_cast<std::size_t>(row - 1);
    if (place >= result->values.size() || !std::isfinite(result->values[place])) return {};
    return QString::fromStdString(FormatShortest(result->values[place]));
}

QVariant TSheetModel::data(const QModelIndex& index, int role) const {
    const TSheetResult* result = ResultOf(index.column());
    const bool isTitle = index.row() == 0;
    switch (role) {
    case Qt::DisplayRole:
    case Qt::EditRole: return Text(index.row(), index.column());
    case Qt::FontRole: {
        QFont font = QGuiApplication::font();
        font.setBold(isTitle);
        return font;
    }
    case Qt::BackgroundRole:
        return isTitle || result ? QVariant(QGuiApplication::palette().alternateBase()) : QVariant();
    case Qt::ForegroundRole:
        return isTitle && result && !result->problem.empty() ? QVariant(QColor(Qt::red)) : QVariant();
    case Qt::ToolTipRole:
        return result && !result->problem.empty()
                   ? QVariant(Qt::convertFromPlainText(QString::fromStdString(result->problem)))
                   : QVariant();
    default: return {};
    }
}

QVariant TSheetModel::headerData(int section, Qt::Orientation orientation, int role) const {
    if (role != Qt::DisplayRole) return {};
    if (orientation == Qt::Horizontal) return QStringLiteral("c%1").arg(section + 1);
    return section == 0 ? tr("Title") : QString::number(section);
}

Qt::ItemFlags TSheetModel::flags(const QModelIndex& index) const {
    Qt::ItemFlags flags = Qt::ItemIsEnabled | Qt::ItemIsSelectable;
    if (index.row() == 0 || !ResultOf(index.column())) flags |= Qt::ItemIsEditable;
    return flags;
}

bool TSheetModel::setData(const QModelIndex& index, const QVariant& value, int role) {
    if (role != Qt::EditRole || !Sheet()) return false;
    const std::string text = value.toString().toStdString();
    return Guarded([&] {
        m_book.Change(m_number, tr("edit sheet"), [&](TSheet& sheet) {
            index.row() == 0 ? sheet.SetTitle(index.column(), text)
                             : sheet.SetCell(index.row() - 1, index.column(), text);
        });
    });
}

TSheetCells TSheetModel::Shown(const QModelIndex& first, const QModelIndex& last) const {
    TSheetCells cells;
    for (int row = first.row(); row <= last.row(); ++row) {
        cells.emplace_back();
        for (int column = first.column(); column <= last.column(); ++column)
            cells.back().push_back(Text(row, column).toStdString());
    }
    return cells;
}

} // namespace lumoplot
