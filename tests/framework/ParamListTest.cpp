#include <gtest/gtest.h>

#include "framework/ScriptExpression.h"
#include "framework/kxcommon.h"
#include "framework/kxscript.h"

namespace {

TEST(ParamList, HoldsValuesByNameWhateverTheCase) {
  TParamList params;
  params.Set("Datafile", "\"a\"", std::make_unique<TStringValue>("a"));
  EXPECT_EQ(TStringValue::GetVal(params.GetValue("DATAFILE")), "a");
  EXPECT_EQ(params.GetExpression("datafile"), "\"a\"");
}

TEST(ParamList, ReplacesAParameterInItsPlace) {
  TParamList params;
  params.Set("A", "1", nullptr);
  params.Set("B", "2", nullptr);
  params.Set("a", "3", nullptr);
  ASSERT_EQ(params.Items().size(), 2U);
  EXPECT_EQ(params.Items()[0].expression, "3");
}

TEST(ParamList, TellsUnevaluatedFromMissing) {
  TParamList params;
  params.Set("A", "1", nullptr);
  EXPECT_TRUE(params.Contains("a"));
  EXPECT_EQ(params.GetValue("A"), nullptr);
  EXPECT_FALSE(params.Contains("B"));
  EXPECT_EQ(params.GetExpression("B"), "");
}

TEST(StringValue, TextOfAnyValue) {
  const TStringValue string("x");
  const kx::IntegerValue integer(12);
  EXPECT_EQ(TStringValue::GetVal(&string), "x");
  EXPECT_EQ(TStringValue::GetVal(&integer), "12");
  EXPECT_EQ(TStringValue::GetVal(nullptr), "");
}

TEST(HashTable, KeepsPointerSizeValues) {
  TKXHashTable table;
  table.Put("MsgHandle", UINTPTR_MAX);
  table.Put("MsgHandle", UINTPTR_MAX - 1);
  EXPECT_EQ(table.Get("MsgHandle"), UINTPTR_MAX - 1);
  EXPECT_EQ(table.Get("msghandle"), 0U) << "keys are case-sensitive";
}

}  // namespace
