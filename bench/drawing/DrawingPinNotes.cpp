#include "bench/drawing/DrawingPinNotes.h"

#include <algorithm>

#include "bench/drawing/DrawingText.h"

namespace kxbench::drawing {

namespace {

constexpr double MostNotedPinEms = 32;
constexpr double LeastConnectorEms = 4;

}  // namespace

std::string NoteText(const std::vector<PinNote>& notes) {
  std::string text;
  for (const PinNote& note : notes) {
    text += (text.empty() ? "F" : ", F") + std::to_string(note.number) + " " + note.word;
    if (!note.pin.empty()) text += " " + note.connector + note.pin;
  }
  return text;
}

std::string ShortNote(std::vector<PinNote> notes, const std::vector<std::string>& connectors, double ems) {
  std::string text = NoteText(notes);
  if (notes.empty() || TextWidth(text) <= ems) return text;
  for (PinNote& note : notes) {
    const double room = ems - TextWidth(NoteText({{note.number, note.word, "", note.pin}}));
    note.connector = ShortenedApart(note.connector, connectors, std::max(room, LeastConnectorEms));
    note.pin = ShortenedInside(note.pin, MostNotedPinEms);
  }
  text = NoteText(notes);
  if (TextWidth(text) <= ems) return text;
  text = NoteText({notes.front()});
  for (std::size_t i = 1; i < notes.size(); ++i) text += ", F" + std::to_string(notes[i].number);
  return text;
}

}  // namespace kxbench::drawing
