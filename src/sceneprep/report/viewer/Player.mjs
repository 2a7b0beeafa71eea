// Plays a clip of all models at the same time.
import { AnimationMixer } from 'three';

export class Player {
  #mixers;
  #clips;
  isPlaying = false;

  constructor(models) {
    this.#mixers = models.map(({ scene }) => new AnimationMixer(scene));
    this.#clips = models.map(({ animations }) => animations);
  }

  // Names of the clips of the models, each once.
  get names() {
    return [...new Set(this.#clips.flat().map(({ name }) => name))];
  }

  choose(name) {
    this.#mixers.forEach((mixer, i) => {
      mixer.stopAllAction();
      const clip = this.#clips[i].find((one) => one.name === name);
      if (clip) mixer.clipAction(clip).play();
    });
  }

  advance(seconds) {
    for (const mixer of this.#mixers) mixer.update(seconds);
  }
}
