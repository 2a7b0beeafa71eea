// Tests the HTML report: sceneprep writes it, and a browser opens the file.
import assert from 'node:assert/strict';
import { execFileSync } from 'node:child_process';
import { writeFileSync } from 'node:fs';
import { join } from 'node:path';
import { after, before, test } from 'node:test';
import { pathToFileURL } from 'node:url';
import { chromium } from 'playwright-core';
import { PixelReader } from './pixels.mjs';

const { SCENEPREP, BROWSER, SCENE, OUT } = process.env;
const sides = ['before', 'after'];
const much = 0.02;

let browser;
let context;
let pixels;

before(async () => {
  browser = await chromium.launch({
    executablePath: BROWSER,
    args: [
      '--no-sandbox', '--use-angle=swiftshader', '--enable-unsafe-swiftshader', '--disable-quic', '--no-first-run',
      '--disable-background-networking', '--disable-component-update', '--disable-sync',
    ],
  });
  context = await browser.newContext({ viewport: { width: 700, height: 600 } });
  pixels = await PixelReader.open(context);
});

after(() => browser.close());

function writePage(name, scene, ...steps) {
  const page = join(OUT, `${name}.html`);
  execFileSync(SCENEPREP, ['prepare', scene, ...steps, '--quiet', '-o', join(OUT, `${name}.glb`), '--report', page]);
  return pathToFileURL(page).href;
}

// Opens a page and collects errors and requests.
async function open(address, prepare = () => {}) {
  const page = await context.newPage();
  page.problems = [];
  page.on('console', (message) => message.type() === 'error' && page.problems.push(message.text()));
  page.on('pageerror', (error) => page.problems.push(error.message));
  page.on('request', (request) => {
    if (request.url() !== address) page.problems.push(`asks for ${request.url()}`);
  });
  await prepare(page);
  await page.goto(address);
  return page;
}

const draw = (page) => Promise.all(sides.map((side) => page.locator(`#${side}-view`).screenshot()));

async function differences(page, earlier) {
  const later = await draw(page);
  return Promise.all(sides.map((side, i) => pixels.shareOfDifferent(earlier[i], later[i])));
}

const choose = (page, label) => page.locator('#colorings label', { hasText: new RegExp(`^${label}$`) }).click();
const cellsOf = (page, heading) =>
  page.locator('tr', { has: page.locator(`th:text-is("${heading}")`) }).locator('td').allTextContents();

test('the bundled scene', async (t) => {
  const page = await open(writePage('scene', SCENE, '--all'));
  const first = await draw(page);

  await t.test('is drawn before and after', async () => {
    const [one, other] = await Promise.all(first.map((picture) => pixels.shareOfColored(picture)));
    assert.ok(one > 0.1);
    assert.ok(Math.abs(one - other) < 0.01);
  });

  await t.test('has the numbers of the scene', async () => {
    assert.equal(await page.locator('h1').textContent(), 'scene.glb');
    assert.equal(await page.locator('#verdict').textContent(), 'The result matches the input.');
    assert.deepEqual(await cellsOf(page, 'surfaces'), ['1,494', '46', '-1,448 (-96.9 %)']);
    assert.deepEqual(await cellsOf(page, 'materials'), ['13', '13', 'same']);
    assert.match(await page.locator('#steps tr').last().textContent(), /^Export/);
    assert.equal(await page.locator('#before-caption').textContent(), '49,818 triangles');
  });

  await t.test('changes colours with the switch', async () => {
    const earlier = await draw(page);
    await choose(page, 'Surface');
    for (const share of await differences(page, earlier)) assert.ok(share > much);
    assert.match(await page.locator('#before-legend').textContent(), /^1,494 surfaces/);
    await choose(page, 'Collision offset');
    assert.ok((await pixels.shareOfColored((await draw(page))[0])) < 0.001, 'no surface has an offset before the steps');
    assert.ok((await pixels.shareOfColored((await draw(page))[1])) > 0.001);
    await choose(page, 'Diffuse colour');
    for (const share of await differences(page, first)) assert.ok(share < 0.001);
  });

  await t.test('rotates both views when one is dragged, and resets them', async () => {
    await page.locator('#after-view').hover();
    await page.mouse.down();
    await page.mouse.move(600, 300, { steps: 3 });
    await page.mouse.up();
    for (const share of await differences(page, first)) assert.ok(share > much);
    await page.locator('#reset').click();
    for (const share of await differences(page, first)) assert.ok(share < 0.001);
  });

  await t.test('zooms with the wheel and rotates with keys', async () => {
    await page.locator('#before-view').hover();
    await page.mouse.wheel(0, -400);
    for (const share of await differences(page, first)) assert.ok(share > much);
    await page.locator('#reset').click();
    await page.locator('#stage').press('ArrowLeft');
    for (const share of await differences(page, first)) assert.ok(share > much);
    await page.locator('#reset').click();
  });

  await t.test('shows wireframes and marks back faces', async () => {
    for (const box of ['#wireframe', '#backs']) {
      await page.locator(box).check();
      for (const share of await differences(page, first)) assert.ok(share > 0.0005, box);
      await page.locator(box).uncheck();
      for (const share of await differences(page, first)) assert.ok(share < 0.0005, box);
    }
  });

  await t.test('logs no errors and makes no requests', () => assert.deepEqual(page.problems, []));
});

test('without WebGL the page shows the numbers and a warning', async () => {
  const page = await open(writePage('plain', SCENE), (opened) =>
    opened.addInitScript(() => {
      HTMLCanvasElement.prototype.getContext = () => null;
    }),
  );
  assert.ok(await page.locator('#no-webgl').isVisible());
  assert.ok(!(await page.locator('#stage').isVisible()));
  assert.deepEqual(await cellsOf(page, 'surfaces'), ['1,494', '1,494', 'same']);
  assert.deepEqual(page.problems, []);
});

test('differences are shown', async () => {
  // Welding merges two corners of this triangle.
  const scene = join(OUT, 'near.obj');
  writeFileSync(scene, 'v 10000 0 0\nv 10000.05 0 0\nv 10000 0 0.01\nvn 0 1 0\no Face\nf 1//1 3//1 2//1\n');
  const page = await open(writePage('near', scene, '--weld'));
  assert.equal(await page.locator('#verdict').textContent(), 'The result differs from the input.');
  assert.match(await page.locator('#differences li').first().textContent(), /^bounds moved by 0\.0/);
  assert.equal(await page.locator('#before-caption').textContent(), '1 triangle');
  assert.deepEqual(page.problems, []);
});

// A triangle whose names would change the page if they were used as markup.
function writeHostileScene(name) {
  const corners = Buffer.from(new Float32Array([0, 0, 0, 1, 0, 0, 0, 1, 0]).buffer);
  const file = join(OUT, '<b>hostile.gltf');
  writeFileSync(file, JSON.stringify({
    asset: { version: '2.0' },
    scene: 0,
    scenes: [{ nodes: [0] }],
    nodes: [{ name, mesh: 0 }],
    materials: [{ name }],
    meshes: [{ name, primitives: [{ attributes: { POSITION: 0 }, material: 0 }] }],
    accessors: [{ bufferView: 0, componentType: 5126, count: 3, type: 'VEC3', min: [0, 0, 0], max: [1, 1, 0] }],
    bufferViews: [{ buffer: 0, byteLength: 36 }],
    buffers: [{ byteLength: 36, uri: `data:application/octet-stream;base64,${corners.toString('base64')}` }],
  }));
  return file;
}

test('names from files are shown as text', async () => {
  const name = '</script><script>window.taken = 1</script><!--<script><img src=x onerror="window.taken = 1">';
  const page = await open(writePage('hostile', writeHostileScene(name), '--all'));
  assert.equal(await page.evaluate(() => window.taken), undefined);
  assert.equal(await page.locator('#before-legend li').last().textContent(), name);
  assert.match(await page.locator('#inputs').textContent(), /<b>hostile\.gltf$/);
  assert.deepEqual(page.problems, []);
});
