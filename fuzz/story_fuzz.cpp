// A trace file, told as a story. Every line of it is told, or named as damaged; nothing in it moves the cursor of a
// terminal; and it is the same story twice.

#include <fcntl.h>
#include <sys/mman.h>
#include <unistd.h>

#include <algorithm>
#include <sstream>

#include "app/trace/story.h"
#include "app/trace/trace_file.h"
#include "app/trace/trace_record.h"
#include "require.h"

namespace {

using namespace orvane;
using fuzz::Require;

/// No value for what is refused as no trace.
std::string StoryOf(const std::string& path) {
  std::ostringstream story;
  if (!fuzz::Done<TraceFault>([&] { TellStory(path, story); })) return "";
  return story.str();
}

std::ptrdiff_t DamagedLines(const std::string& content) {
  std::ptrdiff_t damaged = 0;
  std::istringstream lines(content);
  for (std::string line; std::getline(lines, line);) {
    if (!TraceRecordOf(line) && !TraceHeadOf(line)) ++damaged;
  }
  return damaged;
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  static const int file = ::memfd_create("trace", MFD_CLOEXEC);
  static const std::string path = "/proc/self/fd/" + std::to_string(file);
  const std::string content(data, data + size);
  Require(::ftruncate(file, 0) == 0 && ::pwrite(file, data, size, 0) == static_cast<ssize_t>(size), "no room");

  const std::string story = StoryOf(path);
  const bool moves = std::any_of(story.begin(), story.end(), [](char c) {
    return (static_cast<unsigned char>(c) < 0x20 && c != '\n') || c == '\x7F';
  });
  Require(!moves, "a control character in the story");
  std::ptrdiff_t named = 0;
  std::istringstream told(story);
  for (std::string line; std::getline(told, line);) {
    named += line.starts_with("?? line ") && line.ends_with(" is damaged and passed over") ? 1 : 0;
  }
  Require(story.empty() || named == DamagedLines(content), "damaged lines that are not named");
  Require(StoryOf(path) == story, "another story from the same trace");
  return 0;
}
