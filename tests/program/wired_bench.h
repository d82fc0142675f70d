#pragma once

#include <map>
#include <string>

#include "program/programs.h"

namespace orvane::test {

/// The bench on wires: `virtual-bench`.
class WiredBench {
 public:
  explicit WiredBench(const Arguments& arguments = {});
  WiredBench(const WiredBench&) = delete;
  WiredBench& operator=(const WiredBench&) = delete;
  /// One that was not killed is sound to its end: it says so by its status.
  ~WiredBench();
  /// The options that lead the station to it.
  [[nodiscard]] Arguments Options();
  /// Where "target", "testset", "supply" or "load" is.
  [[nodiscard]] const std::string& Place(const std::string& what) const { return places_.at(what); }
  /// What an instrument answers to somebody who is not the station.
  [[nodiscard]] std::string Ask(const std::string& what, const std::string& line) const;
  /// Something that it answers nothing to; done when this returns.
  void Say(const std::string& what, const std::string& line) const { (void)Ask(what, line + ";*OPC?"); }
  void Kill() { child_.Kill(); }

 private:
  Child child_;
  std::map<std::string, std::string> places_;
};

}  // namespace orvane::test
