// The program of the page: fills in the numbers, then the views if the browser supports WebGL.
import { readJson } from './data.mjs';
import { element } from './dom.mjs';
import { showTop } from './headline.mjs';
import { showFindings, showReasons } from './reasons.mjs';
import { showTables } from './tables.mjs';
import { openViews } from './views.mjs';

const hasWebGL = () => Boolean(document.createElement('canvas').getContext('webgl2'));

function hideViews(reason) {
  for (const id of ['controls', 'stage', 'hint']) element(id).hidden = true;
  element('no-views').hidden = false;
  element('no-views').textContent = reason;
}

const nextFrame = () => new Promise((resolve) => requestAnimationFrame(() => setTimeout(resolve)));

async function start() {
  const report = readJson('report');
  const sides = ['before', 'after'].map((name) => ({ name, ...readJson(name) }));
  showTop(report, sides.map(({ bytes }) => bytes));
  showTables(report);
  showFindings(report);
  let highlight = () => {};
  showReasons(report, (group) => highlight(group));

  if (!hasWebGL())
    return hideViews('The views are not shown, because this browser does not support WebGL. All numbers are shown.');
  if (sides.every(({ bytes }) => bytes === 0))
    return hideViews(sides[0].remark === sides[1].remark ? sides[0].remark : sides.map(({ remark }) => remark).join(' '));
  await nextFrame();
  highlight = await openViews(report, sides);
}

start();
