#include "framework/kxcommon.h"

void TKXHashTable::Put(const std::string& key, std::uintptr_t value) { values_[key] = value; }

std::uintptr_t TKXHashTable::Get(const std::string& key) const {
  const auto found = values_.find(key);
  return found == values_.end() ? 0 : found->second;
}
