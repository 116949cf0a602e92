#include "tests/support/LiveOptions.h"
#include "tests/support/OptionsText.h"
#include "tests/tools/support/ToolFixture.h"

#include <gtest/gtest.h>
#include <nlohmann/json.hpp>

#include <algorithm>
#include <cstddef>
#include <filesystem>
#include <limits>
#include <string>
#include <vector>

namespace
{

using Bv_1_1::String;
using oV::Roamscan::RoamscanOptionsCont;
using support::addOption;
using support::madeOptionsContainer;
using support::optionCount;
using support::optionValue;
using support::ToolFixture;
using support::ToolRun;
using Format = support::OptionsFormat;

class OptionsCommandTest : public ToolFixture, public testing::WithParamInterface<Format>
{
protected:
    /// The saved text of one option of each type, one with an awkward name, and one of an unknown type that
    /// the lists name.
    static std::string sampleText()
    {
        auto const options = madeOptionsContainer();
        addOption(*options, L"Show", true);
        addOption(*options, L"P.count", -7);
        addOption(*options, L"radius", 0.05);
        addOption(*options, L"Title", String(L"x\n\"y\" \u00E4"));
        addOption(*options, L"a=b c", 1);
        addOption(*options, L"", 2);
        std::string text = support::savedOptions(*options, GetParam());
        auto const replace = [&text](std::string const& from, std::string const& to) {
            text.replace(text.find(from), from.size(), to);
        };
        replace("[\"Show\"", "[\"matrix\", \"Show\"");
        replace("[\"Attr<bool>\"", "[\"Attr<Matrix>\", \"Attr<bool>\"");
        return text + matrixStatement();
    }

    static std::string matrixStatement()
    {
        return GetParam() == Format::Keyed ? "attribute \"matrix\" \"Attr<Matrix>\" {\n    rows 2;\n}\n"
                                           : "true\n\"matrix\"\n\"Attr<Matrix>\"\n{\n2\n}\n";
    }

    [[nodiscard]] std::string sample() const { return write("options", sampleText()); }

    /// The container that the library loads from the file.
    [[nodiscard]] Bv_1_1::SmartPtr<RoamscanOptionsCont> loaded() const
    {
        auto options = madeOptionsContainer();
        EXPECT_EQ(support::loadOptions(*options, read("options"), GetParam()), 0);
        return options;
    }
};

INSTANTIATE_TEST_SUITE_P(InEachForm,
                         OptionsCommandTest,
                         testing::Values(Format::Keyed, Format::Bare),
                         [](auto const& form) { return form.param == Format::Keyed ? "Keyed" : "Bare"; });

} // namespace

TEST_P(OptionsCommandTest, ShowsATable)
{
    ToolRun const shown = run({"options", sample()});
    EXPECT_EQ(shown.status, 0) << shown.err;
    EXPECT_EQ(shown.out,
              "matrix   Matrix  (unknown type, left as it is)\n"
              "Show     bool    true\n"
              "P.count  int     -7\n"
              "radius   double  0.05\n"
              "Title    String  \"x\\n\\\"y\\\" \xC3\xA4\"\n"
              "\"a=b c\"  int     1\n"
              "\"\"       int     2\n");
}

TEST_P(OptionsCommandTest, ShowsJson)
{
    ToolRun const shown = run({"options", sample(), "--json"});
    EXPECT_EQ(shown.status, 0) << shown.err;
    EXPECT_EQ(nlohmann::json::parse(shown.out), nlohmann::json::parse(R"([
        {"name": "matrix", "type": "Matrix"},
        {"name": "Show", "type": "bool", "value": true},
        {"name": "P.count", "type": "int", "value": -7},
        {"name": "radius", "type": "double", "value": 0.05},
        {"name": "Title", "type": "String", "value": "x\n\"y\" \u00e4"},
        {"name": "a=b c", "type": "int", "value": 1},
        {"name": "", "type": "int", "value": 2}])"));
}

TEST_P(OptionsCommandTest, GetsAValueForAScript)
{
    std::string const file = sample();
    EXPECT_EQ(run({"options", file, "--get", "Show"}).out, "true\n");
    EXPECT_EQ(run({"options", file, "--get", "P.count"}).out, "-7\n");
    EXPECT_EQ(run({"options", file, "--get", "radius"}).out, "0.05\n");
    EXPECT_EQ(run({"options", file, "--get", "Title"}).out, "x\n\"y\" \xC3\xA4\n");
    EXPECT_EQ(nlohmann::json::parse(run({"options", file, "--get", "Show", "--json"}).out),
              nlohmann::json::parse(R"({"name": "Show", "type": "bool", "value": true})"));
    EXPECT_EQ(read("options"), sampleText()); // not written
}

TEST_P(OptionsCommandTest, SetsOptionsOfEachType)
{
    ToolRun const set = run({"options",
                             sample(),
                             "--set",
                             "Show=false",
                             "--set",
                             "P.count=2147483647",
                             "--set",
                             "radius=1e-3",
                             "--set",
                             "Title=a = b"});
    EXPECT_EQ(set.status, 0) << set.err;
    EXPECT_EQ(set.out,
              "Show     bool    false\n"
              "P.count  int     2147483647\n"
              "radius   double  0.001\n"
              "Title    String  \"a = b\"\n");
    auto const options = loaded();
    EXPECT_EQ(optionValue<bool>(*options, L"Show"), false);
    EXPECT_EQ(optionValue<int>(*options, L"P.count"), 2147483647);
    EXPECT_EQ(optionValue<double>(*options, L"radius"), 0.001);
    EXPECT_EQ(optionValue<String>(*options, L"Title"), String(L"a = b"));
    EXPECT_EQ(optionValue<int>(*options, L""), 2);
    EXPECT_EQ(optionCount(*options), 6U);
}

TEST_P(OptionsCommandTest, SetsOptionsWithAwkwardNamesAndValues)
{
    std::string const file = sample();
    EXPECT_EQ(run({"options", file, "--set", "a=b c=5"}).status, 0);
    EXPECT_EQ(run({"options", file, "--set", "=6"}).status, 0);
    EXPECT_EQ(run({"options", file, "--set", "radius=-inf"}).status, 0);
    EXPECT_EQ(run({"options", file, "--set", "Title="}).status, 0);
    auto const options = loaded();
    EXPECT_EQ(optionValue<int>(*options, L"a=b c"), 5);
    EXPECT_EQ(optionValue<int>(*options, L""), 6);
    EXPECT_EQ(optionValue<double>(*options, L"radius"), -std::numeric_limits<double>::infinity());
    EXPECT_EQ(optionValue<String>(*options, L"Title"), String::EMPTY);
}

TEST_P(OptionsCommandTest, LeavesWhatItDoesNotKnowAsItWas)
{
    ToolRun const set = run({"options", sample(), "--set", "Show=false"});
    EXPECT_EQ(set.status, 0) << set.err;
    std::string expected = sampleText();
    std::string const before = GetParam() == Format::Keyed ? "value true;" : "{\ntrue\n}";
    std::string const after = GetParam() == Format::Keyed ? "value false;" : "{\nfalse\n}";
    expected.replace(expected.find(before), before.size(), after);
    EXPECT_EQ(read("options"), expected);
}

TEST_P(OptionsCommandTest, FindsAValueThatTheListsDoNotName)
{
    std::string const statement = GetParam() == Format::Keyed
                                      ? "attribute \"late\" \"Attr<int>\" {\n    value 3;\n}\n"
                                      : "true\n\"late\"\n\"Attr<int>\"\n{\n3\n}\n";
    std::string const file = write("options", sampleText() + statement);
    EXPECT_EQ(run({"options", file, "--get", "late"}).out, "3\n");
    ToolRun const set = run({"options", file, "--set", "late=4"});
    EXPECT_EQ(set.status, 0) << set.err;
    EXPECT_EQ(optionValue<int>(*loaded(), L"late"), 4);
    EXPECT_NE(read("options").find(matrixStatement()), std::string::npos);
}

TEST_P(OptionsCommandTest, RefusesAnOptionThatTheFileDoesNotHave)
{
    std::string const file = sample();
    for (std::vector<std::string> const& words : {std::vector<std::string>{"--get", "show"},
                                                  {"--set", "show=true"},
                                                  {"--get", "matrix"},
                                                  {"--set", "matrix=1"},
                                                  {"--set", "OptionsNames=1"}})
    {
        ToolRun const refused = run({"options", file, words[0], words[1]});
        EXPECT_EQ(refused.status, 1);
        EXPECT_EQ(refused.out, "");
        std::string expected = "roamscan: " + file + ": has no option ";
        expected.append(words[1], 0, words[1].find('='));
        expected.append(" of a known type; see roamscan options FILE for the names\n");
        EXPECT_EQ(refused.err, expected);
    }
    EXPECT_EQ(read("options"), sampleText());
}

TEST_P(OptionsCommandTest, RefusesValuesOfAnotherType)
{
    std::string const file = sample();
    auto const errorOf = [&file](std::string const& assignment) {
        ToolRun const refused = run({"options", file, "--set", "P.count=1", "--set", assignment});
        EXPECT_EQ(refused.status, 1) << assignment;
        return refused.err;
    };
    EXPECT_EQ(errorOf("Show=yes"), "roamscan: option Show needs true or false, not \"yes\"\n");
    EXPECT_EQ(errorOf("P.count=1.5"),
              "roamscan: option P.count needs a whole number from -2147483648 to 2147483647, not \"1.5\"\n");
    EXPECT_NE(errorOf("P.count=2147483648"), "");
    EXPECT_EQ(errorOf("radius=wide"),
              "roamscan: option radius needs a number, inf, -inf or nan, not \"wide\"\n");
    EXPECT_EQ(errorOf("Show"), "roamscan: --set \"Show\" has no '='; write --set NAME=VALUE\n");
    EXPECT_EQ(read("options"), sampleText()); // the valid assignment before it is not kept either
    EXPECT_EQ(names(), std::vector<std::string>{"options"});
}

TEST_P(OptionsCommandTest, RefusesADamagedFileWithItsLine)
{
    std::string text = sampleText();
    text.replace(text.find("-7"), 2, "\"seven\"");
    std::size_t const place = text.find("\"seven\"");
    auto const line = 1 + std::count(text.begin(), text.begin() + static_cast<std::ptrdiff_t>(place), '\n');
    std::string const file = write("options", text);
    ToolRun const refused = run({"options", file, "--set", "Show=false"});
    EXPECT_EQ(refused.status, 1);
    EXPECT_EQ(refused.err,
              "roamscan: " + file + ":" + std::to_string(line) +
                  ": a value has another type than its option; restore the file from a copy\n");
    EXPECT_EQ(read("options"), text);
}

TEST_P(OptionsCommandTest, RefusesACutFile)
{
    std::string const text = sampleText();
    for (std::size_t const length : {text.size() - 2, text.size() - 4, text.size() / 2}) {
        ToolRun const refused = run({"options", write("options", text.substr(0, length))});
        EXPECT_EQ(refused.status, 1) << length;
        EXPECT_NE(refused.err, "");
    }
}

TEST_P(OptionsCommandTest, RefusesListsOfDifferentLengths)
{
    std::string text = sampleText();
    text.erase(text.find("\"Show\", "), 8);
    std::string const file = write("options", text);
    ToolRun const refused = run({"options", file});
    EXPECT_EQ(refused.status, 1);
    EXPECT_EQ(refused.err,
              "roamscan: " + file + ": lists 6 names and 7 types of options; restore the file from a copy\n");
}

TEST_F(ToolFixture, OptionsRefusesWhatIsNoSavedContainer)
{
    for (std::string const text : {"", "hello world;\n", "{\"a\": 1}", "\x89PNG\r\n"}) {
        std::string const path = write("other", text);
        ToolRun const refused = run({"options", path});
        EXPECT_EQ(refused.status, 1) << text;
        EXPECT_TRUE(refused.err.starts_with("roamscan: " + path)) << refused.err;
    }
    EXPECT_EQ(run({"options", file("missing").string()}).status, 1);
}
