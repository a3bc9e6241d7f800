#include "adapters/linux/recordings/play_recording.hpp"

#include <algorithm>
#include <set>

#include "adapters/linux/evdev/contact_reader.hpp"
#include "adapters/linux/evdev/touch_frames.hpp"

namespace velotap {
namespace {

double seconds(const input_event& event) {
  return static_cast<double>(event.input_event_sec) +
         static_cast<double>(event.input_event_usec) * 1e-6;
}

}  // namespace

PlayedRecording playRecording(const EvdevRecording& recording) {
  PlayedRecording played = {.name = recording.device.name,
                            .model = surfaceModel(recording.device),
                            .frames = {},
                            .refusals = {}};
  ContactReader reader(played.model);
  TouchFrames frames(played.model);
  std::set<std::int32_t> refused;
  const double start = recording.events.empty() ? 0 : seconds(recording.events.front());
  const auto keep = [&](const TouchFrame& frame) {
    played.frames.push_back({frame.timestamp, {frame.touches.begin(), frame.touches.end()}});
  };
  keep(frames.first(RawContacts(), 0));
  for (const input_event& event : recording.events) {
    const auto step = reader.handle(event);
    if (step == ContactReader::Step::nothing) continue;
    // Whoever recorded lost events too, and nobody can be asked any more what was down.
    if (step == ContactReader::Step::resynchronise) reader.clear();
    const double time = std::max(0.0, seconds(event) - start);
    const RawContacts contacts = reader.contacts();
    if (const auto frame = frames.next(contacts, time)) keep(*frame);
    for (const RawContact& contact : contacts) {
      const Refusal refusal = frames.filter().refusal(contact.id);
      if (refusal != Refusal::none && refused.insert(contact.id).second) {
        played.refusals.push_back({time, contact.id, refusalText(refusal)});
      }
    }
  }
  return played;
}

}  // namespace velotap
