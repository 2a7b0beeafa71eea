// Positions the camera.
import { Vector3 } from 'three';

const firstSide = new Vector3(0.62, 0.42, 0.66).normalize();

// Returns the bounding box of both views.
export function joinBoxes(pictures) {
  const filled = pictures.filter((picture) => picture.shown > 0);
  const side = (pick, name) => [0, 1, 2].map((axis) => (filled.length ? pick(...filled.map((p) => p[name][axis])) : 0));
  const min = side(Math.min, 'min');
  const max = side(Math.max, 'max');
  return {
    centre: min.map((low, axis) => (low + max[axis]) / 2),
    half: min.map((low, axis) => (max[axis] - low) / 2),
  };
}

export const radiusOf = (box) => Math.hypot(...box.half) || 1;

function cornersOf({ half: [x, y, z] }) {
  const signs = [-1, 1];
  return signs.flatMap((a) => signs.flatMap((b) => signs.map((c) => new Vector3(a * x, b * y, c * z))));
}

// Points the camera at the centre of the box, which is the origin, from the smallest distance that shows the whole box.
export function frame(camera, box) {
  camera.position.copy(firstSide);
  camera.lookAt(0, 0, 0);
  const steepest = Math.tan((camera.fov * Math.PI) / 360);
  const inverse = camera.quaternion.clone().invert();
  let distance = radiusOf(box) / 100;
  for (const corner of cornersOf(box)) {
    const { x, y, z } = corner.applyQuaternion(inverse);
    distance = Math.max(distance, z + Math.abs(y) / steepest, z + Math.abs(x) / (steepest * camera.aspect));
  }
  camera.position.multiplyScalar(distance * 1.03);
}

// Clip planes close to the scene give the depth buffer its best precision.
export function fitPlanes(camera, radius) {
  const distance = camera.position.length();
  camera.near = Math.max(distance - 1.1 * radius, radius / 2000);
  camera.far = distance + 1.1 * radius;
  camera.updateProjectionMatrix();
}
