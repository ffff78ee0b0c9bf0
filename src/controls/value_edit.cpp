#include "controls/value_edit.h"

#include "controls/number_edit.h"
#include "controls/texts.h"
#include "support/number_text.h"

#include <QKeyEvent>
#include <QWheelEvent>
#include <cmath>
#include <limits>

namespace lumoplot {
namespace {

constexpr int kWheelNotch = 120;
constexpr int kPageSteps = 10;
constexpr double kFineStep = 0.1;
// Sums of steps are rounded to so many digits, which takes away what binary fractions add to 0.1 + 0.2.
constexpr int kExactDigits = 14;

double Rounded(double value, double step) {
    if (std::abs(value) < step * 1e-6) return 0;
    return ParseFloat(FormatGeneral(value, kExactDigits));
}

} // namespace

TValueEdit::TValueEdit(QWidget* parent) : QLineEdit(parent) {
    connect(this, &QLineEdit::textEdited, this, &TValueEdit::TakeText);
}

QString TValueEdit::TextOf(double value) const {
    if (m_integers) return QString::fromStdString(FormatFixed(value, 0));
    return QString::fromStdString(hasFocus() ? FormatShortest(value) : FormatGeneral(value, kShownDigits));
}

void TValueEdit::ShowValue(double value) {
    if (hasFocus() && m_value == value) return;
    m_value = m_shown = value;
    m_step = 0;
    ShowText();
}

void TValueEdit::ShowText() {
    setText(m_shown ? TextOf(*m_shown) : QString());
    setCursorPosition(0);
    MarkEdit(*this, {});
}

void TValueEdit::ShowNothing() {
    m_value.reset();
    m_shown.reset();
    m_step = 0;
    clear();
    MarkEdit(*this, {});
}

std::optional<double> TValueEdit::AllowedValue() {
    const std::optional<double> value =
        m_integers ? std::optional<double>(IntegerIn(*this)) : NumberIn(*this);
    if (!value) return std::nullopt;
    const bool allowed = std::isfinite(*value) && (!m_positive || *value > 0);
    if (allowed) return value;
    MarkEdit(*this, std::isfinite(*value) ? TTexts::tr("The number must be above 0")
                                          : TTexts::tr("The number must be finite"));
    return std::nullopt;
}

void TValueEdit::TakeText() {
    m_step = 0;
    m_value = AllowedValue();
    if (!m_value) return;
    m_shown = m_value;
    Q_EMIT ValueEdited(*m_value);
}

double TValueEdit::StepFor(double value) const {
    const double step = value == 0 ? 0.1 : std::pow(10, std::floor(std::log10(std::abs(value))) - 1);
    return m_integers ? std::max(1.0, step) : step;
}

void TValueEdit::Nudge(double steps) {
    if (!m_value || !isEnabled() || isReadOnly()) return;
    if (m_step == 0) m_step = StepFor(*m_value);
    double change = steps * m_step;
    if (m_integers && std::abs(change) < 1) change = std::copysign(1, change);
    // A number that has to stay above 0 nears it in ever smaller steps.
    while (m_positive && *m_value + change < std::abs(change) * 0.5 && std::abs(change) > 1e-300)
        change *= m_integers ? 0 : 0.1;
    const double value = Rounded(*m_value + change, m_positive ? 0 : m_step);
    const bool isTooLarge = m_integers && std::abs(value) > std::numeric_limits<int>::max();
    if (value == *m_value || !std::isfinite(value) || isTooLarge) return;
    m_value = m_shown = value;
    ShowText();
    Q_EMIT ValueEdited(value);
}

void TValueEdit::focusInEvent(QFocusEvent* event) {
    if (!isModified()) ShowText();
    QLineEdit::focusInEvent(event);
}

void TValueEdit::focusOutEvent(QFocusEvent* event) {
    QLineEdit::focusOutEvent(event);
    if (event->reason() == Qt::PopupFocusReason || event->reason() == Qt::ActiveWindowFocusReason) return;
    m_value = m_shown;
    ShowText();
}

void TValueEdit::keyPressEvent(QKeyEvent* event) {
    const double size = event->modifiers().testFlag(Qt::ShiftModifier) ? kFineStep : 1;
    switch (event->key()) {
    case Qt::Key_Up: return Nudge(size);
    case Qt::Key_Down: return Nudge(-size);
    case Qt::Key_PageUp: return Nudge(kPageSteps * size);
    case Qt::Key_PageDown: return Nudge(-kPageSteps * size);
    default: QLineEdit::keyPressEvent(event);
    }
}

void TValueEdit::wheelEvent(QWheelEvent* event) {
    if (!hasFocus()) return event->ignore();
    event->accept();
    m_wheelTurn += event->angleDelta().y() + event->angleDelta().x(); // Alt and Shift turn it on its side
    const int notches = m_wheelTurn / kWheelNotch;
    m_wheelTurn -= notches * kWheelNotch;
    if (notches != 0) Nudge(event->modifiers().testFlag(Qt::ShiftModifier) ? notches * kFineStep : notches);
}

} // namespace lumoplot
