#pragma once

#include <string>
#include <vector>

#include "framework/kxcomponents.h"

namespace kx {

/// A command's declaration.
struct Prototype {
  std::string name;
  std::vector<TKXPrototypeParam> parameters;
};

/// Reads "procedure Name", "procedure Name(First : Type; Second, Third : Type)". Throws std::invalid_argument
/// that quotes the prototype and names the column.
Prototype ParsePrototype(const std::string& text);

}  // namespace kx
