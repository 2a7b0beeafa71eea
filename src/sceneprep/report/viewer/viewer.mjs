// The program of the page: fills in the numbers, then the views if the browser supports WebGL.
import { colorings } from './colorings.mjs';
import { element, readJson, readPicture } from './data.mjs';
import { showLegend } from './legend.mjs';
import { formatCount, showNumbers } from './numbers.mjs';
import { Stage } from './Stage.mjs';

const sides = ['before', 'after'];

const hasWebGL = () => Boolean(document.createElement('canvas').getContext('webgl2'));

function showCaption(side, { shown, triangles }) {
  const all = formatCount(triangles, 'triangle');
  element(`${side}-caption`).textContent =
    shown === triangles ? all : `${formatCount(shown, 'triangle')} of ${all} shown, evenly chosen`;
}

// Adds a switch with one position per colouring. The fragment of the address selects the first one: report.html#node.
function addColoringSwitch(choose) {
  const named = colorings.find(({ id }) => `#${id}` === location.hash) ?? colorings[0];
  for (const coloring of colorings) {
    const label = document.createElement('label');
    const input = Object.assign(document.createElement('input'), {
      type: 'radio', name: 'coloring', value: coloring.id, checked: coloring === named,
    });
    input.addEventListener('change', () => choose(coloring));
    label.append(input, coloring.label);
    element('colorings').append(label);
  }
  choose(named);
}

function showViews() {
  const pictures = sides.map(readPicture);
  const canvases = sides.map((side) => element(`${side}-view`));
  const stage = new Stage(element('stage'), canvases, pictures);
  sides.forEach((side, i) => showCaption(side, pictures[i]));
  addColoringSwitch((coloring) => {
    stage.setColoring(coloring);
    sides.forEach((side, i) => showLegend(`${side}-legend`, pictures[i], coloring));
  });
  element('wireframe').addEventListener('change', ({ target }) => stage.setWireframe(target.checked));
  element('backs').addEventListener('change', ({ target }) => stage.markBacks(target.checked));
  element('reset').addEventListener('click', () => stage.reset());
}

function hideViews() {
  for (const id of ['controls', 'stage', 'hint']) element(id).hidden = true;
  element('no-webgl').hidden = false;
}

showNumbers(readJson('report'));
if (hasWebGL()) showViews();
else hideViews();
