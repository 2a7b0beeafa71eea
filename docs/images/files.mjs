// Writes OBJ files for sceneprep and reads back the GLB files that it writes.
import { readFileSync, writeFileSync } from 'node:fs';

const hex = (color) => [16, 8, 0].map((shift) => (((color >> shift) & 255) / 255).toFixed(4)).join(' ');

// Writes objects { name, color, faces }, and their colours as materials.
export function writeObj(file, objects) {
  const lines = [`mtllib ${file.split('/').pop()}.mtl`];
  const materials = new Map();
  let next = 1;
  for (const { name, color, faces } of objects) {
    materials.set(`color-${color}`, color);
    lines.push(`o ${name}`, `usemtl color-${color}`);
    for (const face of faces) {
      for (const { position, normal } of face) {
        lines.push(`v ${position.join(' ')}`);
        if (normal) lines.push(`vn ${normal.join(' ')}`);
      }
      // All faces of a file have normals, or none has.
      const corners = face.map(({ normal }, i) => (normal ? `${next + i}//${next + i}` : next + i));
      lines.push(`f ${corners.join(' ')}`);
      next += face.length;
    }
  }
  writeFileSync(file, `${lines.join('\n')}\n`);
  writeFileSync(`${file}.mtl`, [...materials].map(([name, color]) => `newmtl ${name}\nKd ${hex(color)}\n`).join(''));
}

const arrayTypes = { 5121: Uint8Array, 5123: Uint16Array, 5125: Uint32Array, 5126: Float32Array };
const components = { SCALAR: 1, VEC2: 2, VEC3: 3 };

// Reads the meshes of a GLB file as lists of vertices and of triangles. Transforms of nodes are ignored: models from OBJ
// have none.
export function readGlb(file) {
  const bytes = readFileSync(file);
  const jsonLength = bytes.readUInt32LE(12);
  const gltf = JSON.parse(bytes.toString('utf8', 20, 20 + jsonLength));
  const binary = bytes.subarray(28 + jsonLength);
  const read = (index) => {
    const accessor = gltf.accessors[index];
    const view = gltf.bufferViews[accessor.bufferView];
    const [Type, width] = [arrayTypes[accessor.componentType], components[accessor.type]];
    const stride = view.byteStride ?? width * Type.BYTES_PER_ELEMENT;
    const start = (view.byteOffset ?? 0) + (accessor.byteOffset ?? 0);
    return Array.from({ length: accessor.count }, (_, i) => {
      const at = binary.byteOffset + start + i * stride;
      return Array.from(new Type(binary.buffer.slice(at, at + width * Type.BYTES_PER_ELEMENT)));
    });
  };
  return gltf.meshes.flatMap((mesh) => mesh.primitives.map(({ attributes, indices }) => {
    const [positions, normals, uvs] = ['POSITION', 'NORMAL', 'TEXCOORD_0'].map((name) =>
      (name in attributes ? read(attributes[name]) : []));
    const vertices = positions.map((position, i) => ({ position, normal: normals[i], uv: uvs[i] }));
    const list = read(indices).flat();
    return { vertices, triangles: Array.from({ length: list.length / 3 }, (_, i) => list.slice(3 * i, 3 * i + 3)) };
  }));
}
