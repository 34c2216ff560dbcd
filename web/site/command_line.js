// The page's fields as the exporter's command line: the argv the engine runs, the same
// argv quoted for a shell, and the CMake call that makes the same export at build time.
'use strict';

const PROGRAM = 'veltrane-fontgen-export';

// The command line's defaults: a field left at its default adds no option, so that the
// files stay byte for byte the desktop program's where the options allow it.
const DEFAULTS = {
  height: '16',
  chars: '32-126',
  kerning: 'legacy',
  rotations: '0,90,180,270',
  hinting: 'native',
  gamma: '1',
  face: '0',
  format: 'ds',
};

// The base name of a font file: its name without the extension, every character other
// than a letter, digit or "_" made "_" (as the CMake function names a font).
function baseNameOfFont(fileName) {
  const stem = fileName.replace(/(\.gz)?$/i, '').replace(/\.[^.]*$/, '');
  return (stem || 'font').replace(/[^A-Za-z0-9_]/g, '_');
}

// `fields`: the page's values as text (mono: a boolean), fonts by file name:
// font, glyphsFont, glyphsList, fallbacks (array). Returns the arguments after the
// program name, the font and the output last.
function exportArguments(fields) {
  const args = [];
  const differs = (key) => fields[key] !== undefined && fields[key].trim() !== DEFAULTS[key];
  if (differs('height')) args.push('--height', fields.height);
  // With a sample text, an absent --chars means the text alone: the field's list is sent
  // whenever it shows one, and an empty field leaves the text alone.
  const text = fields.text || '';
  const chars = fields.chars.trim();
  if (text ? chars : differs('chars')) args.push('--chars', fields.chars);
  if (text) args.push('--text', text);
  if (fields.codepage && fields.codepage.trim()) args.push('--codepage', fields.codepage.trim());
  if (differs('kerning')) args.push('--kerning', fields.kerning);
  if (differs('face')) args.push('--face', fields.face);
  if (differs('rotations')) args.push('--rotations', fields.rotations);
  if (differs('hinting')) args.push('--hinting', fields.hinting);
  if (fields.mono) args.push('--mono');
  if (differs('gamma')) args.push('--gamma', fields.gamma);
  if (fields.format === 'packed') {
    args.push('--format', 'packed');
    // --bpp defaults to 1 with --mono and 4 without, and to be explicit about the default
    // would only make --mono with a grey depth a usage error.
    if (fields.bpp !== (fields.mono ? '1' : '4')) args.push('--bpp', fields.bpp);
    if (fields.compress !== 'auto') args.push('--compress', fields.compress);
  }
  if (fields.glyphsFont && fields.glyphsList && fields.glyphsList.trim()) {
    args.push('--glyphs', `${fields.glyphsFont}:${fields.glyphsList.trim()}`);
  }
  for (const fallback of fields.fallbacks || []) args.push('--fallback', fallback);
  args.push(fields.font, `${outputName(fields)}${fields.format === 'packed' ? '.c' : '.cpp'}`);
  return args;
}

function outputName(fields) {
  return fields.name && fields.name.trim() ? fields.name.trim() : baseNameOfFont(fields.font);
}

// The proof picture's file, beside the two files and named as they are: OUTPUT's name less
// its ending, every character other than a letter, digit or "_" made "_", then ".png".
function proofFileName(fields) {
  return `${outputName(fields).replace(/[^A-Za-z0-9_]/g, '_')}.png`;
}

// The page's whole command line: the export, and the proof the page shows saved beside its
// files (of the sample text, when there is one), before the font and the output.
function commandArguments(fields) {
  const args = exportArguments(fields);
  const proof = ['--proof', proofFileName(fields)];
  if (fields.text) proof.push('--proof-text', fields.text);
  args.splice(args.length - 2, 0, ...proof);
  return args;
}

// One argument as a POSIX shell reads it back.
function shellQuote(arg) {
  if (/^[A-Za-z0-9_@%+=:,./-]+$/.test(arg)) return arg;
  return `'${arg.replace(/'/g, `'\\''`)}'`;
}

function shellCommand(args) {
  return [PROGRAM, ...args].map(shellQuote).join(' ');
}

// One argument as CMake reads it back: quoted when it holds a space, quote, semicolon or
// other character CMake gives a meaning.
function cmakeQuote(arg) {
  if (/^[A-Za-z0-9_@%+=:,./-]+$/.test(arg)) return arg;
  return `"${arg.replace(/[\\"$;]/g, (c) => '\\' + c).replace(/\n/g, '\\n')}"`;
}

// The veltrane_add_bitmap_font() call of the same export, the fonts under fonts/.
function cmakeCall(fields) {
  const parts = ['veltrane_add_bitmap_font(firmware', `FONT fonts/${fields.font}`];
  const name = outputName(fields).replace(/[^A-Za-z0-9_]/g, '_');
  parts.push(`NAME ${name}`);
  const options = exportArguments({ ...fields, glyphsFont: '', fallbacks: [] }).slice(0, -2);
  const take = (option) => {
    const at = options.indexOf(option);
    if (at < 0) return null;
    const value = options[at + 1];
    options.splice(at, 2);
    return value;
  };
  if (take('--format') !== null) parts.push('FORMAT packed');
  const bpp = take('--bpp');
  if (bpp !== null) parts.push(`BPP ${bpp}`);
  const compress = take('--compress');
  if (compress !== null) parts.push(`COMPRESS ${compress}`);
  const height = take('--height');
  if (height !== null) parts.push(`HEIGHT ${cmakeQuote(height)}`);
  const chars = take('--chars');
  if (chars !== null) parts.push(`CHARS ${cmakeQuote(chars)}`);
  const rotations = take('--rotations');
  if (rotations !== null) parts.push(`ROTATIONS ${rotations.split(',').map((r) => cmakeQuote(r.trim())).join(' ')}`);
  if (fields.glyphsFont && fields.glyphsList && fields.glyphsList.trim()) {
    parts.push(`GLYPHS ${cmakeQuote(`fonts/${fields.glyphsFont}:${fields.glyphsList.trim()}`)}`);
  }
  for (const fallback of fields.fallbacks || []) parts.push(`FALLBACK ${cmakeQuote(`fonts/${fallback}`)}`);
  if (options.length) parts.push(`OPTIONS ${options.map(cmakeQuote).join(' ')}`);
  return parts.join(' ') + ')';
}

self.VeltraneCommand = {
  DEFAULTS,
  baseNameOfFont,
  exportArguments,
  commandArguments,
  proofFileName,
  shellCommand,
  cmakeCall,
};
