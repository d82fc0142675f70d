#include "instruments/test_set_session.h"

#include "base/text.h"
#include "instruments/dialect.h"
#include "platform/input_filter.h"

namespace orvane {
namespace {

constexpr Integer kBoard = 0;
constexpr Integer kNoSecondaryAddress = 0;
constexpr Integer kReadSize = 1000;

/// Digits only; Hangul letters get through and fail as a number at Initialize.
constexpr InputRule kAddressRule{.allowed = "", .hangul = false};

}  // namespace

void TestSetSession::Connect() {
  OrvaneMain& main = main_.Untouched();
  main.cmdInstrumentInitialize.onClick = [this] { Initialize(); };
  main.cmdInsturmentReset.onClick = [this] { Reset(); };
  main.cboInstrumentList.onChange = [this] {
    FilterItem(main_->cboInstrumentList, main_->cboInstrumentList.Items(), "HP8960", boxes_);
  };
  main.cboTimeOut.onChange = [this] { FilterItem(main_->cboTimeOut, GpibTimeOutTexts(), "10s", boxes_); };
  main.cboPrimaryAddress.onChange = [this] { FilterInput(main_->cboPrimaryAddress, kAddressRule, "1", boxes_); };
  control_.onCompletion = [this](Integer status, const std::string& data) { OnCompletion(status, data); };
}

void TestSetSession::Initialize() {
  if (main_->cboInstrumentList.Text().empty()) return boxes_.Alarm("Select the kind of Test Set");
  if (main_->cboPrimaryAddress.Text().empty()) return boxes_.Alarm("Select Primary Address");
  if (main_->cboTimeOut.Text().empty()) return boxes_.Alarm("Select Time Out");

  Configure(GpibTimeOutCode(main_->cboTimeOut.Text()));
  const Dialect dialect = DialectOf(state_.TestSetKind);
  control_.Write(LineForEveryKind(Purpose::Identify));
  console_.ShowData(main_->txtResults, control_.Read());
  if (dialect == Dialect::Hp8960) control_.Write(LineFor(dialect, Purpose::AnalyserAutoOff));
  state_.TestSetReady = true;
  main_->shpInstrumentOnOff.SetBackColor(kGreen);
}

void TestSetSession::Configure(int timeOutCode) {
  state_.TestSetKind = main_->cboInstrumentList.Text();
  state_.GpibBoardNumber = kBoard;
  state_.GpibPrimaryAddress = ToInteger(main_->cboPrimaryAddress.Text());
  state_.GpibSecondaryAddress = kNoSecondaryAddress;
  state_.GpibReadSize = kReadSize;
  control_.address = {state_.GpibBoardNumber, state_.GpibPrimaryAddress, state_.GpibSecondaryAddress};
  control_.readSize = state_.GpibReadSize;
  if (timeOutCode >= 0) control_.timeOutCode = static_cast<Integer>(timeOutCode);
  control_.optionFlag = false;
  control_.Configure();
}

void TestSetSession::Reset() {
  if (!state_.TestSetReady) return boxes_.Warning("Initialize the Test Set at first.");
  control_.Write(LineForEveryKind(Purpose::Reset));
  Release();
  state_.TestSetReady = false;
  main_->shpInstrumentOnOff.SetBackColor(kRed);
}

void TestSetSession::OnCompletion(Integer status, const std::string& data) {
  if (status != 0) boxes_.Warning("Can't read Power from Test Set. Check the Test Set.");
  state_.TestSetEventText = ReplaceAll(data, "\n", "");
  reply_.ReplyDone = true;
}

}  // namespace orvane
