// The dialog that gives the points of a data set new Y values from a formula. While the formula is typed it
// shows the first values; what is wrong with it stands below it.
#pragma once

#include "controls/widgets_export.h"
#include "graph/model/set_values.h"

#include <QDialog>
#include <QElapsedTimer>
#include <memory>

namespace Ui {
class Txy_SetValues;
}

namespace lumoplot {

class Txy_SetValues : public QDialog {
    Q_OBJECT

public:
    static constexpr int kPreviewRows = 50;

    explicit Txy_SetValues(TSeries& series, QWidget* parent = nullptr);
    ~Txy_SetValues() override;

    /// Sets the values when the formula and the range are good and a sourced data set may be edited, which is
    /// asked; else stays open, and nothing has changed.
    void accept() override;

private:
    void ConnectControls();
    void ListVariables();
    void ShowFirstValues();
    void ShowValuesOf(const std::string& formula);
    void ShowProblem(const QString& text);
    void ShowHint(const std::string& formula);
    void OfferRewriting(const std::string& caption, const std::string& formula);
    void FillTable(const TNewValues& values);
    void InsertVariable(const QString& entry);
    /// The range of X, nothing for all points. Throws EConvertError.
    std::optional<TXRange> Range() const;

    TSeries& m_series;
    std::unique_ptr<Ui::Txy_SetValues> m_ui;
    QString m_rewritten; ///< the formula as it was probably meant
    QElapsedTimer m_lastInserted;
    QString m_lastVariable;
};

/// Shows the dialog. True when values were set; a sourced data set is manual then.
XYWIDGETS_EXPORT bool SetValuesOf(TSeries& series, QWidget* window);

} // namespace lumoplot
