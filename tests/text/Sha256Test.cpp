#include <gtest/gtest.h>

#include <string>

#include "text/Sha256.h"

namespace {

struct KnownDigest {
  const char* name;
  std::string bytes;
  const char* digest;
};

class Sha256Digest : public testing::TestWithParam<KnownDigest> {};

TEST_P(Sha256Digest, IsTheOneOfTheStandard) {
  EXPECT_EQ(shorttest::Sha256(GetParam().bytes), GetParam().digest);
}

// The first three and the last from FIPS 180-4's examples; the others about the edges of a block.
INSTANTIATE_TEST_SUITE_P(
    Known, Sha256Digest,
    testing::Values(KnownDigest{"Nothing", "",
                                "e3b0c44298fc1c149afbf4c8996fb92427ae41e4649b934ca495991b7852b855"},
                    KnownDigest{"ThreeLetters", "abc",
                                "ba7816bf8f01cfea414140de5dae2223b00361a396177a9cb410ff61f20015ad"},
                    KnownDigest{"TwoBlocks", "abcdbcdecdefdefgefghfghighijhijkijkljklmklmnlmnomnopnopq",
                                "248d6a61d20638b8e5c026930c3e6039a33ce45964ff2167f6ecedd419db06c1"},
                    KnownDigest{"LengthInTheSameBlock", std::string(55, 'a'),
                                "9f4390f8d30c2dd92ec9f095b65e2b9ae9b0a925a5258e241c9f1e910f734318"},
                    KnownDigest{"LengthInTheNextBlock", std::string(56, 'a'),
                                "b35439a4ac6f0948b6d6f9e3c6af0f5f590ce20f1bde7090ef7970686ec6738a"},
                    KnownDigest{"WholeBlock", std::string(64, 'a'),
                                "ffe054fe7ae0cb6dc65c3af9b61d5209f439851db43d0ba5997337df154668eb"},
                    KnownDigest{"AMillionLetters", std::string(1000000, 'a'),
                                "cdc76e5c9914fb9281a1c7e284d73e67f1809a48a497200e046d39ccc7112cd0"}),
    [](const auto& row) { return row.param.name; });

}  // namespace
