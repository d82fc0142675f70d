#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <filesystem>
#include <optional>
#include <span>

namespace orvane::bench {

inline constexpr std::size_t kEepromSize = 1816;
inline constexpr std::size_t kFlashTableWords = 5;

/// What a handset keeps without power: its EEPROM behind a working copy, and flash table 100.
/// With a directory both live in files there: `eeprom.bin`, 1816 bytes, and `flash100.txt`, five lines "0x0270".
class Memory {
 public:
  /// @throws BenchOptionError when a file of the directory cannot be what it should be.
  explicit Memory(std::optional<std::filesystem::path> directory = std::nullopt);

  /// The working copy, which all reads and writes see.
  [[nodiscard]] std::span<const std::uint8_t> Eeprom() const { return working_; }
  void Write(std::size_t address, std::span<const std::uint8_t> bytes);
  /// Makes the working copy last. @return false when its file could not be written.
  bool Commit();
  /// Loses what was not committed, as a loss of power does.
  void Restart() { working_ = eeprom_; }

  [[nodiscard]] const std::array<std::uint16_t, kFlashTableWords>& FlashTable() const { return flash_; }
  bool WriteFlashTable(const std::array<std::uint16_t, kFlashTableWords>& words);

  /// Power control value that the working copy holds for a level: block 0 is GSM, 1 is DCS.
  [[nodiscard]] int PowerControl(std::size_t block, std::size_t level) const;

 private:
  std::optional<std::filesystem::path> directory_;
  std::array<std::uint8_t, kEepromSize> eeprom_{};
  std::array<std::uint8_t, kEepromSize> working_{};
  std::array<std::uint16_t, kFlashTableWords> flash_{};
};

}  // namespace orvane::bench
