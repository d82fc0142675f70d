#include "bench/memory.h"

#include <algorithm>
#include <charconv>
#include <fstream>
#include <iterator>
#include <string>

#include "bench/faults.h"

namespace orvane::bench {
namespace {

namespace fs = std::filesystem;

constexpr std::size_t kBlockSize = 908;
constexpr std::size_t kLevelTable = 92;
constexpr std::size_t kLevelSize = 4;

// What leaves the factory before calibration: the typical unit's power control values.
constexpr std::array<std::uint16_t, 15> kGsmFromLevel5{600, 550, 430, 350, 284, 222, 176, 140,
                                                       115, 95,  80,  67,  56,  51,  48};
constexpr std::array<std::uint16_t, 16> kDcsFromLevel0{720, 630, 500, 400, 330, 258, 205, 162,
                                                       130, 105, 90,  75,  63,  57,  52,  48};
constexpr std::size_t kFirstGsmLevel = 5;

void PutWord(std::array<std::uint8_t, kEepromSize>& image, std::size_t at, std::uint16_t word) {
  image[at] = static_cast<std::uint8_t>(word & 0xFF);
  image[at + 1] = static_cast<std::uint8_t>(word >> 8);
}

fs::path EepromFile(const fs::path& directory) { return directory / "eeprom.bin"; }
fs::path FlashFile(const fs::path& directory) { return directory / "flash100.txt"; }

std::string WordText(std::uint16_t word) {
  constexpr std::string_view kDigits = "0123456789ABCDEF";
  std::string text = "0x";
  for (int shift = 12; shift >= 0; shift -= 4) {
    text += kDigits[static_cast<std::size_t>(word >> shift) & 0xF];
  }
  return text;
}

std::optional<std::uint16_t> WordOf(std::string_view line) {
  std::uint16_t word = 0;
  if (line.size() != 6 || !line.starts_with("0x")) {
    return std::nullopt;
  }
  const auto [end, fault] = std::from_chars(line.data() + 2, line.data() + 6, word, 16);
  return fault == std::errc{} && end == line.data() + 6 ? std::optional(word) : std::nullopt;
}

[[noreturn]] void Refuse(const fs::path& file, std::string_view why) {
  throw BenchOptionError("store=" + file.string() + ": " + std::string(why));
}

void ReadEeprom(const fs::path& file, std::array<std::uint8_t, kEepromSize>& image) {
  std::ifstream in(file, std::ios::binary);
  const std::string bytes{std::istreambuf_iterator<char>(in), {}};
  if (bytes.size() != image.size()) {
    Refuse(file, "it does not hold 1816 bytes");
  }
  std::transform(bytes.begin(), bytes.end(), image.begin(), [](char c) { return static_cast<std::uint8_t>(c); });
}

void ReadFlash(const fs::path& file, std::array<std::uint16_t, kFlashTableWords>& words) {
  std::ifstream in(file);
  for (std::uint16_t& word : words) {
    std::string line;
    std::getline(in, line);
    const std::optional<std::uint16_t> value = WordOf(line);
    if (!value) {
      Refuse(file, "it does not hold five lines such as \"0x0270\"");
    }
    word = *value;
  }
}

}  // namespace

Memory::Memory(std::optional<fs::path> directory) : directory_(std::move(directory)) {
  for (std::size_t i = 0; i < kGsmFromLevel5.size(); ++i) {
    PutWord(eeprom_, kLevelTable + kLevelSize * (kFirstGsmLevel + i), kGsmFromLevel5[i]);
  }
  for (std::size_t i = 0; i < kDcsFromLevel0.size(); ++i) {
    PutWord(eeprom_, kBlockSize + kLevelTable + kLevelSize * i, kDcsFromLevel0[i]);
  }
  if (directory_) {
    std::error_code fault;
    fs::create_directories(*directory_, fault);
    if (!fs::is_directory(*directory_, fault)) {
      Refuse(*directory_, "it is no directory and cannot be made one");
    }
    if (fs::exists(EepromFile(*directory_))) {
      ReadEeprom(EepromFile(*directory_), eeprom_);
    }
    if (fs::exists(FlashFile(*directory_))) {
      ReadFlash(FlashFile(*directory_), flash_);
    }
  }
  working_ = eeprom_;
}

void Memory::Write(std::size_t address, std::span<const std::uint8_t> bytes) {
  std::copy(bytes.begin(), bytes.end(), working_.begin() + static_cast<std::ptrdiff_t>(address));
}

bool Memory::Commit() {
  eeprom_ = working_;
  if (!directory_) {
    return true;
  }
  std::ofstream out(EepromFile(*directory_), std::ios::binary | std::ios::trunc);
  std::copy(eeprom_.begin(), eeprom_.end(), std::ostreambuf_iterator<char>(out));
  return static_cast<bool>(out.flush());
}

bool Memory::WriteFlashTable(const std::array<std::uint16_t, kFlashTableWords>& words) {
  flash_ = words;
  if (!directory_) {
    return true;
  }
  std::ofstream out(FlashFile(*directory_), std::ios::trunc);
  for (const std::uint16_t word : flash_) {
    out << WordText(word) << '\n';
  }
  return static_cast<bool>(out.flush());
}

int Memory::PowerControl(std::size_t block, std::size_t level) const {
  const std::size_t at = block * kBlockSize + kLevelTable + kLevelSize * level;
  return working_[at] | working_[at + 1] << 8;
}

}  // namespace orvane::bench
