#pragma once

#include <cstdint>
#include <map>
#include <optional>
#include <string_view>
#include <vector>

#include "simulator/DescriptionWords.h"
#include "simulator/DeviceDescription.h"
#include "simulator/PointTable.h"

namespace simulator {

class DescriptionBuilder;

/// One line of a description: the keyword and what follows it.
using Words = std::vector<Word>;

/// A statement of the description language.
struct Statement {
  std::string_view keyword;
  std::size_t minWords;    ///< keyword included
  std::size_t maxWords;    ///< 0: no limit
  bool oncePerFile;        ///< a setting; an including file may give it again
  std::string_view usage;  ///< shown when the number of words is wrong
  void (DescriptionBuilder::*carryOut)(const Words& words);
};

/// Builds a device description statement by statement. Every mistake throws DescriptionError.
class DescriptionBuilder {
 public:
  /// The statement with this keyword; null when there is none.
  static const Statement* FindStatement(std::string_view keyword);

  /// The finished description; checks what can be judged only after the last statement.
  DeviceDescription Finish();

 private:
  // tester
  void Cards(const Words& words);
  void MissingCard(const Words& words);
  void MissingFirstCard(const Words& words);
  void Generation(const Words& words);
  void Terminator(const Words& words);
  void ContactResistance(const Words& words);
  void ResistanceNoise(const Words& words);
  void VoltageNoise(const Words& words);
  void Seed(const Words& words);
  void SettlingDrift(const Words& words);
  void StuckOpen(const Words& words) { Stuck(words, false); }
  void StuckClosed(const Words& words) { Stuck(words, true); }
  void FailCall(const Words& words) { Fail(words, false); }
  void FailFrom(const Words& words) { Fail(words, true); }
  void Stuck(const Words& words, bool closed);
  void Fail(const Words& words, bool forever);

  // device
  void Channel(const Words& words);
  void InnerNode(const Words& words);
  void Wire(const Words& words);
  void PlainResistor(const Words& words);
  void Net(const Words& words);
  void Leakage(const Words& words);
  void Capacitance(const Words& words);
  void Charge(const Words& words);

  // changes to what was said before, for faulty variants of a good device
  void Cut(const Words& words);
  void Disconnect(const Words& words);
  void Swap(const Words& words);
  void Joint(const Words& words);

  void AddResistor(const Word& a, const Word& b, double ohm);
  void AddCapacitor(Point a, Point b, const Words& words, std::size_t voltsAt);
  void BeginChange(const Words& words);
  template <typename Action>
  void ForEachEnd(Action action);
  int FittedCardCount() const;

  DeviceDescription description_;
  PointTable points_;
  std::optional<int> cards_;
  std::map<int, Position> missingCards_;
  std::int64_t changeVisits_ = 0;
};

}  // namespace simulator
