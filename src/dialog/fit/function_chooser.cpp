#include "dialog/fit/function_chooser.h"

#include "controls/return_key.h"
#include "controls/texts.h"
#include "dialogs/manual_window.h"
#include "dialogs/messages/window_place.h"
#include "ui_function_chooser.h"

#include <QKeyEvent>
#include <QPainter>
#include <cmath>

namespace lumoplot {
namespace {

QString AllGroups() {
    return TTexts::tr("All");
}
constexpr int kPlaceRole = Qt::UserRole;
constexpr double kPictureRoom = 7; // pixels around the course

std::vector<QPointF> CourseOf(const TReadyFunction& function, int count) {
    TCurFit fit;
    UseReadyFunction(function, fit);
    fit.Compile();
    std::vector<QPointF> course;
    for (int i = 0; i < count; ++i) {
        const double x = std::lerp(function.From, function.To, i / (count - 1.0));
        const double y = fit.EvaluateAt(x);
        if (std::isfinite(y)) course.emplace_back(x, y);
    }
    return course;
}

QString UnitMeaning(const char* unit) {
    const QString text = QString::fromUtf8(unit);
    return text.isEmpty() ? QString() : QStringLiteral(" [%1]").arg(text);
}

} // namespace

QPixmap FunctionPicture(const TReadyFunction& function, QSize size, double pixelRatio,
                        const QPalette& palette) {
    QPixmap pixmap(size * pixelRatio);
    pixmap.setDevicePixelRatio(pixelRatio);
    pixmap.fill(Qt::transparent);
    QPainter painter(&pixmap);
    painter.setRenderHint(QPainter::Antialiasing);
    const QRectF frame = QRectF(QPointF(0, 0), QSizeF(size)).adjusted(0.5, 0.5, -0.5, -0.5);
    painter.setPen(palette.color(QPalette::Mid));
    painter.setBrush(palette.color(QPalette::AlternateBase));
    painter.drawRoundedRect(frame, 4, 4);
    const std::vector<QPointF> course = CourseOf(function, 2 * size.width());
    if (course.empty()) return pixmap;
    const auto [low, high] = std::ranges::minmax(course, {}, &QPointF::y);
    const QRectF room = frame.adjusted(kPictureRoom, kPictureRoom, -kPictureRoom, -kPictureRoom);
    const double span = high.y() > low.y() ? high.y() - low.y() : 1;
    QPolygonF line;
    for (const QPointF& place : course)
        line << QPointF(room.left() +
                            room.width() * (place.x() - function.From) / (function.To - function.From),
                        room.bottom() - room.height() * (place.y() - low.y()) / span);
    painter.setPen(QPen(palette.color(QPalette::Highlight), 2, Qt::SolidLine, Qt::RoundCap, Qt::RoundJoin));
    painter.drawPolyline(line);
    return pixmap;
}

TFunctionChooser::TFunctionChooser(QWidget* parent)
    : QDialog(parent), m_ui(std::make_unique<Ui::TFunctionChooser>()) {
    m_ui->setupUi(this);
    CloseOnCtrlReturn(*this);
    OfferManual(*this, [] { return QStringLiteral("curve-fitting.md"); });
    resize(size().boundedTo(RoomOnScreen(*this)));
    FillGroups();
    FillFunctions();
    connect(m_ui->e_Search, &QLineEdit::textChanged, this, &TFunctionChooser::FillFunctions);
    connect(m_ui->lb_Groups, &QListWidget::currentRowChanged, this, &TFunctionChooser::FillFunctions);
    connect(m_ui->lb_Functions, &QListWidget::currentRowChanged, this, &TFunctionChooser::ShowAbout);
    connect(m_ui->lb_Functions, &QListWidget::itemActivated, this, &QDialog::accept);
    connect(m_ui->btnOk, &QPushButton::clicked, this, &QDialog::accept);
    connect(m_ui->btnCancel, &QPushButton::clicked, this, &QDialog::reject);
    m_ui->e_Search->installEventFilter(this);
    m_ui->e_Search->setFocus();
}

TFunctionChooser::~TFunctionChooser() = default;

void TFunctionChooser::FillGroups() {
    m_ui->lb_Groups->addItem(AllGroups());
    for (const TReadyFunction& function : ReadyFunctions()) {
        const QString group = QString::fromUtf8(function.Group);
        if (m_ui->lb_Groups->findItems(group, Qt::MatchExactly).isEmpty()) m_ui->lb_Groups->addItem(group);
    }
    m_ui->lb_Groups->setCurrentRow(0);
}

bool TFunctionChooser::IsSought(const TReadyFunction& function) const {
    const QString group =
        m_ui->lb_Groups->currentItem() ? m_ui->lb_Groups->currentItem()->text() : AllGroups();
    if (group != AllGroups() && group != QString::fromUtf8(function.Group)) return false;
    const QString all = QString::fromUtf8(function.Title) + QLatin1Char(' ') +
                        QString::fromUtf8(function.Group) + QLatin1Char(' ') +
                        QString::fromUtf8(function.Sentence) + QLatin1Char(' ') +
                        QString::fromUtf8(function.Equation);
    const QStringList words = m_ui->e_Search->text().split(QLatin1Char(' '), Qt::SkipEmptyParts);
    return std::ranges::all_of(words,
                               [&](const QString& word) { return all.contains(word, Qt::CaseInsensitive); });
}

void TFunctionChooser::FillFunctions() {
    const TReadyFunction* before = Chosen();
    const QSignalBlocker quiet(m_ui->lb_Functions);
    m_ui->lb_Functions->clear();
    const QSize size = m_ui->lb_Functions->iconSize();
    const QSize cell = size + QSize(12, 2 * fontMetrics().lineSpacing() + 14);
    m_ui->lb_Functions->setGridSize(cell);
    const auto& functions = ReadyFunctions();
    for (std::size_t i = 0; i < functions.size(); ++i) {
        if (!IsSought(functions[i])) continue;
        auto* item =
            new QListWidgetItem(QIcon(FunctionPicture(functions[i], size, devicePixelRatioF(), palette())),
                                QString::fromUtf8(functions[i].Title), m_ui->lb_Functions);
        item->setToolTip(QString::fromUtf8(functions[i].Sentence));
        item->setSizeHint(cell - QSize(4, 4));
        item->setData(kPlaceRole, static_cast<int>(i));
        item->setTextAlignment(Qt::AlignHCenter | Qt::AlignTop);
        if (before == &functions[i]) m_ui->lb_Functions->setCurrentItem(item);
    }
    if (!m_ui->lb_Functions->currentItem() && m_ui->lb_Functions->count() > 0)
        m_ui->lb_Functions->setCurrentRow(0);
    ShowAbout();
}

const TReadyFunction* TFunctionChooser::Chosen() const {
    const QListWidgetItem* item = m_ui->lb_Functions->currentItem();
    return item ? &ReadyFunctions()[static_cast<std::size_t>(item->data(kPlaceRole).toInt())] : nullptr;
}

bool TFunctionChooser::FindsStart() const {
    return m_ui->cb_FindStart->isChecked();
}

void TFunctionChooser::ShowAbout() {
    const TReadyFunction* function = Chosen();
    m_ui->btnOk->setEnabled(function);
    if (!function) return m_ui->lblAbout->setText(TTexts::tr("No function has all of these words."));
    QStringList parameters;
    for (const TReadyParameter& parameter : function->Parameters)
        parameters << QStringLiteral("<b>%1</b> %2%3")
                          .arg(QString::fromUtf8(parameter.Name),
                               QString::fromUtf8(parameter.Meaning).toHtmlEscaped(),
                               UnitMeaning(parameter.Unit));
    m_ui->lblAbout->setText(QStringLiteral("<b>%1.</b> %2<br><code>y = %3</code><br>%4")
                                .arg(QString::fromUtf8(function->Title).toHtmlEscaped(),
                                     QString::fromUtf8(function->Sentence).toHtmlEscaped(),
                                     QString::fromUtf8(function->Equation).toHtmlEscaped(),
                                     parameters.join(QStringLiteral(" · "))));
}

// From the search the cursor keys lead into the functions.
bool TFunctionChooser::eventFilter(QObject* watched, QEvent* event) {
    if (watched == m_ui->e_Search && event->type() == QEvent::KeyPress) {
        const int key = static_cast<QKeyEvent*>(event)->key();
        if (key == Qt::Key_Down || key == Qt::Key_PageDown) {
            m_ui->lb_Functions->setFocus(Qt::TabFocusReason);
            return true;
        }
    }
    return QDialog::eventFilter(watched, event);
}

void TFunctionChooser::changeEvent(QEvent* event) {
    QDialog::changeEvent(event);
    if (event->type() == QEvent::PaletteChange && m_ui->lb_Functions->count() > 0) FillFunctions();
}

} // namespace lumoplot
