#include <memory>
#include <stdexcept>

#include "plugin/check/ShorttestCheck.h"
#include "plugin/data/ShorttestData.h"
#include "plugin/editor/GUI_ShortTest.h"
#include "plugin/entry/ShorttestPlugin.h"

namespace {

class CommandClass : public TKXCommandClass {
 public:
  std::string ClassName() const override { return "TKXShortTestCommand"; }
  TKXFuncRunEdit* Create(TKXParser* parser) const override { return new TKXShortTestCommand(parser); }
};

// Has the host bring the tester hardware into a usable state.
void InitHostHardware() {
  const TBreInit breInit = shorttest::HostBreInit();
  if (breInit == nullptr) throw std::logic_error("ShortTest: Der Host hat keine Routine BreInit übergeben.");
  breInit();
}

}  // namespace

const TKXCommandClass& shorttest::ShortTestCommandClass() {
  static const CommandClass commandClass;
  return commandClass;
}

TKXShortTestCommand::TKXShortTestCommand(TKXParser* parser)
    : TKXFuncRunEdit("procedure ShortTest(Datafile : String)",
                     std::make_unique<TShortTestForm>([] { InitHostHardware(); }), parser) {
  Editor().SetParser(parser);
}

TShortTestForm& TKXShortTestCommand::Editor() const { return static_cast<TShortTestForm&>(*EditorForm()); }

void TKXShortTestCommand::SetDefaults() {
  TKXFuncRunEdit::SetDefaults();
  Editor().KXEdit_Datafile.SetText("");
}

void TKXShortTestCommand::ReadParams(const TParamList& params) { TKXThreadRunEdit::ReadParams(params); }

void TKXShortTestCommand::SetParams(TParamList& params) { TKXThreadRunEdit::SetParams(params); }

TKXRunEdit* TKXShortTestCommand::Create(TKXParser* parser) const { return new TKXShortTestCommand(parser); }

void TKXShortTestCommand::Run(const TParamList& params) {
  // The host's promise, by the prototype. A host that breaks it gets an error instead of a crash.
  const TKXValue* const dataFile = params.GetValue("Datafile");
  if (dataFile == nullptr) throw std::invalid_argument("ShortTest: Der Parameter Datafile hat keinen Wert.");

  // The name as it stands: the host has evaluated the argument already.
  const TShortTestData expectation(dataFile->GetText());
  InitHostHardware();
  RunShortTest(expectation);
}
