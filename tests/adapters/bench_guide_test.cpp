// The failures in the tables of docs/attach-a-bench.md stand there in the words that the program says. This holds the
// words; when each is said is held by the tests of the routes and of the Target's line.

#include <gtest/gtest.h>

#include <QRegularExpression>
#include <algorithm>
#include <cerrno>
#include <cstring>
#include <filesystem>
#include <fstream>
#include <iterator>

namespace orvane::test {
namespace {

namespace fs = std::filesystem;

std::string ContentOf(const fs::path& path) {
  std::ifstream file(path);
  return {std::istreambuf_iterator<char>(file), {}};
}

/// All matches' first groups.
std::vector<std::string> Found(const QString& text, const QRegularExpression& pattern) {
  std::vector<std::string> found;
  for (auto hits = pattern.globalMatch(text); hits.hasNext();) found.push_back(hits.next().captured(1).toStdString());
  return found;
}

/// The texts in a program's sources.
std::vector<std::string> LiteralsOf(const std::vector<fs::path>& sources) {
  std::vector<std::string> literals;
  for (const fs::path& source : sources) {
    static const QRegularExpression noCode("^ *(//|#include).*$", QRegularExpression::MultilineOption);
    static const QRegularExpression literal(R"-("((?:[^"\\\n]|\\.)*)")-");
    static const QRegularExpression escaped(R"(\\(["\\]))");
    const QString code = QString::fromStdString(ContentOf(source)).remove(noCode);
    for (const std::string& found : Found(code, literal)) {
      if (!found.empty()) literals.push_back(QString::fromStdString(found).replace(escaped, "\\1").toStdString());
    }
  }
  return literals;
}

std::vector<std::string> WhatTheWiresSay() {
  const fs::path source = ORVANE_SOURCES;
  std::vector<fs::path> sources{source / "adapters" / "qt_serial_control.cpp", source / "app" / "device_list.cpp"};
  for (const char* folder : {"gpib", "serial"}) {
    for (const auto& entry : fs::directory_iterator(source / "adapters" / folder)) {
      if (entry.path().extension() == ".cpp") sources.push_back(entry.path());
    }
  }
  auto said = LiteralsOf(sources);
  // The system's own words.
  for (const int error : {ECONNREFUSED, EHOSTUNREACH}) said.emplace_back(std::strerror(error));
  return said;
}

/// Whether the piece is a part of one literal, or the end of one, whole ones, and the beginning of another.
bool IsSaid(std::string_view piece, const std::vector<std::string>& literals, bool begun = false) {
  return std::any_of(literals.begin(), literals.end(), [&](const std::string& literal) {
    if (begun ? literal.starts_with(piece) : literal.find(piece) != std::string::npos) return true;
    // What this literal says of it: all, or at the piece's beginning its end.
    for (std::size_t from = 0; from < literal.size(); ++from) {
      const std::string_view said = std::string_view(literal).substr(from);
      if (piece.starts_with(said) && IsSaid(piece.substr(said.size()), literals, true)) return true;
      if (begun) return false;
    }
    return false;
  });
}

/// The fixed pieces between what differs from one failure to the next: left out, a number, a name in quotes.
std::vector<std::string> PiecesOf(const std::string& text) {
  static const QRegularExpression differs(R"-(\.\.\.|[0-9]+(?: s)?|"[a-z]+")-");
  std::vector<std::string> pieces;
  for (const QString& piece : QString::fromStdString(text).split(differs, Qt::SkipEmptyParts)) {
    pieces.push_back(piece.toStdString());
  }
  return pieces;
}

bool AllIsSaid(const std::string& text, const std::vector<std::string>& literals) {
  const auto pieces = PiecesOf(text);
  return !pieces.empty() &&
         std::all_of(pieces.begin(), pieces.end(), [&](const auto& piece) { return IsSaid(piece, literals); });
}

/// What stands in backticks in the first column of the tables of texts.
std::vector<std::string> TextsOfTheTables() {
  std::ifstream guide(BENCH_ATTACHING_GUIDE);
  std::vector<std::string> texts;
  bool inTable = false;
  for (std::string line; std::getline(guide, line);) {
    inTable = line.starts_with("| text") || (inTable && line.starts_with("|"));
    if (!inTable) continue;
    static const QRegularExpression inBackticks("`([^`]+)`");
    const auto quoted = Found(QString::fromStdString(line.substr(0, line.find(" | "))), inBackticks);
    texts.insert(texts.end(), quoted.begin(), quoted.end());
  }
  return texts;
}

TEST(BenchGuide, QuotesFailuresInTheWordsThatTheProgramSays) {
  const auto literals = WhatTheWiresSay();
  const auto texts = TextsOfTheTables();
  EXPECT_GT(texts.size(), 30U);
  for (const std::string& text : texts) EXPECT_TRUE(AllIsSaid(text, literals)) << text;
}

TEST(BenchGuide, WouldNotPassWithOtherWords) {
  const auto literals = WhatTheWiresSay();
  for (const char* text :
       {"no answer within 10 s.", "the device is away. Is it unplugged?", "the device is in use by a program",
        "permission denied. Are you in the group \"dialout\"?", "no connection: Connection refused by the host.",
        "the gateway reports error 3, the device cannot be reached.",
        "Route native: nobody is at the addresses 0 to 30."}) {
    EXPECT_FALSE(AllIsSaid(text, literals)) << text;
  }
}

}  // namespace
}  // namespace orvane::test
