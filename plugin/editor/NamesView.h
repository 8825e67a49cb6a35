#pragma once

#include <cstdint>
#include <functional>
#include <string>
#include <vector>

namespace shorttest {

/// Name of a channel; empty when it has none.
using ChannelNameLookup = std::function<std::string(std::int32_t channel)>;

/// The lines with each channel number from `von` to `bis` replaced by the channel's name, if it has one.
/// Items are separated by blanks alone; what is no channel number of the range stays as typed. Names with
/// blanks or quotes are put in double quotes. Every line yields one line, and nothing fails.
std::vector<std::string> NamesView(const std::vector<std::string>& lines, std::int32_t von, std::int32_t bis,
                                   const ChannelNameLookup& name);

}  // namespace shorttest
