#include "adapters/files/FileSystem.h"
#include "adapters/files/PictureLoader.h"
#include "adapters/ini/IniReader.h"
#include "adapters/platform/ApplicationPlatform.h"
#include "tests/support/Failing.h"
#include "tests/support/TemporaryFolder.h"

#include <gtest/gtest.h>

using namespace corvane;
using corvane::test::FailureOf;
using namespace std::string_literals;

TEST(Files, AFolderListsInOrderOfNamesWithoutRegardToCase) {
    test::TemporaryFolder folder;
    for (const char* name : {"b.xml", "A.XML", "c.xml.bak", "a.xml", "Ä.xml", "C.xml", "sub/d.xml"})
        folder.Write(name, "");
    const auto files = New<FileSystem>();
    std::string names;
    for (const std::string& path : files->Files(folder.Path())) {
        EXPECT_EQ(path, files->Join(folder.Path(), files->FileName(path)));
        names += files->FileName(path) + "|" + files->Extension(path) + " ";
    }
    EXPECT_EQ(names, "A.XML|XML a.xml|xml b.xml|xml C.xml|xml c.xml.bak|bak Ä.xml|xml ");
    EXPECT_EQ(FailureOf([&] { (void)files->Files(folder.Path() + "/none"); }),
              "76: The folder \"" + folder.Path() + "/none\" doesn't exist");
    EXPECT_EQ(FailureOf([&] { (void)files->Files(folder.Path() + "/b.xml"); }).substr(0, 3), "76:");
}

TEST(Files, PathsAreTakenApartAndPutTogether) {
    const auto files = New<FileSystem>();
    EXPECT_EQ(files->Join("/a", "b"), "/a/b");
    EXPECT_EQ(files->Join("/a/", "\\b"), "/a/b");
    EXPECT_EQ(files->Join("/a", ""), "/a");
    EXPECT_EQ(files->FileName("/a.b/c"), "c");
    EXPECT_EQ(files->FileName("x\\y.png"), "y.png");
    EXPECT_EQ(files->Extension("/a.b/c"), "");
}

TEST(Files, ANameThatIsNotThereAsWrittenIsFoundWithoutRegardToCase) {
    test::TemporaryFolder folder;
    folder.Write("Sub/Open.BMP", "capital");
    folder.Write("Sub/both", "small\0\xFF"s);
    folder.Write("Sub/BOTH", "large");
    const auto files = New<FileSystem>();
    const auto Read = [&](const std::string& name) { return files->ReadAll(folder.Path() + "/" + name); };
    EXPECT_EQ(Read("sub\\open.bmp"), "capital");
    EXPECT_EQ(Read("SUB//OPEN.bmp"), "capital");
    EXPECT_EQ(Read("Sub/both"), "small\0\xFF"s);
    EXPECT_EQ(Read("Sub/BOTH"), "large");
    EXPECT_EQ(FailureOf([&] { (void)Read("Sub/none"); }),
              "53: The file \"" + folder.Path() + "/Sub/none\" doesn't exist");
    EXPECT_EQ(FailureOf([&] { (void)Read("sub"); }), "53: The file \"" + folder.Path() + "/sub\" is a folder");
}

TEST(Pictures, AreKnownByASoundHeader) {
    const std::string bmp =
        "BM\x46\0\0\0\0\0\0\0\x36\0\0\0\x28\0\0\0\2\0\0\0\2\0\0\0\1\0\x18\0\0\0\0\0"s + std::string(70 - 34, '\0');
    const std::string ico = "\0\0\1\0\1\0\2\2\0\0\1\0\x18\0\4\0\0\0\x16\0\0\0data"s;
    const std::string png = "\x89PNG\r\n\x1A\n\0\0\0\x0DIHDR\0\0\0\1\0\0\0\1\x08\6\0\0\0crc!"s;
    const auto With = [](std::string bytes, std::size_t i, char c) {
        bytes.at(i) = c;
        return bytes;
    };
    using Format = Picture::Format;
    struct {
        std::string bytes;
        std::optional<Format> format;
    } const cases[] = {
        {png, Format::Png},
        {With(png, 19, '\0'), std::nullopt}, // no width
        {png.substr(0, 20), std::nullopt},
        {bmp, Format::Bmp},
        {With(bmp, 14, 41), std::nullopt}, // no such header
        {With(bmp, 28, 5), std::nullopt},  // bits of a pixel
        {With(bmp, 11, 1), std::nullopt},  // pixels behind the end
        {"BM and some more text, as long as a header would be", std::nullopt},
        {ico, Format::Ico},
        {With(ico, 2, 2), std::nullopt},     // a mouse pointer
        {With(ico, 4, 0), std::nullopt},     // without pictures
        {With(ico, 14, 5), std::nullopt},    // the picture ends behind the file
        {With(ico, 18, '\5'), std::nullopt}, // and begins within the header
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
    for (const auto& testCase : cases)
        EXPECT_EQ(PictureLoader::FormatOf(testCase.bytes), testCase.format) << testCase.bytes;
}

TEST(Pictures, KeepNameAndBytes) {
    test::TemporaryFolder folder;
    folder.Write("a.bmp", "<svg/>");
    const auto picture = New<PictureLoader>()->Load(folder.Path() + "/A.bmp", "A.bmp");
    EXPECT_EQ(picture->Name() + ": " + picture->Bytes(), "A.bmp: <svg/>");
    const std::string text = folder.Write("b.png", "text");
    EXPECT_EQ(FailureOf([&] { New<PictureLoader>()->Load(text, "b"); }).substr(0, 3), "13:");
    EXPECT_EQ(FailureOf([&] { New<PictureLoader>()->Load(folder.Path(), ""); }).substr(0, 3), "53:");
}

TEST(Ini, ValuesAreFoundAsTheyStand) {
    test::TemporaryFolder folder;
    const std::string longText(300, 'x');
    folder.Write(
        "qrz.ini",
        "\xEF\xBB\xBF; comment\r\n  [ preferences ]\r\nText=a = b ; c # d  \r\n   Indented = yes\r\n"
        "Twice=1\nTWICE=2\nNumber=12abc\nNegative= -3.7\nLarge=99999999999\nWord=abc\nNone=\n"
        "Colon: 5\nAlso: x = 6\n[Other]\nText=wrong\n[]\nOnly=this\n[Preferences]\n;Text=no\nLater=\xC3\xBC\nLong=" +
            longText);
    folder.Write("old.ini", "[Preferences]\nText=M\xFCll");
    const auto ini = New<IniReader>();
    const std::string file = folder.Path() + "\\QRZ.INI";
    const auto Text = [&](const char* key, std::size_t maximum = 255) {
        return ini->ReadString(file, "Preferences", key, "default", maximum);
    };
    EXPECT_EQ(Text("TEXT"), "a = b ; c # d");
    EXPECT_EQ(Text("Text", 3), "a =");
    EXPECT_EQ(Text("Indented"), "yes");
    EXPECT_EQ(Text("Twice"), "1");
    EXPECT_EQ(Text("Later", 1), "ü");
    EXPECT_EQ(Text("Long"), longText.substr(0, 255));
    EXPECT_EQ(Text("None"), "");
    EXPECT_EQ(Text("Only"), "default");
    EXPECT_EQ(Text("Colon") + Text("Also"), "defaultdefault"); // a colon makes no key
    EXPECT_EQ(ini->ReadString(folder.Path() + "/old.ini", "Preferences", "Text", "", 255), "Müll");
    const auto Number = [&](const char* key) { return ini->ReadInteger(file, "preferences", key, 7); };
    EXPECT_EQ(Number("Number"), 12);
    EXPECT_EQ(Number("Negative"), -3);
    EXPECT_EQ(Number("Large"), 2147483647);
    EXPECT_EQ(Number("Word"), 0);
    EXPECT_EQ(Number("None"), 0);
    EXPECT_EQ(Number("Absent"), 7);
    EXPECT_EQ(ini->ReadInteger(folder.Path() + "/none.ini", "Preferences", "Number", 7), 7);
}

TEST(ApplicationParts, AreAllThereForAFolder) {
    test::TemporaryFolder folder;
    folder.Write("Services/Service.xdr", "");
    const ApplicationPlatform parts(folder.Path() + "/Services/..", "");
    EXPECT_EQ(parts.folder, folder.Path());
    const Platform platform = parts.MakePlatform();
    EXPECT_EQ(platform.oUtilities->AppName(), folder.Path().substr(folder.Path().rfind('/') + 1));
    EXPECT_EQ(platform.oFileSystem->Files(platform.oUtilities->GetAppFolder("services")).size(), 1u);
    EXPECT_EQ(FailureOf([&] { (void)platform.oUtilities->GetAppFolder("Other"); }),
              "76: An application has no folder \"Other\"");
    EXPECT_EQ(FailureOf([] { ApplicationPlatform("/no/such/folder"); }),
              "76: There is no application folder \"/no/such/folder\"");
}
