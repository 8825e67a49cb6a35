#include "bench/program/check/ResultOptions.h"

#include <algorithm>

#include "bench/program/system/Failure.h"

namespace kxbench {

namespace {

/// A text that goes into results; what no database could hold is refused at once.
void DeclareText(OptionList& list, const std::string& name, const std::string& type,
                 const std::string& description, std::optional<std::string>& target) {
  list.Value(name, type, description, [name, &target](const std::string& text) {
    RequireStorable(name, text);
    target = text;
  });
}

}  // namespace

void ResultOptions::DeclareIn(OptionList& list) {
  DeclareText(list, "--serial", "TEXT", "Serial number of the device, for its result", serial);
  DeclareWithoutSerialIn(list);
}

void ResultOptions::DeclareWithoutSerialIn(OptionList& list) {
  DeclareText(list, "--part", "TEXT", "Part number of the device, for its result", part);
  DeclareText(list, "--operator", "NAME", "Who tests, for the result", operatorName);
  DeclareText(list, "--station", "NAME", "Where, for the result (default: the computer's name)", station);
  list.Value(
          "--output", "FORMAT:FILE",
          "Write the result to FILE; json, jsonl (appended), junit, csv or html; may be given several times",
          [this](const std::string& text) {
            const auto output = results::ReadOutputFile(text);
            if (!output)
              throw Failure("--output: expected json, jsonl, junit, csv or html, a colon and a file, not " +
                            text);
            const bool twice = std::any_of(outputs.begin(), outputs.end(), [&output](const auto& other) {
              return other.name == output->name;
            });
            if (twice) throw Failure("--output: " + output->name + " is given twice");
            outputs.push_back(*output);
          })
      .repeatable = true;
  store.DeclareIn(list);
}

}  // namespace kxbench
