// SPDX-License-Identifier: GPL-3.0-or-later
#include "SMeterCalibration.h"

#include <algorithm>
#include <cmath>

namespace {
int between(int raw, int raw0, int db0, int raw1, int db1)
{
    const double t = static_cast<double>(raw - raw0) / (raw1 - raw0);
    return static_cast<int>(std::lround(db0 + t * (db1 - db0)));
}
}  // namespace

int sMeterDbOverS9(int raw)
{
    using namespace SMeterPoint;
    const int r = std::clamp(raw, BottomRaw, TopRaw);
    if (r <= S9Raw)
        return between(r, BottomRaw, BottomDb, S9Raw, S9Db);
    return between(r, S9Raw, S9Db, TopRaw, TopDb);
}
