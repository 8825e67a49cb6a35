#pragma once

#include <cstdint>
#include <functional>
#include <memory>
#include <optional>
#include <string>

#include "plugin/data/ShorttestData.h"
#include "plugin/editor/ConnectionTexts.h"
#include "plugin/editor/NumberPosition.h"
#include "plugin/editor/ShownParameters.h"
#include "plugin/learn/ShorttestLearn.h"

namespace shorttest {

/// What the number fields of waiting time (ms) and number of errors can hold: a value outside is clipped when
/// the data is shown, in the data too.
inline constexpr NumberLimits TimeoutLimits{0, 10000, 1000};
inline constexpr NumberLimits MaxErrorLimits{1, 10000};

/// What the editor dialog edits: an expectation, and what the user typed that has not become part of it.
/// Holds the rules of the dialog, free of any toolkit; the dialog only shows.
///
/// There may be no data, before New or Open and after an Open that failed. What changes the data then does
/// nothing, unless it says otherwise. `text` is always what the user typed (UTF-8). Errors in it
/// are thrown as WrongItem (ConversionError, ChannelRangeError); the data keeps its value.
class ExpectationDocument {
 public:
  /// The data, owned by the document; null when there is none.
  const TShortTestData* Data() const { return data_.get(); }

  // --- life ---

  /// New data with default parameters, every pair Unknown. Throws std::length_error for a range that no
  /// memory holds.
  void New(std::int32_t von, std::int32_t bis);

  /// Gives up the data and reads the expectation file. Throws what the file's constructor throws
  /// (std::system_error, std::length_error); there is no data then.
  void Open(const std::string& fileName);

  /// Writes the data as it stands, an empty upper threshold as the lower one. Throws std::system_error.
  /// REQUIRES: data, and RequireComplete.
  void Save(const std::string& fileName);

  void Close();

  // --- what is shown ---

  /// The parameters as the controls show them, clipped to what these can hold. REQUIRES: data.
  ShownParameters ShowParameters();

  /// The texts of the matrix; what was rejected before is forgotten. REQUIRES: data.
  ConnectionTexts ShowTexts();

  /// The warning for the voltage control chosen (index of the list; any other for none). Asks the driver for
  /// the hardware's generation where that matters.
  std::string Warning(int voltageControl) const;

  // --- parameters ---

  void SetVoltageControl(std::int32_t control);
  void SetTimeout(std::int32_t ms);
  void SetMaxError(std::int32_t count);

  /// The lower threshold (Ohm) at every key press: an empty text changes nothing.
  void TypeLowerThreshold(const std::string& text);
  /// The same when its field is left: an empty text is the error that any other text but a number is.
  void LeaveLowerThreshold(const std::string& text);
  std::string LowerThresholdText() const;

  /// The upper threshold (kOhm): left empty, it is the lower one, also when that changes later.
  void TypeUpperThreshold(const std::string& text);
  void LeaveUpperThreshold(const std::string& text);
  std::string UpperThresholdText() const;

  /// Card and number of the terminating-resistor relay: left empty, there is none.
  void TypeRelayCard(const std::string& text);
  void LeaveRelayCard(const std::string& text);
  std::string RelayCardText() const;
  void TypeRelay(const std::string& text);
  void LeaveRelay(const std::string& text);
  std::string RelayText() const;

  // --- channels ---

  /// The range at every change of one of its fields. Until the field is left, and the range is one, it is
  /// taken from what the data held before the first change: channels that a half-typed number cuts off come
  /// back with the next one.
  void ChangeRange(std::int32_t von, std::int32_t bis);

  /// A field of the range is left with `text`. Throws std::invalid_argument when the first channel lies above
  /// the last. An error gives nothing up: the number that mends it brings the channels back.
  void LeaveRange(const std::string& text);

  // --- connections ---

  /// Rebuilds the matrix from the texts. Throws what MatrixFromTexts throws; the matrix is half built then,
  /// and the texts are rejected.
  void TakeTexts(const ConnectionTexts& typed);

  /// Runs `learn` on the data. When it throws or is stopped, what it entered is given up: the document is
  /// then what it was. The outcome is that of `learn`. REQUIRES: data.
  LearnOutcome Learn(const std::function<LearnOutcome(TShortTestData& data)>& learn);

  // --- before data is used ---

  /// Throws std::runtime_error for the user when there is no data.
  void RequireData() const;

  /// Throws when the data is not what the dialog shows, so that it must not be written: no data
  /// (std::runtime_error), a first channel above the last (std::invalid_argument), texts that were rejected,
  /// or that name channels outside a range changed since (WrongItem). Takes texts that were not taken yet,
  /// and connections that a change of the range gave up and the texts still name.
  void RequireComplete(const ConnectionTexts& typed);

 private:
  void RequireRange() const;
  bool HasRange() const { return data_->von <= data_->bis; }
  void Forget();

  std::unique_ptr<TShortTestData> data_;
  ConnectionTexts known_;                      // as shown or taken last
  std::optional<TShortTestData> beforeRange_;  // as it was before the first key press changed the range
  bool upperFollowsLower_ = false;             // the upper threshold was left, or shown, empty
  bool rejected_ = false;                      // the texts held a wrong item when they were read
  bool rangeChanged_ = false;                  // since the texts were read or shown
};

}  // namespace shorttest
