#pragma once

#include <cstdint>
#include <map>
#include <string>

#include "contracts/Export.h"

/// Host package kxcommon: the table of named values that the host hands to an extension.

/// A table from string keys to pointer-size values.
class KX_API TKXHashTable {
 public:
  /// Stores `value` under `key`, replacing an older value.
  void Put(const std::string& key, std::uintptr_t value);

  /// The value under `key`, or 0 when there is none.
  std::uintptr_t Get(const std::string& key) const;

 private:
  std::map<std::string, std::uintptr_t> values_;
};
