// The web page's speed and weight (make bench-web): the time from pressing Export to the
// download links for DejaVu Sans at 16 px, 32-126, against the native exporter's whole
// process (goal: at most 3 times); the site's weight without fonts (goal: at most 4 MiB);
// the time from opening the page to its first preview.
// Usage: node bench/web_bench.mjs SITE_DIR NATIVE_EXPORTER
import { execFileSync } from 'node:child_process';
import { mkdtempSync, readdirSync, statSync } from 'node:fs';
import { tmpdir } from 'node:os';
import { join } from 'node:path';
import { setTimeout as sleep } from 'node:timers/promises';
import { openPage } from '../tests/web/page_session.mjs';

const [siteDir = 'build-web/site', nativeExporter = 'build/veltrane-fontgen-export'] = process.argv.slice(2);
const RUNS = 25;
// A visitor presses Export after a pause, in which the page readies the next export.
const PAUSE_MS = 300;
const DEJAVU = '/usr/share/fonts/truetype/dejavu/DejaVuSans.ttf';
const outDir = mkdtempSync(join(tmpdir(), 'veltrane-bench-'));

const median = (values) => [...values].sort((a, b) => a - b)[Math.floor(values.length / 2)];

function nativeExportMs() {
  const start = process.hrtime.bigint();
  execFileSync(nativeExporter, ['--height', '16', '--chars', '32-126', DEJAVU, join(outDir, 'DejaVuSans.cpp')]);
  return Number(process.hrtime.bigint() - start) / 1e6;
}

function pageExportMs(page) {
  return page.evaluate(
    () =>
      new Promise((done) => {
        const start = performance.now();
        const link = document.getElementById('download-source');
        const watch = new MutationObserver(() => {
          if (!link.hidden) {
            watch.disconnect();
            done(performance.now() - start);
          }
        });
        watch.observe(link, { attributes: true });
        document.getElementById('export').click();
      }),
  );
}

function siteBytesWithoutFonts() {
  return readdirSync(siteDir)
    .filter((name) => !/\.(ttf|otf)$/i.test(name))
    .reduce((sum, name) => sum + statSync(join(siteDir, name)).size, 0);
}

const { page, close } = await openPage();
await page.waitForFunction(() => Number(document.getElementById('preview').dataset.drawn) > 0, null, { polling: 'raf' });
// From the start of the page's navigation.
const firstPreviewMs = Math.round(await page.evaluate(() => performance.now()));
await page.waitForFunction(() => document.getElementById('stats').textContent.length > 0);

// Turn about, so that both see the same load on a shared machine.
const native = [];
const web = [];
for (let i = 0; i < RUNS; ++i) {
  native.push(nativeExportMs());
  await sleep(PAUSE_MS);
  web.push(await pageExportMs(page));
}
await close();

const nativeMs = median(native);
const exportMs = median(web);
const row = (what, value, goal = '') => console.log(`${what.padEnd(46)}${value.padStart(14)}   ${goal}`);
row('native exporter, whole process (median)', `${nativeMs.toFixed(1)} ms`);
row('page, Export to links (median)', `${exportMs.toFixed(1)} ms`);
row('page against native', `${(exportMs / nativeMs).toFixed(2)} x`, 'goal <= 3 x');
row('site without fonts', `${(siteBytesWithoutFonts() / 1048576).toFixed(2)} MiB`, 'goal <= 4 MiB');
row('opening the page to the first preview', `${firstPreviewMs} ms`);
