#include "backend/exchange/TextEncoding.h"

#include <cerrno>
#include <memory>

#include <iconv.h>

namespace Exchange {

namespace {

constexpr std::string_view Replacement = "\xEF\xBF\xBD";

struct ByteOrderMark {
    std::string_view Bytes, Encoding;
};

// The longer marks first: one of them begins like a shorter one.
constexpr ByteOrderMark Marks[] = {{{"\xFF\xFE\0\0", 4}, "UTF-32LE"},
                                   {{"\0\0\xFE\xFF", 4}, "UTF-32BE"},
                                   {"\xEF\xBB\xBF", "UTF-8"},
                                   {"\xFF\xFE", "UTF-16LE"},
                                   {"\xFE\xFF", "UTF-16BE"}};

struct Closer {
    using pointer = iconv_t;
    void operator()(iconv_t converter) const { iconv_close(converter); }
};

class Decoder {
public:
    explicit Decoder(const std::string& encoding)
        : FConverter(Open(encoding)) {
        // Wrong bytes are passed over a unit of the encoding at a time.
        if (encoding.find("16") != std::string::npos) FUnit = 2;
        if (encoding.find("32") != std::string::npos) FUnit = 4;
    }

    void Decode(std::string_view bytes) {
        // iconv does not write through this pointer, but for historic reasons says so.
        char* in = const_cast<char*>(bytes.data());
        std::size_t left = bytes.size();
        char buffer[16384];
        while (left > 0) {
            char* out = buffer;
            std::size_t room = sizeof buffer;
            const auto result = iconv(FConverter.get(), &in, &left, &out, &room);
            const int error = result == static_cast<std::size_t>(-1) ? errno : 0;
            Text.append(buffer, out);
            if (error != EILSEQ && error != EINVAL) continue;
            Faults.push_back(Text.size());
            Text += Replacement;
            const auto skipped = std::min(left, FUnit);
            in += skipped;
            left -= skipped;
        }
        // Some encodings hold a character back until they know what follows it.
        char* out = buffer;
        std::size_t room = sizeof buffer;
        iconv(FConverter.get(), nullptr, nullptr, &out, &room);
        Text.append(buffer, out);
    }

    std::string Text;
    std::vector<std::size_t> Faults; // offsets in Text

private:
    static iconv_t Open(const std::string& encoding) {
        const auto converter = iconv_open("UTF-8", encoding.c_str());
        if (converter == reinterpret_cast<iconv_t>(-1))
            throw EncodingError("The encoding \"" + encoding +
                                "\" is not known. Examples are UTF-8, UTF-16, ISO-8859-1 and WINDOWS-1252; "
                                "\"iconv --list\" names them all.");
        return converter;
    }

    std::unique_ptr<void, Closer> FConverter;
    std::size_t FUnit = 1;
};

std::vector<int> LinesOf(std::string_view text, const std::vector<std::size_t>& offsets) {
    std::vector<int> lines;
    int line = 1;
    std::size_t next = 0;
    for (std::size_t i = 0; i < text.size() && next < offsets.size(); ++i) {
        while (next < offsets.size() && offsets[next] == i) {
            if (lines.empty() || lines.back() != line) lines.push_back(line);
            ++next;
        }
        const bool pairFollows = text[i] == '\r' && i + 1 < text.size() && text[i + 1] == '\n';
        if (text[i] == '\n' || (text[i] == '\r' && !pairFollows)) ++line;
    }
    return lines;
}

} // namespace

DecodedText DecodeText(std::string_view bytes, const std::string& encoding) {
    DecodedText decoded;
    decoded.Encoding = encoding;
    for (const auto& mark : Marks) {
        if (!bytes.starts_with(mark.Bytes)) continue;
        if (encoding.empty()) decoded.Encoding = mark.Encoding;
        if (decoded.Encoding == mark.Encoding) bytes.remove_prefix(mark.Bytes.size());
        break;
    }
    if (decoded.Encoding.empty()) decoded.Encoding = "UTF-8";
    Decoder decoder(decoded.Encoding);
    decoder.Decode(bytes);
    decoded.BadLines = LinesOf(decoder.Text, decoder.Faults);
    decoded.Utf8 = std::move(decoder.Text);
    constexpr std::string_view mark = "\xEF\xBB\xBF";
    if (decoded.Utf8.starts_with(mark)) decoded.Utf8.erase(0, mark.size());
    return decoded;
}

} // namespace Exchange
