// The page's engine room: runs the exporter (compiled to WebAssembly) off the page's
// thread, so that a large font never freezes the page.
//
// Each export runs main() in a fresh instance of the compiled module, with the fonts in
// its in-memory file system under their own file names and the exporter's argv, exactly
// as on the command line; its files and standard error come back as written. The
// preview keeps one instance with the chosen font open between pictures.
'use strict';

importScripts('engine.js');

const compiledModule = WebAssembly.compileStreaming(fetch('veltrane-fontgen-export.wasm'));
const workDir = '/work';
const fonts = new Map(); // file name -> bytes
let previewEngine = null;
let previewFont = null; // [name, face] open in the preview

// A new instance of the engine; its output lines go to `out` and `err`.
async function newEngine(out, err) {
  const module = await compiledModule;
  return createVeltraneEngine({
    noInitialRun: true,
    print: (line) => out.push(line),
    printErr: (line) => err.push(line),
    instantiateWasm(imports, done) {
      WebAssembly.instantiate(module, imports).then((instance) => done(instance));
      return {};
    },
  });
}

function putFonts(engine) {
  engine.FS.mkdirTree(workDir);
  engine.FS.chdir(workDir);
  for (const [name, bytes] of fonts) engine.FS.writeFile(name, bytes);
}

// The instance the next export runs in, made ahead while the page waits for the visitor.
let spareEngine = null;

function makeEngine() {
  const out = [];
  const err = [];
  return newEngine(out, err).then((engine) => ({ engine, out, err }));
}

// An instance of its own for each export, even for two under way at once.
function takeEngine() {
  const taken = spareEngine || makeEngine();
  const spare = makeEngine();
  spare.catch(() => {
    if (spareEngine === spare) spareEngine = null;
  });
  spareEngine = spare;
  return taken;
}

// Runs the exporter with `args`; returns its exit status, standard output and error, and
// the files it wrote beside the fonts, by name.
async function runExport(args) {
  const { engine, out, err } = await takeEngine();
  putFonts(engine);
  let status = null;
  try {
    status = engine.callMain(args);
  } catch (e) {
    if (!(e && e.name === 'ExitStatus')) throw e;
    status = e.status;
  }
  // The exporter gives its files modes as on Linux, which the in-memory file system would
  // otherwise hold against this reader.
  engine.FS.ignorePermissions = true;
  const files = {};
  for (const name of engine.FS.readdir(workDir)) {
    const path = `${workDir}/${name}`;
    if (!fonts.has(name) && engine.FS.isFile(engine.FS.stat(path).mode)) files[name] = engine.FS.readFile(path);
  }
  return { status, stdout: joinLines(out), stderr: joinLines(err), files };
}

function joinLines(lines) {
  return lines.length ? lines.join('\n') + '\n' : '';
}

async function preview(request) {
  try {
    return await composePreview(request);
  } catch (e) {
    // An instance that failed (out of memory, say) is not used again.
    previewEngine = null;
    previewFont = null;
    throw e;
  }
}

async function composePreview({ font, face, chars, width, height }) {
  if (!previewEngine) {
    previewEngine = await newEngine([], []);
    previewEngine.FS.mkdirTree(workDir);
    previewEngine.FS.chdir(workDir);
  }
  const engine = previewEngine;
  if (!previewFont || previewFont[0] !== font || previewFont[1] !== face) {
    // Only the font shown is kept: a visitor may try one large font after another.
    for (const name of engine.FS.readdir(workDir)) {
      if (engine.FS.isFile(engine.FS.stat(name).mode)) engine.FS.unlink(name);
    }
    if (fonts.has(font)) engine.FS.writeFile(font, fonts.get(font));
    const opened = engine.ccall('page_preview_open', 'number', ['string', 'number'], [font, face]);
    previewFont = opened ? [font, face] : null;
  }
  const pixels = engine.ccall('page_preview_compose', 'number', ['string', 'number', 'number'], [chars, width, height]);
  if (!pixels) return { width, height, rgb: null };
  return { width, height, rgb: engine.HEAPU8.slice(pixels, pixels + width * height * 3) };
}

const handlers = {
  // A font under its file name, for every later export and preview; replaces one of the
  // same name.
  font({ name, bytes }) {
    fonts.set(name, new Uint8Array(bytes));
    if (previewFont && previewFont[0] === name) previewFont = null;
    return {};
  },
  run: ({ args }) => runExport(args),
  preview,
};

self.onmessage = async (event) => {
  const { id, type } = event.data;
  try {
    const result = await handlers[type](event.data);
    const transfer = Object.values(result.files || {}).map((bytes) => bytes.buffer);
    if (result.rgb) transfer.push(result.rgb.buffer);
    self.postMessage({ id, result }, transfer);
  } catch (e) {
    self.postMessage({ id, error: String((e && e.message) || e) });
  }
};
