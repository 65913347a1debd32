#include "model/Sha256.h"

#include <gtest/gtest.h>

namespace orvista {
namespace {

std::string hashOf(std::string_view bytes) {
    Sha256 hash;
    hash.add(bytes);
    return hash.hexDigest();
}

// The examples that NIST publishes for FIPS 180-4.
TEST(Sha256, GivesThePublishedHashes) {
    EXPECT_EQ(hashOf(""), "e3b0c44298fc1c149afbf4c8996fb92427ae41e4649b934ca495991b7852b855");
    EXPECT_EQ(hashOf("abc"), "ba7816bf8f01cfea414140de5dae2223b00361a396177a9cb410ff61f20015ad");
    EXPECT_EQ(hashOf("abcdbcdecdefdefgefghfghighijhijkijkljklmklmnlmnomnopnopq"),
              "248d6a61d20638b8e5c026930c3e6039a33ce45964ff2167f6ecedd419db06c1");
    EXPECT_EQ(
        hashOf("abcdefghbcdefghicdefghijdefghijkefghijklfghijklmghijklmnhijklmnoijklmnopjklmnopqklmnopqr"
               "lmnopqrsmnopqrstnopqrstu"),
        "cf5b16a778af8380036ce59e7b0492370b249b11e8f07a51afac45037afee9d1");
    EXPECT_EQ(hashOf(std::string(1'000'000, 'a')),
              "cdc76e5c9914fb9281a1c7e284d73e67f1809a48a497200e046d39ccc7112cd0");
}

// Published for the byte-oriented tests of one block's edges: n bytes 0.
TEST(Sha256, PadsAboutTheEdgesOfABlock) {
    EXPECT_EQ(hashOf(std::string(55, '\0')),
              "02779466cdec163811d078815c633f21901413081449002f24aa3e80f0b88ef7");
    EXPECT_EQ(hashOf(std::string(56, '\0')),
              "d4817aa5497628e7c77e6b606107042bbba3130888c5f47a375e6179be789fbb");
    EXPECT_EQ(hashOf(std::string(57, '\0')),
              "65a16cb7861335d5ace3c60718b5052e44660726da4cd13bb745381b235a1785");
    EXPECT_EQ(hashOf(std::string(64, '\0')),
              "f5a5fd42d16a20302798ef6ed309979b43003d2320d9f0e8ea9831a92759fb4b");
}

TEST(Sha256, DoesNotDependOnThePieces) {
    const std::string text(200, 'x');
    for (std::size_t cut = 0; cut <= text.size(); ++cut) {
        Sha256 hash;
        hash.add(std::string_view(text).substr(0, cut));
        hash.add(std::string_view(text).substr(cut));
        EXPECT_EQ(hash.hexDigest(), hashOf(text)) << cut;
    }
}

} // namespace
} // namespace orvista
