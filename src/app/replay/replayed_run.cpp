#include "app/replay/replayed_run.h"

#include <algorithm>
#include <array>
#include <charconv>
#include <utility>

#include "app/keeping/panel_document.h"
#include "app/keeping/run_documents.h"
#include "app/keeping/station_snapshot.h"
#include "app/recorded_ports.h"
#include "app/replay/recorded_act.h"
#include "app/station.h"
#include "app/trace/wire_words.h"
#include "platform/operator.h"
#include "platform/virtual_event_loop.h"
#include "ramp/ramp_file.h"
#include "replay/record_comparison.h"
#include "replay/replay_bench.h"
#include "txcal/side_tables.h"

namespace orvane {
namespace {

/// Beyond the time that the run took. A station that still goes on then would go on for ever.
constexpr TimePoint kPatience = std::chrono::minutes(30);
constexpr std::size_t kMostTold = 12;

struct TableRow {
  std::string_view file;
  std::string_view role;
  /// Zeros in place of a table that had no form as a file; what stood there stands on the panels.
  std::size_t standIn = 0;
};
/// The installed data files, and the documents that stand for what a station made of them.
constexpr std::array kTables{TableRow{"TI532.epm", "parameters.before"},
                             TableRow{"RampTable.dat", "ramp_table", kRampRecords* kRecordSize},
                             TableRow{"Cable.loss", "cable_loss", kLosses* kRecordSize}};

std::string WordsOf(std::string_view link, WireEvent event, std::string_view bytes) {
  const auto quoted = [](std::string_view text) {
    while (!text.empty() && (text.back() == '\n' || text.back() == '\r')) text.remove_suffix(1);
    std::string shown = "\"";
    for (const char c : text) shown += c == '\n' ? std::string(" / ") : std::string(1, c);
    return shown + "\"";
  };
  constexpr std::size_t kSync = 2;
  const bool isLine = link.starts_with("COM");
  switch (event) {
    case WireEvent::Open:
      return "opening " + quoted(bytes);
    case WireEvent::Close:
      return "closing";
    case WireEvent::Failure:
      return "the failure " + quoted(bytes);
    case WireEvent::In:
      return isLine ? "the reply " + quoted(ReplyWords(bytes)) : "the reply " + quoted(bytes);
    default:
      if (!isLine) return quoted(bytes);
      return bytes.size() <= kSync ? "the sync bytes" : quoted(CommandWords(bytes));
  }
}

const RecordedDocument& Needed(const RunRecord& record, std::string_view role) {
  const RecordedDocument* const document = record.Document(role);
  if (document == nullptr) throw CannotReplay("It has no document \"" + std::string(role) + "\".");
  return *document;
}

std::vector<WireNote> NotesOf(const RunRecord& record) {
  WireNotes read = ReadWireLog(Needed(record, "trace").content);
  const bool mayBeCut = record.end && record.end->ending == Ending::Abandoned;
  if (!read.damage.empty() && !mayBeCut) throw CannotReplay("Its trace is damaged: " + read.damage);
  return std::move(read.notes);
}

std::string SnapshotIn(const std::vector<WireNote>& notes) {
  const auto state =
      std::find_if(notes.begin(), notes.end(), [](const WireNote& note) { return note.event == WireEvent::State; });
  if (state == notes.end()) throw CannotReplay("Its trace does not say what the station knew when the run began.");
  return state->bytes;
}

class Rerun {
 public:
  Rerun(const RunRecord& record, const OtherTable& tables)
      : record_(record),
        notes_(NotesOf(record)),
        snapshot_(SnapshotIn(notes_)),
        hasOtherTables_(tables != nullptr),
        script_(loop_, notes_, &WordsOf),
        station_(ports_.Ports(), {{}, {}, snapshot_.VerifiesEeprom()}),
        documents_(station_.State(), station_.Panels(), snapshot_.VerifiesEeprom()) {
    LayTables(tables);
    ConnectScript();
    FollowRun();
  }

  ReplayedRun Go() {
    try {
      BringToTheBeginning();
      station_.Nest().Run([this] { Starter().Click(); });
    } catch (const StationEnded&) {
      // As it was, or as far as the record goes.
    } catch (const EndlessWait&) {
      script_.TellDifference("the station waits for something that the record has not.");
    }
    ports_.recorder.Flush();
    ReplayedRun run;
    run.onTheWires = script_.Differences();
    run.onTheWiresInAll = script_.DifferenceCount();
    run.inTheRecord = RecordDifferences(record_, now_);
    run.now = std::move(now_);
    return run;
  }

 private:
  void LayTables(const OtherTable& tables) {
    for (const TableRow& table : kTables) {
      const std::string file(table.file);
      if (tables) {
        if (auto content = tables(file)) files_.content[file] = std::move(*content);
      } else {
        const RecordedDocument* const document = record_.Document(table.role);
        files_.content[file] = document != nullptr ? document->content : std::string(table.standIn, '\0');
      }
    }
  }

  void ConnectScript() {
    script_.onOutside = [this](const WireNote& note) { Outside(note); };
    script_.step = [this] {
      const auto step = station_.State().report.UnderWay();
      return step ? std::string(StepName(*step)) : std::string();
    };
    script_.endsInTheMiddle = !record_.end || record_.end->ending == Ending::Abandoned;
  }

  void FollowRun() {
    RunReport& report = station_.State().report;
    report.runBegan.Connect([this](RunKind) {
      ShowPanels();
      snapshot_.TakeUp(station_.State(), station_.Panels(), hasOtherTables_);
      const double seconds = record_.end ? record_.end->seconds : 0;
      loop_.PostAt(
          loop_.Now() + std::chrono::duration_cast<TimePoint>(std::chrono::duration<double>(seconds)) + kPatience,
          [] { throw EndlessWait(); });
      script_.Begin();
    });
    report.runIsOver.Connect([this] { script_.End(); });
    RecorderLinks links;
    links.identity = [this](RunKind kind) {
      RunIdentity identity = record_.identity;
      identity.kind = RunKindText(kind);
      return identity;
    };
    links.wallClock = [] { return std::int64_t{0}; };
    links.state = [] { return std::string(); };
    links.documentsBefore = [] { return std::vector<RecordedDocument>(); };
    links.documentsAfter = [this] { return documents_.After(); };
    links.begun = [](const RunIdentity&) {};
    links.grown = [](const std::string&, const std::string&) {};
    links.finished = [this](RunRecord record) { now_ = std::move(record); };
    ports_.recorder.Follow(station_.State(), std::move(links));
    station_.Nest().onFailure.emplace_back([this](const std::string& text) { ports_.recorder.Stopped(text); });
  }

  void ShowPanels() {
    const auto losses = LossBoxes(station_.Panels().autoCal, station_.Panels().main);
    const auto isMeant = [&](const Control& control) {
      return !hasOtherTables_ || std::find(losses.begin(), losses.end(), &control) == losses.end();
    };
    ShowPanelDocument(Needed(record_, "panel").content, station_.Panels().All(), isMeant);
  }

  /// Everything that the run stands on and no document or state tells: panels that are there, instruments with a
  /// session, an open log and an open line.
  void BringToTheBeginning() {
    StationPanels& panels = station_.Panels();
    const auto press = [this](Button& button) { (void)station_.Nest().Run([&] { button.Click(); }); };
    const auto isSet = [this](std::string_view state) { return snapshot_.Value(state).get<bool>(); };
    station_.Start();
    for (Panel* const panel : panels.All()) {
      if (snapshot_.Saw(*panel)) station_.Nest().Run([&] { panel->Touch(); });
    }
    ShowPanels();
    if (isSet("TestSetReady")) {
      panels.main.cboPrimaryAddress.SetText(std::to_string(snapshot_.Value("GpibPrimaryAddress").get<int>()));
      press(panels.main.cmdInstrumentInitialize);
    }
    FrmBaseBand& bench = panels.baseBand;
    if (isSet("PSReady")) MakeSession(bench.supply, bench.txtPSVoltage, snapshot_.SupplyAddress());
    if (isSet("LoaderReady")) MakeSession(bench.load, bench.TxtLoaderCurrent, snapshot_.LoaderAddress());
    if (!isSet("LogOffState")) {
      desk_.nextPath = snapshot_.Value("LogFileName").get<std::string>();
      press(panels.main.cmdLogOn);
    }
    OpenLine();
  }

  /// As the session was made, whatever stands in its boxes by now.
  void MakeSession(BenchSessionFace& face, TextBox& value, const GpibAddress& address) {
    const auto put = [](auto& box, const std::string& text) {
      const auto kept = std::exchange(box.onChange, nullptr);
      box.SetText(text);
      box.onChange = kept;
    };
    put(face.boardNumber, std::to_string(address.board));
    put(face.primAddress, std::to_string(address.primary));
    put(face.secAddress, address.secondary == 0 ? "None" : std::to_string(address.secondary));
    put(face.timeOut, "10s");
    put(face.bufferSize, "1000");
    put(value, "1");
    (void)station_.Nest().Run([&] { face.initialize.Click(); });
  }

  /// It was open where the first thing that the trace has of it is not its opening.
  void OpenLine() {
    constexpr std::string_view kName = "COM";
    const auto first = std::find_if(notes_.begin(), notes_.end(),
                                    [&](const WireNote& note) { return note.link.starts_with(kName); });
    if (first == notes_.end() || first->event == WireEvent::Open) return;
    Integer port = 1;
    const std::string_view number = std::string_view(first->link).substr(kName.size());
    (void)std::from_chars(number.data(), number.data() + number.size(), port);
    ports_.line.setup.commPort = port;
    ports_.line.Open();
  }

  Button& Starter() {
    StationPanels& panels = station_.Panels();
    const std::array starters{std::pair{RunKind::Whole, &panels.autoCal.cmdAllCalStart},
                              std::pair{RunKind::Receive, &panels.mpAutoCal.cmdMPRxAllAutoCal},
                              std::pair{RunKind::Gsm, &panels.autoCal.cmdGSM},
                              std::pair{RunKind::Dcs, &panels.autoCal.cmdDCS},
                              std::pair{RunKind::Transmit, &panels.autoCal.cmdTxAllCal},
                              std::pair{RunKind::Rf, &panels.autoCal.Command1},
                              std::pair{RunKind::Charger, &panels.baseBand.cmdChargerAutoCal}};
    for (const auto& [kind, button] : starters) {
      if (RunKindText(kind) == record_.identity.kind) return *button;
    }
    throw CannotReplay("There is no run of the kind \"" + record_.identity.kind + "\".");
  }

  void Outside(const WireNote& note) {
    switch (note.event) {
      case WireEvent::Line:
        return line_.Raise(note);
      case WireEvent::Answered:
        return desk_.Answer(note);
      case WireEvent::Act:
        if (!DoRecordedAct(hand_, station_.Nest(), station_.Panels().All(), note.bytes)) {
          script_.TellDifference("the operator's act could not be done: " +
                                 WordsOf(note.link, note.event, note.bytes));
        }
        return;
      default:
        if (note.link == kStationLink) throw StationEnded();
        line_.Vanish();
        (void)station_.Nest().Run([&] { throw StationFailure(note.bytes); });
    }
  }

  const RunRecord& record_;
  const std::vector<WireNote> notes_;
  const StationSnapshot snapshot_;
  const bool hasOtherTables_;
  VirtualEventLoop loop_;
  ReplayScript script_;
  ReplayLine line_{script_};
  ReplayBus bus_{script_};
  ReplayDesk desk_{loop_, script_};
  ReplayFiles files_{script_};
  RecordedPorts ports_{{loop_, line_, bus_, files_, desk_, desk_}};
  Station station_;
  Operator hand_{station_.Nest()};
  RunDocuments documents_;
  RunRecord now_;
};

}  // namespace

std::string ReplayedRun::Text() const {
  std::string text;
  std::size_t told = 0;
  const auto tell = [&](const std::vector<std::string>& sentences) {
    for (const std::string& sentence : sentences) {
      if (told++ < kMostTold) text.append(sentence).append("\n");
    }
  };
  // What the run comes to says more than the second thing on a wire that is different.
  if (!onTheWires.empty()) tell({onTheWires.front()});
  tell(inTheRecord);
  if (onTheWiresInAll > 1) tell({onTheWires.begin() + 1, onTheWires.end()});
  const std::size_t all = onTheWiresInAll + inTheRecord.size();
  if (all > kMostTold) text += std::to_string(all - kMostTold) + " more differences.\n";
  return text;
}

ReplayedRun RunAgain(const RunRecord& record, const OtherTable& tables) {
  try {
    return Rerun(record, tables).Go();
  } catch (const Json::exception&) {
    throw CannotReplay("What it says of the station when the run began cannot be read.");
  }
}

}  // namespace orvane
