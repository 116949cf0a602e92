/// @file
/// Narrow text in a process whose code page is not UTF-8. The other test programs have a manifest that sets
/// UTF-8.

#include <roamscan/frame/attributes/Attr.h>
#include <roamscan/frame/bvbase/Directory.h>
#include <roamscan/frame/bvbase/File.h>
#include <roamscan/frame/bvbase/String.h>
#include <roamscan/frame/bvbase/StringVal.h>

#include <gtest/gtest.h>
#include <windows.h>

#include <filesystem>
#include <fstream>
#include <stdexcept>
#include <string>
#include <vector>

namespace
{

using Bv_1_1::Directory;
using Bv_1_1::File;
using Bv_1_1::String;
using Bv_1_1::StringVal;

/// The tests expect the code page of Western Europe.
class CodePage1252 : public testing::Test
{
protected:
    void SetUp() override
    {
        if (GetACP() != 1252) {
            GTEST_SKIP() << "the code page is " << GetACP();
        }
    }
};

} // namespace

TEST_F(CodePage1252, NarrowTextIsInTheCodePageOfTheProcess)
{
    EXPECT_STREQ(String(L"Gr\u00FC\u00DFe \u20AC").stringAnsi(),
                 "Gr\xFC\xDF"
                 "e \x80");
    EXPECT_EQ(String::fromNarrow("Gr\xFC\xDF"
                                 "e \x80")
                  .text(),
              u"Gr\u00FC\u00DFe \u20AC");
}

TEST_F(CodePage1252, WhatTheCodePageLacksIsReplacedInNarrowTextAndKeptInTheString)
{
    String const text(L"\u6563\u6B69");
    EXPECT_STREQ(text.stringAnsi(), "??");
    EXPECT_EQ(text.text(), u"\u6563\u6B69");
}

TEST_F(CodePage1252, ACodePageThatIsNamedIsUsed)
{
    EXPECT_EQ(String::adopt(StringVal::construct("\xC3\xBC", -1, 65001)).text(), u"\u00FC");
    EXPECT_EQ(String::adopt(StringVal::construct("\xE9", -1, 1251)).text(), u"\u0439");
    EXPECT_EQ(String::adopt(StringVal::construct("\xFC", -1, 0)).text(), u"\u00FC");
    EXPECT_THROW(static_cast<void>(StringVal::construct("text", -1, 999999)), std::invalid_argument);
}

// The text of a list does not go through the code page.
TEST_F(CodePage1252, TheTextOfAListKeepsEveryScript)
{
    using StringListAttr = oV::Attr<oV::StringList>;
    constexpr auto fresh = Bv_1_1::BaseNode::CreateType::Fresh;
    oV::StringList const list{L"\u6563\u6B69", L"\u20AC 5"};
    Bv_1_1::SmartPtr<StringListAttr> const attribute(new StringListAttr(fresh, nullptr));
    attribute->assignFrom(list, nullptr, nullptr);
    String text;
    attribute->getValueString(text);
    Bv_1_1::SmartPtr<StringListAttr> const copy(new StringListAttr(fresh, nullptr));
    copy->assignFromString(text, nullptr, nullptr);
    EXPECT_EQ(copy->getValue(), list);
}

TEST_F(CodePage1252, FilesAndFoldersAreFoundByNamesThatTheCodePageLacks)
{
    auto const base =
        Directory::fromPath(String::fromUtf16(std::filesystem::temp_directory_path().u16string()));
    auto const directory =
        base->appendLevel(L"\u043F\u0440\u043E\u0433\u0443\u043B\u043A\u0430 \u6563\u6B69");
    ASSERT_TRUE(directory->create());
    auto const file = File::fromString(*directory, L"\u5168\u666F.png");
    EXPECT_FALSE(file->exists());
    std::filesystem::path const path(std::u16string(file->getPath().text()));
    std::ofstream(path) << "text";
    EXPECT_TRUE(file->exists());
    EXPECT_EQ(file->getName().text(), u"\u5168\u666F");
    std::filesystem::remove_all(path.parent_path());
    EXPECT_FALSE(file->exists());
}
