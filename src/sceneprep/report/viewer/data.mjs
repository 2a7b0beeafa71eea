// Reads the data from the elements of the page.

export const element = (id) => document.getElementById(id);

export const readJson = (id) => JSON.parse(element(id).textContent);

function readBytes(id) {
  const text = atob(element(id).textContent);
  const bytes = new Uint8Array(text.length);
  for (let i = 0; i < text.length; ++i) bytes[i] = text.charCodeAt(i);
  return bytes;
}

// Reads one view of the scene: its bounding box, its triangles as 16-bit positions in that box, and its parts.
export function readPicture(id) {
  const corners = new Uint16Array(readBytes(`${id}-corners`).buffer);
  const numbers = new Int32Array(readBytes(`${id}-parts`).buffer);
  const parts = [];
  for (let i = 0; i < numbers.length; i += 4) {
    const [triangles, node, material, collisionOffset] = numbers.subarray(i, i + 4);
    parts.push({ triangles, node, material, collisionOffset, surface: parts.length });
  }
  return { ...readJson(id), corners, parts, shown: corners.length / 9 };
}
