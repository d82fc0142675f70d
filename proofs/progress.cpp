#include "progress.h"

#include <fstream>
#include <sstream>

namespace orvane::proofs {
namespace {

/// Short enough to be read, on one line.
std::string OneLine(std::string text) {
  constexpr std::size_t kMostShown = 400;
  if (text.size() > kMostShown) text.replace(kMostShown, std::string::npos, "...");
  for (char& c : text) c = c == '\n' || c == '\r' ? ' ' : c;
  return text;
}

}  // namespace

void Progress::Read(const std::filesystem::path& file) {
  std::ifstream in(file);
  for (std::string line; std::getline(in, line);) {
    std::istringstream words(line);
    std::string word;
    words >> word;
    if (word == "next") words >> next;
    if (word == "figure") {
      std::string name;
      words >> name >> figures[name];
    }
    if (word == "found") {
      std::uint64_t number = 0;
      words >> number >> std::ws;
      std::getline(words, word);
      found[number].push_back(word);
    }
  }
}

void Progress::Write(const std::filesystem::path& file) const {
  const std::filesystem::path fresh = file.string() + ".new";
  std::ofstream out(fresh);
  out << "next " << next << "\n";
  for (const auto& [name, count] : figures) out << "figure " << name << " " << count << "\n";
  for (const auto& [number, texts] : found) {
    for (const std::string& text : texts) out << "found " << number << " " << text << "\n";
  }
  out.close();
  std::filesystem::rename(fresh, file);
}

std::string Told(std::uint64_t number, const Outcome& outcome) {
  std::ostringstream lines;
  for (const auto& [name, count] : outcome.figures)
    lines << "figure " << number << " " << name << " " << count << "\n";
  for (const std::string& text : outcome.findings) lines << "found " << number << " " << OneLine(text) << "\n";
  lines << "done " << number << "\n";
  return lines.str();
}

void Ledger::Take(const std::string& line) {
  std::istringstream words(line);
  std::string word;
  std::uint64_t number = 0;
  words >> word >> number >> std::ws;
  if (word == "figure") {
    std::string name;
    long count = 0;
    words >> name >> count;
    // A case that is looked at again has been counted before.
    if (number >= begin_) kept_.figures[name] += count;
  } else if (word == "found") {
    std::string text;
    std::getline(words, text);
    Found(number, text);
  } else if (word == "done") {
    Done(number);
  }
}

void Ledger::Done(std::uint64_t number) {
  const auto fresh = fresh_.find(number);
  if (fresh == fresh_.end()) {
    kept_.found.erase(number);
  } else {
    kept_.found[number] = fresh->second;
    fresh_.erase(fresh);
  }
  if (number >= next_) done_.insert(number);
  while (done_.erase(next_) != 0) ++next_;
}

std::vector<std::uint64_t> Ledger::WithFindings() const {
  std::vector<std::uint64_t> numbers;
  for (const auto& [number, texts] : kept_.found) numbers.push_back(number);
  return numbers;
}

Progress Ledger::Now() const {
  Progress now = kept_;
  now.next = next_;
  return now;
}

}  // namespace orvane::proofs
