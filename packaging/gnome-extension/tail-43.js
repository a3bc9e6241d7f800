
function init() {
    return new FrontExporter();
}
