// The page's engine room: runs the exporter (compiled to WebAssembly) off the page's
// thread, so that a large font never freezes the page. The page starts several of these,
// one for each kind of work, and ends one whose work it no longer wants.
//
// Each export runs main() in a fresh instance of the compiled module, with the files it
// names (fonts, strings files) in its in-memory file system under their own names and
// the exporter's argv, exactly as on the command line; its files and standard error come
// back as written. The preview keeps one instance with the chosen font open between
// pictures.
'use strict';

importScripts('engine.js');

// The compiled module comes from the page, which compiles it once for all its workers.
let takeModule;
const compiledModule = new Promise((resolve) => (takeModule = resolve));
const workDir = '/work';

// The page's files by name: each a Blob, read here only when a request names it; the
// bytes read are kept for the requests that follow and let go of once a request no longer
// names the file, so that a visitor trying one large font after another holds one.
const files = new Map(); // name -> { blob, bytes: Promise<Uint8Array> | null }

function bytesOf(name) {
  const file = files.get(name);
  if (!file) return Promise.reject(new Error(`${name} was never given`));
  if (!file.bytes) {
    file.bytes = file.blob.arrayBuffer().then((buffer) => new Uint8Array(buffer));
    file.bytes.catch(() => (file.bytes = null));
  }
  return file.bytes;
}

// The bytes of the files `names`, as [name, bytes]; the bytes of the others let go of.
async function readInputs(names) {
  for (const [name, file] of files) if (!names.includes(name)) file.bytes = null;
  return Promise.all(names.map(async (name) => [name, await bytesOf(name)]));
}

// Puts the files into an instance's file system without a copy: every instance reads the
// same bytes, and the exporter only reads its inputs (it writes its own files under other
// names and renames them into place).
function putInputs(engine, inputs) {
  engine.FS.mkdirTree(workDir);
  engine.FS.chdir(workDir);
  for (const [name, bytes] of inputs) engine.FS.writeFile(name, bytes, { canOwn: true });
}

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

// Runs the exporter with `args` over the files `inputs` names; returns its exit status,
// standard output and error, and the files it wrote beside them, by name.
async function runExport({ args, inputs = [] }) {
  const given = await readInputs(inputs);
  const { engine, out, err } = await takeEngine();
  putInputs(engine, given);
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
  const written = {};
  for (const name of engine.FS.readdir(workDir)) {
    const path = `${workDir}/${name}`;
    if (!inputs.includes(name) && engine.FS.isFile(engine.FS.stat(path).mode)) written[name] = engine.FS.readFile(path);
  }
  return { status, stdout: joinLines(out), stderr: joinLines(err), files: written };
}

function joinLines(lines) {
  return lines.length ? lines.join('\n') + '\n' : '';
}

let previewEngine = null;
let previewFont = null; // [name, face] open in the preview

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
  if (!previewFont || previewFont[0] !== font || previewFont[1] !== face) {
    const [[, bytes]] = await readInputs([font]);
    // A new font gets a new instance, whose memory holds that font alone: the old one's,
    // grown for a large font, goes with it. Another face of the same file keeps it.
    if (!previewEngine || !previewFont || previewFont[0] !== font) previewEngine = await newEngine([], []);
    const engine = previewEngine;
    putInputs(engine, [[font, bytes]]);
    const opened = engine.ccall('page_preview_open', 'number', ['string', 'number'], [font, face]);
    // FreeType holds its own copy of the font while the face is open; neither the file
    // nor the bytes read are needed again until another face is opened.
    engine.FS.unlink(font);
    files.get(font).bytes = null;
    previewFont = opened ? [font, face] : [font, null];
  }
  const engine = previewEngine;
  const pixels = engine.ccall('page_preview_compose', 'number', ['string', 'number', 'number'], [chars, width, height]);
  if (!pixels) return { width, height, rgb: null };
  return { width, height, rgb: engine.HEAPU8.slice(pixels, pixels + width * height * 3) };
}

const handlers = {
  module({ module }) {
    takeModule(module);
  },
  // A file under its name, for every later request; replaces one of the same name.
  file({ name, blob }) {
    files.set(name, { blob, bytes: null });
    if (previewFont && previewFont[0] === name) previewFont = null;
  },
  forget({ name }) {
    files.delete(name);
  },
  run: runExport,
  preview,
};

// Files and the module come without an id and get no answer; requests get theirs by id.
self.onmessage = async (event) => {
  const { id, type } = event.data;
  if (id === undefined) {
    handlers[type](event.data);
    return;
  }
  try {
    const result = await handlers[type](event.data);
    const transfer = Object.values(result.files || {}).map((bytes) => bytes.buffer);
    if (result.rgb) transfer.push(result.rgb.buffer);
    self.postMessage({ id, result }, transfer);
  } catch (e) {
    self.postMessage({ id, error: String((e && e.message) || e) });
  }
};
