// The fixed version record of a program file: four numbers in two words of 64 bits,
// kept in an ELF note, so that the version of a library can be read without loading it.
#pragma once

#include <cstdint>

struct TFileVersionRecord {
    std::uint32_t NameSize = 8;
    std::uint32_t DescriptionSize = 8;
    std::uint32_t Type = 1;
    char Name[8] = "Quorane";
    // High and low word of the most, then of the least significant part.
    std::uint32_t MostSignificant;
    std::uint32_t LeastSignificant;
};

// Stands once in a source of the program or library whose version it is.
#define QUORANE_FILE_VERSION(a, b, c, d)                                                                     \
    extern "C" {                                                                                             \
    [[gnu::section(".note.quorane"), gnu::used, gnu::aligned(4),                                             \
      gnu::visibility("hidden")]] extern const TFileVersionRecord QuoraneFileVersion{                        \
        8, 8, 1, "Quorane", (std::uint32_t(a) << 16) | (b), (std::uint32_t(c) << 16) | (d)};                 \
    }
