#include "EnvironmentSetup.h"

#include <QFileInfo>
#include <QGuiApplication>

#include <cstdio>

namespace velmo::qt {

void SetUpEnvironment()
{
    if (!qEnvironmentVariableIsSet("QT_QPA_PLATFORM") && !qEnvironmentVariableIsEmpty("DISPLAY"))
        qputenv("QT_QPA_PLATFORM", "xcb;wayland");
    // Nothing is drawn by OpenGL, and looking for it costs time at every start.
    if (!qEnvironmentVariableIsSet("QT_XCB_GL_INTEGRATION"))
        qputenv("QT_XCB_GL_INTEGRATION", "none");
    // With shared memory the toolkit waits for the server before each picture; the windows are
    // small enough to be sent.
    if (!qEnvironmentVariableIsSet("QT_XCB_NO_MITSHM"))
        qputenv("QT_XCB_NO_MITSHM", "1");
    // Without a session bus the toolkit would have one launched, which costs more than all else
    // here.
    const QString runtimeDirectory = qEnvironmentVariable("XDG_RUNTIME_DIR");
    const bool hasBus =
        !runtimeDirectory.isEmpty() && QFileInfo::exists(runtimeDirectory + QStringLiteral("/bus"));
    if (!hasBus && !qEnvironmentVariableIsSet("DBUS_SESSION_BUS_ADDRESS"))
        qputenv("DBUS_SESSION_BUS_ADDRESS", "unix:path=/dev/null");
    QGuiApplication::setHighDpiScaleFactorRoundingPolicy(
        Qt::HighDpiScaleFactorRoundingPolicy::Round);
}

bool HasWindowPlaces()
{
    return !QGuiApplication::platformName().startsWith(QStringLiteral("wayland"));
}

void TellLimits()
{
    if (!HasWindowPlaces())
        static_cast<void>(std::fputs(
            "velmo: no X server here: windows keep no places and don't stick together\n", stderr));
}

} // namespace velmo::qt
