// SPDX-License-Identifier: GPL-3.0-or-later
#include "HttpRequest.h"

#include "WebLimits.h"

namespace {
constexpr int BadRequest = 400;
constexpr int PayloadTooLarge = 413;
constexpr int HeadersTooLarge = 431;
constexpr int NotImplemented = 501;
constexpr int VersionNotSupported = 505;
const QByteArray HeadEnd = QByteArrayLiteral("\r\n\r\n");

bool isToken(const QByteArray& s)
{
    if (s.isEmpty())
        return false;
    for (const char c : s) {
        const auto u = static_cast<unsigned char>(c);
        if (u <= ' ' || u >= 0x7F || QByteArrayView("()<>@,;:\\\"/[]?={}").contains(c))
            return false;
    }
    return true;
}

bool hasControlBytes(const QByteArray& s)
{
    for (const char c : s) {
        const auto u = static_cast<unsigned char>(c);
        if ((u < ' ' && c != '\t') || u == 0x7F)
            return true;
    }
    return false;
}

// Whether a comma-separated header value lists the token (case-insensitive).
bool listsToken(const QByteArray& value, const QByteArray& token)
{
    for (const QByteArray& part : value.split(','))
        if (part.trimmed().compare(token, Qt::CaseInsensitive) == 0)
            return true;
    return false;
}
}  // namespace

QByteArray HttpRequest::header(const QByteArray& name) const
{
    for (const auto& [n, v] : headers)
        if (n == name)
            return v;
    return {};
}

bool HttpRequest::hasHeader(const QByteArray& name) const
{
    for (const auto& h : headers)
        if (h.first == name)
            return true;
    return false;
}

QByteArray HttpRequest::path() const
{
    const qsizetype q = target.indexOf('?');
    return q < 0 ? target : target.left(q);
}

bool HttpRequest::isWebSocketUpgrade() const
{
    return method == "GET" && listsToken(header("connection"), "upgrade") &&
           header("upgrade").compare("websocket", Qt::CaseInsensitive) == 0;
}

QByteArray HttpRequest::cookie(const QByteArray& name) const
{
    for (const auto& [n, v] : headers) {
        if (n != "cookie")
            continue;
        for (const QByteArray& pair : v.split(';')) {
            const QByteArray p = pair.trimmed();
            const qsizetype eq = p.indexOf('=');
            if (eq > 0 && p.left(eq) == name)
                return p.mid(eq + 1);
        }
    }
    return {};
}

HttpRequestParser::Status HttpRequestParser::refuse(int code)
{
    refusal_ = code;
    status_ = Status::Refused;
    buffer_.clear();
    return status_;
}

HttpRequestParser::Status HttpRequestParser::feed(const QByteArray& bytes)
{
    if (status_ != Status::NeedMore)
        return status_;
    buffer_ += bytes;
    if (!haveHead_) {
        // Browsers may send an empty line between requests; tolerate it before the first.
        while (buffer_.startsWith("\r\n"))
            buffer_.remove(0, 2);
        // Something that is no HTTP at all (a TLS hello to the plain panel) is refused at once,
        // rather than waited on for a head that never ends.
        const qsizetype space = buffer_.indexOf(' ');
        const QByteArray method = space < 0 ? buffer_ : buffer_.left(space);
        if (space == 0 || (!method.isEmpty() && !isToken(method)))
            return refuse(BadRequest);
        const qsizetype end = buffer_.indexOf(HeadEnd);
        if (end < 0) {
            if (buffer_.size() > WebLimits::MaxRequestHeadBytes)
                return refuse(HeadersTooLarge);
            return status_;
        }
        if (end + HeadEnd.size() > WebLimits::MaxRequestHeadBytes)
            return refuse(HeadersTooLarge);
        if (parseHead(buffer_.left(end)) == Status::Refused)
            return status_;
        haveHead_ = true;
        bodyStart_ = end + HeadEnd.size();
    }
    if (buffer_.size() - bodyStart_ < bodyLength_)
        return status_;
    request_.body = buffer_.mid(bodyStart_, bodyLength_);
    buffer_.clear();
    status_ = Status::Complete;
    return status_;
}

HttpRequestParser::Status HttpRequestParser::parseHead(const QByteArray& head)
{
    const QList<QByteArray> lines = head.split('\n');
    for (const QByteArray& line : lines)
        if (!line.endsWith('\r') && &line != &lines.last())
            return refuse(BadRequest);  // a bare LF: refused rather than guessed at
    const QByteArray requestLine = lines.first().chopped(lines.size() > 1 ? 1 : 0);
    const QList<QByteArray> parts = requestLine.split(' ');
    if (parts.size() != 3 || !isToken(parts[0]) || parts[1].isEmpty() || hasControlBytes(parts[1]))
        return refuse(BadRequest);
    if (!parts[1].startsWith('/'))
        return refuse(BadRequest);  // only origin-form targets: the panel is no proxy
    if (parts[2] != "HTTP/1.1" && parts[2] != "HTTP/1.0")
        return refuse(parts[2].startsWith("HTTP/") ? VersionNotSupported : BadRequest);
    request_.method = parts[0];
    request_.target = parts[1];
    request_.version = parts[2];
    for (qsizetype i = 1; i < lines.size(); ++i) {
        QByteArray line = lines[i];
        if (line.endsWith('\r'))
            line.chop(1);
        const qsizetype colon = line.indexOf(':');
        if (colon <= 0)
            return refuse(BadRequest);  // also refuses obsolete folded lines, which start with a blank
        const QByteArray name = line.left(colon);
        const QByteArray value = line.mid(colon + 1).trimmed();
        if (!isToken(name) || hasControlBytes(value))
            return refuse(BadRequest);
        request_.headers.append({name.toLower(), value});
    }
    if (request_.hasHeader("transfer-encoding"))
        return refuse(NotImplemented);
    int lengths = 0;
    for (const auto& [n, v] : request_.headers) {
        if (n != "content-length")
            continue;
        bool ok = false;
        const qlonglong length = v.toLongLong(&ok);
        if (!ok || length < 0 || v.startsWith('+') || ++lengths > 1)
            return refuse(BadRequest);
        if (length > WebLimits::MaxRequestBodyBytes)
            return refuse(PayloadTooLarge);
        bodyLength_ = static_cast<qsizetype>(length);
    }
    if (request_.version == "HTTP/1.1" && !request_.hasHeader("host"))
        return refuse(BadRequest);
    return status_;
}
