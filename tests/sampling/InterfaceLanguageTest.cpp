#include "sampling/InterfaceLanguage.h"

#include <QFile>
#include <QRegularExpression>
#include <QXmlStreamReader>

#include <gtest/gtest.h>

namespace {

TEST(InterfaceLanguage, FirstPreferredLanguageWithACatalogueWins)
{
    using L = InterfaceLanguage;
    const std::pair<QStringList, L> cases[] = {{{"en-US"}, L::english},
                                               {{"en_US"}, L::english},
                                               {{"en"}, L::english},
                                               {{"en_GB.UTF-8"}, L::english},
                                               {{"zh-CN"}, L::simplifiedChinese},
                                               {{"zh-Hans-CN", "en-US"}, L::simplifiedChinese},
                                               {{"zh_TW", "en"}, L::simplifiedChinese},
                                               {{"de-DE", "en-US"}, L::english},
                                               {{"de-DE", "fr"}, L::simplifiedChinese},
                                               {{"C"}, L::simplifiedChinese},
                                               {{"POSIX", "en"}, L::english},
                                               {{"eng"}, L::simplifiedChinese},
                                               {{}, L::simplifiedChinese},
                                               {{""}, L::simplifiedChinese}};
    for (const auto &[tags, expected] : cases)
        EXPECT_EQ(interfaceLanguageFor(tags), expected) << tags.join(',').toStdString();
}

// Every entry translated, and each translation takes the same %N arguments as
// its source, so that no argument is dropped or shown raw.
TEST(InterfaceLanguage, EnglishCatalogueIsFinishedAndKeepsItsArguments)
{
    QFile file(QStringLiteral(KW_FIXTURES_DIR "/../../translations/kilnwarden_en.ts"));
    ASSERT_TRUE(file.open(QIODevice::ReadOnly));
    const QRegularExpression argument(QStringLiteral("%\\d"));
    const auto arguments = [&](const QString &text) {
        QStringList found;
        for (const auto &match : argument.globalMatch(text))
            found << match.captured();
        found.sort();
        return found;
    };
    QXmlStreamReader xml(&file);
    QString source;
    int messages = 0;
    while (!xml.atEnd()) {
        if (xml.readNext() != QXmlStreamReader::StartElement)
            continue;
        if (xml.name() == QLatin1String("source"))
            source = xml.readElementText();
        if (xml.name() != QLatin1String("translation"))
            continue;
        const bool finished = xml.attributes().value(QLatin1String("type")).isEmpty();
        const QString translation = xml.readElementText();
        EXPECT_TRUE(finished && !translation.isEmpty()) << qPrintable(source);
        EXPECT_EQ(arguments(translation), arguments(source)) << qPrintable(source);
        ++messages;
    }
    EXPECT_FALSE(xml.hasError()) << qPrintable(xml.errorString());
    EXPECT_GT(messages, 0);
}

} // namespace
