"""Another program from which files are dragged: drag_source.py PATH...

Says "accepted" on its error output once what lies under the pointer would take them, and "ended" when the drag has come to its end."""
import pathlib
import sys

import gi

gi.require_version("Gtk", "3.0")
from gi.repository import Gdk, Gtk  # noqa: E402: the version comes first


def say_accepted(_, action):
    if action == Gdk.DragAction.COPY:
        print("accepted", file=sys.stderr)


window = Gtk.Window(title="Files", default_width=200, default_height=100)
area = Gtk.EventBox()
area.drag_source_set(Gdk.ModifierType.BUTTON1_MASK, [], Gdk.DragAction.COPY)
area.drag_source_add_uri_targets()
area.connect("drag-begin", lambda _, context: context.connect("action-changed", say_accepted))
area.connect("drag-data-get", lambda _, context, data, *more: data.set_uris(
    [pathlib.Path(path).as_uri() for path in sys.argv[1:]]))
area.connect("drag-end", lambda *_: print("ended", file=sys.stderr))
window.add(area)
window.show_all()
Gtk.main()
