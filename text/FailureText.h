#pragma once

#include <exception>
#include <new>
#include <string>

namespace shorttest {

/// Calls `work`; what it throws, as a text, and an empty text when it throws nothing. For the border of a
/// module that is loaded, which no exception may cross.
template <typename Work>
std::string FailureText(Work work) {
  try {
    work();
    return "";
  } catch (const std::bad_alloc&) {
    return "out of memory";  // short enough to need none
  } catch (const std::exception& error) {
    return error.what();
  } catch (...) {
    return "an exception of an unknown kind";
  }
}

}  // namespace shorttest
