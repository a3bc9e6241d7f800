"""A host of status items that speaks their protocol, and the item and menu that it was given."""

import dbus
import dbus.service

from desktop_session import until

WATCHER = "org.kde.StatusNotifierWatcher"
ITEM = "org.kde.StatusNotifierItem"
MENU = "com.canonical.dbusmenu"
PROPERTIES = "org.freedesktop.DBus.Properties"
INTROSPECTION = """<node><interface name="org.kde.StatusNotifierWatcher">
<method name="RegisterStatusNotifierItem"><arg type="s" direction="in"/></method>
<method name="RegisterStatusNotifierHost"><arg type="s" direction="in"/></method>
<property name="IsStatusNotifierHostRegistered" type="b" access="read"/>
<property name="ProtocolVersion" type="i" access="read"/>
<property name="RegisteredStatusNotifierItems" type="as" access="read"/>
<signal name="StatusNotifierItemRegistered"><arg type="s"/></signal>
<signal name="StatusNotifierItemUnregistered"><arg type="s"/></signal></interface></node>"""


class Watcher(dbus.service.Object):
    def __init__(self, bus):
        self.items = []
        super().__init__(bus, "/StatusNotifierWatcher")

    @dbus.service.method(WATCHER, in_signature="s", sender_keyword="sender")
    def RegisterStatusNotifierItem(self, name, sender=None):
        self.items.append((str(sender), str(name)))
        self.StatusNotifierItemRegistered(name)

    @dbus.service.method(WATCHER, in_signature="s")
    def RegisterStatusNotifierHost(self, name):
        pass

    @dbus.service.signal(WATCHER, signature="s")
    def StatusNotifierItemRegistered(self, name):
        pass

    @dbus.service.method(PROPERTIES, in_signature="ss", out_signature="v")
    def Get(self, interface, name):
        return self.GetAll(interface)[name]

    @dbus.service.method(PROPERTIES, in_signature="s", out_signature="a{sv}")
    def GetAll(self, interface):
        return {"IsStatusNotifierHostRegistered": True, "ProtocolVersion": dbus.Int32(0),
                "RegisteredStatusNotifierItems":
                    dbus.Array([name for _, name in self.items], signature="s")}

    # Qt finds the properties of a watcher by what it says of itself.
    @dbus.service.method("org.freedesktop.DBus.Introspectable", in_signature="",
                         out_signature="s")
    def Introspect(self):
        return INTROSPECTION


class Answer:
    """A call that does not block: the program may be calling us at the same time."""

    def __init__(self, proxy, interface, method, *arguments):
        self.value = None
        self.error = None
        self.done = False
        proxy.get_dbus_method(method, interface)(
            *arguments, reply_handler=self.take, error_handler=self.fail)

    def take(self, *values):
        self.value = values[0] if len(values) == 1 else values
        self.done = True

    def fail(self, error):
        self.error = error
        self.done = True


def call(proxy, interface, method, *arguments):
    answer = Answer(proxy, interface, method, *arguments)
    if not until(lambda: answer.done):
        raise TimeoutError(method)
    if answer.error:
        raise answer.error
    return answer.value


class Item:
    """The first item that registered with the watcher."""

    def __init__(self, bus, watcher):
        sender, registered = watcher.items[0]
        self.take(bus, sender if registered.startswith("/") else registered)

    @classmethod
    def named(cls, bus, destination):
        """That registered with somebody else."""
        item = cls.__new__(cls)
        item.take(bus, destination)
        return item

    def take(self, bus, destination):
        self.bus = bus
        self.destination = destination
        self.item = bus.get_object(self.destination, "/StatusNotifierItem", introspect=False)

    def state(self):
        return call(self.item, PROPERTIES, "GetAll", ITEM)

    def label(self):
        return str(self.state()["ToolTip"][2])

    def activate(self):
        call(self.item, ITEM, "Activate", 10, 10)

    def menu(self):
        """The rows of the menu as it would open now."""
        menu = self.bus.get_object(self.destination, str(self.state()["Menu"]), introspect=False)
        call(menu, MENU, "AboutToShow", 0)
        _, root = call(menu, MENU, "GetLayout", 0, -1, dbus.Array([], signature="s"))
        return [Row(menu, child) for child in root[2]]

    def find(self, title, submenu=None):
        rows = self.menu() if submenu is None else self.row(submenu).rows
        return next((row for row in rows if row.title == title), None)

    def row(self, title, submenu=None):
        row = self.find(title, submenu)
        if row is None:
            raise KeyError(f"{title}: {[row.title for row in self.menu()]}")
        return row


class Row:
    def __init__(self, menu, node):
        self.menu = menu
        self.id, properties, children = node
        self.title = str(properties.get("label", "")).replace("_", "")
        self.separator = properties.get("type") == "separator"
        self.enabled = bool(properties.get("enabled", True))
        self.visible = bool(properties.get("visible", True))
        self.shortcut = ["+".join(keys) for keys in properties.get("shortcut", [])]
        # A row that is no switch has no state at all.
        self.checked = (bool(properties.get("toggle-state", 0))
                        if properties.get("toggle-type") else None)
        self.rows = [Row(menu, child) for child in children]

    def choose(self):
        call(self.menu, MENU, "Event", self.id, "clicked", dbus.String("", variant_level=1),
             dbus.UInt32(0))
