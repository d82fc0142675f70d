#include "adapters/gpib/native_gpib.h"

#include <dlfcn.h>
#include <gtest/gtest.h>
#include <unistd.h>

#include <chrono>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <sstream>

namespace orvane {
namespace {

using namespace std::chrono_literals;
using testing::ElementsAre;
using testing::HasSubstr;
using testing::IsEmpty;

constexpr int kErr = 0x8000;
constexpr int kErrTimo = 0xC000;
constexpr int kEnol = 2;
constexpr int kEabo = 6;

/// The station on the stand-in, which answers each line that ends in "?" with the line itself.
class NativeGpibTest : public testing::Test {
 protected:
  NativeGpibTest() : library_(::dlopen(GPIB_STAND_IN_FILE, RTLD_NOW)) {
    std::filesystem::remove(journal_);
    ::setenv("GPIB_STAND_IN_JOURNAL", journal_.c_str(), 1);
    ::setenv("GPIB_STAND_IN", "1=echo 2=echo 9=echo", 1);
    StandInWith("");
  }
  ~NativeGpibTest() override {
    std::filesystem::remove(journal_);
    ::dlclose(library_);
  }

  void StandInWith(const char* faults) {
    ::setenv("GPIB_STAND_IN_FAULTS", faults, 1);
    Call<void>("GpibStandInBegin");
  }
  [[nodiscard]] int OpenDevices() { return Call<int>("GpibStandInOpenDevices"); }

  /// The calls since the last time.
  std::vector<std::string> Calls() {
    std::ifstream file(journal_);
    std::vector<std::string> lines;
    for (std::string line; std::getline(file, line);) lines.push_back(line);
    std::filesystem::remove(journal_);
    return lines;
  }

  static std::optional<GpibError> ErrorOf(const std::function<void()>& message) {
    try {
      message();
    } catch (const GpibError& error) {
      return error;
    }
    return std::nullopt;
  }
  static void ExpectError(const std::optional<GpibError>& error, int ibsta, int iberr, const std::string& text) {
    ASSERT_TRUE(error.has_value());
    EXPECT_EQ(error->ibsta, ibsta);
    EXPECT_EQ(error->iberr, iberr);
    EXPECT_EQ(error->what(), text);
  }

  NativeGpib bus_{GPIB_STAND_IN_FILE};

 private:
  template <class Result>
  Result Call(const char* symbol) {
    return reinterpret_cast<Result (*)()>(::dlsym(library_, symbol))();
  }

  void* library_;
  std::filesystem::path journal_ =
      std::filesystem::temp_directory_path() / ("orvane-gpib-calls-" + std::to_string(::getpid()));
};

TEST_F(NativeGpibTest, WritesTheTextAsItIsWithEoiAndReadsOneMessage) {
  const auto session = bus_.Open({0, 1, 0});
  session->Write("*IDN?", 10s);
  EXPECT_EQ(session->Read(1000, 10s), "*IDN?\n");
  EXPECT_THAT(Calls(), ElementsAre("ibdev 0 1 0 13 1 0", "ibwrt 1 *IDN?", "ibrd 1 1000"));
}

TEST_F(NativeGpibTest, ConfiguringCallsNothingAndAReleaseGoesBackToLocalAndClosesTheDevice) {
  const auto session = bus_.Open({0, 2, 0});
  EXPECT_THAT(Calls(), IsEmpty());
  session->Local();
  EXPECT_THAT(Calls(), IsEmpty());
  session->Write("VOLT 4.5", 1s);
  EXPECT_EQ(OpenDevices(), 1);
  session->Local();
  EXPECT_THAT(Calls(), ElementsAre("ibdev 0 2 0 11 1 0", "ibwrt 2 VOLT 4.5", "ibloc 2", "ibonl 2 0"));
  EXPECT_EQ(OpenDevices(), 0);
}

TEST_F(NativeGpibTest, ADeviceIsClosedWithItsSessionAndAfterAFailedFarewell) {
  bus_.Open({0, 2, 0})->Write("VOLT 4.5", 1s);
  EXPECT_EQ(OpenDevices(), 0);
  StandInWith("ibloc@1=8000:2");
  const auto session = bus_.Open({0, 2, 0});
  session->Write("VOLT 4.5", 1s);
  ExpectError(ErrorOf([&] { session->Local(); }), kErr, kEnol,
              "Instrument at address 2, route native: not back to local (ibloc: ibsta &H8100, iberr 2 (nobody "
              "listens)).");
  EXPECT_EQ(OpenDevices(), 0);
}

TEST_F(NativeGpibTest, TheSecondaryAddressGoesToTheLibraryAsItIs) {
  bus_.Open({0, 9, 96})->Write("A", 1s);
  bus_.Open({0, 9, 126})->Write("A", 1s);
  EXPECT_THAT(Calls(), testing::IsSupersetOf({"ibdev 0 9 96 11 1 0", "ibdev 0 9 126 11 1 0"}));
}

TEST_F(NativeGpibTest, EveryTimeOutHasTheLibrarysOwnCode) {
  for (Integer code = 0; code <= 15; ++code) {
    bus_.Open({0, 1, 0})->Write("A", GpibTimeOutOf(code));
    EXPECT_THAT(Calls(), testing::Contains("ibdev 0 1 0 " + std::to_string(code) + " 1 0"));
  }
}

TEST_F(NativeGpibTest, ATimeOutThatChangesIsToldTheLibraryOnce) {
  const auto session = bus_.Open({0, 1, 0});
  session->Write("A", 10s);
  session->Write("B", 300ms);
  session->Write("C", 300ms);
  EXPECT_THAT(Calls(), ElementsAre("ibdev 0 1 0 13 1 0", "ibwrt 1 A", "ibtmo 1 10", "ibwrt 1 B", "ibwrt 1 C"));
}

TEST_F(NativeGpibTest, ReadsNoMoreThanTheReadSizeAndTheRestWithTheNextRead) {
  const auto session = bus_.Open({0, 1, 0});
  session->Write("READ?", 1s);
  EXPECT_EQ(session->Read(0, 1s), "");
  EXPECT_EQ(session->Read(4, 1s), "READ");
  EXPECT_EQ(session->Read(4, 1s), "?\n");
}

TEST_F(NativeGpibTest, AReadThatStopsShortOfTheMessagesEndIsGoneOnWith) {
  StandInWith("ibrd@1=cut:3 ibrd@2=cut:1");
  const auto session = bus_.Open({0, 1, 0});
  session->Write("ABCDEF?", 1s);
  EXPECT_EQ(session->Read(6, 1s), "ABCDEF");
  EXPECT_THAT(Calls(), testing::IsSupersetOf({"ibrd 1 6", "ibrd 1 3", "ibrd 1 2"}));
}

TEST_F(NativeGpibTest, AReadThatMovesNothingAndTellsNoEndIsAFailure) {
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

TEST_F(NativeGpibTest, EveryFailureHasTheStationsNumbersAndTheLibrarysInItsText) {
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

TEST_F(NativeGpibTest, AnInstrumentThatNobodyHasConnectedIsAbsent) {
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

TEST_F(NativeGpibTest, AReplyThatComesTooLateIsNeverTakenForTheNextOnes) {
  StandInWith("ibrd@1=C000:6");
  const auto session = bus_.Open({0, 1, 0});
  session->Write("FIRST?", 10s);
  EXPECT_TRUE(ErrorOf([&] { (void)session->Read(1000, 10s); }));
  session->Write("SECOND?", 10s);
  EXPECT_EQ(session->Read(1000, 10s), "SECOND?\n");
  EXPECT_THAT(Calls(), ElementsAre("ibdev 0 1 0 13 1 0", "ibwrt 1 FIRST?", "ibrd 1 1000", "ibtmo 1 11", "ibclr 1",
                                   "ibtmo 1 13", "ibwrt 1 SECOND?", "ibrd 1 1000"));
}

TEST_F(NativeGpibTest, ADeviceClearThatWasNotTakenIsDueAtTheNextMessageAlsoOfANewSession) {
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

TEST_F(NativeGpibTest, AnInstrumentThatWasAbsentNeedsNoDeviceClear) {
  StandInWith("ibwrt@1=8000:2");
  const auto session = bus_.Open({0, 1, 0});
  EXPECT_TRUE(ErrorOf([&] { session->Write("FIRST?", 1s); }));
  session->Write("SECOND?", 1s);
  EXPECT_EQ(session->Read(1000, 1s), "SECOND?\n");
  EXPECT_THAT(Calls(), testing::Not(testing::Contains("ibclr 1")));
}

TEST_F(NativeGpibTest, FindsWhoListensAndSpeaksToNobody) {
  EXPECT_THAT(bus_.Listeners(0), ElementsAre(1, 2, 9));
  const auto calls = Calls();
  ASSERT_EQ(calls.size(), 33U);
  EXPECT_EQ(calls[0], "ibdev 0 1 0 11 1 0");
  EXPECT_EQ(calls[1], "ibln 1 0 -1");
  EXPECT_EQ(calls[31], "ibln 1 30 -1");
  EXPECT_EQ(calls[32], "ibonl 1 0");
}

TEST_F(NativeGpibTest, ASearchThatFailsSaysWhere) {
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
}  // namespace orvane
