// Draws the images of the documentation: draw.mjs SCENEPREP BROWSER WORKSHOP_SCENE OUTPUT_FOLDER [NAME...]
//
// Each figure runs sceneprep on a small model and takes a screenshot of the HTML report. Where the report does not show
// what a step changes, models that illustrate the step are made of its input and output, and shown instead.
import { execFileSync } from 'node:child_process';
import { mkdtempSync, rmSync, writeFileSync } from 'node:fs';
import { tmpdir } from 'node:os';
import { join } from 'node:path';
import { pathToFileURL } from 'node:url';
import { chromium } from 'playwright-core';
import { makeFigures } from './figures.mjs';
import { encodePng } from './png.mjs';
import { Runs } from './runs.mjs';

const [sceneprep, browserPath, workshop, output, ...wanted] = process.argv.slice(2);
const folder = mkdtempSync(join(tmpdir(), 'draw-images-'));

const plainStyle = `
  body { padding: 0; background: var(--paper); }
  #views { margin: 0; border: 0; border-radius: 0; padding: 12px; }
  .bar, #hint, header, #outcomes, #figures, section:not(#views), footer { display: none; }
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

async function open(page, file, coloring) {
  await page.goto(`${pathToFileURL(file).href}#${coloring}`);
  await page.locator('#stage[aria-busy=false]').waitFor();
}

async function screenshot(browser, name, figure) {
  const { coloring = 'textured', titles, markBacks = false, zoom = 0, legend = false } = figure;
  const page = await browser.newPage({ viewport: { width: 820, height: 700 }, reducedMotion: 'reduce' });
  await open(page, figure.page, coloring);
  const captions = figure.captions ?? (await page.locator('.legend li:first-child').allTextContents());
  if (markBacks) await page.locator('#backs').check();
  for (let i = 0; i < zoom; ++i) await page.locator('#stage').press('+');
  await page.evaluate(() => document.activeElement.blur());
  await page.addStyleTag({ content: canvasStyle + plainStyle + (legend ? '' : '.legend { display: none; }') });
  for (const [i, side] of ['before', 'after'].entries()) {
    const setText = (element, text) => { element.textContent = text; };
    await page.locator(`#${side}-caption`).evaluate(setText, captions[i]);
    if (titles) await page.locator('figcaption strong').nth(i).evaluate(setText, titles[i]);
  }
  await save(page, name, await page.locator('#views').screenshot());
  await page.close();
}

async function screenshotReport(browser) {
  const report = join(folder, 'report.html');
  const result = join(folder, 'workshop-ready.glb');
  execFileSync(sceneprep, ['prepare', workshop, '--all', '--quiet', '-o', result, '--report', report]);
  const page = await browser.newPage({ viewport: { width: 1200, height: 960 }, reducedMotion: 'reduce' });
  await open(page, report, 'surface');
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
  for (const [name, make] of Object.entries(makeFigures(new Runs(sceneprep, folder), workshop)))
    if (wanted.length === 0 || wanted.includes(name)) await screenshot(browser, name, make());
  if (wanted.length === 0 || wanted.includes('report')) await screenshotReport(browser);
} finally {
  await browser.close();
  rmSync(folder, { recursive: true });
}
