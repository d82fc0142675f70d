// What passed over the links in a run, as a record has it. Whatever the bytes are, the notes are in the order of
// their times, and written again they are the same notes; what is cut off or damaged leaves those ahead of it, and is
// said.

#include "records/wire_log.h"
#include "require.h"

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  using namespace orvane;
  const std::string_view bytes(reinterpret_cast<const char*>(data), size);
  const WireNotes read = ReadWireLog(bytes);
  WireLog again;
  TimePoint last{0};
  for (const WireNote& note : read.notes) {
    fuzz::Require(note.at >= last, "a note ahead of the one before it");
    last = note.at;
    again.Note(note.at, note.link, note.event, note.bytes);
  }
  const WireNotes reread = ReadWireLog(again.Content());
  fuzz::Require(reread.damage.empty(), "what was written is damaged");
  fuzz::Require(reread.notes == read.notes, "other notes from their own log");
  for (std::size_t cut = 0; cut < std::min<std::size_t>(bytes.size(), 40); ++cut) {
    const WireNotes part = ReadWireLog(bytes.substr(0, bytes.size() - cut));
    fuzz::Require(part.notes.size() <= read.notes.size(), "more notes from less");
  }
  return 0;
}
