/* exported init */
const {Gio, GLib, Shell} = imports.gi;

