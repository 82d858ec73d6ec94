// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once
// Whether a request came from the panel's own page: its Origin header names the scheme, host and
// port that the request itself was sent to (its Host header). A page served from anywhere else, and
// so a page that wants to drive the radio through the operator's browser, has another origin.
// Default ports count as written out ("http://host" is "http://host:80").

#include <QByteArray>

bool isOwnOrigin(const QByteArray& origin, const QByteArray& host, bool secure);
