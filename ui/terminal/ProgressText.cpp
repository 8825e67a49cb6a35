#include "ui/terminal/ProgressText.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <cstddef>

namespace kxbench {

namespace {

constexpr int SmallestBar = 10;
constexpr int LargestBar = 40;

bool ContinuesCharacter(char c) { return (static_cast<unsigned char>(c) & 0xC0U) == 0x80U; }

int CharactersIn(const std::string& text) {
  return static_cast<int>(
      std::count_if(text.begin(), text.end(), [](char c) { return !ContinuesCharacter(c); }));
}

std::string FirstCharacters(const std::string& text, int count) {
  int seen = 0;
  for (std::size_t i = 0; i < text.size(); ++i) {
    if (!ContinuesCharacter(text[i]) && ++seen > count) return text.substr(0, i);
  }
  return text;
}

std::string TwoDigits(long value) { return (value < 10 ? "0" : "") + std::to_string(value); }

std::string Repeated(const std::string& text, int count) {
  std::string repeated;
  for (int i = 0; i < count; ++i) repeated += text;
  return repeated;
}

/// A bar of `width` characters; in Unicode its end moves in steps of an eighth of a character.
std::string Bar(double fraction, int width, bool unicode) {
  static const std::array<std::string, 8> eighths = {"", "▏", "▎", "▍", "▌", "▋", "▊", "▉"};
  const int steps = static_cast<int>(std::floor(fraction * width * 8));
  const int full = steps / 8;
  if (!unicode) return "[" + Repeated("#", full) + Repeated(".", width - full) + "]";
  const std::string& part = eighths[static_cast<std::size_t>(steps % 8)];
  return "▕" + Repeated("█", full) + part + Repeated(" ", width - full - (part.empty() ? 0 : 1)) + "▏";
}

}  // namespace

std::string DurationText(double seconds) {
  const long whole = static_cast<long>(std::max(0.0, seconds));
  const long minutes = whole / 60 % 60;
  const long hours = whole / 3600;
  const std::string end = ":" + TwoDigits(whole % 60);
  return hours > 0 ? std::to_string(hours) + ":" + TwoDigits(minutes) + end : std::to_string(minutes) + end;
}

std::string PercentText(double fraction) {
  return std::to_string(static_cast<int>(std::floor(std::clamp(fraction, 0.0, 1.0) * 100))) + " %";
}

std::string ProgressBarText(const ProgressState& state, int columns, bool unicode) {
  const double fraction = std::clamp(state.fraction, 0.0, 1.0);
  const std::string percent = PercentText(fraction);
  // Right-aligned as "100 %", so that what follows stands still.
  const std::string figures =
      " " + Repeated(" ", 5 - CharactersIn(percent)) + percent + "  " + DurationText(state.seconds);
  const std::string hint = state.hint.empty() ? "" : "  " + state.hint;

  const int fixed = CharactersIn(state.caption) + 1 + 2 + CharactersIn(figures);
  int room = columns - fixed - CharactersIn(hint);
  const bool withHint = room >= SmallestBar;
  if (!withHint) room = columns - fixed;

  std::string line = state.caption;
  if (room >= SmallestBar) line += " " + Bar(fraction, std::min(room, LargestBar), unicode);
  line += figures;
  if (withHint) line += hint;
  return FirstCharacters(line, columns);
}

std::string ProgressLineText(const ProgressState& state) {
  return state.caption + ": " + PercentText(state.fraction) + ", " + DurationText(state.seconds);
}

}  // namespace kxbench
