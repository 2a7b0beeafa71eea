// Lists the positions of what a model shows, by which the camera is placed.
import { Vector3 } from 'three';

// Of larger meshes some vertices are skipped if there are many in all.
const smallMesh = 1000;
const manyVertices = 500000;

const countOf = ({ object }) => object.geometry.attributes.position.count;

function positionOf(object, index, point) {
  if (object.isMesh) object.getVertexPosition(index, point); // as joints and morph targets move it
  else point.fromBufferAttribute(object.geometry.attributes.position, index);
  return point.applyMatrix4(object.matrixWorld);
}

// Returns [3 * points] coordinates.
export function listPoints(surfaces) {
  const vertices = surfaces.reduce((sum, surface) => sum + countOf(surface), 0);
  const stepOf = (surface) => (countOf(surface) > smallMesh ? Math.ceil(vertices / manyVertices) : 1);
  const length = surfaces.reduce((sum, surface) => sum + Math.ceil(countOf(surface) / stepOf(surface)), 0);
  const points = new Float32Array(3 * length);
  const point = new Vector3();
  let next = 0;
  for (const surface of surfaces) {
    for (let i = 0; i < countOf(surface); i += stepOf(surface), next += 3)
      positionOf(surface.object, i, point).toArray(points, next);
  }
  return points;
}
