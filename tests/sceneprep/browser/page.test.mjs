// Tests the HTML report: sceneprep writes it, and a browser opens the file.
import assert from 'node:assert/strict';
import { execFileSync } from 'node:child_process';
import { readFileSync, writeFileSync } from 'node:fs';
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
  context = await browser.newContext({ viewport: { width: 700, height: 600 }, reducedMotion: 'reduce' });
  pixels = await PixelReader.open(context);
});

after(() => browser.close());

function writePage(name, scene, ...steps) {
  const page = join(OUT, `${name}.html`);
  execFileSync(SCENEPREP, ['prepare', scene, ...steps, '--quiet', '-o', join(OUT, `${name}.glb`), '--report', page]);
  return pathToFileURL(page).href;
}

// Returns the page of a run that fails.
function writeRefusedPage(scene, ...steps) {
  const page = join(OUT, 'refused.html');
  assert.throws(() => execFileSync(SCENEPREP,
    ['prepare', scene, ...steps, '--quiet', '-o', join(OUT, 'refused.glb'), '--report', page], { stdio: 'pipe' }));
  return pathToFileURL(page).href;
}

// Opens a page and collects errors and requests.
async function open(address, prepare = () => {}) {
  const page = await context.newPage();
  page.problems = [];
  page.on('console', (message) => message.type() === 'error' && page.problems.push(message.text()));
  page.on('pageerror', (error) => page.problems.push(error.message));
  page.on('request', (request) => {
    if (request.url() !== address && !request.url().startsWith('blob:')) page.problems.push(`asks for ${request.url()}`);
  });
  await prepare(page);
  await page.goto(address);
  await page.locator('#stage[aria-busy=false], #stage[hidden]').waitFor({ state: 'attached' });
  return page;
}

// Changes the report of a page.
function editReport(address, edit) {
  const file = new URL(address);
  const pattern = /(<script type="application\/json" id="report">)([^]*?)(<\/script>)/;
  writeFileSync(file, readFileSync(file, 'utf8').replace(pattern, (all, begin, text, end) => {
    const report = JSON.parse(text);
    edit(report);
    return begin + JSON.stringify(report).replaceAll('<', '\\u003c') + end;
  }));
}

const reportOf = (page) => page.evaluate(() => JSON.parse(document.getElementById('report').textContent));

// Returns the elements that are wider than the page.
const overflowAt = async (page, width) => {
  await page.setViewportSize({ width, height: 900 });
  return page.evaluate(() => [...document.body.querySelectorAll('*')]
    .filter((one) => !one.closest('.hidden') && one.getBoundingClientRect().right > innerWidth + 0.5)
    .map((one) => `${one.tagName} ${one.id} ${one.className}`));
};

async function checkWidths(page) {
  for (const width of [400, 1200]) assert.deepEqual(await overflowAt(page, width), [], `at ${width} pixels`);
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

  await t.test('has the gain, the price and the verdict at the top', async () => {
    assert.match(await page.locator('h1').textContent(), /^1,494 → \d+ draw calls, .* MB$/);
    assert.equal(await page.locator('#output').textContent(), 'scene.glb');
    assert.match(await page.locator('#verdict').textContent(), /^The result matches the input/);
    assert.ok(!(await page.locator('#refusal').isVisible()));
  });

  await t.test('has the numbers of the scene', async () => {
    const { surfaces } = (await reportOf(page)).after.counts;
    assert.deepEqual((await cellsOf(page, 'surfaces')).slice(0, 2), ['1,494', String(surfaces)]);
    assert.deepEqual(await cellsOf(page, 'materials'), ['13', '13', 'same']);
    assert.match(await page.locator('#steps tr').last().textContent(), /^Verify/);
  });

  await t.test('draws the triangles of the report from both files', async () => {
    const report = await reportOf(page);
    for (const side of sides) {
      const { counts, drawCalls = counts.surfaces, world } = report[side];
      const [triangles, calls] = [world.triangles, drawCalls].map((count) => count.toLocaleString('en'));
      const caption = await page.locator(`#${side}-caption`).textContent();
      assert.deepEqual(caption.split(' · ').slice(0, 2), [`${triangles} triangles`, `${calls} draw calls`]);
    }
  });

  await t.test('opens with one colour per surface, because their number has changed', async () => {
    assert.ok(await page.locator('input[value=surface]').isChecked());
    assert.match(await page.locator('#before-legend').textContent(), /^1,494 surfaces/);
  });

  await t.test('changes colours with the switch', async () => {
    await choose(page, 'Textured');
    for (const share of await differences(page, first)) assert.ok(share > much);
    assert.match(await page.locator('#before-legend').textContent(), /^13 materials, 0 images$/);
    await choose(page, 'Collision offset');
    assert.ok((await pixels.shareOfColored((await draw(page))[0])) < 0.001, 'no surface has an offset before the steps');
    assert.ok((await pixels.shareOfColored((await draw(page))[1])) > 0.001);
    await choose(page, 'Surface');
    for (const share of await differences(page, first)) assert.ok(share < 0.001);
  });

  await t.test('plays the clip of both files', async () => {
    await page.locator('#play').click();
    assert.equal(await page.locator('#play').textContent(), 'Pause');
    await page.waitForTimeout(500);
    await page.locator('#play').click();
    for (const share of await differences(page, first)) assert.ok(share > 0.0002);
  });

  await t.test('rotates both views when one is dragged, and resets them', async () => {
    const first = await draw(page);
    await page.locator('#after-view').hover();
    await page.mouse.down();
    await page.mouse.move(600, 300, { steps: 3 });
    await page.mouse.up();
    for (const share of await differences(page, first)) assert.ok(share > much);
    await page.locator('#reset').click();
    for (const share of await differences(page, first)) assert.ok(share < 0.001);
  });

  await t.test('zooms with the wheel and rotates with keys', async () => {
    const first = await draw(page);
    await page.locator('#before-view').hover();
    await page.mouse.wheel(0, -400);
    for (const share of await differences(page, first)) assert.ok(share > much);
    await page.locator('#reset').click();
    await page.locator('#stage').press('ArrowLeft');
    for (const share of await differences(page, first)) assert.ok(share > much);
    await page.locator('#reset').click();
  });

  await t.test('shows wireframes and marks back faces', async () => {
    const first = await draw(page);
    for (const box of ['#wireframe', '#backs']) {
      await page.locator(box).check();
      for (const share of await differences(page, first)) assert.ok(share > 0.0005, box);
      await page.locator(box).uncheck();
      for (const share of await differences(page, first)) assert.ok(share < 0.0005, box);
    }
  });

  await t.test('is as wide as the window', () => checkWidths(page));

  await t.test('logs no errors and makes no requests', () => assert.deepEqual(page.problems, []));
});

// Reads the JSON of a .glb file.
function readDocument(file) {
  const bytes = readFileSync(file);
  return JSON.parse(bytes.toString('utf8', 20, 20 + bytes.readUInt32LE(12)));
}

test('a reason highlights its surfaces in the result', async () => {
  const address = writePage('reasons', SCENE, '--flatten');
  const { nodes, meshes, materials } = readDocument(join(OUT, 'reasons.glb'));
  const node = nodes.find(({ mesh }) => mesh !== undefined);
  const material = materials[meshes[node.mesh].primitives[0].material].name;
  const surfaces = [{ node: node.name, mesh: meshes[node.mesh].name, surface: 0 }];
  const text = "33 below animated node 'rotor'";
  editReport(address, (report) => {
    report.reasons = {
      drawCalls: 46, neededByMaterials: 13,
      groups: [{ material, reason: 'animated', subject: 'rotor', surplus: 33, text, surfaces }],
    };
  });
  const page = await open(address);
  assert.match(await page.locator('#reasons-summary').textContent(), /^46 draw calls; the materials need 13\..* 33:$/);
  const [before, result] = await draw(page);
  const button = page.locator('#reasons button');
  assert.match(await button.textContent(), new RegExp(`^${material} 33 below animated node 'rotor'$`));
  await button.click();
  assert.equal(await button.getAttribute('aria-pressed'), 'true');
  const [stillBefore, highlighted] = await draw(page);
  assert.ok((await pixels.shareOfDifferent(result, highlighted)) > much);
  assert.ok((await pixels.shareOfDifferent(before, stillBefore)) < 0.001);
  await button.click();
  const [, released] = await draw(page);
  assert.ok((await pixels.shareOfDifferent(result, released)) < 0.001);
  assert.deepEqual(page.problems, []);
});

test('findings, budgets, sizes and a detailed verdict are shown', async () => {
  const address = writePage('details', SCENE);
  editReport(address, (report) => {
    report.findings = [{ kind: 'materials', text: 'materials differ in one value', names: ['Oak', 'Timber'], count: 2 }];
    report.budget = [{ name: 'draws', value: 1494, limit: 50, exceeded: true }];
    report.verdict = { compared: ['triangles', 'clips'], differences: [], verified: false, reason: '--no-verify was given' };
    Object.assign(report.before, { fileBytes: 200000, gpuBytes: 100000, drawCalls: 1494 });
    Object.assign(report.after, { fileBytes: 2100000, gpuBytes: 1000000, drawCalls: 1494 });
  });
  const page = await open(address);
  assert.match(await page.locator('h1').textContent(), /, 0\.2 → 2\.1 MB$/);
  assert.equal(await page.locator('#verdict').textContent(), 'The written file was not compared with the input.');
  assert.equal(await page.locator('#compared').textContent(), 'Reason: --no-verify was given. Compared: triangles; clips.');
  assert.match(await page.locator('#findings').textContent(), /materials differ in one value\s*Oak, Timber/);
  assert.deepEqual(await cellsOf(page, 'draws'), ['1,494', '50', 'exceeded']);
  assert.deepEqual(page.problems, []);
});

// A textured triangle: one texture is in the file, the other is missing.
function writeTexturedScene() {
  const corners = Buffer.from(new Float32Array([0, 0, 0, 1, 0, 0, 0, 1, 0]).buffer).toString('base64');
  const red = 'iVBORw0KGgoAAAANSUhEUgAAAAEAAAABCAIAAACQd1PeAAAADElEQVR4nGP4z8AAAAMBAQDJ/pLvAAAAAElFTkSuQmCC';
  const file = join(OUT, 'textured.gltf');
  writeFileSync(file, JSON.stringify({
    asset: { version: '2.0' },
    scene: 0,
    scenes: [{ nodes: [0] }],
    nodes: [{ mesh: 0 }],
    images: [{ uri: `data:image/png;base64,${red}` }, { uri: 'missing.png' }],
    textures: [{ source: 0 }, { source: 1 }],
    materials: [{ pbrMetallicRoughness: { baseColorTexture: { index: 0 } }, emissiveTexture: { index: 1 }, doubleSided: true }],
    meshes: [{ primitives: [{ attributes: { POSITION: 0, TEXCOORD_0: 1 }, material: 0 }] }],
    accessors: [
      { bufferView: 0, componentType: 5126, count: 3, type: 'VEC3', min: [0, 0, 0], max: [1, 1, 0] },
      { bufferView: 0, componentType: 5126, count: 3, type: 'VEC2' },
    ],
    bufferViews: [{ buffer: 0, byteLength: 36 }],
    buffers: [{ byteLength: 36, uri: `data:application/octet-stream;base64,${corners}` }],
  }));
  return file;
}

test('textures are shown', async () => {
  const page = await open(writePage('textured', writeTexturedScene(), '--weld'));
  assert.ok(await page.locator('input[value=textured]').isChecked(), 'nothing else has changed');
  for (const picture of await draw(page)) assert.ok((await pixels.shareOfColored(picture)) > 0.1);
  assert.equal(await page.locator('#after-legend').textContent(),
    '1 material, 2 images, 1 of them not available and shown in white');
  assert.deepEqual(page.problems, []);
});

test('without WebGL the page shows the numbers and a warning', async () => {
  const page = await open(writePage('plain', SCENE), (opened) =>
    opened.addInitScript(() => {
      HTMLCanvasElement.prototype.getContext = () => null;
    }),
  );
  assert.match(await page.locator('#no-views').textContent(), /does not support WebGL/);
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
  assert.match(await page.locator('#differences li').first().textContent(), /^material 'DefaultMaterial': 1 triangle missing/);
  assert.match(await page.locator('#before-caption').textContent(), /^1 triangle · 1 draw call · /);
  await checkWidths(page);
  assert.deepEqual(page.problems, []);
});

test('a refused output is named at the top, and its scene is shown', async () => {
  const page = await open(writeRefusedPage(join(OUT, 'near.obj'), '--weld', '--strict'));
  assert.match(await page.locator('#refusal-text').textContent(), /^refused\.glb was not written: the result differs/);
  assert.match(await page.locator('#after-caption').textContent(), /^1 triangle · /);
  await checkWidths(page);
  assert.deepEqual(page.problems, []);
});

// One triangle in each of many nodes, every third of them with negative scale, in two materials.
function writeLargeScene(count) {
  const corners = Buffer.from(new Float32Array([0, 0, 0, 1, 0, 0, 0, 1, 0]).buffer).toString('base64');
  const side = Math.ceil(Math.sqrt(count));
  const colors = [[1, 0.1, 0.1, 1], [0.1, 0.2, 1, 1]];
  const file = join(OUT, 'many.gltf');
  writeFileSync(file, JSON.stringify({
    asset: { version: '2.0' },
    scene: 0,
    scenes: [{ nodes: [0] }],
    nodes: [{ children: Array.from({ length: count }, (_, i) => i + 1) },
      ...Array.from({ length: count }, (_, i) => ({
        mesh: i % 2, translation: [i % side, Math.floor(i / side), 0], scale: [i % 3 === 0 ? -1 : 1, 1, 1],
      }))],
    materials: colors.map((baseColorFactor) => ({ pbrMetallicRoughness: { baseColorFactor } })),
    meshes: colors.map((_, material) => ({ primitives: [{ attributes: { POSITION: 0 }, material }] })),
    accessors: [{ bufferView: 0, componentType: 5126, count: 3, type: 'VEC3', min: [0, 0, 0], max: [1, 1, 0] }],
    bufferViews: [{ buffer: 0, byteLength: 36 }],
    buffers: [{ byteLength: 36, uri: `data:application/octet-stream;base64,${corners}` }],
  }));
  return file;
}

test('large scenes are drawn in batches', async () => {
  const page = await open(writePage('many', writeLargeScene(5100), '--flatten'));
  await choose(page, 'Textured');
  assert.match(await page.locator('#before-remark').textContent(), /draws its surfaces in 4 batches\.$/);
  assert.match(await page.locator('#before-caption').textContent(), /^5,100 triangles · 5,100 draw calls/);
  const [before, result] = await draw(page);
  const [share, expected] = await Promise.all([before, result].map((picture) => pixels.shareOfColored(picture)));
  assert.ok(share > 0.1);
  assert.ok(Math.abs(share - expected) < 0.01, 'a third of the triangles would be missing if they showed their backs');
  await choose(page, 'Surface');
  assert.ok((await pixels.shareOfDifferent(before, (await draw(page))[0])) > much);
  assert.deepEqual(page.problems, []);
});

test('scenes that are not embedded are replaced by the reason', async () => {
  const address = writePage('large', SCENE);
  writeFileSync(new URL(address), readFileSync(new URL(address), 'utf8')
    .replace(/(id="after">)[^]*?(<\/script>)/, '$1{"bytes":0,"remark":"The scene is not shown."}$2'));
  const page = await open(address);
  assert.equal(await page.locator('#after-remark').textContent(), 'The scene is not shown.');
  assert.ok(!(await page.locator('#after-view').isVisible()));
  assert.ok((await pixels.shareOfColored(await page.locator('#before-view').screenshot())) > 0.1);
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
  const name = '</script><b>bold</b><script>window.taken = 1</script><!--<script><img src=x onerror="window.taken = 1">';
  const page = await open(writePage('hostile', writeHostileScene(name), '--all'));
  assert.equal(await page.evaluate(() => window.taken), undefined);
  await choose(page, 'Surface');
  assert.equal(await page.locator('#before-legend li').last().textContent(), `${name}, ${name}`);
  assert.match(await page.locator('#inputs').textContent(), /<b>hostile\.gltf$/);
  await checkWidths(page);
  assert.deepEqual(page.problems, []);
});
