// How the table of parameters takes keys and shows what is typed.
#include "controls/whole_captions.h"
#include "fit/equation_editor/parameter_model.h"

#include "controls/number_edit.h"

#include <QHeaderView>
#include <QKeyEvent>
#include <QLineEdit>
#include <QStyledItemDelegate>
#include <QTableView>
#include <QToolTip>
#include <algorithm>
#include <array>

namespace lumoplot {
namespace {

class TParameterDelegate : public QStyledItemDelegate {
public:
    using QStyledItemDelegate::QStyledItemDelegate;

    QWidget* createEditor(QWidget* parent, const QStyleOptionViewItem&,
                          const QModelIndex& index) const override {
        auto* edit = new QLineEdit(parent);
        edit->setFrame(false);
        edit->setObjectName(QStringLiteral("e_Cell"));
        const auto& model = static_cast<const TParameterModel&>(*index.model());
        const QPersistentModelIndex cell(index);
        connect(edit, &QLineEdit::textEdited, edit, [edit, &model, cell](const QString& text) {
            const QString fault = cell.isValid() ? model.FaultOf(cell, text) : QString();
            MarkEdit(*edit, fault);
            if (!fault.isEmpty())
                QToolTip::showText(edit->mapToGlobal(edit->rect().bottomLeft()), fault, edit);
        });
        return edit;
    }

protected:
    // Tab takes what was typed and leaves the cell, as it leaves any edit; it does not go round in the table.
    bool eventFilter(QObject* watched, QEvent* event) override {
        auto* edit = qobject_cast<QWidget*>(watched);
        const int key = event->type() == QEvent::KeyPress ? static_cast<QKeyEvent*>(event)->key() : 0;
        if (!edit || (key != Qt::Key_Tab && key != Qt::Key_Backtab))
            return QStyledItemDelegate::eventFilter(watched, event);
        Q_EMIT commitData(edit);
        Q_EMIT closeEditor(edit, QAbstractItemDelegate::NoHint);
        return true;
    }
};

/// Columns share the room that is more than they need; where it is less the table scrolls.
void FitColumns(QTableView& table) {
    static constexpr std::array<int, TParameterModel::ColumnCount> kDigits = {6, 9, 9, 0, 7, 7, 5, 6};
    QHeaderView& header = *table.horizontalHeader();
    const int digit = table.fontMetrics().horizontalAdvance(QLatin1Char('0'));
    std::array<int, TParameterModel::ColumnCount> widths{};
    int room = table.viewport()->width();
    for (int column = 0; column < TParameterModel::ColumnCount; ++column) {
        const auto place = static_cast<std::size_t>(column);
        widths[place] = std::max(header.sectionSizeHint(column), (kDigits[place] + 1) * digit);
        room -= widths[place];
    }
    room = std::max(room, 0);
    const int share = room / (TParameterModel::ColumnCount - 1);
    widths.back() += room % (TParameterModel::ColumnCount - 1);
    for (int column = 0; column < TParameterModel::ColumnCount; ++column)
        header.resizeSection(column, widths[static_cast<std::size_t>(column)] +
                                         (column == TParameterModel::Vary ? 0 : share));
}

/// Cells whose empty text means that there is none.
bool MayBeEmpty(int column) {
    return column == TParameterModel::Min || column == TParameterModel::Max ||
           column == TParameterModel::Units || column == TParameterModel::Tie;
}

/// Return edits a cell instead of pressing the window's button; Delete and Backspace empty it.
class TTableKeys : public QObject {
public:
    explicit TTableKeys(QTableView& table) : QObject(&table), m_table(table) {
        table.installEventFilter(this);
        table.viewport()->installEventFilter(this);
    }

    bool eventFilter(QObject* watched, QEvent* event) override {
        if (event->type() == QEvent::Resize && watched == m_table.viewport()) FitColumns(m_table);
        const bool isTaken = event->type() == QEvent::KeyPress &&
                             TakeKey(static_cast<QKeyEvent*>(event)->key(), m_table.currentIndex());
        return isTaken || QObject::eventFilter(watched, event);
    }

private:
    bool TakeKey(int key, const QModelIndex& cell) {
        if (!cell.isValid()) return false;
        switch (key) {
        case Qt::Key_Return:
        case Qt::Key_Enter: Open(cell); return true;
        case Qt::Key_Delete:
        case Qt::Key_Backspace:
            if (MayBeEmpty(cell.column())) m_table.model()->setData(cell, QString());
            return true;
        default: return false;
        }
    }

    void Open(const QModelIndex& cell) {
        if (cell.column() == TParameterModel::Vary)
            m_table.model()->setData(
                cell, cell.data(Qt::CheckStateRole).toInt() == Qt::Checked ? Qt::Unchecked : Qt::Checked,
                Qt::CheckStateRole);
        else if (cell.flags() & Qt::ItemIsEditable)
            m_table.edit(cell);
    }

    QTableView& m_table;
};

} // namespace

void SetUpParameterTable(QTableView& table, TParameterModel& model) {
    table.setModel(&model);
    table.setItemDelegate(new TParameterDelegate(&table));
    new TTableKeys(table);
    table.setTabKeyNavigation(false);
    table.setSelectionMode(QAbstractItemView::SingleSelection);
    table.setEditTriggers(QAbstractItemView::DoubleClicked | QAbstractItemView::SelectedClicked |
                          QAbstractItemView::EditKeyPressed | QAbstractItemView::AnyKeyPressed);
    table.verticalHeader()->hide();
    table.verticalHeader()->setDefaultSectionSize(table.fontMetrics().height() + 6);
    QHeaderView& header = *table.horizontalHeader();
    header.setHighlightSections(false);
    KeepCaptionsWhole(header);
    header.setMinimumSectionSize(table.fontMetrics().horizontalAdvance(QLatin1Char('0')) * 4);
    header.setSectionResizeMode(QHeaderView::Interactive);
    FitColumns(table);
}

} // namespace lumoplot
