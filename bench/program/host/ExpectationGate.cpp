#include "bench/program/host/ExpectationGate.h"

#include <system_error>
#include <utility>

#include "framework/AsciiCase.h"

namespace kxbench {

namespace {

std::string Place(const std::string& where, const std::string& file) {
  return (where.empty() ? "" : where + ": ") + file + ": ";
}

wiring::ExpectationFacts Facts(const std::string& place, const std::string& file) {
  try {
    return wiring::FactsOf(file);
  } catch (const std::system_error& error) {
    throw Failure(place + "cannot be read: " + error.code().message());
  }
}

}  // namespace

std::optional<std::string> ExpectationOf(const ScriptStep& step) {
  if (!kx::EqualIgnoringCase(step.command->CommandName(), CheckCommandName)) return std::nullopt;
  if (step.command->Parameters().empty()) return std::nullopt;
  return TStringValue::GetVal(step.params->GetValue(step.command->Parameters().front().name));
}

ExpectationGate::ExpectationGate(bool strict, std::function<void(const std::string& line)> warn)
    : strict_(strict), warn_(std::move(warn)) {}

wiring::ExpectationFacts ExpectationGate::AdmitFile(const std::string& where, const std::string& file) const {
  const std::string place = Place(where, file);
  const std::string warning = "warning: " + place;
  wiring::ExpectationFacts facts = Facts(place, file);
  if (!facts.refusal.empty()) throw Failure(place + facts.refusal);
  std::string all;
  for (const std::string& doubt : facts.doubts) {
    all += (all.empty() ? "" : "; ") + doubt;
    if (!strict_) warn_(warning + doubt);
  }
  if (strict_ && !all.empty()) throw Failure(place + all + " (refused by --strict)");
  return facts;
}

void ExpectationGate::AdmitScript(const Script& script) const {
  for (const ScriptStep& step : script) {
    if (const auto file = ExpectationOf(step)) AdmitFile(step.where, *file);
  }
}

void ExpectationGate::AdmitStep(const ScriptStep& step) const {
  const ExpectationGate silent(strict_, [](const std::string&) {});
  if (const auto file = ExpectationOf(step)) silent.AdmitFile("", *file);
}

}  // namespace kxbench
