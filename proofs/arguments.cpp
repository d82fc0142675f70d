#include "arguments.h"

#include <algorithm>
#include <iostream>
#include <stdexcept>
#include <thread>

namespace orvane::proofs {

Arguments ArgumentsOf(const std::vector<std::string>& words, const std::string& onlyOption) {
  Arguments arguments;
  arguments.effort.jobs = std::max(1U, std::thread::hardware_concurrency());
  arguments.effort.state = ".";
  for (std::size_t i = 0; i < words.size(); ++i) {
    const std::string& word = words[i];
    if (i + 1 == words.size()) throw std::invalid_argument(word + ": there is no such option, or it lacks its value");
    const std::string& value = words[++i];
    if (word == "--minutes") {
      arguments.effort.minutes = std::stod(value);
    } else if (word == "--jobs") {
      arguments.effort.jobs = static_cast<unsigned>(std::stoul(value));
    } else if (word == "--state") {
      arguments.effort.state = value;
    } else if (word == onlyOption) {
      arguments.only = value;
    } else {
      throw std::invalid_argument(word + ": there is no such option");
    }
  }
  return arguments;
}

int ShowOne(const Outcome& outcome) {
  for (const auto& [name, count] : outcome.figures) std::cout << count << " " << name << "\n";
  for (const std::string& text : outcome.findings) std::cout << text << "\n";
  if (outcome.findings.empty()) std::cout << "clean\n";
  return outcome.findings.empty() ? 0 : 1;
}

}  // namespace orvane::proofs
