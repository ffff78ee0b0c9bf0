// The language of the program's windows: English, or one of the translations that were built with it.
#pragma once

#include <QString>
#include <QStringList>

namespace lumoplot {

/// Codes such as "de"; "en" comes first and is always there.
QStringList Languages();
/// As the language calls itself: "Deutsch".
QString NameOfLanguage(const QString& code);

/// What was chosen in the View menu; else the environment's LUMOPLOT_LANGUAGE; else the system's language.
QString WantedLanguage();
/// Keeps a choice; it holds from the next start on.
void ChooseLanguage(const QString& code);

/// Lets the windows that are made from now on speak that language, and the toolkit as far as it can; English
/// where there is no such translation. Called once, before the first window.
void UseLanguage(const QString& code);
/// The one in use.
QString UsedLanguage();

} // namespace lumoplot
