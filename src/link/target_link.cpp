#include "link/target_link.h"

#include "base/counted.h"
#include "base/text.h"
#include "link/comm_events.h"
#include "link/command_table.h"
#include "link/reply_decoder.h"
#include "link/reply_wait.h"

namespace orvane {
namespace {

constexpr std::string_view kTypingCaption = "User Command:";
constexpr std::string_view kSentCaption = "Payload Display";
constexpr std::string_view kInvalid = "Invalid Command !! ";
constexpr char32_t kEnter = 13;
constexpr char32_t kBackspace = 8;

/// Whether all the arguments are there that the row needs.
bool HasRequired(const CommandRow& row, const WordArray& words) {
  for (int i = 0; i < row.required; ++i) {
    if (words[static_cast<std::size_t>(i) + 2].empty()) return false;
  }
  return true;
}

}  // namespace

TargetLink::TargetLink(EventLoop& loop, SerialControl& mscomTarget, PanelRef<OrvaneMain> main,
                       ResultsConsole& console, ReplyDecoder& decoder, ReplyState& state, LinkTally& tally,
                       Boxes& boxes)
    : loop_(loop),
      mscomTarget_(mscomTarget),
      main_(main),
      console_(console),
      decoder_(decoder),
      state_(state),
      tally_(tally),
      boxes_(boxes) {}

void TargetLink::Connect() {
  OrvaneMain& main = main_.Untouched();
  main.txtUserCommand.onKeyPress = [this](char32_t key) { OnUserCommandKey(key); };
  main.txtUserCommand.onClick = [this] {
    if (!InTestMode()) return;
    main_->txtUserCommand.SetText("");
    main_->lblUserCommand.SetCaption(std::string(kTypingCaption));
  };
  main.txtUserCommand.onLostFocus = [this] { ShowPayloadCaption(); };
}

void TargetLink::OnUserCommandKey(char32_t key) {
  if (!InTestMode()) return;
  if (main_->lblUserCommand.Caption() == kSentCaption) {
    main_->lblUserCommand.SetCaption(std::string(kTypingCaption));
    if (key != kBackspace) main_->txtUserCommand.SetText("");
  }
  if (key == kEnter) {
    CommandInterpreter();
    WaitForReply();
  }
}

void TargetLink::ShowPayloadCaption() { main_->lblUserCommand.SetCaption(std::string(kSentCaption)); }

void TargetLink::RunTargetCommand(std::string_view line) {
  main_->txtUserCommand.SetText(line);
  CommandInterpreter();
  WaitForReply();
}

void TargetLink::CommandInterpreter() {
  // A copy: whatever is shown while this runs may write to the box.
  const std::string line = main_->txtUserCommand.Text();
  const WordArray words = WordSplitter(line);
  state_.ReplySpin = 0;
  if (!ArgumentsAreWellFormed(words)) {
    console_.Append(std::string(kInvalid) + "\r\n");
    ++tally_.refusedLines;
    return;
  }
  const CommandRow& row = CommandOf(words[1]);
  CommandData frame;
  // Nothing is converted before every required argument is seen to be there.
  if (HasRequired(row, words) && row.encode(words, frame)) {
    BuildAndSendFrame(row.code, frame.count, frame.data, ChecksumOf(row.code, frame.count, frame.data));
  } else {
    console_.Append(std::string(kInvalid) + std::string(words[1]) + "\r\n");
    ++tally_.refusedLines;
  }
  main_->txtUserCommand.SetText("");
}

void TargetLink::BuildAndSendFrame(Integer operation, Integer count, FrameData data, Integer checksum) {
  EscapeData(data, count);
  state_.FrameData = data;
  const auto body = FrameBody(operation, count, data, checksum);
  if (!state_.ReplyBuffer.empty()) ++tally_.unaskedTexts;
  decoder_.Expect(operation);
  state_.ReplyDone = false;
  state_.TMStatus = "&HFF";
  state_.ReplyOperation.clear();
  state_.ReplyItem.clear();
  if (!PortOpen()) {
    boxes_.Warning("Target must be initialized at first.");
    return;
  }
  mscomTarget_.OutputWithNext(kSync);
  mscomTarget_.Output({body.data(), body.size()});
  ++tally_.commands;
  tally_.bytesOut += static_cast<long>(kSync.size() + body.size());
  ShowPayloadCaption();
}

void TargetLink::DataSend(std::string_view text) {
  state_.ReplyDone = false;
  for (const char byte : BytesOfText(text)) {
    mscomTarget_.Output({&byte, 1});
    ++tally_.bytesOut;
    PaceDelay();
  }
}

void TargetLink::PaceDelay(int paces) {
  state_.SyncDelay = ToLong(main_->txtSyncDelay.Text());
  if (state_.SyncDelay > 0) loop_.Spin(std::int64_t{state_.SyncDelay} * paces);
}

bool TargetLink::WaitForReply() {
  const Counted waiting(waits_);
  const TimePoint start = loop_.Now();
  // Outside test mode there is no limit to stay below.
  while (InTestMode() && SecondsField(loop_.Now() - start) < kReplyLimit) {
    if (state_.ReplyDone) {
      state_.ReplyHandled = false;
      return true;
    }
    loop_.Yield(start + EndOfWait(loop_.Now() - start));
  }
  if (!state_.ReplyDone && state_.TMStatus == "&HFF") ++tally_.silentWaits;
  state_.ReplyDone = true;
  state_.ReplyHandled = false;
  return false;
}

void TargetLink::OnComm(int commEvent) {
  if (commEvent == kCommReceive) {
    Receive();
  } else if (commEvent != kCommSend) {
    const CommText told = CommTextOf(commEvent);
    if (told.isError) ++tally_.lineErrors;
    (told.isError ? state_.CommErrorText : state_.CommEventText) = told.text;
  }
}

void TargetLink::Receive() {
  const std::string text = mscomTarget_.Input();
  tally_.bytesIn += static_cast<long>(text.size());
  if (text.empty()) return;
  if (!InTestMode() || state_.ReplyDone) {
    ++tally_.unaskedTexts;
    return;
  }
  decoder_.Take(text);
  if (waits_ == 0 && !decoder_.Gathering()) state_.ReplyHandled = false;
}

void TargetLink::OpenPort() {
  mscomTarget_.Open();
  decoder_.MeetTarget();
}

void TargetLink::Rest() {
  state_.ReplyDone = true;
  state_.ReplyHandled = false;
  state_.ReplyBuffer.clear();
}

}  // namespace orvane
