// Random quotes, and what the program makes of them.
import { runProgram } from './folder.mjs';

// Lehmer's generator: the same quotes in every run.
export function generator(seed) {
  let state = seed;
  const next = () => (state = (state * 48271) % 2147483647) / 2147483647;
  return {
    whole: (low, high) => low + Math.floor(next() * (high - low + 1)),
    decimal: (low, high, places) => (low + next() * (high - low)).toFixed(places),
    oneOf: (list) => list[Math.floor(next() * list.length)],
    one: (chance) => next() < chance,
  };
}

// The rows that a command writes of the quotes, as objects.
export function runOnRows(command, rows, general, card, ...options) {
  const names = Object.keys(rows[0]);
  const input = [names.join(','), ...rows.map((row) => names.map((name) => row[name]).join(','))].join('\n') + '\n';
  const lines = runProgram([command, '--supplier', card, '--general', general, ...options, '-'], { input }).trim().split('\n');
  const header = lines.shift().split(',');
  return lines.map((line) => Object.fromEntries(line.split(',').map((cell, i) => [header[i], cell])));
}
export const priceInProgram = (rows, general, card) => runOnRows('quote', rows, general, card);
