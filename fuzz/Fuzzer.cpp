// The entries that libFuzzer calls. A fuzzer is this file and one target.

#include "fuzz/Surroundings.h"
#include "fuzz/Target.h"

#include <cstddef>
#include <cstdint>

extern "C" int LLVMFuzzerInitialize(int* argc, char*** argv);
extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size);

int LLVMFuzzerInitialize(int* argc, char*** argv)
{
    static const Surroundings surroundings(*argc, *argv);
    return 0;
}

int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size)
{
    Target::All().front()({reinterpret_cast<const char*>(data), size});
    return 0;
}
