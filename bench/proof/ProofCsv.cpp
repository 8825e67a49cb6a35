#include <algorithm>

#include "bench/proof/NumberWords.h"
#include "bench/proof/Proof.h"

namespace kxbench::proof {

namespace {

/// In quotes where the text holds what ends a field (RFC 4180).
std::string Quoted(const std::string& text) {
  if (text.find_first_of(",\"\r\n") == std::string::npos) return text;
  std::string quoted = "\"";
  for (const char c : text) quoted += c == '"' ? std::string("\"\"") : std::string(1, c);
  return quoted + "\"";
}

std::string ChannelField(const ProofFault& fault) {
  std::string text;
  for (const Channel channel : fault.channels) text += (text.empty() ? "" : " ") + std::to_string(channel);
  return text;
}

std::string ValueField(const ProofFault& fault) {
  if (fault.kind == FaultClass::Voltage) return ExactNumber(fault.volts) + " V";
  if (fault.kind == FaultClass::Tester) {
    return "line " + std::to_string(fault.line) + (fault.staysClosed ? " never opens" : " never closes");
  }
  return fault.ohm > 0 ? ExactNumber(fault.ohm) + " Ohm" : "";
}

std::string FaultLine(const ProvedFault& one) {
  std::string line =
      ClassWord(one.fault.kind) + "," + ChannelField(one.fault) + "," + ValueField(one.fault) + ",";
  if (!one.verdict) return line + "not simulated,,,,,\r\n";
  const Verdict& verdict = *one.verdict;
  line += verdict.found ? "found," : "escaped,";
  line += verdict.found ? (verdict.namesChannels ? "yes," : "no,") : ",";
  line += (verdict.found ? NamingText(verdict.naming) : "") + ",";
  if (!verdict.escape) return line + ",,\r\n";
  const Escape& escape = *verdict.escape;
  line += ReasonWord(escape.reason) + "," + Quoted(RemedyFor(escape)) + ",";
  return line + (escape.limit.empty() ? "" : "docs/limits.md#" + escape.limit) + "\r\n";
}

}  // namespace

std::string ProofCsv(const Proof& proof) {
  std::string text = "class,channels,value,result,channels named,diagnosis,reason,remedy,limit\r\n";
  for (const ProvedFault& one : proof.faults) text += FaultLine(one);
  return text;
}

}  // namespace kxbench::proof
