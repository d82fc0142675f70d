#include "link/reply_decoder.h"

#include <algorithm>
#include <array>

#include "base/counted.h"
#include "base/failure.h"
#include "base/text.h"

namespace orvane {
namespace {

/// How long the gathering may take: 200 bytes at 115200 baud (17 ms), the 16 ms
/// for which a USB adapter may hold back the last of them, and as much again for a computer that is busy.
constexpr TimePoint kSpinTime = std::chrono::milliseconds(60);
/// The one reply without pads; what the pad stage makes of it has no checksum any more.
constexpr int kUnpaddedOperation = 57;
constexpr const char* kStrayRampRow =
    "A row of the ramp tables was overwritten by a reply to another command: load the tables again.";

/// "&H" and at least two digits.
void AssignHex(std::string& text, std::uint16_t value) {
  constexpr std::string_view kDigits = "0123456789ABCDEF";
  text.resize(value < 0x100 ? 4 : 5);
  auto at = text.begin();
  *at++ = '&';
  *at++ = 'H';
  if (value >= 0x100) *at++ = kDigits[value >> 8U];
  *at++ = kDigits[(value >> 4U) & 0xFU];
  *at = kDigits[value & 0xFU];
}

}  // namespace

ReplyDecoder::ReplyDecoder(EventLoop& loop, ReplyState& state, LinkTally& tally, CalState& cal, RampState& ramp,
                           PanelRef<OrvaneMain> main, PanelRef<FrmBaseBand> baseBand, ResultsConsole& console)
    : loop_(loop), state_(state), tally_(tally), cal_(cal), outlets_{state, ramp, main, baseBand, console} {}

ReplyLayout ReplyDecoder::Layout() const { return state_.PlainReplyMode ? ReplyLayout::Plain : ReplyLayout::Padded; }

void ReplyDecoder::Take(std::string_view text) {
  const Counted nested(depth_);
  // The flag tells the calls of one nest that an inner one has done the work; a new nest starts without it.
  if (depth_ == 1) state_.ReplyHandled = false;
  state_.ReplyBuffer += text;
  Gather();
  if (!state_.ReplyHandled) Decode();
}

void ReplyDecoder::Gather() {
  while (state_.ReplySpin < kGatheredSpin && !FindFrame(state_.ReplyBuffer, Layout())) {
    // A command sets the spin back, also one that is given while this call waits; the next text starts it.
    if (state_.ReplySpin == 0) {
      spinStart_ = loop_.Now();
      state_.ReplySpin = 1;
    }
    loop_.Yield(spinStart_ + kSpinTime);
    if (state_.ReplyHandled) return;
    if (state_.ReplySpin == 0) continue;
    const double passed = static_cast<double>((loop_.Now() - spinStart_).count()) / kSpinTime.count();
    state_.ReplySpin = std::clamp(passed * kGatheredSpin, 1.0, kGatheredSpin);
  }
}

void ReplyDecoder::Decode() {
  // However early a frame was whole: until the next command what comes behind it is decoded as it comes.
  state_.ReplySpin = kGatheredSpin;
  const std::string gathered = std::exchange(state_.ReplyBuffer, {});
  const Deframed reply = Deframe(std::string_view(gathered).substr(0, kGatheredLimit), Layout());
  Publish(reply, std::min(gathered.size(), kGatheredLimit));
  if (gathered.size() > kGatheredLimit) {
    throw StationFailure("Subscript out of range: the Target sent " + std::to_string(gathered.size()) +
                         " bytes in one reply.");
  }
  if (!reply.frame) return;
  JudgeFrame(reply);
  TakeFrame(*reply.frame);
}

void ReplyDecoder::JudgeFrame(const Deframed& reply) {
  if (reply.stray) ++tally_.strayReplies;
  const int operation = reply.frame->start + 3;
  const bool hasOperation = operation < reply.frame->end;
  const bool padded = Layout() == ReplyLayout::Padded &&
                      !(hasOperation && reply.values[static_cast<std::size_t>(operation)] == kUnpaddedOperation);
  if (padded) tally_.damagedReplies += JudgeChecksum(state_.checksums, reply);
}

void ReplyDecoder::Publish(const Deframed& reply, std::size_t gathered) {
  const auto count = static_cast<std::size_t>(reply.count);
  for (std::size_t i = 0; i < count; ++i) AssignHex(state_.ReplyBytes[i], reply.values[i]);
  for (std::size_t i = count; i < gathered; ++i) state_.ReplyBytes[i].clear();
}

void ReplyDecoder::TakeFrame(FrameSpan frame) {
  const Reply reply(state_, frame);
  const bool padded = Layout() == ReplyLayout::Padded;
  state_.ReplyOperation = reply.Text(padded ? 3 : 2);
  state_.TMStatus = reply.Text(padded ? 5 : 3);
  const Long code = ToLong(state_.ReplyOperation);
  if (expected_ && code != *expected_) ++tally_.foreignReplies;
  if (StatusOf(state_) != 0) {
    ReportFailureStatus();
    return;
  }
  if (const ReplyRow* const row = ReplyRowOf(code); row != nullptr) {
    if (row->itemOffset != 0) state_.ReplyItem = reply.Text(row->itemOffset);
    // It is shown and kept as any other row, so far as it goes, but whatever stands on the tables from now on stands
    // on a stray reply.
    if (code == kUnpaddedOperation && expected_ && code != *expected_) outlets_.ramp.damage = kStrayRampRow;
    if (row->show(reply, outlets_) == Exchange::LeftOpen) return;
  }
  state_.ReplyDone = true;
  state_.ReplyBuffer.clear();
  state_.ReplyHandled = true;
}

// The exchange stays open: the Target may still answer, and the wait runs to its limit.
void ReplyDecoder::ReportFailureStatus() {
  ++tally_.failureStatuses;
  outlets_.console.Append(FirstTenBytes(state_) + "\r\n" + state_.ReplyOperation + "\r\n" + state_.TMStatus + "\r\n");
  cal_.CalFailed = true;
  cal_.CalStopRequested = true;
}

}  // namespace orvane
