// SPDX-License-Identifier: GPL-3.0-or-later
// The web panel: logs in with the code in the link's fragment (or typed), then shows the radio's state
// as the program pushes it over one WebSocket and sends the operator's keys back.
'use strict';

const $ = (id) => document.getElementById(id);
let socket = null;
let hello = null;
let state = null;
let pttTimer = null;
let reconnectTimer = null;
const DRAG_PX_PER_STEP = 16;

function showLogin(text) {
  $('panel').hidden = true;
  $('login').hidden = false;
  $('login-message').textContent = text || '';
  $('code').focus();
}

async function login(code) {
  const body = new URLSearchParams({ code: code.trim() });
  let r;
  try {
    r = await fetch('login', { method: 'POST', body, credentials: 'same-origin' });
  } catch (e) {
    showLogin('The program does not answer.');
    return false;
  }
  if (r.ok) return true;
  const why = { 403: 'Wrong code.', 429: 'Too many failed logins: wait a minute.', 503: 'Every session is in use.' };
  showLogin(why[r.status] || ('Refused (' + r.status + ').'));
  return false;
}

function connect() {
  clearTimeout(reconnectTimer);
  const url = (location.protocol === 'https:' ? 'wss://' : 'ws://') + location.host + '/ws';
  const ws = new WebSocket(url);
  let opened = false;
  socket = ws;
  ws.onopen = () => { opened = true; };
  ws.onmessage = (e) => {
    let m;
    try { m = JSON.parse(e.data); } catch (x) { return; }
    if (m.t === 'hello') { hello = m; buildKeys(); }
    else if (m.t === 'state') { state = m; show(); }
    else if (m.t === 'refused') { $('message').textContent = 'Refused: ' + m.why; }
  };
  ws.onclose = (e) => {
    if (socket !== ws) return;
    socket = null;
    stopPtt(false);
    if (!opened) { showLogin(''); return; }          // no session (or refused): log in
    if (e.code === 1008) { showLogin(e.reason === 'logged out' ? '' : 'Session ended: ' + e.reason); return; }
    $('message').textContent = 'Connection lost; trying again...';
    reconnectTimer = setTimeout(connect, 2000);
  };
}

function send(o) {
  if (socket && socket.readyState === WebSocket.OPEN) socket.send(JSON.stringify(o));
}

function button(text, label, onClick) {
  const b = document.createElement('button');
  b.type = 'button';
  b.textContent = text;
  if (label) b.setAttribute('aria-label', label);
  b.addEventListener('click', onClick);
  return b;
}

function stepText(hz) {
  return hz >= 1000 ? (hz / 1000) + 'k' : String(hz);
}

function buildKeys() {
  const steps = $('steps');
  steps.replaceChildren();
  const down = hello.steps.slice().reverse().map((hz) => button('-' + stepText(hz), 'Down ' + stepText(hz) + 'Hz',
    () => send({ t: 'step', vfo: 'A', hz: -hz })));
  const up = hello.steps.map((hz) => button('+' + stepText(hz), 'Up ' + stepText(hz) + 'Hz',
    () => send({ t: 'step', vfo: 'A', hz: hz })));
  steps.append(...down, ...up);
  $('bands').replaceChildren(...hello.bands.map((b) => button(b.caption, 'Band ' + b.caption + ' MHz',
    () => send({ t: 'band', index: b.index }))));
  $('modes').replaceChildren(...hello.modes.map((m) => {
    const b = button(m.key, 'Mode ' + m.key, () => send({ t: 'mode', vfo: 'A', mode: m.code }));
    b.dataset.code = m.code;
    return b;
  }));
  $('channel').max = hello.channels;
}

// The frequency text as digits that tune by wheel and drag; each digit knows its place in Hz.
function showFrequency(el, vfo, text) {
  if (el.dataset.text === text) return;
  el.dataset.text = text;
  el.replaceChildren();
  const digits = text.replace(/[^0-9]/g, '').length;
  let place = 10 * Math.pow(10, digits - 1);  // the last digit is 10 Hz
  for (const ch of text) {
    const s = document.createElement('span');
    s.textContent = ch;
    if (ch >= '0' && ch <= '9') {
      s.className = 'digit';
      s.dataset.hz = place;
      place /= 10;
    }
    el.append(s);
  }
  el.setAttribute('aria-label', 'VFO-' + vfo + ' frequency ' + text + ' kHz');
}

function lamp(id, on, text) {
  const el = $(id);
  el.classList.toggle('on', !!on);
  if (text !== undefined) el.textContent = text;
}

function show() {
  $('login').hidden = true;
  $('panel').hidden = false;
  const s = state;
  const control = s.access === 'control';
  document.body.classList.toggle('nolink', s.noLink);
  lamp('lamp-nolink', s.noLink);
  lamp('lamp-tx', s.tx);
  lamp('lamp-split', s.split);
  lamp('lamp-dual', s.dual);
  lamp('lamp-lock', !!s.lock, s.lock);
  lamp('lamp-tuner', s.tuner);
  lamp('lamp-clar', s.a.clarRx || s.a.clarTx, 'CLAR ' + (s.a.clarRx ? 'RX ' : '') + (s.a.clarTx ? 'TX' : ''));
  lamp('lamp-antenna', !!s.antenna, s.antenna);
  lamp('lamp-view', !control);
  showFrequency($('freq-a'), 'A', s.noLink && !s.known ? 'No Link' : s.a.text);
  showFrequency($('freq-b'), 'B', s.b.text);
  $('mode-a').textContent = s.a.modeText;
  $('mode-b').textContent = s.b.modeText;
  $('smeter').setAttribute('aria-valuenow', s.smeter);
  $('smeter-fill').style.width = (100 * s.smeter / 255) + '%';
  // The transmit meter the main window has chosen, while transmitting.
  $('txmeter-row').hidden = !s.tx;
  $('txmeter-name').textContent = s.txMeter;
  $('txmeter').setAttribute('aria-label', 'Transmit meter ' + s.txMeter);
  $('txmeter').setAttribute('aria-valuenow', s.txMeterPercent);
  $('txmeter-fill').style.width = s.txMeterPercent + '%';
  $('split').setAttribute('aria-pressed', String(s.split));
  for (const b of $('modes').children) b.setAttribute('aria-pressed', String(Number(b.dataset.code) === s.a.mode));
  for (const el of $('controls').querySelectorAll('button, input')) el.disabled = !control;
  $('ptt').disabled = !control || !s.authorized;
  $('ptt-note').textContent = !control ? '' : (s.authorized ? '' : 'Authorize Tx is not checked in the program.');
  $('ptt').classList.toggle('keyed', s.keyed);
  $('ptt').setAttribute('aria-pressed', String(s.keyed));
}

// The key is said again every pttRepeatMs while held; the program unkeys when it stops hearing it.
function startPtt() {
  if (pttTimer || !hello) return;
  send({ t: 'ptt', on: true });
  pttTimer = setInterval(() => send({ t: 'ptt', on: true }), hello.pttRepeatMs);
}

function stopPtt(tell = true) {
  if (!pttTimer) return;
  clearInterval(pttTimer);
  pttTimer = null;
  if (tell) send({ t: 'ptt', on: false });
}

function tuneTyped(vfo) {
  const khz = parseFloat($('entry-khz').value.replace(',', '.'));
  if (!isFinite(khz)) { $('message').textContent = 'Type a frequency in kHz.'; return; }
  send({ t: 'tune', vfo, hz: Math.round(khz * 1000) });
}

function wireDigits(el, vfo) {
  el.addEventListener('wheel', (e) => {
    const d = e.target.closest('.digit');
    if (!d) return;
    e.preventDefault();
    send({ t: 'step', vfo, hz: (e.deltaY < 0 ? 1 : -1) * Number(d.dataset.hz) });
  }, { passive: false });
  let drag = null;
  el.addEventListener('pointerdown', (e) => {
    const d = e.target.closest('.digit');
    if (!d) return;
    drag = { y: e.clientY, hz: Number(d.dataset.hz) };
    el.setPointerCapture(e.pointerId);
  });
  el.addEventListener('pointermove', (e) => {
    if (!drag) return;
    const steps = Math.trunc((drag.y - e.clientY) / DRAG_PX_PER_STEP);
    if (steps === 0) return;
    drag.y -= steps * DRAG_PX_PER_STEP;
    send({ t: 'step', vfo, hz: steps * drag.hz });
  });
  const end = () => { drag = null; };
  el.addEventListener('pointerup', end);
  el.addEventListener('pointercancel', end);
  // Keyboard: arrows step by 10 Hz, page keys by 1 kHz.
  el.addEventListener('keydown', (e) => {
    const by = { ArrowUp: 10, ArrowDown: -10, PageUp: 1000, PageDown: -1000 }[e.key];
    if (!by) return;
    e.preventDefault();
    send({ t: 'step', vfo, hz: by });
  });
}

function wire() {
  $('login-form').addEventListener('submit', async (e) => {
    e.preventDefault();
    if (await login($('code').value)) { $('code').value = ''; connect(); }
  });
  $('entry').addEventListener('submit', (e) => { e.preventDefault(); tuneTyped('A'); });
  $('entry-b').addEventListener('click', () => tuneTyped('B'));
  $('copy-ab').addEventListener('click', () => send({ t: 'copyAB' }));
  $('swap-ab').addEventListener('click', () => send({ t: 'swapAB' }));
  $('split').addEventListener('click', () => send({ t: 'split', on: !(state && state.split) }));
  $('recall').addEventListener('submit', (e) => {
    e.preventDefault();
    send({ t: 'recall', channel: Number($('channel').value) });
  });
  const ptt = $('ptt');
  ptt.addEventListener('pointerdown', (e) => { ptt.setPointerCapture(e.pointerId); startPtt(); });
  for (const ev of ['pointerup', 'pointercancel', 'lostpointercapture']) ptt.addEventListener(ev, () => stopPtt());
  ptt.addEventListener('keydown', (e) => {
    if ((e.key === ' ' || e.key === 'Enter') && !e.repeat) { e.preventDefault(); startPtt(); }
  });
  ptt.addEventListener('keyup', (e) => { if (e.key === ' ' || e.key === 'Enter') stopPtt(); });
  ptt.addEventListener('blur', () => stopPtt());
  ptt.addEventListener('contextmenu', (e) => e.preventDefault());
  document.addEventListener('visibilitychange', () => { if (document.hidden) stopPtt(); });
  window.addEventListener('pagehide', () => stopPtt());
  $('logout').addEventListener('click', async () => {
    stopPtt();
    await fetch('logout', { method: 'POST', credentials: 'same-origin' });
    if (socket) socket.close();
    showLogin('Logged out.');
  });
  wireDigits($('freq-a'), 'A');
  wireDigits($('freq-b'), 'B');
}

async function start() {
  wire();
  // The link carries the code in its fragment, which never leaves the browser but for the login.
  const code = decodeURIComponent(location.hash.slice(1));
  if (code) {
    history.replaceState(null, '', location.pathname);
    if (!(await login(code))) return;
  }
  connect();
}

start();
