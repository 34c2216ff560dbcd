// The web page in headless Chromium: it opens with a drawn preview, its exports are the
// native exporter's bytes, its messages are the native exporter's, and nothing fails on
// the way.
import assert from 'node:assert/strict';
import { spawnSync } from 'node:child_process';
import { readFile } from 'node:fs/promises';
import { after, before, test } from 'node:test';
import { asShown, downloadedFiles, openPage, runNative } from './page_session.mjs';

const DEJAVU = '/usr/share/fonts/truetype/dejavu/DejaVuSans.ttf';
const NOTO = '/usr/share/fonts/truetype/noto/NotoSans-Regular.ttf';
const KOI8R_PCF = '/usr/share/fonts/X11/misc/5x8-KOI8-R.pcf.gz';
const TEST_FONT = 'tests/fonts/veltrane-test.ttf';
const ICONS_FONT = 'tests/fonts/veltrane-test-icons.ttf';
const FIRA_WOFF2 = '/usr/share/fonts-firacode/woff2/FiraCode-Regular.woff2';
const AWESOME_WOFF2 = '/usr/share/fonts-font-awesome/fonts/fontawesome-webfont.woff2';
const CJK = '/usr/share/fonts/opentype/noto/NotoSansCJK-Regular.ttc';
const STRINGS_ZH = 'tests/web/strings-zh.txt';

let session;
let page;

before(async () => {
  session = await openPage();
  page = session.page;
});

after(async () => {
  await session.close();
});

// Sets the page's fields: ids to values (a boolean checks a checkbox, a path names the
// file of a file field); the rest back to their defaults first, DejaVu Sans the font.
async function fill(givenFields) {
  const fields = { 'font-file': DEJAVU, 'glyphs-file': [], 'fallback-files': [], 'text-files': [], ...givenFields };
  await page.evaluate(() => {
    for (const element of document.querySelectorAll('#fields input:not([type=file]), #fields select')) {
      if (element.type === 'checkbox') element.checked = false;
      else if (element.tagName === 'SELECT') element.selectedIndex = [...element.options].findIndex((o) => o.defaultSelected);
      else element.value = element.defaultValue;
    }
  });
  for (const [id, value] of Object.entries(fields)) {
    const selector = `#${id}`;
    const kind = await page.$eval(selector, (element) => element.type || element.tagName);
    if (kind === 'file') await page.setInputFiles(selector, value);
    else if (kind === 'checkbox') await page.setChecked(selector, value);
    else if (kind === 'select-one') await page.selectOption(selector, value);
    else await page.fill(selector, value);
  }
}

// Presses Export and waits for its answer: links or a message.
async function exportNow() {
  await page.click('#export');
  await page.waitForFunction(() => !document.getElementById('export').disabled);
}

// The page's command line once the files chosen last have reached it.
const pageArguments = () =>
  page.evaluate(async () => {
    await fontsArriving;
    return VeltraneCommand.commandArguments(fieldValues());
  });

// The desktop program's preview of the default list, 800 x 220 grey pixels (PGM).
async function desktopPreview() {
  const pgm = await readFile('tests/raster/expected/dejavu_default_list.pgm');
  const header = pgm.subarray(0, 15).toString('latin1');
  assert.equal(header, 'P5 800 220 255\n');
  return Array.from(pgm.subarray(header.length));
}

test("opens with DejaVu Sans drawn as the desktop program's preview draws it", async () => {
  await page.waitForFunction(() => Number(document.getElementById('preview').dataset.drawn) > 0);
  // The top 220 rows: a taller picture only adds rows below.
  const drawn = await page.$eval('#preview', (canvas) => {
    const { data } = canvas.getContext('2d').getImageData(0, 0, 800, 220);
    return Array.from(data.filter((_, i) => i % 4 === 0));
  });
  assert.deepEqual(drawn, await desktopPreview());
  await page.waitForFunction(() => document.getElementById('stats').textContent.length > 0);
});

// Where the upright picture's pixel (x, y) of a w x h picture lands when turned, as the
// exported pixel arrays turn (90: a quarter turn anticlockwise).
const TURNS = {
  90: (x, y, w) => [y, w - 1 - x],
  180: (x, y, w, h) => [w - 1 - x, h - 1 - y],
  270: (x, y, w, h) => [h - 1 - y, x],
};

test('turns the preview to the rotation chosen beside it', async () => {
  const expected = await desktopPreview();
  for (const [rotation, turn] of Object.entries(TURNS)) {
    await page.selectOption('#preview-rotation', rotation);
    await page.waitForFunction((r) => document.getElementById('preview').width === (r === '180' ? 800 : 300), rotation);
    const grey = await page.$eval('#preview', (canvas) =>
      Array.from(canvas.getContext('2d').getImageData(0, 0, canvas.width, canvas.height).data.filter((_, i) => i % 4 === 0)));
    const width = rotation === '180' ? 800 : 300;
    for (let y = 0; y < 220; y += 7) {
      for (let x = 0; x < 800; x += 5) {
        const [tx, ty] = turn(x, y, 800, 300);
        assert.equal(grey[ty * width + tx], expected[y * 800 + x], `rotation ${rotation}, pixel ${x},${y}`);
      }
    }
  }
  await page.selectOption('#preview-rotation', '0');
});

// The README's examples and the golden exports' options, one font of each kind, with the
// command line the page shows for them.
const GOLDEN_CASES = [
  {
    title: 'the defaults',
    fonts: [DEJAVU],
    fields: {},
    command: 'veltrane-fontgen-export --proof DejaVuSans.png DejaVuSans.ttf DejaVuSans.cpp',
    cmake: 'veltrane_add_bitmap_font(firmware FONT fonts/DejaVuSans.ttf NAME DejaVuSans)',
  },
  {
    title: 'Russian from GPOS in CP1251',
    fonts: [NOTO],
    fields: { 'font-file': NOTO, codepage: 'CP1251', text: 'Привет, мир', kerning: 'gpos' },
    command:
      "veltrane-fontgen-export --chars 32-126 --text 'Привет, мир' --codepage CP1251 --kerning gpos " +
      "--proof NotoSans_Regular.png --proof-text 'Привет, мир' NotoSans-Regular.ttf NotoSans_Regular.cpp",
  },
  {
    title: 'a 1-bit OLED font in one rotation',
    fonts: [DEJAVU],
    fields: { 'font-file': DEJAVU, name: 'Oled', height: '12', text: "it's $5; ok", mono: true, hinting: 'auto', rotations: '0' },
    command:
      "veltrane-fontgen-export --height 12 --chars 32-126 --text 'it'\\''s $5; ok' --rotations 0 --hinting auto " +
      "--mono --proof Oled.png --proof-text 'it'\\''s $5; ok' DejaVuSans.ttf Oled.cpp",
    cmake:
      'veltrane_add_bitmap_font(firmware FONT fonts/DejaVuSans.ttf NAME Oled HEIGHT 12 CHARS 32-126 ROTATIONS 0 ' +
      'OPTIONS --text "it\'s \\$5\\; ok" --hinting auto --mono)',
  },
  {
    title: 'gamma, light hinting and legacy kerning of the test font',
    fonts: [TEST_FONT],
    fields: { 'font-file': TEST_FONT, height: '0x10', chars: '32-126,0xC0-0xFF', gamma: '2.2', hinting: 'light', rotations: '180,0' },
    command:
      'veltrane-fontgen-export --height 0x10 --chars 32-126,0xC0-0xFF --rotations 180,0 --hinting light ' +
      '--gamma 2.2 --proof veltrane_test.png veltrane-test.ttf veltrane_test.cpp',
  },
  {
    title: 'glyphs and a fallback from another font',
    fonts: [TEST_FONT, ICONS_FONT],
    fields: { 'font-file': TEST_FONT, chars: '65,66,86', 'glyphs-file': ICONS_FONT, glyphs: '0xE000-0xE001=>0x80', 'fallback-files': ICONS_FONT },
    command:
      "veltrane-fontgen-export --chars 65,66,86 --glyphs 'veltrane-test-icons.ttf:0xE000-0xE001=>0x80' " +
      '--fallback veltrane-test-icons.ttf --proof veltrane_test.png veltrane-test.ttf veltrane_test.cpp',
    cmake:
      'veltrane_add_bitmap_font(firmware FONT fonts/veltrane-test.ttf NAME veltrane_test CHARS 65,66,86 ' +
      'GLYPHS "fonts/veltrane-test-icons.ttf:0xE000-0xE001=>0x80" FALLBACK fonts/veltrane-test-icons.ttf)',
  },
  {
    title: 'an X11 bitmap font in KOI8-R',
    fonts: [KOI8R_PCF],
    fields: { 'font-file': KOI8R_PCF, height: '8', chars: '', codepage: 'KOI8-R', text: 'Привет', name: 'Koi8' },
    command:
      "veltrane-fontgen-export --height 8 --text 'Привет' --codepage KOI8-R --proof Koi8.png --proof-text 'Привет' " +
      '5x8-KOI8-R.pcf.gz Koi8.cpp',
  },
  {
    title: 'a packed font',
    fonts: [DEJAVU],
    fields: { format: 'packed', name: 'Small' },
    command: 'veltrane-fontgen-export --format packed --proof Small.png DejaVuSans.ttf Small.c',
    cmake: 'veltrane_add_bitmap_font(firmware FONT fonts/DejaVuSans.ttf NAME Small FORMAT packed)',
  },
  {
    title: 'a packed 1-bit font, stored plain',
    fonts: [DEJAVU],
    fields: { format: 'packed', mono: true, compress: 'none', height: '12' },
    command:
      'veltrane-fontgen-export --height 12 --mono --format packed --compress none --proof DejaVuSans.png ' +
      'DejaVuSans.ttf DejaVuSans.c',
    cmake:
      'veltrane_add_bitmap_font(firmware FONT fonts/DejaVuSans.ttf NAME DejaVuSans FORMAT packed COMPRESS none ' +
      'HEIGHT 12 OPTIONS --mono)',
  },
  {
    title: 'a packed font in 2 bits a pixel, run-length coded only',
    fonts: [NOTO],
    fields: { 'font-file': NOTO, format: 'packed', bpp: '2', compress: 'runs', kerning: 'auto' },
    command:
      'veltrane-fontgen-export --kerning auto --format packed --bpp 2 --compress runs --proof NotoSans_Regular.png ' +
      'NotoSans-Regular.ttf NotoSans_Regular.c',
    cmake:
      'veltrane_add_bitmap_font(firmware FONT fonts/NotoSans-Regular.ttf NAME NotoSans_Regular FORMAT packed BPP 2 ' +
      'COMPRESS runs OPTIONS --kerning auto)',
  },
  {
    title: 'a Unicode font: Greek capitals past 255, a Cyrillic text, Chinese from a strings file and a collection',
    fonts: [DEJAVU, STRINGS_ZH, CJK],
    fields: {
      format: 'packed', name: 'Unicode', chars: '32-126,0x391-0x3A9', text: 'Привет, Γειά σου, 你好',
      'text-files': STRINGS_ZH, 'fallback-files': CJK,
    },
    command:
      "veltrane-fontgen-export --chars 32-126,0x391-0x3A9 --text 'Привет, Γειά σου, 你好' --text-file strings-zh.txt " +
      "--format packed --fallback NotoSansCJK-Regular.ttc --proof Unicode.png --proof-text 'Привет, Γειά σου, 你好' " +
      'DejaVuSans.ttf Unicode.c',
    cmake:
      'veltrane_add_bitmap_font(firmware FONT fonts/DejaVuSans.ttf NAME Unicode FORMAT packed CHARS 32-126,0x391-0x3A9 ' +
      'FALLBACK fonts/NotoSansCJK-Regular.ttc TEXT_FILES strings/strings-zh.txt OPTIONS --text "Привет, Γειά σου, 你好")',
  },
  {
    title: 'WOFF2 fonts, Fira Code with Font Awesome icons',
    fonts: [FIRA_WOFF2, AWESOME_WOFF2],
    fields: { 'font-file': FIRA_WOFF2, 'glyphs-file': AWESOME_WOFF2, glyphs: '0xF000-0xF003=>0x80', name: 'Fira' },
    command:
      "veltrane-fontgen-export --glyphs 'fontawesome-webfont.woff2:0xF000-0xF003=>0x80' --proof Fira.png " +
      'FiraCode-Regular.woff2 Fira.cpp',
  },
];

// Each export's files, the proof among them, are the native exporter's; so is the
// cmake call, which leaves the proof out.
for (const { title, fonts, fields, command, cmake } of GOLDEN_CASES) {
  test(`exports the native exporter's files: ${title}`, async () => {
    await fill(fields);
    await exportNow();
    const native = await runNative(await pageArguments(), fonts);
    assert.equal(native.status, 0, native.stderr);
    assert.deepEqual(await downloadedFiles(page), native.files);
    assert.equal(await page.textContent('#message'), asShown(native.stderr));
    assert.equal(await page.textContent('#command'), command);
    if (cmake) assert.equal(await page.textContent('#cmake-call'), cmake);
  });
}

// What a visitor can get wrong: the native exporter's messages, and no link.
const BAD_CASES = [
  { title: 'a height out of range', fonts: [DEJAVU], fields: { height: '5' } },
  { title: 'a height that is no number', fonts: [DEJAVU], fields: { height: '16px' } },
  { title: 'characters that run backwards', fonts: [DEJAVU], fields: { chars: '126-32,OxFF' } },
  { title: 'a character outside the codepage', fonts: [DEJAVU], fields: { text: '€', codepage: 'ISO-8859-1' } },
  { title: 'an unknown codepage', fonts: [DEJAVU], fields: { codepage: 'CP9999' } },
  { title: 'a codepage that is not 8-bit', fonts: [DEJAVU], fields: { codepage: 'utf-8' } },
  // The hint names every common codepage that holds the text, CP852 included.
  { title: 'a text Latin-1 cannot hold', fonts: [DEJAVU], fields: { text: 'Győr' } },
  { title: 'a gamma out of range', fonts: [DEJAVU], fields: { gamma: '+2' } },
  { title: 'a file that is no font', fonts: ['web/site/worker.js'], fields: { 'font-file': 'web/site/worker.js' } },
  { title: 'a strings file that is not UTF-8', fonts: [DEJAVU, KOI8R_PCF], fields: { format: 'packed', 'text-files': KOI8R_PCF } },
  { title: 'a surrogate in a Unicode font', fonts: [DEJAVU], fields: { format: 'packed', chars: '65,0xD800' } },
];

for (const { title, fonts, fields } of BAD_CASES) {
  test(`says what the native exporter says, with no link: ${title}`, async () => {
    await fill(fields);
    await exportNow();
    const native = await runNative(await pageArguments(), fonts);
    assert.notEqual(native.status, 0);
    assert.equal(await page.textContent('#message'), asShown(native.stderr));
    assert.deepEqual(await downloadedFiles(page), {});
  });
}

test('keeps the --stats table and the proof up to date as the fields change', async () => {
  await fill({ rotations: '90,0', height: '20' });
  const native = await runNative(['--stats', ...(await pageArguments())], [DEJAVU]);
  const expected = native.stdout.trimEnd();
  // The check runs a moment after the last keystroke; a wrong table shows below as a diff.
  await page.waitForFunction((text) => document.getElementById('stats').textContent === text, expected, { timeout: 10000 }).catch(() => {});
  assert.equal(await page.textContent('#stats'), expected);
  await page.waitForFunction(() => document.getElementById('proof').naturalWidth > 0);
  await fill({ height: '3' });
  await page.waitForFunction(() => document.getElementById('proof').hidden);
  const failed = await runNative(['--stats', ...(await pageArguments())], [DEJAVU]);
  assert.equal(await page.textContent('#stats'), asShown(failed.stderr));
});

// The 20 MB collection with every CJK ideograph listed: the check of those 20,992 glyphs (a
// whole export) takes seconds in the page, and once the fields change it is ended, not
// waited for; the page's own JS is never held up. The strings file's export is the native one.
test('previews a 20 MB collection and takes new fields at once while a long check is under way', async () => {
  await page.evaluate(() => {
    let last = performance.now();
    window.longestPause = 0; // the longest the page's own JS went without a turn
    window.pauseWatch = setInterval(() => {
      window.longestPause = Math.max(window.longestPause, performance.now() - last);
      last = performance.now();
    }, 10);
  });
  await fill({ 'font-file': CJK, face: '2', format: 'packed', 'text-files': STRINGS_ZH });
  const args = await pageArguments();
  const table = (await runNative(['--stats', ...args], [CJK, STRINGS_ZH])).stdout.trimEnd();
  await page.waitForFunction((shown) => document.getElementById('stats').textContent === shown, table);
  await page.waitForFunction(() => !document.getElementById('stats').hasAttribute('aria-busy'));
  const grey = () => page.$eval('#preview', (canvas) =>
    Array.from(canvas.getContext('2d').getImageData(0, 0, 800, 220).data.filter((_, i) => i % 4 === 0)));
  const drawnNow = () => page.$eval('#preview', (canvas) => Number(canvas.dataset.drawn));
  const ascii = await grey();

  let drawn = await drawnNow();
  await page.fill('#chars', '0x4E00-0x9FFF');
  await page.waitForFunction((before) => Number(document.getElementById('preview').dataset.drawn) > before, drawn);
  const ideographs = await grey();
  assert.ok(ideographs.some((value) => value < 200));
  assert.notDeepEqual(ideographs, ascii);
  await page.waitForFunction(() => document.getElementById('stats').hasAttribute('aria-busy'));
  await page.evaluate(() => {
    window.tablesShown = [];
    const stats = document.getElementById('stats');
    new MutationObserver(() => tablesShown.push(stats.textContent)).observe(stats, { childList: true, subtree: true });
  });
  drawn = await drawnNow();
  await page.fill('#chars', '32-126');
  assert.match(await page.textContent('#command'), /^veltrane-fontgen-export --chars 32-126 --text-file strings-zh.txt /);
  await page.waitForFunction((before) => Number(document.getElementById('preview').dataset.drawn) > before, drawn);
  assert.deepEqual(await grey(), ascii);
  await page.waitForFunction(() => !document.getElementById('stats').hasAttribute('aria-busy'));
  // The check of the ideographs was ended unshown: the new table is the only one shown.
  assert.deepEqual([...new Set(await page.evaluate(() => tablesShown))], [table]);
  assert.ok((await page.evaluate(() => clearInterval(pauseWatch) || longestPause)) < 500);

  await exportNow();
  const exported = await runNative(args, [CJK, STRINGS_ZH]);
  assert.equal(await page.textContent('#message'), asShown(exported.stderr));
  assert.deepEqual(await downloadedFiles(page), exported.files);
  assert.ok('NotoSansCJK_Regular.png' in exported.files);
});

// The bytes 128 to 255 that glibc's iconv reads as one character each in `codepage`, as a
// --chars list: each byte is converted on a line of its own.
function definedHighBytes(codepage) {
  const bytes = Array.from({ length: 128 }, (_, i) => 128 + i);
  const { stdout } = spawnSync('iconv', ['-c', '-f', codepage, '-t', 'UTF-8'], {
    input: Buffer.from(bytes.flatMap((byte) => [byte, 10])),
    encoding: 'utf8',
  });
  const lines = stdout.split('\n');
  return bytes.filter((_, i) => [...lines[i]].length === 1).join(',');
}

// Every codepage the page offers, the formerly missing ones among them, reads each byte as
// the command line does: the same files from every byte it defines; "ibm852" as iconv
// reads it.
test('exports in every codepage it offers as the command line does', async () => {
  const offered = await page.$$eval('#codepages option', (options) => options.map((o) => o.value));
  assert.ok(offered.includes('TIS-620') && offered.includes('CP852'));
  for (const codepage of [...offered, 'ibm852']) {
    await fill({ codepage, chars: definedHighBytes(codepage), height: '8', rotations: '0' });
    await exportNow();
    const native = await runNative(await pageArguments(), [DEJAVU]);
    assert.equal(native.status, 0, `${codepage}: ${native.stderr}`);
    assert.equal(await page.textContent('#message'), asShown(native.stderr), codepage);
    assert.deepEqual(await downloadedFiles(page), native.files, codepage);
  }
});

test('the page shows no console error and no failed request', () => {
  assert.deepEqual(session.problems, []);
});
