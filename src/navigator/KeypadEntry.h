// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once
// Direct entry of a frequency on the navigator's key pad, as the radio's own key pad does it:
// "&Freq" switches the band keys to digits, "Enter" starts an entry (only while the status poll
// runs and no digit has been typed), up to seven digits fill in MHz, MHz, 100 kHz ... 10 Hz, and
// "Main" or "Sub" send the entry to VFO-A or VFO-B. "&Band" goes back to the band keys.
//
// The entry is kept as a whole count of 10 Hz, so 1,4,2,5,0,0,0 is exactly 14.25 MHz and the frame
// sent is exactly 1425000; EntryFreq() gives it in MHz for showing.
//
// After "Main" or "Sub" the entry is cleared, so the digits typed next start a new frequency from
// zero instead of being appended to the one just sent.

#include <QString>
#include <QtGlobal>
#include <optional>

class KeypadEntry {
public:
    static constexpr int BandMode = 10;  // EntryPos while the keys are band keys
    static constexpr int FirstDigit = 1;
    static constexpr int Full = 8;  // seven digits typed: further digits are ignored

    int EntryPos() const { return pos_; }
    double EntryFreq() const { return tenHz_ / 100000.0; }  // MHz
    qint64 entryTenHz() const { return tenHz_; }
    bool bandMode() const { return pos_ == BandMode; }
    // Digits have been typed since the entry began or since the last "Main"/"Sub".
    bool digitsPending() const { return pos_ > FirstDigit && pos_ <= Full; }

    // "&Freq": key pad mode, waiting for "Enter".
    void beginKeypad();
    // "&Band": back to band mode.
    void backToBands();

    // "Enter": starts the entry when no digit has been typed and the poll is running. True when it
    // did (the caller stops the poll and shows display()).
    bool enter(bool pollRunning);

    // A digit 0..9: true when accepted (the caller shows display()).
    bool digit(int d);

    // "Main" / "Sub": when at least one digit has been typed, the frequency to send in units of
    // 10 Hz; the entry is then cleared and waits for the first digit again.
    std::optional<qint64> commit();

    // The entry as the display shows it after the last accepted step: "  .000.00 " after "Enter",
    // " 1.000.00 " after one digit, "14.250.00 " after more.
    QString display() const { return display_; }

private:
    int pos_ = BandMode;
    qint64 tenHz_ = 0;
    QString display_;
};
