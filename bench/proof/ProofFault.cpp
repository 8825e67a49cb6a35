#include "bench/proof/ProofFault.h"

#include <algorithm>
#include <array>
#include <charconv>
#include <system_error>

#include "bench/proof/NumberWords.h"

namespace kxbench::proof {

namespace {

struct ClassName {
  FaultClass kind;
  const char* word;
};

constexpr std::array<ClassName, std::size(AllClasses)> ClassNames = {
    {{FaultClass::Open, "open"},
     {FaultClass::Short, "short"},
     {FaultClass::ResistiveShort, "resistive-short"},
     {FaultClass::Swapped, "swapped"},
     {FaultClass::Misplaced, "misplaced"},
     {FaultClass::HighResistance, "high-resistance"},
     {FaultClass::Voltage, "voltage"},
     {FaultClass::Tester, "tester"}}};

/// The words of a text, one after the other.
class WordReader {
 public:
  explicit WordReader(std::string_view text) : rest_(text) {}

  std::string_view Next() {
    const std::size_t begin = std::min(rest_.find_first_not_of(' '), rest_.size());
    const std::size_t end = std::min(rest_.find(' ', begin), rest_.size());
    const std::string_view word = rest_.substr(begin, end - begin);
    rest_.remove_prefix(end);
    return word;
  }

  template <typename Number>
  bool Read(Number& number) {
    const std::string_view word = Next();
    const auto [end, error] = std::from_chars(word.data(), word.data() + word.size(), number);
    return error == std::errc() && end == word.data() + word.size();
  }

  bool AtEnd() const { return rest_.find_first_not_of(' ') == std::string_view::npos; }

 private:
  std::string_view rest_;
};

}  // namespace

std::string ClassWord(FaultClass kind) {
  const auto* const name = std::find_if(ClassNames.begin(), ClassNames.end(),
                                        [&](const ClassName& candidate) { return candidate.kind == kind; });
  return name->word;
}

std::string FaultWords(const ProofFault& fault) {
  std::string words = ClassWord(fault.kind);
  words += " " + ExactNumber(fault.ohm) + " " + ExactNumber(fault.volts) + " ";
  words += fault.tauSeconds ? ExactNumber(*fault.tauSeconds) : "stays";
  words += " " + std::to_string(fault.line) + (fault.staysClosed ? " closed" : " open");
  for (const Channel channel : fault.channels) words += " " + std::to_string(channel);
  return words;
}

std::optional<ProofFault> FaultFromWords(std::string_view words) {
  WordReader reader(words);
  const std::string_view word = reader.Next();
  const auto* const name = std::find_if(ClassNames.begin(), ClassNames.end(),
                                        [&](const ClassName& candidate) { return candidate.word == word; });
  if (name == ClassNames.end()) return std::nullopt;
  ProofFault fault;
  fault.kind = name->kind;
  if (!reader.Read(fault.ohm) || !reader.Read(fault.volts)) return std::nullopt;
  if (const std::string_view tau = reader.Next(); tau != "stays") {
    double seconds = 0;
    if (!WordReader(tau).Read(seconds)) return std::nullopt;
    fault.tauSeconds = seconds;
  }
  if (!reader.Read(fault.line)) return std::nullopt;
  fault.staysClosed = reader.Next() == "closed";
  while (!reader.AtEnd()) {
    Channel channel = 0;
    if (!reader.Read(channel)) return std::nullopt;
    fault.channels.push_back(channel);
  }
  return fault;
}

}  // namespace kxbench::proof
