// SPDX-License-Identifier: GPL-3.0-or-later
#include "WebSettings.h"

#include "SettingsStore.h"

#include <QStringList>

WebSettings WebSettings::load(const SettingsStore& store)
{
    using namespace WebKey;
    WebSettings s;
    s.enabled = store.value(Section, Enabled, QStringLiteral("0")).trimmed() == QLatin1String("1");
    const QString address = store.value(Section, Address, DefaultAddress).trimmed();
    s.address = address.isEmpty() ? DefaultAddress : address;
    s.port = parsePort(store.value(Section, Port)).value_or(DefaultPort);
    s.codes.control = store.value(Section, ControlCode).trimmed().toLatin1();
    s.codes.viewOnly = store.value(Section, ViewCode).trimmed().toLatin1();
    s.certFile = store.value(Section, CertFile).trimmed();
    s.keyFile = store.value(Section, KeyFile).trimmed();
    return s;
}

void WebSettings::save(SettingsStore& store) const
{
    using namespace WebKey;
    store.setValue(Section, Enabled, enabled ? QStringLiteral("1") : QStringLiteral("0"));
    store.setValue(Section, Address, address);
    store.setValue(Section, Port, QString::number(port));
    store.setValue(Section, ControlCode, QString::fromLatin1(codes.control));
    store.setValue(Section, ViewCode, QString::fromLatin1(codes.viewOnly));
    store.setValue(Section, CertFile, certFile);
    store.setValue(Section, KeyFile, keyFile);
}

bool WebSettings::completeCodes()
{
    bool made = false;
    for (QByteArray* code : {&codes.control, &codes.viewOnly}) {
        if (!AccessCodes::wellFormed(*code)) {
            *code = AccessCodes::newCode();
            made = true;
        }
    }
    if (codes.control == codes.viewOnly) {  // one code would grant both: the view code is made anew
        codes.viewOnly = AccessCodes::newCode();
        made = true;
    }
    return made;
}

std::optional<WebSettings::Endpoint> WebSettings::parseEndpoint(const QString& text)
{
    return ::parseEndpoint(text, DefaultAddress);
}

bool isLoopbackAddress(const QString& address)
{
    const QString a = address.trimmed();
    if (a.compare(QLatin1String("localhost"), Qt::CaseInsensitive) == 0)
        return true;
    if (a == u"::1" || a == u"[::1]" || a == u"0:0:0:0:0:0:0:1")
        return true;
    const QStringList quad = a.split(u'.');  // 127.0.0.0/8
    if (quad.size() != 4 || quad[0] != u"127")
        return false;
    for (const QString& part : quad) {
        bool ok = false;
        const int n = part.toInt(&ok);
        if (!ok || n < 0 || n > 255 || part.size() > 3)
            return false;
    }
    return true;
}
