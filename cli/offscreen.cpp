#include "cli/offscreen.h"

#include "cli/output.h"

#include <cstdlib>

namespace lumoplot {
namespace {

// Hints and warnings of the toolkit are no messages of this tool; what it cannot go on after is.
void HandleToolkitMessage(QtMsgType type, const QMessageLogContext&, const QString& text) {
    if (type != QtFatalMsg) return;
    PrintMessage(text.toStdString());
    std::_Exit(1);
}

} // namespace

TOffscreenApplication::TPlatformChoice::TPlatformChoice() {
    qInstallMessageHandler(&HandleToolkitMessage);
#if !defined(Q_OS_WIN) // there the usual platform has the fonts, and needs no display either
    if (!qEnvironmentVariableIsSet("QT_QPA_PLATFORM")) qputenv("QT_QPA_PLATFORM", "offscreen");
#endif
}

TOffscreenApplication::TOffscreenApplication() : m_application(m_argumentCount, m_arguments) {
}

} // namespace lumoplot
