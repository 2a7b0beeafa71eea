// Two views side by side that share one camera.
import { PerspectiveCamera } from 'three';
import { OrbitControls } from 'three/addons/controls/OrbitControls.js';
import { fitPlanes, frame, joinBoxes, radiusOf } from './framing.mjs';
import { View } from './View.mjs';

const rotationStep = Math.PI / 36;
const zoomStep = 0.9;

export class Stage {
  #element;
  #views;
  #box;
  #camera = new PerspectiveCamera(30);
  #controls;
  #isFrameRequested = false;

  constructor(element, canvases, pictures) {
    this.#element = element;
    this.#box = joinBoxes(pictures);
    this.#views = canvases.map((canvas, i) => new View(canvas, pictures[i], this.#box.centre));
    this.#controls = new OrbitControls(this.#camera, element);
    this.#controls.minDistance = radiusOf(this.#box) / 1000;
    this.#controls.maxDistance = radiusOf(this.#box) * 50;
    this.#controls.addEventListener('change', () => this.#requestFrame());
    element.addEventListener('keydown', (event) => this.#handleKey(event));
    new ResizeObserver(() => this.#resize()).observe(element);
    this.#resize();
    this.reset();
  }

  setColoring(coloring) {
    this.#change((view) => view.setColoring(coloring));
  }

  setWireframe(wireframe) {
    this.#change((view) => view.setWireframe(wireframe));
  }

  markBacks(marked) {
    this.#change((view) => view.markBacks(marked));
  }

  reset() {
    this.#controls.target.set(0, 0, 0);
    frame(this.#camera, this.#box);
    this.#controls.update();
    this.#requestFrame();
  }

  #change(action) {
    this.#views.forEach(action);
    this.#requestFrame();
  }

  #resize() {
    this.#camera.aspect = this.#views[0].aspect;
    this.#change((view) => view.fitCanvas());
  }

  // Several changes are drawn in one frame.
  #requestFrame() {
    if (this.#isFrameRequested) return;
    this.#isFrameRequested = true;
    requestAnimationFrame(() => {
      this.#isFrameRequested = false;
      fitPlanes(this.#camera, radiusOf(this.#box));
      this.#views.forEach((view) => view.render(this.#camera));
    });
  }

  #handleKey(event) {
    const actions = {
      ArrowLeft: () => this.#controls.rotateLeft(-rotationStep),
      ArrowRight: () => this.#controls.rotateLeft(rotationStep),
      ArrowUp: () => this.#controls.rotateUp(-rotationStep),
      ArrowDown: () => this.#controls.rotateUp(rotationStep),
      '+': () => this.#controls.dollyIn(zoomStep),
      '-': () => this.#controls.dollyOut(zoomStep),
    };
    const action = actions[event.key];
    if (!action || event.ctrlKey || event.altKey || event.metaKey) return;
    event.preventDefault();
    action();
  }
}
