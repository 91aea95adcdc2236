// Published calculator folders for the tests: the records come from the program, the rest is put together here.
import { execFileSync } from 'node:child_process';
import { copyFileSync, mkdtempSync, readFileSync, rmSync, writeFileSync } from 'node:fs';
import { tmpdir } from 'node:os';
import { dirname, join } from 'node:path';
import { fileURLToPath } from 'node:url';

const root = join(dirname(fileURLToPath(import.meta.url)), '..', '..', '..');
const installed = join(root, 'installed');
export const helpFolder = join(installed, 'Help');
export const program = process.env.TARVOLINEX || join(root, 'build', 'app', 'tarvolinex');
const scratch = mkdtempSync(join(tmpdir(), 'calculator-'));
const appFolder = ['--app-folder', mkdtempSync(join(scratch, 'app-'))];
process.on('exit', () => rmSync(scratch, { recursive: true, force: true }));

export const newFolder = () => mkdtempSync(join(scratch, 'folder-'));
export const runProgram = (args, input) =>
  execFileSync(program, [...appFolder, ...args], { input, encoding: 'utf8', maxBuffer: 1 << 28, stdio: ['pipe', 'pipe', 'inherit'] });
export const template = () => readFileSync(join(installed, 'CalcTemplate.html'), 'latin1');
export const scriptOf = (id) => new RegExp(`<script id="${id}">([^]*?)</script>`).exec(template())[1];

export const preferences = {
  ...JSON.parse(readFileSync(join(installed, 'General.json'), 'utf8')),
  OrgCompanyName: 'Harrowgate Leasing plc', OrgAddress1: '4 Exchange Court', OrgTown: 'Leeds', OrgCounty: 'West Yorkshire',
  OrgPostCode: 'LS1 4QF', OrgWebAddress: 'www.harrowgate.example', OrgTel: '0113 496 0100', OrgFax: '0113 496 0101',
  OrgEmail: 'lease@harrowgate.example', OrgContactName: 'Ann Whitlock',
};
export const supplier = {
  ID: 7, CompanyName: 'Peakmoor Fitness Equipment Ltd', Address1: 'Unit 9', Address2: 'Trent Park', Town: 'Nottingham',
  County: 'Nottinghamshire', PostCode: 'NG2 5MK', Tel: '0115 496 0620', Fax: '0115 496 0621', www: 'www.peakmoor.example',
  email: 'sales@peakmoor.example', RangeEquipFROM0: '50000', RangeEquipFROM1: '25000', RangeEquipFROM2: '10000',
  RangeEquipFROM3: '5000', RangeEquipFROM4: '0', Yield0: 7.5, Yield1: 8.25, Yield2: 9, Yield3: 9.75, Yield4: 11.137, Com0: 1,
  Com1: 1.5, Com2: 2, Com3: 2.5, Com4: 3, AdditionalPremium: true, ResidualOption: true,
  AdditionalPremiumMsg: 'New business', AdditionalPremiumYield: 0.75, AdditionalPremiumMin: '2000', MaintenanceOption: true,
};
export const forms = [
  ['Lease proposal', '1.HTML'], ['How leasing works', '3.HTML'], ['Quotation summary', '4.HTML'],
].map(([name, file]) => ({ name, file: `${name}!0.html`, text: readFileSync(join(installed, 'database', 'Forms', file), 'latin1') }));

// The record as the program writes it; fields that are not named are empty.
export function record(fields) {
  const file = join(newFolder(), 'record.dat');
  runProgram(['record', 'write', file], JSON.stringify(fields));
  return readFileSync(file);
}

const colourToHtml = (colour) =>
  '#' + [0, 8, 16].map((bit) => ((colour >> bit) & 255).toString(16).padStart(2, '0').toUpperCase()).join('');

export function fillTemplate(text, prefs, isTestPage) {
  const values = [
    [/\|ColourBackGround\|/gi, colourToHtml(prefs.PageBackColour)], [/\|CALCULATORNAME\|/gi, prefs.AliasCalcName],
    [/\|LEASEORGEMAIL\|/gi, prefs.OrgEmail], [/\|PICBACKGROUND\|/g, prefs.ShowBackground ? 'Background=background.JPG' : ''],
    [/\|HEADERPIC\|/g, prefs.ShowHeaderLogo ? '<img src=logo.GIF><br>' : '<BR>'],
    [/\|CLASSID\|/gi, isTestPage ? 'A71C5E08-3D42-11D7-8C19-0004AC6E2F51' : '4B2D91E0-7C3A-4F15-9E62-1A8C5D0F37B4'],
    [/\|CUSTREF\|/gi, '104233'], [/\|ASPTAGS\|/gi, '&ver=1.0.25'],
  ];
  const filled = values.reduce((page, [token, value]) => page.replace(token, () => value), text.split('\n').join('\r\n'));
  return '\r\n' + filled + '\r\n';
}

export function calcData(general, settings, pages) {
  const data = { general: general.toString('base64'), supplier: settings.toString('base64'), forms: pages };
  const escaped = JSON.stringify(data).replace(/[<>&\u007f-\uffff]/g, (c) => '\\u' + c.charCodeAt(0).toString(16).padStart(4, '0'));
  return `window.calcData=${escaped};`;
}

// A folder as the program publishes it. `except` names files to leave out; the fields given replace the usual ones.
export function publish({ prefs = {}, card = {}, pages = forms, except = [] } = {}) {
  const folder = newFolder();
  const general = { ...preferences, ...prefs };
  const files = {
    'general.dat': record(general), 'Supplier.dat': record({ ...supplier, ...card }),
    'calc.html': Buffer.from(fillTemplate(template(), general, false), 'latin1'),
    'calc_test.html': Buffer.from(fillTemplate(template(), general, true), 'latin1'),
  };
  files['calcdata.txt'] = calcData(files['general.dat'], files['Supplier.dat'], pages);
  for (const page of pages) files[page.file] = Buffer.from(page.text, 'latin1');
  for (const [name, content] of Object.entries(files)) if (!except.includes(name)) writeFileSync(join(folder, name), content);
  for (const name of ['logo.GIF', 'background.JPG']) copyFileSync(join(installed, 'database', 'logo', name), join(folder, name));
  return folder;
}
