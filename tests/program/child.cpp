#include "program/child.h"

#include <fcntl.h>
#include <grp.h>
#include <poll.h>
#include <sys/prctl.h>
#include <sys/syscall.h>
#include <sys/wait.h>
#include <unistd.h>

#include <algorithm>
#include <array>
#include <csignal>
#include <stdexcept>
#include <utility>

namespace orvane::test {
namespace {

using namespace std::chrono_literals;

constexpr auto kLimit = 120s;
constexpr unsigned kNobody = 65534;
constexpr int kNotStarted = 127;

struct Pipe {
  Pipe() {
    if (::pipe2(ends.data(), O_CLOEXEC) != 0) throw std::runtime_error("no pipe");
  }
  std::array<int, 2> ends{};
};

int MillisecondsTo(std::chrono::steady_clock::time_point deadline) {
  const auto left = std::chrono::ceil<std::chrono::milliseconds>(deadline - std::chrono::steady_clock::now());
  return static_cast<int>(std::max(left, 0ms).count());
}

void Close(int& descriptor) {
  if (descriptor >= 0) ::close(std::exchange(descriptor, -1));
}

/// What the new process does.
[[noreturn]] void Become(const std::vector<char*>& words, const Surroundings& surroundings, pid_t parent,
                         const std::array<int, 3>& standard) {
  (void)std::signal(SIGPIPE, SIG_DFL);
  for (int i = 0; i < 3; ++i) ::dup2(standard[static_cast<std::size_t>(i)], i);
  bool ready = ::chdir(surroundings.folder.c_str()) == 0;
  if (surroundings.ordinaryUser && ::geteuid() == 0) {
    ready = ready && ::setgroups(0, nullptr) == 0 && ::setgid(kNobody) == 0 && ::setuid(kNobody) == 0;
  }
  ::prctl(PR_SET_PDEATHSIG, SIGKILL);
  // The test may have ended before this process asked to end with it.
  if (ready && ::getppid() == parent) ::execv(words[0], words.data());
  ::_exit(kNotStarted);
}

}  // namespace

Child::Child(std::vector<std::string> command, const Surroundings& surroundings) {
  (void)std::signal(SIGPIPE, SIG_IGN);
  const Pipe in;
  const Pipe out;
  const Pipe err;
  std::vector<char*> words;
  for (std::string& word : command) words.push_back(word.data());
  words.push_back(nullptr);
  const pid_t parent = ::getpid();
  process_ = ::fork();
  if (process_ == 0) Become(words, surroundings, parent, {in.ends[0], out.ends[1], err.ends[1]});
  for (const int childsEnd : {in.ends[0], out.ends[1], err.ends[1]}) ::close(childsEnd);
  input_ = in.ends[1];
  output_.descriptor = out.ends[0];
  errors_.descriptor = err.ends[0];
}

Child::~Child() {
  Kill();
  Close(input_);
  Close(output_.descriptor);
  Close(errors_.descriptor);
}

void Child::Send(const std::string& line) {
  const std::string whole = line + "\n";
  if (::write(input_, whole.data(), whole.size()) != static_cast<ssize_t>(whole.size())) {
    throw std::runtime_error("the program takes no input");
  }
}

std::optional<std::string> Child::NextLine() {
  const auto deadline = Clock::now() + kLimit;
  while (true) {
    if (const auto end = output_.text.find('\n'); end != std::string::npos) {
      std::string line = output_.text.substr(0, end);
      output_.text.erase(0, end + 1);
      return line;
    }
    if (output_.descriptor < 0 || !Hear(deadline)) return std::nullopt;
  }
}

bool Child::Says(const std::string& text) {
  while (const auto line = NextLine()) {
    if (line->find(text) != std::string::npos) return true;
  }
  return false;
}

void Child::CloseInput() { Close(input_); }

void Child::Kill() {
  if (!Runs()) return;
  ::kill(process_, SIGKILL);
  ::waitpid(std::exchange(process_, -1), nullptr, 0);
}

void Child::KillGroup() {
  if (!Runs() || ::getpgid(process_) != process_) throw std::runtime_error("the program leads no group");
  ::kill(-process_, SIGKILL);
  ::waitpid(std::exchange(process_, -1), nullptr, 0);
}

void Child::Terminate() {
  if (Runs()) ::kill(process_, SIGTERM);
}

Child::End Child::WaitForEnd() {
  const auto deadline = Clock::now() + kLimit;
  while (Hear(deadline)) {
  }
  pollfd ended{static_cast<int>(::syscall(SYS_pidfd_open, process_, 0)), POLLIN, 0};
  if (::poll(&ended, 1, MillisecondsTo(deadline)) == 0) ::kill(process_, SIGKILL);
  ::close(ended.fd);
  int status = 0;
  ::waitpid(std::exchange(process_, -1), &status, 0);
  return {WIFEXITED(status) ? WEXITSTATUS(status) : -WTERMSIG(status), output_.text, errors_.text};
}

bool Child::Hear(Clock::time_point deadline) {
  // A descriptor below zero is passed over.
  std::array<pollfd, 2> ready{pollfd{output_.descriptor, POLLIN, 0}, pollfd{errors_.descriptor, POLLIN, 0}};
  if (output_.descriptor < 0 && errors_.descriptor < 0) return false;
  if (::poll(ready.data(), ready.size(), MillisecondsTo(deadline)) <= 0) return false;
  for (Stream* stream : {&output_, &errors_}) {
    if (ready[stream == &output_ ? 0 : 1].revents == 0) continue;
    std::array<char, 65536> bytes;
    const auto count = ::read(stream->descriptor, bytes.data(), bytes.size());
    if (count > 0) {
      stream->text.append(bytes.data(), static_cast<std::size_t>(count));
    } else {
      Close(stream->descriptor);
    }
  }
  return true;
}

}  // namespace orvane::test
