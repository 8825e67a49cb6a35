#include "bench/program/host/HostHelp.h"

#include <string>

namespace kxbench {
namespace {

constexpr int ShortTestEditor = 140;

const char* const ShortTestEditorText =
    "Soll-Verbindungen: je Zeile eine Gruppe verbundener Kanäle, zum Beispiel \"1 2 3\".\n"
    "Übersprungene Verbindungen: je Zeile ein Kanal und die Kanäle, gegen die er nicht auf Kurzschluss "
    "geprüft wird.\n"
    "Gesperrte Messpunkte: Kanäle, die nicht verwendet werden.\n"
    "Leerzeichen oder Komma trennen die Kanäle.\n\n"
    "Lernen misst einen fehlerfreien Prüfling und übernimmt seine Verbindungen.\n\n"
    "Grafik: grün verbunden, weiß nicht verbunden, rot übersprungen, grau gesperrt, dunkelrot nicht prüfbar, "
    "oliv noch unbekannt.";

}  // namespace

void HostHelp::ShowTopic(int helpContext) {
  Application().ShowMessage(
      {.text = helpContext == ShortTestEditor
                   ? ShortTestEditorText
                   : "Zum Thema " + std::to_string(helpContext) + " gibt es keine Hilfe.",
       .kind = MessageKind::Information,
       .buttons = {mrOk},
       .helpContext = helpContext});
}

}  // namespace kxbench
