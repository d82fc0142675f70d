#include "app/trace/trace_file.h"

#include <sys/resource.h>
#include <unistd.h>

#include <csignal>
#include <filesystem>
#include <fstream>
#include <optional>

#include "app/trace/trace.h"
#include "link/link_rig.h"

namespace orvane::test {
namespace {

namespace fs = std::filesystem;

std::vector<std::string> LinesIn(const std::string& path) {
  std::vector<std::string> lines;
  std::ifstream file(path);
  for (std::string line; std::getline(file, line);) lines.push_back(line);
  return lines;
}

class TraceOnDisk : public testing::Test {
 protected:
  TraceOnDisk() { fs::create_directory(folder_); }
  ~TraceOnDisk() override { fs::remove_all(folder_); }

  void Open(TraceLimits limits = {}) {
    file_.reset();
    file_.emplace(path_, limits, [](int part) { return LineOf(TraceHead{"test", "now", part}); });
    file_->onBroken = [this](const std::string& text) { broken_.push_back(text); };
  }
  std::string FaultOfOpening(const std::string& path) {
    path_ = path;
    try {
      Open();
    } catch (const TraceFault& fault) {
      return fault.what();
    }
    return "no fault";
  }

  fs::path folder_ = fs::temp_directory_path() / ("orvane_trace_" + std::to_string(::getpid()));
  std::string path_ = (folder_ / "run.trace").string();
  std::optional<TraceFile> file_;
  std::vector<std::string> broken_;
};

TEST_F(TraceOnDisk, KeepsTheNewestPartsAndNoLineIsCutOrLostBetweenThem) {
  Open({.partBytes = 1000, .parts = 3});
  for (int i = 0; i < 200; ++i) file_->Append("line " + std::to_string(i) + std::string(20, '.'));
  file_->Flush();
  const auto parts = PartsOf(path_, 3);
  EXPECT_EQ(parts, (std::vector<std::string>{path_ + ".2", path_ + ".1", path_}));
  EXPECT_FALSE(fs::exists(path_ + ".3"));
  int number = -1;
  int last = 0;
  for (const auto& part : parts) {
    EXPECT_LE(fs::file_size(part), 1000U);
    const auto lines = LinesIn(part);
    ASSERT_FALSE(lines.empty());
    const auto head = TraceHeadOf(lines[0]);
    ASSERT_TRUE(head);
    if (number < 0) number = std::stoi(lines[1].substr(5));
    for (std::size_t i = 1; i < lines.size(); ++i) {
      EXPECT_EQ(lines[i], "line " + std::to_string(number) + std::string(20, '.'));
      ++number;
    }
    EXPECT_GT(head->part, last);
    last = head->part;
  }
  EXPECT_EQ(number, 200);
}

TEST_F(TraceOnDisk, ANewRunKeepsTheOneBefore) {
  Open();
  file_->Append("first");
  Open();
  file_->Append("second");
  file_.reset();
  EXPECT_EQ(LinesIn(path_ + ".1").at(1), "first");
  EXPECT_EQ(LinesIn(path_).at(1), "second");
}

TEST_F(TraceOnDisk, AFileThatIsNoTraceIsLeftAlone) {
  std::ofstream(path_) << "precious\n";
  EXPECT_THAT(FaultOfOpening(path_), testing::HasSubstr("there is a file that is no trace"));
  EXPECT_EQ(LinesIn(path_).at(0), "precious");
  EXPECT_THAT(FaultOfOpening(folder_), testing::HasSubstr("Is a directory"));
  EXPECT_THAT(FaultOfOpening(folder_ / "none" / "x"), testing::HasSubstr("No such file or directory"));
}

TEST_F(TraceOnDisk, AFullDiskIsToldOnceAndNothingFails) {
  path_ = "/dev/full";
  Open();
  for (int i = 0; i < 5; ++i) {
    file_->Append("line");
    file_->Flush();
  }
  EXPECT_EQ(broken_, std::vector<std::string>{"/dev/full: No space left on device"});
}

TEST_F(TraceOnDisk, ADiskThatFillsUpLaterKeepsWhatItTook) {
  Open();
  (void)std::signal(SIGXFSZ, SIG_IGN);
  rlimit before{};
  ::getrlimit(RLIMIT_FSIZE, &before);
  const rlimit small{2000, before.rlim_max};
  ASSERT_EQ(::setrlimit(RLIMIT_FSIZE, &small), 0);
  for (int i = 0; i < 100; ++i) {
    file_->Append(std::string(50, 'x'));
    file_->Flush();
  }
  ::setrlimit(RLIMIT_FSIZE, &before);
  EXPECT_EQ(broken_.size(), 1U);
  EXPECT_EQ(fs::file_size(path_), 2000U);
}

TEST_F(TraceOnDisk, ARecordIsOnTheDiskAQuarterOfASecondLaterAndAFailureAtOnce) {
  VirtualEventLoop loop;
  Trace trace(loop, path_);
  trace.Note("COM1", "out", "\x02\x14");
  EXPECT_EQ(LinesIn(path_).size(), 0U);
  while (loop.Now() < std::chrono::milliseconds(250)) loop.Yield(std::chrono::milliseconds(250));
  EXPECT_EQ(LinesIn(path_).size(), 2U);
  trace.Note("COM1", "in", "\x02");
  EXPECT_EQ(LinesIn(path_).size(), 2U);
  trace.Note("GPIB 1", "failure", {}, "gone");
  EXPECT_EQ(LinesIn(path_).size(), 4U);
}

TEST(TraceRecords, ComeBackAsTheyWereWrittenToTheByte) {
  std::string all;
  for (int byte = 0; byte < 256; ++byte) all += static_cast<char>(byte);
  for (const char* link : {"COM1", "GPIB 5"}) {
    const TraceRecord record{std::chrono::microseconds(1234567), link, "in", all, "\"words\"\n\xFF"};
    const auto back = TraceRecordOf(LineOf(record));
    ASSERT_TRUE(back);
    EXPECT_EQ(back->bytes, all);
    EXPECT_EQ(back->link, link);
    EXPECT_NEAR(static_cast<double>(back->at.count()), 1234567000, 1000);
  }
}

TEST(TraceRecords, ThatAreDamagedAreNone) {
  for (const char* line :
       {"", "{", "[1]", "7", "{}", R"({"t":"x","link":"COM1","event":"in"})", R"({"t":1,"link":"COM1"})",
        R"({"t":1,"link":"COM1","event":"in","hex":"0"})", R"({"t":1,"link":"COM1","event":"in","hex":"02 1x"})",
        R"({"t":1,"link":"COM1","event":"in","hex":"0214"})", R"({"t":1,"link":"GPIB 1","event":"in","text":"€"})"}) {
    EXPECT_FALSE(TraceRecordOf(line)) << line;
  }
}

}  // namespace
}  // namespace orvane::test
