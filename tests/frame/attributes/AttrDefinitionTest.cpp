#include "tests/support/Attributes.h"

#include <roamscan/frame/attributes/Attr.h>
#include <roamscan/frame/attributes/AttrContainer.h>
#include <roamscan/frame/attributes/AttrDefinition.h>
#include <roamscan/frame/attributes/CustAttr.h>
#include <roamscan/frame/bvbase/SmartPtr.h>
#include <roamscan/frame/bvbase/oVClass.h>

#include <gtest/gtest.h>

#include <array>
#include <cstddef>

namespace
{

using namespace support::attributes;

AttrDefinition row(AttrType type, std::uint32_t flags)
{
    return {0, L"Name", type, flags};
}

TEST(AttrType, HasItsCodes)
{
    EXPECT_EQ(static_cast<unsigned int>(AttrType::Strings), 21U);
    EXPECT_EQ(static_cast<unsigned int>(AttrType::End), 54U);
}

TEST(AttrType, ATypeKeyIsTheNameOfTheClassRecord)
{
    struct Expected
    {
        Bv_1_1::oVClass const* record;
        AttrType type;
    };
    for (Expected const& expected : {Expected{Attr<bool>::Class(), AttrType::Bool},
                                     Expected{Attr<int>::Class(), AttrType::Int},
                                     Expected{Attr<double>::Class(), AttrType::Double},
                                     Expected{Attr<String>::Class(), AttrType::String},
                                     Expected{Attr<oV::StringList>::Class(), AttrType::Strings}})
    {
        EXPECT_EQ(AttrContainer::getTypeFromStringKey(expected.record->name()), expected.type);
        SmartPtr<Attribute> const made(row(expected.type, 1).createAttr(CreateType::Fresh, nullptr, nullptr));
        ASSERT_TRUE(made);
        EXPECT_EQ(made->getClassType(), expected.record);
    }
}

TEST(AttrType, AnUnknownTypeKeyGivesTheEndAndNoAttribute)
{
    for (String const& key :
         {String(L"Attr<float>"), String(L""), String::NIL, String(L"attr<int>"), String(L"Attribute")})
    {
        EXPECT_EQ(AttrContainer::getTypeFromStringKey(key), AttrType::End);
    }
    EXPECT_EQ(row(AttrType::End, 1).createAttr(CreateType::Fresh, nullptr, nullptr), nullptr);
    EXPECT_EQ(row(AttrType{0}, 1).createAttr(CreateType::Fresh, nullptr, nullptr), nullptr);
    EXPECT_EQ(row(AttrType{20}, 18).createAttr(CreateType::Fresh, nullptr, nullptr), nullptr);
}

TEST(AttrDefinition, TheFlag1MakesACustomAttribute)
{
    SmartPtr<Attribute> const custom(row(AttrType::Int, 1).createAttr(CreateType::Fresh, nullptr, nullptr));
    SmartPtr<Attribute> const plain(row(AttrType::Int, 18).createAttr(CreateType::Fresh, nullptr, nullptr));
    EXPECT_NE(dynamic_cast<CustAttr<int>*>(custom.get()), nullptr);
    EXPECT_EQ(dynamic_cast<CustAttr<int>*>(plain.get()), nullptr);
    EXPECT_NE(dynamic_cast<Attr<int>*>(plain.get()), nullptr);
    EXPECT_EQ(plain->flags(), 0U);
}

TEST(AttrDefinition, CopiesTheSourceUnlessTheTypeSaysNotTo)
{
    SmartPtr<Attr<String>> const source(new Attr<String>(CreateType::Fresh, nullptr));
    source->assignFrom(L"7", nullptr, nullptr);
    source->setFlag(Attribute::weakValueFlag, true);
    SmartPtr<Attribute> const same(
        row(AttrType::String, 1).createAttr(CreateType::Fresh, source.get(), nullptr));
    EXPECT_EQ(static_cast<Attr<String>&>(*same).getValue(), L"7");
    EXPECT_EQ(same->flags(), 8U);
    SmartPtr<Attribute> const other(
        row(AttrType::Int, 1).createAttr(CreateType::Fresh, source.get(), nullptr));
    EXPECT_EQ(static_cast<Attr<int>&>(*other).getValue(), 7);
    SmartPtr<Attribute> const fresh(
        row(AttrType::Int, 1).createAttr(CreateType::NoSource, source.get(), nullptr));
    EXPECT_EQ(static_cast<Attr<int>&>(*fresh).getValue(), 0);
    EXPECT_EQ(fresh->flags(), 0U);
}

TEST(AttrDefinition, MakesAnAttributeAtAPlace)
{
    alignas(std::max_align_t) std::array<std::byte, sizeof(CustAttr<double>)> place{};
    SmartPtr<Attribute> const made(
        row(AttrType::Double, 1).createAttr(CreateType::Fresh, nullptr, place.data()));
    EXPECT_EQ(static_cast<void*>(made.get()), place.data());
    EXPECT_TRUE(made->isInBlock());
}

} // namespace
