#include <array>
#include <cerrno>
#include <cstdio>
#include <fstream>
#include <system_error>

#include "contracts/Exceptions.h"
#include "server/UQuoraneSession.h"
#include "server/UResourceStrings.h"

using namespace Quorane_TLB;

namespace {

constexpr char Utf8Mark[] = "\xEF\xBB\xBF";

void WriteWhole(const std::string& path, const std::string& bytes) {
    std::ofstream file(path, std::ios::binary | std::ios::trunc);
    file << bytes;
    if (!file.flush())
        throw Exception(SCannotWriteFile + path + ": " + std::generic_category().message(errno));
}

std::string ColorText(const Handle<IGlossaryTermColor>& color) {
    const auto part = [](std::int32_t value) {
        std::array<char, 9> digits{};
        std::snprintf(digits.data(), digits.size(), "%.2X", static_cast<unsigned>(value));
        return std::string(digits.data());
    };
    return "#" + part(color->Get_Red()) + part(color->Get_Green()) + part(color->Get_Blue());
}

void ReplaceAll(std::string& text, const std::string& what, const std::string& by) {
    if (what.empty()) return;
    for (auto at = text.find(what); at != std::string::npos; at = text.find(what, at + by.size()))
        text.replace(at, what.size(), by);
}

} // namespace

std::string TQuoraneSession::PrepareRequirementDescriptionFile(const std::u16string& description) {
    WriteWhole(FDescriptionFileName, Utf8Mark + Utf8(description));
    Require(Session()->Get_ImageManager())->cacheImages(description);
    return FDescriptionFileName;
}

void TQuoraneSession::GetGlossaryTerm(const Handle<IProject>& project, const std::u16string& word,
                                      Handle<IGlossary>& glossary, Handle<IGlossaryTerm>& term) {
    term.reset();
    const TGlossaryIndex::TEntry* found = FGlossaryTerms.Find(Require(project)->Get_Glossaries(), word);
    if (!found) return;
    glossary = found->Glossary;
    term = found->Term;
}

void TQuoraneSession::HighlightGlossaryTerms(std::u16string& html, const Handle<IProject>& project) {
    std::string text = Utf8(html);
    const auto glossaries = EnumerableStCollection(Require(project)->Get_Glossaries())->GetEnumerator();
    while (glossaries->MoveNext()) {
        const auto glossary = Cast<IGlossary>(glossaries->GetCurrent());
        const std::string color = ColorText(Require(glossary->Get_TermColor()));
        const auto terms = EnumerableStCollection(glossary->Get_Terms())->GetEnumerator();
        while (terms->MoveNext()) {
            const std::string name = Utf8(Cast<IGlossaryTerm>(terms->GetCurrent())->Get_Name());
            ReplaceAll(text, name, "<font color=" + color + " id=Z>" + name + "</font>");
        }
    }
    html = Wide(text);
}
