#include "platform/system/FileVersionReader.h"

#include "contracts/FileVersion.h"

#include <QFile>

#include <cstring>
#include <elf.h>
#include <optional>
#include <span>

namespace {

using TBytes = std::span<const uchar>;

// Copies a record out of the file's bytes; empty when it would reach past the end.
template<class T> std::optional<T> At(TBytes bytes, std::uint64_t offset) {
    if (offset > bytes.size() || bytes.size() - offset < sizeof(T)) return std::nullopt;
    T value;
    std::memcpy(&value, bytes.data() + offset, sizeof(T));
    return value;
}

std::uint64_t Padded(std::uint64_t size) {
    return (size + 3) & ~std::uint64_t{3};
}

std::string Format(const TFileVersionRecord& record) {
    const auto high = [](std::uint32_t word) { return std::to_string(word >> 16); };
    const auto low = [](std::uint32_t word) { return std::to_string(word & 0xFFFF); };
    return high(record.MostSignificant) + "." + low(record.MostSignificant) + "." +
           high(record.LeastSignificant) + "." + low(record.LeastSignificant);
}

std::string VersionAmongNotes(TBytes notes) {
    for (std::uint64_t offset = 0; offset < notes.size();) {
        const auto header = At<Elf64_Nhdr>(notes, offset);
        if (!header) return {};
        const auto record = At<TFileVersionRecord>(notes, offset);
        const TFileVersionRecord expected{8, 8, 1, "Quorane", 0, 0};
        if (record && std::memcmp(&*record, &expected, offsetof(TFileVersionRecord, MostSignificant)) == 0)
            return Format(*record);
        offset += sizeof(Elf64_Nhdr) + Padded(header->n_namesz) + Padded(header->n_descsz);
    }
    return {};
}

std::string VersionOfElf(TBytes bytes) {
    const auto header = At<Elf64_Ehdr>(bytes, 0);
    if (!header || std::memcmp(header->e_ident, ELFMAG, SELFMAG) != 0 ||
        header->e_ident[EI_CLASS] != ELFCLASS64)
        return {};
    for (unsigned i = 0; i < header->e_phnum; ++i) {
        const auto segment = At<Elf64_Phdr>(bytes, header->e_phoff + std::uint64_t{i} * header->e_phentsize);
        if (!segment) return {};
        if (segment->p_type != PT_NOTE || segment->p_offset > bytes.size()) continue;
        const TBytes notes = bytes.subspan(segment->p_offset);
        const std::string version =
            VersionAmongNotes(notes.first(std::min<std::uint64_t>(segment->p_filesz, notes.size())));
        if (!version.empty()) return version;
    }
    return {};
}

} // namespace

std::string ReadFileVersion(const std::string& path) {
    QFile file(QString::fromStdString(path));
    if (path.empty() || !file.open(QIODevice::ReadOnly)) return {};
    const uchar* data = file.map(0, file.size());
    return data ? VersionOfElf({data, static_cast<std::size_t>(file.size())}) : std::string{};
}
