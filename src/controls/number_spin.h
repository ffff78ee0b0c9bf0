// A spin box that reads what is typed as every other edit of a number does: the point is the decimal sign,
// the comma is one too, but a comma before exactly three digits marks the text, which names both readings and
// is not taken.
#pragma once

#include "controls/number_edit.h"
#include "support/errors.h"

#include <QDoubleSpinBox>
#include <cmath>

namespace lumoplot {

class TNumberSpin : public QDoubleSpinBox {
public:
    explicit TNumberSpin(QWidget* parent = nullptr) : QDoubleSpinBox(parent) {
        setKeyboardTracking(false); // the beginning of a number is another one
        connect(this, &QDoubleSpinBox::editingFinished, this, [this] { MarkEdit(*lineEdit(), {}); });
    }

protected:
    /// The base would leave out a comma.
    void fixup(QString&) const override {}
    // A text that is not taken may become one, and gives way to the last number when the box is left.
    QValidator::State validate(QString& input, int&) const override {
        try {
            const double number = ParseTyped(NumberOf(input));
            MarkEdit(*lineEdit(), {});
            const bool isOffered = std::isfinite(number) && number >= minimum() && number <= maximum();
            return isOffered ? QValidator::Acceptable : QValidator::Intermediate;
        } catch (const EConvertError& error) {
            MarkEdit(*lineEdit(), NumberOf(input).empty() ? QString() : QString::fromUtf8(error.what()));
            return QValidator::Intermediate;
        }
    }
    double valueFromText(const QString& text) const override {
        try {
            return ParseTyped(NumberOf(text));
        } catch (const EConvertError&) {
            return value();
        }
    }

private:
    /// The text without prefix and suffix.
    std::string NumberOf(QString text) const {
        if (!prefix().isEmpty() && text.startsWith(prefix())) text.remove(0, prefix().size());
        if (!suffix().isEmpty() && text.endsWith(suffix())) text.chop(suffix().size());
        return text.trimmed().toStdString();
    }
};

} // namespace lumoplot
