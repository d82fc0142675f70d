#include "app/golden/golden_cause.h"

#include <algorithm>
#include <cmath>
#include <iterator>
#include <set>
#include <string_view>

#include "base/numbers.h"

namespace orvane {
namespace {

using Deviations = std::vector<GoldenDeviation>;

/// What the values of a run stand on.
enum class Path { GsmPower, DcsPower, Receive, Battery, Clock, Unknown };

Path PathOf(std::string_view reading) {
  const bool isPower = reading.ends_with(".power");
  if (isPower && reading.starts_with("tx.gsm.")) return Path::GsmPower;
  if (isPower && reading.starts_with("tx.dcs.")) return Path::DcsPower;
  if (reading.starts_with("rx.")) return Path::Receive;
  if (reading.starts_with("battery.")) return Path::Battery;
  const bool isClock = reading.find(".phase.") != std::string_view::npos || reading.ends_with(".frequency_error");
  return isClock ? Path::Clock : Path::Unknown;
}

Deviations On(const Deviations& all, Path path) {
  Deviations some;
  std::copy_if(all.begin(), all.end(), std::back_inserter(some),
               [path](const GoldenDeviation& each) { return PathOf(each.reading) == path; });
  return some;
}

std::ptrdiff_t Outside(const Deviations& some) {
  return std::count_if(some.begin(), some.end(), [](const GoldenDeviation& each) { return each.IsOutside(); });
}

/// How many channels have received something else. What a band has as a whole counts as one.
std::size_t ChannelsOff(const Deviations& received) {
  std::set<std::string_view> channels;
  for (const GoldenDeviation& each : received) {
    std::string_view name = each.reading;
    name.remove_prefix(name.find('.') + 1);
    if (each.IsOutside()) channels.insert(name.substr(0, name.find('.')));
  }
  return channels.size();
}

/// By how much nearly all of a band's powers are off; 0 where each is off by something else, or hardly at all.
double Shift(Deviations powers) {
  constexpr std::size_t kFew = 3;
  constexpr double kAlikeDb = 0.3;
  constexpr double kAlikeShare = 0.25;
  constexpr double kNearlyAll = 0.8;
  std::erase_if(powers, [](const GoldenDeviation& each) { return std::isnan(each.off); });
  if (powers.size() < kFew) return 0;
  const auto middle = powers.begin() + static_cast<std::ptrdiff_t>(powers.size() / 2);
  std::nth_element(powers.begin(), middle, powers.end(),
                   [](const GoldenDeviation& a, const GoldenDeviation& b) { return a.off < b.off; });
  const double shift = middle->off;
  const double alike = std::max(kAlikeDb, kAlikeShare * std::abs(shift));
  const auto same = std::count_if(powers.begin(), powers.end(),
                                  [&](const GoldenDeviation& each) { return std::abs(each.off - shift) <= alike; });
  const bool isOne = static_cast<double>(same) >= kNearlyAll * static_cast<double>(powers.size());
  return isOne && std::abs(shift) > middle->allowed / 2 ? shift : 0;
}

std::string ByHowMuch(double shift) {
  constexpr double kPlaces = 10;
  return "some " + NumberText(std::abs(std::round(shift * kPlaces) / kPlaces)) + " dB too " +
         (shift < 0 ? "low" : "high");
}

constexpr std::string_view kOneAlone =
    "One value alone is off: look at the golden unit, and at its contact in the fixture.";
constexpr std::string_view kScattered =
    "Powers are off, each by something else: look at the antenna contact of the fixture, and at the golden unit.";
constexpr std::string_view kReceive =
    "Received levels are off: look at the test set's generator, and at the RF cable on the way to the unit.";
constexpr std::string_view kSupply = "Battery counts are off: look at the supply, its leads and their loss.";
constexpr std::string_view kClock = "Phase or frequency is off: look at the test set's reference clock.";

std::string BandLoss(std::string_view band, double shift) {
  return "Powers of " + std::string(band) + " alone read " + ByHowMuch(shift) + ": look at the Tx loss of that band.";
}

}  // namespace

bool GoldenDeviation::IsOutside() const { return !(std::abs(off) <= allowed); }

std::vector<std::string> CausesOf(const Deviations& deviations) {
  std::vector<std::string> causes;
  const Deviations gsm = On(deviations, Path::GsmPower);
  const Deviations dcs = On(deviations, Path::DcsPower);
  const std::ptrdiff_t powers = Outside(gsm) + Outside(dcs);
  const std::size_t received = ChannelsOff(On(deviations, Path::Receive));
  bool isCable = false;
  if (powers > 0) {
    const double gsmShift = Shift(gsm);
    const double dcsShift = Shift(dcs);
    isCable = gsmShift * dcsShift > 0;
    if (isCable) {
      causes.push_back("Powers of both bands read " + ByHowMuch((gsmShift + dcsShift) / 2) +
                       ": look at the RF cable, its plugs and its losses.");
    } else if (gsmShift != 0 && Outside(dcs) == 0) {
      causes.push_back(BandLoss("GSM", gsmShift));
    } else if (dcsShift != 0 && Outside(gsm) == 0) {
      causes.push_back(BandLoss("DCS", dcsShift));
    } else {
      causes.emplace_back(powers == 1 ? kOneAlone : kScattered);
    }
  }
  // What is wrong with the cable is wrong with it in both directions.
  if (received > 0 && !isCable) causes.emplace_back(received == 1 && powers == 0 ? kOneAlone : kReceive);
  if (Outside(On(deviations, Path::Battery)) > 0) causes.emplace_back(kSupply);
  if (Outside(On(deviations, Path::Clock)) > 0) causes.emplace_back(kClock);
  return causes;
}

}  // namespace orvane
