// Builds and reads elements of the page. Texts from files are set as text, never as markup.

export const element = (id) => document.getElementById(id);

export function make(tag, properties = {}, ...children) {
  const made = Object.assign(document.createElement(tag), properties);
  made.append(...children);
  return made;
}

// Fills a list; of long lists the first items are shown, and the others below a line that can be unfolded.
export function fillList(list, items, most = Infinity) {
  list.replaceChildren(...items.slice(0, most));
  if (items.length <= most) return;
  const rest = make('ul', {}, ...items.slice(most));
  const more = make('details', {}, make('summary', {}, `${items.length - most} more`), rest);
  list.append(make('li', { className: 'more' }, more));
}
