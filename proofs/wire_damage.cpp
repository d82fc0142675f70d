#include "wire_damage.h"

#include <array>
#include <charconv>
#include <utility>

#include "base/failure.h"

namespace orvane::proofs {
namespace {

constexpr std::array<std::string_view, 5> kHarms{"lost", "doubled", "flipped", "delayed", "exchanged"};

std::string_view TakePart(std::string_view& text) {
  const std::size_t colon = text.find(':');
  const std::string_view part = text.substr(0, colon);
  text = colon == std::string_view::npos ? std::string_view{} : text.substr(colon + 1);
  return part;
}

template <class Number>
bool Read(std::string_view text, Number& number) {
  const auto [end, fault] = std::from_chars(text.data(), text.data() + text.size(), number);
  return fault == std::errc{} && end == text.data() + text.size();
}

}  // namespace

std::string TextOf(const Damage& damage) {
  std::string text = damage.way == Way::ToTarget ? "out:" : "in:";
  text += std::to_string(damage.byte) + ":" + std::string(kHarms[static_cast<std::size_t>(damage.harm)]);
  if (damage.harm == Harm::Flipped || damage.harm == Harm::Delayed) text += ":" + std::to_string(damage.value);
  return text;
}

std::optional<Damage> DamageOf(std::string_view text) {
  Damage damage;
  const std::string_view way = TakePart(text);
  if (way != "in" && way != "out") return std::nullopt;
  damage.way = way == "in" ? Way::ToStation : Way::ToTarget;
  if (!Read(TakePart(text), damage.byte)) return std::nullopt;
  const std::string_view harm = TakePart(text);
  for (std::size_t i = 0; i < kHarms.size(); ++i) {
    if (kHarms[i] != harm) continue;
    damage.harm = static_cast<Harm>(i);
    const bool valued = damage.harm == Harm::Flipped || damage.harm == Harm::Delayed;
    if (valued ? Read(text, damage.value) : text.empty()) return damage;
  }
  return std::nullopt;
}

WireDamage::WireDamage(VirtualEventLoop& loop, SerialControl& line) : loop_(loop), line_(line) {
  line_.setup.rThreshold = 1;
  line_.onComm = [this](int commEvent) {
    if (commEvent != kCommReceive) {
      if (onComm) onComm(commEvent);
      return;
    }
    received_ += Pass(in_, Way::ToStation, line_.Input());
    Received();
  };
}

void WireDamage::Strike(const std::optional<Damage>& damage) {
  damage_ = damage;
  struck_ = false;
  swapped_ = false;
  out_ = {};
  in_ = {};
  ++era_;
}

void WireDamage::Open() { line_.Open(); }

void WireDamage::Close() {
  line_.Close();
  received_.clear();
  in_.waiting.clear();
}

void WireDamage::Output(std::string_view bytes) {
  // The line refuses what it refuses also when nothing passes yet.
  line_.Output(Pass(out_, Way::ToTarget, bytes));
}

std::string WireDamage::Input() { return std::exchange(received_, {}); }

std::string WireDamage::Pass(Lane& lane, Way way, std::string_view bytes) {
  std::string passed;
  for (const char byte : bytes) {
    const std::uint64_t number = lane.count++;
    if (lane.until) {
      lane.waiting += byte;
    } else if (lane.exchanging) {
      // The bytes of a frame follow each other, a buffer of them at a time.
      lane.exchanging = false;
      swapped_ = loop_.Now() - lane.since < std::chrono::milliseconds(2);
      passed += byte;
      passed += std::exchange(lane.waiting, {});
    } else if (damage_ && !struck_ && damage_->way == way && damage_->byte == number) {
      struck_ = true;
      Strike(lane, byte, passed);
    } else {
      passed += byte;
    }
  }
  return passed;
}

void WireDamage::Strike(Lane& lane, char byte, std::string& passed) {
  switch (damage_->harm) {
    case Harm::Lost:
      break;
    case Harm::Doubled:
      passed.append(2, byte);
      break;
    case Harm::Flipped:
      passed += static_cast<char>(static_cast<unsigned char>(byte) ^ damage_->value);
      break;
    case Harm::Delayed:
      lane.waiting += byte;
      lane.until = loop_.Now() + std::chrono::milliseconds(damage_->value);
      loop_.PostAt(*lane.until, [this, way = damage_->way, era = era_] {
        if (era == era_) Release(way);
      });
      break;
    case Harm::Exchanged:
      lane.waiting += byte;
      lane.exchanging = true;
      lane.since = loop_.Now();
      break;
  }
}

void WireDamage::Release(Way way) {
  Lane& lane = way == Way::ToTarget ? out_ : in_;
  lane.until.reset();
  const std::string bytes = std::exchange(lane.waiting, {});
  if (!line_.PortOpen() || bytes.empty()) return;
  if (way == Way::ToStation) {
    received_ += bytes;
    Received();
    return;
  }
  // The device may have gone while they waited.
  (void)PassOver([&] { line_.Output(bytes); });
}

void WireDamage::Received() {
  if (!received_.empty() && setup.rThreshold > 0 && onComm) onComm(kCommReceive);
}

}  // namespace orvane::proofs
