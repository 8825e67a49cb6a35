#pragma once

#include <cstddef>
#include <string>
#include <unordered_set>

namespace simulator {

/// The texts that the driver handed out and that its caller has to give back.
class ErrorTexts {
 public:
  /// A copy of `text` for the caller to own; null when there is no memory.
  char* HandOut(const std::string& text);

  /// Takes a text back and frees it. Null is allowed. Returns whether the memory was one of these texts; what
  /// was not is left alone.
  bool TakeBack(void* memory);

  std::size_t Outstanding() const { return texts_.size(); }

 private:
  std::unordered_set<void*> texts_;
};

}  // namespace simulator
