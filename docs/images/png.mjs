// Writes screenshots as PNG files with a palette, which are about a third as large as those of the browser.
import { deflateSync } from 'node:zlib';

const colorOf = (data, i) => (data[i] << 16) | (data[i + 1] << 8) | data[i + 2];

function distance(a, b) {
  return [16, 8, 0].reduce((sum, shift) => sum + (((a >> shift) & 255) - ((b >> shift) & 255)) ** 2, 0);
}

// Returns the palette of the most frequent colours, and a function that finds the nearest entry for a colour.
function makePalette(data) {
  const counts = new Map();
  for (let i = 0; i < data.length; i += 4) {
    const color = colorOf(data, i);
    counts.set(color, (counts.get(color) ?? 0) + 1);
  }
  const palette = [];
  // Colours that are close to an entry do not get their own.
  for (const [color] of [...counts].sort((a, b) => b[1] - a[1])) {
    if (palette.length === 256) break;
    if (palette.every((entry) => distance(entry, color) > 60)) palette.push(color);
  }
  const nearest = new Map();
  const find = (color) => {
    if (!nearest.has(color))
      nearest.set(color, palette.reduce((best, entry, i) =>
        (distance(entry, color) < distance(palette[best], color) ? i : best), 0));
    return nearest.get(color);
  };
  return { palette, find };
}

// The checksum of a chunk.
function crc32(bytes) {
  let crc = ~0;
  for (const byte of bytes) {
    crc ^= byte;
    for (let bit = 0; bit < 8; ++bit) crc = (crc >>> 1) ^ (crc & 1 ? 0xedb88320 : 0);
  }
  return ~crc >>> 0;
}

function chunk(type, content) {
  const body = Buffer.concat([Buffer.from(type, 'latin1'), content]);
  const frame = Buffer.alloc(8);
  frame.writeUInt32BE(content.length, 0);
  frame.writeUInt32BE(crc32(body), 4);
  return Buffer.concat([frame.subarray(0, 4), body, frame.subarray(4)]);
}

// Encodes opaque RGBA pixels.
export function encodePng({ width, height, data }) {
  const { palette, find } = makePalette(data);
  const rows = Buffer.alloc(height * (width + 1));
  for (let y = 0; y < height; ++y)
    for (let x = 0; x < width; ++x) rows[y * (width + 1) + 1 + x] = find(colorOf(data, 4 * (y * width + x)));
  const header = Buffer.alloc(13);
  header.writeUInt32BE(width, 0);
  header.writeUInt32BE(height, 4);
  header.set([8, 3], 8);  // 8 bits per pixel, palette
  const colors = Buffer.from(palette.flatMap((color) => [color >> 16, (color >> 8) & 255, color & 255]));
  const signature = Buffer.from([0x89, 0x50, 0x4e, 0x47, 0x0d, 0x0a, 0x1a, 0x0a]);
  return Buffer.concat([signature, chunk('IHDR', header), chunk('PLTE', colors),
    chunk('IDAT', deflateSync(rows, { level: 9 })), chunk('IEND', Buffer.alloc(0))]);
}
