#include "dialog/filter/filtering_page.h"

#include "controls/number_edit.h"
#include "controls/texts.h"
#include "data/filter/band_filter_spectrum.h"
#include "data/series/ds_info.h"
#include "dialogs/messages/progress_window.h"
#include "graph/loading/rows_text.h"
#include "graph/loading/source_loading.h"
#include "support/errors.h"
#include "support/number_text.h"
#include "support/update_hold.h"
#include "ui_filtering_page.h"

#include <QLocale>
#include <algorithm>
#include <cmath>

namespace lumoplot {
namespace {

constexpr int kGainsShown = 512;
/// Between a change of a setting and the preview of it, so that typing and held arrows stay fluent.
constexpr int kTypingDelayMs = 30;
constexpr const char* kFailure = "Fail to Apply Filter";
constexpr double kLargestScale = 100;
constexpr const char* kErrorsDropped = "The points are others now: their errors of Y are gone.";

QString ShortNumber(double value) {
    return QString::fromStdString(FormatGeneral(value, 4));
}

TDataStamps StampsOf(const TSeries& series) {
    const auto* x = static_cast<const TSeries*>(series.XSource()); // of the same graph
    return {series.DataStamp(), x ? x->DataStamp() : 0};
}

QString SourceText(const TSeries& series) {
    QString text;
    if (series.HoldsSomeRows())
        text = TTexts::tr(" The points are %1; Apply reads every row.")
                   .arg(QString::fromStdString(RowsText(RowsOf(series))));
    if (series.XSource())
        text += TTexts::tr(
            " Apply works on the points as they are plotted and gives them X values of their own.");
    return text;
}

QString BandAboveText() {
    return TTexts::tr("The band lies above every frequency of the samples.");
}

QString BlowUpWarning() {
    return TTexts::tr(" Warning: that is no signal any more; switch \"Normalize Output\" off.");
}

/// A band that takes nearly all of the signal leaves rounding and noise, which normalizing makes as large as
/// the signal was.
bool IsBlowUp(double scale) {
    return !(std::abs(scale) <= kLargestScale);
}

QString Counted(std::int64_t count, const QString& one, const QString& many) {
    return QLocale().toString(count) + QLatin1Char(' ') + (count == 1 ? one : many);
}

} // namespace

TFilteringPage::TFilteringPage(TWizardContext& context, QWidget* parent)
    : TWizardPage(context, parent), m_ui(std::make_unique<Ui::TFilteringPage>()) {
    m_ui->setupUi(this);
    m_ui->lblFilterState->setMinimumHeight(2 * fontMetrics().lineSpacing() +
                                           4); // a second line moves nothing
    ShowSettings();
    ConnectSettings();
    connect(m_ui->btnApply, &QPushButton::clicked, this, &TFilteringPage::Apply);
    m_previewTimer.setSingleShot(true);
    connect(&m_previewTimer, &QTimer::timeout, this, [this] { Guarded([&] { UpdatePreview(); }); });
    connect(&context.WorkGraph(), &TxyGraph::OnDeleteSeries, this, [this] { m_seen.reset(); });
}

TFilteringPage::~TFilteringPage() = default;

void TFilteringPage::ShowSettings() {
    m_ui->cbx_FilterType->setCurrentIndex(static_cast<int>(m_settings.FilterType));
    ShowNumber(*m_ui->e_LowFreq, m_settings.LowFreq);
    ShowNumber(*m_ui->e_HighFreq, m_settings.HighFreq);
    m_ui->cb_Normalize->setChecked(m_settings.Normalize);
    ShowNumber(*m_ui->e_NormZero, m_settings.NormZero);
    m_ui->se_CountEvery->setValue(m_settings.CountEvery);
    m_ui->se_ResponseWidth->setValue(m_settings.ResponseWidth);
}

void TFilteringPage::ConnectSettings() {
    ConnectNumber(m_ui->e_LowFreq, &TBandFilterSettings::LowFreq);
    ConnectNumber(m_ui->e_HighFreq, &TBandFilterSettings::HighFreq);
    ConnectNumber(m_ui->e_NormZero, &TBandFilterSettings::NormZero);
    // While no data set is shown the guard is set and the page is disabled, so nothing is changed unseen.
    const auto change = [this](auto store) {
        return [this, store](auto value) {
            if (Context().Filling()) return;
            store(value);
            SettingsChanged();
        };
    };
    connect(m_ui->cbx_FilterType, &QComboBox::currentIndexChanged, this,
            change([this](int item) { m_settings.FilterType = static_cast<TFilterType>(item); }));
    connect(m_ui->cb_Normalize, &QCheckBox::toggled, this,
            change([this](bool checked) { m_settings.Normalize = checked; }));
    connect(m_ui->se_CountEvery, &QSpinBox::valueChanged, this,
            change([this](int value) { m_settings.CountEvery = value; }));
    connect(m_ui->se_ResponseWidth, &QSpinBox::valueChanged, this,
            change([this](int value) { m_settings.ResponseWidth = value; }));
}

void TFilteringPage::ConnectNumber(QLineEdit* edit, double TBandFilterSettings::*setting) {
    connect(edit, &QLineEdit::textChanged, this, [this, edit, setting] {
        if (Context().Filling()) return;
        if (const auto value = FiniteNumberIn(*edit)) m_settings.*setting = *value;
        SettingsChanged();
    });
}

void TFilteringPage::SettingsChanged() {
    EnableButtons();
    SchedulePreview(kTypingDelayMs);
}

/// What is filtered then is noise folded down from frequencies that the samples do not have.
bool TFilteringPage::IsBandAbove(const TFilterSamples& samples) const {
    return samples.Step > 0 &&
           std::min(std::abs(m_settings.LowFreq), std::abs(m_settings.HighFreq)) > 0.5 / samples.Step;
}

/// What is shown is what is applied: an edit that holds no number stops Apply.
bool TFilteringPage::NumbersAreValid() const {
    const auto edits = {m_ui->e_LowFreq, m_ui->e_HighFreq, m_ui->e_NormZero};
    return std::ranges::all_of(edits, [](QLineEdit* edit) { return FiniteNumberIn(*edit).has_value(); });
}

void TFilteringPage::EnableButtons() {
    const TSeries* series = Context().CurrSeries();
    const bool isAbove = series && m_seen && m_seen->DataStamp == StampsOf(*series) &&
                         m_seen->CountEvery == m_settings.CountEvery && IsBandAbove(m_seen->Samples);
    m_ui->btnApply->setEnabled(series && series->Count() > 0 && NumbersAreValid() && !isAbove);
}

void TFilteringPage::FillFrom(TSeries&) {
    EnableButtons();
    SchedulePreview();
}

void TFilteringPage::ShowNothing() {
    m_seen.reset();
    m_ui->preview->ShowNothing();
    m_ui->lblFilterState->clear();
    EnableButtons();
}

void TFilteringPage::showEvent(QShowEvent* event) {
    TWizardPage::showEvent(event);
    SchedulePreview();
}

void TFilteringPage::Apply() {
    if (Context().Filling() || !NumbersAreValid()) return;
    Guarded([&] {
        Context().CommitPages();
        TSeries* series = Context().CurrSeries();
        if (!series || series->Count() == 0) return;
        Context().Session().Change("apply filter to " + series->SeriesName(), [&] { Filter(*series); });
    });
}

void TFilteringPage::Filter(TSeries& series) {
    m_previewTimer.stop();
    if (!LoadAllPoints(series)) return;
    TFilteredPoints result;
    {
        TProgressWindow progress;
        result = FilterBand(series, m_settings, progress);
    }
    if (result.Outcome == TFilterOutcome::Refused) ShowMessage(kFailure, TMessageKind::Error);
    const bool hadErrors = series.HasYErrors();
    if (result.Outcome == TFilterOutcome::Filtered) {
        const TUpdateHold hold(series);
        if (series.XSource()) series.SetUseXAxisSeries(false); // the points have X of their own now
        series.SwapPoints(std::move(result.Points));
        series.DataSourceInfo().SetYErrorRule({});
        NotePointsAreMade(series);
    }
    if (hadErrors && !series.HasYErrors()) ShowMessage(kErrorsDropped);
    Context().RefillPages();
}

/// A data set that holds some rows of its source is read whole: some rows have other frequencies. False when
/// the user cancelled; throws what the source throws.
bool TFilteringPage::LoadAllPoints(TSeries& series) {
    if (!series.HoldsSomeRows()) return true;
    TProgressWindow progress;
    return LoadEveryRow(series, progress);
}

/// The same for the preview, which makes do with what it gets and asks no file twice.
void TFilteringPage::LoadToPreview(TSeries& series) {
    if (!series.HoldsSomeRows() || m_loadTried == series.DataStamp()) return;
    m_loadTried = series.DataStamp();
    try {
        Context().Session().FollowUp([&] {
            if (LoadAllPoints(series)) Context().RefillPages();
        });
    } catch (const ELumoError&) {
        // Told when the filter is applied.
    }
}

void TFilteringPage::SchedulePreview(int delayMs) {
    if (isVisible()) m_previewTimer.start(delayMs);
}

void TFilteringPage::UpdatePreview() {
    TSeries* series = Context().CurrSeries();
    if (!series || !isVisible()) return;
    LoadToPreview(*series);
    const bool isNew =
        !m_seen || m_seen->DataStamp != StampsOf(*series) || m_seen->CountEvery != m_settings.CountEvery;
    const TFilterSamples& samples = SamplesOf(*series);
    ShowState(StateText(samples) + SourceText(*series));
    EnableButtons();
    if (!(samples.Step > 0)) return m_ui->preview->ShowNothing();
    if (isNew) m_ui->preview->ShowSpectrum(AmplitudeSpectrum(samples.Values, samples.Step));
    m_ui->preview->ShowResponse(FrequencyResponse(m_settings, samples.Step, kGainsShown), m_settings);
}

/// Warnings stand out by more than their colour: they begin with the word.
void TFilteringPage::ShowState(const QString& text) {
    const bool warns = text.contains(BlowUpWarning()) || text.contains(BandAboveText());
    QFont font = this->font();
    font.setBold(warns);
    m_ui->lblFilterState->setFont(font);
    m_ui->lblFilterState->setText(text);
}

const TFilterSamples& TFilteringPage::SamplesOf(const TSeries& series) {
    const TDataStamps stamp = StampsOf(series);
    if (!m_seen || m_seen->DataStamp != stamp || m_seen->CountEvery != m_settings.CountEvery) {
        TSilentProgress progress;
        m_seen = {stamp, m_settings.CountEvery, *SampleBlocks(series, m_settings.CountEvery, progress)};
    }
    return m_seen->Samples;
}

QString TFilteringPage::StateText(const TFilterSamples& samples) const {
    const auto count = static_cast<std::int64_t>(samples.Values.size());
    if (count == 0) return TTexts::tr("There are too few points for a sample: nothing can be filtered.");
    QString text = Counted(count, TTexts::tr("sample"), TTexts::tr("samples"));
    if (samples.Step > 0) {
        text += TTexts::tr(", %1 apart: frequencies up to %2. ")
                    .arg(ShortNumber(samples.Step), ShortNumber(0.5 / samples.Step));
        if (IsBandAbove(samples)) return text + BandAboveText();
    } else {
        text += TTexts::tr(" without spread in X. ");
    }
    return text + ResultText(samples);
}

QString TFilteringPage::ResultText(const TFilterSamples& samples) const {
    const auto kept = static_cast<std::int64_t>(samples.Values.size()) - 2 * m_settings.ResponseWidth - 1;
    if (kept <= 0) return TTexts::tr("The response is wider than the data: Apply leaves no points.");
    if (!(samples.Step > 0)) return TTexts::tr("Nothing can be filtered.");
    const QString points = Counted(kept * m_settings.CountEvery, TTexts::tr("point"), TTexts::tr("points"));
    if (!m_settings.Normalize) return TTexts::tr("Apply leaves %1.").arg(points);
    const double scale = NormalizingScale(samples, m_settings);
    const QString result =
        TTexts::tr("Apply leaves %1 and multiplies by %2.").arg(points, ShortNumber(scale));
    return IsBlowUp(scale) ? result + BlowUpWarning() : result;
}

} // namespace lumoplot
