// Gathered bytes from the Target, and the body of a command frame. Deframing must agree with a second formulation;
// what a trace says of a reply, with the frame that stands there.

#include <algorithm>

#include "app/trace/wire_words.h"
#include "link/plain_deframer.h"
#include "require.h"

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  using namespace orvane;
  // A trace also tells of replies that are longer than a gathering may be.
  const std::string_view bytes(reinterpret_cast<const char*>(data), std::min(size, kGatheredLimit + 40));
  const std::string_view gathered = bytes.substr(0, kGatheredLimit);
  for (const ReplyLayout layout : {ReplyLayout::Padded, ReplyLayout::Plain}) {
    const Deframed reply = Deframe(gathered, layout);
    fuzz::RequireNone(test::DifferenceOf(reply, test::DeframedPlainly(gathered, layout)));
    const auto frame = FindFrame(gathered, layout);
    fuzz::Require(frame.has_value() == reply.frame.has_value(), "a frame is found in one way only");
    const bool alone = frame && frame->start == 0 && frame->end + 1 == static_cast<int>(gathered.size());
    fuzz::Require(reply.stray == (frame.has_value() && !alone), "bytes beside the frame, or none");
    if (frame) fuzz::Require(frame->start == reply.frame->start && frame->end >= reply.frame->end, "the frame moved");
  }
  const std::string words = ReplyWords(bytes);
  fuzz::Require(words.empty() != FindFrame(bytes, ReplyLayout::Padded).has_value(), "a frame without words");
  constexpr std::size_t kBody = 51;
  fuzz::Require(CommandWords(bytes.substr(0, kBody)).empty() == bytes.empty(), "a command without words");
  return 0;
}
