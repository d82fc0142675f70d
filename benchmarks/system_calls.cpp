#include "system_calls.h"

#include <sys/ptrace.h>
#include <sys/wait.h>
#include <unistd.h>

#include <csignal>
#include <stdexcept>

namespace orvane::test {
namespace {

[[noreturn]] void Work(const std::function<void()>& work) {
  if (::ptrace(PTRACE_TRACEME, 0, nullptr, nullptr) != 0) ::_exit(2);
  ::raise(SIGSTOP);
  try {
    work();
  } catch (...) {
    ::_exit(1);
  }
  ::_exit(0);
}

}  // namespace

long SystemCallsOf(const std::function<void()>& work) {
  // A stop at each call's begin and one at its end, told from those of signals by this bit.
  constexpr int kAtCall = SIGTRAP | 0x80;
  const pid_t process = ::fork();
  if (process == 0) Work(work);
  int status = 0;
  ::waitpid(process, &status, 0);
  if (!WIFSTOPPED(status)) throw std::runtime_error("no process may be looked at here");
  ::ptrace(PTRACE_SETOPTIONS, process, nullptr, PTRACE_O_TRACESYSGOOD | PTRACE_O_EXITKILL);
  long stops = 0;
  int signal = 0;
  for (;;) {
    ::ptrace(PTRACE_SYSCALL, process, nullptr, signal);
    ::waitpid(process, &status, 0);
    if (!WIFSTOPPED(status)) break;
    const bool atCall = WSTOPSIG(status) == kAtCall;
    signal = atCall || WSTOPSIG(status) == SIGSTOP ? 0 : WSTOPSIG(status);
    stops += atCall ? 1 : 0;
  }
  if (!WIFEXITED(status) || WEXITSTATUS(status) != 0) throw std::runtime_error("the work that was counted failed");
  return stops / 2;
}

}  // namespace orvane::test
