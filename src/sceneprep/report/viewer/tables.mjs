// The tables and notes below the views.
import { element, make } from './dom.mjs';
import { formatDifference, formatMilliseconds, formatShare, formatWhole, measureFormat } from './format.mjs';

function row(heading, ...cells) {
  return make('tr', {}, make('th', { scope: 'row' }, heading), ...cells);
}

const cell = (text) => make('td', {}, text);

function changeCell(isSame, difference, share) {
  if (isSame) return make('td', { className: 'same' }, 'same');
  const shown = share ? [' ', make('span', {}, `(${share})`)] : [];
  return make('td', { className: 'change' }, difference, ...shown);
}

function countRow(name, before, after) {
  const change = changeCell(before === after, formatDifference(before, after), formatShare(before, after));
  return row(name, cell(formatWhole(before)), cell(formatWhole(after)), change);
}

function measureRow(name, before, after, format) {
  const [was, is] = [format(before), format(after)];
  const difference = format(after - before);
  const sign = after > before ? '+' : '';
  return row(name, cell(was), cell(is), changeCell(was === is, sign + difference, formatShare(before, after)));
}

function boundsRows(was, is) {
  const format = measureFormat(Math.max(...[was.min, was.max, is.min, is.max].flat().map(Math.abs)));
  return ['min', 'max'].flatMap((bound) =>
    ['x', 'y', 'z'].map((axis, i) => measureRow(`${bound} ${axis}`, was[bound][i], is[bound][i], format)));
}

function showCounts({ before, after }) {
  const rows = Object.entries(before.counts).filter(([name, count]) => count > 0 || after.counts[name] > 0)
    .map(([name, count]) => countRow(name, count, after.counts[name]));
  element('counts').replaceChildren(countRow('triangles shown', before.world.triangles, after.world.triangles), ...rows);
}

function showWorld({ before: { world: was }, after: { world: is } }) {
  const rowOf = (name) => measureRow(name, was[name], is[name], measureFormat(Math.max(Math.abs(was[name]), Math.abs(is[name]))));
  const rows = [...boundsRows(was, is), rowOf('area'), rowOf('volume')];
  element('world').replaceChildren(...rows);
  const changed = rows.filter((made) => !made.querySelector('.same')).length;
  element('measures-summary').textContent = `Bounds, area and volume: ${changed > 0 ? `${changed} changed` : 'same'}`;
  element('measures').open = changed > 0;
}

function headingOf(step) {
  const details = Object.entries(step.changes).filter(([, count]) => count !== 0)
    .map(([what, count]) => `${formatWhole(count)} ${what}`);
  for (const { text, sum, count } of step.messages)
    details.push(`${text} ${formatWhole(sum)} ms in ${count} pass${count === 1 ? '' : 'es'}`);
  const heading = document.createDocumentFragment();
  heading.append(step.name, ...details.map((text) => make('span', { className: 'details' }, text)));
  return heading;
}

function showSteps({ steps }) {
  const slowest = Math.max(...steps.map((step) => step.milliseconds), Number.MIN_VALUE);
  element('steps').replaceChildren(...steps.map((step) => {
    const bar = make('i');
    bar.style.width = `${(100 * step.milliseconds) / slowest}%`;
    return row(headingOf(step), cell(formatMilliseconds(step.milliseconds)),
      make('td', { className: 'share', ariaHidden: 'true' }, bar));
  }));
  const total = steps.reduce((sum, step) => sum + step.milliseconds, 0);
  element('steps-total').replaceChildren(row('all steps', cell(formatMilliseconds(total)), make('td')));
}

function showBudget(budget = []) {
  element('budget-section').hidden = budget.length === 0;
  element('budget').replaceChildren(...budget.map(({ name, value, limit, exceeded }) =>
    row(name, cell(formatWhole(value)), cell(formatWhole(limit)),
      make('td', { className: exceeded ? 'grown' : 'same' }, exceeded ? 'exceeded' : 'within'))));
}

function showNotes(notes) {
  element('notes-section').hidden = notes.length === 0;
  element('notes').replaceChildren(...notes.map((text) => make('li', {}, text)));
}

// Losses are at the top of the page.
export function showTables(report) {
  showCounts(report);
  showWorld(report);
  showSteps(report);
  showBudget(report.budget);
  const lost = new Set(report.losses.map(({ text }) => text));
  showNotes(report.notes.filter((text) => !lost.has(text)));
}
