#include "bench/program/station/StationTerminal.h"

#include <algorithm>
#include <utility>

#include "bench/program/output/Table.h"
#include "ui/terminal/Printable.h"

namespace kxbench {

namespace {

/// More than any serial number: what a jammed key types.
constexpr std::size_t MostFieldBytes = 20000;

std::string ColourOf(results::Verdict verdict) {
  switch (verdict) {
    case results::Verdict::Pass:
      return "1;32";
    case results::Verdict::Fail:
    case results::Verdict::Error:
      return "1;31";
    case results::Verdict::Cancelled:
      break;
  }
  return "1;33";
}

std::string PrintableLine(const std::string& text) {
  std::string line = Printable(text);
  std::replace(line.begin(), line.end(), '\n', ' ');
  return line;
}

}  // namespace

ScreenFace::ScreenFace(Terminal& terminal, std::unique_ptr<Keyboard> keyboard, bool colours)
    : terminal_(terminal), keyboard_(std::move(keyboard)), colours_(colours) {
  text_.head = "kxbench station";
  text_.foot = "Escape or Ctrl-D ends; Ctrl-C cancels a check";
}

ScreenFace::~ScreenFace() {
  std::string left;
  for (const StationEntry& entry : entries_) left += "\nnot checked: " + PrintableLine(entry.text);
  if (offered_ && !field_.empty()) left += "\nnot checked: " + PrintableLine(field_);
  terminal_.Write(left + "\n");
}

std::optional<StationEntry> ScreenFace::Next(const std::string& prompt) {
  prompt_ = prompt;
  Draw();
  for (;;) {
    if (ended_) return std::nullopt;
    if (!entries_.empty() && !offered_) {
      StationEntry entry = std::move(entries_.front());
      entries_.pop_front();
      text_.said.clear();
      return entry;
    }
    const std::optional<Key> key = keyboard_->Next();
    if (!key) return std::nullopt;
    Take(*key, false);
    if (key->kind == Key::Kind::Resized) {
      Draw();
    } else {
      DrawField();
    }
  }
}

void ScreenFace::Take(const Key& key, bool ahead) {
  switch (key.kind) {
    case Key::Kind::Text:
      if (offered_) {
        text_.said = PrintableLine(field_) + " was not checked";
        field_.clear();
        offered_ = false;
        if (!ahead) Draw();
      }
      if (field_.size() < MostFieldBytes) field_ += key.text;
      break;
    case Key::Kind::Enter:
      // What was confirmed goes before what waits.
      if (!field_.empty() && !ahead) entries_.push_front({std::exchange(field_, ""), false});
      if (!field_.empty()) entries_.push_back({std::exchange(field_, ""), true});
      offered_ = false;
      break;
    case Key::Kind::Erase:
      while (!field_.empty() && (static_cast<unsigned char>(field_.back()) & 0xC0U) == 0x80U)
        field_.pop_back();
      if (!field_.empty()) field_.pop_back();
      offered_ = false;
      break;
    case Key::Kind::EraseAll:
      field_.clear();
      offered_ = false;
      break;
    case Key::Kind::End:
      ended_ = true;
      break;
    case Key::Kind::Resized:
      break;
  }
}

void ScreenFace::Offer(const std::string& text) {
  if (!field_.empty()) return;  // somebody is typing already; the line said names the text
  field_ = text;
  offered_ = true;
}

void ScreenFace::Say(const std::string& line) { text_.said = line; }

void ScreenFace::Checking(const std::string& serial, const std::string& retest) {
  text_ = {};
  text_.head = "checking " + serial;
  text_.lines = {retest};
  prompt_.clear();
  Draw();
}

void ScreenFace::Show(const StationVerdict& verdict, const ShiftCounters& counters) {
  while (const auto key = keyboard_->Pending()) {
    Take(*key, true);
    if (ended_) break;
  }
  const std::string said = text_.said;
  text_ = {};
  text_.word = StationWord(verdict.verdict);
  text_.colour = ColourOf(verdict.verdict);
  text_.head = text_.word + "  " + verdict.serial + (verdict.part.empty() ? "" : "  " + verdict.part);
  text_.lines = verdict.lines;
  if (!verdict.retest.empty()) text_.lines.push_back(verdict.retest);
  text_.foot = CounterLine(counters);
  text_.said = said;
  Draw();
}

std::string ScreenFace::FieldLine() const {
  if (prompt_.empty()) return "";
  std::string line = PrintableLine(prompt_ + ": " + field_);
  // The end of a long text is what is being typed.
  const auto width = static_cast<std::size_t>(std::max(keyboard_->Size().columns - 1, 1));
  while (CharactersIn(line) > width) {
    std::size_t first = 1;
    while (first < line.size() && (static_cast<unsigned char>(line[first]) & 0xC0U) == 0x80U) ++first;
    line.erase(0, first);
  }
  return line;
}

void ScreenFace::Draw() {
  text_.field = FieldLine();
  terminal_.Write(ScreenOf(text_, keyboard_->Size(), terminal_.ShowsUnicode(), colours_));
}

void ScreenFace::DrawField() { terminal_.Write("\r\x1b[K" + FieldLine()); }

std::optional<StationEntry> LineFace::Next(const std::string& prompt) {
  if (terminal_.CanAsk()) terminal_.Write(prompt + ": ");
  const auto line = terminal_.ReadLine();
  if (!line) return std::nullopt;
  return StationEntry{*line, false};
}

void LineFace::Say(const std::string& line) { terminal_.Write("kxbench: " + PrintableLine(line) + "\n"); }

void LineFace::Show(const StationVerdict& verdict, const ShiftCounters&) {
  std::string text = PrintableLine(verdict.serial) + ": " + StationWord(verdict.verdict) + "\n";
  for (const std::string& line : verdict.lines) text += "  " + PrintableLine(line) + "\n";
  if (!verdict.retest.empty()) text += "  " + PrintableLine(verdict.retest) + "\n";
  output_.Write(text);
}

}  // namespace kxbench
