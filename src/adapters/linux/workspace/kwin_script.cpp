#include "adapters/linux/workspace/kwin_script.hpp"

namespace velotap {

std::string kwinScriptText(std::string_view receiver) {
  // KWin 5 and 6 name the same things differently. The arguments are all texts, because numbers
  // change their type on the way.
  std::string script = R"js(function text(value) {
  return value === undefined || value === null ? "" : value.toString();
}
function activated(window) {
  callDBus("@receiver@", "@object@", "@interface@", "@member@",
           window ? "window" : "",
           window ? text(window.desktopFileName) : "",
           window ? text(window.resourceClass) : "",
           window ? text(window.resourceName) : "",
           window ? text(window.pid) : "");
}
if (workspace.windowActivated) {
  workspace.windowActivated.connect(activated);
  activated(workspace.activeWindow);
} else {
  workspace.clientActivated.connect(activated);
  activated(workspace.activeClient);
}
)js";
  const auto put = [&script](std::string_view mark, std::string_view text) {
    script.replace(script.find(mark), mark.size(), text);
  };
  put("@receiver@", receiver);
  put("@object@", kFrontObject);
  put("@interface@", kFrontInterface);
  put("@member@", kActivatedMember);
  return script;
}

}  // namespace velotap
