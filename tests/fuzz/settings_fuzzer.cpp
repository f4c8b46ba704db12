// libFuzzer entry: the per-user and shared Kettbrk.ini settings files.
#include "FuzzTargets.h"

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size)
{
    kb::fuzz::settingsFile(data, size);
    return 0;
}
