#include <gmock/gmock.h>

#include <fstream>
#include <nlohmann/json.hpp>
#include <regex>

#include "bench/results/Outputs.h"
#include "tests/bench/results/ResultExamples.h"

/// What is written is what docs/result.schema.json describes.

namespace kxbench::results {
namespace {

using SchemaJson = nlohmann::json;
using testing::IsEmpty;

bool HasType(const SchemaJson& value, const std::string& type) {
  if (type == "object") return value.is_object();
  if (type == "array") return value.is_array();
  if (type == "string") return value.is_string();
  if (type == "integer") return value.is_number_integer();
  if (type == "number") return value.is_number();
  if (type == "boolean") return value.is_boolean();
  return type == "null" && value.is_null();
}

/// The words of JSON Schema that the schema uses; members that it does not name are faults too here.
class Validator {
 public:
  explicit Validator(SchemaJson schema) : schema_(std::move(schema)) {}

  std::vector<std::string> FaultsIn(const SchemaJson& value) { return FaultsIn(value, schema_, "$"); }

 private:
  using Faults = std::vector<std::string>;

  Faults FaultsIn(const SchemaJson& value, const SchemaJson& schema, const std::string& place) {
    if (schema.contains("$ref")) {
      const std::string name = schema["$ref"];
      return FaultsIn(value, schema_.at(SchemaJson::json_pointer(name.substr(1))), place);
    }
    if (schema.contains("oneOf")) {
      Faults all;
      int fitting = 0;
      for (const SchemaJson& one : schema["oneOf"]) {
        const Faults faults = FaultsIn(value, one, place);
        fitting += faults.empty() ? 1 : 0;
        all.insert(all.end(), faults.begin(), faults.end());
      }
      return fitting == 1 ? Faults() : all;
    }
    Faults faults = PlainFaults(value, schema, place);
    if (value.is_object()) AddMembers(value, schema, place, faults);
    if (value.is_array()) {
      for (const SchemaJson& item : value) Append(FaultsIn(item, schema.at("items"), place + "[]"), faults);
    }
    return faults;
  }

  static Faults PlainFaults(const SchemaJson& value, const SchemaJson& schema, const std::string& place) {
    Faults faults;
    if (schema.contains("const") && value != schema["const"]) faults.push_back(place + ": const");
    if (schema.contains("enum") && !std::count(schema["enum"].begin(), schema["enum"].end(), value)) {
      faults.push_back(place + ": enum");
    }
    if (schema.contains("type")) {
      const SchemaJson types = schema["type"].is_array() ? schema["type"] : SchemaJson{schema["type"]};
      const bool fits =
          std::any_of(types.begin(), types.end(), [&](const SchemaJson& t) { return HasType(value, t); });
      if (!fits) faults.push_back(place + ": type");
    }
    if (schema.contains("minimum") && value < schema["minimum"]) faults.push_back(place + ": minimum");
    if (schema.contains("pattern") &&
        !std::regex_search(value.get<std::string>(), std::regex(schema["pattern"].get<std::string>()))) {
      faults.push_back(place + ": pattern");
    }
    return faults;
  }

  void AddMembers(const SchemaJson& value, const SchemaJson& schema, const std::string& place,
                  Faults& faults) {
    for (const SchemaJson& name : schema.at("required")) {
      if (!value.contains(name.get<std::string>()))
        faults.push_back(place + ": lacks " + name.get<std::string>());
    }
    for (const auto& [name, member] : value.items()) {
      if (!schema.at("properties").contains(name)) {
        faults.push_back(place + ": " + name + " is not described");
      } else {
        Append(FaultsIn(member, schema["properties"][name], place + "." + name), faults);
      }
    }
  }

  static void Append(const Faults& more, Faults& faults) {
    faults.insert(faults.end(), more.begin(), more.end());
  }

  SchemaJson schema_;
};

Validator DocumentedSchema() {
  std::ifstream file(std::string(DOCS_FOLDER) + "/result.schema.json");
  return Validator(SchemaJson::parse(file));
}

TEST(OutputJson, FollowsItsSchema) {
  Validator schema = DocumentedSchema();
  for (const Result& result : {BrokenWire(), GoodDevice(), MissingTester(), HostileResult()}) {
    EXPECT_THAT(schema.FaultsIn(SchemaJson::parse(ResultsJson({{result, ""}}))), IsEmpty());
    EXPECT_THAT(schema.FaultsIn(SchemaJson::parse(ResultJsonLine(result))), IsEmpty());
  }
  EXPECT_THAT(schema.FaultsIn(SchemaJson::parse(ResultsJson({{BrokenWire(), ""}, {GoodDevice(), ""}}))),
              IsEmpty());
  EXPECT_THAT(schema.FaultsIn(SchemaJson::parse(ResultsJson({}))), IsEmpty());
}

TEST(OutputJson, SchemaRefusesWhatItDoesNotDescribe) {
  Validator schema = DocumentedSchema();
  SchemaJson json = SchemaJson::parse(ResultsJson({{BrokenWire(), ""}}));
  json["verdict"] = "good";
  json["records"][0]["value"] = "1";
  json.erase("id");
  EXPECT_THAT(schema.FaultsIn(json),
              testing::IsSupersetOf({"$.verdict: enum", "$.records[].value: type", "$: lacks id"}));
}

TEST(OutputJson, HoldsWhatIsKnown) {
  const SchemaJson json = SchemaJson::parse(ResultsJson({{BrokenWire(), ""}}));
  EXPECT_EQ(json["started"], "2026-11-22T08:00:00.000Z");
  EXPECT_EQ(json["operator"], "Eva");
  EXPECT_EQ(json["diagnosis"], "open: 3 (B-1) has come off");
  EXPECT_EQ(json["records"][0]["number"], 1);
  EXPECT_EQ(json["records"][0]["value"], -1);
  EXPECT_EQ(json["faults"][0]["channels"], SchemaJson({3}));
  EXPECT_TRUE(SchemaJson::parse(ResultsJson({{GoodDevice(), ""}}))["diagnosis"].is_null());
}

TEST(OutputJson, LineIsOneLineWhateverTheTexts) {
  Result result = HostileResult();
  result.serial = "a\nb\rc";
  const std::string line = ResultJsonLine(result);
  EXPECT_EQ(line.find_first_of("\r\n"), std::string::npos);
  EXPECT_TRUE(line.starts_with(ResultJsonLineStart));
  EXPECT_EQ(SchemaJson::parse(line)["serial"], "a\nb\rc");
}

TEST(DiagnosisText, SaysWhetherADiagnosisWasMade) {
  Result result = GoodDevice();
  EXPECT_EQ(DiagnosisText(result), "");
  result.diagnosed = true;
  EXPECT_EQ(DiagnosisText(result), "no fault");
  result.faults = {{"open", {1}, "one"}, {"short", {2}, "two"}};
  EXPECT_EQ(DiagnosisText(result), "one\ntwo");
}

}  // namespace
}  // namespace kxbench::results
