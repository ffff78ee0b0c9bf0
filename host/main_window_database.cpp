// Opening databases from the main window.
#include "data/series/ds_info.h"
#include "dialogs/import/database_chooser.h"
#include "dialogs/messages/progress_window.h"
#include "host/files/recent_files.h"
#include "host/main_window.h"

#include <QFileInfo>
#include <optional>

namespace lumoplot {
namespace {

struct TDatabaseChoice {
    TDSInfo source;
    QString name;
};

std::optional<TDatabaseChoice> AskForTable(const QString& connection, QWidget* parent) {
    TDatabaseChooser chooser(TDSInfo(), connection, parent);
    if (chooser.exec() != QDialog::Accepted) return std::nullopt;
    return TDatabaseChoice{chooser.Source(), chooser.Name()};
}

TDatabaseChoice OnlyTable(const QString& connection) {
    TDatabaseChoice choice{{}, QFileInfo(connection).completeBaseName()};
    choice.source.SetKind(TSourceKind::Database);
    choice.source.SetDatabase({connection.toStdString(), {}, {}, {}});
    return choice;
}

} // namespace

void TMainWindow::OpenDatabase(const QString& connection, TAsking asking) {
    const QString place =
        QFileInfo::exists(connection) ? QFileInfo(connection).absoluteFilePath() : connection;
    const auto choice = asking == TAsking::Allowed ? AskForTable(place, this) : OnlyTable(place);
    if (!choice) return;
    const bool added = Change(tr("load %1").arg(choice->name), [&] {
        TProgressWindow progress;
        m_dataFiles->AddDatabase(choice->source, choice->name.toStdString(), progress);
    });
    m_dataFiles->TellNotes();
    const QString file = QString::fromStdString(choice->source.Database().connection);
    if (added && QFileInfo::exists(file)) m_recentFiles->Add(file);
}

} // namespace lumoplot
