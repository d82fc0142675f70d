// The making of what a profile has of the engineer's word.

#include <gtest/gtest.h>
#include <poll.h>
#include <pty.h>
#include <sys/wait.h>
#include <unistd.h>

#include "program/programs.h"

namespace orvane::test {
namespace {

using testing::HasSubstr;
using testing::MatchesRegex;
using testing::Not;

Child::End Made(const std::string& line) {
  Child program({ORVANE_PROGRAM, "--make-engineer-secret"});
  if (!line.empty()) program.Send(line);
  program.CloseInput();
  return program.WaitForEnd();
}

TEST(EngineerSecret, IsMadeOfALineOfInputAndAProfileTakesIt) {
  const auto made = Made("열려라 sesame");
  EXPECT_EQ(made.status, 0);
  EXPECT_EQ(made.errors, "");
  EXPECT_THAT(made.output, MatchesRegex("engineer_secret = \"[$]argon2id[$][^\"\n]+\"\n"));
  EXPECT_THAT(made.output, Not(HasSubstr("sesame")));
  const TempFolder folder;
  Fill(folder / "bench.toml", made.output);
  const auto printed = RunOrvane({"--print-profile", "--profile", folder / "bench.toml"});
  EXPECT_EQ(printed.status, 0) << printed.errors;
  EXPECT_THAT(printed.output, HasSubstr("\n" + made.output));
}

TEST(EngineerSecret, WhatIsNoneIsAFaultOfTheProfileAndKeepsNobodyFromMakingOne) {
  const TempFolder folder;
  std::filesystem::create_directories(folder.Path() / "orvane");
  Fill(folder / "orvane/profile.toml", "# the word\nengineer_secret = \"sesame\"\n");
  const Variable config("XDG_CONFIG_HOME", folder.Path().string());
  const auto end = RunOrvane({"--initialize"});
  EXPECT_EQ(end.status, 64);
  EXPECT_EQ(end.errors, "orvane: " + (folder / "orvane/profile.toml") +
                            ":2: engineer_secret: it is nothing that --make-engineer-secret has made\n");
  EXPECT_EQ(Made("sesame").status, 0);
}

TEST(EngineerSecret, NoWordIsNone) {
  const auto none = Made("");
  EXPECT_EQ(none.status, 66);
  EXPECT_EQ(none.errors, "orvane: --make-engineer-secret: there is no word\n");
  const std::pair<std::string, std::string> rows[] = {{"\r", "the word is empty"},
                                                      {"a\tb", "the word holds a control character"},
                                                      {"\xFF", "the word is not in UTF-8"},
                                                      {std::string(1001, 'a'), "the word is longer than 1000 bytes"}};
  for (const auto& [line, fault] : rows) {
    const auto end = Made(line);
    EXPECT_EQ(end.status, 65);
    EXPECT_EQ(end.output, "");
    EXPECT_EQ(end.errors, "orvane: --make-engineer-secret: " + fault + "\n");
  }
  EXPECT_EQ(Made(std::string(1000, 'a')).status, 0) << "the longest";
}

/// The program on a terminal, and what it shows there.
class OnATerminal : public testing::Test {
 protected:
  OnATerminal() {
    process_ = ::forkpty(&master_, nullptr, nullptr, nullptr);
    if (process_ != 0) return;
    ::execl(ORVANE_PROGRAM, ORVANE_PROGRAM, "--make-engineer-secret", static_cast<char*>(nullptr));
    ::_exit(127);
  }
  ~OnATerminal() override {
    if (process_ > 0) ::kill(process_, SIGKILL);
    (void)End();
    ::close(master_);
  }

  bool Shows(const std::string& text) {
    constexpr int kPatienceMs = 120000;
    while (shown_.find(text) == std::string::npos) {
      pollfd more{master_, POLLIN, 0};
      char piece[4096];
      if (::poll(&more, 1, kPatienceMs) <= 0) return false;
      const auto count = ::read(master_, piece, sizeof piece);
      if (count <= 0) return false;
      shown_.append(piece, static_cast<std::size_t>(count));
    }
    return true;
  }
  void Type(const std::string& text) const { (void)!::write(master_, text.data(), text.size()); }
  int End() {
    if (process_ <= 0) return status_;
    ::waitpid(process_, &status_, 0);
    process_ = -1;
    return status_;
  }
  [[nodiscard]] bool Echoes() const {
    termios now{};
    return ::tcgetattr(master_, &now) == 0 && (now.c_lflag & ECHO) != 0;
  }

  int master_ = -1;
  pid_t process_ = -1;
  int status_ = 0;
  std::string shown_;
};

TEST_F(OnATerminal, TheWordIsAskedForTwiceAndNotShown) {
  ASSERT_TRUE(Shows("The engineer's word: ")) << shown_;
  EXPECT_FALSE(Echoes());
  Type("sesame\n");
  ASSERT_TRUE(Shows("The same again: ")) << shown_;
  Type("sesame\n");
  ASSERT_TRUE(Shows("engineer_secret = \"$argon2id$")) << shown_;
  EXPECT_EQ(End(), 0);
  EXPECT_THAT(shown_, Not(HasSubstr("sesame")));
  EXPECT_TRUE(Echoes());
}

TEST_F(OnATerminal, TwoDifferentWordsAreNone) {
  ASSERT_TRUE(Shows("word: "));
  Type("sesame\n");
  ASSERT_TRUE(Shows("again: "));
  Type("sesam\n");
  ASSERT_TRUE(Shows("they are not the same")) << shown_;
  EXPECT_EQ(WEXITSTATUS(End()), 65);
  EXPECT_TRUE(Echoes());
}

TEST_F(OnATerminal, WhoBreaksItOffSeesWhatHeTypesAgain) {
  ASSERT_TRUE(Shows("word: "));
  EXPECT_FALSE(Echoes());
  Type("\x03");
  const int status = End();
  EXPECT_TRUE(WIFSIGNALED(status) && WTERMSIG(status) == SIGINT) << status;
  EXPECT_TRUE(Echoes());
}

}  // namespace
}  // namespace orvane::test
