#include <gtest/gtest.h>

#include <stdexcept>

#include "framework/kxcomponents.h"
#include "tests/bench/RowName.h"

/// Prototypes as commands declare them, through the base class that reads them.

namespace {

class DeclaredCommand : public TKXFuncRunEdit {
 public:
  explicit DeclaredCommand(const std::string& prototype) : TKXFuncRunEdit(prototype, nullptr, nullptr) {}
  int GetID() override { return 1; }
  TKXRunEdit* Create(TKXParser*) const override { return new DeclaredCommand(Prototype()); }
  void Run(const TParamList&) override {}
};

std::string Signature(const std::string& prototype) {
  const DeclaredCommand command(prototype);
  std::string text = command.CommandName();
  for (const TKXPrototypeParam& parameter : command.Parameters())
    text += "|" + parameter.name + "=" + parameter.type;
  return text;
}

struct PrototypeRow {
  const char* name;
  const char* prototype;
  const char* signature;
};

class Prototype : public testing::TestWithParam<PrototypeRow> {};
TEST_P(Prototype, IsRead) { EXPECT_EQ(Signature(GetParam().prototype), GetParam().signature); }

INSTANTIATE_TEST_SUITE_P(
    Forms, Prototype,
    testing::Values(PrototypeRow{"OneParameter", "procedure ShortTest(Datafile : String)",
                                 "ShortTest|Datafile=String"},
                    PrototypeRow{"NoBlanks", "procedure A(B:Integer;C:String)", "A|B=Integer|C=String"},
                    PrototypeRow{"ListOfNames", "procedure A(B, C : Integer; D : String)",
                                 "A|B=Integer|C=Integer|D=String"},
                    PrototypeRow{"NoParameters", "procedure A", "A"},
                    PrototypeRow{"KeywordInCapitals", "PROCEDURE A", "A"}),
    RowName<PrototypeRow>);

class BadPrototype : public testing::TestWithParam<PrototypeRow> {};
TEST_P(BadPrototype, IsRefusedWithItsText) {
  try {
    DeclaredCommand command(GetParam().prototype);
    FAIL() << "no error";
  } catch (const std::invalid_argument& error) {
    EXPECT_EQ(std::string(error.what()), std::string("the prototype \"") + GetParam().prototype +
                                             "\" cannot be read: " + GetParam().signature);
  }
}

INSTANTIATE_TEST_SUITE_P(
    Faults, BadPrototype,
    testing::Values(
        PrototypeRow{"Empty", "", "column 1: expected 'procedure', found the end of the line"},
        PrototypeRow{"OtherKeyword", "function A", "column 1: expected 'procedure'"},
        PrototypeRow{"NoName", "procedure (A : String)", "column 11: expected the command's name, found '('"},
        PrototypeRow{"EmptyList", "procedure A()", "column 13: expected a parameter, found ')'"},
        PrototypeRow{"NoType", "procedure A(B)", "column 14: expected ':', found ')'"},
        PrototypeRow{"NoEnd", "procedure A(B : String", "column 23: expected ')', found the end of the line"},
        PrototypeRow{"Rest", "procedure A(B : String);", "column 24: expected the end, found ';'"},
        PrototypeRow{"SameNameTwice", "procedure A(B : String; b : String)",
                     "column 25: there is a parameter b already"}),
    RowName<PrototypeRow>);

}  // namespace
