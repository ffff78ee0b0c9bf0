// Offers what sessions have left that ended without saving: "Recover / Discard". It shows when each was
// written, of which file, its data sets and steps, and a picture. A file that can not be read says so, and
// stays until the user discards it or keeps it aside.
#pragma once

#include "controls/widgets_export.h"
#include "session/recovery_folder.h"

#include <QDialog>
#include <memory>
#include <optional>

namespace Ui {
class RecoveryDialog;
}

namespace lumoplot {

/// A session that the user wants to go on with. TRecoveryWriter::Continue takes its file.
struct TRecoveredSession {
    std::unique_ptr<TLeftSession> File;
    TRecoveryInfo Info;
    std::unique_ptr<TxyGraph> Graph;
};

class TRecoveryDialog : public QDialog {
    Q_OBJECT

public:
    /// At least one session.
    explicit TRecoveryDialog(TLeftSessions sessions, QWidget* parent = nullptr);
    ~TRecoveryDialog() override;

    /// The session that the user has chosen; nothing when the dialog was left otherwise.
    std::optional<TRecoveredSession> Take();

protected:
    void resizeEvent(QResizeEvent* event) override;

private:
    struct TEntry;

    void AddSessions(TLeftSessions sessions);
    TEntry* Current() const;
    void Show();
    void ShowPicture();
    void OnDiscard();
    void OnSetAside();
    void DropCurrent();

    std::unique_ptr<Ui::RecoveryDialog> m_ui;
    std::vector<std::unique_ptr<TEntry>> m_entries; ///< in the order of the list
};

/// Asks when there are left sessions of those kinds in the folder (session/recovery_folder.h). What is to be
/// recovered, or nothing when there are none or the user wants none. Nothing is loaded without asking.
XYWIDGETS_EXPORT std::optional<TRecoveredSession> OfferRecovery(const QString& folder,
                                                                const QStringList& kinds, QWidget* window);

} // namespace lumoplot
