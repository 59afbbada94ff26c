#pragma once
// Shared by the fuzz targets. A broken contract is reported by Expect, which
// aborts rather than throws (the code under test might catch an exception),
// so libFuzzer records the input as a crash and keeps it.
#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <span>
#include <vector>

#include "com/MemoryStream.h"

// libFuzzer's entry points, declared once for every target.
extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size);
extern "C" int LLVMFuzzerInitialize(int* argc, char*** argv);

namespace vexplot::fuzz {

// Aborts with `what` when `holds` is false.
inline void Expect(bool holds, const char* what) {
    if (holds) return;
    std::fprintf(stderr, "contract violated: %s\n", what);
    std::abort();
}

// True when both hold the same doubles bit for bit (NaN payloads included).
inline bool SameBits(std::span<const double> a, std::span<const double> b) {
    return a.size() == b.size() && (a.empty() || std::memcmp(a.data(), b.data(), a.size_bytes()) == 0);
}

// A stream over a copy of the fuzzer's bytes, positioned at the start.
inline ComPtr<MemoryStream> StreamOver(const uint8_t* data, size_t size) {
    return MakeComObject<MemoryStream>(std::vector<uint8_t>(data, data + size));
}

}  // namespace vexplot::fuzz
