// A button that shows a colour and opens the colour dialog to change it.
#pragma once

#include "support/look.h"

#include <QPushButton>

namespace lumoplot {

class TColorButton : public QPushButton {
    Q_OBJECT

public:
    explicit TColorButton(QWidget* parent = nullptr);

    TColor Color() const { return m_color; }
    /// Shows another colour; ColorPicked is not emitted.
    void SetColor(TColor color);

    QSize sizeHint() const override;

Q_SIGNALS:
    /// The user has chosen another colour.
    void ColorPicked(lumoplot::TColor color);

protected:
    void paintEvent(QPaintEvent* event) override;

private:
    void PickColor();

    TColor m_color = kBlack;
};

} // namespace lumoplot
