// The settings of one axis as a form. Filled from an axis, it says what is wrong with its texts before
// anything is written back.
#pragma once

#include <QWidget>
#include <memory>

namespace Ui {
class AxisForm;
}

namespace lumoplot {

class TAxis;

class TAxisForm : public QWidget {
    Q_OBJECT

public:
    explicit TAxisForm(QWidget* parent = nullptr);
    ~TAxisForm() override;

    void Fill(const TAxis& axis);
    /// Throws EConvertError for a text that is no number and EScaleError for a range that an axis can not
    /// have.
    void Check() const;
    /// Writes everything to the axis. Check has passed.
    void Store(TAxis& axis) const;

private:
    std::unique_ptr<Ui::AxisForm> m_ui;
};

} // namespace lumoplot
