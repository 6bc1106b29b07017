#include "sampling/InterfaceLanguage.h"

#include <QCoreApplication>
#include <QRegularExpression>
#include <QTranslator>

#include <atomic>
#include <memory>
#include <mutex>

namespace {

std::atomic<InterfaceLanguage> g_installed{InterfaceLanguage::simplifiedChinese};

const QString kEnglishCatalogue = QStringLiteral(":/translations/kilnwarden_en.qm");

// The primary language subtag of "en-US", "en_US.UTF-8" or "zh-Hans-CN".
QString primaryLanguage(const QString &tag)
{
    const qsizetype end = tag.indexOf(QRegularExpression(QStringLiteral("[-_.@]")));
    return tag.left(end).toLower();
}

} // namespace

InterfaceLanguage interfaceLanguageFor(const QStringList &preferredLanguages)
{
    for (const QString &tag : preferredLanguages) {
        const QString language = primaryLanguage(tag);
        if (language == QLatin1String("zh"))
            return InterfaceLanguage::simplifiedChinese;
        if (language == QLatin1String("en"))
            return InterfaceLanguage::english;
    }
    return InterfaceLanguage::simplifiedChinese;
}

std::optional<InterfaceLanguage> interfaceLanguageFromText(const QString &text)
{
    if (text == QLatin1String("zh_CN") || text == QLatin1String("zh"))
        return InterfaceLanguage::simplifiedChinese;
    if (text == QLatin1String("en"))
        return InterfaceLanguage::english;
    return std::nullopt;
}

QLocale localeOfInterfaceLanguage(InterfaceLanguage language)
{
    // Made once each: a copy is a reference count, where building a locale
    // looks it up under a global lock.
    static const QLocale chinese(QLocale::Chinese, QLocale::SimplifiedChineseScript,
                                 QLocale::China);
    static const QLocale english(QLocale::English, QLocale::UnitedStates);
    return language == InterfaceLanguage::english ? english : chinese;
}

InterfaceLanguage installInterfaceLanguage(std::optional<InterfaceLanguage> language)
{
    static std::once_flag once;
    std::call_once(once, [&] {
        const InterfaceLanguage chosen =
            language.value_or(interfaceLanguageFor(QLocale::system().uiLanguages()));
        if (chosen == InterfaceLanguage::english) {
            // Lives as long as the process: the application holds a pointer.
            static QTranslator translator;
            if (translator.load(kEnglishCatalogue))
                QCoreApplication::installTranslator(&translator);
        }
        g_installed = chosen;
    });
    return g_installed;
}

InterfaceLanguage currentInterfaceLanguage()
{
    return g_installed;
}

QString TerminalText::translate(const char *context, const char *sourceText)
{
    // Read once, then only read from: QTranslator::translate is const.
    static const std::unique_ptr<const QTranslator> catalogue = [] {
        auto translator = std::make_unique<QTranslator>();
        if (interfaceLanguageFor(QLocale::system().uiLanguages()) != InterfaceLanguage::english ||
            !translator->load(kEnglishCatalogue))
            translator.reset();
        return std::unique_ptr<const QTranslator>(std::move(translator));
    }();
    const QString translated = catalogue ? catalogue->translate(context, sourceText) : QString();
    return translated.isEmpty() ? QString::fromUtf8(sourceText) : translated;
}
