// The web page's speed and weight (make bench-web): the time from pressing Export to the
// download links for DejaVu Sans at 16 px, 32-126, against the native exporter's whole
// process (goal: at most 3 times); the site's weight without fonts (goal: at most 4 MiB);
// the time from opening the page to its first preview.
// Usage: node bench/web_bench.mjs SITE_DIR NATIVE_EXPORTER
import { execFileSync } from 'node:child_process';
import { mkdtempSync, readdirSync, statSync } from 'node:fs';
import { tmpdir } from 'node:os';
import { join } from 'node:path';
import { openPage } from '../tests/web/page_session.mjs';

const [siteDir = 'build-web/site', nativeExporter = 'build/veltrane-fontgen-export'] = process.argv.slice(2);
const RUNS = 15;
const DEJAVU = '/usr/share/fonts/truetype/dejavu/DejaVuSans.ttf';

const median = (values) => [...values].sort((a, b) => a - b)[Math.floor(values.length / 2)];

function nativeExportMs() {
  const out = mkdtempSync(join(tmpdir(), 'veltrane-bench-'));
  const times = [];
  for (let i = 0; i < RUNS; ++i) {
    const start = process.hrtime.bigint();
    execFileSync(nativeExporter, ['--height', '16', '--chars', '32-126', DEJAVU, join(out, 'DejaVuSans.cpp')]);
    times.push(Number(process.hrtime.bigint() - start) / 1e6);
  }
  return median(times);
}

function siteBytesWithoutFonts() {
  return readdirSync(siteDir)
    .filter((name) => !/\.(ttf|otf)$/i.test(name))
    .reduce((sum, name) => sum + statSync(join(siteDir, name)).size, 0);
}

async function pageTimes() {
  const { page, close } = await openPage();
  await page.waitForFunction(() => Number(document.getElementById('preview').dataset.drawn) > 0, null, { polling: 'raf' });
  // From the start of the page's navigation.
  const firstPreviewMs = Math.round(await page.evaluate(() => performance.now()));
  // Let the live check of the opening fields finish first.
  await page.waitForFunction(() => document.getElementById('stats').textContent.length > 0);
  const times = [];
  for (let i = 0; i < RUNS; ++i) {
    times.push(await page.evaluate(() => new Promise((done) => {
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
    })));
  }
  await close();
  return { firstPreviewMs, exportMs: median(times) };
}

const nativeMs = nativeExportMs();
const { firstPreviewMs, exportMs } = await pageTimes();
const weight = siteBytesWithoutFonts();
const row = (what, value, goal) => console.log(`${what.padEnd(46)}${value.padStart(14)}   ${goal}`);
row('native exporter, whole process (median)', `${nativeMs.toFixed(1)} ms`, '');
row('page, Export to links (median)', `${exportMs.toFixed(1)} ms`, '');
row('page against native', `${(exportMs / nativeMs).toFixed(2)} x`, 'goal <= 3 x');
row('site without fonts', `${(weight / 1048576).toFixed(2)} MiB`, 'goal <= 4 MiB');
row('opening the page to the first preview', `${firstPreviewMs} ms`, '');
