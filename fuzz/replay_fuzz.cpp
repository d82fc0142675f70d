// A run that is run again from a record in which anything may have been changed: its trace note by note, what the
// station knew, what stood on its panels. It comes to an end, to the same one each time, and a record that was not
// changed is the same.

#include "app/replay/replayed_run.h"
#include "portion.h"
#include "require.h"
#include "station/recorded_station.h"

namespace {

using namespace orvane;

const RunRecord& Whole() {
  static const RunRecord record = [] {
    test::RecordedStation recorded(1);
    (void)recorded.station.TakeTargetThrough();
    return recorded.TheRecord();
  }();
  return record;
}

std::string& ContentOf(RunRecord& record, std::string_view role) {
  for (RecordedDocument& document : record.documents) {
    if (document.role == role) return document.content;
  }
  fuzz::Require(false, "there is no such document");
  std::abort();
}

/// One change: which note, what becomes of it, and with what.
void Change(std::vector<WireNote>& notes, fuzz::Portions& rest) {
  const std::size_t place = (rest.Byte() * 256U + rest.Byte()) % notes.size();
  WireNote& note = notes[place];
  switch (rest.Byte() % 8) {
    case 0:
      notes.erase(notes.begin() + static_cast<std::ptrdiff_t>(place));
      if (notes.empty()) notes.emplace_back();
      return;
    case 1:
      notes.insert(notes.begin() + static_cast<std::ptrdiff_t>(place), WireNote(note));
      return;
    case 2:
      std::swap(note, notes[(place + 1) % notes.size()]);
      return;
    case 3:
      note.event = static_cast<WireEvent>(1 + rest.Byte() % 10);
      return;
    case 4:
      note.link = notes[rest.Byte() % notes.size()].link;
      return;
    case 5:
      note.bytes = rest.Until('\0');
      return;
    case 6:
      notes.resize(place + 1);
      return;
    default:
      if (!note.bytes.empty()) note.bytes[rest.Byte() % note.bytes.size()] = static_cast<char>(rest.Byte());
  }
}

RunRecord Changed(fuzz::Portions rest) {
  RunRecord record = Whole();
  std::vector<WireNote> notes = ReadWireLog(ContentOf(record, "trace")).notes;
  const std::uint8_t kind = rest.Byte();
  if (kind == 1) {
    notes.front().bytes = rest.Rest();
  } else if (kind == 2) {
    ContentOf(record, "panel") = rest.Rest();
  } else if (kind == 3) {
    ContentOf(record, "parameters.before") = rest.Rest();
  } else if (kind == 4) {
    record.end->ending = Ending::Abandoned;
  }
  for (int changes = 0; !rest.Empty() && changes < 8; ++changes) Change(notes, rest);
  WireLog log;
  for (const WireNote& note : notes) log.Note(note.at, note.link, note.event, note.bytes);
  ContentOf(record, "trace") = log.Content();
  return record;
}

std::string Came(const RunRecord& record) {
  try {
    return RunAgain(record).Text();
  } catch (const CannotReplay& fault) {
    return std::string("not run again: ") + fault.what();
  }
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  const RunRecord record = Changed(fuzz::Portions(data, size));
  const std::string came = Came(record);
  if (record == Whole()) fuzz::Require(came.empty(), "a record that was not changed differs");
  fuzz::Require(Came(record) == came, "another end of the same run");
  return 0;
}
