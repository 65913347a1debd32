#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>

namespace orvista {

/// The hash function SHA-256 of FIPS 180-4, over bytes that come in pieces.
class Sha256 {
public:
    void add(std::string_view bytes);
    /// The hash of all that was added, as 64 lower-case hexadecimal digits. Nothing is added afterwards.
    std::string hexDigest();

private:
    void addByte(unsigned char byte);
    void compress();

    /// The first 32 bits of the fractions of the square roots of the first eight primes.
    std::array<std::uint32_t, 8> state_{0x6a09e667, 0xbb67ae85, 0x3c6ef372, 0xa54ff53a,
                                        0x510e527f, 0x9b05688c, 0x1f83d9ab, 0x5be0cd19};
    std::array<std::uint32_t, 16> block_{}; ///< 64 bytes, the first one highest
    std::uint64_t length_ = 0;              ///< bytes so far
};

} // namespace orvista
