#include "dialogs/transform/transform_dialog.h"

#include "controls/model_texts.h"
#include "controls/number_edit.h"
#include "controls/return_key.h"
#include "controls/texts.h"
#include "dialogs/hand_edit.h"
#include "dialogs/manual_window.h"
#include "dialogs/transform/transformed_curve.h"
#include "graph/model/graph.h"
#include "support/guard.h"
#include "support/number_text.h"
#include "ui_transform_dialog.h"

#include <QLocale>
#include <QMenu>
#include <algorithm>
#include <array>
#include <utility>

namespace lumoplot {
namespace {

constexpr int kTransformDelayMs = 60;
constexpr int kBefore = 1; // numbers of the curves of the preview
constexpr int kAfter = 2;
constexpr TColor kBeforeGray = MakeColor(150, 150, 150);
constexpr TColor kAfterBlue = MakeColor(30, 110, 220);

/// What the dialog says of a kind; a number without a caption is not asked for.
struct TKindTexts {
    const char* Caption;
    const char* First;
    const char* Second;
    double FirstDefault;
    double SecondDefault;
    const char* Suffix; ///< of the name of a new data set
};
constexpr std::array<TKindTexts, 10> kKinds = {{
    {QT_TRANSLATE_NOOP("lumoplot::TTexts", "&Shift"), QT_TRANSLATE_NOOP("lumoplot::TTexts", "Add to &X:"),
     QT_TRANSLATE_NOOP("lumoplot::TTexts", "Add to &Y:"), 0, 0,
     QT_TRANSLATE_NOOP("lumoplot::TTexts", "shifted")},
    {QT_TRANSLATE_NOOP("lumoplot::TTexts", "S&cale"),
     QT_TRANSLATE_NOOP("lumoplot::TTexts", "Multiply &X by:"),
     QT_TRANSLATE_NOOP("lumoplot::TTexts", "Multiply &Y by:"), 1, 1,
     QT_TRANSLATE_NOOP("lumoplot::TTexts", "scaled")},
    {QT_TRANSLATE_NOOP("lumoplot::TTexts", "&Normalise"),
     QT_TRANSLATE_NOOP("lumoplot::TTexts", "&Smallest Y becomes:"),
     QT_TRANSLATE_NOOP("lumoplot::TTexts", "&Largest Y becomes:"), 0, 1,
     QT_TRANSLATE_NOOP("lumoplot::TTexts", "normalised")},
    {QT_TRANSLATE_NOOP("lumoplot::TTexts", "Cut &Range"),
     QT_TRANSLATE_NOOP("lumoplot::TTexts", "Keep X &from:"), QT_TRANSLATE_NOOP("lumoplot::TTexts", "&to:"), 0,
     0, QT_TRANSLATE_NOOP("lumoplot::TTexts", "cut")},
    {QT_TRANSLATE_NOOP("lumoplot::TTexts", "Resa&mple"),
     QT_TRANSLATE_NOOP("lumoplot::TTexts", "&Points at even distances:"), nullptr, 500, 0,
     QT_TRANSLATE_NOOP("lumoplot::TTexts", "resampled")},
    {QT_TRANSLATE_NOOP("lumoplot::TTexts", "&Average"),
     QT_TRANSLATE_NOOP("lumoplot::TTexts", "&Neighbours that become one:"), nullptr, 5, 0,
     QT_TRANSLATE_NOOP("lumoplot::TTexts", "averaged")},
    {QT_TRANSLATE_NOOP("lumoplot::TTexts", "Smooth: Savitzky-&Golay"),
     QT_TRANSLATE_NOOP("lumoplot::TTexts", "&Neighbours (odd):"),
     QT_TRANSLATE_NOOP("lumoplot::TTexts", "&Degree:"), 9, 2,
     QT_TRANSLATE_NOOP("lumoplot::TTexts", "smoothed")},
    {QT_TRANSLATE_NOOP("lumoplot::TTexts", "Smooth: Running Me&dian"),
     QT_TRANSLATE_NOOP("lumoplot::TTexts", "&Neighbours (odd):"), nullptr, 5, 0,
     QT_TRANSLATE_NOOP("lumoplot::TTexts", "median")},
    {QT_TRANSLATE_NOOP("lumoplot::TTexts", "Deri&vative"), nullptr, nullptr, 0, 0,
     QT_TRANSLATE_NOOP("lumoplot::TTexts", "derivative")},
    {QT_TRANSLATE_NOOP("lumoplot::TTexts", "&Integral"), QT_TRANSLATE_NOOP("lumoplot::TTexts", "From X = "),
     QT_TRANSLATE_NOOP("lumoplot::TTexts", "to X = "), 0, 0,
     QT_TRANSLATE_NOOP("lumoplot::TTexts", "integral")},
}};

const TKindTexts& TextsOf(TTransformKind kind) {
    return kKinds[static_cast<std::size_t>(kind)];
}

bool IsRange(TTransformKind kind) {
    return kind == TTransformKind::CutRange || kind == TTransformKind::Integral;
}

struct TMarkRange {
    double From;
    double To;
};

/// Between each mark that has an X and the next one, and between the first and the last of them.
std::vector<TMarkRange> RangesBetweenMarks(const TxyGraph& graph) {
    std::vector<double> places;
    for (const auto& [id, mark] : graph.Marks().Marks())
        if (mark.TypeOfMark == TMarkType::VerticalLine || mark.TypeOfMark == TMarkType::Point)
            places.push_back(mark.X1);
    std::ranges::sort(places);
    places.erase(std::unique(places.begin(), places.end()), places.end());
    std::vector<TMarkRange> ranges;
    for (std::size_t i = 1; i < places.size(); ++i) ranges.push_back({places[i - 1], places[i]});
    if (places.size() > 2) ranges.push_back({places.front(), places.back()});
    return ranges;
}

} // namespace

QStringList TransformCaptions() {
    QStringList captions;
    for (const TKindTexts& texts : kKinds) captions += TTexts::tr(texts.Caption);
    return captions;
}

TTransformDialog::TTransformDialog(TSeries& series, TTransformKind kind, QWidget* parent)
    : QDialog(parent), m_series(series), m_ui(std::make_unique<Ui::TTransformDialog>()),
      m_before(CorrectedCurve(series)) {
    m_ui->setupUi(this);
    setWindowTitle(TTexts::tr("Transform ") + QString::fromStdString(series.SeriesName()));
    for (const QString& caption : TransformCaptions()) m_ui->cbx_Kind->addItem(QString(caption).remove(u'&'));
    m_ui->cbx_Kind->setCurrentIndex(static_cast<int>(kind));
    AddPreviewCurve(*m_ui->preview, tr("before").toStdString(), kBeforeGray, kBefore);
    AddPreviewCurve(*m_ui->preview, tr("after").toStdString(), kAfterBlue, kAfter);
    SetUpPreview(*m_ui->preview, series);
    m_timer.setSingleShot(true);
    KeepOpenOnReturn(*this, TSecondReturn::Closes);
    OfferManual(*this, [] { return QStringLiteral("transform.md"); });
    ConnectControls();
    ListMarks();
    ShowKind();
    if (m_ui->e_First->isVisibleTo(this)) m_ui->e_First->setFocus(); // the kind was chosen in the menu
}

TTransformDialog::~TTransformDialog() = default;

void TTransformDialog::ConnectControls() {
    connect(m_ui->cbx_Kind, &QComboBox::currentIndexChanged, this, [this] { ShowKind(); });
    for (QLineEdit* edit : {m_ui->e_First, m_ui->e_Second}) {
        connect(edit, &QLineEdit::textChanged, this, [this] { m_timer.start(kTransformDelayMs); });
        connect(edit, &QLineEdit::returnPressed, this, [this, edit] {
            ShowResult();
            edit->selectAll();
        });
    }
    connect(&m_timer, &QTimer::timeout, this, [this] { ShowResult(); });
    connect(m_ui->btnOk, &QPushButton::clicked, this, &TTransformDialog::accept);
    connect(m_ui->btnCancel, &QPushButton::clicked, this, &QDialog::reject);
}

void TTransformDialog::ListMarks() {
    auto* menu = new QMenu(this);
    for (const TMarkRange& range : RangesBetweenMarks(m_series.Graph())) {
        const auto text = [](double x) { return QString::fromStdString(FormatGeneral(x, kShownDigits)); };
        menu->addAction(tr("%1 … %2").arg(text(range.From), text(range.To)), this,
                        [this, range] { TakeRange(range.From, range.To); });
    }
    m_ui->btnMarks->setMenu(menu);
    m_ui->btnMarks->setEnabled(!menu->isEmpty());
}

void TTransformDialog::TakeRange(double from, double to) {
    ShowNumber(*m_ui->e_First, from);
    ShowNumber(*m_ui->e_Second, to);
    ShowResult();
}

void TTransformDialog::ShowKind() {
    const auto kind = static_cast<TTransformKind>(m_ui->cbx_Kind->currentIndex());
    const TKindTexts& texts = TextsOf(kind);
    const auto show = [](QLabel& label, QLineEdit& edit, const char* caption, double value) {
        label.setVisible(caption);
        edit.setVisible(caption);
        label.setText(caption ? TTexts::tr(caption) : QString());
        edit.setAccessibleName(label.text().remove(u'&').trimmed());
        ShowNumber(edit, value);
    };
    show(*m_ui->lblFirst, *m_ui->e_First, texts.First, IsRange(kind) ? m_series.MinX() : texts.FirstDefault);
    show(*m_ui->lblSecond, *m_ui->e_Second, texts.Second,
         IsRange(kind) ? m_series.MaxX() : texts.SecondDefault);
    m_ui->btnMarks->setVisible(IsRange(kind));
    const auto ranges = RangesBetweenMarks(m_series.Graph());
    if (kind == TTransformKind::Integral && ranges.size() == 1)
        return TakeRange(ranges.front().From, ranges.front().To);
    ShowResult();
}

TTransform TTransformDialog::Wanted() const {
    const auto kind = static_cast<TTransformKind>(m_ui->cbx_Kind->currentIndex());
    const TKindTexts& texts = TextsOf(kind);
    return {kind, texts.First ? ExactNumberIn(*m_ui->e_First) : 0,
            texts.Second ? ExactNumberIn(*m_ui->e_Second) : 0};
}

void TTransformDialog::ShowResult() {
    m_timer.stop();
    QString state;
    m_after.reset();
    try {
        m_after = Transformed(m_before, Wanted());
        state = QLocale().toString(static_cast<qlonglong>(m_after->X.size())) + TTexts::tr(" points.");
        if (Wanted().Kind == TTransformKind::Integral)
            state += TTexts::tr(" The whole integral is %1.")
                         .arg(QString::fromStdString(FormatGeneral(m_after->Y.back(), 6)));
        if (!m_before.YErrors.empty())
            state += m_after->YErrors.empty() ? TTexts::tr(" They have no errors of Y any more.")
                                              : TTexts::tr(" Their errors of Y go along.");
    } catch (const ELumoError& error) {
        state = InLanguage(QString::fromUtf8(error.what()));
    }
    m_ui->lblState->setText(state);
    m_ui->btnOk->setEnabled(m_after.has_value());
    ShowCurve(*m_ui->preview->FindSeries(kBefore), m_before);
    ShowCurve(*m_ui->preview->FindSeries(kAfter), m_after.value_or(TCurveValues()));
}

std::string TTransformDialog::ResultName() const {
    return m_series.SeriesName() + " " + TTexts::tr(TextsOf(Wanted().Kind).Suffix).toStdString();
}

void TTransformDialog::accept() {
    ShowResult();
    if (!m_after) return;
    bool done = false;
    Guarded([&] {
        if (!m_ui->rb_NewSet->isChecked()) {
            if (!MakeManual(m_series, this)) return;
            m_before = CorrectedCurve(m_series); // every row may have been read only now
            m_after = Transformed(m_before, Wanted());
            PutCurve(m_series, *m_after);
        } else {
            AddCurve(m_series, *m_after, ResultName());
        }
        done = true;
    });
    if (done) QDialog::accept();
}

bool TransformSeries(TSeries& series, TTransformKind kind, QWidget* window) {
    if (!ReadEveryRow(series, window)) return false;
    return TTransformDialog(series, kind, window).exec() == QDialog::Accepted;
}

} // namespace lumoplot
