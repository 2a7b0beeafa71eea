// The views, side by side, that share one camera and one clock.
import { PerspectiveCamera, Timer } from 'three';
import { OrbitControls } from 'three/addons/controls/OrbitControls.js';
import { fitPlanes, frame, joinBoxes, radiusOf } from './framing.mjs';
import { Player } from './Player.mjs';
import { View } from './View.mjs';

const rotationStep = Math.PI / 36;
const zoomStep = 0.9;
const longestFrame = 0.1;

export class Stage {
  #views;
  #box;
  #points;
  #camera = new PerspectiveCamera(30);
  #controls;
  #timer = new Timer();
  #isFrameRequested = false;
  player;

  // One canvas for each model.
  constructor(element, canvases, models) {
    this.#box = joinBoxes(models);
    this.#points = models.map(({ points }) => points);
    this.#views = models.map((model, i) => new View(canvases[i], model, this.#box.centre));
    this.player = new Player(models);
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

  // Highlights the surfaces of each view, of lists in the order of the models.
  highlight(lists) {
    this.#change((view, i) => view.highlight(lists[i]));
  }

  setWireframe(isWireframe) {
    this.#change((view) => view.setWireframe(isWireframe));
  }

  markBacks(marksBacks) {
    this.#change((view) => view.markBacks(marksBacks));
  }

  choose(clip) {
    this.player.choose(clip);
    this.player.advance(0);
    this.#requestFrame();
  }

  play(isPlaying) {
    this.player.isPlaying = isPlaying;
    this.#timer.update();
    this.#requestFrame();
  }

  reset() {
    this.#controls.target.set(0, 0, 0);
    frame(this.#camera, this.#box, this.#points);
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

  // Several changes are drawn in one frame; while a clip plays, a frame follows each frame.
  #requestFrame() {
    if (this.#isFrameRequested) return;
    this.#isFrameRequested = true;
    requestAnimationFrame(() => {
      this.#isFrameRequested = false;
      this.#render();
      if (this.player.isPlaying) this.#requestFrame();
    });
  }

  #render() {
    if (this.player.isPlaying) this.player.advance(Math.min(this.#timer.update().getDelta(), longestFrame));
    fitPlanes(this.#camera, radiusOf(this.#box));
    this.#views.forEach((view) => view.render(this.#camera));
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
