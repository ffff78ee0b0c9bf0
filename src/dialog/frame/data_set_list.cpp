#include "dialog/frame/data_set_list.h"

#include "controls/file_filter.h"
#include "controls/texts.h"
#include "dialog/common/narrow_button.h"
#include "dialog/common/wizard_page.h"
#include "dialogs/editing/series_list.h"
#include "dialogs/hand_edit.h"
#include "graph/file/graph_file.h"
#include "graph/model/series_palette.h"
#include "graph/plotted/series_text.h"
#include "support/message_sink.h"
#include "support/message_text.h"
#include "ui_data_wizard.h"

#include <QBoxLayout>
#include <QEvent>
#include <QFileDialog>
#include <QFileInfo>
#include <algorithm>

namespace lumoplot {
namespace {

// In the narrowest window that the bar has to fit into, the list of data sets gets what the buttons leave.
constexpr int kNarrowestBar = 650;
constexpr int kWidestNeed = 200;
constexpr int kUsualSpacing = 6;

int WidthLeft(const Ui::TxyDataWizard& ui) {
    const QBoxLayout& bar = *ui.barLayout;
    int left = kNarrowestBar - (bar.count() - 1) * std::max(bar.spacing(), kUsualSpacing);
    for (int i = 0; i < bar.count(); ++i) {
        const QWidget* control = bar.itemAt(i)->widget();
        if (!control || control == ui.cbx_DataSets) continue;
        left -= control->minimumWidth() > 0 ? control->minimumWidth() : control->sizeHint().width();
    }
    return left;
}

/// Of columns of numbers; other files hold the whole data set.
bool IsNameOfText(const QString& file) {
    static const QStringList kSuffixes = {QStringLiteral("dat"), QStringLiteral("csv"),
                                          QStringLiteral("txt")};
    return kSuffixes.contains(QFileInfo(file).suffix(), Qt::CaseInsensitive);
}

} // namespace

TDataSetList::TDataSetList(TWizardContext& context, const Ui::TxyDataWizard& ui, QWidget& window)
    : QObject(&window), m_context(context), m_ui(ui), m_window(window) {
    OfferFilter(*m_ui.cbx_DataSets);
    PrepareButtons();
    connect(m_ui.cbx_DataSets, &QComboBox::currentIndexChanged, this,
            [this] { Guarded([&] { Q_EMIT Picked(); }); });
}

void TDataSetList::PrepareButtons() {
    m_ui.btnDelete->SetKeyedCaption(TTexts::tr("De&lete"));
    m_ui.btnReverse->SetKeyedCaption(QStringLiteral("I"));
    Connect(*m_ui.btnNew, &TDataSetList::New);
    Connect(*m_ui.btnDelete, &TDataSetList::Delete);
    m_ui.btnDelete->installEventFilter(this);
    Connect(*m_ui.btnImport, &TDataSetList::Import);
    Connect(*m_ui.btnExport, &TDataSetList::Export);
    Connect(*m_ui.btnDuplicate, &TDataSetList::Duplicate);
    Connect(*m_ui.btnMoveFirst, &TDataSetList::MoveToFirst);
    Connect(*m_ui.btnSort, &TDataSetList::Sort);
    Connect(*m_ui.btnReverse, &TDataSetList::Reverse);
    QComboBox& list = *m_ui.cbx_DataSets;
    list.setMinimumWidth(std::clamp(WidthLeft(m_ui), list.minimumWidth(), kWidestNeed));
    connect(&list, &QComboBox::currentTextChanged, &list, &QWidget::setToolTip);
}

void TDataSetList::Connect(QPushButton& button, void (TDataSetList::*action)()) {
    AllowNarrow(button);
    connect(&button, &QPushButton::clicked, this, [this, action] { Guarded([&] { (this->*action)(); }); });
}

void TDataSetList::Fill(int number) {
    const QSignalBlocker quiet(m_ui.cbx_DataSets);
    m_ui.cbx_DataSets->clear();
    for (const auto& series : m_context.WorkGraph().Series())
        m_ui.cbx_DataSets->addItem(SeriesIcon(*series), QString::fromStdString(series->SeriesName()),
                                   series->SeriesIndex());
    m_ui.cbx_DataSets->setCurrentIndex(m_ui.cbx_DataSets->findData(number));
}

void TDataSetList::Choose(const TSeries& series) {
    const QSignalBlocker quiet(m_ui.cbx_DataSets);
    m_ui.cbx_DataSets->setCurrentIndex(m_ui.cbx_DataSets->findData(series.SeriesIndex()));
}

int TDataSetList::ChosenPlace() const {
    return m_ui.cbx_DataSets->currentIndex();
}

int TDataSetList::ChosenNumber() const {
    return ChosenPlace() < 0 ? -1 : m_ui.cbx_DataSets->currentData().toInt();
}

// Not the chosen one: while another one is being picked, the data set that is left may get its name.
void TDataSetList::ShowName(const TSeries& series, const QString& name) {
    const QSignalBlocker quiet(m_ui.cbx_DataSets);
    m_ui.cbx_DataSets->setItemText(m_ui.cbx_DataSets->findData(series.SeriesIndex()), name);
}

void TDataSetList::ShowLook(const TSeries& series) {
    if (ChosenPlace() >= 0) m_ui.cbx_DataSets->setItemIcon(ChosenPlace(), SeriesIcon(series));
}

void TDataSetList::EnableFor(const TSeries* shown) {
    for (QWidget* control : std::initializer_list<QWidget*>{m_ui.btnExport, m_ui.btnDuplicate,
                                                            m_ui.btnMoveFirst, m_ui.btnSort, m_ui.btnReverse})
        control->setEnabled(shown != nullptr);
    for (QWidget* control : std::initializer_list<QWidget*>{m_ui.cbx_DataSets, m_ui.btnDelete})
        control->setEnabled(m_ui.cbx_DataSets->count() > 0);
}

void TDataSetList::New() {
    m_context.CommitPages();
    m_context.Session().Change("add data set", [this] {
        const int number = m_context.WorkGraph().AddSeries();
        TSeries& series = *m_context.WorkGraph().FindSeries(number);
        series.SetSeriesName("DataSet " + std::to_string(number));
        TakeNextStyle(series);
        m_context.FillList(number);
    });
}

void TDataSetList::Delete() {
    if (ChosenPlace() < 0) return ShowMessage("There is no DataSet selected", TMessageKind::Error);
    const std::string name = m_ui.cbx_DataSets->currentText().toStdString();
    if (!AskYesNo("Delete DataSet  \"" + name + "\"  permanently?")) return;
    m_context.Session().Change("delete data set " + name, [&] {
        m_context.WorkGraph().DeleteSeries(ChosenNumber());
        m_context.WorkGraph().RequestRepaint(true);
        m_context.FillList(m_context.WorkGraph().Appearance()->CurrSerIndex());
    });
}

/// A click on Delete says why it is off. The window's controls outlive what knows their names.
bool TDataSetList::eventFilter(QObject* watched, QEvent* event) {
    if (event->type() == QEvent::MouseButtonRelease && !static_cast<QWidget*>(watched)->isEnabled())
        Guarded([this] { Delete(); });
    return QObject::eventFilter(watched, event);
}

void TDataSetList::Import() {
    m_context.CommitPages();
    const QString filter = ToolkitFilter(TTexts::tr("DataSet Files (*.lds)|*.lds; *.LDS"));
    const QString file =
        QFileDialog::getOpenFileName(&m_window, TTexts::tr("Load DataSet from File"), {}, filter);
    if (file.isEmpty()) return;
    m_context.Session().Change("load " + QFileInfo(file).fileName().toStdString(), [&] {
        const int number = m_context.WorkGraph().AddSeries();
        TSeries& series = *m_context.WorkGraph().FindSeries(number);
        LoadSeriesFromFile(series, file.toStdString());
        TakeOwnStyle(series);
        m_context.FillList(number);
    });
}

QString TDataSetList::AskExportFile(const TSeries& series) {
    QString proposed = QString::fromStdString(series.SeriesName()).trimmed();
    for (const QChar c : QStringLiteral(R"(/\*:?"<>|)"))
        proposed.replace(c, u'_'); // what Windows takes in no name
    QFileDialog dialog(&m_window, TTexts::tr("Save DataSet to File"));
    dialog.setAcceptMode(QFileDialog::AcceptSave);
    dialog.setOption(QFileDialog::DontConfirmOverwrite); // asked by Export itself
    dialog.setNameFilter(ToolkitFilter(
        TTexts::tr("LumoPlot DataSet (*.lds)|*.lds;*.LDS|ASCII Data File (*.dat)|*.dat;*.DAT")));
    dialog.setDefaultSuffix(QStringLiteral("lds"));
    connect(&dialog, &QFileDialog::filterSelected, &dialog, [&dialog](const QString& filter) {
        dialog.setDefaultSuffix(filter.contains(QStringLiteral(".dat")) ? QStringLiteral("dat")
                                                                        : QStringLiteral("lds"));
    });
    dialog.selectFile(proposed);
    return dialog.exec() == QDialog::Accepted ? dialog.selectedFiles().value(0) : QString();
}

void TDataSetList::Export() {
    TSeries* series = m_context.CurrSeries();
    if (!series) return;
    const QString file = AskExportFile(*series);
    if (file.isEmpty()) return;
    m_context.CommitPages();
    if (QFileInfo::exists(file) &&
        !AskYesNo("File \"" + file.toStdString() + "\" exists. Overwrite?", TMessageKind::Warning))
        return;
    if (!ReadEveryRowOfCurrent()) return;
    if (!IsNameOfText(file)) return SaveSeriesToFile(*series, file.toStdString());
    const std::string lost = SaveSeriesAsText(*series, file.toStdString());
    if (!lost.empty())
        ShowMessage("\"" + ShownLine(series->SeriesName(), 60) + "\": " + lost, TMessageKind::Warning);
}

// What leaves the program comes from every row of the source. False when the user cancelled the reading.
bool TDataSetList::ReadEveryRowOfCurrent() {
    bool isWhole = true;
    m_context.Session().FollowUp([&] { isWhole = ReadEveryRow(*m_context.CurrSeries(), &m_window); });
    m_context.RefillPages();
    return isWhole;
}

void TDataSetList::Duplicate() {
    if (!m_context.CurrSeries()) return;
    m_context.CommitPages();
    const TSeries& original = *m_context.CurrSeries();
    m_context.Session().Change("duplicate " + original.SeriesName(), [&] {
        const int number = m_context.WorkGraph().AddSeries();
        TSeries& copy = *m_context.WorkGraph().FindSeries(number);
        copy.CopyFrom(original);
        TakeNextStyle(copy);
        copy.SetSeriesName(original.SeriesName() + " DPL " + std::to_string(number));
        m_context.WorkGraph().PrepareForDrawing();
        m_context.FillList(number);
    });
}

void TDataSetList::MoveToFirst() {
    const TSeries* series = m_context.CurrSeries();
    if (!series || series->SeriesIndex() == 1) return;
    m_context.CommitPages();
    m_context.Session().Change("move " + series->SeriesName() + " to the front", [&] {
        m_context.WorkGraph().MoveSeriesToFirst(series->SeriesIndex());
        m_context.FillList(1);
    });
}

void TDataSetList::Sort() {
    if (!m_context.CurrSeries()) return;
    m_context.CommitPages();
    m_context.Session().Change("sort data sets", [this] {
        m_context.WorkGraph().SortSeriesByName();
        m_context.FillList(1);
    });
}

void TDataSetList::Reverse() {
    if (!m_context.CurrSeries()) return;
    m_context.CommitPages();
    m_context.Session().Change("reverse data sets", [this] {
        m_context.WorkGraph().ReverseSeries();
        m_context.FillList(1);
    });
}

} // namespace lumoplot
