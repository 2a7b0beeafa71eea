// Two views side by side that one camera looks at.
import { PerspectiveCamera } from 'three';
import { OrbitControls } from 'three/addons/controls/OrbitControls.js';
import { fitPlanes, frame, joinBoxes, radiusOf } from './framing.mjs';
import { View } from './View.mjs';

const turn = Math.PI / 36;
const approach = 0.9;

export class Stage {
  #element;
  #views;
  #box;
  #camera = new PerspectiveCamera(30);
  #controls;
  #isAwaitingFrame = false;

  constructor(element, canvases, pictures) {
    this.#element = element;
    this.#box = joinBoxes(pictures);
    this.#views = canvases.map((canvas, i) => new View(canvas, pictures[i], this.#box.centre));
    this.#controls = new OrbitControls(this.#camera, element);
    this.#controls.minDistance = radiusOf(this.#box) / 1000;
    this.#controls.maxDistance = radiusOf(this.#box) * 50;
    this.#controls.addEventListener('change', () => this.#ask());
    element.addEventListener('keydown', (event) => this.#obey(event));
    new ResizeObserver(() => this.#fit()).observe(element);
    this.#fit();
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
    this.#ask();
  }

  #change(action) {
    this.#views.forEach(action);
    this.#ask();
  }

  #fit() {
    this.#camera.aspect = this.#views[0].aspect;
    this.#change((view) => view.fitCanvas());
  }

  // However much changes, one frame shows it.
  #ask() {
    if (this.#isAwaitingFrame) return;
    this.#isAwaitingFrame = true;
    requestAnimationFrame(() => {
      this.#isAwaitingFrame = false;
      fitPlanes(this.#camera, radiusOf(this.#box));
      this.#views.forEach((view) => view.render(this.#camera));
    });
  }

  #obey(event) {
    const actions = {
      ArrowLeft: () => this.#controls.rotateLeft(-turn),
      ArrowRight: () => this.#controls.rotateLeft(turn),
      ArrowUp: () => this.#controls.rotateUp(-turn),
      ArrowDown: () => this.#controls.rotateUp(turn),
      '+': () => this.#controls.dollyIn(approach),
      '-': () => this.#controls.dollyOut(approach),
    };
    const action = actions[event.key];
    if (!action || event.ctrlKey || event.altKey || event.metaKey) return;
    event.preventDefault();
    action();
  }
}
