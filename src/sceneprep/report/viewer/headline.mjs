// The top of the page: the gain and the price, the verdict, what was lost.
import { element, fillList, make } from './dom.mjs';
import { formatBytesChange, formatBytes, formatCount, formatShare, formatWhole } from './format.mjs';

const mostListed = 6;

export const drawCallsOf = (side) => side.drawCalls ?? side.counts.surfaces;

// The first of these that has changed is the gain.
const gains = [
  ['draw call', 'draw calls', drawCallsOf],
  ['vertex', 'vertices', ({ counts }) => counts.vertices],
  ['node', 'nodes', ({ counts }) => counts.nodes],
  ['material', 'materials', ({ viewerMaterials, counts }) => viewerMaterials ?? counts.materials],
];

const fileName = (path) => path.split('/').pop();

function gainText({ before, after }) {
  const [noun, nouns, countOf] = gains.find(([, , count]) => count(before) !== count(after)) ?? gains[0];
  const [was, is] = [countOf(before), countOf(after)];
  const text = formatCount(is, noun, nouns);
  return was === is ? `${text}, as before` : `${formatWhole(was)} → ${text}`;
}

function sizesText(was, is) {
  if (!(was > 0 && is > 0)) return '';
  return Math.abs(was - is) < 0.005 * was ? formatBytes(is) : formatBytesChange(was, is);
}

// One figure below the headline; empty if the report does not have it.
function figure(label, was, is, text) {
  if (was === undefined || is === undefined || !text) return [];
  const share = formatShare(was, is);
  const parts = [make('dt', {}, label), make('dd', {}, text)];
  if (share) parts.push(make('dd', { className: is > was ? 'grown share-text' : 'shrunk share-text' }, share));
  return [make('div', {}, ...parts)];
}

function countFigure(label, was, is) {
  return figure(label, was, is, was === is ? formatWhole(is) : `${formatWhole(was)} → ${formatWhole(is)}`);
}

function bytesFigure(label, was, is) {
  return figure(label, was, is, sizesText(was, is));
}

function showHeadline(report, sizes) {
  const { before, after } = report;
  const files = [before.fileBytes ?? sizes[0], after.fileBytes ?? sizes[1]];
  const price = sizesText(...files);
  element('headline').textContent = gainText(report) + (price ? `, ${price}` : '');
  element('figures').replaceChildren(
    ...countFigure('Draw calls', drawCallsOf(before), drawCallsOf(after)),
    ...bytesFigure(before.fileBytes === undefined ? 'Size as .glb' : 'File', ...files),
    ...bytesFigure('On the GPU', before.gpuBytes, after.gpuBytes),
    ...countFigure('Vertices', before.counts.vertices, after.counts.vertices),
    ...countFigure('Nodes', before.counts.nodes, after.counts.nodes),
  );
}

function showFiles({ inputs, leftOut, output }) {
  document.title = `${fileName(output)} - sceneprep report`;
  element('output').textContent = fileName(output);
  element('output').title = output;
  const skipped = leftOut.length > 0 ? `; skipped: ${leftOut.map(fileName).join(', ')}` : '';
  element('inputs').textContent = `from ${inputs.map(fileName).join(', ')}${skipped}`;
  element('inputs').title = inputs.join('\n');
}

// Differences are texts, or objects with a name, in reports that compare the written file.
function differenceItem(difference) {
  if (typeof difference === 'string') return make('li', {}, difference);
  const { name, text } = difference;
  return make('li', {}, ...(name && !text.includes(name) ? [make('strong', {}, name), ': '] : []), text);
}

function verdictText(differences, verdict) {
  if (differences.length > 0) return 'The result differs from the input.';
  if (verdict?.verified === false) return 'The written file was not compared with the input.';
  return 'The result matches the input.';
}

function showVerdict({ differences, verdict }) {
  const found = verdict?.differences?.length ? verdict.differences : differences;
  element('verdict').textContent = verdictText(found, verdict);
  const reason = verdict?.verified === false && verdict.reason ? `Reason: ${verdict.reason}. ` : '';
  const compared = verdict?.compared?.length ? `Compared: ${verdict.compared.join('; ')}.` : '';
  element('compared').textContent = reason + compared;
  fillList(element('differences'), found.map(differenceItem), mostListed);
  const isUnknown = found.length === 0 && verdict?.verified === false;
  element('outcome').className = `card ${found.length > 0 ? 'bad' : isUnknown ? 'warn' : 'good'}`;
}

function showRefusal({ refusal, output }) {
  element('refusal').hidden = !refusal;
  element('refusal-text').textContent = `${fileName(output)} was not written: ${refusal}.`;
}

function showLosses({ losses }) {
  element('losses-card').hidden = losses.length === 0;
  element('losses-title').textContent = formatCount(losses.length, 'loss', 'losses');
  const items = losses.map(({ name, text }) => make('li', {}, make('strong', {}, name), `: ${text}`));
  fillList(element('losses'), items, mostListed);
}

function showBudget({ budget = [] }) {
  const exceeded = budget.filter((one) => one.exceeded);
  element('over-budget').hidden = exceeded.length === 0;
  fillList(element('exceeded'), exceeded.map(({ name, value, limit }) =>
    make('li', {}, make('strong', {}, name), `: ${formatWhole(value)}, at most ${formatWhole(limit)} allowed`)));
}

// The sizes of the .glb files of both views are shown if the report does not have those of the input and output.
export function showTop(report, sizes) {
  showFiles(report);
  showHeadline(report, sizes);
  showRefusal(report);
  showVerdict(report);
  showLosses(report);
  showBudget(report);
}
