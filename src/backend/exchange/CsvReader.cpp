#include "backend/exchange/CsvReader.h"

#include <new>

#include <csv.h>

namespace Exchange {

namespace {

// The library tells no lines, so it is fed one at a time.
class Reader {
public:
    explicit Reader(char separator)
        : FSeparator(separator) {
        Begin();
    }
    ~Reader() { csv_free(&FParser); }
    Reader(const Reader&) = delete;
    Reader& operator=(const Reader&) = delete;

    void Feed(std::string_view line) {
        ++FLine;
        if (!FInRecord) {
            if (IsEmpty(line)) return;
            FInRecord = true;
            FRecord.FirstLine = FLine;
        }
        if (csv_parse(&FParser, line.data(), line.size(), TakeCell, TakeRecord, this) == line.size()) return;
        if (csv_error(&FParser) == CSV_ENOMEM) throw std::bad_alloc();
        Refuse("a quotation mark stands inside a cell without being doubled, or behind a cell's closing one");
    }

    std::vector<CsvRecord> Finish() {
        if (csv_fini(&FParser, TakeCell, TakeRecord, this) != 0)
            Refuse("a cell's closing quotation mark is missing");
        return std::move(FRecords);
    }

private:
    void Begin() {
        if (csv_init(&FParser, CSV_STRICT | CSV_STRICT_FINI) != 0) throw std::bad_alloc();
        csv_set_delim(&FParser, static_cast<unsigned char>(FSeparator));
    }

    bool IsEmpty(std::string_view line) const {
        for (const char c : line)
            if (c == FSeparator || (c != ' ' && c != '\t' && c != '\r' && c != '\n')) return false;
        return true;
    }

    void Refuse(const char* fault) {
        csv_free(&FParser);
        Begin();
        FRecord.Fault = fault;
        EndRecord();
    }

    void EndRecord() {
        FRecord.LastLine = FLine;
        FRecords.push_back(std::move(FRecord));
        FRecord = {};
        FInRecord = false;
    }

    static void TakeCell(void* text, std::size_t size, void* reader) {
        static_cast<Reader*>(reader)->FRecord.Cells.emplace_back(static_cast<const char*>(text), size);
    }

    static void TakeRecord(int, void* reader) { static_cast<Reader*>(reader)->EndRecord(); }

    const char FSeparator;
    csv_parser FParser{};
    int FLine = 0;
    bool FInRecord = false;
    CsvRecord FRecord;
    std::vector<CsvRecord> FRecords;
};

// A carriage return and a line feed together are one line end.
std::size_t LineLength(std::string_view text) {
    const auto end = text.find_first_of("\r\n");
    if (end == std::string_view::npos) return text.size();
    const bool pair = text[end] == '\r' && end + 1 < text.size() && text[end + 1] == '\n';
    return end + (pair ? 2 : 1);
}

} // namespace

std::vector<CsvRecord> ReadCsv(std::string_view text, char separator) {
    Reader reader(separator);
    while (!text.empty()) {
        const auto length = LineLength(text);
        reader.Feed(text.substr(0, length));
        text.remove_prefix(length);
    }
    return reader.Finish();
}

} // namespace Exchange
