#pragma once

#include <QString>

#include <optional>
#include <type_traits>
#include <utility>

// The cases in their fixed order; the order is part of the record's meaning.
enum class SensorReadingCase {
    available,
    unsupported,
    permissionDenied,
    temporarilyUnavailable,
    warmingUp,
};

QString sensorReadingCaseName(SensorReadingCase readingCase);

namespace sensor_reading_detail {
QString sourceWord(SensorReadingCase readingCase);
QString statusWord(SensorReadingCase readingCase);
} // namespace sensor_reading_detail

// One machine-wide figure, or the reason why there is none. A failed or unready
// probe is an ordinary value that travels in the sample; nothing in the program
// reports a probe failure any other way.
//
// Built only through the five named constructors, so that the stored form of
// each case is canonical and the defaulted equality is the case-and-payload
// equality: `value` and `source` for `available`, the reason for the failures.
template <typename Value> class SensorReading {
public:
    SensorReading() = default; // warmingUp

    static SensorReading available(Value value, QString source)
    {
        return SensorReading(SensorReadingCase::available, std::move(value), std::move(source));
    }
    static SensorReading unsupported(QString reason)
    {
        return SensorReading(SensorReadingCase::unsupported, std::nullopt, std::move(reason));
    }
    static SensorReading permissionDenied(QString reason)
    {
        return SensorReading(SensorReadingCase::permissionDenied, std::nullopt, std::move(reason));
    }
    static SensorReading temporarilyUnavailable(QString reason)
    {
        return SensorReading(SensorReadingCase::temporarilyUnavailable, std::nullopt,
                             std::move(reason));
    }
    static SensorReading warmingUp() { return SensorReading(); }

    SensorReadingCase readingCase() const { return m_case; }
    bool isAvailable() const { return m_case == SensorReadingCase::available; }

    // The payload of an `available` reading; absent for every other case.
    const std::optional<Value> &value() const { return m_value; }

    // The reason of the three failure cases; absent for `available` and `warmingUp`.
    std::optional<QString> reasonText() const
    {
        switch (m_case) {
        case SensorReadingCase::unsupported:
        case SensorReadingCase::permissionDenied:
        case SensorReadingCase::temporarilyUnavailable:
            return m_text;
        case SensorReadingCase::available:
        case SensorReadingCase::warmingUp:
            break;
        }
        return std::nullopt;
    }

    // The producing mechanism for `available`, else the case's short word.
    QString sourceText() const
    {
        return m_case == SensorReadingCase::available ? m_text
                                                      : sensor_reading_detail::sourceWord(m_case);
    }

    QString statusText() const { return sensor_reading_detail::statusWord(m_case); }

    bool operator==(const SensorReading &) const = default;

private:
    SensorReading(SensorReadingCase readingCase, std::optional<Value> value, QString text)
        : m_case(readingCase), m_value(std::move(value)), m_text(std::move(text))
    {
    }

    SensorReadingCase m_case = SensorReadingCase::warmingUp;
    std::optional<Value> m_value;
    QString m_text; // source for `available`, reason for the failures, empty otherwise
};
