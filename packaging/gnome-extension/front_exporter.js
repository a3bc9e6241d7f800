// Tells on the session bus which window has the focus. Assembled between a head that provides Gio,
// GLib and Shell, and a tail that GNOME Shell knows how to load.

const NAME = 'app.norwend.velotap.GnomeFront';
const PATH = '/app/norwend/velotap/GnomeFront';
// The fields: is there a window with the focus, its desktop-file id, both halves of its window
// class, and its process. All but the first are empty where they are not known.
const INTERFACE = `<node>
  <interface name="${NAME}">
    <method name="Front">
      <arg type="b" direction="out"/>
      <arg type="s" direction="out"/>
      <arg type="s" direction="out"/>
      <arg type="s" direction="out"/>
      <arg type="u" direction="out"/>
    </method>
    <signal name="FrontChanged">
      <arg type="b"/>
      <arg type="s"/>
      <arg type="s"/>
      <arg type="s"/>
      <arg type="u"/>
    </signal>
  </interface>
</node>`;

class FrontExporter {
    enable() {
        this._tracker = Shell.WindowTracker.get_default();
        this._object = Gio.DBusExportedObject.wrapJSObject(INTERFACE, this);
        this._object.export(Gio.DBus.session, PATH);
        this._last = JSON.stringify(this._describe());
        this._focusWindow = global.display.connect('notify::focus-window', () => this._tell());
        // The application of a new window may be found out only after it got the focus.
        this._focusApp = this._tracker.connect('notify::focus-app', () => this._tell());
        // Last: whoever waits for the name may ask at once.
        this._owner = Gio.bus_own_name_on_connection(
            Gio.DBus.session, NAME, Gio.BusNameOwnerFlags.NONE, null, null);
    }

    disable() {
        Gio.bus_unown_name(this._owner);
        this._tracker.disconnect(this._focusApp);
        global.display.disconnect(this._focusWindow);
        this._object.unexport();
        this._object = null;
        this._tracker = null;
    }

    // The method of the interface.
    Front() {
        return this._describe();
    }

    _describe() {
        const window = global.display.focus_window;
        if (!window)
            return [false, '', '', '', 0];
        const app = this._tracker.get_window_app(window);
        const id = app && !app.is_window_backed() ? app.get_id() : window.get_gtk_application_id();
        return [true, id ?? '', window.get_wm_class() ?? '', window.get_wm_class_instance() ?? '',
            Math.max(0, window.get_pid())];
    }

    _tell() {
        const front = this._describe();
        const text = JSON.stringify(front);
        if (text === this._last)
            return;
        this._last = text;
        this._object.emit_signal('FrontChanged', new GLib.Variant('(bsssu)', front));
    }
}
