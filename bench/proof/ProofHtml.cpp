#include <algorithm>
#include <optional>
#include <string>

#include "bench/proof/NumberWords.h"
#include "bench/proof/Proof.h"
#include "bench/proof/ProofPage.h"
#include "text/Markup.h"

namespace kxbench::proof {

namespace {

using shorttest::MarkupText;

constexpr const char* Style = R"(
:root { color-scheme: light; }
body { font: 15px/1.5 system-ui, "Segoe UI", sans-serif; color: #1c2733; background: #fff; margin: 2rem auto;
  max-width: 62rem; padding: 0 1rem; }
h1 { font-size: 1.6rem; margin-bottom: .2rem; }
h2 { font-size: 1.15rem; margin-top: 2.2rem; border-bottom: 1px solid #d5dce3; padding-bottom: .2rem; }
table { border-collapse: collapse; width: 100%; }
th, td { text-align: left; padding: .3rem .6rem; border-bottom: 1px solid #e3e8ed; vertical-align: top; }
th { font-weight: 600; background: #f4f6f8; }
td.n, th.n { text-align: right; font-variant-numeric: tabular-nums; white-space: nowrap; }
.verdict { display: inline-block; padding: .25rem .8rem; border-radius: .3rem; font-weight: 700; color: #fff; }
.good { background: #1a7f4b; } .bad { background: #b3261e; } .open { background: #8a5a00; }
.bar { background: #b3261e; height: .8rem; min-width: 8rem; border-radius: .2rem; overflow: hidden; }
.bar i { display: block; height: 100%; background: #1a7f4b; }
.bar.none { background: #d5dce3; }
.facts td:first-child { width: 14rem; color: #54616e; }
.sha { font-family: ui-monospace, monospace; font-size: .85rem; word-break: break-all; }
.note { color: #54616e; font-size: .9rem; }
svg { max-width: 100%; height: auto; }
@media print { body { margin: 0; max-width: none; } }
)";

std::string Row(const std::string& name, const std::string& html) {
  return "<tr><td>" + name + "</td><td>" + html + "</td></tr>\n";
}

std::string VerdictBadge(const Proof& proof) {
  if (!proof.complete) return "<span class=\"verdict open\">NOT COMPLETE: the proof was cancelled</span>";
  return proof.Holds() ? "<span class=\"verdict good\">PROVED</span>"
                       : "<span class=\"verdict bad\">NOT PROVED</span>";
}

std::string Accepted(const Proof& proof) {
  std::string text;
  for (const EscapeReason reason : proof.accepted) text += (text.empty() ? "" : ", ") + ReasonWord(reason);
  return text.empty() ? "none" : text;
}

std::string Hours(double seconds) {
  return seconds < 600 ? NumberWord(seconds, 3) + " s" : NumberWord(seconds / 3600, 3) + " h";
}

std::string Facts(const Proof& proof) {
  const wiring::ExpectationFacts& facts = proof.facts;
  std::string html = "<table class=\"facts\">\n";
  html += Row("Expectation", MarkupText(proof.file));
  html += Row("SHA-256", "<span class=\"sha\">" + proof.sha256 + "</span>");
  html += Row("Date", proof.date);
  html += Row("Program", "kxbench " + MarkupText(proof.programVersion));
  html += Row("Channels", std::to_string(facts.firstChannel) + " to " + std::to_string(facts.lastChannel) +
                              "; " + std::to_string(facts.nets.nets.size()) + " nets, " +
                              std::to_string(facts.nets.unconnected.size()) + " single channels, " +
                              std::to_string(facts.nets.suspended.size()) + " suspended");
  html += Row("Thresholds", "lower " + NumberWord(facts.lowerThreshold_ohm, 6) + " Ohm, upper " +
                                NumberWord(std::max(facts.lowerThreshold_ohm, facts.upperThreshold_ohm), 6) +
                                " Ohm");
  html += Row("MAX ERROR, U_KONTROLLE, TIMEOUT", std::to_string(facts.mostErrors) + ", " +
                                                     std::to_string(facts.voltageControl) + ", " +
                                                     std::to_string(facts.dischargeWait_ms) + " ms");
  html += Row("Good device", proof.device.empty() ? "ideal, " + NumberWord(proof.netOhm, 6) +
                                                        " Ohm between any two contacts of a net"
                                                  : "described by " + MarkupText(proof.device));
  html += Row("Seed of the samples", std::to_string(proof.seed));
  html += Row("Reasons accepted", Accepted(proof));
  html += Row("The same on a real tester",
              "at least " + Hours(proof.RealSeconds()) + ": the waits of all checks simulated");
  return html + "</table>\n";
}

std::string GoodDevice(const Proof& proof) {
  if (proof.goodFindings.empty()) return "";
  std::string html = "<h2>The good device does not pass</h2>\n<ul>\n";
  for (const std::string& record : proof.goodFindings) html += "<li>" + MarkupText(record) + "</li>\n";
  return html + "</ul>\n<p class=\"note\">These records count for no fault below.</p>\n";
}

std::string Bar(const ClassCount& count) {
  if (count.simulated == 0) return "<div class=\"bar none\"></div>";
  // Nothing but everything fills the bar.
  const std::size_t permille = count.found * 1000 / count.simulated;
  return "<div class=\"bar\"><i style=\"width:" + NumberWord(static_cast<double>(permille) / 10, 4) +
         "%\"></i></div>";
}

std::string ClassRow(const ClassCount& count, const Proof& proof) {
  const std::string word = ClassWord(count.kind);
  return "<tr id=\"class-" + word + "\"><td>" + word + "<div class=\"note\">" +
         MarkupText(ClassDefinition(count.kind, proof.facts)) + "</div></td>" + NumberCell(count.total) +
         NumberCell(count.simulated) + NumberCell(count.found) + NumberCell(count.escaped) + "<td>" +
         Bar(count) + "</td></tr>\n";
}

std::string Classes(const Proof& proof) {
  std::string html =
      "<h2>Coverage</h2>\n<table id=\"classes\">\n<tr><th>Class</th><th class=\"n\">Faults</th>"
      "<th class=\"n\">Simulated</th><th class=\"n\">Found</th><th class=\"n\">Escaped</th><th>Coverage</th>"
      "</tr>\n";
  for (const ClassCount& count : proof.Classes()) html += ClassRow(count, proof);
  html += "</table>\n<p>" + std::to_string(proof.capacitors) +
          " capacitors that discharge in half of the waiting time must not be reported: " +
          std::to_string(proof.falseAlarms.size()) + " were.</p>\n";
  return html;
}

std::string Names(const Proof& proof) {
  std::string html =
      "<h2>What the findings name</h2>\n<table id=\"names\">\n<tr><th>Class</th>"
      "<th class=\"n\">Exactly</th><th class=\"n\">Among equals</th><th class=\"n\">Wrongly</th>"
      "<th class=\"n\">Channels missing</th></tr>\n";
  for (const ClassCount& count : proof.Classes()) {
    if (count.kind == FaultClass::Tester) continue;
    const auto of = [&](Naming naming) {
      const auto named = count.namings.find(naming);
      return NumberCell(named == count.namings.end() ? 0 : named->second);
    };
    html += "<tr><td>" + ClassWord(count.kind) + "</td>" + of(Naming::Exactly) + of(Naming::AmongEquals) +
            of(Naming::Wrongly) + NumberCell(count.misnamed) + "</tr>\n";
  }
  return html +
         "</table>\n<p class=\"note\">What the diagnosis makes of the records of each check with a finding; "
         "last, findings whose records do not name all channels of the fault.</p>\n";
}

std::string Sensitivity(const Proof& proof, const wiring::ChannelNames& names) {
  if (proof.sensitivity.empty()) return "";
  std::string html =
      "<h2>Sensitivity</h2>\n<p>By how much the resistance of a joint may grow, and how low an insulation "
      "may sink, "
      "before a check finds it.</p>\n<table id=\"sensitivity\">\n<tr><th>Net</th><th class=\"n\">Joint, "
      "Ohm</th>"
      "<th class=\"n\">Insulation, Ohm</th></tr>\n";
  const auto ohm = [](const std::optional<double>& value) {
    return "<td class=\"n\">" + (value ? NumberWord(*value) : std::string("–")) + "</td>";
  };
  for (const NetSensitivity& one : proof.sensitivity) {
    std::string net;
    for (const Channel channel : one.net) net += (net.empty() ? "" : ", ") + names.Labelled(channel);
    html += "<tr><td>" + MarkupText(net) + "</td>" + ohm(one.largestJoint) + ohm(one.smallestInsulation) +
            "</tr>\n";
  }
  return html + "</table>\n";
}

std::string Advice(const Proof& proof) {
  if (!proof.advice) return "";
  const ThresholdAdvice& advice = *proof.advice;
  const auto threshold = [](const std::optional<double>& ohm) {
    return ohm ? NumberWord(*ohm, 6) + " Ohm" : std::string("as it is");
  };
  return "<h2>Thresholds that would find more</h2>\n<p>WIDERSTAND " + threshold(advice.lowerOhm) +
         ", WIDERSTAND2 " + threshold(advice.upperOhm) + ", " + NumberWord(advice.margin) +
         " times away from the good device. " + std::to_string(advice.moreFound) +
         " of the escapes would be found.</p>\n";
}

std::string PluginSection(const Proof& proof) {
  if (proof.throughPlugin == 0) return "";
  std::string html = "<h2>Through the plug-in's library</h2>\n<p>" + std::to_string(proof.throughPlugin) +
                     " of the faults were checked again by the whole program, in real time: " +
                     std::to_string(proof.pluginDifferences.size()) + " with other records.</p>\n";
  for (const PluginDifference& one : proof.pluginDifferences) {
    html += "<p>" + MarkupText(FaultWords(one.fault)) + "<br>simulated: " + MarkupText(one.simulated) +
            "<br>measured: " + MarkupText(one.measured) + "</p>\n";
  }
  return html;
}

std::string Bounds() {
  std::string html = "<h2>What this proof does not cover</h2>\n<ul>\n";
  for (const std::string& one : NotCovered()) html += "<li>" + MarkupText(one) + "</li>\n";
  return html + "</ul>\n";
}

}  // namespace

std::string ProofHtml(const Proof& proof, const wiring::ChannelNames& names) {
  return "<!DOCTYPE html>\n<html lang=\"en\">\n<head>\n<meta charset=\"utf-8\">\n<title>Proof of " +
         MarkupText(proof.file) + "</title>\n<style>" + Style + "</style>\n</head>\n<body>\n<h1>Proof of " +
         MarkupText(proof.file) + "</h1>\n<p>" + VerdictBadge(proof) + "</p>\n" + Facts(proof) +
         GoodDevice(proof) + Classes(proof) + EscapeMatrix(proof) + EscapeTables(proof, names) +
         Names(proof) + Sensitivity(proof, names) + Advice(proof) + PluginSection(proof) + Bounds() +
         "</body>\n</html>\n";
}

}  // namespace kxbench::proof
