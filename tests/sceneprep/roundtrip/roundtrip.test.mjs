// Compares glTF files before and after sceneprep in an independent reader: three.js in a headless browser.
import assert from 'node:assert/strict';
import { execFileSync } from 'node:child_process';
import { readFileSync, writeFileSync } from 'node:fs';
import { join } from 'node:path';
import { after, before, test } from 'node:test';
import { chromium } from 'playwright-core';
import { features, glbOf } from './features.mjs';
import { PixelReader } from './pixels.mjs';

const { SCENEPREP, BROWSER, VIEWER, SCENE, OUT } = process.env;
const acceptedShare = 0.001; // of the pixels: edges may cover other pixels

let browser;
let page;
let pixels;

before(async () => {
  browser = await chromium.launch({
    executablePath: BROWSER,
    args: ['--no-sandbox', '--use-angle=swiftshader', '--enable-unsafe-swiftshader', '--disable-background-networking'],
  });
  const context = await browser.newContext();
  pixels = await PixelReader.open(context);
  page = await context.newPage();
  await page.addScriptTag({ content: readFileSync(VIEWER, 'utf8') });
});

after(() => browser.close());

const base64 = (file) => readFileSync(file).toString('base64');
const list = (file) => page.evaluate((text) => viewer.list(text), base64(file));
const draw = async (file) => Buffer.from(await page.evaluate((text) => viewer.draw(text), base64(file)), 'base64');

function prepare(input, name, ...options) {
  const output = join(OUT, `${name}.glb`);
  execFileSync(SCENEPREP, ['prepare', input, '-o', output, '--quiet', ...options]);
  return output;
}

async function expectSameImage(input, output) {
  const [one, other] = [await draw(input), await draw(output)];
  const share = await pixels.shareOfDifferent(one, other);
  assert.ok(share <= acceptedShare, `${(100 * share).toFixed(2)} % of the pixels differ`);
}

for (const name of Object.keys(features)) {
  test(`${name}: a plain run keeps everything`, async () => {
    const input = join(OUT, `${name}.glb`);
    writeFileSync(input, glbOf(name));
    const output = prepare(input, `${name}-plain`, '--strict');
    assert.deepEqual(await list(output), await list(input));
    await expectSameImage(input, output);
  });

  test(`${name}: the recommended steps keep the image`, async () => {
    const input = join(OUT, `${name}.glb`);
    await expectSameImage(input, prepare(input, `${name}-all`, '--all'));
  });
}

test('the bundled scene: the recommended steps keep the image', async () => {
  const input = prepare(SCENE, 'bundled');
  await expectSameImage(input, prepare(SCENE, 'bundled-all', '--all'));
});

test('a loss is seen', async () => {
  const input = join(OUT, 'materials.glb');
  const changed = join(OUT, 'changed.glb');
  writeFileSync(changed, readFileSync(input).toString('latin1').replace('"doubleSided":true', '"doubleSided":null'), 'latin1');
  assert.notDeepEqual(await list(changed), await list(input));
});
