#include "bench/program/host/RecordReceiver.h"

#include <utility>

#include "text/Utf8.h"

namespace kxbench {

RecordReceiver::RecordReceiver(std::function<void(const std::string&)> receive)
    : receive_(std::move(receive)), window_([this](UINT message, WPARAM, LPARAM lParam) -> LRESULT {
        if (message != RecordMessage || lParam == 0) return 0;
        receive_(shorttest::Utf8FromUtf16(reinterpret_cast<const char16_t*>(lParam)));
        return 1;
      }) {}

std::uintptr_t RecordReceiver::Handle() const { return reinterpret_cast<std::uintptr_t>(window_.Handle()); }

}  // namespace kxbench
