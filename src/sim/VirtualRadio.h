// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once
// A model FT-1000MP / Mark-V: its state and its answers to CAT instructions, without any line. The
// host (SimHost) feeds it five-byte commands and puts its replies on a pseudo-terminal; tests call it
// directly. Every public member is safe to call from any thread.

#include "BandSignals.h"
#include "FaultHook.h"
#include "RadioState.h"

#include <QByteArray>
#include <QMap>
#include <array>
#include <functional>
#include <memory>
#include <mutex>
#include <optional>

struct CatCommand;

class VirtualRadio {
public:
    enum class Model { MarkV, MP };
    enum class Vfo { A, B };

    explicit VirtualRadio(Model model = Model::MarkV);

    // The reply to one five-byte command (empty: the radio does not answer). Anything other than five
    // bytes is ignored.
    QByteArray handle(const QByteArray& fiveBytes);
    // The same, with the delay a fault hook may have added; what the host uses.
    RadioReply respond(const QByteArray& fiveBytes);

    // Faults: nothing is installed by default.
    void setFaultHook(std::shared_ptr<FaultHook> hook);
    bool hasFaultHook() const;
    QByteArray unsolicited(qint64 nowMs);

    // --- State, for tests and for arranging a scene ---
    Model model() const;
    void setModel(Model m);

    // The stored VFOs. The main receiver works the VFO in use (VFO-A unless instruction 0x05 chose
    // VFO-B) and the sub receiver the other one. While the radio works a memory channel, the main
    // receiver shows a working copy of that channel instead: mainReceiver() is what the main display
    // (and the status record's first half) holds.
    VfoState vfo(Vfo which) const;
    void setVfo(Vfo which, const VfoState& state);
    VfoState mainReceiver() const;
    Vfo vfoInUse() const;
    // A: the main receiver, B: the sub receiver; -1 for a mode byte outside the table.
    int modeCode(Vfo which) const;
    int filterByte(Vfo which) const;

    bool split() const;
    void setSplit(bool on);
    bool dual() const;
    void setDual(bool on);
    bool transmitting() const;
    void setTransmitting(bool on);
    bool tunerOn() const;
    void setTunerOn(bool on);
    int tunerStarts() const;
    bool memoryMode() const;  // recalled channel (MEM or M-TUN) rather than VFO
    bool memoryTune() const;  // the recalled channel has been retuned (M-TUN)
    void setLocks(bool lockA, bool lockB);
    bool lockA() const;
    bool lockB() const;
    void setMuted(bool muteA, bool muteB);
    bool mutedA() const;
    bool mutedB() const;

    int currentChannel() const;  // 1..113
    void setCurrentChannel(int channel);
    MemoryChannel channel(int number) const;  // 1..113; a default channel outside
    void setChannel(int number, const MemoryChannel& c);

    std::optional<int> edspValue(int function) const;  // the last P3 sent with that function code
    QMap<int, int> edspSettings() const;

    int cwPitchByte() const;
    void setCwPitchByte(int value);

    int sMeter(Vfo which) const;
    void addSignal(const BandSignal& s);
    void clearSignals();

private:
    void presetChannels();  // what the channels hold when the radio is new
    RadioReply execute(const CatCommand& c);
    QByteArray statusReply(const CatCommand& c) const;
    QByteArray meterReply(int selector) const;
    QByteArray flagsReply() const;
    QByteArray memoryBlock() const;
    VfoState& main();  // the VFO in use, or the working copy of the recalled channel
    const VfoState& main() const;
    VfoState& sub();  // the VFO not in use
    const VfoState& sub() const;
    VfoState& stored(Vfo which) { return which == Vfo::A ? vfoA_ : vfoB_; }
    void changeMain(const std::function<void(VfoState&)>& change);
    void recall(int channel);
    void setFilter(int receiverSelector, int row);
    int modeCodeOf(const VfoState& v) const;
    int transmitMeter(int selector) const;
    static bool validChannel(int n) { return n >= 1 && n <= RadioLimits::Channels; }

    mutable std::mutex mutex_;
    Model model_;
    VfoState vfoA_, vfoB_;
    Vfo inUse_ = Vfo::A;
    VfoState working_;  // the recalled channel as the main receiver shows it
    bool memoryMode_ = false;
    bool memoryTune_ = false;
    bool split_ = false, dual_ = false, transmitting_ = false;
    bool tunerOn_ = false;
    int tunerStarts_ = 0;
    bool lockA_ = false, lockB_ = false;
    bool muteA_ = false, muteB_ = false;
    int currentChannel_ = 1;
    std::array<MemoryChannel, RadioLimits::Channels + 1> channels_{};  // index 0 unused
    QMap<int, int> edsp_;
    int cwPitchByte_ = 0x90;  // 750 Hz
    BandSignals signals_;
    std::shared_ptr<FaultHook> hook_;
};
