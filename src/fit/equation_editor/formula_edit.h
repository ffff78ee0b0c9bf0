// The edit of a formula: wraps long ones, completes names, takes pieces from buttons at its caret, and is
// marked with a reason while the formula is faulty.
#pragma once

#include <QPlainTextEdit>
#include <vector>

class QCompleter;
class QStringListModel;

namespace lumoplot {

class TFormulaEdit : public QPlainTextEdit {
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

    /// A piece of the text, in its characters.
    struct TPiece {
        int Place;
        int Length;
    };
    /// Underlines the pieces, as wrong ones when `isFault`, else as doubtful ones.
    void Underline(const std::vector<TPiece>& pieces, bool isFault);
    /// The names that are offered while one is typed; they are completed with Return or Tab.
    void SetNames(const QStringList& names);

    QSize sizeHint() const override;
    QSize minimumSizeHint() const override { return sizeHint(); }

Q_SIGNALS:
    void FormulaEdited(const QString& formula);

protected:
    void keyPressEvent(QKeyEvent* event) override;
    void changeEvent(QEvent* event) override;
    void focusOutEvent(QFocusEvent* event) override;
    bool focusNextPrevChild(bool next) override;

private:
    bool TakeCompletionKey(QKeyEvent& event);
    void OfferNames();
    void Complete(const QString& name);
    QString TypedName() const;
    void WrapSelection(const QString& piece);
    void ShowMark();

    int m_lines = 3;
    bool m_takesReturn = false;
    bool m_isMarked = false;
    bool m_isMarking = false;
    QString m_plainToolTip;
    QStringListModel* m_names;
    QCompleter* m_completer;
};

} // namespace lumoplot
