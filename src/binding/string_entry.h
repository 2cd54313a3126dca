#pragma once

#include <cstdint>
#include <string_view>

namespace wex {

// One interned string of a document: a header followed by the bytes and a zero.
struct StringEntry {
    StringEntry* next;  // in its hash bucket
    std::uint32_t hash;
    std::uint32_t references;
    std::uint32_t length;

    const char* Text() const { return reinterpret_cast<const char*>(this + 1); }
    char* Text() { return reinterpret_cast<char*>(this + 1); }
    std::string_view View() const { return {Text(), length}; }

    // The one entry of the empty text, shared by every document; never counted.
    static StringEntry* Empty();
};

}  // namespace wex
