#include "adapters/catalogue/Catalogue.h"

#include "adapters/xml/XmlService.h"

#include <gtest/gtest.h>

namespace corvane {
namespace {

std::vector<DefinitionText> TextsOf(const std::string& sContent) {
    XmlService oXml;
    const auto oDocument = oXml.NewDocument();
    EXPECT_TRUE(oDocument->LoadXml("<Service Name=\"S\">" + sContent + "</Service>"));
    DefinitionTexts oTexts;
    oTexts.Add(oDocument->SelectSingleNode("/Service"), "S.xml");
    return oTexts.All();
}

std::string FaultsOf(const std::string& sCatalogue) {
    std::vector<CatalogueFault> aFaults;
    (void)Catalogue::Read(sCatalogue, aFaults);
    std::string sFaults;
    for (const CatalogueFault& oFault : aFaults)
        sFaults += std::to_string(oFault.lLine) + ": " + oFault.sText + "\n";
    return sFaults;
}

Catalogue Read(const std::string& sCatalogue) {
    EXPECT_EQ(FaultsOf(sCatalogue), "");
    std::vector<CatalogueFault> aFaults;
    return Catalogue::Read(sCatalogue, aFaults);
}

TEST(DefinitionTexts, AreThoseThatPeopleSeeByKeysOfNames) {
    std::string sTexts;
    for (const auto& oText : TextsOf(R"(<ActionItems><ActionItem Name="A" Action="OnA" Description="does a"/>
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
        sTexts += oText.sKey + " = " + oText.sText + "\n";
    EXPECT_EQ(sTexts, R"(Service S/ActionItem A/Description = does a
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
    const std::string sCatalogue = R"(# Words of ours:
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
    std::vector<CatalogueFault> aFaults;
    Catalogue oCatalogue = Catalogue::Read("\xEF\xBB\xBF" + sCatalogue, aFaults);
    EXPECT_EQ(oCatalogue.AsText(), sCatalogue);
    const auto oUpdate =
        oCatalogue.Update({{"Service S/ActionItem A/Description", "a \"quoted\"\tpath C:\\x", "S.xml", 1},
                           {"Service S/ActionItem B/Description", "c", "S.xml", 1}},
                          "de");
    EXPECT_EQ(oCatalogue.AsText(), sCatalogue);
    EXPECT_EQ(oUpdate.nNew + oUpdate.nChanged, 0);
    EXPECT_EQ(oUpdate.nVanished, 1);
    EXPECT_EQ(oUpdate.nUnfinished, 1);
    // Neither what is unsure nor what has vanished is shown. Strings may stand on several lines.
    EXPECT_FALSE(oCatalogue.Find("Service S/ActionItem B/Description", "c"));
    EXPECT_FALSE(oCatalogue.Find("Service S/ActionItem Z/Description", "gone"));
    const Catalogue oLong =
        Read("msgctxt \"K\"\r\nmsgid \"\"\r\n\"one \"\r\n\"two\"\r\nmsgstr \"\"\r\n\"eins \"\r\n\"zwei\"\r\n");
    ASSERT_TRUE(oLong.Find("K", "one two"));
    EXPECT_EQ(*oLong.Find("K", "one two"), "eins zwei");
}

TEST(Catalogue, FollowsTheDefinitions) {
    const auto fnAction = [](const std::string& sName, const std::string& sText) {
        return DefinitionText{"Service S/ActionItem " + sName + "/Description", sText, "S.xml", 7};
    };
    Catalogue oCatalogue;
    EXPECT_EQ(oCatalogue.Update({fnAction("A", "opens"), fnAction("B", "shuts")}, "de").nUnfinished, 2);
    std::string sText = oCatalogue.AsText();
    sText.replace(sText.find("msgid \"opens\"\nmsgstr \"\""), 23, "msgid \"opens\"\nmsgstr \"öffnet\"");
    sText.replace(sText.find("msgid \"shuts\"\nmsgstr \"\""), 23, "msgid \"shuts\"\nmsgstr \"schließt\"");
    const Catalogue oBase = Read(sText);
    struct Case {
        const char* sWhat;
        std::vector<DefinitionText> aTexts;
        const char* sMessages; // text, translation, and whether it is unsure or has vanished
        int nNew, nFilled, nChanged, nVanished;
    };
    for (const Case& oCase : {
             Case{"another order",
                  {fnAction("B", "shuts"), fnAction("A", "opens")},
                  "shuts schließt\nopens öffnet\n",
                  0,
                  0,
                  0,
                  0},
             Case{"another text",
                  {fnAction("A", "opens it"), fnAction("B", "shuts")},
                  "opens it öffnet ?\nshuts schließt\n",
                  0,
                  0,
                  1,
                  0},
             Case{"an equal text elsewhere",
                  {fnAction("A", "opens"), fnAction("B", "shuts"), fnAction("C", "opens")},
                  "opens öffnet\nshuts schließt\nopens öffnet\n",
                  1,
                  1,
                  0,
                  0},
             Case{"a new text",
                  {fnAction("A", "opens"), fnAction("B", "shuts"), fnAction("C", "x")},
                  "opens öffnet\nshuts schließt\nx \n",
                  1,
                  0,
                  0,
                  0},
             Case{"a text that has gone", {fnAction("A", "opens")}, "opens öffnet\nshuts schließt -\n", 0, 0, 0, 1},
             Case{"another name",
                  {fnAction("A", "opens"), fnAction("D", "shuts")},
                  "opens öffnet\nshuts schließt\nshuts schließt -\n",
                  1,
                  1,
                  0,
                  1},
         }) {
        Catalogue oNow = oBase;
        const auto oUpdate = oNow.Update(oCase.aTexts, "de");
        std::string sMessages;
        const Catalogue oRead = Read(oNow.AsText());
        for (const CatalogueMessage& oMessage : oRead.Messages())
            sMessages += oMessage.sText + " " + oMessage.sTranslation + (oMessage.bUnsure ? " ?" : "") +
                         (oMessage.bVanished ? " -" : "") + "\n";
        EXPECT_EQ(sMessages, oCase.sMessages) << oCase.sWhat;
        EXPECT_EQ(std::vector<int>({oUpdate.nNew, oUpdate.nFilled, oUpdate.nChanged, oUpdate.nVanished}),
                  std::vector<int>({oCase.nNew, oCase.nFilled, oCase.nChanged, oCase.nVanished}))
            << oCase.sWhat;
        // Back to what it was: nothing has been lost.
        (void)oNow.Update({fnAction("A", "opens"), fnAction("B", "shuts")}, "de");
        EXPECT_TRUE(oNow.Find("Service S/ActionItem A/Description", "opens")) << oCase.sWhat;
        EXPECT_TRUE(oNow.Find("Service S/ActionItem B/Description", "shuts")) << oCase.sWhat;
    }
}

TEST(Catalogue, TellsWhatIsWrongByLine) {
    const std::string sStart = "msgid \"\"\nmsgstr \"Content-Type: text/plain; charset=";
    struct Case {
        std::string sCatalogue;
        std::string sFaults;
    };
    for (const Case& oCase : {
             Case{"", ""},
             Case{sStart + "utf-8\\n\"\n", ""},
             Case{sStart + "ISO-8859-1\\n\"\n",
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
        EXPECT_EQ(FaultsOf(oCase.sCatalogue), oCase.sFaults) << oCase.sCatalogue;
    // A bad translation spoils itself alone.
    std::vector<CatalogueFault> aFaults;
    const auto oCatalogue = Catalogue::Read("msgid \"%1\"\nmsgstr \"x\"\nmsgid \"b\"\nmsgstr \"be\"\n", aFaults);
    EXPECT_FALSE(oCatalogue.Find("", "%1"));
    EXPECT_TRUE(oCatalogue.Find("", "b"));
}

} // namespace
} // namespace corvane
