// Makes models that show what the renderer of the report does not: vertices, normals and texture coordinates.
import { cross, dot, add, makeBox, moved, normalize, scale, subtract } from './models.mjs';

const body = 0xd9c7a3;
const vertexColor = 0xc1440e;
const goodColor = 0x1f5f6b;
const checkerLight = 0xf6efe0;
const checkerColors = [0x2f7f86, 0x5d7f72, 0x8c7f5e, 0xb67a49, 0xcf6a3c];

const cornersOf = (mesh, triangle) => triangle.map((index) => mesh.vertices[index]);

// Moves corners that no other triangle uses towards the centre of their triangle.
function shrinkLooseCorners(mesh, factor) {
  const uses = new Map();
  for (const index of mesh.triangles.flat()) uses.set(index, (uses.get(index) ?? 0) + 1);
  return mesh.triangles.map((triangle) => {
    const centre = scale(cornersOf(mesh, triangle).reduce((sum, { position }) => add(sum, position), [0, 0, 0]), 1 / 3);
    return triangle.map((index) => {
      const { position } = mesh.vertices[index];
      return { position: uses.get(index) > 1 ? position : add(centre, scale(subtract(position, centre), factor)) };
    });
  });
}

// Triangles with a dot for every vertex; triangles without shared vertices are apart from their neighbours.
export function showVertices(meshes, dotSize) {
  const faces = meshes.flatMap((mesh) => shrinkLooseCorners(mesh, 0.78));
  const places = new Map(faces.flat().map(({ position }) => [position.join(), position]));
  const dots = [...places.values()].flatMap((place) => moved(makeBox([dotSize, dotSize, dotSize]), place));
  return [{ name: 'Mesh', color: body, faces }, { name: 'Vertices', color: vertexColor, faces: dots }];
}

// A thin pyramid that starts at a point.
function makeNeedle(from, direction, length, width) {
  const side = normalize(cross(direction, Math.abs(direction[1]) < 0.9 ? [0, 1, 0] : [1, 0, 0]));
  const other = cross(direction, side);
  const tip = add(from, scale(direction, length));
  const base = [0, 1, 2].map((i) => {
    const [c, s] = [Math.cos((2 * Math.PI * i) / 3), Math.sin((2 * Math.PI * i) / 3)];
    return add(from, add(scale(side, width * c), scale(other, width * s)));
  });
  return base.map((point, i) => [point, base[(i + 1) % 3], tip].map((position) => ({ position })));
}

// Triangles with a needle for every normal; normals that point inwards are drawn outside, in another colour.
export function showNormals(meshes, length) {
  const needles = { good: [], bad: [] };
  const drawn = new Set();
  for (const mesh of meshes) {
    for (const triangle of mesh.triangles) {
      const corners = cornersOf(mesh, triangle);
      const [a, b, c] = corners.map(({ position }) => position);
      const front = cross(subtract(b, a), subtract(c, a));
      for (const { position, normal } of corners) {
        const key = [...position, ...normal].map((value) => value.toFixed(4)).join();
        if (drawn.has(key)) continue;
        drawn.add(key);
        const isGood = dot(front, normal) >= 0;
        const outwards = scale(normal, isGood ? 1 : -1);
        needles[isGood ? 'good' : 'bad'].push(...makeNeedle(position, outwards, length, 0.09 * length));
      }
    }
  }
  const faces = meshes.flatMap((mesh) => mesh.triangles.map((triangle) => cornersOf(mesh, triangle)));
  return [
    { name: 'Mesh', color: body, faces: faces.map((face) => face.map(({ position }) => ({ position }))) },
    { name: 'Outwards', color: goodColor, faces: needles.good },
    { name: 'Inwards', color: vertexColor, faces: needles.bad },
  ].filter((object) => object.faces.length > 0);
}

// Colours each triangle by its texture coordinates: five by five fields for each unit, u from green to red.
export function showUVs(meshes) {
  const groups = new Map();
  for (const mesh of meshes) {
    for (const triangle of mesh.triangles) {
      const corners = cornersOf(mesh, triangle);
      const [u, v] = [0, 1].map((i) => corners.reduce((sum, { uv }) => sum + uv[i], 0) / 3);
      const isLight = (Math.floor(5 * u) + Math.floor(5 * v)) % 2 === 0;
      const color = isLight ? checkerLight : checkerColors[Math.floor(5 * (u - Math.floor(u)))];
      if (!groups.has(color)) groups.set(color, []);
      groups.get(color).push(corners.map(({ position }) => ({ position })));
    }
  }
  return [...groups].map(([color, faces]) => ({ name: `Fields-${color}`, color, faces }));
}
