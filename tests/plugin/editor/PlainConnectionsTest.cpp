// Random connection texts and random matrices against a second, literal reading and writing.

#include <gtest/gtest.h>

#include <array>
#include <cstddef>
#include <cstdint>
#include <random>
#include <string>

#include "plugin/editor/ChannelNumbers.h"
#include "plugin/editor/ConnectionTexts.h"
#include "tests/plugin/editor/PlainConnections.h"

namespace shorttest {
namespace {

class RandomTexts {
 public:
  explicit RandomTexts(std::uint32_t seed) : random_(seed) {}

  std::int32_t Number(std::int32_t from, std::int32_t to) {
    return std::uniform_int_distribution<std::int32_t>(from, to)(random_);
  }

  // Mostly channels of the range, now and then something that is none.
  std::string Line(std::int32_t von, std::int32_t bis) {
    constexpr std::array<const char*, 6> Separators{" ", ",", " , ", "  ", "\t", ", "};
    constexpr std::array<const char*, 6> Oddities{"x", "\"\"", ",", "0", "999", "1-2"};
    std::string line;
    for (std::int32_t n = Number(0, 5); n > 0; --n) {
      const bool odd = Number(0, 99) == 0;
      line += odd ? Oddities[Index(Oddities.size())] : std::to_string(Number(von, bis));
      if (n > 1) line += Separators[Index(Separators.size())];
    }
    return line;
  }

  ConnectionTexts Texts(std::int32_t von, std::int32_t bis) {
    ConnectionTexts texts;
    for (std::int32_t n = Number(0, 4); n > 0; --n) texts.expected.push_back(Line(von, bis));
    for (std::int32_t n = Number(0, 3); n > 0; --n) texts.skipped.push_back(Line(von, bis));
    if (Number(0, 2) == 0) texts.blocked = Line(von, bis);
    return texts;
  }

 private:
  std::size_t Index(std::size_t size) {
    return static_cast<std::size_t>(Number(0, static_cast<std::int32_t>(size) - 1));
  }

  std::mt19937 random_;
};

TEST(PlainConnections, RandomTextsAreReadTheSame) {
  RandomTexts random(1);
  for (int n = 0; n < 5000; ++n) {
    const std::int32_t von = random.Number(1, 60);
    const std::int32_t bis = von + random.Number(0, 9);
    const ConnectionTexts texts = random.Texts(von, bis);
    TShortTestData data(von, bis);
    bool failed = false;
    try {
      MatrixFromTexts(texts, data);
    } catch (const ConversionError&) {
      failed = true;
    } catch (const ChannelRangeError&) {
      failed = true;
    }
    const PlainConnections plain = ReadConnectionsPlainly(texts, von, bis);
    ASSERT_EQ(Difference(data, plain), "") << "case " << n;
    ASSERT_EQ(failed, plain.failed) << "case " << n;
  }
}

// Any states whatever, as a damaged file can bring them in.
TEST(PlainConnections, RandomMatricesAreWrittenTheSame) {
  RandomTexts random(2);
  for (int n = 0; n < 2000; ++n) {
    const std::int32_t von = random.Number(-5, 60);
    TShortTestData data(von, von + random.Number(-1, 9));
    for (std::int32_t i = 0; i <= data.Highconnections(); ++i) {
      for (std::int32_t j = 0; j <= i; ++j) {
        data.SetC(i, j, static_cast<CellState>(random.Number(0, 9)), NoResistance);
      }
    }
    const ConnectionTexts written = TextsFromMatrix(data);
    const ConnectionTexts plain = WriteConnectionsPlainly(data);
    ASSERT_EQ(written.expected, plain.expected) << "case " << n;
    ASSERT_EQ(written.skipped, plain.skipped) << "case " << n;
    ASSERT_EQ(written.blocked, plain.blocked) << "case " << n;
  }
}

}  // namespace
}  // namespace shorttest
