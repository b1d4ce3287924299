#pragma once
// What every fuzz target needs: its input as text, and a check that stops the
// run where a rule breaks, so that libFuzzer keeps the input.
#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <string>
#include <string_view>

inline std::string_view asText(const uint8_t* data, std::size_t size) {
    return {reinterpret_cast<const char*>(data), size};
}

inline void require(bool condition) {
    if (!condition) std::abort();
}
