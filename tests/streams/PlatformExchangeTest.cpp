/// @file
/// Files that a build for one platform writes and a build for another one reads. ROAMSCAN_EXCHANGE_WRITE and
/// ROAMSCAN_EXCHANGE_READ name the folder; without them, the test reads what it wrote.

#include "tests/support/LiveOptions.h"
#include "tests/support/OptionsText.h"
#include "tests/support/ScanMetadata.h"
#include "tests/support/SensorRecords.h"
#include "tests/support/StoreStreams.h"
#include "tests/support/TemporaryFolder.h"
#include "tests/support/TrajectoryStreams.h"

#include <gtest/gtest.h>

#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <limits>
#include <map>
#include <string>

namespace
{

using Bv_1_1::String;
using oV::Roamscan::SensorData;
using oV::Roamscan::TrajectoryData;
using support::OptionsFormat;
using support::pathOf;

/// One sensor of each kind: several are written in the order of a hash table.
SensorData sensors()
{
    SensorData data = support::oneSampleOfEachKind(1.5);
    data.imuData.clear();
    for (int i = 0; i < 100; ++i) {
        double const x = 0.1 * i;
        support::store(data.imuData["иму"], support::imuSample(x, {x, -x, 1 / (x + 3)}));
    }
    return data;
}

TrajectoryData trajectory()
{
    TrajectoryData data = support::smallTrajectoryStore();
    for (int i = 0; i < 100; ++i) {
        double const x = 1e9 + 0.1 * i;
        data.nodes.push_back(support::numberedNode());
        data.nodes.back().time = x;
    }
    return data;
}

Bv_1_1::SmartPtr<oV::Roamscan::RoamscanOptionsCont> options()
{
    auto container = support::madeOptionsContainer();
    support::addOption(*container, L"Show", true);
    support::addOption(*container, L"P.count", std::numeric_limits<int>::min());
    support::addOption(*container, L"P.denormal", 5e-324);
    support::addOption(*container, L"P.third", 1.0 / 3.0);
    support::addOption(*container, L"\u6563\u6B69", String(L"Gr\u00FC\u00DFe\r\n\"\u20AC\"\t"));
    return container;
}

/// The files by name. Each folder and file name has letters of several scripts.
std::map<std::string, std::string> files()
{
    auto const container = options();
    return {{"прогулка.sensors", support::written(sensors())},
            {"散歩.trajectory", support::written(trajectory())},
            {"Größe keyed.txt", support::savedOptions(*container, OptionsFormat::Keyed)},
            {"Größe bare.txt", support::savedOptions(*container, OptionsFormat::Bare)},
            {"metadata.json", nlohmann::json(support::fullMetadata()).dump()}};
}

void write(std::filesystem::path const& folder)
{
    for (auto const& [name, bytes] : files()) {
        std::ofstream stream(folder / pathOf(name), std::ios::binary);
        stream << bytes;
        ASSERT_TRUE(stream.flush()) << name;
    }
}

template <typename Store>
void expectReads(std::filesystem::path const& file, Store const& expected)
{
    std::ifstream stream(file, std::ios::binary);
    auto const store = Store::read(stream);
    ASSERT_NE(store, nullptr) << file;
    EXPECT_TRUE(support::written(*store) == support::written(expected)) << file;
}

void read(std::filesystem::path const& folder)
{
    for (auto const& [name, bytes] : files()) {
        std::ifstream stream(folder / pathOf(name), std::ios::binary);
        std::string const found{std::istreambuf_iterator<char>(stream), std::istreambuf_iterator<char>()};
        EXPECT_TRUE(found == bytes) << name; // too long to be printed
        if (name.ends_with(".txt")) {
            auto const format = name.ends_with("keyed.txt") ? OptionsFormat::Keyed : OptionsFormat::Bare;
            auto const container = support::madeOptionsContainer();
            EXPECT_EQ(support::loadOptions(*container, found, format), oV::StatusCode::ok) << name;
            EXPECT_EQ(support::optionValue<double>(*container, L"P.denormal"), 5e-324) << name;
            EXPECT_EQ(support::savedOptions(*container, format), bytes) << name;
        }
    }
    expectReads(folder / pathOf("прогулка.sensors"), sensors());
    expectReads(folder / pathOf("散歩.trajectory"), trajectory());
}

/// A folder that the environment names in UTF-8; empty if it names none.
std::filesystem::path namedFolder(char const* variable)
{
    char const* const value = std::getenv(variable); // NOLINT(concurrency-mt-unsafe): the only thread
    return value == nullptr ? std::filesystem::path() : pathOf(value);
}

} // namespace

TEST(PlatformExchange, FilesAreTheSameOnEveryPlatform)
{
    auto const toWrite = namedFolder("ROAMSCAN_EXCHANGE_WRITE");
    auto const toRead = namedFolder("ROAMSCAN_EXCHANGE_READ");
    if (!toWrite.empty()) {
        write(toWrite);
    } else if (!toRead.empty()) {
        read(toRead);
    } else {
        support::TemporaryFolder const folder;
        write(folder.path());
        read(folder.path());
    }
}
