#include "plugin/data/ExpectationText.h"

#include <cstddef>
#include <cstdint>
#include <vector>

#include "text/Lines.h"

namespace shorttest {
namespace {

constexpr std::string_view RangeSection = "BEREICH";
constexpr std::string_view OptionSection = "OPTION";
constexpr std::string_view DataSection = "DATEN";
constexpr std::string_view DataHeader = "[DATEN]";

// What the system's text reader yields past the end of a file.
constexpr char EndOfFile = 26;

// The file as a text reader sees it: character by character, line breaks included, and never an error at the
// end. A line ends with CRLF, LF or CR.
class TextReader {
 public:
  explicit TextReader(std::string_view text) : rest_(text) {}

  bool AtEnd() const { return rest_.empty(); }

  char ReadCharacter() {
    if (AtEnd()) return EndOfFile;
    const char character = rest_.front();
    rest_.remove_prefix(1);
    return character;
  }

  // The rest of the line; nothing at the end.
  std::string_view ReadLine() { return TakeLine(rest_).text; }

 private:
  std::string_view rest_;
};

// The digit's value; of any other character the code minus 48 as an 8-bit value.
CellState StateOf(char character) {
  return static_cast<CellState>(static_cast<std::uint8_t>(static_cast<unsigned char>(character) - 48U));
}

// Leaves the reader after the first line that contains the header anywhere, or at the end.
void SkipToData(TextReader& reader) {
  while (!reader.AtEnd() && reader.ReadLine().find(DataHeader) == std::string_view::npos) {
  }
}

// Neither characters nor line lengths are checked, so a short line's break is read as cells: every file, also
// a damaged one, means what it has always meant.
void ReadCells(TextReader& reader, TConnections& connections) {
  for (std::size_t row = 0; row < connections.size(); ++row) {
    for (std::size_t column = 0; column < connections.size(); ++column) {
      connections.Set(row, column, {StateOf(reader.ReadCharacter()), NoResistance});
    }
    reader.ReadLine();
  }
}

std::string StateDigits(const std::vector<TConnectionCell>& row) {
  std::string digits;
  for (const TConnectionCell& cell : row) digits += std::to_string(static_cast<int>(cell.state));
  return digits;
}

}  // namespace

ExpectationRange ReadExpectationRange(const IniText& ini) {
  return {ini.ReadInteger(RangeSection, "START", 1), ini.ReadInteger(RangeSection, "ENDE", 2)};
}

TShortTestData ReadExpectationText(std::string_view content) {
  const IniText ini(content);
  const ExpectationRange range = ReadExpectationRange(ini);
  TShortTestData data(range.von, range.bis);
  data.Schwelle = ini.ReadFloat(RangeSection, "WIDERSTAND", data.Schwelle);
  data.Schwelle2 = ini.ReadFloat(RangeSection, "WIDERSTAND2", data.Schwelle);
  data.U_Control = ini.ReadInteger(OptionSection, "U_KONTROLLE", data.U_Control);
  data.LastRelaisKarte = ini.ReadInteger(OptionSection, "LASTRELAISKARTE", data.LastRelaisKarte);
  data.LastRelais = ini.ReadInteger(OptionSection, "LASTRELAIS", data.LastRelais);
  data.Timeout = ini.ReadInteger(OptionSection, "TIMEOUT", data.Timeout);
  data.MaxError = ini.ReadInteger(OptionSection, "MAX ERROR", data.MaxError);

  TextReader reader(content);
  SkipToData(reader);
  ReadCells(reader, data.connections);
  return data;
}

std::string WriteExpectationText(const TShortTestData& data, std::string_view oldContent) {
  IniText ini(oldContent);
  ini.WriteInteger(RangeSection, "START", data.von);
  ini.WriteInteger(RangeSection, "ENDE", data.bis);
  ini.WriteFloat(RangeSection, "WIDERSTAND", data.Schwelle);
  ini.WriteFloat(RangeSection, "WIDERSTAND2", data.Schwelle2);
  ini.WriteInteger(OptionSection, "U_KONTROLLE", data.U_Control);
  ini.WriteInteger(OptionSection, "LASTRELAISKARTE", data.LastRelaisKarte);
  ini.WriteInteger(OptionSection, "LASTRELAIS", data.LastRelais);
  ini.WriteInteger(OptionSection, "TIMEOUT", data.Timeout);
  ini.WriteInteger(OptionSection, "MAX ERROR", data.MaxError);

  // The data block is always the last thing in the file: the reader stops after it.
  ini.EraseSection(DataSection);
  ini.AppendLine(std::string(DataHeader));
  for (const auto& row : data.connections) ini.AppendLine(StateDigits(row));
  return ini.Content();
}

}  // namespace shorttest
