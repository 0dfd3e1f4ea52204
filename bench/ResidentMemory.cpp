#include "ResidentMemory.h"

#include <cstdio>
#include <cstring>
#include <malloc.h>

namespace zo::bench {
namespace {

// A "Key:  N kB" line of /proc/self/status, in bytes.
std::size_t StatusBytes(char const* key)
{
    std::FILE* file = std::fopen("/proc/self/status", "r");
    if (!file)
        return 0;
    std::size_t const keyLength = std::strlen(key);
    char line[256];
    std::size_t bytes = 0;
    while (std::fgets(line, sizeof line, file)) {
        unsigned long kb = 0;
        if (std::strncmp(line, key, keyLength) == 0 && std::sscanf(line + keyLength, " %lu", &kb) == 1) {
            bytes = static_cast<std::size_t>(kb) * 1024;
            break;
        }
    }
    std::fclose(file);
    return bytes;
}

} // namespace

bool ResetPeakResident()
{
    std::FILE* file = std::fopen("/proc/self/clear_refs", "w");
    if (!file)
        return false;
    bool const written = std::fputs("5", file) >= 0;
    return std::fclose(file) == 0 && written;
}

std::size_t PeakResidentBytes()
{
    return StatusBytes("VmHWM:");
}

std::size_t ResidentBytes()
{
    return StatusBytes("VmRSS:");
}

void TrimHeap()
{
    malloc_trim(0);
}

} // namespace zo::bench
