#include "app/trace/traced_serial.h"

#include <utility>

#include "app/trace/wire_words.h"
#include "base/failure.h"
#include "link/comm_events.h"
#include "link/deframer.h"
#include "link/frame.h"

namespace orvane {
namespace {

/// A reply is looked for among so many bytes: several of the longest that the station would take. A Target that
/// chatters unasked costs no more than that.
constexpr std::size_t kMostSearched = 4 * kGatheredLimit;

}  // namespace

TracedSerial::TracedSerial(SerialControl& line, Trace& trace) : line_(line), trace_(trace) {
  line_.onComm = [this](int commEvent) {
    if (commEvent != kCommReceive && commEvent != kCommSend) {
      trace_.Note(Link(), "line", {}, CommTextOf(commEvent).text);
    }
    if (onComm) onComm(commEvent);
  };
}

template <class Act>
void TracedSerial::Watched(Act act) {
  try {
    act();
  } catch (const StationFailure& failure) {
    trace_.Note(Link(), "failure", {}, failure.Text());
    throw;
  }
}

void TracedSerial::Open() {
  line_.setup = setup;
  Watched([&] { line_.Open(); });
  command_.clear();
  reply_.clear();
  hasAhead_ = false;
  trace_.Note(Link(), "open", {}, setup.settings);
}

void TracedSerial::Close() {
  if (line_.PortOpen()) trace_.Note(Link(), "close");
  line_.Close();
}

void TracedSerial::NoteOut(std::string_view bytes) {
  constexpr std::size_t kFrameSize = kFrameBodySize + 2;
  command_ += bytes;
  const bool whole = command_.size() == kFrameSize && command_.starts_with(kSync);
  trace_.Note(Link(), "out", bytes, whole ? CommandWords(std::string_view(command_).substr(kSync.size())) : "");
  if (bytes == kSync) command_ = kSync;
  if (whole || command_.size() > kFrameSize) command_.clear();
  reply_.clear();
}

void TracedSerial::OutputWithNext(std::string_view bytes) {
  NoteOut(bytes);
  Watched([&] { line_.OutputWithNext(bytes); });
  hasAhead_ = true;
}

void TracedSerial::Output(std::string_view bytes) {
  // What fails together with the bytes ahead of it has failed at these: it never went out.
  const bool hadAhead = std::exchange(hasAhead_, false);
  if (!hadAhead) NoteOut(bytes);
  Watched([&] { line_.Output(bytes); });
  if (hadAhead) NoteOut(bytes);
}

std::string TracedSerial::Input() {
  std::string bytes = line_.Input();
  if (bytes.empty()) return bytes;
  reply_ += bytes;
  if (reply_.size() > kMostSearched) reply_.erase(0, reply_.size() - kMostSearched);
  const std::string says = ReplyWords(reply_);
  trace_.Note(Link(), "in", bytes, says);
  if (!says.empty()) reply_.clear();
  return bytes;
}

}  // namespace orvane
