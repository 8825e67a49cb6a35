#pragma once

#include "framework/kxcomponents.h"
#include "framework/kxextension.h"

class TShortTestForm;

/// The script command "procedure ShortTest(Datafile : String)": checks the connected device against the
/// expectation file `Datafile`. All operations on the user-interface thread.
class TKXShortTestCommand : public TKXFuncRunEdit {
 public:
  /// The command's identifier in the host.
  static constexpr int ID = 10020;

  /// Makes the command and its editor dialog, which the command keeps for its lifetime. Needs no display: the
  /// dialog's window comes with its first showing.
  explicit TKXShortTestCommand(TKXParser* parser);

  /// The command's editor dialog, owned by the command.
  TShortTestForm& Editor() const;

  int GetID() override { return ID; }

  /// The file name is the only parameter and has no default: the dialog's field becomes empty.
  void SetDefaults() override;

  void ReadParams(const TParamList& params) override;
  void SetParams(TParamList& params) override;

  /// Another command of this class; the caller owns it.
  TKXRunEdit* Create(TKXParser* parser) const override;

  /// Loads the expectation, has the host bring the hardware into a usable state, and checks. Findings go to
  /// the host as records. Throws what the file (std::system_error), the host and the hardware
  /// (TShortTestHWException) throw; a file that cannot be read stops it before anything else has happened,
  /// and so does a running check or learning from within which it is called (std::logic_error).
  void Run(const TParamList& params) override;
};

namespace shorttest {

/// The command class as the host sees it.
const TKXCommandClass& ShortTestCommandClass();

/// The routine that the host handed over at registration: it brings the tester hardware into a usable state.
/// Written once, by the entry; null before.
TBreInit& HostBreInit();

}  // namespace shorttest

/// The library's one entry: keeps the host's values "AppParser", "MsgHandle" and "BreInit" (their presence is
/// not checked) and describes the extension. The host owns the result.
extern "C" __attribute__((visibility("default"))) TExtensionInfo*
__getExtensionInfo(  // NOLINT(clang-diagnostic-reserved-identifier)
    const TKXHashTable& hostValues);
