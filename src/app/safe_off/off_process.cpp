#include "app/safe_off/off_process.h"

#include <spawn.h>
#include <sys/socket.h>
#include <sys/wait.h>
#include <unistd.h>

#include <array>
#include <cerrno>
#include <csignal>
#include <cstring>
#include <filesystem>
#include <utility>
#include <vector>

#include "app/route_text.h"

namespace orvane {
namespace {

namespace fs = std::filesystem;
using namespace std::chrono_literals;

/// The process takes 3 s at the most.
constexpr auto kAnswerTime = 3500ms;
/// One that dies again and again is no use.
constexpr int kMostStarts = 4;

/// Beside this program as it is built; where it is installed, among the programs that nobody starts by hand, where
/// the one with windows is, too.
fs::path ProgramFile() {
  constexpr const char* kName = "orvane-safe-off";
  std::error_code unknown;
  const fs::path here = fs::read_symlink("/proc/self/exe", unknown).parent_path();
  const fs::path beside = here / kName;
  return fs::exists(beside, unknown) ? beside : fs::weakly_canonical(here / ORVANE_PROGRAMS_FOLDER, unknown) / kName;
}

std::vector<std::string> CommandOf(const GpibRoutes& routes) {
  std::vector<std::string> words{ProgramFile().string(), "--gpib", RouteText(routes.bus)};
  for (const auto& [address, route] : routes.instruments) {
    words.emplace_back("--instrument");
    words.push_back(std::to_string(address) + "=" + RouteText(route));
  }
  return words;
}

/// How a process is started that has nothing of this one's but the pipe and the standard error.
struct Spawning {
  explicit Spawning(int pipe) {
    ::posix_spawn_file_actions_init(&actions);
    ::posix_spawn_file_actions_adddup2(&actions, pipe, STDIN_FILENO);
    ::posix_spawn_file_actions_adddup2(&actions, pipe, STDOUT_FILENO);
    ::posix_spawn_file_actions_addclosefrom_np(&actions, STDERR_FILENO + 1);
    ::posix_spawnattr_init(&attributes);
    ::posix_spawnattr_setflags(&attributes, POSIX_SPAWN_SETSID | POSIX_SPAWN_SETSIGMASK);
    sigset_t none;
    ::sigemptyset(&none);
    ::posix_spawnattr_setsigmask(&attributes, &none);
  }
  Spawning(const Spawning&) = delete;
  Spawning& operator=(const Spawning&) = delete;
  ~Spawning() {
    ::posix_spawnattr_destroy(&attributes);
    ::posix_spawn_file_actions_destroy(&actions);
  }
  posix_spawn_file_actions_t actions{};
  posix_spawnattr_t attributes{};
};

}  // namespace

OffProcess::OffProcess(EventLoop& loop, GpibRoutes routes) : loop_(loop), routes_(std::move(routes)) { Start(); }

OffProcess::~OffProcess() { HangUp(); }

void OffProcess::Start() {
  ++starts_;
  std::array<int, 2> ends{-1, -1};
  if (::socketpair(AF_UNIX, SOCK_STREAM | SOCK_CLOEXEC, 0, ends.data()) != 0) {
    throw OptionFault(std::string("--safe-off: ") + std::strerror(errno));
  }
  std::vector<std::string> command = CommandOf(routes_);
  std::vector<char*> words;
  for (std::string& word : command) words.push_back(word.data());
  words.push_back(nullptr);
  const Spawning how(ends[1]);
  const int fault = ::posix_spawn(&process_, words[0], &how.actions, &how.attributes, words.data(), environ);
  ::close(ends[1]);
  if (fault != 0) {
    ::close(ends[0]);
    process_ = -1;
    throw OptionFault("--safe-off: " + command.front() + ": " + std::strerror(fault));
  }
  pipe_ = ends[0];
  received_.clear();
  arrived_ = std::make_unique<QSocketNotifier>(pipe_, QSocketNotifier::Read);
  QObject::connect(arrived_.get(), &QSocketNotifier::activated, arrived_.get(), [this] {
    arrived_->setEnabled(false);
    loop_.Post([this] { Hear(); });
  });
}

void OffProcess::HangUp() {
  arrived_.reset();
  if (pipe_ >= 0) ::close(std::exchange(pipe_, -1));
  if (process_ > 0) ::waitpid(std::exchange(process_, -1), nullptr, WNOHANG);
}

void OffProcess::Say(const OffWord& word) const {
  const std::string line = LineOf(word);
  // A process that takes nothing does not answer, either.
  if (pipe_ >= 0) (void)::send(pipe_, line.data(), line.size(), MSG_NOSIGNAL | MSG_DONTWAIT);
}

void OffProcess::Tell(const OffPlaces& places) {
  if (places_ == places) return;
  places_ = places;
  Say(OffMove{places_});
}

void OffProcess::Note(const std::string& file) {
  note_ = file;
  Say(OffNote{note_});
}

void OffProcess::SwitchOff(std::function<void(const OffOutcome&)> answered) {
  answered_ = std::move(answered);
  ++number_;
  Say(OffOrder{number_});
  if (pipe_ < 0) loop_.Post([this] { StartAnew(); });
  loop_.PostAt(loop_.Now() + kAnswerTime, [this, mine = number_] {
    if (mine == number_) Settle(NotSure("the process that switches it off does not answer."));
  });
}

void OffProcess::Dismiss() {
  Say(OffFarewell{});
  HangUp();
}

void OffProcess::Hear() {
  if (pipe_ < 0) return;
  std::array<char, 1024> bytes;
  const auto count = ::recv(pipe_, bytes.data(), bytes.size(), MSG_DONTWAIT);
  const bool nothingYet = count < 0 && (errno == EAGAIN || errno == EINTR);
  if (count <= 0 && !nothingYet) return StartAnew();
  if (count > 0) received_.append(bytes.data(), static_cast<std::size_t>(count));
  arrived_->setEnabled(true);
  while (const auto line = TakeLine(received_)) {
    const auto answer = OffAnswerOf(*line);
    if (answer && answer->number == number_) Settle(answer->outcome);
  }
}

/// An order that is open is given to the new one.
void OffProcess::StartAnew() {
  HangUp();
  try {
    if (starts_ >= kMostStarts) throw OptionFault("--safe-off: its process ended again and again");
    Start();
    if (onTrouble) onTrouble("The process that switches the bench off had ended. It was started anew.");
    Say(OffMove{places_});
    Say(OffNote{note_});
    if (answered_) Say(OffOrder{number_});
  } catch (const OptionFault& fault) {
    if (onTrouble)
      onTrouble(std::string("Nothing switches the bench off when this station dies: ") + fault.what() + ".");
    Settle(NotSure("there is no process to do it."));
  }
}

void OffProcess::Settle(const OffOutcome& outcome) {
  if (const auto answered = std::exchange(answered_, nullptr)) answered(outcome);
}

OffOutcome OffProcess::NotSure(const std::string& why) const {
  return {places_.supply ? why : "", places_.load ? why : ""};
}

}  // namespace orvane
