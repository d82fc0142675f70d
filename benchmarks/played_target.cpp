#include "played_target.h"

#include <poll.h>
#include <sys/prctl.h>
#include <sys/wait.h>
#include <unistd.h>

#include <array>
#include <chrono>
#include <csignal>
#include <thread>

namespace orvane::test {
namespace {

[[noreturn]] void Play(int line) {
  constexpr std::chrono::microseconds kOnTheLine{5000};
  constexpr std::size_t kFrame = 53;
  constexpr std::size_t kOperation = 2;
  ::prctl(PR_SET_PDEATHSIG, SIGKILL);
  std::string command;
  for (;;) {
    pollfd ready{line, POLLIN, 0};
    (void)::poll(&ready, 1, -1);
    std::array<char, 256> bytes{};
    const auto count = ::read(line, bytes.data(), bytes.size());
    if (count > 0) command.append(bytes.data(), static_cast<std::size_t>(count));
    if (command.size() < kFrame) continue;
    const char operation = command[kOperation];
    command.erase(0, kFrame);
    std::this_thread::sleep_for(kOnTheLine);
    const std::array<char, 9> reply{'\x02', '\x14', 0, operation, 0, 0, 0, operation, '\x02'};
    if (::write(line, reply.data(), reply.size()) < 0) ::_exit(1);
  }
}

}  // namespace

PlayedTarget::PlayedTarget() : process_(::fork()) {
  if (process_ == 0) Play(line_.Get());
}

PlayedTarget::~PlayedTarget() {
  ::kill(process_, SIGKILL);
  ::waitpid(process_, nullptr, 0);
}

}  // namespace orvane::test
