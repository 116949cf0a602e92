#include "tests/support/Links.h"
#include "tests/support/NarrowText.h"
#include "tests/support/TemporaryFolder.h"

#include <roamscan/frame/bvbase/Directory.h>
#include <roamscan/frame/bvbase/File.h>
#include <roamscan/frame/bvbase/oVClass.h>

#include <gtest/gtest.h>

#include <filesystem>
#include <string>

namespace
{

using Bv_1_1::Directory;
using Bv_1_1::File;
using Bv_1_1::SmartPtr;
using Bv_1_1::String;
using support::narrow;

String pathString(std::filesystem::path const& path)
{
    return String::fromUtf16(path.u16string());
}

/// A path with the separators that the platform inserts.
std::string joined(char const* path)
{
    return std::filesystem::path(path).make_preferred().string();
}

struct Parts
{
    char const* path;
    char const* directory;
    char const* name;
    char const* extension;
};

class FileParts : public testing::TestWithParam<Parts>
{};

TEST_P(FileParts, ComeFromThePath)
{
    Parts const& expected = GetParam();
    auto const file = File::fromPath(String::fromNarrow(expected.path));
    EXPECT_EQ(narrow(file->getPath()), expected.path);
    EXPECT_EQ(narrow(file->getDirectory()->getPath()), expected.directory);
    EXPECT_EQ(narrow(file->getName()), expected.name);
    EXPECT_EQ(narrow(file->getExtension()), expected.extension);
}

INSTANTIATE_TEST_SUITE_P(Paths,
                         FileParts,
                         testing::Values(Parts{"walk/pano.png", "walk", "pano", "png"},
                                         Parts{"/data/walk/pano.png", "/data/walk", "pano", "png"},
                                         Parts{"pano.png", "", "pano", "png"},
                                         Parts{"/pano.png", "/", "pano", "png"},
                                         Parts{"a.b/c.d.PNG", "a.b", "c.d", "PNG"},
                                         Parts{"walk/pano", "walk", "pano", ""},
                                         Parts{"walk/pano.", "walk", "pano", ""},
                                         Parts{"walk/.png", "walk", ".png", ""},
                                         Parts{"my walk/the pano.png", "my walk", "the pano", "png"},
                                         Parts{"прогулка/панорама.png", "прогулка", "панорама", "png"},
                                         Parts{"散歩/全景.jpg", "散歩", "全景", "jpg"},
                                         Parts{"walk/", "walk", "", ""},
                                         Parts{"", "", "", ""}));

#if defined(_WIN32)
INSTANTIATE_TEST_SUITE_P(
    WindowsPaths,
    FileParts,
    testing::Values(Parts{R"(C:\data\walk\pano.png)", R"(C:\data\walk)", "pano", "png"},
                    Parts{R"(C:/data/walk\pano.png)", R"(C:/data/walk)", "pano", "png"},
                    Parts{R"(C:\pano.png)", R"(C:\)", "pano", "png"},
                    Parts{R"(C:pano.png)", "C:", "pano", "png"},
                    Parts{R"(\\server\share\walk\pano.png)", R"(\\server\share\walk)", "pano", "png"},
                    Parts{R"(\\?\C:\walk\pano.png)", R"(\\?\C:\walk)", "pano", "png"}));

TEST(Directory, AppendLevelOfAPathWithADriveLetterStaysInside)
{
    EXPECT_EQ(narrow(Directory::fromPath(L"walk")->appendLevel(L"C:\\pano")->getPath()), "walk\\pano");
}
#endif

TEST(File, OfAnEmptyPathHasNoParts)
{
    auto const file = File::fromPath(String::NIL);
    EXPECT_EQ(narrow(file->getName()), "");
    EXPECT_EQ(narrow(file->getExtension()), "");
    EXPECT_FALSE(file->exists());
}

TEST(File, FromANameIsInTheDirectory)
{
    auto const directory = Directory::fromPath(L"walk");
    EXPECT_EQ(narrow(File::fromString(*directory, L"0.png")->getPath()), joined("walk/0.png"));
    EXPECT_EQ(narrow(File::fromString(*directory, L"0.png")->getDirectory()->getPath()), "walk");
}

TEST(File, FromANameIsInTheDirectoryAlsoIfTheNameIsAnAbsolutePath)
{
    auto const directory = Directory::fromPath(L"walk");
    EXPECT_EQ(narrow(File::fromString(*directory, L"/0.png")->getPath()), joined("walk/0.png"));
}

TEST(File, FromANameInTheCurrentDirectoryHasThatNameAsPath)
{
    EXPECT_EQ(narrow(File::fromString(*Directory::fromPath(L""), L"0.png")->getPath()), "0.png");
}

TEST(File, ExistsIfThereIsAFile)
{
    support::TemporaryFolder const folder;
    auto const file = File::fromPath(pathString(folder.file("Größe 1.txt")));
    EXPECT_FALSE(file->exists());
    folder.write("Größe 1.txt", "text");
    EXPECT_TRUE(file->exists());
    std::filesystem::remove(folder.file("Größe 1.txt"));
    EXPECT_FALSE(file->exists());
}

TEST(File, ADirectoryDoesNotExistAsAFile)
{
    support::TemporaryFolder const folder;
    std::filesystem::create_directory(folder.file("0.png"));
    EXPECT_FALSE(File::fromPath(pathString(folder.file("0.png")))->exists());
}

TEST(File, ALinkToAFileExistsAndABrokenLinkDoesNot)
{
    support::TemporaryFolder const folder;
    folder.write("file", "text");
    if (!support::makeLink(folder.file("file"), folder.file("whole")) ||
        !support::makeLink(folder.file("missing"), folder.file("broken")))
    {
        GTEST_SKIP() << "no links can be made";
    }
    EXPECT_TRUE(File::fromPath(pathString(folder.file("whole")))->exists());
    EXPECT_FALSE(File::fromPath(pathString(folder.file("broken")))->exists());
}

TEST(File, AFileThatCannotBeAccessedDoesNotExist)
{
    support::TemporaryFolder const folder;
    static_cast<void>(support::makeLink(folder.file("loop"), folder.file("loop")));
    EXPECT_FALSE(File::fromPath(pathString(folder.file("loop")))->exists());
    EXPECT_FALSE(File::fromPath(pathString(folder.file(std::string(5000, 'x'))))->exists());
}

TEST(File, APathThroughAFileDoesNotExist)
{
    support::TemporaryFolder const folder;
    folder.write("file", "text");
    EXPECT_FALSE(File::fromPath(pathString(folder.file("file") / "0.png"))->exists());
}

TEST(File, AnUnpairedSurrogateInAPathIsReplaced)
{
    char16_t const units[] = {u'a', 0xD800, u'.', u'p', 0};
    auto const file = File::fromPath(String::fromUtf16(units));
    EXPECT_EQ(narrow(file->getName()), "a\xEF\xBF\xBD");
    EXPECT_FALSE(file->exists());
}

TEST(File, HasItsClassRecord)
{
    SmartPtr<File> const file = File::fromPath(L"a");
    EXPECT_EQ(file->getClassType(), File::Class());
    EXPECT_EQ(std::wstring(File::Class()->name()), L"File");
    EXPECT_TRUE(File::Class()->isDerivedFrom(Bv_1_1::BaseNode::Class()));
    EXPECT_EQ(Directory::fromPath(L"a")->getClassType(), Directory::Class());
    EXPECT_EQ(std::wstring(Directory::Class()->name()), L"Directory");
}

TEST(File, IsDestroyedWithItsLastReference)
{
    SmartPtr<File> const file = File::fromPath(L"a");
    EXPECT_EQ(file->referenceCount(), 1U);
    SmartPtr<File const> const second = file;
    EXPECT_EQ(file->referenceCount(), 2U);
}

TEST(Directory, CreateMakesTheDirectoryAndItsParents)
{
    support::TemporaryFolder const folder;
    auto const directory = Directory::fromPath(pathString(folder.file("a b") / "в"));
    EXPECT_TRUE(directory->create());
    EXPECT_TRUE(std::filesystem::is_directory(folder.file("a b") / "в"));
}

TEST(Directory, CreateOfAnExistingDirectorySucceeds)
{
    support::TemporaryFolder const folder;
    folder.write("kept", "text");
    EXPECT_TRUE(Directory::fromPath(pathString(folder.path()))->create());
    EXPECT_EQ(folder.read("kept"), "text");
}

TEST(Directory, CreateOfTheCurrentDirectorySucceeds)
{
    EXPECT_TRUE(Directory::fromPath(L"")->create());
    EXPECT_TRUE(Directory::fromPath(L".")->create());
}

TEST(Directory, CreateFailsIfAFileHasTheName)
{
    support::TemporaryFolder const folder;
    folder.write("file", "text");
    EXPECT_FALSE(Directory::fromPath(pathString(folder.file("file")))->create());
    EXPECT_FALSE(Directory::fromPath(pathString(folder.file("file") / "below"))->create());
    EXPECT_EQ(folder.read("file"), "text");
}

TEST(Directory, AppendLevelGivesTheSubDirectory)
{
    auto const directory = Directory::fromPath(L"walk");
    EXPECT_EQ(narrow(directory->appendLevel(L"pano")->getPath()), joined("walk/pano"));
    EXPECT_EQ(narrow(directory->appendLevel(L"pano")->appendLevel(L"a.b")->getPath()),
              joined("walk/pano/a.b"));
    EXPECT_EQ(narrow(directory->getPath()), "walk");
}

TEST(Directory, AppendLevelOfAnAbsolutePathStaysInside)
{
    EXPECT_EQ(narrow(Directory::fromPath(L"walk")->appendLevel(L"/pano")->getPath()), joined("walk/pano"));
}

TEST(Directory, AppendLevelOfTwoDotsIsTheParent)
{
    EXPECT_EQ(narrow(Directory::fromPath(L"walk")->appendLevel(L"..")->getPath()), joined("walk/.."));
}

TEST(Directory, AppendLevelOfAnEmptyNameIsTheDirectoryItself)
{
    EXPECT_EQ(narrow(Directory::fromPath(L"walk")->appendLevel(String::EMPTY)->getPath()), "walk");
    EXPECT_EQ(narrow(Directory::fromPath(L"walk")->appendLevel(String::NIL)->getPath()), "walk");
}

} // namespace
