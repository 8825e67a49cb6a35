#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <functional>
#include <map>
#include <stdexcept>

#include "framework/ScriptEnvironment.h"
#include "framework/kxcomponents.h"
#include "framework/kxextension.h"
#include "tests/bench/RowName.h"

/// The operations that a command inherits, on a command with two parameters and a dialog of plain texts.

namespace {

class TextEdit : public TKXEdit {
 public:
  std::string GetText() const override { return text_; }
  void SetText(const std::string& text) override { text_ = text; }

 private:
  std::string text_;
};

class TextForm : public TKXEditorForm {
 public:
  int ShowModal() override {
    ++shown;
    if (typed) typed(*this);
    return result;
  }
  TKXEdit* FindEdit(const std::string& controlName) override {
    const auto found = edits.find(controlName);
    return found == edits.end() ? nullptr : &found->second;
  }

  std::map<std::string, TextEdit> edits;
  int result = mrOk;
  int shown = 0;
  std::function<void(TextForm&)> typed;  ///< what the user does while the dialog shows
};

class MeasureCommand : public TKXFuncRunEdit {
 public:
  static constexpr const char* Declaration = "procedure Measure(Datafile : String; Count : Integer)";

  MeasureCommand(std::unique_ptr<TKXEditorForm> form, TKXParser* parser)
      : TKXFuncRunEdit(Declaration, std::move(form), parser) {}

  int GetID() override { return 42; }
  TKXRunEdit* Create(TKXParser* parser) const override { return new MeasureCommand(nullptr, parser); }
  void PostEdit() override { ++postEdits; }
  void Run(const TParamList& params) override {
    runs.push_back(TStringValue::GetVal(params.GetValue("Datafile")) + "/" +
                   TStringValue::GetVal(params.GetValue("Count")));
  }

  std::vector<std::string> runs;
  int postEdits = 0;
};

class Command : public testing::Test {
 protected:
  Command() {
    auto form = std::make_unique<TextForm>();
    form_ = form.get();
    form_->edits["KXEdit_Datafile"];
    form_->edits["KXEdit_Count"];
    command_ = std::make_unique<MeasureCommand>(std::move(form), &parser_);
    parser_.GetEnvironment().SetVariable("PROJEKTPFAD", "/p/");
  }

  std::string Shown(const std::string& parameter) { return form_->edits.at("KXEdit_" + parameter).GetText(); }
  void Type(const std::string& parameter, const std::string& text) {
    form_->edits.at("KXEdit_" + parameter).SetText(text);
  }

  TKXRunEdit& Base() { return *command_; }

  kx::ScriptParser parser_;
  TextForm* form_ = nullptr;
  std::unique_ptr<MeasureCommand> command_;
};

TEST_F(Command, DecodesAScriptLineAndRecodesIt) {
  Base().DecodeScript("measure( PROJEKTPFAD + \"a.dat\" , 3 ) // nightly");
  EXPECT_EQ(Base().RecodeScript(), "Measure(PROJEKTPFAD + \"a.dat\", 3)");
}

TEST_F(Command, RecodedDefaultsCanBeReadAgain) {
  EXPECT_EQ(Base().RecodeScript(), "Measure(\"\", 0)");
  EXPECT_NO_THROW(Base().DecodeScript(Base().RecodeScript()));
}

TEST_F(Command, RunsItsOwnParametersEvaluated) {
  Base().DecodeScript("Measure(PROJEKTPFAD + \"a.dat\", 1 + 2)");
  Base().RunCommand();
  EXPECT_THAT(command_->runs, testing::ElementsAre("/p/a.dat/3"));
}

TEST_F(Command, FailedDecodingKeepsTheOwnParameters) {
  Base().DecodeScript("Measure(\"a\", 1)");
  EXPECT_THROW(Base().DecodeScript("Measure(\"b\", )"), TKXScriptError);
  EXPECT_EQ(Base().RecodeScript(), "Measure(\"a\", 1)");
}

struct CommandFault {
  const char* name;
  const char* line;
  std::size_t column;
  const char* message;
};

class CommandLineFault : public Command, public testing::WithParamInterface<CommandFault> {};

TEST_P(CommandLineFault, NamesTheColumn) {
  TParamList params;
  try {
    Base().ParseCommandLine(GetParam().line, params);
    FAIL() << "no error";
  } catch (const TKXScriptError& error) {
    EXPECT_EQ(error.Column(), GetParam().column);
    EXPECT_STREQ(error.what(), GetParam().message);
  }
  EXPECT_TRUE(params.Items().empty());
}

INSTANTIATE_TEST_SUITE_P(
    Rules, CommandLineFault,
    testing::Values(CommandFault{"OtherCommand", "Check(\"a\", 1)", 1, "expected Measure, found Check"},
                    CommandFault{"TooFew", "Measure(\"a\")", 12, "Measure takes 2 parameters, not 1"},
                    CommandFault{"None", "Measure", 1, "Measure takes 2 parameters, not 0"},
                    CommandFault{"TooMany", "Measure(\"a\", 1, 2)", 17, "Measure takes 2 parameters, not 3"},
                    CommandFault{"Syntax", "Measure(\"a\" 1)", 13, "expected '+', ',' or ')', found '1'"}),
    RowName<CommandFault>);

TEST_F(Command, ParsesACommandLineUnevaluated) {
  TParamList params;
  Base().ParseCommandLine("Measure(UNBEKANNT, 2)", params);
  EXPECT_EQ(params.GetExpression("Datafile"), "UNBEKANNT");
  EXPECT_EQ(params.GetValue("Datafile"), nullptr);
  EXPECT_TRUE(Base().CheckParams(params));
}

TEST_F(Command, MissesAParameter) {
  TParamList params;
  params.Set("DATAFILE", "\"a\"", nullptr);
  EXPECT_FALSE(Base().CheckParams(params));
  EXPECT_THROW(Base().RunThreaded(params), std::invalid_argument);
  EXPECT_TRUE(command_->runs.empty());
}

TEST_F(Command, EditShowsParametersAndTakesWhatWasTyped) {
  TParamList params;
  Base().ParseCommandLine("Measure(\"a\", 1)", params);
  std::string before;
  form_->typed = [&](TextForm& form) {
    before = form.edits["KXEdit_Datafile"].GetText();
    form.edits["KXEdit_Datafile"].SetText("\"b\"");
  };
  EXPECT_TRUE(Base().Edit(params));
  EXPECT_EQ(before, "\"a\"");
  EXPECT_EQ(params.GetExpression("Datafile"), "\"b\"");
  EXPECT_EQ(params.GetExpression("Count"), "1");
  EXPECT_EQ(command_->postEdits, 1);
}

class CommandEditResult : public Command, public testing::WithParamInterface<int> {};

TEST_P(CommandEditResult, OtherThanOkChangesNothing) {
  TParamList params;
  Base().ParseCommandLine("Measure(\"a\", 1)", params);
  form_->typed = [](TextForm& form) { form.edits["KXEdit_Datafile"].SetText("\"b\""); };
  form_->result = GetParam();
  EXPECT_FALSE(Base().Edit(params));
  EXPECT_EQ(params.GetExpression("Datafile"), "\"a\"");
  EXPECT_EQ(command_->postEdits, 0);
}

INSTANTIATE_TEST_SUITE_P(ModalResults, CommandEditResult,
                         testing::Values(mrNone, mrCancel, mrAbort, mrIgnore));

TEST_F(Command, EditCommandEditsTheOwnParameters) {
  Base().DecodeScript("Measure(\"a\", 1)");
  form_->typed = [](TextForm& form) { form.edits["KXEdit_Count"].SetText("7"); };
  EXPECT_TRUE(Base().EditCommand());
  EXPECT_EQ(Base().RecodeScript(), "Measure(\"a\", 7)");
}

TEST_F(Command, RecodesAPlainFileNameAsAString) {
  form_->typed = [](TextForm& form) { form.edits["KXEdit_Datafile"].SetText("C:\\kabel.dat"); };
  ASSERT_TRUE(Base().EditCommand());
  EXPECT_EQ(Base().RecodeScript(), "Measure(\"C:\\kabel.dat\", 0)");
}

TEST_F(Command, RecodesANumberAsTheStringThatItsParameterIs) {
  for (const auto& [typed, line] :
       {std::pair("5", "Measure(\"5\", 0)"), std::pair("2 + 3", "Measure(\"5\", 0)"),
        std::pair("\"5\"", "Measure(\"5\", 0)"), std::pair("KABEL", "Measure(KABEL, 0)")}) {
    form_->typed = [expression = typed](TextForm& form) {
      form.edits["KXEdit_Datafile"].SetText(expression);
    };
    ASSERT_TRUE(Base().EditCommand());
    EXPECT_EQ(Base().RecodeScript(), line) << typed;
  }
}

TEST_F(Command, EditorTestRunsWhatTheDialogShows) {
  Type("Datafile", "kabel.dat");
  Type("Count", "1 + 1");
  Base().OnEditorTest();
  EXPECT_THAT(command_->runs, testing::ElementsAre("kabel.dat/2"));
}

TEST_F(Command, DefaultsAreEmptyControls) {
  Type("Datafile", "\"a\"");
  Type("Count", "1");
  Base().SetDefaults();
  EXPECT_EQ(Shown("Datafile"), "");
  EXPECT_EQ(Shown("Count"), "");
}

TEST_F(Command, ParametersWithoutAControlArePassedOver) {
  form_->edits.erase("KXEdit_Count");
  TParamList params;
  Base().ParseCommandLine("Measure(\"a\", 1)", params);
  EXPECT_TRUE(Base().Edit(params));
  EXPECT_EQ(params.GetExpression("Count"), "1");
}

TEST_F(Command, WithoutADialogCannotBeEdited) {
  const std::unique_ptr<TKXRunEdit> other(Base().Create(&parser_));
  TParamList params;
  EXPECT_THROW(other->Edit(params), std::logic_error);
}

TEST_F(Command, DescribesItselfAsAScriptLine) {
  Base().DecodeScript("Measure(\"a\", 1)");
  std::string own;
  Base().GetDescription(own);
  EXPECT_EQ(own, "Measure(\"a\", 1)");

  TParamList params;
  Base().ParseCommandLine("Measure(\"b\", 2)", params);
  std::string given;
  Base().GetDescription(given, params);
  EXPECT_EQ(given, "Measure(\"b\", 2)");
}

TEST_F(Command, KeepsTheHostsValue) {
  int value = 0;
  EXPECT_EQ(command_->ClientData(), nullptr);
  Base().SetClientData(&value);
  EXPECT_EQ(command_->ClientData(), &value);
}

TEST_F(Command, TakesParametersAsANamedList) { EXPECT_FALSE(Base().V3ParamHandling()); }

class MeasureClass : public TKXCommandClass {
 public:
  std::string ClassName() const override { return "MeasureCommand"; }
  TKXFuncRunEdit* Create(TKXParser* parser) const override { return new MeasureCommand(nullptr, parser); }
};

TEST(CommandExport, MakesCommandsOfItsClassWithItsParser) {
  const MeasureClass commandClass;
  kx::ScriptParser parser;
  TExtensionInfo info;
  info.Commands.push_back(std::make_unique<TKXFuncRunEditExport>(commandClass, &parser, 1U));

  const auto command = info.Commands[0]->CreateCommand();
  EXPECT_EQ(command->CommandName(), "Measure");
  EXPECT_EQ(command->GetID(), 42);
  EXPECT_EQ(info.Commands[0]->Parser(), &parser);
  EXPECT_EQ(info.Commands[0]->Flags(), 1U);
  command->DecodeScript("Measure(\"a\" + \"b\", 1)");
  command->RunCommand();
  EXPECT_THAT(dynamic_cast<MeasureCommand&>(*command).runs, testing::ElementsAre("ab/1"));
}

}  // namespace
