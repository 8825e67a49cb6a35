#include "bench/results/SummaryPage.h"

#include <algorithm>
#include <cstdio>

#include "bench/results/PlainNumber.h"
#include "bench/results/SummaryPlots.h"
#include "text/Markup.h"

namespace kxbench::results {

namespace {

constexpr char SummaryHead[] = R"(<!DOCTYPE html>
<html lang="en">
<head>
<meta charset="utf-8">
<meta name="viewport" content="width=device-width, initial-scale=1">
<meta http-equiv="Content-Security-Policy" content="default-src 'none'; style-src 'unsafe-inline'">
<title>Results of checks</title>
<style>
body { font: 15px/1.45 "DejaVu Sans", Arial, sans-serif; margin: 1.5em auto; max-width: 62em; padding: 0 1em; color: #1a1a1a; background: #fff; }
h1 { font-size: 1.7em; margin: 0 0 .3em; }
h2 { font-size: 1.25em; margin: 1.8em 0 .4em; }
table { border-collapse: collapse; width: 100%; }
th, td { text-align: right; vertical-align: top; padding: .2em 0 .2em .8em; border-bottom: 1px solid #ccc; white-space: nowrap; }
th { font-weight: normal; color: #555; vertical-align: bottom; white-space: normal; }
td.name, th.name { text-align: left; padding-left: 0; white-space: normal; overflow-wrap: anywhere; }
.name + td.name, .name + th.name { padding-left: .8em; min-width: 5.5em; }
.figures { display: flex; flex-wrap: wrap; gap: 1em 2.5em; margin: 1em 0; }
.figures div { font-size: .9em; color: #555; }
.figures b { display: block; font-size: 2em; font-weight: bold; color: #1a1a1a; line-height: 1.2; }
svg { width: 100%; height: auto; display: block; margin: .6em 0; }
svg text { font-size: 13px; fill: #333; }
.bar { fill: #3b6ea5; }
.grid { stroke: #ddd; }
.curve { fill: none; stroke-width: 2; }
.first { stroke: #3b6ea5; fill: none; } .dot.first { fill: #3b6ea5; }
.second { stroke: #c0662a; fill: none; } .dot.second { fill: #c0662a; }
.key { color: #3b6ea5; } .key.other { color: #c0662a; }
.suspects td { background: #fdf1d8; }
@media print { body { margin: 0; max-width: none; font-size: 10pt; } tr, svg { break-inside: avoid; } }
</style>
</head>
<body>
)";

std::string CountText(std::int64_t count) { return std::to_string(count); }

std::string SecondsText(const std::optional<double>& seconds) {
  if (!seconds) return "-";
  char text[32];
  std::snprintf(text, sizeof text, "%.1f s", *seconds);
  return text;
}

/// A cell whose exact number a program finds in its data-value.
std::string ValueCell(const std::string& shown, const std::optional<double>& value) {
  return "<td" + (value ? " data-value=\"" + PlainNumberText(*value) + "\"" : std::string()) + ">" + shown +
         "</td>";
}

std::string CountCell(std::int64_t count) { return ValueCell(CountText(count), static_cast<double>(count)); }

std::string NameCell(const std::string& name) {
  return "<td class=\"name\">" + (name.empty() ? "<i>none</i>" : shorttest::MarkupText(name)) + "</td>";
}

std::string TotalTable(const std::string& id, const std::string& what, const std::vector<Total>& totals) {
  std::string text =
      "<table id=\"" + id + "\">\n<tr><th class=\"name\">" + what +
      "</th><th>Devices</th><th>First-pass yield</th><th>Yield after retest</th><th>Checks</th>"
      "<th>Errors</th><th>Cancelled</th><th>Time per check</th><th>Longest</th></tr>\n";
  for (const Total& total : totals) {
    text += "<tr>" + NameCell(total.name) + CountCell(total.devices) +
            ValueCell(PercentText(total.FirstPassYield()), total.FirstPassYield()) +
            ValueCell(PercentText(total.FinalYield()), total.FinalYield()) + CountCell(total.checks) +
            CountCell(total.errors) + CountCell(total.cancels) +
            ValueCell(SecondsText(total.SecondsPerCheck()), total.SecondsPerCheck()) +
            ValueCell(SecondsText(total.longest), total.longest) + "</tr>\n";
  }
  return text + "</table>\n";
}

std::string YieldBars(const std::string& title, const std::vector<Total>& totals) {
  constexpr std::size_t Most = 30;  // the table below has all of them
  std::vector<PlotBar> bars;
  for (const Total& total : totals) {
    const auto yield = total.FirstPassYield();
    if (yield && bars.size() < Most) bars.push_back({total.name, PercentText(yield), *yield});
  }
  return bars.empty() ? "" : BarPlot(title, bars, 1);
}

std::string TimeBars(const std::vector<Total>& totals) {
  std::vector<PlotBar> bars;
  double greatest = 0;
  for (const Total& total : totals) {
    const auto seconds = total.SecondsPerCheck();
    if (!seconds) continue;
    bars.push_back({total.name, SecondsText(seconds), *seconds});
    greatest = std::max(greatest, *seconds);
  }
  return bars.empty() ? "" : BarPlot("Time per check by station", bars, greatest);
}

std::string Figure(const std::string& id, const std::string& shown, const std::optional<double>& value,
                   const std::string& what) {
  return "<div><b id=\"" + id + "\"" +
         (value ? " data-value=\"" + PlainNumberText(*value) + "\"" : std::string()) + ">" + shown + "</b>" +
         what + "</div>\n";
}

std::string Figures(const Total& all) {
  return "<div class=\"figures\">\n" +
         Figure("first-pass-yield", PercentText(all.FirstPassYield()), all.FirstPassYield(),
                "first-pass yield") +
         Figure("final-yield", PercentText(all.FinalYield()), all.FinalYield(), "yield after retest") +
         Figure("devices", CountText(all.devices), static_cast<double>(all.devices), "devices") +
         Figure("checks", CountText(all.checks), static_cast<double>(all.checks), "checks") +
         Figure("seconds-per-check", SecondsText(all.SecondsPerCheck()), all.SecondsPerCheck(), "per check") +
         "</div>\n";
}

std::string FaultSection(const ResultSummary& summary) {
  std::string text = "<h2>Most frequent faults</h2>\n";
  if (summary.faults.empty()) return text + "<p>No diagnosis found a fault.</p>\n";
  std::vector<PlotBar> bars;
  for (const FaultCount& fault : summary.faults) {
    bars.push_back({fault.text, CountText(fault.checks), static_cast<double>(fault.checks)});
  }
  text += ParetoPlot("Most frequent faults, and their sum so far", bars,
                     static_cast<double>(summary.faultsInAll));
  text +=
      "<table id=\"faults\">\n<tr><th class=\"name\">Fault</th><th class=\"name\">Part</th><th "
      "class=\"name\">Kind</th><th class=\"name\">Channels</th><th>Checks</th></tr>\n";
  for (const FaultCount& fault : summary.faults) {
    text += "<tr>" + NameCell(fault.text) + NameCell(fault.part) + NameCell(fault.kind) +
            NameCell(fault.channels) + CountCell(fault.checks) + "</tr>\n";
  }
  return text + "</table>\n";
}

std::string SuspectSection(const ResultSummary& summary) {
  std::string text = "<h2>Contacts that come back on one station</h2>\n";
  if (summary.suspects.empty()) return text + "<p>None.</p>\n";
  text +=
      "<p>Look at the adapter of the station before the harnesses.</p>\n<table id=\"suspects\" "
      "class=\"suspects\">\n"
      "<tr><th class=\"name\">Station</th><th class=\"name\">Part</th><th>Channel</th><th>Devices with a "
      "fault there"
      "</th><th>of</th><th>at other stations</th><th>of</th></tr>\n";
  for (const SuspectContact& contact : summary.suspects) {
    text += "<tr>" + NameCell(contact.station) + NameCell(contact.part) + CountCell(contact.channel) +
            CountCell(contact.devices) + CountCell(contact.tested) + CountCell(contact.devicesOthers) +
            CountCell(contact.testedOthers) + "</tr>\n";
  }
  return text + "</table>\n";
}

std::string DaySection(const std::vector<Total>& days) {
  std::vector<PlotPoint> points;
  points.reserve(days.size());
  for (const Total& day : days) points.push_back({day.name, day.FirstPassYield(), day.FinalYield()});
  return "<h2>By day</h2>\n<p><span class=\"key\">first-pass yield</span>, <span class=\"key other\">yield "
         "after retest</span></p>\n" +
         YieldPlot("Yield by day", points) + TotalTable("days", "Day (UTC)", days);
}

}  // namespace

std::string SummaryPage(const ResultSummary& summary, const std::vector<std::string>& about) {
  std::string text = std::string(SummaryHead) + "<h1>Results of checks</h1>\n";
  for (const std::string& line : about) text += "<p>" + shorttest::MarkupText(line) + "</p>\n";
  text += Figures(summary.all);
  text += SuspectSection(summary);
  text += FaultSection(summary);
  text += "<h2>By part</h2>\n" + YieldBars("First-pass yield by part", summary.parts) +
          TotalTable("parts", "Part", summary.parts);
  text += "<h2>By station</h2>\n" + YieldBars("First-pass yield by station", summary.stations) +
          TimeBars(summary.stations) + TotalTable("stations", "Station", summary.stations);
  text += DaySection(summary.days);
  return text + "</body>\n</html>\n";
}

}  // namespace kxbench::results
