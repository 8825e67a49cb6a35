#include "tests/plugin/data/PlainReader.h"

#include <cctype>
#include <cmath>
#include <cstddef>
#include <cstdlib>
#include <locale>
#include <map>
#include <optional>
#include <sstream>
#include <utility>

namespace data_test {
namespace {

// A text file that is read a character or a line at a time and then says whether it has ended.
class CharacterFile {
 public:
  explicit CharacterFile(std::string content) : content_(std::move(content)) {}

  bool Ended() const { return at_ == content_.size(); }
  std::optional<unsigned char> Next() {
    if (Ended()) return std::nullopt;
    return static_cast<unsigned char>(content_[at_++]);
  }
  std::string Line() {
    std::string line;
    while (const auto c = Next()) {
      if (*c == '\n') break;
      if (*c == '\r') {
        if (!Ended() && content_[at_] == '\n') ++at_;
        break;
      }
      line += static_cast<char>(*c);
    }
    return line;
  }

 private:
  std::string content_;
  std::size_t at_ = 0;
};

bool IsBlank(char c) { return c == ' ' || c == '\t' || c == '\v' || c == '\f'; }

std::string WithoutBlanksAround(std::string text) {
  while (!text.empty() && IsBlank(text.back())) text.pop_back();
  while (!text.empty() && IsBlank(text.front())) text.erase(0, 1);
  return text;
}

std::string InLowerCase(std::string text) {
  for (char& c : text) c = static_cast<char>(std::tolower(static_cast<unsigned char>(c)));
  return text;
}

using Section = std::map<std::string, std::string>;

// First section of a name and first value of a key; names in lower case.
std::map<std::string, Section> IniPart(const std::string& content) {
  std::map<std::string, Section> sections;
  Section ignored;
  Section* current = &ignored;
  CharacterFile file(content.rfind("\xEF\xBB\xBF", 0) == 0 ? content.substr(3) : content);
  while (!file.Ended()) {
    const std::string line = WithoutBlanksAround(file.Line());
    if (line.empty() || line[0] == ';') continue;
    if (line[0] == '[' && line.find(']') != std::string::npos) {
      const std::string name = InLowerCase(line.substr(1, line.find(']') - 1));
      const bool isNew = sections.count(name) == 0;
      current = isNew ? &sections[name] : &ignored;
    } else if (const std::size_t equals = line.find('='); equals != std::string::npos) {
      std::string value = WithoutBlanksAround(line.substr(equals + 1));
      if (value.size() > 1 && (value[0] == '"' || value[0] == '\'') && value.back() == value[0]) {
        value = value.substr(1, value.size() - 2);
      }
      current->emplace(InLowerCase(WithoutBlanksAround(line.substr(0, equals))), value);
    }
  }
  return sections;
}

// Takes a character off the front of the text if it is one of `characters`.
bool Take(std::string& text, const std::string& characters) {
  if (text.empty() || characters.find(text[0]) == std::string::npos) return false;
  text.erase(0, 1);
  return true;
}

// Takes the digits off the front of the text; whether there were any.
bool TakeDigits(std::string& text) {
  if (!Take(text, "0123456789")) return false;
  while (Take(text, "0123456789")) {
  }
  return true;
}

bool IsInteger(std::string text) {
  Take(text, "+-");
  return TakeDigits(text) && text.empty();
}

bool IsFloat(std::string text) {
  Take(text, "+-");
  const bool integerPart = TakeDigits(text);
  const bool fraction = Take(text, ".") && TakeDigits(text);
  if (!integerPart && !fraction) return false;
  if (!Take(text, "eE")) return text.empty();
  Take(text, "+-");
  return TakeDigits(text) && text.empty();
}

class Keys {
 public:
  Keys(const std::string& content, char separator) : sections_(IniPart(content)), separator_(separator) {}

  std::int32_t Integer(const std::string& section, const std::string& key, std::int32_t fallback) {
    const std::string text = Text(section, key);
    if (!IsInteger(text)) return fallback;
    const long long value = std::strtoll(text.c_str(), nullptr, 10);
    return value < INT32_MIN || value > INT32_MAX ? fallback : static_cast<std::int32_t>(value);
  }

  double Float(const std::string& section, const std::string& key, double fallback) {
    std::string text = Text(section, key);
    if (separator_ != '.' && text.find('.') != std::string::npos) return fallback;
    for (char& c : text) c = c == separator_ ? '.' : c;
    if (!IsFloat(text)) return fallback;
    std::istringstream stream(text);
    stream.imbue(std::locale::classic());
    double value = 0.0;
    if (stream >> value || std::fabs(value) < 1.0) return value;  // too small for a double: 0
    // The largest double is written rounded up; nothing above that can be read.
    const long double exact = std::strtold(text.c_str(), nullptr);
    return std::fabs(exact) <= 1.79769313486232E308L ? value : fallback;
  }

 private:
  // Blanks inside quotes do not belong to a number either.
  std::string Text(const std::string& section, const std::string& key) {
    return WithoutBlanksAround(sections_[InLowerCase(section)][InLowerCase(key)]);
  }

  std::map<std::string, Section> sections_;
  char separator_;
};

}  // namespace

PlainExpectation ReadKeysPlainly(const std::string& content, char separator) {
  Keys keys(content, separator);
  PlainExpectation result;
  result.von = keys.Integer("BEREICH", "START", 1);
  result.bis = keys.Integer("BEREICH", "ENDE", 2);
  result.Schwelle = keys.Float("BEREICH", "WIDERSTAND", 10.0);
  result.Schwelle2 = keys.Float("BEREICH", "WIDERSTAND2", result.Schwelle);
  result.U_Control = keys.Integer("OPTION", "U_KONTROLLE", 2);
  result.LastRelaisKarte = keys.Integer("OPTION", "LASTRELAISKARTE", 0);
  result.LastRelais = keys.Integer("OPTION", "LASTRELAIS", 0);
  result.Timeout = keys.Integer("OPTION", "TIMEOUT", 5000);
  result.MaxError = keys.Integer("OPTION", "MAX ERROR", 10);
  return result;
}

void ReadStatesPlainly(const std::string& content, PlainExpectation& result) {
  CharacterFile file(content);
  while (!file.Ended() && file.Line().find("[DATEN]") == std::string::npos) {
  }
  const std::int64_t count = std::int64_t{result.bis} - result.von + 1;
  for (std::int64_t row = 0; row < count; ++row) {
    result.states.emplace_back();
    for (std::int64_t column = 0; column < count; ++column) {
      const auto c = file.Next();
      result.states.back().push_back(c ? (*c - 48) & 0xFF : PlainExpectation::BehindTheEnd);
    }
    file.Line();
  }
}

namespace {

bool IsDefined(CellState state) {
  const int number = static_cast<int>(state);
  return number <= 5 || number == 8 || number == 9;
}

template <typename Value>
void Compare(std::ostringstream& text, const char* what, Value actual, Value expected) {
  if (actual != expected) text << what << " is " << actual << " instead of " << expected << "; ";
}

void CompareCell(std::ostringstream& text, std::size_t row, std::size_t column, const TConnectionCell& cell,
                 int expected) {
  const bool same = expected == PlainExpectation::BehindTheEnd ? !IsDefined(cell.state)
                                                               : static_cast<int>(cell.state) == expected;
  if (!same) {
    text << "cell " << row << ", " << column << " is " << static_cast<int>(cell.state) << " instead of "
         << expected << "; ";
  }
  if (cell.resistance != -1.0) text << "cell " << row << ", " << column << " has a resistance; ";
}

}  // namespace

PlainExpectation ReadPlainly(const std::string& content, char separator) {
  PlainExpectation result = ReadKeysPlainly(content, separator);
  ReadStatesPlainly(content, result);
  return result;
}

std::string Difference(const TShortTestData& data, const PlainExpectation& expected) {
  std::ostringstream text;
  Compare(text, "von", data.von, expected.von);
  Compare(text, "bis", data.bis, expected.bis);
  Compare(text, "Schwelle", data.Schwelle, expected.Schwelle);
  Compare(text, "Schwelle2", data.Schwelle2, expected.Schwelle2);
  Compare(text, "U_Control", data.U_Control, expected.U_Control);
  Compare(text, "LastRelaisKarte", data.LastRelaisKarte, expected.LastRelaisKarte);
  Compare(text, "LastRelais", data.LastRelais, expected.LastRelais);
  Compare(text, "Timeout", data.Timeout, expected.Timeout);
  Compare(text, "MaxError", data.MaxError, expected.MaxError);
  Compare(text, "number of rows", data.connections.size(), expected.states.size());
  Compare(text, "number of voltages", data.voltages.size(), expected.states.size());
  for (const double voltage : data.voltages) Compare(text, "voltage", voltage, 0.0);
  for (std::size_t row = 0; row < expected.states.size() && row < data.connections.size(); ++row) {
    Compare(text, "number of columns", data.connections[row].size(), expected.states[row].size());
    for (std::size_t c = 0; c < expected.states[row].size() && c < data.connections[row].size(); ++c) {
      CompareCell(text, row, c, data.connections[row][c], expected.states[row][c]);
    }
  }
  return text.str();
}

}  // namespace data_test
