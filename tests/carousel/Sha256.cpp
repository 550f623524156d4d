#include "Sha256.h"

#include <array>
#include <cstdint>
#include <cstdio>

namespace {

constexpr std::array<QUOR_U32, 64> ROUNDS{
    0x428a2f98, 0x71374491, 0xb5c0fbcf, 0xe9b5dba5, 0x3956c25b, 0x59f111f1, 0x923f82a4, 0xab1c5ed5,
    0xd807aa98, 0x12835b01, 0x243185be, 0x550c7dc3, 0x72be5d74, 0x80deb1fe, 0x9bdc06a7, 0xc19bf174,
    0xe49b69c1, 0xefbe4786, 0x0fc19dc6, 0x240ca1cc, 0x2de92c6f, 0x4a7484aa, 0x5cb0a9dc, 0x76f988da,
    0x983e5152, 0xa831c66d, 0xb00327c8, 0xbf597fc7, 0xc6e00bf3, 0xd5a79147, 0x06ca6351, 0x14292967,
    0x27b70a85, 0x2e1b2138, 0x4d2c6dfc, 0x53380d13, 0x650a7354, 0x766a0abb, 0x81c2c92e, 0x92722c85,
    0xa2bfe8a1, 0xa81a664b, 0xc24b8b70, 0xc76c51a3, 0xd192e819, 0xd6990624, 0xf40e3585, 0x106aa070,
    0x19a4c116, 0x1e376c08, 0x2748774c, 0x34b0bcb5, 0x391c0cb3, 0x4ed8aa4a, 0x5b9cca4f, 0x682e6ff3,
    0x748f82ee, 0x78a5636f, 0x84c87814, 0x8cc70208, 0x90befffa, 0xa4506ceb, 0xbef9a3f7, 0xc67178f2};

using State = std::array<QUOR_U32, 8>;

QUOR_U32 turned(QUOR_U32 word, unsigned bits) {
    return word >> bits | word << (32U - bits);
}

void add(State& state, const QUOR_U8* block) {
    std::array<QUOR_U32, 64> words{};
    for (std::size_t at = 0; at < 16; ++at) {
        words[at] = QUOR_U32{block[4 * at]} << 24U | QUOR_U32{block[4 * at + 1]} << 16U |
                    QUOR_U32{block[4 * at + 2]} << 8U | block[4 * at + 3];
    }
    for (std::size_t at = 16; at < 64; ++at) {
        const QUOR_U32 near = words[at - 15];
        const QUOR_U32 far = words[at - 2];
        words[at] = words[at - 16] + words[at - 7] + (turned(near, 7) ^ turned(near, 18) ^ near >> 3U) +
                    (turned(far, 17) ^ turned(far, 19) ^ far >> 10U);
    }
    auto [a, b, c, d, e, f, g, h] = state;
    for (std::size_t at = 0; at < 64; ++at) {
        const QUOR_U32 first =
            h + (turned(e, 6) ^ turned(e, 11) ^ turned(e, 25)) + ((e & f) ^ (~e & g)) + ROUNDS[at] + words[at];
        const QUOR_U32 second = (turned(a, 2) ^ turned(a, 13) ^ turned(a, 22)) + ((a & b) ^ (a & c) ^ (b & c));
        h = g;
        g = f;
        f = e;
        e = d + first;
        d = c;
        c = b;
        b = a;
        a = first + second;
    }
    const State sum{a, b, c, d, e, f, g, h};
    for (std::size_t at = 0; at < sum.size(); ++at) {
        state[at] += sum[at];
    }
}

} // namespace

std::string sha256(const ByteVector& bytes) {
    State state{0x6a09e667, 0xbb67ae85, 0x3c6ef372, 0xa54ff53a, 0x510e527f, 0x9b05688c, 0x1f83d9ab, 0x5be0cd19};
    ByteVector padded = bytes;
    padded.push_back(0x80);
    while (padded.size() % 64 != 56) {
        padded.push_back(0);
    }
    for (unsigned shift = 64; shift != 0; shift -= 8) {
        padded.push_back(static_cast<QUOR_U8>(std::uint64_t{bytes.size()} * 8 >> (shift - 8)));
    }
    for (std::size_t at = 0; at < padded.size(); at += 64) {
        add(state, &padded[at]);
    }
    std::string digits;
    for (const QUOR_U32 word : state) {
        char text[9];
        std::snprintf(text, sizeof text, "%08x", word);
        digits += text;
    }
    return digits;
}
