#include "server/UGlossaryIndex.h"

#include "server/UQuoraneStHelpers.h"

using namespace Quorane_TLB;

namespace {

using TEntries = std::unordered_map<std::u16string, TGlossaryIndex::TEntry>;

void AddGlossary(TEntries& entries, const Handle<IGlossary>& glossary) {
    const auto terms = EnumerableStCollection(glossary->Get_Terms())->GetEnumerator();
    while (terms->MoveNext()) {
        const auto term = Cast<IGlossaryTerm>(terms->GetCurrent());
        TGlossaryIndex::TEntry& entry = entries[term->Get_Name()];
        if (entry.Glossary != glossary) entry = {glossary, term};
    }
}

} // namespace

const TGlossaryIndex::TEntry* TGlossaryIndex::Find(const Handle<IStCollection>& glossaries,
                                                   const std::u16string& word) {
    if (!FGlossaries || glossaries != FGlossaries) {
        TEntries entries;
        const auto walk = EnumerableStCollection(glossaries)->GetEnumerator();
        while (walk->MoveNext())
            AddGlossary(entries, Cast<IGlossary>(walk->GetCurrent()));
        FEntries = std::move(entries);
        FGlossaries = glossaries;
    }
    const auto found = FEntries.find(word);
    return found == FEntries.end() ? nullptr : &found->second;
}

void TGlossaryIndex::Clear() {
    FEntries.clear();
    FGlossaries.reset();
}
