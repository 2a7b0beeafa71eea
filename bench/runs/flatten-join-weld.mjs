// What gltf-transform's commands flatten, join and weld do, in one run: node flatten-join-weld.mjs INPUT OUTPUT
import {NodeIO} from '@gltf-transform/core';
import {ALL_EXTENSIONS} from '@gltf-transform/extensions';
import {flatten, join, weld} from '@gltf-transform/functions';

const [input, output] = process.argv.slice(2);
const io = new NodeIO().registerExtensions(ALL_EXTENSIONS);
const document = await io.read(input);
await document.transform(flatten(), join(), weld());
await io.write(output, document);
