#pragma once

#include "server/text.h"

#include <cstddef>
#include <cstdint>

namespace vantrel::fuzz {

// Turns the fuzzer's bytes into a text. An even first byte reads the rest as
// UTF-8, so that seeds and mutations can spell keys and digits; an odd one
// reads it as raw 16-bit characters, so that every code, lone surrogates
// included, can reach the code under test. The seeds begin with "8" (UTF-8)
// or "1" (16-bit).
Text TextFromBytes(const std::uint8_t* data, std::size_t size);

// Stops the run with a message when a property does not hold; libFuzzer
// keeps the input that broke it.
void Require(bool holds, const char* property);

}  // namespace vantrel::fuzz
