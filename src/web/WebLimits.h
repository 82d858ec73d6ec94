// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once
// What the web panel lets a browser make it hold, and the times of its transmit key. One place, so
// the server, the sessions and their tests agree.

#include <QtGlobal>

namespace WebLimits {
constexpr int MaxSessions = 8;             // logged-in browsers at once
constexpr qint64 MaxMessageBytes = 4096;   // a WebSocket message longer than this ends the session
constexpr qint64 MaxUnsentBytes = 65536;   // past this a session's answers to refused messages are dropped
constexpr int MaxConnections = 32;         // HTTP connections open at once, logged in or not
constexpr int MaxRequestHeadBytes = 8192;  // request line and headers
constexpr int MaxRequestBodyBytes = 1024;  // only the login has a body, and it holds one code
constexpr int RequestTimeoutMs = 10000;    // a connection that has not sent its request by then is closed
constexpr int PttRepeatMs = 200;           // the page repeats a held transmit key this often
constexpr int PttSilenceMs = 1000;         // and the key is released when no repeat came for this long
constexpr int LockoutFailures = 5;         // failed logins from one address that lock it out
constexpr int LockoutMs = 60000;           // for this long
constexpr int MaxTrackedAddresses = 1024;  // addresses whose failures are remembered
constexpr int CodeBytes = 16;              // 128 random bits an access code or session token
}  // namespace WebLimits
