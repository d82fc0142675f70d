#include "link/deframer.h"

#include <algorithm>

namespace orvane {
namespace {

constexpr std::uint16_t kSecondSync = 0x14;
constexpr std::uint16_t kStart = 0x02;
constexpr std::uint16_t kEscapeByte = 0x10;
constexpr int kFirstPad = 6;

int ReachOf(ReplyLayout layout) { return layout == ReplyLayout::Padded ? 2 : 1; }

void RemoveEscapes(Deframed& reply, int reach) {
  auto& values = reply.values;
  const auto at = [&](int i) -> std::uint16_t& { return values[static_cast<std::size_t>(i)]; };
  const int last = reply.count - 3;
  // Places behind the count are empty and protect nothing.
  for (int i = 0; i <= last && i + reach < reply.count; ++i) {
    const bool protects = at(i + reach) == kStart || at(i + reach) == kEscapeByte;
    if (at(i) != kEscapeByte || !protects) continue;
    std::copy(&at(i) + 1, values.data() + reply.count, &at(i));
    --reply.count;
    if (reply.frame) --reply.frame->end;
  }
}

void WorkInPads(Deframed& reply) {
  for (int i = kFirstPad; i <= reply.count - 2; i += 2) {
    auto* const pad = &reply.values[static_cast<std::size_t>(i)];
    if (*pad != 1) continue;
    pad[0] = 0;
    pad[1] = static_cast<std::uint16_t>(pad[1] + 128);
  }
}

}  // namespace

std::optional<FrameSpan> FindFrame(std::string_view gathered, ReplyLayout layout) {
  const auto byte = [&](std::size_t i) { return static_cast<unsigned char>(gathered[i]); };
  const auto reach = static_cast<std::size_t>(ReachOf(layout));
  for (std::size_t i = 0; i + 1 < gathered.size(); ++i) {
    if (byte(i) != kStart || byte(i + 1) != kSecondSync) continue;
    for (std::size_t j = i + 2; j < gathered.size(); ++j) {
      if (byte(j) == kStart && byte(j - reach) != kEscapeByte) {
        return FrameSpan{static_cast<int>(i), static_cast<int>(j)};
      }
    }
  }
  return std::nullopt;
}

Deframed Deframe(std::string_view gathered, ReplyLayout layout) {
  Deframed reply;
  std::transform(gathered.begin(), gathered.end(), reply.values.begin(),
                 [](char c) { return static_cast<unsigned char>(c); });
  reply.count = static_cast<int>(gathered.size());
  reply.frame = FindFrame(gathered, layout);
  reply.stray = reply.frame && (reply.frame->start != 0 || reply.frame->end != reply.count - 1);
  RemoveEscapes(reply, ReachOf(layout));
  if (reply.frame && layout == ReplyLayout::Padded) WorkInPads(reply);
  return reply;
}

}  // namespace orvane
