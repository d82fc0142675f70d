#include "app/records/forward.h"

#include <ostream>
#include <set>

#include "app/records/shown_text.h"
#include "app/records/verbs.h"

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

  struct Went {
    std::size_t over = 0;
    /// Each could not be read here or is refused there, and keeps no other one from going.
    std::size_t behind = 0;
  };
  Went Round() {
    RunQuery query;
    if (round_++ % kRoundsOfWholeLook != 0) query.since = newestMs_ - kLookBackMs;
    const auto runs = from_.List(query);
    Went went;
    for (auto run = runs.rbegin(); run != runs.rend() && !doors_.endAsked(0ms); ++run) {
      newestMs_ = std::max(newestMs_, run->identity.beganMs);
      if (!run->end || known_.count(run->identity.id) > 0) continue;
      Copy(run->identity.id, went);
    }
    return went;
  }

 private:
  /// @throws StoreFault when one of the stores does not answer at all.
  void Copy(const std::string& id, Went& went) {
    try {
      // It may have been taken out meanwhile.
      const auto record = from_.Load(id);
      if (record && to_.Finish(*record)) ++went.over;
      known_.insert(id);
    } catch (const StoreFault& fault) {
      (void)from_.IdsLike(id, 1);
      (void)to_.IdsLike(id, 1);
      if (told_.insert(id).second) {
        doors_.errors << "orvane-records: " << id << ": " << Harmless(fault.what()) << std::endl;
      }
      ++went.behind;
    }
  }

  RecordStore& from_;
  RecordStore& to_;
  RecordsDoors& doors_;
  std::set<std::string> known_;
  std::set<std::string> told_;
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

  /// @return whether all that is finished is there.
  bool Round() {
    if (!forwarder_) {
      from_ = doors_.openStore(fromName_, StoreAccess::Ask);
      to_ = doors_.openStore(order_.to, StoreAccess::Fill);
      forwarder_ = std::make_unique<Forwarder>(*from_, *to_, doors_);
    }
    const auto [over, behind] = forwarder_->Round();
    if (over > 0 || !order_.follow) {
      doors_.out << over << (over == 1 ? " record" : " records") << " forwarded." << std::endl;
    }
    return behind == 0;
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
  return follower.Round() ? 0 : kNoStore;
}

}  // namespace orvane
