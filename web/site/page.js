// The page: fields, preview, live check, export and download links. The exporter runs in
// workers (worker.js), one for each kind of work, so that none waits for another: the
// preview, the live check (ended when the fields change under it) and the exports.
// Everything here only gathers fields and shows what comes back.
'use strict';

const $ = (id) => document.getElementById(id);
const PREVIEW_WIDTH = 800;
const PREVIEW_HEIGHT = 300;
const DEFAULT_FONT = 'DejaVuSans.ttf';

const onFailure = (text) => showMessage(text, true);
const previewer = new Engine(onFailure);
const checker = new Engine(onFailure);
const exporter = new Engine(onFailure);
// The visitor's files by name: fonts, and the strings files with how many distinct
// characters they hold.
const fonts = { main: DEFAULT_FONT, glyphs: '', fallbacks: [], textFiles: [], textFileCharacters: 0 };
let downloadUrls = [];
let packedFormatReady = false;

function fieldValues() {
  return {
    font: fonts.main,
    name: $('name').value,
    face: $('face').value,
    height: $('height').value,
    chars: $('chars').value,
    text: $('text').value,
    textFiles: fonts.textFiles,
    textFileCharacters: fonts.textFileCharacters,
    codepage: $('codepage').value,
    kerning: $('kerning').value,
    rotations: $('rotations').value,
    hinting: $('hinting').value,
    mono: $('mono').checked,
    gamma: $('gamma').value,
    format: packedFormatReady ? $('format').value : 'ds',
    bpp: $('bpp').value,
    compress: $('compress').value,
    glyphsFont: fonts.glyphs,
    glyphsList: $('glyphs').value,
    fallbacks: fonts.fallbacks,
  };
}

// The files an export of `fields` reads.
function inputsOf(fields) {
  const names = [fields.font, fields.glyphsFont, ...fields.fallbacks, ...fields.textFiles];
  return [...new Set(names.filter(Boolean))];
}

function showMessage(text, failed) {
  const message = $('message');
  message.textContent = text;
  message.classList.toggle('failed', Boolean(failed));
}

// The exporter's standard error as the visitor reads it: its lines less the program's
// prefix, which only matters in a build log.
function readable(stderr) {
  return stderr.replace(/^veltrane-fontgen-export: /gm, '').trimEnd();
}

function showCommand() {
  const fields = fieldValues();
  $('command').textContent = VeltraneCommand.shellCommand(VeltraneCommand.commandArguments(fields));
  $('cmake-call').textContent = VeltraneCommand.cmakeCall(fields);
  $('name').placeholder = VeltraneCommand.baseNameOfFont(fonts.main);
  $('proof-note').hidden = VeltraneCommand.drawsProof(fields);
}

// --- Preview -------------------------------------------------------------------------

const drawPreview = latestOnly(async () => {
  const picture = await previewer.ask('preview', {
    font: fonts.main,
    face: Number.parseInt($('face').value, 10) || 0,
    chars: $('chars').value,
    width: PREVIEW_WIDTH,
    height: PREVIEW_HEIGHT,
  });
  const canvas = $('preview');
  drawPreviewPicture(canvas, picture, Number($('preview-rotation').value));
  // Counts the pictures shown, for whoever waits for one (the tests).
  canvas.dataset.drawn = String(Number(canvas.dataset.drawn || 0) + 1);
});

// --- Live check: what the export would write, its proof and its messages -------------

let proofUrl = null;

// The proof picture's PNG bytes, or null to show none rather than an earlier one.
function showProof(png) {
  if (proofUrl) URL.revokeObjectURL(proofUrl);
  proofUrl = png ? URL.createObjectURL(new Blob([png], { type: 'image/png' })) : null;
  const proof = $('proof');
  proof.hidden = !proofUrl;
  if (proofUrl) proof.src = proofUrl;
  else proof.removeAttribute('src');
}

// The check is a whole export, which for tens of thousands of glyphs takes long: one
// still under way when the fields change has nothing left to tell, and is ended at once
// rather than waited for. The table shows as busy until the latest check's answer.
async function checkExport() {
  const fields = fieldValues();
  const args = ['--stats', ...VeltraneCommand.commandArguments(fields)];
  if (checker.busy) checker.restart();
  const stats = $('stats');
  stats.setAttribute('aria-busy', 'true');
  let result;
  try {
    result = await checker.ask('run', { args, inputs: inputsOf(fields) });
  } catch (e) {
    if (e instanceof Superseded) return;
    stats.removeAttribute('aria-busy');
    throw e;
  }
  stats.removeAttribute('aria-busy');
  const failed = result.status !== 0;
  stats.textContent = failed ? readable(result.stderr) : result.stdout.trimEnd();
  showProof(failed ? null : result.files[VeltraneCommand.proofFileName(fields)]);
}

// --- Export ----------------------------------------------------------------------------

function clearDownloads() {
  for (const url of downloadUrls) URL.revokeObjectURL(url);
  downloadUrls = [];
  for (const id of ['download-source', 'download-header', 'download-proof']) {
    const link = $(id);
    link.hidden = true;
    link.removeAttribute('href');
    link.removeAttribute('download');
    link.textContent = '';
  }
}

function offerDownload(id, fileName, bytes, type) {
  const url = URL.createObjectURL(new Blob([bytes], { type }));
  downloadUrls.push(url);
  const link = $(id);
  link.href = url;
  link.download = fileName;
  link.textContent = `Download ${fileName}`;
  link.hidden = false;
}

async function exportFont() {
  clearDownloads();
  showMessage('', false);
  await fontsArriving.catch(() => {});
  const fields = fieldValues();
  $('busy').hidden = false;
  $('export').disabled = true;
  try {
    const args = VeltraneCommand.commandArguments(fields);
    const result = await exporter.ask('run', { args, inputs: inputsOf(fields) });
    showMessage(readable(result.stderr), result.status !== 0);
    if (result.status !== 0) return;
    const names = Object.keys(result.files);
    const source = names.find((name) => /\.(cpp|c)$/.test(name));
    const header = names.find((name) => /\.h$/.test(name));
    const proof = VeltraneCommand.proofFileName(fields);
    if (source) offerDownload('download-source', source, result.files[source], 'text/plain');
    if (header) offerDownload('download-header', header, result.files[header], 'text/plain');
    if (result.files[proof]) offerDownload('download-proof', proof, result.files[proof], 'image/png');
  } catch (e) {
    showMessage(`The export could not run: ${e.message}`, true);
  } finally {
    $('busy').hidden = true;
    $('export').disabled = false;
  }
}

// --- Fonts -----------------------------------------------------------------------------

// Hands the file to every worker under its name, as the visitor's computer holds it now:
// read once here, kept by the browser, and read by a worker when it needs it.
function sendBytes(name, bytes) {
  const blob = new Blob([bytes]);
  for (const engine of [previewer, checker, exporter]) engine.putFile(name, blob);
  return name;
}

// Reads the files, then hands them all to the workers at once, so that no refresh in between
// (which lets go of the files not chosen) takes them for files no longer wanted. Returns
// their names and bytes.
async function sendFiles(files) {
  const read = await Promise.all([...files].map(async (file) => [file.name, await file.arrayBuffer()]));
  for (const [name, bytes] of read) sendBytes(name, bytes);
  return read;
}

// Hands the strings files to the workers and counts their distinct characters as the
// exporter adds them (less line breaks, tabs and a byte order mark), for the proof's limit;
// a file that is not UTF-8, which the exporter refuses, counts as TextDecoder reads it.
async function sendTextFiles(files) {
  const read = await sendFiles(files);
  const characters = new Set();
  for (const [, bytes] of read) {
    for (const character of new TextDecoder().decode(bytes)) characters.add(character);
  }
  for (const skipped of ['\n', '\r', '\t', '\uFEFF']) characters.delete(skipped);
  fonts.textFiles = read.map(([name]) => name);
  fonts.textFileCharacters = characters.size;
}

async function loadMainFont(file) {
  [[fonts.main]] = await sendFiles([file]);
  $('font-name').textContent = file.name;
  clearDownloads();
  refresh();
}

// Font files still on their way to the worker; an export waits for them.
let fontsArriving = Promise.resolve();

function whenFontsArrived(task) {
  return (event) => {
    fontsArriving = fontsArriving.then(() => task(event));
    return fontsArriving;
  };
}

function guarded(task) {
  return (...args) =>
    task(...args).catch((e) => showMessage(`The page could not do that: ${e.message}`, true));
}

// --- Wiring ----------------------------------------------------------------------------

let checkTimer = null;

function refresh() {
  const fields = fieldValues();
  for (const engine of [previewer, checker, exporter]) engine.keepFiles(inputsOf(fields));
  showCommand();
  guarded(drawPreview)();
  clearTimeout(checkTimer);
  checkTimer = setTimeout(guarded(checkExport), 150);
}

// The packed format's fields only mean something to an exporter that has --format.
async function detectPackedFormat() {
  const help = await exporter.ask('run', { args: ['--help'] });
  packedFormatReady = /--format\b/.test(help.stdout);
  $('packed-note').textContent = packedFormatReady ? '' : 'Packed fonts come with a later version of the exporter.';
  updatePackedFields();
}

// --bpp and --compress go with the packed format only.
function updatePackedFields() {
  $('format').disabled = !packedFormatReady;
  $('bpp').disabled = $('compress').disabled = !(packedFormatReady && $('format').value === 'packed');
}

async function start() {
  const response = await fetch(DEFAULT_FONT);
  if (!response.ok) throw new Error(`${DEFAULT_FONT} could not be loaded`);
  sendBytes(DEFAULT_FONT, await response.arrayBuffer());

  for (const element of $('fields').querySelectorAll('input:not([type=file]), select')) {
    element.addEventListener('input', refresh);
  }
  $('format').addEventListener('input', updatePackedFields);
  // A 1-bit render is stored in 1 bit a pixel; more bits would be a usage error.
  $('mono').addEventListener('input', () => {
    $('bpp').value = $('mono').checked ? '1' : '4';
    refresh();
  });
  $('preview-rotation').addEventListener('input', guarded(drawPreview));
  $('font-file').addEventListener('change', guarded(whenFontsArrived(async (event) => {
    if (event.target.files[0]) await loadMainFont(event.target.files[0]);
  })));
  $('glyphs-file').addEventListener('change', guarded(whenFontsArrived(async (event) => {
    fonts.glyphs = event.target.files[0] ? (await sendFiles([event.target.files[0]]))[0][0] : '';
    refresh();
  })));
  $('fallback-files').addEventListener('change', guarded(whenFontsArrived(async (event) => {
    fonts.fallbacks = (await sendFiles(event.target.files)).map(([name]) => name);
    refresh();
  })));
  $('text-files').addEventListener('change', guarded(whenFontsArrived(async (event) => {
    await sendTextFiles(event.target.files);
    refresh();
  })));
  $('export').addEventListener('click', exportFont);

  document.addEventListener('dragover', (event) => {
    event.preventDefault();
    $('drop-hint').hidden = false;
  });
  document.addEventListener('dragleave', () => ($('drop-hint').hidden = true));
  document.addEventListener('drop', (event) => {
    event.preventDefault();
    $('drop-hint').hidden = true;
    const file = event.dataTransfer.files[0];
    if (file) guarded(whenFontsArrived(() => loadMainFont(file)))();
  });

  refresh();
  await detectPackedFormat();
}

guarded(start)();
