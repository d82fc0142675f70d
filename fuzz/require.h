#pragma once

#include <cstdio>
#include <cstdlib>
#include <string_view>

namespace orvane::fuzz {

/// Ends the program with these words unless all is well: whoever drives the target keeps the input that led here.
inline void Require(bool well, std::string_view what) {
  if (well) return;
  std::fprintf(stderr, "%.*s\n", static_cast<int>(what.size()), what.data());
  std::abort();
}

/// The same for checks that say what is wrong, and nothing when all is well.
inline void RequireNone(std::string_view fault) { Require(fault.empty(), fault); }

/// What an attempt gave, or nothing when it failed the way that it may fail; any other exception flies on.
template <class Failure, class Attempt>
bool Done(const Attempt& attempt) {
  try {
    attempt();
    return true;
  } catch (const Failure&) {
    return false;
  }
}

}  // namespace orvane::fuzz
