// Bundles page, style and viewer into one text and writes it as C++ string literals, which the program includes:
// node bundle.mjs OUTPUT
import { readFile, writeFile } from 'node:fs/promises';
import { build } from 'esbuild';

// Longer string literals are not supported by all compilers.
const pieceLength = 16000;
const delimiter = 'page';

const read = (name) => readFile(new URL(name, import.meta.url), 'utf8');

async function bundleViewer() {
  const license = await read('node_modules/three/LICENSE');
  const { outputFiles } = await build({
    entryPoints: [new URL('viewer.mjs', import.meta.url).pathname],
    bundle: true,
    minify: true,
    format: 'iife',
    target: 'es2022',
    legalComments: 'none',
    banner: { js: `/* three.js\n${license}*/` },
    write: false,
  });
  return outputFiles[0].text;
}

function literals(text) {
  if (/[\ud800-\udfff]/.test(text)) throw new Error('the page has characters outside the basic plane, which may be split');
  if (text.includes(`)${delimiter}"`)) throw new Error('the page contains the delimiter of the string literals');
  const pieces = [];
  for (let i = 0; i < text.length; i += pieceLength)
    pieces.push(`R"${delimiter}(${text.slice(i, i + pieceLength)})${delimiter}"`);
  return `{${pieces.join(',\n')}}`;
}

const viewer = await bundleViewer();
if (/<\/script|<!--/i.test(viewer)) throw new Error('the viewer contains text that ends its script element');
const style = await read('style.css');
const [beforeData, afterData] = (await read('page.html')).split('@DATA@\n');
const fill = (text) => text.replace('@STYLE@', () => style).replace('@VIEWER@', () => viewer);
await writeFile(process.argv[2], `${literals(fill(beforeData))},\n${literals(fill(afterData))}\n`);
