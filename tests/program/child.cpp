#include "program/child.h"

#include <fcntl.h>
#include <poll.h>
#include <sys/wait.h>
#include <unistd.h>

#include <array>
#include <csignal>
#include <stdexcept>

namespace orvane::test {
namespace {

constexpr int kLimitMs = 30000;

struct Pipe {
  Pipe() {
    if (::pipe2(ends.data(), O_CLOEXEC) != 0) throw std::runtime_error("no pipe");
  }
  std::array<int, 2> ends{};
};

/// Adds what comes next. @return false at the end, or when nothing comes.
bool ReadMore(int descriptor, std::string& text) {
  pollfd ready{descriptor, POLLIN, 0};
  if (::poll(&ready, 1, kLimitMs) <= 0) return false;
  std::array<char, 4096> bytes{};
  const auto count = ::read(descriptor, bytes.data(), bytes.size());
  if (count <= 0) return false;
  text.append(bytes.data(), static_cast<std::size_t>(count));
  return true;
}

}  // namespace

Child::Child(std::vector<std::string> command) {
  (void)std::signal(SIGPIPE, SIG_IGN);
  const Pipe in;
  const Pipe out;
  const Pipe err;
  std::vector<char*> words;
  for (std::string& word : command) words.push_back(word.data());
  words.push_back(nullptr);
  process_ = ::fork();
  if (process_ == 0) {
    ::dup2(in.ends[0], STDIN_FILENO);
    ::dup2(out.ends[1], STDOUT_FILENO);
    ::dup2(err.ends[1], STDERR_FILENO);
    ::execv(words[0], words.data());
    ::_exit(127);
  }
  ::close(in.ends[0]);
  ::close(out.ends[1]);
  ::close(err.ends[1]);
  input_ = in.ends[1];
  output_ = out.ends[0];
  errors_ = err.ends[0];
}

Child::~Child() {
  CloseInput();
  if (process_ > 0) {
    ::kill(process_, SIGKILL);
    ::waitpid(process_, nullptr, 0);
  }
  ::close(output_);
  ::close(errors_);
}

void Child::Send(const std::string& line) const {
  const std::string whole = line + "\n";
  if (::write(input_, whole.data(), whole.size()) != static_cast<ssize_t>(whole.size())) {
    throw std::runtime_error("the program takes no input");
  }
}

void Child::CloseInput() {
  if (input_ >= 0) ::close(input_);
  input_ = -1;
}

std::optional<std::string> Child::NextLine() {
  while (true) {
    if (const auto end = received_.find('\n'); end != std::string::npos) {
      std::string line = received_.substr(0, end);
      received_.erase(0, end + 1);
      return line;
    }
    if (!ReadMore(output_, received_)) return std::nullopt;
  }
}

Child::End Child::WaitForEnd() {
  End end;
  while (ReadMore(output_, received_)) {
  }
  while (ReadMore(errors_, end.errors)) {
  }
  end.output = received_;
  int status = 0;
  ::waitpid(process_, &status, 0);
  process_ = -1;
  end.status = WIFEXITED(status) ? WEXITSTATUS(status) : -WTERMSIG(status);
  return end;
}

}  // namespace orvane::test
