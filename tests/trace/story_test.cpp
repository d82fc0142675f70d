#include "app/trace/story.h"

#include <unistd.h>

#include <filesystem>
#include <fstream>
#include <sstream>

#include "app/trace/trace_file.h"
#include "link/link_rig.h"

namespace orvane::test {
namespace {

namespace fs = std::filesystem;

class StoryTest : public testing::Test {
 protected:
  StoryTest() { fs::create_directory(folder_); }
  ~StoryTest() override { fs::remove_all(folder_); }

  std::string StoryOf(const std::string& content) {
    std::ofstream(path_) << content;
    return Story();
  }
  std::string Story() {
    std::ostringstream out;
    TellStory(path_, out);
    return out.str();
  }

  fs::path folder_ = fs::temp_directory_path() / ("orvane_story_" + std::to_string(::getpid()));
  std::string path_ = (folder_ / "run.trace").string();
};

const std::string kHead = R"({"trace":1,"program":"orvane 0.1.0","started":"2026-03-01T08:15:00Z","part":1})"
                          "\n";

TEST_F(StoryTest, TellsWhoSaidWhatToWhom) {
  const std::string records = R"~({"t":0.5,"link":"GPIB 1","event":"out","text":"*IDN?"}
{"t":0.6,"link":"GPIB 1","event":"in","text":"MAKER,TEST SET\n"}
{"t":1.0,"link":"COM1","event":"open","says":"115200,N,8,1"}
{"t":1.1,"link":"COM1","event":"out","hex":"02 14"}
{"t":1.1001,"link":"COM1","event":"out","hex":"30 01 00 3E 00 0F 02","says":"rfpw 1 62 (rf_param_write)"}
{"t":1.106,"link":"COM1","event":"in","hex":"02 14 00 30"}
{"t":1.1066,"link":"COM1","event":"in","hex":"00 00 00 30 02","says":"rfpw: status 0"}
{"t":1.2,"link":"COM1","event":"out","hex":"20 20 02","says":"ti (tm_init)"}
{"t":1.3,"link":"COM1","event":"in","hex":"02","says":"ti: status 5"}
{"t":1.4,"link":"COM1","event":"out","hex":"20 20 02","says":"tms 1 (tm_mode_set)"}
{"t":3.901,"link":"COM1","event":"out","hex":"20 20 02","says":"tms 0 (tm_mode_set)"}
{"t":4.0,"link":"COM1","event":"in","hex":"55 55"}
{"t":4.1,"link":"COM1","event":"line","says":"frame error"}
{"t":6.5,"link":"COM1","event":"close"}
{"t":6.6,"link":"GPIB 5","event":"failure","says":"no answer within 300 ms"}
{"t":6.7,"link":"station","event":"failure","says":"Type mismatch"}
)~";
  const std::string story = R"~(orvane 0.1.0, trace of a run that began at 2026-03-01T08:15:00Z
      0.5000 s  -> GPIB 1: *IDN?
      0.6000 s  <- GPIB 1: MAKER,TEST SET\n
      1.0000 s     Target: open: 115200,N,8,1
      1.1001 s  -> Target: rfpw 1 62 (rf_param_write)
      1.1066 s  <- Target: rfpw: status 0, after 6.5 ms
      1.2000 s  -> Target: ti (tm_init)
      1.3000 s  !! Target: ti: status 5, after 100.0 ms
      1.4000 s  -> Target: tms 1 (tm_mode_set)
      3.9010 s  !! Target: no reply to "tms 1 (tm_mode_set)" for 2.501 s
      3.9010 s  -> Target: tms 0 (tm_mode_set)
      4.1000 s     Target: the line: frame error
      6.5000 s  !! Target: no reply to "tms 0 (tm_mode_set)" for 2.599 s; bytes that are no whole reply came: 55 55
      6.5000 s     Target: close
      6.6000 s  !! GPIB 5: failure: no answer within 300 ms
      6.7000 s  !! station: failure: Type mismatch
)~";
  EXPECT_EQ(StoryOf(kHead + records), story);
}

TEST_F(StoryTest, NamesDamagedLinesAndGoesOn) {
  const std::string story = StoryOf(kHead + R"~({"t":0.5,"link":"GPIB 1","event":"out","text":"*RST"}
{"t":0.6,"link":"GPI
)~" + std::string("\x00\xFF\xFE\n", 4) +
                                    R"~({"t":0.7,"link":"GPIB 1","event":"out","text":"OUTPUT ON"}
{"t":0.8,"link":"COM1","event":"out","hex":"20","says":"ti (tm_init)"}
{"t":0.9,"li)~");
  EXPECT_THAT(story,
              testing::HasSubstr("?? line 3 of " + path_ + " is damaged and passed over\n?? line 4 of " + path_));
  EXPECT_THAT(story, testing::HasSubstr("-> GPIB 1: OUTPUT ON\n"));
  EXPECT_THAT(story, testing::HasSubstr("?? line 7 of "));
  EXPECT_THAT(story, testing::EndsWith("!! Target: no reply to \"ti (tm_init)\" up to the end of the trace\n"));
}

TEST_F(StoryTest, ReadsThePartsInOrder) {
  const auto part = [](int number, const char* text) {
    return R"({"trace":1,"program":"p","started":"s","part":)" + std::to_string(number) + "}\n" + R"({"t":)" +
           std::to_string(number) + R"(,"link":"GPIB 1","event":"out","text":")" + text + "\"}\n";
  };
  std::ofstream(path_ + ".2") << part(1, "one");
  std::ofstream(path_ + ".1") << part(2, "two");
  EXPECT_EQ(StoryOf(part(3, "three")),
            "p, trace of a run that began at s\n"
            "      1.0000 s  -> GPIB 1: one\n"
            "      2.0000 s  -> GPIB 1: two\n"
            "      3.0000 s  -> GPIB 1: three\n");
}

TEST_F(StoryTest, OfAFileThatIsMissingIsAFault) { EXPECT_THROW(Story(), TraceFault); }

TEST_F(StoryTest, OfAnEmptyFileIsEmpty) { EXPECT_EQ(StoryOf(""), ""); }

TEST_F(StoryTest, NeverFailsOnRandomBytes) {
  unsigned state = 7;
  std::string noise;
  for (int i = 0; i < 20000; ++i) {
    state = state * 1664525U + 1013904223U;
    noise += static_cast<char>(state >> 24U);
  }
  EXPECT_THAT(StoryOf(kHead + noise), testing::HasSubstr("is damaged and passed over"));
}

TEST_F(StoryTest, OfWhatIsNoTraceIsAFaultAndTellsNothing) {
  for (const std::string& content : {std::string("[]\n{}\n"), std::string(20000, '\0'), std::string("\n\n\n"),
                                     std::string(std::size_t{3} << 20, 'x')}) {
    std::ofstream(path_) << content;
    std::ostringstream out;
    EXPECT_THROW(TellStory(path_, out), NoTrace) << content.substr(0, 10);
    EXPECT_EQ(out.str(), "");
  }
}

TEST_F(StoryTest, NamesTheDamagedLinesAheadOfTheFirstRecordToo) {
  const std::string story = StoryOf("\n{\n" + kHead);
  EXPECT_THAT(story, testing::StartsWith("?? line 1 of " + path_ + " is damaged and passed over\n?? line 2 of "));
  EXPECT_THAT(story, testing::HasSubstr("orvane 0.1.0, trace of a run"));
}

TEST_F(StoryTest, NothingInADamagedTraceMovesTheCursor) {
  EXPECT_EQ(StoryOf(R"({"trace":1,"program":"p\u001b[2J","started":"s\n"}
{"t":1,"link":"COM1\u001b","event":"out","hex":"20","says":"ti\r"}
{"t":2,"link":"COM1","event":"no\u007fise"}
)"),
            "p\\x1B[2J, trace of a run that began at s\\n\n"
            "      1.0000 s  -> Target: ti\\r\n"
            "      2.0000 s     Target: no\\x7Fise\n"
            "      2.0000 s  !! Target: no reply to \"ti\\r\" up to the end of the trace\n");
}

TEST_F(StoryTest, ATimeThatIsNoneIsADamagedLine) {
  for (const char* time : {"1e300", "-1e300", "9223372037", "188888888888888888888"}) {
    EXPECT_THAT(StoryOf(kHead + R"({"t":)" + time + R"(,"link":"GPIB 1","event":"out","text":"*RST"})" + "\n"),
                testing::HasSubstr("?? line 2 of "))
        << time;
  }
}

TEST_F(StoryTest, ALineThatLacksAByteIsADamagedOne) {
  for (const char* hex : {"02 ", "02 1", "0", "02  14"}) {
    EXPECT_THAT(StoryOf(kHead + R"({"t":1,"link":"COM1","event":"in","hex":")" + hex + "\"}\n"),
                testing::HasSubstr("?? line 2 of "))
        << hex;
  }
}

TEST_F(StoryTest, ALineOfAnyDepthIsRead) {
  constexpr int kDepth = 300'000;
  const std::string nest = std::string(kDepth, '[') + std::string(kDepth, ']');
  const std::string story = StoryOf(kHead + nest + R"(
{"t":0.5,"link":"GPIB 1","event":"out","strange":)" +
                                    nest + R"(,"text":"*RST"}
)");
  EXPECT_THAT(story, testing::HasSubstr("?? line 2 of "));
  EXPECT_THAT(story, testing::HasSubstr("-> GPIB 1: *RST\n"));
}

}  // namespace
}  // namespace orvane::test
