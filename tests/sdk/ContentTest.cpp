#include "sdk/SdkTest.h"

#include "backend/store/Database.h"
#include "contracts/Pictures.h"

#include <gmock/gmock.h>

using ::testing::AllOf;
using ::testing::ElementsAre;
using ::testing::HasSubstr;
using ::testing::Not;

namespace {

Handle<IStCollection> Copy(const Handle<IStCollection>& collection) {
    return CoCollectionFactory::Create()->CreateByIStCollection(collection);
}

} // namespace

class TContent : public TSdkTest {
protected:
    Handle<IRequirement> SeenByOthers() { return LogOn(u"ben")->getLatestRequirement(FSample.Stop); }

    Handle<ISession> FSession = LogOn();
    Handle<IRequirement> FRequirement = FSession->getLatestRequirement(FSample.Stop);
};

TEST_F(TContent, ReferencesOfEachKindAreAddedChangedAndRemoved) {
    FRequirement->lock();
    auto list = Copy(FRequirement->Get_DocumentReferences());
    list->Add(Variant(CoTextReferenceFactory::Create()->Create1(u" ")));
    list->Add(Variant(CoWebReferenceFactory::Create()->Create11(u"http://a.example/", WordTrue)));
    list->Add(Variant(CoFileReferenceFactory::Create()->Create11(u"/a/b.txt", u"a file")));
    FRequirement->Set_DocumentReferences(list);
    list = Copy(FRequirement->Get_DocumentReferences());
    Item<ITextReference>(list, 0)->Set_Text(u"See page 3");
    FRequirement->Set_DocumentReferences(list);
    FRequirement->save();

    const auto seen = SeenByOthers()->Get_DocumentReferences();
    ASSERT_EQ(seen->Get_Count(), 3);
    EXPECT_EQ(Item<ITextReference>(seen, 0)->Get_Text(), u"See page 3");
    EXPECT_EQ(Item<ITextReference>(seen, 0)->Get_IsKey(), WordFalse);
    EXPECT_EQ(Item<IWebReference>(seen, 1)->Get_URL(), u"http://a.example/");
    EXPECT_EQ(Item<IWebReference>(seen, 1)->Get_IsKey(), WordTrue);
    EXPECT_EQ(Item<IFileReference>(seen, 2)->Get_Path(), u"/a/b.txt");
    EXPECT_EQ(Item<IFileReference>(seen, 2)->Get_Description(), u"a file");

    list = Copy(FRequirement->Get_DocumentReferences());
    for (int left = 3; left > 0; --left)
        list->Remove(Variant(0));
    FRequirement->Set_DocumentReferences(list);
    FRequirement->save();
    EXPECT_EQ(SeenByOthers()->Get_DocumentReferences()->Get_Count(), 0);
}

TEST_F(TContent, AReferenceStaysTheSameObjectFromOneReadingOfTheListToTheNext) {
    FRequirement->lock();
    const auto list = Copy(FRequirement->Get_DocumentReferences());
    list->Add(Variant(CoWebReferenceFactory::Create()->Create1(u" ")));
    FRequirement->Set_DocumentReferences(list);
    const auto shown = Item<IWebReference>(FRequirement->Get_DocumentReferences(), 0);
    Item<IWebReference>(FRequirement->Get_DocumentReferences(), 0)->Set_URL(u"http://b.example/");
    EXPECT_EQ(shown->Get_URL(), u"http://b.example/");
}

TEST_F(TContent, WhatIsNoReferenceIsRefused) {
    const auto list = CoCollectionFactory::Create()->Create1();
    list->Add(Variant(Handle<IRequirement>(FRequirement)));
    EXPECT_THAT(FailureOf([&] { FRequirement->Set_DocumentReferences(list); }),
                HasSubstr("IllegalArgumentException"));
}

TEST_F(TContent, ResponsibilitiesAreWrittenAsAWhole) {
    FRequirement->lock();
    const auto assignments = Copy(FRequirement->Get_ResponsibleUsers());
    ASSERT_EQ(assignments->Get_Count(), 1);
    const auto assignment = Item<IGroupMemberAssignment>(assignments, 0);
    const auto members = assignment->Get_Group()->Get_Users();
    const auto ben = Item<IUser>(members, 1);
    EXPECT_EQ(assignment->isUserAssigned(ben->Get_UserID()), WordFalse);
    assignment->addUser(Item<IUser>(members, 0));
    assignment->addUser(ben);
    assignment->addUser(ben);
    assignment->removeUser(Item<IUser>(members, 0));
    FRequirement->Set_ResponsibleUsers(assignments);
    EXPECT_EQ(Item<IGroupMemberAssignment>(FRequirement->Get_ResponsibleUsers(), 0)
                  ->isUserAssigned(ben->Get_UserID()),
              WordTrue);
    FRequirement->save();
    const auto seen = Item<IGroupMemberAssignment>(SeenByOthers()->Get_ResponsibleUsers(), 0);
    EXPECT_THAT(Names(seen->Get_AssignedUsers()), ElementsAre(u"Ben Ortega"));
}

TEST_F(TContent, ASaveMakesARevisionThatTellsWhatChanged) {
    FRequirement->lock();
    FRequirement->Set_Name(u"Halt");
    FRequirement->save();
    FCalls.Clear();
    const auto revisions = FRequirement->Get_History()->Get_Revisions();
    EXPECT_EQ(FCalls.RoundTrips(), 1);
    ASSERT_EQ(revisions->Get_Count(), 2);
    const auto newest = Item<IHistoryRevision>(revisions, 0);
    EXPECT_EQ(newest->Get_UserName(), u"Ann Lee");
    EXPECT_EQ(newest->Get_Version()->Get_MinorVersion(), FRequirement->Get_Version()->Get_MinorVersion());
    ASSERT_EQ(newest->Get_Changes()->Get_Count(), 1);
    const auto change = Item<IHistoryChange>(newest->Get_Changes(), 0);
    EXPECT_EQ(change->Get_AttributeName(), u"Name");
    EXPECT_EQ(change->Get_OldValue(), Variant(u"Stop"));
    EXPECT_EQ(change->Get_NewValue(), Variant(u"Halt"));
    EXPECT_EQ(Item<IHistoryRevision>(revisions, 1)->Get_Comment(), u"first");
    EXPECT_EQ(FCalls.RoundTrips(), 1);
}

TEST_F(TContent, MessagesAreReadOnceUntilTheirCacheIsClearedAndMarkTheNode) {
    const auto discussion = SeenByOthers()->Get_Discussion();
    const auto question = discussion->post(u"Why?", u"Why stop?");
    question->reply(u"Re: Why?", u"Because.");

    const auto own = FRequirement->Get_Discussion();
    EXPECT_EQ(Node(FSession, FSample.Stop)->Get_HasUnreadMessages(), WordTrue);
    FCalls.Clear();
    const auto messages = own->Get_Messages();
    ASSERT_EQ(messages->Get_Count(), 1);
    const auto seen = Item<IDiscussionMessage>(messages, 0);
    EXPECT_EQ(seen->Get_Subject(), u"Why?");
    EXPECT_EQ(seen->Get_Body(), u"Why stop?");
    EXPECT_EQ(seen->Get_Author()->Get_Name(), u"Ben Ortega");
    EXPECT_EQ(seen->Get_Read(), WordFalse);
    const auto reply = Item<IDiscussionMessage>(seen->Get_Replies(), 0);
    EXPECT_EQ(FCalls.RoundTrips(), 1);
    seen->Set_Read(WordTrue);
    reply->Set_Read(WordTrue);
    own->Get_Manager()->Get_Cache()->clear();
    EXPECT_EQ(Item<IDiscussionMessage>(own->Get_Messages(), 0)->Get_Read(), WordTrue);
    EXPECT_EQ(Node(FSession, FSample.Stop)->Get_HasUnreadMessages(), WordFalse);
}

TEST_F(TContent, ATraceToAFileStandsInOneListAndIsRemoved) {
    const auto integration = CoIntegrationFactory::Create()->Create1(u"Tool", FSession);
    integration->Set_Name2(u"Tool");
    integration->save();
    const auto manager = FSession->Get_IntegrationManager();
    manager->createTrace(FRequirement, WordTrue, u"Tool", u"/src/stop.cpp");
    manager->createTrace(FRequirement, WordFalse, u"Tool", u"/src/halt.cpp");
    FCalls.Clear();
    const auto away = FRequirement->Get_TracesTo();
    const auto here = FRequirement->Get_TracesFrom();
    EXPECT_EQ(FCalls.RoundTrips(), 1);
    ASSERT_EQ(away->Get_Count(), 1);
    ASSERT_EQ(here->Get_Count(), 1);
    const auto file = Cast<IIntegrationObject>(Item<ITrace>(away, 0)->Get_ToObject());
    EXPECT_EQ(file->Get_ExternalKey(), u"/src/stop.cpp");
    EXPECT_EQ(file->Get_IntegrationName(), u"Tool");
    EXPECT_EQ(file->Get_Integration()->Get_Name2(), u"Tool");
    const auto origin = Cast<IRequirement>(Item<ITrace>(away, 0)->Get_FromObject());
    FCalls.Clear();
    EXPECT_EQ(origin->Get_Name(), u"Stop");
    EXPECT_EQ(origin->Get_RequirementType()->Get_Tag(), u"SRS");
    EXPECT_EQ(origin->Get_IDNumber(), FSample.Stop);
    EXPECT_EQ(origin->Get_Project()->Get_Name(), u"Heating");
    EXPECT_LE(FCalls.RoundTrips(), 1) << "the projects, once a session";
    FSession->Get_TraceManager()->remove(Item<ITrace>(away, 0));
    EXPECT_EQ(FRequirement->Get_TracesTo()->Get_Count(), 0);
}

TEST_F(TContent, TheSuspectMarkOfATraceIsSavedAndReadAnewEachTime) {
    const auto integration = CoIntegrationFactory::Create()->Create1(u"Tool", FSession);
    integration->Set_Name2(u"Tool");
    integration->save();
    FSession->Get_IntegrationManager()->createTrace(FRequirement, WordTrue, u"Tool", u"/src/stop.cpp");
    const auto trace = Item<ITrace>(FRequirement->Get_TracesTo(), 0);
    trace->lock();
    trace->Set_Suspect(WordTrue);
    EXPECT_EQ(Item<ITrace>(SeenByOthers()->Get_TracesTo(), 0)->Get_Suspect(), WordFalse);
    trace->save();
    trace->unlock();
    EXPECT_EQ(Item<ITrace>(FRequirement->Get_TracesTo(), 0)->Get_Suspect(), WordTrue);
}

TEST_F(TContent, GlossariesCostNoRoundTripAfterTheFirstLook) {
    const auto project = FRequirement->Get_Project();
    const auto glossary = Item<IGlossary>(project->Get_Glossaries(), 0);
    FCalls.Clear();
    EXPECT_EQ(glossary->Get_Name(), u"Terms");
    EXPECT_EQ(glossary->Get_TermColor()->Get_Red(), 1);
    EXPECT_EQ(glossary->Get_TermColor()->Get_Green(), 2);
    EXPECT_EQ(glossary->Get_TermColor()->Get_Blue(), 3);
    EXPECT_EQ(Item<IGlossaryTerm>(glossary->Get_Terms(), 0)->Get_Definition(), u"A burner");
    FRequirement->Get_Project()->Get_Glossaries();
    EXPECT_EQ(FCalls.RoundTrips(), 0);
}

TEST_F(TContent, TheSameListOfGlossariesMeansThatNothingHasChanged) {
    const auto first = FRequirement->Get_Project()->Get_Glossaries();
    EXPECT_EQ(FRequirement->Get_Project()->Get_Glossaries(), first);
    Item<IGlossary>(first, 0)->Get_Manager()->Get_Cache()->clear();
    const auto second = FRequirement->Get_Project()->Get_Glossaries();
    EXPECT_NE(second, first);
    EXPECT_EQ(Item<IGlossary>(second, 0)->Get_Name(), u"Terms");
}

TEST_F(TContent, ImagesOfADescriptionAreFetchedOnceAndShownFromTheirFiles) {
    const auto requirement = FSession->getLatestRequirement(FSample.Deep);
    const std::u16string html = requirement->Get_Description()->Get_Text();
    const auto images = FSession->Get_ImageManager();
    EXPECT_EQ(images->cacheImages(html), 1);
    FCalls.Clear();
    images->cacheImages(html);
    EXPECT_EQ(FCalls.RoundTrips(), 0);
    const std::string text = Utf8(html);
    const std::size_t start = text.find("src=\"file://") + 12;
    EXPECT_EQ(ReadFile(text.substr(start, text.find('"', start) - start)), TinyPicture());
    requirement->lock();
    requirement->Get_Description()->Set_Text(html);
    requirement->save();
    EXPECT_EQ(LogOn(u"ben")->getLatestRequirement(FSample.Deep)->Get_Description()->Get_Text(), html);
}

TEST_F(TContent, ANewImageGoesToTheServerWithTheSave) {
    const auto other = LogOn(u"ben");
    const auto address = [this](const std::string& name) { return PictureAddress(FFolder.File(name)); };
    for (const auto& [name, source] :
         {std::pair<std::string, std::string>{"new one.PNG", address("new one.PNG")},
          {"a#b?c%20d%41.gif", address("a#b?c%20d%41.gif")},
          {"", "Data:image/gif;Base64,%0A" + std::string(TinyPictureBase64) + "\" src_original=\"x.png"}}) {
        if (!name.empty()) WriteFile(FFolder.File(name), TinyPicture(name));
        ChoosePicture(FFolder.File(name));
        FRequirement->lock();
        FRequirement->Get_Description()->Set_Text(
            Wide("<p><img src=\"" + source + "\" border=0 new=\"true\"></p>"));
        FRequirement->save();
        FRequirement->unlock();
        const std::u16string html = FRequirement->Get_Description()->Get_Text();
        EXPECT_EQ(other->getLatestRequirement(FSample.Stop)->Get_Description()->Get_Text(), html);
        EXPECT_EQ(other->Get_ImageManager()->cacheImages(html), 1);
        const std::string text = Utf8(html);
        const std::size_t start = text.find("src=\"file://") + 12;
        EXPECT_EQ(ReadFile(text.substr(start, text.find('"', start) - start)), TinyPicture(name));
    }
}

TEST_F(TContent, ANewImageThatIsNoneFailsTheSaveAndKeepsWhatWasWritten) {
    WriteFile(FFolder.File("large"), "");
    std::filesystem::resize_file(FFolder.File("large"), std::uintmax_t{1} << 40);
    WriteFile(FFolder.File("notes"), "These are notes.");
    WriteFile(FFolder.File("private.png"), TinyPicture());
    for (const char* name : {"missing", ".", "large", "notes"})
        ChoosePicture(FFolder.File(name));
    FRequirement->lock();
    for (const auto& [name, failure] : {std::pair<std::string, std::string>{"missing", "cannot be read"},
                                        {".", "cannot be read"},
                                        {"private.png", "not one that was inserted here"},
                                        {"large", "larger than 16777216 bytes"},
                                        {"notes", "no PNG, JPEG, GIF or WebP picture"}}) {
        const std::string html = "<p><img src=\"" + FFolder.File(name) + "\" new=\"true\"></p>";
        FRequirement->Get_Description()->Set_Text(Wide(html));
        FCalls.Clear();
        EXPECT_THAT(FailureOf([&] { FRequirement->save(); }),
                    AllOf(HasSubstr(FFolder.File(name)), HasSubstr(failure)));
        EXPECT_EQ(FCalls.RoundTrips(), 0);
        EXPECT_EQ(Utf8(FRequirement->Get_Description()->Get_Text()), html);
    }
    EXPECT_EQ(SeenByOthers()->Get_Description()->Get_Text(), u"<p>Stop</p>");
}

TEST_F(TContent, AServerThatIsAwayLeavesTheTextWithoutItsImages) {
    const std::u16string html = FSession->getLatestRequirement(FSample.Deep)->Get_Description()->Get_Text();
    FServer->Stop();
    EXPECT_EQ(FailureOf([&] { FSession->Get_ImageManager()->cacheImages(html); }), "");
}

// What a server sends may be no picture at all.
TEST_F(TContent, AnImageThatIsNoneIsNotKeptHere) {
    Backend::Database(FOptions.DatabasePath).Query("update image set data = $1", std::string("MZ")).Next();
    const std::u16string html = FSession->getLatestRequirement(FSample.Deep)->Get_Description()->Get_Text();
    FSession->Get_ImageManager()->cacheImages(html);
    const std::string text = Utf8(html);
    const std::size_t start = text.find("src=\"file://") + 12;
    EXPECT_FALSE(std::filesystem::exists(text.substr(start, text.find('"', start) - start)));
}

TEST_F(TContent, AMarkForANewImageThatSomebodyElseHasStoredIsNotShown) {
    const std::string path = FFolder.File("private.png");
    WriteFile(path, TinyPicture());
    const std::string mark = "<img src=\"" + path + "\" new=\"true\">";
    std::string stored = "<p>Stop</p>";
    for (const std::string before : {"", "<!-->", "<!--->", "<? \">", "<p \">", "<p a=b\">", "<p =\">",
                                     "<style><p a=\"</style>", "<!-- --!>"}) {
        SCOPED_TRACE(before);
        const std::string html = before + mark + "\"> -->";
        Backend::Database(FOptions.DatabasePath)
            .Query("update requirement_text set description = $1 where description = $2", html, stored)
            .Next();
        stored = html;
        const std::u16string read =
            LogOn()->getLatestRequirement(FSample.Stop)->Get_Description()->Get_Text();
        EXPECT_THAT(Utf8(read), AllOf(HasSubstr("private.png"), Not(HasSubstr("new="))));
    }
}

TEST_F(TContent, TheHtmlHelperWorksWithoutAServer) {
    FServer->Stop();
    const auto helper = CoHTMLHelperFactory::Create()->Create1();
    EXPECT_EQ(helper->htmlToPlainText(u"<p>a</p><p>b</p>"), u"a\r\nb");
    EXPECT_EQ(helper->plainTextToHTML(u"a<b"), u"a&lt;b");
    EXPECT_THAT(FailureOf([&] { helper->tidy(u"<p class=\"x"); }), HasSubstr("Mend it and try again."));
}

TEST_F(TContent, TheHtmlHelperAndItsStaticsTellOfImages) {
    const std::u16string hash = u"00ff" + std::u16string(60, u'a');
    const std::u16string html = u"<img src=\"a.png\" new=\"new\" /><img src=\"" + hash +
                                u"\" src_original=\"" + hash + u"\" />";
    const auto helper = CoHTMLHelperFactory::Create()->Create1();
    const auto statics = CoHTMLHelperStatics::Create();
    EXPECT_EQ(helper->getImagePaths(html)->Get_Item(Variant(1)).AsText(), hash);
    EXPECT_EQ(statics->getNewImagePaths(html)->Get_Count(), 1);
    const auto nodes = helper->getImageNodes(html);
    EXPECT_EQ(GetByName(nodes, "Count").AsInteger(), 2);
    EXPECT_EQ(GetByName(nodes, "Item", {0}).AsText(), u"<img src=\"a.png\" new=\"new\" />");
    const auto ids = helper->getImageIDs(html);
    ASSERT_EQ(ids->Get_Count(), 1);
    EXPECT_EQ(Item<IImageID>(ids, 0)->Get_IDNumber(), 0x00ffaaaa >> 1);
    const std::u16string shown = statics->transformImageTags2(html, u"/tmp/pictures");
    EXPECT_THAT(Utf8(shown), HasSubstr("src=\"file:///tmp/pictures/00ffaaaa"));
    EXPECT_EQ(helper->resetImageTags(shown), html);
    EXPECT_EQ(helper->transformImageTags1(html),
              helper->transformImageTags2(html, Wide(PictureCacheFolder())));
}
