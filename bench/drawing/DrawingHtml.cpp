#include <string>
#include <vector>

#include "bench/drawing/DrawingLayout.h"
#include "bench/drawing/DrawingLists.h"
#include "bench/drawing/DrawingStyle.h"
#include "bench/drawing/DrawingSvg.h"
#include "bench/drawing/DrawingText.h"

namespace kxbench::drawing {

namespace {

constexpr const char* Head = R"(<!DOCTYPE html>
<html lang="en">
<head>
<meta charset="utf-8">
<meta name="viewport" content="width=device-width">
<meta http-equiv="Content-Security-Policy" content="default-src 'none'; style-src 'unsafe-inline'; script-src 'unsafe-inline'">
)";

constexpr const char* Style = R"(<style>
body { margin: 0; font: 14px/1.4 "Helvetica Neue", Helvetica, Arial, "Liberation Sans", "DejaVu Sans", sans-serif;
  color: #1a1a1a; background: #fff; }
main { display: flex; align-items: flex-start; }
.drawing { flex: none; max-width: calc(100vw - 24rem); overflow-x: auto; }
aside { position: sticky; top: 0; box-sizing: border-box; max-height: 100vh; overflow-y: auto; flex: 1;
  min-width: 20rem; padding: 1rem; }
h2 { margin: 1.2rem 0 0.4rem; font-size: 1rem; }
h2:first-child { margin-top: 0; }
ol { margin: 0; padding: 0; list-style: none; }
button { font: inherit; color: inherit; text-align: left; background: none; border: 1px solid transparent;
  border-radius: 3px; padding: 0.15rem 0.4rem; cursor: pointer; overflow-wrap: anywhere; }
li > button { display: block; width: 100%; }
button:hover { background: #eef1f5; }
button:focus-visible { outline: 2px solid #1b4f9c; }
button[aria-pressed="true"] { background: #dfe3e8; border-color: #1a1a1a; font-weight: bold; }
button b { color: #c8102e; }
.or { margin: 0 0 0.3rem 2rem; color: #5c5c5c; overflow-wrap: anywhere; }
.help { margin: 0 0 0.6rem; color: #5c5c5c; }
#all { border-color: #808080; }
.drawing svg { display: block; }
.sheets { display: none; }
svg.harness .net, svg.harness .pin[data-net] { cursor: pointer; }
svg.harness.alone .net:not(.shown), svg.harness.alone .extra:not(.shown) { opacity: 0.06; }
svg.harness.alone .pin:not(.shown) { opacity: 0.3; }
@media (max-width: 60rem) {
  main { display: block; }
  .drawing { max-width: none; }
  aside { position: static; max-height: none; }
}
@media print {
  @page { margin: 10mm; }
  main { display: block; }
  .drawing { max-width: none; overflow: visible; }
  .sheeted .whole { display: none; }
  .sheets { display: block; }
  .drawing svg { max-width: 100%; max-height: 100vh; height: auto; break-inside: avoid; }
  aside { position: static; max-height: none; overflow: visible; padding: 0; font-size: 8.5pt; line-height: 1.25; }
  h2 { break-after: avoid; }
  #nets > li { display: inline-block; width: 49%; vertical-align: top; }
  li { break-inside: avoid; }
  .help, #all { display: none; }
  button { padding: 0 0.4rem 0 1.4rem; border: none; text-indent: -1rem; }
  button[aria-pressed="true"] { background: none; }
}
</style>
)";

constexpr const char* Script = R"(<script>
"use strict";
const svg = document.querySelector("svg.harness");
const buttons = [...document.querySelectorAll("button[data-shows]")];
const listOf = (element, name) => (element.dataset[name] || "").split(" ").filter(Boolean);
let chosen = "";

// Thin lines are easier to hit with a wide one, which is not seen, on top.
for (const net of svg.querySelectorAll(".net")) {
  for (const path of net.querySelectorAll("path")) {
    const target = path.cloneNode();
    target.removeAttribute("class");
    target.removeAttribute("data-pins");
    target.removeAttribute("stroke-dasharray");
    target.setAttribute("stroke", "transparent");
    target.setAttribute("stroke-width", "6");
    net.append(target);
  }
}

// `ids` names nets and pins, separated by blanks; nothing shows all.
function show(ids) {
  chosen = ids === chosen ? "" : ids;
  const pins = new Set();
  const nets = new Set();
  for (const id of chosen.split(" ").filter(Boolean)) {
    const element = document.getElementById(id);
    if (element.classList.contains("pin")) {
      pins.add(id);
    } else {
      nets.add(id);
      for (const pin of listOf(element, "pins")) pins.add(pin);
    }
  }
  svg.classList.toggle("alone", chosen !== "");
  for (const net of svg.querySelectorAll(".net")) net.classList.toggle("shown", nets.has(net.id));
  for (const pin of svg.querySelectorAll(".pin")) pin.classList.toggle("shown", pins.has(pin.id));
  for (const extra of svg.querySelectorAll(".extra")) {
    extra.classList.toggle("shown", listOf(extra, "pins").every(pin => pins.has(pin)));
  }
  for (const button of buttons) {
    button.setAttribute("aria-pressed", String(chosen !== "" && button.dataset.shows === chosen));
  }
}

for (const button of buttons) button.addEventListener("click", () => show(button.dataset.shows));
document.getElementById("all").addEventListener("click", () => show(""));
svg.addEventListener("click", event => {
  const hit = event.target.closest(".net, .pin[data-net]");
  if (!hit) return show("");
  const id = hit.dataset.net || hit.id;
  show(id);
  const button = buttons.find(each => each.dataset.shows === id && each.closest("#nets"));
  if (button) button.scrollIntoView({ block: "nearest" });
});
document.addEventListener("keydown", event => {
  if (event.key === "Escape") show("");
  const at = buttons.indexOf(document.activeElement);
  const step = { ArrowDown: 1, ArrowUp: -1 }[event.key];
  if (!step || at < 0 || !buttons[at + step]) return;
  event.preventDefault();
  buttons[at + step].focus();
});
</script>
)";

constexpr const char* DrawingId = "drawing";

std::string PressButton(const std::string& shows, const std::string& content) {
  return "<button type=\"button\" aria-pressed=\"false\" data-shows=\"" + shows + "\">" + content +
         "</button>";
}

/// A part of the drawing, below the names of the connectors that the sheet before began.
std::string SheetPart(const PrintedSheet& sheet, double width) {
  const double band = sheet.continued.empty() ? 0 : TextLineHeight + 4;
  const double top = sheet.top - band;
  std::string html = "<svg" + Attribute("width", width) + Attribute("height", sheet.bottom - top) +
                     Attribute("viewBox", "0 " + Coordinate(top) + " " + Coordinate(width) + " " +
                                              Coordinate(sheet.bottom - top)) +
                     Attribute("font-size", FontSize) + "><use href=\"#" + DrawingId + "\"/>";
  if (band > 0) {
    // Higher than the band: a browser that rounds the sheet's size shows a little of what is above.
    html += "<rect" + Attribute("y", top - band) + Attribute("width", width) + Attribute("height", 2 * band) +
            " fill=\"#ffffff\"/>";
  }
  for (const ContinuedBox& box : sheet.continued) {
    html += TextElement(box.x, top + band / 2, box.left ? Anchor::Start : Anchor::End,
                        box.title + ", continued", Attribute("fill", Black));
  }
  return html + "</svg>\n";
}

/// The drawing as it is shown, and, where paper needs several sheets, once more for them.
std::string DrawingPart(const SvgDrawing& drawing) {
  const std::vector<PrintedSheet>& sheets = drawing.printed.sheets;
  const bool sheeted = sheets.size() > 1;
  std::string html = std::string("<div class=\"drawing") + (sheeted ? " sheeted" : "") +
                     "\">\n<div class=\"whole\">\n" + drawing.text + "</div>\n";
  if (sheeted) {
    html += "<div class=\"sheets\">\n";
    for (const PrintedSheet& sheet : sheets) html += SheetPart(sheet, drawing.width);
    html += "</div>\n";
  }
  return html + "</div>\n";
}

/// What a click on a fault shows: the nets concerned, and its contacts.
std::string ShownFor(const HarnessPicture& picture, const FaultMark& mark,
                     const std::vector<std::size_t>& nets) {
  std::string ids;
  for (const std::size_t net : nets) ids += (ids.empty() ? "n" : " n") + std::to_string(net + 1);
  for (std::size_t pin = 0; pin < picture.pins.size(); ++pin) {
    for (const std::int32_t channel : mark.fault.channels) {
      if (channel != picture.pins[pin].channel || channel <= 0) continue;
      ids += (ids.empty() ? "p" : " p") + std::to_string(pin + 1);
    }
  }
  return ids;
}

std::string FaultItems(const HarnessPicture& picture, const std::vector<FaultMark>& faults,
                       const Marks& marks) {
  std::string html;
  for (std::size_t i = 0; i < faults.size(); ++i) {
    const std::string text = "<b>F" + std::to_string(i + 1) + "</b> " + XmlText(faults[i].text);
    html += "<li>" + PressButton(ShownFor(picture, faults[i], marks.shown[i]), text);
    for (const std::string& other : faults[i].alternatives)
      html += "<p class=\"or\">" + XmlText(other) + "</p>";
    html += "</li>\n";
  }
  return html;
}

std::string NetItems(const HarnessPicture& picture) {
  std::string html;
  for (std::size_t net = 0; net < picture.nets.size(); ++net) {
    if (picture.nets[net].pins.size() < 2) continue;
    html += "<li>" +
            PressButton("n" + std::to_string(net + 1), XmlText(NetText(picture, picture.nets[net]))) +
            "</li>\n";
  }
  return html;
}

}  // namespace

std::string HtmlOf(const HarnessPicture& picture, const std::vector<FaultMark>& faults) {
  const Marks marks = MarksIn(picture, faults);
  DrawingOptions options;
  options.faultList = false;
  std::string html = Head;
  html += "<title>" + XmlText(picture.title) + "</title>\n";
  html += Style;
  const SvgDrawing drawing = SvgElement(picture, faults, marks, options, DrawingId);
  if (drawing.printed.landscape) html += "<style>@page { size: landscape; }</style>\n";
  html += "</head>\n<body>\n<main>\n";
  html += DrawingPart(drawing);
  html += "<aside>\n";
  if (!faults.empty()) {
    html += "<h2>Faults</h2>\n<ol id=\"faults\">\n" + FaultItems(picture, faults, marks) + "</ol>\n";
  }
  html +=
      "<h2>Nets</h2>\n<p class=\"help\">A click on a net shows it alone; Escape shows all. "
      "<button type=\"button\" id=\"all\">Show all</button></p>\n";
  html += "<ol id=\"nets\">\n" + NetItems(picture) + "</ol>\n</aside>\n</main>\n";
  html += Script;
  return html + "</body>\n</html>\n";
}

}  // namespace kxbench::drawing
