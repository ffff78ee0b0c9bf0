#include "controls/number_edit.h"

#include "controls/mark_color.h"
#include "support/errors.h"
#include "support/number_text.h"

#include <QLocale>
#include <QSignalBlocker>
#include <algorithm>
#include <cmath>

namespace lumoplot {
namespace {

constexpr const char* kPlainToolTip = "plainToolTip";

std::string NoNumberText(const std::string& text) {
    return "'" + text + "' is not a valid floating point value";
}

double ParseFinite(const std::string& text) {
    const double value = ParseTyped(text);
    if (!std::isfinite(value)) throw EConvertError(NoNumberText(text));
    return value;
}

/// Where the only comma stands, when exactly three digits follow it.
std::optional<std::size_t> GroupingComma(const std::string& text) {
    const std::size_t comma = text.find(',');
    if (comma == std::string::npos || text.find(',', comma + 1) != std::string::npos) return std::nullopt;
    const std::size_t end = std::min(text.find_first_not_of("0123456789", comma + 1), text.size());
    return end - comma == 4 ? std::optional(comma) : std::nullopt;
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

double ParseTyped(const std::string& text) {
    const double value = ParseFloat(text);
    const auto comma = GroupingComma(text);
    if (!comma || QLocale().decimalPoint() == QStringLiteral(",")) return value;
    std::string whole(Trimmed(text));
    whole.erase(whole.find(','), 1);
    throw EConvertError("'" + text + "' can be " + whole + " or " + FormatShortest(value) +
                        ": leave the comma out or write a point");
}

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
    try {
        const double value = ParseFinite(edit.text().toStdString());
        MarkEdit(edit, {});
        return value;
    } catch (const EConvertError& error) {
        MarkEdit(edit, QString::fromUtf8(error.what()));
        return std::nullopt;
    }
}

void ShowNumber(QLineEdit& edit, double value) {
    ShowNumberText(edit, FormatGeneral(value, kShownDigits));
}

void ShowNumberText(QLineEdit& edit, const std::string& text) {
    edit.setText(QString::fromStdString(text));
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
