#include "host/language.h"

#include <QCoreApplication>
#include <QDir>
#include <QLibraryInfo>
#include <QLocale>
#include <QSettings>
#include <QTranslator>

namespace lumoplot {
namespace {

const QString kSourceLanguage = QStringLiteral("en");
const QString kLanguageKey = QStringLiteral("window/language");
constexpr const char* kUsedProperty = "usedLanguage"; // of the application

QDir TranslationFolder() {
    return QDir(QCoreApplication::applicationDirPath() + QStringLiteral("/../share/lumoplot/translations"));
}

QString FileOf(const QString& code) {
    return QStringLiteral("lumoplot_%1.qm").arg(code);
}

void Install(const QString& file, const QString& folder) {
    auto* translator = new QTranslator(qApp);
    if (translator->load(file, folder))
        QCoreApplication::installTranslator(translator);
    else
        delete translator;
}

} // namespace

QStringList Languages() {
    QStringList codes{kSourceLanguage};
    const QString all = FileOf(QStringLiteral("*"));
    for (const QString& file : TranslationFolder().entryList({all}, QDir::Files, QDir::Name))
        codes += file.section(u'_', 1).section(u'.', 0, 0);
    return codes;
}

QString NameOfLanguage(const QString& code) {
    return code == kSourceLanguage ? QStringLiteral("English") : QLocale(code).nativeLanguageName();
}

QString WantedLanguage() {
    const QString chosen = QSettings().value(kLanguageKey).toString();
    if (!chosen.isEmpty()) return chosen;
    const QString wish = qEnvironmentVariable("LUMOPLOT_LANGUAGE");
    return wish.isEmpty() ? QLocale::system().name().section(u'_', 0, 0) : wish;
}

void ChooseLanguage(const QString& code) {
    QSettings().setValue(kLanguageKey, code);
}

void UseLanguage(const QString& code) {
    if (code == kSourceLanguage || !Languages().contains(code)) return;
    Install(QStringLiteral("qtbase_") + code, QLibraryInfo::path(QLibraryInfo::TranslationsPath));
    Install(FileOf(code), TranslationFolder().path());
    qApp->setProperty(kUsedProperty, code);
}

QString UsedLanguage() {
    const QString used = qApp->property(kUsedProperty).toString();
    return used.isEmpty() ? kSourceLanguage : used;
}

} // namespace lumoplot
