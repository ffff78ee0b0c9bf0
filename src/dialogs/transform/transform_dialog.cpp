#include "dialogs/transform/transform_dialog.h"

#include "controls/number_edit.h"
#include "controls/return_key.h"
#include "data/series/ds_info.h"
#include "dialogs/hand_edit.h"
#include "dialogs/manual_window.h"
#include "graph/model/graph.h"
#include "graph/model/series_palette.h"
#include "support/guard.h"
#include "support/number_text.h"
#include "support/update_hold.h"
#include "ui_transform_dialog.h"

#include <QLocale>
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
    {"&Shift", "Add to &X:", "Add to &Y:", 0, 0, "shifted"},
    {"S&cale", "Multiply &X by:", "Multiply &Y by:", 1, 1, "scaled"},
    {"&Normalise", "&Smallest Y becomes:", "&Largest Y becomes:", 0, 1, "normalised"},
    {"Cut &Range", "Keep X &from:", "&to:", 0, 0, "cut"},
    {"Resa&mple", "&Points at even distances:", nullptr, 500, 0, "resampled"},
    {"&Average", "&Neighbours that become one:", nullptr, 5, 0, "averaged"},
    {"Smooth: Savitzky-&Golay", "&Neighbours (odd):", "&Degree:", 9, 2, "smoothed"},
    {"Smooth: Running Me&dian", "&Neighbours (odd):", nullptr, 5, 0, "median"},
    {"Deri&vative", nullptr, nullptr, 0, 0, "derivative"},
    {"&Integral", "From X = ", "to X = ", 0, 0, "integral"},
}};

const TKindTexts& TextsOf(TTransformKind kind) {
    return kKinds[static_cast<std::size_t>(kind)];
}

bool IsRange(TTransformKind kind) {
    return kind == TTransformKind::CutRange || kind == TTransformKind::Integral;
}

TCurveValues CorrectedCurve(const TSeries& series) {
    TCurveValues curve;
    for (TPointCursor point = series.First(); point; point = point.Next()) {
        curve.X.push_back(point.X());
        curve.Y.push_back(series.CorrectedY(point.X(), point.Y()));
    }
    if (series.HasYErrors()) curve.YErrors = series.YErrors();
    return curve;
}

TPointChain PointChainOf(const TCurveValues& curve) {
    TPointChain points;
    points.AddAll(curve.X, curve.Y, {.DuplicatesAllowed = true}, curve.YErrors);
    return points;
}

} // namespace

QStringList TransformCaptions() {
    QStringList captions;
    for (const TKindTexts& texts : kKinds) captions += QString::fromLatin1(texts.Caption);
    return captions;
}

TTransformDialog::TTransformDialog(TSeries& series, TTransformKind kind, QWidget* parent)
    : QDialog(parent), m_series(series), m_ui(std::make_unique<Ui::TTransformDialog>()),
      m_before(CorrectedCurve(series)) {
    m_ui->setupUi(this);
    setWindowTitle(QStringLiteral("Transform ") + QString::fromStdString(series.SeriesName()));
    for (const QString& caption : TransformCaptions()) m_ui->cbx_Kind->addItem(QString(caption).remove(u'&'));
    m_ui->cbx_Kind->setCurrentIndex(static_cast<int>(kind));
    for (const auto& [number, color] : {std::pair(kBefore, kBeforeGray), {kAfter, kAfterBlue}}) {
        TSeries& curve = *m_ui->preview->FindSeries(m_ui->preview->AddSeries());
        curve.SetSeriesName(number == kBefore ? "before" : "after");
        curve.SetPointsShown(false);
        curve.SetLinesShown(true);
        curve.SetLineColor(color);
        curve.SetLineWidth(number);
        curve.SetShowInLegend(true);
    }
    m_ui->preview->Appearance()->SetGraphTitle({});
    m_ui->preview->Legend()->Setvisible(true);
    m_timer.setSingleShot(true);
    KeepOpenOnReturn(*this);
    OfferManual(*this, [] { return QStringLiteral("transform.md"); });
    ConnectControls();
    ShowKind();
}

TTransformDialog::~TTransformDialog() = default;

void TTransformDialog::ConnectControls() {
    connect(m_ui->cbx_Kind, &QComboBox::currentIndexChanged, this, [this] { ShowKind(); });
    for (QLineEdit* edit : {m_ui->e_First, m_ui->e_Second})
        connect(edit, &QLineEdit::textChanged, this, [this] { m_timer.start(kTransformDelayMs); });
    connect(&m_timer, &QTimer::timeout, this, [this] { ShowResult(); });
    connect(m_ui->btnOk, &QPushButton::clicked, this, &TTransformDialog::accept);
    connect(m_ui->btnCancel, &QPushButton::clicked, this, &QDialog::reject);
}

void TTransformDialog::ShowKind() {
    const auto kind = static_cast<TTransformKind>(m_ui->cbx_Kind->currentIndex());
    const TKindTexts& texts = TextsOf(kind);
    const auto show = [](QLabel& label, QLineEdit& edit, const char* caption, double value) {
        label.setVisible(caption);
        edit.setVisible(caption);
        label.setText(QString::fromLatin1(caption));
        edit.setAccessibleName(QString::fromLatin1(caption).remove(u'&').trimmed());
        ShowNumber(edit, value);
    };
    show(*m_ui->lblFirst, *m_ui->e_First, texts.First, IsRange(kind) ? m_series.MinX() : texts.FirstDefault);
    show(*m_ui->lblSecond, *m_ui->e_Second, texts.Second,
         IsRange(kind) ? m_series.MaxX() : texts.SecondDefault);
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
        state = QLocale().toString(static_cast<qlonglong>(m_after->X.size())) + QStringLiteral(" points.");
        if (Wanted().Kind == TTransformKind::Integral)
            state += QStringLiteral(" The whole integral is %1.")
                         .arg(QString::fromStdString(FormatGeneral(m_after->Y.back(), 6)));
        if (!m_before.YErrors.empty())
            state += m_after->YErrors.empty() ? QStringLiteral(" They have no errors of Y any more.")
                                              : QStringLiteral(" Their errors of Y go along.");
    } catch (const ELumoError& error) {
        state = QString::fromUtf8(error.what());
    }
    m_ui->lblState->setText(state);
    m_ui->btnOk->setEnabled(m_after.has_value());
    ShowCurve(kBefore, m_before);
    ShowCurve(kAfter, m_after.value_or(TCurveValues()));
}

void TTransformDialog::ShowCurve(int number, const TCurveValues& curve) {
    m_ui->preview->FindSeries(number)->SwapPoints(PointChainOf(curve));
}

std::string TTransformDialog::ResultName() const {
    return m_series.SeriesName() + " " + TextsOf(Wanted().Kind).Suffix;
}

void TTransformDialog::Store(TSeries& target) const {
    const TUpdateHold hold(target);
    target.SetAutoZero(false);
    target.SetZeroValue(0);
    target.SetBaseLineSlope(0);
    target.SwapPoints(PointChainOf(*m_after));
    target.DataSourceInfo().SetYErrorRule({}); // the errors are those of the new points
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
            Store(m_series);
        } else {
            TxyGraph& graph = m_series.Graph();
            const int number = graph.AddSeries();
            TSeries& added = *graph.FindSeries(number);
            added.CopyFrom(m_series);
            added.SetSeriesName(ResultName());
            added.DataSourceInfo().SetKind(TSourceKind::Manual);
            added.DataSourceInfo().SetNeedsReload(false);
            added.SetThinned(false);
            TakeNextStyle(added);
            Store(added);
            graph.Appearance()->SetCurrSerIndex(number);
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
