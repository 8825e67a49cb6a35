#include "text/Sha256.h"

#include <array>
#include <bit>
#include <cstddef>
#include <cstdint>

namespace shorttest {

namespace {

constexpr std::size_t BlockBytes = 64;

using HashState = std::array<std::uint32_t, 8>;

/// The first 32 bits of the fractional parts of the square roots of the first eight primes.
constexpr HashState InitialState = {0x6a09e667, 0xbb67ae85, 0x3c6ef372, 0xa54ff53a,
                                    0x510e527f, 0x9b05688c, 0x1f83d9ab, 0x5be0cd19};

/// The same of the cube roots of the first 64 primes.
constexpr std::array<std::uint32_t, 64> RoundConstants = {
    0x428a2f98, 0x71374491, 0xb5c0fbcf, 0xe9b5dba5, 0x3956c25b, 0x59f111f1, 0x923f82a4, 0xab1c5ed5,
    0xd807aa98, 0x12835b01, 0x243185be, 0x550c7dc3, 0x72be5d74, 0x80deb1fe, 0x9bdc06a7, 0xc19bf174,
    0xe49b69c1, 0xefbe4786, 0x0fc19dc6, 0x240ca1cc, 0x2de92c6f, 0x4a7484aa, 0x5cb0a9dc, 0x76f988da,
    0x983e5152, 0xa831c66d, 0xb00327c8, 0xbf597fc7, 0xc6e00bf3, 0xd5a79147, 0x06ca6351, 0x14292967,
    0x27b70a85, 0x2e1b2138, 0x4d2c6dfc, 0x53380d13, 0x650a7354, 0x766a0abb, 0x81c2c92e, 0x92722c85,
    0xa2bfe8a1, 0xa81a664b, 0xc24b8b70, 0xc76c51a3, 0xd192e819, 0xd6990624, 0xf40e3585, 0x106aa070,
    0x19a4c116, 0x1e376c08, 0x2748774c, 0x34b0bcb5, 0x391c0cb3, 0x4ed8aa4a, 0x5b9cca4f, 0x682e6ff3,
    0x748f82ee, 0x78a5636f, 0x84c87814, 0x8cc70208, 0x90befffa, 0xa4506ceb, 0xbef9a3f7, 0xc67178f2};

/// The 64 words that one block is stretched to.
std::array<std::uint32_t, 64> Schedule(std::string_view block) {
  std::array<std::uint32_t, 64> words{};
  for (std::size_t i = 0; i < BlockBytes; ++i) {
    words.at(i / 4) = words.at(i / 4) << 8U | static_cast<unsigned char>(block[i]);
  }
  for (std::size_t t = 16; t < words.size(); ++t) {
    const std::uint32_t early = words.at(t - 15);
    const std::uint32_t late = words.at(t - 2);
    words.at(t) = words.at(t - 16) + (std::rotr(early, 7) ^ std::rotr(early, 18) ^ early >> 3U) +
                  words.at(t - 7) + (std::rotr(late, 17) ^ std::rotr(late, 19) ^ late >> 10U);
  }
  return words;
}

void AddBlock(HashState& state, std::string_view block) {
  const auto words = Schedule(block);
  auto [a, b, c, d, e, f, g, h] = state;
  for (std::size_t t = 0; t < words.size(); ++t) {
    const std::uint32_t first = h + (std::rotr(e, 6) ^ std::rotr(e, 11) ^ std::rotr(e, 25)) +
                                ((e & f) ^ (~e & g)) + RoundConstants.at(t) + words.at(t);
    const std::uint32_t second =
        (std::rotr(a, 2) ^ std::rotr(a, 13) ^ std::rotr(a, 22)) + ((a & b) ^ (a & c) ^ (b & c));
    h = g;
    g = f;
    f = e;
    e = d + first;
    d = c;
    c = b;
    b = a;
    a = first + second;
  }
  const HashState added = {a, b, c, d, e, f, g, h};
  for (std::size_t i = 0; i < state.size(); ++i) state.at(i) += added.at(i);
}

}  // namespace

std::string Sha256(std::string_view bytes) {
  // After the bytes come a one, zeros, and the length in bits, so that whole blocks result.
  std::string tail(bytes.substr(bytes.size() - bytes.size() % BlockBytes));
  tail += '\x80';
  while (tail.size() % BlockBytes != BlockBytes - 8) tail += '\0';
  const std::uint64_t bits = std::uint64_t{bytes.size()} * 8;
  for (unsigned shift = 64; shift > 0; shift -= 8) tail += static_cast<char>(bits >> (shift - 8) & 0xFFU);

  HashState state = InitialState;
  for (; bytes.size() >= BlockBytes; bytes.remove_prefix(BlockBytes)) AddBlock(state, bytes);
  for (std::string_view rest = tail; !rest.empty(); rest.remove_prefix(BlockBytes)) AddBlock(state, rest);

  constexpr std::string_view HexDigits = "0123456789abcdef";
  std::string text;
  for (const std::uint32_t word : state) {
    for (unsigned shift = 32; shift > 0; shift -= 4) text += HexDigits[word >> (shift - 4) & 0xFU];
  }
  return text;
}

}  // namespace shorttest
