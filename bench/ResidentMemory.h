#pragma once
#include <cstddef>

// The process's resident memory as Linux reports it in /proc/self/status.
namespace zo::bench {

// Resets the peak resident set (VmHWM) to the current resident set; false when the kernel
// does not allow it (then the peak is that of the whole process so far).
bool ResetPeakResident();
// VmHWM and VmRSS, in bytes (0 when unreadable).
std::size_t PeakResidentBytes();
std::size_t ResidentBytes();
// Gives freed heap memory back to the system, so that the next reading shows what is held.
void TrimHeap();

} // namespace zo::bench
