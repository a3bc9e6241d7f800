// The functions of the message-bus library, looked up when somebody needs a bus.
//
// The library brings five others along, close to a megabyte of resident memory that sessions on X
// and on most Wayland desktops have no use for; and systems without systemd have the same functions
// in a library of another name, or none. Any thread; stays loaded for the life of the process.
#pragma once

#include <systemd/sd-bus.h>

namespace velotap {

// Every function that is used, once: the members and the names that are looked up derive from it.
#define VELOTAP_SD_BUS_FUNCTIONS(USE)   \
  USE(sd_bus_add_match_async)           \
  USE(sd_bus_add_object)                \
  USE(sd_bus_call_async)                \
  USE(sd_bus_close_unref)               \
  USE(sd_bus_get_events)                \
  USE(sd_bus_get_fd)                    \
  USE(sd_bus_get_timeout)               \
  USE(sd_bus_get_unique_name)           \
  USE(sd_bus_is_ready)                  \
  USE(sd_bus_match_signal_async)        \
  USE(sd_bus_message_append_basic)      \
  USE(sd_bus_message_get_expect_reply)  \
  USE(sd_bus_message_get_sender)        \
  USE(sd_bus_message_is_method_call)    \
  USE(sd_bus_message_is_method_error)   \
  USE(sd_bus_message_new_method_call)   \
  USE(sd_bus_message_new_method_return) \
  USE(sd_bus_message_read_basic)        \
  USE(sd_bus_message_set_auto_start)    \
  USE(sd_bus_message_set_expect_reply)  \
  USE(sd_bus_message_unref)             \
  USE(sd_bus_new)                       \
  USE(sd_bus_process)                   \
  USE(sd_bus_send)                      \
  USE(sd_bus_set_address)               \
  USE(sd_bus_set_bus_client)            \
  USE(sd_bus_slot_unref)                \
  USE(sd_bus_start)

struct SdBusLibrary {
#define VELOTAP_MEMBER(name) decltype(&::name) name = nullptr;  // NOLINT: names take no parentheses
  VELOTAP_SD_BUS_FUNCTIONS(VELOTAP_MEMBER)
#undef VELOTAP_MEMBER

  /// Null when no library has them all.
  [[nodiscard]] static const SdBusLibrary* load();
};

}  // namespace velotap
