// Runs sceneprep on files in a folder.
import { execFileSync } from 'node:child_process';
import { readFileSync, writeFileSync } from 'node:fs';
import { join } from 'node:path';
import { writeObj } from './files.mjs';

// The elements of a page that hold the view on the right.
const afterElements = /<script type="[^"]*" id="after(?:-file)?">[^<]*<\/script>/g;

export class Runs {
  #sceneprep;
  #folder;
  #files = 0;

  constructor(sceneprep, folder) {
    this.#sceneprep = sceneprep;
    this.#folder = folder;
  }

  // Returns the output of steps.
  prepare(input, steps, options = []) {
    const output = this.#newFile('glb');
    execFileSync(this.#sceneprep, ['prepare', input, ...steps, '--quiet', '-o', output, ...options]);
    return output;
  }

  // Returns the HTML report on steps.
  pageOfRun(input, steps) {
    const page = this.#newFile('html');
    this.prepare(input, steps, ['--report', page]);
    return page;
  }

  // Returns a page whose left side shows one model and whose right side shows another.
  pageOfModels(before, after) {
    const [left, right] = [before, after].map((objects) =>
      readFileSync(this.pageOfRun(this.writeModel(objects), []), 'utf8'));
    const elements = right.match(afterElements);
    const page = this.#newFile('html');
    writeFileSync(page, left.replace(afterElements, () => elements.shift()));
    return page;
  }

  writeModel(objects) {
    const file = this.#newFile('obj');
    writeObj(file, objects);
    return file;
  }

  #newFile(extension) {
    return join(this.#folder, `figure-${++this.#files}.${extension}`);
  }
}
