// The data file: its name, opening and saving.

#include <filesystem>

#include "framework/kxscript.h"
#include "plugin/editor/EditorDialog.h"
#include "plugin/editor/FileChoice.h"
#include "plugin/editor/GUI_ShortTest.h"
#include "text/Paths.h"

namespace {

std::string ProjectPath(TKXParser* parser) {
  return parser == nullptr ? std::string()
                           : TStringValue::GetVal(parser->GetEnvironment().FindVariable("PROJEKTPFAD"));
}

// The expression to store for a chosen file: a string literal, or one relative to the project.
std::string FileExpression(TKXParser* parser, const std::string& fileName) {
  const std::string literal = "\"" + fileName + "\"";
  return parser == nullptr ? literal : parser->GetEnvironment().ReplaceProjectPath(literal);
}

}  // namespace

std::string TShortTestForm::GetDataFileName() const {
  std::string text = KXEdit_Datafile.GetText();
  if (parser_ == nullptr) return text;
  const auto expression = parser_->ParseExpression(text);
  return expression ? TStringValue::GetVal(expression->Evaluate().get()) : text;
}

void TShortTestForm::BT_FileopenClick() {
  const auto chosen = shorttest::ChooseFileToOpen(
      *Window(), {.directory = ProjectPath(parser_), .fileName = GetDataFileName()});
  if (!chosen) return;
  KXEdit_Datafile.SetText(FileExpression(parser_, *chosen));
  const std::string name = GetDataFileName();
  if (!std::filesystem::exists(shorttest::AbsolutePath(name))) return;
  try {
    document_.Open(name);
  } catch (...) {
    ShowNoData();
    throw;
  }
  ShowRange();
  ShowData();
}

void TShortTestForm::BT_FilesaveClick() {
  if (!IsReadyToWrite()) return;
  const auto chosen = shorttest::ChooseFileToSave(
      *Window(), {.directory = ProjectPath(parser_), .fileName = GetDataFileName()});
  if (!chosen) return;
  KXEdit_Datafile.SetText(FileExpression(parser_, *chosen));
  document_.Save(GetDataFileName());
}
