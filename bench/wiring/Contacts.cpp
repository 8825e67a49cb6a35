#include "bench/wiring/Contacts.h"

#include <algorithm>
#include <cstddef>
#include <utility>

#include "text/NumberText.h"

namespace kxbench::wiring {

namespace {

using Names = std::map<std::int32_t, std::string>;

bool IsDigit(char c) { return c >= '0' && c <= '9'; }

Contact ContactOf(std::string connector, std::string pin) {
  const bool digits = !pin.empty() && std::all_of(pin.begin(), pin.end(), IsDigit);
  const std::optional<std::int32_t> number = digits ? shorttest::TextToInteger(pin) : std::nullopt;
  return {std::move(connector), std::move(pin), number};
}

constexpr const char* Separators = ".-:/";

std::optional<Contact> SplitAtSeparator(const std::string& name) {
  const std::size_t separator = name.find_last_of(Separators);
  if (separator == std::string::npos || separator == 0 || separator + 1 == name.size()) return std::nullopt;
  return ContactOf(name.substr(0, separator), name.substr(separator + 1));
}

std::optional<Contact> SplitBeforeNumber(const std::string& name) {
  const std::size_t letters = name.find_first_of("0123456789");
  if (letters == std::string::npos || letters == 0) return std::nullopt;
  if (name.find_first_of(Separators) < letters) return std::nullopt;
  const std::size_t end = std::min(name.find_first_not_of("0123456789", letters), name.size());
  return ContactOf(name.substr(0, letters), name.substr(letters, end - letters));
}

using Split = std::optional<Contact> (*)(const std::string& name);

/// Adds the contacts of those names, not split yet, that share their connector with another.
void AddShared(const Names& names, Split split, std::map<std::int32_t, Contact>& contacts) {
  std::map<std::string, int> sharing;
  std::map<std::int32_t, Contact> found;
  for (const auto& [channel, name] : names) {
    if (contacts.contains(channel)) continue;
    std::optional<Contact> contact = split(name);
    if (!contact) continue;
    ++sharing[contact->connector];
    found.emplace(channel, std::move(*contact));
  }
  for (auto& [channel, contact] : found) {
    if (sharing[contact.connector] > 1) contacts.emplace(channel, std::move(contact));
  }
}

}  // namespace

std::map<std::int32_t, Contact> ContactsOf(const Names& names) {
  std::map<std::int32_t, Contact> contacts;
  AddShared(names, SplitAtSeparator, contacts);
  AddShared(names, SplitBeforeNumber, contacts);
  return contacts;
}

}  // namespace kxbench::wiring
