// The materials of a view that are not those of its file. Surfaces that look alike share a material.
import {
  BackSide, Color, DoubleSide, LineBasicMaterial, MeshBasicMaterial, MeshLambertMaterial, PointsMaterial,
} from 'three';

const backColor = 0xe6007e;
export const highlightColor = 0xff7a00;
export const dimColor = 0xc4cad0;
const highlighted = { color: highlightColor, emissive: new Color(0x4a1c00) };
const dimmed = { color: dimColor, transparent: true, opacity: 0.16, depthWrite: false };

function makePaint({ isMesh, isPoints, geometry }, { emissive, ...look }) {
  if (isPoints) return new PointsMaterial({ ...look, size: 3, sizeAttenuation: false, toneMapped: false });
  if (!isMesh) return new LineBasicMaterial({ ...look, toneMapped: false });
  const flatShading = !geometry.attributes.normal;
  return new MeshLambertMaterial({ ...look, emissive: emissive ?? 0, side: DoubleSide, flatShading, toneMapped: false });
}

const kindOf = ({ isMesh, isPoints, geometry }) =>
  (isPoints ? 'points' : isMesh ? `mesh ${Boolean(geometry.attributes.normal)}` : 'lines');

export class Paints {
  #made = new Map();

  // Closer to the camera than what it is drawn over.
  back = new MeshBasicMaterial({
    color: backColor, side: BackSide, toneMapped: false, polygonOffset: true, polygonOffsetUnits: -1,
  });

  plain(object, color) {
    return this.#find(color, object, { color });
  }

  highlight(object) {
    return this.#find('highlight', object, highlighted);
  }

  dim(object) {
    return this.#find('dim', object, dimmed);
  }

  #find(use, object, look) {
    const key = `${use} ${kindOf(object)}`;
    if (!this.#made.has(key)) this.#made.set(key, makePaint(object, look));
    return this.#made.get(key);
  }
}
