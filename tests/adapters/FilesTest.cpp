#include "adapters/files/FileSystem.h"
#include "adapters/files/PictureLoader.h"
#include "adapters/ini/IniReader.h"
#include "adapters/platform/ApplicationPlatform.h"
#include "tests/adapters/Failing.h"
#include "tests/support/TemporaryFolder.h"

#include <gtest/gtest.h>

using namespace corvane;
using corvane::test::FailureOf;
using namespace std::string_literals;

TEST(Files, AFolderListsInOrderOfNamesWithoutRegardToCase) {
    test::TemporaryFolder oFolder;
    for (const char* sName : {"b.xml", "A.XML", "c.xml.bak", "a.xml", "Ä.xml", "C.xml", "sub/d.xml"})
        oFolder.Write(sName, "");
    const auto oFiles = New<FileSystem>();
    std::string sNames;
    for (const std::string& sPath : oFiles->Files(oFolder.Path())) {
        EXPECT_EQ(sPath, oFiles->Join(oFolder.Path(), oFiles->FileName(sPath)));
        sNames += oFiles->FileName(sPath) + "|" + oFiles->Extension(sPath) + " ";
    }
    EXPECT_EQ(sNames, "A.XML|XML a.xml|xml b.xml|xml C.xml|xml c.xml.bak|bak Ä.xml|xml ");
    EXPECT_EQ(FailureOf([&] { (void)oFiles->Files(oFolder.Path() + "/none"); }),
              "76: The folder \"" + oFolder.Path() + "/none\" doesn't exist");
    EXPECT_EQ(FailureOf([&] { (void)oFiles->Files(oFolder.Path() + "/b.xml"); }).substr(0, 3), "76:");
}

TEST(Files, PathsAreTakenApartAndPutTogether) {
    const auto oFiles = New<FileSystem>();
    EXPECT_EQ(oFiles->Join("/a", "b"), "/a/b");
    EXPECT_EQ(oFiles->Join("/a/", "\\b"), "/a/b");
    EXPECT_EQ(oFiles->Join("/a", ""), "/a");
    EXPECT_EQ(oFiles->FileName("/a.b/c"), "c");
    EXPECT_EQ(oFiles->FileName("x\\y.png"), "y.png");
    EXPECT_EQ(oFiles->Extension("/a.b/c"), "");
}

TEST(Files, ANameThatIsNotThereAsWrittenIsFoundWithoutRegardToCase) {
    test::TemporaryFolder oFolder;
    oFolder.Write("Sub/Open.BMP", "capital");
    oFolder.Write("Sub/both", "small\0\xFF"s);
    oFolder.Write("Sub/BOTH", "large");
    const auto oFiles = New<FileSystem>();
    const auto Read = [&](const std::string& sName) { return oFiles->ReadAll(oFolder.Path() + "/" + sName); };
    EXPECT_EQ(Read("sub\\open.bmp"), "capital");
    EXPECT_EQ(Read("SUB//OPEN.bmp"), "capital");
    EXPECT_EQ(Read("Sub/both"), "small\0\xFF"s);
    EXPECT_EQ(Read("Sub/BOTH"), "large");
    EXPECT_EQ(FailureOf([&] { (void)Read("Sub/none"); }),
              "53: The file \"" + oFolder.Path() + "/Sub/none\" doesn't exist");
    EXPECT_EQ(FailureOf([&] { (void)Read("sub"); }), "53: The file \"" + oFolder.Path() + "/sub\" is a folder");
}

TEST(Pictures, AreKnownByASoundHeader) {
    const std::string sBmp =
        "BM\x46\0\0\0\0\0\0\0\x36\0\0\0\x28\0\0\0\2\0\0\0\2\0\0\0\1\0\x18\0\0\0\0\0"s + std::string(70 - 34, '\0');
    const std::string sIco = "\0\0\1\0\1\0\2\2\0\0\1\0\x18\0\4\0\0\0\x16\0\0\0data"s;
    const std::string sPng = "\x89PNG\r\n\x1A\n\0\0\0\x0DIHDR\0\0\0\1\0\0\0\1\x08\6\0\0\0crc!"s;
    const auto With = [](std::string sBytes, std::size_t i, char c) {
        sBytes.at(i) = c;
        return sBytes;
    };
    using Format = Picture::Format;
    struct {
        std::string sBytes;
        std::optional<Format> oFormat;
    } const aCases[] = {
        {sPng, Format::Png},
        {With(sPng, 19, '\0'), std::nullopt}, // no width
        {sPng.substr(0, 20), std::nullopt},
        {sBmp, Format::Bmp},
        {With(sBmp, 14, 41), std::nullopt}, // no such header
        {With(sBmp, 28, 5), std::nullopt},  // bits of a pixel
        {With(sBmp, 11, 1), std::nullopt},  // pixels behind the end
        {"BM and some more text, as long as a header would be", std::nullopt},
        {sIco, Format::Ico},
        {With(sIco, 2, 2), std::nullopt},     // a mouse pointer
        {With(sIco, 4, 0), std::nullopt},     // without pictures
        {With(sIco, 14, 5), std::nullopt},    // the picture ends behind the file
        {With(sIco, 18, '\5'), std::nullopt}, // and begins within the header
        {"GIF89a\1\0\1\0\0\0\0"s, Format::Gif},
        {"GIF88a\1\0\1\0\0\0\0"s, std::nullopt},
        {"\xFF\xD8\xFF\xE0 JFIF", Format::Jpeg},
        {"\xFF\xD8", std::nullopt},
        {"<svg/>", Format::Svg},
        {"\xEF\xBB\xBF \n<?xml version='1.0'?><!-- <svg> --><!DOCTYPE svg [<!ENTITY a '>'>]>\n<svg:svg xmlns:svg=''>",
         Format::Svg},
        {"<!-- <svg> --><html>", std::nullopt},
        {"<svgs/>", std::nullopt},
        {"<!-- <svg>", std::nullopt},
        {"", std::nullopt},
    };
    for (const auto& oCase : aCases)
        EXPECT_EQ(PictureLoader::FormatOf(oCase.sBytes), oCase.oFormat) << oCase.sBytes;
}

TEST(Pictures, KeepNameAndBytes) {
    test::TemporaryFolder oFolder;
    oFolder.Write("a.bmp", "<svg/>");
    const auto oPicture = New<PictureLoader>()->Load(oFolder.Path() + "/A.bmp", "A.bmp");
    EXPECT_EQ(oPicture->Name() + ": " + oPicture->Bytes(), "A.bmp: <svg/>");
    const std::string sText = oFolder.Write("b.png", "text");
    EXPECT_EQ(FailureOf([&] { New<PictureLoader>()->Load(sText, "b"); }).substr(0, 3), "13:");
    EXPECT_EQ(FailureOf([&] { New<PictureLoader>()->Load(oFolder.Path(), ""); }).substr(0, 3), "53:");
}

TEST(Ini, ValuesAreFoundAsTheyStand) {
    test::TemporaryFolder oFolder;
    const std::string sLong(300, 'x');
    oFolder.Write("qrz.ini",
                  "\xEF\xBB\xBF; comment\r\n  [ preferences ]\r\nText=a = b ; c # d  \r\n   Indented = yes\r\n"
                  "Twice=1\nTWICE=2\nNumber=12abc\nNegative= -3.7\nLarge=99999999999\nWord=abc\nNone=\n"
                  "[Other]\nText=wrong\n[]\nOnly=this\n[Preferences]\n;Text=no\nLater=\xC3\xBC\nLong=" +
                      sLong);
    oFolder.Write("old.ini", "[Preferences]\nText=M\xFCll");
    const auto oIni = New<IniReader>();
    const std::string sFile = oFolder.Path() + "\\QRZ.INI";
    const auto Text = [&](const char* sKey, std::size_t nMaximum = 255) {
        return oIni->ReadString(sFile, "Preferences", sKey, "default", nMaximum);
    };
    EXPECT_EQ(Text("TEXT"), "a = b ; c # d");
    EXPECT_EQ(Text("Text", 3), "a =");
    EXPECT_EQ(Text("Indented"), "yes");
    EXPECT_EQ(Text("Twice"), "1");
    EXPECT_EQ(Text("Later", 1), "ü");
    EXPECT_EQ(Text("Long"), sLong.substr(0, 255));
    EXPECT_EQ(Text("None"), "");
    EXPECT_EQ(Text("Only"), "default");
    EXPECT_EQ(oIni->ReadString(oFolder.Path() + "/old.ini", "Preferences", "Text", "", 255), "Müll");
    const auto Number = [&](const char* sKey) { return oIni->ReadInteger(sFile, "preferences", sKey, 7); };
    EXPECT_EQ(Number("Number"), 12);
    EXPECT_EQ(Number("Negative"), -3);
    EXPECT_EQ(Number("Large"), 2147483647);
    EXPECT_EQ(Number("Word"), 0);
    EXPECT_EQ(Number("None"), 0);
    EXPECT_EQ(Number("Absent"), 7);
    EXPECT_EQ(oIni->ReadInteger(oFolder.Path() + "/none.ini", "Preferences", "Number", 7), 7);
}

TEST(ApplicationParts, AreAllThereForAFolder) {
    test::TemporaryFolder oFolder;
    oFolder.Write("Services/Service.xdr", "");
    const ApplicationPlatform oParts(oFolder.Path() + "/Services/..", "");
    EXPECT_EQ(oParts.sFolder, oFolder.Path());
    const Platform oPlatform = oParts.MakePlatform();
    EXPECT_EQ(oPlatform.oUtilities->AppName(), oFolder.Path().substr(oFolder.Path().rfind('/') + 1));
    EXPECT_EQ(oPlatform.oFileSystem->Files(oPlatform.oUtilities->GetAppFolder("services")).size(), 1u);
    EXPECT_EQ(FailureOf([&] { (void)oPlatform.oUtilities->GetAppFolder("Other"); }),
              "76: An application has no folder \"Other\"");
    EXPECT_EQ(FailureOf([] { ApplicationPlatform("/no/such/folder"); }),
              "76: There is no application folder \"/no/such/folder\"");
}
