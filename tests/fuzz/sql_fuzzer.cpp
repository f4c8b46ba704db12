// libFuzzer entry: statement texts for the dialect's reader and translator.
#include "FuzzTargets.h"

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size)
{
    kb::fuzz::statementText(data, size);
    return 0;
}
