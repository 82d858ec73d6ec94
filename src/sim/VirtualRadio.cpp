// SPDX-License-Identifier: GPL-3.0-or-later
// The virtual radio's state: the receivers the commands act on, and the accessors for tests and
// scenes. The instruction handlers, the status and flag replies, the memory channels and the meters
// live in the files named after them.
#include "VirtualRadio.h"

#include "CatCommand.h"
#include "RadioRecords.h"

#include <utility>

namespace {
using Lock = std::lock_guard<std::mutex>;
}  // namespace

VirtualRadio::VirtualRadio(Model model) : model_(model)
{
    vfoA_.freq10Hz = 1407400;  // 14 074.00 kHz USB, on a busy spot
    vfoB_.freq10Hz = 707400;   // 7 074.00 kHz USB
    presetChannels();
}

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

// --- The receivers the commands act on ---

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
