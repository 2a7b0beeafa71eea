// Positions the camera.
import { Box3, Vector3 } from 'three';

const firstSide = new Vector3(0.62, 0.42, 0.66).normalize();

// Returns the bounds of all models, as centre and half the size.
export function joinBoxes(models) {
  const box = new Box3();
  for (const model of models) box.union(model.box);
  if (box.isEmpty()) box.expandByPoint(new Vector3());
  return { centre: box.getCenter(new Vector3()), half: box.getSize(new Vector3()).multiplyScalar(0.5) };
}

export const radiusOf = (box) => box.half.length() || 1;

function cornersOf({ half: { x, y, z } }) {
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
