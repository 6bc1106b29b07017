#include "sampling/InterfaceLanguage.h"
#include "support/FixtureTable.h"

#include <QFile>
#include <QRegularExpression>
#include <QXmlStreamReader>

#include <gtest/gtest.h>

namespace {

TEST(InterfaceLanguage, FirstPreferredLanguageWithACatalogueWins)
{
    for (const FixtureRow &row : fixtureTable(QStringLiteral("interface-languages"))) {
        const QStringList tags = row.text(1) ? row.text(1)->split(u',') : QStringList();
        EXPECT_EQ(interfaceLanguageFor(tags), *row.text(0) == u"english"
                                                  ? InterfaceLanguage::english
                                                  : InterfaceLanguage::simplifiedChinese)
            << row.where;
    }
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
