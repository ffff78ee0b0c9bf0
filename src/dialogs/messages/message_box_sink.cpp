#include "dialogs/messages/message_box_sink.h"

#include "controls/model_texts.h"
#include "dialogs/messages/window_place.h"

#include <QApplication>
#include <QMessageBox>

namespace lumoplot {
namespace {

QMessageBox::Icon IconOf(TMessageKind kind) {
    switch (kind) {
    case TMessageKind::Information: return QMessageBox::Information;
    case TMessageKind::Warning: return QMessageBox::Warning;
    case TMessageKind::Error: return QMessageBox::Critical;
    case TMessageKind::Confirmation: return QMessageBox::Question;
    }
    return QMessageBox::NoIcon;
}

int Run(TMessageKind kind, const std::string& text, QMessageBox::StandardButtons buttons) {
    QWidget* dialog = QApplication::activeModalWidget();
    QMessageBox box(IconOf(kind), QGuiApplication::applicationDisplayName(), InLanguage(text), buttons,
                    dialog ? dialog : MainWindow());
    // Return alone must not do what is warned of.
    if (kind == TMessageKind::Warning && buttons.testFlag(QMessageBox::No))
        box.setDefaultButton(QMessageBox::No);
    box.setTextFormat(Qt::PlainText); // file names and formulas must not be taken for markup
    return box.exec();
}

} // namespace

void TMessageBoxSink::Show(TMessageKind kind, const std::string& text) {
    Run(kind, text, QMessageBox::Ok);
}

bool TMessageBoxSink::Ask(TMessageKind kind, const std::string& text) {
    return Run(kind, text, QMessageBox::Yes | QMessageBox::No) == QMessageBox::Yes;
}

TMessageBoxScope::TMessageBoxScope() : m_before(InstallMessageSink(&m_sink)) {
    if (m_before) InstallMessageSink(m_before);
}

TMessageBoxScope::~TMessageBoxScope() {
    InstallMessageSink(m_before);
}

} // namespace lumoplot
