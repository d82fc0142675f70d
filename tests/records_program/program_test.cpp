#include <fcntl.h>
#include <gtest/gtest.h>
#include <pty.h>
#include <sys/wait.h>
#include <unistd.h>

#include <nlohmann/json.hpp>

#include "app/records/archive.h"
#include "program/programs.h"
#include "records_program/sample_records.h"

namespace orvane::test {
namespace {

using nlohmann::json;
using testing::HasSubstr;
using testing::Not;

const char* const kSmall = "019aa9a2-5c2e-7b11-8f3a-2b9d8c1e4f60";

class RecordsProgram : public testing::Test {
 protected:
  RecordsProgram() {
    const auto filled = Child({SAMPLE_STORE_PROGRAM, store, "3"}).WaitForEnd();
    if (filled.status != 0) throw std::runtime_error(filled.errors);
  }

  [[nodiscard]] static Child::End Run(Arguments words) {
    words.insert(words.begin(), ORVANE_RECORDS_PROGRAM);
    return Child(words).WaitForEnd();
  }
  [[nodiscard]] Child::End Ask(Arguments words) const {
    words.insert(words.begin(), {"--store", store});
    return Run(words);
  }

  /// What it shows on a terminal of so many columns and rows.
  [[nodiscard]] std::string OnTerminal(const Arguments& words) const {
    std::vector<std::string> all{ORVANE_RECORDS_PROGRAM, "--store", store};
    all.insert(all.end(), words.begin(), words.end());
    std::vector<char*> argv;
    for (std::string& word : all) argv.push_back(word.data());
    argv.push_back(nullptr);
    winsize size{};
    size.ws_col = 60;
    size.ws_row = 10;
    int terminal = -1;
    const pid_t process = ::forkpty(&terminal, nullptr, nullptr, &size);
    if (process == 0) {
      ::execv(argv[0], argv.data());
      ::_exit(127);
    }
    std::string shown;
    char piece[4096];
    for (ssize_t count = 0; (count = ::read(terminal, piece, sizeof piece)) > 0;) {
      shown.append(piece, static_cast<std::size_t>(count));
    }
    int status = 0;
    ::waitpid(process, &status, 0);
    ::close(terminal);
    EXPECT_EQ(status, 0);
    return shown;
  }

  TempFolder folder;
  std::string store = "sqlite:" + folder / "records.sqlite";
};

TEST_F(RecordsProgram, ListsAndShowsWhatIsInAStore) {
  const auto list = Ask({"list"});
  EXPECT_EQ(list.status, 0) << list.errors;
  EXPECT_EQ(std::count(list.output.begin(), list.output.end(), '\n'), 6) << list.output;
  EXPECT_THAT(list.output, Not(HasSubstr("\x1b")));
  const auto show = Ask({"show", "--json", kSmall});
  const json record = json::parse(show.output);
  EXPECT_EQ(record["readings"].size(), 5U);
  EXPECT_EQ(record["documents"].size(), 3U);
  EXPECT_EQ(record["operator"], "Kim \x1b[31m");
}

TEST_F(RecordsProgram, TheStoreOfARealBenchIsTheDefault) {
  const Variable states("XDG_STATE_HOME", folder.Path().string());
  EXPECT_EQ(Run({"list"}).status, 74);
  std::filesystem::create_directory(folder / "orvane");
  std::filesystem::rename(folder / "records.sqlite", folder / "orvane/records.sqlite");
  EXPECT_EQ(Run({"list"}).status, 0);
}

TEST_F(RecordsProgram, AStoreThatIsNotThereIs74AndStaysAway) {
  for (const Arguments& words : {Arguments{"list"}, Arguments{"show", "last"}, Arguments{"verify"},
                                 Arguments{"prune", "--before", "2027-01-01"}}) {
    Arguments all{"--store", "sqlite:" + folder / "none/records.sqlite"};
    all.insert(all.end(), words.begin(), words.end());
    const auto end = Run(all);
    EXPECT_EQ(end.status, 74) << words.front();
    EXPECT_THAT(end.errors, HasSubstr(folder / "none/records.sqlite"));
    EXPECT_EQ(std::count(end.errors.begin(), end.errors.end(), '\n'), 1) << end.errors;
  }
  EXPECT_FALSE(std::filesystem::exists(folder / "none"));
}

TEST_F(RecordsProgram, AFileThatIsNoStoreIs74AndStaysAsItIs) {
  for (const std::string& content : {std::string(), std::string("no store"), std::string(8192, 'x')}) {
    Fill(folder / "other", content);
    const auto end = Run({"--store", "sqlite:" + folder / "other", "list"});
    EXPECT_EQ(end.status, 74) << end.output;
    EXPECT_NE(end.errors, "");
    EXPECT_EQ(ContentOf(folder / "other"), content);
  }
}

TEST_F(RecordsProgram, AStoreThatMayNotBeWrittenIsRead) {
  const std::string file = folder / "records.sqlite";
  std::filesystem::permissions(file, std::filesystem::perms::owner_read | std::filesystem::perms::group_read |
                                         std::filesystem::perms::others_read);
  EXPECT_EQ(Ask({"list"}).status, 0);
  EXPECT_EQ(Ask({"verify"}).status, 0);
}

TEST_F(RecordsProgram, AnArchiveGoesIntoAnotherStoreAndComesOutTheSame) {
  const std::string other = "sqlite:" + folder / "other/records.sqlite";
  EXPECT_EQ(Ask({"export", kSmall, "last", "--to", folder / "two.orvane"}).status, 0);
  const auto taken = Run({"--store", other, "import", folder / "two.orvane"});
  EXPECT_EQ(taken.status, 0) << taken.errors;
  EXPECT_EQ(taken.output, "2 records taken in, 0 there already.\n");
  EXPECT_EQ(Run({"--store", other, "import", folder / "two.orvane"}).output,
            "0 records taken in, 2 there already.\n");
  EXPECT_EQ(Run({"--store", other, "show", kSmall, "--json"}).output, Ask({"show", kSmall, "--json"}).output);
  const std::string archive = ContentOf(folder / "two.orvane");
  Fill(folder / "cut.orvane", archive.substr(0, archive.size() - 1));
  EXPECT_EQ(Run({"--store", other, "import", folder / "cut.orvane"}).status, 1);
  EXPECT_EQ(Run({"--store", other, "import", folder / "none.orvane"}).status, 74);
}

TEST_F(RecordsProgram, ForwardsToAnotherStoreAndFollowsUntilASignal) {
  const std::string other = "sqlite:" + folder / "other.sqlite";
  EXPECT_EQ(Ask({"forward", "--to", other}).output, "5 records forwarded.\n");
  Child follower(
      {ORVANE_RECORDS_PROGRAM, "--store", other, "forward", "--to", "sqlite:" + folder / "third.sqlite", "--follow"});
  EXPECT_TRUE(follower.Says("5 records forwarded."));
  follower.Terminate();
  EXPECT_EQ(follower.WaitForEnd().status, 0);
}

TEST_F(RecordsProgram, PrunesAndVerifiesWhatIsLeft) {
  EXPECT_EQ(Ask({"prune", "--before", "2026-12-01", "--keep-records"}).output, "2 traces taken out.\n");
  const auto verified = Ask({"verify"});
  EXPECT_EQ(verified.status, 0) << verified.output;
  EXPECT_EQ(verified.output, "5 runs, none damaged.\n");
  EXPECT_EQ(Ask({"prune", "--before", "2026-12-01", "--keep-failed"}).output, "4 records taken out.\n");
  EXPECT_EQ(json::parse(Ask({"list", "--json"}).output).size(), 1U);
}

TEST_F(RecordsProgram, VerifyReadsEachTraceToItsEnd) {
  RunRecord cut = LaterPass();
  cut.identity.id = "019aa9a2-7000-7b11-8f3a-000000000000";
  cut.documents.back().content.pop_back();
  RunRecord abandoned = cut;
  abandoned.identity.id = "019aa9a2-8000-7b11-8f3a-000000000000";
  abandoned.end->ending = Ending::Abandoned;
  Fill(folder / "cut.orvane", ArchiveOf({cut, abandoned}));
  EXPECT_EQ(Ask({"import", folder / "cut.orvane"}).status, 0);
  const auto verified = Ask({"verify"});
  EXPECT_EQ(verified.status, 1);
  EXPECT_THAT(verified.output, HasSubstr(cut.identity.id + ": trace: "));
  EXPECT_THAT(verified.output, HasSubstr("\n7 runs, 1 damaged.\n")) << "one that was abandoned may lack its end";
}

TEST_F(RecordsProgram, AnAnswerThatCannotBeWrittenIs74) {
  const auto end = Run({"--store", store, "list", "--json"});
  EXPECT_EQ(end.status, 0);
  const auto full =
      Child({"/bin/sh", "-c", "exec \"$0\" --store \"$1\" list >/dev/full", ORVANE_RECORDS_PROGRAM, store})
          .WaitForEnd();
  EXPECT_EQ(full.status, 74);
}

TEST_F(RecordsProgram, ATerminalGetsColoursPagesAndLinesThatFit) {
  const Variable term("TERM", "xterm");
  const Variable pager("PAGER", "sed 's/^/paged: /'");
  const std::string list = OnTerminal({"list"});
  EXPECT_THAT(list, HasSubstr("\x1b[32mPASS\x1b[0m"));
  EXPECT_THAT(list, Not(HasSubstr("paged: "))) << "six lines fit on ten";
  EXPECT_THAT(list, HasSubstr("…"));
  EXPECT_THAT(OnTerminal({"show", kSmall}), HasSubstr("paged: \x1b[2mreason"));
  const Variable plain("NO_COLOR", "1");
  EXPECT_THAT(OnTerminal({"list"}), Not(HasSubstr("\x1b")));
  const Variable gone("PAGER", "no-such-pager");
  EXPECT_THAT(OnTerminal({"show", kSmall}), HasSubstr("FAIL")) << "without its pager a terminal gets it as it is";
}

TEST_F(RecordsProgram, ABadLineIs64) {
  for (const Arguments& words : {Arguments{}, Arguments{"erase"}, Arguments{"list", "--since", "soon"}}) {
    const auto end = Ask(words);
    EXPECT_EQ(end.status, 64);
    EXPECT_EQ(end.output, "");
    EXPECT_THAT(end.errors, testing::StartsWith("orvane-records: "));
  }
  EXPECT_EQ(Run({"--help"}).status, 0);
}

}  // namespace
}  // namespace orvane::test
