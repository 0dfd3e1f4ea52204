#pragma once
#include <array>
#include <string_view>

// The events pseudo-devices: one per event, named kZoEventsDevicePrefix followed by the
// event's name, of type kZoEventsDeviceType, with the six variables below in this order.
inline constexpr std::wstring_view kZoEventsDevicePrefix = L"R$EVE_";
inline constexpr std::wstring_view kZoEventsDeviceType = L"R$EVE";

//   ST    state: 0 inactive, 1 active, 2 active and acknowledged, 3 inactive and not yet
//         acknowledged (integer, read-only)
//   TACT  time active since the last activation, in seconds; 0 while inactive (duration, read-only)
//   CACT  number of activations (integer, writable: forcing 0 resets it)
//   CDIS  number of deactivations (integer, writable)
//   CACK  number of acknowledgements (integer, writable)
//   CTIM  total time active, in seconds (duration, writable)
inline constexpr std::array<std::wstring_view, 6> kZoEventVariableCodes{
    L"ST", L"TACT", L"CACT", L"CDIS", L"CACK", L"CTIM",
};
