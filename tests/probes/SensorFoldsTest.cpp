#include "probes/SensorFolds.h"
#include "probes/ChipSensors.h"
#include "support/FixtureTable.h"

#include <QStringList>

#include <gtest/gtest.h>

#include <string>

namespace {

TEST(SensorFolds, TemperatureAndFanFigures)
{
    EXPECT_EQ(foldTemperature({}), std::nullopt);
    EXPECT_EQ(foldFanSpeed({}), std::nullopt);
    for (const FixtureRow &row : fixtureTable(QStringLiteral("sensor-folds"))) {
        std::vector<double> values;
        for (std::size_t index = 2; index < row.fields.size(); ++index)
            values.push_back(std::stod(std::string(row.view(index))));
        const auto figure = *row.text(0) == u"fan" ? foldFanSpeed(values) : foldTemperature(values);
        EXPECT_EQ(figure ? QString::number(*figure) : QString(), *row.text(1)) << row.where;
    }
}

TEST(ChannelNameFilter, MatchesLowerCasedSubstrings)
{
    for (const FixtureRow &row : fixtureTable(QStringLiteral("cpu-die-channel-names")))
        EXPECT_EQ(channelNameMatches(row.text(0).value_or(QString()), kLinuxCPUDieChannelNames),
                  *row.text(1) == u"yes")
            << row.where;
}

SensorChannelValue channelValue(const QString &text)
{
    if (text == u"refused" || text == u"unreadable")
        return {std::nullopt, text == u"refused"};
    return {text.toDouble(), false};
}

// A number is a figure from `source`; a reason with "refused" in it a refusal.
SensorReading<double> readingOf(const QString &text, const QString &source)
{
    bool number = false;
    const double value = text.toDouble(&number);
    if (number)
        return SensorReading<double>::available(value, source);
    return text.contains(u"refused") ? SensorReading<double>::permissionDenied(text)
                                     : SensorReading<double>::unsupported(text);
}

TEST(TemperatureReading, DecidesOverTheDieChannelsInTheOrderInterfacePackageMedianRefusalNothing)
{
    const TemperatureTexts texts{"source", "no interface", "refused", "no channel"};
    EXPECT_EQ(temperatureReading({false, {}}, kLinuxCPUChannelNames, texts),
              SensorReading<double>::unsupported("no interface"));
    for (const FixtureRow &row : fixtureTable(QStringLiteral("temperature-readings"))) {
        TemperatureSurvey survey{true, {}};
        for (std::size_t index = 1; index < row.fields.size(); ++index) {
            const QStringList channel = row.text(index)->split(u'=');
            const QStringList reading = channel[1].split(u'@');
            survey.channels.push_back({channel[0], channelValue(reading[0]), reading.value(1)});
        }
        EXPECT_EQ(temperatureReading(survey, kLinuxCPUChannelNames, texts),
                  readingOf(*row.text(0), "source"))
            << row.where;
    }
}

TEST(FanReading, DecidesInTheOrderNoFansRefusalFold)
{
    const FanTexts texts{"fan source", "no fans", "fans refused", "no valid speed"};
    for (const FixtureRow &row : fixtureTable(QStringLiteral("fan-readings"))) {
        std::vector<SensorChannelValue> fans;
        for (std::size_t index = 1; index < row.fields.size(); ++index)
            fans.push_back(channelValue(*row.text(index)));
        EXPECT_EQ(fanReading(fans, texts), readingOf(*row.text(0), "fan source")) << row.where;
    }
}

} // namespace
