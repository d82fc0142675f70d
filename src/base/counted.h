#pragma once

namespace orvane {

/// Counts one more for as long as it stands on the stack, however it is left.
class Counted {
 public:
  explicit Counted(int& count) : count_(count) { ++count_; }
  Counted(const Counted&) = delete;
  Counted& operator=(const Counted&) = delete;
  ~Counted() { --count_; }

 private:
  int& count_;
};

}  // namespace orvane
