#include "simulator/ErrorTexts.h"

#include <cstdlib>
#include <cstring>

namespace simulator {

char* ErrorTexts::HandOut(const std::string& text) {
  char* copy = static_cast<char*>(std::malloc(text.size() + 1));
  if (copy == nullptr) return nullptr;
  std::memcpy(copy, text.c_str(), text.size() + 1);
  texts_.insert(copy);
  return copy;
}

bool ErrorTexts::TakeBack(void* memory) {
  if (memory == nullptr) return true;
  if (texts_.erase(memory) == 0) return false;
  std::free(memory);
  return true;
}

}  // namespace simulator
