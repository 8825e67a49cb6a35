#pragma once

#include <cstdint>
#include <optional>
#include <set>
#include <string>
#include <utility>
#include <vector>

#include "simulator/Circuit.h"
#include "simulator/Device.h"
#include "simulator/DeviceDescription.h"
#include "simulator/Instrument.h"
#include "simulator/RelayMatrix.h"
#include "simulator/TimeSource.h"

namespace simulator {

/// The whole tester with the device connected to it, as its driver shows it.
///
/// A call that fails has no effect but a pending error; it returns what a caller cannot take for a good
/// result (no relay, an over-range reading). While an error is pending, later ones are dropped: the first
/// names the cause.
class Tester {
 public:
  /// `time` must outlive the tester. The capacitances hold their start voltages now.
  Tester(const DeviceDescription& description, const TimeSource& time);

  /// A tester that cannot work: every call fails with `cause`.
  Tester(std::string cause, const TimeSource& time);

  // The driver's calls, see contracts/BrenmorHWDevice.h.
  void BusWrite(std::int32_t address, std::int32_t reserved, std::int32_t value);
  void RelaySet(std::int32_t card, std::int32_t relay, std::int32_t state);
  std::int32_t MsuWriteRelay(std::int32_t relay, std::int32_t mode);
  double AdxRead(std::int32_t function, std::int32_t range, std::int32_t setting);
  std::int32_t AdxHwGeneration();

  /// Text of the pending error (UTF-8); null when there is none.
  const std::string* PendingError() const { return pendingError_ ? &*pendingError_ : nullptr; }
  void DeletePendingError() { pendingError_.reset(); }
  void SetPendingError(const std::string& text);

  /// Number of calls of the five functions above.
  std::int64_t CallCount() const { return callCount_; }

  /// Lets the call that makes CallCount `call` fail with `text`.
  void FailCall(std::int64_t call, const std::string& text) { callFaults_.push_back({call, call, text}); }

  const RelayMatrix& Relays() const { return relays_; }
  bool TerminatorOn() const { return !closedTerminators_.empty(); }

 private:
  /// Runs one driver call; its failure becomes the pending error and `failed` the result.
  template <typename Result, typename Action>
  Result Call(Result failed, Action&& action);

  void BeginCall();
  void LetTimePass();
  void RelaysSwitched();
  double ReadResistance(int range);
  double ReadVoltage();

  const TimeSource& time_;
  std::string unusable_;
  int generation_;
  double contactOhm_;
  std::optional<TerminatorAddress> terminator_;
  std::vector<CallFault> callFaults_;
  RelayMatrix relays_;
  Device device_;
  Instrument instrument_;
  Circuit circuit_;  ///< kept for its memory alone: every use builds it afresh
  std::set<std::pair<int, int>> closedTerminators_;
  std::optional<std::string> pendingError_;
  std::int64_t callCount_ = 0;
  double seconds_;  ///< up to when the capacitances are discharged
};

}  // namespace simulator
