// What the native route makes of failures of the GPIB library, and of a library that is none.

#include <chrono>

#include "adapters/native_gpib_rig.h"

namespace orvane::test {
namespace {

using namespace std::chrono_literals;
using testing::ElementsAre;
using testing::HasSubstr;

using NativeGpibFailures = NativeGpibRig;

TEST_F(NativeGpibFailures, AReadThatMovesNothingAndTellsNoEndIsAFailure) {
  StandInWith("ibrd@1=cut:0");
  const auto session = bus_.Open({0, 1, 0});
  session->Write("A?", 1s);
  ExpectError(
      ErrorOf([&] { (void)session->Read(1000, 1s); }), kErr, kEnol,
      "Instrument at address 1, route native: the GPIB library tells 0 bytes of a reply (ibrd: ibsta &H100).");
}

struct Failure {
  const char* fault;
  int ibsta;
  int iberr;
  const char* text;
};

TEST_F(NativeGpibFailures, EveryFailureHasTheStationsNumbersAndTheLibrarysInItsText) {
  const Failure rows[] = {
      {"ibdev@1=8000:7", kErr, kEnol,
       "the GPIB library opens no device (ibdev: ibsta &H8100, iberr 7 (there is no such board))."},
      {"ibdev@1=8000:0", kErr, kEnol,
       "the GPIB library opens no device (ibdev: ibsta &H8100, iberr 0 (the system's call failed))."},
      {"ibwrt@1=8000:2", kErr, kEnol, "the message was not sent (ibwrt: ibsta &H8100, iberr 2 (nobody listens))."},
      {"ibwrt@1=8000:1", kErr, kEnol,
       "the message was not sent (ibwrt: ibsta &H8100, iberr 1 (the board is not the controller in charge))."},
      {"ibwrt@1=8000:99", kErr, kEnol, "the message was not sent (ibwrt: ibsta &H8100, iberr 99 (no known error))."},
      {"ibwrt@1=C000:6", kErrTimo, kEabo,
       "the message was not taken within 10 s (ibwrt: ibsta &HC100, iberr 6 (the transfer was aborted))."},
      {"ibrd@1=C000:6", kErrTimo, kEabo,
       "no reply within 10 s (ibrd: ibsta &HC100, iberr 6 (the transfer was aborted))."},
      {"ibrd@1=8000:6", kErrTimo, kEabo,
       "no reply within 10 s (ibrd: ibsta &H8100, iberr 6 (the transfer was aborted))."},
      {"ibrd@1=8000:14", kErr, kEnol, "no reply (ibrd: ibsta &H8100, iberr 14 (the bus failed))."},
      {"ibrd@1=cut:2 ibrd@2=C000:6", kErrTimo, kEabo,
       "no end of the reply within 10 s (ibrd: ibsta &HC100, iberr 6 (the transfer was aborted))."},
  };
  for (const Failure& row : rows) {
    SCOPED_TRACE(row.fault);
    StandInWith(row.fault);
    const auto session = bus_.Open({0, 1, 0});
    ExpectError(ErrorOf([&] {
                  session->Write("*IDN?", 10s);
                  (void)session->Read(1000, 10s);
                }),
                row.ibsta, row.iberr, std::string("Instrument at address 1, route native: ") + row.text);
  }
}

TEST_F(NativeGpibFailures, AnInstrumentThatNobodyHasConnectedIsAbsent) {
  ExpectError(ErrorOf([&] {
                bus_.Open({0, 7, 98})->Write("*IDN?", 1s);
              }),
              kErr, kEnol,
              "Instrument at address 7, secondary 98, route native: the message was not sent (ibwrt: ibsta &H8100, "
              "iberr 2 (nobody listens)).");
  ExpectError(
      ErrorOf([&] {
        bus_.Open({3, 7, 0})->Write("*IDN?", 1s);
      }),
      kErr, kEnol,
      "Instrument at address 7, board 3, route native: the GPIB library opens no device (ibdev: ibsta &H8100, "
      "iberr 7 (there is no such board)).");
}

TEST_F(NativeGpibFailures, AReplyThatComesTooLateIsNeverTakenForTheNextOnes) {
  StandInWith("ibrd@1=C000:6");
  const auto session = bus_.Open({0, 1, 0});
  session->Write("FIRST?", 10s);
  EXPECT_TRUE(ErrorOf([&] { (void)session->Read(1000, 10s); }));
  session->Write("SECOND?", 10s);
  EXPECT_EQ(session->Read(1000, 10s), "SECOND?\n");
  EXPECT_THAT(Calls(), ElementsAre("ibdev 0 1 0 13 1 0", "ibwrt 1 FIRST?", "ibrd 1 1000", "ibtmo 1 11", "ibclr 1",
                                   "ibtmo 1 13", "ibwrt 1 SECOND?", "ibrd 1 1000"));
}

TEST_F(NativeGpibFailures, ADeviceClearThatWasNotTakenIsDueAtTheNextMessageAlsoOfANewSession) {
  StandInWith("ibrd@1=C000:6 ibclr@1=8000:1 ibclr@2=8000:1");
  const auto query = [](GpibSession& session, const std::string& text) {
    session.Write(text, 1s);
    return session.Read(1000, 1s);
  };
  EXPECT_TRUE(ErrorOf([&] { (void)query(*bus_.Open({0, 1, 0}), "FIRST?"); }));
  EXPECT_EQ(query(*bus_.Open({0, 2, 0}), "OTHER?"), "OTHER?\n");

  const auto session = bus_.Open({0, 1, 0});
  ExpectError(ErrorOf([&] { session->Write("SECOND?", 1s); }), kErr, kEnol,
              "Instrument at address 1, route native: it takes no device clear, which is due since its last failure "
              "(ibclr: ibsta &H8100, iberr 1 (the board is not the controller in charge)).");
  EXPECT_EQ(query(*session, "THIRD?"), "THIRD?\n");
  Calls();
  EXPECT_EQ(query(*session, "FOURTH?"), "FOURTH?\n");
  EXPECT_THAT(Calls(), ElementsAre("ibwrt 1 FOURTH?", "ibrd 1 1000"));
}

TEST_F(NativeGpibFailures, AnInstrumentThatWasAbsentNeedsNoDeviceClear) {
  StandInWith("ibwrt@1=8000:2");
  const auto session = bus_.Open({0, 1, 0});
  EXPECT_TRUE(ErrorOf([&] { session->Write("FIRST?", 1s); }));
  session->Write("SECOND?", 1s);
  EXPECT_EQ(session->Read(1000, 1s), "SECOND?\n");
  EXPECT_THAT(Calls(), testing::Not(testing::Contains("ibclr 1")));
}

TEST_F(NativeGpibFailures, ASearchThatFailsSaysWhere) {
  StandInWith("ibln@8=8000:1");
  ExpectError(ErrorOf([&] { (void)bus_.Listeners(0); }), kErr, kEnol,
              "Board 0, route native: no search for address 7 (ibln: ibsta &H8100, iberr 1 (the board is not the "
              "controller in charge)).");
  EXPECT_EQ(OpenDevices(), 0);
  ExpectError(
      ErrorOf([&] { (void)bus_.Listeners(4); }), kErr, kEnol,
      "Board 4, route native: the GPIB library opens no device (ibdev: ibsta &H8100, iberr 7 (there is no such "
      "board)).");
}

TEST(NativeGpibLibrary, ThatIsMissingIsOneSentenceAtTheFirstMessageAndFoundOnceItIsThere) {
  const auto place = std::filesystem::temp_directory_path() / ("orvane-libgpib-" + std::to_string(::getpid()));
  NativeGpib bus(place.string());
  const auto session = bus.Open({0, 1, 0});
  try {
    session->Write("*IDN?", 1s);
    FAIL() << "a library that is not there has written";
  } catch (const GpibError& error) {
    EXPECT_EQ(error.ibsta, kErr);
    EXPECT_EQ(error.iberr, kEnol);
    EXPECT_THAT(error.what(), testing::StartsWith("Instrument at address 1, route native: the system's GPIB library "
                                                  "cannot be loaded: " +
                                                  place.string() + ": "));
    EXPECT_THAT(error.what(), HasSubstr("No such file"));
  }
  session->Local();
  EXPECT_THROW((void)bus.Listeners(0), GpibError);

  std::filesystem::create_symlink(GPIB_STAND_IN_FILE, place);
  EXPECT_NO_THROW((void)bus.Listeners(0));
  std::filesystem::remove(place);
}

TEST(NativeGpibLibrary, ThatLacksACallIsNotUsed) {
  NativeGpib bus(GPIB_STAND_IN_LACKING_FILE);
  try {
    bus.Open({0, 1, 0})->Write("*IDN?", 1s);
    FAIL() << "a library that lacks a call has written";
  } catch (const GpibError& error) {
    EXPECT_EQ(error.ibsta, kErr);
    EXPECT_EQ(error.iberr, kEnol);
    EXPECT_EQ(error.what(), std::string("Instrument at address 1, route native: the system's GPIB library ") +
                                GPIB_STAND_IN_LACKING_FILE + " lacks ibclr, which the station needs.");
  }
}

}  // namespace
}  // namespace orvane::test
