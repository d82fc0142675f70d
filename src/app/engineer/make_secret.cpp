#include "app/engineer/make_secret.h"

#include <termios.h>
#include <unistd.h>

#include <array>
#include <csignal>
#include <optional>
#include <ostream>
#include <string>
#include <utility>

#include "app/command_line.h"
#include "app/engineer/word_digest.h"
#include "app/unit_identity.h"

namespace orvane {
namespace {

constexpr std::size_t kLongestWord = 1000;
constexpr std::array kEnds{SIGINT, SIGTERM, SIGHUP};

/// As the terminal was. A signal's handler reaches nothing else.
termios shown{};  // NOLINT(cppcoreguidelines-avoid-non-const-global-variables)

extern "C" void ShowAndEnd(int signal) {
  (void)::tcsetattr(STDIN_FILENO, TCSAFLUSH, &shown);
  (void)::raise(signal);
}

/// For as long as it is there, what is typed is not shown; a signal that ends the program has it shown again.
class Unseen {
 public:
  Unseen() {
    (void)::tcgetattr(STDIN_FILENO, &shown);
    struct sigaction ends {};
    ends.sa_handler = &ShowAndEnd;
    // Raised again within its handler, it strikes with what it does to any program.
    ends.sa_flags = static_cast<int>(SA_RESETHAND | SA_NODEFER);
    for (const int signal : kEnds) (void)::sigaction(signal, &ends, nullptr);
    termios unseen = shown;
    unseen.c_lflag &= ~static_cast<tcflag_t>(ECHO);
    (void)::tcsetattr(STDIN_FILENO, TCSAFLUSH, &unseen);
  }
  Unseen(const Unseen&) = delete;
  Unseen& operator=(const Unseen&) = delete;
  ~Unseen() {
    (void)::tcsetattr(STDIN_FILENO, TCSAFLUSH, &shown);
    for (const int signal : kEnds) (void)std::signal(signal, SIG_DFL);
  }
};

/// Without its end; no value at the end of the input. Byte by byte: nothing of it is left in a buffer.
std::optional<std::string> LineOfInput() {
  std::string line;
  line.reserve(kLongestWord + 1);
  char byte = 0;
  bool any = false;
  while (line.size() <= kLongestWord && ::read(STDIN_FILENO, &byte, 1) == 1) {
    any = true;
    if (byte == '\n') break;
    line += byte;
  }
  if (line.ends_with('\r')) line.pop_back();
  return any ? std::optional(std::move(line)) : std::nullopt;
}

std::optional<std::string> Asked(std::ostream& asks, const char* question) {
  asks << question << std::flush;
  auto line = LineOfInput();
  asks << std::endl;
  return line;
}

int Fault(std::ostream& asks, int status, const std::string& what) {
  asks << "orvane: --make-engineer-secret: " << what << std::endl;
  return status;
}

}  // namespace

int MakeEngineerSecret(std::ostream& out, std::ostream& asks) {
  std::optional<std::string> word;
  std::optional<std::string> again;
  if (::isatty(STDIN_FILENO) != 0) {
    const Unseen unseen;
    word = Asked(asks, "The engineer's word: ");
    if (word && !word->empty()) again = Asked(asks, "The same again: ");
  } else {
    word = again = LineOfInput();
  }
  if (!word) return Fault(asks, kNoInput, "there is no word");
  if (word->empty()) return Fault(asks, kNotThatInput, "the word is empty");
  if (word->size() > kLongestWord) return Fault(asks, kNotThatInput, "the word is longer than 1000 bytes");
  if (const auto fault = FaultOfUnitText(*word)) return Fault(asks, kNotThatInput, "the word " + *fault);
  if (word != again) return Fault(asks, kNotThatInput, "they are not the same");
  out << "engineer_secret = \"" << DigestOfWord(*word) << '"' << std::endl;
  Forget(*word);
  Forget(*again);
  return 0;
}

}  // namespace orvane
