#include <gtest/gtest.h>

#include <nlohmann/json.hpp>
#include <string>

#include "bench/program/output/JsonLine.h"
#include "tests/bench/RowName.h"

namespace kxbench {
namespace {

struct JsonRow {
  const char* name;
  nlohmann::ordered_json json;
  std::string line;
};

void PrintTo(const JsonRow& row, std::ostream* out) { *out << row.name; }

class JsonLines : public ::testing::TestWithParam<JsonRow> {};

TEST_P(JsonLines, AreWrittenWithBlanks) { EXPECT_EQ(JsonLine(GetParam().json), GetParam().line); }

INSTANTIATE_TEST_SUITE_P(
    JsonLine, JsonLines,
    ::testing::Values(JsonRow{"NetsOfChannels", {{1, 14}, {2}}, "[[1, 14], [2]]"},
                      JsonRow{"MembersInTheirOrder",
                              {{"verdict", "fail"}, {"faults", 2}},
                              R"({"verdict": "fail", "faults": 2})"},
                      JsonRow{"NothingInAList", nlohmann::ordered_json::array(), "[]"},
                      JsonRow{"NothingInAnObject", nlohmann::ordered_json::object(), "{}"},
                      JsonRow{"AnEmptyTextInAList", {"", ""}, R"(["", ""])"},
                      JsonRow{"NoValue", nullptr, "null"}, JsonRow{"AWholeNumberOfOhms", 10.0, "10"},
                      JsonRow{"OhmsWithDecimals", 47.1, "47.1"}, JsonRow{"ManyOhms", 100000.0, "1e+05"},
                      JsonRow{"ANameWithQuotes", {{"B \"1\"", "\\"}}, R"({"B \"1\"": "\\"})"},
                      JsonRow{"AControlCharacter", "a\x01", R"("a\u0001")"},
                      JsonRow{"AnUmlaut", "Süd", "\"Süd\""},
                      JsonRow{"WhatIsNotUtf8",
                              "S\xfc"
                              "d",
                              "\"S\xef\xbf\xbd"
                              "d\""}),
    RowName<JsonRow>);

}  // namespace
}  // namespace kxbench
