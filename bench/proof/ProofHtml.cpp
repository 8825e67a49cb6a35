#include <algorithm>
#include <array>
#include <charconv>
#include <map>
#include <set>
#include <utility>

#include "bench/proof/Proof.h"

namespace kxbench::proof {

namespace {

/// Rows of the list of escapes; the CSV file has all of them.
constexpr std::size_t MostListedEscapes = 1000;

/// Channels beyond which a picture of all pairs shows nothing any more.
constexpr std::size_t MostMatrixChannels = 480;

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

std::string Escaped(const std::string& text) {
  std::string html;
  for (const char c : text) {
    switch (c) {
      case '&':
        html += "&amp;";
        break;
      case '<':
        html += "&lt;";
        break;
      case '>':
        html += "&gt;";
        break;
      case '"':
        html += "&quot;";
        break;
      default:
        html += c;
    }
  }
  return html;
}

std::string ShortText(double value, int digits = 4) {
  std::array<char, 64> text{};
  return {
      text.data(),
      std::to_chars(text.data(), text.data() + text.size(), value, std::chars_format::general, digits).ptr};
}

std::string Row(const std::string& name, const std::string& html) {
  return "<tr><td>" + name + "</td><td>" + html + "</td></tr>\n";
}

std::string NumberCell(std::size_t value) { return "<td class=\"n\">" + std::to_string(value) + "</td>"; }

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
  return seconds < 600 ? ShortText(seconds, 3) + " s" : ShortText(seconds / 3600, 3) + " h";
}

std::string Facts(const Proof& proof) {
  const wiring::ExpectationFacts& facts = proof.facts;
  std::string html = "<table class=\"facts\">\n";
  html += Row("Expectation", Escaped(proof.file));
  html += Row("SHA-256", "<span class=\"sha\">" + proof.sha256 + "</span>");
  html += Row("Date", proof.date);
  html += Row("Program", "kxbench " + Escaped(proof.programVersion));
  html += Row("Channels", std::to_string(facts.firstChannel) + " to " + std::to_string(facts.lastChannel) +
                              "; " + std::to_string(facts.nets.nets.size()) + " nets, " +
                              std::to_string(facts.nets.unconnected.size()) + " single channels, " +
                              std::to_string(facts.nets.suspended.size()) + " suspended");
  html += Row("Thresholds", "lower " + ShortText(facts.lowerThreshold_ohm, 6) + " Ohm, upper " +
                                ShortText(std::max(facts.lowerThreshold_ohm, facts.upperThreshold_ohm), 6) +
                                " Ohm");
  html += Row("MAX ERROR, U_KONTROLLE, TIMEOUT", std::to_string(facts.mostErrors) + ", " +
                                                     std::to_string(facts.voltageControl) + ", " +
                                                     std::to_string(facts.dischargeWait_ms) + " ms");
  html += Row("Good device", proof.device.empty() ? "ideal, " + ShortText(proof.netOhm, 6) +
                                                        " Ohm between any two contacts of a net"
                                                  : "described by " + Escaped(proof.device));
  html += Row("Seed of the samples", std::to_string(proof.seed));
  html += Row("Reasons accepted", Accepted(proof));
  html += Row("The same on a real tester",
              "at least " + Hours(proof.RealSeconds()) + ": the waits of all checks simulated");
  return html + "</table>\n";
}

std::string GoodDevice(const Proof& proof) {
  if (proof.goodFindings.empty()) return "";
  std::string html = "<h2>The good device does not pass</h2>\n<ul>\n";
  for (const std::string& record : proof.goodFindings) html += "<li>" + Escaped(record) + "</li>\n";
  return html + "</ul>\n<p class=\"note\">These records count for no fault below.</p>\n";
}

std::string Bar(const ClassCount& count) {
  if (count.simulated == 0) return "<div class=\"bar none\"></div>";
  // Nothing but everything fills the bar.
  const std::size_t permille = count.found * 1000 / count.simulated;
  return "<div class=\"bar\"><i style=\"width:" + ShortText(static_cast<double>(permille) / 10, 4) +
         "%\"></i></div>";
}

std::string Classes(const Proof& proof) {
  std::string html =
      "<h2>Coverage</h2>\n<table id=\"classes\">\n<tr><th>Class</th><th class=\"n\">Faults</th>"
      "<th class=\"n\">Simulated</th><th class=\"n\">Found</th><th class=\"n\">Escaped</th><th>Coverage</th>"
      "</tr>\n";
  for (const ClassCount& count : proof.Classes()) {
    const std::string word = ClassWord(count.kind);
    html += "<tr id=\"class-" + word + "\"><td>" + word + "<div class=\"note\">" +
            Escaped(ClassDefinition(count.kind, proof.facts)) + "</div></td>" + NumberCell(count.total) +
            NumberCell(count.simulated) + NumberCell(count.found) + NumberCell(count.escaped) + "<td>" +
            Bar(count) + "</td></tr>\n";
  }
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

std::string Value(const ProofFault& fault) {
  switch (fault.kind) {
    case FaultClass::Voltage:
      return fault.volts > 0 ? "+" + ShortText(fault.volts) + " V" : ShortText(fault.volts) + " V";
    case FaultClass::Tester:
      return "line " + std::to_string(fault.line) + (fault.staysClosed ? ", never opens" : ", never closes");
    default:
      return fault.ohm > 0 ? ShortText(fault.ohm) + " Ohm" : "";
  }
}

std::string ChannelCell(const ProofFault& fault, const wiring::ChannelNames& names) {
  std::string text;
  for (const Channel channel : fault.channels) text += (text.empty() ? "" : " – ") + names.Labelled(channel);
  return Escaped(text);
}

std::string LimitLink(const Escape& escape) {
  if (escape.limit.empty()) return "";
  return " (rule: docs/limits.md#" + Escaped(escape.limit) + ")";
}

std::vector<const ProvedFault*> EscapedFaults(const Proof& proof) {
  std::vector<const ProvedFault*> escapes;
  for (const ProvedFault& one : proof.faults) {
    if (one.verdict && one.verdict->escape) escapes.push_back(&one);
  }
  return escapes;
}

std::string Escapes(const Proof& proof, const wiring::ChannelNames& names) {
  const std::vector<const ProvedFault*> escapes = EscapedFaults(proof);
  std::string html = "<h2>Escapes</h2>\n";
  if (escapes.empty()) return html + "<p>None.</p>\n";
  std::map<std::pair<FaultClass, EscapeReason>, std::size_t> counts;
  for (const ProvedFault* one : escapes) ++counts[{one->fault.kind, one->verdict->escape->reason}];
  html +=
      "<table id=\"escape-counts\">\n<tr><th>Class</th><th>Reason</th><th class=\"n\">Escapes</th></tr>\n";
  for (const auto& [what, count] : counts) {
    html += "<tr><td>" + ClassWord(what.first) + "</td><td>" + ReasonWord(what.second) + "</td>" +
            NumberCell(count) + "</tr>\n";
  }
  html +=
      "</table>\n<h2>Each escape, and what would close it</h2>\n<table id=\"escapes\">\n"
      "<tr><th>Class</th><th>Channels</th><th>Value</th><th>Reason</th><th>Remedy</th></tr>\n";
  for (std::size_t i = 0; i < std::min(escapes.size(), MostListedEscapes); ++i) {
    const ProofFault& fault = escapes[i]->fault;
    const Escape& escape = *escapes[i]->verdict->escape;
    html += "<tr><td>" + ClassWord(fault.kind) + "</td><td>" + ChannelCell(fault, names) + "</td><td>" +
            Value(fault) + "</td><td>" + ReasonWord(escape.reason) + "</td><td>" +
            Escaped(RemedyFor(escape)) + LimitLink(escape) + "</td></tr>\n";
  }
  html += "</table>\n";
  if (escapes.size() > MostListedEscapes) {
    html += "<p>And " + std::to_string(escapes.size() - MostListedEscapes) + " more: see the CSV file.</p>\n";
  }
  return html;
}

/// A square for each pair of channels whose short escapes, between the channels in use.
std::string Matrix(const Proof& proof) {
  std::set<std::pair<Channel, Channel>> escaped;
  for (const ProvedFault* one : EscapedFaults(proof)) {
    if (one->fault.kind != FaultClass::Short && one->fault.kind != FaultClass::ResistiveShort) continue;
    escaped.insert(std::minmax(one->fault.channels.front(), one->fault.channels.back()));
  }
  std::string html = "<h2>Shorts that escape</h2>\n";
  const auto channels = static_cast<std::size_t>(proof.facts.lastChannel - proof.facts.firstChannel + 1);
  if (escaped.empty()) return html + "<p id=\"matrix\">None: every short is found.</p>\n";
  if (channels > MostMatrixChannels) {
    return html + "<p id=\"matrix\">" + std::to_string(escaped.size()) +
           " pairs; too many channels for a picture.</p>\n";
  }
  const std::size_t cell = channels <= 60 ? 12 : channels <= 120 ? 6 : channels <= 240 ? 4 : 2;
  constexpr std::size_t Margin = 34;
  const std::string size = std::to_string(channels * cell + Margin + 1);
  html += "<svg id=\"matrix\" role=\"img\" aria-label=\"pairs of channels whose short escapes\" width=\"" +
          size + "\" height=\"" + size + "\" viewBox=\"0 0 " + size + " " + size + "\">\n";
  const std::string edge = std::to_string(channels * cell);
  html += "<rect x=\"" + std::to_string(Margin) + "\" y=\"" + std::to_string(Margin) + "\" width=\"" + edge +
          "\" height=\"" + edge +
          "\" fill=\"#f4f6f8\" stroke=\"#d5dce3\"/>\n<g font-size=\"10\" fill=\"#54616e\">\n";
  const std::size_t step = channels <= 60 ? 5 : channels <= 240 ? 20 : 40;
  for (std::size_t i = 0; i < channels; i += step) {
    const std::string place = std::to_string(Margin + i * cell + cell / 2 + 1);
    const std::string number = std::to_string(proof.facts.firstChannel + static_cast<Channel>(i));
    html += "<text x=\"" + place + "\" y=\"" + std::to_string(Margin - 6) + "\" text-anchor=\"middle\">" +
            number + "</text><text x=\"" + std::to_string(Margin - 5) + "\" y=\"" + place +
            "\" text-anchor=\"end\" dominant-baseline=\"middle\">" + number + "</text>\n";
  }
  html += "</g>\n<g fill=\"#b3261e\">\n";
  for (const auto& [low, high] : escaped) {
    const auto place = [&](Channel channel) {
      return std::to_string(Margin + static_cast<std::size_t>(channel - proof.facts.firstChannel) * cell);
    };
    const std::string side = std::to_string(cell);
    html += "<rect x=\"" + place(low) + "\" y=\"" + place(high) + "\" width=\"" + side + "\" height=\"" +
            side + "\"><title>" + std::to_string(low) + " – " + std::to_string(high) + "</title></rect>\n";
  }
  return html + "</g>\n</svg>\n<p class=\"note\">One contact stands for each net.</p>\n";
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
    return "<td class=\"n\">" + (value ? ShortText(*value) : std::string("–")) + "</td>";
  };
  for (const NetSensitivity& one : proof.sensitivity) {
    std::string net;
    for (const Channel channel : one.net) net += (net.empty() ? "" : ", ") + names.Labelled(channel);
    html +=
        "<tr><td>" + Escaped(net) + "</td>" + ohm(one.largestJoint) + ohm(one.smallestInsulation) + "</tr>\n";
  }
  return html + "</table>\n";
}

std::string Advice(const Proof& proof) {
  if (!proof.advice) return "";
  const ThresholdAdvice& advice = *proof.advice;
  const auto threshold = [](const std::optional<double>& ohm) {
    return ohm ? ShortText(*ohm, 6) + " Ohm" : std::string("as it is");
  };
  return "<h2>Thresholds that would find more</h2>\n<p>WIDERSTAND " + threshold(advice.lowerOhm) +
         ", WIDERSTAND2 " + threshold(advice.upperOhm) + ", " + ShortText(advice.margin) +
         " times away from the good device. " + std::to_string(advice.moreFound) +
         " of the escapes would be found.</p>\n";
}

std::string PluginSection(const Proof& proof) {
  if (proof.throughPlugin == 0) return "";
  std::string html = "<h2>Through the plug-in's library</h2>\n<p>" + std::to_string(proof.throughPlugin) +
                     " of the faults were checked again by the whole program, in real time: " +
                     std::to_string(proof.pluginDifferences.size()) + " with other records.</p>\n";
  for (const PluginDifference& one : proof.pluginDifferences) {
    html += "<p>" + Escaped(FaultWords(one.fault)) + "<br>simulated: " + Escaped(one.simulated) +
            "<br>measured: " + Escaped(one.measured) + "</p>\n";
  }
  return html;
}

std::string Bounds() {
  std::string html = "<h2>What this proof does not cover</h2>\n<ul>\n";
  for (const std::string& one : NotCovered()) html += "<li>" + Escaped(one) + "</li>\n";
  return html + "</ul>\n";
}

}  // namespace

std::string ProofHtml(const Proof& proof, const wiring::ChannelNames& names) {
  return "<!DOCTYPE html>\n<html lang=\"en\">\n<head>\n<meta charset=\"utf-8\">\n<title>Proof of " +
         Escaped(proof.file) + "</title>\n<style>" + Style + "</style>\n</head>\n<body>\n<h1>Proof of " +
         Escaped(proof.file) + "</h1>\n<p>" + VerdictBadge(proof) + "</p>\n" + Facts(proof) +
         GoodDevice(proof) + Classes(proof) + Matrix(proof) + Escapes(proof, names) + Names(proof) +
         Sensitivity(proof, names) + Advice(proof) + PluginSection(proof) + Bounds() + "</body>\n</html>\n";
}

}  // namespace kxbench::proof
