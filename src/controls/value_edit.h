// An edit that holds one number. It marks itself while its text is no number that it allows, and the number
// can be nudged with the arrow keys and the wheel.
#pragma once

#include <QLineEdit>
#include <optional>

namespace lumoplot {

/// Up and Down change the number by one in its second digit, Page Up and Page Down by ten of these, and Shift
/// makes the change ten times finer. The size of a change is kept until another number is typed or shown, so
/// that a value can be led through 0. The wheel does as Up and Down while the edit has the focus.
class TValueEdit : public QLineEdit {
    Q_OBJECT
    /// Only whole numbers.
    Q_PROPERTY(bool integers MEMBER m_integers)
    /// Only numbers above 0.
    Q_PROPERTY(bool positive MEMBER m_positive)

public:
    explicit TValueEdit(QWidget* parent = nullptr);

    /// Shows a number in general format with 6 significant digits, all of them while it is edited, and no
    /// mark. A text that is being typed and stands for that number stays. When the edit is left, a text that
    /// is no number or not allowed gives way to the number shown or accepted last.
    void ShowValue(double value);
    /// Shows an empty text and no mark.
    void ShowNothing();

Q_SIGNALS:
    /// The user has typed or nudged to a number that the edit allows. Not emitted for an empty text, a lone
    /// "." and texts that are marked.
    void ValueEdited(double value);

protected:
    void keyPressEvent(QKeyEvent* event) override;
    void wheelEvent(QWheelEvent* event) override;
    void focusInEvent(QFocusEvent* event) override;
    void focusOutEvent(QFocusEvent* event) override;

private:
    void ShowText();
    void TakeText();
    std::optional<double> AllowedValue();
    void Nudge(double steps);
    double StepFor(double value) const;
    QString TextOf(double value) const;

    bool m_integers = false;
    bool m_positive = false;
    std::optional<double> m_value; ///< exactly what the text stands for, nothing for a text that is no number
    std::optional<double> m_shown; ///< shown or accepted last
    double m_step = 0;             ///< 0 until the first nudge
    int m_wheelTurn = 0;
};

} // namespace lumoplot
