#include "plugin/editor/ExpectationDocument.h"

#include <stdexcept>
#include <utility>

#include "contracts/BrenmorHWDevice.h"
#include "plugin/editor/ChannelNumbers.h"
#include "text/NumberText.h"

namespace shorttest {
namespace {

constexpr int WithoutVoltageControl = 0;
constexpr int WithDischarge = 2;
constexpr int GenerationWithoutOwnDischarge = 1;
constexpr std::int32_t NoRelay = -1;

// An empty edit names no relay.
std::int32_t RelayFromText(const std::string& text) { return text.empty() ? NoRelay : IntegerFromText(text); }

std::string TextOfRelay(std::int32_t relay) { return relay > 0 ? std::to_string(relay) : std::string(); }

// The channels and what is known of them, without the parameters.
void TakeChannels(TShortTestData from, TShortTestData& to) {
  to.von = from.von;
  to.bis = from.bis;
  to.connections = std::move(from.connections);
  to.voltages = std::move(from.voltages);
}

}  // namespace

void ExpectationDocument::Forget() {
  known_ = {};
  beforeRange_.reset();
  rejected_ = false;
  rangeChanged_ = false;
}

void ExpectationDocument::New(std::int32_t von, std::int32_t bis) {
  Close();
  data_ = std::make_unique<TShortTestData>(von, bis);
}

void ExpectationDocument::Open(const std::string& fileName) {
  Close();
  data_ = std::make_unique<TShortTestData>(fileName);
}

void ExpectationDocument::Save(const std::string& fileName) {
  if (upperFollowsLower_) data_->Schwelle2 = data_->Schwelle;
  data_->SaveExpectationFile(fileName);
}

void ExpectationDocument::Close() {
  data_.reset();
  Forget();
}

ShownParameters ExpectationDocument::ShowParameters() {
  data_->Timeout = TimeoutLimits.Clip(data_->Timeout);
  data_->MaxError = MaxErrorLimits.Clip(data_->MaxError);
  upperFollowsLower_ = !(data_->Schwelle2 > data_->Schwelle);
  return shorttest::ShowParameters(*data_);
}

ConnectionTexts ExpectationDocument::ShowTexts() {
  rejected_ = false;
  rangeChanged_ = false;
  known_ = TextsFromMatrix(*data_);
  return known_;
}

std::string ExpectationDocument::Warning(int voltageControl) const {
  if (voltageControl == WithoutVoltageControl) {
    return "Warnung: Spannung im Prüfling kann Messkanäle beschädigen";
  }
  if (voltageControl == WithDischarge && data_ && data_->LastRelaisKarte <= 0 && data_->LastRelais <= 0 &&
      brenmor_adx_hw_generation() == GenerationWithoutOwnDischarge) {
    return "Warnung: Die Entladungsfunktion funktioniert nur mit Abschlusswiderstand.";
  }
  return {};
}

void ExpectationDocument::SetVoltageControl(std::int32_t control) {
  if (data_) data_->U_Control = control;
}

void ExpectationDocument::SetTimeout(std::int32_t ms) {
  if (data_) data_->Timeout = ms;
}

void ExpectationDocument::SetMaxError(std::int32_t count) {
  if (data_) data_->MaxError = count;
}

void ExpectationDocument::TypeLowerThreshold(const std::string& text) {
  if (data_ && !text.empty()) data_->Schwelle = FloatFromText(text);
}

void ExpectationDocument::LeaveLowerThreshold(const std::string& text) {
  if (data_) data_->Schwelle = FloatFromText(text);
}

std::string ExpectationDocument::LowerThresholdText() const { return FloatToText(data_->Schwelle); }

void ExpectationDocument::TypeUpperThreshold(const std::string& text) {
  if (!data_ || text.empty()) return;
  data_->Schwelle2 = FloatFromText(text) * OhmPerKiloOhm;
  upperFollowsLower_ = false;
}

void ExpectationDocument::LeaveUpperThreshold(const std::string& text) {
  if (!data_) return;
  data_->Schwelle2 = text.empty() ? data_->Schwelle : FloatFromText(text) * OhmPerKiloOhm;
  upperFollowsLower_ = text.empty();
}

std::string ExpectationDocument::UpperThresholdText() const {
  return upperFollowsLower_ ? std::string() : FloatToText(data_->Schwelle2 / OhmPerKiloOhm);
}

void ExpectationDocument::TypeRelayCard(const std::string& text) {
  if (data_ && !text.empty()) data_->LastRelaisKarte = IntegerFromText(text);
}

void ExpectationDocument::LeaveRelayCard(const std::string& text) {
  if (data_) data_->LastRelaisKarte = RelayFromText(text);
}

std::string ExpectationDocument::RelayCardText() const { return TextOfRelay(data_->LastRelaisKarte); }

void ExpectationDocument::TypeRelay(const std::string& text) {
  if (data_ && !text.empty()) data_->LastRelais = IntegerFromText(text);
}

void ExpectationDocument::LeaveRelay(const std::string& text) {
  if (data_) data_->LastRelais = RelayFromText(text);
}

std::string ExpectationDocument::RelayText() const { return TextOfRelay(data_->LastRelais); }

void ExpectationDocument::ChangeRange(std::int32_t von, std::int32_t bis) {
  if (!data_) return;
  if (!beforeRange_) beforeRange_ = *data_;
  TShortTestData changed = *beforeRange_;
  changed.SetVonBis(von, bis);
  TakeChannels(std::move(changed), *data_);
  rangeChanged_ = true;
}

void ExpectationDocument::LeaveRange(const std::string& text) {
  if (!data_) return;
  IntegerFromText(text);
  RequireRange();
  beforeRange_.reset();
}

void ExpectationDocument::TakeTexts(const ConnectionTexts& typed) {
  if (!data_) return;
  if (HasRange()) beforeRange_.reset();
  known_ = typed;
  rejected_ = true;
  MatrixFromTexts(typed, *data_);
  rejected_ = false;
  rangeChanged_ = false;
}

LearnOutcome ExpectationDocument::Learn(const std::function<LearnOutcome(TShortTestData& data)>& learn) {
  struct Undo {
    ExpectationDocument& document;
    TShortTestData data;
    ConnectionTexts known;
    bool rejected;
    bool rangeChanged;
    bool learned = false;

    ~Undo() {
      if (learned) return;
      TakeChannels(std::move(data), *document.data_);
      document.known_ = std::move(known);
      document.rejected_ = rejected;
      document.rangeChanged_ = rangeChanged;
    }
  } undo{*this, *data_, known_, rejected_, rangeChanged_};

  const LearnOutcome outcome = learn(*data_);
  undo.learned = outcome == LearnOutcome::Learned;
  if (undo.learned) Forget();
  return outcome;
}

void ExpectationDocument::RequireData() const {
  if (!data_) throw std::runtime_error("Es sind keine Daten da. Öffnen Sie eine Datei.");
}

void ExpectationDocument::RequireRange() const {
  if (HasRange()) return;
  throw std::invalid_argument("Der erste Kanal (" + std::to_string(data_->von) +
                              ") liegt über dem letzten (" + std::to_string(data_->bis) + ").");
}

void ExpectationDocument::RequireComplete(const ConnectionTexts& typed) {
  RequireData();
  RequireRange();
  if (rejected_ || typed != known_) TakeTexts(typed);
  if (!rangeChanged_) return;
  TShortTestData read = *data_;
  MatrixFromTexts(typed, read);
  if (TextsFromMatrix(read) != TextsFromMatrix(*data_)) TakeChannels(std::move(read), *data_);
  rangeChanged_ = false;
}

}  // namespace shorttest
