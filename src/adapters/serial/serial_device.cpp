#include "adapters/serial/serial_device.h"

#include <fcntl.h>
#include <linux/serial.h>
#include <poll.h>
#include <sys/file.h>
#include <sys/ioctl.h>
#include <unistd.h>

#include <array>
#include <cerrno>
#include <cstring>

#include "adapters/serial/device_holder.h"
#include "adapters/serial/open_failure.h"

namespace orvane {
namespace {

/// Ample for the 512 bytes of the control's own buffer at any speed that occurs.
constexpr int kWriteLimitMs = 2000;

/// Adapters on USB hold received bytes back for up to 16 ms, to send fewer packets, unless they are asked not to. Not
/// every driver knows of it, and none needs it.
void AskForLowLatency(int descriptor) {
  serial_struct line{};
  if (::ioctl(descriptor, TIOCGSERIAL, &line) != 0) return;
  line.flags = static_cast<int>(static_cast<unsigned>(line.flags) | ASYNC_LOW_LATENCY);
  (void)::ioctl(descriptor, TIOCSSERIAL, &line);
}

/// The driver does not know the question, now or later.
bool IsRefusal(int error) { return error == ENOTTY || error == EINVAL; }

}  // namespace

SerialDevice::SerialDevice(const std::string& path, const LineSettings& settings, bool hardwareHandshake)
    : path_(path),
      parity_((settings.frame & PARENB) != 0),
      descriptor_(::open(path.c_str(), O_RDWR | O_NOCTTY | O_NONBLOCK | O_CLOEXEC)) {
  if (descriptor_ < 0) throw SerialFailure(WhyNotOpened(path, errno));
  try {
    if (::tcgetattr(descriptor_, &found_) != 0) throw SerialFailure(WhyNotOpened(path, errno));
    TakeForItself();
    SetUp(settings, hardwareHandshake);
  } catch (...) {
    ::close(descriptor_);
    throw;
  }
  AskForLowLatency(descriptor_);
  ::tcflush(descriptor_, TCIOFLUSH);
  modemLines_ = ModemLines();
  counts_ = Counts();
}

SerialDevice::~SerialDevice() {
  // The system would wait 30 s for a device that takes no bytes.
  ::tcflush(descriptor_, TCOFLUSH);
  ::tcsetattr(descriptor_, TCSANOW, &found_);
  ::ioctl(descriptor_, TIOCNXCL);
  ::close(descriptor_);
}

void SerialDevice::TakeForItself() {
  if (::flock(descriptor_, LOCK_EX | LOCK_NB) != 0 || LockFileOwner(path_, kLockFolder) != 0) {
    throw SerialFailure(WhyNotOpened(path_, EBUSY));
  }
  ::ioctl(descriptor_, TIOCEXCL);
}

void SerialDevice::SetUp(const LineSettings& settings, bool hardwareHandshake) {
  termios line = found_;
  ::cfmakeraw(&line);
  line.c_cflag &= ~static_cast<tcflag_t>(CSIZE | PARENB | PARODD | CMSPAR | CSTOPB | CRTSCTS);
  line.c_cflag |= settings.frame | CLOCAL | CREAD | (hardwareHandshake ? CRTSCTS : 0);
  // Damaged bytes and breaks come marked: see MarkedBytes.
  line.c_iflag |= PARMRK | (parity_ ? INPCK : 0);
  // One byte at least: a read of nothing is then told from the end of a device that has gone.
  line.c_cc[VMIN] = 1;
  line.c_cc[VTIME] = 0;
  ::cfsetispeed(&line, settings.speed);
  ::cfsetospeed(&line, settings.speed);
  termios got{};
  if (::tcsetattr(descriptor_, TCSANOW, &line) != 0 || ::tcgetattr(descriptor_, &got) != 0) {
    throw SerialFailure(WhyNotOpened(path_, errno));
  }
  if (::cfgetospeed(&got) != settings.speed) throw SerialFailure("the device has not that speed.");
}

std::string SerialDevice::Read() {
  std::array<char, 4096> piece;
  while (true) {
    const auto count = ::read(descriptor_, piece.data(), piece.size());
    if (count > 0) return marks_.Take({piece.data(), static_cast<std::size_t>(count)});
    if (count == 0) throw SerialFailure(WhyGone(EIO));
    if (errno == EAGAIN) return "";
    if (errno != EINTR) throw SerialFailure(WhyGone(errno));
  }
}

void SerialDevice::Write(std::string_view bytes) {
  while (!bytes.empty()) {
    const auto count = ::write(descriptor_, bytes.data(), bytes.size());
    if (count > 0) {
      bytes.remove_prefix(static_cast<std::size_t>(count));
    } else if (count == 0 || errno == EAGAIN) {
      pollfd ready{descriptor_, POLLOUT, 0};
      if (::poll(&ready, 1, kWriteLimitMs) == 0) throw SerialFailure("the device takes no bytes.");
    } else if (errno != EINTR) {
      throw SerialFailure(WhyGone(errno));
    }
  }
}

std::string SerialDevice::WhyGone(int error) const {
  if (::access(path_.c_str(), F_OK) != 0) return "the device is gone. Is it unplugged?";
  if (error == EIO || error == ENXIO || error == ENODEV) return "the device hung up.";
  return std::string(std::strerror(error)) + ".";
}

int SerialDevice::ModemLines() {
  int lines = modemLines_;
  if (tellsModemLines_ && ::ioctl(descriptor_, TIOCMGET, &lines) != 0) tellsModemLines_ = !IsRefusal(errno);
  return lines;
}

bool SerialDevice::Counted(LineCounts& counts) {
  serial_icounter_struct counted{};
  if (!tellsCounts_) return false;
  if (::ioctl(descriptor_, TIOCGICOUNT, &counted) != 0) {
    tellsCounts_ = !IsRefusal(errno);
    return false;
  }
  counts = {.cts = counted.cts,
            .dsr = counted.dsr,
            .carrier = counted.dcd,
            .ring = counted.rng,
            .breaks = counted.brk,
            .frame = counted.frame,
            .overrun = counted.overrun,
            .bufferOverrun = counted.buf_overrun,
            .parity = counted.parity};
  return true;
}

LineCounts SerialDevice::Counts() {
  LineCounts counts = counts_;
  if (Counted(counts)) return counts;
  // The device does not count: the marks among its bytes tell damage, though not whether by parity or by frame.
  counts.breaks = marks_.Breaks();
  (parity_ ? counts.parity : counts.frame) = marks_.Damaged();
  const int lines = ModemLines();
  CountChanges(modemLines_, lines, counts);
  modemLines_ = lines;
  return counts;
}

std::vector<int> SerialDevice::LineEvents() {
  const LineCounts now = Counts();
  auto events = EventsBetween(counts_, now);
  counts_ = now;
  return events;
}

}  // namespace orvane
