#pragma once

#include <memory>
#include <string>
#include <vector>

#include "contracts/Export.h"
#include "contracts/UserInterface.h"
#include "framework/kxscript.h"

/// Host package kxcomponents: the base classes of command editors. `Application()` comes with the user
/// interface.

/// An edit control of a command's dialog that holds a parameter's script expression.
class KX_API TKXEdit {
 public:
  virtual ~TKXEdit();
  virtual std::string GetText() const = 0;
  virtual void SetText(const std::string& text) = 0;
};

/// The host's help.
class KX_API TKXHelpSystem {
 public:
  virtual ~TKXHelpSystem();

  /// Shows what there is about a topic, by its number; may return before the user has read it. Called on the
  /// user-interface thread. What it throws reaches the user as an error.
  virtual void ShowTopic(int helpContext) = 0;
};

/// For the host alone, before extensions are loaded; the host keeps ownership. Null takes it back.
KX_API void SetHelpSystem(TKXHelpSystem* helpSystem);

/// The help button of a command's dialog. What help there is, and what it looks like, is the host's business;
/// the dialog gives the topic and the place.
class KX_API TKXHelpButton {
 public:
  TKXHelpButton();
  virtual ~TKXHelpButton();
  TKXHelpButton(const TKXHelpButton&) = delete;
  TKXHelpButton& operator=(const TKXHelpButton&) = delete;

  /// What pressing the button does, and F1 in its dialog: asks the host's help for the topic. A host without
  /// help has a message box say so. Throws what the host's help throws.
  virtual void Click();

  /// Number of the topic; 0 for none.
  int HelpContext() const { return helpContext_; }
  void SetHelpContext(int helpContext) { helpContext_ = helpContext; }

 private:
  int helpContext_ = 0;
};

/// A command's editor dialog as the framework sees it.
class KX_API TKXEditorForm {
 public:
  virtual ~TKXEditorForm();

  /// Shows the dialog modally and returns its modal result. Throws what the dialog's OnShow throws.
  virtual int ShowModal() = 0;

  /// The edit control for a parameter, named "KXEdit_" and the parameter's name; null when there is none.
  virtual TKXEdit* FindEdit(const std::string& controlName) = 0;
};

/// One declared parameter of a prototype "procedure Name(First : Type; Second : Type)".
struct TKXPrototypeParam {
  std::string name;
  std::string type;
};

/// The host's view of a script command. The order of the virtual operations is part of the interface
/// between host and extension, whichever of the classes below implements them: operations are never
/// inserted, removed or reordered. All are called on the user-interface thread.
class KX_API TKXRunEdit {
 public:
  TKXRunEdit(const TKXRunEdit&) = delete;
  TKXRunEdit& operator=(const TKXRunEdit&) = delete;

  /// Edits the command's own parameters (those of DecodeScript); true when the user confirmed.
  virtual bool EditCommand() = 0;
  /// Evaluates the command's own parameters and runs the command with them.
  virtual void RunCommand() = 0;
  /// The script line of the command's own parameters.
  virtual std::string RecodeScript() = 0;
  /// Puts default values into the editor's controls.
  virtual void SetDefaults() = 0;
  /// Called after the user confirmed an edit.
  virtual void PostEdit();
  /// One line that describes the command with its own parameters.
  virtual void GetDescription(std::string& text) = 0;
  /// The command's fixed identifier in the host.
  virtual int GetID() = 0;
  /// True when every parameter of the prototype is in `params`.
  virtual bool CheckParams(const TParamList& params) = 0;
  /// Makes another command of the same class. The caller owns it.
  virtual TKXRunEdit* Create(TKXParser* parser) const = 0;
  /// Runs the command the way the host runs it from a script, and returns when it has ended.
  virtual void RunThreaded(const TParamList& params) = 0;
  /// Edits `params` in the command's dialog; true when the user confirmed, else `params` is unchanged.
  virtual bool Edit(TParamList& params) = 0;
  /// Moves what the editor's controls hold into `params`.
  virtual void SetParams(TParamList& params) = 0;
  /// Moves parameter expressions from `params` into the editor's controls.
  virtual void ReadParams(const TParamList& params) = 0;
  /// Takes the parameters of a script line as the command's own. Throws TKXScriptError.
  virtual void DecodeScript(const std::string& line) = 0;
  /// Splits a script line into `params`, unevaluated. Throws TKXScriptError.
  virtual void ParseCommandLine(const std::string& line, TParamList& params) = 0;
  /// True when the command takes its parameters in the form of script version 3.
  virtual bool V3ParamHandling() = 0;
  /// Keeps a value for the host.
  virtual void SetClientData(void* data) = 0;
  /// One line that describes the command with the given parameters.
  virtual void GetDescription(std::string& text, const TParamList& params) = 0;
  /// Carries the command out with evaluated parameters. Throws on failure.
  virtual void Run(const TParamList& params) = 0;
  /// Runs the command with what its editor shows.
  virtual void OnEditorTest() = 0;

  virtual ~TKXRunEdit();

 protected:
  TKXRunEdit();
};

/// A command whose parameters come from a script line and are edited in a dialog.
class KX_API TKXThreadRunEdit : public TKXRunEdit {
 public:
  ~TKXThreadRunEdit() override;

  bool EditCommand() override;
  std::string RecodeScript() override;
  void SetDefaults() override;
  void GetDescription(std::string& text) override;
  bool CheckParams(const TParamList& params) override;
  bool Edit(TParamList& params) override;
  void SetParams(TParamList& params) override;
  void ReadParams(const TParamList& params) override;
  void DecodeScript(const std::string& line) override;
  void ParseCommandLine(const std::string& line, TParamList& params) override;
  bool V3ParamHandling() override;
  void SetClientData(void* data) override;
  void GetDescription(std::string& text, const TParamList& params) override;

  /// Prototype text, as given to the constructor.
  const std::string& Prototype() const { return prototype_; }
  /// Name of the command, from the prototype.
  const std::string& CommandName() const { return name_; }
  /// Declared parameters, from the prototype.
  const std::vector<TKXPrototypeParam>& Parameters() const { return parameters_; }
  /// What SetClientData was given last; null before.
  void* ClientData() const { return clientData_; }

 protected:
  /// Keeps the prototype, the editor dialog (and owns it; it may be null for a command without a dialog)
  /// and the parser. Throws std::invalid_argument when the prototype cannot be read.
  TKXThreadRunEdit(const std::string& prototype, std::unique_ptr<TKXEditorForm> editor, TKXParser* parser);

  TKXEditorForm* EditorForm() const { return editor_.get(); }
  TKXParser* Parser() const { return parser_; }
  const TParamList& OwnParams() const { return ownParams_; }

 private:
  std::string prototype_;
  std::string name_;
  std::vector<TKXPrototypeParam> parameters_;
  std::unique_ptr<TKXEditorForm> editor_;
  TKXParser* parser_;
  TParamList ownParams_;
  void* clientData_ = nullptr;
};

/// A command that is called like a procedure of the script language.
class KX_API TKXFuncRunEdit : public TKXThreadRunEdit {
 public:
  ~TKXFuncRunEdit() override;

  void RunCommand() override;
  void RunThreaded(const TParamList& params) override;
  void OnEditorTest() override;

 protected:
  TKXFuncRunEdit(const std::string& prototype, std::unique_ptr<TKXEditorForm> editor, TKXParser* parser);
};
