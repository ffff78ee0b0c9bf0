#include "dialog/fit/result_tables.h"

#include <QHeaderView>
#include <QTableWidget>

namespace lumoplot {
namespace {

constexpr int kFewColumns = 2;

bool IsFigure(const QString& text) {
    bool isNumber = false;
    text.section(QLatin1Char(' '), 0, 0).toDouble(&isNumber);
    return isNumber;
}

} // namespace

void ShowRows(QTableWidget& table, const std::vector<std::vector<std::string>>& rows) {
    const int selected = table.currentRow();
    table.clear();
    table.setTabKeyNavigation(false);
    table.setEditTriggers(QAbstractItemView::NoEditTriggers);
    table.verticalHeader()->hide();
    table.verticalHeader()->setDefaultSectionSize(table.fontMetrics().height() + 6);
    table.setRowCount(rows.empty() ? 0 : static_cast<int>(rows.size()) - 1);
    table.setColumnCount(rows.empty() ? 0 : static_cast<int>(rows.front().size()));
    for (std::size_t row = 0; row < rows.size(); ++row) {
        for (std::size_t column = 0; column < rows[row].size(); ++column) {
            auto* cell = new QTableWidgetItem(QString::fromStdString(rows[row][column]));
            if (row == 0) {
                table.setHorizontalHeaderItem(static_cast<int>(column), cell);
                continue;
            }
            cell->setTextAlignment((IsFigure(cell->text()) ? Qt::AlignRight : Qt::AlignLeft) |
                                   Qt::AlignVCenter);
            cell->setToolTip(cell->text());
            table.setItem(static_cast<int>(row) - 1, static_cast<int>(column), cell);
        }
    }
    table.horizontalHeader()->setVisible(
        !rows.empty() && std::ranges::any_of(rows.front(), [](const std::string& s) { return !s.empty(); }));
    table.resizeColumnsToContents();
    table.horizontalHeader()->setHighlightSections(false);
    const bool endsWithFigures = table.columnCount() > kFewColumns && table.rowCount() > 0 &&
                                 IsFigure(table.item(0, table.columnCount() - 1)->text());
    table.horizontalHeader()->setStretchLastSection(!endsWithFigures);
    if (table.rowCount() > 0) table.setCurrentCell(std::clamp(selected, 0, table.rowCount() - 1), 0);
}

QString TableTextOf(const QTableWidget& table) {
    QString text;
    for (int row = -1; row < table.rowCount(); ++row) {
        QStringList cells;
        for (int column = 0; column < table.columnCount(); ++column) {
            const QTableWidgetItem* cell =
                row < 0 ? table.horizontalHeaderItem(column) : table.item(row, column);
            cells << (cell ? cell->text() : QString());
        }
        if (row < 0 && cells.join(QString()).isEmpty()) continue;
        text += cells.join(QLatin1Char('\t')) + QLatin1Char('\n');
    }
    return text;
}

} // namespace lumoplot
