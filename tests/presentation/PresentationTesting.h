#pragma once

// Helpers shared by the window's tests: readings of any case, a pinned
// locale, what a widget paints, what a screen reader hears, and waiting on
// the event loop.

#include "presentation/kit/DashboardWidgets.h"
#include "presentation/kit/KeyedRowModel.h"
#include "sampling/SensorReading.h"
#include "support/StoreTesting.h"

#include <QAbstractItemView>
#include <QAccessible>
#include <QImage>
#include <QTest>
#include <QWidget>

#include <gtest/gtest.h>

#include <ctime>
#include <optional>
#include <vector>

// A reading of `readingCase`; `value` only counts for an available one.
template <typename Value> SensorReading<Value> readingOf(SensorReadingCase readingCase, Value value)
{
    switch (readingCase) {
    case SensorReadingCase::available:
        return SensorReading<Value>::available(value, QStringLiteral("test"));
    case SensorReadingCase::unsupported:
        return SensorReading<Value>::unsupported(QStringLiteral("none"));
    case SensorReadingCase::permissionDenied:
        return SensorReading<Value>::permissionDenied(QStringLiteral("refused"));
    case SensorReadingCase::temporarilyUnavailable:
        return SensorReading<Value>::temporarilyUnavailable(QStringLiteral("failed"));
    case SensorReadingCase::warmingUp:
        break;
    }
    return SensorReading<Value>::warmingUp();
}

// Numbers follow the user's locale: a test pins one (US English unless it
// says otherwise) while this lives, and puts the previous one back.
class ScopedLocale : public ScopedDefaultLocale {
public:
    explicit ScopedLocale(const QLocale &locale = QLocale(QLocale::English, QLocale::UnitedStates))
        : ScopedDefaultLocale(locale)
    {
    }
};

// Pins the process's time zone while this lives (local times are read
// through TZ), and puts the previous one back.
class ScopedTimeZone {
public:
    explicit ScopedTimeZone(const char *zone)
        : m_saved(qgetenv("TZ")), m_had(qEnvironmentVariableIsSet("TZ"))
    {
        qputenv("TZ", zone);
        tzset();
    }
    ~ScopedTimeZone()
    {
        if (m_had)
            qputenv("TZ", m_saved);
        else
            qunsetenv("TZ");
        tzset();
    }

private:
    QByteArray m_saved;
    bool m_had;
};

// The darkest pixel a light widget paints: the core of its text, so the
// colour the text is drawn in.
inline QColor darkestPixel(QWidget *widget)
{
    const QImage image = widget->grab().toImage();
    QColor darkest = Qt::white;
    for (int y = 0; y < image.height(); ++y) {
        for (int x = 0; x < image.width(); ++x) {
            if (qGray(image.pixel(x, y)) < qGray(darkest.rgb()))
                darkest = image.pixelColor(x, y);
        }
    }
    return darkest;
}

// Whether a visible label under `root` shows exactly `text`.
inline bool showsText(const QWidget *root, const QString &text)
{
    const auto labels = root->findChildren<TextLabel *>();
    return std::any_of(labels.begin(), labels.end(), [&](TextLabel *label) {
        return label->isVisible() && label->fullText() == text;
    });
}

// One element of a page as a screen reader reaches it: the widget of that
// identifier (its objectName) or the list row of that identifier (RowRole),
// with the name it is heard by and its value, each where given.
struct Heard {
    QString identifier;
    std::optional<QString> name;
    std::optional<QString> value = std::nullopt;
};

// The accessible element of `identifier` under `root`, or null.
inline QAccessibleInterface *accessibleElement(QWidget *root, const QString &identifier)
{
    if (auto *widget = root->findChild<QWidget *>(identifier))
        return QAccessible::queryAccessibleInterface(widget);
    for (QAbstractItemView *view : root->findChildren<QAbstractItemView *>()) {
        for (int row = 0; view->model() && row < view->model()->rowCount(); ++row) {
            if (view->model()->index(row, 0).data(RowRole::identifier).toString() == identifier)
                return QAccessible::queryAccessibleInterface(view)->child(row);
        }
    }
    return nullptr;
}

// Reads every element of `table` under `root` through Qt's accessibility
// interfaces, as assistive technology does.
inline void expectHeard(QWidget *root, const std::vector<Heard> &table)
{
    for (const Heard &element : table) {
        SCOPED_TRACE(element.identifier.toStdString());
        QAccessibleInterface *found = accessibleElement(root, element.identifier);
        ASSERT_NE(found, nullptr);
        if (element.name) {
            EXPECT_EQ(found->text(QAccessible::Name), *element.name);
        }
        if (element.value) {
            EXPECT_EQ(found->text(QAccessible::Value), *element.value);
        }
    }
}
