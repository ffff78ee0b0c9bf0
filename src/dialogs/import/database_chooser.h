// Chooses a table (or a SELECT of the user's own) of a database and its X and Y columns, with the first rows
// to look at. It chooses only; who shows it loads the points.
#pragma once

#include "controls/widgets_export.h"
#include "data/series/ds_info.h"

#include <QDialog>
#include <functional>
#include <memory>
#include <optional>

class QPushButton;

namespace Ui {
class TDatabaseChooser;
}

namespace lumoplot {

struct TDatabasePreview;

class TDatabaseChooser : public QDialog {
    Q_OBJECT

public:
    /// Starts with what `current` describes where that is a database, else with `connection` (a file or an
    /// address; empty for none).
    XYWIDGETS_EXPORT explicit TDatabaseChooser(const TDSInfo& current, const QString& connection,
                                               QWidget* parent = nullptr);
    XYWIDGETS_EXPORT ~TDatabaseChooser() override;

    /// The description: that which it began with, of what was chosen.
    XYWIDGETS_EXPORT TDSInfo Source() const;
    /// A name for the data set: that of the table or of the Y column.
    XYWIDGETS_EXPORT QString Name() const;

    /// While the database is waited for, that ends instead.
    void reject() override;

protected:
    void keyPressEvent(QKeyEvent* event) override;
    void showEvent(QShowEvent* event) override;

private:
    void ConnectControls();
    void ListConnections();
    void ConnectionPicked();
    void ChooseFile();
    void ChooseServer();
    void SaveAs();
    void Forget();
    void Connect();
    void ShowPreview();
    void FillColumns(const TDatabasePreview& preview);
    void FillRows(const TDatabasePreview& preview);
    void ShowProblem(const QString& problem);
    void EnableControls();
    /// Lets events go on until that is so; false when the user has stopped waiting.
    bool Wait(const std::function<bool()>& isDone);
    template <class T>
    std::optional<T> Await(std::function<T()> work);
    QString Connection() const;

    std::unique_ptr<Ui::TDatabaseChooser> m_ui;
    TDSInfo m_source;
    QString m_connected; ///< the connection whose tables are listed
    bool m_isFilling = false;
    bool m_isWaiting = false; ///< for the database, in the other thread
    bool m_isStopped = false;
    QPushButton* m_stop = nullptr;
};

} // namespace lumoplot
