// Ways to colour a view: the key of a surface that selects the colour, the colour of a key, and the name of a surface.

const plain = 0xb4b9be;
// So many materials are made at most.
const palette = 96;

// Consecutive numbers get hues that differ by the golden angle, and alternate between lighter and darker colours.
export function distinctColor(number) {
  const position = number % palette;
  const hue = (205 + position * 137.508) % 360;
  const lightness = [0.55, 0.42, 0.68][position % 3];
  const chroma = 0.55 * Math.min(lightness, 1 - lightness);
  const channel = (offset) => {
    const k = (offset + hue / 30) % 12;
    return Math.round(255 * (lightness - chroma * Math.max(-1, Math.min(k - 3, 9 - k, 1))));
  };
  return (channel(0) << 16) | (channel(8) << 8) | channel(4);
}

function materialLabel({ material, materialName }) {
  return material < 0 ? 'no material' : materialName || `material ${material + 1}`;
}

// The first one shows the materials as they are.
export const colorings = [
  { id: 'textured', label: 'Textured' },
  {
    id: 'surface',
    label: 'Surface',
    kind: 'surface',
    keyOf: ({ index }) => index,
    colorOf: distinctColor,
    nameOf: (surface) => `${surface.nodeName}, ${materialLabel(surface)}`,
  },
  {
    id: 'material',
    label: 'Material',
    kind: 'material',
    keyOf: ({ material }) => material,
    colorOf: (material) => (material < 0 ? plain : distinctColor(material)),
    nameOf: materialLabel,
  },
  {
    id: 'offset',
    label: 'Collision offset',
    kind: 'offset',
    keyOf: ({ offset }) => offset,
    colorOf: (offset) => (offset === 0 ? plain : distinctColor(Math.abs(offset))),
    nameOf: ({ offset }) => (offset === 0 ? 'no offset' : `offset ${offset}`),
  },
];

export const textured = colorings[0];

// Lists the colours of a view, ordered by the number of triangles that they cover.
export function listColors(surfaces, { keyOf, colorOf, nameOf }) {
  const colors = new Map();
  for (const surface of surfaces) {
    const key = keyOf(surface);
    if (!colors.has(key)) colors.set(key, { color: colorOf(key), name: nameOf(surface), triangles: 0 });
    colors.get(key).triangles += surface.triangles;
  }
  return [...colors.values()].sort((a, b) => b.triangles - a.triangles);
}
