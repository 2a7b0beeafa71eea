// Checks model files with the Khronos validator: node validate.mjs FILE...
//
// Prints the errors and warnings and exits with 1 if a file has an error. Missing texture files that the input refers to
// are not errors of the writer.
import { readFile } from 'node:fs/promises';
import { basename, dirname, join } from 'node:path';
import { validateBytes } from 'gltf-validator';

const errorSeverity = 0;
const missingFile = 'IO_ERROR';

async function errorsOf(file) {
  const readNextTo = async (uri) => new Uint8Array(await readFile(join(dirname(file), decodeURIComponent(uri))));
  const report = await validateBytes(new Uint8Array(await readFile(file)), {
    uri: basename(file),
    maxIssues: 0,
    externalResourceFunction: readNextTo,
  });
  return report.issues.messages.filter((m) => m.severity === errorSeverity && m.code !== missingFile);
}

let failed = false;
for (const file of process.argv.slice(2)) {
  const errors = await errorsOf(file);
  failed ||= errors.length > 0;
  console.log(`${basename(file)}: ${errors.length} errors`);
  for (const { code, message, pointer } of errors.slice(0, 20)) console.log(`  ${code} at ${pointer}: ${message}`);
}
process.exitCode = failed ? 1 : 0;
