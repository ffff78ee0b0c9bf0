#include "dialogs/recovery/recovery_dialog.h"

#include "controls/model_texts.h"
#include "controls/return_key.h"
#include "dialogs/manual_window.h"
#include "dialogs/messages/window_place.h"
#include "fit/definition/cur_fit.h"
#include "graph/drawing/picture/drawing.h"
#include "session/recovery_writer.h"
#include "support/message_sink.h"
#include "support/message_text.h"
#include "ui_recovery_dialog.h"

#include <QDir>
#include <QFileInfo>
#include <QLayout>
#include <QLocale>
#include <QPainter>

namespace lumoplot {
namespace {

constexpr QSize kPictureUnits(640, 400); // in which the graph is drawn
constexpr QSize kWholeSize(560, 440);    // of the window, where the screen has the room

/// Does not run the pending fits of a graph while it lives: nobody waits for a picture.
class TFitsAsTheyAre {
public:
    explicit TFitsAsTheyAre(TxyGraph& graph) {
        for (const auto& series : graph.Series()) {
            if (!series->CurveFit().IsPending()) continue;
            TFitRunState state = series->CurveFit().RunState();
            m_states.emplace_back(series, state);
            state.Held = true;
            series->CurveFit().RestoreRunState(state);
        }
    }
    ~TFitsAsTheyAre() {
        for (const auto& [series, state] : m_states) series->CurveFit().RestoreRunState(state);
    }
    TFitsAsTheyAre(const TFitsAsTheyAre&) = delete;
    TFitsAsTheyAre& operator=(const TFitsAsTheyAre&) = delete;

private:
    std::vector<std::pair<TSeries*, TFitRunState>> m_states;
};

QPixmap PictureOfRecovered(TxyGraph& graph, qreal pixelRatio) {
    const TFitsAsTheyAre fits(graph);
    QPixmap picture(kPictureUnits * pixelRatio);
    picture.fill(Qt::white);
    picture.setDevicePixelRatio(pixelRatio);
    graph.resize(kPictureUnits);
    PrepareWithChildGraphs(graph);
    QPainter painter(&picture);
    painter.setRenderHint(QPainter::Antialiasing);
    DrawGraph(painter, graph, QRectF(QPointF(), QSizeF(kPictureUnits)));
    return picture;
}

QString TimeText(const QDateTime& time) {
    return QLocale().toString(time, QLocale::ShortFormat);
}

QString Shown(const QString& text) {
    return QString::fromStdString(ShownLine(text.toStdString()));
}

/// What the graph goes by, where it has a name.
QString NameOf(const TRecoveryInfo& info, const TxyGraph& graph) {
    const QString title = QString::fromStdString(graph.Appearance()->GraphTitle());
    return title.trimmed().isEmpty() && !info.DataSets.isEmpty() ? info.DataSets.first() : title;
}

/// Without a step only what was being typed was kept.
QString StepsText(const TRecoveryInfo& info) {
    if (info.StepCount == 0) return TRecoveryDialog::tr("a cell that was being typed");
    if (info.StepCount == 1) return TRecoveryDialog::tr("1 step");
    return TRecoveryDialog::tr("%1 steps").arg(info.StepCount);
}

QString DetailsOf(const TRecoveryInfo& info, bool isOfEditor) {
    const bool hasFile = !info.DocumentName.isEmpty();
    const QString last = info.LastStep.isEmpty()
                             ? QString()
                             : TRecoveryDialog::tr(", last: %1").arg(InLanguage(info.LastStep));
    QStringList lines;
    const QString file =
        hasFile ? QDir::toNativeSeparators(info.DocumentName) : TRecoveryDialog::tr("never saved");
    lines += isOfEditor ? TRecoveryDialog::tr("Left in the data editor, which OK had not closed yet")
                        : TRecoveryDialog::tr("File: %1").arg(Shown(file));
    lines += TRecoveryDialog::tr("Kept: %1 by %2").arg(TimeText(info.Written), Shown(info.Program));
    lines += TRecoveryDialog::tr("Changes: ") + StepsText(info) + Shown(last);
    if (!info.Beside.empty()) lines += TRecoveryDialog::tr("With rows of the grid that are no points yet");
    lines +=
        info.DataSets.isEmpty() ? TRecoveryDialog::tr("No data sets") : TRecoveryDialog::tr("Data sets:");
    for (const QString& name : info.DataSets) lines += QStringLiteral("    ") + Shown(name);
    return lines.join(QLatin1Char('\n'));
}

} // namespace

struct TRecoveryDialog::TEntry {
    std::unique_ptr<TLeftSession> File;
    std::unique_ptr<TxyGraph> Graph; ///< null when the file can not be read
    TRecoveryInfo Info;
    QPixmap Picture;
    QString Problem;

    void Read(qreal pixelRatio) {
        try {
            auto graph = std::make_unique<TxyGraph>();
            Info = File->Read(*graph);
            Picture = PictureOfRecovered(*graph, pixelRatio);
            Graph = std::move(graph);
        } catch (const std::exception& error) {
            Problem = tr("%1\n\nThe file: %2")
                          .arg(Shown(InLanguage(QString::fromUtf8(error.what()))),
                               QDir::toNativeSeparators(File->FileName()));
        }
    }

    QString Title() const {
        const QString name = !Graph                        ? tr("Not readable")
                             : IsOfEditor(*File)           ? tr("Data editor: %1").arg(NameOf(Info, *Graph))
                             : Info.DocumentName.isEmpty() ? tr("Untitled")
                                                           : QFileInfo(Info.DocumentName).fileName();
        return Shown(name) + QLatin1Char('\n') + TimeText(File->LastWritten());
    }
};

TRecoveryDialog::TRecoveryDialog(TLeftSessions sessions, QWidget* parent)
    : QDialog(parent), m_ui(std::make_unique<Ui::RecoveryDialog>()) {
    m_ui->setupUi(this);
    CloseOnCtrlReturn(*this);
    OfferManual(*this, [] { return QStringLiteral("recovery.md"); });
    AddSessions(std::move(sessions));
    connect(m_ui->lst_Sessions, &QListWidget::currentRowChanged, this, &TRecoveryDialog::Show);
    connect(m_ui->lst_Sessions, &QListWidget::itemActivated, m_ui->btnRecover, &QPushButton::click);
    connect(m_ui->btnRecover, &QPushButton::clicked, this, &QDialog::accept);
    connect(m_ui->btnLater, &QPushButton::clicked, this, &QDialog::reject);
    connect(m_ui->btnDiscard, &QPushButton::clicked, this, &TRecoveryDialog::OnDiscard);
    connect(m_ui->btnSetAside, &QPushButton::clicked, this, &TRecoveryDialog::OnSetAside);
    m_ui->lst_Sessions->setCurrentRow(0);
    m_ui->btnRecover->setFocus();
    resize(kWholeSize.boundedTo(RoomOnScreen(*this)));
}

TRecoveryDialog::~TRecoveryDialog() = default;

void TRecoveryDialog::AddSessions(TLeftSessions sessions) {
    for (auto& session : sessions) {
        auto entry = std::make_unique<TEntry>();
        entry->File = std::move(session);
        entry->Read(devicePixelRatioF());
        m_ui->lst_Sessions->addItem(entry->Title());
        m_entries.push_back(std::move(entry));
    }
}

TRecoveryDialog::TEntry* TRecoveryDialog::Current() const {
    const int row = m_ui->lst_Sessions->currentRow();
    return row < 0 ? nullptr : m_entries[static_cast<std::size_t>(row)].get();
}

void TRecoveryDialog::Show() {
    const TEntry* entry = Current();
    if (!entry) return;
    const bool isGood = entry->Graph != nullptr;
    m_ui->lblPicture->setVisible(isGood);
    ShowPicture();
    m_ui->m_Details->setPlainText(isGood ? DetailsOf(entry->Info, IsOfEditor(*entry->File)) : entry->Problem);
    m_ui->btnRecover->setEnabled(isGood);
    m_ui->btnSetAside->setVisible(!isGood);
}

// As large as there is room.
void TRecoveryDialog::ShowPicture() {
    const TEntry* entry = Current();
    if (!entry || !entry->Graph) return;
    const QSize room = m_ui->lblPicture->size() * devicePixelRatioF();
    m_ui->lblPicture->setPixmap(entry->Picture.scaled(room.boundedTo(entry->Picture.size()),
                                                      Qt::KeepAspectRatio, Qt::SmoothTransformation));
}

void TRecoveryDialog::resizeEvent(QResizeEvent* event) {
    QDialog::resizeEvent(event);
    layout()->activate();
    ShowPicture();
}

void TRecoveryDialog::OnDiscard() {
    if (!AskYesNo(tr("Remove these changes for good?").toStdString())) return;
    Current()->File->Discard();
    DropCurrent();
}

void TRecoveryDialog::OnSetAside() {
    const QString name = Current()->File->SetAside();
    if (name.isEmpty())
        return ShowMessage("Can not rename file " + Current()->File->FileName().toStdString(),
                           TMessageKind::Error);
    DropCurrent();
}

void TRecoveryDialog::DropCurrent() {
    const int row = m_ui->lst_Sessions->currentRow();
    m_entries.erase(m_entries.begin() + row);
    {
        const QSignalBlocker quiet(m_ui->lst_Sessions);
        delete m_ui->lst_Sessions->takeItem(row);
    }
    if (m_entries.empty()) return reject();
    m_ui->lst_Sessions->setCurrentRow(std::min(row, static_cast<int>(m_entries.size()) - 1));
    Show();
}

std::optional<TRecoveredSession> TRecoveryDialog::Take() {
    TEntry* entry = Current();
    if (result() != Accepted || !entry || !entry->Graph) return std::nullopt;
    return TRecoveredSession{std::move(entry->File), entry->Info, std::move(entry->Graph)};
}

std::optional<TRecoveredSession> OfferRecovery(const QString& folder, const QStringList& kinds,
                                               QWidget* window) {
    TLeftSessions sessions = FindLeftSessions(folder, kinds);
    if (sessions.empty()) return std::nullopt;
    TRecoveryDialog dialog(std::move(sessions), window);
    dialog.exec();
    return dialog.Take();
}

} // namespace lumoplot
