#include "stand_in/script.h"

#include <cstdlib>
#include <fstream>

namespace stand_in {
namespace {

Fault FaultOf(const std::string& word) {
  Fault fault;
  const auto at = word.find('@');
  const auto equals = word.find('=');
  const auto colon = word.find(':');
  const std::string whose = word.substr(0, at);
  const auto slash = whose.find('/');
  fault.call = whose.substr(0, slash);
  if (slash != std::string::npos) fault.address = std::stoi(whose.substr(slash + 1));
  fault.at = std::stoi(word.substr(at + 1));
  fault.andOn = word[equals - 1] == '+';
  const std::string what = word.substr(equals + 1, colon - equals - 1);
  const int number = std::stoi(word.substr(colon + 1));
  if (what == "cut") {
    fault.cut = number;
  } else {
    fault.ibsta = std::stoi(what, nullptr, 16);
    fault.iberr = number;
  }
  return fault;
}

}  // namespace

std::istringstream WordsOf(const char* variable) {
  const char* const text = std::getenv(variable);
  return std::istringstream(text == nullptr ? "" : text);
}

Script::Script() {
  auto words = WordsOf("GPIB_STAND_IN_FAULTS");
  for (std::string word; words >> word;) faults_.push_back(FaultOf(word));
}

const Fault* Script::Struck(const std::string& call, int address) {
  const Fault* struck = nullptr;
  for (Fault& fault : faults_) {
    if (fault.call != call || (fault.address >= 0 && fault.address != address)) continue;
    ++fault.met;
    if (fault.met == fault.at || (fault.andOn && fault.met > fault.at)) struck = &fault;
  }
  return struck;
}

void Journal(const std::string& line) {
  if (const char* const path = std::getenv("GPIB_STAND_IN_JOURNAL"))
    std::ofstream(path, std::ios::app) << line << "\n";
}

}  // namespace stand_in
