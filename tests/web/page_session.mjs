// The built page served on the loopback address and opened in Debian's headless Chromium,
// every console error and failed request kept for the tests to check; and the native
// exporter run the same way, to compare with.
import { execFile } from 'node:child_process';
import { copyFile, mkdtemp, readFile, readdir } from 'node:fs/promises';
import { createRequire } from 'node:module';
import { tmpdir } from 'node:os';
import { basename, join, resolve } from 'node:path';
import { promisify } from 'node:util';
import { serveSite } from '../../scripts/serve-web.mjs';

const webDir = resolve(process.env.WEB_DIR || 'build-web');
const require = createRequire(join(webDir, 'npm', 'package.json'));
const { chromium } = require('playwright-core');

export const nativeExporter = resolve(process.env.NATIVE_EXPORTER || 'build/veltrane-fontgen-export');

export async function openPage() {
  const { server, url } = await serveSite(join(webDir, 'site'));
  const browser = await chromium.launch({ executablePath: '/usr/bin/chromium', args: ['--no-sandbox'] });
  const page = await browser.newPage({ acceptDownloads: true });
  const problems = [];
  page.on('console', (message) => {
    if (message.type() === 'error') problems.push(`console: ${message.text()}`);
  });
  page.on('pageerror', (error) => problems.push(`page error: ${error.message}`));
  page.on('requestfailed', (request) => problems.push(`failed request: ${request.url()}`));
  page.on('response', (response) => {
    if (response.status() >= 400) problems.push(`HTTP ${response.status()}: ${response.url()}`);
  });
  await page.goto(url);
  const close = async () => {
    await browser.close();
    server.close();
  };
  return { page, problems, close };
}

// The files behind the page's download links (the pair and the proof), by their download
// names.
export async function downloadedFiles(page) {
  return page.evaluate(async () => {
    const files = {};
    for (const link of document.querySelectorAll('#download-source, #download-header, #download-proof')) {
      if (link.hidden) continue;
      const bytes = new Uint8Array(await (await fetch(link.href)).arrayBuffer());
      files[link.download] = Array.from(bytes);
    }
    return files;
  });
}

// Runs the native exporter on `args`, with the fonts `fontPaths` copied into a scratch
// directory under their own names, as the page names them. Returns its exit status,
// standard output and error, and the files it wrote there.
export async function runNative(args, fontPaths) {
  const dir = await mkdtemp(join(tmpdir(), 'veltrane-web-'));
  for (const font of fontPaths) await copyFile(font, join(dir, basename(font)));
  let status = 0;
  let stdout = '';
  let stderr = '';
  try {
    ({ stdout, stderr } = await promisify(execFile)(nativeExporter, args, { cwd: dir }));
  } catch (e) {
    status = e.code;
    stderr = e.stderr;
  }
  const files = {};
  const fonts = new Set(fontPaths.map((font) => basename(font)));
  for (const name of await readdir(dir)) {
    if (!fonts.has(name)) files[name] = Array.from(await readFile(join(dir, name)));
  }
  return { status, stdout, stderr, files };
}

// Standard error as the page shows it: without the program's prefix.
export function asShown(stderr) {
  return stderr.replace(/^veltrane-fontgen-export: /gm, '').trimEnd();
}
