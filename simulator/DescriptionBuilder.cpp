#include "simulator/DescriptionBuilder.h"

#include <algorithm>
#include <limits>
#include <set>
#include <utility>

#include "simulator/DescriptionLimits.h"
#include "simulator/Quantity.h"

namespace simulator {
namespace {

constexpr double DefaultWireOhm = 0.1;
constexpr double DefaultNetOhm = 0.05;  ///< from every point of a net to its splice
constexpr double DefaultSeriesOhm = 0.1;
constexpr double LeastOhm = 1e-3;
constexpr double MostOhm = 1e12;
constexpr double MostVolts = 1000.0;
constexpr double MostSeconds = 1e9;
constexpr std::int64_t MostCalls = std::numeric_limits<std::int64_t>::max();
constexpr std::int64_t MostTerminators = 64;

/// The value of a word that must lie within `low` .. `high`; `what` names it in the mistake.
template <typename Number>
Number InRange(const Word& word, std::optional<Number> value, Number low, Number high,
               const std::string& what) {
  if (!value || word.quoted || *value < low || *value > high) {
    ThrowMistake(word.position, "'" + word.text + "' is no " + what);
  }
  return *value;
}

std::int64_t Integer(const Word& word, std::int64_t low, std::int64_t high, const std::string& what) {
  return InRange<std::int64_t>(word, ReadInteger(word.text), low, high, what);
}

int SmallInteger(const Word& word, int low, int high, const std::string& what) {
  return static_cast<int>(Integer(word, low, high, what));
}

double Number(const Word& word, double low, double high, const std::string& what) {
  return InRange<double>(word, ReadNumber(word.text), low, high, what);
}

/// A resistance above 0.
double RealOhm(const Word& word) {
  return InRange<double>(word, ReadQuantity(word.text, Unit::Ohm), LeastOhm, MostOhm,
                         "resistance from 1 mOhm to 1 TOhm (for instance 0.1, 2.2k, 10MOhm)");
}

/// A resistance, or 0 for a connection without any.
double OhmOrNone(const Word& word) {
  const std::optional<double> ohm = ReadQuantity(word.text, Unit::Ohm);
  return ohm && *ohm == 0.0 && !word.quoted ? 0.0 : RealOhm(word);
}

double Volts(const Word& word) {
  return InRange<double>(word, ReadQuantity(word.text, Unit::Volt), -MostVolts, MostVolts,
                         "voltage from -1000 V to 1000 V (for instance 24, -3.3V, 500mV)");
}

double TimeConstant(const Word& word) {
  if (word.text == "never" && !word.quoted) return Infinity;
  return InRange<double>(word, ReadQuantity(word.text, Unit::Second), 1e-6, MostSeconds,
                         "time constant (for instance 0.5, 500ms, or never)");
}

void Expect(const Word& word, std::string_view text) {
  if (word.quoted || word.text != text) {
    ThrowMistake(word.position, "expected '" + std::string(text) + "' instead of '" + word.text + "'");
  }
}

void ExpectDifferent(const Word& a, const Word& b, Point pointA, Point pointB) {
  if (pointA == pointB) ThrowMistake(b.position, "'" + a.text + "' and '" + b.text + "' are one point");
}

Noise NoiseOf(const Words& words, double absolute) {
  return {absolute, Number(words[2], 0.0, 10.0, "relative standard deviation from 0 to 10")};
}

}  // namespace

const Statement* DescriptionBuilder::FindStatement(std::string_view keyword) {
  using Self = DescriptionBuilder;
  static constexpr Statement Statements[] = {
      {"cards", 2, 2, true, "cards COUNT", &Self::Cards},
      {"missing-card", 2, 2, false, "missing-card NUMBER", &Self::MissingCard},
      {"missing-first-card", 2, 2, true, "missing-first-card silent|error", &Self::MissingFirstCard},
      {"generation", 2, 2, true, "generation NUMBER", &Self::Generation},
      {"terminator", 3, 3, true, "terminator CARD RELAY", &Self::Terminator},
      {"contact-resistance", 2, 2, true, "contact-resistance OHM", &Self::ContactResistance},
      {"resistance-noise", 3, 3, true, "resistance-noise OHM RELATIVE", &Self::ResistanceNoise},
      {"voltage-noise", 3, 3, true, "voltage-noise VOLTS RELATIVE", &Self::VoltageNoise},
      {"seed", 2, 2, true, "seed NUMBER", &Self::Seed},
      {"drift", 3, 3, true, "drift FRACTION READINGS", &Self::SettlingDrift},
      {"stuck-open", 3, 3, false, "stuck-open CHANNEL LINE", &Self::StuckOpen},
      {"stuck-closed", 3, 3, false, "stuck-closed CHANNEL LINE", &Self::StuckClosed},
      {"fail-call", 3, 3, false, "fail-call NUMBER \"TEXT\"", &Self::FailCall},
      {"fail-from", 3, 3, false, "fail-from NUMBER \"TEXT\"", &Self::FailFrom},
      {"channel", 3, 3, false, "channel NAME NUMBER", &Self::Channel},
      {"node", 2, 0, false, "node NAME...", &Self::InnerNode},
      {"wire", 3, 4, false, "wire POINT POINT [OHM]", &Self::Wire},
      {"resistor", 4, 4, false, "resistor POINT POINT OHM", &Self::PlainResistor},
      {"net", 3, 0, false, "net POINT POINT... [each OHM]", &Self::Net},
      {"leakage", 2, 2, true, "leakage OHM", &Self::Leakage},
      {"capacitor", 6, 8, false, "capacitor PLUS MINUS VOLTS tau SECONDS|never [series OHM]",
       &Self::Capacitance},
      {"charge", 5, 7, false, "charge POINT VOLTS tau SECONDS|never [series OHM]", &Self::Charge},
      {"cut", 3, 3, false, "cut POINT POINT", &Self::Cut},
      {"disconnect", 2, 2, false, "disconnect POINT", &Self::Disconnect},
      {"swap", 3, 3, false, "swap POINT POINT", &Self::Swap},
      {"joint", 3, 3, false, "joint POINT OHM", &Self::Joint},
  };
  const auto* found = std::find_if(std::begin(Statements), std::end(Statements),
                                   [&](const Statement& s) { return s.keyword == keyword; });
  return found == std::end(Statements) ? nullptr : found;
}

// --- the tester

void DescriptionBuilder::Cards(const Words& words) {
  cards_ = SmallInteger(words[1], 0, MaxCards, "number of relay cards (0 to 5)");
}

void DescriptionBuilder::MissingCard(const Words& words) {
  const int number = SmallInteger(words[1], 1, MaxCards, "number of a relay card (1 to 5)");
  missingCards_.try_emplace(number - 1, words[1].position);
}

void DescriptionBuilder::MissingFirstCard(const Words& words) {
  if (words[1].text != "error") Expect(words[1], "silent");
  description_.missingFirstCardIsError = words[1].text == "error";
}

void DescriptionBuilder::Generation(const Words& words) {
  description_.generation = SmallInteger(words[1], 1, 99, "hardware generation (1 to 99)");
}

void DescriptionBuilder::Terminator(const Words& words) {
  const int card = SmallInteger(words[1], 1, 99, "number of a card (1 to 99)");
  const int relay = SmallInteger(words[2], 1, MostTerminators, "number of a relay (1 to 64)");
  description_.terminator = TerminatorAddress{card - 1, relay - 1};
}

void DescriptionBuilder::ContactResistance(const Words& words) {
  description_.contactOhm = OhmOrNone(words[1]);
}

void DescriptionBuilder::ResistanceNoise(const Words& words) {
  description_.resistanceNoise = NoiseOf(words, OhmOrNone(words[1]));
}

void DescriptionBuilder::VoltageNoise(const Words& words) {
  const double volts = InRange<double>(words[1], ReadQuantity(words[1].text, Unit::Volt), 0.0, MostVolts,
                                       "standard deviation from 0 to 1000 V");
  description_.voltageNoise = NoiseOf(words, volts);
}

void DescriptionBuilder::Seed(const Words& words) {
  description_.seed = static_cast<std::uint64_t>(Integer(words[1], 0, MostCalls, "seed"));
}

void DescriptionBuilder::SettlingDrift(const Words& words) {
  description_.drift.fraction = Number(words[1], -1.0, 10.0, "fraction from -1 to 10");
  description_.drift.readings = Number(words[2], 0.01, 1e6, "number of readings");
}

void DescriptionBuilder::Stuck(const Words& words, bool closed) {
  const Point channel = points_.FindChannel(words[1]);
  const int line = SmallInteger(words[2], 0, LineCount - 1, "line (0 or 1)");
  const StuckRelay stuck{channel / ChannelsPerCard, line, channel % ChannelsPerCard, closed};
  for (const StuckRelay& other : description_.stuckRelays) {
    if (other.card == stuck.card && other.line == stuck.line && other.relay == stuck.relay) {
      ThrowMistake(words[1].position, "this relay is already stuck");
    }
  }
  description_.stuckRelays.push_back(stuck);
}

void DescriptionBuilder::Fail(const Words& words, bool forever) {
  const std::int64_t call = Integer(words[1], 1, MostCalls, "number of a driver call (from 1)");
  if (!words[2].quoted || words[2].text.empty()) {
    ThrowMistake(words[2].position, "expected a text in double quotes");
  }
  description_.callFaults.push_back({call, forever ? MostCalls : call, words[2].text});
}

// --- the device

void DescriptionBuilder::Channel(const Words& words) { points_.NameChannel(words[1], words[2]); }

void DescriptionBuilder::InnerNode(const Words& words) {
  for (std::size_t i = 1; i < words.size(); ++i) points_.AddNode(words[i]);
}

void DescriptionBuilder::AddResistor(const Word& a, const Word& b, double ohm) {
  const Point pointA = points_.Find(a);
  const Point pointB = points_.Find(b);
  ExpectDifferent(a, b, pointA, pointB);
  description_.resistors.push_back({pointA, pointB, ohm});
}

void DescriptionBuilder::Wire(const Words& words) {
  AddResistor(words[1], words[2], words.size() > 3 ? OhmOrNone(words[3]) : DefaultWireOhm);
}

void DescriptionBuilder::PlainResistor(const Words& words) {
  AddResistor(words[1], words[2], OhmOrNone(words[3]));
}

void DescriptionBuilder::Net(const Words& words) {
  const auto each = std::find_if(words.begin() + 1, words.end(),
                                 [](const Word& word) { return word.text == "each" && !word.quoted; });
  const auto pointCount = static_cast<std::size_t>(each - words.begin()) - 1;
  const bool hasOhm = each != words.end();
  if (pointCount < 2 || (hasOhm && words.end() - each != 2)) {
    ThrowMistake(words.front().position, "expected: net POINT POINT... [each OHM]");
  }
  const double ohm = hasOhm ? OhmOrNone(*(each + 1)) : DefaultNetOhm;
  const Point splice = points_.AddNode(words.front().position);
  std::set<Point> members;
  for (std::size_t i = 1; i <= pointCount; ++i) {
    const Point point = points_.Find(words[i]);
    if (!members.insert(point).second) {
      ThrowMistake(words[i].position, "'" + words[i].text + "' stands in this net twice");
    }
    description_.resistors.push_back({point, splice, ohm});
  }
}

void DescriptionBuilder::Leakage(const Words& words) { description_.leakageOhm = RealOhm(words[1]); }

void DescriptionBuilder::AddCapacitor(Point a, Point b, const Words& words, std::size_t voltsAt) {
  const double volts = Volts(words[voltsAt]);
  Expect(words[voltsAt + 1], "tau");
  const double tau = TimeConstant(words[voltsAt + 2]);
  double seriesOhm = DefaultSeriesOhm;
  if (words.size() > voltsAt + 3) {
    Expect(words[voltsAt + 3], "series");
    if (words.size() == voltsAt + 4) ThrowMistake(words.back().position, "a resistance must follow 'series'");
    seriesOhm = RealOhm(words[voltsAt + 4]);
  }
  description_.capacitors.push_back({a, b, volts, tau, seriesOhm});
}

void DescriptionBuilder::Capacitance(const Words& words) {
  const Point plus = points_.Find(words[1]);
  const Point minus = points_.Find(words[2]);
  ExpectDifferent(words[1], words[2], plus, minus);
  AddCapacitor(plus, minus, words, 3);
}

void DescriptionBuilder::Charge(const Words& words) {
  AddCapacitor(points_.Find(words[1]), GroundPoint, words, 2);
}

// --- changes

void DescriptionBuilder::BeginChange(const Words& words) {
  changeVisits_ += static_cast<std::int64_t>(description_.resistors.size() + description_.capacitors.size());
  if (changeVisits_ > MaxChangeVisits) {
    ThrowMistake(words.front().position, "too many changes to so many wires and capacitors");
  }
}

template <typename Action>
void DescriptionBuilder::ForEachEnd(Action action) {
  for (Resistor& resistor : description_.resistors) {
    action(resistor.a);
    action(resistor.b);
  }
  for (Capacitor& capacitor : description_.capacitors) {
    action(capacitor.a);
    action(capacitor.b);
  }
}

void DescriptionBuilder::Cut(const Words& words) {
  BeginChange(words);
  const Point a = points_.Find(words[1]);
  const Point b = points_.Find(words[2]);
  const std::size_t removed = std::erase_if(description_.resistors, [&](const Resistor& resistor) {
    return std::minmax(resistor.a, resistor.b) == std::minmax(a, b);
  });
  if (removed == 0) {
    ThrowMistake(words.front().position, "nothing runs straight from '" + words[1].text + "' to '" +
                                             words[2].text + "' ('disconnect' takes a point off its net)");
  }
}

void DescriptionBuilder::Disconnect(const Words& words) {
  BeginChange(words);
  const Point point = points_.Find(words[1]);
  const auto endsAt = [&](const auto& element) { return element.a == point || element.b == point; };
  const std::size_t removed =
      std::erase_if(description_.resistors, endsAt) + std::erase_if(description_.capacitors, endsAt);
  if (removed == 0) ThrowMistake(words[1].position, "nothing is connected to '" + words[1].text + "'");
}

void DescriptionBuilder::Swap(const Words& words) {
  BeginChange(words);
  const Point a = points_.Find(words[1]);
  const Point b = points_.Find(words[2]);
  ExpectDifferent(words[1], words[2], a, b);
  ForEachEnd([&](Point& end) {
    if (end == a) {
      end = b;
    } else if (end == b) {
      end = a;
    }
  });
}

void DescriptionBuilder::Joint(const Words& words) {
  BeginChange(words);
  const Point point = points_.Find(words[1]);
  const double ohm = RealOhm(words[2]);
  const Point behind = points_.AddNode(words[1].position);
  bool found = false;
  ForEachEnd([&](Point& end) {
    if (end == point) {
      end = behind;
      found = true;
    }
  });
  if (!found) ThrowMistake(words[1].position, "nothing is connected to '" + words[1].text + "'");
  description_.resistors.push_back({point, behind, ohm});
}

// --- the whole

int DescriptionBuilder::FittedCardCount() const {
  if (cards_) return *cards_;
  int needed = 1;
  if (!points_.UsedChannels().empty()) {
    needed = std::max(needed, points_.UsedChannels().rbegin()->first / ChannelsPerCard + 1);
  }
  if (!missingCards_.empty()) needed = std::max(needed, missingCards_.rbegin()->first + 1);
  return needed;
}

DeviceDescription DescriptionBuilder::Finish() {
  const int cards = FittedCardCount();
  for (const auto& [channel, position] : points_.UsedChannels()) {
    const int card = channel / ChannelsPerCard;
    if (card >= cards) {
      ThrowMistake(position, "channel " + std::to_string(channel + 1) + " needs relay card " +
                                 std::to_string(card + 1) + ", but 'cards' says " + std::to_string(cards));
    }
  }
  for (const auto& [card, position] : missingCards_) {
    if (card >= cards) ThrowMistake(position, "'cards' says " + std::to_string(cards));
  }
  for (int card = 0; card < MaxCards; ++card) {
    description_.fittedCards[static_cast<std::size_t>(card)] = card < cards && !missingCards_.contains(card);
  }
  description_.innerNodes = points_.InnerNodes();
  return std::move(description_);
}

}  // namespace simulator
