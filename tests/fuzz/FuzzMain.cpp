// One fuzzer: the claims of FUZZ_CLAIM, tried on the bytes that libFuzzer makes up.

#include "FuzzClaims.h"

#include <cstdio>
#include <cstdlib>

extern "C" int LLVMFuzzerTestOneInput(const char* data, std::size_t size)
{
    const QByteArray bytes(data, qsizetype(size));
    if (const char* claim = FUZZ_CLAIM(bytes)) {
        std::fprintf(stderr, "Does not hold: %s\n", claim);
        std::abort();
    }
    return 0;
}
