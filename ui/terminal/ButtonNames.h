#pragma once

#include <optional>
#include <string>
#include <vector>

namespace kxbench {

/// Name of a message box's button, by its modal result: "Cancel", "Ignore".
std::string ButtonName(int modalResult);

/// "[c] Cancel, [i] Ignore: ".
std::string ButtonPrompt(const std::vector<int>& buttons);

/// The button that the user's answer means: its letter or its name, whatever the case. No value when it means
/// none of them.
std::optional<int> ButtonOfAnswer(const std::vector<int>& buttons, const std::string& answer);

/// What closing a message box without a button answers: Cancel where it is offered, else the last button.
int ClosingButton(const std::vector<int>& buttons);

}  // namespace kxbench
