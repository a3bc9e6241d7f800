#include "lab/statement_forms.hpp"

#include <algorithm>
#include <array>
#include <cstdint>
#include <utility>

#include "adapters/json/json_value.hpp"

namespace velotap::lab {
namespace {

using Context = StatementContext;
using Result = std::optional<Action>;

// The KEY=VALUE words of one statement. Each is taken by whoever knows it; what is left is unknown.
class Options {
 public:
  /// Reads the rest of the statement; false, with a message, when a word is no option or comes
  /// twice.
  bool read(Words& words, Context& context) {
    while (!words.empty()) {
      const std::string_view word = words.next();
      const auto halves = splitAt(word, '=');
      if (!halves) return refuse(context, inQuotes(word) + " is not KEY=VALUE");
      if (!values_.emplace(halves->left, halves->right).second) {
        return refuse(context, inQuotes(halves->left) + " is given twice");
      }
    }
    return true;
  }

  std::optional<std::string_view> take(std::string_view key) {
    const auto found = values_.find(key);
    if (found == values_.end()) return std::nullopt;
    const std::string_view value = found->second;
    values_.erase(found);
    return value;
  }

  /// Leaves `value` as it is when the option is absent.
  bool takeEither(std::string_view key, std::string_view yes, std::string_view no, bool& value,
                  Context& context) {
    const auto text = take(key);
    if (!text) return true;
    const auto either = parseEither(*text, yes, no);
    if (!either) {
      return refuse(context, std::string(key) + " is either " + std::string(yes) + " or " +
                                 std::string(no) + ", not " + inQuotes(*text));
    }
    value = *either;
    return true;
  }

  bool nothingLeft(Context& context) const {
    if (values_.empty()) return true;
    return refuse(context, "unknown option " + inQuotes(values_.begin()->first));
  }

 private:
  static bool refuse(Context& context, std::string message) {
    context.message = std::move(message);
    return false;
  }
  std::map<std::string_view, std::string_view> values_;
};

std::optional<std::string> deviceName(Words& words, Context& context) {
  const std::string_view name = words.next();
  if (name.empty()) return context.fail("the name of a device is missing");
  if (!context.devices.contains(name)) return context.fail("there is no device " + inQuotes(name));
  return std::string(name);
}

Result readDevice(Words& words, Context& context) {
  AddDevice add;
  SurfaceSize size;
  add.device.name = words.next();
  if (add.device.name.empty()) return context.fail("the device has no name");
  if (context.devices.contains(add.device.name)) {
    return context.fail("there already is a device " + inQuotes(add.device.name));
  }
  Options options;
  if (!options.read(words, context)) return std::nullopt;
  const auto family = options.take("family");
  if (!family) return context.fail("the device has no family");
  add.device.family = *family == "none" ? std::nullopt : parseInt32(*family);
  if (*family != "none" && !add.device.family) {
    return context.fail(inQuotes(*family) + " is no family: a whole number or none");
  }
  if (const auto text = options.take("size")) {
    const auto parsed = parseSize(*text);
    if (!parsed) return context.fail(inQuotes(*text) + " is no size: WIDTHxHEIGHT in millimetres");
    size = *parsed;
  }
  if (!options.takeEither("builtin", "true", "false", add.device.builtIn, context) ||
      !options.takeEither("register", "ok", "fail", add.device.registers, context) ||
      !options.takeEither("start", "ok", "fail", add.device.starts, context) ||
      !options.nothingLeft(context)) {
    return std::nullopt;
  }
  context.devices.emplace(add.device.name, size);
  return add;
}

Result readFramework(Words& words, Context& context) {
  const std::string_view what = words.next();
  if (what == "missing") return LoseLibrary{};
  if (what != "without") return context.fail("the framework is either missing or without SYMBOL");
  const std::string_view symbol = words.next();
  const auto names = SimulatedMultitouch::symbolNames();
  if (std::find(names.begin(), names.end(), symbol) == names.end()) {
    return context.fail("the framework never has a symbol " + inQuotes(symbol));
  }
  return LoseLibrary{std::string(symbol)};
}

Result readTaps(Words& words, Context& context) {
  LimitTaps limit;
  Options options;
  if (!options.read(words, context) ||
      !options.takeEither("hid", "ok", "fail", limit.hid, context) ||
      !options.takeEither("session", "ok", "fail", limit.session, context) ||
      !options.nothingLeft(context)) {
    return std::nullopt;
  }
  return limit;
}

Result readSet(Words& words, Context& context) {
  auto setting = readSetting(words.rest(), context.message);
  if (!setting) return std::nullopt;
  return *std::move(setting);
}

Result readUnset(Words& words, Context& context) {
  const std::string_view key = words.next();
  if (key.empty()) return context.fail("the key is missing");
  return WriteSetting{std::string(key), std::nullopt};
}

Result readFront(Words& words, Context& context) {
  const std::string_view id = words.next();
  if (id.empty()) return context.fail("the application is missing: an identifier or none");
  const std::string_view name = words.rest();
  if (id != "none") {
    return BringToFront{RunningApplication{AppId::intern(id), std::string(name)}};
  }
  if (!name.empty()) return context.fail("no application has no name either");
  return BringToFront{};
}

Result readLiveFront(Words& words, Context& context) {
  const std::string_view id = words.next();
  if (id.empty()) return context.fail("the application is missing: an identifier or none");
  return AnswerLive{id == "none" ? AppId() : AppId::intern(id)};
}

Result readPointer(Words& words, Context& context) {
  const std::string_view place = words.next();
  if (place == "none") return PlacePointer{};
  const auto point = parsePoint(place);
  if (!point) return context.fail(inQuotes(place) + " is no place: X,Y or none");
  return PlacePointer{point};
}

Result readPractice(Words& words, Context& context) {
  const std::string_view place = words.next();
  if (place == "none") return ShowPractice{};
  const auto rectangle = parseRectangle(place);
  if (!rectangle) return context.fail(inQuotes(place) + " is no rectangle: X,Y,WxH or none");
  return ShowPractice{rectangle};
}

Result readTrust(Words& words, Context& context) {
  const auto trusted = parseEither(words.next(), "yes", "no");
  if (!trusted) return context.fail("trust is either yes or no");
  return GiveTrust{*trusted};
}

Result readSystem(Words& words, Context& context) {
  const std::string_view domain = words.next();
  if (domain.empty()) return context.fail("the domain is missing");
  auto setting = readSetting(words.rest(), context.message);
  if (!setting) return std::nullopt;
  return WriteSystemPreference{std::string(domain), std::move(setting->key),
                               *std::move(setting->value)};
}

Result readLayout(Words& words, Context& context) {
  if (words.empty()) return context.fail("the keys are missing: CODE=CHARACTER ... or none");
  std::string_view word = words.next();
  if (word == "none" && words.empty()) return SelectLayout{};
  SimulatedKeyboardLayout::Keys keys;
  for (; !word.empty(); word = words.next()) {
    const auto halves = splitAt(word, '=');
    const auto code = halves ? parseInt32(halves->left) : std::nullopt;
    if (!code || *code < 0 || *code > UINT16_MAX || halves->right.empty()) {
      return context.fail(inQuotes(word) + " is no key: CODE=CHARACTER");
    }
    if (!keys.emplace(static_cast<std::uint16_t>(*code), halves->right).second) {
      return context.fail("key " + std::to_string(*code) + " is given twice");
    }
  }
  return SelectLayout{std::move(keys)};
}

Result readFrame(Words& words, Context& context) {
  auto name = deviceName(words, context);
  if (!name) return std::nullopt;
  SendFrame frame = {.device = *std::move(name), .touches = {}};
  if (words.empty()) return context.fail("the contacts are missing: ID:X,Y ..., - or null");
  const SurfaceSize size = context.devices.find(frame.device)->second;
  std::string_view word = words.next();
  if (word == "-") return frame;
  if (word == "null") {
    frame.null = true;
    return frame;
  }
  for (; !word.empty(); word = words.next()) {
    const auto touch = parseTouch(word, size, context.message);
    if (!touch) return std::nullopt;
    frame.touches.push_back(*touch);
  }
  return frame;
}

Result readMouse(MouseEventType left, MouseEventType right, Words& words, Context& context) {
  const auto isLeft = parseEither(words.next(), "left", "right");
  if (!isLeft) return context.fail("the button is either left or right");
  Options options;
  if (!options.read(words, context)) return std::nullopt;
  const auto number = options.take("number");
  if (!number) return context.fail("the event has no number");
  const auto parsed = parseInt64(*number);
  if (!parsed) return context.fail(inQuotes(*number) + " is no event number");
  bool fromHardware = true;
  if (!options.takeEither("hid", "yes", "no", fromHardware, context) ||
      !options.nothingLeft(context)) {
    return std::nullopt;
  }
  return SendMouse{
      .event = {.type = *isLeft ? left : right, .button = *isLeft ? 0 : 1, .number = *parsed},
      .origin = fromHardware ? EventOrigin::hid : EventOrigin::session};
}

Result readDown(Words& words, Context& context) {
  return readMouse(MouseEventType::leftDown, MouseEventType::rightDown, words, context);
}

Result readUp(Words& words, Context& context) {
  return readMouse(MouseEventType::leftUp, MouseEventType::rightUp, words, context);
}

Result readDrag(Words& words, Context& context) {
  return readMouse(MouseEventType::leftDragged, MouseEventType::rightDragged, words, context);
}

Result readTapDisabled(Words& words, Context& context) {
  const auto isHid = parseEither(words.next(), "hid", "session");
  if (!isHid) return context.fail("the tap is either hid or session");
  const auto byTimeout = parseEither(words.next(), "timeout", "user");
  if (!byTimeout) return context.fail("the reason is either timeout or user");
  DisableTap disable = {.location = *isHid ? TapLocation::hid : TapLocation::session,
                        .reason = *byTimeout ? TapDisabled::byTimeout : TapDisabled::byUserInput};
  Options options;
  if (!options.read(words, context) ||
      !options.takeEither("revives", "yes", "no", disable.revives, context) ||
      !options.nothingLeft(context)) {
    return std::nullopt;
  }
  return disable;
}

Result readConnection(Words& words, Context& context, bool attached) {
  auto name = deviceName(words, context);
  if (!name) return std::nullopt;
  return ConnectDevice{*std::move(name), attached};
}

Result readAttach(Words& words, Context& context) {
  return readConnection(words, context, true);
}

Result readDetach(Words& words, Context& context) {
  return readConnection(words, context, false);
}

Result readSleep(Words&, Context&) {
  return TellMoment{SystemMoment::sleep};
}

Result readWake(Words&, Context&) {
  return TellMoment{SystemMoment::wake};
}

Result readDisplay(Words&, Context&) {
  return TellMoment{SystemMoment::display};
}

Result readStop(Words&, Context&) {
  return Control{ControllerStep::stop};
}

Result readStart(Words&, Context&) {
  return Control{ControllerStep::start};
}

Result readEnd(Words&, Context&) {
  return Wait{};
}

constexpr auto kStage = StatementPlace::stage;
constexpr auto kBoth = StatementPlace::stageOrTimed;
constexpr auto kTimed = StatementPlace::timed;

constexpr std::array kForms = {
    StatementForm{"device", kStage, readDevice},
    StatementForm{"framework", kStage, readFramework},
    StatementForm{"taps", kStage, readTaps},
    StatementForm{"set", kBoth, readSet},
    StatementForm{"unset", kBoth, readUnset},
    StatementForm{"front", kBoth, readFront},
    StatementForm{"live-front", kBoth, readLiveFront},
    StatementForm{"pointer", kBoth, readPointer},
    StatementForm{"practice", kBoth, readPractice},
    StatementForm{"trust", kBoth, readTrust},
    StatementForm{"system", kBoth, readSystem},
    StatementForm{"layout", kBoth, readLayout},
    StatementForm{"frame", kTimed, readFrame},
    StatementForm{"down", kTimed, readDown},
    StatementForm{"up", kTimed, readUp},
    StatementForm{"drag", kTimed, readDrag},
    StatementForm{"tap-disabled", kTimed, readTapDisabled},
    StatementForm{"attach", kTimed, readAttach},
    StatementForm{"detach", kTimed, readDetach},
    StatementForm{"sleep", kTimed, readSleep},
    StatementForm{"wake", kTimed, readWake},
    StatementForm{"display", kTimed, readDisplay},
    StatementForm{"stop", kTimed, readStop},
    StatementForm{"start", kTimed, readStart},
    StatementForm{"end", kTimed, readEnd},
};

}  // namespace

const StatementForm* statementForm(std::string_view word) {
  const auto found = std::find_if(kForms.begin(), kForms.end(),
                                  [word](const StatementForm& form) { return form.word == word; });
  return found != kForms.end() ? &*found : nullptr;
}

std::optional<WriteSetting> readSetting(std::string_view text, std::string& message) {
  const auto halves = splitAt(text, '=');
  const bool named = halves && !halves->left.empty() &&
                     halves->left.find_first_of(" \t") == std::string_view::npos;
  if (!named) {
    message = inQuotes(text) + " is not KEY=VALUE";
    return std::nullopt;
  }
  std::string reason;
  auto value = parseValue(halves->right, reason);
  if (!value) {
    message = inQuotes(halves->right) + " is no JSON value: " + reason;
    return std::nullopt;
  }
  return WriteSetting{std::string(halves->left), *std::move(value)};
}

std::string inQuotes(std::string_view text) {
  return '"' + std::string(text) + '"';
}

}  // namespace velotap::lab
