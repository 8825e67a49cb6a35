#include "plugin/editor/GUI_ShortTest.h"

namespace {

const char* const HelpText =
    "Soll-Verbindungen: je Zeile eine Gruppe verbundener Kanäle, zum Beispiel \"1 2 3\".\n"
    "Übersprungene Verbindungen: je Zeile ein Kanal und die Kanäle, gegen die er nicht auf Kurzschluss "
    "geprüft "
    "wird.\n"
    "Gesperrte Messpunkte: Kanäle, die nicht verwendet werden.\n"
    "Leerzeichen oder Komma trennen die Kanäle.\n\n"
    "Lernen misst einen fehlerfreien Prüfling und übernimmt seine Verbindungen.\n\n"
    "Grafik: grün verbunden, weiß nicht verbunden, rot übersprungen, grau gesperrt, dunkelrot nicht prüfbar, "
    "oliv noch unbekannt.";

}  // namespace

void TShortTestForm::ShowHelp() const {
  Application().ShowMessage(
      {.text = HelpText, .kind = MessageKind::Information, .buttons = {mrOk}, .helpContext = HelpContext});
}
