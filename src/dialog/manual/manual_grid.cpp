#include "dialog/manual/manual_grid.h"

#include "controls/texts.h"
#include "controls/whole_captions.h"
#include "dialog/manual/pasted_commas.h"
#include "support/errors.h"
#include "support/guard.h"

#include <QApplication>
#include <QClipboard>
#include <QContextMenuEvent>
#include <QHeaderView>
#include <QKeyEvent>
#include <QLineEdit>
#include <QMenu>
#include <QRegularExpression>
#include <QStyledItemDelegate>
#include <QToolTip>
#include <algorithm>

namespace lumoplot {
namespace {

enum class TDivider { Tab, Semicolon, Comma, Blanks };

TDivider DividerOf(const QString& text) {
    if (text.contains(QLatin1Char('\t'))) return TDivider::Tab;
    if (text.contains(QLatin1Char(';'))) return TDivider::Semicolon;
    const QStringList lines = text.split(QLatin1Char('\n'));
    if (std::ranges::all_of(lines, [](const QString& line) { return IsGrouped(line.trimmed()); }))
        return TDivider::Blanks;
    // "1.5,2" are two cells; "1,5" is one number with a decimal comma.
    static const QRegularExpression commaBehindPoint(QStringLiteral("\\.[^\\n]*,|,[^\\n]*\\.|, "));
    return text.contains(commaBehindPoint) ? TDivider::Comma : TDivider::Blanks;
}

QStringList CellsOf(const QString& line, TDivider divider) {
    switch (divider) {
    case TDivider::Tab: return line.split(QLatin1Char('\t'));
    case TDivider::Semicolon: return line.split(QLatin1Char(';'));
    case TDivider::Comma: return line.split(QLatin1Char(','));
    case TDivider::Blanks: break;
    }
    return line.simplified().split(QLatin1Char(' '));
}

/// Tells what is typed into a cell.
class TCellDelegate : public QStyledItemDelegate {
public:
    explicit TCellDelegate(TManualGrid& grid) : QStyledItemDelegate(&grid), m_grid(grid) {}

    QWidget* createEditor(QWidget* parent, const QStyleOptionViewItem& option,
                          const QModelIndex& index) const override {
        QWidget* editor = QStyledItemDelegate::createEditor(parent, option, index);
        if (auto* edit = qobject_cast<QLineEdit*>(editor))
            connect(edit, &QLineEdit::textEdited, &m_grid, &TManualGrid::Typed);
        return editor;
    }

private:
    TManualGrid& m_grid;
};

} // namespace

QList<QStringList> SplitBlock(const QString& text) {
    QString plain = text;
    plain.replace(QStringLiteral("\r\n"), QStringLiteral("\n")).replace(QLatin1Char('\r'), QLatin1Char('\n'));
    if (plain.endsWith(QLatin1Char('\n'))) plain.chop(1);
    if (plain.isEmpty()) return {};
    const TDivider divider = DividerOf(plain);
    QList<QStringList> block;
    for (const QString& line : plain.split(QLatin1Char('\n'))) {
        QStringList cells = CellsOf(line, divider);
        for (QString& cell : cells) cell = cell.trimmed();
        block.push_back(std::move(cells));
    }
    return block;
}

TManualGrid::TManualGrid(QWidget* parent) : QTableView(parent), m_points(new TManualPointsModel(this)) {
    setModel(m_points);
    setItemDelegate(new TCellDelegate(*this));
    setEditTriggers(DoubleClicked | EditKeyPressed | AnyKeyPressed);
    setTabKeyNavigation(false);
    setAlternatingRowColors(false);
    horizontalHeader()->setSectionResizeMode(QHeaderView::Stretch);
    horizontalHeader()->setHighlightSections(false);
    KeepCaptionsWhole(*horizontalHeader());
    verticalHeader()->setSectionResizeMode(QHeaderView::Fixed);
    verticalHeader()->setDefaultSectionSize(fontMetrics().height() + fontMetrics().height() / 2);
    verticalHeader()->setDefaultAlignment(Qt::AlignRight | Qt::AlignVCenter);
    setAccessibleName(TTexts::tr("Points"));
}

QLineEdit* TManualGrid::OpenEdit() const {
    if (state() != EditingState) return nullptr;
    const auto edits = viewport()->findChildren<QLineEdit*>();
    const auto open = std::ranges::find_if(edits, [](const QLineEdit* edit) { return !edit->isHidden(); });
    return open == edits.end() ? nullptr : *open; // one that was closed is there until it is deleted
}

void TManualGrid::FinishEditing() {
    QWidget* editor = OpenEdit();
    if (!editor) return;
    commitData(editor);
    closeEditor(editor, QAbstractItemDelegate::NoHint);
}

std::optional<QString> TManualGrid::TypedText() const {
    const QLineEdit* edit = OpenEdit();
    return edit && edit->isModified() ? std::optional(edit->text()) : std::nullopt;
}

void TManualGrid::GoTo(int row, int column) {
    const QModelIndex cell = m_points->index(row, column);
    if (!cell.isValid()) return;
    setCurrentIndex(cell);
    scrollTo(cell);
}

// Enter in a cell takes its text and goes to the cell below, as in a spreadsheet.
void TManualGrid::closeEditor(QWidget* editor, QAbstractItemDelegate::EndEditHint hint) {
    const QModelIndex cell = currentIndex();
    QTableView::closeEditor(editor, hint);
    Q_EMIT Typed();
    if (hint == QAbstractItemDelegate::SubmitModelCache) GoTo(cell.row() + 1, cell.column());
}

bool TManualGrid::RunShortcut(const QKeyEvent& event) {
    using TAction = void (TManualGrid::*)();
    static constexpr std::pair<QKeySequence::StandardKey, TAction> kShortcuts[] = {
        {QKeySequence::Copy, &TManualGrid::CopySelection},
        {QKeySequence::Paste, &TManualGrid::PasteClipboard},
        {QKeySequence::Delete, &TManualGrid::ClearSelection},
    };
    for (const auto& [key, action] : kShortcuts) {
        if (!event.matches(key)) continue;
        Guarded([&] { (this->*action)(); });
        return true;
    }
    if (!event.matches(QKeySequence::Cut)) return false;
    CopySelection();
    ClearSelection();
    return true;
}

void TManualGrid::keyPressEvent(QKeyEvent* event) {
    const bool control = event->modifiers().testFlag(Qt::ControlModifier);
    const bool enter = event->key() == Qt::Key_Return || event->key() == Qt::Key_Enter;
    if (state() == EditingState) return; // the editor has seen the key
    if (RunShortcut(*event)) return;
    if (enter) return GoTo(currentIndex().row() + 1, currentIndex().column());
    if (control && event->key() == Qt::Key_Plus) return InsertRowsAtSelection();
    if (control && event->key() == Qt::Key_Minus) return DeleteSelectedRows();
    QTableView::keyPressEvent(event);
}

TManualGrid::TRowRange TManualGrid::SelectedRows() const {
    if (!selectionModel()->hasSelection()) return {std::max(currentIndex().row(), 0), 1};
    int first = m_points->rowCount();
    int last = 0;
    for (const QItemSelectionRange& range : selectionModel()->selection()) {
        first = std::min(first, range.top());
        last = std::max(last, range.bottom());
    }
    return {first, last - first + 1};
}

void TManualGrid::InsertRowsAtSelection() {
    FinishEditing();
    const auto [first, count] = SelectedRows();
    const int column = std::max(currentIndex().column(), 0);
    m_points->InsertRows(first, count);
    GoTo(first, column);
}

void TManualGrid::DeleteSelectedRows() {
    FinishEditing();
    const auto [first, count] = SelectedRows();
    const int column = std::max(currentIndex().column(), 0);
    m_points->DeleteRows(first, count);
    GoTo(std::min(first, m_points->rowCount() - 1), column);
}

void TManualGrid::ClearSelection() {
    m_points->ClearCells(selectedIndexes());
}

void TManualGrid::CopySelection() {
    if (!selectionModel()->hasSelection()) return;
    const QItemSelection selection = selectionModel()->selection();
    int left = m_points->columnCount();
    int right = -1;
    for (const QItemSelectionRange& range : selection) {
        left = std::min(left, range.left());
        right = std::max(right, range.right());
    }
    const auto [first, count] = SelectedRows();
    QString text;
    for (int row = first; row < first + count; ++row) {
        for (int column = left; column <= right; ++column) {
            if (column > left) text += QLatin1Char('\t');
            const QModelIndex cell = m_points->index(row, column);
            if (selectionModel()->isSelected(cell)) text += cell.data().toString();
        }
        text += QLatin1Char('\n');
    }
    QApplication::clipboard()->setText(text);
}

void TManualGrid::PasteClipboard() {
    FinishEditing();
    QList<QStringList> block = SplitBlock(QApplication::clipboard()->text());
    qsizetype width = 0;
    for (const QStringList& cells : block) width = std::max(width, cells.size());
    const int columns = m_points->columnCount();
    if (width > columns)
        throw ELumoError("The copied block has " + std::to_string(width) +
                         " columns. Copy one column, or those of X and Y beside each other.");
    const QModelIndex cell = currentIndex();
    const int row = std::max(cell.row(), 0);
    const int column = std::min(std::max(cell.column(), 0), columns - static_cast<int>(width));
    const QString reading = ReadCommas(block);
    m_points->Paste(row, column, block);
    GoTo(row, column);
    if (reading.isEmpty()) return;
    const QRect place = visualRect(m_points->index(row, column));
    QToolTip::showText(viewport()->mapToGlobal(place.bottomLeft()), reading, this);
}

void TManualGrid::contextMenuEvent(QContextMenuEvent* event) {
    QMenu menu;
    const auto add = [&](const char* text, QKeySequence::StandardKey key, void (TManualGrid::*action)()) {
        QAction* item =
            menu.addAction(TTexts::tr(text), this, [this, action] { Guarded([&] { (this->*action)(); }); });
        item->setShortcut(key);
    };
    add(QT_TRANSLATE_NOOP("lumoplot::TTexts", "&Copy"), QKeySequence::Copy, &TManualGrid::CopySelection);
    add(QT_TRANSLATE_NOOP("lumoplot::TTexts", "&Paste"), QKeySequence::Paste, &TManualGrid::PasteClipboard);
    add(QT_TRANSLATE_NOOP("lumoplot::TTexts", "C&lear"), QKeySequence::Delete, &TManualGrid::ClearSelection);
    menu.addSeparator();
    menu.addAction(TTexts::tr("&Insert Rows"), QKeySequence(QStringLiteral("Ctrl++")), this,
                   &TManualGrid::InsertRowsAtSelection);
    menu.addAction(TTexts::tr("&Delete Rows"), QKeySequence(QStringLiteral("Ctrl+-")), this,
                   &TManualGrid::DeleteSelectedRows);
    menu.exec(event->globalPos());
}

} // namespace lumoplot
