// Reads a .glb file and lists the surfaces that it draws.
import { Box3, DataTexture, Group, SRGBColorSpace } from 'three';
import { GLTFLoader } from 'three/addons/loaders/GLTFLoader.js';
import { listPoints } from './listPoints.mjs';

function whiteTexture() {
  const texture = new DataTexture(new Uint8Array([255, 255, 255, 255]), 1, 1);
  texture.colorSpace = SRGBColorSpace;
  texture.needsUpdate = true;
  return texture;
}

// Images that are not in the file, and kinds that browsers cannot decode, are replaced by white.
class ImageReplacement {
  name = 'sceneprep_image_replacement';
  replaced = new Set();
  #parser;

  constructor(parser) {
    this.#parser = parser;
    const ktx2 = { load: (url, show) => show(this.#replace(url)) };
    if (parser.json.extensionsRequired?.includes('KHR_texture_basisu')) parser.options.ktx2Loader = ktx2;
  }

  loadTexture(index) {
    const { textures, images } = this.#parser.json;
    const image = images?.[textures[index].source];
    return image?.bufferView === undefined ? Promise.resolve(this.#replace(index)) : null;
  }

  #replace(key) {
    this.replaced.add(key);
    return whiteTexture();
  }
}

// Returns the nodes that an object belongs to: its own, then the parents.
function nodesOf(object, { json, associations }) {
  const nodes = [];
  for (let at = object; at; at = at.parent) {
    const { nodes: node } = associations.get(at) ?? {};
    if (node !== undefined) nodes.push({ index: node, ...json.nodes[node] });
  }
  return nodes;
}

function countTriangles({ isMesh, isInstancedMesh, count, geometry }) {
  if (!isMesh) return 0;
  return ((geometry.index ?? geometry.attributes.position).count / 3) * (isInstancedMesh ? count : 1);
}

// A surface is one draw call: one primitive of the mesh of a node.
function surfaceOf(object, parser) {
  const { json, associations } = parser;
  const { meshes = -1, primitives = 0 } = associations.get(object) ?? {};
  const [node = { index: -1 }, parent] = nodesOf(object, parser);
  const mesh = json.meshes?.[meshes] ?? { primitives: [] };
  const primitive = mesh.primitives[primitives] ?? {};
  const extras = { ...node.extras, ...primitive.extras };
  const material = primitive.material ?? -1;
  return {
    object, material,
    look: object.material,
    triangles: countTriangles(object),
    offset: Number.isInteger(extras.collisionOffset) ? extras.collisionOffset : 0,
    nodeNames: [node.name ?? '', parent?.name ?? ''],
    meshNames: [mesh.name ?? '', extras.surfaceName ?? ''],
    nodeName: node.name || `node ${node.index + 1}`,
    materialName: json.materials?.[material]?.name ?? '',
  };
}

function listSurfaces(scene, parser) {
  const surfaces = [];
  scene.traverse((object) => {
    if (object.isLight || object.isCamera) object.visible = false;
    if (object.isMesh || object.isLine || object.isPoints) surfaces.push(surfaceOf(object, parser));
  });
  surfaces.forEach((surface, index) => { surface.index = index; });
  return surfaces;
}

export async function loadModel(bytes) {
  let replacement;
  const loader = new GLTFLoader().register((parser) => (replacement = new ImageReplacement(parser)));
  const { scene = new Group(), animations, parser } = await loader.parseAsync(bytes.buffer, '');
  scene.updateMatrixWorld(true);
  const surfaces = listSurfaces(scene, parser);
  return {
    scene, animations, surfaces,
    bytes: bytes.length,
    box: new Box3().setFromObject(scene, surfaces.some(({ object }) => object.isSkinnedMesh)),
    points: listPoints(surfaces),
    images: parser.json.images?.length ?? 0,
    replacedImages: replacement.replaced.size,
    triangles: surfaces.reduce((sum, { triangles }) => sum + triangles, 0),
  };
}
