// Draws the images of the documentation: draw.mjs SCENEPREP BROWSER WORKSHOP_SCENE OUTPUT_FOLDER [NAME...]
//
// Each figure runs sceneprep on a small model and takes a screenshot of the page of --report. Where the report's renderer
// does not show what the step changes, models that illustrate it are made of the step's input and output and shown instead.
import { execFileSync } from 'node:child_process';
import { mkdtempSync, readFileSync, rmSync, writeFileSync } from 'node:fs';
import { tmpdir } from 'node:os';
import { join } from 'node:path';
import { pathToFileURL } from 'node:url';
import { chromium } from 'playwright-core';
import { readGlb, writeObj } from './files.mjs';
import { showNormals, showUVs, showVertices } from './illustrations.mjs';
import { encodePng } from './png.mjs';
import { faceNormal, flipped, isPicked, makeBall, makeBarrel, makeBox, makeRing, moved, normalize, withNormals } from './models.mjs';

const [sceneprep, browserPath, workshop, output, ...wanted] = process.argv.slice(2);
const folder = mkdtempSync(join(tmpdir(), 'draw-images-'));
const gray = 0xb4b9be;

let files = 0;
const newFile = (extension) => join(folder, `figure-${++files}.${extension}`);

// Runs steps over an input file; returns the output file, or the page if one is asked for.
function prepare(input, steps, { page = false } = {}) {
  const [result, report] = [newFile('glb'), newFile('html')];
  execFileSync(sceneprep, ['prepare', input, ...steps, '--quiet', '-o', result, ...(page ? ['--report', report] : [])]);
  return page ? report : result;
}

function objOf(objects) {
  const file = newFile('obj');
  writeObj(file, objects);
  return file;
}

// A page whose left side shows one model and whose right side shows another.
function pageOf(before, after) {
  const [left, right] = [before, after].map((objects) => readFileSync(prepare(objOf(objects), [], { page: true }), 'utf8'));
  const rightElements = /<script type="[^"]*" id="after(?:-corners|-parts)?">[^<]*<\/script>/g;
  const elements = right.match(rightElements);
  const page = newFile('html');
  writeFileSync(page, left.replace(rightElements, () => elements.shift()));
  return page;
}

const countVertices = (meshes) => meshes.reduce((sum, mesh) => sum + mesh.vertices.length, 0);

function weld() {
  const faces = withNormals(makeBall(14, 8), (face, { position }) => normalize(position));
  const input = objOf([{ name: 'Ball', color: gray, faces }]);
  const [before, after] = [[], ['--weld']].map((steps) => readGlb(prepare(input, steps)));
  return {
    page: pageOf(showVertices(before, 0.045), showVertices(after, 0.045)),
    captions: [before, after].map((meshes) => `${countVertices(meshes)} vertices`),
    zoom: 4,
  };
}

function normals() {
  const faces = [...makeRing(0.72, 0.34, 16, 12), ...moved(makeBox([0.9, 0.9, 0.9]), [1.25, 0.11, -1.25])];
  const input = objOf([{ name: 'Shapes', color: gray, faces: withNormals(faces, (face) => faceNormal(face)) }]);
  const [before, after] = [[], ['--weld', '--normals']].map((steps) => readGlb(prepare(input, steps)));
  return {
    page: pageOf(showNormals(before, 0.24), showNormals(after, 0.24)),
    captions: ['one normal per face', 'smooth ring, box with hard edges'],
    zoom: 3,
  };
}

function unifyNormals() {
  const numberOf = (position) => position.reduce((sum, value, i) => sum + Math.round(value * 1000) * (i + 1) * 31, 0);
  const faces = withNormals(makeBall(18, 11), (face, { position }) =>
    normalize(position).map((value) => (isPicked(numberOf(position)) ? -value : value)));
  const input = objOf([{ name: 'Ball', color: gray, faces }]);
  const [before, after] = [[], ['--unify-normals']].map((steps) => readGlb(prepare(input, steps)));
  return {
    page: pageOf(showNormals(before, 0.28), showNormals(after, 0.28)),
    captions: ['some normals point inwards (red)', 'all normals point outwards'],
    zoom: 4,
  };
}

function fixCulling() {
  const faces = withNormals(makeBall(36, 18), (face, { position }) => normalize(position));
  const wrong = faces.map((face, i) => (isPicked(i) ? flipped(face) : face));
  return {
    page: prepare(objOf([{ name: 'Ball', color: 0x7c9a6e, faces: wrong }]), ['--fix-culling'], { page: true }),
    captions: ['some triangles show their back faces (pink)', 'all triangles show their front faces'],
    markBacks: true,
    zoom: 4,
  };
}

function uvs(mapping) {
  const shapes = [
    moved(makeBox([1.9, 1, 1], 80), [-1.05, -0.45, 1]),
    moved(makeBall(160, 80, 0), [-0.75, 0, -1.15]),
    moved(makeBarrel(0.62, 1.9, 160, 80), [1.45, 0, -0.1]),
  ];
  const input = objOf(shapes.map((faces, i) => ({ name: `Shape${i}`, color: gray, faces })));
  const sides = [mapping, `${mapping}:0:world`].map((option) =>
    showUVs(readGlb(prepare(input, ['--weld', '--normals', '--uvs', option]))));
  return { page: pageOf(...sides), titles: ['Bounding box', 'World units'], captions: ['', ''], zoom: 2 };
}

function collisionOffsets() {
  const blocks = [
    [[2.2, 0.5, 2.2], [-0.9, 0.25, -0.1]], [[1, 1.1, 1], [-1.5, 0.75, -0.3]], [[1.2, 0.8, 0.9], [-0.6, 0.7, 0.35]],
    [[1.3, 0.35, 0.7], [0.55, 0.275, 0.6]], [[0.8, 0.8, 0.8], [1.75, 0.4, -0.9]], [[0.8, 0.4, 0.8], [1.75, 1, -0.9]],
    [[0.7, 0.7, 0.7], [2, 0.35, 1.3]],
  ];
  const objects = blocks.map(([size, place], i) => ({ name: `Block${i}`, color: gray, faces: moved(makeBox(size), place) }));
  return {
    page: prepare(objOf(objects), ['--collision-offsets'], { page: true }),
    coloring: 'offset',
    captions: ['all offsets are 0', 'overlapping surfaces have different offsets'],
    legend: true,
  };
}

const flatten = () => ({
  page: prepare(workshop, ['--flatten'], { page: true }),
  coloring: 'surface',
  captions: ['1,494 surfaces', '46 surfaces'],
  zoom: 8,
});

const figures = {
  'flatten': flatten,
  'weld': weld,
  'normals': normals,
  'unify-normals': unifyNormals,
  'fix-culling': fixCulling,
  'collision-offsets': collisionOffsets,
  ...Object.fromEntries(['planar-x', 'planar-y', 'planar-z', 'cubic', 'cylindrical']
    .map((mapping) => [`uvs-${mapping}`, () => uvs(mapping)])),
};

const plainStyle = `
  body { padding: 0; background: var(--paper); }
  section:has(#stage) { margin: 0; border: 0; border-radius: 0; padding: 12px; }
  .bar, #hint, header, main > .columns, footer { display: none; }
  section .columns { grid-template-columns: 1fr 1fr; }
`;
// A gradient has more colours than a palette.
const canvasStyle = 'canvas { background: #eef1f4; }';

// Decodes a screenshot in the page and writes it with a palette.
async function save(page, name, png) {
  const pixels = await page.evaluate(async (text) => {
    const bytes = Uint8Array.from(atob(text), (character) => character.charCodeAt(0));
    const bitmap = await createImageBitmap(new Blob([bytes], { type: 'image/png' }));
    const drawing = new OffscreenCanvas(bitmap.width, bitmap.height).getContext('2d');
    drawing.drawImage(bitmap, 0, 0);
    const { width, height, data } = drawing.getImageData(0, 0, bitmap.width, bitmap.height);
    let list = '';
    for (const value of data) list += String.fromCharCode(value);
    return { width, height, text: btoa(list) };
  }, png.toString('base64'));
  const data = Buffer.from(pixels.text, 'base64');
  writeFileSync(join(output, `${name}.png`), encodePng({ ...pixels, data }));
}

async function screenshot(browser, name, { page: file, coloring = 'diffuse', titles, captions, markBacks, zoom = 0, legend = false }) {
  const page = await browser.newPage({ viewport: { width: 820, height: 700 } });
  await page.goto(`${pathToFileURL(file).href}#${coloring}`);
  if (markBacks) await page.locator('#backs').check();
  for (let i = 0; i < zoom; ++i) await page.locator('#stage').press('+');
  await page.evaluate(() => document.activeElement.blur());
  await page.addStyleTag({ content: canvasStyle + plainStyle + (legend ? '' : '.legend { display: none; }') });
  for (const [i, side] of ['before', 'after'].entries()) {
    const setText = (element, text) => { element.textContent = text; };
    await page.locator(`#${side}-caption`).evaluate(setText, captions[i]);
    if (titles) await page.locator('figcaption strong').nth(i).evaluate(setText, titles[i]);
  }
  await save(page, name, await page.locator('section:has(#stage)').screenshot());
  await page.close();
}

async function screenshotReport(browser) {
  const report = join(folder, 'report.html');
  execFileSync(sceneprep, ['prepare', workshop, '--all', '--quiet', '-o', join(folder, 'workshop-ready.glb'), '--report', report]);
  const page = await browser.newPage({ viewport: { width: 1200, height: 960 } });
  await page.goto(`${pathToFileURL(report).href}#surface`);
  await page.addStyleTag({ content: canvasStyle });
  await save(page, 'report', await page.screenshot());
  await page.close();
}

// Draws in software, so that every machine draws the same.
const browser = await chromium.launch({
  executablePath: browserPath,
  args: ['--no-sandbox', '--use-angle=swiftshader', '--enable-unsafe-swiftshader', '--disable-quic', '--no-first-run',
    '--disable-background-networking', '--disable-component-update', '--disable-sync'],
});
try {
  for (const [name, make] of Object.entries(figures))
    if (wanted.length === 0 || wanted.includes(name)) await screenshot(browser, name, make());
  if (wanted.length === 0 || wanted.includes('report')) await screenshotReport(browser);
} finally {
  await browser.close();
  rmSync(folder, { recursive: true });
}
