#include "VirtualRadio.h"

#include "CatCommand.h"
#include "RadioRecords.h"

#include <algorithm>
#include <utility>

namespace {
using Lock = std::lock_guard<std::mutex>;

// Flag bytes of the 0xFA reply (0-based here; the program numbers them from 1).
namespace FlagBits {
constexpr int Split = 0x01, Dual = 0x02, Transmit = 0x80;                        // byte 0
constexpr int QuickMemory = 0x08, MemoryTune = 0x10, Vfo = 0x20, Memory = 0x40;  // byte 1
constexpr int Tuner = 0x02, LockB = 0x04, LockA = 0x08;                          // byte 2
constexpr int MuteB = 0x01, MuteA = 0x02;                                        // byte 5
}  // namespace FlagBits

// Bytes 4 and 5 of the flags identify the model; the program's title check looks for the Mark-V pair.
constexpr std::pair<int, int> MarkVId{0x03, 0x93};
constexpr std::pair<int, int> PlainMpId{0x02, 0x43};

// Step sizes of instructions 0x07/0x08, by P4, in 10 Hz units.
constexpr qint64 StepSmall10Hz = 10000;   // 100 kHz
constexpr qint64 StepLarge10Hz = 100000;  // 1 MHz
constexpr qint64 Wrap10Hz = 3000000;      // the tuning range wraps at 30 MHz

// Clarifier instruction parameters.
constexpr int RxClarOff = 0x00, RxClarOn = 0x01, TxClarOff = 0x80, TxClarOn = 0x81, ClarClear = 0xFF;

// Filter selection: P1 says which IF of which receiver.
constexpr int FilterSub = 0, FilterMain82 = 1, FilterMain455 = 2;
constexpr int SubFilterBase = 0x80;

// Transmit meter readings while the transmitter is keyed, by selector - 0x80 (PO, ALC, -, IC, VCC, SWR, Mic).
constexpr int TransmitReadings[] = {150, 70, 0, 130, 205, 25, 90};

constexpr int MeterReplyFiller = 0;  // not used by the program

void setBool(bool& target, int p4)
{
    if (p4 == 0 || p4 == 1)
        target = p4 == 1;
}

MemoryChannel presetChannel(double kHz, int modeCode, bool masked = false)
{
    MemoryChannel c;
    c.data.freq10Hz = static_cast<qint64>(kHz * 100 + 0.5);
    const auto m = modeBytesForCode(modeCode);
    c.data.modeByte = m->modeByte;
    c.data.secondVariant = m->secondVariant;
    c.masked = masked;
    return c;
}
}  // namespace

VirtualRadio::VirtualRadio(Model model) : model_(model)
{
    vfoA_.freq10Hz = 1407400;  // 14 074.00 kHz USB, on a busy spot
    vfoB_.freq10Hz = 707400;   // 7 074.00 kHz USB
    // Channels nobody has written hold the radio's blank data and are masked.
    for (int n = 1; n <= RadioLimits::Channels; ++n)
        channels_[n] = presetChannel(7000.0, 0, true);
    const struct {
        int n;
        double kHz;
        int mode;
    } presets[] = {{1, 3573.0, 1},   {2, 7074.0, 1},   {3, 10136.0, 1},  {4, 14074.0, 1},   {5, 14200.0, 1},
                   {6, 18100.0, 1},  {7, 21074.0, 1},  {8, 7030.0, 2},   {9, 3650.0, 0},    {10, 9580.0, 4},
                   {11, 28074.0, 1}, {12, 14060.0, 3}, {13, 29600.0, 6}, {100, 14000.0, 2}, {101, 14350.0, 1},
                   {109, 7150.0, 0}, {110, 14230.0, 1}};
    for (const auto& p : presets)
        channels_[p.n] = presetChannel(p.kHz, p.mode);
    channels_[5].data.clar10Hz = -25;  // -0.25 kHz
    channels_[10].data.antennaB = true;
    channels_[14] = presetChannel(21300.0, 1, /*masked=*/true);  // written once, then hidden
}

// --- Replies ---

QByteArray VirtualRadio::handle(const QByteArray& fiveBytes)
{
    return respond(fiveBytes).bytes;
}

RadioReply VirtualRadio::respond(const QByteArray& fiveBytes)
{
    Lock lock(mutex_);
    if (fiveBytes.size() != 5)
        return {};
    if (hook_ && !hook_->admit(fiveBytes))
        return {};
    const auto byte = [&](int i) { return static_cast<quint8>(fiveBytes[i]); };
    const CatCommand c{byte(0), byte(1), byte(2), byte(3), byte(4)};
    RadioReply reply = execute(c);
    if (hook_)
        hook_->shape(fiveBytes, reply);
    return reply;
}

RadioReply VirtualRadio::execute(const CatCommand& c)
{
    const int p4 = c.p4;
    switch (c.op) {
        case Op::Split:
            setBool(split_, p4);
            break;
        case Op::RecallMemory:
            if (validChannel(p4))
                recall(p4);
            break;
        case Op::WriteMemory:
            if (!validChannel(p4))
                break;
            if (c.p3 == 0) {
                channels_[p4].data = main();
                channels_[p4].masked = false;
                if (memoryMode_ && p4 == currentChannel_)
                    memoryTune_ = false;
            } else if (c.p3 == 1) {
                channels_[p4].masked = true;
            } else if (c.p3 == 2) {
                channels_[p4].masked = false;
            }
            break;
        case Op::VfoSelect:
            // Chooses the VFO the main receiver works (0 VFO-A, 1 VFO-B), leaving a recalled channel.
            if (p4 == 0 || p4 == 1) {
                inUse_ = p4 == 0 ? Vfo::A : Vfo::B;
                memoryMode_ = false;
                memoryTune_ = false;
            }
            break;
        case Op::MemoryToVfoA:
            if (validChannel(p4)) {
                vfoA_ = channels_[p4].data;
                currentChannel_ = p4;
                memoryMode_ = false;
                memoryTune_ = false;
            }
            break;
        case Op::StepUp:
        case Op::StepDown: {
            if (p4 != 0 && p4 != 1)
                break;
            const qint64 step = (p4 == 0 ? StepSmall10Hz : StepLarge10Hz) * (c.op == Op::StepUp ? 1 : -1);
            changeMain([step](VfoState& v) {
                qint64 f = v.freq10Hz + step;
                if (f > RadioLimits::MaxFreq10Hz)
                    f -= Wrap10Hz;
                if (f < RadioLimits::MinFreq10Hz)
                    f += Wrap10Hz;
                v.freq10Hz = std::clamp(f, RadioLimits::MinFreq10Hz, RadioLimits::MaxFreq10Hz);
            });
            break;
        }
        case Op::Clarifier:
            if (p4 == RxClarOff || p4 == RxClarOn)
                changeMain([p4](VfoState& v) { v.rxClar = p4 == RxClarOn; });
            else if (p4 == TxClarOff || p4 == TxClarOn)
                changeMain([p4](VfoState& v) { v.txClar = p4 == TxClarOn; });
            else if (p4 == ClarClear)
                changeMain([](VfoState& v) { v.clar10Hz = 0; });
            break;
        case Op::SetVfoA:
        case Op::SetVfoB: {
            const auto f = decodeBcdFrequency(c.p1, c.p2, c.p3, c.p4);
            if (!f || *f < RadioLimits::MinFreq10Hz || *f > RadioLimits::MaxFreq10Hz)
                break;  // the radio refuses what it cannot tune
            // The VFO in use is the main receiver's: on a recalled channel, that retunes the channel.
            const Vfo target = c.op == Op::SetVfoA ? Vfo::A : Vfo::B;
            if (target == inUse_)
                changeMain([&f](VfoState& v) { v.freq10Hz = *f; });
            else
                stored(target).freq10Hz = *f;
            break;
        }
        case Op::SetMode:
            if (const auto m = modeBytesForCode(p4))
                changeMain([&m](VfoState& v) {
                    v.modeByte = m->modeByte;
                    v.secondVariant = m->secondVariant;
                });
            break;
        case Op::Ptt:
            setBool(transmitting_, p4);
            break;
        case Op::StatusRequest:
            return {statusReply(c)};
        case Op::Edsp:
            edsp_[p4] = c.p3;
            break;
        case Op::Tuner:
            setBool(tunerOn_, p4);
            break;
        case Op::TunerStart:
            tunerOn_ = true;
            ++tunerStarts_;
            break;
        case Op::Dual:
            setBool(dual_, p4);
            break;
        case Op::RepeaterShift:
            if (p4 >= 0 && p4 <= 2)
                changeMain([p4](VfoState& v) { v.shift = p4; });
            break;
        case Op::CopyAtoB:
            // VFO-A as the main receiver shows it (a recalled channel included) when it is in use.
            vfoB_ = inUse_ == Vfo::A ? main() : vfoA_;
            break;
        case Op::FilterSelect:
            setFilter(c.p1, p4);
            break;
        case Op::ReadMeter:
            return {meterReply(c.p1)};
        case Op::ReadFlags:
            return {flagsReply()};
        default:
            break;  // an instruction this radio does not know: no answer
    }
    return {};
}

QByteArray VirtualRadio::statusReply(const CatCommand& c) const
{
    switch (c.p4) {
        case StatusKind::AllMemories:
            return memoryBlock();
        case StatusKind::CurrentChannel:
            return QByteArray(1, static_cast<char>(currentChannel_ - 1));
        case StatusKind::CurrentVfo:
            return encodeVfoRecord(main());
        case StatusKind::BothVfos:
            // The main receiver's record first, as in the current-VFO reply.
            return encodeVfoRecord(main()) + encodeVfoRecord(sub());
        case StatusKind::OneChannel:
            if (validChannel(c.p1))
                return encodeChannelRecord(channels_[c.p1]);
            return {};
        default:
            return {};
    }
}

QByteArray VirtualRadio::memoryBlock() const
{
    // The block starts with 55 bytes the program skips: here the flags, both VFO records and the
    // current channel, then zeros.
    QByteArray header = flagsReply() + encodeVfoRecord(main()) + encodeVfoRecord(sub());
    header += static_cast<char>(currentChannel_ - 1);
    header.append(ReplySize::MemoryHeader - header.size(), '\0');
    QByteArray block = header;
    for (int n = 1; n <= RadioLimits::Channels; ++n)
        block += encodeChannelRecord(channels_[n]);
    return block;
}

QByteArray VirtualRadio::meterReply(int selector) const
{
    int reading = 0;
    if (selector == MeterSelector::MainS)
        reading = signals_.sMeterAt(main().freq10Hz);
    else if (selector == MeterSelector::SubS)
        reading = signals_.sMeterAt(sub().freq10Hz);
    else if (selector == MeterSelector::CwPitch)
        reading = cwPitchByte_;
    else
        reading = transmitMeter(selector);
    QByteArray r(ReplySize::Meter, static_cast<char>(MeterReplyFiller));
    r[0] = static_cast<char>(reading);
    r[ReplySize::Meter - 1] = static_cast<char>(Op::ReadMeter);
    return r;
}

int VirtualRadio::transmitMeter(int selector) const
{
    const int index = selector - MeterSelector::TransmitBase;
    if (!transmitting_ || index < 0 || index >= static_cast<int>(std::size(TransmitReadings)))
        return 0;
    return TransmitReadings[index];
}

QByteArray VirtualRadio::flagsReply() const
{
    QByteArray f(ReplySize::Flags, '\0');
    int b0 = 0, b1 = 0, b2 = 0, b5 = 0;
    if (split_)
        b0 |= FlagBits::Split;
    if (dual_)
        b0 |= FlagBits::Dual;
    if (transmitting_)
        b0 |= FlagBits::Transmit;
    if (!memoryMode_)
        b1 |= FlagBits::Vfo;
    else if (memoryTune_)
        b1 |= FlagBits::MemoryTune;
    else
        b1 |= FlagBits::Memory;
    if (memoryMode_ && currentChannel_ >= RadioLimits::FirstQuickMemory)
        b1 |= FlagBits::QuickMemory;
    if (tunerOn_)
        b2 |= FlagBits::Tuner;
    if (lockA_)
        b2 |= FlagBits::LockA;
    if (lockB_)
        b2 |= FlagBits::LockB;
    if (muteA_)
        b5 |= FlagBits::MuteA;
    if (muteB_)
        b5 |= FlagBits::MuteB;
    const auto id = model_ == Model::MarkV ? MarkVId : PlainMpId;
    f[0] = static_cast<char>(b0);
    f[1] = static_cast<char>(b1);
    f[2] = static_cast<char>(b2);
    f[3] = static_cast<char>(id.first);
    f[4] = static_cast<char>(id.second);
    f[5] = static_cast<char>(b5);
    return f;
}

// --- Helpers of the commands ---

VfoState& VirtualRadio::main()
{
    return memoryMode_ ? working_ : stored(inUse_);
}
const VfoState& VirtualRadio::main() const
{
    return memoryMode_ ? working_ : (inUse_ == Vfo::A ? vfoA_ : vfoB_);
}
VfoState& VirtualRadio::sub()
{
    return stored(inUse_ == Vfo::A ? Vfo::B : Vfo::A);
}
const VfoState& VirtualRadio::sub() const
{
    return inUse_ == Vfo::A ? vfoB_ : vfoA_;
}

void VirtualRadio::changeMain(const std::function<void(VfoState&)>& change)
{
    // Retuning a recalled channel puts the radio in memory tune; the channel itself keeps its data.
    const VfoState before = main();
    change(main());
    if (memoryMode_ && !(main() == before))
        memoryTune_ = true;
}

void VirtualRadio::recall(int channel)
{
    currentChannel_ = channel;
    working_ = channels_[channel].data;
    memoryMode_ = true;
    memoryTune_ = false;
}

void VirtualRadio::setFilter(int receiverSelector, int row)
{
    if (receiverSelector == FilterSub) {
        // The sub receiver's codes do not say which IF: both of its IFs take the row.
        const auto code = filterCodeForRow(row - SubFilterBase);
        if (!code)
            return;
        sub().filter82 = *code;
        sub().filter455 = *code;
        return;
    }
    const auto code = filterCodeForRow(row);
    if (!code)
        return;
    if (receiverSelector == FilterMain82)
        changeMain([&code](VfoState& v) { v.filter82 = *code; });
    else if (receiverSelector == FilterMain455)
        changeMain([&code](VfoState& v) { v.filter455 = *code; });
}

int VirtualRadio::modeCodeOf(const VfoState& v) const
{
    if (v.modeByte >= 0x80)
        return 0;  // "Data USER" reads as code 0
    for (int code = 0; code <= 11; ++code) {
        const auto m = modeBytesForCode(code);
        if (m && m->modeByte == v.modeByte &&
            (m->secondVariant == v.secondVariant || v.modeByte == 0 || v.modeByte == 1 || v.modeByte == 4))
            return code;
    }
    return -1;
}

// --- Accessors ---

void VirtualRadio::setFaultHook(std::shared_ptr<FaultHook> hook)
{
    Lock lock(mutex_);
    hook_ = std::move(hook);
}

bool VirtualRadio::hasFaultHook() const
{
    Lock lock(mutex_);
    return hook_ != nullptr;
}

QByteArray VirtualRadio::unsolicited(qint64 nowMs)
{
    Lock lock(mutex_);
    return hook_ ? hook_->unsolicited(nowMs) : QByteArray();
}

VirtualRadio::Model VirtualRadio::model() const
{
    Lock lock(mutex_);
    return model_;
}

void VirtualRadio::setModel(Model m)
{
    Lock lock(mutex_);
    model_ = m;
}

VfoState VirtualRadio::vfo(Vfo which) const
{
    Lock lock(mutex_);
    return which == Vfo::A ? vfoA_ : vfoB_;
}

void VirtualRadio::setVfo(Vfo which, const VfoState& state)
{
    Lock lock(mutex_);
    (which == Vfo::A ? vfoA_ : vfoB_) = state;
}

VfoState VirtualRadio::mainReceiver() const
{
    Lock lock(mutex_);
    return main();
}

VirtualRadio::Vfo VirtualRadio::vfoInUse() const
{
    Lock lock(mutex_);
    return inUse_;
}

int VirtualRadio::modeCode(Vfo which) const
{
    Lock lock(mutex_);
    return modeCodeOf(which == Vfo::A ? main() : sub());
}

int VirtualRadio::filterByte(Vfo which) const
{
    Lock lock(mutex_);
    return qualifierByte(which == Vfo::A ? main() : sub());
}

bool VirtualRadio::split() const
{
    Lock lock(mutex_);
    return split_;
}

void VirtualRadio::setSplit(bool on)
{
    Lock lock(mutex_);
    split_ = on;
}

bool VirtualRadio::dual() const
{
    Lock lock(mutex_);
    return dual_;
}

void VirtualRadio::setDual(bool on)
{
    Lock lock(mutex_);
    dual_ = on;
}

bool VirtualRadio::transmitting() const
{
    Lock lock(mutex_);
    return transmitting_;
}

void VirtualRadio::setTransmitting(bool on)
{
    Lock lock(mutex_);
    transmitting_ = on;
}

bool VirtualRadio::tunerOn() const
{
    Lock lock(mutex_);
    return tunerOn_;
}

void VirtualRadio::setTunerOn(bool on)
{
    Lock lock(mutex_);
    tunerOn_ = on;
}

int VirtualRadio::tunerStarts() const
{
    Lock lock(mutex_);
    return tunerStarts_;
}

bool VirtualRadio::memoryMode() const
{
    Lock lock(mutex_);
    return memoryMode_;
}

bool VirtualRadio::memoryTune() const
{
    Lock lock(mutex_);
    return memoryTune_;
}

void VirtualRadio::setLocks(bool lockA, bool lockB)
{
    Lock lock(mutex_);
    lockA_ = lockA;
    lockB_ = lockB;
}

bool VirtualRadio::lockA() const
{
    Lock lock(mutex_);
    return lockA_;
}

bool VirtualRadio::lockB() const
{
    Lock lock(mutex_);
    return lockB_;
}

void VirtualRadio::setMuted(bool muteA, bool muteB)
{
    Lock lock(mutex_);
    muteA_ = muteA;
    muteB_ = muteB;
}

bool VirtualRadio::mutedA() const
{
    Lock lock(mutex_);
    return muteA_;
}

bool VirtualRadio::mutedB() const
{
    Lock lock(mutex_);
    return muteB_;
}

int VirtualRadio::currentChannel() const
{
    Lock lock(mutex_);
    return currentChannel_;
}

void VirtualRadio::setCurrentChannel(int channel)
{
    Lock lock(mutex_);
    if (validChannel(channel))
        currentChannel_ = channel;
}

MemoryChannel VirtualRadio::channel(int number) const
{
    Lock lock(mutex_);
    return validChannel(number) ? channels_[number] : MemoryChannel{};
}

void VirtualRadio::setChannel(int number, const MemoryChannel& c)
{
    Lock lock(mutex_);
    if (validChannel(number))
        channels_[number] = c;
}

std::optional<int> VirtualRadio::edspValue(int function) const
{
    Lock lock(mutex_);
    const auto it = edsp_.constFind(function);
    if (it == edsp_.cend())
        return std::nullopt;
    return it.value();
}

QMap<int, int> VirtualRadio::edspSettings() const
{
    Lock lock(mutex_);
    return edsp_;
}

int VirtualRadio::cwPitchByte() const
{
    Lock lock(mutex_);
    return cwPitchByte_;
}

void VirtualRadio::setCwPitchByte(int value)
{
    Lock lock(mutex_);
    cwPitchByte_ = value & 0xFF;
}

int VirtualRadio::sMeter(Vfo which) const
{
    Lock lock(mutex_);
    return signals_.sMeterAt(which == Vfo::A ? main().freq10Hz : sub().freq10Hz);
}

void VirtualRadio::addSignal(const BandSignal& s)
{
    Lock lock(mutex_);
    signals_.add(s);
}

void VirtualRadio::clearSignals()
{
    Lock lock(mutex_);
    signals_.clear();
}
