#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <variant>
#include <vector>

namespace kxbench {

enum class BenchCommand { Check, Run, Learn, Edit, Info };
enum class ProgressChoice { Auto, Terminal, Window, None };
enum class OutputFormat { Report, Records };
enum class NearThreshold { Ask, Ignore, Cancel };

struct ChannelRange {
  std::int32_t first;  ///< channel numbers, from 1
  std::int32_t last;   ///< inclusive
};

/// The command line. Texts are UTF-8.
struct Options {
  BenchCommand command = BenchCommand::Info;
  std::string file;  ///< expectation file or script; empty for info
  std::optional<std::string> plugin;
  std::optional<std::string> device;
  std::optional<std::string> project;  ///< "folder/name"
  ProgressChoice progress = ProgressChoice::Auto;
  OutputFormat format = OutputFormat::Report;

  // Learning only.
  std::optional<ChannelRange> channels;
  std::optional<double> thresholdOhm;
  std::optional<std::int32_t> voltageControl;
  std::optional<NearThreshold> nearThreshold;
};

/// What to print instead of doing something: the help or the version.
struct Information {
  std::string text;
};

/// Reads the command line. Throws Failure with one line that names the fault.
std::variant<Options, Information> ParseOptions(std::vector<std::string> arguments);

}  // namespace kxbench
