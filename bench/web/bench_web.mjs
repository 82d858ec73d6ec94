// SPDX-License-Identifier: GPL-3.0-or-later
// The web panel's figures, in headless Chromium against the program on the virtual radio:
//  1. from the radio's change to the browser showing it, while the virtual radio's knob turns VFO-A
//     at a steady rate and the program follows it (the fast link): the knob's arithmetic tells when
//     the radio reached each frequency the page shows;
//  2. from a tune sent by the page to the radio holding it: the native sharing port's read of VFO-A,
//     which waits for the next poll after a set, returns the radio's own record;
//  3. the program's polls per second over a quiet minute's quarter, with no panel and with eight.
import { spawn, execFileSync } from 'node:child_process';
import { createServer } from 'node:http';
import { mkdtempSync, writeFileSync, openSync, writeSync, read } from 'node:fs';
import { tmpdir } from 'node:os';
import { join } from 'node:path';
import puppeteer from 'puppeteer-core';

const EXE = process.env.FT1000CAT;
const SIM = process.env.FT1000SIM;
const CONTROL = '0123456789abcdef0123456789abcdef';
const VIEW = 'fedcba9876543210fedcba9876543210';
const KNOB_HZ_PER_S = 1000;
const SIM_START_HZ = 14074000;  // the virtual radio's VFO-A when it starts
const FOLLOW_SECONDS = 15;
const TUNES = 20;
const RATE_SECONDS = 15;
const children = [];
const sleep = (ms) => new Promise((r) => setTimeout(r, ms));

function lineOf(child, pattern, ms = 20000) {
  return new Promise((resolve, reject) => {
    let buffer = '';
    const timer = setTimeout(() => reject(new Error('no line ' + pattern + ': ' + buffer)), ms);
    child.stdout.on('data', (d) => {
      buffer += d;
      const m = buffer.match(pattern);
      if (m) { clearTimeout(timer); resolve(m); }
    });
  });
}

async function startRadio(args = []) {
  const sim = spawn(SIM, args, { stdio: ['ignore', 'pipe', 'inherit'] });
  children.push(sim);
  const m = await lineOf(sim, /^(\/\S+)\s*$/m);
  return { device: m[1], startedAt: Date.now() };
}

function freePort() {
  return new Promise((resolve) => {
    const s = createServer();
    s.listen(0, '127.0.0.1', () => { const p = s.address().port; s.close(() => resolve(p)); });
  });
}

async function startProgram(device, extra = [], expect = /web panel: (http\S+)/) {
  const dir = mkdtempSync(join(tmpdir(), 'ft-web-bench-'));
  const ini = join(dir, 'settings.ini');
  writeFileSync(ini, `[Web]\nControlCode=${CONTROL}\nViewCode=${VIEW}\n`);
  const web = await freePort();
  const p = spawn(EXE, ['--port', device, '--settings', ini, '--web', '127.0.0.1:' + web, ...extra],
    { stdio: ['ignore', 'pipe', 'inherit'], env: { ...process.env, QT_QPA_PLATFORM: 'offscreen' } });
  children.push(p);
  const m = await lineOf(p, expect);
  return { base: 'http://127.0.0.1:' + web, process: p, match: m };
}

function percentile(sorted, p) {
  return sorted[Math.min(sorted.length - 1, Math.floor(p * sorted.length))];
}
function summary(values) {
  const s = values.slice().sort((a, b) => a - b);
  return `n=${s.length} median=${percentile(s, 0.5).toFixed(1)} ms p99=${percentile(s, 0.99).toFixed(1)} ms ` +
    `max=${s[s.length - 1].toFixed(1)} ms`;
}

async function openPanel(browser, base, code) {
  const context = await browser.createBrowserContext();
  const page = await context.newPage();
  await page.goto(base + '/#' + code);
  await page.waitForFunction(() => /\d,\d{3}\.\d{2}/.test(document.querySelector('#freq-a').textContent));
  return { context, page };
}

async function followLatency(browser) {
  const radio = await startRadio(['--knob', String(KNOB_HZ_PER_S)]);
  const prog = await startProgram(radio.device, ['--fast-link']);
  const { context, page } = await openPanel(browser, prog.base, CONTROL);
  await page.evaluate(() => {
    window.shown = [];
    new MutationObserver(() => {
      window.shown.push([Date.now(), document.querySelector('#freq-a').textContent]);
    }).observe(document.querySelector('#freq-a'), { childList: true, subtree: true, characterData: true });
  });
  await sleep(FOLLOW_SECONDS * 1000);
  const shown = await page.evaluate(() => window.shown);
  await context.close();
  prog.process.kill('SIGTERM');
  const latencies = [];
  for (const [at, text] of shown) {
    const hz = Math.round(Number(text.replace(/,/g, '')) * 1000);
    const reachedAt = radio.startedAt + (hz - SIM_START_HZ) / KNOB_HZ_PER_S * 1000;
    latencies.push(at - reachedAt);
  }
  console.log(`knob to browser (knob ${KNOB_HZ_PER_S} Hz/s, fast link, following): ${summary(latencies)}, ` +
    `${(shown.length / FOLLOW_SECONDS).toFixed(1)} readings shown a second`);
  console.log('  (the knob\'s start is taken when the virtual radio printed its device: a few ms early at most)');
}

// One read of VFO-A's record through the native port: its frequency in Hz.
function readVfoA(fd) {
  writeSync(fd, Buffer.from([0, 0, 0, 2, 0x10]));
  return new Promise((resolve, reject) => {
    const record = Buffer.alloc(16);
    let got = 0;
    const more = () => read(fd, record, got, 16 - got, null, (err, n) => {
      if (err) return reject(err);
      got += n;
      if (got < 16) return more();
      resolve(Math.round(record.readUInt32BE(1) / 1600 * 1000));
    });
    more();
  });
}

async function tuneToRadio(browser) {
  const radio = await startRadio();
  const prog = await startProgram(radio.device, ['--share', 'native'], /Native port: (\/\S+)/);
  await lineOf(prog.process, /web panel: (http\S+)/).catch(() => {});
  const pty = prog.match[1];
  execFileSync('stty', ['-F', pty, 'raw', '-echo']);
  const fd = openSync(pty, 'r+');
  const { context, page } = await openPanel(browser, prog.base, CONTROL);
  const times = [];
  for (let i = 0; i < TUNES; i++) {
    const target = 7000000 + 1230 * (i + 1);
    const sentAt = await page.evaluate((hz) => {
      socket.send(JSON.stringify({ t: 'tune', vfo: 'A', hz }));
      return Date.now();
    }, target);
    for (;;) {
      const hz = await readVfoA(fd);
      if (hz === target) { times.push(Date.now() - sentAt); break; }
      if (Date.now() - sentAt > 5000) throw new Error('the radio did not take ' + target);
    }
    await sleep(300);
  }
  await context.close();
  prog.process.kill('SIGTERM');
  console.log(`browser tune to the radio holding it (read back through the native port): ${summary(times)}`);
}

async function pollRate(browser, panels) {
  const radio = await startRadio();
  const prog = await startProgram(radio.device,
    ['--dump-state', '--screenshot', join(tmpdir(), 'ft-web-bench.png') + ',' + (RATE_SECONDS * 1000 + 3000)]);
  const opened = [];
  for (let i = 0; i < panels; i++) opened.push(await openPanel(browser, prog.base, VIEW));
  const rate = await lineOf(prog.process, /pollRate=(.*)/, RATE_SECONDS * 1000 + 20000);
  for (const p of opened) await p.context.close();
  console.log(`polls a second with ${panels} panel${panels === 1 ? '' : 's'} open: ${rate[1].trim()}`);
}

async function main() {
  const browser = await puppeteer.launch({
    executablePath: process.env.CHROMIUM, headless: true, args: ['--no-sandbox', '--disable-gpu', '--no-first-run'],
  });
  try {
    await followLatency(browser);
    await tuneToRadio(browser);
    await pollRate(browser, 0);
    await pollRate(browser, 8);
  } finally {
    await browser.close();
  }
}

main().catch((e) => { console.error(e); process.exitCode = 1; }).finally(() => {
  for (const c of children) c.kill('SIGTERM');
});
