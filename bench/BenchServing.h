// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once
// What the benchmarks that drive the network server share: a percentile of a sample, and serving the
// main thread's event loop while a client thread works or for a stretch of time.

#include <QCoreApplication>
#include <QElapsedTimer>
#include <algorithm>
#include <atomic>
#include <thread>
#include <vector>

namespace Bench {
inline double percentile(std::vector<double> v, double p)
{
    if (v.empty())
        return 0;
    std::sort(v.begin(), v.end());
    const size_t i = std::min(v.size() - 1, static_cast<size_t>(p * static_cast<double>(v.size() - 1) + 0.5));
    return v[i];
}

// Runs fn on a thread while the main thread's event loop serves the server.
template <typename Fn>
void whileServing(Fn fn)
{
    std::atomic<bool> done{false};
    std::thread t([&] {
        fn();
        done = true;
    });
    while (!done)
        QCoreApplication::processEvents(QEventLoop::AllEvents, 1);
    t.join();
}

inline void serveFor(int ms)
{
    QElapsedTimer t;
    t.start();
    while (t.elapsed() < ms)
        QCoreApplication::processEvents(QEventLoop::AllEvents, 5);
}
}  // namespace Bench
