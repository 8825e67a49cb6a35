#pragma once

#include <cstdint>
#include <functional>
#include <map>
#include <optional>
#include <set>
#include <string>
#include <utility>
#include <vector>

#include "tests/support/CallLog.h"

namespace shorttest::testkit {

/// A tester that exists only in a test. Linking `test_fake_driver` gives a program the driver's nine
/// functions; they speak to the FakeDriver that was made last and still lives. Making one is all the set-up:
///
///     FakeDriver driver(log);
///     driver.Wire(1, 5, 0.4);          // channels 1 and 5 joined by 0.4 Ohm
///     driver.Live(7, 12.0);            // channel 7 carries 12 V
///     driver.FailAt(3, "no answer");   // the third bus, relay, probe or instrument call from now on fails
///
/// Every call goes to the log, results left out:
///
///     bus ADDRESS 0 VALUE      relay CARD RELAY STATE     probe RELAY MODE     read FUNCTION RANGE SETTING
///     error?                   text                       free                 clear generation
///
/// Channels are tester channels (from 1), resistances Ohm, voltages volts. The network is a toy: between the
/// lines stands the cheapest path of wires from any channel on line 0 to any channel on line 1, no parallel
/// ones; without a path OpenOhm(). Tests of real networks use the simulated tester.
class FakeDriver {
 public:
  explicit FakeDriver(CallLog& log);
  ~FakeDriver();
  FakeDriver(const FakeDriver&) = delete;
  FakeDriver& operator=(const FakeDriver&) = delete;

  // --- the device ---

  /// Joins two channels; a second wire between the same two replaces the first.
  void Wire(int channelA, int channelB, double ohm = 0.4);
  /// A wire that nothing can be measured across.
  void Short(int channelA, int channelB) { Wire(channelA, channelB, 0.0); }
  void Unwire(int channelA, int channelB);
  /// The channel carries a lasting voltage.
  void Live(int channel, double volts) { potentials_[channel] = {volts, 1.0}; }
  /// The channel carries a voltage that shrinks to `decay` of itself (0.0 to 1.0) with every voltage reading
  /// that it takes part in.
  void Charge(int channel, double volts, double decay) { potentials_[channel] = {volts, decay}; }
  /// What an open path reads.
  void OpenOhm(double ohm) { openOhm_ = ohm; }

  // --- the instrument ---

  /// Raw results of the next readings, whatever is asked for, before the device is measured again. They are
  /// in the unit of the range, and may be no numbers at all.
  void NextReadings(const std::vector<double>& readings);
  /// Every reading from now on, by its number from 1; no function: the device again.
  void AllReadings(std::function<double(int number)> reading) { allReadings_ = std::move(reading); }
  /// Called before every reading, for instance to let time pass.
  void BeforeReading(std::function<void()> action) { beforeReading_ = std::move(action); }

  // --- cards ---

  /// Fitted relay cards, 0 to 5. Only the probe looks at it.
  void Cards(int count) { cards_ = count; }
  /// Text of the error that probing a missing card leaves; none by default.
  void MissingCardError(std::optional<std::string> text) { missingCardError_ = std::move(text); }
  void Generation(int generation) { generation_ = generation; }

  // --- faults ---

  enum class Fault { Performed, Dropped };  ///< whether a failing call still does its work

  /// The k-th failable call (bus write, relay, probe, reading) from now on leaves an error, k from 1.
  void FailAt(int k, const std::string& text, Fault fault = Fault::Performed);
  /// So does every one from the k-th on.
  void FailFrom(int k, const std::string& text, Fault fault = Fault::Performed);
  void NoFault() { failAt_ = 0; }
  /// An error is pending now.
  void PendingError(const std::string& text) { error_ = text; }
  bool HasPendingError() const { return error_.has_value(); }
  /// The driver hands out a null pointer instead of an error text.
  void NullText() { nullText_ = true; }

  // --- questions ---

  /// Failable calls since the driver was made or since the last FailAt or FailFrom.
  int FailableCalls() const { return failableCalls_; }
  bool Closed(int channel, int line) const;
  /// Whether an auxiliary relay (48 to 51) of a card (from 0) is closed on a line.
  bool AuxiliaryClosed(int card, int line, int relay) const;
  /// No relay of any card is closed, auxiliary ones included.
  bool AllRelaysOpen() const;
  /// Whether any relay is closed that was switched by card and number.
  bool TerminationOn() const { return !singleRelays_.empty(); }
  bool TerminationOn(int card, int relay) const { return singleRelays_.count({card, relay}) != 0; }
  /// Error texts handed out and not yet given back.
  int OutstandingTexts() const { return static_cast<int>(texts_.size()); }
  /// Pointers given back that were never handed out.
  int ForeignFrees() const { return foreignFrees_; }

  // --- the nine functions ---

  std::int32_t BusWrite(std::int32_t address, std::int32_t reserved, std::int32_t value);
  std::int32_t RelaySet(std::int32_t card, std::int32_t relay, std::int32_t state);
  std::int32_t Probe(std::int32_t relay, std::int32_t mode);
  double Read(std::int32_t function, std::int32_t range, std::int32_t setting);
  std::int32_t ReadGeneration();
  std::int32_t GetError();
  char* GetErrorText();
  void Free(void* memory);
  void DeleteError();

  static FakeDriver& Active();

 private:
  struct Potential {
    double volts;
    double decay;
  };

  bool Fails();
  double ResistanceOhm() const;
  double Voltage();
  double PotentialOfLine(int line);
  std::set<int> ChannelsOn(int line) const;

  CallLog& log_;
  FakeDriver* before_;

  std::map<int, std::map<int, double>> wires_;
  std::map<int, Potential> potentials_;
  double openOhm_ = 1e9;

  std::vector<double> nextReadings_;  // the next one last
  std::function<double(int)> allReadings_;
  std::function<void()> beforeReading_;
  int readings_ = 0;

  int cards_ = 5;
  std::optional<std::string> missingCardError_;
  int generation_ = 2;

  std::optional<std::string> error_;
  bool nullText_ = false;
  int failAt_ = 0;  // 0: never
  bool failOn_ = false;
  Fault fault_ = Fault::Performed;
  std::string faultText_;
  int failableCalls_ = 0;

  std::map<int, std::set<int>> closed_;  // bus address -> relays
  std::set<std::pair<int, int>> singleRelays_;
  std::set<void*> texts_;
  int foreignFrees_ = 0;
};

}  // namespace shorttest::testkit
