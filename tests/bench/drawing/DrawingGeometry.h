#pragma once

namespace kxbench::drawing {

/// JavaScript for a page with drawings: the function `problemsOf(svg)` lists what is wrong with one, as the
/// browser has laid it out. Lines must end at their pins, joints must be dotted, and nothing may lie on a
/// text, on a foreign line or on a box.
inline constexpr const char* DrawingGeometry = R"JS(
const rectOf = element => element.getBoundingClientRect();
const overlap = (a, b, slack) => a.left < b.right - slack && b.left < a.right - slack &&
    a.top < b.bottom - slack && b.top < a.bottom - slack;

// The corners of a path, from its own geometry: the browser says where it begins and ends and how long it is,
// and each corner that the text of the path names must lie where the browser has it.
function cornersOf(path, problems) {
  const matrix = path.getScreenCTM();
  const length = path.getTotalLength();
  const at = distance => path.getPointAtLength(distance).matrixTransform(matrix);
  const corners = [at(0)];
  let walked = 0;
  let point = path.getPointAtLength(0);
  for (const [, letter, number] of path.getAttribute('d').matchAll(/([HV])([-\d.]+)/g)) {
    const next = letter === 'H' ? { x: Number(number), y: point.y } : { x: point.x, y: Number(number) };
    walked += Math.abs(next.x - point.x) + Math.abs(next.y - point.y);
    const there = path.getPointAtLength(walked);
    if (Math.hypot(there.x - next.x, there.y - next.y) > 0.05) problems.push('a path is not where it says');
    corners.push(at(walked));
    point = next;
  }
  if (Math.abs(walked - length) > 0.05) problems.push('a path has another length than its parts');
  return corners;
}

function segmentsOf(path, owner, problems) {
  const corners = cornersOf(path, problems);
  const width = parseFloat(getComputedStyle(path).strokeWidth);
  return corners.slice(1).map((to, i) => {
    const from = corners[i];
    return { owner, path, width, across: Math.abs(from.y - to.y) < 0.01,
             left: Math.min(from.x, to.x), right: Math.max(from.x, to.x),
             top: Math.min(from.y, to.y), bottom: Math.max(from.y, to.y) };
  });
}

const covered = segment => ({ left: segment.left - segment.width / 2, right: segment.right + segment.width / 2,
                              top: segment.top - segment.width / 2, bottom: segment.bottom + segment.width / 2 });

function checkNet(net, document, problems) {
  const wanted = net.dataset.pins.split(' ');
  const reached = [];
  const trunk = net.querySelector('.trunk');
  const trunkCorners = trunk && cornersOf(trunk, problems);
  for (const branch of net.querySelectorAll('.branch')) {
    const corners = cornersOf(branch, problems);
    const pins = branch.dataset.pins.split(' ');
    const ends = pins.length === 2 ? [corners[0], corners.at(-1)] : [corners[0]];
    pins.forEach((id, i) => {
      reached.push(id);
      const circle = rectOf(document.getElementById(id).querySelector('circle'));
      const x = (circle.left + circle.right) / 2, y = (circle.top + circle.bottom) / 2;
      if (Math.hypot(x - ends[i].x, y - ends[i].y) > 0.1) problems.push(`a line of ${net.id} does not end at ${id}`);
    });
    if (pins.length === 2) continue;
    const end = corners.at(-1);
    const onTrunk = trunkCorners && Math.abs(end.x - trunkCorners[0].x) < 0.1 &&
        end.y > trunkCorners[0].y - 0.1 && end.y < trunkCorners.at(-1).y + 0.1;
    if (!onTrunk) problems.push(`a branch of ${net.id} does not reach its trunk`);
    const inside = onTrunk && end.y > trunkCorners[0].y + 0.1 && end.y < trunkCorners.at(-1).y - 0.1;
    const dotted = [...net.querySelectorAll('.dot')].some(dot => {
      const circle = rectOf(dot);
      return Math.hypot((circle.left + circle.right) / 2 - end.x, (circle.top + circle.bottom) / 2 - end.y) < 0.1;
    });
    if (inside && !dotted) problems.push(`a joint of ${net.id} has no dot`);
  }
  if (reached.sort().join() !== wanted.sort().join()) problems.push(`${net.id} does not reach each of its pins once`);
}

function checkLines(segments, problems) {
  for (let i = 0; i < segments.length; ++i) {
    for (let j = 0; j < i; ++j) {
      const a = segments[i], b = segments[j];
      if (a.owner === b.owner) continue;
      if (a.across === b.across && overlap(covered(a), covered(b), 0.01)) {
        problems.push(`lines of ${a.owner.id} and ${b.owner.id} lie on one another`);
      }
      // A crossing is no joint: neither of the two may end there.
      const [h, v] = a.across ? [a, b] : [b, a];
      if (h.across === v.across || !overlap(covered(h), covered(v), 0.01)) continue;
      const inner = v.left > h.left + 1 && v.left < h.right - 1 && h.top > v.top + 1 && h.top < v.bottom - 1;
      if (!inner) problems.push(`${a.owner.id} and ${b.owner.id} look joined`);
    }
  }
}

function problemsOf(svg) {
  const document = svg.ownerDocument;
  const problems = [];
  const all = rectOf(svg);
  const texts = [...svg.querySelectorAll('text')].map(element => ({ element, rect: rectOf(element) }));
  const boxes = [...svg.querySelectorAll('.border')].map(rectOf);
  const segments = [...svg.querySelectorAll('.net, .extra')].flatMap(
      owner => [...owner.querySelectorAll('path:not(.arrow)')].flatMap(path => segmentsOf(path, owner, problems)));
  for (const net of svg.querySelectorAll('.net')) checkNet(net, document, problems);
  checkLines(segments, problems);
  texts.forEach(({ element, rect }, i) => {
    const say = what => problems.push(`"${element.textContent}" ${what}`);
    if (rect.width === 0) say('is not to be seen');
    if (rect.left < all.left || rect.right > all.right || rect.top < all.top || rect.bottom > all.bottom) say('is cut off');
    texts.slice(0, i).filter(other => overlap(rect, other.rect, 0.5)).forEach(
        other => say(`lies on "${other.element.textContent}"`));
    for (const box of boxes) {
      const inside = rect.left > box.left + 1 && rect.right < box.right - 1 && rect.top > box.top - 0.5 &&
          rect.bottom < box.bottom + 0.5;
      if (overlap(rect, box, 0) && !inside) say('lies on the edge of a box');
    }
    if (segments.some(segment => overlap(rect, covered(segment), 0))) say('has a line on it');
  });
  for (const segment of segments) {
    if (boxes.some(box => overlap(box, covered(segment), segment.width / 2 + 0.1))) problems.push(`${segment.owner.id} runs through a box`);
  }
  boxes.forEach((box, i) => {
    if (boxes.slice(0, i).some(other => overlap(box, other, -2))) problems.push('boxes lie on one another');
  });
  return problems;
}
)JS";

}  // namespace kxbench::drawing
