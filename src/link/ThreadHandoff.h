// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once
// Marks for the thread sanitizer where Qt's event queue hands work from one thread to another. Qt is
// not built with the sanitizer, so the mutex under which it passes a queued call is invisible to it:
// release() before queueing and acquire() first thing on the receiving side tell it that what the
// sender did before happens before what the receiver does. Outside a sanitizer build they are nothing.

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

// Carried inside a queued call: when the call is dropped unrun (its receiver gone), the receiving side
// still acquires before it frees what the sender made.
struct Receipt {
    const void* token;
    Receipt(const Receipt&) = default;
    explicit Receipt(const void* t) : token(t) {}
    ~Receipt() { acquire(token); }
};
}  // namespace ThreadHandoff
