// Serves a built web page on the loopback address; run alone it serves
// SITE_DIR on PORT (make web-serve), imported it gives tests and benchmarks a server of
// their own on a free port. A static host needs nothing more than this: the files, with
// application/wasm for the engine so that browsers compile it as it downloads.
import { createServer } from 'node:http';
import { readFile } from 'node:fs/promises';
import { extname, join, normalize, resolve } from 'node:path';
import { pathToFileURL } from 'node:url';

const TYPES = {
  '.html': 'text/html; charset=utf-8',
  '.js': 'text/javascript; charset=utf-8',
  '.css': 'text/css; charset=utf-8',
  '.wasm': 'application/wasm',
  '.png': 'image/png',
  '.ttf': 'font/ttf',
};

export function serveSite(siteDir, port = 0) {
  const root = resolve(siteDir);
  const server = createServer(async (request, response) => {
    const path = decodeURIComponent(new URL(request.url, 'http://localhost').pathname);
    const file = normalize(join(root, path === '/' ? 'index.html' : path));
    try {
      if (!file.startsWith(root + '/')) throw new Error('outside the site');
      const body = await readFile(file);
      response.writeHead(200, { 'Content-Type': TYPES[extname(file)] || 'application/octet-stream' });
      response.end(body);
    } catch {
      response.writeHead(404, { 'Content-Type': 'text/plain' });
      response.end('not found\n');
    }
  });
  return new Promise((done) => {
    server.listen(port, '127.0.0.1', () => done({ server, url: `http://localhost:${server.address().port}/` }));
  });
}

if (import.meta.url === pathToFileURL(process.argv[1]).href) {
  const [siteDir = 'build-web/site', port = '8080'] = process.argv.slice(2);
  const { url } = await serveSite(siteDir, Number(port));
  console.log(`Serving the web page on ${url} (Ctrl-C stops)`);
}
