#include "tests/support/LiveOptions.h"
#include "tests/support/OptionsText.h"

#include <roamscan/frame/bvbase/SmartPtr.h>
#include <roamscan/frame/bvbase/oVClass.h>
#include <roamscan/options/RoamscanOptionAccess.h>
#include <roamscan/options/RoamscanOptionsJsonMerger.h>

#include <gtest/gtest.h>

#include <array>
#include <bit>
#include <cstdint>
#include <limits>
#include <random>
#include <string>
#include <vector>

namespace
{

using Bv_1_1::SmartPtr;
using Bv_1_1::String;
using oV::Roamscan::getOption;
using oV::Roamscan::RoamscanOptionsCont;
using oV::Roamscan::RoamscanOptionsJsonMerger;
using oV::Roamscan::setOption;
using support::addOption;
using support::liveOptions;
using support::loadOptions;
using support::madeOptionsContainer;
using support::optionCount;
using support::optionValue;
using support::savedOptions;
using Format = support::OptionsFormat;
using Strings = std::vector<String>;
namespace StatusCode = oV::StatusCode;

/// Each test runs with the live options reset, in both forms.
class SavedOptions : public support::LiveOptionsTest, public testing::WithParamInterface<Format>
{
protected:
    static std::string saved(RoamscanOptionsCont& options, bool writeDefaults = true)
    {
        return savedOptions(options, GetParam(), writeDefaults);
    }

    static int load(RoamscanOptionsCont& options, std::string const& text)
    {
        return loadOptions(options, text, GetParam());
    }

    /// A new container that was read from the saved text of `options`.
    static SmartPtr<RoamscanOptionsCont> reloaded(RoamscanOptionsCont& options, bool writeDefaults = true)
    {
        auto loaded = madeOptionsContainer();
        EXPECT_EQ(load(*loaded, saved(options, writeDefaults)), StatusCode::ok);
        return loaded;
    }
};

INSTANTIATE_TEST_SUITE_P(InEachForm,
                         SavedOptions,
                         testing::Values(Format::Keyed, Format::Bare),
                         [](auto const& form) { return form.param == Format::Keyed ? "Keyed" : "Bare"; });

SmartPtr<RoamscanOptionsCont> oneOfEachType()
{
    auto options = madeOptionsContainer();
    addOption(*options, L"Show", true);
    addOption(*options, L"P.count", -7);
    addOption(*options, L"", 0.1);
    addOption(*options, L"Text", String(L"x\n\"y\""));
    return options;
}

std::string const keyedText = R"(field "Name" "Attr<String>" {
    value "RoamscanOptionsCont";
}
field "OptionsNames" "Attr<StringList>" {
    value ["Show", "P.count", "", "Text"];
}
field "OptionsTypes" "Attr<StringList>" {
    value ["Attr<bool>", "Attr<int>", "Attr<double>", "Attr<String>"];
}
attribute "Show" "Attr<bool>" {
    value true;
}
attribute "P.count" "Attr<int>" {
    value -7;
}
attribute "" "Attr<double>" {
    value 0.1;
}
attribute "Text" "Attr<String>" {
    value "x\n\"y\"";
}
)";

std::string const bareText = R"(false
"Name"
"Attr<String>"
{
"RoamscanOptionsCont"
}
false
"OptionsNames"
"Attr<StringList>"
{
["Show", "P.count", "", "Text"]
}
false
"OptionsTypes"
"Attr<StringList>"
{
["Attr<bool>", "Attr<int>", "Attr<double>", "Attr<String>"]
}
true
"Show"
"Attr<bool>"
{
true
}
true
"P.count"
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
"x\n\"y\""
}
)";

// As if written by a newer plug-in: the last option has a type that this library does not know, and the lists
// of names and types do not mention one option at all.
std::string newerText(Format format)
{
    if (format == Format::Keyed) {
        return R"(field "OptionsNames" "Attr<StringList>" {
    value ["known", "matrix"];
}
field "OptionsTypes" "Attr<StringList>" {
    value ["Attr<int>", "Attr<Matrix>"];
}
attribute "known" "Attr<int>" {
    value 5;
}
attribute "matrix" "Attr<Matrix>" {
    rows 2;
    value 1 0 "x" {
        nested true;
    }
}
attribute "unlisted" "Attr<double>" {
    value 2.5;
}
)";
    }
    return "false\n\"OptionsNames\"\n\"Attr<StringList>\"\n{\n[\"known\", \"matrix\"]\n}\n"
           "false\n\"OptionsTypes\"\n\"Attr<StringList>\"\n{\n[\"Attr<int>\", \"Attr<Matrix>\"]\n}\n"
           "true\n\"known\"\n\"Attr<int>\"\n{\n5\n}\n"
           "true\n\"matrix\"\n\"Attr<Matrix>\"\n{\n2\n1\n{\ntrue\n}\n}\n"
           "true\n\"unlisted\"\n\"Attr<double>\"\n{\n2.5\n}\n";
}

std::string newerStatement(Format format)
{
    std::string const text = newerText(format);
    std::size_t const start =
        text.find(format == Format::Keyed ? "attribute \"matrix\"" : "true\n\"matrix\"");
    std::size_t const stop =
        text.find(format == Format::Keyed ? "attribute \"unlisted\"" : "true\n\"unlisted\"");
    return text.substr(start, stop - start);
}

/// After any load, good or bad, the container takes options and can be saved and loaded again.
void expectUsable(RoamscanOptionsCont& options, Format format)
{
    unsigned int const before = optionCount(options);
    addOption(options, L"added after the load", 42);
    EXPECT_EQ(optionCount(options), before + 1);
    auto const again = madeOptionsContainer();
    EXPECT_TRUE(StatusCode::isTolerated(loadOptions(*again, savedOptions(options, format), format)));
    EXPECT_EQ(optionValue<int>(*again, L"added after the load"), 42);
    EXPECT_EQ(optionCount(*again), before + 1);
}

} // namespace

TEST_P(SavedOptions, HaveTheirBytes)
{
    EXPECT_EQ(saved(*oneOfEachType()), GetParam() == Format::Keyed ? keyedText : bareText);
}

TEST_P(SavedOptions, ComeBackFromTheirBytes)
{
    auto const options = madeOptionsContainer();
    ASSERT_EQ(load(*options, GetParam() == Format::Keyed ? keyedText : bareText), StatusCode::ok);
    EXPECT_EQ(optionCount(*options), 4U);
    EXPECT_EQ(optionValue<bool>(*options, L"Show"), true);
    EXPECT_EQ(optionValue<int>(*options, L"P.count"), -7);
    EXPECT_EQ(optionValue<double>(*options, L""), 0.1);
    EXPECT_EQ(optionValue<String>(*options, L"Text"), String(L"x\n\"y\""));
    EXPECT_EQ(options->OptionsNames(), (Strings{L"Show", L"P.count", L"", L"Text"}));
}

TEST_P(SavedOptions, ExistOnlyAfterInitializeCustomAttributes)
{
    std::istringstream stream(saved(*oneOfEachType()));
    oV::ReadContext context(GetParam());
    auto const options = madeOptionsContainer();
    ASSERT_EQ(options->readFrom(&stream, &context), StatusCode::ok);
    EXPECT_EQ(optionCount(*options), 0U);
    EXPECT_EQ(options->OptionsNames().size(), 4U);
    options->initializeCustomAttributes();
    EXPECT_EQ(optionCount(*options), 4U);
    EXPECT_EQ(optionValue<int>(*options, L"P.count"), -7);
}

TEST_P(SavedOptions, KeepTheEdgeValuesOfEveryType)
{
    using Numbers = std::numeric_limits<double>;
    std::vector<double> const doubles{0.0,
                                      -0.0,
                                      0.1,
                                      Numbers::denorm_min(),
                                      Numbers::min(),
                                      Numbers::max(),
                                      Numbers::lowest(),
                                      Numbers::infinity(),
                                      -Numbers::infinity(),
                                      Numbers::quiet_NaN(),
                                      -Numbers::quiet_NaN()};
    std::vector<int> const ints{0, 1, -1, std::numeric_limits<int>::max(), std::numeric_limits<int>::min()};
    std::vector<String> const texts{String::NIL,
                                    String::EMPTY,
                                    L" ",
                                    L"}",
                                    L"value 5;",
                                    L"\"\\\r\n\t",
                                    L"\x01\x7F\u2028",
                                    L"\U0001F4F7",
                                    String::fromUtf16(u"\xD800 alone"),
                                    String::fromUtf16(std::u16string_view(u"a\0b", 3))};
    auto const numbered = [](wchar_t const* prefix, std::size_t i) {
        String name(prefix);
        name << static_cast<int>(i);
        return name;
    };
    auto const options = madeOptionsContainer();
    addOption(*options, L"true", true);
    addOption(*options, L"false", false);
    for (std::size_t i = 0; i < doubles.size(); ++i) {
        addOption(*options, numbered(L"double", i), doubles[i]);
    }
    for (std::size_t i = 0; i < ints.size(); ++i) {
        addOption(*options, numbered(L"int", i), ints[i]);
    }
    for (std::size_t i = 0; i < texts.size(); ++i) {
        addOption(*options, numbered(L"text", i), texts[i]);
    }

    auto const loaded = reloaded(*options);
    EXPECT_EQ(optionCount(*loaded), optionCount(*options));
    EXPECT_EQ(optionValue<bool>(*loaded, L"true"), true);
    EXPECT_EQ(optionValue<bool>(*loaded, L"false"), false);
    for (std::size_t i = 0; i < doubles.size(); ++i) {
        double const value = optionValue<double>(*loaded, numbered(L"double", i)).value_or(-1.0);
        EXPECT_EQ(std::bit_cast<std::uint64_t>(value), std::bit_cast<std::uint64_t>(doubles[i]))
            << doubles[i];
    }
    for (std::size_t i = 0; i < ints.size(); ++i) {
        EXPECT_EQ(optionValue<int>(*loaded, numbered(L"int", i)), ints[i]);
    }
    for (std::size_t i = 0; i < texts.size(); ++i) {
        EXPECT_EQ(optionValue<String>(*loaded, numbered(L"text", i)), texts[i]) << i;
    }
}

TEST_P(SavedOptions, KeepNamesOfAnyText)
{
    Strings const names{L"a.b.c",
                        L"",
                        L" ",
                        L"}",
                        L"value",
                        L"Name",
                        L"OptionsNames2",
                        L"line\nbreak \"quoted\" \\",
                        L"\U0001F4F7",
                        String::fromUtf16(u"\xDC00")};
    auto const options = madeOptionsContainer();
    int value = 0;
    for (String const& name : names) {
        addOption(*options, name, ++value);
    }
    auto const loaded = reloaded(*options);
    EXPECT_EQ(loaded->OptionsNames(), names);
    value = 0;
    for (String const& name : names) {
        EXPECT_EQ(optionValue<int>(*loaded, name), ++value);
    }
}

TEST_P(SavedOptions, KeepTwoOptionsOfOneNameAndTheirOrder)
{
    auto const options = madeOptionsContainer();
    addOption(*options, L"X", 5);
    addOption(*options, L"X", String(L"text"));
    auto const loaded = reloaded(*options);
    EXPECT_EQ(optionCount(*loaded), 2U);
    EXPECT_EQ(optionValue<int>(*loaded, L"X"), 5);
    EXPECT_EQ(loaded->OptionsTypes(), (Strings{L"Attr<int>", L"Attr<String>"}));
    EXPECT_TRUE(loaded->isEqualTo(*options));
}

TEST_P(SavedOptions, WithoutDefaultValuesComeBackTheSame)
{
    auto const options = madeOptionsContainer();
    addOption(*options, L"false", false);
    addOption(*options, L"zero", 0);
    addOption(*options, L"0.0", 0.0);
    addOption(*options, L"empty", String::EMPTY);
    addOption(*options, L"-0.5", -0.5);
    auto const loaded = reloaded(*options, false);
    EXPECT_TRUE(loaded->isEqualTo(*options));
    EXPECT_EQ(optionValue<double>(*loaded, L"-0.5"), -0.5);
}

TEST_P(SavedOptions, MayBeNone)
{
    auto const options = madeOptionsContainer();
    auto const loaded = reloaded(*options);
    EXPECT_EQ(optionCount(*loaded), 0U);
    EXPECT_TRUE(loaded->isEqualTo(*options));
}

TEST_P(SavedOptions, MayBeTenThousandOfAllTypes)
{
    constexpr int count = 10'000;
    auto const nameOf = [](int i) {
        String name(L"plug-in.option ");
        name << i;
        return name;
    };
    auto const options = madeOptionsContainer();
    for (int i = 0; i < count; i += 4) {
        addOption(*options, nameOf(i), i % 8 == 0);
        addOption(*options, nameOf(i + 1), i - 5000);
        addOption(*options, nameOf(i + 2), i / 7.0);
        addOption(*options, nameOf(i + 3), nameOf(-i));
    }
    auto const loaded = reloaded(*options);
    ASSERT_EQ(optionCount(*loaded), static_cast<unsigned int>(count));
    ASSERT_EQ(loaded->OptionsNames().size(), static_cast<std::size_t>(count));
    for (int i = 0; i < count; i += 4) {
        ASSERT_EQ(optionValue<bool>(*loaded, nameOf(i)), i % 8 == 0);
        ASSERT_EQ(optionValue<int>(*loaded, nameOf(i + 1)), i - 5000);
        ASSERT_EQ(optionValue<double>(*loaded, nameOf(i + 2)), i / 7.0);
        ASSERT_EQ(optionValue<String>(*loaded, nameOf(i + 3)), nameOf(-i));
    }
    EXPECT_TRUE(loaded->isEqualTo(*options));
}

TEST_P(SavedOptions, LoadIntoAContainerWithOptionsSilentlyReplacesTheirValues)
{
    auto const options = madeOptionsContainer();
    addOption(*options, L"P.count", 1);
    addOption(*options, L"other", 2);
    ASSERT_EQ(load(*options, saved(*oneOfEachType())), StatusCode::ok);
    EXPECT_EQ(optionCount(*options), 5U);
    EXPECT_EQ(optionValue<int>(*options, L"P.count"), -7);
    EXPECT_EQ(optionValue<int>(*options, L"other"), 2);
}

// The live options

TEST_P(SavedOptions, AreTheDeliberateValuesOfTheLiveOptions)
{
    auto const source = madeOptionsContainer();
    addOption(*source, L"P.a", 9);
    ASSERT_EQ(load(*liveOptions(), saved(*source)), StatusCode::ok);
    bool isWeak = true;
    EXPECT_EQ(getOption<int>(L"P.a", 5, true, &isWeak), 9);
    EXPECT_FALSE(isWeak);
    RoamscanOptionsJsonMerger merger(L"P", nlohmann::json());
    merger[{"a"}] = 5;
    EXPECT_EQ(merger.get()["a"], 9);
}

TEST(SavedOptionsInTheOtherForm, LoadAlsoIfUnknownStatementsHaveNoBlock)
{
    std::string const text = R"(field "A" "New"; field "B" "New" 1 2; attribute "C" "New";)";
    auto const options = madeOptionsContainer();
    EXPECT_EQ(loadOptions(*options, text, Format::Keyed), StatusCode::unknownKeyword);
    addOption(*options, L"Count", 7);
    auto const loaded = madeOptionsContainer();
    int const status = loadOptions(*loaded, savedOptions(*options, Format::Bare), Format::Bare);
    EXPECT_TRUE(StatusCode::isTolerated(status)) << status;
    EXPECT_EQ(optionCount(*loaded), 1U);
    EXPECT_TRUE(loaded->isValueKept(L"C", L"New"));
}

TEST_P(SavedOptions, AreKeptUntilTheOptionIsAskedFor)
{
    ASSERT_EQ(load(*liveOptions(), newerText(GetParam())), StatusCode::ok);
    EXPECT_EQ(optionCount(*liveOptions()), 3U); // the library's two and "known"
    bool isWeak = true;
    EXPECT_EQ(getOption<double>(L"unlisted", 1.0, true, &isWeak), 2.5);
    EXPECT_FALSE(isWeak); // the saved value counts as an option that exists
    isWeak = true;
    EXPECT_EQ(getOption<double>(L"unlisted", 1.0, true, &isWeak), 2.5);
    EXPECT_FALSE(isWeak);
}

TEST_P(SavedOptions, AreKeptUntilTheMergerAsks)
{
    auto const source = madeOptionsContainer();
    addOption(*source, L"P.a", 9);
    source->updateToCurrentOptions();
    std::string const text = saved(*source);
    std::istringstream stream(text);
    oV::ReadContext context(GetParam());
    ASSERT_EQ(liveOptions()->readFrom(&stream, &context), StatusCode::ok); // not initialised
    RoamscanOptionsJsonMerger merger(L"P", nlohmann::json());
    merger[{"a"}] = 5;
    EXPECT_EQ(merger.get()["a"], 9);
}

TEST_P(SavedOptions, OfAnotherTypeDoNotAnswer)
{
    ASSERT_EQ(load(*liveOptions(), newerText(GetParam())), StatusCode::ok);
    bool isWeak = false;
    EXPECT_EQ(getOption<int>(L"unlisted", 4, false, &isWeak), 4);
    EXPECT_TRUE(isWeak);
    EXPECT_EQ(getOption<double>(L"unlisted", 1.0), 2.5);
}

TEST_P(SavedOptions, AreReplacedByASetOptionBeforeTheyAreAskedFor)
{
    ASSERT_EQ(load(*liveOptions(), newerText(GetParam())), StatusCode::ok);
    EXPECT_EQ(setOption<double>(L"unlisted", 7.5), 7.5);
    EXPECT_EQ(getOption<double>(L"unlisted", 1.0), 7.5);
}

TEST_P(SavedOptions, AreForgottenByCleanUp)
{
    ASSERT_EQ(load(*liveOptions(), newerText(GetParam())), StatusCode::ok);
    oV::Roamscan::RoamscanOptions::cleanUp();
    EXPECT_EQ(getOption<double>(L"unlisted", 1.0), 1.0);
    EXPECT_EQ(getOption<int>(L"known", 1), 1);
}

// What a newer plug-in has saved

TEST_P(SavedOptions, OfUnknownNamesAndTypesSurviveALoadAndASave)
{
    auto const options = madeOptionsContainer();
    ASSERT_EQ(load(*options, newerText(GetParam())), StatusCode::ok);
    EXPECT_EQ(optionCount(*options), 1U);
    std::string const again = saved(*options);
    EXPECT_NE(again.find(newerStatement(GetParam())), std::string::npos) << again;
    auto const loaded = madeOptionsContainer();
    ASSERT_EQ(load(*loaded, again), StatusCode::ok);
    EXPECT_EQ(optionValue<int>(*loaded, L"known"), 5);
    addOption(*loaded, L"unlisted", 0.0); // takes the kept value over
    EXPECT_EQ(optionValue<double>(*loaded, L"unlisted"), 2.5);
    EXPECT_NE(saved(*loaded).find(newerStatement(GetParam())), std::string::npos);
}

TEST_P(SavedOptions, OfUnknownTypesSurviveTheOtherFormAndBack)
{
    Format const other = GetParam() == Format::Keyed ? Format::Bare : Format::Keyed;
    auto const options = madeOptionsContainer();
    ASSERT_EQ(load(*options, newerText(GetParam())), StatusCode::ok);
    auto const inOther = madeOptionsContainer();
    ASSERT_EQ(loadOptions(*inOther, savedOptions(*options, other), other), StatusCode::ok);
    auto const back = madeOptionsContainer();
    ASSERT_EQ(load(*back, saved(*inOther)), StatusCode::ok);
    EXPECT_EQ(optionValue<int>(*back, L"known"), 5);
    EXPECT_TRUE(back->isValueKept(L"matrix", L"Attr<Matrix>"));
    addOption(*back, L"unlisted", 0.0);
    EXPECT_EQ(optionValue<double>(*back, L"unlisted"), 2.5);
}

TEST_P(SavedOptions, OfUnknownTypesSurviveADuplicate)
{
    auto const options = madeOptionsContainer();
    ASSERT_EQ(load(*options, newerText(GetParam())), StatusCode::ok);
    SmartPtr<oV::AttrContainer> const copy(options->duplicate(Bv_1_1::BaseNode::CreateType::Fresh));
    EXPECT_EQ(saved(static_cast<RoamscanOptionsCont&>(*copy)), saved(*options));
}

// Damage

TEST_P(SavedOptions, CutOffAtAnyByteLeaveTheContainerUsable)
{
    std::string const text = saved(*oneOfEachType());
    for (std::size_t length = 0; length < text.size(); ++length) {
        SCOPED_TRACE(length);
        auto const options = madeOptionsContainer();
        int const status = load(*options, text.substr(0, length));
        // A text that ends between two statements is complete, only shorter.
        EXPECT_TRUE(StatusCode::isTolerated(status) || status == StatusCode::unexpectedEnd ||
                    status == StatusCode::syntaxError || status == StatusCode::wrongKind)
            << status;
        expectUsable(*options, GetParam());
    }
}

TEST_P(SavedOptions, CutOffInsideAStatementGiveAStatus)
{
    std::string const text = saved(*oneOfEachType());
    for (std::size_t const cut : {1U, 2U, 3U, 4U, 5U}) {
        auto const options = madeOptionsContainer();
        int const status = load(*options, text.substr(0, text.size() - 1 - cut));
        EXPECT_FALSE(StatusCode::isTolerated(status)) << cut;
    }
}

TEST_P(SavedOptions, WithRandomDamageLeaveTheContainerUsable)
{
    unsigned int const seed = std::random_device{}();
    SCOPED_TRACE(testing::Message() << "seed " << seed);
    std::mt19937 random(seed);
    std::string const whole = saved(*oneOfEachType());
    std::uniform_int_distribution<std::size_t> place(0, whole.size() - 1);
    std::uniform_int_distribution<int> byte(0, 255);
    std::uniform_int_distribution<int> flips(1, 4);
    for (int round = 0; round < 500; ++round) {
        std::string text = whole;
        for (int flip = flips(random); flip > 0; --flip) {
            text[place(random)] = static_cast<char>(byte(random));
        }
        SCOPED_TRACE(text);
        auto const options = madeOptionsContainer();
        static_cast<void>(load(*options, text));
        expectUsable(*options, GetParam());
    }
}

TEST_P(SavedOptions, WithListsOfDifferentLengthsGiveNoOptionsButKeepTheValues)
{
    std::string text = GetParam() == Format::Keyed ? keyedText : bareText;
    std::string const name = "\"Show\", ";
    text.erase(text.find(name), name.size());
    auto const options = madeOptionsContainer();
    ASSERT_EQ(load(*options, text), StatusCode::ok);
    EXPECT_EQ(optionCount(*options), 0U);
    addOption(*options, L"P.count", 0);
    EXPECT_EQ(optionValue<int>(*options, L"P.count"), -7);
}

TEST_P(SavedOptions, WithAValueOfAnotherKindLeaveTheDefault)
{
    std::string text = GetParam() == Format::Keyed ? keyedText : bareText;
    text.replace(text.find("-7"), 2, "\"seven\"");
    auto const options = madeOptionsContainer();
    static_cast<void>(load(*options, text));
    EXPECT_EQ(optionValue<int>(*options, L"P.count"), 0);
    EXPECT_EQ(optionValue<double>(*options, L""), 0.1);
    expectUsable(*options, GetParam());
}
