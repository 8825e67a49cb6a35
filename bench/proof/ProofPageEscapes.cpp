#include <algorithm>
#include <map>
#include <set>
#include <utility>
#include <vector>

#include "bench/proof/NumberWords.h"
#include "bench/proof/ProofPage.h"
#include "text/Markup.h"

namespace kxbench::proof {

namespace {

using shorttest::MarkupText;

/// Rows of the list of escapes; the CSV file has all of them.
constexpr std::size_t MostListedEscapes = 1000;

/// Channels beyond which a picture of all pairs shows nothing any more.
constexpr std::size_t MostMatrixChannels = 480;

/// Above and to the left of the squares: room for the channels' numbers.
constexpr std::size_t MatrixMargin = 34;

std::string Value(const ProofFault& fault) {
  switch (fault.kind) {
    case FaultClass::Voltage:
      return fault.volts > 0 ? "+" + NumberWord(fault.volts) + " V" : NumberWord(fault.volts) + " V";
    case FaultClass::Tester:
      return "line " + std::to_string(fault.line) + (fault.staysClosed ? ", never opens" : ", never closes");
    default:
      return fault.ohm > 0 ? NumberWord(fault.ohm) + " Ohm" : "";
  }
}

std::string ChannelCell(const ProofFault& fault, const wiring::ChannelNames& names) {
  std::string text;
  for (const Channel channel : fault.channels) text += (text.empty() ? "" : " – ") + names.Labelled(channel);
  return MarkupText(text);
}

std::string LimitLink(const Escape& escape) {
  if (escape.limit.empty()) return "";
  return " (rule: docs/limits.md#" + MarkupText(escape.limit) + ")";
}

std::vector<const ProvedFault*> EscapedFaults(const Proof& proof) {
  std::vector<const ProvedFault*> escapes;
  for (const ProvedFault& one : proof.faults) {
    if (one.verdict && one.verdict->escape) escapes.push_back(&one);
  }
  return escapes;
}

/// A channel's number above its column and to the left of its row.
std::string ScaleNumber(const std::string& number, const std::string& place) {
  return "<text x=\"" + place + "\" y=\"" + std::to_string(MatrixMargin - 6) + "\" text-anchor=\"middle\">" +
         number + "</text><text x=\"" + std::to_string(MatrixMargin - 5) + "\" y=\"" + place +
         "\" text-anchor=\"end\" dominant-baseline=\"middle\">" + number + "</text>\n";
}

std::string MatrixSquare(const std::string& x, const std::string& y, const std::string& side,
                         const std::string& title) {
  return "<rect x=\"" + x + "\" y=\"" + y + "\" width=\"" + side + "\" height=\"" + side + "\"><title>" +
         title + "</title></rect>\n";
}

}  // namespace

std::string EscapeTables(const Proof& proof, const wiring::ChannelNames& names) {
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
            MarkupText(RemedyFor(escape)) + LimitLink(escape) + "</td></tr>\n";
  }
  html += "</table>\n";
  if (escapes.size() > MostListedEscapes) {
    html += "<p>And " + std::to_string(escapes.size() - MostListedEscapes) + " more: see the CSV file.</p>\n";
  }
  return html;
}

std::string EscapeMatrix(const Proof& proof) {
  std::set<std::pair<Channel, Channel>> escaped;
  for (const ProvedFault* one : EscapedFaults(proof)) {
    if (one->fault.kind != FaultClass::Short && one->fault.kind != FaultClass::ResistiveShort) continue;
    escaped.insert(std::minmax(one->fault.channels.front(), one->fault.channels.back()));
  }
  std::string html = "<h2>Shorts that escape</h2>\n";
  const auto channels = static_cast<std::size_t>(proof.facts.lastChannel - proof.facts.firstChannel) + 1;
  if (escaped.empty()) return html + "<p id=\"matrix\">None: every short is found.</p>\n";
  if (channels > MostMatrixChannels) {
    return html + "<p id=\"matrix\">" + std::to_string(escaped.size()) +
           " pairs; too many channels for a picture.</p>\n";
  }
  const std::size_t cell = channels <= 60 ? 12 : channels <= 120 ? 6 : channels <= 240 ? 4 : 2;
  const std::string size = std::to_string(channels * cell + MatrixMargin + 1);
  html += "<svg id=\"matrix\" role=\"img\" aria-label=\"pairs of channels whose short escapes\" width=\"" +
          size + "\" height=\"" + size + "\" viewBox=\"0 0 " + size + " " + size + "\">\n";
  const std::string edge = std::to_string(channels * cell);
  html += "<rect x=\"" + std::to_string(MatrixMargin) + "\" y=\"" + std::to_string(MatrixMargin) +
          "\" width=\"" + edge + "\" height=\"" + edge +
          "\" fill=\"#f4f6f8\" stroke=\"#d5dce3\"/>\n<g font-size=\"10\" fill=\"#54616e\">\n";
  const std::size_t step = channels <= 60 ? 5 : channels <= 240 ? 20 : 40;
  for (std::size_t i = 0; i < channels; i += step) {
    const std::string place = std::to_string(MatrixMargin + i * cell + cell / 2 + 1);
    const std::string number = std::to_string(proof.facts.firstChannel + static_cast<Channel>(i));
    html += ScaleNumber(number, place);
  }
  html += "</g>\n<g fill=\"#b3261e\">\n";
  for (const auto& [low, high] : escaped) {
    const auto place = [&](Channel channel) {
      return std::to_string(MatrixMargin +
                            static_cast<std::size_t>(channel - proof.facts.firstChannel) * cell);
    };
    html += MatrixSquare(place(low), place(high), std::to_string(cell),
                         std::to_string(low) + " – " + std::to_string(high));
  }
  return html + "</g>\n</svg>\n<p class=\"note\">One contact stands for each net.</p>\n";
}

}  // namespace kxbench::proof
