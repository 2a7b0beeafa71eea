// The small models of the figures, as lists of faces. A face is a list of corners { position, normal } in
// counterclockwise order, without normals if a step computes them.

export const add = (a, b) => a.map((value, i) => value + b[i]);
export const scale = (a, factor) => a.map((value) => value * factor);
export const dot = (a, b) => a.reduce((sum, value, i) => sum + value * b[i], 0);
export const cross = (a, b) => [a[1] * b[2] - a[2] * b[1], a[2] * b[0] - a[0] * b[2], a[0] * b[1] - a[1] * b[0]];
export const subtract = (a, b) => a.map((value, i) => value - b[i]);
export const normalize = (a) => scale(a, 1 / (Math.hypot(...a) || 1));

// Points at both ends of a circle get the same coordinates.
const roundCoordinate = (value) => Math.round(value * 1e6) / 1e6 + 0;

// Splits a grid of points, [columns + 1][rows + 1], into triangles; degenerate ones are skipped.
function gridFaces(point, columns, rows) {
  const faces = [];
  for (let i = 0; i < columns; ++i) {
    for (let j = 0; j < rows; ++j) {
      const places = [[i, j], [i + 1, j], [i + 1, j + 1], [i, j + 1]];
      const [a, b, c, d] = places.map(([u, v]) => point(u / columns, v / rows));
      for (const positions of [[a, b, c], [a, c, d]])
        if (Math.hypot(...cross(subtract(positions[1], positions[0]), subtract(positions[2], positions[0]))) > 1e-9)
          faces.push(positions.map((position) => ({ position })));
    }
  }
  return faces;
}

// A sphere with dents, so that its faces can be told apart.
export function makeBall(columns, rows, dent = 0.09) {
  return gridFaces((u, v) => {
    const [around, down] = [2 * Math.PI * u, Math.PI * (1 - v)];
    const radius = 1 + dent * Math.sin(3 * around) * Math.sin(down) ** 2 * Math.sin(4 * down);
    const across = radius * Math.sin(down);
    return [across * Math.sin(around), radius * Math.cos(down), across * Math.cos(around)].map(roundCoordinate);
  }, columns, rows);
}

export function makeRing(radius, thickness, columns, rows) {
  return gridFaces((u, v) => {
    const [around, across] = [2 * Math.PI * u, -2 * Math.PI * v];
    const distance = radius + thickness * Math.cos(across);
    const point = [distance * Math.cos(around), thickness * Math.sin(across), distance * Math.sin(around)];
    return point.map(roundCoordinate);
  }, columns, rows);
}

// A box around the origin; each side is divided into parts by parts squares.
export function makeBox([x, y, z], parts = 1) {
  const faces = [];
  for (const axis of [0, 1, 2]) {
    for (const sign of [-1, 1]) {
      faces.push(...gridFaces((u, v) => {
        const point = [0, 0, 0];
        point[axis] = sign;
        point[(axis + 1) % 3] = sign * (2 * u - 1);
        point[(axis + 2) % 3] = 2 * v - 1;
        return [point[0] * x / 2, point[1] * y / 2, point[2] * z / 2];
      }, parts, parts));
    }
  }
  return faces;
}

// A cylinder about y with a lid on top.
export function makeBarrel(radius, height, columns, rows) {
  const onCircle = (u, r, y) => [r * Math.sin(2 * Math.PI * u), y, r * Math.cos(2 * Math.PI * u)];
  const wall = gridFaces((u, v) => onCircle(u, radius, height * (v - 0.5)), columns, rows);
  const lid = gridFaces((u, v) => onCircle(u, radius * (1 - v), height / 2), columns, rows);
  return [...wall, ...lid];
}

// A pseudorandom choice of about one in three numbers, the same on every run.
export const isPicked = (number) => ((Math.imul(number + 7, 2654435761) >>> 16) % 3) === 0;

export const moved = (faces, offset) =>
  faces.map((face) => face.map((corner) => ({ ...corner, position: add(corner.position, offset) })));

export const flipped = (face) => [face[0], face[2], face[1]];

export const faceNormal = (face) =>
  normalize(cross(subtract(face[1].position, face[0].position), subtract(face[2].position, face[0].position)));

// Gives each corner the normal that the function returns.
export const withNormals = (faces, normalOf) =>
  faces.map((face, f) => face.map((corner, c) => ({ ...corner, normal: normalOf(face, corner, 3 * f + c) })));
