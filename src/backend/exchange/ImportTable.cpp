#include "backend/exchange/ImportTable.h"

#include "backend/exchange/CsvReader.h"
#include "backend/exchange/Outline.h"
#include "backend/exchange/TextEncoding.h"
#include "backend/exchange/Xhtml.h"

#include <algorithm>
#include <map>
#include <set>
#include <unordered_map>

namespace Exchange {

namespace {

constexpr std::size_t NoColumn = static_cast<std::size_t>(-1);

struct Layout {
    std::size_t Id, Name, Text, Rationale = NoColumn, Parent = NoColumn;
    std::vector<std::size_t> Headings, Extras;
};

// One line, with one blank for each run of blanks and line breaks.
std::string Flattened(std::string_view text) {
    std::string flat;
    for (const char c : text) {
        const bool blank = c == ' ' || (c >= '\t' && c <= '\r');
        if (!blank)
            flat += c;
        else if (!flat.empty() && flat.back() != ' ')
            flat += ' ';
    }
    if (!flat.empty() && flat.back() == ' ') flat.pop_back();
    return flat;
}

// The beginning of a long text, up to the end of a word, as a name for it.
std::string NameFor(const std::string& text) {
    constexpr std::size_t longest = 100; // bytes
    if (text.size() <= longest) return text;
    auto end = text.rfind(' ', longest);
    if (end == std::string::npos) {
        end = longest;
        while ((text[end] & 0xC0) == 0x80)
            --end;
    }
    return text.substr(0, end) + "…";
}

class Header {
public:
    Header(const CsvRecord& record, char separator) {
        if (!record.Fault.empty()) throw TableError("The header cannot be read: " + record.Fault + '.');
        for (const auto& cell : record.Cells)
            Names.push_back(Flattened(cell));
        FOneColumn = Names.size() == 1;
        FSeparator = separator;
    }

    std::size_t Find(const std::string& name) {
        const auto found = std::find(Names.begin(), Names.end(), name);
        if (found == Names.end()) throw TableError("There is no column \"" + name + "\". " + Hint());
        const auto position = static_cast<std::size_t>(found - Names.begin());
        FUsed.insert(position);
        return position;
    }

    // The columns that were not asked for, under names that differ.
    std::vector<std::size_t> Rest() {
        std::vector<std::size_t> rest;
        std::set<std::string> taken;
        for (const auto position : FUsed)
            taken.insert(Names[position]);
        for (std::size_t i = 0; i < Names.size(); ++i) {
            if (FUsed.contains(i)) continue;
            const std::string name = Names[i].empty() ? "Column " + std::to_string(i + 1) : Names[i];
            Names[i] = name;
            for (int copy = 2; !taken.insert(Names[i]).second; ++copy)
                Names[i] = name + " (" + std::to_string(copy) + ')';
            rest.push_back(i);
        }
        return rest;
    }

    std::vector<std::string> Names;

private:
    std::string Hint() const {
        if (FOneColumn)
            return std::string("The whole header is one column; perhaps the separator is not '") +
                   FSeparator + "'.";
        std::string hint = "The columns are";
        for (std::size_t i = 0; i < Names.size(); ++i)
            hint += (i == 0 ? " \"" : ", \"") + Names[i] + '"';
        return hint + '.';
    }

    std::set<std::size_t> FUsed;
    bool FOneColumn;
    char FSeparator;
};

Layout LayOut(Header& header, const TableOptions& options) {
    const auto& columns = options.Columns;
    Layout layout{};
    layout.Id = header.Find(columns.Id);
    layout.Name = header.Find(columns.Name);
    layout.Text = header.Find(columns.Text);
    layout.Rationale = columns.Rationale.empty() ? NoColumn : header.Find(columns.Rationale);
    layout.Parent = options.Nesting == Nesting::ByParent ? header.Find(columns.Parent) : NoColumn;
    if (options.Nesting == Nesting::ByColumns)
        for (const auto& name : columns.Headings)
            layout.Headings.push_back(header.Find(name));
    layout.Extras = header.Rest();
    return layout;
}

// Takes what can be taken of the records, and tells why of the others.
class Checker {
public:
    Checker(const Layout& layout, std::size_t cells, const std::vector<int>& badLines,
            const std::string& encoding, ImportTable& table)
        : FLayout(layout)
        , FCells(cells)
        , FBadLines(badLines)
        , FEncoding(encoding)
        , FTable(table) {}

    struct Accepted {
        ImportItem Item;
        const CsvRecord* Record;
    };

    void Take(const CsvRecord& record) {
        ++FTable.Records;
        std::string reason = FaultOf(record);
        if (reason.empty()) {
            ImportItem item = ItemOf(record);
            reason = FaultOf(item);
            if (reason.empty()) {
                FLines.emplace(item.Id, item.Line);
                Items.push_back({std::move(item), &record});
                return;
            }
        }
        FTable.Refusals.push_back({record.FirstLine, std::move(reason)});
    }

    std::vector<Accepted> Items;

private:
    std::string FaultOf(const CsvRecord& record) const {
        if (!record.Fault.empty()) return record.Fault;
        const auto bad = std::lower_bound(FBadLines.begin(), FBadLines.end(), record.FirstLine);
        if (bad != FBadLines.end() && *bad <= record.LastLine)
            return "line " + std::to_string(*bad) + " holds bytes that are not " + FEncoding;
        if (record.Cells.size() != FCells)
            return "it has " + std::to_string(record.Cells.size()) + " cells, the header has " +
                   std::to_string(FCells);
        for (const auto& cell : record.Cells)
            if (!FitsMarkup(cell)) return "it holds a control character";
        return {};
    }

    std::string FaultOf(const ImportItem& item) const {
        if (item.Id.empty()) return "it has no id";
        if (item.Name.empty()) return "it has no name";
        if (const auto before = FLines.find(item.Id); before != FLines.end())
            return "its id \"" + item.Id + "\" stands in line " + std::to_string(before->second) + " already";
        return {};
    }

    ImportItem ItemOf(const CsvRecord& record) const {
        ImportItem item;
        item.Line = record.FirstLine;
        item.Id = Flattened(record.Cells[FLayout.Id]);
        item.Name = Flattened(record.Cells[FLayout.Name]);
        item.Text = record.Cells[FLayout.Text];
        if (FLayout.Name == FLayout.Text) item.Name = NameFor(item.Name);
        if (FLayout.Rationale != NoColumn) item.Rationale = record.Cells[FLayout.Rationale];
        for (const auto column : FLayout.Extras)
            item.Extras.push_back(Trimmed(record.Cells[column]));
        return item;
    }

    const Layout& FLayout;
    const std::size_t FCells;
    const std::vector<int>& FBadLines;
    const std::string& FEncoding;
    ImportTable& FTable;
    std::unordered_map<std::string, int> FLines; // of the ids
};

// Brings the items into an order in which parents stand before their children.
class Nester {
public:
    Nester(std::vector<Checker::Accepted>& items, const Layout& layout, ImportTable& table)
        : FItems(items)
        , FLayout(layout)
        , FTable(table) {
        for (std::size_t i = 0; i < items.size(); ++i)
            FPositions.emplace(items[i].Item.Id, i);
    }

    void Nest(Nesting nesting) {
        if (nesting == Nesting::ByColumns) return NestByColumns();
        FPlaces.assign(FItems.size(), Unplaced);
        for (std::size_t i = 0; i < FItems.size(); ++i)
            Place(i, nesting);
        std::stable_sort(FTable.Refusals.begin(), FTable.Refusals.end(),
                         [](const Refusal& one, const Refusal& other) { return one.Line < other.Line; });
    }

private:
    static constexpr int Unplaced = -2, Refused = -3, Waiting = -4;

    // Puts the item behind those that it goes under, from the outermost on.
    void Place(std::size_t item, Nesting nesting) {
        std::vector<std::size_t> road;
        int parent = -1;
        for (auto at = item;;) {
            if (FPlaces[at] == Waiting)
                return RefuseAll(road, "the records that it goes under run in a circle");
            if (FPlaces[at] == Refused) return RefuseAll(road, "the record that it goes under was not taken");
            if (FPlaces[at] >= 0) {
                parent = FPlaces[at];
                break;
            }
            FPlaces[at] = Waiting;
            road.push_back(at);
            std::string missing;
            const auto next = ParentOf(at, nesting, missing);
            if (!missing.empty()) {
                Refuse(at, "there is no record \"" + missing + "\" for it to go under");
                road.pop_back();
                return RefuseAll(road, "the record that it goes under was not taken");
            }
            if (next == NoColumn) break;
            at = next;
        }
        for (auto at = road.rbegin(); at != road.rend(); ++at)
            parent = FPlaces[*at] = Append(std::move(FItems[*at].Item), parent);
    }

    std::size_t ParentOf(std::size_t at, Nesting nesting, std::string& missing) const {
        if (nesting == Nesting::None) return NoColumn;
        if (nesting == Nesting::ByParent) {
            const std::string id = Flattened(FItems[at].Record->Cells[FLayout.Parent]);
            if (id.empty()) return NoColumn;
            const auto found = FPositions.find(id);
            if (found == FPositions.end()) missing = id;
            return found == FPositions.end() ? NoColumn : found->second;
        }
        std::string id = FItems[at].Item.Id;
        for (auto point = id.rfind('.'); point != std::string::npos; point = id.rfind('.')) {
            id.resize(point);
            if (const auto found = FPositions.find(id); found != FPositions.end()) return found->second;
        }
        return NoColumn;
    }

    void NestByColumns() {
        std::map<std::pair<int, std::string>, int> headings;
        for (auto& [item, record] : FItems) {
            int parent = -1;
            for (const auto column : FLayout.Headings) {
                const std::string name = Flattened(record->Cells[column]);
                if (name.empty()) continue;
                const auto [heading, isNew] = headings.try_emplace({parent, name}, 0);
                if (isNew) heading->second = Append(HeadingOf(name, item.Line, parent), parent);
                parent = heading->second;
            }
            Append(std::move(item), parent);
        }
    }

    ImportItem HeadingOf(const std::string& name, int line, int parent) const {
        ImportItem heading;
        heading.IsHeading = true;
        heading.Line = line;
        heading.Name = name;
        heading.Id = parent < 0 ? name : FTable.Items[static_cast<std::size_t>(parent)].Id + " / " + name;
        heading.Extras.resize(FLayout.Extras.size());
        return heading;
    }

    int Append(ImportItem item, int parent) {
        item.Parent = parent;
        FTable.Items.push_back(std::move(item));
        return static_cast<int>(FTable.Items.size()) - 1;
    }

    void Refuse(std::size_t item, const std::string& reason) {
        FPlaces[item] = Refused;
        FTable.Refusals.push_back({FItems[item].Item.Line, reason});
    }

    void RefuseAll(const std::vector<std::size_t>& items, const std::string& reason) {
        for (const auto item : items)
            Refuse(item, reason);
    }

    std::vector<Checker::Accepted>& FItems;
    const Layout& FLayout;
    ImportTable& FTable;
    std::unordered_map<std::string, std::size_t> FPositions; // by id
    std::vector<int> FPlaces;                                // in the table's items
};

} // namespace

ImportTable ReadImportTable(std::string_view bytes, const TableOptions& options) {
    const auto decoded = DecodeText(bytes, options.Encoding);
    const auto records = ReadCsv(decoded.Utf8, options.Separator);
    if (records.empty()) throw TableError("The table is empty: it has no header.");
    Header header(records.front(), options.Separator);
    const Layout layout = LayOut(header, options);

    ImportTable table;
    table.IdColumn = header.Names[layout.Id];
    for (const auto column : layout.Extras)
        table.ExtraColumns.push_back(header.Names[column]);
    Checker checker(layout, header.Names.size(), decoded.BadLines, decoded.Encoding, table);
    for (std::size_t i = 1; i < records.size(); ++i)
        checker.Take(records[i]);
    Nester(checker.Items, layout, table).Nest(options.Nesting);
    return table;
}

} // namespace Exchange
