#include "adapters/linux/workspace/kwin_script_front_source.hpp"

#include <fcntl.h>
#include <unistd.h>

#include <charconv>
#include <cstdlib>
#include <utility>

#include "adapters/linux/bus/session_bus.hpp"
#include "adapters/linux/workspace/kwin_script.hpp"

namespace velotap {
namespace {

constexpr const char* kService = "org.kde.KWin";
constexpr const char* kScripting = "/Scripting";
constexpr const char* kInterface = "org.kde.kwin.Scripting";

constexpr SessionBus::Method method(const char* member) {
  return {kService, kScripting, kInterface, member};
}

int numberIn(const std::string& text) {
  int number = 0;
  std::from_chars(text.data(), text.data() + text.size(), number);
  return number;
}

/// A file with the script's text, there as long as this object is.
class ScriptFile {
 public:
  ScriptFile(const std::string& folder, const std::string& text)
      : path_(folder + "/velotap-XXXXXX.js") {
    const int file = mkostemps(path_.data(), 3, O_CLOEXEC);
    if (file < 0) return;
    exists_ = true;
    whole_ = write(file, text.data(), text.size()) == static_cast<ssize_t>(text.size());
    whole_ &= close(file) == 0;
  }
  ~ScriptFile() {
    if (exists_) unlink(path_.c_str());
  }
  ScriptFile(const ScriptFile&) = delete;
  ScriptFile& operator=(const ScriptFile&) = delete;
  [[nodiscard]] bool whole() const noexcept { return whole_; }
  [[nodiscard]] const std::string& path() const noexcept { return path_; }

 private:
  std::string path_;
  bool exists_ = false;
  bool whole_ = false;
};

class KwinScriptFrontSource final : public FrontSource {
 public:
  KwinScriptFrontSource(DescriptorLoop& loop, MainQueue& queue, std::string busAddress,
                        std::string runtimeFolder)
      : busAddress_(std::move(busAddress)),
        runtimeFolder_(std::move(runtimeFolder)),
        bus_(loop, queue, [this](std::string reason) { lost(std::move(reason)); }) {}

  ~KwinScriptFrontSource() override {
    if (loaded_) bus_.tell(method("unloadScript"), {kKwinScriptName});
  }

  void start(Listener listener) override {
    listener_ = std::move(listener);
    if (const auto refusal = bus_.refusalToOpen(busAddress_)) {
      return listener_.failed(
          refusal->mayHelpLater ? SourceFailure::unreachable : SourceFailure::absent,
          refusal->reason);
    }
    if (!bus_.onCall(kFrontObject, kFrontInterface, kActivatedMember,
                     [this](BusMessage message) { activated(message); })) {
      return listener_.failed(SourceFailure::absent, "the session bus refused an object");
    }
    bus_.followOwner(kService, [this](std::string owner) { ownerChanged(std::move(owner)); });
  }

 private:
  void ownerChanged(std::string owner) {
    ++load_;
    owner_ = std::move(owner);
    live_ = false;
    loaded_ = false;
    file_.reset();
    if (owner_.empty()) return listener_.dormant("no KWin is on the session bus");
    // Unloading comes first: a script left behind by a crash would keep ours from loading.
    const unsigned load = load_;
    bus_.call(method("unloadScript"), {kKwinScriptName}, [this, load](BusMessage) {
      if (load == load_) loadScript();
    });
  }

  void loadScript() {
    file_ = std::make_unique<ScriptFile>(runtimeFolder_, kwinScriptText(bus_.uniqueName()));
    if (!file_->whole()) return refused("the script for KWin cannot be written");
    bus_.call(method("loadScript"), {file_->path(), kKwinScriptName},
              [this, load = load_](BusMessage reply) {
                if (load == load_) scriptLoaded(reply);
              });
  }

  void scriptLoaded(BusMessage reply) {
    if (reply.integer().value_or(-1) < 0) return refused("KWin refuses scripts");
    loaded_ = true;
    // Starts what is loaded and does not run yet. The script then reports by itself, which is the
    // proof that it runs: there is nothing to learn from the answer.
    bus_.tell(method("start"), {});
  }

  void refused(const char* reason) {
    file_.reset();
    listener_.failed(SourceFailure::absent, reason);
  }

  void activated(BusMessage message) {
    if (owner_.empty() || message.sender() != owner_) return;
    const bool present = !message.text().empty();
    FrontWindow window{
        .appId = message.text(), .windowClass = message.text(), .instance = message.text()};
    window.pid = numberIn(message.text());
    if (!live_) {
      live_ = true;
      file_.reset();
      listener_.live();
    }
    listener_.front(present ? std::optional(std::move(window)) : std::nullopt);
  }

  void lost(std::string reason) {
    loaded_ = false;
    listener_.failed(SourceFailure::unreachable, std::move(reason));
  }

  const std::string busAddress_;
  const std::string runtimeFolder_;
  Listener listener_;
  SessionBus bus_;
  std::string owner_;
  std::unique_ptr<ScriptFile> file_;
  unsigned load_ = 0;  ///< answers to an earlier KWin are stale
  bool loaded_ = false;
  bool live_ = false;
};

}  // namespace

std::unique_ptr<FrontSource> makeKwinScriptFrontSource(DescriptorLoop& loop, MainQueue& queue,
                                                       std::string busAddress,
                                                       std::string runtimeFolder) {
  return std::make_unique<KwinScriptFrontSource>(loop, queue, std::move(busAddress),
                                                 std::move(runtimeFolder));
}

}  // namespace velotap
