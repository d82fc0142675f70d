#include <fcntl.h>
#include <sys/file.h>
#include <sys/ioctl.h>
#include <termios.h>
#include <unistd.h>

#include <cerrno>

#include "adapters/gpib/byte_stream.h"
#include "adapters/gpib/route_session.h"
#include "adapters/serial/open_failure.h"

namespace orvane {
ByteStream OpenSerialDevice(const std::string& device, const std::string& peer) {
  const int descriptor = ::open(device.c_str(), O_RDWR | O_NOCTTY | O_NONBLOCK | O_CLOEXEC);
  if (descriptor < 0) FailAbsent(WhyNotOpened(device, errno));
  ByteStream stream(descriptor, peer);
  if (::isatty(descriptor) == 0) FailAbsent("the device is no serial line.");
  // A superuser's program opens also what is held for one program alone, so there is a lock beside that.
  if (::flock(descriptor, LOCK_EX | LOCK_NB) != 0) FailAbsent(WhyNotOpened(device, errno));
  ::ioctl(descriptor, TIOCEXCL);

  termios line{};
  if (::tcgetattr(descriptor, &line) != 0) FailAbsent(WhyNotOpened(device, errno));
  ::cfmakeraw(&line);
  ::cfsetspeed(&line, B115200);
  // Without HUPCL: some adapters start afresh whenever the line's DTR drops.
  line.c_cflag = (line.c_cflag & ~static_cast<tcflag_t>(CRTSCTS | CSTOPB | HUPCL)) | CLOCAL | CREAD;
  line.c_cc[VMIN] = 1;
  line.c_cc[VTIME] = 0;
  if (::tcsetattr(descriptor, TCSANOW, &line) != 0) FailAbsent(WhyNotOpened(device, errno));
  ::tcflush(descriptor, TCIOFLUSH);
  return stream;
}

}  // namespace orvane
