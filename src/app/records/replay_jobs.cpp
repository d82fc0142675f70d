#include "app/records/replay_jobs.h"

#include <poll.h>
#include <sys/wait.h>
#include <unistd.h>

#include <algorithm>
#include <cerrno>
#include <cstring>
#include <optional>
#include <ostream>

#include "app/records/named_runs.h"
#include "app/records/shown_text.h"
#include "base/failure.h"

namespace orvane {
namespace {

enum class Came : char { Same = 's', Different = 'd', Failed = 'f' };
struct Result {
  Came came = Came::Failed;
  std::string text;
};

Result ReplayOne(RecordStore& store, const std::string& id, const ReplayOrder& order, RecordsDoors& doors) {
  try {
    const RunRecord record = Loaded(store, id);
    if (record.Document("trace") == nullptr) {
      return {Came::Failed, "It has no trace (any more) and cannot be run again."};
    }
    const ReplayAnswer answer = doors.replay(record, order.options);
    return {answer.same ? Came::Same : Came::Different, answer.text};
  } catch (const AnswerIsNo& fault) {
    return {Came::Failed, fault.what()};
  } catch (const TextFailure& fault) {
    return {Came::Failed, fault.what()};
  } catch (const StoreFault& fault) {
    // A store that does not answer at all says so of each.
    return {Came::Failed, fault.what()};
  }
}

/// Tells results in the order of the runs, as soon as all before are there.
class Teller {
 public:
  Teller(const std::vector<std::string>& ids, bool tellsSame, std::ostream& out)
      : ids_(ids), tellsSame_(tellsSame), out_(out), results_(ids.size()) {}

  void Take(std::size_t index, Result result) {
    results_[index] = std::move(result);
    for (; next_ < ids_.size() && results_[next_]; ++next_) Tell(*results_[next_]);
  }
  /// What never came.
  void TakeMissing(std::size_t index, const std::string& why) {
    if (!results_[index]) Take(index, {Came::Failed, why});
  }
  [[nodiscard]] const ReplayTally& Tally() const { return tally_; }

 private:
  void Tell(const Result& result) {
    const bool same = result.came == Came::Same;
    ++(same ? tally_.same : result.came == Came::Different ? tally_.different : tally_.failed);
    if (same && !tellsSame_) return;
    const std::string_view word = same ? "same" : result.came == Came::Different ? "differs" : "not run again";
    out_ << ids_[next_] << " " << word;
    for (std::string_view rest = result.text; !rest.empty();) out_ << "\n  " << Harmless(TakeLine(rest));
    out_ << std::endl;
  }

  const std::vector<std::string>& ids_;
  bool tellsSame_;
  std::ostream& out_;
  std::vector<std::optional<Result>> results_;
  std::size_t next_ = 0;
  ReplayTally tally_;
};

/// A message of a job: number of the run, what came, how long the text is, the text.
struct Head {
  std::size_t index = 0;
  std::size_t size = 0;
  Came came = Came::Failed;
};

bool WriteAll(int descriptor, const std::string& bytes) {
  for (std::size_t done = 0; done < bytes.size();) {
    const ssize_t written = ::write(descriptor, bytes.data() + done, bytes.size() - done);
    if (written < 0 && errno != EINTR) return false;
    done += static_cast<std::size_t>(std::max<ssize_t>(written, 0));
  }
  return true;
}

void Send(int descriptor, std::size_t index, const Result& result) {
  const Head head{index, result.text.size(), result.came};
  std::string message(sizeof head, '\0');
  std::memcpy(message.data(), &head, sizeof head);
  if (!WriteAll(descriptor, message + result.text)) ::_exit(1);
}

/// A process that takes every so-manieth run.
class Job {
 public:
  Job(std::size_t first, const std::function<void(int output)>& work) : first_(first) {
    int ends[2];
    if (::pipe(ends) != 0) throw StoreFault(std::string("No pipe for a job: ") + std::strerror(errno));
    process_ = ::fork();
    if (process_ == 0) {
      ::close(ends[0]);
      work(ends[1]);
      ::_exit(0);
    }
    ::close(ends[1]);
    descriptor_ = ends[0];
    if (process_ < 0) throw StoreFault(std::string("No process for a job: ") + std::strerror(errno));
  }
  Job(const Job&) = delete;
  Job& operator=(const Job&) = delete;
  ~Job() {
    if (descriptor_ >= 0) ::close(descriptor_);
    // Without a reader a job ends at its next message.
    if (process_ > 0) ::waitpid(process_, nullptr, 0);
  }

  [[nodiscard]] std::size_t First() const { return first_; }
  [[nodiscard]] int Descriptor() const { return descriptor_; }

  /// Takes in what is there. @return false at its end.
  bool Hear(Teller& teller) {
    char piece[4096];
    const ssize_t size = ::read(descriptor_, piece, sizeof piece);
    if (size < 0 && errno == EINTR) return true;
    if (size <= 0) {
      ::close(descriptor_);
      descriptor_ = -1;
      return false;
    }
    heard_.append(piece, static_cast<std::size_t>(size));
    for (Head head; heard_.size() >= sizeof head; heard_.erase(0, sizeof head + head.size)) {
      std::memcpy(&head, heard_.data(), sizeof head);
      if (heard_.size() < sizeof head + head.size) break;
      teller.Take(head.index, {head.came, heard_.substr(sizeof head, head.size)});
    }
    return true;
  }

  /// How it ended, in words.
  std::string End() {
    int status = 0;
    ::waitpid(process_, &status, 0);
    process_ = -1;
    if (WIFSIGNALED(status)) return "Its replay was ended by signal " + std::to_string(WTERMSIG(status)) + ".";
    return "Its replay ended with status " + std::to_string(WEXITSTATUS(status)) + ".";
  }

 private:
  std::size_t first_;
  pid_t process_ = -1;
  int descriptor_ = -1;
  std::string heard_;
};

void Work(const std::vector<std::string>& ids, std::size_t first, std::size_t jobs, const ReplayOrder& order,
          const std::string& storeName, RecordsDoors& doors, int output) {
  std::size_t index = first;
  try {
    const auto store = doors.openStore(storeName, StoreAccess::Ask);
    for (; index < ids.size(); index += jobs) Send(output, index, ReplayOne(*store, ids[index], order, doors));
  } catch (const std::exception& fault) {
    for (; index < ids.size(); index += jobs) Send(output, index, {Came::Failed, fault.what()});
  }
}

void HearAll(std::vector<std::unique_ptr<Job>>& jobs, std::size_t count, Teller& teller) {
  const std::size_t stride = jobs.size();
  std::size_t open = jobs.size();
  while (open > 0) {
    std::vector<pollfd> waiting;
    for (const auto& job : jobs) waiting.push_back({job->Descriptor(), POLLIN, 0});
    if (::poll(waiting.data(), waiting.size(), -1) < 0 && errno != EINTR) throw StoreFault(std::strerror(errno));
    for (std::size_t i = 0; i < jobs.size(); ++i) {
      if (waiting[i].fd < 0 || waiting[i].revents == 0 || jobs[i]->Hear(teller)) continue;
      --open;
      const std::string end = jobs[i]->End();
      for (std::size_t index = jobs[i]->First(); index < count; index += stride) teller.TakeMissing(index, end);
    }
  }
}

}  // namespace

ReplayTally ReplayAll(const std::vector<std::string>& ids, const ReplayOrder& order, const std::string& storeName,
                      RecordsDoors& doors) {
  Teller teller(ids, !order.runs.empty(), doors.out);
  const std::size_t count = std::min(static_cast<std::size_t>(order.jobs), ids.size());
  if (count <= 1) {
    const auto store = doors.openStore(storeName, StoreAccess::Ask);
    for (std::size_t i = 0; i < ids.size(); ++i) teller.Take(i, ReplayOne(*store, ids[i], order, doors));
    return teller.Tally();
  }
  // What waits to be written would be written by each job.
  doors.out << std::flush;
  doors.errors << std::flush;
  std::vector<std::unique_ptr<Job>> jobs;
  for (std::size_t i = 0; i < count; ++i) {
    jobs.push_back(
        std::make_unique<Job>(i, [&](int output) { Work(ids, i, count, order, storeName, doors, output); }));
  }
  HearAll(jobs, ids.size(), teller);
  return teller.Tally();
}

}  // namespace orvane
