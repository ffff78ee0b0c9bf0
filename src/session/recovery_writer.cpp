#include "session/recovery_writer.h"

#include "data/series/ds_info.h"
#include "support/errors.h"
#include "support/replace_file.h"

#include <QCryptographicHash>
#include <QFile>
#include <QGuiApplication>
#include <QLocale>
#include <algorithm>
#include <mutex>

namespace lumoplot {
namespace {

const QString kEditorKind = QStringLiteral("editor_");

QString ThisProgram() {
    const QByteArray name = QCoreApplication::applicationName().toUtf8();
    return QString::fromLatin1(QCryptographicHash::hash(name, QCryptographicHash::Sha256).toHex().left(8));
}

bool HasUnsaved(const TGraphSession& session) {
    return !session.IsClean() || session.IsTyping();
}

} // namespace

QString RecoveryKind(const TxyGraph& graph, const std::string& name) {
    QCryptographicHash hash(QCryptographicHash::Sha256);
    const auto add = [&hash](const std::string& text) {
        hash.addData(QByteArray::number(static_cast<qulonglong>(text.size())) + ' ' +
                     QByteArray::fromStdString(text));
    };
    add(name);
    add(graph.Appearance()->GraphTitle());
    for (const auto& series : graph.Series()) {
        add(series->SeriesName());
        add(series->DataSourceInfo().SourceName());
    }
    return kEditorKind + ThisProgram() + QLatin1Char('_') +
           QString::fromLatin1(hash.result().toHex().left(16));
}

QString EditorKinds() {
    return kEditorKind + ThisProgram() + QStringLiteral("_*");
}

bool IsOfEditor(const TLeftSession& session) {
    return session.Kind().startsWith(kEditorKind);
}

/// The content that is written and waits for the disk: only the latest is worth the wait.
class TRecoveryWriter::TOnTheWay {
public:
    explicit TOnTheWay(std::string file) : m_file(std::move(file)) {}

    void Write(std::span<const std::uint8_t> bytes) {
        const std::string passed = Exchange(WriteBeside(m_file, bytes));
        if (!passed.empty()) QFile::remove(QString::fromStdString(passed));
    }
    /// False when it is there already.
    bool PutLatestInPlace() {
        const std::string beside = Exchange({});
        if (!beside.empty()) PutInPlace(beside, m_file);
        return !beside.empty();
    }
    void Remove() {
        for (const std::string& file : {Exchange({}), m_file})
            if (!file.empty()) QFile::remove(QString::fromStdString(file));
    }

private:
    std::string Exchange(std::string beside) {
        const std::scoped_lock lock(m_mutex);
        return std::exchange(m_beside, std::move(beside));
    }

    const std::string m_file;
    std::mutex m_mutex;
    std::string m_beside; ///< written, and not yet taken to be put in place
};

TRecoveryWriter::TRecoveryWriter(TGraphSession& session, TRecoveryOptions options, QObject* parent)
    : QObject(parent), m_session(session), m_options(std::move(options)) {
    m_writing.setMaxThreadCount(1);
    m_disk.setMaxThreadCount(1);
    m_timer.setSingleShot(true);
    connect(&m_timer, &QTimer::timeout, this, &TRecoveryWriter::Write);
    connect(&session, &TGraphSession::Changed, this, &TRecoveryWriter::OnChanged);
    connect(&session, &TGraphSession::Grown, this, &TRecoveryWriter::OnChanged);
    connect(&session, &TGraphSession::Typed, this, &TRecoveryWriter::OnChanged);
    OnChanged();
}

TRecoveryWriter::~TRecoveryWriter() {
    Remove();
    m_writing.waitForDone();
    m_disk.waitForDone();
}

void TRecoveryWriter::Continue(std::unique_ptr<TLeftSession> left) {
    m_left = std::move(left);
    OnChanged();
}

void TRecoveryWriter::Flush() {
    m_writing.waitForDone();
    if (m_timer.isActive() || m_isDue) Write();
    m_writing.waitForDone();
    m_disk.waitForDone();
}

/// Between the starts of two writings: a step that just misses one is written by the next in time, also when
/// that takes five times as long, as on a processor that others keep busy. Half of the time nothing is
/// written.
qint64 TRecoveryWriter::PauseMs() const {
    const qint64 earlier = std::max<qint64>(m_options.IntervalMs / 5, 5 * m_writingMs);
    const qint64 least = std::min<qint64>(2 * m_writingMs, m_options.IntervalMs / 2);
    return std::max<qint64>(m_options.IntervalMs - earlier, least);
}

// The first step after a while is written at once; those that follow wait until the pause is over.
void TRecoveryWriter::OnChanged() {
    if (!HasUnsaved(m_session)) return Remove();
    if (m_timer.isActive()) return;
    const qint64 passed = m_sinceWriting.isValid() ? m_sinceWriting.elapsed() : PauseMs();
    m_timer.start(static_cast<int>(std::clamp<qint64>(PauseMs() - passed, 0, m_options.IntervalMs)));
}

void TRecoveryWriter::Write() {
    m_timer.stop();
    m_isDue = m_writing.activeThreadCount() > 0;
    if (m_isDue) return;
    try {
        if (!m_place) m_place = std::make_unique<TRecoveryPlace>(m_options.Folder, m_options.Kind);
    } catch (const EFileError& error) {
        return TellFailure(QString::fromUtf8(error.what()));
    }
    if (!m_onTheWay) m_onTheWay = std::make_shared<TOnTheWay>(m_place->FileName().toStdString());
    m_sinceWriting.start();
    m_hasFile = true;
    const auto graph = m_session.Snapshot();
    m_writing.start([this, graph, beside = m_session.Side(), info = Info(*graph), left = m_left] {
        QElapsedTimer clock;
        clock.start();
        Attempt([&] { m_onTheWay->Write(RecoveryBytes(info, *graph, beside)); });
        m_disk.start([this, left] {
            Attempt([&] {
                if (!m_onTheWay->PutLatestInPlace()) return;
                if (left) left->Discard();
                QMetaObject::invokeMethod(this, &TRecoveryWriter::Written);
            });
        });
        QMetaObject::invokeMethod(this, [this, ms = clock.elapsed()] { WritingEnded(ms); });
    });
}

void TRecoveryWriter::WritingEnded(qint64 tookMs) {
    m_writingMs = tookMs;
    if (std::exchange(m_isDue, false) && HasUnsaved(m_session)) Write();
}

void TRecoveryWriter::Remove() {
    m_timer.stop();
    m_isDue = false;
    if (!std::exchange(m_hasFile, false) && !m_left) return;
    m_writing.start([this, onTheWay = m_onTheWay, left = std::exchange(m_left, nullptr)] {
        m_disk.start([onTheWay, left] {
            if (onTheWay) onTheWay->Remove();
            if (left) left->Discard();
        });
    });
}

/// For the other threads.
void TRecoveryWriter::Attempt(const std::function<void()>& work) {
    try {
        work();
    } catch (const std::exception& error) {
        const QString text = QString::fromUtf8(error.what());
        QMetaObject::invokeMethod(this, [this, text] { TellFailure(text); });
    }
}

TRecoveryInfo TRecoveryWriter::Info(const TGraphSnapshot& graph) const {
    TRecoveryInfo info;
    info.Program = QGuiApplication::applicationDisplayName();
    info.DocumentName = m_options.DocumentName;
    info.Written = QDateTime::currentDateTime();
    info.StepCount = m_session.UnsavedSteps();
    info.LastStep = QString::fromStdString(m_session.LastStepName());
    for (const TSeriesState& series : graph.Series())
        info.DataSets.append(tr("%1 (%2 points)")
                                 .arg(QString::fromStdString(series.Name),
                                      QLocale().toString(static_cast<qlonglong>(series.Points->Count()))));
    return info;
}

void TRecoveryWriter::TellFailure(const QString& text) {
    if (!std::exchange(m_hasFailed, true)) Q_EMIT Failed(text);
}

} // namespace lumoplot
