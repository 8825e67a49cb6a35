#include <gmock/gmock.h>

#include <filesystem>
#include <fstream>

#include "bench/documents/DrawingText.h"
#include "tests/bench/documents/DrawingGeometry.h"
#include "tests/bench/documents/PictureSamples.h"
#include "tests/bench/program/TemporaryFolder.h"
#include "tests/support/Browser.h"

/// Drawings as a browser shows them.

namespace kxbench::documents {
namespace {

using shorttest::testkit::AskPage;

class DrawingPage : public testing::Test {
 protected:
  std::string Ask(const std::string& page, const std::string& script) {
    const std::filesystem::path file = folder_.Path() / "page.html";
    std::ofstream(file, std::ios::binary) << page;
    return AskPage(file, DrawingGeometry + script);
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
}  // namespace kxbench::documents
