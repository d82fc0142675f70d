#include "console/start_up.h"

#include <string_view>

#include "base/failure.h"
#include "base/numbers.h"
#include "instruments/dialect.h"
#include "platform/gpib.h"

namespace orvane {
namespace {

constexpr Colour kBlue = 0x00FF0000;

/// At start only two of the time-outs are applied.
int GreetingTimeOutCode(std::string_view text) {
  return text == "None" || text == "10s" ? GpibTimeOutCode(text) : -1;
}

}  // namespace

void StartUp::Connect() {
  main_.Untouched().onLoad = [this] { Load(); };
}

void StartUp::Load() {
  reply_.TargetMode = "TestMode";
  main_->SetCaption("T9300 ORVANE 8_6_4D    English Version (030410)");
  console_.LogFileNumber = 0;
  console_.LogOffState = true;
  main_->txtResults.SetForeColor(kBlue);
  testSetState_.TestSetReady = false;
  PassOver([&] { main_->updAPCLoss.SetValue(RoundToLong(ToDouble(main_->txtAPCLoss.Text()) * 10)); });
  if (data_.Load()) GreetTestSet();
}

void StartUp::GreetTestSet() {
  PassOver([&] { session_.Configure(GreetingTimeOutCode(main_->cboTimeOut.Text())); });
  // The reply is dropped; a test set that took no query has none, and waiting for it would only cost the time-out.
  if (PassOver([&] { testSet_.Write(LineForEveryKind(Purpose::Identify)); })) {
    PassOver([&] { static_cast<void>(testSet_.Read()); });
  }
  if (testSet_.Kind() == Dialect::Hp8960) PassOver([&] { testSet_.Write(testSet_.Line(Purpose::AnalyserAutoOff)); });
  PassOver([&] { link_.PaceDelay(11); });
  PassOver([&] { testSet_.Write(LineForEveryKind(Purpose::Reset)); });
  PassOver([&] { session_.Release(); });
}

}  // namespace orvane
