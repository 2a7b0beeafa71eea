// Fills in the numbers and texts of the report. Names from files are set as text, never as markup.
import { element } from './data.mjs';

const whole = new Intl.NumberFormat('en');
const measured = new Intl.NumberFormat('en', { maximumSignificantDigits: 6 });
const percent = new Intl.NumberFormat('en', { maximumFractionDigits: 1, signDisplay: 'always' });
const wholeChange = new Intl.NumberFormat('en', { signDisplay: 'always' });
const measuredChange = new Intl.NumberFormat('en', { maximumSignificantDigits: 3, signDisplay: 'always' });
const smallestPercent = 0.05;
const milliseconds = new Intl.NumberFormat('en', { minimumFractionDigits: 1, maximumFractionDigits: 1 });

export const formatCount = (count, noun) => `${whole.format(count)} ${noun}${count === 1 ? '' : 's'}`;

function make(tag, text = '', properties = {}) {
  const made = Object.assign(document.createElement(tag), properties);
  made.append(text);
  return made;
}

function addRow(body, heading, cells) {
  const row = make('tr');
  row.append(make('th', heading, { scope: 'row' }), ...cells);
  body.append(row);
}

function changeOf(before, after, format) {
  if (before === after) return make('td', 'same', { className: 'same' });
  const share = (100 * (after - before)) / Math.abs(before);
  const isShown = Number.isFinite(share) && Math.abs(share) >= smallestPercent;
  return make('td', format.format(after - before) + (isShown ? ` (${percent.format(share)} %)` : ''));
}

function addCount(body, name, before, after) {
  const change = changeOf(before, after, wholeChange);
  addRow(body, name, [make('td', whole.format(before)), make('td', whole.format(after)), change]);
}

function addMeasure(body, name, before, after) {
  const change = changeOf(before, after, measuredChange);
  addRow(body, name, [make('td', measured.format(before)), make('td', measured.format(after)), change]);
}

function showCounts({ before, after }) {
  for (const [name, count] of Object.entries(before.counts))
    addCount(element('counts'), name, count, after.counts[name]);
}

function showWorld({ before, after }) {
  const body = element('world');
  const [was, is] = [before.world, after.world];
  addCount(body, 'triangles shown', was.triangles, is.triangles);
  for (const bound of ['min', 'max'])
    ['x', 'y', 'z'].forEach((axis, i) => addMeasure(body, `${bound} ${axis}`, was[bound][i], is[bound][i]));
  addMeasure(body, 'area', was.area, is.area);
  addMeasure(body, 'volume', was.volume, is.volume);
}

function headingOf(step) {
  const heading = document.createDocumentFragment();
  heading.append(step.name);
  const addDetail = (text) => heading.append(make('span', text, { className: 'details' }));
  for (const [what, count] of Object.entries(step.changes)) addDetail(`${whole.format(count)} ${what}`);
  for (const { text, sum, count } of step.messages)
    addDetail(`${text} ${whole.format(sum)} ms in ${count} pass${count === 1 ? '' : 'es'}`);
  return heading;
}

function showSteps({ steps }) {
  const slowest = Math.max(...steps.map((step) => step.milliseconds), Number.MIN_VALUE);
  const timeCell = (time) => make('td', milliseconds.format(time));
  for (const step of steps) {
    const share = make('td', make('i'), { className: 'share' });
    share.firstChild.style.width = `${(100 * step.milliseconds) / slowest}%`;
    share.ariaHidden = 'true';
    addRow(element('steps'), headingOf(step), [timeCell(step.milliseconds), share]);
  }
  const total = steps.reduce((sum, step) => sum + step.milliseconds, 0);
  addRow(element('steps-total'), 'all steps', [timeCell(total), make('td')]);
}

function fillList(id, texts) {
  element(id).replaceChildren(...texts.map((text) => make('li', text)));
}

function showOutcome({ inputs, leftOut, output, differences, notes }) {
  const fileName = output.split('/').pop();
  document.title = `${fileName} - sceneprep report`;
  element('output').textContent = fileName;
  const without = leftOut.length > 0 ? `; skipped: ${leftOut.join(', ')}` : '';
  element('inputs').textContent = `from ${inputs.join(', ')}${without}`;
  const verdict = element('verdict');
  verdict.textContent = `The result ${differences.length > 0 ? 'differs from' : 'matches'} the input.`;
  verdict.classList.toggle('differs', differences.length > 0);
  fillList('differences', differences);
  fillList('notes', notes);
  element('notes-section').hidden = notes.length === 0;
}

export function showNumbers(report) {
  showOutcome(report);
  showCounts(report);
  showWorld(report);
  showSteps(report);
}
