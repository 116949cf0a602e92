/// @file
/// Reading an option that exists, from one thread and from two, against a hash map of variants under a
/// recursive mutex.

#include "bench/Benchmarks.h"
#include "bench/Loops.h"

#include <roamscan/frame/bvbase/SmartPtr.h>
#include <roamscan/frame/bvbase/String.h>
#include <roamscan/options/RoamscanOptionAccess.h>
#include <roamscan/options/RoamscanOptions.h>
#include <roamscan/options/RoamscanOptionsCont.h>
#include <roamscan/options/RoamscanOptionsHost.h>

#include <array>
#include <chrono>
#include <cstddef>
#include <cstdint>
#include <latch>
#include <mutex>
#include <stdexcept>
#include <string>
#include <thread>
#include <unordered_map>
#include <utility>
#include <variant>

namespace bench
{

namespace
{

using Bv_1_1::String;
using oV::Roamscan::RoamscanOptions;
using oV::Roamscan::RoamscanOptionsCont;

constexpr std::size_t namesRead = 10;

std::string nameOf(int i)
{
    return "Plugin.group." + std::to_string(i);
}

/// The live options: the two of the library and `count` more. Ten of them, evenly distributed, are read.
struct LiveOptions
{
    explicit LiveOptions(int count)
    {
        bringUp();
        RoamscanOptions::cleanUp();
        for (int i = 0; i < count; ++i) {
            oV::Roamscan::setOption<int>(String::fromNarrow(nameOf(i).c_str()), i);
        }
        for (std::size_t i = 0; i < namesRead; ++i) {
            int const option = static_cast<int>(i) * count / static_cast<int>(namesRead);
            names[i] = String::fromNarrow(nameOf(option).c_str());
            if (read(names[i]) != option) {
                throw std::logic_error("an option has another value than was set");
            }
        }
    }

    [[nodiscard]] int read(String const& name) const { return oV::Roamscan::getOption<int>(name, -1); }

    std::array<String, namesRead> names;

private:
    static void bringUp()
    {
        constexpr auto fresh = Bv_1_1::BaseNode::CreateType::Fresh;
        static bool isUp = false;
        if (!isUp) {
            Bv_1_1::SmartPtr<RoamscanOptionsCont> const options(new RoamscanOptionsCont(fresh, nullptr));
            options->init(fresh, nullptr);
            oV::Roamscan::RoamscanOptionsHost::setup(options.get());
            isUp = true;
        }
    }
};

/// The same options in a hash map.
struct HashMap
{
    explicit HashMap(int count)
    {
        for (int i = 0; i < count; ++i) {
            options.emplace(nameOf(i), i);
        }
        for (std::size_t i = 0; i < namesRead; ++i) {
            names[i] = nameOf(static_cast<int>(i) * count / static_cast<int>(namesRead));
        }
    }

    [[nodiscard]] int read(std::string const& name)
    {
        std::scoped_lock const access(lock);
        auto const found = options.find(name);
        int const* const value = found == options.end() ? nullptr : std::get_if<int>(&found->second);
        return value == nullptr ? -1 : *value;
    }

    std::recursive_mutex lock;
    std::unordered_map<std::string, std::variant<bool, int, double, std::string>> options;
    std::array<std::string, namesRead> names;
};

template <typename Options>
Function reading(int count)
{
    return [count](benchmark::State& state) {
        Options& options = inputFor<Options>(count);
        measureEach(state, options.names, [&options](auto const& name) { return options.read(name); });
    };
}

/// Two threads read at once; the cost is the wall-clock time divided by the reads of both.
template <typename Options>
Function readingOnTwoThreads(int count)
{
    return [count](benchmark::State& state) {
        constexpr int rounds = 2'000;
        Options& options = inputFor<Options>(count);
        auto const readAll = [&options](std::latch& start) {
            start.arrive_and_wait();
            for (int round = 0; round < rounds; ++round) {
                for (auto const& name : options.names) {
                    benchmark::DoNotOptimize(options.read(name));
                }
            }
        };
        for ([[maybe_unused]] auto _ : state) {
            std::latch start(2);
            auto const begin = std::chrono::steady_clock::now();
            {
                std::jthread const other([&] { readAll(start); });
                readAll(start);
            }
            auto const end = std::chrono::steady_clock::now();
            state.SetIterationTime(std::chrono::duration<double>(end - begin).count());
        }
        state.SetItemsProcessed(state.iterations() * 2 * rounds * static_cast<std::int64_t>(namesRead));
    };
}

Baseline mapBaseline(Function function)
{
    return {"unordered_map, mutex", std::move(function), timesTheTime, 3.0};
}

} // namespace

Group options()
{
    return {"Reading an option",
            Cost::ProcessorTime,
            {{"getOption among 10",
              nanoseconds,
              {"getOption", reading<LiveOptions>(10)},
              {mapBaseline(reading<HashMap>(10))}},
             {"getOption among 10,000",
              nanoseconds,
              {"getOption", reading<LiveOptions>(10'000)},
              {mapBaseline(reading<HashMap>(10'000)),
               {"getOption among 10", reading<LiveOptions>(10), timesTheTime, 2.0}}}}};
}

Group optionsOnTwoThreads()
{
    return {"Reading an option on two threads at once",
            Cost::ReportedTime,
            {{"getOption among 10",
              nanoseconds,
              {"getOption", readingOnTwoThreads<LiveOptions>(10)},
              {mapBaseline(readingOnTwoThreads<HashMap>(10))}},
             {"getOption among 10,000",
              nanoseconds,
              {"getOption", readingOnTwoThreads<LiveOptions>(10'000)},
              {mapBaseline(readingOnTwoThreads<HashMap>(10'000)),
               {"getOption among 10", readingOnTwoThreads<LiveOptions>(10), timesTheTime, 2.0}}}}};
}

} // namespace bench
