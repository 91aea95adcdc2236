// Calculator folders for the tests, as the program publishes them.
import { execFileSync } from 'node:child_process';
import { cpSync, mkdtempSync, readFileSync, rmSync, writeFileSync } from 'node:fs';
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
// A script of the page, as it is delivered or as it is written.
const delivered = join(dirname(program), 'delivered');
export const scriptOf = (id, folder = delivered) =>
  new RegExp(`<script id="${id}">([^]*?)</script>`).exec(readFileSync(join(folder, 'CalcTemplate.html'), 'latin1'))[1];
export const sourceOf = (id) => scriptOf(id, installed);

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

// calcdata.txt with records that the program would not write.
export function calcData(general, settings, pages) {
  const data = { general: general.toString('base64'), supplier: settings.toString('base64'), forms: pages };
  const escaped = JSON.stringify(data).replace(/[<>&\u007f-\uffff]/g, (c) => '\\u' + c.charCodeAt(0).toString(16).padStart(4, '0'));
  return `window.calcData=${escaped};`;
}

// An app folder with the sample database, made once and copied for each calculator.
const sample = mkdtempSync(join(scratch, 'sample-'));
runIn(sample, ['suppliers']);
function runIn(folder, args, input) {
  return execFileSync(program, ['--app-folder', folder, ...args], { input, encoding: 'utf8', stdio: ['pipe', 'pipe', 'inherit'] });
}

const literal = (value) => (typeof value === 'string' ? `'${value.replaceAll("'", "''")}'` : Number(value));
const insertion = (table, row) =>
  `INSERT INTO ${table} (${Object.keys(row).join()}) VALUES (${Object.values(row).map(literal).join()});`;

// A folder as the program publishes it. `except` names files to leave out; the fields given replace the usual ones.
export function publish({ prefs = {}, card = {}, pages = forms, except = [] } = {}) {
  const folder = mkdtempSync(join(scratch, 'app-'));
  cpSync(sample, folder, { recursive: true });
  runIn(folder, ['preferences', 'write'], JSON.stringify({ ...preferences, ...prefs }));
  const row = { ...supplier, ...card };
  const statements = ['suppliers', 'Forms', 'SupplierFormLink'].map((table) => `DELETE FROM ${table};`).concat(insertion('suppliers', row));
  pages.forEach((page, i) => {
    const form = { ID: i + 1, Description: page.name, LinkName: page.name, Available: true };
    statements.push(insertion('Forms', form), `INSERT INTO SupplierFormLink VALUES (${form.ID}, ${row.ID});`);
    writeFileSync(join(folder, 'Forms', `${form.ID}.HTML`), page.text, 'latin1');
  });
  execFileSync('sqlite3', [join(folder, 'Tarvolinex.mdb')], { input: statements.join('\n') });
  const calculator = runIn(folder, ['publish', '--supplier', String(row.ID)]).trim();
  for (const name of except) rmSync(join(calculator, name));
  return calculator;
}
