// Draws one scene into one canvas.
import {
  BackSide, BufferAttribute, BufferGeometry, ColorManagement, DirectionalLight, DoubleSide, FrontSide, HemisphereLight,
  LinearSRGBColorSpace, Mesh, MeshBasicMaterial, MeshLambertMaterial, Scene, WebGLRenderer,
} from 'three';

// Colours are shown without conversion between colour spaces.
ColorManagement.enabled = false;

const backColor = 0xe6007e;

function makeGeometry(picture) {
  const geometry = new BufferGeometry();
  geometry.setAttribute('position', new BufferAttribute(picture.corners, 3, true));
  geometry.setAttribute('color', new BufferAttribute(new Uint8Array((picture.corners.length / 3) * 4), 4, true));
  return geometry;
}

function makeRenderer(canvas) {
  const renderer = new WebGLRenderer({ canvas, antialias: true, alpha: true });
  renderer.outputColorSpace = LinearSRGBColorSpace;
  renderer.setPixelRatio(window.devicePixelRatio);
  return renderer;
}

export class View {
  #canvas;
  #picture;
  #renderer;
  #scene = new Scene();
  #light = new DirectionalLight(0xffffff, 1.7);
  #front;
  #back;

  // Moves the scene so that its centre is at the origin, where single precision is best.
  constructor(canvas, picture, centre) {
    this.#canvas = canvas;
    this.#picture = picture;
    this.#renderer = makeRenderer(canvas);
    const geometry = makeGeometry(picture);
    const paint = new MeshLambertMaterial({ vertexColors: true, flatShading: true, side: DoubleSide });
    this.#front = new Mesh(geometry, paint);
    this.#back = new Mesh(geometry, new MeshBasicMaterial({ color: backColor, side: BackSide }));
    this.#back.visible = false;
    for (const mesh of [this.#front, this.#back]) {
      mesh.position.fromArray(picture.min.map((min, axis) => min - centre[axis]));
      mesh.scale.fromArray(picture.min.map((min, axis) => picture.max[axis] - min || 1));
      mesh.frustumCulled = false;
    }
    this.#scene.add(this.#front, this.#back, new HemisphereLight(0xffffff, 0x777788, 1.9), this.#light);
  }

  get aspect() {
    return this.#canvas.clientWidth / Math.max(this.#canvas.clientHeight, 1);
  }

  setColoring(coloring) {
    const colors = this.#front.geometry.getAttribute('color');
    let next = 0;
    for (const part of this.#picture.parts) {
      const color = coloring.colorOf(this.#picture, coloring.keyOf(part));
      const bytes = [color >> 16, (color >> 8) & 255, color & 255, 255];
      for (const end = next + 12 * part.triangles; next < end; next += 4) colors.array.set(bytes, next);
    }
    colors.needsUpdate = true;
  }

  setWireframe(wireframe) {
    this.#front.material.wireframe = this.#back.material.wireframe = wireframe;
  }

  markBacks(marked) {
    this.#back.visible = marked;
    this.#front.material.side = marked ? FrontSide : DoubleSide;
    this.#front.material.needsUpdate = true;
  }

  fitCanvas() {
    this.#renderer.setSize(this.#canvas.clientWidth, this.#canvas.clientHeight, false);
  }

  // The light is above and to the left of the camera.
  render(camera) {
    this.#light.position.set(-0.4, 0.5, 1).applyQuaternion(camera.quaternion);
    this.#renderer.render(this.#scene, camera);
  }
}
