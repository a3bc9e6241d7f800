#include "uhid_device.hpp"

#include <fcntl.h>
#include <linux/netlink.h>
#include <sys/socket.h>

#include <algorithm>
#include <cerrno>
#include <cstring>
#include <system_error>
#include <utility>
#include <vector>

namespace velotap::vm {
namespace {

[[noreturn]] void throwErrno(const char* what) {
  throw std::system_error(errno, std::generic_category(), what);
}

Descriptor openUhid() {
  Descriptor fd(open("/dev/uhid", O_RDWR | O_CLOEXEC | O_NONBLOCK));
  if (!fd) throwErrno("/dev/uhid");
  return fd;
}

/// The kernel's own notices: group 1. Group 2 would be udev's.
Descriptor openNotices() {
  Descriptor fd(
      socket(AF_NETLINK, SOCK_DGRAM | SOCK_CLOEXEC | SOCK_NONBLOCK, NETLINK_KOBJECT_UEVENT));
  if (!fd) throwErrno("netlink socket");
  sockaddr_nl address{};
  address.nl_family = AF_NETLINK;
  address.nl_groups = 1;
  sockaddr generic{};
  static_assert(sizeof address <= sizeof generic);
  std::memcpy(&generic, &address, sizeof address);
  if (bind(fd.get(), &generic, sizeof address) != 0) throwErrno("netlink bind");
  return fd;
}

template <std::size_t Size>
void copyText(unsigned char (&out)[Size], const std::string& text) {
  std::memcpy(out, text.data(), std::min(text.size(), Size - 1));
}

/// The value of KEY in a notice, whose fields are separated by zero bytes.
std::string_view valueOf(std::string_view notice, std::string_view key) {
  while (!notice.empty()) {
    const std::string_view entry = notice.substr(0, notice.find('\0'));
    notice.remove_prefix(std::min(entry.size() + 1, notice.size()));
    if (entry.size() > key.size() && entry.substr(0, key.size()) == key &&
        entry[key.size()] == '=') {
      return entry.substr(key.size() + 1);
    }
  }
  return {};
}

}  // namespace

UhidDevice::UhidDevice(const HidModel& model, Identity identity)
    : model_(model), identity_(std::move(identity)), uhid_(openUhid()), notices_(openNotices()) {
  const std::vector<std::uint8_t> descriptor = hidDescriptor(model.kind);
  uhid_event event{};
  event.type = UHID_CREATE2;
  auto& create = event.u.create2;
  copyText(create.name, identity_.name);
  copyText(create.phys, identity_.phys);
  copyText(create.uniq, identity_.uniq);
  std::memcpy(create.rd_data, descriptor.data(), descriptor.size());
  create.rd_size = static_cast<std::uint16_t>(descriptor.size());
  create.bus = model.bus;
  create.vendor = model.vendor;
  create.product = model.productId;
  create.version = 1;
  write(event);
}

bool UhidDevice::ready() const noexcept {
  return bound_ && !node_.empty() && (multitouchOn_ || !model_.multitouch);
}

std::array<int, 2> UhidDevice::descriptors() const noexcept {
  return {uhid_.get(), notices_.get()};
}

void UhidDevice::serve() {
  serveRequests();
  serveNotices();
}

void UhidDevice::serveRequests() {
  uhid_event request{};
  if (read(uhid_.get(), &request, sizeof request) < 0) {
    if (errno == EAGAIN || errno == EINTR) return;
    throwErrno("uhid read");
  }
  uhid_event reply{};
  if (request.type == UHID_SET_REPORT) {
    reply.type = UHID_SET_REPORT_REPLY;
    reply.u.set_report_reply.id = request.u.set_report.id;
    write(reply);
    multitouchOn_ = true;
  } else if (request.type == UHID_GET_REPORT) {
    reply.type = UHID_GET_REPORT_REPLY;
    reply.u.get_report_reply.id = request.u.get_report.id;
    reply.u.get_report_reply.err = EIO;  // no device of this bench has anything to tell
    write(reply);
  }
}

void UhidDevice::serveNotices() {
  std::array<char, 4096> buffer{};
  const ssize_t size = recv(notices_.get(), buffer.data(), buffer.size(), 0);
  if (size > 0) noteNotice({buffer.data(), static_cast<std::size_t>(size)});
}

void UhidDevice::noteNotice(std::string_view notice) {
  const std::string_view action = valueOf(notice, "ACTION");
  const std::string_view path = valueOf(notice, "DEVPATH");
  if (valueOf(notice, "HID_UNIQ") == identity_.uniq) {
    if (action == "add") sysfsPath_ = path;
    if (action == "bind") bound_ = true;
    return;
  }
  const std::string_view name = valueOf(notice, "DEVNAME");
  const bool ours = !sysfsPath_.empty() && path.substr(0, sysfsPath_.size()) == sysfsPath_;
  if (ours && action == "add" && name.find("input/event") != std::string_view::npos) {
    node_ = "/dev/" + std::string(name);
  }
}

void UhidDevice::send(std::span<const std::uint8_t> report) {
  uhid_event event{};
  event.type = UHID_INPUT2;
  event.u.input2.size = static_cast<std::uint16_t>(report.size());
  std::memcpy(event.u.input2.data, report.data(), report.size());
  write(event);
}

void UhidDevice::destroy() {
  uhid_event event{};
  event.type = UHID_DESTROY;
  write(event);
}

void UhidDevice::write(const uhid_event& event) const {
  if (::write(uhid_.get(), &event, sizeof event) < 0) throwErrno("uhid write");
}

}  // namespace velotap::vm
