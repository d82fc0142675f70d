#include "workers.h"

#include <poll.h>
#include <sys/mman.h>
#include <sys/wait.h>
#include <unistd.h>

#include <algorithm>
#include <array>
#include <atomic>
#include <chrono>
#include <csignal>
#include <ctime>
#include <iostream>
#include <new>
#include <stdexcept>

#include "progress.h"

namespace orvane::proofs {
namespace {

using Clock = std::chrono::steady_clock;
constexpr unsigned kMostWorkers = 16;
/// Processor time that no case needs.
constexpr double kCaseSeconds = 300;
constexpr std::uint64_t kNoCase = UINT64_MAX;

/// What the processes share.
struct Shared {
  std::atomic<std::uint64_t> next{0};
  std::atomic<bool> stop{false};
  std::array<std::atomic<std::uint64_t>, kMostWorkers> current;
};

Shared* MakeShared() {
  void* memory = mmap(nullptr, sizeof(Shared), PROT_READ | PROT_WRITE, MAP_SHARED | MAP_ANONYMOUS, -1, 0);
  if (memory == MAP_FAILED) throw std::bad_alloc();
  auto* shared = new (memory) Shared;
  for (auto& current : shared->current) current = kNoCase;
  return shared;
}

void WriteAll(int pipe, std::string_view text) {
  while (!text.empty()) {
    const ssize_t written = write(pipe, text.data(), text.size());
    if (written <= 0) _exit(1);
    text.remove_prefix(static_cast<std::size_t>(written));
  }
}

class Crew {
 public:
  Crew(const Proof& proof, const Effort& effort, Ledger& ledger)
      : proof_(proof),
        effort_(effort),
        ledger_(ledger),
        begin_(ledger.Next()),
        again_(ledger.WithFindings()),
        shared_(MakeShared()) {
    shared_->next = 0;
  }
  Crew(const Crew&) = delete;
  Crew& operator=(const Crew&) = delete;
  ~Crew() { munmap(shared_, sizeof(Shared)); }

  void Work() {
    const auto deadline = Clock::now() + std::chrono::duration<double>(60 * effort_.minutes);
    workers_.resize(std::min(effort_.jobs, kMostWorkers));
    for (unsigned i = 0; i < workers_.size(); ++i) Start(i);
    auto lastKept = Clock::now();
    while (Running()) {
      if (Clock::now() >= deadline) shared_->stop = true;
      Listen();
      for (unsigned i = 0; i < workers_.size(); ++i) Watch(i);
      if (Clock::now() - lastKept > std::chrono::seconds(5)) {
        Keep();
        lastKept = Clock::now();
      }
    }
    Keep();
  }

 private:
  struct Worker {
    pid_t process = -1;
    int pipe = -1;
    std::string heard;
    std::uint64_t watched = kNoCase;
    double secondsAtCase = 0;
  };

  /// The N-th case of this call: first those that had findings, then the next ones.
  [[nodiscard]] std::uint64_t CaseOf(std::uint64_t n) const {
    return n < again_.size() ? again_[n] : begin_ + (n - again_.size());
  }

  void Start(unsigned index) {
    std::array<int, 2> ends{};
    if (pipe(ends.data()) != 0) throw std::runtime_error("No pipe can be made.");
    std::cout.flush();
    const pid_t process = fork();
    if (process < 0) throw std::runtime_error("No process can be made.");
    if (process == 0) {
      close(ends[0]);
      Toil(index, ends[1]);
    }
    close(ends[1]);
    workers_[index] = {process, ends[0], {}, kNoCase, 0};
  }

  [[noreturn]] void Toil(unsigned index, int pipe) {
    auto& current = shared_->current[index];
    while (!shared_->stop) {
      const std::uint64_t number = CaseOf(shared_->next++);
      if (number >= proof_.end) break;
      current = number;
      Outcome outcome;
      try {
        outcome = proof_.run(number);
      } catch (const std::exception& failure) {
        outcome.findings.push_back(std::string("It ends with an exception: ") + failure.what());
      }
      WriteAll(pipe, Told(number, outcome));
    }
    current = kNoCase;
    _exit(0);
  }

  [[nodiscard]] bool Running() const {
    return std::any_of(workers_.begin(), workers_.end(), [](const Worker& worker) { return worker.process > 0; });
  }

  void Listen() {
    std::vector<pollfd> polled;
    for (const Worker& worker : workers_) polled.push_back({worker.pipe, POLLIN, 0});
    (void)poll(polled.data(), polled.size(), 200);
    for (std::size_t i = 0; i < workers_.size(); ++i) {
      if (workers_[i].pipe >= 0 && polled[i].revents != 0) Hear(static_cast<unsigned>(i));
    }
  }

  void Hear(unsigned index) {
    Worker& worker = workers_[index];
    std::array<char, 65536> buffer{};
    const ssize_t count = read(worker.pipe, buffer.data(), buffer.size());
    if (count > 0) {
      worker.heard.append(buffer.data(), static_cast<std::size_t>(count));
      for (std::size_t end; (end = worker.heard.find('\n')) != std::string::npos;) {
        ledger_.Take(worker.heard.substr(0, end));
        worker.heard.erase(0, end + 1);
      }
      return;
    }
    close(worker.pipe);
    worker.pipe = -1;
    int status = 0;
    waitpid(worker.process, &status, 0);
    worker.process = -1;
    const std::uint64_t number = shared_->current[index].exchange(kNoCase);
    if (WIFEXITED(status) && WEXITSTATUS(status) == 0) return;
    ledger_.Found(number, WIFSIGNALED(status)
                              ? "It ends the process by signal " + std::to_string(WTERMSIG(status)) + "."
                              : "It ends the process.");
    ledger_.Done(number);
    if (!shared_->stop) Start(index);
  }

  /// A case that never ends, by the processor time that it takes.
  void Watch(unsigned index) {
    Worker& worker = workers_[index];
    if (worker.process <= 0) return;
    clockid_t clock = 0;
    timespec time{};
    if (clock_getcpuclockid(worker.process, &clock) != 0 || clock_gettime(clock, &time) != 0) return;
    const double seconds = static_cast<double>(time.tv_sec) + static_cast<double>(time.tv_nsec) * 1e-9;
    const std::uint64_t number = shared_->current[index];
    if (number != worker.watched) {
      worker.watched = number;
      worker.secondsAtCase = seconds;
    } else if (number != kNoCase && seconds - worker.secondsAtCase > kCaseSeconds) {
      ledger_.Found(number, "It does not end.");
      kill(worker.process, SIGKILL);
      worker.watched = kNoCase;
    }
  }

  void Keep() const { ledger_.Now().Write(effort_.state / (proof_.name + ".txt")); }

  const Proof& proof_;
  const Effort& effort_;
  Ledger& ledger_;
  std::uint64_t begin_;
  std::vector<std::uint64_t> again_;
  Shared* shared_;
  std::vector<Worker> workers_;
};

void ShowFound(const Proof& proof, const Progress& kept) {
  constexpr std::size_t kMostShown = 50;
  std::size_t shown = 0;
  for (const auto& [number, texts] : kept.found) {
    if (shown++ == kMostShown) {
      std::cout << "  and " << kept.found.size() - kMostShown << " more\n";
      return;
    }
    for (const std::string& text : texts) std::cout << "  " << proof.again(number) << "\n    " << text << "\n";
  }
}

}  // namespace

int Work(const Proof& proof, const Effort& effort) {
  std::filesystem::create_directories(effort.state);
  Progress kept;
  kept.Read(effort.state / (proof.name + ".txt"));
  kept.next = std::max(kept.next, proof.first);
  const auto begin = Clock::now();
  const std::uint64_t before = kept.next;
  const long roadsBefore = kept.figures["roads"];
  Ledger ledger(kept);
  Crew(proof, effort, ledger).Work();
  const double seconds = std::chrono::duration<double>(Clock::now() - begin).count();

  ShowFound(proof, kept);
  std::cout << proof.name << ":";
  for (const auto& [name, count] : kept.figures) std::cout << " " << count << " " << name << ",";
  std::cout << " cases " << proof.first << " to " << ledger.Next() - (ledger.Next() > proof.first ? 1 : 0);
  if (proof.end != UINT64_MAX) std::cout << " of " << proof.end;
  std::cout << ", " << kept.found.size() << " with findings (this call: " << ledger.Next() - before << " cases, "
            << static_cast<long>(static_cast<double>(kept.figures["roads"] - roadsBefore) / std::max(seconds, 0.001))
            << " roads a second in " << effort.jobs << " processes)" << std::endl;
  return kept.found.empty() ? 0 : 1;
}

}  // namespace orvane::proofs
