// Reads a model file with three.js, lists its content and draws it. Runs in a browser.
import * as THREE from 'three';
import { GLTFLoader } from 'three/addons/loaders/GLTFLoader.js';

const size = 400;
const digits = 4;
const rounded = (number) => (Math.abs(number) < 10 ** -digits / 2 ? 0 : Number(number.toFixed(digits)));
const numbersOf = (value) => value.toArray().map(rounded);

async function read(base64) {
  const bytes = Uint8Array.from(atob(base64), (c) => c.charCodeAt(0));
  const gltf = await new GLTFLoader().parseAsync(bytes.buffer, '');
  gltf.scene.updateMatrixWorld(true);
  return gltf;
}

function pixelsOf({ image }) {
  const canvas = new OffscreenCanvas(image.width, image.height);
  const drawing = canvas.getContext('2d');
  drawing.drawImage(image, 0, 0);
  return Array.from(drawing.getImageData(0, 0, image.width, image.height).data).join();
}

function textureOf(texture) {
  const { channel, wrapS, wrapT, magFilter, minFilter, rotation, colorSpace } = texture;
  return {
    channel, wrapS, wrapT, magFilter, minFilter, rotation: rounded(rotation), colorSpace,
    offset: numbersOf(texture.offset), repeat: numbersOf(texture.repeat), pixels: pixelsOf(texture),
  };
}

// Every property of a material that is a plain value, a colour, a vector or a texture.
function materialOf(material) {
  const own = new Map();
  for (const key in material) {
    const value = material[key];
    if (['id', 'uuid', 'version'].includes(key) || key.startsWith('_') || typeof value === 'function') continue;
    if (value?.isTexture) own.set(key, textureOf(value));
    else if (value?.isColor || value?.isVector2) own.set(key, numbersOf(value));
    else if (typeof value === 'number') own.set(key, rounded(value));
    else if (['string', 'boolean'].includes(typeof value)) own.set(key, value);
  }
  return JSON.stringify([...own].sort(([a], [b]) => (a < b ? -1 : 1)));
}

function cornerOf(object, i) {
  const { attributes } = object.geometry;
  const place = new THREE.Vector3();
  if (object.isMesh) object.getVertexPosition(i, place); // moved by morph targets and joints
  else place.fromBufferAttribute(attributes.position, i);
  const corner = numbersOf(place.applyMatrix4(object.matrixWorld));
  const turn = new THREE.Matrix3().getNormalMatrix(object.matrixWorld);
  for (const name of Object.keys(attributes).sort()) {
    if (/^(position|skin)/.test(name)) continue;
    const values = Array.from({ length: attributes[name].itemSize }, (_, c) => attributes[name].getComponent(i, c));
    if (name === 'normal') values.splice(0, 3, ...new THREE.Vector3(...values).applyMatrix3(turn).normalize().toArray());
    if (name === 'tangent') values.splice(0, 3, ...new THREE.Vector3(...values).transformDirection(object.matrixWorld).toArray());
    if (name === 'color' && values.length === 3) values.push(1); // opaque, as the format says
    corner.push(name, ...values.map(rounded));
  }
  return corner.join(' ');
}

// Triangles begin with their smallest corner, so that it does not matter which one the file names first.
function rotated(corners) {
  const first = corners.indexOf([...corners].sort()[0]);
  return [...corners.slice(first), ...corners.slice(0, first)];
}

function facesOf(object) {
  const { index, attributes } = object.geometry;
  const count = (index ?? attributes.position).count;
  const width = object.isMesh ? 3 : object.isPoints ? 1 : 2;
  const material = materialOf(object.material);
  const mirrored = object.isMesh && object.matrixWorld.determinant() < 0;
  const faces = [];
  for (let first = 0; first + width <= count; first += width) {
    const corners = Array.from({ length: width }, (_, c) => cornerOf(object, index ? index.getX(first + c) : first + c));
    if (mirrored) corners.reverse();
    faces.push([...rotated(corners), material].join(' | '));
  }
  return faces;
}

function shownBy(scene) {
  scene.updateMatrixWorld(true);
  const faces = [];
  scene.traverse((object) => {
    if (!object.geometry) return;
    object.skeleton?.update();
    faces.push(...facesOf(object));
  });
  return faces.sort();
}

function objectsOf({ scene }) {
  const objects = [];
  scene.traverse((object) => {
    const place = object.isCamera || object.isLight ? object.matrixWorld.toArray().map(rounded) : undefined;
    if (object.isCamera) objects.push({ camera: object.projectionMatrix.toArray().map(rounded), place });
    if (object.isLight) {
      const { type, intensity, distance, angle, penumbra } = object;
      objects.push({ type, intensity, distance, angle, penumbra, color: numbersOf(object.color), place });
    }
    const { name, targetNames, ...extras } = object.userData;
    if (Object.keys(extras).length) objects.push({ extras });
  });
  return objects.map((object) => JSON.stringify(object)).sort();
}

function atTime({ scene }, clip, time) {
  const mixer = new THREE.AnimationMixer(scene);
  mixer.clipAction(clip).play();
  mixer.setTime(time);
  const faces = shownBy(scene);
  mixer.stopAllAction();
  return faces;
}

const times = [0, 0.2, 0.5, 0.8, 1.2];

// Lists what the file shows, in an order of its own, so that two lists can be compared.
export async function list(base64) {
  const gltf = await read(base64);
  const clips = gltf.animations.map((clip) => ({
    name: clip.name, duration: rounded(clip.duration), faces: times.map((time) => atTime(gltf, clip, time * clip.duration / 1.5)),
  }));
  const morphs = [];
  gltf.scene.traverse((object) => object.morphTargetDictionary && morphs.push(object.morphTargetDictionary));
  return { faces: shownBy(gltf.scene), objects: objectsOf(gltf), clips, morphs };
}

// Draws the file as a PNG, seen from a corner of its bounds, with a lamp at the camera.
export async function draw(base64) {
  const { scene } = await read(base64);
  const renderer = new THREE.WebGLRenderer({ antialias: false, preserveDrawingBuffer: true });
  renderer.setSize(size, size);
  renderer.setClearColor(0x808080);
  const { center, radius } = new THREE.Box3().setFromObject(scene, true).getBoundingSphere(new THREE.Sphere());
  const camera = new THREE.PerspectiveCamera(40, 1, radius / 50, radius * 20);
  camera.position.copy(center).addScaledVector(new THREE.Vector3(0.3, 0.4, 1).normalize(), radius * 3.2);
  camera.lookAt(center);
  const lamp = new THREE.DirectionalLight(0xffffff, 3);
  lamp.position.copy(camera.position);
  const stage = new THREE.Scene();
  stage.add(scene, lamp, new THREE.AmbientLight(0xffffff, 0.5));
  lamp.target.position.copy(center);
  stage.add(lamp.target);
  renderer.render(stage, camera);
  const url = renderer.domElement.toDataURL('image/png');
  renderer.dispose();
  return url.slice(url.indexOf(',') + 1);
}

globalThis.viewer = { list, draw };
