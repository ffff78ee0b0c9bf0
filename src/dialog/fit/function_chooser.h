// The window to choose a ready function in: groups, a picture of each, a search, and what the function is
// for.
#pragma once

#include "fit/functions/ready_functions.h"

#include <QDialog>
#include <memory>

class QListWidgetItem;

namespace Ui {
class TFunctionChooser;
}

namespace lumoplot {

class TFunctionChooser : public QDialog {
    Q_OBJECT

public:
    explicit TFunctionChooser(QWidget* parent = nullptr);
    ~TFunctionChooser() override;

    /// The chosen one, or null.
    const TReadyFunction* Chosen() const;
    /// Its start values are to be found from the data.
    bool FindsStart() const;

protected:
    bool eventFilter(QObject* watched, QEvent* event) override;
    void changeEvent(QEvent* event) override;

private:
    void FillGroups();
    void FillFunctions();
    bool IsSought(const TReadyFunction& function) const;
    void ShowAbout();

    std::unique_ptr<Ui::TFunctionChooser> m_ui;
};

/// The course of the function with its typical values, in the colours of the palette.
QPixmap FunctionPicture(const TReadyFunction& function, QSize size, double pixelRatio,
                        const QPalette& palette);

} // namespace lumoplot
