#include "controls/number_edit.h"

#include "controls/mark_color.h"
#include "support/errors.h"
#include "support/number_text.h"

#include <cmath>

namespace lumoplot {
namespace {

constexpr const char* kPlainToolTip = "plainToolTip";

std::string NoNumberText(const std::string& text) {
    return "'" + text + "' is not a valid floating point value";
}

double ParseFinite(const std::string& text) {
    const std::optional<double> value = TryParseFloat(text);
    if (!value || !std::isfinite(*value)) throw EConvertError(NoNumberText(text));
    return *value;
}

template <class TValue, class TParse>
std::optional<TValue> ValueIn(QLineEdit& edit, TParse parse) {
    const std::string text = edit.text().toStdString();
    try {
        const bool empty = text.empty() || text == ".";
        const std::optional<TValue> value = empty ? std::nullopt : std::optional<TValue>(parse(text));
        MarkEdit(edit, {});
        return value;
    } catch (const EConvertError& error) {
        MarkEdit(edit, QString::fromUtf8(error.what()));
        return std::nullopt;
    }
}

} // namespace

void MarkEdit(QLineEdit& edit, const QString& reason) {
    const bool wasMarked = edit.property(kPlainToolTip).isValid();
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

std::optional<double> NumberIn(QLineEdit& edit) {
    return ValueIn<double>(edit, &ParseFinite);
}

std::optional<int> IntegerIn(QLineEdit& edit) {
    return ValueIn<int>(edit, [](const std::string& text) { return ParseInteger(text); });
}

std::optional<double> FiniteNumberIn(QLineEdit& edit) {
    const std::string text = edit.text().toStdString();
    const std::optional<double> value = TryParseFloat(text);
    const bool isFinite = value && std::isfinite(*value);
    MarkEdit(edit, isFinite ? QString() : QString::fromStdString(NoNumberText(text)));
    return isFinite ? value : std::nullopt;
}

void ShowNumber(QLineEdit& edit, double value) {
    ShowNumberText(edit, FormatGeneral(value, kShownDigits));
}

void ShowNumberText(QLineEdit& edit, const std::string& text) {
    edit.setText(QString::fromStdString(text));
    MarkEdit(edit, {});
}

void ShowText(QLineEdit& edit, const std::string& text) {
    const QString shown = QString::fromStdString(text);
    if (edit.text() == shown) return;
    edit.setText(shown);
    edit.setCursorPosition(0);
}

} // namespace lumoplot
