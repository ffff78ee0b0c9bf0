#include "dialogs/settings/settings_sheet.h"

#include "controls/texts.h"
#include "dialogs/settings/other_words.h"

#include <QCheckBox>
#include <QComboBox>
#include <QEvent>
#include <QFormLayout>
#include <QLabel>
#include <QSpinBox>
#include <algorithm>

namespace lumoplot {
namespace {

// The key of a range's upper end; its words have that of the lower one.
constexpr int kUpperEnd = 6;
constexpr int kLowerEnd = 7;

const TBoundSetting& SettingOf(const std::vector<TBoundSetting>& settings, int key) {
    return *std::ranges::find(settings, key, &TBoundSetting::Key);
}

TEditedSetting EditedOf(const std::vector<TBoundSetting>& settings, const TSettingWords& words) {
    if (words.Edit != TSettingEdit::Range) return {SettingOf(settings, words.Key), {}, &words, {}};
    return {SettingOf(settings, kLowerEnd), SettingOf(settings, kUpperEnd), &words, {}};
}

} // namespace

TSettingsSheet::TSettingsSheet(const QString& title, QWidget* parent)
    : QWidget(parent), m_title(title), m_form(new QFormLayout(this)) {
    m_form->setRowWrapPolicy(QFormLayout::DontWrapRows);
    m_form->setFieldGrowthPolicy(QFormLayout::ExpandingFieldsGrow);
    m_form->setContentsMargins(6, 4, 6, 4);
    auto* heading = new QLabel(title, this);
    QFont font = heading->font();
    font.setBold(true);
    heading->setFont(font);
    m_form->addRow(heading);
}

void TSettingsSheet::Add(const std::vector<TBoundSetting>& settings, std::span<const TSettingWords> all,
                         const QString& section) {
    for (const TSettingWords& words : all) {
        TEditedSetting edited = EditedOf(settings, words);
        edited.Objection = m_objection;
        const QString fileName = QString::fromLatin1(edited.Setting.Name).trimmed();
        QStringList found{fileName, section};
        for (const char* choice : words.Choices) found += TTexts::tr(choice);
        AddRow(TTexts::tr(words.Label),
               MakeSettingEditor(edited, section + QLatin1Char('_') + fileName, this,
                                 [this] { Q_EMIT Changed(); }),
               found.join(QLatin1Char(' ')), section);
    }
}

void TSettingsSheet::AddRow(const QString& label, const TSettingEditor& editor, const QString& words,
                            const QString& section) {
    QLabel* text = nullptr;
    editor.Widget->setAccessibleName(label);
    if (auto* box = qobject_cast<QCheckBox*>(editor.Widget)) {
        box->setText(label);
        m_form->addRow(box);
    } else {
        text = new QLabel(label + QLatin1Char(':'), this);
        text->setWordWrap(true);
        text->setBuddy(editor.Widget);
        m_form->addRow(text, editor.Widget);
    }
    m_rows.push_back({m_title + QLatin1Char(' ') + label + QLatin1Char(' ') + words, section, text, editor});
    KeepWheelOff(*editor.Widget);
    editor.Show();
}

void TSettingsSheet::AddControls(QWidget* controls) {
    m_form->addRow(controls);
    m_controls.push_back(controls);
}

// The wheel moves the page and changes no value by the way.
void TSettingsSheet::KeepWheelOff(QWidget& control) {
    if (!qobject_cast<QComboBox*>(&control) && !qobject_cast<QSpinBox*>(&control)) return;
    control.setFocusPolicy(Qt::StrongFocus);
    control.installEventFilter(this);
}

bool TSettingsSheet::eventFilter(QObject* watched, QEvent* event) {
    if (event->type() != QEvent::Wheel) return QWidget::eventFilter(watched, event);
    event->ignore();
    return true;
}

void TSettingsSheet::EnableSection(const QString& section, bool isEnabled) {
    for (const TRow& row : m_rows) {
        if (row.Section != section) continue;
        if (row.Label) row.Label->setEnabled(isEnabled);
        row.Editor.Widget->setEnabled(isEnabled);
    }
}

void TSettingsSheet::ShowValues() {
    for (const TRow& row : m_rows) row.Editor.Show();
}

bool TSettingsSheet::Find(const QStringList& words) {
    bool isFound = false;
    for (const TRow& row : m_rows) {
        const auto hasIt = [&row](const QString& word) {
            return row.Words.contains(word, Qt::CaseInsensitive);
        };
        const bool has = std::ranges::all_of(words, [&](const QString& word) {
            return hasIt(word) || std::ranges::any_of(OtherWordsFor(word), hasIt);
        });
        m_form->setRowVisible(row.Editor.Widget, has);
        isFound |= has;
    }
    for (QWidget* controls : m_controls) controls->setVisible(words.isEmpty());
    return isFound;
}

QWidget* TSettingsSheet::FirstShown() const {
    for (const TRow& row : m_rows)
        if (!row.Editor.Widget->isHidden()) return row.Editor.Widget;
    return nullptr;
}

QWidget* TSettingsSheet::Wrong() const {
    for (const TRow& row : m_rows)
        if (QWidget* edit = row.Editor.Wrong()) return edit;
    return nullptr;
}

} // namespace lumoplot
