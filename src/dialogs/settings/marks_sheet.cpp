#include "dialogs/settings/marks_sheet.h"

#include <QComboBox>
#include <QHBoxLayout>
#include <QPushButton>
#include <QSignalBlocker>

namespace lumoplot {
namespace {

/// The first line of the caption.
QString ShownName(const TGraphMark& mark) {
    const QString caption = QString::fromStdString(mark.Caption).section(QLatin1Char('\n'), 0, 0);
    return QStringLiteral("%1: %2").arg(mark.ID).arg(caption);
}

} // namespace

TMarksSheet::TMarksSheet(TxyGraph& graph, QWidget* parent)
    : TSettingsSheet(tr("Marks"), parent), m_graph(graph), m_list(new QComboBox), m_delete(new QPushButton) {
    Add(SettingsOf(*graph.Appearance()), MarksInCommonWords(), QStringLiteral("Appearance"));
    auto* controls = new QWidget(this);
    auto* row = new QHBoxLayout(controls);
    row->setContentsMargins(0, 0, 0, 0);
    m_list->setObjectName(QStringLiteral("cbx_Mark"));
    m_list->setAccessibleName(tr("Mark"));
    m_list->setSizePolicy(QSizePolicy::Ignored, QSizePolicy::Fixed);
    auto* add = new QPushButton(tr("&New Mark"), controls);
    add->setObjectName(QStringLiteral("b_NewMark"));
    m_delete->setText(tr("&Delete Mark"));
    m_delete->setObjectName(QStringLiteral("b_DeleteMark"));
    row->addWidget(m_list, 1);
    row->addWidget(add);
    row->addWidget(m_delete);
    AddControls(controls);
    for (QPushButton* button : {add, m_delete}) button->setAutoDefault(false);
    Add(SettingsOf(m_mark), MarkWords(), QStringLiteral("Mark"));
    connect(m_list, &QComboBox::currentIndexChanged, this, &TMarksSheet::Select);
    connect(add, &QPushButton::clicked, this, &TMarksSheet::AddMark);
    connect(m_delete, &QPushButton::clicked, this, &TMarksSheet::DeleteMark);
    connect(this, &TSettingsSheet::Changed, this, [this] {
        if (m_mark.ID == 0) return;
        m_graph.SetMark(m_mark);
        m_list->setItemText(m_list->currentIndex(), ShownName(m_mark));
    });
    FillList(graph.Marks().CurrentID());
}

void TMarksSheet::FillList(int id) {
    {
        const QSignalBlocker quiet(m_list);
        m_list->clear();
        for (const auto& [markId, mark] : m_graph.Marks().Marks()) m_list->addItem(ShownName(mark), markId);
        m_list->setCurrentIndex(m_list->findData(id));
    }
    Select(m_list->currentIndex());
}

void TMarksSheet::Select(int item) {
    const TGraphMark* mark = m_graph.Marks().Find(m_list->itemData(item).toInt());
    m_mark = mark ? *mark : TGraphMark{};
    m_delete->setEnabled(mark != nullptr);
    m_list->setEnabled(m_list->count() > 0);
    EnableSection(QStringLiteral("Mark"), mark != nullptr);
    ShowValues();
}

void TMarksSheet::AddMark() {
    TGraphMark mark;
    mark.X1 = (m_graph.XAxis()->Min() + m_graph.XAxis()->Max()) / 2;
    mark.Y1 = (m_graph.YAxis()->Min() + m_graph.YAxis()->Max()) / 2;
    m_graph.Appearance()->SetShowMarks(true);
    FillList(m_graph.AddMark(mark));
    Q_EMIT Changed();
}

void TMarksSheet::DeleteMark() {
    m_graph.DeleteMark(m_mark.ID);
    FillList(m_graph.Marks().CurrentID());
    Q_EMIT Changed();
}

} // namespace lumoplot
