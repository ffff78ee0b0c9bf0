#include "session/recovery_writer.h"

#include "data/series/ds_info.h"
#include "support/errors.h"
#include "support/replace_file.h"

#include <QCryptographicHash>
#include <QFile>
#include <QGuiApplication>
#include <QLocale>
#include <algorithm>

namespace lumoplot {

QString RecoveryKind(const TxyGraph& graph, const std::string& name) {
    QCryptographicHash hash(QCryptographicHash::Sha256);
    const auto add = [&hash](const std::string& text) {
        hash.addData(QByteArray::number(static_cast<qulonglong>(text.size())) + ' ' +
                     QByteArray::fromStdString(text));
    };
    add(QCoreApplication::applicationName().toStdString());
    add(name);
    add(graph.Appearance()->GraphTitle());
    for (const auto& series : graph.Series()) {
        add(series->SeriesName());
        add(series->DataSourceInfo().SourceName());
    }
    return QStringLiteral("editor_") + QString::fromLatin1(hash.result().toHex().left(16));
}

TRecoveryWriter::TRecoveryWriter(TGraphSession& session, TRecoveryOptions options, QObject* parent)
    : QObject(parent), m_session(session), m_options(std::move(options)) {
    m_thread.setMaxThreadCount(1);
    m_timer.setSingleShot(true);
    connect(&m_timer, &QTimer::timeout, this, &TRecoveryWriter::Write);
    connect(&session, &TGraphSession::Changed, this, &TRecoveryWriter::OnChanged);
    OnChanged();
}

TRecoveryWriter::~TRecoveryWriter() {
    Remove();
    m_thread.waitForDone();
}

void TRecoveryWriter::Continue(std::unique_ptr<TLeftSession> left) {
    m_left = std::move(left);
    OnChanged();
}

void TRecoveryWriter::Flush() {
    m_thread.waitForDone();
    if (m_timer.isActive()) Write();
    m_thread.waitForDone();
}

// The first step after a while is written at once; those that follow wait until the interval is over.
void TRecoveryWriter::OnChanged() {
    if (m_session.IsClean()) return Remove();
    if (m_timer.isActive()) return;
    const qint64 passed = m_sinceWriting.isValid() ? m_sinceWriting.elapsed() : m_options.IntervalMs;
    m_timer.start(
        static_cast<int>(std::clamp<qint64>(m_options.IntervalMs - passed, 0, m_options.IntervalMs)));
}

void TRecoveryWriter::Write() {
    m_timer.stop();
    if (m_thread.activeThreadCount() > 0) return m_timer.start(m_options.IntervalMs / 10 + 1);
    const std::shared_ptr<const TGraphSnapshot> graph = m_session.Snapshot();
    try {
        if (!m_place) m_place = std::make_unique<TRecoveryPlace>(m_options.Folder, m_options.Kind);
    } catch (const EFileError& error) {
        return TellFailure(QString::fromUtf8(error.what()));
    }
    m_sinceWriting.start();
    m_hasFile = true;
    m_thread.start([this, graph, info = Info(*graph), file = m_place->FileName(), left = m_left] {
        try {
            ReplaceFile(file.toStdString(), RecoveryBytes(info, *graph));
            if (left) left->Discard();
            QMetaObject::invokeMethod(this, &TRecoveryWriter::Written);
        } catch (const std::exception& error) {
            const QString text = QString::fromUtf8(error.what());
            QMetaObject::invokeMethod(this, [this, text] { TellFailure(text); });
        }
    });
}

void TRecoveryWriter::Remove() {
    m_timer.stop();
    if (!std::exchange(m_hasFile, false) && !m_left) return;
    const QString file = m_place ? m_place->FileName() : QString();
    m_thread.start([file, left = std::exchange(m_left, nullptr)] {
        if (!file.isEmpty()) QFile::remove(file);
        if (left) left->Discard();
    });
}

TRecoveryInfo TRecoveryWriter::Info(const TGraphSnapshot& graph) const {
    TRecoveryInfo info;
    info.Program = QGuiApplication::applicationDisplayName();
    info.DocumentName = m_options.DocumentName;
    info.Written = QDateTime::currentDateTime();
    info.StepCount = m_session.UnsavedSteps();
    info.LastStep = QString::fromStdString(m_session.UndoName());
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
