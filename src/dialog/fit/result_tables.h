// Tables of figures in windows: filled from rows of text, and copied so that they can be pasted into a sheet.
#pragma once

#include <QString>
#include <string>
#include <vector>

class QTableWidget;

namespace lumoplot {

/// The first row is the head. Cells are read only; numbers stand to the right.
void ShowRows(QTableWidget& table, const std::vector<std::vector<std::string>>& rows);
/// The same rows, cells divided by tabs.
QString TableTextOf(const QTableWidget& table);

} // namespace lumoplot
