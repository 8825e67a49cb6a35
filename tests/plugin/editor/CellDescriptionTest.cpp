#include <gtest/gtest.h>

#include <limits>
#include <optional>
#include <ostream>

#include "plugin/editor/CellDescription.h"
#include "text/NumberText.h"

namespace shorttest {
namespace {

std::string NameOfChannel(std::int32_t channel) {
  if (channel == 11) return "Kl. 15";
  if (channel == 14) return "Masse";
  return "";
}

struct DescribedCell {
  const char* name;
  int column;
  int row;
  CellState state;
  double ohm;
  const char* text;
};

void PrintTo(const DescribedCell& row, std::ostream* out) { *out << row.name; }

class DescriptionOfACell : public testing::TestWithParam<DescribedCell> {
 protected:
  DescriptionOfACell() { SetDecimalSeparator(","); }
  ~DescriptionOfACell() override { SetDecimalSeparator(std::nullopt); }
};

TEST_P(DescriptionOfACell, TellsChannelsNamesStateAndResistance) {
  const DescribedCell& cell = GetParam();
  TShortTestData data(10, 15);
  data.SetC(cell.column, cell.row, cell.state, cell.ohm);
  EXPECT_EQ(CellDescription(data, cell.column, cell.row, NameOfChannel), cell.text);
  EXPECT_EQ(CellDescription(data, cell.row, cell.column, NameOfChannel), cell.text);
}

std::string NameOfCell(const testing::TestParamInfo<DescribedCell>& row) { return row.param.name; }

constexpr double None = NoResistance;

INSTANTIATE_TEST_SUITE_P(
    States, DescriptionOfACell,
    testing::Values(DescribedCell{"Connected", 1, 4, CellState::Connected, 0.42,
                                  "Kanal 11 (Kl. 15) und Kanal 14 (Masse)\nverbunden, 0,42 Ohm"},
                    DescribedCell{"WithoutNames", 0, 5, CellState::Connected, 0.0,
                                  "Kanal 10 und Kanal 15\nverbunden, 0 Ohm"},
                    DescribedCell{"OneName", 0, 1, CellState::NotConnected, 1.5e8,
                                  "Kanal 10 und Kanal 11 (Kl. 15)\nnicht verbunden, 150 MOhm"},
                    DescribedCell{"NotMeasured", 2, 3, CellState::Connected, None,
                                  "Kanal 12 und Kanal 13\nverbunden, Widerstand nicht gemessen"},
                    DescribedCell{"Unknown", 2, 3, CellState::Unknown, None,
                                  "Kanal 12 und Kanal 13\nnoch unbekannt, Widerstand nicht gemessen"},
                    DescribedCell{"Skipped", 2, 3, CellState::ExcludedPair, None,
                                  "Kanal 12 und Kanal 13\nübersprungen, Widerstand nicht gemessen"},
                    DescribedCell{"NotTestable", 2, 3, CellState::NotTestable, None,
                                  "Kanal 12 und Kanal 13\nnicht prüfbar, Widerstand nicht gemessen"},
                    DescribedCell{"Reserved", 2, 3, CellState::Reserved, None,
                                  "Kanal 12 und Kanal 13\nreserviert, Widerstand nicht gemessen"},
                    DescribedCell{"NoState", 2, 3, static_cast<CellState>(7), None,
                                  "Kanal 12 und Kanal 13\nunbekannter Zustand 7, Widerstand nicht gemessen"},
                    DescribedCell{"ChannelInUse", 4, 4, CellState::NotApplicable, None,
                                  "Kanal 14 (Masse)\nmit sich selbst"},
                    DescribedCell{"BlockedChannel", 2, 2, CellState::Suspended, None, "Kanal 12\ngesperrt"}),
    NameOfCell);

struct WrittenResistance {
  const char* name;
  double ohm;
  const char* text;
};

void PrintTo(const WrittenResistance& row, std::ostream* out) { *out << row.name; }

class ResistanceInWords : public testing::TestWithParam<WrittenResistance> {
 protected:
  ResistanceInWords() { SetDecimalSeparator(","); }
  ~ResistanceInWords() override { SetDecimalSeparator(std::nullopt); }
};

TEST_P(ResistanceInWords, HasFourDigitsAndAUnit) {
  EXPECT_EQ(ResistanceText(GetParam().ohm), GetParam().text);
}

std::string NameOfResistance(const testing::TestParamInfo<WrittenResistance>& row) { return row.param.name; }

INSTANTIATE_TEST_SUITE_P(
    Units, ResistanceInWords,
    testing::Values(
        WrittenResistance{"Zero", 0.0, "0 Ohm"}, WrittenResistance{"Small", 0.123456, "0,1235 Ohm"},
        WrittenResistance{"Ohm", 12.3456, "12,35 Ohm"}, WrittenResistance{"LastOhm", 999.94, "999,9 Ohm"},
        WrittenResistance{"RoundedUpToTheNextUnit", 999.96, "1 kOhm"},
        WrittenResistance{"KiloOhm", 2500.7, "2,501 kOhm"}, WrittenResistance{"MegaOhm", 1.9e6, "1,9 MOhm"},
        WrittenResistance{"GigaOhm", 1e14, "100000 GOhm"},
        WrittenResistance{"Endless", std::numeric_limits<double>::infinity(), "INF GOhm"},
        WrittenResistance{"NoNumber", std::numeric_limits<double>::quiet_NaN(), "NAN Ohm"}),
    NameOfResistance);

}  // namespace
}  // namespace shorttest
