// Reads the data from the elements of the page.
import { element } from './dom.mjs';

export const readJson = (id) => JSON.parse(element(id).textContent);

// Returns the bytes of a base64 text and removes its element, whose text would take memory.
export function takeBytes(id) {
  const holder = element(id);
  const text = atob(holder.textContent);
  holder.remove();
  const bytes = new Uint8Array(text.length);
  for (let i = 0; i < text.length; ++i) bytes[i] = text.charCodeAt(i);
  return bytes;
}
