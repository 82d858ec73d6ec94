// SPDX-License-Identifier: GPL-3.0-or-later
// The web panel in headless Chromium against the program on the virtual radio. What the radio holds
// is read back through the program's rigctld door, after the time a set value is held without a poll
// agreeing with it, so a value shown there is what the radio itself reported.
import { spawn } from 'node:child_process';
import { createServer } from 'node:http';
import { mkdtempSync, writeFileSync, mkdirSync } from 'node:fs';
import { connect } from 'node:net';
import { tmpdir } from 'node:os';
import { join } from 'node:path';
import puppeteer from 'puppeteer-core';

const EXE = process.env.FT1000CAT;
const SIM = process.env.FT1000SIM;
const OUT = process.env.FT_OUT;
const CONTROL = '0123456789abcdef0123456789abcdef';
const VIEW = 'fedcba9876543210fedcba9876543210';
const HELD_MS = 2500;  // longer than the rig holds a set value against a disagreeing poll
const UNKEY_WITHIN_MS = 1500;

let passed = 0;
let failed = 0;
function check(name, ok, detail = '') {
  if (ok) { passed++; console.log('ok - ' + name); } else { failed++; console.log('not ok - ' + name + (detail ? ': ' + detail : '')); }
}
const sleep = (ms) => new Promise((r) => setTimeout(r, ms));
const children = [];

// The first line a child prints that matches, or an error when it ends first.
function lineOf(child, pattern, ms = 20000) {
  return new Promise((resolve, reject) => {
    let buffer = '';
    const timer = setTimeout(() => reject(new Error('no line ' + pattern + ' in ' + ms + ' ms: ' + buffer)), ms);
    child.stdout.on('data', (d) => {
      buffer += d;
      const m = buffer.match(pattern);
      if (m) { clearTimeout(timer); resolve(m); }
    });
    child.on('exit', (code) => { clearTimeout(timer); reject(new Error('exited ' + code + ': ' + buffer)); });
  });
}

async function startRadio(knobArgs = []) {
  const sim = spawn(SIM, knobArgs, { stdio: ['ignore', 'pipe', 'inherit'] });
  children.push(sim);
  const m = await lineOf(sim, /^(\/\S+)\s*$/m);
  return m[1];
}

function freePort() {
  return new Promise((resolve) => {
    const s = createServer();
    s.listen(0, '127.0.0.1', () => { const p = s.address().port; s.close(() => resolve(p)); });
  });
}

async function startProgram(device) {
  const dir = mkdtempSync(join(tmpdir(), 'ft-web-'));
  const ini = join(dir, 'settings.ini');
  writeFileSync(ini, `[Settings]\nTxInh=1\n\n[Web]\nControlCode=${CONTROL}\nViewCode=${VIEW}\n`);
  const web = await freePort();
  const rigctl = await freePort();
  const p = spawn(EXE, ['--port', device, '--settings', ini, '--web', '127.0.0.1:' + web, '--rigctld', '127.0.0.1:' + rigctl],
    { stdio: ['ignore', 'pipe', 'inherit'], env: { ...process.env, QT_QPA_PLATFORM: 'offscreen' } });
  children.push(p);
  await lineOf(p, /web panel: (http\S+)/);
  return { base: 'http://127.0.0.1:' + web, rigctl };
}

// One rigctld command, its first reply line.
function rig(port, command) {
  return new Promise((resolve, reject) => {
    const s = connect(port, '127.0.0.1', () => s.write(command + '\n'));
    let text = '';
    s.setTimeout(5000, () => { s.destroy(); reject(new Error('rigctld timed out')); });
    s.on('data', (d) => { text += d; if (text.includes('\n')) { s.end(); resolve(text.split('\n')[0].trim()); } });
    s.on('error', reject);
  });
}

async function freqText(page, id = 'freq-a') {
  return page.$eval('#' + id, (el) => el.textContent);
}

async function waitText(page, selector, pattern, ms = 8000) {
  try {
    await page.waitForFunction((sel, src) => {
      const el = document.querySelector(sel);
      return el && new RegExp(src).test(el.textContent);
    }, { timeout: ms }, selector, pattern.source);
    return true;
  } catch (e) {
    return false;
  }
}

async function openPanel(browser, base, code) {
  const context = await browser.createBrowserContext();
  const page = await context.newPage();
  await page.goto(base + '/#' + code);
  return { context, page };
}

async function main() {
  const browser = await puppeteer.launch({
    executablePath: process.env.CHROMIUM,
    headless: true,
    args: ['--no-sandbox', '--disable-gpu', '--no-first-run', '--password-store=basic'],
  });
  try {
    const device = await startRadio();
    const prog = await startProgram(device);

    // The page shows the radio's frequency.
    const { context, page } = await openPanel(browser, prog.base, CONTROL);
    const shown = await waitText(page, '#freq-a', /^\d{1,2},\d{3}\.\d{2}$/);
    const radioHz = Number(await rig(prog.rigctl, 'f'));
    const text = await freqText(page);
    check('the page shows the radio\'s frequency', shown && Math.round(Number(text.replace(/,/g, '')) * 1000) === radioHz,
      text + ' vs ' + radioHz);
    check('the code left the address bar', !page.url().includes('#'), page.url());

    // Typing a frequency tunes the radio.
    await page.type('#entry-khz', '14250.00');
    await page.click('#entry-a');
    const typed = await waitText(page, '#freq-a', /^14,250\.00$/);
    await sleep(HELD_MS);
    check('typing a frequency tunes the radio', typed && (await freqText(page)) === '14,250.00' &&
      (await rig(prog.rigctl, 'f')) === '14250000', await freqText(page));

    // A step key.
    await page.click('button[aria-label="Up 1kHz"]');
    const stepped = await waitText(page, '#freq-a', /^14,251\.00$/);
    await sleep(HELD_MS);
    check('a step key tunes the radio', stepped && (await rig(prog.rigctl, 'f')) === '14251000', await freqText(page));

    // The mouse wheel on a digit tunes by that digit's place (here 1 kHz), up and back down.
    const digits = await page.$$('#freq-a .digit');
    const kHzDigit = await digits[digits.length - 3].boundingBox();
    await page.mouse.move(kHzDigit.x + kHzDigit.width / 2, kHzDigit.y + kHzDigit.height / 2);
    await page.mouse.wheel({ deltaY: -100 });
    const wheeledUp = await waitText(page, '#freq-a', /^14,252\.00$/);
    await page.mouse.wheel({ deltaY: 100 });
    const wheeledDown = await waitText(page, '#freq-a', /^14,251\.00$/);
    await sleep(HELD_MS);
    check('the mouse wheel on a digit tunes by its place', wheeledUp && wheeledDown &&
      (await rig(prog.rigctl, 'f')) === '14251000', await freqText(page));

    // A mode key.
    await page.click('button[aria-label="Mode CW"]');
    const cw = await waitText(page, '#mode-a', /^CW N$/);
    await sleep(HELD_MS);
    check('a mode key sets the radio\'s mode', cw && (await rig(prog.rigctl, 'm')) === 'CW' &&
      (await page.$eval('#mode-a', (e) => e.textContent)) === 'CW N');

    // Screenshots of the two layouts, for the README.
    mkdirSync(OUT, { recursive: true });
    await page.setViewport({ width: 390, height: 844, deviceScaleFactor: 2, isMobile: true, hasTouch: true });
    await sleep(300);
    await page.screenshot({ path: join(OUT, 'web-panel-phone.png'), fullPage: true });
    const overflow = await page.evaluate(() => document.documentElement.scrollWidth - window.innerWidth);
    check('the phone layout needs no sideways scrolling', overflow <= 0, overflow + ' px too wide');
    const unnamed = await page.$$eval('button, input, [role="meter"], .freq', (els) => els
      .filter((e) => !(e.getAttribute('aria-label') || (e.labels && e.labels.length) || e.textContent.trim()))
      .map((e) => e.id || e.outerHTML.slice(0, 40)));
    check('every control has an accessible name', unnamed.length === 0, unnamed.join(', '));
    await page.setViewport({ width: 1100, height: 900 });
    await sleep(300);
    await page.screenshot({ path: join(OUT, 'web-panel-desktop.png'), fullPage: true });
    await page.emulateMediaFeatures([{ name: 'prefers-color-scheme', value: 'dark' }]);
    await sleep(300);
    await page.screenshot({ path: join(OUT, 'web-panel-desktop-dark.png'), fullPage: true });
    await page.emulateMediaFeatures([]);

    // A page from another origin cannot open the WebSocket, though the browser has the session.
    const otherPort = await freePort();
    const other = createServer((req, res) => {
      res.setHeader('Content-Type', 'text/html');
      res.end(`<!DOCTYPE html><title>waiting</title><script>
        const ws = new WebSocket('ws://127.0.0.1:${new URL(prog.base).port}/ws');
        ws.onopen = () => { document.title = 'opened'; ws.send(JSON.stringify({t:'tune',vfo:'A',hz:7000000})); };
        ws.onerror = () => { document.title = 'refused'; };
      </script>`);
    });
    await new Promise((r) => other.listen(otherPort, '127.0.0.1', r));
    const evil = await context.newPage();
    await evil.goto('http://127.0.0.1:' + otherPort + '/');
    await evil.waitForFunction(() => document.title !== 'waiting', { timeout: 8000 }).catch(() => {});
    const evilTitle = await evil.title();
    await sleep(HELD_MS);
    check('a page from another origin cannot open the WebSocket', evilTitle === 'refused' &&
      (await rig(prog.rigctl, 'f')) === '14251000', evilTitle);
    await evil.close();
    other.close();

    // A view-only session sees the radio and cannot tune it, not even by writing to its socket.
    const viewer = await openPanel(browser, prog.base, VIEW);
    const sees = await waitText(viewer.page, '#freq-a', /^14,251\.00$/);
    const disabled = await viewer.page.$eval('#entry-a', (b) => b.disabled);
    await viewer.page.evaluate(() => socket.send(JSON.stringify({ t: 'tune', vfo: 'A', hz: 7000000 })));
    const refused = await waitText(viewer.page, '#message', /may only view/);
    await sleep(HELD_MS);
    check('a view-only session cannot tune', sees && disabled && refused && (await rig(prog.rigctl, 'f')) === '14251000');
    await viewer.context.close();

    // PTT held keys the radio (Authorize Tx is checked); closing the tab unkeys it within 1.5 s.
    const ptt = await page.$('#ptt');
    const box = await ptt.boundingBox();
    await page.mouse.move(box.x + box.width / 2, box.y + box.height / 2);
    await page.mouse.down();
    await sleep(HELD_MS);  // held past the rig's hold: the XMIT the page shows is the radio's
    const keyed = (await rig(prog.rigctl, 't')) === '1';
    const lit = await page.$eval('#lamp-tx', (e) => e.classList.contains('on'));
    check('PTT held keys the radio', keyed && lit, 'rigctld t and the XMIT lamp');
    const meter = await page.$eval('#txmeter-row', (e) => (e.hidden ? '' : e.textContent.trim()));
    check('the transmit meter shows while transmitting', meter === 'PO', meter);
    const closedAt = Date.now();
    await page.close();
    let unkeyedAfter = -1;
    while (Date.now() - closedAt < 5000) {
      if ((await rig(prog.rigctl, 't')) === '0') { unkeyedAfter = Date.now() - closedAt; break; }
      await sleep(50);
    }
    await sleep(HELD_MS);
    check('closing the tab unkeys the radio within 1.5 s', unkeyedAfter >= 0 && unkeyedAfter <= UNKEY_WITHIN_MS &&
      (await rig(prog.rigctl, 't')) === '0', 'after ' + unkeyedAfter + ' ms');
    await context.close();

    // A wrong code is refused, and five lock the address out (last: it locks this browser out).
    const wrong = await openPanel(browser, prog.base, '00000000000000000000000000000000');
    const wrongShown = await waitText(wrong.page, '#login-message', /^Wrong code\.$/);
    for (let i = 1; i < 5; i++) {
      await wrong.page.type('#code', '11111111111111111111111111111111');
      await wrong.page.click('#login-button');
      await sleep(300);
    }
    await wrong.page.type('#code', CONTROL);
    await wrong.page.click('#login-button');
    const locked = await waitText(wrong.page, '#login-message', /Too many failed logins/);
    check('a wrong code is refused', wrongShown);
    check('five wrong codes lock the address out, even for the right one', locked,
      await wrong.page.$eval('#login-message', (e) => e.textContent));
    await wrong.context.close();

    // The page follows the virtual radio's turning knob.
    const knobDevice = await startRadio(['--knob', '2000']);
    const knobProg = await startProgram(knobDevice);
    const k = await openPanel(browser, knobProg.base, CONTROL);
    await waitText(k.page, '#freq-a', /^\d{1,2},\d{3}\.\d{2}$/);
    const seen = [];
    for (let i = 0; i < 4; i++) {
      seen.push(Number((await freqText(k.page)).replace(/,/g, '')));
      await sleep(1000);
    }
    const rising = seen.every((v, i) => i === 0 || v > seen[i - 1]);
    check('the page follows the turning knob', rising && seen[3] - seen[0] >= 4, seen.join(' '));
    await k.context.close();
  } finally {
    await browser.close();
  }
}

main()
  .catch((e) => { failed++; console.log('not ok - ' + e.message); })
  .finally(() => {
    for (const c of children) c.kill('SIGTERM');
    console.log(`${passed} passed, ${failed} failed`);
    process.exitCode = failed === 0 && passed > 0 ? 0 : 1;
  });
