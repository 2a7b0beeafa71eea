// Formats numbers with as many digits as a reader needs.

const whole = new Intl.NumberFormat('en');
const percent = new Intl.NumberFormat('en', { maximumSignificantDigits: 2 });
const smallestPercent = 0.05;
const minus = '\u2212';

const units = [[1e9, 'GB'], [1e6, 'MB'], [1e3, 'KB'], [1, 'bytes']];

const signed = (text, number) => (number < 0 ? minus : '+') + text;

export const formatWhole = (count) => whole.format(count);
export const formatCount = (count, noun, nouns = `${noun}s`) => `${whole.format(count)} ${count === 1 ? noun : nouns}`;
export const formatMilliseconds = (time) => (time < 100 ? time.toFixed(1) : whole.format(Math.round(time)));

function formatIn([size, name], bytes) {
  const number = bytes / size;
  const digits = size === 1 || number >= 100 ? 0 : 1;
  return [number.toLocaleString('en', { maximumFractionDigits: digits }), name];
}

const unitOf = (bytes) => units.find(([size]) => bytes >= size) ?? units.at(-1);

export const formatBytes = (bytes) => formatIn(unitOf(bytes), bytes).join(' ');

// Two sizes in one unit, "0.2 → 2.1 MB", unless one of them would be shown as 0.
export function formatBytesChange(before, after) {
  const unit = unitOf(Math.max(before, after));
  const [[was, name], [is]] = [formatIn(unit, before), formatIn(unit, after)];
  if (Math.min(before, after) < 0.1 * unit[0]) return `${formatBytes(before)} → ${formatBytes(after)}`;
  return `${was} → ${is} ${name}`;
}

// How much a count has changed: "10 times", "+25 %" or "−97 %"; empty if that says nothing.
export function formatShare(before, after) {
  const share = (100 * (after - before)) / Math.abs(before);
  if (!Number.isFinite(share) || Math.abs(share) < smallestPercent) return '';
  if (after >= 3 * before && before > 0) return `${percent.format(after / before)} times`;
  const shown = share < -99 && share > -100 ? Math.max(share, -99.9).toFixed(1) : percent.format(share);
  return `${signed(String(shown).replace('-', ''), share)} %`;
}

export const formatDifference = (before, after) => signed(whole.format(Math.abs(after - before)), after - before);

// Formats lengths, areas and volumes: four digits of the largest of them, so that columns align.
export function measureFormat(largest) {
  const digits = Math.min(Math.max(3 - Math.floor(Math.log10(Math.abs(largest) || 1)), 0), 12);
  if (largest >= 1e9 || digits > 9) return (number) => (number === 0 ? '0' : number.toExponential(3));
  return (number) => (Number(number.toFixed(digits)) || 0).toLocaleString('en', {
    minimumFractionDigits: digits, maximumFractionDigits: digits,
  }).replace('-', minus);
}
