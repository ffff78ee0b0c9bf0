#include "dialogs/settings/graph_settings_dialog.h"

#include "controls/return_key.h"
#include "dialogs/manual_window.h"
#include "dialogs/messages/window_place.h"
#include "dialogs/settings/graph_settings.h"
#include "dialogs/settings/marks_sheet.h"
#include "graph/file/graph_style.h"
#include "graph/mouse/graph_mouse.h"
#include "support/guard.h"
#include "support/update_hold.h"
#include "ui_graph_settings.h"

#include <QCheckBox>
#include <QDir>
#include <QFileDialog>
#include <QHBoxLayout>
#include <QKeyEvent>
#include <QScrollBar>
#include <algorithm>

namespace lumoplot {
namespace {

constexpr QSize kWanted(980, 560); // where the screen has room
constexpr int kMostNames = 200;    // data sets whose names the page of the legend lists

/// A title that the user has typed is not replaced by a data set's name.
std::vector<TBoundSetting> SettingsOfAxis(TAxis& axis) {
    std::vector<TBoundSetting> settings = SettingsOf(axis);
    for (TBoundSetting& setting : settings)
        if (setting.Key == AxisWords().front().Key)
            setting.Set = [&axis, set = setting.Set](const TFieldValue& title) {
                axis.SetEnableAutoTitle(false);
                set(title);
            };
    return settings;
}

/// The second Y axis is never turned round: there the setting chooses its side.
std::vector<TSettingWords> WordsOf(const TAxis& axis) {
    constexpr int kReversed = 14;
    std::vector<TSettingWords> all(AxisWords().begin(), AxisWords().end());
    for (TSettingWords& words : all)
        if (words.Key == kReversed && axis.IsSecondY())
            words.Label = QT_TRANSLATE_NOOP("lumoplot::TTexts", "On the right side");
    return all;
}

/// True when something was different.
bool TakeOver(const std::vector<TBoundSetting>& from, const std::vector<TBoundSetting>& to) {
    bool isChanged = false;
    for (std::size_t i = 0; i < from.size(); ++i) {
        if (from[i].Get() == to[i].Get()) continue;
        to[i].Set(from[i].Get());
        isChanged = true;
    }
    return isChanged;
}

QString ObjectionTo(const TAxis& axis, double from, double to) {
    if (!(from < to)) return QObject::tr("The minimum of an axis must be below its maximum");
    if (axis.LogScale() && !(from > 0))
        return QObject::tr("The minimum of a logarithmic axis must be above 0");
    return {};
}

/// A data set's name, and whether the legend has it.
TSettingEditor NameEditor(TSeries& series, QWidget* parent, const std::function<void()>& changed) {
    auto* both = new QWidget(parent);
    auto* row = new QHBoxLayout(both);
    row->setContentsMargins(0, 0, 0, 0);
    auto* box = new QCheckBox(both);
    box->setObjectName(QStringLiteral("cb_InLegend_%1").arg(series.SeriesIndex()));
    box->setToolTip(QObject::tr("In the legend"));
    box->setAccessibleName(box->toolTip());
    auto* edit = new QLineEdit(both);
    edit->setObjectName(QStringLiteral("e_Name_%1").arg(series.SeriesIndex()));
    row->addWidget(box);
    row->addWidget(edit, 1);
    both->setFocusProxy(edit);
    QObject::connect(box, &QCheckBox::toggled, box, [&series, changed](bool on) {
        series.SetShowInLegend(on);
        changed();
    });
    QObject::connect(edit, &QLineEdit::textEdited, edit, [&series, changed](const QString& text) {
        series.SetSeriesName(text.toStdString());
        changed();
    });
    return {both, [&series, box, edit] {
                const QSignalBlocker quiet(box);
                box->setChecked(series.ShowInLegend());
                if (edit->text().toStdString() != series.SeriesName())
                    edit->setText(QString::fromStdString(series.SeriesName()));
            }};
}

bool TakeNames(TxyGraph& from, TxyGraph& to) {
    bool isChanged = false;
    for (const auto& series : to.Series()) {
        const TSeries& wanted = *from.FindSeries(series->SeriesIndex());
        if (wanted.SeriesName() == series->SeriesName() && wanted.ShowInLegend() == series->ShowInLegend())
            continue;
        series->SetSeriesName(wanted.SeriesName());
        series->SetShowInLegend(wanted.ShowInLegend());
        isChanged = true;
    }
    return isChanged;
}

} // namespace

TGraphSettingsDialog::TGraphSettingsDialog(TxyGraph& graph, TGraphPart part, QWidget* parent)
    : QDialog(parent), m_graph(graph), m_ui(std::make_unique<Ui::GraphSettings>()) {
    m_ui->setupUi(this);
    resize(kWanted.boundedTo(RoomOnScreen(*this)));
    CloseOnCtrlReturn(*this);
    OfferManual(*this, [] { return QStringLiteral("drawing.md"); });
    m_copy.resize(graph.size());
    m_copy.CopyFrom(graph);
    m_ui->picture->SetGraph(&m_copy);
    MakeSheets();
    const int frame = 2 * m_ui->lst_Pages->frameWidth();
    m_ui->lst_Pages->setFixedWidth(m_ui->lst_Pages->sizeHintForColumn(0) + frame + fontMetrics().height());
    connect(m_ui->lst_Pages, &QListWidget::currentRowChanged, this, &TGraphSettingsDialog::ShowPage);
    connect(m_ui->e_Find, &QLineEdit::textChanged, this, &TGraphSettingsDialog::Find);
    connect(m_ui->b_AllAxes, &QPushButton::clicked, this, &TGraphSettingsDialog::ApplyToAllAxes);
    connect(m_ui->b_SaveStyle, &QPushButton::clicked, this, [this] { Guarded([this] { SaveAsStyle(); }); });
    m_ui->e_Find->installEventFilter(this);
    m_ui->lst_Pages->setCurrentRow(PageOf(part));
    if (QWidget* first = m_sheets[static_cast<std::size_t>(PageOf(part))]->FirstShown()) first->setFocus();
}

TGraphSettingsDialog::~TGraphSettingsDialog() = default;

int TGraphSettingsDialog::PageOf(TGraphPart part) {
    switch (part) {
    case TGraphPart::XAxis: return XPage;
    case TGraphPart::YAxis: return YPage;
    case TGraphPart::SecondYAxis: return SecondYPage;
    case TGraphPart::Legend: return LegendPage;
    default: return TitlePage;
    }
}

void TGraphSettingsDialog::AddSheet(TSettingsSheet* sheet) {
    m_sheets.push_back(sheet);
    m_ui->sheetsLayout->addWidget(sheet);
    m_ui->lst_Pages->addItem(sheet->Title());
    connect(sheet, &TSettingsSheet::Changed, this, &TGraphSettingsDialog::ShowChange);
}

TSettingsSheet* TGraphSettingsDialog::MakeAxisSheet(TAxis& axis, const QString& title,
                                                    const QString& section) {
    auto* sheet = new TSettingsSheet(title, m_ui->sheets);
    sheet->SetObjection([&axis](double from, double to) { return ObjectionTo(axis, from, to); });
    sheet->Add(SettingsOfAxis(axis), WordsOf(axis), section);
    return sheet;
}

TSettingsSheet* TGraphSettingsDialog::MakeLegendSheet() {
    auto* sheet = new TSettingsSheet(tr("Legend"), m_ui->sheets);
    sheet->Add(SettingsOf(*m_copy.Legend()), LegendWords(), QStringLiteral("Legend"));
    for (const auto& series : m_copy.Series() | std::views::take(kMostNames))
        sheet->AddRow(tr("Data set %1").arg(series->SeriesIndex()),
                      NameEditor(*series, sheet, [sheet] { Q_EMIT sheet->Changed(); }),
                      tr("name in the legend"));
    return sheet;
}

void TGraphSettingsDialog::MakeSheets() {
    const auto appearance = SettingsOf(*m_copy.Appearance());
    const auto dimensions = SettingsOf(*m_copy.Dimensions());
    const QString ofAppearance = QStringLiteral("Appearance");
    const QString ofDimensions = QStringLiteral("Dimensions");
    const auto make = [this](const QString& title) { return new TSettingsSheet(title, m_ui->sheets); };
    auto* title = make(tr("Title and Colours"));
    title->Add(appearance, TitleWords(), ofAppearance);
    auto* axes = make(tr("All Axes"));
    axes->Add(appearance, AxesInCommonWords(), ofAppearance);
    auto* margins = make(tr("Margins"));
    margins->Add(dimensions, MarginWords(), ofDimensions);
    auto* dataAndPaper = make(tr("Data and Paper"));
    dataAndPaper->Add(appearance, DataAndPaperWords(), ofAppearance);
    dataAndPaper->Add(dimensions, PaperWords(), ofDimensions);
    AddSheet(title);
    AddSheet(axes);
    AddSheet(MakeAxisSheet(*m_copy.XAxis(), tr("X Axis"), QStringLiteral("X")));
    AddSheet(MakeAxisSheet(*m_copy.YAxis(), tr("Y Axis"), QStringLiteral("Y")));
    AddSheet(MakeAxisSheet(*m_copy.YAxis_Second(), tr("Second Y Axis"), QStringLiteral("Y2")));
    AddSheet(MakeLegendSheet());
    AddSheet(margins);
    AddSheet(dataAndPaper);
    AddSheet(new TMarksSheet(m_copy, m_ui->sheets));
    m_ui->sheetsLayout->addStretch(1);
    OrderTabs();
}

// The rows are made after the form, and would come behind its buttons.
void TGraphSettingsDialog::OrderTabs() {
    QWidget* before = m_ui->lst_Pages;
    for (const TSettingsSheet* sheet : m_sheets)
        for (QWidget* control : sheet->findChildren<QWidget*>()) {
            if (control->focusPolicy() == Qt::NoFocus || control->focusProxy()) continue;
            setTabOrder(before, control);
            before = control;
        }
    setTabOrder(before, m_ui->b_AllAxes);
}

TAxis* TGraphSettingsDialog::AxisOfPage() {
    switch (m_ui->lst_Pages->currentRow()) {
    case XPage: return m_copy.XAxis();
    case YPage: return m_copy.YAxis();
    case SecondYPage: return m_copy.YAxis_Second();
    default: return nullptr;
    }
}

void TGraphSettingsDialog::ShowPage() {
    m_ui->e_Find->clear();
    Find();
    m_ui->scrollArea->verticalScrollBar()->setValue(0);
}

// Without words the chosen page is shown, else what has them on all pages.
void TGraphSettingsDialog::Find() {
    const QStringList words = m_ui->e_Find->text().split(QLatin1Char(' '), Qt::SkipEmptyParts);
    bool isFound = false;
    for (std::size_t i = 0; i < m_sheets.size(); ++i) {
        const bool isChosen = static_cast<int>(i) == m_ui->lst_Pages->currentRow();
        const bool has = m_sheets[i]->Find(words);
        m_sheets[i]->setVisible(words.isEmpty() ? isChosen : has);
        isFound |= has;
    }
    m_ui->l_NothingFound->setVisible(!isFound);
    m_ui->b_AllAxes->setEnabled(words.isEmpty() && AxisOfPage() != nullptr);
}

bool TGraphSettingsDialog::eventFilter(QObject* watched, QEvent* event) {
    const bool isKey = watched == m_ui->e_Find && event->type() == QEvent::KeyPress;
    const int key = isKey ? static_cast<QKeyEvent*>(event)->key() : 0;
    if (key == Qt::Key_Return || key == Qt::Key_Enter || key == Qt::Key_Down) {
        for (TSettingsSheet* sheet : m_sheets)
            if (QWidget* first = sheet->isHidden() ? nullptr : sheet->FirstShown()) {
                first->setFocus(Qt::TabFocusReason);
                break;
            }
        return true;
    }
    if (key == Qt::Key_Escape && !m_ui->e_Find->text().isEmpty()) {
        m_ui->e_Find->clear();
        return true;
    }
    return QDialog::eventFilter(watched, event);
}

// Setters may change other settings with the one that was set, as the picture may, whose axes follow the
// data.
void TGraphSettingsDialog::ShowChange() {
    m_copy.NeedRescale();
    Guarded([this] { m_copy.PrepareForDrawing(); });
    for (TSettingsSheet* sheet : m_sheets) sheet->ShowValues();
    m_ui->picture->Renew();
}

void TGraphSettingsDialog::ApplyToAllAxes() {
    TAxis* model = AxisOfPage();
    if (!model) return;
    const auto from = SettingsOf(*model);
    for (TAxis* axis : {m_copy.XAxis(), m_copy.YAxis(), m_copy.YAxis_Second()}) {
        const auto to = SettingsOf(*axis);
        for (std::size_t i = 0; i < from.size(); ++i) {
            const auto words = std::ranges::find(AxisWords(), from[i].Key, &TSettingWords::Key);
            const bool isTaken = words != AxisWords().end() && words->IsForAllAxes;
            if (isTaken && from[i].Get() != to[i].Get()) to[i].Set(from[i].Get());
        }
    }
    ShowChange();
}

void TGraphSettingsDialog::SaveAsStyle() {
    QDir().mkpath(m_styleFolder);
    QFileDialog dialog(this, tr("Save as Style"), m_styleFolder, tr("Styles (*.ltp)"));
    dialog.setAcceptMode(QFileDialog::AcceptSave);
    dialog.setDefaultSuffix(QStringLiteral("ltp"));
    if (dialog.exec() == QDialog::Accepted)
        SaveStyle(m_copy, dialog.selectedFiles().constFirst().toStdString());
}

void TGraphSettingsDialog::accept() {
    for (std::size_t i = 0; i < m_sheets.size(); ++i)
        if (QWidget* wrong = m_sheets[i]->Wrong()) {
            m_ui->lst_Pages->setCurrentRow(static_cast<int>(i));
            ShowPage();
            wrong->setFocus();
            return ShowMessage(wrong->toolTip().toStdString(), TMessageKind::Error);
        }
    QDialog::accept();
}

bool TGraphSettingsDialog::Store() {
    bool isChanged = false;
    m_graph.ChangeByUser({"graph settings"}, [&] {
        const TUpdateHold hold(m_graph);
        const auto take = [&](auto& from, auto& to) {
            isChanged |= TakeOver(SettingsOf(from), SettingsOf(to));
        };
        take(*m_copy.Appearance(), *m_graph.Appearance());
        take(*m_copy.Dimensions(), *m_graph.Dimensions());
        take(*m_copy.XAxis(), *m_graph.XAxis());
        take(*m_copy.YAxis(), *m_graph.YAxis());
        take(*m_copy.YAxis_Second(), *m_graph.YAxis_Second());
        take(*m_copy.Legend(), *m_graph.Legend());
        isChanged |= TakeNames(m_copy, m_graph);
        if (m_copy.Marks().Marks() != m_graph.Marks().Marks()) {
            m_graph.SetMarks(m_copy.Marks());
            isChanged = true;
        }
        m_graph.NeedRescale();
        m_graph.RequestRepaint(true);
    });
    return isChanged;
}

bool EditGraphSettings(QWidget* owner, TxyGraph& graph, const QString& styleFolder) {
    const TGraphPart part = graph.Mouse().TakeWantedPart();
    graph.PrepareForDrawing();
    TGraphSettingsDialog dialog(graph, part, owner);
    dialog.SetStyleFolder(styleFolder);
    return dialog.exec() == QDialog::Accepted && dialog.Store();
}

} // namespace lumoplot
