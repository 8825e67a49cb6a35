#include "bench/results/StorableText.h"

#include <stdexcept>

#include "bench/results/ResultStore.h"
#include "text/Utf8.h"

namespace kxbench::results {

namespace {

void MakeStorable(std::string& text) {
  if (text.find('\0') == std::string::npos && shorttest::IsUtf8(text)) return;
  text = shorttest::ToWellFormedUtf8(text);
  for (std::size_t at = 0; (at = text.find('\0', at)) != std::string::npos;)
    text.replace(at, 1, "\xEF\xBF\xBD");
}

}  // namespace

void CheckStorable(const std::string& what, const std::string& value) {
  if (value.size() > MostStorableBytes) {
    throw std::runtime_error(what + " is too long: " + std::to_string(value.size()) + " bytes, and at most " +
                             std::to_string(MostStorableBytes) + " are possible");
  }
  if (!shorttest::IsUtf8(value)) throw std::runtime_error(what + " is no UTF-8 text");
  if (value.find('\0') != std::string::npos) throw std::runtime_error(what + " holds a NUL character");
}

Result StorableResult(const Result& result) {
  CheckStorable("the serial number", result.serial);
  CheckStorable("the part", result.part);
  CheckStorable("the operator", result.operatorName);
  CheckStorable("the station", result.station);
  Result storable = result;
  for (std::string* text :
       {&storable.expectation, &storable.expectationSha256, &storable.programVersion, &storable.pluginVersion,
        &storable.driver, &storable.driverGeneration, &storable.cards, &storable.error}) {
    MakeStorable(*text);
  }
  for (ResultRecord& record : storable.records) {
    for (std::string* text : {&record.line, &record.text, &record.unit}) MakeStorable(*text);
  }
  for (ResultFault& fault : storable.faults) {
    for (std::string* text : {&fault.kind, &fault.text}) MakeStorable(*text);
  }
  return storable;
}

}  // namespace kxbench::results
