#include "bench/options.h"

#include <array>
#include <charconv>
#include <cmath>
#include <string>

namespace orvane::bench {
namespace {

template <class Number>
void Assign(Number& target, std::string_view key, std::string_view value) {
  const auto [end, fault] = std::from_chars(value.data(), value.data() + value.size(), target);
  if (fault != std::errc{} || end != value.data() + value.size()) {
    throw BenchOptionError(std::string(key) + "=" + std::string(value) + ": a number is needed");
  }
}

/// "inf" and "nan" read as numbers, too, and would make a unit whose readings are none.
void AssignAmount(double& target, std::string_view key, std::string_view value) {
  double amount = 0;
  Assign(amount, key, value);
  if (!std::isfinite(amount)) {
    throw BenchOptionError(std::string(key) + "=" + std::string(value) + ": a number is needed");
  }
  target = amount;
}

void AssignAddress(int& target, std::string_view key, std::string_view value) {
  constexpr int kLastPrimary = 30;
  int address = 0;
  Assign(address, key, value);
  if (address < 0 || address > kLastPrimary) {
    throw BenchOptionError(std::string(key) + "=" + std::string(value) + ": primary addresses are 0 to 30");
  }
  target = address;
}

struct KeyRow {
  std::string_view key;
  void (*set)(BenchOptions& options, std::string_view key, std::string_view value);
};

constexpr std::array kKeys{
    KeyRow{"seed", [](BenchOptions& o, std::string_view k, std::string_view v) { Assign(o.seed, k, v); }},
    KeyRow{"fault", [](BenchOptions& o, std::string_view, std::string_view v) { o.faults.push_back(ParseFault(v)); }},
    KeyRow{"store", [](BenchOptions& o, std::string_view, std::string_view v) { o.store = std::string(v); }},
    KeyRow{"loss",
           [](BenchOptions& o, std::string_view k, std::string_view v) { AssignAmount(o.cableLossDb, k, v); }},
    KeyRow{"lead",
           [](BenchOptions& o, std::string_view k, std::string_view v) { AssignAmount(o.leadLossVolts, k, v); }},
    KeyRow{"testset",
           [](BenchOptions& o, std::string_view k, std::string_view v) { AssignAddress(o.testSetAddress, k, v); }},
    KeyRow{"supply",
           [](BenchOptions& o, std::string_view k, std::string_view v) { AssignAddress(o.supplyAddress, k, v); }},
    KeyRow{"load",
           [](BenchOptions& o, std::string_view k, std::string_view v) { AssignAddress(o.loadAddress, k, v); }},
};

}  // namespace

void SetBenchOption(BenchOptions& options, std::string_view keyAndValue) {
  const std::size_t equals = keyAndValue.find('=');
  const std::string_view key = keyAndValue.substr(0, equals);
  for (const KeyRow& row : kKeys) {
    if (row.key == key && equals != std::string_view::npos) {
      row.set(options, key, keyAndValue.substr(equals + 1));
      return;
    }
  }
  throw BenchOptionError(std::string(keyAndValue) + ": KEY=VALUE is needed, with a key that the bench knows");
}

BenchOptions ParseBenchOptions(std::string_view text) {
  constexpr std::string_view kKind = "virtual";
  if (!text.starts_with(kKind) || (text.size() > kKind.size() && text[kKind.size()] != ':')) {
    throw BenchOptionError(std::string(text) + ": the only bench is \"virtual\"");
  }
  text.remove_prefix(kKind.size());
  BenchOptions options;
  while (!text.empty()) {
    text.remove_prefix(1);  // the colon, or the comma before the next one
    const std::size_t comma = text.find(',');
    SetBenchOption(options, text.substr(0, comma));
    text = comma == std::string_view::npos ? std::string_view{} : text.substr(comma);
  }
  return options;
}

}  // namespace orvane::bench
