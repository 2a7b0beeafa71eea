// Draws many surfaces in few draw calls, so that large scenes can be rotated: surfaces with the same material and the
// same vertex layout become one batch. Each keeps its own colour.
import { BatchedMesh, Color, Group, Matrix4 } from 'three';

const mirror = new Matrix4().makeScale(-1, 1, 1);

function animatedNames({ animations }) {
  const tracks = animations.flatMap((clip) => clip.tracks);
  return new Set(tracks.map(({ name }) => name.slice(0, name.lastIndexOf('.'))));
}

function isMoving(object, animated) {
  for (let at = object; at; at = at.parent) if (animated.has(at.name) || animated.has(at.uuid)) return true;
  return false;
}

function canBeBatched({ object }, animated) {
  const isPlain = object.isMesh && !object.isSkinnedMesh && !object.isInstancedMesh && !object.morphTargetInfluences;
  return isPlain && !isMoving(object, animated);
}

function layoutOf({ object: { geometry, matrixWorld }, look }) {
  const attributes = Object.entries(geometry.attributes)
    .map(([name, { itemSize, normalized, array }]) => `${name} ${itemSize} ${normalized} ${array.constructor.name}`);
  return [look.uuid, Boolean(geometry.index), matrixWorld.determinant() < 0, ...attributes.sort()].join();
}

function groupByLayout(surfaces) {
  const groups = new Map();
  for (const surface of surfaces) {
    const layout = layoutOf(surface);
    if (!groups.has(layout)) groups.set(layout, []);
    groups.get(layout).push(surface);
  }
  return [...groups.values()];
}

// The matrix of a batch decides which side of its triangles is the front.
function makeBatch(surfaces) {
  const geometries = [...new Set(surfaces.map(({ object }) => object.geometry))];
  const sum = (countOf) => geometries.reduce((total, geometry) => total + countOf(geometry), 0);
  const batch = new BatchedMesh(surfaces.length, sum((one) => one.attributes.position.count),
    sum((one) => one.index?.count ?? 0), surfaces[0].look);
  const isMirrored = surfaces[0].object.matrixWorld.determinant() < 0;
  if (isMirrored) batch.applyMatrix4(mirror);
  const numbers = new Map(geometries.map((geometry) => [geometry, batch.addGeometry(geometry)]));
  const matrix = new Matrix4();
  for (const surface of surfaces) {
    const instance = batch.addInstance(numbers.get(surface.object.geometry));
    matrix.copy(surface.object.matrixWorld);
    batch.setMatrixAt(instance, isMirrored ? matrix.premultiply(mirror) : matrix);
    surface.batch = { mesh: batch, instance };
  }
  batch.sortObjects = surfaces[0].look.transparent;
  return batch;
}

// Replaces what does not move by batches. Returns how many there are.
export function batchSurfaces(model) {
  const animated = animatedNames(model);
  const still = model.surfaces.filter((surface) => canBeBatched(surface, animated));
  const batches = groupByLayout(still).map(makeBatch);
  const root = new Group();
  if (still.length < model.surfaces.length || model.animations.length > 0) root.add(model.scene);
  for (const { object } of still) object.layers.disableAll();
  root.add(...batches);
  model.scene = root;
  return batches.length;
}

const tint = new Color();

export function colorInstance({ mesh, instance }, color) {
  mesh.setColorAt(instance, tint.setHex(color));
}
