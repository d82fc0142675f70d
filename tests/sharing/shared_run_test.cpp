// Whole runs on an instrument that somebody else uses too, who asks for it all the time.

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "app/sharing/shared_bus.h"
#include "app/station_status.h"
#include "station/virtual_station.h"
#include "support/kept_records.h"
#include "support/scratch_folder.h"

namespace orvane::test {
namespace {

using namespace std::chrono_literals;
using testing::Contains;
using testing::ElementsAre;
using testing::MatchesRegex;

/// The instruments that this station is told to share, on the virtual bench; recorded within.
struct SharingStation {
  explicit SharingStation(std::set<int> shared)
      : on({}, {}, {}, [&](const StationPorts& plain, std::shared_ptr<void>& held) {
          struct World {
            World(const StationPorts& ports, const SharedInstruments& wishes)
                : kept(ports), bus(kept.ports.bus, ports.loop, wishes, "A") {}
            KeptRecords kept;
            SharedBus bus;
          };
          auto world = std::make_shared<World>(plain, SharedInstruments{std::move(shared), 120s, folder.Path()});
          bus = &world->bus;
          kept = &world->kept;
          held = world;
          const StationPorts within = kept->ports.Ports();
          return StationPorts{within.loop, within.mscomTarget, *bus, within.files, within.boxes, within.dialogs};
        }) {
    kept->Follow(on.station);
    StationState& state = on.State();
    bus->stopsAsked = [&state] { return state.cal.stopsAsked; };
    bus->onWait = [&state](const std::optional<InstrumentWait>& wait) { state.instrumentWait = wait; };
    on.station.Nest().onIdle = [this] { bus->OperationIsOver(); };
  }

  ScratchFolder folder;
  SharedBus* bus = nullptr;
  KeptRecords* kept = nullptr;
  VirtualStation on;
};

/// Another station, which asks ten times a second and gives back at once.
struct Rival {
  explicit Rival(SharingStation& station) : station_(station) { Ask(); }
  [[nodiscard]] std::size_t Messages() const { return station_.on.journal.Of("1: ").size(); }
  void Ask() {
    if (lock_.TryTake("station B, process 8")) {
      taken.insert(Messages());
      lock_.GiveBack();
    }
    station_.on.loop.PostAt(station_.on.loop.Now() + 100ms, [this] { Ask(); });
  }
  SharingStation& station_;
  LockFile lock_{station_.folder.Path(), "virtual 0:1,0"};
  /// Each time: behind how many messages of the station.
  std::set<std::size_t> taken;
};

TEST(ASharedRun, SaysWhatOneAloneSaysAndNobodyComesBetween) {
  VirtualStation alone;
  ASSERT_EQ(alone.TakeTargetThrough(), std::nullopt);

  SharingStation shared({1, 2, 5});
  shared.on.InitializeInstruments();
  Rival rival(shared);
  const std::size_t ahead = rival.Messages();
  ASSERT_EQ(shared.on.InitializeTarget(), std::nullopt);
  EXPECT_EQ(shared.on.Concluded(), Verdict::Pass);
  EXPECT_EQ(shared.on.journal.Lines(), alone.journal.Lines());
  EXPECT_GT(rival.Messages(), ahead + 50);
  EXPECT_EQ(shared.on.journal.Of("1: ").back(), "SYSTEM:PRESET3");
  const TimePoint behind = shared.on.loop.Now() + 200ms;
  while (shared.on.loop.Now() < behind) shared.on.loop.Yield(behind);
  EXPECT_EQ(rival.taken, (std::set<std::size_t>{ahead, rival.Messages()}))
      << "ahead of its first message and behind its last one, and nowhere between";
}

TEST(ASharedRun, WaitsForWhoHasItAndTheWaitIsNoTimeOfTheInstrument) {
  SharingStation shared({1});
  shared.on.InitializeInstruments();
  LockFile other(shared.folder.Path(), "virtual 0:1,0");
  ASSERT_TRUE(other.TryTake("station B, process 8"));
  StationStatus status(shared.on.loop, shared.on.bench.Serial(), shared.on.State(), shared.on.Panels());
  std::string stage;
  shared.on.loop.PostAt(shared.on.loop.Now() + 60s, [&] { stage = status.Stage(); });
  shared.on.loop.PostAt(shared.on.loop.Now() + 90s, [&] { other.GiveBack(); });
  ASSERT_EQ(shared.on.InitializeTarget(), std::nullopt);
  EXPECT_EQ(shared.on.Concluded(), Verdict::Pass);
  EXPECT_THAT(stage, MatchesRegex(".*; waits [0-9]:[0-9][0-9] for the instrument at address 1, which station B, "
                                  "process 8 has"));
  EXPECT_EQ(status.Stage(), "Ended: PASS");
  const TimePoint waited = shared.bus->TakeWaited();
  EXPECT_GT(waited, 60s);
  shared.kept->Settle();
  ASSERT_EQ(shared.kept->records.size(), 1U);
  for (const RecordedReading& reading : shared.kept->records[0].readings) {
    if (reading.name == "road.instrument_seconds") {
      EXPECT_LT(reading.value, 60);
    } else if (reading.name == "road.seconds") {
      EXPECT_GT(reading.value, 60);
    }
  }
}

TEST(ASharedRun, IsStoppedWithinItsWait) {
  SharingStation shared({1});
  shared.on.InitializeInstruments();
  LockFile other(shared.folder.Path(), "virtual 0:1,0");
  ASSERT_TRUE(other.TryTake("station B, process 8"));
  const TimePoint begin = shared.on.loop.Now();
  shared.on.loop.PostAt(begin + 60s, [&] { shared.on.op.Click(shared.on.Panels().autoCal.cmdAutoCalStop); });
  const auto failure = shared.on.InitializeTarget();
  ASSERT_TRUE(failure);
  EXPECT_THAT(*failure, testing::HasSubstr("The wait for it was stopped."));
  EXPECT_LT(shared.on.loop.Now() - begin, 61s);
  EXPECT_TRUE(other.Held());
}

}  // namespace
}  // namespace orvane::test
