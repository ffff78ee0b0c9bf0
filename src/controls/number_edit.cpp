#include "controls/number_edit.h"

#include "controls/mark_color.h"
#include "support/errors.h"
#include "support/number_text.h"
#include "support/typed_number.h"

#include <QFocusEvent>
#include <QLocale>
#include <QSignalBlocker>
#include <algorithm>
#include <cmath>
#include <utility>

namespace lumoplot {
namespace {

constexpr const char* kPlainToolTip = "plainToolTip";

std::string NoNumberText(const std::string& text) {
    return "'" + text + "' is not a valid floating point value";
}

double FiniteIn(const QLineEdit& edit) {
    const double value = ExactNumberIn(edit);
    if (!std::isfinite(value)) throw EConvertError(NoNumberText(edit.text().toStdString()));
    return value;
}

template <class TValue, class TParse>
std::optional<TValue> ValueIn(QLineEdit& edit, TParse parse) {
    const std::string text = edit.text().toStdString();
    try {
        const bool empty = text.empty() || text == ".";
        const std::optional<TValue> value = empty ? std::nullopt : std::optional<TValue>(parse(edit));
        MarkEdit(edit, {});
        return value;
    } catch (const EConvertError& error) {
        MarkEdit(edit, QString::fromUtf8(error.what()));
        return std::nullopt;
    }
}

bool IsMarked(const QLineEdit& edit) {
    return edit.property(kPlainToolTip).isValid();
}

void SetTextQuietly(QLineEdit& edit, const std::string& text) {
    const QSignalBlocker quiet(&edit);
    edit.setText(QString::fromStdString(text));
    edit.setCursorPosition(0);
}

constexpr const char* kShownNumber = "shownNumber";

/// The number of an edit: all of its digits while it is edited, some of them else.
class TShownNumber : public QObject {
public:
    explicit TShownNumber(QLineEdit& edit) : QObject(&edit), m_edit(edit) {
        setObjectName(QLatin1String(kShownNumber));
        edit.installEventFilter(this);
        connect(&edit, &QLineEdit::editingFinished, this, &TShownNumber::TakeText);
    }
    static TShownNumber* Find(const QLineEdit& edit) {
        return static_cast<TShownNumber*>(
            edit.findChild<QObject*>(QLatin1String(kShownNumber), Qt::FindDirectChildrenOnly));
    }

    void Show(double value, TNumberText text) {
        m_value = value;
        m_text = std::move(text);
        if (m_edit.hasFocus() && TypedNumber() == value) return;
        m_edit.setText(QString::fromStdString(ShownText()));
        m_edit.setCursorPosition(0);
        MarkEdit(m_edit, {});
    }
    /// The number while its text stands there as it was shown.
    std::optional<double> Untouched() const {
        return m_text && m_edit.text().toStdString() == ShownText() ? std::optional(m_value) : std::nullopt;
    }
    /// The edit shows something else now.
    void Forget() { m_text = nullptr; }

protected:
    bool eventFilter(QObject*, QEvent* event) override {
        const bool isMove = event->type() == QEvent::FocusIn || event->type() == QEvent::FocusOut;
        if (!isMove || !m_text || m_edit.isModified()) return false;
        const Qt::FocusReason reason = static_cast<QFocusEvent*>(event)->reason();
        if (reason != Qt::PopupFocusReason && reason != Qt::ActiveWindowFocusReason)
            SetTextQuietly(m_edit, ShownText());
        return false;
    }

private:
    std::string ShownText() const { return m_edit.hasFocus() ? FormatShortest(m_value) : m_text(m_value); }

    std::optional<double> TypedNumber() const {
        try {
            return ParseTyped(m_edit.text().toStdString());
        } catch (const EConvertError&) {
            return std::nullopt;
        }
    }
    void TakeText() {
        if (!m_text || !m_edit.isModified()) return;
        const QString text = m_edit.text();
        if (text.isEmpty() || text == QLatin1String(".") || IsMarked(m_edit)) {
            m_edit.setText(QString::fromStdString(FormatShortest(m_value))); // heard by who heard of the text
            MarkEdit(m_edit, {});
        } else if (const auto value = TypedNumber()) {
            m_value = *value;
        } else {
            return; // a word that stands for no number
        }
        SetTextQuietly(m_edit, ShownText());
    }

    QLineEdit& m_edit;
    double m_value = 0;
    TNumberText m_text;
};

} // namespace

double ParseTyped(const std::string& text) {
    const bool isSign = QLocale().decimalPoint() == QStringLiteral(",");
    return ParseTypedNumber(text, isSign ? TTypedComma::IsDecimalSign : TTypedComma::MayGroup);
}

void MarkEdit(QLineEdit& edit, const QString& reason) {
    const bool wasMarked = IsMarked(edit);
    if (reason.isEmpty() && !wasMarked) return;
    if (reason.isEmpty()) {
        edit.setToolTip(edit.property(kPlainToolTip).toString());
        edit.setProperty(kPlainToolTip, {});
        edit.setPalette({});
        return;
    }
    if (!wasMarked) edit.setProperty(kPlainToolTip, edit.toolTip());
    edit.setToolTip(reason);
    QPalette palette = edit.palette();
    if (!wasMarked) palette.setColor(QPalette::Base, FaultyBase());
    edit.setPalette(palette);
}

double ExactNumberIn(const QLineEdit& edit) {
    const TShownNumber* shown = TShownNumber::Find(edit);
    const auto number = shown ? shown->Untouched() : std::nullopt;
    return number ? *number : ParseTyped(edit.text().toStdString());
}

std::optional<double> NumberIn(QLineEdit& edit) {
    return ValueIn<double>(edit, &FiniteIn);
}

std::optional<int> IntegerIn(QLineEdit& edit) {
    return ValueIn<int>(edit, [](const QLineEdit& e) { return ParseInteger(e.text().toStdString()); });
}

std::optional<double> FiniteNumberIn(QLineEdit& edit) {
    try {
        const double value = FiniteIn(edit);
        MarkEdit(edit, {});
        return value;
    } catch (const EConvertError& error) {
        MarkEdit(edit, QString::fromUtf8(error.what()));
        return std::nullopt;
    }
}

void ShowNumber(QLineEdit& edit, double value, int digits) {
    ShowNumber(edit, value, [digits](double number) { return FormatGeneral(number, digits); });
}

void ShowNumber(QLineEdit& edit, double value, TNumberText text) {
    TShownNumber* shown = TShownNumber::Find(edit);
    (shown ? shown : new TShownNumber(edit))->Show(value, std::move(text));
}

void ShowNumberText(QLineEdit& edit, const std::string& text) {
    if (TShownNumber* shown = TShownNumber::Find(edit)) shown->Forget();
    edit.setText(QString::fromStdString(text));
    edit.setCursorPosition(0);
    MarkEdit(edit, {});
}

void ShowInteger(QSpinBox& edit, int value) {
    const QSignalBlocker quiet(&edit);
    edit.setRange(std::min(edit.minimum(), value), std::max(edit.maximum(), value));
    edit.setValue(value);
}

void ShowText(QLineEdit& edit, const std::string& text) {
    const QString shown = QString::fromStdString(text);
    if (edit.text() == shown) return;
    edit.setText(shown);
    edit.setCursorPosition(0);
}

} // namespace lumoplot
