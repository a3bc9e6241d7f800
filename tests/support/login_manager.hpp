// A login manager on a private bus, which says what a test wants.
#pragma once

#include <systemd/sd-bus.h>

#include <stdexcept>
#include <string>

namespace velotap::test {

class LoginManager {
 public:
  explicit LoginManager(const std::string& address, const char* name = "org.freedesktop.login1") {
    if (sd_bus_new(&bus_) < 0 || sd_bus_set_address(bus_, address.c_str()) < 0 ||
        sd_bus_set_bus_client(bus_, 1) < 0 || sd_bus_start(bus_) < 0 ||
        sd_bus_request_name(bus_, name, 0) < 0) {
      throw std::runtime_error("no login manager");
    }
  }
  ~LoginManager() { sd_bus_flush_close_unref(bus_); }
  LoginManager(const LoginManager&) = delete;
  LoginManager& operator=(const LoginManager&) = delete;

  void prepareForSleep(bool begins) {
    sd_bus_emit_signal(bus_, "/org/freedesktop/login1", "org.freedesktop.login1.Manager",
                       "PrepareForSleep", "b", static_cast<int>(begins));
    sd_bus_flush(bus_);
  }
  void talkNonsense() {
    sd_bus_emit_signal(bus_, "/org/freedesktop/login1", "org.freedesktop.login1.Manager",
                       "PrepareForSleep", "s", "tomorrow");
    sd_bus_flush(bus_);
  }

 private:
  sd_bus* bus_ = nullptr;
};

}  // namespace velotap::test
