#include "dialogs/editing/mark_editor.h"

#include "controls/number_edit.h"
#include "controls/return_key.h"
#include "controls/texts.h"
#include "dialogs/color_choice.h"
#include "dialogs/manual_window.h"
#include "graph/drawing/lines/canvas.h"
#include "support/guard.h"
#include "ui_mark_editor.h"

#include <QKeyEvent>
#include <QScreen>
#include <utility>

namespace lumoplot {
namespace {

constexpr QChar kEllipsis(0x2026);

/// The labels of the four coordinates by the type of the mark; a field without one is not shown.
constexpr std::array<std::array<const char*, 4>, 4> kLabels = {{
    {QT_TRANSLATE_NOOP("lumoplot::TTexts", "Vert Line X = "), nullptr, nullptr, nullptr},
    {nullptr, QT_TRANSLATE_NOOP("lumoplot::TTexts", "Hor Line Y = "), nullptr, nullptr},
    {QT_TRANSLATE_NOOP("lumoplot::TTexts", "Point X = "), QT_TRANSLATE_NOOP("lumoplot::TTexts", "Point Y = "),
     QT_TRANSLATE_NOOP("lumoplot::TTexts", "Point Width"), nullptr},
    {QT_TRANSLATE_NOOP("lumoplot::TTexts", "Origin X = "),
     QT_TRANSLATE_NOOP("lumoplot::TTexts", "Origin Y = "), QT_TRANSLATE_NOOP("lumoplot::TTexts", "End X = "),
     QT_TRANSLATE_NOOP("lumoplot::TTexts", "End Y = ")},
}};

/// An entry of the list: the first line of the text.
QString EntryOf(const TGraphMark& mark) {
    QString text = QString::fromStdString(mark.Caption);
    const auto end = std::find_if(text.begin(), text.end(), [](QChar c) { return c == u'\r' || c == u'\n'; });
    if (end != text.end()) text = text.left(end - text.begin()) + kEllipsis;
    return QStringLiteral("%1: %2").arg(mark.ID).arg(text);
}

} // namespace

TxyMark::TxyMark(TxyGraph& graph, QWidget* parent)
    : QDialog(parent), m_graph(graph), m_ui(std::make_unique<Ui::TxyMark>()) {
    m_ui->setupUi(this);
    m_fields = {
        TField{m_ui->e_X1, m_ui->lblX1, &TGraphMark::X1}, TField{m_ui->e_Y1, m_ui->lblY1, &TGraphMark::Y1},
        TField{m_ui->e_X2, m_ui->lblX2, &TGraphMark::X2}, TField{m_ui->e_Y2, m_ui->lblY2, &TGraphMark::Y2}};
    KeepOpenOnReturn(*this);
    OfferManual(*this, [] { return QStringLiteral("editing.md"); });
    ConnectList();
    ConnectFields();
    m_ui->cb_ShowMarks->setChecked(graph.Appearance()->ShowMarks());
    FillList(-1);
}

TxyMark::~TxyMark() = default;

void TxyMark::ConnectList() {
    connect(m_ui->m_Marks, &QListWidget::itemSelectionChanged, this, [this] {
        if (!m_filling) Guarded([this] { ShowSelection(); });
    });
    const auto on = [this](QPushButton* button, void (TxyMark::*action)()) {
        connect(button, &QPushButton::clicked, this, [this, action] { Guarded([&] { (this->*action)(); }); });
    };
    on(m_ui->btnNew, &TxyMark::AddMark);
    on(m_ui->btnDelete, &TxyMark::DeleteMark);
    on(m_ui->btnClearAll, &TxyMark::ClearAll);
    on(m_ui->btnColor, &TxyMark::PickColor);
    connect(m_ui->cb_ShowMarks, &QCheckBox::toggled, this,
            [this](bool shown) { m_graph.Appearance()->SetShowMarks(shown); });
    connect(m_ui->btnOk, &QPushButton::clicked, this, &QDialog::accept);
}

void TxyMark::ConnectFields() {
    for (const TField& field : m_fields) {
        connect(field.Edit, &QLineEdit::textChanged, this, [this, &field] { TakeValue(field); });
        connect(field.Edit, &QLineEdit::editingFinished, this, [this, &field] {
            WriteBack();
            if (m_selected) ShowValue(field); // a text that is no number is gone
        });
        field.Edit->installEventFilter(this);
    }
    connect(m_ui->m_Text, &QPlainTextEdit::textChanged, this, [this] { TakeText(); });
    m_ui->m_Text->installEventFilter(this);
    connect(m_ui->cbx_Type, &QComboBox::currentIndexChanged, this, [this](int item) { TakeType(item); });
    connect(m_ui->cbx_Status, &QComboBox::currentIndexChanged, this, [this](int item) { TakeStatus(item); });
}

// Enter in an edit takes what was typed and does not close the dialog; in the text it also begins a line.
bool TxyMark::eventFilter(QObject* watched, QEvent* event) {
    if (watched == m_ui->m_Text && event->type() == QEvent::FocusOut) WriteBack();
    const bool isKey = event->type() == QEvent::KeyPress;
    const int key = isKey ? static_cast<QKeyEvent*>(event)->key() : 0;
    if (key == Qt::Key_Return || key == Qt::Key_Enter) {
        const bool isField = qobject_cast<QLineEdit*>(watched) != nullptr;
        if (isField) WriteBack();
        if (isField) return true;
        // The line is not there yet.
        QMetaObject::invokeMethod(this, &TxyMark::WriteBack, Qt::QueuedConnection);
    }
    return QDialog::eventFilter(watched, event);
}

void TxyMark::FillList(int id) {
    m_filling = true;
    m_ui->m_Marks->clear();
    int selected = -1;
    for (const auto& [markId, mark] : m_graph.Marks().Marks()) {
        auto* entry = new QListWidgetItem(EntryOf(mark), m_ui->m_Marks);
        entry->setData(Qt::UserRole, markId);
        if (markId == id) selected = m_ui->m_Marks->count() - 1;
    }
    m_ui->m_Marks->setCurrentRow(selected);
    m_filling = false;
    m_pending = false;
    ShowSelection();
}

void TxyMark::ShowSelection() {
    WriteBack();
    // The current entry is not enough: a list that gets the focus makes one current.
    const QList<QListWidgetItem*> entries = m_ui->m_Marks->selectedItems();
    const QListWidgetItem* entry = entries.value(0);
    const TGraphMark* mark = entry ? m_graph.Marks().Find(entry->data(Qt::UserRole).toInt()) : nullptr;
    m_selected = mark != nullptr;
    m_mark = mark ? *mark : TGraphMark{};
    if (mark) m_graph.SelectMark(mark->ID);
    m_filling = true;
    m_ui->cbx_Type->setCurrentIndex(static_cast<int>(m_mark.TypeOfMark));
    m_ui->cbx_Status->setCurrentIndex(static_cast<int>(m_mark.WhenDrawn));
    m_ui->m_Text->setPlainText(QString::fromStdString(m_mark.Caption));
    m_filling = false;
    ShowFields();
    ShowColor();
    for (QWidget* control : std::initializer_list<QWidget*>{m_ui->cbx_Type, m_ui->cbx_Status, m_ui->m_Text,
                                                            m_ui->btnColor, m_ui->btnDelete, m_ui->lblType,
                                                            m_ui->lblStatus, m_ui->lblText, m_ui->lblColor})
        control->setEnabled(m_selected);
    m_ui->btnClearAll->setEnabled(m_graph.Marks().Count() > 0);
}

void TxyMark::ShowFields() {
    const auto& labels = kLabels[static_cast<std::size_t>(m_mark.TypeOfMark)];
    for (std::size_t i = 0; i < m_fields.size(); ++i) {
        const bool shown = m_selected && labels[i];
        m_fields[i].Edit->setVisible(shown);
        m_fields[i].Label->setVisible(shown);
        if (shown) m_fields[i].Label->setText(TTexts::tr(labels[i]));
        ShowValue(m_fields[i]);
    }
}

void TxyMark::ShowValue(const TField& field) {
    const bool before = std::exchange(m_filling, true);
    if (m_selected)
        ShowNumber(*field.Edit, m_mark.*field.Value);
    else
        ShowNumberText(*field.Edit, {});
    m_filling = before;
}

void TxyMark::ShowColor() {
    QPalette swatch = palette();
    if (m_selected) swatch.setColor(QPalette::Window, ToQColor(m_mark.Color));
    m_ui->colorSwatch->setPalette(swatch);
}

void TxyMark::TakeValue(const TField& field) {
    const auto value = IsEditing() ? NumberIn(*field.Edit) : std::nullopt;
    if (!value) return;
    m_mark.*field.Value = *value;
    m_pending = true;
}

void TxyMark::TakeText() {
    if (!IsEditing()) return;
    m_mark.Caption = m_ui->m_Text->toPlainText().toStdString();
    m_ui->m_Marks->selectedItems().first()->setText(EntryOf(m_mark));
    m_pending = true;
}

void TxyMark::TakeType(int item) {
    if (!IsEditing()) return;
    m_mark.TypeOfMark = static_cast<TMarkType>(item);
    m_pending = true;
    WriteBack();
    ShowFields();
}

void TxyMark::TakeStatus(int item) {
    if (!IsEditing()) return;
    m_mark.WhenDrawn = static_cast<TMarkDrawing>(item);
    m_pending = true;
    WriteBack();
}

void TxyMark::PickColor() {
    if (!m_selected) return;
    const QColor picked = ChooseColor(ToQColor(m_mark.Color), this, TTexts::tr("Select Color"));
    if (!picked.isValid()) return;
    m_mark.Color = ToColor(picked);
    m_pending = true;
    ShowColor();
    WriteBack();
}

void TxyMark::AddMark() {
    WriteBack();
    TGraphMark mark;
    mark.Color = 0;
    FillList(m_graph.AddMark(mark));
}

void TxyMark::DeleteMark() {
    if (!m_selected) return;
    m_pending = false;
    m_graph.DeleteMark(m_mark.ID);
    FillList(-1);
}

void TxyMark::ClearAll() {
    if (m_graph.Marks().Count() == 0 || !AskYesNo("Clear All Marks?")) return;
    m_pending = false;
    m_graph.ClearMarks();
    FillList(-1);
}

void TxyMark::WriteBack() {
    if (std::exchange(m_pending, false)) m_graph.SetMark(m_mark);
}

void TxyMark::done(int result) {
    WriteBack();
    QDialog::done(result);
}

bool EditMarks(QWidget* ownerForm, TxyGraph& graph) {
    TxyMark editor(graph, ownerForm);
    if (ownerForm) editor.setWindowIcon(ownerForm->windowIcon());
    editor.adjustSize();
    const QRect screen =
        (ownerForm ? ownerForm->screen() : QGuiApplication::primaryScreen())->availableGeometry();
    editor.move(screen.center() - editor.rect().center());
    return editor.exec() == QDialog::Accepted;
}

} // namespace lumoplot
