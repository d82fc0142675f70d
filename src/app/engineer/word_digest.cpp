#include "app/engineer/word_digest.h"

#include <sodium.h>

#include <array>
#include <stdexcept>

namespace orvane {
namespace {

// What the library takes to be right where somebody waits for the answer. They stand in each digest, so that digests
// made by other versions of the library stay what they are.
constexpr unsigned long long kRounds = 2;
constexpr std::size_t kMemory = std::size_t{64} << 20U;

void MakeReady() {
  static const bool ready = sodium_init() >= 0;
  if (!ready) throw std::runtime_error("The library libsodium cannot be used.");
}

}  // namespace

std::string DigestOfWord(std::string_view word) {
  MakeReady();
  std::array<char, crypto_pwhash_argon2id_STRBYTES> digest{};
  if (crypto_pwhash_argon2id_str(digest.data(), word.data(), word.size(), kRounds, kMemory) != 0) {
    throw std::runtime_error("There is no memory to make a digest in.");
  }
  return digest.data();
}

bool IsWordDigest(const std::string& text) {
  MakeReady();
  return crypto_pwhash_argon2id_str_needs_rehash(text.c_str(), kRounds, kMemory) == 0;
}

bool IsWordOf(const std::string& digest, std::string_view word) {
  MakeReady();
  return crypto_pwhash_argon2id_str_verify(digest.c_str(), word.data(), word.size()) == 0;
}

void Forget(std::string& word) {
  sodium_memzero(word.data(), word.size());
  word.clear();
}

}  // namespace orvane
