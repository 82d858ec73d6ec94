// SPDX-License-Identifier: GPL-3.0-or-later
#include "BandSignals.h"

#include <algorithm>
#include <cmath>

BandSignals::BandSignals()
    : signals_{
          {3573.0, 1.6, 120},   // 80 m digital
          {3650.0, 1.4, 150},   // 80 m phone
          {7030.0, 0.3, 170},   // 40 m CW
          {7074.0, 1.6, 160},   // 40 m digital
          {7150.0, 1.4, 140},   // 40 m phone
          {9580.0, 5.0, 230},   // broadcaster
          {10136.0, 1.6, 110},  // 30 m digital
          {14074.0, 1.6, 190},  // 20 m digital
          {14200.0, 1.4, 210},  // 20 m phone
          {14230.0, 1.4, 130},  // 20 m slow-scan TV
          {18100.0, 1.6, 100},  // 17 m digital
          {21074.0, 1.6, 140},  // 15 m digital
          {21300.0, 1.4, 120},  // 15 m phone
          {28074.0, 1.6, 90},   // 10 m digital
          {15400.0, 5.0, 200},  // broadcaster
      }
{
}

int BandSignals::sMeterAt(qint64 freq10Hz) const
{
    // A fixed ripple on the floor so a sweep of empty band does not draw a ruler-straight line.
    const quint64 hash = static_cast<quint64>(freq10Hz / 10) * 2654435761ULL;
    int level = NoiseFloor + static_cast<int>((hash >> 16) % NoiseRipple);
    const double kHz = freq10Hz / 100.0;
    for (const BandSignal& s : signals_) {
        const double d = std::abs(kHz - s.centreKHz) / s.halfWidthKHz;
        if (d >= 1.0)
            continue;
        // A rounded top with skirts: full strength in the middle, the floor at the edge.
        const double shape = (1.0 - d * d) * (1.0 - d * d);
        level = std::max(level, NoiseFloor + static_cast<int>(std::lround((s.peak - NoiseFloor) * shape)));
    }
    return std::clamp(level, 0, 255);
}
