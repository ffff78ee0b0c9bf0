// The part of the Data Source page for data that are entered by hand: the grid and its buttons.
#pragma once

#include "dialog/common/wizard_page.h"
#include "dialog/manual/manual_points_model.h"

#include <memory>

namespace Ui {
class TManualPanel;
}

namespace lumoplot {

class TManualPanel : public QWidget {
    Q_OBJECT

public:
    explicit TManualPanel(TWizardContext& context, QWidget* parent = nullptr);
    ~TManualPanel() override;

    /// Shows the data set's points. Uncommitted edits of the same data set stay.
    void FillFrom(TSeries& series);
    /// Shows nothing and drops all edits.
    void Clear();
    /// Writes the edits into the data set that is shown. On EManualCell, which is passed on, the cell at
    /// fault becomes current. False when nothing was written because of rows with equal X.
    bool Commit(TEqualX equalX);
    /// Shows rows that were pending in a session that has ended, with their data set. Throws EStreamError for
    /// bytes that are none.
    void RestoreRows(std::span<const std::uint8_t> rows);

private:
    void ConnectControls();
    void JoinSession();
    void PutBack(const TPendingRows* pending);
    void SetValues();
    void ShowState();

    TWizardContext& m_context;
    std::unique_ptr<Ui::TManualPanel> m_ui;
    TManualPointsModel& m_points;
};

} // namespace lumoplot
