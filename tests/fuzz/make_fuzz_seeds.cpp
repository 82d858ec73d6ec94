// SPDX-License-Identifier: GPL-3.0-or-later
// Writes the fuzz targets' seed inputs: real replies of the virtual radio in a few states, a memory
// file made from its channels, and typical settings texts and network commands. Each target's seeds
// go to OUT/<target>/, in the layout that target reads (see each target's first lines).
//
//   make_fuzz_seeds OUT

#include "CatCommand.h"
#include "ChannelDecoder.h"
#include "MemRecord.h"
#include "MemoryReadout.h"
#include "VirtualRadio.h"

#include <QCoreApplication>
#include <QDir>
#include <QFile>
#include <cstdio>

namespace {
QString outRoot;
int written = 0;

void seed(const QString& target, const QString& name, const QByteArray& bytes)
{
    const QString dir = outRoot + u'/' + target;
    QDir().mkpath(dir);
    QFile f(dir + u'/' + name);
    if (f.open(QIODevice::WriteOnly | QIODevice::Truncate) && f.write(bytes) == bytes.size())
        ++written;
    else
        std::fprintf(stderr, "make_fuzz_seeds: cannot write %s\n", qPrintable(f.fileName()));
}

QByteArray ask(VirtualRadio& radio, quint8 op, int p4 = 0, int p1 = 0)
{
    return radio.handle(CatCommand::make(op, p4, 0, 0, p1).bytes());
}

QByteArray lengthPrefixed(const QByteArray& first, const QByteArray& rest)
{
    return QByteArray(1, static_cast<char>(first.size())) + first + rest;
}

// A few states of the radio, so the replies differ in the fields the decoders look at.
QList<VirtualRadio*> scenes()
{
    static VirtualRadio plain;
    static VirtualRadio busy;
    static VirtualRadio mp(VirtualRadio::Model::MP);
    VfoState a;
    a.freq10Hz = 705000;
    a.clar10Hz = -125;
    a.rxClar = true;
    a.txClar = true;
    a.modeByte = 0x80;  // Data USER
    a.shift = 2;
    a.antennaB = true;
    busy.setVfo(VirtualRadio::Vfo::A, a);
    VfoState b;
    b.freq10Hz = 2999999;
    b.modeByte = 2;
    b.secondVariant = true;
    busy.setVfo(VirtualRadio::Vfo::B, b);
    busy.setSplit(true);
    busy.setDual(true);
    busy.setLocks(true, true);
    busy.setMuted(true, false);
    busy.setTunerOn(true);
    return {&plain, &busy, &mp};
}
}  // namespace

int main(int argc, char* argv[])
{
    QCoreApplication app(argc, argv);
    if (argc != 2) {
        std::fprintf(stderr, "usage: make_fuzz_seeds OUT\n");
        return 2;
    }
    outRoot = QString::fromLocal8Bit(argv[1]);

    int scene = 0;
    for (VirtualRadio* radio : scenes()) {
        const QString s = QString::number(scene++);
        const QByteArray current = ask(*radio, Op::StatusRequest, StatusKind::CurrentVfo);
        const QByteArray both = ask(*radio, Op::StatusRequest, StatusKind::BothVfos);
        seed(QStringLiteral("fuzz_status_decode"), QStringLiteral("poll-") + s, lengthPrefixed(current, both));
        seed(QStringLiteral("fuzz_status_decode"), QStringLiteral("short-") + s,
             lengthPrefixed(current.left(7), both.left(20)));

        for (const int arg : {0, 1}) {
            const QByteArray flags = ask(*radio, Op::ReadFlags, arg);
            seed(QStringLiteral("fuzz_flags_decode"), QStringLiteral("flags-%1-%2").arg(s).arg(arg),
                 QByteArray(1, char(arg)) + QByteArray(1, char(flags.size())) + flags);
        }

        QByteArray meters;
        QByteArray lengths;
        for (const int selector : {int(MeterSelector::MainS), int(MeterSelector::SubS),
                                   int(MeterSelector::TransmitBase), int(MeterSelector::CwPitch)}) {
            const QByteArray r = ask(*radio, Op::ReadMeter, 0, selector);
            lengths += char(r.size());
            meters += r;
        }
        seed(QStringLiteral("fuzz_meter_reply"), QStringLiteral("meters-") + s, lengths + char(128 + 5) + meters);

        seed(QStringLiteral("fuzz_channel_readout"), QStringLiteral("all-") + s,
             ask(*radio, Op::StatusRequest, StatusKind::AllMemories));
        seed(QStringLiteral("fuzz_channel_readout"), QStringLiteral("one-") + s,
             ask(*radio, Op::StatusRequest, StatusKind::OneChannel, 5));
    }

    // A memory file of the radio's channels, as the memory window saves them, and one cut short.
    VirtualRadio radio;
    ChannelMode mode;
    QByteArray file;
    for (const DecodedChannel& d : decodeAllChannels(ask(radio, Op::StatusRequest, StatusKind::AllMemories), &mode)) {
        if (const auto r = recordFromRow(channelRow(d.channel, d.decode), nullptr))
            file += r->encode();
    }
    seed(QStringLiteral("fuzz_mem_file"), QStringLiteral("channels.ymp"), file);
    seed(QStringLiteral("fuzz_mem_file"), QStringLiteral("short.ymp"), file.left(100));

    int i = 0;
    for (const char* text : {"4800,n,8,2", "9600,E,7,1", "1200,o,8,1.5", "19200,N,8,1", "4800,m,5,2", "300,s,6,1"})
        seed(QStringLiteral("fuzz_line_settings"), QStringLiteral("set-%1").arg(i++), text);

    i = 0;
    for (const char* text : {"1", "0", "9", "3.0", "12.5 Khz", " 7 ", "-2", "+4", "7035", "10410", ".5", "abc"})
        seed(QStringLiteral("fuzz_settings_number"), QStringLiteral("num-%1").arg(i++), text);

    i = 0;
    for (const char* text :
         {"f\nF 14074000\nm\nM USB 2400\n", "+f\n;\\get_freq\n|\\get_mode\n,v\n", "V VFOB\nf\nF VFOA 7074000\n",
          "S 1 VFOB\ns\ni\nI 14080000\nx\nX LSB 0\n", "t\nT 1\nT 0\n", "l STRENGTH\n\\dump_state\n\\chk_vfo\n",
          "\\get_powerstat\n\\set_powerstat 1\n\\get_lock_mode\n\\set_lock_mode 1\n", "v\nV currVFO\nq\n"}) {
        // Byte 0 sets the piece size the stream is cut into: a different one for each seed.
        seed(QStringLiteral("fuzz_rigctl"), QStringLiteral("cmds-%1").arg(i), QByteArray(1, char(i * 7)) + text);
        ++i;
    }

    i = 0;
    for (const char* text : {"ID;PS;IF;AI;FA;FB;MD;PS;", "FA00014076000;ID;MD3;ID;", "SA;FR1;ID;FB;MD1;FR0;ID;",
                             "FR0;FT1;ID;IF;FT;", "TX;ID;IF;RX;ID;", "SM0;\r\nfa;md;XX;?;", "AI0;VX1;PS1;SA0;"}) {
        seed(QStringLiteral("fuzz_text_port"), QStringLiteral("cmds-%1").arg(i), QByteArray(1, char(i * 37)) + text);
        ++i;
    }

    i = 0;
    for (const char* text :
         {"GET / HTTP/1.1\r\nHost: 127.0.0.1:8073\r\n\r\n",
          "POST /login HTTP/1.1\r\nHost: h\r\nOrigin: http://h\r\nContent-Type: application/x-www-form-urlencoded\r\n"
          "Content-Length: 37\r\n\r\ncode=0123456789abcdef0123456789abcdef",
          "GET /ws HTTP/1.1\r\nHost: h:1\r\nConnection: Upgrade\r\nUpgrade: websocket\r\nOrigin: http://h:1\r\n"
          "Cookie: a=1; ft1000panel=abc\r\nSec-WebSocket-Version: 13\r\nSec-WebSocket-Key: x\r\n\r\n",
          "POST /login HTTP/1.1\r\nHost: h\r\nTransfer-Encoding: chunked\r\n\r\n0\r\n\r\n"}) {
        seed(QStringLiteral("fuzz_web_request"), QStringLiteral("req-%1").arg(i), QByteArray(1, char(i * 11)) + text);
        ++i;
    }

    i = 0;
    for (const char* text :
         {R"({"t":"tune","vfo":"A","hz":14250000})", R"({"t":"step","vfo":"B","hz":-100})", R"({"t":"band","index":3})",
          R"({"t":"mode","vfo":"A","mode":2})", R"({"t":"split","on":true})", R"({"t":"recall","channel":12})",
          R"({"t":"ptt","on":false})", R"({"t":"copyAB"})", R"([1,{"t":null}])"})
        seed(QStringLiteral("fuzz_panel_command"), QStringLiteral("cmd-%1").arg(i++), text);

    std::printf("%d seeds written to %s\n", written, qPrintable(outRoot));
    return 0;
}
