#include "bench/documents/FieldText.h"

#include <algorithm>
#include <array>

#include "bench/documents/CsvScanner.h"

namespace kxbench::documents {

void PlaceSplitter::Learn(const std::string& text) {
  for (std::size_t i = 0; i < Splitters.size(); ++i) {
    const std::size_t at = text.rfind(Splitters[i]);
    if (at != std::string::npos && at > 0 && at + 1 < text.size()) ++counts_[i];
  }
}

Pin PlaceSplitter::Split(const std::string& text) const {
  if (IsNumber(text)) return {"", text};
  const auto* const best = std::max_element(std::begin(counts_), std::end(counts_));
  const std::size_t at =
      *best == 0 ? std::string::npos : text.rfind(Splitters[static_cast<std::size_t>(best - counts_)]);
  if (at == std::string::npos || at == 0 || at + 1 == text.size()) return {text, ""};
  return {CleanedField(std::string_view(text).substr(0, at)),
          CleanedField(std::string_view(text).substr(at + 1))};
}

std::vector<std::string> PlaceSplitter::PlacesIn(const std::string& text) {
  std::vector<std::string> places;
  for (const std::string& part : SplitAt(text, ",;")) {
    const std::vector<std::string> words = SplitAt(part, " ");
    const bool each = std::all_of(words.begin(), words.end(), [](const std::string& word) {
      return IsNumber(word) || word.find_first_of(".:/-") != std::string::npos;
    });
    if (each) {
      places.insert(places.end(), words.begin(), words.end());
    } else {
      places.push_back(part);
    }
  }
  return places;
}

bool SaysNothing(const std::string& text) {
  static constexpr auto Words = std::to_array<std::string_view>({"-",
                                                                 "--",
                                                                 "---",
                                                                 "–",
                                                                 "—",
                                                                 "nc",
                                                                 "n.c.",
                                                                 "n/c",
                                                                 "n.c",
                                                                 "not connected",
                                                                 "unconnected",
                                                                 "unused",
                                                                 "not used",
                                                                 "n/a",
                                                                 "spare",
                                                                 "open",
                                                                 "frei",
                                                                 "leer",
                                                                 "offen",
                                                                 "unbelegt",
                                                                 "nicht belegt",
                                                                 "n.b.",
                                                                 "nicht verbunden"});
  return std::find(Words.begin(), Words.end(), Lowered(text)) != Words.end();
}

bool IsNumber(std::string_view text) {
  return !text.empty() && std::all_of(text.begin(), text.end(), [](char c) { return c >= '0' && c <= '9'; });
}

std::string Lowered(std::string_view text) {
  std::string lowered(text);
  for (char& c : lowered) {
    if (c >= 'A' && c <= 'Z') c = static_cast<char>(c - 'A' + 'a');
  }
  return lowered;
}

std::vector<std::string> SplitAt(const std::string& text, std::string_view separators) {
  std::vector<std::string> parts;
  for (std::size_t begin = 0; begin <= text.size();) {
    const std::size_t end = std::min(text.find_first_of(separators, begin), text.size());
    const std::string part = CleanedField(std::string_view(text).substr(begin, end - begin));
    if (!part.empty()) parts.push_back(part);
    begin = end + 1;
  }
  return parts;
}

}  // namespace kxbench::documents
