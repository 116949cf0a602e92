#include "tools/placing/OrderedPipeline.h"

#include "tests/tools/support/ToolFixture.h"

#include <gtest/gtest.h>

#include <atomic>
#include <chrono>
#include <stdexcept>
#include <string>
#include <thread>
#include <vector>

namespace
{

using oV::Roamscan::tool::OrderedPipeline;

struct Block
{
    int number = 0;
    int converted = 0;
};

/// Sends the numbers from 0 through the pipeline. A stage throws at the given number.
struct PipelineRun
{
    void operator()(std::size_t threads)
    {
        auto const read = [this](Block& block) {
            block.number = next++;
            failAt(failReading, block.number, "read");
            return block.number < count;
        };
        auto const convert = [this](Block& block) {
            failAt(failConverting, block.number, "convert");
            if (block.number % 3 == 0) { // lets later blocks overtake
                std::this_thread::sleep_for(std::chrono::microseconds(200));
            }
            block.converted = 10 * block.number;
        };
        auto const write = [this](Block& block) {
            failAt(failWriting, block.number, "write");
            written.push_back(block.converted);
        };
        OrderedPipeline<Block, decltype(read), decltype(convert), decltype(write)>(read, convert, write)
            .run(threads);
    }

    static void failAt(int number, int current, char const* stage)
    {
        if (number == current) {
            throw std::runtime_error(stage + std::to_string(number));
        }
    }

    int count = 100;
    int failReading = -1;
    int failConverting = -1;
    int failWriting = -1;
    int next = 0;
    std::vector<int> written;
};

std::vector<int> tensBelow(int count)
{
    std::vector<int> expected;
    for (int i = 0; i < count; ++i) {
        expected.push_back(10 * i);
    }
    return expected;
}

} // namespace

TEST(OrderedPipeline, WritesInOrder)
{
    for (std::size_t const threads : {1U, 2U, 5U}) {
        PipelineRun run;
        run(threads);
        EXPECT_EQ(run.written, tensBelow(100)) << threads;
    }
}

TEST(OrderedPipeline, NothingIsNothing)
{
    PipelineRun run;
    run.count = 0;
    run(4);
    EXPECT_TRUE(run.written.empty());
}

TEST(OrderedPipeline, TheFirstFailureInOrderIsThrown)
{
    for (std::size_t const threads : {1U, 2U, 5U}) {
        PipelineRun reading;
        reading.failReading = 30;
        EXPECT_EQ(support::failureOf([&] { reading(threads); }), "read30");
        EXPECT_EQ(reading.written, tensBelow(30));
        PipelineRun converting;
        converting.failConverting = 30;
        EXPECT_EQ(support::failureOf([&] { converting(threads); }), "convert30");
        EXPECT_EQ(converting.written, tensBelow(30));
        EXPECT_LE(static_cast<std::size_t>(converting.next), 30 + 2 * threads)
            << "no block is read after the failure but those that were read ahead";
        PipelineRun writing;
        writing.failWriting = 30;
        EXPECT_EQ(support::failureOf([&] { writing(threads); }), "write30");
        EXPECT_EQ(writing.written, tensBelow(30));
    }
}
