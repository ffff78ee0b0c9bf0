#include "fit/equation_editor/formula_edit.h"

#include "controls/mark_color.h"

#include <QEvent>
#include <QFontDatabase>
#include <QKeyEvent>
#include <cmath>

namespace lumoplot {
namespace {

const QString kBrackets = QStringLiteral("()");

} // namespace

TFormulaEdit::TFormulaEdit(QWidget* parent) : QPlainTextEdit(parent) {
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

void TFormulaEdit::keyPressEvent(QKeyEvent* event) {
    const bool isReturn = event->key() == Qt::Key_Return || event->key() == Qt::Key_Enter;
    if (isReturn && !m_takesReturn) return event->ignore();
    QPlainTextEdit::keyPressEvent(event);
}

} // namespace lumoplot
