// The window tests' entry: a QApplication on the offscreen platform (unless
// the caller chose one), so widgets are laid out and painted with no display.
#include "presentation/kit/Accessibility.h"
#include "presentation/kit/DashboardFonts.h"

#include <QApplication>

#include <gtest/gtest.h>

int main(int argc, char **argv)
{
    if (qEnvironmentVariableIsEmpty("QT_QPA_PLATFORM"))
        qputenv("QT_QPA_PLATFORM", "offscreen");
    QApplication app(argc, argv);
    // As the program does at start: Chinese never as boxes, values for
    // assistive technology.
    installDashboardApplicationFont();
    installDashboardAccessibility();
    ::testing::InitGoogleTest(&argc, argv);
    return RUN_ALL_TESTS();
}
