// Gives other data sets the look of one: which of them, and what of the look.
#pragma once

#include "graph/model/series.h"

#include <QDialog>

class QCheckBox;
class QListWidget;
class QPushButton;

namespace lumoplot {

class TStyleChoice : public QDialog {
    Q_OBJECT

public:
    /// Offers the other data sets of the graph; none is chosen.
    explicit TStyleChoice(TSeries& series, QWidget* parent = nullptr);

    /// How many data sets are chosen.
    int Chosen() const;
    /// Gives the chosen ones what is ticked.
    void Apply();

private:
    void AddControls();
    void ShowChoice();
    void CopyTo(TSeries& other) const;

    TSeries& m_series;
    QListWidget* m_list = nullptr;
    QCheckBox* m_points = nullptr;
    QCheckBox* m_lines = nullptr;
    QCheckBox* m_colors = nullptr;
    QPushButton* m_ok = nullptr;
};

} // namespace lumoplot
