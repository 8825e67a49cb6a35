#include <gmock/gmock.h>

#include "ui/terminal/KeyDecoder.h"

namespace kxbench {
namespace {

std::string Keys(KeyDecoder& decoder, bool complete) {
  std::string text;
  while (const auto key = decoder.Next(complete)) {
    switch (key->kind) {
      case Key::Kind::Text:
        text += key->text;
        break;
      case Key::Kind::Enter:
        text += "<enter>";
        break;
      case Key::Kind::Erase:
        text += "<erase>";
        break;
      case Key::Kind::EraseAll:
        text += "<erase all>";
        break;
      case Key::Kind::End:
        text += "<end>";
        break;
      case Key::Kind::Resized:
        break;
    }
  }
  return text;
}

struct KeyRow {
  const char* name;
  const char* bytes;
  const char* keys;
};

class DecodedKeys : public testing::TestWithParam<KeyRow> {};

TEST_P(DecodedKeys, AreTheUsersKeys) {
  KeyDecoder decoder;
  decoder.Take(GetParam().bytes);
  EXPECT_EQ(Keys(decoder, true), GetParam().keys);
}

INSTANTIATE_TEST_SUITE_P(Keys, DecodedKeys,
                         testing::Values(KeyRow{"Barcode", "SN-1\r", "SN-1<enter>"},
                                         KeyRow{"TwoBarcodes", "A\nB\r", "A<enter>B<enter>"},
                                         KeyRow{"Erase", "A\x7f\b", "A<erase><erase>"},
                                         KeyRow{"EraseAll", "A\x15", "A<erase all>"},
                                         KeyRow{"CtrlD", "\x04", "<end>"}, KeyRow{"Escape", "\x1b", "<end>"},
                                         KeyRow{"ArrowUp", "\x1b[AX", "X"},
                                         KeyRow{"Function", "\x1bOPX", "X"},
                                         KeyRow{"Delete", "\x1b[3~X", "X"}, KeyRow{"AltX", "\x1bX", "<end>X"},
                                         KeyRow{"OtherControls", "\x01\x07\tX", "X"},
                                         KeyRow{"Umlaut", "\xC3\xA4", "\xC3\xA4"}),
                         [](const auto& row) { return std::string(row.param.name); });

TEST(KeyDecoder, WaitsForTheRestOfAFunctionKey) {
  KeyDecoder decoder;
  decoder.Take("\x1b");
  EXPECT_EQ(Keys(decoder, false), "");
  decoder.Take("[1");
  EXPECT_EQ(Keys(decoder, false), "");
  decoder.Take(";5CX");
  EXPECT_EQ(Keys(decoder, false), "X");
  EXPECT_TRUE(decoder.Empty());
}

}  // namespace
}  // namespace kxbench
