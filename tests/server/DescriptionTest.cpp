#include "server/ServerFixture.h"

using namespace Quorane_TLB;
using testing::_;
using testing::Return;
using testing::Throw;

namespace {

Handle<IGlossaryTerm> Term(const std::u16string& name) {
    const auto term = MakeMock<TMockGlossaryTerm>();
    ON_CALL(*term, Get_Name()).WillByDefault(Return(name));
    return term;
}

Handle<IGlossary> Glossary(std::int32_t red, std::int32_t green, std::int32_t blue,
                           const Handle<IStCollection>& terms) {
    const auto color = MakeMock<TMockGlossaryTermColor>();
    ON_CALL(*color, Get_Red()).WillByDefault(Return(red));
    ON_CALL(*color, Get_Green()).WillByDefault(Return(green));
    ON_CALL(*color, Get_Blue()).WillByDefault(Return(blue));
    const auto glossary = MakeMock<TMockGlossary>();
    ON_CALL(*glossary, Get_TermColor()).WillByDefault(Return(color));
    ON_CALL(*glossary, Get_Terms()).WillByDefault(Return(terms));
    return glossary;
}

Handle<IProject> ProjectWith(const Handle<IStCollection>& glossaries) {
    const auto project = MakeMock<TMockProject>();
    ON_CALL(*project, Get_Glossaries()).WillByDefault(Return(glossaries));
    return project;
}

class DescriptionTest : public TServerTest {
protected:
    DescriptionTest() { Object.Login("dev7", "ben", "secret"); }

    std::u16string Highlighted(std::u16string html, const Handle<IProject>& project) {
        Object.HighlightGlossaryTerms(html, project);
        return html;
    }

    TQuoraneSession Object;
};

TEST_F(DescriptionTest, FindsTheFirstEqualTermOfTheLastGlossaryThatHoldsIt) {
    const auto wanted = Term(u"Boiler");
    const auto last = Glossary(0, 0, 0, ListOf(Term(u"boiler"), wanted, Term(u"Boiler")));
    const auto project = ProjectWith(
        ListOf(Glossary(0, 0, 0, ListOf(Term(u"Boiler"))), last, Glossary(0, 0, 0, ListOf(Term(u"Pump")))));
    Handle<IGlossary> glossary;
    Handle<IGlossaryTerm> term;
    Object.GetGlossaryTerm(project, u"Boiler", glossary, term);
    EXPECT_EQ(glossary, last);
    EXPECT_EQ(term, wanted);
}

TEST_F(DescriptionTest, WalksTheGlossariesOnceForEachListOfThem) {
    const auto counted = MakeMock<TMockGlossary>();
    EXPECT_CALL(*counted, Get_Terms()).WillOnce(Return(ListOf(Term(u"Boiler"))));
    const auto project = MakeMock<TMockProject>();
    const Handle<IStCollection> list = ListOf(Handle<IGlossary>(counted));
    EXPECT_CALL(*project, Get_Glossaries())
        .WillOnce(Return(list))
        .WillOnce(Return(list))
        .WillOnce(Return(ListOf(Glossary(0, 0, 0, ListOf(Term(u"Pump"))))));
    Handle<IGlossary> glossary;
    Handle<IGlossaryTerm> term;
    std::vector<std::u16string> found;
    for (const std::u16string word : {u"Boiler", u"Pump", u"Pump"}) {
        Object.GetGlossaryTerm(project, word, glossary, term);
        found.push_back(term ? term->Get_Name() : u"nothing");
    }
    EXPECT_EQ(found, (std::vector<std::u16string>{u"Boiler", u"nothing", u"Pump"}));
}

TEST_F(DescriptionTest, WalksAgainAfterAWalkThatFailed) {
    const auto weak = MakeMock<TMockGlossary>();
    EXPECT_CALL(*weak, Get_Terms())
        .WillOnce(Throw(ServerFailure("RemoteServerException")))
        .WillOnce(Return(ListOf(Term(u"Boiler"))));
    const auto project = ProjectWith(ListOf(Handle<IGlossary>(weak)));
    Handle<IGlossary> glossary;
    Handle<IGlossaryTerm> term;
    EXPECT_THROW(Object.GetGlossaryTerm(project, u"Boiler", glossary, term), EOleSysError);
    Object.GetGlossaryTerm(project, u"Boiler", glossary, term);
    EXPECT_TRUE(term);
}

TEST_F(DescriptionTest, GivesNoTermForAnUnknownWord) {
    const auto project = ProjectWith(ListOf(Glossary(0, 0, 0, ListOf(Term(u"Boiler")))));
    for (const std::u16string word : {u"boiler", u"", u"Boile"}) {
        Handle<IGlossary> glossary;
        Handle<IGlossaryTerm> term = Term(u"stale");
        Object.GetGlossaryTerm(project, word, glossary, term);
        EXPECT_FALSE(term);
        EXPECT_FALSE(glossary);
    }
}

TEST_F(DescriptionTest, MarksEveryOccurrenceInTheColourOfTheGlossary) {
    const auto project = ProjectWith(ListOf(Glossary(255, 10, 0, ListOf(Term(u"W\u00E4rme"), Term(u"")))));
    EXPECT_EQ(Highlighted(u"<p>W\u00E4rmetr\u00E4ger, w\u00E4rme, W\u00E4rme</p>", project),
              u"<p><font color=#FF0A00 id=Z>W\u00E4rme</font>tr\u00E4ger, w\u00E4rme, "
              u"<font color=#FF0A00 id=Z>W\u00E4rme</font></p>");
}

TEST_F(DescriptionTest, MarksALaterTermInsideEarlierMarkUp) {
    const auto project = ProjectWith(ListOf(Glossary(1, 2, 3, ListOf(Term(u"a"), Term(u"Z")))));
    EXPECT_EQ(Highlighted(u"a", project),
              u"<font color=#010203 id=<font color=#010203 id=Z>Z</font>>a</font>");
}

TEST_F(DescriptionTest, LeavesTheTextAloneWhenTheServerFails) {
    const auto broken = MakeMock<TMockGlossary>();
    EXPECT_CALL(*broken, Get_TermColor()).WillOnce(Throw(ServerFailure("RemoteServerException")));
    const auto project =
        ProjectWith(ListOf(Glossary(0, 0, 0, ListOf(Term(u"a"))), Handle<IGlossary>(broken)));
    std::u16string html = u"a";
    EXPECT_THROW(Object.HighlightGlossaryTerms(html, project), EOleSysError);
    EXPECT_EQ(html, u"a");
}

TEST_F(DescriptionTest, WritesEachDescriptionIntoTheOneFileAndHasItsImagesFetched) {
    const auto images = MakeMock<TMockImageManager>();
    ON_CALL(*Session, Get_ImageManager()).WillByDefault(Return(images));
    EXPECT_CALL(*images, cacheImages(_)).Times(1);
    EXPECT_CALL(*images, cacheImages(std::u16string(u"<p>\u20AC</p>"))).WillOnce(Return(3));
    const std::string path = Object.PrepareRequirementDescriptionFile(u"<p>a much longer text</p>");
    EXPECT_EQ(path, Object.DescriptionFileName());
    EXPECT_EQ(Object.PrepareRequirementDescriptionFile(u"<p>\u20AC</p>"), path);
    EXPECT_EQ(ReadFile(path), "\xEF\xBB\xBF<p>\xE2\x82\xAC</p>");
}

TEST_F(DescriptionTest, SaysWhichDescriptionFileCannotBeWritten) {
    std::filesystem::create_directory(Object.DescriptionFileName());
    try {
        Object.PrepareRequirementDescriptionFile(u"<p/>");
        FAIL() << "a folder was written over";
    } catch (const Exception& failure) {
        EXPECT_EQ(failure.what(),
                  "Cannot write the file " + Object.DescriptionFileName() + ": Is a directory");
    }
}

} // namespace
