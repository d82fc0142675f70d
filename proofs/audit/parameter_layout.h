#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <optional>
#include <span>
#include <string>
#include <string_view>
#include <vector>

/// What a Target keeps and what a parameter file holds, read a second time: from the layout as it is documented, with
/// none of the station's code.
namespace orvane::proofs {

inline constexpr std::size_t kBlockBytes = 908;
inline constexpr std::size_t kImageBytes = 2 * kBlockBytes;
inline constexpr std::size_t kHeadValues = 377;
inline constexpr std::size_t kBandValues = 740;
inline constexpr std::size_t kFileValues = kHeadValues + 2 * kBandValues;

using Image = std::array<std::uint8_t, kImageBytes>;

/// One value of a band: its label in a file behind "BAND(n).", and where it stands in its block.
struct Field {
  std::string label;
  std::size_t offset;
  std::size_t bytes;
};

/// A band's values in the order of the file.
[[nodiscard]] const std::vector<Field>& BandFields();
/// Labels of a whole file, in order.
[[nodiscard]] const std::vector<std::string>& FileLabels();

/// The place of a field in `BandFields`. @throws std::out_of_range for a label that is none.
[[nodiscard]] std::size_t FieldNumber(std::string_view label);
/// Where that field of that band begins in the image.
[[nodiscard]] std::size_t PlaceOf(std::size_t band, std::string_view label);
/// A two-byte field of the image, unsigned.
[[nodiscard]] int WordAt(const Image& image, std::size_t place);
/// A one-byte field, signed.
[[nodiscard]] int SignedByteAt(const Image& image, std::size_t place);

/// The value texts of a parameter file as written: 1857 lines "label Tab = Tab value" with CR LF. `why` says what is
/// wrong with one that is not so.
[[nodiscard]] std::optional<std::vector<std::string>> ValuesOfFile(std::string_view content, std::string& why);

/// The image that a file's values stand for. Values that are no whole numbers count as 0.
[[nodiscard]] Image ImageOf(std::span<const std::string> values);

/// The 31 ramp tables of 32 values in a ramp table file, put where the image keeps them. @return false when the file
/// is not one.
[[nodiscard]] bool PutRamps(std::string_view content, Image& image);

}  // namespace orvane::proofs
