// libFuzzer entry: TSPLIB files for the route map reader.
#include "FuzzTargets.h"

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size)
{
    kb::fuzz::tsplibFile(data, size);
    return 0;
}
