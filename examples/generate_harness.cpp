// Writes the example harness generated-240: ten connectors X1 to X10 of 24 pins, which fill five relay cards.
//
// Usage: generate_harness FOLDER
//
// FOLDER receives generated-240.dat (the expectation) and good.device (a device that meets it). Both are the
// same at every run: which pins a net joins comes from a generator with a fixed seed.

#include <algorithm>
#include <cstdint>
#include <exception>
#include <filesystem>
#include <fstream>
#include <iostream>
#include <numeric>
#include <random>
#include <stdexcept>
#include <string>
#include <vector>

#include "plugin/data/ShorttestData.h"

namespace {

constexpr int Connectors = 10;
constexpr int PinsPerConnector = 24;
constexpr int Channels = Connectors * PinsPerConnector;
constexpr int UnusedPins = 20;
constexpr std::uint32_t Seed = 240;

/// Channels of one net, ascending.
using Net = std::vector<int>;

/// Number below `bound`. The standard's distributions differ between libraries, this does not.
int Below(std::mt19937& random, std::size_t bound) { return static_cast<int>(random() % bound); }

std::vector<int> ShuffledChannels(std::mt19937& random) {
  std::vector<int> channels(Channels);
  std::iota(channels.begin(), channels.end(), 1);
  for (std::size_t left = channels.size(); left > 1; --left) {
    std::swap(channels[left - 1], channels[static_cast<std::size_t>(Below(random, left))]);
  }
  return channels;
}

/// A ground of 24 pins, two supplies of 12 and 8, signals of 2 to 4 pins; the rest stays unused.
std::vector<Net> MakeNets(std::mt19937& random) {
  const std::vector<int> channels = ShuffledChannels(random);
  std::vector<int> sizes{24, 12, 8};
  int left = Channels - UnusedPins - std::accumulate(sizes.begin(), sizes.end(), 0);
  while (left >= 2) {
    const int drawn = Below(random, 10);
    const int wanted = drawn < 8 ? 2 : drawn - 5;  // mostly 2, sometimes 3 or 4
    sizes.push_back(left - wanted < 2 ? left : wanted);
    left -= sizes.back();
  }
  std::vector<Net> nets;
  auto next = channels.begin();
  for (const int size : sizes) {
    nets.emplace_back(next, next + size);
    std::sort(nets.back().begin(), nets.back().end());
    next += size;
  }
  std::sort(nets.begin(), nets.end());
  return nets;
}

void WriteExpectation(const std::vector<Net>& nets, const std::filesystem::path& path) {
  TShortTestData data(1, Channels);
  for (int channel = 1; channel < Channels; ++channel) {
    for (int other = 0; other < channel; ++other) {
      data.SetC(channel, other, CellState::NotConnected, NoResistance);
    }
  }
  for (const Net& net : nets) {
    for (const int a : net) {
      for (const int b : net) {
        if (a != b) data.SetC(a - 1, b - 1, CellState::Connected, NoResistance);
      }
    }
  }
  std::filesystem::remove(path);
  data.SaveExpectationFile(path.string());
}

std::string Pin(int channel) {
  const int index = channel - 1;
  return "X" + std::to_string(index / PinsPerConnector + 1) + "." +
         std::to_string(index % PinsPerConnector + 1);
}

void WriteDevice(const std::vector<Net>& nets, std::mt19937& random, const std::filesystem::path& path) {
  std::ofstream file(path, std::ios::binary);
  file << "# Harness with ten connectors of 24 pins, good. Written by examples/generate_harness.cpp.\n"
       << "cards 5\n\n";
  for (int channel = 1; channel <= Channels; ++channel) {
    file << "channel " << Pin(channel) << " " << channel << "\n";
  }
  file << "\n# Wires of 0.1 to 0.5 Ohm; where more than two pins meet, a splice with half of that to each.\n";
  int pairs = 0;
  for (const Net& net : nets) {
    const int hundredths = 10 + Below(random, 41);
    const int ohmHundredths = net.size() == 2 ? hundredths : hundredths / 2;
    file << (net.size() == 2 ? "wire" : "net");
    for (const int channel : net) file << " " << Pin(channel);
    file << (net.size() == 2 ? " 0." : " each 0.") << ohmHundredths / 10 << ohmHundredths % 10 << "\n";
    pairs += static_cast<int>(net.size() * (net.size() - 1) / 2);
  }
  file << "\nleakage 2G\n\n"
       << "# A check reports no findings:\n"
       << "# record: Verbindungstest|" << pairs << "|" << pairs << "||" << pairs << "||\n"
       << "# record: Kurzschlusstest|0|0||0||\n";
  if (!file.flush()) throw std::runtime_error(path.string() + " cannot be written");
}

}  // namespace

int main(int argc, char** argv) {
  if (argc != 2) {
    std::cerr << "usage: generate_harness FOLDER\n";
    return 2;
  }
  try {
    const std::filesystem::path folder = argv[1];
    std::filesystem::create_directories(folder);
    std::mt19937 random(Seed);
    const std::vector<Net> nets = MakeNets(random);
    WriteExpectation(nets, folder / "generated-240.dat");
    WriteDevice(nets, random, folder / "good.device");
  } catch (const std::exception& error) {
    std::cerr << "generate_harness: " << error.what() << "\n";
    return 2;
  }
  return 0;
}
