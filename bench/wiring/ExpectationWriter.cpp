#include "bench/wiring/ExpectationWriter.h"

#include <filesystem>

#include "plugin/data/ShorttestData.h"
#include "text/Paths.h"

namespace kxbench::wiring {

namespace {

TShortTestData NothingConnected(std::int32_t firstChannel, std::int32_t lastChannel) {
  TShortTestData data(firstChannel, lastChannel);
  for (std::int32_t i = 0; i <= data.Highconnections(); ++i) {
    for (std::int32_t j = 0; j < i; ++j) data.SetC(i, j, CellState::NotConnected, NoResistance);
  }
  return data;
}

void CopyOptions(const TShortTestData& from, TShortTestData& to) {
  to.Schwelle = from.Schwelle;
  to.Schwelle2 = from.Schwelle2;
  to.U_Control = from.U_Control;
  to.LastRelaisKarte = from.LastRelaisKarte;
  to.LastRelais = from.LastRelais;
  to.Timeout = from.Timeout;
  to.MaxError = from.MaxError;
}

}  // namespace

void WriteExpectation(const std::string& utf8Path, const ExpectedWiring& wiring, OptionsFrom options) {
  TShortTestData data = NothingConnected(wiring.firstChannel, wiring.lastChannel);
  for (const std::vector<std::int32_t>& net : wiring.nets) {
    for (std::size_t a = 0; a < net.size(); ++a) {
      for (std::size_t b = a + 1; b < net.size(); ++b) {
        data.SetC(net[a] - data.von, net[b] - data.von, CellState::Connected, NoResistance);
      }
    }
  }
  if (options == OptionsFrom::File && std::filesystem::exists(shorttest::AbsolutePath(utf8Path))) {
    CopyOptions(TShortTestData(utf8Path), data);
  }
  data.SaveExpectationFile(utf8Path);
}

}  // namespace kxbench::wiring
