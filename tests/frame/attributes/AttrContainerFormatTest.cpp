#include "tests/support/Attributes.h"

#include <roamscan/frame/attributes/Attr.h>
#include <roamscan/frame/attributes/AttrContainer.h>
#include <roamscan/frame/attributes/CustAttr.h>
#include <roamscan/frame/bvbase/SmartPtr.h>
#include <roamscan/frame/bvbase/oVClass.h>
#include <roamscan/frame/formats/ReadContext.h>
#include <roamscan/frame/formats/ReadFromScope.h>
#include <roamscan/frame/formats/StatusCode.h>
#include <roamscan/frame/formats/WriteContext.h>

#include <gtest/gtest.h>

#include <array>
#include <random>
#include <sstream>
#include <string>
#include <vector>

namespace
{

using namespace support::attributes;
using oV::ReadContext;
using oV::WriteContext;
using Format = oV::ModelFormat::Format;
namespace StatusCode = oV::StatusCode;

std::array<AttrDefinition, 2> const widthAndName = {
    {{1, L"Names", AttrType::Strings, 18}, {2, String::NIL, AttrType::End, 1}}};

SmartPtr<AttrContainer> initialised()
{
    auto container = initialisedContainer();
    container->createAttributes(widthAndName.data(), CreateType::Fresh, nullptr);
    return container;
}

SmartPtr<AttrContainer> sample()
{
    auto container = initialised();
    container->setName(L"Box", 0);
    static_cast<Attr<StringList>*>(container->getAttribute(1))->assignFrom({L"A"}, nullptr, nullptr);
    add(*container, L"ShowWindow", true);
    add(*container, L"a \"b\"}", -7);
    add(*container, L"", 0.1);
    add(*container, L"Text", String(L"x\ny"));
    return container;
}

std::string written(AttrContainer const& container, Format format = Format::Keyed, bool writeDefaults = true)
{
    std::ostringstream stream;
    WriteContext context(format, writeDefaults);
    EXPECT_EQ(container.writeTo(&stream, &context), 0);
    return stream.str();
}

int readInto(AttrContainer& container, std::string const& text, Format format = Format::Keyed)
{
    std::istringstream stream(text);
    ReadContext context(format);
    return container.readFrom(&stream, &context);
}

/// An attribute that can neither be read nor written.
class Failing : public CustAttr<int>
{
public:
    Failing() : CustAttr<int>(CreateType::Fresh, nullptr) {}
    int readFrom(std::istream*, oV::ReadContextBase*) override { return 99; }
    int writeTo(std::ostream*, oV::WriteContextBase*) const override { return 99; }
};

std::string const sampleText = R"(field "Name" "Attr<String>" {
    value "Box";
}
field "Names" "Attr<StringList>" {
    value ["A"];
}
attribute "ShowWindow" "Attr<bool>" {
    value true;
}
attribute "a \"b\"}" "Attr<int>" {
    value -7;
}
attribute "" "Attr<double>" {
    value 0.1;
}
attribute "Text" "Attr<String>" {
    value "x\ny";
}
)";

std::string const sampleBareText = R"(false
"Name"
"Attr<String>"
{
"Box"
}
false
"Names"
"Attr<StringList>"
{
["A"]
}
true
"ShowWindow"
"Attr<bool>"
{
true
}
true
"a \"b\"}"
"Attr<int>"
{
-7
}
true
""
"Attr<double>"
{
0.1
}
true
"Text"
"Attr<String>"
{
"x\ny"
}
)";

// Writing

TEST(ContainerWriting, TheKeyedFormHasAStatementForEachAttribute)
{
    EXPECT_EQ(written(*sample()), sampleText);
}

TEST(ContainerWriting, Form1HasTheSameWithoutKeywords)
{
    EXPECT_EQ(written(*sample(), Format::Bare), sampleBareText);
}

TEST(ContainerWriting, WithoutDefaultValuesHasEmptyBlocks)
{
    auto const container = initialised();
    add(*container, L"A", 0);
    EXPECT_EQ(written(*container, Format::Keyed, false),
              "field \"Name\" \"Attr<String>\" {\n}\nfield \"Names\" \"Attr<StringList>\" {\n}\n"
              "attribute \"A\" \"Attr<int>\" {\n}\n");
}

TEST(ContainerWriting, ANullContextGives27AndABadStream18)
{
    std::ostringstream stream;
    EXPECT_EQ(sample()->writeTo(&stream, nullptr), 27);
    EXPECT_EQ(stream.str(), "");
    stream.setstate(std::ios::badbit);
    WriteContext context;
    EXPECT_EQ(sample()->writeTo(&stream, &context), 18);
    EXPECT_EQ(sample()->writeTo(nullptr, &context), 18);
    SmartPtr<AttrContainer> const empty(new AttrContainer(CreateType::Fresh, nullptr));
    EXPECT_EQ(empty->writeTo(nullptr, &context), 18);
}

TEST(ContainerWriting, AFailureOfAnAttributeIsItsStatusAndEndsTheWrite)
{
    auto const container = initialised();
    container->addAttribute(new Failing, L"A");
    add(*container, L"B", 5);
    std::ostringstream stream;
    WriteContext context;
    EXPECT_EQ(container->writeTo(&stream, &context), 99);
    EXPECT_EQ(stream.str().find("\"B\""), std::string::npos);
    EXPECT_EQ(container->writeField(2, &stream, &context), 99);
}

TEST(ContainerWriting, AClassMayWriteItsFieldsUnderOtherNames)
{
    class Renaming : public AttrContainer
    {
    public:
        Renaming() : AttrContainer(CreateType::Fresh, nullptr) {}
        [[nodiscard]] String getFieldName(unsigned int) const override { return L"Other"; }
        [[nodiscard]] unsigned int lookupToken(String const& keyword) const override
        {
            return keyword == L"Other" ? nameToken : unknownToken;
        }
    };
    SmartPtr<Renaming> const container(new Renaming);
    container->init(CreateType::Fresh, nullptr);
    EXPECT_EQ(written(*container), "field \"Other\" \"Attr<String>\" {\n    value \"\";\n}\n");
    EXPECT_EQ(readInto(*container, "field \"Other\" \"Attr<String>\" { value \"Box\"; }"), 0);
    EXPECT_EQ(container->getName(), L"Box");
}

TEST(ContainerWriting, WritesOneAttributeOfAToken)
{
    auto const container = sample();
    std::ostringstream stream;
    WriteContext context;
    EXPECT_EQ(container->writeField(2, &stream, &context), 0);
    EXPECT_EQ(container->writeField(99, &stream, &context), 0);
    EXPECT_EQ(stream.str(), "attribute \"ShowWindow\" \"Attr<bool>\" {\n    value true;\n}\n");
    auto const tokens = container->getIOTokensList();
    ASSERT_EQ(tokens.size(), 1U);
    EXPECT_EQ(tokens[0], (Bv_1_1::SVec2d<int>{0, 5}));
    SmartPtr<AttrContainer> const empty(new AttrContainer(CreateType::Fresh, nullptr));
    EXPECT_TRUE(empty->getIOTokensList().empty());
}

// Reading

class ContainerReading : public testing::TestWithParam<Format>
{
protected:
    [[nodiscard]] static std::string text()
    {
        return GetParam() == Format::Keyed ? sampleText : sampleBareText;
    }
};

INSTANTIATE_TEST_SUITE_P(Forms,
                         ContainerReading,
                         testing::Values(Format::Keyed, Format::Bare),
                         [](auto const& form) { return form.param == Format::Keyed ? "Keyed" : "Bare"; });

TEST_P(ContainerReading, GivesExistingAttributesTheirValues)
{
    auto const container = initialised();
    add(*container, L"Text", String(L"old"));
    add(*container, L"", 0.0);
    add(*container, L"Untouched", 5);
    add(*container, L"ShowWindow", false);
    add(*container, L"a \"b\"}", 0);
    EXPECT_EQ(readInto(*container, text(), GetParam()), 0);
    EXPECT_EQ(container->getName(), L"Box");
    EXPECT_EQ(valueOf<StringList>(*container, L"Names"), StringList{L"A"});
    EXPECT_EQ(valueOf<bool>(*container, L"ShowWindow"), true);
    EXPECT_EQ(valueOf<int>(*container, L"a \"b\"}"), -7);
    EXPECT_EQ(valueOf<double>(*container, L""), 0.1);
    EXPECT_EQ(valueOf<String>(*container, L"Text"), L"x\ny");
    EXPECT_EQ(valueOf<int>(*container, L"Untouched"), 5);
}

TEST_P(ContainerReading, KeepsValuesUntilTheirAttributesAreAddedInAnyOrder)
{
    auto const container = initialised();
    EXPECT_EQ(readInto(*container, text(), GetParam()), 0);
    EXPECT_EQ(container->getNumAttributes(), 2U);
    EXPECT_EQ(add(*container, L"Text", String(L"default"))->getValue(), L"x\ny");
    EXPECT_EQ(add(*container, L"ShowWindow", false)->getValue(), true);
    EXPECT_EQ(add(*container, L"", 7.0)->getValue(), 0.1);
    EXPECT_EQ(add(*container, L"a \"b\"}", 7)->getValue(), -7);
    EXPECT_EQ(add(*container, L"New", 7)->getValue(), 7);
}

TEST_P(ContainerReading, WritesBackTheValuesOfAttributesThatWereNotAdded)
{
    auto const container = initialised();
    EXPECT_EQ(readInto(*container, text(), GetParam()), 0);
    EXPECT_EQ(written(*container, GetParam()), text());
    add(*container, L"ShowWindow", false); // this one has been asked for
    EXPECT_EQ(written(*container, GetParam()), text());
    SmartPtr<AttrContainer> const copy(container->duplicate(CreateType::Fresh));
    EXPECT_EQ(add(*copy, L"Text", String())->getValue(), L"x\ny");
}

TEST_P(ContainerReading, KeptValuesAreConvertedBetweenTheForms)
{
    auto const container = initialised();
    EXPECT_EQ(readInto(*container, text(), GetParam()), 0);
    for (Format const form : {Format::Keyed, Format::Bare}) {
        auto const second = initialised();
        EXPECT_EQ(readInto(*second, written(*container, form), form), 0);
        EXPECT_EQ(add(*second, L"ShowWindow", false)->getValue(), true);
        EXPECT_EQ(add(*second, L"a \"b\"}", 0)->getValue(), -7);
        EXPECT_EQ(add(*second, L"", 0.0)->getValue(), 0.1);
        EXPECT_EQ(add(*second, L"Text", String())->getValue(), L"x\ny");
    }
}

TEST_P(ContainerReading, AKeptValueIsGivenOnce)
{
    auto const container = initialised();
    EXPECT_EQ(readInto(*container, text(), GetParam()), 0);
    EXPECT_TRUE(container->isValueKept(L"ShowWindow", L"Attr<bool>"));
    EXPECT_EQ(add(*container, L"ShowWindow", false)->getValue(), true);
    EXPECT_FALSE(container->isValueKept(L"ShowWindow", L"Attr<bool>"));
}

TEST_P(ContainerReading, AKeptValueIsForItsTypeOnly)
{
    auto const container = initialised();
    EXPECT_EQ(readInto(*container, text(), GetParam()), 0);
    EXPECT_EQ(add(*container, L"ShowWindow", 5)->getValue(), 5);
    EXPECT_EQ(add(*container, L"ShowWindow", false)->getValue(), true);
}

TEST_P(ContainerReading, ASecondReadForgetsWhatTheFirstHasKept)
{
    auto const container = initialised();
    EXPECT_EQ(readInto(*container, text(), GetParam()), 0);
    EXPECT_EQ(readInto(*container, "", GetParam()), 0);
    EXPECT_EQ(add(*container, L"ShowWindow", false)->getValue(), false);
}

TEST_P(ContainerReading, RmAllCustomAttributesForgetsWhatWasKept)
{
    auto const container = initialised();
    EXPECT_EQ(readInto(*container, text(), GetParam()), 0);
    container->rmAllCustomAttributes();
    EXPECT_EQ(add(*container, L"ShowWindow", false)->getValue(), false);
}

TEST_P(ContainerReading, AttributesOfTheSameNameDifferByTheirType)
{
    auto const source = initialised();
    add(*source, L"X", 1);
    add(*source, L"X", true);
    std::string const saved = written(*source, GetParam());
    auto const target = initialised();
    auto* const flag = add(*target, L"X", false);
    auto* const number = add(*target, L"X", 0);
    EXPECT_EQ(readInto(*target, saved, GetParam()), 0);
    EXPECT_EQ(number->getValue(), 1);
    EXPECT_TRUE(flag->getValue());
    auto const fresh = initialised();
    EXPECT_EQ(readInto(*fresh, saved, GetParam()), 0);
    EXPECT_TRUE(add(*fresh, L"X", false)->getValue());
    EXPECT_EQ(add(*fresh, L"X", 0)->getValue(), 1);
}

TEST_P(ContainerReading, SaysWhetherAValueIsKept)
{
    auto const container = initialised();
    String const type = Attr<bool>::Class()->name();
    EXPECT_FALSE(container->isValueKept(L"ShowWindow", type));
    EXPECT_EQ(readInto(*container, text(), GetParam()), 0);
    EXPECT_TRUE(container->isValueKept(L"ShowWindow", type));
    EXPECT_FALSE(container->isValueKept(L"ShowWindow", Attr<int>::Class()->name()));
    EXPECT_FALSE(container->isValueKept(L"Nothing", type));
    EXPECT_TRUE(container->isValueKept(String::NIL, Attr<double>::Class()->name()));
    add(*container, L"ShowWindow", false);
    EXPECT_FALSE(container->isValueKept(L"ShowWindow", type));
}

TEST_P(ContainerReading, CustomAttributesMayBeCalledLikeStaticOnes)
{
    auto const source = initialised();
    source->setName(L"Box", 0);
    add(*source, L"Name", String(L"custom"));
    add(*source, L"Names", 5);
    std::string const saved = written(*source, GetParam());
    auto const target = initialised();
    auto* const name = add(*target, L"Name", String());
    EXPECT_EQ(readInto(*target, saved, GetParam()), 0);
    EXPECT_EQ(target->getName(), L"Box");
    EXPECT_EQ(name->getValue(), L"custom");
    EXPECT_EQ(add(*target, L"Names", 0)->getValue(), 5);
}

TEST_P(ContainerReading, ThousandsOfAttributesComeBack)
{
    auto const source = initialised();
    auto const fresh = initialised();
    constexpr int count = 2000;
    for (int i = 0; i < count; ++i) {
        String name;
        name << i;
        add(*source, name, i);
        add(*source, name, i % 3 == 0);
        add(*source, name, i * 0.1);
        add(*source, name, name);
    }
    EXPECT_EQ(readInto(*fresh, written(*source, GetParam()), GetParam()), 0);
    for (int i = 0; i < count; ++i) {
        String name;
        name << i;
        EXPECT_EQ(add(*fresh, name, 0)->getValue(), i);
        EXPECT_EQ(add(*fresh, name, false)->getValue(), i % 3 == 0);
        EXPECT_EQ(add(*fresh, name, 0.0)->getValue(), i * 0.1);
        EXPECT_EQ(add(*fresh, name, String())->getValue(), name);
    }
    EXPECT_TRUE(fresh->isEqualTo(*source));
}

TEST_P(ContainerReading, DamagedTextGivesAStatusAndLeavesTheContainerUsable)
{
    std::mt19937 random(20261121);
    RecordProperty("seed", 20261121);
    for (int round = 0; round < 2000; ++round) {
        std::string damaged = text();
        auto const place = random() % damaged.size();
        if (round % 2 == 0) {
            damaged.resize(place);
        } else {
            damaged[place] = static_cast<char>(random());
        }
        auto const container = initialised();
        add(*container, L"Text", String(L"old"));
        static_cast<void>(readInto(*container, damaged, GetParam()));
        add(*container, L"ShowWindow", false);
        add(*container, L"a \"b\"}", 0);
        EXPECT_EQ(readInto(*container, text(), GetParam()), 0);
        EXPECT_EQ(valueOf<String>(*container, L"Text"), L"x\ny");
        EXPECT_EQ(valueOf<bool>(*container, L"ShowWindow"), true);
    }
}

TEST_P(ContainerReading, ReadsABlockWithinAnotherReadersText)
{
    bool const isKeyed = GetParam() == Format::Keyed;
    std::istringstream stream((isKeyed ? "box {\n" : "{\n") + text() + "}\n" + (isKeyed ? "next 5;" : "5"));
    ReadContext context(GetParam());
    oV::ReadFromScope const scope(&stream, &context);
    oV::ModelInFormat& in = scope.getImf();
    if (isKeyed) {
        ASSERT_EQ(in.getKeyword(), L"box");
    }
    ASSERT_TRUE(in.startBlock());
    auto const container = initialised();
    EXPECT_EQ(container->readFrom(&stream, &context), 0);
    EXPECT_EQ(container->getName(), L"Box");
    EXPECT_EQ(in.getKeyword(), L"}");
    in.nextKeyword();
    EXPECT_EQ(in.getKeyword(), isKeyed ? L"next" : L"value");
}

TEST(ContainerReadingKeyed, UnknownStatementsAreKeptWithStatus23)
{
    auto const container = initialised();
    std::string const text = "version 2;\nfield \"Later\" \"Attr<int>\" {\n    value 5;\n}\n"
                             "field \"Name\" \"Attr<String>\" {\n    value \"Box\";\n}\n";
    EXPECT_EQ(readInto(*container, text), StatusCode::unknownKeyword);
    EXPECT_EQ(container->getName(), L"Box");
    EXPECT_EQ(written(*container),
              "field \"Name\" \"Attr<String>\" {\n    value \"Box\";\n}\n"
              "field \"Names\" \"Attr<StringList>\" {\n    value [];\n}\n"
              "version 2;\nfield \"Later\" \"Attr<int>\" {\n    value 5;\n}\n");
    EXPECT_EQ(
        written(*container, Format::Bare),
        "false\n\"Name\"\n\"Attr<String>\"\n{\n\"Box\"\n}\nfalse\n\"Names\"\n\"Attr<StringList>\"\n{\n[]\n}\n"
        "false\n\"Later\"\n\"Attr<int>\"\n{\n5\n}\n");
}

TEST_P(ContainerReading, WithoutAStreamFails)
{
    ReadContext context(GetParam());
    EXPECT_EQ(initialised()->readFrom(nullptr, &context), StatusCode::readFailed);
}

TEST(ContainerReadingKeyed, AStatusThatIsNotToleratedEndsTheRead)
{
    auto const container = initialised();
    container->addAttribute(new Failing, L"A");
    auto* const second = add(*container, L"B", 5);
    EXPECT_EQ(readInto(*container,
                       "attribute \"A\" \"Attr<int>\" { value 1; }\n"
                       "attribute \"B\" \"Attr<int>\" { value 6; }\n"),
              99);
    EXPECT_EQ(second->getValue(), 5);
}

TEST(ContainerReadingKeyed, AnUnknownFieldIsNotTheValueOfACustomAttribute)
{
    auto const container = initialised();
    EXPECT_EQ(readInto(*container, "field \"A\" \"Attr<int>\" { value 5; }"), StatusCode::unknownKeyword);
    EXPECT_FALSE(container->isValueKept(L"A", L"Attr<int>"));
    EXPECT_EQ(add(*container, L"A", 6)->getValue(), 6);
}

TEST(ContainerReadingKeyed, AStaticAttributeOfAnotherTypeIsNotRead)
{
    auto const container = initialised();
    container->setName(L"Box", 0);
    EXPECT_EQ(readInto(*container, "field \"Name\" \"Attr<int>\" { value 5; }"), StatusCode::unknownKeyword);
    EXPECT_EQ(container->getName(), L"Box");
}

TEST(ContainerReadingKeyed, AValueOfTheWrongKindEndsTheReadAndStaysOut)
{
    auto const container = initialised();
    auto* const number = add(*container, L"A", 5);
    EXPECT_EQ(readInto(*container, "attribute \"A\" \"Attr<int>\" { value true; }"), StatusCode::wrongKind);
    EXPECT_EQ(number->getValue(), 5);
    EXPECT_EQ(readInto(*container, "attribute \"B\" \"Attr<int>\" { value true; }"), 0); // not looked at yet
    EXPECT_EQ(add(*container, L"B", 6)->getValue(), 6);
}

TEST(ContainerReadingKeyed, AKeptBlockWithoutAValueGivesTheInitialValue)
{
    auto const container = initialised();
    EXPECT_EQ(readInto(*container, "attribute \"A\" \"Attr<int>\" { }"), 0);
    EXPECT_EQ(add(*container, L"A", 6)->getValue(), 0);
}

TEST(ContainerReadingKeyed, AStatementWithoutABlockOrANameGivesAStatus)
{
    auto const container = initialised();
    add(*container, L"A", 5);
    EXPECT_EQ(readInto(*container, "attribute \"A\" \"Attr<int>\";"), StatusCode::wrongKind);
    EXPECT_NE(readInto(*container, "attribute;"), 0);
    EXPECT_NE(readInto(*container, "attribute 5 6 { }"), 0);
    EXPECT_NE(readInto(*container, "attribute"), 0);
    EXPECT_EQ(container->readFrom(nullptr, nullptr), StatusCode::readFailed);
}

TEST(ContainerReadingKeyed, ANullNameCountsAsTheEmptyName)
{
    auto const container = initialised();
    auto* const number = add(*container, L"", 5);
    EXPECT_EQ(readInto(*container, "attribute null \"Attr<int>\" { value 6; }"), 0);
    EXPECT_EQ(number->getValue(), 6);
}

TEST(ContainerReadingKeyed, ReadsOneFieldAtATime)
{
    auto const container = sample();
    std::istringstream stream("attribute \"ShowWindow\" \"Attr<bool>\" { value false; } rest;");
    ReadContext context;
    oV::ReadFromScope const scope(&stream, &context);
    container->initRead();
    ASSERT_EQ(scope.getImf().getKeyword(), L"attribute");
    EXPECT_EQ(container->readField(&stream, &context), 0);
    EXPECT_EQ(valueOf<bool>(*container, L"ShowWindow"), false);
    EXPECT_EQ(scope.getImf().getKeyword(), L"rest");
}

} // namespace
