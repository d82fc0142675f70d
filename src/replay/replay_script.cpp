#include "replay/replay_script.h"

#include <algorithm>
#include <cstdio>
#include <utility>

#include "platform/operation_nest.h"
#include "records/recorded_files.h"

namespace orvane {
namespace {

constexpr std::size_t kMostTold = 100;
/// So far ahead what the station says is looked for when it is not what stands there.
constexpr std::size_t kReach = 600;
/// A command's sync goes out by itself ahead of its body.
constexpr std::size_t kSyncSize = 2;

bool IsLine(std::string_view link) { return link.starts_with("COM"); }

/// What makes two different sayings the same thing to say: the operation of a command, the head of a message to an
/// instrument, the title of a box.
std::string_view KeyOf(const WireNote& note, std::string_view bytes) {
  if (IsLine(note.link)) return bytes.substr(0, 1);
  return bytes.substr(0, bytes.find_first_of(" \n"));
}

/// Where words tell no difference.
std::string FirstUnlike(std::string_view then, std::string_view now) {
  const auto [left, right] = std::mismatch(then.begin(), then.end(), now.begin(), now.end());
  const auto value = [](auto at, auto end) {
    return at == end ? std::string("nothing") : std::to_string(static_cast<unsigned char>(*at));
  };
  return " with another byte " + std::to_string(left - then.begin()) + ": " + value(right, now.end()) + ", not " +
         value(left, then.end()) + ".";
}

}  // namespace

bool ComesOfItself(const WireNote& note) {
  switch (note.event) {
    case WireEvent::Line:
    case WireEvent::Act:
      return true;
    case WireEvent::Answered:
      return note.link != kFileLink;
    case WireEvent::Close:
      return note.link != kFileLink && !note.bytes.empty();
    default:
      return false;
  }
}

ReplayScript::ReplayScript(VirtualEventLoop& loop, std::vector<WireNote> notes, WireWords words)
    : loop_(loop), notes_(std::move(notes)), words_(std::move(words)) {}

void ReplayScript::Begin() {
  running_ = true;
  began_ = loop_.Now();
  saidAt_ = TimePoint{0};
  now_ = began_;
  SendOutsideNotes();
  // What the station knew is no saying of it.
  if (place_ < notes_.size() && notes_[place_].event == WireEvent::State) Pass(place_);
}

void ReplayScript::End() {
  if (!std::exchange(running_, false) || AtEnd()) return;
  TellDifference("the record goes on with " + Told(notes_[place_]) + ", and the run was over.");
}

bool ReplayScript::Is(std::size_t place, std::string_view link, WireEvent event) const {
  return place < notes_.size() && notes_[place].link == link && notes_[place].event == event;
}

void ReplayScript::Pass(std::size_t place) {
  place_ = place + 1;
  saidAt_ = notes_[place].at;
  now_ = loop_.Now();
  SendOutsideNotes();
}

void ReplayScript::SendOutsideNotes() {
  TimePoint due = now_;
  for (; place_ < notes_.size() && ComesOfItself(notes_[place_]); ++place_) {
    const WireNote& note = notes_[place_];
    due = now_ + (note.at - saidAt_);
    loop_.PostAt(due, [this, &note] {
      if (running_ && onOutside) onOutside(note);
    });
    if (note.event != WireEvent::Answered) continue;
    saidAt_ = note.at;
    now_ = due;
    ++place_;
    break;
  }
  if (AtEnd() && endsInTheMiddle) loop_.PostAt(due, [] { throw StationEnded(); });
}

void ReplayScript::GoOn() {
  if (!running_) return;
  now_ = std::max(now_, loop_.Now());
  SendOutsideNotes();
}

bool ReplayScript::Say(std::string_view link, WireEvent event, std::string_view bytes) {
  if (!running_) return false;
  if (!AtEnd() && ComesOfItself(notes_[place_])) GoOn();
  if (AtEnd() && endsInTheMiddle) throw StationEnded();
  if (IsLine(link) && event == WireEvent::Out && bytes.size() > kSyncSize) ++commands_;
  const bool isIts = Is(place_, link, event);
  if (isIts && notes_[place_].bytes == bytes) {
    Pass(place_);
    return true;
  }
  const WireNote now{TimePoint{0}, std::string(link), event, std::string(bytes)};
  TellDifference("the record has " + (AtEnd() ? "nothing more" : Told(notes_[place_])) + ", now came " + Told(now) +
                 (isIts && Told(now) == Told(notes_[place_]) ? FirstUnlike(notes_[place_].bytes, bytes) : "."));
  const auto ahead = FindAhead(link, event, bytes);
  const bool isAlike = isIts && KeyOf(notes_[place_], notes_[place_].bytes) == KeyOf(now, bytes);
  if (isAlike || (isIts && !ahead)) {
    Pass(place_);
    return true;
  }
  if (ahead) Pass(*ahead);
  return ahead.has_value();
}

std::optional<WireNote> ReplayScript::Take(std::string_view link, WireEvent event) {
  if (!running_ || !Is(place_, link, event)) return std::nullopt;
  const WireNote& note = notes_[place_];
  const TimePoint due = now_ + (note.at - saidAt_);
  if (due > loop_.Now()) loop_.Block(due - loop_.Now());
  Pass(place_);
  return note;
}

std::optional<std::string> ReplayScript::EarlierAnswer(std::string_view link, std::string_view said) const {
  for (std::size_t i = std::min(place_, notes_.size()); i-- > 1;) {
    if (Is(i - 1, link, WireEvent::Out) && notes_[i - 1].bytes == said && Is(i, link, WireEvent::In)) {
      return notes_[i].bytes;
    }
  }
  return std::nullopt;
}

std::optional<std::size_t> ReplayScript::FindAhead(std::string_view link, WireEvent event,
                                                   std::string_view bytes) const {
  const std::size_t end = std::min(notes_.size(), place_ + kReach);
  for (std::size_t i = place_ + 1; i < end; ++i) {
    if (Is(i, link, event) && notes_[i].bytes == bytes) return i;
  }
  return std::nullopt;
}

std::string ReplayScript::Told(const WireNote& note) const {
  return note.link + " " + words_(note.link, note.event, note.bytes);
}

std::string ReplayScript::Where() const {
  const std::string seconds = std::to_string(std::chrono::duration<double>(saidAt_).count());
  std::string where = "at " + seconds.substr(0, seconds.find('.') + 4) + " s, command " + std::to_string(commands_);
  const std::string now = step ? step() : "";
  return where + (now.empty() ? "" : ", in step " + now);
}

void ReplayScript::TellDifference(const std::string& text) {
  ++differenceCount_;
  if (differences_.size() < kMostTold) differences_.push_back(Where() + ": " + text);
}

}  // namespace orvane
