#include "tools/manual/CommandTree.h"
#include "tools/manual/Completion.h"
#include "tools/manual/ManualPage.h"

#include <CLI/CLI.hpp>
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <sstream>
#include <string>
#include <vector>

namespace
{

using namespace oV::Roamscan::tool;
using testing::ElementsAre;
using testing::HasSubstr;
using testing::IsEmpty;
using testing::Not;

/// A command line with one of everything.
class Manual : public testing::Test
{
protected:
    Manual()
    {
        app.footer("Examples:\n  walker go 'a'\n\n  walker stop\\b\n");
        CLI::App* const go = app.add_subcommand("go", "Go to: [somewhere]");
        go->add_option("-s,--speed", speed, "Metres per second")->required();
        go->add_option_group("how")
            ->add_option("--gait", text, "The gait")
            ->check(CLI::IsMember({"trot", "run"}));
        go->add_option("--legs", legs, "Legs")->check(CLI::Range(2, 4));
        go->add_option("--steps", legs, "Steps")->check(CLI::Range(0, 900));
        go->add_option("--via", texts, "A stop-over")->allow_extra_args(false)->type_name("PLACE");
        go->add_flag("--fast", isFast, "In a hurry");
        go->add_option("FROM", text, "The start")->required();
        go->add_option("TO", texts, ".the ends");
        app.add_subcommand("stay", "Stay")->add_subcommand("here", "Here");
    }

    std::string page()
    {
        std::ostringstream out;
        writeManualPage(describe(app), "1.2.3", out);
        return out.str();
    }
    std::string bash()
    {
        std::ostringstream out;
        writeBashCompletion(describe(app), out);
        return out.str();
    }
    std::string zsh()
    {
        std::ostringstream out;
        writeZshCompletion(describe(app), out);
        return out.str();
    }

    CLI::App app{"Walks about.", "walker"};
    double speed = 0.0;
    int legs = 0;
    bool isFast = false;
    std::string text;
    std::vector<std::string> texts;
};

} // namespace

TEST_F(Manual, DescribesCommandsWithinCommands)
{
    CommandDescription const walker = describe(app);
    ASSERT_EQ(walker.commands.size(), 2U);
    EXPECT_EQ(walker.commands[0].synopsis(), "walker go [OPTIONS] FROM [TO...]");
    ASSERT_EQ(walker.commands[1].commands.size(), 1U);
    EXPECT_EQ(walker.commands[1].synopsis(), "walker stay [OPTIONS] COMMAND");
    EXPECT_EQ(walker.commands[1].commands[0].name, "walker stay here");
    EXPECT_EQ(walker.commands[1].commands[0].lastName(), "here");
}

TEST_F(Manual, DescribesOptionsAlsoOfGroups)
{
    CommandDescription const go = describe(app).commands[0];
    ASSERT_EQ(go.options.size(), 7U); // the group's option is last
    EXPECT_THAT(go.options[0].names, ElementsAre("-h", "--help"));
    EXPECT_EQ(go.options[0].value, "");
    EXPECT_THAT(go.options[1].names, ElementsAre("-s", "--speed"));
    EXPECT_EQ(go.options[1].value, "FLOAT");
    EXPECT_TRUE(go.options[1].isRequired);
    EXPECT_FALSE(go.options[1].isFile);
    EXPECT_THAT(go.options[2].choices, ElementsAre("2", "3", "4"));
    EXPECT_THAT(go.options[3].choices, IsEmpty());
    EXPECT_EQ(go.options[4].value, "PLACE");
    EXPECT_TRUE(go.options[4].isRepeatable);
    EXPECT_FALSE(go.options[4].isFile);
    EXPECT_THAT(go.options[5].names, ElementsAre("--fast"));
    EXPECT_THAT(go.options[6].names, ElementsAre("--gait"));
    EXPECT_THAT(go.options[6].choices, ElementsAre("trot", "run"));
    EXPECT_FALSE(go.options[6].isFile);
    ASSERT_EQ(go.positionals.size(), 2U);
    EXPECT_TRUE(go.positionals[0].isFile);
}

TEST_F(Manual, PageHasTheSectionsOfAManualPage)
{
    EXPECT_THAT(page(), testing::StartsWith(R"(.TH WALKER 1 "" "walker 1.2.3" "User Commands"
.SH NAME
walker \- walks about
.SH SYNOPSIS
.nf
walker go [OPTIONS] FROM [TO...]
walker stay [OPTIONS] COMMAND
.fi
)"));
    EXPECT_THAT(
        page(),
        HasSubstr(".TP\n\\fB\\-s\\fR, \\fB\\-\\-speed\\fR \\fIFLOAT\\fR\nMetres per second (required)\n"));
    EXPECT_THAT(page(), HasSubstr(".SS walker stay here [OPTIONS]\nHere.\n"));
}

TEST_F(Manual, PageShowsTextThatRoffWouldInterpret)
{
    EXPECT_THAT(page(), HasSubstr(".TP\n\\fITO\\fR\n\\&.the ends\n"));
    EXPECT_THAT(page(), HasSubstr(".SH EXAMPLES\n.nf\n  walker go 'a'\n.sp\n  walker stop\\eb\n.fi\n"));
}

TEST_F(Manual, BashCompletionHasTheWordsOfEachCommand)
{
    EXPECT_THAT(bash(), HasSubstr("'walker') options='-h --help' words='go stay' ;;\n"));
    EXPECT_THAT(
        bash(),
        HasSubstr(
            "'walker go') options='-h --help -s --speed --legs --steps --via --fast --gait' files=1 ;;\n"));
    EXPECT_THAT(bash(), HasSubstr("'walker stay here') options='-h --help' ;;\n"));
    EXPECT_THAT(bash(), HasSubstr("'walker go -s' | 'walker go --speed') isValue=1 ;;\n"));
    EXPECT_THAT(bash(), HasSubstr("'walker go --gait') isValue=1 words='trot run' ;;\n"));
    EXPECT_THAT(bash(), Not(HasSubstr("'walker go --fast'")));
}

TEST_F(Manual, ZshCompletionHasTheDescriptions)
{
    EXPECT_THAT(zsh(), testing::StartsWith("#compdef walker\n"));
    EXPECT_THAT(zsh(), HasSubstr("'go[Go to\\: \\[somewhere\\]]'"));
    EXPECT_THAT(zsh(), HasSubstr("'-s+[Metres per second]:FLOAT: '"));
    EXPECT_THAT(zsh(), HasSubstr("'--gait=[The gait]:TEXT:(trot run)'"));
    EXPECT_THAT(zsh(), HasSubstr("'*--via=[A stop-over]:PLACE: '"));
    EXPECT_THAT(zsh(), HasSubstr("'--fast[In a hurry]'"));
    EXPECT_THAT(zsh(), HasSubstr("':FROM:_files'"));
    EXPECT_THAT(zsh(), HasSubstr("'*:TO:_files'"));
    EXPECT_THAT(zsh(), HasSubstr("_walker_stay_here()\n"));
}
