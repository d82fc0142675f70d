#include "link/plain_deframer.h"

namespace orvane::test {

PlainDeframed DeframedPlainly(std::string_view gathered, ReplyLayout layout) {
  const std::size_t reach = layout == ReplyLayout::Padded ? 2 : 1;
  const std::size_t size = gathered.size();
  PlainDeframed reply;

  // No later start can have a terminator that the first one has not.
  const auto start = gathered.find("\x02\x14");
  auto end = start == std::string_view::npos ? start : gathered.find('\x02', start + 2);
  while (end != std::string_view::npos && gathered[end - reach] == '\x10') end = gathered.find('\x02', end + 1);
  reply.found = end != std::string_view::npos;
  reply.start = static_cast<int>(start);
  reply.end = static_cast<int>(end);

  for (std::size_t i = 0; i < size; ++i) {
    const bool looked = reply.values.size() + 3 <= size && i + reach < size;
    if (looked && gathered[i] == '\x10' && (gathered[i + reach] == '\x02' || gathered[i + reach] == '\x10')) {
      --reply.end;
      ++i;  // what moves up into the place of an escape is not looked at
    }
    reply.values.push_back(static_cast<unsigned char>(gathered[i]));
  }
  if (!reply.found || layout == ReplyLayout::Plain) return reply;
  for (std::size_t pad = 6; pad + 1 < reply.values.size(); pad += 2) {
    if (reply.values[pad] != 1) continue;
    reply.values[pad] = 0;
    reply.values[pad + 1] += 128;
  }
  return reply;
}

std::string DifferenceOf(const Deframed& reply, const PlainDeframed& plain) {
  if (reply.count != static_cast<int>(plain.values.size())) return "count " + std::to_string(reply.count);
  for (std::size_t i = 0; i < plain.values.size(); ++i) {
    if (reply.values[i] != plain.values[i]) return "value at " + std::to_string(i);
  }
  if (reply.frame.has_value() != plain.found) return "found";
  if (plain.found && (reply.frame->start != plain.start || reply.frame->end != plain.end)) return "frame";
  return "";
}

}  // namespace orvane::test
