// What reading a harness from WireViz and KBL files costs, and how it grows: the column "x1000 wires" or "x10
// MiB" is the time relative to a file of that size, measured in the same run.

#include <benchmark/benchmark.h>

#include <chrono>
#include <cstddef>
#include <string>

#include "bench/documents/KblReader.h"
#include "bench/documents/WireVizReader.h"

namespace {

using kxbench::documents::ReadKbl;
using kxbench::documents::ReadWireViz;

constexpr std::size_t PinsOfAPlug = 50;

std::string Number(std::size_t number) { return std::to_string(number); }

/// Cables of fifty wires between plugs of fifty pins, pin by pin.
std::string WireVizFile(std::size_t wires) {
  const std::size_t cables = wires / PinsOfAPlug;
  std::string connectors = "connectors:\n";
  std::string cablesText = "cables:\n";
  std::string connections = "connections:\n";
  for (std::size_t i = 0; i < 2 * cables; ++i) {
    connectors += "  X" + Number(i) + ":\n    type: plug\n    pinlabels: [";
    for (std::size_t pin = 1; pin <= PinsOfAPlug; ++pin) connectors += (pin == 1 ? "S" : ", S") + Number(pin);
    connectors += "]\n";
  }
  for (std::size_t i = 0; i < cables; ++i) {
    cablesText += "  W" + Number(i) + ":\n    color_code: DIN\n    wirecount: 50\n    shield: true\n";
    for (std::size_t pin = 1; pin <= PinsOfAPlug; ++pin) {
      connections += "  -\n    - X" + Number(2 * i) + ": S" + Number(pin) + "\n    - W" + Number(i) + ": " +
                     Number(pin) + "\n    - X" + Number(2 * i + 1) + ": " + Number(pin) + "\n";
    }
  }
  return connectors + cablesText + connections;
}

/// Plugs of fifty cavities, wires between them, and as much of lengths and colours as drawings have.
std::string KblFile(std::size_t bytes) {
  std::string housing =
      "  <Connector_housing id=\"h\">\n    <Part_number>50P</Part_number>\n    <Slots id=\"s\">\n";
  for (std::size_t pin = 1; pin <= PinsOfAPlug; ++pin) {
    housing += "      <Cavities id=\"c" + Number(pin) + "\">\n        <Cavity_number>" + Number(pin) +
               "</Cavity_number>\n      </Cavities>\n";
  }
  housing += "    </Slots>\n  </Connector_housing>\n";

  std::string harness;
  for (std::size_t plug = 0; harness.size() < bytes; ++plug) {
    const std::string name = "X" + Number(plug);
    std::string points;
    std::string cavities;
    for (std::size_t pin = 1; pin <= PinsOfAPlug; ++pin) {
      const std::string id = name + '_' + Number(pin);
      points += "      <Contact_points id=\"p" + id + "\">\n        <Id>" + Number(pin) +
                "</Id>\n        <Contacted_cavity>k" + id + "</Contacted_cavity>\n      </Contact_points>\n";
      cavities += "        <Cavities id=\"k" + id + "\">\n          <Part>c" + Number(pin) +
                  "</Part>\n        </Cavities>\n";
      if (plug == 0) continue;
      const std::string wire = "w" + id;
      harness += "    <General_wire_occurrence id=\"" + wire +
                 "\">\n      <Part>flry</Part>\n      <Wire_number>" + id +
                 "</Wire_number>\n      <Length_information>\n        <Length_type>DMU</Length_type>\n"
                 "        <Length_value>\n          <Unit_component>mm</Unit_component>\n"
                 "          <Value_component>1250.0</Value_component>\n        </Length_value>\n"
                 "      </Length_information>\n    </General_wire_occurrence>\n    <Connection id=\"n" +
                 wire + "\">\n      <Signal_name>S" + id + "</Signal_name>\n      <Wire>" + wire +
                 "</Wire>\n";
      for (const std::size_t end : {plug - 1, plug}) {
        harness +=
            "      <Extremities>\n        <Position_on_wire>0</Position_on_wire>\n        <Contact_point>pX" +
            Number(end) + '_' + Number(pin) + "</Contact_point>\n      </Extremities>\n";
      }
      harness += "    </Connection>\n";
    }
    harness += "    <Connector_occurrence id=\"o" + name + "\">\n      <Id>" + name +
               "</Id>\n      <Part>h</Part>\n" + points + "      <Slots id=\"t" + name +
               "\">\n        <Part>s</Part>\n" + cavities + "      </Slots>\n    </Connector_occurrence>\n";
  }
  return "<KBL_container>\n" + housing + "  <Harness id=\"harness\">\n" + harness +
         "  </Harness>\n</KBL_container>\n";
}

double Seconds(const std::chrono::steady_clock::time_point& from) {
  return std::chrono::duration<double>(std::chrono::steady_clock::now() - from).count();
}

template <typename Read>
double TimeOf(Read read) {
  const auto start = std::chrono::steady_clock::now();
  benchmark::DoNotOptimize(read());
  return Seconds(start);
}

void ReadWireVizFiles(benchmark::State& state) {
  const std::string reference = WireVizFile(1000);
  const std::string text = WireVizFile(static_cast<std::size_t>(state.range(0)));
  double referenceTime = 0;
  double time = 0;
  for ([[maybe_unused]] auto _ : state) {
    time += TimeOf([&] { return ReadWireViz({{{"w.yml", text}}}); });
    state.PauseTiming();
    referenceTime += TimeOf([&] { return ReadWireViz({{{"w.yml", reference}}}); });
    state.ResumeTiming();
  }
  state.counters["x1000 wires"] = time / referenceTime;
}

void ReadKblFiles(benchmark::State& state) {
  const std::string reference = KblFile(std::size_t{10} << 20U);
  const std::string text = KblFile(static_cast<std::size_t>(state.range(0)) << 20U);
  double referenceTime = 0;
  double time = 0;
  for ([[maybe_unused]] auto _ : state) {
    std::string copy = text;
    time += TimeOf([&] { return ReadKbl("h.kbl", std::move(copy)); });
    state.PauseTiming();
    std::string other = reference;
    referenceTime += TimeOf([&] { return ReadKbl("h.kbl", std::move(other)); });
    state.ResumeTiming();
  }
  state.counters["x10 MiB"] = time / referenceTime;
}

BENCHMARK(ReadWireVizFiles)
    ->Name("read WireViz, wires")
    ->Arg(500)
    ->Arg(1000)
    ->Arg(2000)
    ->Arg(4000)
    ->Unit(benchmark::kMillisecond);
BENCHMARK(ReadKblFiles)
    ->Name("read KBL, MiB")
    ->Arg(5)
    ->Arg(10)
    ->Arg(20)
    ->Arg(40)
    ->Unit(benchmark::kMillisecond);

}  // namespace
