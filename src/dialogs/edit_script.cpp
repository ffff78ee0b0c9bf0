#include "dialogs/edit_script.h"

#include "controls/return_key.h"
#include "controls/texts.h"
#include "dialogs/color_choice.h"
#include "dialogs/text_printing.h"
#include "support/guard.h"
#include "ui_edit_script.h"

#include <QClipboard>
#include <QFontDatabase>
#include <QFontDialog>
#include <QMenu>
#include <QPrintDialog>
#include <QPrintPreviewDialog>
#include <QPrinter>

namespace lumoplot {
namespace {

constexpr QSize kStartSize(560, 420);

} // namespace

TfrmEditScript::TfrmEditScript(QWidget* owner)
    : QDialog(owner, Qt::Dialog | Qt::WindowMinMaxButtonsHint | Qt::WindowCloseButtonHint),
      m_ui(std::make_unique<Ui::TfrmEditScript>()) {
    m_ui->setupUi(this);
    m_ui->m_Script->setFont(QFontDatabase::systemFont(QFontDatabase::FixedFont)); // reports have columns
    KeepOpenOnReturn(*this);
    resize(kStartSize);
    ConnectControls();
}

TfrmEditScript::~TfrmEditScript() = default;

void TfrmEditScript::ConnectControls() {
    connect(m_ui->m_Script, &QPlainTextEdit::textChanged, this, [this] { m_changed = true; });
    connect(m_ui->m_Script, &QWidget::customContextMenuRequested, this, &TfrmEditScript::ShowMenu);
    connect(m_ui->btnOk, &QPushButton::clicked, this, &QDialog::accept);
    connect(m_ui->btnClose, &QPushButton::clicked, this, &QDialog::reject);
}

void TfrmEditScript::SetLines(const std::vector<std::string>& lines) {
    QStringList texts;
    for (const std::string& line : lines) texts.append(QString::fromStdString(line));
    m_ui->m_Script->setPlainText(texts.join(QLatin1Char('\n')));
    m_changed = false;
}

std::vector<std::string> TfrmEditScript::Lines() const {
    std::vector<std::string> lines;
    for (const QString& line : AllLines()) lines.push_back(line.toStdString());
    return lines;
}

void TfrmEditScript::ShowMenu(const QPoint& place) {
    QPlainTextEdit& script = *m_ui->m_Script;
    QMenu menu(this);
    const auto add = [&](const char* caption, auto action, bool isPossible = true) {
        QAction* entry = menu.addAction(TTexts::tr(caption));
        entry->setEnabled(isPossible);
        connect(entry, &QAction::triggered, this, [action] { Guarded(action); });
        return entry;
    };
    const bool hasSelection = script.textCursor().hasSelection();
    const bool hasText = !script.document()->isEmpty();
    add(
        QT_TRANSLATE_NOOP("lumoplot::TTexts", "C&lear All"),
        [&] { script.selectAll(), script.textCursor().removeSelectedText(); }, hasText);
    menu.addSeparator();
    add(
        QT_TRANSLATE_NOOP("lumoplot::TTexts", "&Copy"), [&] { script.copy(); }, hasSelection);
    add(
        QT_TRANSLATE_NOOP("lumoplot::TTexts", "Cu&t"), [&] { script.cut(); }, hasSelection);
    add(
        QT_TRANSLATE_NOOP("lumoplot::TTexts", "&Paste"), [&] { script.paste(); }, script.canPaste());
    menu.addSeparator();
    add(
        QT_TRANSLATE_NOOP("lumoplot::TTexts", "&Print"), [this] { Print(AllLines()); }, hasText);
    add(
        QT_TRANSLATE_NOOP("lumoplot::TTexts", "Print &Selection"), [this] { Print(SelectedLines()); },
        hasSelection);
    add(
        QT_TRANSLATE_NOOP("lumoplot::TTexts", "Print Pre&view"), [this] { ShowPrintPreview(); }, hasText);
    menu.addSeparator();
    QAction* wrap = add(QT_TRANSLATE_NOOP("lumoplot::TTexts", "&Word Wrap"), [this] { ToggleWordWrap(); });
    wrap->setCheckable(true);
    wrap->setChecked(script.lineWrapMode() != QPlainTextEdit::NoWrap);
    add(QT_TRANSLATE_NOOP("lumoplot::TTexts", "Set &Font"), [this] { ChooseFont(); });
    add(QT_TRANSLATE_NOOP("lumoplot::TTexts", "Set &Background Color"), [this] { ChooseBackgroundColor(); });
    menu.addSeparator();
    add(QT_TRANSLATE_NOOP("lumoplot::TTexts", "C&lose"), [this] { reject(); });
    add(QT_TRANSLATE_NOOP("lumoplot::TTexts", "O&K"), [this] { accept(); });
    menu.exec(script.viewport()->mapToGlobal(place));
}

void TfrmEditScript::ToggleWordWrap() {
    const bool wraps = m_ui->m_Script->lineWrapMode() != QPlainTextEdit::NoWrap;
    m_ui->m_Script->setLineWrapMode(wraps ? QPlainTextEdit::NoWrap : QPlainTextEdit::WidgetWidth);
}

void TfrmEditScript::ChooseFont() {
    bool isChosen = false;
    const QFont font = QFontDialog::getFont(&isChosen, m_ui->m_Script->font(), this);
    if (isChosen) m_ui->m_Script->setFont(font);
}

void TfrmEditScript::ChooseBackgroundColor() {
    QPalette palette = m_ui->m_Script->palette();
    const QColor color = ChooseColor(palette.color(QPalette::Base), this, TTexts::tr("Background Color"));
    if (!color.isValid()) return;
    palette.setColor(QPalette::Base, color);
    // The theme's text may be as light or as dark as the colour chosen.
    palette.setColor(QPalette::Text, qGray(color.rgb()) < 128 ? Qt::white : Qt::black);
    m_ui->m_Script->setPalette(palette);
}

void TfrmEditScript::Print(const QStringList& lines) {
    QPrinter printer(QPrinter::HighResolution);
    QPrintDialog dialog(&printer, this);
    if (dialog.exec() == QDialog::Accepted) PrintLines(printer, Heading(), lines, m_ui->m_Script->font());
}

void TfrmEditScript::ShowPrintPreview() {
    QPrinter printer(QPrinter::HighResolution);
    QPrintPreviewDialog dialog(&printer, this);
    connect(&dialog, &QPrintPreviewDialog::paintRequested, this, [this](QPrinter* page) {
        Guarded([&] { PrintLines(*page, Heading(), AllLines(), m_ui->m_Script->font()); });
    });
    dialog.exec();
}

QString TfrmEditScript::Heading() const {
    return QStringLiteral("   ") + windowTitle();
}

QStringList TfrmEditScript::AllLines() const {
    const QString text = m_ui->m_Script->toPlainText();
    return text.isEmpty() ? QStringList() : text.split(QLatin1Char('\n'));
}

/// A last line without a break counts; a break at the end begins no line.
QStringList TfrmEditScript::SelectedLines() const {
    QStringList lines = m_ui->m_Script->textCursor().selectedText().split(QChar::ParagraphSeparator);
    if (lines.last().isEmpty()) lines.removeLast();
    return lines;
}

bool EditScript(QWidget* ownerForm, std::vector<std::string>* lines, const QString& title, bool* changed) {
    if (changed) *changed = false;
    if (!lines) return false;
    TfrmEditScript window(ownerForm);
    window.setWindowTitle(title);
    window.SetLines(*lines);
    const bool isAccepted = window.exec() == QDialog::Accepted;
    if (changed) *changed = window.Changed();
    if (isAccepted) *lines = window.Lines();
    return isAccepted;
}

} // namespace lumoplot
