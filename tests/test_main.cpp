// Every test program's main: tests of windows and of drawing need an application object, the others do not
// mind it.
#include <QApplication>
#include <QFont>
#include <QTemporaryDir>
#include <gtest/gtest.h>

int main(int argc, char** argv) {
    if (qEnvironmentVariableIsEmpty("QT_QPA_PLATFORM")) qputenv("QT_QPA_PLATFORM", "offscreen");
    const QTemporaryDir state; // nothing of a test is kept for the user, nor the other way round
    qputenv("XDG_STATE_HOME", state.path().toUtf8());
    testing::InitGoogleTest(&argc, argv);
    QApplication application(argc, argv);
    QApplication::setApplicationName(QStringLiteral("lumoplot-tests"));
#if defined(Q_OS_WIN) // elsewhere the system knows what stands for it
    QFont::insertSubstitution(QStringLiteral("Arial"), QStringLiteral("Liberation Sans"));
#endif
    return RUN_ALL_TESTS();
}
