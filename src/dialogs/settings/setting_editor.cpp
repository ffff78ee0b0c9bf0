#include "dialogs/settings/setting_editor.h"

#include "controls/number_edit.h"
#include "controls/texts.h"
#include "dialogs/color_choice.h"
#include "graph/drawing/lines/canvas.h"
#include "support/number_text.h"

#include <QCheckBox>
#include <QComboBox>
#include <QFileDialog>
#include <QFontDialog>
#include <QFontInfo>
#include <QHBoxLayout>
#include <QLineEdit>
#include <QPlainTextEdit>
#include <QPushButton>
#include <QSignalBlocker>
#include <QSpinBox>
#include <QToolButton>
#include <array>
#include <cmath>

namespace lumoplot {
namespace {

// Automatic ranges end a hair behind round numbers; nobody wants to read that.
constexpr int kRoundDigits = 8;
constexpr int kTypedDigits = 15;
constexpr double kHair = 2e-9; // of the number
constexpr int kLargestNumber = 65535;
constexpr int kLinesShown = 2;

QString TextOf(const TBoundSetting& setting) {
    return QString::fromStdString(std::get<std::string>(setting.Get()));
}

/// Everything that the makers of controls need.
struct TMaking {
    TBoundSetting Setting;
    QString Name;
    QWidget* Parent;
    std::function<void()> Changed;

    template <class TControl>
    TControl* Make(const char* prefix) const {
        auto* control = new TControl(Parent);
        control->setObjectName(QLatin1String(prefix) + Name);
        return control;
    }
    /// Nothing happens for a value that the setting has.
    void Put(const TFieldValue& value) const {
        if (value == Setting.Get()) return;
        Setting.Set(value);
        Changed();
    }
};

TSettingEditor SwitchEditor(const TMaking& making) {
    auto* box = making.Make<QCheckBox>("cb_");
    QObject::connect(box, &QCheckBox::toggled, box, [making](bool on) { making.Put(on); });
    return {box, [box, making] {
                const QSignalBlocker quiet(box);
                box->setChecked(std::get<bool>(making.Setting.Get()));
            }};
}

TSettingEditor WholeNumberEditor(const TMaking& making, int least) {
    auto* edit = making.Make<QSpinBox>("se_");
    edit->setRange(least, kLargestNumber);
    edit->setKeyboardTracking(true);
    QObject::connect(edit, &QSpinBox::valueChanged, edit, [making](int value) { making.Put(value); });
    // A setter may have taken another value than the typed one.
    QObject::connect(edit, &QSpinBox::editingFinished, edit, [edit, making] {
        const QSignalBlocker quiet(edit);
        edit->setValue(std::get<int>(making.Setting.Get()));
    });
    return {edit, [edit, making] {
                const int value = std::get<int>(making.Setting.Get());
                if (edit->hasFocus() || edit->value() == value) return;
                const QSignalBlocker quiet(edit);
                edit->setValue(value);
            }};
}

TSettingEditor ChoiceEditor(const TMaking& making, std::span<const char* const> choices) {
    auto* box = making.Make<QComboBox>("cbx_");
    for (const char* choice : choices) box->addItem(TTexts::tr(choice));
    QObject::connect(box, &QComboBox::currentIndexChanged, box, [making](int item) { making.Put(item); });
    return {box, [box, making] {
                const QSignalBlocker quiet(box);
                box->setCurrentIndex(std::get<int>(making.Setting.Get()));
            }};
}

TSettingEditor TextEditor(const TMaking& making) {
    auto* edit = making.Make<QLineEdit>("e_");
    QObject::connect(edit, &QLineEdit::textEdited, edit,
                     [making](const QString& text) { making.Put(text.toStdString()); });
    return {edit, [edit, making] { ShowText(*edit, std::get<std::string>(making.Setting.Get())); }};
}

/// A text that may have line breaks; Tab leaves it.
TSettingEditor LinesEditor(const TMaking& making) {
    auto* edit = making.Make<QPlainTextEdit>("m_");
    edit->setTabChangesFocus(true);
    edit->setFixedHeight(edit->fontMetrics().lineSpacing() * kLinesShown + 12);
    QObject::connect(edit, &QPlainTextEdit::textChanged, edit,
                     [edit, making] { making.Put(edit->toPlainText().toStdString()); });
    return {edit, [edit, making] {
                const QString text = TextOf(making.Setting);
                if (edit->toPlainText() == text) return;
                const QSignalBlocker quiet(edit);
                edit->setPlainText(text);
            }};
}

void ShowRounded(QLineEdit& edit, double value) {
    if (edit.hasFocus() && edit.isModified()) return;
    const std::string round = FormatGeneral(value, kRoundDigits);
    const bool isRound = std::abs(ParseFloat(round) - value) <= kHair * std::abs(value);
    ShowNumberText(edit, isRound ? round : FormatGeneral(value, kTypedDigits));
    edit.setModified(false);
}

bool IsWrong(const QLineEdit& edit) {
    return edit.isEnabled() && !edit.toolTip().isEmpty();
}

TSettingEditor NumberEditor(const TMaking& making) {
    auto* edit = making.Make<QLineEdit>("e_");
    QObject::connect(edit, &QLineEdit::textEdited, edit, [edit, making] {
        if (const auto value = FiniteNumberIn(*edit)) making.Put(*value);
    });
    const auto show = [edit, making] {
        if (!IsWrong(*edit)) ShowRounded(*edit, std::get<double>(making.Setting.Get()));
    };
    return {edit, show, [edit]() -> QWidget* { return IsWrong(*edit) ? edit : nullptr; }};
}

/// Two numbers that only go together.
TSettingEditor RangeEditor(const TMaking& making, const TEditedSetting& edited) {
    auto* both = new QWidget(making.Parent);
    auto* row = new QHBoxLayout(both);
    row->setContentsMargins(0, 0, 0, 0);
    std::array<QLineEdit*, 2> ends{};
    for (std::size_t i = 0; i < ends.size(); ++i) {
        ends[i] = new QLineEdit(both);
        ends[i]->setObjectName((i == 0 ? QLatin1String("e_From_") : QLatin1String("e_To_")) + making.Name);
        ends[i]->setAccessibleName(i == 0 ? QObject::tr("Range, from") : QObject::tr("Range, to"));
        row->addWidget(ends[i]);
    }
    both->setFocusProxy(ends[0]);
    // An end that was not typed keeps the digits that are not shown.
    const auto valueOf = [ends](std::size_t i, const TBoundSetting& setting) -> std::optional<double> {
        return ends[i]->isModified() ? FiniteNumberIn(*ends[i])
                                     : std::optional(std::get<double>(setting.Get()));
    };
    const auto take = [=] {
        const auto from = valueOf(0, edited.Setting);
        const auto to = valueOf(1, edited.Other);
        if (!from || !to) return;
        const QString objection = edited.Objection(*from, *to);
        for (QLineEdit* end : ends)
            if (end->isModified()) MarkEdit(*end, objection);
        if (!objection.isEmpty()) return;
        // In an order in which neither passes the other one.
        const bool goesUp = *from >= std::get<double>(edited.Other.Get());
        if (goesUp) edited.Other.Set(*to);
        if (*from != std::get<double>(edited.Setting.Get())) edited.Setting.Set(*from);
        if (*to != std::get<double>(edited.Other.Get())) edited.Other.Set(*to);
        making.Changed();
    };
    for (QLineEdit* end : ends) QObject::connect(end, &QLineEdit::textEdited, end, take);
    const auto wrong = [ends]() -> QWidget* {
        for (QLineEdit* end : ends)
            if (IsWrong(*end)) return end;
        return nullptr;
    };
    const auto show = [=] {
        if (wrong()) return;
        ShowRounded(*ends[0], std::get<double>(edited.Setting.Get()));
        ShowRounded(*ends[1], std::get<double>(edited.Other.Get()));
    };
    return {both, show, wrong};
}

QIcon Swatch(const QColor& color, const QWidget& widget) {
    QPixmap picture(QSize(28, 14) * widget.devicePixelRatioF());
    picture.setDevicePixelRatio(widget.devicePixelRatioF());
    picture.fill(widget.palette().color(QPalette::Dark));
    QPainter(&picture).fillRect(QRectF(1, 1, 26, 12), color);
    return picture;
}

TSettingEditor ColorEditor(const TMaking& making) {
    auto* button = making.Make<QPushButton>("b_");
    button->setAutoDefault(false);
    button->setIconSize({28, 14});
    const auto color = [making] {
        return ToQColor(static_cast<TColor>(std::get<int>(making.Setting.Get())));
    };
    QObject::connect(button, &QPushButton::clicked, button, [button, making, color] {
        const QColor picked = ChooseColor(color(), button->window(), QObject::tr("Select Color"));
        if (picked.isValid()) making.Put(static_cast<int>(ToColor(picked)));
    });
    return {button, [button, color] {
                button->setIcon(Swatch(color(), *button));
                button->setText(color().name());
            }};
}

QString FontText(const TFontSpec& font) {
    QStringList words{QString::fromStdString(font.Name), QObject::tr("%1 px").arg(font.Size)};
    if (font.Bold) words += QObject::tr("bold");
    if (font.Italic) words += QObject::tr("italic");
    if (font.Underline) words += QObject::tr("underlined");
    if (font.StrikeOut) words += QObject::tr("struck out");
    return words.join(QStringLiteral(", "));
}

// The dialog knows only fonts that are there: a font that is not is shown by the one that is drawn in its
// place.
QString DrawnFamily(const TFontSpec& font) {
    return QFontInfo(QFont(QString::fromStdString(font.Name))).family();
}

QFont ToDialogFont(const TFontSpec& font) {
    QFont result(DrawnFamily(font));
    result.setPointSize(font.Size);
    result.setBold(font.Bold);
    result.setItalic(font.Italic);
    result.setUnderline(font.Underline);
    result.setStrikeOut(font.StrikeOut);
    return result;
}

TFontSpec FromDialogFont(const QFont& font, TFontSpec spec) {
    if (font.family() != DrawnFamily(spec)) spec.Name = font.family().toStdString();
    spec.Size = font.pointSize();
    spec.Bold = font.bold();
    spec.Italic = font.italic();
    spec.Underline = font.underline();
    spec.StrikeOut = font.strikeOut();
    return spec;
}

/// The first control takes the room that the second leaves, and the focus of both.
void PutSideBySide(QWidget& both, QWidget& first, QWidget& second) {
    auto* row = new QHBoxLayout(&both);
    row->setContentsMargins(0, 0, 0, 0);
    row->addWidget(&first, 1);
    row->addWidget(&second);
    both.setFocusProxy(&first);
}

/// Two buttons: the font and the colour of its letters.
TSettingEditor FontEditor(const TMaking& making) {
    auto* both = new QWidget(making.Parent);
    auto* button = new QPushButton(both);
    button->setObjectName(QLatin1String("b_") + making.Name);
    auto* colorButton = new QPushButton(both);
    colorButton->setObjectName(QLatin1String("b_Color_") + making.Name);
    colorButton->setAccessibleName(QObject::tr("Colour of the letters"));
    colorButton->setToolTip(QObject::tr("Colour of the letters"));
    for (QPushButton* part : {button, colorButton}) part->setAutoDefault(false);
    button->setSizePolicy(QSizePolicy::Ignored, QSizePolicy::Fixed);
    PutSideBySide(*both, *button, *colorButton);
    const auto font = [making] { return std::get<TFontSpec>(making.Setting.Get()); };
    QObject::connect(button, &QPushButton::clicked, button, [=] {
        bool isChosen = false;
        const QFont chosen = QFontDialog::getFont(&isChosen, ToDialogFont(font()), button->window());
        if (isChosen) making.Put(FromDialogFont(chosen, font()));
    });
    QObject::connect(colorButton, &QPushButton::clicked, button, [=] {
        const QColor picked =
            ChooseColor(ToQColor(font().Color), button->window(), QObject::tr("Select Color"));
        TFontSpec changed = font();
        changed.Color = ToColor(picked);
        if (picked.isValid()) making.Put(changed);
    });
    return {both, [=] {
                button->setText(FontText(font()));
                colorButton->setIcon(Swatch(ToQColor(font().Color), *colorButton));
            }};
}

TSettingEditor PathEditor(const TMaking& making, TSettingEdit kind) {
    auto* both = new QWidget(making.Parent);
    auto* edit = new QLineEdit(both);
    edit->setObjectName(QLatin1String("e_") + making.Name);
    auto* browse = new QToolButton(both);
    browse->setObjectName(QLatin1String("b_") + making.Name);
    browse->setText(QStringLiteral("…"));
    browse->setAccessibleName(QObject::tr("Choose"));
    browse->setFocusPolicy(Qt::StrongFocus);
    PutSideBySide(*both, *edit, *browse);
    QObject::connect(edit, &QLineEdit::textEdited, edit,
                     [making](const QString& text) { making.Put(text.toStdString()); });
    QObject::connect(browse, &QToolButton::clicked, edit, [=] {
        QWidget* window = edit->window();
        const QString chosen = kind == TSettingEdit::Folder
                                   ? QFileDialog::getExistingDirectory(window, {}, edit->text())
                                   : QFileDialog::getOpenFileName(window, {}, edit->text());
        if (!chosen.isEmpty()) making.Put(chosen.toStdString());
    });
    return {both, [edit, making] { ShowText(*edit, std::get<std::string>(making.Setting.Get())); }};
}

TSettingEditor EditorByType(const TMaking& making, TSettingEdit kind) {
    const TFieldValue value = making.Setting.Get();
    if (std::holds_alternative<bool>(value)) return SwitchEditor(making);
    if (std::holds_alternative<double>(value)) return NumberEditor(making);
    if (std::holds_alternative<TFontSpec>(value)) return FontEditor(making);
    if (std::holds_alternative<std::string>(value)) return TextEditor(making);
    return WholeNumberEditor(making, kind == TSettingEdit::SignedNumber ? -kLargestNumber : 0);
}

} // namespace

TSettingEditor MakeSettingEditor(const TEditedSetting& edited, const QString& name, QWidget* parent,
                                 std::function<void()> changed) {
    const TMaking making{edited.Setting, name, parent, std::move(changed)};
    switch (edited.Words->Edit) {
    case TSettingEdit::Color: return ColorEditor(making);
    case TSettingEdit::Choice: return ChoiceEditor(making, edited.Words->Choices);
    case TSettingEdit::Lines: return LinesEditor(making);
    case TSettingEdit::File:
    case TSettingEdit::Folder: return PathEditor(making, edited.Words->Edit);
    case TSettingEdit::Range: return RangeEditor(making, edited);
    default: return EditorByType(making, edited.Words->Edit);
    }
}

} // namespace lumoplot
