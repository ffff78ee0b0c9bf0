#include "common/clipping.h"

#include <QAbstractScrollArea>
#include <QApplication>
#include <QCheckBox>
#include <QGroupBox>
#include <QHeaderView>
#include <QLabel>
#include <QPushButton>
#include <QRadioButton>
#include <gtest/gtest.h>

namespace lumoplot {
namespace {

constexpr int kButtonEdges = 6; // pixels of a button that its text cannot have
constexpr int kHeaderEdges = 4;

QString Plain(QString text) {
    return text.remove(u'&');
}

int Advance(const QWidget& widget, const QString& text) {
    int widest = 0;
    for (const QString& line : text.split(u'\n'))
        widest = std::max(widest, widget.fontMetrics().horizontalAdvance(line));
    return widest;
}

/// The size below which the text is cut; nothing for what has none.
QSize NeedOf(const QWidget& widget) {
    if (const auto* label = qobject_cast<const QLabel*>(&widget)) {
        if (label->text().isEmpty() || label->sizePolicy().horizontalPolicy() == QSizePolicy::Ignored)
            return {};
        if (label->wordWrap()) return {0, label->heightForWidth(label->width())};
        return label->sizeHint();
    }
    if (qobject_cast<const QCheckBox*>(&widget) || qobject_cast<const QRadioButton*>(&widget))
        return widget.sizeHint();
    if (const auto* button = qobject_cast<const QPushButton*>(&widget)) {
        const int icon = button->icon().isNull() ? 0 : button->iconSize().width() + 2;
        return {Advance(*button, Plain(button->text())) + icon + kButtonEdges,
                button->fontMetrics().height()};
    }
    if (const auto* group = qobject_cast<const QGroupBox*>(&widget))
        return {Advance(*group, Plain(group->title())) + kButtonEdges, group->fontMetrics().height()};
    return {};
}

bool ScrollsIn(const QWidget& widget) {
    for (const QWidget* parent = widget.parentWidget(); parent && !parent->isWindow();
         parent = parent->parentWidget())
        if (qobject_cast<const QAbstractScrollArea*>(parent)) return true;
    return false;
}

void ExpectHeaderShown(const QHeaderView& header) {
    if (header.orientation() != Qt::Horizontal || !header.model()) return;
    for (int section = 0; section < header.count(); ++section) {
        if (header.isSectionHidden(section)) continue;
        const QString text = header.model()->headerData(section, Qt::Horizontal).toString();
        EXPECT_GE(header.sectionSize(section), Advance(header, text) + kHeaderEdges)
            << "the column " << text.toStdString() << " of " << header.parent()->objectName().toStdString();
    }
}

} // namespace

void ExpectNothingClipped(QWidget& window) {
    QApplication::processEvents();
    for (QWidget* widget : window.findChildren<QWidget*>()) {
        if (!widget->isVisible() || widget->window() != &window) continue;
        if (const auto* header = qobject_cast<const QHeaderView*>(widget)) ExpectHeaderShown(*header);
        const QSize need = NeedOf(*widget);
        if (!need.isValid()) continue;
        const auto* button = qobject_cast<const QAbstractButton*>(widget);
        const auto* label = qobject_cast<const QLabel*>(widget);
        const QString text = button ? button->text() : label ? label->text() : QString();
        const std::string name = widget->objectName().toStdString() + " '" + text.toStdString() + "'";
        EXPECT_GE(widget->width(), need.width()) << name;
        EXPECT_GE(widget->height(), need.height()) << name;
        const QRect place(widget->mapTo(&window, QPoint()), widget->size());
        EXPECT_TRUE(ScrollsIn(*widget) || window.rect().contains(place)) << name << " lies outside";
    }
}

TTextScale::TTextScale(double factor) : m_before(QApplication::font()) {
    QFont larger = m_before;
    larger.setPointSizeF(larger.pointSizeF() * factor);
    QApplication::setFont(larger);
}

TTextScale::~TTextScale() {
    QApplication::setFont(m_before);
}

TGerman::TGerman()
    : m_isThere(m_translator.load(QStringLiteral("lumoplot_de.qm"),
                                  QCoreApplication::applicationDirPath() +
                                      QStringLiteral("/../share/lumoplot/translations"))) {
    if (m_isThere) QCoreApplication::installTranslator(&m_translator);
}

TGerman::~TGerman() {
    if (m_isThere) QCoreApplication::removeTranslator(&m_translator);
}

void InEveryDress(const std::function<void()>& check) {
    check();
    {
        SCOPED_TRACE("text scale 150 %");
        const TTextScale scale(1.5);
        check();
    }
    SCOPED_TRACE("German");
    const TGerman german;
    if (german.IsThere()) check();
}

} // namespace lumoplot
