#include "backend/exchange/Outline.h"

#include "backend/exchange/Files.h"

namespace Exchange {

namespace {

constexpr std::string_view Blank = " \t\r";

class OutlineParser {
public:
    OutlineParser(std::string_view text, const std::string& file)
        : FText(text)
        , FFile(file) {}

    std::vector<OutlineEntry> Parse() {
        while (!FText.empty()) {
            const auto end = FText.find('\n');
            TakeLine(FText.substr(0, end));
            FText = end == std::string_view::npos ? std::string_view() : FText.substr(end + 1);
        }
        return std::move(FEntries);
    }

private:
    void TakeLine(std::string_view line) {
        ++FLine;
        const std::string trimmed = Trimmed(line);
        if (line.starts_with('#'))
            TakeHeading(line);
        else if (FEntries.empty()) {
            if (!trimmed.empty()) throw OutlineError(FFile, FLine, "a text stands before the first heading");
        } else if (trimmed.empty()) {
            FInFields = false;
            FInBlock = false;
        } else if (FInFields)
            TakeField(line);
        else
            TakeBody(trimmed);
    }

    void TakeHeading(std::string_view line) {
        const auto level = static_cast<int>(line.find_first_not_of('#'));
        const int last = FEntries.empty() ? 0 : FEntries.back().Level;
        const std::string title =
            Trimmed(line.substr(std::min(line.size(), static_cast<std::size_t>(level))));
        if (level > last + 1) throw OutlineError(FFile, FLine, "the heading leaves out a level");
        if (title.empty()) throw OutlineError(FFile, FLine, "the heading has no text");
        FEntries.push_back({level, title, {}, {}, FFile, FLine});
        FInFields = true;
        FInBlock = false;
    }

    void TakeField(std::string_view line) {
        auto& fields = FEntries.back().Fields;
        if (line.starts_with(' ') && !fields.empty()) {
            fields.back().Text += ' ' + Trimmed(line);
            return;
        }
        const auto colon = line.find(':');
        const std::string key = Trimmed(line.substr(0, colon));
        if (colon == std::string_view::npos || key.empty())
            throw OutlineError(FFile, FLine, "a field has the form \"key: text\"");
        fields.push_back({key, Trimmed(line.substr(colon + 1)), FLine});
    }

    void TakeBody(const std::string& line) {
        auto& blocks = FEntries.back().Blocks;
        if (FInBlock)
            blocks.back() += '\n' + line;
        else
            blocks.push_back(line);
        FInBlock = true;
    }

    std::string_view FText;
    const std::string& FFile;
    std::vector<OutlineEntry> FEntries;
    int FLine = 0;
    bool FInFields = false;
    bool FInBlock = false;
};

} // namespace

OutlineError::OutlineError(const std::string& file, int line, const std::string& sentence)
    : std::runtime_error(file + ':' + std::to_string(line) + ": " + sentence) {}

std::string OutlineEntry::Text(std::string_view key, std::string_view fallback) const {
    const auto fields = All(key);
    return fields.empty() ? std::string(fallback) : fields.back()->Text;
}

bool OutlineEntry::Flag(std::string_view key) const {
    const std::string text = Text(key, "no");
    if (text != "yes" && text != "no") throw Error("\"" + std::string(key) + "\" is neither yes nor no");
    return text == "yes";
}

std::vector<std::string> OutlineEntry::List(std::string_view key, char separator) const {
    std::vector<std::string> texts;
    for (const auto* field : All(key))
        for (auto& text : SplitTrimmed(field->Text, separator))
            texts.push_back(std::move(text));
    return texts;
}

std::vector<const OutlineField*> OutlineEntry::All(std::string_view key) const {
    std::vector<const OutlineField*> found;
    for (const auto& field : Fields)
        if (field.Key == key) found.push_back(&field);
    return found;
}

OutlineError OutlineEntry::Error(const std::string& sentence) const {
    return OutlineError(File, Line, Title + ": " + sentence);
}

std::vector<OutlineEntry> ParseOutline(std::string_view text, const std::string& file) {
    return OutlineParser(text, file).Parse();
}

std::vector<OutlineEntry> ReadOutline(const std::string& path) {
    return ParseOutline(ReadFile(path), path);
}

std::string Trimmed(std::string_view text) {
    const auto first = text.find_first_not_of(Blank);
    if (first == std::string_view::npos) return {};
    return std::string(text.substr(first, text.find_last_not_of(Blank) - first + 1));
}

std::vector<std::string> SplitTrimmed(std::string_view text, char separator) {
    std::vector<std::string> parts;
    while (true) {
        const auto end = text.find(separator);
        auto part = Trimmed(text.substr(0, end));
        if (!part.empty()) parts.push_back(std::move(part));
        if (end == std::string_view::npos) return parts;
        text.remove_prefix(end + 1);
    }
}

} // namespace Exchange
