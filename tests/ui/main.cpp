#include "qt/EnvironmentSetup.h"

#include <QApplication>

#include <gtest/gtest.h>

/// The tests of the views: without a display unless the platform says otherwise.
int main(int argc, char** argv)
{
    if (!qEnvironmentVariableIsSet("QT_QPA_PLATFORM"))
        qputenv("QT_QPA_PLATFORM", "offscreen");
    qputenv("QT_SCALE_FACTOR", "1");
    velmo::qt::SetUpEnvironment();
    const QApplication application(argc, argv);
    QApplication::setQuitOnLastWindowClosed(false);
    testing::InitGoogleTest(&argc, argv);
    return RUN_ALL_TESTS();
}
