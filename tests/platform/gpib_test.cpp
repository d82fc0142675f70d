#include "platform/gpib.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "base/failure.h"
#include "support/fake_gpib.h"

namespace orvane {
namespace {

using ::testing::ElementsAre;
using ::testing::HasSubstr;

using namespace std::chrono_literals;

class CWGPIBTest : public testing::Test {
 protected:
  CWGPIBTest() {
    for (CWGPIB* control : {&failing_, &telling_}) control->address.primary = 3;
    telling_.onErrorEvent = [this](const GpibFault& fault) { events_.push_back(fault); };
  }

  VirtualEventLoop loop_;
  test::Journal journal_;
  test::FakeGpibBus bus_{loop_, journal_};
  NiGlobal status_;
  CWGPIB failing_{"test set", bus_, status_, CWGPIB::OnError::Fails};
  CWGPIB telling_{"supply", bus_, status_, CWGPIB::OnError::RaisesEvent};
  std::vector<GpibFault> events_;
};

TEST_F(CWGPIBTest, WritesTheTextAndReadsTheReplyWithItsLineFeed) {
  failing_.Configure();
  failing_.Write("*IDN?");
  EXPECT_EQ(failing_.Read(), "FAKE,INSTRUMENT,0,1\n");
  EXPECT_THAT(bus_.At(3).lines, ElementsAre("*IDN?"));
  EXPECT_EQ(failing_.LinesWritten(), 1);
  EXPECT_EQ(failing_.RepliesRead(), 1);
}

TEST_F(CWGPIBTest, AnEmptyTextIsWrittenToo) {
  failing_.Configure();
  failing_.Write("");
  EXPECT_THAT(bus_.At(3).lines, ElementsAre(""));
}

TEST_F(CWGPIBTest, TakesOneCharacterForAByteBothWays) {
  failing_.Configure();
  bus_.At(3).readings.emplace_back("\xB0\n");
  EXPECT_EQ(failing_.Read(), "\xC2\xB0\n");
  failing_.Write("\xC2\xB0");
  EXPECT_THAT(bus_.At(3).lines, ElementsAre("\xB0"));
}

TEST_F(CWGPIBTest, ConfiguringAnAbsentInstrumentIsNoFailureTheFirstWriteIs) {
  bus_.At(3).absent = true;
  failing_.Configure();
  EXPECT_THROW(failing_.Write("*IDN?"), StationFailure);
  EXPECT_EQ(status_.ibsta, 0x8000);
  EXPECT_EQ(status_.iberr, 2);
  EXPECT_EQ(failing_.LinesWritten(), 0);
}

TEST_F(CWGPIBTest, ATimeOutFailsWithItsNumbers) {
  bus_.At(3).silent = true;
  failing_.timeOutCode = 13;
  failing_.Configure();
  failing_.Write("FETC?");
  try {
    (void)failing_.Read();
    FAIL() << "a silent instrument has read";
  } catch (const StationFailure& failure) {
    EXPECT_THAT(failure.what(), HasSubstr("ibsta = &HC000, iberr = 6"));
  }
  EXPECT_EQ(loop_.Now(), 10s);
  EXPECT_EQ(failing_.RepliesRead(), 0);
}

TEST_F(CWGPIBTest, WithoutASessionAWriteFails) {
  EXPECT_THROW(failing_.Write("SYSTEM:PRESET3"), StationFailure);
  failing_.Configure();
  failing_.Release();
  EXPECT_FALSE(failing_.HasSession());
  EXPECT_THROW(failing_.Write("SYSTEM:PRESET3"), StationFailure);
  EXPECT_EQ(bus_.At(3).locals, 1);
  failing_.Release();
  EXPECT_EQ(bus_.At(3).locals, 1);
}

TEST_F(CWGPIBTest, AnInstrumentThatDoesNotGoBackToLocalIsLetGoAllTheSame) {
  bus_.At(3).clings = true;
  for (CWGPIB* control : {&failing_, &telling_}) {
    control->Configure();
    EXPECT_NO_THROW(control->Release());
    EXPECT_FALSE(control->HasSession());
    EXPECT_EQ(control->Status().ibsta, 0xC000);
    EXPECT_EQ(control->Status().iberr, 6);
    status_ = {};
  }
  EXPECT_TRUE(events_.empty());
}

TEST_F(CWGPIBTest, TheOtherPolicyRaisesAnEventAndReadsAnEmptyText) {
  telling_.Write("VOLT 4.5");
  ASSERT_EQ(events_.size(), 1U);
  EXPECT_THAT(events_[0].text, HasSubstr("supply"));
  EXPECT_EQ(events_[0].address, 3);
  EXPECT_EQ(events_[0].route, "fake:3");
  bus_.At(3).silent = true;
  telling_.Configure();
  telling_.Write("*IDN?");
  EXPECT_EQ(telling_.Read(), "");
  EXPECT_EQ(events_.size(), 2U);
  EXPECT_EQ(status_.ibsta, 0xC000);
  EXPECT_EQ(status_.iberr, 6);
}

TEST_F(CWGPIBTest, ANewSessionTakesUpTheProperties) {
  failing_.address = {1, 7, 96};
  failing_.Configure();
  EXPECT_EQ(bus_.Opened().back(), (GpibAddress{1, 7, 96}));
  failing_.readSize = 4;
  failing_.Write("*IDN?");
  EXPECT_EQ(failing_.Read(), "FAKE");
}

TEST(GpibTimeOut, HasACodeForEachText) {
  const std::vector<std::string> texts{"None", "10us",  "30us",  "100us", "300us", "1ms", "3ms", "10ms",
                                       "30ms", "100ms", "300ms", "1s",    "3s",    "10s", "30s", "100s"};
  EXPECT_EQ(GpibTimeOutTexts(), texts);
  for (std::size_t code = 0; code < texts.size(); ++code)
    EXPECT_EQ(GpibTimeOutCode(texts[code]), static_cast<int>(code));
  EXPECT_EQ(GpibTimeOutCode("1000s"), -1);
  EXPECT_EQ(GpibTimeOutCode("10S"), -1);
  EXPECT_EQ(GpibTimeOutOf(13), 10s);
  EXPECT_EQ(GpibTimeOutOf(1), 10us);
  EXPECT_EQ(GpibTimeOutOf(15), 100s);
  // No time-out: the longest that the bus knows.
  EXPECT_EQ(GpibTimeOutOf(0), 1000s);
}

TEST(GpibTimeOut, HasTheCodeOfEachSpanBack) {
  for (Integer code = 0; code <= 15; ++code) EXPECT_EQ(GpibTimeOutCodeOf(GpibTimeOutOf(code)), code);
  EXPECT_EQ(GpibTimeOutCodeOf(11us), 2);
  EXPECT_EQ(GpibTimeOutCodeOf(101s), 0);
  EXPECT_EQ(GpibTimeOutCodeOf(0us), 1);
}

}  // namespace
}  // namespace orvane
