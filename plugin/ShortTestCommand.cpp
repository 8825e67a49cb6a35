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
  // The name as it stands: the host has evaluated the argument already.
  const TShortTestData expectation(params.GetValue("Datafile")->GetText());
  shorttest::KeptHostValues().breInit();
  RunShortTest(expectation);
}
