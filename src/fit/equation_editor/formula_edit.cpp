#include "fit/equation_editor/formula_edit.h"

#include "controls/mark_color.h"

#include <QAbstractItemView>
#include <QCompleter>
#include <QEvent>
#include <QFontDatabase>
#include <QKeyEvent>
#include <QScrollBar>
#include <QStringListModel>
#include <QTextBlock>
#include <algorithm>
#include <cmath>

namespace lumoplot {
namespace {

const QString kBrackets = QStringLiteral("()");
constexpr int kLettersToOffer = 2;

bool IsPartOfName(QChar c) {
    return c == QLatin1Char('_') || (c.unicode() < 128 && c.isLetterOrNumber());
}

} // namespace

TFormulaEdit::TFormulaEdit(QWidget* parent)
    : QPlainTextEdit(parent), m_names(new QStringListModel(this)),
      m_completer(new QCompleter(m_names, this)) {
    m_completer->setWidget(this);
    m_completer->setCaseSensitivity(Qt::CaseInsensitive);
    connect(m_completer, qOverload<const QString&>(&QCompleter::activated), this, &TFormulaEdit::Complete);
    setTabChangesFocus(true);
    setFont(QFontDatabase::systemFont(QFontDatabase::FixedFont));
    setVerticalScrollBarPolicy(Qt::ScrollBarAsNeeded);
    setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
    setWordWrapMode(QTextOption::WrapAtWordBoundaryOrAnywhere);
    connect(this, &QPlainTextEdit::textChanged, this, [this] { Q_EMIT FormulaEdited(toPlainText()); });
}

QSize TFormulaEdit::sizeHint() const {
    const int text =
        m_lines * fontMetrics().lineSpacing() + static_cast<int>(2 * document()->documentMargin());
    return {fontMetrics().averageCharWidth() * 24, text + 2 * frameWidth()};
}

void TFormulaEdit::ShowFormula(const QString& formula) {
    if (formula == toPlainText()) return;
    const QSignalBlocker quiet(this);
    setPlainText(formula);
    moveCursor(QTextCursor::End);
}

void TFormulaEdit::InsertPiece(const QString& piece) {
    if (piece.contains(kBrackets) && textCursor().hasSelection()) return WrapSelection(piece);
    QTextCursor cursor = textCursor();
    const int start = cursor.selectionStart();
    cursor.insertText(piece.isEmpty() ? QStringLiteral(" ") : piece);
    if (const auto brackets = piece.indexOf(kBrackets); brackets >= 0)
        cursor.setPosition(start + static_cast<int>(brackets) + 1);
    setTextCursor(cursor);
}

void TFormulaEdit::WrapSelection(const QString& piece) {
    QTextCursor cursor = textCursor();
    const int start = cursor.selectionStart();
    const int end = cursor.selectionEnd();
    const QString opening = piece.chopped(1);
    {
        const QSignalBlocker quiet(this); // one change, not two
        cursor.beginEditBlock();
        cursor.setPosition(end);
        cursor.insertText(QStringLiteral(")"));
        cursor.setPosition(start);
        cursor.insertText(opening);
        cursor.endEditBlock();
    }
    cursor.setPosition(end + static_cast<int>(opening.size()));
    setTextCursor(cursor);
    Q_EMIT FormulaEdited(toPlainText());
}

void TFormulaEdit::Mark(const QString& reason) {
    if (!m_isMarked) m_plainToolTip = toolTip();
    m_isMarked = !reason.isEmpty();
    setToolTip(m_isMarked ? reason : m_plainToolTip);
    ShowMark();
}

void TFormulaEdit::ShowMark() {
    QPalette palette;
    if (m_isMarked) palette.setColor(QPalette::Base, FaultyBase());
    m_isMarking = true;
    setPalette(palette);
    m_isMarking = false;
}

void TFormulaEdit::changeEvent(QEvent* event) {
    QPlainTextEdit::changeEvent(event);
    if (event->type() == QEvent::PaletteChange && m_isMarked && !m_isMarking) ShowMark();
}

void TFormulaEdit::Underline(const std::vector<TPiece>& pieces, bool isFault) {
    QList<QTextEdit::ExtraSelection> selections;
    for (const TPiece& piece : pieces) {
        QTextEdit::ExtraSelection selection;
        selection.format.setUnderlineStyle(QTextCharFormat::WaveUnderline);
        selection.format.setUnderlineColor(isFault ? QColor(Qt::red) : QColor(230, 150, 0));
        selection.cursor = textCursor();
        selection.cursor.setPosition(piece.Place);
        selection.cursor.setPosition(std::min(piece.Place + piece.Length, document()->characterCount() - 1),
                                     QTextCursor::KeepAnchor);
        selections << selection;
    }
    setExtraSelections(selections);
}

void TFormulaEdit::SetNames(const QStringList& names) {
    if (m_names->stringList() != names) m_names->setStringList(names);
}

QString TFormulaEdit::TypedName() const {
    const QTextCursor cursor = textCursor();
    const QString before = cursor.block().text().left(cursor.positionInBlock());
    qsizetype start = before.size();
    while (start > 0 && IsPartOfName(before[start - 1])) --start;
    const QString name = before.mid(start);
    return name.isEmpty() || name.front().isDigit() ? QString() : name;
}

// A list below the caret, once there is enough to choose by and not yet all of a name.
void TFormulaEdit::OfferNames() {
    const QString typed = TypedName();
    QAbstractItemView* list = m_completer->popup();
    if (typed.size() < kLettersToOffer) return list->hide();
    if (typed != m_completer->completionPrefix()) m_completer->setCompletionPrefix(typed);
    const bool isWhole = m_completer->completionCount() == 1 &&
                         m_completer->currentCompletion().compare(typed, Qt::CaseInsensitive) == 0;
    if (m_completer->completionCount() == 0 || isWhole) return list->hide();
    QRect place = cursorRect();
    place.setWidth(list->sizeHintForColumn(0) + 2 * list->frameWidth() +
                   list->verticalScrollBar()->sizeHint().width());
    m_completer->complete(place);
}

void TFormulaEdit::Complete(const QString& name) {
    QTextCursor cursor = textCursor();
    cursor.movePosition(QTextCursor::Left, QTextCursor::KeepAnchor,
                        static_cast<int>(m_completer->completionPrefix().size()));
    setTextCursor(cursor);
    m_completer->popup()->hide();
    if (!name.endsWith(kBrackets)) return insertPlainText(name);
    insertPlainText(name);
    moveCursor(QTextCursor::Left);
}

// The keys that belong to the list while it is open.
bool TFormulaEdit::TakeCompletionKey(QKeyEvent& event) {
    QAbstractItemView* list = m_completer->popup();
    if (!list->isVisible()) return false;
    const QModelIndex chosen = list->currentIndex();
    switch (event.key()) {
    case Qt::Key_Return:
    case Qt::Key_Enter:
        if (!chosen.isValid()) {
            list->hide();
            return false;
        }
        Complete(chosen.data().toString());
        return true;
    case Qt::Key_Escape: list->hide(); return true;
    default: return false;
    }
}

// Tab takes the chosen name, else the first one. It would move the focus before it came to be a key.
bool TFormulaEdit::focusNextPrevChild(bool next) {
    const QAbstractItemView* list = m_completer->popup();
    if (!next || !list->isVisible()) return QPlainTextEdit::focusNextPrevChild(next);
    const QModelIndex chosen = list->currentIndex();
    Complete(chosen.isValid() ? chosen.data().toString() : m_completer->currentCompletion());
    return true;
}

void TFormulaEdit::focusOutEvent(QFocusEvent* event) {
    if (event->reason() != Qt::PopupFocusReason) m_completer->popup()->hide();
    QPlainTextEdit::focusOutEvent(event);
}

void TFormulaEdit::keyPressEvent(QKeyEvent* event) {
    if (TakeCompletionKey(*event)) return;
    const bool isReturn = event->key() == Qt::Key_Return || event->key() == Qt::Key_Enter;
    if (isReturn && !m_takesReturn) return event->ignore();
    QPlainTextEdit::keyPressEvent(event);
    const bool isTyped = !event->text().isEmpty() && IsPartOfName(event->text().front());
    if (isTyped || event->key() == Qt::Key_Backspace)
        OfferNames();
    else
        m_completer->popup()->hide();
}

} // namespace lumoplot
