#pragma once

#include <cstddef>
#include <cstdint>

// What the fuzzers feed their inputs to. Each reads the bytes as hostile
// input does arrive: a refusal in words (the reader's own error) is a good
// answer; any other exception, a crash, a hang or a memory fault is a
// finding. The same functions run every stored finding in the test suite.
namespace kb::fuzz {

// A statement text: read, then made ready for both stores against the
// catalogue (and one memory table).
void statementText(const std::uint8_t* data, std::size_t size);

// A TSPLIB file.
void tsplibFile(const std::uint8_t* data, std::size_t size);

// A Kettbrk.ini settings file: read, written back and read again, which
// must give the same sections, keys and values.
void settingsFile(const std::uint8_t* data, std::size_t size);

} // namespace kb::fuzz
