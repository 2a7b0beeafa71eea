// The figures: how their pages are made, and what is shown of them.
//
// A figure has the file of its page and optionally the colouring, the titles and captions of both sides, the number of
// zoom steps, whether back faces are marked, and whether the legend is shown.
import { readGlb } from './files.mjs';
import { showNormals, showUVs, showVertices } from './illustrations.mjs';
import {
  faceNormal, flipped, isPicked, makeBall, makeBarrel, makeBox, makeRing, moved, normalize, withNormals,
} from './models.mjs';

const gray = 0xb4b9be;

const countVertices = (meshes) => meshes.reduce((sum, mesh) => sum + mesh.vertices.length, 0);

function weld(runs) {
  const faces = withNormals(makeBall(14, 8), (face, { position }) => normalize(position));
  const input = runs.writeModel([{ name: 'Ball', color: gray, faces }]);
  const [before, after] = [[], ['--weld']].map((steps) => readGlb(runs.prepare(input, steps)));
  return {
    page: runs.pageOfModels(showVertices(before, 0.045), showVertices(after, 0.045)),
    captions: [before, after].map((meshes) => `${countVertices(meshes)} vertices`),
    zoom: 4,
  };
}

function normals(runs) {
  const shapes = [...makeRing(0.72, 0.34, 16, 12), ...moved(makeBox([0.9, 0.9, 0.9]), [1.25, 0.11, -1.25])];
  const faces = withNormals(shapes, (face) => faceNormal(face));
  const input = runs.writeModel([{ name: 'Shapes', color: gray, faces }]);
  const [before, after] = [[], ['--weld', '--normals']].map((steps) => readGlb(runs.prepare(input, steps)));
  return {
    page: runs.pageOfModels(showNormals(before, 0.24), showNormals(after, 0.24)),
    captions: ['one normal per face', 'smooth ring, box with hard edges'],
    zoom: 3,
  };
}

function unifyNormals(runs) {
  const numberOf = (position) => position.reduce((sum, value, i) => sum + Math.round(value * 1000) * (i + 1) * 31, 0);
  const faces = withNormals(makeBall(18, 11), (face, { position }) =>
    normalize(position).map((value) => (isPicked(numberOf(position)) ? -value : value)));
  const input = runs.writeModel([{ name: 'Ball', color: gray, faces }]);
  const [before, after] = [[], ['--unify-normals']].map((steps) => readGlb(runs.prepare(input, steps)));
  return {
    page: runs.pageOfModels(showNormals(before, 0.28), showNormals(after, 0.28)),
    captions: ['some normals point inwards (red)', 'all normals point outwards'],
    zoom: 4,
  };
}

function fixCulling(runs) {
  const faces = withNormals(makeBall(36, 18), (face, { position }) => normalize(position));
  const wrong = faces.map((face, i) => (isPicked(i) ? flipped(face) : face));
  return {
    page: runs.pageOfRun(runs.writeModel([{ name: 'Ball', color: 0x7c9a6e, faces: wrong }]), ['--fix-culling']),
    captions: ['some triangles show their back faces (pink)', 'all triangles show their front faces'],
    markBacks: true,
    zoom: 4,
  };
}

function uvs(runs, mapping) {
  const shapes = [
    moved(makeBox([1.9, 1, 1], 80), [-1.05, -0.45, 1]),
    moved(makeBall(160, 80, 0), [-0.75, 0, -1.15]),
    moved(makeBarrel(0.62, 1.9, 160, 80), [1.45, 0, -0.1]),
  ];
  const input = runs.writeModel(shapes.map((faces, i) => ({ name: `Shape${i}`, color: gray, faces })));
  const sides = [mapping, `${mapping}:0:world`].map((option) =>
    showUVs(readGlb(runs.prepare(input, ['--weld', '--normals', '--uvs', option]))));
  return { page: runs.pageOfModels(...sides), titles: ['Bounding box', 'World units'], captions: ['', ''], zoom: 2 };
}

function collisionOffsets(runs) {
  const blocks = [
    [[2.2, 0.5, 2.2], [-0.9, 0.25, -0.1]], [[1, 1.1, 1], [-1.5, 0.75, -0.3]], [[1.2, 0.8, 0.9], [-0.6, 0.7, 0.35]],
    [[1.3, 0.35, 0.7], [0.55, 0.275, 0.6]], [[0.8, 0.8, 0.8], [1.75, 0.4, -0.9]], [[0.8, 0.4, 0.8], [1.75, 1, -0.9]],
    [[0.7, 0.7, 0.7], [2, 0.35, 1.3]],
  ];
  const objects = blocks.map(([size, place], i) => {
    return { name: `Block${i}`, color: gray, faces: moved(makeBox(size), place) };
  });
  return {
    page: runs.pageOfRun(runs.writeModel(objects), ['--collision-offsets']),
    coloring: 'offset',
    captions: ['all offsets are 0', 'overlapping surfaces have different offsets'],
    legend: true,
  };
}

// The captions are the numbers of surfaces, which the page counts.
const flatten = (runs, workshop) => ({
  page: runs.pageOfRun(workshop, ['--flatten']),
  coloring: 'surface',
  zoom: 8,
});

// Returns the figures by the names of their images; each is made when its function is called.
export const makeFigures = (runs, workshop) => ({
  flatten: () => flatten(runs, workshop),
  weld: () => weld(runs),
  normals: () => normals(runs),
  'unify-normals': () => unifyNormals(runs),
  'fix-culling': () => fixCulling(runs),
  'collision-offsets': () => collisionOffsets(runs),
  ...Object.fromEntries(['planar-x', 'planar-y', 'planar-z', 'cubic', 'cylindrical']
    .map((mapping) => [`uvs-${mapping}`, () => uvs(runs, mapping)])),
});
