// Fills in the legend, which names the colours of a view.
import { listColors, textured } from './colorings.mjs';
import { element, make } from './dom.mjs';
import { formatCount } from './format.mjs';

const mostNamed = 6;

function makeItem({ name, color }) {
  const chip = make('i');
  chip.style.background = `#${color.toString(16).padStart(6, '0')}`;
  return make('li', { title: name }, chip, name);
}

function describeImages({ surfaces, images, replacedImages }) {
  const materials = new Set(surfaces.map(({ material }) => material)).size;
  const replaced = replacedImages > 0 ? `, ${replacedImages} of them not available and shown in white` : '';
  return `${formatCount(materials, 'material')}, ${formatCount(images, 'image')}${replaced}`;
}

export function showLegend(id, model, coloring) {
  if (coloring === textured) {
    element(id).replaceChildren(make('li', {}, describeImages(model)));
    return;
  }
  const colors = listColors(model.surfaces, coloring);
  const items = [make('li', {}, formatCount(colors.length, coloring.kind)), ...colors.slice(0, mostNamed).map(makeItem)];
  if (colors.length > mostNamed) items.push(make('li', {}, 'more …'));
  element(id).replaceChildren(...items);
}
