// What an office program puts on the clipboard, pasted into a description.
#include "description/DescriptionTest.h"

#include <QApplication>
#include <QClipboard>
#include <QImage>
#include <QMimeData>
#include <QTcpServer>
#include <QXmlStreamReader>

#include "platform/widgets/QtText.h"
#include "support/TinyPicture.h"

using namespace Quorane_TLB;
using testing::AllOf;
using testing::ElementsAre;
using testing::Field;
using testing::HasSubstr;
using testing::IsEmpty;
using testing::Not;

namespace {

// A paragraph, a list made of paragraphs, a table, a place name, and room for a picture.
constexpr const char* OfficeText = R"(<html xmlns:v="urn:vector" xmlns:o="urn:office" xmlns="urn:html">
<head><meta http-equiv=Content-Type content="text/html; charset=utf-8"><meta name=Generator content="Office 14">
<link rel=File-List href="file:///tmp/clip_filelist.xml">
<!--[if gte mso 9]><xml><o:Settings><o:AllowPNG/></o:Settings></xml><![endif]-->
<style><!-- /* Font Definitions */ @font-face {font-family:Calibri; panose-1:2 15 5 2;}
p.MsoNormal {mso-style-parent:""; margin:0cm; background:url(http://127.0.0.1:PORT/b.png);}
@page Section1 {size:595.3pt 841.9pt; mso-header-margin:35.4pt;} --></style></head>
<body lang=EN-GB style='tab-interval:35.4pt'>
<!--StartFragment-->
<p class=MsoNormal style='mso-margin-top-alt:auto;text-align:justify'><b style='mso-bidi-font-weight:normal'>
Flow<o:p></o:p></b> &amp; return &#8211; 5&nbsp;K<o:p>&nbsp;</o:p></p>
<p class=MsoListParagraph style='text-indent:-18.0pt;mso-list:l0 level1 lfo1'><![if !supportLists]><span
style='font-family:Symbol;mso-list:Ignore'>&middot;<span style='font:7.0pt "Times New Roman"'>&nbsp; </span>
</span><![endif]>pump<o:p></o:p></p>
<table class=MsoTableGrid border=1 style='border-collapse:collapse;mso-yfti-tbllook:1184'><tr
style='mso-yfti-irow:0'><td width=99 valign=top style='mso-border-alt:solid windowtext .5pt'><p
class=MsoNormal>cell<o:p></o:p></p></td></tr></table>
<p class=MsoNormal>PICTURE
<st1:place w:st="on">Ghent</st1:place></p>
<!--EndFragment--></body></html>)";

// A drawing that only the program itself can show, and a picture in its own folder.
constexpr const char* Picture =
    R"(<!--[if gte vml 1]><v:shape id="s1"><v:imagedata src="file:///tmp/clip.wmz"/></v:shape><![endif]-->
<![if !vml]><img width=9 height=9 src="file:///tmp/clip.gif" alt="flow &amp; return" v:shapes="s1"><![endif]>)";

class TDescriptionPaste : public TDescriptionTest {
protected:
    TDescriptionPaste() {
        EXPECT_TRUE(FNetwork.listen(QHostAddress::LocalHost));
        LogOn();
        Select(ZoneControl);
        FNumber = SelectedNumber();
    }
    void Paste(QString html) {
        html.replace(QStringLiteral("PORT"), QString::number(FNetwork.serverPort()));
        auto data = std::make_unique<QMimeData>();
        data->setHtml(html);
        Paste(std::move(data), "Ghent");
    }
    void Paste(std::unique_ptr<QMimeData> data, const std::string& part) {
        QApplication::clipboard()->setMimeData(data.release());
        ClickIntoText();
        KeyIntoPage(Qt::Key_End, Qt::ControlModifier);
        KeyIntoPage(Qt::Key_V, Qt::ControlModifier);
        ASSERT_TRUE(WaitForHtml(part)) << Html();
        ASSERT_TRUE(WaitForLock());
        TActor::Settle();
    }
    static int Pictures(const std::string& html) {
        return static_cast<int>(ToQt(html).count(QStringLiteral("<img")));
    }
    static bool WellFormed(const std::string& html) {
        QXmlStreamReader reader(ToQt("<body>" + html + "</body>"));
        while (!reader.atEnd())
            reader.readNext();
        return !reader.hasError();
    }
    QTcpServer FNetwork;
    std::int32_t FNumber = 0;
};

TEST_F(TDescriptionPaste, OfficeTextIsKeptAndItsOwnMarksAreNot) {
    Paste(QString::fromUtf8(OfficeText).remove(QStringLiteral("PICTURE")));
    User->Click("btnSave");
    const std::string stored = DescriptionOnServer(FNumber);
    for (const char* text : {"heat <b>demand</b>", "Flow", "&amp; return \u2013 5\u00A0K", "pump",
                             "<table border=\"1\"", ">cell</p></td>", "Ghent"})
        EXPECT_THAT(stored, HasSubstr(text));
    for (const char* mark :
         {"mso-", "Mso", "o:p", "st1", "<!", "xml", "Fragment", "Generator", "url(", "127.0.0.1"})
        EXPECT_THAT(stored, Not(HasSubstr(mark)));
    EXPECT_TRUE(WellFormed(stored)) << stored;
    EXPECT_FALSE(FNetwork.hasPendingConnections());
    EXPECT_FALSE(Frame().IsDirty());
}

// Such a picture lies where only the other program may say that the user wants it.
TEST_F(TDescriptionPaste, PicturesThatAreOnlyLinksLeaveTheirTextAndAreToldOfOnce) {
    const auto links = QStringLiteral("%1<img src='http://127.0.0.1:PORT/a.png' new=true>"
                                      "<img src='/etc/passwd' alt='other' new=true>")
                           .arg(QString::fromUtf8(Picture));
    const auto html = QString::fromUtf8(OfficeText).replace(QStringLiteral("PICTURE"), links);
    Dialogs.Answer(TMessageResult::Ok);
    Paste(html);
    EXPECT_THAT(Dialogs.TakeMessages(),
                ElementsAre(Field(&TMessage::Text, HasSubstr("3 pictures did not come along"))));
    KeyIntoPage(Qt::Key_Z, Qt::ControlModifier);
    EXPECT_TRUE(WaitUntil([this] { return Html().find("Ghent") == std::string::npos; }));
    EXPECT_THAT(Html(), Not(HasSubstr("other")));
    KeyIntoPage(Qt::Key_Y, Qt::ControlModifier);
    ASSERT_TRUE(WaitForHtml("Ghent"));
    User->Click("btnSave");
    const std::string stored = DescriptionOnServer(FNumber);
    EXPECT_THAT(stored, AllOf(HasSubstr("flow &amp; return"), HasSubstr("other"), HasSubstr("Ghent")));
    EXPECT_EQ(Pictures(stored), 1);
    EXPECT_FALSE(FNetwork.hasPendingConnections());
    EXPECT_THAT(Dialogs.TakeErrors(), IsEmpty());
}

TEST_F(TDescriptionPaste, PicturesThatBringTheirBytesAreStored) {
    Paste(QStringLiteral("<p>Ghent <img src=\"data:image/gif;base64,%1\"></p>")
              .arg(QLatin1String(TinyPictureBase64.data())));
    auto screenshot = std::make_unique<QMimeData>();
    screenshot->setImageData(QImage(7, 5, QImage::Format_RGB32));
    Paste(std::move(screenshot), "data:image/png");
    // Copies of what is stored, and of what is not yet, are as good.
    SelectAllText();
    KeyIntoPage(Qt::Key_C, Qt::ControlModifier);
    KeyIntoPage(Qt::Key_End, Qt::ControlModifier);
    KeyIntoPage(Qt::Key_V, Qt::ControlModifier);
    ASSERT_TRUE(WaitUntil([this] { return Pictures(Html()) == 6; }));
    User->Click("btnSave");
    EXPECT_EQ(Pictures(DescriptionOnServer(FNumber)), 6);
    EXPECT_THAT(Dialogs.TakeErrors(), IsEmpty());
    EXPECT_THAT(Dialogs.TakeMessages(), IsEmpty());
}

} // namespace
