// Makes one text of page, style and viewer, and of that the list of strings that the program holds:
// node bundle.mjs OUTPUT
import { readFile, writeFile } from 'node:fs/promises';
import { build } from 'esbuild';

// Compilers need not take string literals longer than this.
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
  if (/[\ud800-\udfff]/.test(text)) throw new Error('the page has characters that may be cut in two');
  if (text.includes(`)${delimiter}"`)) throw new Error('the page has the mark that ends a string');
  const pieces = [];
  for (let i = 0; i < text.length; i += pieceLength)
    pieces.push(`R"${delimiter}(${text.slice(i, i + pieceLength)})${delimiter}"`);
  return `{${pieces.join(',\n')}}`;
}

const viewer = await bundleViewer();
if (/<\/script|<!--/i.test(viewer)) throw new Error('the viewer would end its element');
const style = await read('style.css');
const [beforeData, behindData] = (await read('page.html')).split('@DATA@\n');
const fill = (text) => text.replace('@STYLE@', () => style).replace('@VIEWER@', () => viewer);
await writeFile(process.argv[2], `${literals(fill(beforeData))},\n${literals(fill(behindData))}\n`);
