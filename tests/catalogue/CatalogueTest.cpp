#include "adapters/catalogue/Catalogue.h"

#include "adapters/catalogue/SourceTexts.h"
#include "adapters/xml/XmlService.h"

#include <gtest/gtest.h>

namespace corvane {
namespace {

std::vector<DefinitionText> TextsOf(const std::string& content) {
    XmlService xml;
    const auto document = xml.NewDocument();
    EXPECT_TRUE(document->LoadXml("<Service Name=\"S\">" + content + "</Service>"));
    DefinitionTexts texts;
    texts.Add(document->SelectSingleNode("/Service"), "S.xml");
    return texts.All();
}

std::string FaultsOf(const std::string& catalogue) {
    std::vector<CatalogueFault> faultList;
    (void)Catalogue::Read(catalogue, faultList);
    std::string faults;
    for (const CatalogueFault& fault : faultList)
        faults += std::to_string(fault.line) + ": " + fault.text + "\n";
    return faults;
}

Catalogue ReadCatalogue(const std::string& catalogue) {
    EXPECT_EQ(FaultsOf(catalogue), "");
    std::vector<CatalogueFault> faults;
    return Catalogue::Read(catalogue, faults);
}

TEST(SourceTexts, AreTheStringsThatCallsOfTranslatedHaveAsArguments) {
    std::vector<DefinitionText> found;
    AddSourceTexts(R"src(#include "Translated.h"
// Translated("a comment's"), '"' too
auto a = Translated("One \"quoted\"" // which goes on
                    ", and on\n", {"a value", Translated("of a value")});
auto b = Translated(Count('"'), "%1 row", "%1 rows") + NotTranslated("other") + "Translated(" + Translated(name);
auto c = Translated("%1 row"); /* Translated("gone") */ auto d = Translated("at the end)src",
                   "A.cpp", found);
    std::string texts;
    for (const DefinitionText& text : found)
        texts += std::to_string(text.line) + " " + text.text + "|";
    EXPECT_EQ(texts, "3 One \"quoted\", and on\n|4 of a value|5 %1 row|5 %1 rows|6 at the end|");
}

TEST(DefinitionTexts, AreThoseThatPeopleSeeByKeysOfNames) {
    std::string texts;
    for (const auto& text : TextsOf(R"(<ActionItems><ActionItem Name="A" Action="OnA" Description="does a"/>
<ActionItem Name="B"/></ActionItems><Menus>
<MenuItem Type="menutitle" ActionItem="B" Caption="#B"/>
<MenuItem Type="MenuItem" ActionItem="A" Path="B" Caption="#A" Tip=" "/>
<MenuItem Type="ToolbarItem" ActionItem="A" Path="Bar" Caption="A" Tip="Tip of A"/>
<MenuItem Type="ToolbarItem" ActionItem="A" Path="Bar" Caption="A" Tip="Tip of A"/></Menus>
<ExplorerItems><ExplorerItem Name="Top" Type="FolderChild"/><ExplorerItem Name="F" Type="Folder" Parent="Top"/>
<ExplorerItem Name="G" Type="Folder" Parent="Top" DisplayName="Gs"/>
<ExplorerItem Name="D" Type="Default" Parent="Top"><Menus>
<MenuItem Type="ContextMenuItem" ActionItem="X" Caption="X"/></Menus></ExplorerItem></ExplorerItems>
<Windows><Window Name="W" Caption="Win"><Page PageProgID="P.P" Caption="One"/><Page PageProgID="P.P" Caption="Two"/>
</Window></Windows><Preferences><Page PageProgID="P.Q" Caption="Q"/></Preferences>)"))
        texts += text.key + " = " + text.text + "\n";
    EXPECT_EQ(texts, R"(Service S/ActionItem A/Description = does a
Service S/MenuTitle B/Caption = #B
Service S/MenuItem B.A/Caption = #A
Service S/ToolbarItem Bar.A/Caption = A
Service S/ToolbarItem Bar.A/Tip = Tip of A
Toolbar Bar = Bar
ExplorerItem Top/Name = Top
ExplorerItem F/Name = F
ExplorerItem G/DisplayName = Gs
ExplorerItem D/ContextMenuItem X/Caption = X
Window W/Caption = Win
Window W/Page P.P/Caption = One
Window W/Page P.P/Caption = Two
Preferences/Page P.Q/Caption = Q
)");
}

// What editors write comes back as it was, but for the places, which are those of the definitions.
TEST(Catalogue, KeepsWhatTranslatorsAndTheirEditorsWrite) {
    const std::string catalogueText = R"(# Words of ours:
#
# study = Studie
msgid ""
msgstr ""
"Language: de\n"
"Content-Type: text/plain; charset=UTF-8\n"
"X-Generator: an editor\n"

# sounds odd
#: S.xml:1
msgctxt "Service S/ActionItem A/Description"
msgid "a \"quoted\"\tpath C:\\x"
msgstr "ein „Pfad“ \"C:\\x\""

#: S.xml:1
#, fuzzy
#| msgid "b"
msgctxt "Service S/ActionItem B/Description"
msgid "c"
msgstr "be"

#~ msgctxt "Service S/ActionItem Z/Description"
#~ msgid "gone"
#~ msgstr "weg"
)";
    std::vector<CatalogueFault> faults;
    Catalogue catalogue = Catalogue::Read("\xEF\xBB\xBF" + catalogueText, faults);
    EXPECT_EQ(catalogue.AsText(), catalogueText);
    const auto update =
        catalogue.Update({{"Service S/ActionItem A/Description", "a \"quoted\"\tpath C:\\x", "S.xml", 1},
                          {"Service S/ActionItem B/Description", "c", "S.xml", 1}},
                         "de");
    EXPECT_EQ(catalogue.AsText(), catalogueText);
    EXPECT_EQ(update.newCount + update.changed, 0);
    EXPECT_EQ(update.vanished, 1);
    EXPECT_EQ(update.unfinished, 1);
    // Neither what is unsure nor what has vanished is shown. Strings may stand on several lines.
    EXPECT_FALSE(catalogue.Find("Service S/ActionItem B/Description", "c"));
    EXPECT_FALSE(catalogue.Find("Service S/ActionItem Z/Description", "gone"));
    const Catalogue longCatalogue =
        ReadCatalogue("msgctxt \"K\"\r\nmsgid \"\"\r\n\"one \"\r\n\"two\"\r\nmsgstr \"\"\r\n\"eins \"\r\n\"zwei\"\r\n");
    ASSERT_TRUE(longCatalogue.Find("K", "one two"));
    EXPECT_EQ(*longCatalogue.Find("K", "one two"), "eins zwei");
}

TEST(Catalogue, FollowsTheDefinitions) {
    const auto action = [](const std::string& name, const std::string& text) {
        return DefinitionText{"Service S/ActionItem " + name + "/Description", text, "S.xml", 7};
    };
    Catalogue catalogue;
    EXPECT_EQ(catalogue.Update({action("A", "opens"), action("B", "shuts")}, "de").unfinished, 2);
    std::string text = catalogue.AsText();
    text.replace(text.find("msgid \"opens\"\nmsgstr \"\""), 23, "msgid \"opens\"\nmsgstr \"öffnet\"");
    text.replace(text.find("msgid \"shuts\"\nmsgstr \"\""), 23, "msgid \"shuts\"\nmsgstr \"schließt\"");
    const Catalogue base = ReadCatalogue(text);
    struct Case {
        const char* what;
        std::vector<DefinitionText> texts;
        const char* messages; // text, translation, and whether it is unsure or has vanished
        int newCount, filled, changed, vanished;
    };
    for (const Case& testCase : {
             Case{"another order",
                  {action("B", "shuts"), action("A", "opens")},
                  "shuts schließt\nopens öffnet\n",
                  0,
                  0,
                  0,
                  0},
             Case{"another text",
                  {action("A", "opens it"), action("B", "shuts")},
                  "opens it öffnet ?\nshuts schließt\n",
                  0,
                  0,
                  1,
                  0},
             Case{"an equal text elsewhere",
                  {action("A", "opens"), action("B", "shuts"), action("C", "opens")},
                  "opens öffnet\nshuts schließt\nopens öffnet\n",
                  1,
                  1,
                  0,
                  0},
             Case{"a new text",
                  {action("A", "opens"), action("B", "shuts"), action("C", "x")},
                  "opens öffnet\nshuts schließt\nx \n",
                  1,
                  0,
                  0,
                  0},
             Case{"a text that has gone", {action("A", "opens")}, "opens öffnet\nshuts schließt -\n", 0, 0, 0, 1},
             Case{"another name",
                  {action("A", "opens"), action("D", "shuts")},
                  "opens öffnet\nshuts schließt\nshuts schließt -\n",
                  1,
                  1,
                  0,
                  1},
         }) {
        Catalogue now = base;
        const auto update = now.Update(testCase.texts, "de");
        std::string messages;
        const Catalogue read = ReadCatalogue(now.AsText());
        for (const CatalogueMessage& message : read.Messages())
            messages += message.text + " " + message.translation + (message.unsure ? " ?" : "") +
                        (message.vanished ? " -" : "") + "\n";
        EXPECT_EQ(messages, testCase.messages) << testCase.what;
        EXPECT_EQ(std::vector<int>({update.newCount, update.filled, update.changed, update.vanished}),
                  std::vector<int>({testCase.newCount, testCase.filled, testCase.changed, testCase.vanished}))
            << testCase.what;
        // Back to what it was: nothing has been lost.
        (void)now.Update({action("A", "opens"), action("B", "shuts")}, "de");
        EXPECT_TRUE(now.Find("Service S/ActionItem A/Description", "opens")) << testCase.what;
        EXPECT_TRUE(now.Find("Service S/ActionItem B/Description", "shuts")) << testCase.what;
    }
}

TEST(Catalogue, TellsWhatIsWrongByLine) {
    const std::string start = "msgid \"\"\nmsgstr \"Content-Type: text/plain; charset=";
    struct Case {
        std::string catalogue;
        std::string faults;
    };
    for (const Case& testCase : {
             Case{"", ""},
             Case{start + "utf-8\\n\"\n", ""},
             Case{start + "ISO-8859-1\\n\"\n",
                  "1: says that it is written in ISO-8859-1; save it as UTF-8, and say so in its header\n"},
             Case{"msgid \"a\"\nmsgstr \"\xE4\"\n", "2: isn't UTF-8; save the catalogue in that encoding\n"},
             Case{std::string("msgid \"a\0\"\n", 11), "1: contains a zero byte, so it isn't text\n"},
             Case{"msgid \"a\"\n\nmsgid \"b\"\nmsgstr \"\"\n", "3: msgstr is missing before this msgid\n"},
             Case{"msgid \"a\"\n", "1: msgstr is missing behind the last msgid\n"},
             Case{"msgctxt \"k\"\nmsgstr \"a\"\n", "2: msgid is missing before this msgstr\n"},
             Case{"msgid \"a\nmsgstr \"b\"\n", "1: a string must stand between two quotation marks on one line\n"},
             Case{"msgid \"a\"\nmsgstr \"b\"c\"\n", "2: a quotation mark in a string needs a backslash before it\n"},
             Case{"msgid \"a\"\nmsgstr \"\\x\"\n",
                  "2: a backslash must stand before n, r, t, a quotation mark or a backslash\n"},
             Case{"msgid \"a\"\nmsgstr \"b\\\"\n",
                  "2: a backslash must stand before n, r, t, a quotation mark or a backslash\n"},
             Case{"\"a\"\n", "1: there is a string without msgctxt, msgid or msgstr before it\n"},
             Case{"msgid \"a\"\nmsgid_plural \"as\"\n",
                  "2: plural forms have no meaning for texts of definition files; take them out\n"},
             Case{"<Service/>\n", "1: \"<Service/>\" isn't a line of a catalogue; expected: "
                                  "msgctxt, msgid, msgstr, a string "
                                  "or a comment\n"},
             Case{"msgid \"%1 of %2\"\nmsgstr \"%1\"\n\nmsgid \"b\"\nmsgstr \"%2\"\n",
                  "1: the translation \"%1\" of \"%1 of %2\" isn't used: the placeholders differ from those of the "
                  "text\n"
                  "4: the translation \"%2\" of \"b\" isn't used: the placeholders differ from those of the text\n"},
             Case{"msgctxt \"Service S/MenuItem A/Caption\"\nmsgid \"#a\"\nmsgstr \"#a#b\"\n",
                  "2: the translation \"#a#b\" of \"#a\" isn't used: there is more than one \"#\", which marks the "
                  "letter of "
                  "the mnemonic\n"},
             Case{"msgctxt \"Service S/ActionItem A/Description\"\nmsgid \"#a\"\nmsgstr \"#a#b\"\n", ""},
             Case{"msgid \"a\"\nmsgstr \"a\\nb\"\n",
                  "1: the translation \"a\nb\" of \"a\" isn't used: there is a line break, and none in the text\n"},
             Case{"msgid \"a\"\nmsgstr \"x\"\nmsgid \"a\"\nmsgstr \"y\"\n",
                  "3: \"a\" of \"\" is translated a second time; the first one counts\n"},
         })
        EXPECT_EQ(FaultsOf(testCase.catalogue), testCase.faults) << testCase.catalogue;
    // A bad translation spoils itself alone.
    std::vector<CatalogueFault> faults;
    const auto catalogue = Catalogue::Read("msgid \"%1\"\nmsgstr \"x\"\nmsgid \"b\"\nmsgstr \"be\"\n", faults);
    EXPECT_FALSE(catalogue.Find("", "%1"));
    EXPECT_TRUE(catalogue.Find("", "b"));
}

} // namespace
} // namespace corvane
