#include "link/wire_check.h"

#include <algorithm>

#include "base/failure.h"
#include "link/plain_deframer.h"

namespace orvane::test {
namespace {

constexpr std::size_t kBodySize = 51;
/// So many escapes at most are sure to lie where the sender still looks for them.
constexpr int kSureEscapes = 10;

std::string FaultOfBody(const std::string& body) {
  if (body.size() != kBodySize) return "body of " + std::to_string(body.size()) + " bytes";
  const auto terminator = body.find_last_not_of('\0');
  if (terminator == std::string::npos || terminator < 2 || body[terminator] != '\x02') return "no terminator";
  int escapes = 0;
  char sum = body[0];
  for (std::size_t i = 1; i < terminator; ++i) {
    if (body[i] == '\x10' && i + 1 < terminator) {
      ++i;
      ++escapes;
      if (body[i] != '\x02' && body[i] != '\x10') return escapes > kSureEscapes ? "" : "escape of nothing";
    } else if (body[i] == '\x02') {
      return escapes >= kSureEscapes ? "" : "bare 02 inside";
    }
    sum = static_cast<char>(sum ^ body[i]);
  }
  return sum == 0 || escapes > kSureEscapes ? "" : "checksum";
}

}  // namespace

std::string FaultOfLine(LinkRig& rig, const std::string& line) {
  rig.serial.writes.clear();
  rig.serial.commands.clear();
  rig.main.txtUserCommand.SetText(line);
  bool failed = false;
  try {
    rig.link.CommandInterpreter();
  } catch (const StationFailure&) {
    failed = true;
  }
  const bool sent = !rig.serial.writes.empty();
  if (sent != !rig.state.ReplyDone) return "a reply is awaited to what was not sent";
  rig.link.Rest();
  if (failed && sent) return "a failed line was sent";
  if (failed && rig.main.txtUserCommand.Text() != line) return "a failed line is gone";
  if (!sent) return "";
  if (rig.serial.writes.size() != 2 || rig.serial.writes[0] != "\x02\x14") return "not two writes";
  return FaultOfBody(rig.serial.writes[1]);
}

std::string FaultOfReply(LinkRig& rig, const std::string& bytes, std::size_t pieceSize) {
  for (std::size_t at = 0; at < bytes.size(); at += pieceSize) {
    rig.loop.PostAt(rig.loop.Now() + std::chrono::microseconds(at + 1),
                    [&rig, piece = bytes.substr(at, pieceSize)] { rig.serial.Receive(piece); });
  }
  const TimePoint start = rig.loop.Now();
  const auto failure = rig.nest.Run([&] { rig.link.RunTargetCommand("ti"); });
  if (!rig.state.ReplyDone || rig.state.ReplyHandled || rig.decoder.Gathering()) return "not at rest";
  if (rig.loop.Now() - start > kFullWait) return "waited too long";
  const std::string status = rig.state.TMStatus;
  rig.loop.RunDry();
  // A text of one piece, of which no other reply can become, tells what its status must be.
  const bool whole = !failure && bytes.size() <= std::min(pieceSize, kGatheredLimit);
  if (!whole) return "";
  const PlainDeframed plain = DeframedPlainly(bytes, ReplyLayout::Padded);
  constexpr int kStatus = 5;
  if (!plain.found) return status == "&HFF" ? "" : "a status out of nothing";
  const auto at = static_cast<std::size_t>(plain.start + kStatus);
  return at < plain.values.size() && ToLong(status) == plain.values[at] ? "" : "another status than the frame's";
}

}  // namespace orvane::test
