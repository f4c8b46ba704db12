#pragma once

namespace kb::map {

// How sure an address lookup is of its first result. Callers treat only
// Exact as good; Exact and Close may be pinned on overview maps.
enum class MatchQuality {
    Exact = 1,       // the address itself was found
    Close = 2,       // a slightly different spelling of the address was found
    Approximate = 3, // only the postal code or town was placed; the result is its centre
    NotFound = 4     // nothing could be placed; there is no result
};

} // namespace kb::map
