// Positions the camera.
import { Box3, Vector3 } from 'three';

const firstSide = new Vector3(0.62, 0.42, 0.66).normalize();
const place = new Vector3();

// Returns the bounds of all models, as centre and half the size.
export function joinBoxes(models) {
  const box = new Box3();
  for (const model of models) box.union(model.box);
  if (box.isEmpty()) box.expandByPoint(new Vector3());
  return { centre: box.getCenter(new Vector3()), half: box.getSize(new Vector3()).multiplyScalar(0.5) };
}

export const radiusOf = (box) => box.half.length() || 1;

// Points the camera at the centre of the box, which is moved to the origin, from the smallest distance that shows all
// points of some lists.
export function frame(camera, box, lists) {
  camera.position.copy(firstSide);
  camera.lookAt(0, 0, 0);
  const steepest = Math.tan((camera.fov * Math.PI) / 360);
  const inverse = camera.quaternion.clone().invert();
  let distance = radiusOf(box) / 100;
  for (const points of lists) {
    for (let i = 0; i < points.length; i += 3) {
      const { x, y, z } = place.fromArray(points, i).sub(box.centre).applyQuaternion(inverse);
      distance = Math.max(distance, z + Math.abs(y) / steepest, z + Math.abs(x) / (steepest * camera.aspect));
    }
  }
  camera.position.multiplyScalar(distance * 1.04);
}

// Clip planes close to the scene give the depth buffer its best precision.
export function fitPlanes(camera, radius) {
  const distance = camera.position.length();
  camera.near = Math.max(distance - 1.1 * radius, radius / 2000);
  camera.far = distance + 1.1 * radius;
  camera.updateProjectionMatrix();
}
