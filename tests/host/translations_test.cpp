// Whether the windows speak German as a whole.
#include "common/clipping.h"
#include "common/places.h"
#include "controls/model_texts.h"

#include <QFile>
#include <QProcess>
#include <QRegularExpression>
#include <QStandardPaths>
#include <QTemporaryDir>
#include <gtest/gtest.h>

namespace lumoplot {
namespace {

QString Lupdate() {
    const QString own = QStringLiteral("/usr/lib/qt6/bin/lupdate");
    return QFile::exists(own) ? own : QStandardPaths::findExecutable(QStringLiteral("lupdate"));
}

TEST(Translations, EveryTextOfTheWindowsIsTranslated) {
    const QString root = QString::fromStdString(SourceFile(""));
    const QTemporaryDir folder;
    const QString copy = folder.filePath(QStringLiteral("de.ts"));
    ASSERT_TRUE(QFile::copy(root + QStringLiteral("translations/lumoplot_de.ts"), copy));
    QFile::setPermissions(copy, QFile::ReadOwner | QFile::WriteOwner);
    if (!Lupdate().isEmpty()) {
        const QStringList arguments = {
            QStringLiteral("-silent"),    QStringLiteral("-no-obsolete"), QStringLiteral("-locations"),
            QStringLiteral("none"),       QStringLiteral("-I"),           root,
            QStringLiteral("-I"),         root + QStringLiteral("src"),   root + QStringLiteral("host"),
            root + QStringLiteral("src"), QStringLiteral("-ts"),          copy};
        EXPECT_EQ(QProcess::execute(Lupdate(), arguments), 0);
    }
    QFile file(copy);
    ASSERT_TRUE(file.open(QIODevice::ReadOnly));
    const QString text = QString::fromUtf8(file.readAll());
    static const QRegularExpression kWaiting(
        QStringLiteral("<source>([^<]*)</source>\\s*<translation type=\"unfinished\""));
    for (auto waiting = kWaiting.globalMatch(text); waiting.hasNext();)
        ADD_FAILURE() << waiting.next().captured(1).toStdString();
    EXPECT_FALSE(text.contains(QStringLiteral("<name />")) || text.contains(QStringLiteral("<name></name>")))
        << "a class that lupdate does not know";
}

TEST(Translations, WhatTheModelSaysIsTranslatedWithItsNames) {
    EXPECT_EQ(InLanguage(std::string("load a.csv")), QStringLiteral("load a.csv"));
    const TGerman german;
    if (!german.IsThere()) GTEST_SKIP() << "the translation was not built";
    const std::pair<const char*, const char*> texts[] = {
        {"load a.csv", "a.csv laden"},
        {"fit of 100 % %1: reload", "Anpassung von 100 % %1: reload"},
        {"Undone: delete data set load x", "Zurückgenommen: Datensatz load x löschen"},
        {"Discard the changes?\n3 steps, last: sort data sets",
         "Die Änderungen verwerfen?\n3 Schritte, zuletzt: Datensätze sortieren"},
        {"something new", "something new"},
    };
    for (const auto& [english, expected] : texts)
        EXPECT_EQ(InLanguage(std::string(english)).toStdString(), expected);
}

} // namespace
} // namespace lumoplot
