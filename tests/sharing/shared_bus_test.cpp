// Instruments that two stations use in turn: who waits, for whom, for how long, and what he is told.

#include "app/sharing/shared_bus.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <optional>
#include <vector>

#include "platform/operation_nest.h"
#include "platform/virtual_event_loop.h"
#include "support/scratch_folder.h"

namespace orvane::test {
namespace {

using namespace std::chrono_literals;
using testing::ElementsAre;
using testing::HasSubstr;
using testing::IsEmpty;

/// Instruments that note what they are told, on routes of this name.
struct NotingBus final : GpibBus {
  struct Session final : GpibSession {
    Session(NotingBus& ofBus, Integer itsAddress) : bus(ofBus), address(std::to_string(itsAddress)) {}
    void Write(std::string_view text, TimePoint) override { bus.notes.push_back(address + ": " + std::string(text)); }
    std::string Read(std::size_t, TimePoint) override {
      bus.notes.push_back(address + " read");
      return "1\n";
    }
    void Local() override { bus.notes.push_back(address + " local"); }
    bool TryLock() override {
      if (bus.isLockedElsewhere) return false;
      bus.notes.push_back(address + " lock");
      return true;
    }
    void Unlock() override { bus.notes.push_back(address + " unlock"); }
    NotingBus& bus;
    std::string address;
  };
  std::unique_ptr<GpibSession> Open(const GpibAddress& address) override {
    return std::make_unique<Session>(*this, address.primary);
  }
  std::string RouteOf(const GpibAddress& address) const override {
    return route == "tcp" ? "tcp:bench:" + std::to_string(address.primary) : route;
  }
  std::string route = "tcp";
  bool isLockedElsewhere = false;
  std::vector<std::string> notes;
};

/// One of the stations of a machine.
struct Sharer {
  Sharer(VirtualEventLoop& loop, const ScratchFolder& folder, std::set<int> shared, const std::string& name)
      : bus(plain, loop, {std::move(shared), 120s, folder.Path()}, name) {
    bus.stopsAsked = [this] { return stops; };
    bus.onWait = [this](const std::optional<InstrumentWait>& wait) {
      waits.push_back(wait ? std::to_string(wait->address) + " " + wait->holder : "over");
      waits.erase(std::unique(waits.begin(), waits.end()), waits.end());
    };
  }
  static std::optional<GpibError> ErrorOf(const std::function<void()>& message) {
    try {
      message();
    } catch (const GpibError& error) {
      return error;
    }
    return std::nullopt;
  }

  NotingBus plain;
  SharedBus bus;
  long stops = 0;
  std::vector<std::string> waits;
};

class SharedBusTest : public testing::Test {
 protected:
  VirtualEventLoop loop_;
  ScratchFolder folder_;
  Sharer a_{loop_, folder_, {1}, "A"};
  Sharer b_{loop_, folder_, {1}, "B"};
};

TEST_F(SharedBusTest, AnInstrumentIsTakenByItsFirstMessageAndGivenBackBehindTheOperation) {
  const auto session = a_.bus.Open({0, 1, 0});
  EXPECT_THAT(folder_.Names(), IsEmpty()) << "configuring takes nothing";
  session->Write("POW?", 1s);
  (void)session->Read(10, 1s);
  LockFile rival(folder_.Path(), "tcp:bench:1");
  EXPECT_FALSE(rival.TryTake("rival"));
  EXPECT_THAT(rival.Holder(), testing::StartsWith("station A, process "));
  rival.StopWaiting();
  a_.bus.OperationIsOver();
  EXPECT_TRUE(rival.TryTake("rival"));
  EXPECT_THAT(a_.plain.notes, ElementsAre("1 lock", "1: POW?", "1 read", "1 unlock"));
  EXPECT_THAT(a_.waits, IsEmpty());
}

TEST_F(SharedBusTest, OneThatIsNotSharedIsTheBusItself) {
  a_.bus.Open({0, 2, 0})->Write("VOLT?", 1s);
  EXPECT_THAT(a_.plain.notes, ElementsAre("2: VOLT?"));
  EXPECT_THAT(folder_.Names(), IsEmpty());
}

TEST_F(SharedBusTest, WhoComesSecondWaitsServesItsLoopAndIsToldForWhom) {
  const auto first = a_.bus.Open({0, 1, 0});
  const auto second = b_.bus.Open({0, 1, 0});
  first->Write("A", 1s);
  int served = 0;
  loop_.PostAt(3s, [&] { ++served; });
  loop_.PostAt(7s, [&] { a_.bus.OperationIsOver(); });
  second->Write("B", 1s);
  EXPECT_EQ(served, 1);
  EXPECT_GE(loop_.Now(), 7s);
  EXPECT_LE(loop_.Now(), 7100ms);
  EXPECT_THAT(b_.plain.notes, ElementsAre("1 lock", "1: B"));
  EXPECT_THAT(b_.waits, ElementsAre(HasSubstr("1 station A, process "), "over"));
  EXPECT_EQ(b_.bus.TakeWaited(), loop_.Now());
  EXPECT_EQ(b_.bus.TakeWaited(), 0s);
}

TEST_F(SharedBusTest, AWaitThatLastsTooLongIsTheInstrumentsTimeOutAndSaysWhoHasIt) {
  const auto first = a_.bus.Open({0, 1, 0});
  const auto second = b_.bus.Open({0, 1, 0});
  first->Write("A", 1s);
  const auto error = Sharer::ErrorOf([&] { second->Write("B", 1s); });
  ASSERT_TRUE(error);
  EXPECT_EQ(error->ibsta, 0xC000);
  EXPECT_EQ(error->iberr, 6);
  EXPECT_THAT(error->Text(), testing::MatchesRegex("Instrument at address 1, route tcp:bench:1: it is shared, and "
                                                   "station A, process [0-9]+ has it. This station has waited for "
                                                   "120 s."));
  EXPECT_GE(loop_.Now(), 120s);
  EXPECT_LE(loop_.Now(), 121s);

  EXPECT_TRUE(Sharer::ErrorOf([&] { second->Write("C", 1s); }));
  EXPECT_LE(loop_.Now(), 121s) << "it does not wait once more in the same operation";
  b_.bus.OperationIsOver();
  a_.bus.OperationIsOver();
  second->Write("D", 1s);
  EXPECT_THAT(b_.plain.notes, ElementsAre("1 lock", "1: D"));
}

TEST_F(SharedBusTest, AStopEndsAWait) {
  const auto first = a_.bus.Open({0, 1, 0});
  const auto second = b_.bus.Open({0, 1, 0});
  first->Write("A", 1s);
  loop_.PostAt(2s, [&] { ++b_.stops; });
  const auto error = Sharer::ErrorOf([&] { second->Write("B", 1s); });
  ASSERT_TRUE(error);
  EXPECT_THAT(error->Text(), HasSubstr(" has it. The wait for it was stopped."));
  EXPECT_EQ(loop_.Now(), 2s);
  a_.bus.OperationIsOver();
  first->Write("A", 1s);
  EXPECT_THAT(a_.waits, IsEmpty()) << "nobody is in front of it any more";
}

TEST_F(SharedBusTest, AStationThatStartsUpWaitsForNothing) {
  const auto first = a_.bus.Open({0, 1, 0});
  const auto second = b_.bus.Open({0, 1, 0});
  first->Write("A", 1s);
  b_.bus.mayWait = [] { return false; };
  const auto error = Sharer::ErrorOf([&] { second->Write("*RST", 1s); });
  ASSERT_TRUE(error);
  EXPECT_THAT(error->Text(), HasSubstr(" has it. This station starts without it."));
  EXPECT_EQ(loop_.Now(), 0s);
  EXPECT_THAT(b_.waits, IsEmpty());
  a_.bus.OperationIsOver();
  b_.bus.OperationIsOver();
  second->Write("*RST", 1s);
  EXPECT_THAT(b_.plain.notes, ElementsAre("1 lock", "1: *RST")) << "one that is free is greeted as ever";
}

TEST_F(SharedBusTest, TheEndOfTheStationEndsAWait) {
  const auto first = a_.bus.Open({0, 1, 0});
  const auto second = b_.bus.Open({0, 1, 0});
  first->Write("A", 1s);
  loop_.PostAt(2s, [] { throw StationEnded(); });
  EXPECT_THROW(second->Write("B", 1s), StationEnded);
  EXPECT_EQ(b_.waits.back(), "over");
}

TEST_F(SharedBusTest, ASessionThatIsEndedWithinItsOwnWaitFails) {
  const auto first = a_.bus.Open({0, 1, 0});
  auto second = b_.bus.Open({0, 1, 0});
  first->Write("A", 1s);
  loop_.PostAt(1s, [&] { second.reset(); });
  GpibSession* const waiting = second.get();
  const auto error = Sharer::ErrorOf([&] { waiting->Write("B", 1s); });
  ASSERT_TRUE(error);
  EXPECT_THAT(error->Text(), HasSubstr("it was initialized again within a wait for it."));
  EXPECT_EQ(error->ibsta, 0x8000);
}

TEST_F(SharedBusTest, AnInstrumentThatAnotherStationMayHaveIsNotPutToLocal) {
  const auto session = a_.bus.Open({0, 1, 0});
  session->Write("A", 1s);
  session->Local();
  a_.bus.OperationIsOver();
  session->Local();
  EXPECT_THAT(a_.plain.notes, ElementsAre("1 lock", "1: A", "1 local", "1 unlock"));
}

TEST_F(SharedBusTest, ALockOfTheGatewayThatAnotherMachineHasIsWaitedForToo) {
  a_.plain.isLockedElsewhere = true;
  const auto session = a_.bus.Open({0, 1, 0});
  loop_.PostAt(4s, [&] { a_.plain.isLockedElsewhere = false; });
  session->Write("A", 1s);
  EXPECT_GE(loop_.Now(), 4s);
  EXPECT_THAT(a_.waits, ElementsAre("1 another client", "over"));
  EXPECT_THAT(a_.plain.notes, ElementsAre("1 lock", "1: A"));
}

TEST_F(SharedBusTest, BehindAnAdapterAllThatHangsOnItIsLentAsOne) {
  for (Sharer* sharer : {&a_, &b_}) sharer->plain.route = "prologix:adapter";
  const auto supply = a_.bus.Open({0, 2, 0});
  supply->Write("VOLT?", 1s);
  const auto testSet = b_.bus.Open({0, 1, 0});
  loop_.PostAt(1s, [&] { a_.bus.OperationIsOver(); });
  testSet->Write("*IDN?", 1s);
  EXPECT_GE(loop_.Now(), 1s);
  EXPECT_THAT(a_.plain.notes, ElementsAre("2 lock", "2: VOLT?", "2 unlock"));
}

TEST_F(SharedBusTest, OnABoardOfTheMachineEachInstrumentIsLentByItself) {
  for (Sharer* sharer : {&a_, &b_}) sharer->plain.route = "native";
  a_.bus.Open({0, 2, 0})->Write("VOLT?", 1s);
  b_.bus.Open({0, 1, 0})->Write("*IDN?", 1s);
  EXPECT_EQ(loop_.Now(), 0s);
  EXPECT_THAT(folder_.Names(), ElementsAre("orvane-native_0_1_0.lock"));
}

TEST_F(SharedBusTest, ALockThatCannotBeHadIsAnAbsentInstrument) {
  SharedBus bus(a_.plain, loop_, {{1}, 1s, folder_.Path("nowhere")}, "A");
  const auto session = bus.Open({0, 1, 0});
  const auto error = Sharer::ErrorOf([&] { session->Write("A", 1s); });
  ASSERT_TRUE(error);
  EXPECT_EQ(error->ibsta, 0x8000);
  EXPECT_EQ(error->iberr, 2);
  EXPECT_THAT(error->Text(), HasSubstr("its lock cannot be used: " + folder_.Path("nowhere")));
}

}  // namespace
}  // namespace orvane::test
