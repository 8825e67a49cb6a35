#include "bench/program/host/OptionValues.h"

#include <charconv>
#include <cstddef>
#include <optional>
#include <system_error>

#include "bench/program/host/Record.h"
#include "bench/program/system/Failure.h"

namespace kxbench {

namespace {

bool ReadChannelNumber(const std::string& text, std::int32_t& value) {
  const auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), value);
  return error == std::errc() && end == text.data() + text.size();
}

}  // namespace

ChannelRange ReadChannels(const std::string& text) {
  const std::size_t dash = text.find('-');
  ChannelRange range{};
  const bool read = dash != std::string::npos && ReadChannelNumber(text.substr(0, dash), range.first) &&
                    ReadChannelNumber(text.substr(dash + 1), range.last);
  if (!read || range.first < 1 || range.last < range.first) {
    throw Failure("--channels: expected FIRST-LAST with channel numbers from 1, such as 1-48, not " + text);
  }
  return range;
}

double ReadThreshold(const std::string& text) {
  const std::optional<double> ohm = NumberOf(text);
  if (!ohm || !(*ohm > 0)) throw Failure("--threshold: expected a resistance above 0 Ohm, not " + text);
  return *ohm;
}

}  // namespace kxbench
