// Draws the engine's preview picture (RGB, three bytes a pixel; null: none) on the canvas,
// turned as the exported pixel arrays turn: 90 is a quarter turn anticlockwise.
'use strict';

function drawPreviewPicture(canvas, picture, rotation) {
  const turned = rotation === 90 || rotation === 270;
  canvas.width = turned ? picture.height : picture.width;
  canvas.height = turned ? picture.width : picture.height;
  const context = canvas.getContext('2d');
  const image = new ImageData(picture.width, picture.height);
  if (picture.rgb) {
    for (let i = 0, j = 0; i < picture.rgb.length; i += 3, j += 4) {
      image.data[j] = picture.rgb[i];
      image.data[j + 1] = picture.rgb[i + 1];
      image.data[j + 2] = picture.rgb[i + 2];
      image.data[j + 3] = 255;
    }
  } else {
    image.data.fill(255);
  }
  const upright = new OffscreenCanvas(picture.width, picture.height);
  upright.getContext('2d').putImageData(image, 0, 0);
  context.save();
  context.translate(canvas.width / 2, canvas.height / 2);
  context.rotate((-rotation * Math.PI) / 180);
  context.drawImage(upright, -picture.width / 2, -picture.height / 2);
  context.restore();
}
