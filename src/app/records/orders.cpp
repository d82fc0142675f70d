#include "app/records/orders.h"

#include <CLI/CLI.hpp>
#include <algorithm>
#include <cstdlib>
#include <functional>
#include <thread>

#include "app/records/export_forms.h"
#include "app/records/shown_text.h"

namespace orvane {
namespace {

constexpr int kBadOptions = 64;
constexpr int kMostJobs = 1024;

/// Remarks on an option's value, as the command line's parser wants them: empty when there is nothing to say.
using Remark = std::string;

/// A flag that is given a value, "no" above all, is a slip and must not count as the flag.
Remark NoValue(const std::string& given) { return given == "true" ? "" : "it takes no value"; }

Remark NotEmpty(const std::string& given) { return given.empty() ? "the value is empty" : ""; }

/// The parser takes "-1" for a number without a sign.
Remark NotNegative(const std::string& given) {
  return given.starts_with('-') ? "\"" + given + "\" is less than 0" : "";
}

Remark IsStore(const std::string& given) {
  for (const std::string_view kind : {"sqlite:", "postgresql:"}) {
    if (given.starts_with(kind)) return given.size() > kind.size() ? "" : "\"" + given + "\" names no store";
  }
  return "\"" + given + "\" is neither sqlite:PATH nor postgresql:CONNINFO";
}

Remark IsTime(const std::string& given) {
  return UtcOf(given) ? "" : "\"" + given + "\" is no time, as 2026-11-22 or 2026-11-22T03:04:05Z is";
}

Remark HasExportForm(const std::string& given) {
  return ExportFormOf(given) != nullptr ? "" : "\"" + given + "\" does not end with " + ExportEndings();
}

CLI::Option* AddFlag(CLI::App& verb, const std::string& name, bool& flag, const std::string& means) {
  return verb.add_flag(name, flag, means)->check(NoValue);
}

CLI::Option* AddTime(CLI::App& verb, const std::string& name, std::optional<std::int64_t>& time,
                     const std::string& means) {
  const auto take = [&time](const std::string& text) { time = UtcOf(text); };
  return verb.add_option_function<std::string>(name, take, means)->type_name("T")->check(IsTime);
}

CLI::Option* AddRuns(CLI::App& verb, std::vector<std::string>& runs) {
  return verb.add_option("RUN", runs, "Id of a run, a unique beginning of one, or last")
      ->type_name("")
      ->check(NotEmpty);
}

/// Each verb and what it takes. A verb's order is filled while the line is read.
class Grammar {
 public:
  explicit Grammar(CLI::App& app) : app_(app) {
    app_.add_option("--store", store_, "sqlite:PATH or postgresql:CONNINFO [that of a real bench]")
        ->type_name("STORE")
        ->check(IsStore);
    AddList();
    AddShow();
    AddExport();
    AddImport();
    AddReplay();
    AddVerify();
    AddPrune();
    AddForward();
  }

  [[nodiscard]] RecordsOrder Order(const std::string& defaultStore) const {
    RecordsOrder order{store_.empty() ? defaultStore : store_, {}};
    if (order.store.empty()) throw CLI::RequiredError("--store");
    for (const auto& [verb, take] : verbs_) {
      if (verb->parsed()) take(order);
    }
    return order;
  }

 private:
  template <class VerbOrder>
  CLI::App& AddVerb(const std::string& name, const std::string& means, const VerbOrder& order) {
    CLI::App& verb = *app_.add_subcommand(name, means);
    // --store may stand behind the verb, too.
    verb.fallthrough();
    verbs_.emplace_back(&verb, [&order](RecordsOrder& whole) { whole.verb = order; });
    return verb;
  }

  void AddList() {
    CLI::App& verb = AddVerb("list", "One line a run, newest first", list_);
    verb.add_option("--serial", list_.query.serial, "Only this unit")->type_name("S");
    verb.add_option("--station", list_.query.station, "Only this station")->type_name("S");
    verb.add_option("--verdict", list_.query.verdict, "Only PASS, FAIL or NONE")
        ->type_name("V")
        ->check(CLI::IsMember({"PASS", "FAIL", "NONE"}));
    AddTime(verb, "--since", list_.query.since, "Only runs that began then or later (UTC)");
    AddTime(verb, "--until", list_.query.until, "Only runs that began before (UTC)");
    verb.add_option("--limit", list_.query.limit, "So many at the most")->type_name("N")->check(NotNegative);
    AddFlag(verb, "--json", list_.json, "For programs: one array, the columns of the table run by name");
  }

  void AddShow() {
    CLI::App& verb = AddVerb("show", "One run in words", show_);
    verb.add_option("RUN", show_.run, "Id of a run, a unique beginning of one, or last")
        ->type_name("")
        ->required()
        ->check(NotEmpty);
    AddFlag(verb, "--json", show_.json, "For programs: the whole record as one object");
  }

  void AddExport() {
    CLI::App& verb = AddVerb("export", "Writes runs to a file, in the form that its ending says", export_);
    AddRuns(verb, export_.runs)->required();
    verb.add_option("--to", export_.to, "The file, ending with " + ExportEndings())
        ->type_name("FILE")
        ->required()
        ->check(HasExportForm);
  }

  void AddImport() {
    CLI::App& verb = AddVerb("import", "Takes .orvane files; a record that is there already is left alone", import_);
    verb.add_option("FILE", import_.files, "An .orvane file")->type_name("")->required()->check(NotEmpty);
  }

  void AddReplay() {
    CLI::App& verb = AddVerb("replay", "Runs records again and tells the first difference", replay_);
    auto* runs = AddRuns(verb, replay_.runs);
    auto* all = AddFlag(verb, "--all", all_, "All runs of the store");
    all->excludes(runs);
    verb.add_option("--system-dir", replay_.options.systemFolder, "With the tables of this folder")
        ->type_name("DIR")
        ->check(NotEmpty);
    replay_.jobs = static_cast<int>(std::max(1U, std::thread::hardware_concurrency()));
    verb.add_option("--jobs", replay_.jobs, "So many at a time [all cores]")
        ->type_name("N")
        ->check(CLI::Range(1, kMostJobs));
    verb.callback([this] {
      if (replay_.runs.empty() && !all_) throw CLI::RequiredError("RUN or --all");
    });
  }

  void AddVerify() {
    CLI::App& verb = AddVerb("verify", "Looks at every digest, link and trace of these runs, or of all", verify_);
    AddRuns(verb, verify_.runs);
  }

  void AddPrune() {
    CLI::App& verb = AddVerb("prune", "Takes old records, or their traces alone, out of the store", prune_);
    const auto take = [this](const std::string& text) { prune_.beforeMs = *UtcOf(text); };
    verb.add_option_function<std::string>("--before", take, "Runs that began before (UTC)")
        ->type_name("T")
        ->required()
        ->check(IsTime);
    AddFlag(verb, "--keep-failed", prune_.keepFailed, "Spare runs that were no complete PASS");
    AddFlag(verb, "--keep-records", prune_.keepRecords, "Take out traces alone");
  }

  void AddForward() {
    CLI::App& verb = AddVerb("forward", "Copies finished records that another store has not", forward_);
    verb.add_option("--to", forward_.to, "The other store")->type_name("STORE")->required()->check(IsStore);
    AddFlag(verb, "--follow", forward_.follow, "Go on with records as they are finished, until a signal");
  }

  CLI::App& app_;
  std::string store_;
  ListOrder list_;
  ShowOrder show_;
  ExportOrder export_;
  ImportOrder import_;
  ReplayOrder replay_;
  bool all_ = false;
  VerifyOrder verify_;
  PruneOrder prune_;
  ForwardOrder forward_;
  std::vector<std::pair<CLI::App*, std::function<void(RecordsOrder&)>>> verbs_;
};

/// A line without a verb is a fault that the parser would tell without the word that stands in a verb's place.
std::string FaultText(const CLI::App& app, const CLI::ParseError& fault) {
  if (!app.get_subcommands().empty() || dynamic_cast<const CLI::RequiredError*>(&fault) == nullptr)
    return fault.what();
  const auto words = app.remaining();
  if (words.empty()) return "a verb is missing; --help lists them";
  return "there is no verb or option \"" + words.front() + "\"; --help lists them";
}

}  // namespace

std::variant<RecordsOrder, NoOrder> ParseRecordsOrder(int argc, const char* const* argv,
                                                      const std::string& defaultStore) {
  CLI::App app("Asks the run records of the station orvane", "orvane-records");
  app.set_version_flag("--version", std::string("orvane-records ") + ORVANE_VERSION);
  app.set_help_flag("--help", "Print this help and exit");
  app.set_help_all_flag("--help-all", "Print the help of every verb and exit");
  app.require_subcommand(1);
  const Grammar grammar(app);
  try {
    app.parse(argc, argv);
    return grammar.Order(defaultStore);
  } catch (const CLI::CallForHelp&) {
    return NoOrder{0, app.help()};
  } catch (const CLI::CallForAllHelp&) {
    return NoOrder{0, app.help("", CLI::AppFormatMode::All)};
  } catch (const CLI::CallForVersion& version) {
    return NoOrder{0, std::string(version.what()) + "\n"};
  } catch (const CLI::ParseError& fault) {
    return NoOrder{kBadOptions, "orvane-records: " + Harmless(FaultText(app, fault))};
  }
}

std::string DefaultRecords() {
  const auto variable = [](const char* name) {
    const char* value = std::getenv(name);
    return std::string(value == nullptr ? "" : value);
  };
  constexpr std::string_view kInFolder = "/orvane/records.sqlite";
  // A relative one is to be passed over, says the standard of these folders.
  if (const std::string states = variable("XDG_STATE_HOME"); states.starts_with('/')) {
    return "sqlite:" + states + std::string(kInFolder);
  }
  const std::string home = variable("HOME");
  return home.empty() ? std::string() : "sqlite:" + home + "/.local/state" + std::string(kInFolder);
}

}  // namespace orvane
