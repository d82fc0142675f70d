// The roads of the soak, each of which is recorded, run again and held to its record.

#include <iostream>

#include "arguments.h"
#include "visit.h"

int main(int count, char** words) {
  using namespace orvane::proofs;
  try {
    const Arguments arguments = ArgumentsOf({words + 1, words + count}, "--seed");
    if (arguments.only) {
      Visit visit(std::stoull(*arguments.only), true);
      visit.tell = [](const std::string& road) { std::cout << road << "\n"; };
      return ShowOne(visit.Run());
    }
    return Work({"replay", 1, UINT64_MAX, [](std::uint64_t seed) { return Visit(seed, true).Run(); },
                 [&](std::uint64_t seed) { return std::string(words[0]) + " --seed " + std::to_string(seed); }},
                arguments.effort);
  } catch (const std::exception& failure) {
    std::cerr << failure.what() << "\n";
    return 64;
  }
}
