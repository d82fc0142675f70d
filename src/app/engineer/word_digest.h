#pragma once

#include <string>
#include <string_view>

namespace orvane {

/// What is kept of a word: a digest that says of any word whether it is that one, and costs whoever tries words a
/// tenth of a second and 64 MiB of memory for each of them.
/// @throws std::runtime_error where there is no memory for it
[[nodiscard]] std::string DigestOfWord(std::string_view word);

/// Whether a text can be such a digest.
[[nodiscard]] bool IsWordDigest(const std::string& text);

/// Whether it is the word that the digest was made of. It takes as long whatever the answer is.
[[nodiscard]] bool IsWordOf(const std::string& digest, std::string_view word);

/// Leaves nothing of a word in memory.
void Forget(std::string& word);

}  // namespace orvane
