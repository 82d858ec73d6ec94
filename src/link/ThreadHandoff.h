// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once
// Marks for the thread sanitizer where Qt's event queue hands work from one thread to another. Qt is
// not built with the sanitizer, so the mutex under which it passes a queued call is invisible to it:
// release() before queueing and acquire() first thing on the receiving side tell it that what the
// sender did before happens before what the receiver does. Outside a sanitizer build they are nothing.

#include <utility>

#if defined(__SANITIZE_THREAD__)
#define FT_THREAD_SANITIZER 1
#elif defined(__has_feature)
#if __has_feature(thread_sanitizer)
#define FT_THREAD_SANITIZER 1
#endif
#endif

#ifdef FT_THREAD_SANITIZER
extern "C" void __tsan_acquire(void* addr);
extern "C" void __tsan_release(void* addr);
#endif

namespace ThreadHandoff {
inline void release([[maybe_unused]] const void* token)
{
#ifdef FT_THREAD_SANITIZER
    __tsan_release(const_cast<void*>(token));
#endif
}
inline void acquire([[maybe_unused]] const void* token)
{
#ifdef FT_THREAD_SANITIZER
    __tsan_acquire(const_cast<void*>(token));
#endif
}

// Lives inside the queued call, and its own address is the mark: neither side reads the call's memory
// to find it. Copied into place last, it releases after everything the sender wrote into the call; the
// receiver acquires before it touches the call at all, when it runs the call and again when it
// destroys it (also when the call is dropped unrun because its receiver is gone).
class Receipt {
public:
    Receipt() { release(this); }
    Receipt(const Receipt&) { release(this); }
    Receipt& operator=(const Receipt&) = delete;
    ~Receipt() { acquire(this); }
    void arrived() const { acquire(this); }
};

// A call to queue to another thread's event loop, with its receipt.
template <class Fn>
class Handover {
public:
    explicit Handover(Fn fn) : fn_(std::move(fn)) {}
    void operator()()
    {
        receipt_.arrived();
        fn_();
    }

private:
    Fn fn_;
    Receipt receipt_;  // after the call: constructed last, destroyed first
};

template <class Fn>
Handover<Fn> handOver(Fn fn)
{
    return Handover<Fn>(std::move(fn));
}
}  // namespace ThreadHandoff
