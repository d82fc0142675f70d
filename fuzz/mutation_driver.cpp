// The share of a fuzz target that every test run has: its corpus as it stands, and so many mutations of it, the same
// ones each time. An input that the target does not survive is told in hexadecimal.
//   TARGET_mutations CORPUS COUNT [DICTIONARY]

#include <unistd.h>

#include <algorithm>
#include <csignal>
#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <random>
#include <string>
#include <vector>

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size);

namespace {

constexpr std::size_t kLongest = 4096;

std::string current;

/// Says which input it was, with what may be called in a signal handler alone.
void TellInput(int signal) {
  constexpr char kDigits[] = "0123456789ABCDEF";
  constexpr char kIntroduction[] = "The input, in hexadecimal: ";
  (void)!::write(STDERR_FILENO, kIntroduction, sizeof kIntroduction - 1);
  for (const char c : current) {
    const auto byte = static_cast<unsigned char>(c);
    const char pair[] = {kDigits[byte / 16], kDigits[byte % 16]};
    (void)!::write(STDERR_FILENO, pair, sizeof pair);
  }
  (void)!::write(STDERR_FILENO, "\n", 1);
  (void)std::signal(signal, SIG_DFL);
  (void)std::raise(signal);
}

std::string ContentOf(const std::filesystem::path& path) {
  std::ifstream file(path, std::ios::binary);
  return {std::istreambuf_iterator<char>(file), std::istreambuf_iterator<char>()};
}

/// In the order of their names, so that every machine has the same.
std::vector<std::string> CorpusIn(const std::filesystem::path& folder) {
  std::vector<std::filesystem::path> paths;
  for (const auto& entry : std::filesystem::directory_iterator(folder)) paths.push_back(entry.path());
  std::sort(paths.begin(), paths.end());
  std::vector<std::string> corpus;
  for (const auto& path : paths) corpus.push_back(ContentOf(path));
  return corpus;
}

/// The words between the quotes of a libFuzzer dictionary; `\xHH` is a byte, `\"` and `\\` themselves.
std::vector<std::string> WordsIn(const char* dictionary) {
  std::vector<std::string> words;
  std::ifstream file(dictionary);
  for (std::string line; std::getline(file, line);) {
    const auto first = line.find('"');
    const auto last = line.rfind('"');
    if (line.starts_with('#') || first == last) continue;
    std::string word;
    for (std::size_t at = first + 1; at < last; ++at) {
      if (line[at] != '\\') {
        word += line[at];
      } else if (line[++at] == 'x') {
        word += static_cast<char>(std::stoi(line.substr(at + 1, 2), nullptr, 16));
        at += 2;
      } else {
        word += line[at];
      }
    }
    words.push_back(word);
  }
  return words;
}

class Mutator {
 public:
  Mutator(const std::vector<std::string>& corpus, const std::vector<std::string>& words)
      : corpus_(corpus), words_(words) {}

  std::string Next() {
    std::string input = OneOf(corpus_);
    for (std::size_t change = 0; change <= Below(4); ++change) Change(input);
    if (input.size() > kLongest) input.resize(kLongest);
    return input;
  }

 private:
  /// The library's own distributions are not the same everywhere.
  std::size_t Below(std::size_t bound) { return bound == 0 ? 0 : static_cast<std::size_t>(random_() % bound); }
  const std::string& OneOf(const std::vector<std::string>& texts) { return texts[Below(texts.size())]; }
  char Byte() { return static_cast<char>(Below(256)); }

  void Change(std::string& input) {
    enum { kFlip, kReplace, kInsert, kErase, kDouble, kCut, kSplice, kWord, kKinds };
    const std::size_t at = Below(input.size() + 1);
    const std::size_t some = Below(std::min<std::size_t>(input.size() - at, 64) + 1);
    switch (Below(kKinds)) {
      case kFlip:
        if (at < input.size()) input[at] = static_cast<char>(input[at] ^ (1 << Below(8)));
        break;
      case kReplace:
        if (at < input.size()) input[at] = Byte();
        break;
      case kInsert:
        input.insert(at, 1 + Below(8), Byte());
        break;
      case kErase:
        input.erase(at, some);
        break;
      case kDouble:
        input.insert(Below(input.size() + 1), std::string(input, at, some));
        break;
      case kCut:
        input.resize(at);
        break;
      case kSplice: {
        const std::string& other = OneOf(corpus_);
        input.replace(at, some, other.substr(Below(other.size() + 1)));
        break;
      }
      case kWord:
        if (!words_.empty()) input.replace(at, Below(2) == 0 ? 0 : some, OneOf(words_));
        break;
      default:
        break;
    }
  }

  const std::vector<std::string>& corpus_;
  const std::vector<std::string>& words_;
  std::mt19937_64 random_{1};
};

void Run(const std::string& input) {
  current = input;
  LLVMFuzzerTestOneInput(reinterpret_cast<const std::uint8_t*>(current.data()), current.size());
}

}  // namespace

int main(int argc, char** argv) {
  if (argc < 3) return std::fprintf(stderr, "usage: %s CORPUS COUNT [DICTIONARY]\n", argv[0]), 64;
  const auto corpus = CorpusIn(argv[1]);
  if (corpus.empty()) return std::fprintf(stderr, "%s: there is nothing in it\n", argv[1]), 66;
  const auto words = argc > 3 ? WordsIn(argv[3]) : std::vector<std::string>{};
  for (const int signal : {SIGABRT, SIGSEGV, SIGFPE}) (void)std::signal(signal, &TellInput);
  for (const std::string& input : corpus) Run(input);
  Mutator mutator(corpus, words);
  const long count = std::strtol(argv[2], nullptr, 10);
  for (long i = 0; i < count; ++i) Run(mutator.Next());
  std::printf("%zu inputs of the corpus, %ld mutations\n", corpus.size(), count);
  return 0;
}
