#pragma once

#include <cstddef>
#include <cstdint>
#include <cstring>
#include <string_view>

namespace wex {

// The first eight bytes of a text as one big-endian number, padded with zeros.
// When the prefixes of two texts differ, the texts sort as their prefixes do
// (bytes as unsigned values, a shorter text first), so most comparisons of
// names are settled without reading the texts.
inline std::uint64_t TextPrefix(std::string_view text) {
    if (text.size() >= 8) {
        unsigned char bytes[8];
        std::memcpy(bytes, text.data(), 8);
        return std::uint64_t{bytes[0]} << 56 | std::uint64_t{bytes[1]} << 48 | std::uint64_t{bytes[2]} << 40 |
               std::uint64_t{bytes[3]} << 32 | std::uint64_t{bytes[4]} << 24 | std::uint64_t{bytes[5]} << 16 |
               std::uint64_t{bytes[6]} << 8 | std::uint64_t{bytes[7]};
    }
    std::uint64_t prefix = 0;
    for (std::size_t index = 0; index < text.size(); ++index) {
        prefix |= std::uint64_t{static_cast<unsigned char>(text[index])} << (56 - 8 * index);
    }
    return prefix;
}

// One interned string of a document: a header followed by the bytes and a zero.
struct StringEntry {
    StringEntry* next;     // in its hash bucket
    std::uint64_t prefix;  // TextPrefix of the bytes
    std::uint32_t hash;
    std::uint32_t references;
    std::uint32_t length;

    const char* Text() const { return reinterpret_cast<const char*>(this + 1); }
    char* Text() { return reinterpret_cast<char*>(this + 1); }
    std::string_view View() const { return {Text(), length}; }

    // The one entry of the empty text, shared by every document; never counted.
    static StringEntry* Empty();
};

// Byte-wise order of two texts whose prefixes tie. Names often share their
// first eight bytes ("member00001"), so the next eight settle most ties
// without a library call; short texts tie only through zero padding.
inline int CompareTiedTexts(std::string_view first, std::string_view second) {
    if (first.size() >= 8 && second.size() >= 8) {
        const std::uint64_t firstNext = TextPrefix(first.substr(8));
        const std::uint64_t secondNext = TextPrefix(second.substr(8));
        if (firstNext != secondNext) {
            return firstNext < secondNext ? -1 : 1;
        }
    }
    return first.compare(second);
}

// Byte-wise order of two entries of one document, where equal texts are one
// entry; the texts are read only when the prefixes tie.
inline int CompareEntries(const StringEntry& first, const StringEntry& second) {
    if (&first == &second) {
        return 0;
    }
    if (first.prefix != second.prefix) {
        return first.prefix < second.prefix ? -1 : 1;
    }
    return CompareTiedTexts(first.View(), second.View());
}

}  // namespace wex
