"""The desktop's portal of settings, for the mock of D-Bus services: the user prefers dark windows."""
BUS_NAME = "org.freedesktop.portal.Desktop"
MAIN_OBJ = "/org/freedesktop/portal/desktop"
MAIN_IFACE = "org.freedesktop.portal.Settings"
SYSTEM_BUS = False


def load(mock, _parameters):
    mock.AddMethod(MAIN_IFACE, "Read", "ss", "v", "ret = dbus.UInt32(1, variant_level=1)")
