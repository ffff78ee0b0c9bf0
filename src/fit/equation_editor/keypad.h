// A calculator keypad: each of its buttons stands for a piece of formula. To the Tab key the keypad is one
// control, inside of which the arrow keys lead from button to button; keys typed on it go to another widget.
#pragma once

#include <QPushButton>
#include <QWidget>

class QGridLayout;

namespace lumoplot {

class TKeypad : public QWidget {
    Q_OBJECT

public:
    using QWidget::QWidget;

    /// Makes keys of the buttons in its grid layout. `typing` (borrowed) takes what is typed: it gets the
    /// focus with the first character.
    void TakeKeys(QWidget& typing);

Q_SIGNALS:
    /// A button has been pressed; its caption with all blanks.
    void PieceChosen(const QString& caption);

protected:
    bool eventFilter(QObject* watched, QEvent* event) override;

private:
    QGridLayout& Grid() const;
    bool TakeKey(QPushButton& key, QKeyEvent& event);
    void MoveFocus(QPushButton& from, int rows, int columns);
    void MakeCurrent(QPushButton& key);

    QWidget* m_typing = nullptr;
    QPushButton* m_current = nullptr;
};

} // namespace lumoplot
