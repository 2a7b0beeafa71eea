// Draws one model into one canvas.
import { DataTexture, DirectionalLight, HemisphereLight, NeutralToneMapping, Scene, WebGLRenderer } from 'three';
import { colorInstance } from './batches.mjs';
import { textured } from './colorings.mjs';
import { dimColor, highlightColor, Paints } from './paints.mjs';

const white = 0xffffff;
// The mapping of environments that are ready for use; three.js does not export it.
const cubeUVReflectionMapping = 306;

function makeRenderer(canvas) {
  const renderer = new WebGLRenderer({ canvas, antialias: true, alpha: true });
  renderer.setPixelRatio(window.devicePixelRatio);
  renderer.toneMapping = NeutralToneMapping;
  return renderer;
}

// Metals reflect an even light, as a texture in the form that three.js computes of other environments. The lights of the
// file are not used, so that both views are lit alike.
function makeEvenLight() {
  const [width, height] = [336, 64];
  const texture = new DataTexture(new Uint8Array(4 * width * height).fill(255), width, height);
  texture.mapping = cubeUVReflectionMapping;
  texture.needsUpdate = true;
  return texture;
}

export class View {
  #canvas;
  #surfaces;
  #renderer;
  #scene = new Scene();
  #evenLight = makeEvenLight();
  #light = new DirectionalLight(0xffffff);
  #sky = new HemisphereLight(0xffffff, 0x777788, 2);
  #paints = new Paints();
  #coloring = textured;
  #chosen = new Set();
  #isWireframe = false;
  #marksBacks = false;

  // Moves the scene so that its centre is at the origin, where single precision is best.
  constructor(canvas, model, centre) {
    this.#canvas = canvas;
    this.#surfaces = model.surfaces;
    this.#renderer = makeRenderer(canvas);
    this.#scene.environmentIntensity = 0.3;
    model.scene.position.sub(centre);
    this.#scene.add(model.scene, this.#sky, this.#light);
  }

  get aspect() {
    return this.#canvas.clientWidth / Math.max(this.#canvas.clientHeight, 1);
  }

  setColoring(coloring) {
    this.#coloring = coloring;
    this.#paint();
  }

  // Shows these surfaces in one colour and the others faintly; none: shows all as usual.
  highlight(surfaces) {
    this.#chosen = new Set(surfaces);
    this.#paint();
  }

  setWireframe(isWireframe) {
    this.#isWireframe = isWireframe;
    this.#paint();
  }

  markBacks(marksBacks) {
    this.#marksBacks = marksBacks;
  }

  fitCanvas() {
    this.#renderer.setSize(this.#canvas.clientWidth, this.#canvas.clientHeight, false);
  }

  // The light is above and to the left of the camera.
  render(camera) {
    this.#light.position.set(-0.4, 0.5, 1).applyQuaternion(camera.quaternion);
    this.#renderer.render(this.#scene, camera);
    if (this.#marksBacks) this.#renderBacks(camera);
  }

  // Draws the back faces again, over what is drawn of them.
  #renderBacks(camera) {
    this.#scene.overrideMaterial = this.#paints.back;
    this.#renderer.autoClear = false;
    this.#renderer.render(this.#scene, camera);
    this.#renderer.autoClear = true;
    this.#scene.overrideMaterial = null;
  }

  #paint() {
    const isPlain = this.#coloring !== textured || this.#chosen.size > 0;
    this.#scene.environment = isPlain ? null : this.#evenLight;
    this.#sky.intensity = isPlain ? 2 : 1.6;
    this.#light.intensity = isPlain ? 2 : 2.2;
    for (const surface of this.#surfaces) {
      const material = surface.batch ? this.#paintInBatch(surface) : this.#paintOf(surface);
      material.wireframe = this.#isWireframe;
      (surface.batch?.mesh ?? surface.object).material = material;
    }
    this.#paints.back.wireframe = this.#isWireframe;
  }

  #paintOf(surface) {
    const { object, look } = surface;
    if (this.#chosen.size > 0) return this.#chosen.has(surface) ? this.#paints.highlight(object) : this.#paints.dim(object);
    return this.#coloring === textured ? look : this.#paints.plain(object, this.#colorOf(surface));
  }

  // Surfaces of a batch share a material, which their colours multiply.
  #paintInBatch(surface) {
    const isTextured = this.#coloring === textured && this.#chosen.size === 0;
    colorInstance(surface.batch, isTextured ? white : this.#colorOf(surface));
    return isTextured ? surface.look : this.#paints.plain(surface.batch.mesh, white);
  }

  #colorOf(surface) {
    if (this.#chosen.size > 0) return this.#chosen.has(surface) ? highlightColor : dimColor;
    return this.#coloring.colorOf(this.#coloring.keyOf(surface));
  }
}
