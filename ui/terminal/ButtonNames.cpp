#include "ui/terminal/ButtonNames.h"

#include <algorithm>
#include <cctype>

#include "contracts/UserInterface.h"

namespace kxbench {

namespace {

std::string LowerCase(std::string text) {
  std::transform(text.begin(), text.end(), text.begin(),
                 [](unsigned char c) { return static_cast<char>(std::tolower(c)); });
  return text;
}

std::string Trimmed(const std::string& text) {
  const std::size_t first = text.find_first_not_of(" \t\r");
  if (first == std::string::npos) return "";
  return text.substr(first, text.find_last_not_of(" \t\r") - first + 1);
}

}  // namespace

std::string ButtonName(int modalResult) {
  switch (modalResult) {
    case mrOk:
      return "OK";
    case mrCancel:
      return "Cancel";
    case mrAbort:
      return "Abort";
    case mrIgnore:
      return "Ignore";
    default:
      return std::to_string(modalResult);
  }
}

std::string ButtonPrompt(const std::vector<int>& buttons) {
  std::string prompt;
  for (const int button : buttons) {
    const std::string name = ButtonName(button);
    prompt += (prompt.empty() ? "[" : ", [") + LowerCase(name.substr(0, 1)) + "] " + name;
  }
  return prompt + ": ";
}

std::optional<int> ButtonOfAnswer(const std::vector<int>& buttons, const std::string& answer) {
  const std::string given = LowerCase(Trimmed(answer));
  for (const int button : buttons) {
    const std::string name = LowerCase(ButtonName(button));
    if (given == name || given == name.substr(0, 1)) return button;
  }
  return std::nullopt;
}

int ClosingButton(const std::vector<int>& buttons) {
  const bool cancelOffered = std::find(buttons.begin(), buttons.end(), mrCancel) != buttons.end();
  if (cancelOffered || buttons.empty()) return mrCancel;
  return buttons.back();
}

}  // namespace kxbench
