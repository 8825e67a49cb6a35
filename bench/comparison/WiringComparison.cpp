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
};

/// Gives what both sides call the same the same number, and labels for it.
class SharedNumbers {
 public:
  SharedNumbers(const ComparedSide& a, const ComparedSide& b) : byChannel_(a.hasChannels && b.hasChannels) {
    for (const ComparedSide* side : {&b, &a}) {
      for (const auto& [channel, pin] : side->wiring.pins) Add(*side, channel, pin);
    }
  }

  bool ByChannel() const { return byChannel_; }

  Channel Of(const ComparedSide& side, Channel channel) const {
    return byChannel_ ? channel : numbers_.at(side.wiring.pins.at(channel));
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

  void Add(const ComparedSide& side, Channel channel, const documents::Pin& pin) {
    Channel number = channel;
    if (!byChannel_) {
      number = numbers_.try_emplace(pin, static_cast<Channel>(numbers_.size() + 1)).first->second;
    }
    const auto [known, isNew] = pins_.try_emplace(number, pin);
    if (!isNew && known->second.connector.empty()) known->second = pin;
    const auto name = side.names.find(channel);
    if (name != side.names.end()) {
      names_.try_emplace(number, name->second);
    }
    if (!pin.connector.empty()) pinTexts_.try_emplace(number, documents::PinText(pin));
  }

  bool byChannel_;
  std::map<documents::Pin, Channel> numbers_;
  std::map<Channel, documents::Pin> pins_;
  std::map<Channel, std::string> names_;  // in the project's ini file
  std::map<Channel, std::string> pinTexts_;
};

NumberedSide Numbered(const ComparedSide& side, const SharedNumbers& numbers) {
  NumberedSide numbered;
  const documents::Wiring& wiring = side.wiring;
  for (const auto& [channel, pin] : wiring.pins) numbered.known.insert(numbers.Of(side, channel));
  for (const Channel channel : wiring.suspended) numbered.suspended.insert(numbers.Of(side, channel));
  for (const Channel channel : wiring.single) {
    numbered.single.insert(numbers.Of(side, channel));
    numbered.nets.push_back({numbers.Of(side, channel)});
  }
  for (const auto& net : wiring.nets) {
    auto& shared = numbered.nets.emplace_back();
    for (const Channel channel : net) shared.push_back(numbers.Of(side, channel));
  }
  for (const auto& [lower, higher] : wiring.excluded) {
    numbered.excluded.insert(std::minmax({numbers.Of(side, lower), numbers.Of(side, higher)}));
  }
  return numbered;
}

template <typename Item>
std::vector<Item> Missing(const std::set<Item>& from, const std::set<Item>& in) {
  std::vector<Item> missing;
  std::set_difference(from.begin(), from.end(), in.begin(), in.end(), std::back_inserter(missing));
  return missing;
}

class Comparing {
 public:
  Comparing(const ComparedSide& a, const ComparedSide& b)
      : sideA_(a), sideB_(b), numbers_(a, b), a_(Numbered(a, numbers_)), b_(Numbered(b, numbers_)) {
    result_.a = a.name;
    result_.b = b.name;
    result_.unknownA = a.unknownPairs;
    result_.unknownB = b.unknownPairs;
  }

  WiringComparison Result() {
    diagnosis::Observation observation;
    numbers_.Describe(result_, observation.contacts);
    for (const Channel channel : Missing(a_.suspended, b_.suspended)) Tell(result_.suspended.a, channel, b_);
    for (const Channel channel : Missing(b_.suspended, a_.suspended)) Tell(result_.suspended.b, channel, a_);
    TellExcluded(a_, b_, result_.excluded.a);
    TellExcluded(b_, a_, result_.excluded.b);
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

  void TellOnly(Channel channel, const NumberedSide& own, bool sameKind, bool isA) {
    if (!own.suspended.contains(channel) && !own.single.contains(channel)) sameKind = true;
    OneSided& target = sameKind ? result_.only : result_.onlySingle;
    (isA ? target.a : target.b).push_back(Label(channel));
  }

  /// The nets without what one of the sides suspends.
  diagnosis::Nets Tested(diagnosis::Nets nets) const {
    for (diagnosis::Net& net : nets) {
      std::erase_if(net, [this](Channel channel) {
        return a_.suspended.contains(channel) || b_.suspended.contains(channel);
      });
    }
    std::erase_if(nets, [](const diagnosis::Net& net) { return net.empty(); });
    return diagnosis::Ordered(std::move(nets));
  }

  const ComparedSide& sideA_;
  const ComparedSide& sideB_;
  SharedNumbers numbers_;
  NumberedSide a_;
  NumberedSide b_;
  WiringComparison result_;
};

}  // namespace

WiringComparison Compare(const ComparedSide& a, const ComparedSide& b) { return Comparing(a, b).Result(); }

}  // namespace kxbench::comparison
