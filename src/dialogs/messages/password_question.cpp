#include "dialogs/messages/password_question.h"

#include "controls/texts.h"
#include "support/message_text.h"

#include <QApplication>
#include <QInputDialog>
#include <QTextDocument>

namespace lumoplot {

std::optional<std::string> AskPassword(const std::string& connection, const std::string& reason) {
    QInputDialog dialog(QApplication::activeWindow());
    dialog.setObjectName(QStringLiteral("TPasswordQuestion"));
    dialog.setWindowTitle(TTexts::tr("Password"));
    dialog.setTextEchoMode(QLineEdit::Password);
    dialog.setLabelText(Qt::convertFromPlainText(
        TTexts::tr("%1\n\nThe password of %2 (it is not saved):")
            .arg(QString::fromStdString(ShownLine(reason)), QString::fromStdString(ShownLine(connection)))));
    if (dialog.exec() != QDialog::Accepted) return std::nullopt;
    return dialog.textValue().toStdString();
}

} // namespace lumoplot
