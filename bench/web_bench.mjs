// The web page's speed and weight (make bench-web): the time from pressing Export to the
// download links against the native exporter's whole process (goal: at most 3 times), for
// DejaVu Sans at 16 px, 32-126, and for Chinese: Noto Sans CJK SC (face 2 of the 20 MB
// collection) at 16 px, 32-126 and GB2312's 3,755 level-1 characters from a strings file,
// packed in 4 bits a pixel, without kerning and with GPOS kerning; the site's weight
// without fonts (goal: at most 4 MiB); the time from opening the page to its first preview.
// Usage: node bench/web_bench.mjs SITE_DIR NATIVE_EXPORTER
import { execFileSync } from 'node:child_process';
import { mkdtempSync, readdirSync, statSync, symlinkSync } from 'node:fs';
import { tmpdir } from 'node:os';
import { basename, join, resolve } from 'node:path';
import { setTimeout as sleep } from 'node:timers/promises';
import { openPage } from '../tests/web/page_session.mjs';

const [siteDir = 'build-web/site', exporterPath = 'build/veltrane-fontgen-export'] = process.argv.slice(2);
const nativeExporter = resolve(exporterPath);
// A visitor presses Export after a pause, in which the page readies the next export.
const PAUSE_MS = 300;
const DEJAVU = '/usr/share/fonts/truetype/dejavu/DejaVuSans.ttf';
const CJK = '/usr/share/fonts/opentype/noto/NotoSansCJK-Regular.ttc';
const GB2312 = resolve('bench/gb2312_level1.txt');

// Each case: the page's fields (ids to values; file fields take paths), its files, and
// the native exporter's arguments, or null for the page's own command line (its files in
// the native exporter's working directory under their names, as the page names them).
const CJK_FIELDS = { 'font-file': CJK, face: '2', format: 'packed', 'text-files': GB2312 };
const CASES = [
  {
    what: 'DejaVu Sans 16 px, 32-126',
    runs: 25,
    fields: {},
    files: [DEJAVU],
    nativeArgs: ['--height', '16', '--chars', '32-126', DEJAVU, 'DejaVuSans.cpp'],
  },
  {
    what: 'Noto Sans CJK SC 16 px, GB2312, --kerning none',
    runs: 7,
    fields: { ...CJK_FIELDS, kerning: 'none' },
    files: [CJK, GB2312],
    nativeArgs: null,
  },
  {
    what: 'Noto Sans CJK SC 16 px, GB2312, --kerning gpos',
    runs: 3,
    fields: { ...CJK_FIELDS, kerning: 'gpos' },
    files: [CJK, GB2312],
    nativeArgs: null,
  },
];

const median = (values) => [...values].sort((a, b) => a - b)[Math.floor(values.length / 2)];

function nativeExportMs(args, dir) {
  const start = process.hrtime.bigint();
  execFileSync(nativeExporter, args, { cwd: dir });
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

// Sets the fields and waits for the live check of them, so that it runs beside no export.
async function setFields(page, fields) {
  for (const [id, value] of Object.entries(fields)) {
    const kind = await page.$eval(`#${id}`, (element) => element.type);
    if (kind === 'file') await page.setInputFiles(`#${id}`, value);
    else if (kind === 'select-one') await page.selectOption(`#${id}`, value);
    else await page.fill(`#${id}`, value);
  }
  await page.evaluate(() => fontsArriving);
  const command = await page.evaluate(() => VeltraneCommand.commandArguments(fieldValues()));
  await sleep(PAUSE_MS);
  await page.waitForFunction(() => !document.getElementById('stats').hasAttribute('aria-busy'), null, { timeout: 0 });
  return command;
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

const results = [];
for (const { what, runs, fields, files, nativeArgs } of CASES) {
  const dir = mkdtempSync(join(tmpdir(), 'veltrane-bench-'));
  for (const file of files) symlinkSync(file, join(dir, basename(file)));
  const args = nativeArgs || (await setFields(page, fields));
  // Turn about, so that both see the same load on a shared machine.
  const native = [];
  const web = [];
  for (let i = 0; i < runs; ++i) {
    native.push(nativeExportMs(args, dir));
    await sleep(PAUSE_MS);
    web.push(await pageExportMs(page));
  }
  results.push({ what, nativeMs: median(native), exportMs: median(web) });
}
await close();

const row = (what, value, goal = '') => console.log(`${what.padEnd(58)}${value.padStart(12)}   ${goal}`);
for (const { what, nativeMs, exportMs } of results) {
  console.log(what);
  row('  native exporter, whole process (median)', `${nativeMs.toFixed(1)} ms`);
  row('  page, Export to links (median)', `${exportMs.toFixed(1)} ms`);
  row('  page against native', `${(exportMs / nativeMs).toFixed(2)} x`, 'goal <= 3 x');
}
row('site without fonts', `${(siteBytesWithoutFonts() / 1048576).toFixed(2)} MiB`, 'goal <= 4 MiB');
row('opening the page to the first preview', `${firstPreviewMs} ms`);
