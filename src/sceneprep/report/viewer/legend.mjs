// Fills in the legend, which names the colours of a view.
import { listColors } from './colorings.mjs';
import { element } from './data.mjs';
import { formatCount } from './numbers.mjs';

const mostNamed = 8;

function makeItem(text, color) {
  const item = document.createElement('li');
  if (color !== undefined) {
    const chip = document.createElement('i');
    chip.style.background = `#${color.toString(16).padStart(6, '0')}`;
    item.append(chip);
    item.title = text;
  }
  item.append(text);
  return item;
}

export function showLegend(id, picture, coloring) {
  const colors = listColors(picture, coloring);
  const items = [makeItem(formatCount(colors.length, coloring.kind))];
  for (const { name, color } of colors.slice(0, mostNamed)) items.push(makeItem(name, color));
  if (colors.length > mostNamed) items.push(makeItem('more …'));
  element(id).replaceChildren(...items);
}
