#include "ZoGuid.h"

#include <array>
#include <cstdio>
#include <random>

namespace {

// Each thread draws from its own generator, seeded once from the system's entropy source,
// so that no lock is needed and two threads never share a sequence.
std::mt19937_64& Generator()
{
    thread_local std::mt19937_64 generator = [] {
        std::random_device device;
        std::array<std::uint32_t, 8> words{};
        for (auto& word : words)
            word = device();
        std::seed_seq seed(words.begin(), words.end());
        return std::mt19937_64(seed);
    }();
    return generator;
}

} // namespace

bool NewGUID(ZoGuid* uuid)
{
    if (!uuid)
        return false;
    std::mt19937_64& generator = Generator();
    for (int half = 0; half < 2; ++half) {
        std::uint64_t bits = generator();
        for (int i = 0; i < 8; ++i, bits >>= 8)
            uuid->bytes[half * 8 + i] = static_cast<std::uint8_t>(bits & 0xFF);
    }
    uuid->bytes[6] = static_cast<std::uint8_t>((uuid->bytes[6] & 0x0F) | 0x40); // version 4
    uuid->bytes[8] = static_cast<std::uint8_t>((uuid->bytes[8] & 0x3F) | 0x80); // RFC 4122 variant
    return true;
}

wchar_t* guidtow(ZoGuid const& uuid, wchar_t* buffer, int size)
{
    if (!buffer || size <= 0)
        return buffer;
    static wchar_t const digits[] = L"0123456789ABCDEF";
    wchar_t text[39];
    int n = 0;
    text[n++] = L'{';
    for (int i = 0; i < 16; ++i) {
        if (i == 4 || i == 6 || i == 8 || i == 10)
            text[n++] = L'-';
        text[n++] = digits[uuid.bytes[i] >> 4];
        text[n++] = digits[uuid.bytes[i] & 0x0F];
    }
    text[n++] = L'}';
    text[n] = L'\0';
    int const length = n < size - 1 ? n : size - 1;
    for (int i = 0; i < length; ++i)
        buffer[i] = text[i];
    buffer[length] = L'\0';
    return buffer;
}

ZoBasicString<wchar_t> ZoNewGuidText()
{
    ZoGuid uuid{};
    NewGUID(&uuid);
    wchar_t buffer[256];
    return guidtow(uuid, buffer, 256);
}
