#include "plugin/editor/NamesView.h"

#include "plugin/editor/DelimitedText.h"
#include "text/NumberText.h"

namespace shorttest {
namespace {

constexpr std::int32_t NoNumber = -1;

std::string ItemWithName(std::string item, std::int32_t von, std::int32_t bis,
                         const ChannelNameLookup& name) {
  const std::int32_t channel = TextToInteger(item).value_or(NoNumber);
  if (von <= channel && channel <= bis) item = name(channel);
  // Covers a channel without a name, and an empty quoted item, which thus shows as -1.
  return item.empty() ? std::to_string(channel) : item;
}

}  // namespace

std::vector<std::string> NamesView(const std::vector<std::string>& lines, std::int32_t von, std::int32_t bis,
                                   const ChannelNameLookup& name) {
  std::vector<std::string> view;
  view.reserve(lines.size());
  for (const std::string& line : lines) {
    std::vector<std::string> items = SplitDelimited(line, ' ');
    for (std::string& item : items) item = ItemWithName(std::move(item), von, bis, name);
    view.push_back(JoinDelimited(items, ' '));
  }
  return view;
}

}  // namespace shorttest
