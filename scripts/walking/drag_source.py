"""A small window at the right edge of the screen, from which the files named on the command line can be dragged."""
import pathlib
import sys

import gi

gi.require_version("Gtk", "3.0")
gi.require_version("Gdk", "3.0")
from gi.repository import Gdk, Gtk  # noqa: E402 -- the versions come first

uris = [pathlib.Path(path).as_uri() for path in sys.argv[1:]]
window = Gtk.Window(title="Files")
box = Gtk.EventBox()
box.add(Gtk.Label(label=f"{len(uris)} files"))
window.add(box)
box.drag_source_set(Gdk.ModifierType.BUTTON1_MASK, [], Gdk.DragAction.COPY)
box.drag_source_add_uri_targets()
box.connect("drag-data-get", lambda _box, _context, data, _info, _time: data.set_uris(uris))
window.set_default_size(80, 60)
window.show_all()
window.move(1195, 20)
window.connect("destroy", Gtk.main_quit)
Gtk.main()
