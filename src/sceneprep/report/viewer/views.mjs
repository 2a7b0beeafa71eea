// Shows the models in their views, and connects the controls.
import { batchSurfaces } from './batches.mjs';
import { colorings, textured } from './colorings.mjs';
import { takeBytes } from './data.mjs';
import { element, make } from './dom.mjs';
import { formatBytes, formatCount } from './format.mjs';
import { findSurfaces } from './findSurfaces.mjs';
import { drawCallsOf } from './headline.mjs';
import { showLegend } from './legend.mjs';
import { loadModel } from './loadModel.mjs';
import { Stage } from './Stage.mjs';

// Larger scenes are drawn in batches, and their clips play on request only.
const mostDrawCalls = 5000;

const find = (id) => colorings.find((coloring) => coloring.id === id);

// Returns the colouring that shows the largest change.
function firstColoring({ before, after }, models) {
  const named = find(location.hash.slice(1));
  if (named) return named;
  if (drawCallsOf(before) !== drawCallsOf(after)) return find('surface');
  const offsets = new Set(models.flatMap(({ surfaces }) => surfaces.map(({ offset }) => offset)));
  if (offsets.size > 1) return find('offset');
  return before.counts.materials === after.counts.materials ? textured : find('material');
}

function showCaption({ name, remark }, model) {
  const parts = [
    formatCount(model.triangles, 'triangle'), formatCount(model.surfaces.length, 'draw call'), formatBytes(model.bytes),
  ];
  element(`${name}-caption`).textContent = parts.join(' · ');
  element(`${name}-remark`).textContent = remark;
}

function showMissing({ name, remark }) {
  element(`${name}-view`).hidden = true;
  element(`${name}-remark`).textContent = remark;
}

// Adds a switch with one position per colouring. The fragment of the address selects the first one: report.html#material.
function addColoringSwitch(first, choose) {
  for (const coloring of colorings) {
    const input = make('input', { type: 'radio', name: 'coloring', value: coloring.id, checked: coloring === first });
    input.addEventListener('change', () => choose(coloring));
    element('colorings').append(make('label', {}, input, coloring.label));
  }
  choose(first);
}

function addClips(stage, isSmall) {
  const { names } = stage.player;
  if (names.length === 0) return;
  const [button, list] = ['play', 'clips'].map(element);
  const play = (isPlaying) => {
    stage.play(isPlaying);
    button.textContent = isPlaying ? 'Pause' : 'Play';
  };
  list.replaceChildren(...names.map((name, i) => make('option', { value: name }, name || `clip ${i + 1}`)));
  list.hidden = names.length === 1;
  list.addEventListener('change', () => stage.choose(list.value));
  button.hidden = false;
  button.addEventListener('click', () => play(!stage.player.isPlaying));
  stage.choose(names[0]);
  play(isSmall && !matchMedia('(prefers-reduced-motion: reduce)').matches);
}

function connectControls(stage) {
  element('wireframe').addEventListener('change', ({ target }) => stage.setWireframe(target.checked));
  element('backs').addEventListener('change', ({ target }) => stage.markBacks(target.checked));
  element('reset').addEventListener('click', () => stage.reset());
}

async function loadSides(sides) {
  const models = [];
  for (const side of sides) {
    const model = await loadModel(takeBytes(`${side.name}-file`));
    if (model.surfaces.length > mostDrawCalls) {
      const batches = formatCount(batchSurfaces(model), 'batch', 'batches');
      side.remark = `${side.remark} To keep the view responsive, this page draws its surfaces in ${batches}.`.trim();
    }
    showCaption(side, model);
    models.push(model);
  }
  return models;
}

// Returns a function that highlights the surfaces of a reason; those of the result, in which it was found.
export async function openViews(report, sides) {
  sides.filter(({ bytes }) => bytes === 0).forEach(showMissing);
  const shown = sides.filter(({ bytes }) => bytes > 0);
  const models = await loadSides(shown);
  const stage = new Stage(element('stage'), shown.map(({ name }) => element(`${name}-view`)), models);
  addColoringSwitch(firstColoring(report, models), (coloring) => {
    stage.setColoring(coloring);
    shown.forEach(({ name }, i) => showLegend(`${name}-legend`, models[i], coloring));
  });
  connectControls(stage);
  addClips(stage, models.every(({ surfaces }) => surfaces.length <= mostDrawCalls));
  element('stage').ariaBusy = 'false';
  return (group) => stage.highlight(models.map((model, i) => {
    const isResult = shown[i].name === 'after';
    return group && isResult ? findSurfaces(group, model) : [];
  }));
}
