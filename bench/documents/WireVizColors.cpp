#include "bench/documents/WireVizColors.h"

#include <array>

namespace kxbench::documents {

namespace {

using Colors = std::vector<std::string>;

Colors Din47100() {
  return {"WH",     "BN",     "GN",     "YE",     "GY",     "PK",     "BU",     "RD",     "BK",     "VT",
          "GYPK",   "RDBU",   "WHGN",   "BNGN",   "WHYE",   "YEBN",   "WHGY",   "GYBN",   "WHPK",   "PKBN",
          "WHBU",   "BNBU",   "WHRD",   "BNRD",   "WHBK",   "BNBK",   "GYGN",   "YEGY",   "PKGN",   "YEPK",
          "GNBU",   "YEBU",   "GNRD",   "YERD",   "GNBK",   "YEBK",   "GYBU",   "PKBU",   "GYRD",   "PKRD",
          "GYBK",   "PKBK",   "BUBK",   "RDBK",   "WHBNBK", "YEGNBK", "GYPKBK", "RDBUBK", "WHGNBK", "BNGNBK",
          "WHYEBK", "YEBNBK", "WHGYBK", "GYBNBK", "WHPKBK", "PKBNBK", "WHBUBK", "BNBUBK", "WHRDBK", "BNRDBK"};
}

// Each pair joins one of five major colours to one of five minor ones. `tipFirst`: the pair's wire with the
// major colour first comes first, and the other one of the white pairs has no stripe.
Colors TwentyFivePairs(bool tipFirst) {
  constexpr std::array<const char*, 5> Major = {"WH", "RD", "BK", "YE", "VT"};
  constexpr std::array<const char*, 5> Minor = {"BU", "OG", "GN", "BN", "SL"};
  Colors colors;
  for (const std::string major : Major) {
    for (const std::string minor : Minor) {
      const std::string ring = tipFirst && major == Major.front() ? minor : minor + major;
      colors.push_back(tipFirst ? major + minor : ring);
      colors.push_back(tipFirst ? ring : major + minor);
    }
  }
  return colors;
}

}  // namespace

std::vector<std::string> WireVizColorCode(std::string_view code) {
  if (code == "DIN") return Din47100();
  if (code == "IEC") return {"BN", "RD", "OG", "YE", "GN", "BU", "VT", "GY", "WH", "BK"};
  if (code == "BW") return {"BK", "WH"};
  if (code == "TEL") return TwentyFivePairs(false);
  if (code == "TELALT") return TwentyFivePairs(true);
  if (code == "T568A") return {"WHGN", "GN", "WHOG", "BU", "WHBU", "OG", "WHBN", "BN"};
  if (code == "T568B") return {"WHOG", "OG", "WHGN", "BU", "WHBU", "GN", "WHBN", "BN"};
  return {};
}

}  // namespace kxbench::documents
