"""The desktop's watcher of tray icons, with one host, for the mock of D-Bus services."""
BUS_NAME = "org.kde.StatusNotifierWatcher"
MAIN_OBJ = "/StatusNotifierWatcher"
MAIN_IFACE = "org.kde.StatusNotifierWatcher"
SYSTEM_BUS = False


def load(mock, _parameters):
    mock.AddMethod(MAIN_IFACE, "RegisterStatusNotifierItem", "s", "", "")
    mock.AddProperty(MAIN_IFACE, "IsStatusNotifierHostRegistered", True)
