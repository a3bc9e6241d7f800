
export default class VelotapFrontExtension extends Extension {
    enable() {
        this._exporter = new FrontExporter();
        this._exporter.enable();
    }

    disable() {
        this._exporter.disable();
        this._exporter = null;
    }
}
