// The page's side of the worker that runs the exporter: requests and their answers, and
// a way to run only the latest of many requests (one for each keystroke).
'use strict';

// Talks to the worker: each request gets its answer by id.
class Engine {
  // `onFailure` hears of a worker that could not start or stopped.
  constructor(onFailure) {
    this.worker = new Worker('worker.js');
    this.pending = new Map();
    this.nextId = 1;
    this.worker.onmessage = ({ data }) => {
      const { resolve, reject } = this.pending.get(data.id);
      this.pending.delete(data.id);
      if (data.error !== undefined) reject(new Error(data.error));
      else resolve(data.result);
    };
    this.worker.onerror = (event) => {
      event.preventDefault();
      onFailure(`The exporter stopped: ${event.message}`);
    };
  }

  ask(type, payload = {}, transfer = []) {
    const id = this.nextId++;
    return new Promise((resolve, reject) => {
      this.pending.set(id, { resolve, reject });
      this.worker.postMessage({ id, type, ...payload }, transfer);
    });
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
