#include "app/records/forward.h"

#include <ostream>
#include <set>

#include "app/records/shown_text.h"

namespace orvane {
namespace {

using std::chrono::milliseconds;
using namespace std::chrono_literals;

constexpr milliseconds kRound = 1s;
/// What comes late (a spool that was taken in, a run of days) is found by a look at the whole store, every so many
/// rounds; the others look back as far as a day.
constexpr int kRoundsOfWholeLook = 60;
constexpr std::int64_t kLookBackMs = 24L * 60 * 60 * 1000;

/// Two stores, one of which is to have what the other has.
class Forwarder {
 public:
  Forwarder(RecordStore& from, RecordStore& to, RecordsDoors& doors) : from_(from), to_(to), doors_(doors) {
    for (const RunSummary& run : to_.List({})) {
      if (run.end) known_.insert(run.identity.id);
    }
  }

  /// @return how many records went over.
  std::size_t Round() {
    RunQuery query;
    if (round_++ % kRoundsOfWholeLook != 0) query.since = newestMs_ - kLookBackMs;
    const auto runs = from_.List(query);
    std::size_t copied = 0;
    for (auto run = runs.rbegin(); run != runs.rend() && !doors_.endAsked(0ms); ++run) {
      newestMs_ = std::max(newestMs_, run->identity.beganMs);
      if (!run->end || known_.count(run->identity.id) > 0) continue;
      // It may have been taken out meanwhile.
      const auto record = from_.Load(run->identity.id);
      if (record && to_.Finish(*record)) ++copied;
      known_.insert(run->identity.id);
    }
    return copied;
  }

 private:
  RecordStore& from_;
  RecordStore& to_;
  RecordsDoors& doors_;
  std::set<std::string> known_;
  std::int64_t newestMs_ = 0;
  int round_ = 0;
};

/// Both ends, opened when they are needed and again behind a fault.
class Follower {
 public:
  Follower(const ForwardOrder& order, const std::string& fromName, RecordsDoors& doors)
      : order_(order), fromName_(fromName), doors_(doors) {}

  int Run() {
    do {
      try {
        Round();
        told_.clear();
      } catch (const StoreFault& fault) {
        forwarder_.reset();
        if (told_ != fault.what()) doors_.errors << "orvane-records: " << Harmless(fault.what()) << std::endl;
        told_ = fault.what();
      }
    } while (!doors_.endAsked(kRound));
    return 0;
  }

  void Round() {
    if (!forwarder_) {
      from_ = doors_.openStore(fromName_, StoreAccess::Ask);
      to_ = doors_.openStore(order_.to, StoreAccess::Fill);
      forwarder_ = std::make_unique<Forwarder>(*from_, *to_, doors_);
    }
    const std::size_t copied = forwarder_->Round();
    if (copied > 0 || !order_.follow) {
      doors_.out << copied << (copied == 1 ? " record" : " records") << " forwarded." << std::endl;
    }
  }

 private:
  const ForwardOrder& order_;
  const std::string& fromName_;
  RecordsDoors& doors_;
  std::unique_ptr<RecordStore> from_;
  std::unique_ptr<RecordStore> to_;
  std::unique_ptr<Forwarder> forwarder_;
  std::string told_;
};

}  // namespace

int Forward(const ForwardOrder& order, const std::string& fromName, RecordsDoors& doors) {
  Follower follower(order, fromName, doors);
  if (order.follow) return follower.Run();
  follower.Round();
  return 0;
}

}  // namespace orvane
