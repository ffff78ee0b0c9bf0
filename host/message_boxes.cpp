#include "host/message_boxes.h"

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

// Texts carry file names and formulas, which must not be taken for markup.
int Run(TMessageKind kind, const std::string& text, QMessageBox::StandardButtons buttons) {
    QMessageBox box(IconOf(kind), QApplication::applicationDisplayName(), QString::fromStdString(text),
                    buttons, QApplication::activeWindow());
    box.setTextFormat(Qt::PlainText);
    return box.exec();
}

} // namespace

TMessageBoxes::TMessageBoxes() : m_previous(InstallMessageSink(this)) {
}

TMessageBoxes::~TMessageBoxes() {
    InstallMessageSink(m_previous);
}

void TMessageBoxes::Show(TMessageKind kind, const std::string& text) {
    Run(kind, text, QMessageBox::Ok);
}

bool TMessageBoxes::Ask(TMessageKind kind, const std::string& text) {
    return Run(kind, text, QMessageBox::Yes | QMessageBox::No) == QMessageBox::Yes;
}

} // namespace lumoplot
