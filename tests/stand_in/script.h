#pragma once

#include <sstream>
#include <string>
#include <vector>

namespace stand_in {

/// The words of an environment variable; none when it is not set.
std::istringstream WordsOf(const char* variable);

struct Fault {
  std::string call;
  int address = -1;  ///< -1: any.
  int at = 1;
  bool andOn = false;
  int ibsta = 0;
  int iberr = 0;
  int cut = -1;
  int met = 0;
};

/// The failures that the environment asks for, and how often their calls were met.
class Script {
 public:
  Script();
  /// Counts the call. @return the fault that strikes it, if one does.
  const Fault* Struck(const std::string& call, int address);

 private:
  std::vector<Fault> faults_;
};

/// A line for the journal that the environment names.
void Journal(const std::string& line);

}  // namespace stand_in
