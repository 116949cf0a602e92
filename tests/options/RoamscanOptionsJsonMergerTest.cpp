#include "tests/support/LiveOptions.h"

#include <roamscan/frame/bvbase/String.h>
#include <roamscan/options/RoamscanOptionAccess.h>
#include <roamscan/options/RoamscanOptionsJsonMerger.h>

#include <gtest/gtest.h>
#include <nlohmann/json.hpp>

#include <cmath>
#include <limits>
#include <string>
#include <utility>
#include <vector>

namespace
{

using Bv_1_1::String;
using oV::Roamscan::getOption;
using oV::Roamscan::RoamscanOptionsJsonMerger;
using oV::Roamscan::setOption;
using support::liveOptions;
using support::optionCount;
using JSON = nlohmann::json;

class JsonMergerTest : public support::LiveOptionsTest
{
protected:
    RoamscanOptionsJsonMerger merger{L"P", JSON()};
};

/// The text of the failure with the given id, without the JSON library's own beginning; empty for none.
template <typename Action>
std::string typeErrorOf(Action const& action)
{
    try {
        action();
    } catch (nlohmann::detail::type_error const& failure) {
        EXPECT_EQ(failure.id, 305);
        std::string const text = failure.what();
        return text.substr(text.find("] ") + 2);
    }
    return "";
}

std::string const cannot = "cannot use operator[] with a string argument with ";

} // namespace

TEST_F(JsonMergerTest, APathGivesTheOptionsNameAndTheMember)
{
    merger[{"a", "b"}] = 5;
    EXPECT_EQ(merger.get(), JSON::parse(R"({"a":{"b":5}})"));
    EXPECT_EQ(getOption<int>(L"P.a.b", 0), 5);
}

TEST_F(JsonMergerTest, AnEmptyPathIsTheRootWithThePrefixAsTheName)
{
    merger[{}] = 5;
    EXPECT_EQ(merger.get(), JSON(5));
    EXPECT_EQ(getOption<int>(L"P", 0), 5);
}

TEST_F(JsonMergerTest, AnEmptyPrefixGivesANameThatBeginsWithTheSeparator)
{
    RoamscanOptionsJsonMerger withoutPrefix(String::EMPTY, JSON());
    withoutPrefix[{"a"}] = 5;
    EXPECT_EQ(getOption<int>(L".a", 0), 5);
}

TEST_F(JsonMergerTest, AnElementWithADotGivesTheNameOfALongerPath)
{
    merger[{"a.b"}] = 5;
    EXPECT_EQ(getOption<int>(L"P.a.b", 0), 5);
    EXPECT_EQ(merger.get(), JSON::parse(R"({"a.b":5})"));
}

TEST_F(JsonMergerTest, ElementsMayHoldAnyText)
{
    merger[{"", "\xC3\xA4\xF0\x9F\x93\xB7"}] = 5;
    EXPECT_EQ(getOption<int>(L"P..\u00E4\U0001F4F7", 0), 5);
}

TEST_F(JsonMergerTest, AnElementsZeroByteEndsItInTheNameOnly)
{
    merger[{std::string("a\0b", 3)}] = 5;
    EXPECT_EQ(getOption<int>(L"P.a", 0), 5);
    EXPECT_TRUE(merger.get().contains(std::string("a\0b", 3)));
}

TEST_F(JsonMergerTest, AMissingMemberIsInsertedAsNull)
{
    (void)merger[{"a", "b"}];
    EXPECT_EQ(merger.get(), JSON::parse(R"({"a":{"b":null}})"));
}

TEST_F(JsonMergerTest, ANullMemberOnTheWayBecomesAnObject)
{
    RoamscanOptionsJsonMerger onNull(L"P", JSON::parse(R"({"a":null})"));
    (void)onNull[{"a", "b"}];
    EXPECT_EQ(onNull.get(), JSON::parse(R"({"a":{"b":null}})"));
}

TEST_F(JsonMergerTest, APathThroughANodeThatIsNoObjectFails)
{
    std::vector<std::pair<char const*, char const*>> const nodes{{"[]", "array"},
                                                                 {R"("text")", "string"},
                                                                 {"true", "boolean"},
                                                                 {"1", "number"},
                                                                 {"-1", "number"},
                                                                 {"1.5", "number"}};
    for (auto const& [node, name] : nodes) {
        RoamscanOptionsJsonMerger onNode(L"P", JSON::object({{"a", JSON::parse(node)}}));
        EXPECT_EQ(typeErrorOf([&] { (void)onNode[{"a", "b"}]; }), cannot + name);
    }
    RoamscanOptionsJsonMerger onDiscarded(L"P", JSON(JSON::value_t::discarded));
    EXPECT_EQ(typeErrorOf([&] { (void)onDiscarded[{"a"}]; }), cannot + "discarded");
}

TEST_F(JsonMergerTest, AMergerOnAnArrayFailsAtTheFirstElementAndGivesItsRoot)
{
    RoamscanOptionsJsonMerger onArray(L"P", JSON::array({1}));
    EXPECT_EQ(typeErrorOf([&] { (void)onArray[{"a"}]; }), cannot + "array");
    onArray[{}] = 5;
    EXPECT_EQ(onArray.get(), JSON(5));
}

TEST_F(JsonMergerTest, MembersMadeOnTheWayStayWhenALaterElementFails)
{
    merger[{"a", "number"}] = 1;
    EXPECT_EQ(typeErrorOf([&] { (void)merger[{"a", "number", "c"}]; }), cannot + "number");
    RoamscanOptionsJsonMerger other(L"P", JSON());
    other[{"a", "x"}] = true;
    EXPECT_EQ(typeErrorOf([&] { (void)other[{"a", "x", "y", "z"}]; }), cannot + "boolean");
    EXPECT_EQ(other.get(), JSON::parse(R"({"a":{"x":true}})"));
}

TEST_F(JsonMergerTest, EachAssignmentWritesItsTypeOfJsonAndCreatesItsTypeOfOption)
{
    merger[{"int"}] = -1;
    merger[{"unsigned"}] = 4000000000U;
    merger[{"double"}] = 2.0;
    merger[{"bool"}] = true;
    merger[{"chars"}] = "text";
    merger[{"string"}] = std::string("more");
    JSON const& json = merger.get();
    EXPECT_EQ(json["int"].type(), JSON::value_t::number_integer);
    EXPECT_EQ(json["int"].get<std::int64_t>(), -1);
    EXPECT_EQ(json["unsigned"].type(), JSON::value_t::number_unsigned);
    EXPECT_EQ(json["unsigned"].get<std::uint64_t>(), 4000000000U);
    EXPECT_EQ(json["double"].type(), JSON::value_t::number_float);
    EXPECT_EQ(json["bool"].type(), JSON::value_t::boolean);
    EXPECT_EQ(json["chars"], "text");
    EXPECT_EQ(json["string"], "more");
    EXPECT_EQ(getOption<int>(L"P.int", 0), -1);
    EXPECT_EQ(getOption<int>(L"P.unsigned", 0), -294967296);
    EXPECT_EQ(getOption<double>(L"P.double", 0.0), 2.0);
    EXPECT_TRUE(getOption<bool>(L"P.bool", false));
    EXPECT_EQ(getOption<String>(L"P.chars", String::NIL), String(L"text"));
    EXPECT_EQ(getOption<String>(L"P.string", String::NIL), String(L"more"));
}

TEST_F(JsonMergerTest, AnAssignmentReturnsThePlace)
{
    JSON& place = (merger[{"a"}] = 5);
    EXPECT_EQ(&place, &merger.get()["a"]);
}

TEST_F(JsonMergerTest, AnUnsignedNumberTakesTheBitsOfASignedOption)
{
    setOption<int>(L"P.a", -1);
    merger[{"a"}] = 7U;
    EXPECT_EQ(merger.get()["a"].type(), JSON::value_t::number_unsigned);
    EXPECT_EQ(merger.get()["a"].get<std::uint64_t>(), 4294967295U);
}

TEST_F(JsonMergerTest, ASmallUnsignedNumberStaysUnsignedAndASmallSignedOneSigned)
{
    merger[{"a"}] = 7U;
    merger[{"b"}] = 7;
    EXPECT_EQ(merger.get()["a"].type(), JSON::value_t::number_unsigned);
    EXPECT_EQ(merger.get()["b"].type(), JSON::value_t::number_integer);
}

TEST_F(JsonMergerTest, ANewOptionHasTheWeakValueMark)
{
    merger[{"a"}] = 5;
    bool isWeak = false;
    EXPECT_EQ(getOption<int>(L"P.a", 0, false, &isWeak), 5);
    EXPECT_TRUE(isWeak);
}

TEST_F(JsonMergerTest, ALaterDefaultReplacesAnEarlierOneAndTheOptionStaysWeak)
{
    merger[{"a"}] = 5;
    merger[{"a"}] = 6;
    EXPECT_EQ(merger.get()["a"], 6);
    bool isWeak = false;
    EXPECT_EQ(getOption<int>(L"P.a", 0, false, &isWeak), 6);
    EXPECT_TRUE(isWeak);
}

TEST_F(JsonMergerTest, ADeliberateOptionReplacesTheDefaultInTheDocument)
{
    setOption<int>(L"P.a", 9);
    merger[{"a"}] = 5;
    EXPECT_EQ(merger.get()["a"], 9);
    merger[{"a"}] = 6;
    EXPECT_EQ(merger.get()["a"], 9);
    EXPECT_EQ(getOption<int>(L"P.a", 0), 9);
}

TEST_F(JsonMergerTest, ADeliberateOptionMayBeCreatedByAskingForIt)
{
    (void)getOption<String>(L"P.a", L"mine", false);
    merger[{"a"}] = "default";
    EXPECT_EQ(merger.get()["a"], "mine");
}

TEST_F(JsonMergerTest, ADoubleOptionAndAnIntAtTheSameNameAreDifferentOptions)
{
    setOption<double>(L"P.a", 1.5);
    merger[{"a"}] = 5;
    EXPECT_EQ(merger.get()["a"], 5);
    EXPECT_EQ(optionCount(), 4U); // the library's two, and one of each type
}

TEST_F(JsonMergerTest, AnyEarlierTypeOfTheNodeIsReplaced)
{
    RoamscanOptionsJsonMerger onObject(L"P", JSON::parse(R"({"a":{"b":[1,2]}})"));
    onObject[{"a"}] = 1.5;
    EXPECT_EQ(onObject.get(), JSON::parse(R"({"a":1.5})"));
}

TEST_F(JsonMergerTest, ANullTextIsTheNullStringInTheOptionAndEmptyInTheDocument)
{
    merger[{"a"}] = static_cast<char const*>(nullptr);
    EXPECT_EQ(merger.get()["a"], "");
    EXPECT_TRUE(getOption<String>(L"P.a", L"x").isNil());
}

TEST_F(JsonMergerTest, TextIsUtf8InTheDocument)
{
    setOption<String>(L"P.a", L"\u00E4");
    merger[{"a"}] = "default";
    EXPECT_EQ(merger.get()["a"], "\xC3\xA4");
}

TEST_F(JsonMergerTest, ANumberThatIsNotFiniteComesThrough)
{
    merger[{"a"}] = std::numeric_limits<double>::quiet_NaN();
    EXPECT_TRUE(std::isnan(merger.get()["a"].get<double>()));
}

TEST_F(JsonMergerTest, ListsAndDocumentsDoNotChangeTheOptions)
{
    setOption<double>(L"P.list", 9.0);
    JSON source = JSON::parse(R"({"x":[1,2]})");
    unsigned int const before = optionCount();
    merger[{"list"}] = std::vector<double>{1.5, 2.0, -0.0};
    merger[{"document"}] = source;
    auto other = merger[{"document"}];
    merger[{"copy"}] = other;
    EXPECT_EQ(optionCount(), before);
    EXPECT_EQ(merger.get()["list"].dump(), "[1.5,2.0,-0.0]");
    EXPECT_EQ(merger.get()["document"], source);
    EXPECT_EQ(merger.get()["copy"], source);
}

TEST_F(JsonMergerTest, DocumentsAreCopiedDeeply)
{
    JSON source = JSON::parse(R"({"x":1})");
    merger[{"a"}] = source;
    auto from = merger[{"a"}];
    merger[{"b"}] = from;
    source["x"] = 2;
    merger.get()["a"]["x"] = 3;
    EXPECT_EQ(merger.get()["b"]["x"], 1);
}

TEST_F(JsonMergerTest, APlaceMayTakeACopyOfAPartOfItself)
{
    merger[{"a", "b"}] = 5;
    auto inner = merger[{"a", "b"}];
    auto outer = merger[{"a"}];
    outer = inner;
    EXPECT_EQ(merger.get(), JSON::parse(R"({"a":5})"));
    auto self = merger[{"a"}];
    self = merger.get()["a"];
    EXPECT_EQ(merger.get(), JSON::parse(R"({"a":5})"));
}

TEST_F(JsonMergerTest, ACopyOfAPlaceIsTheSamePlace)
{
    auto const place = merger[{"a"}];
    auto copy = place;
    copy = 5;
    EXPECT_EQ(merger.get()["a"], 5);
    EXPECT_EQ(getOption<int>(L"P.a", 0), 5);
}

TEST_F(JsonMergerTest, TheDocumentIsMovedIn)
{
    JSON json = JSON::parse(R"({"a":1})");
    RoamscanOptionsJsonMerger const moved(L"P", std::move(json));
    EXPECT_TRUE(json.is_null()); // NOLINT(bugprone-use-after-move): that is what is tested
}

TEST_F(JsonMergerTest, ACopyHasADocumentOfItsOwn)
{
    merger[{"a"}] = 5;
    RoamscanOptionsJsonMerger copy = merger;
    copy[{"b"}] = 6;
    EXPECT_EQ(merger.get(), JSON::parse(R"({"a":5})"));
    EXPECT_EQ(copy.get(), JSON::parse(R"({"a":5,"b":6})"));
    EXPECT_EQ(getOption<int>(L"P.b", 0), 6);
}

TEST_F(JsonMergerTest, AMoveLeavesANullDocumentAndThePrefix)
{
    merger[{"a"}] = 5;
    RoamscanOptionsJsonMerger const moved = std::move(merger);
    // NOLINTNEXTLINE(bugprone-use-after-move): that is what is tested
    EXPECT_TRUE(merger.get().is_null());
    merger[{"c"}] = 7;
    EXPECT_EQ(getOption<int>(L"P.c", 0), 7);
}
