#include "platform/sdk/objects/Make.h"

namespace Sdk {

namespace {

using TGlossaryHandle = std::shared_ptr<const wire::Glossary>;

class TTermColor final : public IGlossaryTermColor {
public:
    explicit TTermColor(TGlossaryHandle glossary)
        : FGlossary(std::move(glossary)) {}

    std::int32_t Get_Blue() override {
        const TCall call("IGlossaryTermColor.Get_Blue");
        return FGlossary->blue();
    }

    std::int32_t Get_Green() override {
        const TCall call("IGlossaryTermColor.Get_Green");
        return FGlossary->green();
    }

    std::int32_t Get_Red() override {
        const TCall call("IGlossaryTermColor.Get_Red");
        return FGlossary->red();
    }

private:
    const TGlossaryHandle FGlossary;
};

class TTerm final : public TMutableObject<IGlossaryTerm> {
public:
    TTerm(const TSessionHandle& session, TGlossaryHandle glossary, const wire::GlossaryTerm& term)
        : TMutableObject(session, term.id(), "glossary term", ECache::Glossaries)
        , FGlossary(std::move(glossary))
        , FTerm(term) {}

    std::u16string Get_Definition() override {
        const TCall call("IGlossaryTerm.Get_Definition");
        return Wide(FTerm.definition());
    }

protected:
    std::string ReadName() override { return FTerm.name(); }

private:
    const TGlossaryHandle FGlossary; // keeps FTerm
    const wire::GlossaryTerm& FTerm;
};

class TGlossary final : public TMutableObject<IGlossary> {
public:
    TGlossary(const TSessionHandle& session, TGlossaryHandle glossary)
        : TMutableObject(session, glossary->id(), "glossary", ECache::Glossaries)
        , FGlossary(std::move(glossary)) {}

    Handle<IGlossaryTermColor> Get_TermColor() override {
        const TCall call("IGlossary.Get_TermColor");
        return std::make_shared<TTermColor>(FGlossary);
    }

    Handle<IStCollection> Get_Terms() override {
        const TCall call("IGlossary.Get_Terms");
        std::vector<Variant> terms;
        for (const wire::GlossaryTerm& term : FGlossary->terms())
            terms.emplace_back(std::make_shared<TTerm>(FSession, FGlossary, term));
        return MakeCollection(std::move(terms));
    }

protected:
    std::string ReadName() override { return FGlossary->name(); }

private:
    const TGlossaryHandle FGlossary;
};

} // namespace

Handle<IDispatch> MakeGlossary(const TSessionHandle& session,
                               std::shared_ptr<const wire::Glossary> glossary) {
    return std::make_shared<TGlossary>(session, std::move(glossary));
}

} // namespace Sdk
