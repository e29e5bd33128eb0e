"""A desktop's notification service on the session bus, which keeps what it is given:

    notification_service.py FILE

Each notification becomes a line of JSON in FILE: its number, the number that it replaces, summary,
body. A line on the standard output says that the service is there.
"""

import json
import sys

from gi.repository import Gio, GLib

NAME = "org.freedesktop.Notifications"
INTERFACE = """<node><interface name="org.freedesktop.Notifications">
  <method name="GetCapabilities"><arg type="as" direction="out"/></method>
  <method name="Notify">
    <arg type="s" direction="in"/><arg type="u" direction="in"/><arg type="s" direction="in"/>
    <arg type="s" direction="in"/><arg type="s" direction="in"/><arg type="as" direction="in"/>
    <arg type="a{sv}" direction="in"/><arg type="i" direction="in"/><arg type="u" direction="out"/>
  </method>
</interface></node>"""


class Service:
    def __init__(self, path: str) -> None:
        self.path = path
        self.count = 0

    def answer(self, _bus, _sender, _path, _interface, method, arguments, call) -> None:
        if method == "GetCapabilities":
            call.return_value(GLib.Variant("(as)", (["body", "body-markup"],)))
            return
        _, replaces, _, summary, body, *_ = arguments.unpack()
        self.count += 1
        shown = {"number": self.count, "replaces": replaces, "summary": summary, "body": body}
        with open(self.path, "a", encoding="utf-8") as file:
            file.write(json.dumps(shown) + "\n")
        call.return_value(GLib.Variant("(u)", (self.count,)))


def main() -> None:
    service = Service(sys.argv[1])
    bus = Gio.bus_get_sync(Gio.BusType.SESSION)
    interface = Gio.DBusNodeInfo.new_for_xml(INTERFACE).interfaces[0]
    bus.register_object("/org/freedesktop/Notifications", interface, service.answer, None, None)
    Gio.bus_own_name_on_connection(
        bus, NAME, Gio.BusNameOwnerFlags.NONE, lambda *_: print("ready", flush=True), None
    )
    GLib.MainLoop().run()


if __name__ == "__main__":
    main()
