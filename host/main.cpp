// The plotting program: opens the files of its command line.
#include "dialogs/messages/message_box_sink.h"
#include "dialogs/messages/password_question.h"
#include "dialogs/messages/progress_window.h"
#include "host/contrast_style.h"
#include "host/files/example_file.h"
#include "host/language.h"
#include "host/main_window.h"
#include "host/screen_shots.h"
#include "sources/database/connection/password_asker.h"
#include "support/message_sink.h"
#include "support/progress_maker.h"

#include <QApplication>
#include <QCommandLineParser>
#include <QDir>
#include <QFileInfo>
#include <QIcon>
#include <QSettings>
#include <QStandardPaths>
#include <QTemporaryDir>
#include <QTimer>
#include <iostream>
#include <memory>

using namespace lumoplot;

namespace {

struct TArguments {
    QStringList files;
    QString shotFolder; ///< empty for a window that a person uses
    QString language;   ///< empty for the usual one
};

TArguments ReadArguments(const QApplication& application) {
    QCommandLineParser parser;
    parser.setApplicationDescription(QStringLiteral("Plots measurements and opens them in the data editor."));
    parser.addHelpOption();
    parser.addVersionOption();
    const QCommandLineOption shot(
        QStringLiteral("shot"),
        QStringLiteral(
            "Save pictures of the plot and of the editor into FOLDER, print their paths and leave."),
        QStringLiteral("FOLDER"));
    parser.addOption(shot);
    const QCommandLineOption language(
        QStringLiteral("language"),
        QStringLiteral("Speak LANGUAGE (%1).").arg(Languages().join(QStringLiteral(", "))),
        QStringLiteral("LANGUAGE"));
    parser.addOption(language);
    parser.addPositionalArgument(QStringLiteral("FILE"), QStringLiteral("Graph and data files to open."),
                                 QStringLiteral("[FILE…]"));
    parser.process(application);
    return {parser.positionalArguments(), parser.value(shot), parser.value(language)};
}

/// Without a person there is nothing to ask and nothing of hers to read or change.
int RunShots(const TArguments& arguments) {
    const QTemporaryDir folder;
    QSettings::setDefaultFormat(QSettings::IniFormat);
    QSettings::setPath(QSettings::IniFormat, QSettings::UserScope, folder.path());
    TMainWindow window(folder.filePath(QStringLiteral("templates")));
    window.OpenFiles(arguments.files.isEmpty() ? QStringList(ExampleFile()) : arguments.files,
                     TAsking::Never);
    try {
        for (const QString& file : SaveScreenShots(window, arguments.shotFolder))
            std::cout << QDir::toNativeSeparators(file).toStdString() << '\n';
    } catch (const std::exception& error) {
        std::cerr << "lumoplot-host: " << error.what() << '\n';
        return 1;
    }
    return 0;
}

/// Data files would become part of the graph that was recovered.
bool WantsFilesToo(const QStringList& files) {
    QStringList names;
    for (const QString& file : files) names.append(QFileInfo(file).fileName());
    return !files.isEmpty() && AskYesNo("Open " + names.join(QStringLiteral(", ")).toStdString() +
                                            " as well, after what was recovered?",
                                        TMessageKind::Warning);
}

int RunWindow(const TArguments& arguments) {
    const TMessageBoxScope messages;
    const TProgressMakerScope progress([] { return std::make_unique<TProgressWindow>(); });
    const TPasswordAskerScope passwords(AskPassword);
    TMainWindow window(QStandardPaths::writableLocation(QStandardPaths::AppDataLocation) +
                       QStringLiteral("/templates"));
    window.RestorePlace();
    window.show();
    QTimer::singleShot(0, &window, [&] {
        const bool isRecovered = window.StartRecovery(RecoveryFolder());
        if (!isRecovered || WantsFilesToo(arguments.files)) window.OpenFiles(arguments.files);
    });
    return QApplication::exec();
}

#if !defined(Q_OS_WIN) // there pictures need no display
bool WantsShots(int argc, char** argv) {
    return std::any_of(argv, argv + argc,
                       [](const char* argument) { return QByteArray(argument).startsWith("--shot"); });
}
#endif

} // namespace

int main(int argc, char** argv) {
#if !defined(Q_OS_WIN) // there pictures need no display
    if (WantsShots(argc, argv) && qEnvironmentVariableIsEmpty("QT_QPA_PLATFORM"))
        qputenv("QT_QPA_PLATFORM", "offscreen");
#endif
    QApplication application(argc, argv);
    QApplication::setOrganizationName(QStringLiteral("lumoplot"));
    QApplication::setApplicationName(QStringLiteral("lumoplot-host"));
    QApplication::setApplicationDisplayName(QStringLiteral("Lumoplot"));
    QApplication::setApplicationVersion(QStringLiteral(LUMOPLOT_VERSION));
    QApplication::setWindowIcon(QIcon(QStringLiteral(":/host/icons/lumoplot.svg")));
    UseContrastStyle();
    const TArguments arguments = ReadArguments(application);
    UseLanguage(arguments.language.isEmpty() ? WantedLanguage() : arguments.language);
    return arguments.shotFolder.isEmpty() ? RunWindow(arguments) : RunShots(arguments);
}
