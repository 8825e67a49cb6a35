#include "tests/plugin/data/ForeignLines.h"

#include <algorithm>
#include <cstddef>
#include <set>

namespace data_test {
namespace {

std::vector<std::string> Lines(std::string_view content) {
  if (content.substr(0, 3) == "\xEF\xBB\xBF") content.remove_prefix(3);
  std::vector<std::string> lines;
  bool open = false;
  for (std::size_t i = 0; i < content.size(); ++i) {
    const bool ends = content[i] == '\n' || content[i] == '\r';
    if (!open) lines.emplace_back();
    if (!ends) lines.back() += content[i];
    if (content[i] == '\r' && i + 1 < content.size() && content[i + 1] == '\n') ++i;
    open = !ends;
  }
  return lines;
}

// In capitals and without blanks around it.
std::string Name(std::string text) {
  const auto isBlank = [](char c) { return c == ' ' || c == '\t' || c == '\v' || c == '\f'; };
  while (!text.empty() && isBlank(text.back())) text.pop_back();
  text.erase(text.begin(), std::find_if_not(text.begin(), text.end(), isBlank));
  for (char& c : text) c = c >= 'a' && c <= 'z' ? static_cast<char>(c - 32) : c;
  return text;
}

bool IsHeader(const std::string& name) { return name[0] == '[' && name.find(']') != std::string::npos; }

const std::set<std::string>& OurKeys() {
  static const std::set<std::string> keys{
      "BEREICH/START",       "BEREICH/ENDE",       "BEREICH/WIDERSTAND",
      "BEREICH/WIDERSTAND2", "OPTION/U_KONTROLLE", "OPTION/LASTRELAIS",
      "OPTION/TIMEOUT",      "OPTION/MAX ERROR",   "OPTION/LASTRELAISKARTE"};
  return keys;
}

}  // namespace

std::vector<std::string> ForeignLines(std::string_view content) {
  std::vector<std::string> foreign;
  std::set<std::string> metSections;
  std::set<std::string> metKeys;  // as section/key, which a section may be called too
  std::string section;            // the one we are in, if it is ours
  for (const std::string& line : Lines(content)) {
    const std::string name = Name(line);
    if (!name.empty() && IsHeader(name)) {
      const std::string header = name.substr(1, name.find(']') - 1);
      const bool ours = header == "BEREICH" || header == "OPTION" || header == "DATEN";
      const bool first = header == "DATEN" || metSections.insert(header).second;
      section = ours && first ? header : "";
      if (!section.empty()) continue;
    } else if (section == "DATEN") {
      continue;
    } else if (!section.empty() && !name.empty() && name[0] != ';' && name.find('=') != std::string::npos) {
      const std::string key = section + "/" + Name(name.substr(0, name.find('=')));
      if (OurKeys().count(key) != 0 && metKeys.insert(key).second) continue;
    }
    foreign.push_back(line);
  }
  return foreign;
}

}  // namespace data_test
