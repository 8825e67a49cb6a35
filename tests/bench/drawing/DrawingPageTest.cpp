#include <gmock/gmock.h>

#include <filesystem>
#include <fstream>
#include <set>

#include "bench/drawing/DrawingText.h"
#include "tests/bench/drawing/DrawingGeometry.h"
#include "tests/bench/drawing/PictureSamples.h"
#include "tests/bench/program/TemporaryFolder.h"
#include "tests/support/Browser.h"

/// Drawings as a browser shows them.

namespace kxbench::drawing {
namespace {

using shorttest::testkit::AskPage;

class DrawingPage : public testing::Test {
 protected:
  std::string Ask(const std::string& page, const std::string& script,
                  shorttest::testkit::PageSize size = {}) {
    const std::filesystem::path file = folder_.Path() / "page.html";
    std::ofstream(file, std::ios::binary) << page;
    return AskPage(file, DrawingGeometry + script, size);
  }

  TemporaryFolder folder_;
};

constexpr const char* ProblemsOfAll = R"JS(
const problems = [];
for (const sample of document.querySelectorAll('div[data-name]')) {
  for (const problem of problemsOf(sample.querySelector('svg'))) problems.push(sample.dataset.name + ': ' + problem);
}
return problems.slice(0, 20).join('\n');
)JS";

TEST_F(DrawingPage, EveryLineEndsAtItsPinsAndNothingLiesOnALabel) {
  std::string page =
      "<!DOCTYPE html><meta charset=\"utf-8\"><style>.wide svg { font-family: 'DejaVu Sans' }</style>";
  const auto add = [&](const PictureSample& sample, const std::string& font) {
    DrawingOptions options;
    options.idPrefix = "s" + std::to_string(page.size());
    page += "<div data-name=\"" + XmlText(sample.name + ", " + font) + "\" class=\"" + font + "\">" +
            SvgOf(sample.picture, sample.marks, options) + "</div>";
  };
  for (const PictureSample& sample : PictureSamples()) add(sample, "usual");
  // In the widest font that is common, too.
  for (const std::size_t pins : {20U, 48U}) {
    const HarnessPicture picture = RandomPicture(3, pins);
    add({std::to_string(pins), picture, RandomMarks(3, picture)}, "wide");
  }
  EXPECT_EQ(Ask(page, ProblemsOfAll), "");
}

TEST_F(DrawingPage, WhatIsWrongWithADrawingIsFound) {
  const std::string page =
      "<!DOCTYPE html><meta charset=\"utf-8\">" + SvgOf(ExamplePicture("null-modem-cable"));
  EXPECT_EQ(Ask(page, R"JS(
    const svg = document.querySelector('svg');
    const count = change => {
      const undo = change();
      const found = problemsOf(svg).length > 0;
      undo();
      return found;
    };
    const set = (selector, name, value) => () => {
      const element = svg.querySelector(selector), before = element.getAttribute(name);
      element.setAttribute(name, value);
      return () => element.setAttribute(name, before);
    };
    return [problemsOf(svg).length, count(set('#p3 circle', 'cy', 300)), count(set('#p3 text', 'x', 300)),
            count(set('.dot', 'cy', 9)), count(set('#n2', 'data-pins', 'p1')), count(set('#n2', 'stroke-width', 30)),
            count(set('.border', 'width', 300))];
  )JS"),
            "[0,true,true,true,true,true,true]");
}

/// Clicks on what is at the middle of each net's line, on its pins and on its button.
constexpr const char* ClickEveryNet = R"JS(
const problems = [];
const svg = document.querySelector('svg');
const opacity = element => Number(window.getComputedStyle(element).opacity);
const nets = [...svg.querySelectorAll('.net')];
const key = (name, target = document) => target.dispatchEvent(new window.KeyboardEvent('keydown', { key: name, bubbles: true }));
const shown = () => nets.filter(net => opacity(net) === 1).map(net => net.id).join();
const all = nets.map(net => net.id).join();
const click = element => element.dispatchEvent(new window.MouseEvent('click', { bubbles: true }));
const middle = net => {
  const branch = net.querySelector('.branch');
  const point = branch.getPointAtLength(branch.getTotalLength() * 0.4).matrixTransform(branch.getScreenCTM());
  window.scrollTo(0, window.scrollY + point.y - 300);
  const now = branch.getPointAtLength(branch.getTotalLength() * 0.4).matrixTransform(branch.getScreenCTM());
  return document.elementFromPoint(now.x, now.y);
};
if (shown() !== all) problems.push('not all nets are shown at first');
let hits = 0;
for (const net of nets) {
  const pins = net.dataset.pins.split(' ');
  const button = document.querySelector(`#nets button[data-shows="${net.id}"]`);
  const target = middle(net);
  if (target && target.closest('.net') === net) ++hits;  // else another net's line crosses just there
  for (const element of [net.querySelector('.branch'), document.getElementById(pins[0]).querySelector('text'), button]) {
    click(element);
    if (shown() !== net.id) problems.push(`a click on ${net.id} shows ${shown()}`);
    if (element !== button) key('Escape');
    if (element !== button) continue;
    for (const pin of svg.querySelectorAll('.pin')) {
      if (pins.includes(pin.id) !== (opacity(pin) === 1)) problems.push(`${pin.id} is wrong while ${net.id} is shown`);
    }
    if (button.getAttribute('aria-pressed') !== 'true') problems.push(`the button of ${net.id} is not pressed`);
  }
  key('Escape');
  if (shown() !== all) problems.push('Escape does not show all');
  click(net.querySelector('.branch'));
  click(net.querySelector('.branch'));
  if (shown() !== all) problems.push('a second click does not show all');
}
if (hits < nets.length * 0.8) problems.push(`only ${hits} of ${nets.length} nets are hit by the mouse`);
click(nets[0].querySelector('.branch'));
click(document.getElementById('all'));
if (shown() !== all) problems.push('the button does not show all');
const buttons = [...document.querySelectorAll('#nets button')];
buttons[0].focus();
key('ArrowDown', buttons[0]);
if (document.activeElement !== buttons[1]) problems.push('the arrow does not go to the next net');
key('ArrowUp', buttons[1]);
if (document.activeElement !== buttons[0]) problems.push('the arrow does not go back');
return problems.slice(0, 20).join('\n');
)JS";

TEST_F(DrawingPage, AClickOnANetShowsItAlone) {
  EXPECT_EQ(Ask(HtmlOf(RandomPicture(48, 48)), ClickEveryNet), "");
}

TEST_F(DrawingPage, AClickOnANetShowsItAloneWhereFaultsAreMarked) {
  const HarnessPicture picture = ExamplePicture("atx-extension");
  EXPECT_EQ(Ask(HtmlOf(picture, RandomMarks(2, picture)), ClickEveryNet), "");
}

/// The page as it is printed on A4: its rules for print hold for the screen, which is as large as the paper
/// between its margins.
constexpr const char* OnPaper = R"JS(
const rules = [...document.styleSheets[0].cssRules].filter(rule => rule.media && rule.media.mediaText === 'print');
const style = document.createElement('style');
style.textContent = rules.flatMap(rule => [...rule.cssRules]).filter(rule => rule.selectorText)
    .map(rule => rule.cssText).join('\n');
document.head.append(style);
const shown = [...document.querySelectorAll('.drawing svg')].filter(svg => rectOf(svg).width > 0);
)JS";

constexpr const char* ProblemsOfSheets = R"JS(
const problems = shown.length < 2 ? ['one sheet'] : [];
if (!shown[1].textContent.includes('continued')) problems.push('no connector is continued');
let bottom = 0;
for (const sheet of shown) {
  const part = sheet.viewBox.baseVal;
  const cover = sheet.querySelector('rect')?.getBBox();
  const band = cover ? cover.y + cover.height - part.y : 0;
  if (sheet.querySelector('use').getAttribute('href') !== '#' + whole.id) problems.push('no part of the drawing');
  if (part.x !== 0 || Math.abs(part.y + band - bottom) > 0.01) problems.push(`a sheet begins at ${part.y}, not at ${bottom}`);
  for (const name of sheet.querySelectorAll('text')) {
    const box = name.getBBox();
    if (box.y < part.y || box.y + box.height > part.y + band || box.x < 0 || box.x + box.width > part.width) problems.push('a name is cut');
  }
  bottom = part.y + part.height;
  if (texts.some(text => text.y < bottom && text.y + text.height > bottom)) problems.push(`${bottom} cuts a text`);
  const points = Math.min(rectOf(sheet).width / part.width, rectOf(sheet).height / part.height) * 11 * 0.75;
  if (points < 6) problems.push(`texts of ${points} points`);
  if (rectOf(sheet).height > window.innerHeight + 0.01 || rectOf(sheet).width > window.innerWidth) problems.push('too large');
}
if (Math.abs(bottom - height) > 0.01) problems.push(`the sheets end at ${bottom}, not at ${height}`);
return problems.join('\n');
)JS";

/// Ten connectors of 24 contacts, with short names.
HarnessPicture NarrowPicture() {
  HarnessPicture picture;
  for (std::size_t i = 0; i < 240; ++i) {
    picture.pins.push_back({static_cast<std::int32_t>(i + 1), "X" + std::to_string(i / 24),
                            std::to_string(i % 24 + 1), "", false});
    if (i % 2 == 1) picture.nets.push_back({"", {i / 2, 120 + i * 7 % 120}});
  }
  return picture;
}

TEST_F(DrawingPage, ALargeDrawingIsPrintedOnSheetsThatCutNoText) {
  const std::string measured =
      std::string("const whole = document.querySelector('svg.harness');") +
      "const texts = [...whole.querySelectorAll('text')].map(text => text.getBBox());" +
      "const height = whole.viewBox.baseVal.height;" + OnPaper + ProblemsOfSheets;
  const shorttest::testkit::PageSize upright = {718, 1046};
  const shorttest::testkit::PageSize across = {1046, 718};
  std::set<bool> seen;
  for (const HarnessPicture& picture : {NarrowPicture(), RandomPicture(5, 240)}) {
    for (const std::vector<FaultMark>& faults : {std::vector<FaultMark>(), RandomMarks(5, picture)}) {
      const std::string page = HtmlOf(picture, faults);
      const bool landscape = page.find("size: landscape") != std::string::npos;
      seen.insert(landscape);
      EXPECT_EQ(Ask(page, measured, landscape ? across : upright), "");
    }
  }
  EXPECT_EQ(seen.size(), 2U);
}

TEST_F(DrawingPage, ASmallDrawingIsPrintedAsItIs) {
  EXPECT_EQ(
      Ask(HtmlOf(RandomPicture(48, 48)),
          std::string(OnPaper) + "return shown.map(svg => svg.getAttribute('class')).join();", {718, 1046}),
      "harness");
}

TEST_F(DrawingPage, AClickOnAFaultShowsItsNetsAndContacts) {
  const HarnessPicture picture = ExamplePicture("trailer-adapter");
  const std::string page =
      HtmlOf(picture, {MarkOf("short", {1, 2, 9, 14, 15}, "short: two nets and a contact")});
  EXPECT_EQ(Ask(page, R"JS(
    document.querySelector('#faults button').click();
    const shown = kind => [...document.querySelectorAll(kind)].filter(e => window.getComputedStyle(e).opacity === '1');
    return shown('.net').map(net => net.id).join() + ' ' + shown('.pin').map(pin => pin.id).join() + ' ' + shown('.extra').length;
  )JS"),
            "n1,n2 p1,p2,p9,p14,p15 2");
}

}  // namespace
}  // namespace kxbench::drawing
