#include "host/screen_shots.h"

#include "host/main_window.h"
#include "support/errors.h"
#include "support/replace_file.h"

#include <QApplication>
#include <QBuffer>
#include <QDialog>
#include <QDir>
#include <QTabWidget>
#include <QTimer>

namespace lumoplot {
namespace {

class TShots {
public:
    explicit TShots(const QString& folder) : m_folder(folder) {
        if (!m_folder.mkpath(QStringLiteral(".")))
            throw EFileError("Can not make the folder " + folder.toStdString());
    }

    const QStringList& Files() const { return m_files; }

    void Save(QWidget& widget, const QString& name) {
        QByteArray bytes;
        QBuffer buffer(&bytes);
        buffer.open(QIODevice::WriteOnly);
        widget.grab().save(&buffer, "PNG");
        const QString fileName = m_folder.absoluteFilePath(name + QStringLiteral(".png"));
        ReplaceFile(fileName.toStdString(), {reinterpret_cast<const std::uint8_t*>(bytes.constData()),
                                             static_cast<std::size_t>(bytes.size())});
        m_files.append(fileName);
    }

private:
    QDir m_folder;
    QStringList m_files;
};

/// Each page of the dialog that can be reached, or the dialog as it is when it has none.
void SavePages(TShots& shots, QWidget& dialog) {
    auto* tabs = dialog.findChild<QTabWidget*>();
    const int pages = tabs ? tabs->count() : 0;
    for (int page = 0; page < std::max(pages, 1); ++page) {
        if (tabs && !tabs->isTabEnabled(page)) continue;
        if (tabs) tabs->setCurrentIndex(page);
        QApplication::processEvents();
        const QString name = QStringLiteral("editor");
        shots.Save(dialog, page == 0 ? name : QStringLiteral("%1-%2").arg(name).arg(page + 1));
    }
}

/// Runs inside the event loop of the editor: pictures it and closes what is open, so that its call returns.
class TEditorWatcher : public QObject {
public:
    explicit TEditorWatcher(TShots& shots) : m_shots(shots) {
        connect(&m_timer, &QTimer::timeout, this, &TEditorWatcher::Look);
        m_timer.start(300);
    }

    void ThrowError() const {
        if (m_error) std::rethrow_exception(m_error);
    }

private:
    void Look() {
        auto* dialog = qobject_cast<QDialog*>(QApplication::activeModalWidget());
        if (!dialog || m_looking) return;
        m_looking = true;
        try {
            SavePages(m_shots, *dialog);
        } catch (...) {
            m_error = std::current_exception();
        }
        m_looking = false;
        dialog->reject();
    }

    TShots& m_shots;
    QTimer m_timer;
    bool m_looking = false;
    std::exception_ptr m_error;
};

} // namespace

QStringList SaveScreenShots(TMainWindow& window, const QString& folder) {
    TShots shots(folder);
    window.show();
    QApplication::processEvents();
    shots.Save(window.Graph(), QStringLiteral("plot"));
    shots.Save(window, QStringLiteral("window"));
    {
        const TEditorWatcher watcher(shots);
        window.EditData();
        watcher.ThrowError();
    }
    return shots.Files();
}

} // namespace lumoplot
