// Small scenes, one for each feature of glTF that reading or writing could lose. Each is a GLB in memory.

// A 2x2 PNG: red, green, blue, white.
const pngOfFourPixels = Buffer.from(
  'iVBORw0KGgoAAAANSUhEUgAAAAIAAAACCAIAAAD91JpzAAAAEklEQVR4nGP4z8DAAMIM/4EAAB/uBfsL2WiLAAAAAElFTkSuQmCC', 'base64');

const componentTypes = new Map([
  [Int8Array, 5120], [Uint8Array, 5121], [Int16Array, 5122], [Uint16Array, 5123], [Uint32Array, 5125],
  [Float32Array, 5126],
]);
const widths = { SCALAR: 1, VEC2: 2, VEC3: 3, VEC4: 4, MAT4: 16 };

// Collects the JSON and the buffer of one file.
class Scene {
  json = { asset: { version: '2.0' }, scene: 0, scenes: [{ nodes: [] }], nodes: [], meshes: [] };
  #chunks = [];
  #length = 0;

  add(list, object) {
    (this.json[list] ??= []).push(object);
    return this.json[list].length - 1;
  }

  view(bytes) {
    const padding = -bytes.length & 3;
    const view = this.add('bufferViews', { buffer: 0, byteOffset: this.#length, byteLength: bytes.length });
    this.#chunks.push(bytes, Buffer.alloc(padding));
    this.#length += bytes.length + padding;
    return view;
  }

  accessor(type, values, { withBounds = false, ...more } = {}) {
    const width = widths[type];
    const accessor = {
      bufferView: this.view(Buffer.from(values.buffer)), componentType: componentTypes.get(values.constructor), type,
      count: values.length / width, ...more,
    };
    if (withBounds) {
      const column = (c) => Array.from(values).filter((_, i) => i % width === c);
      accessor.min = Array.from({ length: width }, (_, c) => Math.min(...column(c)));
      accessor.max = Array.from({ length: width }, (_, c) => Math.max(...column(c)));
    }
    return this.add('accessors', accessor);
  }

  floats(type, values, more) {
    return this.accessor(type, new Float32Array(values), more);
  }

  // A square of two triangles in the plane z = 0, `size` wide, with normals and texture coordinates.
  square({ size = 1, material, attributes = {}, ...more } = {}) {
    const s = size / 2;
    return {
      attributes: {
        POSITION: this.floats('VEC3', [-s, -s, 0, s, -s, 0, s, s, 0, -s, s, 0], { withBounds: true }),
        NORMAL: this.floats('VEC3', [0, 0, 1, 0, 0, 1, 0, 0, 1, 0, 0, 1]),
        TEXCOORD_0: this.floats('VEC2', [0, 1, 1, 1, 1, 0, 0, 0]),
        ...attributes,
      },
      indices: this.accessor('SCALAR', new Uint16Array([0, 1, 2, 0, 2, 3])),
      ...(material === undefined ? {} : { material }),
      ...more,
    };
  }

  mesh(primitives, more = {}) {
    return this.add('meshes', { primitives, ...more });
  }

  node(object, parent) {
    const node = this.add('nodes', object);
    if (parent === undefined) this.json.scenes[0].nodes.push(node);
    else (this.json.nodes[parent].children ??= []).push(node);
    return node;
  }

  texture(sampler = {}) {
    const image = this.add('images', { mimeType: 'image/png', bufferView: this.view(pngOfFourPixels), name: 'Pixels' });
    return this.add('textures', { source: image, sampler: this.add('samplers', { magFilter: 9728, ...sampler }) });
  }

  use(...extensions) {
    this.json.extensionsUsed = [...new Set([...(this.json.extensionsUsed ?? []), ...extensions])];
  }

  glb() {
    const bin = Buffer.concat(this.#chunks);
    if (bin.length) this.json.buffers = [{ byteLength: bin.length }];
    for (const list of ['nodes', 'meshes']) if (!this.json[list].length) delete this.json[list];
    const text = Buffer.from(JSON.stringify(this.json));
    const json = Buffer.concat([text, Buffer.alloc(-text.length & 3, ' ')]);
    const word = (...values) => Buffer.from(new Uint32Array(values).buffer);
    const length = 12 + 8 + json.length + 8 + bin.length;
    return Buffer.concat([word(0x46546c67, 2, length), word(json.length, 0x4e4f534a), json, word(bin.length, 0x4e4942), bin]);
  }
}

const materials = {
  'double-sided, cut out': { doubleSided: true, alphaMode: 'MASK', alphaCutoff: 0.3 },
  'metal': { pbrMetallicRoughness: { metallicFactor: 0.75, roughnessFactor: 0.25, baseColorFactor: [1, 0.5, 0.25, 1] } },
  'blended': { alphaMode: 'BLEND', pbrMetallicRoughness: { baseColorFactor: [0, 1, 0, 0.5] } },
  'opaque with alpha': { pbrMetallicRoughness: { baseColorFactor: [0, 1, 0, 0.5] } },
  'emissive': { emissiveFactor: [0, 0, 1], extensions: { KHR_materials_emissive_strength: { emissiveStrength: 4 } } },
  'unlit': { extensions: { KHR_materials_unlit: {} }, pbrMetallicRoughness: { baseColorFactor: [1, 0, 1, 1] } },
  'clearcoat': { extensions: { KHR_materials_clearcoat: { clearcoatFactor: 0.5, clearcoatRoughnessFactor: 0.125 } } },
  'sheen': { extensions: { KHR_materials_sheen: { sheenColorFactor: [1, 0, 0], sheenRoughnessFactor: 0.5 } } },
  'index of refraction': { extensions: { KHR_materials_ior: { ior: 1.25 }, KHR_materials_specular: { specularFactor: 0.5 } } },
};

// Every kind of material once, next to each other.
function materialScene() {
  const scene = new Scene();
  scene.use('KHR_materials_emissive_strength', 'KHR_materials_unlit', 'KHR_materials_clearcoat', 'KHR_materials_sheen',
    'KHR_materials_ior', 'KHR_materials_specular');
  Object.entries(materials).forEach(([name, material], i) => {
    const mesh = scene.mesh([scene.square({ size: 0.9, material: scene.add('materials', { name, ...material }) })]);
    scene.node({ name, mesh, translation: [i % 3, Math.floor(i / 3), 0] });
  });
  return scene;
}

function textureScene() {
  const scene = new Scene();
  scene.use('KHR_texture_transform');
  const texture = scene.texture({ wrapS: 33071, wrapT: 33648 });
  const moved = { index: texture, extensions: { KHR_texture_transform: { offset: [0.25, 0.5], scale: [2, 3], rotation: 0.5 } } };
  const second = scene.floats('VEC2', [0, 0, 2, 0, 2, 2, 0, 2]);
  const add = (name, material, x) => scene.node({
    name, translation: [x, 0, 0],
    mesh: scene.mesh([scene.square({ material: scene.add('materials', { name, ...material }), attributes: { TEXCOORD_1: second } })]),
  });
  add('plain', { pbrMetallicRoughness: { baseColorTexture: { index: texture } } }, 0);
  add('moved', { pbrMetallicRoughness: { baseColorTexture: moved } }, 1.25);
  add('second set', { pbrMetallicRoughness: { baseColorTexture: { index: texture, texCoord: 1 } } }, 2.5);
  add('maps', { normalTexture: { index: texture, scale: 0.5 }, occlusionTexture: { index: texture, strength: 0.25 } }, 3.75);
  add('dark', { emissiveTexture: { index: texture }, pbrMetallicRoughness: { metallicRoughnessTexture: { index: texture } } }, 5);
  return scene;
}

function attributeScene() {
  const scene = new Scene();
  const colors = [1, 0, 0, 0, 1, 0, 0, 0, 1, 1, 1, 1];
  const kinds = {
    floats: scene.floats('VEC3', colors),
    bytes: scene.accessor('VEC4', new Uint8Array([255, 0, 0, 255, 0, 255, 0, 255, 0, 0, 255, 128, 9, 9, 9, 0]), { normalized: true }),
    shorts: scene.accessor('VEC4', new Uint16Array([65535, 0, 0, 65535, 0, 65535, 0, 9, 0, 0, 65535, 1, 5, 5, 5, 0]), { normalized: true }),
  };
  const material = scene.add('materials', { name: 'Coloured', alphaMode: 'BLEND' });
  Object.entries(kinds).forEach(([name, COLOR_0], i) => {
    scene.node({ name, translation: [1.25 * i, 0, 0], mesh: scene.mesh([scene.square({ material, attributes: { COLOR_0 } })]) });
  });
  const TANGENT = scene.floats('VEC4', [1, 0, 0, -1, 1, 0, 0, -1, 1, 0, 0, -1, 1, 0, 0, -1]);
  const bumpy = scene.add('materials', { name: 'Bumpy', normalTexture: { index: scene.texture() } });
  scene.node({ name: 'tangents', translation: [0, 1.25, 0], mesh: scene.mesh([scene.square({ material: bumpy, attributes: { TANGENT } })]) });
  const bare = scene.square({ material });
  delete bare.attributes.NORMAL;
  scene.node({ name: 'no normals', translation: [1.25, 1.25, 0], mesh: scene.mesh([bare]) });
  return scene;
}

function primitiveScene() {
  const scene = new Scene();
  const POSITION = scene.floats('VEC3', [0, 0, 0, 1, 0, 0, 0, 1, 0, 1, 1, 0, 0, 2, 0], { withBounds: true });
  [0, 1, 2, 3, 4, 5, 6].forEach((mode) => {
    const indices = scene.accessor('SCALAR', new Uint8Array(mode === 4 ? [0, 1, 2, 2, 1, 3] : mode === 1 ? [0, 1, 2, 3] : [0, 1, 2, 3, 4]));
    scene.node({ name: `mode ${mode}`, translation: [1.5 * mode, 0, 0], mesh: scene.mesh([{ mode, indices, attributes: { POSITION } }]) });
  });
  return scene;
}

function morphScene() {
  const scene = new Scene();
  const lift = { POSITION: scene.floats('VEC3', [0, 0, 0, 0, 0, 0, 0, 0.5, 0, 0, 0.5, 0], { withBounds: true }) };
  const widen = { POSITION: scene.floats('VEC3', [-0.5, 0, 0, 0.5, 0, 0, 0.5, 0, 0, -0.5, 0, 0], { withBounds: true }) };
  const mesh = scene.mesh([scene.square({ targets: [lift, widen] })], { weights: [0.5, 0], extras: { targetNames: ['Lift', 'Widen'] } });
  const node = scene.node({ name: 'Face', mesh, weights: [0.25, 0.5] });
  const times = scene.floats('SCALAR', [0, 1], { withBounds: true });
  scene.add('animations', {
    name: 'Smile', channels: [{ sampler: 0, target: { node, path: 'weights' } }],
    samplers: [{ input: times, output: scene.floats('SCALAR', [0, 0, 1, 0.5]), interpolation: 'LINEAR' }],
  });
  return scene;
}

function clipScene() {
  const scene = new Scene();
  const material = scene.add('materials', { name: 'Moving' });
  const square = scene.mesh([scene.square({ material })], { name: 'Square' });
  const arm = scene.node({ name: 'Arm', translation: [0, 1, 0] });
  const hand = scene.node({ name: 'Hand', mesh: square, scale: [0.5, 0.5, 0.5], translation: [1, 0, 0] }, arm);
  scene.node({ name: 'Still', mesh: square, translation: [-1, 0, 0] });
  const times = scene.floats('SCALAR', [0, 0.5, 1.5], { withBounds: true });
  const clip = (name, node, path, type, values, interpolation) => scene.add('animations', {
    name, channels: [{ sampler: 0, target: { node, path } }], samplers: [{ input: times, output: scene.floats(type, values), interpolation }],
  });
  clip('Turn', arm, 'rotation', 'VEC4', [0, 0, 0, 1, 0, 0, 0.6, 0.8, 0, 0, 1, 0], 'LINEAR');
  clip('Jump', hand, 'translation', 'VEC3', [1, 0, 0, 2, 0, 0, 1, 1, 0], 'STEP');
  const still = [0, 0, 0];
  clip('Swell', hand, 'scale', 'VEC3', [...still, 1, 1, 1, ...still, ...still, 2, 2, 2, ...still, ...still, 1, 2, 1, ...still], 'CUBICSPLINE');
  return scene;
}

function skinScene() {
  const scene = new Scene();
  const root = scene.node({ name: 'Hip' });
  const knee = scene.node({ name: 'Knee', translation: [0, 0.5, 0] }, root);
  const identity = [1, 0, 0, 0, 0, 1, 0, 0, 0, 0, 1, 0, 0, 0, 0, 1];
  const lowered = [...identity.slice(0, 13), -0.5, 0, 1];
  const skin = scene.add('skins', { name: 'Leg', joints: [root, knee], inverseBindMatrices: scene.floats('MAT4', [...identity, ...lowered]) });
  const mesh = scene.mesh([scene.square({
    attributes: {
      JOINTS_0: scene.accessor('VEC4', new Uint8Array([0, 0, 0, 0, 0, 0, 0, 0, 0, 1, 0, 0, 0, 1, 0, 0])),
      WEIGHTS_0: scene.floats('VEC4', [1, 0, 0, 0, 1, 0, 0, 0, 0.25, 0.75, 0, 0, 0.25, 0.75, 0, 0]),
    },
  })]);
  scene.node({ name: 'Skinned', mesh, skin });
  scene.add('animations', {
    name: 'Kick', channels: [{ sampler: 0, target: { node: knee, path: 'rotation' } }],
    samplers: [{ input: scene.floats('SCALAR', [0, 1], { withBounds: true }), output: scene.floats('VEC4', [0, 0, 0, 1, 0, 0, 0.6, 0.8]) }],
  });
  return scene;
}

function objectScene() {
  const scene = new Scene();
  scene.use('KHR_lights_punctual');
  scene.json.extensions = { KHR_lights_punctual: { lights: [
    { name: 'Lamp', type: 'point', color: [1, 0.5, 0.25], intensity: 20, range: 7 },
    { name: 'Torch', type: 'spot', intensity: 30, spot: { innerConeAngle: 0.25, outerConeAngle: 0.5 } },
    { name: 'Sun', type: 'directional', intensity: 3 },
  ] } };
  const at = (light) => ({ extensions: { KHR_lights_punctual: { light } } });
  scene.node({ name: 'Lamp here', translation: [1, 2, 3], ...at(0) });
  scene.node({ name: 'Lamp there', translation: [-1, 2, 3], ...at(0) });
  scene.node({ name: 'Torch', translation: [0, 0, 5], ...at(1) });
  scene.node({ name: 'Sun', rotation: [0.6, 0, 0, 0.8], ...at(2) });
  const flat = scene.add('cameras', { name: 'Plan', type: 'orthographic', orthographic: { xmag: 2, ymag: 3, znear: 0.5, zfar: 9 } });
  const endless = scene.add('cameras', { name: 'View', type: 'perspective', perspective: { yfov: 0.75, aspectRatio: 1.5, znear: 0.25 } });
  scene.node({ name: 'Plan', camera: flat, translation: [0, 0, 4] });
  const tripod = scene.node({ name: 'Tripod', translation: [0, 1, 6], rotation: [0, 0.6, 0, 0.8] });
  scene.node({ name: 'View', camera: endless, extras: { shot: 3 } }, tripod);
  scene.node({ name: 'Floor', mesh: scene.mesh([scene.square({ size: 4 })]), extras: { walkable: true } });
  return scene;
}

function mirrorScene() {
  const scene = new Scene();
  const mesh = scene.mesh([scene.square({ material: scene.add('materials', { name: 'Front' }) })]);
  const mirrored = scene.node({ name: 'Mirrored', scale: [-1, 1, 1] });
  scene.node({ name: 'Once', mesh, translation: [1, 0, 0] }, mirrored);
  scene.node({ name: 'Twice', mesh, translation: [2.5, 0, 0], scale: [-0.5, 2, 1] }, mirrored);
  return scene;
}

export const features = {
  materials: materialScene, textures: textureScene, attributes: attributeScene, primitives: primitiveScene,
  'morph-targets': morphScene, clips: clipScene, skins: skinScene, objects: objectScene, mirrors: mirrorScene,
};

export const glbOf = (name) => features[name]().glb();
