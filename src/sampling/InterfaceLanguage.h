#pragma once

#include <QLocale>
#include <QStringList>

#include <optional>

// The languages the interface can show. Simplified Chinese is the source
// text itself; every other language has a catalogue built into the program.
enum class InterfaceLanguage { simplifiedChinese, english };

// The language for a session's preferred languages, most preferred first (as
// `QLocale::uiLanguages` lists them, "en-US" or "en_US" alike): the first one
// the program can show wins. Chinese in any script or region is served by the
// source text, a Chinese reader being better served by it than by English;
// "C", "POSIX", an empty list and languages without a catalogue get the
// default, Simplified Chinese.
InterfaceLanguage interfaceLanguageFor(const QStringList &preferredLanguages);

// The language of a command-line value: "zh_CN" (or "zh") or "en".
std::optional<InterfaceLanguage> interfaceLanguageFromText(const QString &text);

// The locale every date, time and number of that language is formatted in.
QLocale localeOfInterfaceLanguage(InterfaceLanguage language);

// Loads the language's catalogue into the running application (a
// QCoreApplication must exist) and makes it the one `interfaceLocale()`
// answers with. Called once, first thing after the application is made; a
// later call changes nothing. Without a value it takes the session's choice.
InterfaceLanguage installInterfaceLanguage(std::optional<InterfaceLanguage> language = {});

// The language installed, Simplified Chinese before any installation.
InterfaceLanguage currentInterfaceLanguage();

// The terminal's texts (a command line's usage and errors, the start-up
// checks) in the session's language. Many are printed before there is an
// application to install a catalogue into, so the session's catalogue is
// read once into a translator of its own; the built-in resources are there
// from the first line of `main`. Any thread, with or without an application.
namespace TerminalText {
QString translate(const char *context, const char *sourceText);
}
