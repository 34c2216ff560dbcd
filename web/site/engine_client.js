// The page's side of the workers that run the exporter: requests and their answers, the
// visitor's files handed to each, a worker ended when its work is no longer wanted, and a
// way to run only the latest of many requests (one for each keystroke).
'use strict';

// The engine compiled once, while the page loads, for every worker the page starts.
const engineModule = WebAssembly.compileStreaming(fetch('veltrane-fontgen-export.wasm'));

// What a request whose worker was ended (Engine.restart) fails with.
class Superseded extends Error {
  constructor() {
    super('superseded by a newer request');
    this.name = 'Superseded';
  }
}

// Talks to one worker: each request gets its answer by id.
class Engine {
  // `onFailure` hears of a worker that could not start or stopped.
  constructor(onFailure) {
    this.onFailure = onFailure;
    this.files = new Map(); // name -> Blob, for a worker started again
    this.nextId = 1;
    this.start();
  }

  start() {
    const worker = new Worker('worker.js');
    this.worker = worker;
    this.pending = new Map();
    worker.onmessage = ({ data }) => {
      const { resolve, reject } = this.pending.get(data.id);
      this.pending.delete(data.id);
      if (data.error !== undefined) reject(new Error(data.error));
      else resolve(data.result);
    };
    worker.onerror = (event) => {
      event.preventDefault();
      this.onFailure(`The exporter stopped: ${event.message}`);
    };
    engineModule.then(
      (module) => worker.postMessage({ type: 'module', module }),
      (e) => this.onFailure(`The exporter could not be loaded: ${e.message}`),
    );
    for (const [name, blob] of this.files) worker.postMessage({ type: 'file', name, blob });
  }

  // True while a request waits for its answer.
  get busy() {
    return this.pending.size > 0;
  }

  ask(type, payload = {}) {
    const id = this.nextId++;
    return new Promise((resolve, reject) => {
      this.pending.set(id, { resolve, reject });
      this.worker.postMessage({ id, type, ...payload });
    });
  }

  // A file (a Blob: the worker reads it only when a request names it) for every later
  // request; replaces one of the same name.
  putFile(name, blob) {
    this.files.set(name, blob);
    this.worker.postMessage({ type: 'file', name, blob });
  }

  // Lets go of every file but those `names`, so that a visitor trying one large font after
  // another keeps only those chosen.
  keepFiles(names) {
    for (const name of [...this.files.keys()]) {
      if (names.includes(name)) continue;
      this.files.delete(name);
      this.worker.postMessage({ type: 'forget', name });
    }
  }

  // Ends the work under way at once, however long it would still take: its requests fail
  // with Superseded, and a new worker with the same files takes the requests that follow.
  restart() {
    this.worker.terminate();
    const abandoned = this.pending;
    this.start();
    for (const { reject } of abandoned.values()) reject(new Superseded());
  }
}

// Runs only the latest of the requests that pile up while one is under way.
function latestOnly(task) {
  let running = false;
  let wanted = false;
  return async function run() {
    if (running) {
      wanted = true;
      return;
    }
    running = true;
    try {
      do {
        wanted = false;
        await task();
      } while (wanted);
    } finally {
      running = false;
    }
  };
}
