// Calculator folders for the tests, as the program publishes them.
import { execFileSync } from 'node:child_process';
import { appendFileSync, mkdtempSync, readFileSync, rmSync, writeFileSync } from 'node:fs';
import { tmpdir } from 'node:os';
import { dirname, join } from 'node:path';
import { fileURLToPath } from 'node:url';

const root = join(dirname(fileURLToPath(import.meta.url)), '..', '..', '..');
export const installed = join(root, 'installed');
const program = process.env.TARVOLINEX || join(root, 'build', 'app', 'tarvolinex');
const scratch = mkdtempSync(join(tmpdir(), 'calculator-'));
process.on('exit', () => rmSync(scratch, { recursive: true, force: true }));

export const newFolder = () => mkdtempSync(join(scratch, 'folder-'));
const ownAppFolder = newFolder();
export const runProgram = (args, { input, appFolder = ownAppFolder } = {}) =>
  execFileSync(program, ['--app-folder', appFolder, ...args],
    { input, encoding: 'utf8', maxBuffer: 1 << 28, stdio: ['pipe', 'pipe', 'inherit'] });

// A script of the page, as it is delivered or as it is written.
export const delivered = join(dirname(program), 'delivered');
export const scriptOf = (id, folder = delivered) =>
  new RegExp(`<script id="${id}">([^]*?)</script>`).exec(readFileSync(join(folder, 'CalcTemplate.html'), 'latin1'))[1];

export const preferences = {
  ...JSON.parse(readFileSync(join(installed, 'General.json'), 'utf8')),
  OrgCompanyName: 'Harrowgate Leasing plc', OrgAddress1: '4 Exchange Court', OrgTown: 'Leeds', OrgPostCode: 'LS1 4QF',
  OrgWebAddress: 'www.harrowgate.example', OrgTel: '0113 496 0100', OrgFax: '0113 496 0101',
  OrgEmail: 'lease@harrowgate.example', OrgContactName: 'Ann Whitlock',
};
// The sample supplier whose calculator is published unless a test names another.
export const supplier = { id: '6', name: 'Ferrisdale CNC Machine Tools Ltd' };

// A file with the record as the program writes it; fields that are not named are empty.
export function record(fields) {
  const file = join(newFolder(), 'record.dat');
  runProgram(['record', 'write', file], { input: JSON.stringify(fields) });
  return file;
}

const literal = (value) => (typeof value === 'string' ? `'${value.replaceAll("'", "''")}'` : Number(value));

// What the options window writes of its choices for the page.
const choices = ({ words = {}, totals = true, ...others }) => [['TOTALS', Number(totals)], ...Object.entries(others),
  ...Object.entries(words).map(([word, text]) => [`WORD${word}`, text])].map((entry) => entry.join('=')).join('\n');

// A folder as the program publishes it, in its app folder. What is given replaces the fields and pages of the sample,
// and what is chosen for the page; `made` is replaced in its data.
export function publish({ prefs = {}, card = {}, pages, id = supplier.id, options, made } = {}) {
  const appFolder = newFolder();
  runProgram(['suppliers'], { appFolder }); // The first start makes the sample database.
  runProgram(['preferences', 'write'], { appFolder, input: JSON.stringify({ ...preferences, ...prefs }) });
  const statements = Object.entries(card).map(
    ([name, value]) => `UPDATE suppliers SET ${name}=${literal(value)} WHERE ID=${id};`);
  if (pages) statements.push('DELETE FROM SupplierFormLink; DELETE FROM Forms;');
  Object.entries(pages || {}).forEach(([name, text], form) => {
    statements.push(`INSERT INTO Forms VALUES (${form}, ${literal(name)}, ${literal(name)}, 1);`);
    statements.push(`INSERT INTO SupplierFormLink VALUES (${form}, ${id});`);
    writeFileSync(join(appFolder, 'Forms', `${form}.HTML`), text, 'latin1');
  });
  execFileSync('sqlite3', [join(appFolder, 'Tarvolinex.mdb')], { input: statements.join('\n') });
  if (options) appendFileSync(join(appFolder, 'General.INI'), `[CALCULATOR]\n${choices(options)}\n`);
  const folder = runProgram(['publish', '--supplier', id], { appFolder }).trim(), data = join(folder, 'calcdata.txt');
  if (made) writeFileSync(data, readFileSync(data, 'latin1').replace(/"made":"[^"]*"/, `"made":"${made}"`), 'latin1');
  return folder;
}
