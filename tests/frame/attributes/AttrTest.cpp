#include "tests/support/Attributes.h"
#include "tests/support/VirtualSlot.h"

#include <roamscan/frame/attributes/Attr.h>
#include <roamscan/frame/attributes/AttrContainer.h>
#include <roamscan/frame/attributes/CustAttr.h>
#include <roamscan/frame/attributes/NewValueInfo.h>
#include <roamscan/frame/bvbase/SmartPtr.h>
#include <roamscan/frame/bvbase/oVClass.h>

#include <gtest/gtest.h>

#include <cmath>
#include <limits>
#include <string>
#include <type_traits>

namespace
{

using namespace support::attributes;
using oV::AttrVal;
using oV::NewValueInfo;

template <typename T>
struct Sample;

template <>
struct Sample<bool>
{
    static inline bool const initial = false;
    static inline bool const other = true;
    static inline char const* text = "1";
    static inline std::wstring name = L"bool";
};
template <>
struct Sample<int>
{
    static inline int const initial = 0;
    static inline int const other = -7;
    static inline char const* text = "-7";
    static inline std::wstring name = L"int";
};
template <>
struct Sample<double>
{
    static inline double const initial = 0.0;
    static inline double const other = 0.1;
    static inline char const* text = "0.1";
    static inline std::wstring name = L"double";
};
template <>
struct Sample<String>
{
    static inline String const initial = String::EMPTY;
    static inline String const other = L"a \"b\"";
    static inline char const* text = "a \"b\"";
    static inline std::wstring name = L"String";
};
template <>
struct Sample<StringList>
{
    static inline StringList const initial;
    static inline StringList const other = {L"a,b", String::NIL, String::EMPTY};
    static inline char const* text = R"(["a,b", null, ""])";
    static inline std::wstring name = L"StringList";
};

template <typename T>
SmartPtr<Attr<T>> plain()
{
    return SmartPtr<Attr<T>>(new Attr<T>(CreateType::Fresh, nullptr));
}

template <typename T>
SmartPtr<CustAttr<T>> custom()
{
    return SmartPtr<CustAttr<T>>(new CustAttr<T>(CreateType::Fresh, nullptr));
}

template <typename T>
class AttrOf : public testing::Test
{
protected:
    T const initial = Sample<T>::initial;
    T const other = Sample<T>::other;
};

using ValueTypes = testing::Types<bool, int, double, String, StringList>;
TYPED_TEST_SUITE(AttrOf, ValueTypes, );

TYPED_TEST(AttrOf, ANewOneHasTheInitialValue)
{
    EXPECT_EQ(plain<TypeParam>()->getValue(), this->initial);
    EXPECT_EQ(custom<TypeParam>()->getValue(), this->initial);
    EXPECT_EQ(custom<TypeParam>()->getLocation(0xFFFFFFFF), nullptr);
    EXPECT_EQ(plain<TypeParam>()->flags(), 0U);
}

TYPED_TEST(AttrOf, ACustomOneReportsTheClassRecordOfThePlainOne)
{
    auto const* const record = Attr<TypeParam>::Class();
    EXPECT_EQ(plain<TypeParam>()->getClassType(), record);
    EXPECT_EQ(custom<TypeParam>()->getClassType(), record);
    EXPECT_EQ(record->name(), L"Attr<" + Sample<TypeParam>::name + L">");
    EXPECT_EQ(record->parent(), Attribute::Class());
    SmartPtr<Bv_1_1::BaseNode> const made(record->create());
    EXPECT_EQ(made->getClassType(), record);
}

TYPED_TEST(AttrOf, AssignFromStoresTheValue)
{
    auto const attribute = plain<TypeParam>();
    EXPECT_TRUE(attribute->assignFrom(this->other, nullptr, nullptr));
    EXPECT_EQ(attribute->getValue(), this->other);
}

TYPED_TEST(AttrOf, AssignSilentlyStoresTheValue)
{
    auto const attribute = plain<TypeParam>();
    attribute->assignSilently(this->other, nullptr, nullptr);
    EXPECT_EQ(attribute->getValue(), this->other);
}

TYPED_TEST(AttrOf, TheValueSurvivesARoundTripThroughText)
{
    auto const attribute = plain<TypeParam>();
    attribute->assignFrom(this->other, nullptr, nullptr);
    String text(L"something else");
    attribute->getValueString(text);
    EXPECT_STREQ(text.stringAnsi(), Sample<TypeParam>::text);
    auto const second = plain<TypeParam>();
    second->assignFromString(text, nullptr, nullptr);
    EXPECT_EQ(second->getValue(), this->other);
}

TYPED_TEST(AttrOf, AssignAttrCopiesTheValueOfTheSameType)
{
    auto const source = custom<TypeParam>();
    source->assignFrom(this->other, nullptr, nullptr);
    auto const attribute = plain<TypeParam>();
    attribute->assignAttr(*source);
    EXPECT_EQ(attribute->getValue(), this->other);
    attribute->assignAttr(*attribute);
    EXPECT_EQ(attribute->getValue(), this->other);
}

TYPED_TEST(AttrOf, EqualsAnAttributeOfTheSameTypeAndValueOnly)
{
    auto const first = plain<TypeParam>();
    auto const second = custom<TypeParam>();
    EXPECT_TRUE(first->equalsAttr(*second));
    EXPECT_FALSE(first->differsAttr(*second));
    second->assignFrom(this->other, nullptr, nullptr);
    EXPECT_FALSE(first->equalsAttr(*second));
    EXPECT_TRUE(first->differsAttr(*second));
    Attribute const& ofAnotherType =
        std::is_same_v<TypeParam, int>
            ? static_cast<Attribute const&>(*new Attr<bool>(CreateType::Fresh, nullptr))
            : static_cast<Attribute const&>(*new Attr<int>(CreateType::Fresh, nullptr));
    SmartPtr<Attribute const> const owner(&ofAnotherType);
    EXPECT_FALSE(first->equalsAttr(ofAnotherType));
    EXPECT_TRUE(first->differsAttr(ofAnotherType));
}

TYPED_TEST(AttrOf, DuplicatesWithTheClassThatPlainAsksFor)
{
    auto const check = [this](Attribute const& source) {
        SmartPtr<Attribute> const asPlain(source.duplicateAttr(CreateType::Fresh, true));
        SmartPtr<Attribute> const asCustom(source.duplicateAttr(CreateType::Fresh, false));
        EXPECT_EQ(asPlain->referenceCount(), 1U);
        EXPECT_EQ(dynamic_cast<CustAttr<TypeParam>*>(asPlain.get()), nullptr);
        EXPECT_NE(dynamic_cast<CustAttr<TypeParam>*>(asCustom.get()), nullptr);
        EXPECT_EQ(static_cast<Attr<TypeParam>&>(*asPlain).getValue(), this->other);
        EXPECT_EQ(static_cast<Attr<TypeParam>&>(*asCustom).getValue(), this->other);
    };
    auto const asPlain = plain<TypeParam>();
    auto const asCustom = custom<TypeParam>();
    asPlain->assignFrom(this->other, nullptr, nullptr);
    asCustom->assignFrom(this->other, nullptr, nullptr);
    check(*asPlain);
    check(*asCustom);
}

TYPED_TEST(AttrOf, DuplicatesWithoutASourceStartAfresh)
{
    auto const source = custom<TypeParam>();
    SmartPtr<AttrContainer> const container(new AttrContainer(CreateType::Fresh, nullptr));
    source->assignFrom(this->other, nullptr, nullptr);
    source->setFlag(Attribute::weakValueFlag, true);
    source->setLocation(container.get());
    SmartPtr<Attribute> const copy(source->duplicateAttr(CreateType::NoSource, false));
    EXPECT_EQ(static_cast<Attr<TypeParam>&>(*copy).getValue(), this->initial);
    EXPECT_EQ(copy->getLocation(0), nullptr);
    EXPECT_EQ(copy->flags(), 0U);
}

TYPED_TEST(AttrOf, ADuplicateHasTheFlagsAndTheLocationOfItsSource)
{
    auto const source = custom<TypeParam>();
    SmartPtr<AttrContainer> const container(new AttrContainer(CreateType::Fresh, nullptr));
    source->setFlag(Attribute::weakValueFlag, true);
    source->setLocation(container.get());
    SmartPtr<Attribute> const copy(source->duplicateAttr(CreateType::Fresh, false));
    EXPECT_EQ(copy->getLocation(0), container.get());
    EXPECT_EQ(copy->flags(), 8U);
    SmartPtr<Attribute> const asPlain(source->duplicateAttr(CreateType::Fresh, true));
    EXPECT_EQ(asPlain->getLocation(0), nullptr);
    EXPECT_EQ(asPlain->flags(), 8U);
}

TYPED_TEST(AttrOf, CopyFromTakesTheValueOfAnyAttribute)
{
    auto const source = plain<TypeParam>();
    source->assignFrom(this->other, nullptr, nullptr);
    auto const attribute = plain<TypeParam>();
    EXPECT_TRUE(attribute->copyFrom(source.get()));
    EXPECT_EQ(attribute->getValue(), this->other);
    EXPECT_FALSE(attribute->copyFrom(nullptr));
    SmartPtr<AttrContainer> const noAttribute(new AttrContainer(CreateType::Fresh, nullptr));
    EXPECT_FALSE(attribute->copyFrom(noAttribute.get()));
}

TYPED_TEST(AttrOf, ACustomOneStoresItsLocationAndAPlainOneDoesNot)
{
    SmartPtr<AttrContainer> const container(new AttrContainer(CreateType::Fresh, nullptr));
    auto const asPlain = plain<TypeParam>();
    EXPECT_FALSE(asPlain->setLocation(container.get()));
    EXPECT_EQ(asPlain->getLocation(0xFFFFFFFF), nullptr);
    auto const asCustom = custom<TypeParam>();
    EXPECT_TRUE(asCustom->setLocation(container.get()));
    EXPECT_EQ(asCustom->getLocation(0xFFFFFFFF), container.get());
    EXPECT_EQ(asCustom->getLocation(1), container.get());
    EXPECT_TRUE(asCustom->setLocation(nullptr));
    EXPECT_EQ(asCustom->getLocation(0xFFFFFFFF), nullptr);
}

TYPED_TEST(AttrOf, TheHolderCopiesItselfAndHasNoLocation)
{
    AttrVal<TypeParam> holder(this->other);
    SmartPtr<AttrContainer> const container(new AttrContainer(CreateType::Fresh, nullptr));
    std::unique_ptr<AttrVal<TypeParam>> const copy(holder.copy());
    EXPECT_EQ(copy->value, this->other);
    EXPECT_FALSE(holder.setLocation(container.get()));
    EXPECT_EQ(holder.lookUpLocation(0xFFFFFFFF), nullptr);
}

TYPED_TEST(AttrOf, TheProposedValueTravelsInARecordOfItsType)
{
    SmartPtr<NewValueInfo<TypeParam>> const info(new NewValueInfo<TypeParam>(this->other));
    EXPECT_EQ(info->newValue(), this->other);
    EXPECT_EQ(info->getClassType(), NewValueInfo<TypeParam>::Class());
    EXPECT_EQ(info->getClassType()->name(), L"NewValueInfo<" + Sample<TypeParam>::name + L">");
    EXPECT_EQ(info->getClassType()->parent(), Bv_1_1::ObserverInfo::Class());
}

TYPED_TEST(AttrOf, OrdersItsVirtualOperations)
{
    if (!support::virtualSlotsAreKnown) {
        GTEST_SKIP() << "The places of virtual operations are not known here";
    }
    using A = Attr<TypeParam>;
    EXPECT_EQ(support::virtualSlot(&A::getClassType), 0U); // the destructor takes 1 and 2
    EXPECT_EQ(support::virtualSlot(&A::readFrom), 14U);
    EXPECT_EQ(support::virtualSlot(&A::writeTo), 15U);
    EXPECT_EQ(support::virtualSlot(&A::lookupObject), 17U);
    EXPECT_EQ(support::virtualSlot(&A::duplicateAttr), 18U);
    EXPECT_EQ(support::virtualSlot(&A::assignAttr), 19U);
    EXPECT_EQ(support::virtualSlot(&A::equalsAttr), 20U);
    EXPECT_EQ(support::virtualSlot(&A::differsAttr), 21U);
    EXPECT_EQ(support::virtualSlot(&A::touch), 22U);
    EXPECT_EQ(support::virtualSlot(&A::assignFromString), 23U);
    EXPECT_EQ(support::virtualSlot(&A::getValueString), 24U);
    EXPECT_EQ(support::virtualSlot(&A::readValueFrom), 25U);
    EXPECT_EQ(support::virtualSlot(&A::getLocation), 26U);
    EXPECT_EQ(support::virtualSlot(&A::setLocation), 27U);
    EXPECT_EQ(support::virtualSlot(&A::assignFrom), 28U);
    EXPECT_EQ(support::virtualSlot(&A::assignSilently),
              29U); // 29 operations, one more slot for the destructor
    EXPECT_EQ(support::virtualSlot(&AttrVal<TypeParam>::copy), 2U);
    EXPECT_EQ(support::virtualSlot(&AttrVal<TypeParam>::lookUpLocation), 3U);
    EXPECT_EQ(support::virtualSlot(&AttrVal<TypeParam>::setLocation), 4U);
    EXPECT_EQ(support::virtualSlot(&NewValueInfo<TypeParam>::getClassType), 0U);
}

TYPED_TEST(AttrOf, TheFieldsAreThoseOfTheBinaryInterface)
{
    EXPECT_EQ(sizeof(Attr<TypeParam>), sizeof(Attribute) + sizeof(void*));
    EXPECT_EQ(sizeof(CustAttr<TypeParam>), sizeof(Attr<TypeParam>) + sizeof(void*));
}

// Between types

TEST(Attr, AssignAttrFromAnotherTypeConvertsThroughText)
{
    auto const number = plain<int>();
    auto const text = plain<String>();
    auto const fraction = plain<double>();
    auto const flag = plain<bool>();
    text->assignFrom(L"42", nullptr, nullptr);
    number->assignAttr(*text);
    EXPECT_EQ(number->getValue(), 42);
    fraction->assignAttr(*number);
    EXPECT_EQ(fraction->getValue(), 42.0);
    flag->assignAttr(*fraction); // "42" is no bool
    EXPECT_FALSE(flag->getValue());
    fraction->assignFrom(0.25, nullptr, nullptr);
    text->assignAttr(*fraction);
    EXPECT_EQ(text->getValue(), L"0.25");
    number->assignAttr(*text); // "0.25" is no int
    EXPECT_EQ(number->getValue(), 42);
}

TEST(Attr, TextThatIsNotOfTheTypeLeavesTheValue)
{
    auto const number = plain<int>();
    number->assignFrom(5, nullptr, nullptr);
    number->assignFromString(L"five", nullptr, nullptr);
    EXPECT_EQ(number->getValue(), 5);
    auto const list = plain<StringList>();
    list->assignFrom({L"a"}, nullptr, nullptr);
    for (wchar_t const* const damaged : {L"", L"a", L"[\"b\"", L"[\"b\"] [\"c\"]", L"[1]"}) {
        list->assignFromString(damaged, nullptr, nullptr);
        EXPECT_EQ(list->getValue(), StringList{L"a"});
    }
}

TEST(Attr, NaNEqualsNothing)
{
    auto const first = plain<double>();
    auto const second = plain<double>();
    for (auto const& attribute : {first, second}) {
        attribute->assignFrom(std::numeric_limits<double>::quiet_NaN(), nullptr, nullptr);
    }
    EXPECT_FALSE(first->equalsAttr(*second));
    EXPECT_TRUE(first->differsAttr(*second));
    second->assignFrom(-0.0, nullptr, nullptr);
    first->assignFrom(0.0, nullptr, nullptr);
    EXPECT_TRUE(first->equalsAttr(*second));
}

TEST(Attr, ANullStringIsAValueOfItsOwn)
{
    auto const attribute = plain<String>();
    EXPECT_FALSE(attribute->getValue().isNil());
    attribute->assignFrom(String::NIL, nullptr, nullptr);
    EXPECT_TRUE(attribute->getValue().isNil());
    EXPECT_TRUE(attribute->differsAttr(*plain<String>()));
}

TEST(Attr, KeepsAValueOfItsOwn)
{
    auto const attribute = plain<String>();
    String value(L"first");
    attribute->assignFrom(value, nullptr, nullptr);
    value << L" and more";
    EXPECT_EQ(attribute->getValue(), L"first");
}

} // namespace
