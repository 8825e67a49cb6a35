#include "simulator/CallTrace.h"

#include <array>
#include <charconv>

namespace simulator {
namespace {

std::FILE* OpenForWriting(const std::filesystem::path& path, CallTrace::Start start) {
  const bool anew = start == CallTrace::Start::Anew;
#ifdef _WIN32
  return _wfopen(path.c_str(), anew ? L"wb" : L"ab");
#else
  return std::fopen(path.c_str(), anew ? "wb" : "ab");
#endif
}

template <typename Number>
void Append(std::string& line, Number value) {
  std::array<char, 32> text;
  const auto result = std::to_chars(text.data(), text.data() + text.size(), value);
  line.append(text.data(), result.ptr);
}

void AppendQuoted(std::string& line, std::string_view text) {
  line += '"';
  for (const char c : text) {
    switch (c) {
      case '\n':
        line += "\\n";
        break;
      case '\r':
        line += "\\r";
        break;
      case '\t':
        line += "\\t";
        break;
      case '"':
      case '\\':
        line += '\\';
        [[fallthrough]];
      default:
        line += c;
    }
  }
  line += '"';
}

}  // namespace

std::optional<CallTrace> CallTrace::Open(const std::filesystem::path& path, Start start) {
  std::FILE* file = OpenForWriting(path, start);
  return file != nullptr ? std::optional(CallTrace(file)) : std::nullopt;
}

void CallTrace::StartCall(std::string_view name, std::initializer_list<std::int32_t> arguments) {
  line_ = name;
  for (const std::int32_t argument : arguments) {
    line_ += ' ';
    Append(line_, argument);
  }
}

void CallTrace::WriteLine() {
  line_ += '\n';
  std::fwrite(line_.data(), 1, line_.size(), file_.get());
  std::fflush(file_.get());
}

void CallTrace::Call(std::string_view name, std::initializer_list<std::int32_t> arguments,
                     std::int32_t result) {
  StartCall(name, arguments);
  line_ += " -> ";
  Append(line_, result);
  WriteLine();
}

void CallTrace::Call(std::string_view name, std::initializer_list<std::int32_t> arguments, double result) {
  StartCall(name, arguments);
  line_ += " -> ";
  Append(line_, result);
  WriteLine();
}

void CallTrace::Call(std::string_view name, std::string_view result) {
  StartCall(name, {});
  line_ += " -> ";
  AppendQuoted(line_, result);
  WriteLine();
}

void CallTrace::Call(std::string_view name) {
  StartCall(name, {});
  WriteLine();
}

void CallTrace::Comment(std::string_view text) {
  line_ = "# ";
  line_ += text;
  WriteLine();
}

}  // namespace simulator
