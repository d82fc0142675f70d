#include "bench/wires/terminal_pair.h"

#include <fcntl.h>
#include <termios.h>

#include <array>
#include <cstdlib>

namespace orvane::bench {
namespace {

void MakeRaw(int fd) {
  termios settings{};
  Check(tcgetattr(fd, &settings), "read the settings of a pseudo-terminal");
  cfmakeraw(&settings);
  cfsetspeed(&settings, B115200);
  Check(tcsetattr(fd, TCSANOW, &settings), "set up a pseudo-terminal");
}

}  // namespace

TerminalPair::TerminalPair() : master_(posix_openpt(O_RDWR | O_NOCTTY | O_CLOEXEC), "open a pseudo-terminal") {
  Check(grantpt(master_.Get()), "grant a pseudo-terminal");
  Check(unlockpt(master_.Get()), "unlock a pseudo-terminal");
  std::array<char, 128> name{};
  Check(ptsname_r(master_.Get(), name.data(), name.size()) == 0 ? 0 : -1, "name a pseudo-terminal");
  path_ = name.data();
  ownEnd_ = FileDescriptor(open(path_.c_str(), O_RDWR | O_NOCTTY | O_CLOEXEC), "open a pseudo-terminal's device");
  MakeRaw(ownEnd_.Get());
  Check(fcntl(master_.Get(), F_SETFL, O_NONBLOCK), "set up a pseudo-terminal");
}

void TerminalPair::Close() {
  ownEnd_.Close();
  master_.Close();
}

}  // namespace orvane::bench
