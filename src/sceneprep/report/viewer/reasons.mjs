// Lists why surfaces were not merged, and findings. A click on a reason highlights its surfaces.
import { drawCallsOf } from './headline.mjs';
import { element, fillList, make } from './dom.mjs';
import { formatCount, formatWhole } from './format.mjs';

const mostListed = 12;

function reasonItem(group, choose) {
  const button = make('button', { type: 'button', className: 'reason' },
    make('strong', {}, group.material || 'no material'), ' ', make('span', {}, group.text));
  button.ariaPressed = 'false';
  button.addEventListener('click', () => choose(group, button));
  return make('li', {}, button);
}

function summaryOf({ drawCalls, neededByMaterials }) {
  const surplus = drawCalls - neededByMaterials;
  const needed = `${formatCount(drawCalls, 'draw call')}; the materials need ${formatWhole(neededByMaterials)}`;
  return surplus > 0 ? `${needed}. These are the reasons for the other ${formatWhole(surplus)}:` : `${needed}.`;
}

// Calls highlight(group) with the chosen group, or with undefined when it is released.
export function showReasons({ reasons, after }, highlight) {
  element('reasons-section').hidden = !reasons;
  if (!reasons) return;
  let chosen;
  const choose = (group, button) => {
    const released = chosen === button;
    if (chosen) chosen.ariaPressed = 'false';
    chosen = released ? undefined : button;
    button.ariaPressed = String(!released);
    highlight(released ? undefined : group);
  };
  const groups = [...reasons.groups].sort((a, b) => b.surplus - a.surplus);
  element('reasons-summary').textContent = summaryOf({ drawCalls: drawCallsOf(after), ...reasons });
  fillList(element('reasons'), groups.map((group) => reasonItem(group, choose)), mostListed);
}

// The names are those that the text does not have.
function findingItem({ text, names = [] }) {
  const others = names.filter((name) => !text.includes(name));
  if (others.length === 0) return make('li', {}, text);
  const list = make('p', { className: 'names' }, others.join(', '));
  return make('li', {}, make('details', {}, make('summary', {}, text), list));
}

export function showFindings({ findings = [] }) {
  element('findings-section').hidden = findings.length === 0;
  fillList(element('findings'), findings.map(findingItem), mostListed);
}
