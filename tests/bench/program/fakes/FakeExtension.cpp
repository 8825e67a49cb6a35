#include <cstdio>
#include <cstdlib>
#include <exception>
#include <filesystem>
#include <fstream>
#include <map>
#include <memory>
#include <sstream>
#include <stdexcept>
#include <string>

#include "contracts/WindowMessages.h"
#include "framework/Kxcommandinterfaces.h"
#include "framework/kxcomponents.h"
#include "framework/kxextension.h"

/// An extension with two commands. `ShortTest(Datafile : String)` carries out the lines of the file named
/// that follow its line [FAKE]:
///   record TEXT      sends TEXT (UTF-8, one character beyond the first 65536 allowed) as a record
///   variable NAME    sends the host variable as a record
///   environment NAME sends the process's variable as a record
///   init             calls the host's initialisation
///   cancel           tells the host of a cancel
///   ask              asks with a message box and sends the answer as a record
///   wait             shows a progress dialog and runs until it is cancelled, then tells the host
///   close            returns
///   truncate NAME    empties the file of that name
///   throw TEXT       throws an exception of the extension's own type
///   throw-number     throws a number
/// `Echo(First : String; Second : Integer)` sends its parameters as a record.
///
/// The variable FAKE_EXTENSION makes its entry fail: "null", "throw", "no-command". FAKE_LOG names a file
/// that gets a line for each destruction.

namespace {

std::string Environment(const char* name) {
  const char* value = std::getenv(name);
  return value == nullptr ? "" : value;
}

void Log(const std::string& line) {
  const std::string name = Environment("FAKE_LOG");
  if (!name.empty()) std::ofstream(name, std::ios::app | std::ios::binary) << line << "\n";
}

struct HostValues {
  TKXParser* parser = nullptr;
  std::uint32_t messageWindow = 0;
  TBreInit initialise = nullptr;
};
HostValues theHost;

/// An exception whose type lives in this library, and only there.
class ExtensionFailure : public std::exception {
 public:
  explicit ExtensionFailure(std::string text) : text_(std::move(text)) {}
  const char* what() const noexcept override { return text_.c_str(); }

 private:
  std::string text_;
};

std::u16string Utf16(const std::string& text) {
  std::u16string wide;
  for (std::size_t i = 0; i < text.size();) {
    const auto lead = static_cast<unsigned char>(text[i]);
    const std::size_t length = lead < 0x80 ? 1 : lead < 0xE0 ? 2 : lead < 0xF0 ? 3 : 4;
    char32_t c = length == 1 ? lead : lead & (0xFFU >> (length + 1));
    for (std::size_t k = 1; k < length; ++k) c = (c << 6) | (static_cast<unsigned char>(text[i + k]) & 0x3FU);
    i += length;
    if (c < 0x10000) {
      wide += static_cast<char16_t>(c);
    } else {
      wide += static_cast<char16_t>(0xD800 + ((c - 0x10000) >> 10));
      wide += static_cast<char16_t>(0xDC00 + ((c - 0x10000) & 0x3FF));
    }
  }
  return wide;
}

/// Sends a record and spoils its text at once: the host must have taken it during the call.
void SendRecord(const std::string& text) {
  std::u16string record = Utf16(text);
  const auto handle = reinterpret_cast<HWND>(static_cast<std::uintptr_t>(theHost.messageWindow));
  SendMessageW(handle, 1133, 0, reinterpret_cast<LPARAM>(record.c_str()));
  record.assign(record.size(), u'?');
}

void WaitForCancel() {
  ProgressDialogLayout layout{};
  layout.caption = "Kurzschlusstest";
  layout.barMaximum = 100;
  layout.buttonCaption = "Abbrechen";
  layout.buttonResult = mrCancel;
  const auto dialog = Application().CreateProgressDialog(layout);
  dialog->Show();
  const TaskWindowList disabled = Application().DisableTaskWindows(dialog->Handle());
  Log("waiting");
  while (dialog->GetModalResult() == mrNone && dialog->Visible()) {
    Application().ProcessMessages();
    dialog->SetBarPosition(50);
  }
  Log("relays open");
  if (dialog->GetModalResult() == mrCancel) TestEnvironment()->CancelTest();
  Application().EnableTaskWindows(disabled);
}

void CarryOut(const std::string& line) {
  std::istringstream words(line);
  std::string verb;
  words >> verb >> std::ws;
  std::string rest;
  std::getline(words, rest);
  if (verb == "record") return SendRecord(rest);
  if (verb == "variable") return SendRecord(TStringValue::GetVal(VarAccess()->GetVariable(rest)));
  if (verb == "environment") return SendRecord(Environment(rest.c_str()));
  if (verb == "init") return theHost.initialise();
  if (verb == "cancel") return TestEnvironment()->CancelTest();
  if (verb == "ask") {
    return SendRecord(
        std::to_string(Application().ShowMessage({"Frage", MessageKind::Information, {mrCancel, mrIgnore}})));
  }
  if (verb == "wait") return WaitForCancel();
  if (verb == "truncate") return void(std::ofstream(rest));
  if (verb == "throw") throw ExtensionFailure(rest);
  if (verb == "throw-number") throw 42;
  if (verb != "close") throw ExtensionFailure("unknown line " + line);
}

class TextEdit : public TKXEdit {
 public:
  std::string GetText() const override { return text_; }
  void SetText(const std::string& text) override { text_ = text; }

 private:
  std::string text_;
};

/// A dialog that asks with a message box whether to take "edited.dat".
/// It hands its control to the host, and asks for the hardware once it shows, as the real one does.
class FakeForm : public TKXEditorForm {
 public:
  FakeForm() { VarAccess()->AttachEdit(edit_); }

  int ShowModal() override {
    const bool opensEmpty = edit_.GetText().empty();
    theHost.initialise();
    if (opensEmpty && !edit_.GetText().empty()) std::fputs("opened empty\n", stderr);
    if (edit_.GetText().find("broken") != std::string::npos) throw ExtensionFailure("cannot read broken.dat");
    const int result =
        Application().ShowMessage({edit_.GetText(), MessageKind::Information, {mrOk, mrCancel}});
    edit_.SetText("\"edited.dat\"");
    return result;
  }
  TKXEdit* FindEdit(const std::string& name) override { return name == "KXEdit_Datafile" ? &edit_ : nullptr; }

 private:
  TextEdit edit_;
};

class FakeShortTest : public TKXFuncRunEdit {
 public:
  explicit FakeShortTest(TKXParser* parser)
      : TKXFuncRunEdit("procedure ShortTest(Datafile : String)", std::make_unique<FakeForm>(), parser) {}
  ~FakeShortTest() override { Log("command destroyed"); }
  int GetID() override { return 10020; }
  TKXRunEdit* Create(TKXParser* parser) const override { return new FakeShortTest(parser); }
  void Run(const TParamList& params) override {
    const std::string name = TStringValue::GetVal(params.GetValue("Datafile"));
    std::ifstream file(std::filesystem::path(std::u8string(name.begin(), name.end())));
    if (!file) throw ExtensionFailure("cannot open " + name);
    bool begun = false;
    for (std::string line; std::getline(file, line);) {
      if (begun) CarryOut(line);
      begun = begun || line == "[FAKE]";
    }
  }
};

class FakeEcho : public TKXFuncRunEdit {
 public:
  explicit FakeEcho(TKXParser* parser)
      : TKXFuncRunEdit("procedure Echo(First : String; Second : Integer)", nullptr, parser) {}
  int GetID() override { return 10021; }
  TKXRunEdit* Create(TKXParser* parser) const override { return new FakeEcho(parser); }
  void Run(const TParamList& params) override {
    SendRecord(TStringValue::GetVal(params.GetValue("First")) + "||" +
               TStringValue::GetVal(params.GetValue("Second")) + "||||");
  }
};

template <typename Command>
class ClassOf : public TKXCommandClass {
 public:
  std::string ClassName() const override { return "Fake"; }
  TKXFuncRunEdit* Create(TKXParser* parser) const override {
    return Environment("FAKE_EXTENSION") == "no-command" ? nullptr : new Command(parser);
  }
};

const ClassOf<FakeShortTest> shortTestClass;
const ClassOf<FakeEcho> echoClass;

struct AtUnload {
  ~AtUnload() { Log("library unloaded"); }
} atUnload;

}  // namespace

#ifdef _WIN32
extern "C" __declspec(dllexport)
#else
extern "C" __attribute__((visibility("default")))
#endif
    TExtensionInfo* __getExtensionInfo(const TKXHashTable& hostValues);

TExtensionInfo* __getExtensionInfo(const TKXHashTable& hostValues) {
  if (Environment("FAKE_EXTENSION") == "null") return nullptr;
  if (Environment("FAKE_EXTENSION") == "throw") throw ExtensionFailure("no licence\nfor this host");
  theHost.parser = reinterpret_cast<TKXParser*>(hostValues.Get("AppParser"));
  theHost.messageWindow = static_cast<std::uint32_t>(hostValues.Get("MsgHandle"));
  theHost.initialise = reinterpret_cast<TBreInit>(hostValues.Get("BreInit"));
  auto info = std::make_unique<TExtensionInfo>();
  info->Name = "Fake";
  info->Description = "Extension for tests";
  info->CommandDefinitionFile = "Data\\FakeCommands.def";
  info->Commands.push_back(std::make_unique<TKXFuncRunEditExport>(shortTestClass, theHost.parser, 1U));
  info->Commands.push_back(std::make_unique<TKXFuncRunEditExport>(echoClass, theHost.parser, 1U));
  return info.release();
}
