#include <stdexcept>

#include "check/ShorttestCheck.h"
#include "data/ShorttestData.h"
#include "plugin/ShorttestPlugin.h"

namespace {

class CommandClass : public TKXCommandClass {
 public:
  std::string ClassName() const override { return "TKXShortTestCommand"; }
  TKXFuncRunEdit* Create(TKXParser* parser) const override { return new TKXShortTestCommand(parser); }
};

}  // namespace

const TKXCommandClass& shorttest::ShortTestCommandClass() {
  static const CommandClass commandClass;
  return commandClass;
}

TKXShortTestCommand::TKXShortTestCommand(TKXParser* parser)
    : TKXFuncRunEdit("procedure ShortTest(Datafile : String)", nullptr, parser) {}

TKXRunEdit* TKXShortTestCommand::Create(TKXParser* parser) const { return new TKXShortTestCommand(parser); }

void TKXShortTestCommand::Run(const TParamList& params) {
  // Parameter and routine are the host's promise. A host that breaks it gets an error instead of a crash.
  const TKXValue* const dataFile = params.GetValue("Datafile");
  if (dataFile == nullptr) throw std::invalid_argument("ShortTest: the parameter Datafile has no value");

  // The name as it stands: the host has evaluated the argument already.
  const TShortTestData expectation(dataFile->GetText());
  const TBreInit initHardware = shorttest::KeptHostValues().breInit;
  if (initHardware == nullptr) throw std::logic_error("ShortTest: the host gave no BreInit routine");
  initHardware();
  RunShortTest(expectation);
}
