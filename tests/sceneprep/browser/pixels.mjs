// Compares screenshots.

// Decodes images in a separate page of the browser.
export class PixelReader {
  #page;

  constructor(page) {
    this.#page = page;
  }

  // Returns the share of coloured pixels; backgrounds are grey.
  async shareOfColored(png) {
    return this.#page.evaluate(async ([text]) => {
      const { data } = await decode(text);
      let colored = 0;
      for (let i = 0; i < data.length; i += 4) {
        const [r, g, b] = data.subarray(i, i + 3);
        if (Math.max(r, g, b) - Math.min(r, g, b) > 40) ++colored;
      }
      return colored / (data.length / 4);
    }, [png.toString('base64')]);
  }

  // Returns the share of pixels that differ visibly between two images of equal size.
  async shareOfDifferent(a, b) {
    return this.#page.evaluate(async (texts) => {
      const [{ data: one }, { data: other }] = await Promise.all(texts.map(decode));
      let different = 0;
      for (let i = 0; i < one.length; i += 4)
        if ([0, 1, 2].some((c) => Math.abs(one[i + c] - other[i + c]) > 20)) ++different;
      return different / (one.length / 4);
    }, [a.toString('base64'), b.toString('base64')]);
  }

  static async open(context) {
    const page = await context.newPage();
    await page.evaluate(() => {
      globalThis.decode = async (text) => {
        const bytes = Uint8Array.from(atob(text), (c) => c.charCodeAt(0));
        const bitmap = await createImageBitmap(new Blob([bytes], { type: 'image/png' }));
        const canvas = new OffscreenCanvas(bitmap.width, bitmap.height);
        const drawing = canvas.getContext('2d');
        drawing.drawImage(bitmap, 0, 0);
        return drawing.getImageData(0, 0, bitmap.width, bitmap.height);
      };
    });
    return new PixelReader(page);
  }
}
