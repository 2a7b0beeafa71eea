// Ways to colour a view: the key of a part that selects the colour, the colour of a key, and the name of a key.

const plain = 0xb4b9be;

// Consecutive numbers get hues that differ by the golden angle, and alternate between lighter and darker colours.
export function distinctColor(number) {
  const hue = (205 + number * 137.508) % 360;
  const lightness = [0.55, 0.42, 0.68][number % 3];
  const chroma = 0.55 * Math.min(lightness, 1 - lightness);
  const channel = (offset) => {
    const k = (offset + hue / 30) % 12;
    return Math.round(255 * (lightness - chroma * Math.max(-1, Math.min(k - 3, 9 - k, 1))));
  };
  return (channel(0) << 16) | (channel(8) << 8) | channel(4);
}

const nodeName = (picture, node) => picture.nodeNames[node] || `node ${node + 1}`;

function materialName(picture, material) {
  return material < 0 ? 'no material' : picture.materialNames[material] || `material ${material + 1}`;
}

function surfaceName(picture, surface) {
  const { node, material } = picture.parts[surface];
  return `${nodeName(picture, node)}, ${materialName(picture, material)}`;
}

export const colorings = [
  {
    id: 'diffuse',
    label: 'Diffuse colour',
    keyOf: (part) => part.material,
    colorOf: (picture, material) => picture.materialColors[material] ?? plain,
    nameOf: materialName,
    kind: 'material',
  },
  {
    id: 'material',
    label: 'Material',
    keyOf: (part) => part.material,
    colorOf: (picture, material) => (material < 0 ? plain : distinctColor(material)),
    nameOf: materialName,
    kind: 'material',
  },
  {
    id: 'surface',
    label: 'Surface',
    keyOf: (part) => part.surface,
    colorOf: (picture, surface) => distinctColor(surface),
    nameOf: surfaceName,
    kind: 'surface',
  },
  {
    id: 'node',
    label: 'Node',
    keyOf: (part) => part.node,
    colorOf: (picture, node) => distinctColor(node),
    nameOf: nodeName,
    kind: 'node',
  },
  {
    id: 'offset',
    label: 'Collision offset',
    keyOf: (part) => part.collisionOffset,
    colorOf: (picture, offset) => (offset === 0 ? plain : distinctColor(offset)),
    nameOf: (picture, offset) => (offset === 0 ? 'no offset' : `offset ${offset}`),
    kind: 'offset',
  },
];

// Lists the colours of a view, ordered by the number of triangles that they cover.
export function listColors(picture, coloring) {
  const triangles = new Map();
  for (const part of picture.parts) {
    const key = coloring.keyOf(part);
    triangles.set(key, (triangles.get(key) ?? 0) + part.triangles);
  }
  return [...triangles]
    .sort((a, b) => b[1] - a[1])
    .map(([key]) => ({ color: coloring.colorOf(picture, key), name: coloring.nameOf(picture, key) }));
}
