// The edit of a formula: wraps long ones, takes pieces from buttons at its caret, and is marked with a reason
// while the formula is faulty.
#pragma once

#include "controls/widgets_export.h"

#include <QPlainTextEdit>

namespace lumoplot {

class XYWIDGETS_EXPORT TFormulaEdit : public QPlainTextEdit {
    Q_OBJECT
    /// How many lines are seen.
    Q_PROPERTY(int lines MEMBER m_lines)
    /// The Return key makes a new line; otherwise it goes to the window.
    Q_PROPERTY(bool takesReturn MEMBER m_takesReturn)

public:
    explicit TFormulaEdit(QWidget* parent = nullptr);

    /// Shows another formula; FormulaEdited is not emitted.
    void ShowFormula(const QString& formula);
    /// Puts a piece in the place of the selection, one blank for an empty piece. A piece with "()" goes
    /// around selected text, or leaves the caret between its brackets.
    void InsertPiece(const QString& piece);
    /// Marks the edit and shows the reason as its hint; an empty reason takes the mark away.
    void Mark(const QString& reason);

    QSize sizeHint() const override;
    QSize minimumSizeHint() const override { return sizeHint(); }

Q_SIGNALS:
    void FormulaEdited(const QString& formula);

protected:
    void keyPressEvent(QKeyEvent* event) override;
    void changeEvent(QEvent* event) override;

private:
    void WrapSelection(const QString& piece);
    void ShowMark();

    int m_lines = 3;
    bool m_takesReturn = false;
    bool m_isMarked = false;
    bool m_isMarking = false;
    QString m_plainToolTip;
};

} // namespace lumoplot
