// The terms of a project's glossaries by their names, so that a mouse move over a text
// costs the same whatever the glossaries hold.
#pragma once

#include <string>
#include <unordered_map>

#include "server/Quorane_TLB.h"

class TGlossaryIndex {
public:
    struct TEntry {
        Quorane_TLB::Handle<Quorane_TLB::IGlossary> Glossary;
        Quorane_TLB::Handle<Quorane_TLB::IGlossaryTerm> Term;
    };

    // The term of exactly that name: in the last glossary that holds it the first one.
    // Empty for an unknown word; valid until the next call. The glossaries are walked
    // when this is another collection than last time: the SDK gives out the same one
    // for as long as it knows the glossaries. Raises what the walk raises, and the next
    // call walks again then.
    const TEntry* Find(const Quorane_TLB::Handle<Quorane_TLB::IStCollection>& glossaries,
                       const std::u16string& word);
    // Lets go of everything that belongs to the session.
    void Clear();

private:
    // Held, so that no other collection can take its address.
    Quorane_TLB::Handle<Quorane_TLB::IStCollection> FGlossaries;
    std::unordered_map<std::u16string, TEntry> FEntries;
};
