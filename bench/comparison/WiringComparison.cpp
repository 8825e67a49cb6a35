#include "bench/comparison/WiringComparison.h"

#include <algorithm>
#include <iterator>
#include <set>

#include "bench/documents/WiringTable.h"
#include "bench/wiring/Contacts.h"
#include "text/NumberText.h"

namespace kxbench::comparison {

namespace {

using diagnosis::Channel;

/// A side in the numbers that both sides share.
struct NumberedSide {
  diagnosis::Nets nets;  // single ones too
  std::set<Channel> suspended;
  std::set<std::pair<Channel, Channel>> excluded;
  std::set<Channel> single;
  std::set<Channel> known;  // suspended ones too
  ChannelPairs unknownPairs;
  ChannelPairs contradictoryPairs;
};

/// Gives what both sides call the same the same number, and labels for it.
class SharedNumbers {
 public:
  explicit SharedNumbers(bool byChannel) : byChannel_(byChannel) {}

  /// The numbers of a side's channels.
  std::map<Channel, Channel> Enter(const ComparedSide& side) {
    std::map<Channel, Channel> numbers;
    std::set<Channel> taken;
    // Channel 3 without a name is called as a connector 3 without pins is, which comes first.
    for (const bool named : {true, false}) {
      for (const auto& [channel, pin] : side.wiring.pins) {
        if (pin.connector.empty() == named) continue;
        Channel number = byChannel_ ? channel : NumberOf(documents::PinText(pin));
        if (!taken.insert(number).second) number = NumberOf("channel\n" + documents::PinText(pin));
        numbers[channel] = number;
        Note(side, channel, pin, number);
      }
    }
    return numbers;
  }

  void Describe(WiringComparison& comparison, std::map<Channel, wiring::Contact>& contacts) const {
    comparison.byChannel = byChannel_;
    for (const auto& [number, pin] : pins_) {
      const bool named = !pin.connector.empty();
      comparison.shortLabels[number] = byChannel_ ? std::to_string(number) : documents::PinText(pin);
      comparison.labels[number] = comparison.shortLabels[number];
      if (byChannel_) comparison.labels[number] += NameOf(number);
      if (!named) continue;
      const auto pinNumber = documents::IsNumber(pin.pin) ? shorttest::TextToInteger(pin.pin) : std::nullopt;
      contacts[number] = {pin.connector, pin.pin, pinNumber};
    }
  }

 private:
  /// " (B1-L)": the project's name goes before that of the document's pin.
  std::string NameOf(Channel number) const {
    const auto name = names_.find(number);
    if (name != names_.end()) return " (" + name->second + ")";
    const auto text = pinTexts_.find(number);
    return text == pinTexts_.end() ? "" : " (" + text->second + ")";
  }

  Channel NumberOf(const std::string& pinText) {
    return numbers_.try_emplace(pinText, static_cast<Channel>(numbers_.size() + 1)).first->second;
  }

  void Note(const ComparedSide& side, Channel channel, const documents::Pin& pin, Channel number) {
    const auto [known, isNew] = pins_.try_emplace(number, pin);
    if (!isNew && known->second.connector.empty()) known->second = pin;
    const auto name = side.names.find(channel);
    if (name != side.names.end()) {
      names_.try_emplace(number, name->second);
    }
    if (!pin.connector.empty()) pinTexts_.try_emplace(number, documents::PinText(pin));
  }

  bool byChannel_;
  std::map<std::string, Channel> numbers_;  // of pins
  std::map<Channel, documents::Pin> pins_;
  std::map<Channel, std::string> names_;  // in the project's ini file
  std::map<Channel, std::string> pinTexts_;
};

ChannelPairs NumberedPairs(const ChannelPairs& pairs, const std::map<Channel, Channel>& numbers) {
  ChannelPairs numbered;
  numbered.reserve(pairs.size());
  for (const auto& [lower, higher] : pairs) {
    numbered.push_back(std::minmax({numbers.at(lower), numbers.at(higher)}));
  }
  std::sort(numbered.begin(), numbered.end());
  return numbered;
}

NumberedSide Numbered(const ComparedSide& side, const std::map<Channel, Channel>& numbers) {
  NumberedSide numbered;
  const documents::Wiring& wiring = side.wiring;
  for (const auto& [channel, number] : numbers) numbered.known.insert(number);
  for (const Channel channel : wiring.suspended) numbered.suspended.insert(numbers.at(channel));
  for (const Channel channel : wiring.single) {
    numbered.single.insert(numbers.at(channel));
    numbered.nets.push_back({numbers.at(channel)});
  }
  for (const auto& net : wiring.nets) {
    auto& shared = numbered.nets.emplace_back();
    for (const Channel channel : net) shared.push_back(numbers.at(channel));
  }
  const ChannelPairs excluded = NumberedPairs(wiring.excluded, numbers);
  numbered.excluded.insert(excluded.begin(), excluded.end());
  numbered.unknownPairs = NumberedPairs(side.unknownPairs, numbers);
  numbered.contradictoryPairs = NumberedPairs(side.contradictoryPairs, numbers);
  return numbered;
}

/// What is in `from` and not in `in`, both ascending.
template <typename Items>
std::vector<typename Items::value_type> Missing(const Items& from, const Items& in) {
  std::vector<typename Items::value_type> missing;
  std::set_difference(from.begin(), from.end(), in.begin(), in.end(), std::back_inserter(missing));
  return missing;
}

class Comparing {
 public:
  Comparing(const ComparedSide& a, const ComparedSide& b)
      : sideA_(a),
        sideB_(b),
        numbers_(a.hasChannels && b.hasChannels),
        b_(Numbered(b, numbers_.Enter(b))),
        a_(Numbered(a, numbers_.Enter(a))) {
    result_.a = a.name;
    result_.b = b.name;
  }

  WiringComparison Result() {
    diagnosis::Observation observation;
    numbers_.Describe(result_, observation.contacts);
    for (const Channel channel : Missing(a_.suspended, b_.suspended)) Tell(result_.suspended.a, channel, b_);
    for (const Channel channel : Missing(b_.suspended, a_.suspended)) Tell(result_.suspended.b, channel, a_);
    TellExcluded(a_, b_, result_.excluded.a);
    TellExcluded(b_, a_, result_.excluded.b);
    result_.unknown = Alone(a_.unknownPairs, b_.unknownPairs);
    result_.contradictory = Alone(a_.contradictoryPairs, b_.contradictoryPairs);
    const bool sameKind = sideA_.isExpectation && sideB_.isExpectation;
    for (const Channel channel : Missing(a_.known, b_.known)) TellOnly(channel, a_, sameKind, true);
    for (const Channel channel : Missing(b_.known, a_.known)) TellOnly(channel, b_, sameKind, false);
    observation.expected = Tested(b_.nets);
    observation.measured = Tested(a_.nets);
    result_.faults = diagnosis::Diagnose(observation);
    return std::move(result_);
  }

 private:
  const std::string& Label(Channel channel) const { return result_.labels.at(channel); }

  void Tell(std::vector<std::string>& labels, Channel channel, const NumberedSide& other) const {
    if (other.known.contains(channel)) labels.push_back(Label(channel));
  }

  /// Pairs with a suspended channel are not tested anyway.
  void TellExcluded(const NumberedSide& own, const NumberedSide& other,
                    std::vector<std::string>& pairs) const {
    for (const auto& [lower, higher] : Missing(own.excluded, other.excluded)) {
      const bool tested = !other.suspended.contains(lower) && !other.suspended.contains(higher) &&
                          other.known.contains(lower) && other.known.contains(higher);
      if (tested) pairs.push_back(Label(lower) + " - " + Label(higher));
    }
  }

  /// How many pairs each side has alone, without those of channels that one of them suspends.
  PairCounts Alone(const ChannelPairs& a, const ChannelPairs& b) const {
    const auto tested = [this](const ChannelPairs& pairs) {
      return static_cast<std::size_t>(std::count_if(pairs.begin(), pairs.end(), [this](const auto& pair) {
        return !IsSuspended(pair.first) && !IsSuspended(pair.second);
      }));
    };
    return {tested(Missing(a, b)), tested(Missing(b, a))};
  }

  bool IsSuspended(Channel channel) const {
    return a_.suspended.contains(channel) || b_.suspended.contains(channel);
  }

  void TellOnly(Channel channel, const NumberedSide& own, bool sameKind, bool isA) {
    if (!own.suspended.contains(channel) && !own.single.contains(channel)) sameKind = true;
    OneSided& target = sameKind ? result_.only : result_.onlySingle;
    (isA ? target.a : target.b).push_back(Label(channel));
  }

  /// The nets without what one of the sides suspends.
  diagnosis::Nets Tested(diagnosis::Nets nets) const {
    for (diagnosis::Net& net : nets) {
      std::erase_if(net, [this](Channel channel) { return IsSuspended(channel); });
    }
    std::erase_if(nets, [](const diagnosis::Net& net) { return net.empty(); });
    return diagnosis::Ordered(std::move(nets));
  }

  const ComparedSide& sideA_;
  const ComparedSide& sideB_;
  SharedNumbers numbers_;
  NumberedSide b_;  // first, so that its pins are the ones that are shown
  NumberedSide a_;
  WiringComparison result_;
};

}  // namespace

WiringComparison Compare(const ComparedSide& a, const ComparedSide& b) { return Comparing(a, b).Result(); }

}  // namespace kxbench::comparison
