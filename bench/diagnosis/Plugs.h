#pragma once

#include <map>
#include <optional>
#include <string>
#include <vector>

#include "bench/diagnosis/Fault.h"
#include "bench/wiring/Contacts.h"

namespace kxbench::diagnosis {

/// A contact of a plug: its channel, its pin's name, and the pin's number where the name is one.
struct PlugPin {
  Channel channel;
  std::string name;
  std::optional<std::int32_t> number;
};

/// A plug as the names show it.
struct Plug {
  std::string name;
  std::vector<PlugPin> pins;  ///< those with numbers ascending, then the others by name
};

/// The plugs of two or more contacts.
std::vector<Plug> PlugsOf(const std::map<Channel, wiring::Contact>& contacts);

/// Every way in which one plug can be wrong: reversed, shifted by every number of contacts to either side,
/// with the wires at the end on no contact or on the first ones again. Where numbers are missing among the
/// contacts, a shift goes to the next number and, as another way, to the next contact. Contacts without a
/// number stay in their places where others have one.
std::vector<Fault> WrongPlugs(const Plug& plug);

/// The two plugs in each other's place, contact by contact of the same name.
Fault ExchangedPlugs(const Plug& a, const Plug& b);

}  // namespace kxbench::diagnosis
