#include <algorithm>

#include "bench/handset_parts.h"

/// The handset's tables: ramp tables, the EEPROM behind its address, flash table 100 and plain tables.
namespace orvane::bench {
namespace {

constexpr std::uint8_t kEepromTable = 3;
constexpr std::uint8_t kFlashTable = 100;
constexpr std::size_t kEepromRow = 16;

bool IsPlainTable(std::uint8_t table) { return table == 10 || table == 20; }

}  // namespace

Bytes Handset::WriteTemplate(std::span<const std::uint8_t> data) {
  const std::uint8_t row = data[0];
  if (row >= ramps_.size()) {
    return PlainReply(Op::kTemplateWrite, Status::kBadValue);
  }
  std::copy(data.begin() + 1, data.end(), ramps_[row].begin());
  return PlainReply(Op::kTemplateWrite);
}

Bytes Handset::ReadTemplate(std::span<const std::uint8_t> data) const {
  const std::uint8_t row = data[0];
  if (row >= ramps_.size()) {
    return PlainReply(Op::kTemplateRead, Status::kBadValue);
  }
  return RampRowFrame(static_cast<std::uint8_t>(Op::kTemplateRead), row, ramps_[row]);
}

Bytes Handset::WriteTable(std::span<const std::uint8_t> data) {
  const std::uint8_t table = data[0];
  const std::span<const std::uint8_t> content = data.subspan(1);
  Status status = Status::kDone;
  if (table == kEepromTable) {
    if (address_ + content.size() > kEepromSize) {
      status = Status::kBadValue;
    } else {
      memory_.Write(address_, content);
      address_ += content.size();
    }
  } else if (table == kFlashTable) {
    std::array<std::uint16_t, kFlashTableWords> words{};
    if (content.size() != 2 * words.size()) {
      return {};  // a frame of the wrong length
    }
    for (std::size_t i = 0; i < words.size(); ++i) {
      words[i] = WordAt(content, 2 * i);
    }
    status = memory_.WriteFlashTable(words) ? Status::kDone : Status::kStoreFailed;
  } else if (IsPlainTable(table)) {
    tables_[table].assign(content.begin(), content.end());
  } else {
    status = Status::kNoSuchTable;
  }
  return PlainReply(Op::kTableWrite, status, {table});
}

Bytes Handset::ReadTable(std::span<const std::uint8_t> data) {
  const std::uint8_t table = data[0];
  Bytes content{table};
  Status status = Status::kDone;
  if (table == kEepromTable) {
    const std::size_t count = std::min(kEepromRow, kEepromSize - std::min(address_, kEepromSize));
    const auto row = memory_.Eeprom().subspan(std::min(address_, kEepromSize), count);
    content.insert(content.end(), row.begin(), row.end());
    address_ += count;
    status = count == 0 ? Status::kBadValue : Status::kDone;
  } else if (table == kFlashTable) {
    for (const std::uint16_t word : memory_.FlashTable()) {
      AppendWord(content, word);
    }
  } else if (IsPlainTable(table)) {
    const Bytes& bytes = tables_[table];
    content.insert(content.end(), bytes.begin(), bytes.end());
  } else {
    status = Status::kNoSuchTable;
  }
  return PlainReply(Op::kTableRead, status, std::move(content));
}

}  // namespace orvane::bench
