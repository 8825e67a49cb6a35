#include "bench/program/commands/ImportFiles.h"

#include <algorithm>
#include <filesystem>
#include <stdexcept>
#include <system_error>

#include "bench/program/system/Failure.h"
#include "bench/program/system/SaveProbe.h"
#include "bench/wiring/ExpectationFacts.h"
#include "bench/wiring/ExpectationWriter.h"
#include "bench/wiring/NamesFile.h"
#include "text/FileAccess.h"

namespace kxbench {

namespace {

bool Exists(const std::string& file) {
  std::error_code error;
  return std::filesystem::exists(shorttest::PathFromUtf8(file), error);
}

/// Throws Failure when a file that is written is one that is read, or is written twice.
void RequireFilesOfTheirOwn(const ImportFiles& files, const std::vector<std::string>& targets) {
  for (auto target = targets.begin(); target != targets.end(); ++target) {
    for (const std::string& source : files.sources) {
      if (AreOneFile(source, *target)) throw Failure(*target + " is read here: it is not written");
    }
    for (auto other = targets.begin(); other != target; ++other) {
      if (AreOneFile(*other, *target))
        throw Failure(*target + " cannot be two of the files that are written");
    }
  }
}

/// Whether a map is one that an import assigned: without gaps, and as an import writes it.
bool IsAssigned(const std::string& file, const std::string& text) {
  try {
    const documents::ChannelMap map = documents::ReadChannelMap(file, text);
    std::int32_t next = map.empty() ? 0 : map.front().channel;
    const bool gapless =
        std::all_of(map.begin(), map.end(), [&next](const auto& entry) { return entry.channel == next++; });
    return gapless && documents::ChannelMapText(map) == text;
  } catch (const std::exception&) {
    return false;
  }
}

std::string NewMapText(const ImportFiles& files, const documents::ChannelMap& map) {
  std::string text = documents::ChannelMapText(map);
  const std::string& file = *files.newMap;
  if (files.overwrite || !Exists(file)) return text;
  const std::string old = shorttest::ReadWholeFile(shorttest::AbsolutePath(file));
  // An import that is repeated, of a newer drawing, needs nothing else; what somebody made is not lost.
  if (old != text && (files.newMapNamed || !IsAssigned(file, old))) {
    throw Failure(file + " is another map: with --map " + file +
                  " and without --assign it is read, with --overwrite it is replaced");
  }
  return text;
}

std::string NewNamesText(const std::string& file, const documents::Wiring& wiring) {
  std::map<std::int32_t, std::string> names;
  for (const auto& [channel, pin] : wiring.pins) {
    if (!pin.connector.empty()) names[channel] = documents::PinText(pin);
  }
  try {
    const std::string old = Exists(file) ? shorttest::ReadWholeFile(shorttest::AbsolutePath(file)) : "";
    return wiring::WithChannelNames(old, names);
  } catch (const std::invalid_argument& error) {
    throw Failure("--names " + file + ": " + error.what());
  }
}

/// Where thresholds and options come from. Throws Failure for a file that must not be built upon.
wiring::OptionsFrom OptionsOf(const ImportFiles& files) {
  if (!Exists(files.expectation)) return wiring::OptionsFrom::Defaults;
  const std::string damage = wiring::FactsOf(files.expectation).damage;
  if (damage.empty()) return wiring::OptionsFrom::File;
  if (!files.overwrite) {
    throw Failure(files.expectation + " is no whole expectation (" + damage +
                  "); a new one in its place needs --overwrite");
  }
  return wiring::OptionsFrom::Defaults;
}

wiring::ExpectedWiring ExpectedOf(const documents::Wiring& wiring) {
  return {wiring.pins.begin()->first, wiring.pins.rbegin()->first, wiring.nets};
}

}  // namespace

std::string MapBeside(const std::string& expectation) {
  std::filesystem::path path = shorttest::PathFromUtf8(expectation);
  path.replace_extension(".map.csv");
  return shorttest::Utf8FromPath(path);
}

std::vector<std::string> WriteImport(const ImportFiles& files, const documents::Wiring& wiring,
                                     const documents::ChannelMap& map) {
  std::vector<std::string> written;
  try {
    std::vector<std::string> targets = {files.expectation};
    if (files.newMap) targets.push_back(*files.newMap);
    if (files.names) targets.push_back(*files.names);
    RequireFilesOfTheirOwn(files, targets);
    for (const std::string& target : targets) RequireSavable(target);
    const wiring::OptionsFrom options = OptionsOf(files);
    const std::string mapText = files.newMap ? NewMapText(files, map) : "";
    const std::string namesText = files.names ? NewNamesText(*files.names, wiring) : "";

    // The expectation last: without its map nobody could wire the adapter for it.
    if (files.newMap) {
      shorttest::ReplaceWholeFile(shorttest::AbsolutePath(*files.newMap), mapText);
      written.push_back(*files.newMap);
    }
    if (files.names) {
      shorttest::ReplaceWholeFile(shorttest::AbsolutePath(*files.names), namesText);
      written.push_back(*files.names);
    }
    wiring::WriteExpectation(files.expectation, ExpectedOf(wiring), options);
    written.push_back(files.expectation);
  } catch (const std::system_error& error) {
    std::string text = error.what();
    for (std::size_t i = 0; i < written.size(); ++i)
      text += (i == 0 ? "; written before: " : ", ") + written[i];
    throw Failure(text);
  }
  return written;
}

}  // namespace kxbench
