// What debug builds of the library know of all objects: the thread that may use them, and which are alive.
// In other builds nothing is kept, and the functions do nothing.
#pragma once

#include "corvane/base/Ref.h"

#include <cstdint>
#include <string>
#include <vector>

namespace corvane::ObjectWatch {

// From now on only this thread may use objects, until Stop. Returns a mark for MadeSince.
std::uint64_t Start();
void Stop();
// What the calling thread is, for the message about an object that it uses, as in `the job "Import"`; empty for nothing
// in particular.
[[gnu::visibility("default")]] void NameThread(std::string sName);
// The living objects that have been made since the mark, in order.
[[nodiscard]] std::vector<Ref<Object>> MadeSince(std::uint64_t uMark);
// By the end of an object.
#ifdef NDEBUG
inline void Forget(const Object& /*oObject*/) noexcept {}
#else
void Forget(const Object& oObject) noexcept;
#endif

} // namespace corvane::ObjectWatch
