#include "bench/wires/record_reader.h"

#include <utility>

namespace orvane::bench {
namespace {

// Each fragment follows its length, whose top bit says that it is the last one of its message.
constexpr std::size_t kMarkSize = 4;
constexpr std::uint32_t kLastFragment = 0x80000000U;

}  // namespace

void RecordReader::Feed(std::string_view bytes) {
  bytes_.erase(0, std::exchange(begin_, 0));
  bytes_ += bytes;
}

std::uint32_t RecordReader::Mark() const {
  std::uint32_t mark = 0;
  for (std::size_t i = begin_; i < begin_ + kMarkSize; ++i) mark = mark << 8U | static_cast<std::uint8_t>(bytes_[i]);
  return mark;
}

std::optional<std::string> RecordReader::Next() {
  while (!tooLong_ && bytes_.size() - begin_ >= kMarkSize) {
    const std::uint32_t mark = Mark();
    const std::size_t size = mark & ~kLastFragment;
    tooLong_ = message_.size() + size > longest_;
    if (tooLong_ || bytes_.size() - begin_ < kMarkSize + size) return std::nullopt;
    message_.append(bytes_, begin_ + kMarkSize, size);
    begin_ += kMarkSize + size;
    if ((mark & kLastFragment) != 0) return std::exchange(message_, {});
  }
  return std::nullopt;
}

bool RecordReader::Spoilt() const { return tooLong_ || bytes_.size() - begin_ > kMarkSize + longest_; }

}  // namespace orvane::bench
