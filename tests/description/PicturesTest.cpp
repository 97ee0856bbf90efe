// Pictures and links of a description: from the disk to the server, back into the page,
// and out of it.
#include "description/DescriptionTest.h"

#include <QImage>

#include <regex>

#include "platform/widgets/QtText.h"

using namespace Quorane_TLB;
using testing::AllOf;
using testing::Each;
using testing::ElementsAre;
using testing::HasSubstr;
using testing::Not;
using testing::SizeIs;

namespace {

class TDescriptionPictures : public TDescriptionTest {
protected:
    TDescriptionPictures() {
        setenv("XDG_CACHE_HOME", FFolder.File("cache").c_str(), 1);
        LogOn();
        Select(ZoneControl);
        FNumber = SelectedNumber();
    }

    // A picture of that width on the disk.
    std::string Picture(const std::string& name, int width) {
        QImage image(width, 5, QImage::Format_RGB32);
        image.fill(Qt::red);
        EXPECT_TRUE(image.save(ToQt(FFolder.File(name))));
        return FFolder.File(name);
    }
    void Insert(const std::string& path) {
        const std::size_t before = Tags(Html()).size();
        Dialogs.AnswerFile(path);
        User->Click("btnInsertImage");
        EXPECT_TRUE(WaitUntil([&] { return Tags(Html()).size() > before; }));
    }
    static std::vector<std::string> Tags(const std::string& html) {
        static const std::regex tag("<img[^>]*>");
        return {std::sregex_token_iterator(html.begin(), html.end(), tag), {}};
    }
    std::vector<std::string> TagsOnServer() { return Tags(DescriptionOnServer(FNumber)); }

    TTempFolder FFolder;
    std::int32_t FNumber = 0;
};

TEST_F(TDescriptionPictures, InsertedOneIsStoredWithTheSaveAndShownFromTheCache) {
    ASSERT_THAT(TagsOnServer(), SizeIs(1));
    ClickIntoText();
    const std::string path = Picture("new & f\"i'ne#1?%20%41\\ü.png", 23);
    Insert(path);
    Insert(path);
    EXPECT_THAT(Html(), HasSubstr("new=\"true\""));
    EXPECT_TRUE(ShowsPictures(QStringLiteral("23,23,520"))) << Html();
    Save();
    std::filesystem::remove(path);
    const auto tags = TagsOnServer();
    ASSERT_THAT(tags, SizeIs(3));
    EXPECT_EQ(tags[0], tags[1]);
    EXPECT_THAT(tags, Each(AllOf(HasSubstr("src_original=\""), Not(HasSubstr("new=")))));
    Select(FilterReadings);
    Select(ZoneControl);
    EXPECT_TRUE(ShowsPictures(QStringLiteral("23,23,520"))) << Html();
}

TEST_F(TDescriptionPictures, StayTheSameThroughEveryEdit) {
    ASSERT_TRUE(WaitForHtml("<img"));
    const std::string before = DescriptionOnServer(FNumber);
    User->Type("edtRequirementName", "Zones");
    User->Click("btnSave");
    EXPECT_EQ(DescriptionOnServer(FNumber), before);
    for (const char* text : {"one", "two"}) {
        const auto tags = TagsOnServer();
        ClickIntoText();
        TypeIntoPage(text);
        Save();
        EXPECT_THAT(DescriptionOnServer(FNumber), HasSubstr(text));
        EXPECT_EQ(TagsOnServer(), tags);
    }
}

TEST_F(TDescriptionPictures, UnreadableOneFailsTheSaveAndNothingIsLost) {
    ClickIntoText();
    const std::string path = Picture("gone.png", 23);
    Insert(path);
    TypeIntoPage("kept");
    ASSERT_TRUE(WaitForHtml("kept"));
    std::filesystem::remove(path);
    Save();
    EXPECT_THAT(Dialogs.TakeErrors(), ElementsAre(HasSubstr(path)));
    EXPECT_THAT(Html(), HasSubstr("kept"));
    EXPECT_THAT(DescriptionOnServer(FNumber), Not(HasSubstr("kept")));
    Picture("gone.png", 23);
    User->Click("btnSave");
    EXPECT_THAT(DescriptionOnServer(FNumber), HasSubstr("kept"));
    EXPECT_THAT(TagsOnServer(), SizeIs(2));
}

TEST_F(TDescriptionPictures, FileThatIsNoneFailsTheSaveUntilItIsTakenOut) {
    ClickIntoText();
    TypeIntoPage("kept");
    ASSERT_TRUE(WaitForHtml("kept"));
    const std::string path = FFolder.File("notes.png");
    WriteFile(path, "These are notes.");
    Insert(path);
    EXPECT_TRUE(ShowsPictures(QStringLiteral("0,520"))) << Html();
    Save();
    EXPECT_THAT(Dialogs.TakeErrors(), ElementsAre(AllOf(HasSubstr(path), HasSubstr("is no PNG"))));
    EXPECT_THAT(Html(), AllOf(HasSubstr("kept"), HasSubstr(path)));
    EXPECT_THAT(DescriptionOnServer(FNumber), Not(HasSubstr("kept")));
    ClickIntoText();
    KeyIntoPage(Qt::Key_Z, Qt::ControlModifier);
    ASSERT_TRUE(WaitUntil([&] { return Html().find(path) == std::string::npos; }));
    User->Click("btnSave");
    EXPECT_THAT(DescriptionOnServer(FNumber), HasSubstr("kept"));
}

TEST_F(TDescriptionPictures, OneThatIsGoneFromTheCacheIsFetchedAgain) {
    ASSERT_TRUE(ShowsPictures(QStringLiteral("520")));
    std::filesystem::remove_all(FFolder.File("cache"));
    Select(FilterReadings);
    Select(ZoneControl);
    EXPECT_TRUE(ShowsPictures(QStringLiteral("520"))) << Html();
}

TEST_F(TDescriptionPictures, LinkSaysHowItOpensOutsideAndDoesAfterAQuestion) {
    DescribeAsBen(FNumber, u"<p style=\"font-size: 40px;\"><a href=\"https://example.org/a\">link</a></p>");
    User->Click("btnRefresh");
    Select(ZoneControl);
    ASSERT_TRUE(WaitForHtml("example.org"));
    const TControl& document = Frame().wbrReqDescription->Control();
    QTest::mouseMove(&Page(), {30, 35});
    EXPECT_TRUE(WaitUntil([&] { return document.Hint() == "https://example.org/a\nCtrl+Click to open"; }));
    QTest::mouseMove(&NameEdit(), {5, 5});
    EXPECT_TRUE(WaitUntil([&] { return document.Hint().empty(); }));
    for (const auto answer : {TMessageResult::No, TMessageResult::Yes}) {
        const std::size_t asked = Dialogs.Messages().size();
        Dialogs.Answer(answer);
        QTest::mouseClick(&Page(), Qt::LeftButton, Qt::ControlModifier, {30, 35});
        ASSERT_TRUE(WaitUntil([&] { return Dialogs.Messages().size() > asked; }));
        EXPECT_THAT(Dialogs.Messages().back().Text, HasSubstr("https://example.org/a"));
    }
    EXPECT_TRUE(WaitUntil([this] { return !System.Opened.empty(); }));
    EXPECT_THAT(System.Opened, ElementsAre("https://example.org/a"));
}

} // namespace
